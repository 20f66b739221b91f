#include "sortable_cells.h"

#include <algorithm>

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::lists {

namespace {

bool isDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}

/// Whether a cell is written like "31.12.2024" with digits alone, as most dates are. Such a cell needs no conversion of
/// its parts: the dates of a column are sorted 1.5 times as fast (bench: orderListView/dates).
bool isPlainDate(std::string_view cell) noexcept
{
    constexpr std::string_view form = "00.00.0000";
    return cell.size() == form.size() && std::ranges::equal(cell, form, [](char character, char place) {
               return place == '0' ? isDigit(character) : character == place;
           });
}

int twoDigits(std::string_view digits) noexcept
{
    return (digits[0] - '0') * 10 + (digits[1] - '0');
}

/// Whether a part of a date reads as a number up to `most`.
bool isNumberUpTo(std::string_view part, double most)
{
    const Variant text{part};
    return convert::isNumeric(text) && convert::toDouble(text) <= most;
}

/// Whether a cell begins like "31.12.2024". What follows does not matter here.
bool isDateShaped(std::string_view cell)
{
    if (isPlainDate(cell)) return twoDigits(cell) <= 31 && twoDigits(cell.substr(3)) <= 12;
    return text::mid(cell, 3, 1) == "." && text::mid(cell, 6, 1) == "." && isNumberUpTo(text::mid(cell, 1, 2), 31) &&
           isNumberUpTo(text::mid(cell, 4, 2), 12) && isNumberUpTo(text::mid(cell, 7, 4), 9999);
}

/// Returns the last `digits` characters of a part that is padded with zeros.
std::string digitsOf(std::string_view part, std::size_t digits)
{
    return std::string{text::right(std::string(digits, '0').append(part), digits)};
}

} // namespace

bool ColumnShape::add(const std::string& cell)
{
    const std::string_view trimmed = text::trim(cell);
    width_ = std::max(width_, text::length(trimmed));
    if (trimmed.empty() || cell == emptyText_) return true;
    if (isDateShaped(cell)) {
        isNumber_ = false;
    } else {
        isDate_ = false;
    }
    if (isNumber_) isNumber_ = convert::isNumeric(Variant{trimmed});
    return isDate_ || isNumber_;
}

std::string sortableDate(std::string_view cell, std::string_view otherwise)
{
    if (isPlainDate(cell)) {
        std::string sortable{cell.substr(6)};
        return sortable.append(cell.substr(3, 2)).append(cell.substr(0, 2));
    }
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

bool isSortableDate(std::string_view cell) noexcept
{
    return text::length(cell) == 8 && cell.find(' ') == std::string_view::npos;
}

std::string shownDate(std::string_view sortable)
{
    // Of eight characters in eight bytes each one is a byte.
    const bool isPlain = sortable.size() == 8;
    const auto part = [&](std::size_t start, std::size_t count) {
        return isPlain ? sortable.substr(start, count) : text::mid(sortable, start + 1, count);
    };
    std::string shown{part(6, 2)};
    return shown.append(".").append(part(4, 2)).append(".").append(part(0, 4));
}

std::string paddedNumber(std::string_view cell, std::size_t width)
{
    const std::string_view trimmed = text::trim(cell);
    const std::size_t length = text::length(trimmed);
    return std::string(width > length ? width - length : 0, ' ').append(trimmed);
}

} // namespace tamarok::lists
