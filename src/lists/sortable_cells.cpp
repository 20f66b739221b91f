#include "sortable_cells.h"

#include <algorithm>

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::lists {

namespace {

/// Whether a part of a date reads as a number up to `most`.
bool isNumberUpTo(std::string_view part, double most)
{
    const Variant text{part};
    return convert::isNumeric(text) && convert::toDouble(text) <= most;
}

/// Whether a cell begins like "31.12.2024". What follows does not matter here.
bool isDateShaped(std::string_view cell)
{
    return text::mid(cell, 3, 1) == "." && text::mid(cell, 6, 1) == "." && isNumberUpTo(text::mid(cell, 1, 2), 31) &&
           isNumberUpTo(text::mid(cell, 4, 2), 12) && isNumberUpTo(text::mid(cell, 7, 4), 9999);
}

/// Returns the last `digits` characters of a part that is padded with zeros.
std::string digitsOf(std::string_view part, std::size_t digits)
{
    return std::string{text::right(std::string(digits, '0').append(part), digits)};
}

} // namespace

ColumnShape shapeOf(std::span<const std::string> cells, std::string_view emptyText)
{
    ColumnShape shape;
    for (const std::string& cell : cells) {
        const std::string_view trimmed = text::trim(cell);
        shape.width = std::max(shape.width, text::length(trimmed));
        if (trimmed.empty() || cell == emptyText) continue;
        if (isDateShaped(cell)) {
            shape.isNumber = false;
        } else {
            shape.isDate = false;
        }
        if (shape.isNumber) shape.isNumber = convert::isNumeric(Variant{trimmed});
        if (!shape.isDate && !shape.isNumber) break;
    }
    return shape;
}

std::string sortableDate(std::string_view cell, std::string_view otherwise)
{
    const std::size_t first = cell.find('.');
    const std::size_t last = cell.rfind('.');
    if (first == last) return std::string{otherwise};
    const std::string_view day = cell.substr(0, first);
    const std::string_view month = cell.substr(first + 1, last - first - 1);
    const std::string_view year = cell.substr(last + 1);
    for (const std::string_view part : {day, month, year})
        if (!convert::isNumeric(Variant{part})) return std::string{otherwise};
    return digitsOf(year, 4) + digitsOf(month, 2) + digitsOf(day, 2);
}

std::string shownDate(std::string_view sortable)
{
    std::string shown{text::mid(sortable, 7, 2)};
    return shown.append(".").append(text::mid(sortable, 5, 2)).append(".").append(text::mid(sortable, 1, 4));
}

std::string paddedNumber(std::string_view cell, std::size_t width)
{
    const std::string_view trimmed = text::trim(cell);
    const std::size_t length = text::length(trimmed);
    return std::string(width > length ? width - length : 0, ' ').append(trimmed);
}

} // namespace tamarok::lists
