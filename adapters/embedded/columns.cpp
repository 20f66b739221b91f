#include "columns.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "failures.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::embedded {

namespace {

using ado::DataType;
using tsql::TypeKind;

constexpr std::int32_t longText = 2147483647;
constexpr std::int32_t longWideText = 1073741823;

/// What a type of the server looks like from outside; size 0 is the type's own length.
struct TypeRow {
    TypeKind kind;
    DataType type;
    std::int32_t size;
    Reading reading;
    std::string_view conversion; ///< function that converts a value for storage, empty for the texts
};

constexpr std::array typeRows{
    TypeRow{TypeKind::Unknown, DataType::VarWChar, 4000, Reading::ByStorage, ""},
    TypeRow{TypeKind::Null, DataType::Integer, 4, Reading::ByStorage, ""},
    TypeRow{TypeKind::Bit, DataType::Boolean, 2, Reading::Boolean, "tm_bit"},
    TypeRow{TypeKind::TinyInt, DataType::UnsignedTinyInt, 1, Reading::Integer, "tm_tinyint"},
    TypeRow{TypeKind::SmallInt, DataType::SmallInt, 2, Reading::Integer, "tm_smallint"},
    TypeRow{TypeKind::Int, DataType::Integer, 4, Reading::Long, "tm_int"},
    TypeRow{TypeKind::BigInt, DataType::BigInt, 8, Reading::LongLong, "tm_bigint"},
    TypeRow{TypeKind::Decimal, DataType::Numeric, 19, Reading::Double, "tm_decimal"},
    TypeRow{TypeKind::Money, DataType::Currency, 8, Reading::Double, "tm_money"},
    TypeRow{TypeKind::Real, DataType::Single, 4, Reading::Double, "tm_real"},
    TypeRow{TypeKind::Float, DataType::Double, 8, Reading::Double, "tm_float"},
    TypeRow{TypeKind::Char, DataType::Char, 0, Reading::Text, ""},
    TypeRow{TypeKind::VarChar, DataType::VarChar, 0, Reading::Text, ""},
    TypeRow{TypeKind::NChar, DataType::WChar, 0, Reading::Text, ""},
    TypeRow{TypeKind::NVarChar, DataType::VarWChar, 0, Reading::Text, ""},
    TypeRow{TypeKind::Text, DataType::LongVarChar, longText, Reading::Text, ""},
    TypeRow{TypeKind::NText, DataType::LongVarWChar, longWideText, Reading::Text, ""},
    TypeRow{TypeKind::Date, DataType::DBDate, 6, Reading::Date, "tm_date"},
    TypeRow{TypeKind::SmallDateTime, DataType::DBTimeStamp, 16, Reading::Date, "tm_smalldatetime"},
    TypeRow{TypeKind::DateTime, DataType::DBTimeStamp, 16, Reading::Date, "tm_datetime"},
    TypeRow{TypeKind::DateTime2, DataType::DBTimeStamp, 16, Reading::Date, "tm_datetime"},
    TypeRow{TypeKind::Time, DataType::DBTime, 6, Reading::TimeOfDay, "tm_time"},
    TypeRow{TypeKind::Binary, DataType::VarBinary, 0, Reading::Binary, ""},
    TypeRow{TypeKind::UniqueIdentifier, DataType::GUID, 16, Reading::Text, ""},
};

constexpr bool inOrder()
{
    for (std::size_t i = 0; i < typeRows.size(); ++i) {
        if (static_cast<std::size_t>(typeRows[i].kind) != i) {
            return false;
        }
    }
    return true;
}
static_assert(inOrder(), "typeRows is indexed by TypeKind");

const TypeRow& rowOf(TypeKind kind)
{
    return typeRows.at(static_cast<std::size_t>(kind));
}

/// A text without limit counts as the long type.
DataType longTypeOf(DataType type)
{
    return type == DataType::VarChar || type == DataType::Char ? DataType::LongVarChar : DataType::LongVarWChar;
}

void describe(const tsql::Type& type, ado::ColumnInfo& info)
{
    const TypeRow& row = rowOf(type.kind);
    info.type = row.type;
    info.definedSize = row.size != 0 ? row.size : type.length;
    if (row.size == 0 && type.length < 0) {
        if (type.kind == TypeKind::Binary) {
            info.type = DataType::LongVarBinary;
            info.definedSize = longText;
        } else {
            info.type = longTypeOf(row.type);
            info.definedSize = info.type == DataType::LongVarChar ? longText : longWideText;
        }
    }
}

/// One column of the row under a statement. The value is fetched once and then asked directly, which
/// spares SQLite's own bookkeeping per question; that is allowed since a connection belongs to one thread.
struct Cell {
    Cell(sqlite3_stmt* of, int at) : statement{of}, column{at}, value{sqlite3_column_value(of, at)} {}

