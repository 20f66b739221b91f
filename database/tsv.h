#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/variant.h"

namespace tamarok::database {

/// What the cells of a column hold.
enum class CellType : std::uint8_t { Text, Whole, Number, Date, Flag };

/// A table as tab-separated text: a head line of "NAME:type" cells (t text, i whole number, f number
/// with a decimal point, d date as yyyy-mm-dd, b flag as 0 or 1), then one line a row. An empty cell
/// is Null. Views point into the text, which must outlive the table.
class TsvTable {
public:
    struct Column {
        std::string_view name;
        CellType type = CellType::Text;
    };

    /// Error 5, with the table's name and line, for a head or row of another form.
    /// @param name  for messages
    TsvTable(std::string_view name, std::string_view text);

    const std::vector<Column>& columns() const noexcept { return columns_; }
    std::size_t rows() const noexcept { return columns_.empty() ? 0 : cells_.size() / columns_.size(); }

    /// Ordinal of a column; Error 3265 where the table has none of that name.
    std::size_t column(std::string_view name) const;

    /// Cell as it stands in the text. Error 9 outside the table.
    std::string_view cell(std::size_t row, std::size_t column) const;
    /// Cell as a value of its column's type: String, Long, Double, Date, Boolean or Null.
    Variant value(std::size_t row, std::size_t column) const;
    /// Cell of a whole-number column; 0 for an empty one.
    std::int32_t whole(std::size_t row, std::size_t column) const;
    /// Cell of a number column; 0 for an empty one.
    double number(std::size_t row, std::size_t column) const;

private:
    void readHead(std::string_view line);
    void readRow(std::string_view line, std::size_t lineNumber);
    [[noreturn]] void fail(std::size_t row, std::size_t column, std::string_view what) const;

    std::string name_;
    std::vector<Column> columns_;
    std::vector<std::string_view> cells_;
};

} // namespace tamarok::database
