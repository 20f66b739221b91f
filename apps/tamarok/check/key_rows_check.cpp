#include <string>
#include <vector>

#include "check/checks.h"
#include "check/remedies.h"
#include "check/rows.h"
#include "tamarok_tsql/table_definition.h"

namespace tamarok::cli::check {

namespace {

bool hasRows(const ado::ConnectionRef& connection, const std::string& table)
{
    return countRows(connection, "SELECT TOP 1 1 AS N FROM " + tsql::bracketed(table)) > 0;
}

} // namespace

/// The tables that a new database comes with filled. An installation may have no use for some of them; without rows in
/// any of them its data were never loaded.
void checkKeyRows(Context& context)
{
    if (context.installation.tables.empty()) {
        context.report.add(State::Skipped, "key rows", "no table is known");
        return;
    }
    std::size_t filled = 0;
    std::vector<std::string> empty;
    for (const auto& [name, table] : context.reference.tables) {
        if (!context.installation.tables.contains(name) || !hasRows(context.reference.database, name)) continue;
        if (hasRows(context.installation.connection(), name))
            ++filled;
        else
            empty.push_back(name);
    }
    if (filled == 0) {
        context.report.add(State::Missing, "key rows",
                           "no table of keys has rows: " + (context.installation.isFile()
                                                                ? "make the database with 'tamarok init'"
                                                                : "run " + std::string{masterDataScript}));
        return;
    }
    std::string remark = std::to_string(filled) + " tables of keys have rows";
    if (!empty.empty()) remark += "; without rows, which is right where you do not use them: " + shortList(empty);
    context.report.add(State::Ok, "key rows", remark);
}

} // namespace tamarok::cli::check