    bool isNull() const { return sqlite3_value_type(value) == SQLITE_NULL; }
    const char* name() const { return sqlite3_column_name(statement, column); }

    sqlite3_stmt* statement;
    int column;
    sqlite3_value* value;
};

std::string_view textOf(const Cell& cell)
{
    const auto* const bytes = static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(cell.value)));
    if (bytes == nullptr) {
        return {};
    }
    return {bytes, static_cast<std::size_t>(sqlite3_value_bytes(cell.value))};
}

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

// Zero and no text are also what SQLite gives for Null: only then is the storage class worth asking for.

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
    return number == 0.0 && cell.isNull() ? Variant{Null{}} : Variant{number};
}

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

constexpr std::int32_t daysBeforeMonth(std::int32_t year, std::int32_t month) noexcept
{
    // Months count from March, so that the leap day is the last of its year.
    const std::int32_t y = month <= 2 ? year - 1 : year;
    const std::int32_t shifted = (month + 9) % 12;
    return 365 * y + y / 4 - y / 100 + y / 400 + (shifted * 306 + 5) / 10;
}
/// 30 December 1899, day 0 of a Date.
constexpr std::int32_t dayZero = daysBeforeMonth(1899, 12) + 29;

/// Reads numbers out of fixed places of a text and remembers whether anything was no digit.
class FixedDigits {
public:
    explicit constexpr FixedDigits(const char* text) noexcept : text_{text} {}

    constexpr std::int32_t two(std::size_t at) noexcept { return 10 * digit(at) + digit(at + 1); }
    constexpr std::int32_t three(std::size_t at) noexcept { return 100 * digit(at) + two(at + 1); }
    constexpr std::int32_t four(std::size_t at) noexcept { return 100 * two(at) + two(at + 2); }
    constexpr bool allDigits() const noexcept { return !bad_; }

private:
    constexpr std::int32_t digit(std::size_t at) noexcept
    {
        const int value = text_[at] - '0';
        bad_ |= value < 0 || value > 9;
        return value;
    }

    const char* text_;
    bool bad_ = false;
};

/// What a parameter's type asks of its value.
enum class Wanted : std::uint8_t { AsIs, Whole, Real, Truth, Text };

Wanted wantedOf(DataType type)
{
    switch (type) {
    case DataType::SmallInt:
    case DataType::Integer:
    case DataType::TinyInt:
    case DataType::UnsignedTinyInt:
    case DataType::BigInt: return Wanted::Whole;
    case DataType::Single:
    case DataType::Double:
    case DataType::Currency:
    case DataType::Decimal:
    case DataType::Numeric: return Wanted::Real;
    case DataType::Boolean: return Wanted::Truth;
    case DataType::Char:
    case DataType::WChar:
    case DataType::VarChar:
    case DataType::VarWChar:
    case DataType::LongVarChar:
    case DataType::LongVarWChar:
    case DataType::BSTR: return Wanted::Text;
    default: return Wanted::AsIs;
    }
}

/// True if a value of that kind is bound as it is for what is wanted.
bool fits(Variant::Kind kind, Wanted wanted)
{
    using enum Variant::Kind;
    switch (kind) {
    case Empty:
    case Null: return true;
    case Integer:
    case Long:
    case LongLong: return wanted == Wanted::AsIs || wanted == Wanted::Whole;
    case Double: return wanted == Wanted::AsIs || wanted == Wanted::Real;
    case Boolean: return wanted == Wanted::AsIs || wanted == Wanted::Truth;
    case String: return wanted == Wanted::AsIs || wanted == Wanted::Text;
    case Date: // its text form is the database's, not the regional one
        return wanted == Wanted::AsIs || wanted == Wanted::Text;
    default: return wanted == Wanted::AsIs;
    }
}

Variant converted(const Variant& value, Wanted wanted)
{
    switch (wanted) {
    case Wanted::Whole: return convert::toLongLong(value);
    case Wanted::Real: return convert::toDouble(value);
    case Wanted::Truth: return convert::toBoolean(value);
    case Wanted::Text: return convert::toText(value);
    case Wanted::AsIs: break;
    }
    return value;
}

