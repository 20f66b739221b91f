#include "lists/list_columns.h"

#include <algorithm>
#include <array>

#include "list/column_labels.h"
#include "lists/list_statements.h"

#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/list_catalogue.h"

namespace tamarok::workbench {

namespace {

bool isNumberPattern(const std::string& pattern)
{
    return pattern.find_first_of("0#") != std::string::npos;
}

/// The columns with which the log list opens: list, day, number, species, assortment, quality, class, length, diameter,
/// pieces, volume.
constexpr std::array<std::int16_t, 11> firstOfLogs{1, 2, 20, 22, 26, 29, 32, 33, 34, 35, 36};

} // namespace

std::vector<ListColumn> listColumns(const std::string& type, const TmkVar& session)
{
    const cli::ColumnLabels labels{type, session};
    std::vector<ListColumn> columns;
    for (const catalogue::ColumnInfo& info : catalogue::columnsOf(type)) {
        ListColumn column;
        column.id = info.id;
        column.label = labels.label(info.id);
        column.header = labels.header(info.id);
        column.pattern = Comm_CSel{}.GetFormat(type, info.id, session);
        column.isMeasure = !info.measure.empty();
        column.isNumber = column.isMeasure || isNumberPattern(column.pattern);
        column.canFilter = canFilter(type, info.id, session);
        columns.push_back(std::move(column));
    }
    return columns;
}

std::string cellText(const Variant& value, const ListColumn& column)
{
    if (value.isNull() || value.isEmpty()) return {};
    return column.pattern.empty() ? convert::toText(value) : format::value(value, column.pattern);
}

std::vector<std::int16_t> firstColumns(const std::string& type, const std::vector<ListColumn>& columns)
{
    if (type == "LOG") return {firstOfLogs.begin(), firstOfLogs.end()};
    constexpr std::ptrdiff_t keys = 6;
    constexpr std::ptrdiff_t measures = 3;
    std::vector<std::int16_t> first;
    std::ptrdiff_t keysTaken = 0;
    std::ptrdiff_t measuresTaken = 0;
    for (const ListColumn& column : columns) {
        std::ptrdiff_t& taken = column.isMeasure ? measuresTaken : keysTaken;
        if (taken >= (column.isMeasure ? measures : keys)) continue;
        ++taken;
        first.push_back(column.id);
    }
    return first;
}

} // namespace tamarok::workbench
