#include "column_values.h"

#include <cmath>
#include <span>
#include <utility>

#include "failures.h"
#include "stored_date.h"

#include "tamarok/error.h"

namespace tamarok::embedded {

namespace {

/// One column of the current row. Fetching the value once saves SQLite's check of the column per call. This is
/// allowed because a connection belongs to one thread.
struct Cell {
    Cell(sqlite3_stmt* of, int at) : statement{of}, column{at}, value{sqlite3_column_value(of, at)} {}

    bool isNull() const { return sqlite3_value_type(value) == SQLITE_NULL; }
    const char* name() const { return sqlite3_column_name(statement, column); }

    sqlite3_stmt* statement;
    int column;
    sqlite3_value* value;
};

/// The value as text, valid until the next step. A view without address means Null.
std::string_view textOf(const Cell& cell)
{
    const auto* const bytes = static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(cell.value)));
    if (bytes == nullptr) {
        return {};
    }
    return {bytes, static_cast<std::size_t>(sqlite3_value_bytes(cell.value))};
}

/// Binary values are shown as 0x and their bytes in hexadecimal.
std::string hexText(const Cell& cell)
{
    static constexpr std::string_view digits = "0123456789ABCDEF";
    const auto* const bytes = static_cast<const unsigned char*>(sqlite3_value_blob(cell.value));
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(cell.value));
    std::string text = "0x";
    for (const unsigned char byte : std::span{bytes, size}) {
        text.append({digits[byte >> 4U], digits[byte & 15U]});
    }
    return text;
}

// SQLite returns zero and no text for Null too. Only then do the readers ask for the storage class.

Variant readText(const Cell& cell)
{
    const std::string_view text = textOf(cell);
    if (text.data() == nullptr) {
        return Null{};
    }
    return text;
}

Variant readBinary(const Cell& cell)
{
    return cell.isNull() ? Variant{Null{}} : Variant{hexText(cell)};
}

template <class Number>
Variant readWhole(const Cell& cell)
{
    const sqlite3_int64 number = sqlite3_value_int64(cell.value);
    if (number == 0 && cell.isNull()) {
        return Null{};
    }
    // SQLite does not enforce declared types: another program may have stored more.
    if (!std::in_range<Number>(number)) [[unlikely]] {
        throw Error{errors::overflow,
                    "The stored number " + std::to_string(number) + " is beyond the type of column '" + cell.name() +
                        "'.",
                    std::string{sourceName}};
    }
    return static_cast<Number>(number);
}

Variant readBoolean(const Cell& cell)
{
    const bool truth = sqlite3_value_int64(cell.value) != 0;
    return !truth && cell.isNull() ? Variant{Null{}} : Variant{truth};
}

Variant readDouble(const Cell& cell)
{
    const double number = sqlite3_value_double(cell.value);
    // SQLite computes with infinite numbers; the server has none.
    if (!std::isfinite(number)) [[unlikely]] {
        throw failure(8115, "Arithmetic overflow error converting expression to data type float.");
    }
    return number == 0.0 && cell.isNull() ? Variant{Null{}} : Variant{number};
}

/// Dates are stored as texts of fixed length. A TIME has a day that the server's types do not show; it is taken off.
Variant readDate(const Cell& cell, bool timeOnly)
{
    const std::string_view text = textOf(cell);
    if (text.data() == nullptr) {
        return Null{};
    }
    Date date;
    if (!parseStoredDate(text, date)) {
        throw Error{errors::providerFailure,
                    "The stored text '" + std::string{text} + "' of column '" + cell.name() + "' is no date.",
                    std::string{sourceName}};
    }
    return timeOnly ? Date{date.days - dayOf(date).days} : date;
}

/// For expressions whose type is not known at translation: the storage class of each value decides.
Variant readByStorage(const Cell& cell)
{
    switch (sqlite3_value_type(cell.value)) {
    case SQLITE_NULL: return Null{};
    case SQLITE_INTEGER: {
        const sqlite3_int64 number = sqlite3_value_int64(cell.value);
        if (std::in_range<std::int32_t>(number)) {
            return static_cast<std::int32_t>(number);
        }
        return static_cast<std::int64_t>(number);
    }
    case SQLITE_FLOAT: return sqlite3_value_double(cell.value);
    case SQLITE_BLOB: return hexText(cell);
    default: return readText(cell);
    }
}

} // namespace

Variant readValue(sqlite3_stmt* statement, int column, Reading reading)
{
    const Cell cell{statement, column};
    switch (reading) {
    case Reading::Boolean: return readBoolean(cell);
    case Reading::Integer: return readWhole<std::int16_t>(cell);
    case Reading::Long: return readWhole<std::int32_t>(cell);
    case Reading::LongLong: return readWhole<std::int64_t>(cell);
    case Reading::Double: return readDouble(cell);
    case Reading::Date: return readDate(cell, false);
    case Reading::TimeOfDay: return readDate(cell, true);
    case Reading::Text: return readText(cell);
    case Reading::Binary: return readBinary(cell);
    case Reading::ByStorage: break;
    }
    return readByStorage(cell);
}

std::string columnText(sqlite3_stmt* statement, int column)
{
    return std::string{textOf(Cell{statement, column})};
}

} // namespace tamarok::embedded