bool liesWithin(std::int64_t number, tsql::TypeKind kind)
{
    switch (kind) {
    case tsql::TypeKind::TinyInt: return number >= 0 && number <= UINT8_MAX;
    case tsql::TypeKind::SmallInt: return number >= INT16_MIN && number <= INT16_MAX;
    case tsql::TypeKind::Int: return number >= INT32_MIN && number <= INT32_MAX;
    case tsql::TypeKind::BigInt:
    case tsql::TypeKind::Float: return true;
    default: return false;
    }
}

/// True for texts that are surely short enough: no character takes less than one byte.
bool isShortText(std::string_view text, const tsql::Type& type)
{
    switch (type.kind) {
    case tsql::TypeKind::VarChar:
    case tsql::TypeKind::NVarChar: return type.length < 0 || text.size() <= static_cast<std::size_t>(type.length);
    case tsql::TypeKind::Text:
    case tsql::TypeKind::NText: return true;
    default: return false;
    }
}

/// Whole days from 1900 on that every date type holds without rounding.
bool isPlainDay(Date date, tsql::TypeKind kind)
{
    constexpr double first = 2.0;    // 1 January 1900
    constexpr double last = 65532.0; // 1 June 2079
    const bool dates = kind == tsql::TypeKind::SmallDateTime || kind == tsql::TypeKind::DateTime ||
                       kind == tsql::TypeKind::Date || kind == tsql::TypeKind::DateTime2;
    return dates && date.days >= first && date.days <= last && date.days == std::trunc(date.days);
}

/// True if a value needs no conversion and no check for a column of that type. A value that may is
/// told false too; the converting statement then decides.
bool liesAsGiven(const Variant& value, const tsql::Type& type)
{
    switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: return true;
    case Variant::Kind::Boolean: return type.kind == tsql::TypeKind::Bit;
    case Variant::Kind::Integer: return liesWithin(value.asInteger(), type.kind);
    case Variant::Kind::Long: return liesWithin(value.asLong(), type.kind);
    case Variant::Kind::LongLong:
        return type.kind != tsql::TypeKind::Float && liesWithin(value.asLongLong(), type.kind);
    case Variant::Kind::Double: return type.kind == tsql::TypeKind::Float && std::isfinite(value.asDouble());
    case Variant::Kind::Date: return isPlainDay(value.asDate(), type.kind);
    case Variant::Kind::String: return isShortText(value.asString(), type);
    case Variant::Kind::Object:
    case Variant::Kind::Array: break;
    }
    return false;
}

} // namespace

ResultLayout layoutOf(const std::vector<ResultColumn>& columns)
{
    ResultLayout layout;
    layout.columns.reserve(columns.size());
    layout.readings.reserve(columns.size());
    for (const ResultColumn& column : columns) {
        ado::ColumnInfo info;
        info.name = column.name;
        info.baseTable = column.baseTable;
        info.baseColumn = column.baseColumn;
        describe(column.type, info);
        layout.columns.push_back(std::move(info));
        layout.readings.push_back(rowOf(column.type.kind).reading);
    }
    return layout;
}

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

bool parseStoredDate(std::string_view text, Date& date) noexcept
{
    constexpr std::size_t storedLength = 23;
    if (text.size() != storedLength || text[4] != '-' || text[7] != '-' || text[10] != ' ' || text[13] != ':' ||
        text[16] != ':' || text[19] != '.') {
        return false;
    }
    FixedDigits digits{text.data()};
    const std::int32_t year = digits.four(0);
    const std::int32_t month = digits.two(5);
    const std::int32_t day = digits.two(8);
    const std::int32_t seconds = (digits.two(11) * 60 + digits.two(14)) * 60 + digits.two(17);
    const std::int32_t milliseconds = seconds * 1000 + digits.three(20);
    if (!digits.allDigits() || year < 1 || month < 1 || month > 12 || day < 1 || day > 31) {
        return false;
    }
    const auto days = static_cast<double>(daysBeforeMonth(year, month) + day - 1 - dayZero);
    const double fraction = static_cast<double>(milliseconds) / 86'400'000.0;
    date.days = days < 0.0 ? days - fraction : days + fraction;
    return true;
}

