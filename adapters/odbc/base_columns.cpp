#include "base_columns.h"

#include <algorithm>
#include <span>

#include "link.h"
#include "parameters.h"
#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/binder.h"
#include "tamarok_tsql/parsed_batch.h"
#include "tamarok_tsql/scope.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::odbc {

namespace {

// Bytes; the bound tree of an ordinary statement fits into one block.
constexpr std::size_t arenaBlock = std::size_t{16} * 1024;

/// Columns of the describe procedure's result, by position from 0.
namespace at {
constexpr std::size_t isHidden = 0;
constexpr std::size_t sourceTable = 25;
constexpr std::size_t sourceColumn = 26;
} // namespace at

/// Asks SQL Server, in browse mode: only then it tells the sources. The keys that this mode adds are marked as hidden.
bool describeByServer(Link& link, std::string_view statement, std::vector<ado::ColumnInfo>& columns)
{
    if (link.server() != Server::SqlServer) return false; // the open server gives no sources
    const ado::Parameter text = parameterOf(std::string{statement}, ado::DataType::VarWChar);
    std::size_t column = 0;
    bool found = false;
    for (const auto& row : link.read({"EXEC sp_describe_first_result_set ?, NULL, 1", {&text, 1}})) {
        if (row.size() <= at::sourceColumn || convert::toBoolean(row[at::isHidden])) continue;
        if (column >= columns.size()) return false;
        ado::ColumnInfo& info = columns[column++];
        if (row[at::sourceTable].isNull() || row[at::sourceColumn].isNull()) continue;
        info.baseTable = convert::toText(row[at::sourceTable]);
        info.baseColumn = convert::toText(row[at::sourceColumn]);
        found = true;
    }
    return found;
}

/// Resolves the first query of the batch with the front end. Columns of derived tables lead down to those of a table.
void resolve(const Catalogue& catalogue, std::string_view statement, std::vector<ado::ColumnInfo>& columns)
{
    const tsql::ParsedBatch batch{statement};
    const auto step = std::ranges::find(batch.steps(), tsql::StepKind::Query, &tsql::ParsedStep::kind);
    if (step == batch.steps().end()) return;
    tsql::Arena arena{arenaBlock};
    tsql::Binder binder{batch.source(), catalogue, arena};
    binder.bindQuery(*step->query, nullptr);
    const std::span<tsql::OutputColumn> outputs = step->query->outputs;
    if (outputs.size() != columns.size()) return;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const tsql::BaseColumn base = tsql::baseOf(outputs[i]);
        if (base.table == nullptr) continue;
        columns[i].baseTable = base.table->name;
        columns[i].baseColumn = base.table->columns[base.column].name;
    }
}

bool hasOnlyTables(const tsql::FromItem& item)
{
    if (item.left != nullptr) return hasOnlyTables(*item.left) && hasOnlyTables(*item.right);
    return item.kind == tsql::FromKind::Table;
}

} // namespace

bool showsSingleRows(std::string_view statement)
{
    try {
        const tsql::ParsedBatch batch{statement};
        const auto step = std::ranges::find(batch.steps(), tsql::StepKind::Query, &tsql::ParsedStep::kind);
        if (step == batch.steps().end() || step->query->select == nullptr) return false;
        const tsql::Select& select = *step->query->select;
        return !select.distinct && select.groupBy.empty() && select.having == nullptr && select.from != nullptr &&
               hasOnlyTables(*select.from);
    } catch (const Error&) {
        return false;
    }
}

/// The names are an aid: a text that cannot be described leaves them empty. A lost connection shows with the next
/// statement.
void nameBaseColumns(Catalogue& catalogue, std::string_view statement, std::vector<ado::ColumnInfo>& columns)
{
    try {
        if (describeByServer(catalogue.link(), statement, columns)) return;
    } catch (const Error&) {
        if (catalogue.link().isLost()) throw;
    }
    try {
        resolve(catalogue, statement, columns);
    } catch (const Error&) {
        // A table may have changed since it was read: the next statement reads it again.
        catalogue.forget();
        if (catalogue.link().isLost()) throw;
    }
}

} // namespace tamarok::odbc
