#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "check/checks.h"
#include "check/column_faults.h"
#include "check/rows.h"
#include "tamarok_tsql/type_rules.h"

#include "tamarok/text.h"

namespace tamarok::cli::check {

namespace {

/// A comparison of texts that the library counts on: keys and names are found in any case, and accents tell them apart.
struct Demand {
    std::string_view condition; ///< {C} stands for the collation
    std::string_view fault;
};

constexpr std::array demands{
    Demand{"N'\u00E4b' {C} = N'\u00C4B'", "it tells upper from lower case"},
    Demand{"N'a' {C} <> N'\u00E4'", "it takes letters with and without accents for the same"},
};

/// What is wrong with a collation; empty for a right one. @param clause  " COLLATE name", or "" for the database's own
std::string faultOfCollation(const ado::ConnectionRef& connection, const std::string& clause)
{
    for (const Demand& demand : demands) {
        const std::string condition = text::replaceAll(demand.condition, " {C}", clause);
        if (readText(connection, "SELECT CASE WHEN " + condition + " THEN 1 ELSE 0 END") != "1")
            return std::string{demand.fault};
    }
    return {};
}

constexpr const char* remedy = ": make the database with a collation _CI_AS, such as Latin1_General_CI_AS";

/// A column of the reference schema with texts, as the installation has it.
struct TextColumn {
    std::string table;
    const ColumnShape* expected;
    const ColumnShape* found;
};

std::vector<TextColumn> textColumns(const Context& context)
{
    std::vector<TextColumn> all;
    for (const auto& [name, table] : context.reference.tables) {
        const auto found = context.installation.tables.find(name);
        if (found == context.installation.tables.end()) continue;
        for (const ColumnShape& column : table.columns) {
            const ColumnShape* const actual = found->second.column(column.name);
            const bool isText = tsql::isText(column.type);
            if (isText && actual != nullptr && actual->type.kind == column.type.kind)
                all.push_back({name, &column, actual});
        }
    }
    return all;
}

/// The collation that most columns have.
std::string usualCollation(const std::vector<TextColumn>& columns)
{
    std::map<std::string, int, NameLess> counts;
    for (const TextColumn& column : columns)
        ++counts[column.found->collation];
    const auto most = std::ranges::max_element(counts, {}, [](const auto& each) { return each.second; });
    return most == counts.end() ? std::string{} : most->first;
}

void reportColumn(Context& context, const TextColumn& column, const std::string& fault, std::string_view wanted)
{
    const std::string change = context.installation.isFile()
                                   ? std::string{newFile}
                                   : alteration(column.table, *column.expected, wanted) +
                                         "; drop a key or index on it before, and make it again";
    context.report.add(State::Different, "collation of " + column.table + "." + column.expected->name,
                       fault + ": " + change);
}

/// Columns that compare otherwise than the rest: a join between the two is error 468 on a server.
void checkColumns(Context& context, const std::vector<TextColumn>& columns, const std::string& usual)
{
    for (const TextColumn& column : columns) {
        if (column.expected->exact && !column.found->exact)
            reportColumn(context, column, "it takes upper and lower case for the same, and its names compare exactly",
                         exactCollation);
        else if (!column.expected->exact && (column.found->exact || !tsql::sameName(column.found->collation, usual)))
            reportColumn(context, column, column.found->collation + " instead of " + usual + ", as the other columns",
                         usual);
    }
}

} // namespace

/// The collation of the database rules literals, that of the columns whatever is compared with them.
void checkCollation(Context& context)
{
    const ado::ConnectionRef& connection = context.installation.connection();
    const bool isFile = context.installation.isFile();
    const std::string own =
        isFile ? std::string{"built in"}
               : readText(connection, "SELECT CAST(DATABASEPROPERTYEX(DB_NAME(), 'Collation') AS NVARCHAR(128))");
    const std::string fault = faultOfCollation(connection, "");
    context.report.add(fault.empty() ? State::Ok : State::Different, "collation of the database",
                       fault.empty() ? own : own + ": " + fault + remedy);
    const std::vector<TextColumn> columns = textColumns(context);
    const std::string usual = usualCollation(columns);
    if (!usual.empty()) {
        const std::string wrong = faultOfCollation(connection, " COLLATE " + usual);
        context.report.add(wrong.empty() ? State::Ok : State::Different, "collation of the columns",
                           wrong.empty() ? usual : usual + ": " + wrong + remedy);
    }
    checkColumns(context, columns, usual);
}

} // namespace tamarok::cli::check
