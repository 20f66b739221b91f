#include <string>
#include <vector>

#include "check/checks.h"
#include "check/column_faults.h"
#include "check/remedies.h"
#include "tamarok_database/scripts.h"

namespace tamarok::cli::check {

namespace {

std::string counted(std::size_t number, const char* of)
{
    return std::to_string(number) + " " + of;
}

/// What mends a missing table.
std::string remedyOf(const Context& context, const std::string& table)
{
    if (context.installation.isFile())
        return "run its CREATE TABLE of " + std::string{schemaFolder} + std::string{database::scriptOfTable(table)};
    return "run " + std::string{tablesScript} + " again, or grant the login a right on what it does not see";
}

/// One line for each missing table, or one for many.
void reportMissing(Context& context, const std::vector<std::string>& missing)
{
    constexpr std::size_t fewest = 20;
    if (missing.size() == context.reference.tables.size()) {
        context.report.add(State::Missing, "tables",
                           "none of the " + counted(missing.size(), "tables") +
                               " is there: make the database with 'tamarok init', or name another one" +
                               (context.installation.isFile() ? "" : ", or grant the login rights on them"));
        return;
    }
    if (missing.size() > fewest) {
        context.report.add(State::Missing, "tables",
                           counted(missing.size(), "tables") + " (" + shortList(missing) +
                               "): " + remedyOf(context, missing.front()));
        return;
    }
    for (const std::string& name : missing)
        context.report.add(State::Missing, "table " + name, remedyOf(context, name));
}

/// Compares the columns of a table. @return number of columns that are right
std::size_t compareColumns(Context& context, const TableShape& expected, const TableShape& found)
{
    std::size_t right = 0;
    for (const ColumnShape& column : expected.columns) {
        const std::string what = "column " + expected.name + "." + column.name;
        const ColumnShape* const actual = found.column(column.name);
        if (actual == nullptr) {
            context.report.add(State::Missing, what, addition(expected, column, !context.installation.isFile()));
            continue;
        }
        const std::string fault = faultOf(expected, column, *actual, !context.installation.isFile());
        if (fault.empty())
            ++right;
        else
            context.report.add(State::Different, what, fault);
    }
    return right;
}

/// Without a key no recordset can change or hold a row.
void checkKey(Context& context, const TableShape& expected, const TableShape& found)
{
    const std::string remedy = keyAddition(expected);
    if (found.hasKey || remedy.empty()) return;
    context.report.add(State::Missing, "key of " + expected.name,
                       "its rows can be neither edited nor locked: " + remedy);
}

/// What the customer has added is no fault.
std::string additions(const Context& context)
{
    std::size_t tables = 0;
    std::size_t columns = 0;
    for (const auto& [name, table] : context.installation.tables) {
        const auto expected = context.reference.tables.find(name);
        if (expected == context.reference.tables.end()) {
            ++tables;
            continue;
        }
        for (const ColumnShape& column : table.columns)
            if (expected->second.column(column.name) == nullptr) ++columns;
    }
    if (tables + columns == 0) return {};
    return "; " + counted(tables, "tables") + " and " + counted(columns, "columns") + " of your own besides";
}

} // namespace

/// Tables and columns with their types. The line of what is right comes before those of the faults, as in all checks.
void checkTables(Context& context)
{
    Installation& installation = context.installation;
    installation.tables =
        installation.isFile() ? embeddedTables(*installation.connection()) : serverTables(installation.connection());
    Report faults;
    Context quiet{installation, context.reference, faults};
    std::vector<std::string> missing;
    std::size_t right = 0;
    for (const auto& [name, expected] : context.reference.tables) {
        const auto found = installation.tables.find(name);
        if (found == installation.tables.end()) {
            missing.push_back(name);
            continue;
        }
        right += compareColumns(quiet, expected, found->second);
        checkKey(quiet, expected, found->second);
    }
    reportMissing(quiet, missing);
    if (missing.size() < context.reference.tables.size())
        context.report.add(State::Ok, "tables",
                           counted(context.reference.tables.size() - missing.size(), "tables with ") +
                               counted(right, "columns are as the library needs them") + additions(context));
    context.report.append(faults);
}

} // namespace tamarok::cli::check
