#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "day/steps.h"

#include "tamarok/form.h"
#include "tamarok/list_view.h"

namespace tamarok::cli::day {

/// A list of one type on a form, as the forms of the application set it up: a header for each column, with its label,
/// and its id in the key.
class ListWindow {
public:
    ListWindow(const Context& context, std::string type, const std::vector<std::int16_t>& ids);

    /// Fills the list and prints the statement. @param condition  without the word WHERE, "" for none
    void fill(std::string_view base, std::string_view condition = {});
    /// Clicks the header of a column, counted from 1.
    void click(std::int32_t column);
    /// Prints the headers and the first rows.
    void print(std::int32_t rows) const;

    /// Sets the width of a column, in twips.
    void widen(std::int32_t column, float width);
    /// The widths of all columns, separated by blanks.
    std::string widths() const;
    void saveWidths(std::string_view relation);
    void restoreWidths(std::string_view relation);

    controls::ListView& view() noexcept { return *view_; }

private:
    std::string cell(std::int32_t row, std::int32_t column) const;

    const Context& context_;
    std::string type_;
    std::shared_ptr<controls::Form> form_ = std::make_shared<controls::Form>();
    std::shared_ptr<controls::ListView> view_ = std::make_shared<controls::ListView>();
};

} // namespace tamarok::cli::day
