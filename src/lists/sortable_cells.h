#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// Makes the cells of a list column comparable as text, which is how a list view sorts.
namespace tamarok::lists {

/// What the cells of a column hold. A column of empty cells is both.
struct ColumnShape {
    bool isDate = true;
    bool isNumber = true;
    std::size_t width = 0; ///< greatest length of a trimmed cell, in characters
};

/// @param emptyText  text of a cell without a value, TmkVar::strEmptyText; fits any column, as a blank cell does
ColumnShape shapeOf(std::span<const std::string> cells, std::string_view emptyText);

/// Returns a date such as "31.12.2024" as "20241231"; `otherwise` for a text of another form.
std::string sortableDate(std::string_view cell, std::string_view otherwise);

/// Returns a date of the form "20241231" as "31.12.2024".
std::string shownDate(std::string_view sortable);

/// Returns a text trimmed and padded with blanks on the left to `width` characters.
std::string paddedNumber(std::string_view cell, std::size_t width);

} // namespace tamarok::lists
