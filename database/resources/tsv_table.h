#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/variant.h"

namespace tamarok::database {

/// Type of a column's cells.
enum class CellType : std::uint8_t { Text, Whole, Number, Date, Flag };

/// A table as tab-separated text. The first line has "NAME:type" cells (t text, i whole number, f number
/// with a decimal point, d date as yyyy-mm-dd, b flag as 0 or 1); each further line is a row. An empty
/// cell is Null. Views point into the text, which must outlive the table.
class TsvTable {
public:
    struct Column {
        std::string_view name;
        CellType type = CellType::Text;
    };

    /// Splits the text into cells; values are converted when they are read.
    /// @param name  for error messages
    /// Error 5, with the table's name and line, if a head has no type or a row another number of cells.
    TsvTable(std::string_view name, std::string_view text);

    const std::vector<Column>& columns() const noexcept { return columns_; }
    std::size_t rows() const noexcept { return columns_.empty() ? 0 : cells_.size() / columns_.size(); }

    /// Returns the ordinal of a column. Error 3265 if the table has no column of that name.
    std::size_t column(std::string_view name) const;

    /// Returns a cell's text unconverted. Error 9 outside the table.
    std::string_view cell(std::size_t row, std::size_t column) const;

    /// Returns a cell as a value of its column's type: String, Long, Double, Date, Boolean or Null.
    /// Error 5, with table, line and column, if the text is no value of the type; Error 9 outside the table.
    Variant value(std::size_t row, std::size_t column) const;

    /// Returns a cell as a whole number, an empty one as 0. Errors as for value().
    std::int32_t whole(std::size_t row, std::size_t column) const;

    /// Returns a cell as a number, an empty one as 0. Errors as for value().
    double number(std::size_t row, std::size_t column) const;

private:
    void readHead(std::string_view line);
    void readRow(std::string_view line, std::size_t lineNumber);
    [[noreturn]] void fail(std::size_t row, std::size_t column, std::string_view what) const;

    std::string name_;
    std::vector<Column> columns_;
    std::vector<std::string_view> cells_; ///< row by row
};

} // namespace tamarok::database
