#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "print/output.h"

#include "tamarok/ado.h"
#include "tamarok/regional.h"
#include "tamarok/variant.h"

namespace tamarok::cli {

enum class ListFormat : std::uint8_t {
    Table,   ///< aligned, under the regional settings
    Csv,     ///< comma-separated, first line the headers; numbers with a point, dates as 2024-03-05
    JsonRows ///< {"columns":[...],"rows":[[...],...]}, one row a line
};

/// Prints rows one by one.
class ListPrinter {
public:
    virtual ~ListPrinter() = default;
    virtual void row(const std::vector<Variant>& values) = 0;
    /// Prints what belongs after the last row, and flushes the output.
    virtual void finish() = 0;
};

/// @param patterns  number or date pattern of each column, in which a table shows it; "" or none for the plain value
std::unique_ptr<ListPrinter> makeListPrinter(ListFormat format, Output& output, std::vector<std::string> headers,
                                             std::vector<std::string> patterns = {});

/// Prints the rows from the current one on, at most `limit`. The rows are not kept in memory.
/// @return number of rows
std::int64_t printRows(ado::Recordset& records, ListPrinter& printer, std::optional<std::int64_t> limit = {});

/// Returns the names of the fields in order, as headers of a list without labels.
std::vector<std::string> fieldNames(const ado::Recordset& records);

} // namespace tamarok::cli
