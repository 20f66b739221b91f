#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "print/list_printer.h"
#include "print/output.h"

#include "tamarok/regional.h"

namespace tamarok::cli {

/// A table with aligned columns: numbers to the right with two decimals and grouping, dates short,
/// Null blank. Widths are those of the headers and the first rows; a wider cell further down pushes its
/// own line only.
class TablePrinter final : public ListPrinter {
public:
    TablePrinter(Output& output, std::vector<std::string> headers, Regional regional);

    void row(const std::vector<Variant>& values) override;
    void finish() override;

private:
    struct Cell {
        std::string text;
        bool right = false;
    };
    using Line = std::vector<Cell>;

    Cell cell(const Variant& value) const;
    void settleWidths();
    void print(const Line& line);
    void printHead();

    Output& output_;
    std::vector<std::string> headers_;
    Regional regional_;
    std::vector<std::size_t> widths_;
    std::vector<bool> numeric_; ///< columns whose header stands to the right
    std::vector<Line> waiting_; ///< rows until the widths are settled
    bool settled_ = false;
};

} // namespace tamarok::cli
