#include "tsv_table.h"

#include <charconv>
#include <optional>

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

constexpr std::string_view source = "TsvTable";

/// Removes the text up to the first separator, or all of it, from `rest` and returns it without the separator.
std::string_view takeCell(std::string_view& rest, char separator)
{
    const auto end = rest.find(separator);
    const auto cell = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return cell;
}

/// Reads all of the text as a number with a decimal point; false if it is none.
template <class Number>
bool parse(std::string_view text, Number& number)
{
    const char* end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    return failure == std::errc{} && stop == end;
}

/// Reads yyyy-mm-dd; nullopt if the text has another form or names no day.
std::optional<Date> parseDate(std::string_view text)
{
    std::int32_t year = 0;
    std::int32_t month = 0;
    std::int32_t day = 0;
    const bool hasForm = text.size() == 10 && text[4] == '-' && text[7] == '-' && parse(text.substr(0, 4), year) &&
                         parse(text.substr(5, 2), month) && parse(text.substr(8, 2), day);
    if (!hasForm) return std::nullopt;
    try {
        return makeDate(year, month, day);
    } catch (const Error&) {
        return std::nullopt; // the caller reports the cell
    }
}

} // namespace

TsvTable::TsvTable(std::string_view name, std::string_view text) : name_{name}
{
    std::string_view rest = text;
    readHead(takeCell(rest, '\n'));
    for (std::size_t line = 2; !rest.empty(); ++line)
        readRow(takeCell(rest, '\n'), line);
}

void TsvTable::readHead(std::string_view line)
{
    constexpr std::string_view letters = "tifdb"; // in the order of CellType
    while (!line.empty()) {
        std::string_view cell = takeCell(line, '\t');
        const std::string_view column = takeCell(cell, ':');
        const auto type = cell.size() == 1 ? letters.find(cell.front()) : std::string_view::npos;
        if (column.empty() || type == std::string_view::npos)
            throw Error{errors::invalidArgument,
                        "Table " + name_ + ": the head \"" + std::string{column} + "\" has no type.",
                        std::string{source}};
        columns_.push_back({column, static_cast<CellType>(type)});
    }
}

void TsvTable::readRow(std::string_view line, std::size_t lineNumber)
{
    std::size_t count = 1;
    for (auto tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t'), ++count) {
        cells_.push_back(line.substr(0, tab));
        line.remove_prefix(tab + 1);
    }
    cells_.push_back(line); // the last cell, which no tab ends, may be empty
    if (count != columns_.size())
        throw Error{errors::invalidArgument,
                    "Table " + name_ + ", line " + std::to_string(lineNumber) + ": " + std::to_string(count) +
                        " cells for " + std::to_string(columns_.size()) + " columns.",
                    std::string{source}};
}

std::size_t TsvTable::column(std::string_view name) const
{
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].name == name) return i;
    throw Error{errors::itemNotFound, "Table " + name_ + " has no column " + std::string{name} + ".",
                std::string{source}};
}

std::string_view TsvTable::cell(std::size_t row, std::size_t column) const
{
    if (row >= rows() || column >= columns_.size())
        throw Error{errors::subscriptOutOfRange,
                    "Table " + name_ + " has no cell " + std::to_string(row) + ", " + std::to_string(column) + ".",
                    std::string{source}};
    return cells_[row * columns_.size() + column];
}

Variant TsvTable::value(std::size_t row, std::size_t column) const
{
    const std::string_view text = cell(row, column);
    if (text.empty()) return Null{};
    switch (columns_[column].type) {
    case CellType::Text: return text;
    case CellType::Whole: return whole(row, column);
    case CellType::Number: return number(row, column);
    case CellType::Flag: return whole(row, column) != 0;
    case CellType::Date: break;
    }
    const std::optional<Date> date = parseDate(text);
    if (!date) fail(row, column, "no date");
    return *date;
}

std::int32_t TsvTable::whole(std::size_t row, std::size_t column) const
{
    const std::string_view text = cell(row, column);
    std::int32_t number = 0;
    if (!text.empty() && !parse(text, number)) fail(row, column, "no whole number");
    return number;
}

double TsvTable::number(std::size_t row, std::size_t column) const
{
    const std::string_view text = cell(row, column);
    double number = 0.0;
    if (!text.empty() && !parse(text, number)) fail(row, column, "no number");
    return number;
}

void TsvTable::fail(std::size_t row, std::size_t column, std::string_view what) const
{
    throw Error{errors::invalidArgument,
                "Table " + name_ + ", line " + std::to_string(row + 2) + ", column " +
                    std::string{columns_[column].name} + ": \"" + std::string{cell(row, column)} + "\" is " +
                    std::string{what} + ".",
                std::string{source}};
}

} // namespace tamarok::database
