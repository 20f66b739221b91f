#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "print/list_printer.h"
#include "print/output.h"

#include "tamarok/regional.h"

namespace tamarok::cli {

/// A table with aligned columns: numbers to the right, Null blank. A column without a pattern shows numbers with two
/// decimals and grouping, and dates short. Widths are those of the headers and of the first 500 rows; a wider cell
/// further down shifts the rest of its own line only.
class TablePrinter final : public ListPrinter {
public:
    /// @param patterns  of the columns, in their order; columns beyond have none
    TablePrinter(Output& output, std::vector<std::string> headers, std::vector<std::string> patterns,
                 Regional regional);

    void row(const std::vector<Variant>& values) override;
    void finish() override;

private:
    struct Cell {
        std::string text;
        bool right = false;
    };
    using Line = std::vector<Cell>;

    Cell cell(const Variant& value, const std::string& pattern) const;
    Cell plainCell(const Variant& value) const;
    void fixWidths();
    void print(const Line& line);
    void printHead();

    Output& output_;
    std::vector<std::string> headers_;
    std::vector<std::string> patterns_; ///< one for each header
    Regional regional_;
    std::vector<std::size_t> widths_;
    std::vector<bool> numeric_; ///< columns whose header stands to the right
    std::vector<Line> waiting_; ///< rows until the widths are fixed
    bool widthsFixed_ = false;
};

} // namespace tamarok::cli