std::string storedDate(Date date)
{
    const CivilTime parts = toCivil(date);
    std::string text = "0000-00-00 00:00:00.000";
    const auto put = [&text](std::size_t last, std::int32_t number) {
        for (std::size_t i = last; number > 0; --i, number /= 10) {
            text[i] = static_cast<char>('0' + number % 10);
        }
    };
    put(3, parts.year);
    put(6, parts.month);
    put(9, parts.day);
    put(12, parts.hour);
    put(15, parts.minute);
    put(18, parts.second);
    put(22, parts.millisecond);
    return text;
}

std::string columnText(sqlite3_stmt* statement, int column)
{
    return std::string{textOf(Cell{statement, column})};
}

void bindText(sqlite3_stmt* statement, int position, std::string_view text)
{
    // An empty view may have no address, which SQLite would take for Null.
    const char* const bytes = text.data() != nullptr ? text.data() : "";
    sqlite3_bind_text64(statement, position, bytes, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void bindValue(sqlite3_stmt* statement, int position, const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: sqlite3_bind_null(statement, position); return;
    case Variant::Kind::Boolean: sqlite3_bind_int(statement, position, value.asBoolean() ? 1 : 0); return;
    case Variant::Kind::Integer: sqlite3_bind_int(statement, position, value.asInteger()); return;
    case Variant::Kind::Long: sqlite3_bind_int(statement, position, value.asLong()); return;
    case Variant::Kind::LongLong: sqlite3_bind_int64(statement, position, value.asLongLong()); return;
    case Variant::Kind::Double: sqlite3_bind_double(statement, position, value.asDouble()); return;
    case Variant::Kind::Date: bindText(statement, position, storedDate(value.asDate())); return;
    case Variant::Kind::String: bindText(statement, position, value.asString()); return;
    case Variant::Kind::Object:
    case Variant::Kind::Array: break;
    }
    throw Error{errors::typeMismatch,
                "A value of kind " + std::string{name(value.kind())} + " cannot be sent to the database.",
                std::string{sourceName}};
}

const ado::Parameter& parameterAt(std::span<const ado::Parameter> parameters, std::int32_t index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= parameters.size()) {
        throw failure(native::parameterMissing,
                      "No value was given for parameter " + std::to_string(index + 1) + " of the statement.");
    }
    return parameters[static_cast<std::size_t>(index)];
}

Variant typedParameter(const ado::Parameter& parameter)
{
    const Wanted wanted = wantedOf(parameter.type);
    return fits(parameter.value.kind(), wanted) ? parameter.value : converted(parameter.value, wanted);
}

bool lieAsGiven(std::span<const tsql::Type> types, std::span<const std::int32_t> wanted,
                std::span<const ado::Parameter> parameters)
{
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const ado::Parameter& parameter = parameterAt(parameters, wanted[i]);
        if (!fits(parameter.value.kind(), wantedOf(parameter.type)) || !liesAsGiven(parameter.value, types[i])) {
            return false;
        }
    }
    return true;
}

void bindParameters(sqlite3_stmt* statement, std::span<const std::int32_t> wanted,
                    std::span<const ado::Parameter> parameters)
{
    int position = 0;
    for (const std::int32_t index : wanted) {
        const ado::Parameter& parameter = parameterAt(parameters, index);
        const Wanted type = wantedOf(parameter.type);
        if (fits(parameter.value.kind(), type)) {
            bindValue(statement, ++position, parameter.value);
        } else {
            bindValue(statement, ++position, converted(parameter.value, type));
        }
    }
}

std::string quoted(std::string_view name)
{
    std::string text = "\"";
    for (const char letter : name) {
        text.append(letter == '"' ? 2 : 1, letter);
    }
    text.push_back('"');
    return text;
}

std::string storageExpression(const tsql::Type& type)
{
    const std::string length = std::to_string(type.length);
    switch (type.kind) {
    case TypeKind::VarChar:
    case TypeKind::NVarChar: return "tm_store_text(?," + length + ")";
    case TypeKind::Char:
    case TypeKind::NChar: return "tm_nchar(tm_store_text(?," + length + ")," + length + ")";
    case TypeKind::Text:
    case TypeKind::NText:
    case TypeKind::UniqueIdentifier: return "tm_store_text(?,-1)";
    case TypeKind::Decimal:
        return "tm_decimal(?," + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
    default: break;
    }
    const std::string_view conversion = rowOf(type.kind).conversion;
    return conversion.empty() ? "?" : std::string{conversion} + "(?)";
}

} // namespace tamarok::embedded
