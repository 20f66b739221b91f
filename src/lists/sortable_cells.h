#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Makes the cells of a list column comparable as text, which is how a list view sorts.
namespace tamarok::lists {

/// What the cells of a column hold, found cell by cell. A column of empty cells holds dates and numbers.
class ColumnShape {
public:
    /// @param emptyText  text of a cell without a value, TmkVar::strEmptyText; fits any column, as a blank cell does.
    ///                   Must outlive this object
    explicit ColumnShape(std::string_view emptyText) : emptyText_{emptyText} {}

    /// Takes a cell into account. Returns whether the column may still hold dates or numbers only.
    bool add(const std::string& cell);

    bool isDate() const noexcept { return isDate_; }
    bool isNumber() const noexcept { return isNumber_; }
    /// Returns the greatest length of a trimmed cell, in characters.
    std::size_t width() const noexcept { return width_; }

private:
    std::string_view emptyText_;
    bool isDate_ = true;
    bool isNumber_ = true;
    std::size_t width_ = 0;
};

/// Returns a date such as "31.12.2024" as "20241231"; `otherwise` for a text of another form.
std::string sortableDate(std::string_view cell, std::string_view otherwise);

/// Whether a text has the form of `sortableDate`: eight characters, none of them a blank.
bool isSortableDate(std::string_view cell) noexcept;

/// Returns a date of the form "20241231" as "31.12.2024".
std::string shownDate(std::string_view sortable);

/// Returns a text trimmed and padded with blanks on the left to `width` characters.
std::string paddedNumber(std::string_view cell, std::size_t width);

} // namespace tamarok::lists
