#include "print/table_printer.h"

#include <algorithm>
#include <utility>

#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/text.h"

namespace tamarok::cli {

namespace {

constexpr std::size_t rowsForWidths = 500;
constexpr std::string_view gap = "  ";
constexpr std::string_view decimalPattern = "#,##0.00";

/// The text on one line: control characters become blanks.
std::string oneLine(std::string text)
{
    std::ranges::replace_if(
        text, [](char character) { return static_cast<unsigned char>(character) < 0x20; }, ' ');
    return text;
}

std::string padded(const std::string& text, std::size_t width, bool right)
{
    const std::size_t length = text::length(text);
    if (length >= width) return text;
    const std::string blanks(width - length, ' ');
    return right ? blanks + text : text + blanks;
}

bool isNumber(const Variant& value)
{
    using Kind = Variant::Kind;
    return value.kind() == Kind::Integer || value.kind() == Kind::Long || value.kind() == Kind::LongLong ||
           value.kind() == Kind::Double;
}

} // namespace

TablePrinter::TablePrinter(Output& output, std::vector<std::string> headers, std::vector<std::string> patterns,
                           Regional regional) :
    output_{output},
    headers_{std::move(headers)}, patterns_{std::move(patterns)}, regional_{std::move(regional)},
    numeric_(headers_.size(), false)
{
    patterns_.resize(headers_.size());
    for (const std::string& header : headers_)
        widths_.push_back(text::length(header));
}

TablePrinter::Cell TablePrinter::plainCell(const Variant& value) const
{
    if (value.kind() == Variant::Kind::Double)
        return {format::number(value.asDouble(), decimalPattern, regional_), true};
    return {oneLine(convert::toText(value, regional_)), isNumber(value)};
}

TablePrinter::Cell TablePrinter::cell(const Variant& value, const std::string& pattern) const
{
    if (value.isEmpty() || value.isNull()) return {};
    if (pattern.empty()) return plainCell(value);
    return {oneLine(format::value(value, pattern, regional_)), isNumber(value)};
}

void TablePrinter::row(const std::vector<Variant>& values)
{
    Line line;
    line.reserve(values.size());
    for (std::size_t column = 0; column < values.size(); ++column)
        line.push_back(cell(values[column], patterns_[column]));
    if (widthsFixed_) {
        print(line);
        return;
    }
    waiting_.push_back(std::move(line));
    if (waiting_.size() == rowsForWidths) fixWidths();
}

void TablePrinter::finish()
{
    if (!widthsFixed_) fixWidths();
    output_.flush();
}

void TablePrinter::fixWidths()
{
    for (const Line& line : waiting_) {
        for (std::size_t column = 0; column < line.size(); ++column) {
            widths_[column] = std::max(widths_[column], text::length(line[column].text));
            if (line[column].right) numeric_[column] = true;
        }
    }
    widthsFixed_ = true;
    printHead();
    for (const Line& line : waiting_)
        print(line);
    waiting_.clear();
}

void TablePrinter::printHead()
{
    Line titles;
    Line rule;
    for (std::size_t column = 0; column < headers_.size(); ++column) {
        titles.push_back({headers_[column], numeric_[column]});
        rule.push_back({std::string(widths_[column], '-'), false});
    }
    print(titles);
    print(rule);
}

void TablePrinter::print(const Line& line)
{
    std::string text;
    for (std::size_t column = 0; column < line.size(); ++column) {
        if (column > 0) text += gap;
        text += padded(line[column].text, widths_[column], line[column].right);
    }
    text.erase(text.find_last_not_of(' ') + 1);
    output_.write(text + "\n");
}

} // namespace tamarok::cli
