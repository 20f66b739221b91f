#include "row_changes.h"

#include <algorithm>
#include <utility>

#include "failures.h"
#include "link.h"
#include "parameters.h"

namespace tamarok::odbc {

namespace {

using tsql::sameName;

/// The name of the one table that all base columns belong to; empty where there is none or more than one.
std::string singleTable(std::span<const ado::ColumnInfo> columns)
{
    std::string name;
    for (const ado::ColumnInfo& column : columns) {
        if (column.baseTable.empty()) continue;
        if (!name.empty() && !sameName(name, column.baseTable)) return {};
        name = column.baseTable;
    }
    return name;
}

} // namespace

// More than one table makes the rows read-only.
std::optional<BaseTable> BaseTable::of(const Catalogue& catalogue, std::span<const ado::ColumnInfo> columns)
{
    BaseTable table;
    table.name = singleTable(columns);
    if (table.name.empty()) return std::nullopt;
    table.keyColumns = catalogue.key(table.name);
    for (const std::string& key : table.keyColumns) {
        const auto found = std::ranges::find_if(
            columns, [&key](const ado::ColumnInfo& column) { return sameName(column.baseColumn, key); });
        if (found == columns.end()) {
            table.keyPositions.clear();
            break;
        }
        table.keyPositions.push_back(static_cast<std::size_t>(found - columns.begin()));
    }
    table.identity = catalogue.identity(table.name);
    table.plain = std::ranges::none_of(columns, [](const auto& column) { return column.baseColumn.empty(); });
    return table;
}

void RowChanges::requireKey(const KeyValues& key) const
{
    if (key.empty())
        throw unsupported("The columns of the recordset do not tell which row of table '" + table_.name +
                          "' this is: add the whole key of the table to the statement.");
}

/// The first column outside the key serves a server that holds a row by writing it.
RowName RowChanges::rowName(const KeyValues& key) const
{
    RowName row{table_.name, table_.keyColumns, keyParameters(key), {}};
    for (const ado::ColumnInfo& column : columns_) {
        const bool inKey = std::ranges::any_of(
            table_.keyColumns, [&column](const std::string& name) { return sameName(name, column.baseColumn); });
        if (!inKey && !column.baseColumn.empty() && !sameName(column.baseColumn, table_.identity)) {
            row.plainColumn = column.baseColumn;
            break;
        }
    }
    return row;
}

std::vector<ado::Parameter> RowChanges::keyParameters(const KeyValues& key) const
{
    std::vector<ado::Parameter> parameters;
    for (std::size_t i = 0; i < key.size(); ++i)
        parameters.push_back(parameterOf(key[i], columns_[table_.keyPositions[i]].type));
    return parameters;
}

/// The column of the table that a column of the recordset comes from.
const ado::ColumnInfo& RowChanges::target(std::size_t column) const
{
    const ado::ColumnInfo& info = columns_.at(column);
    if (info.baseColumn.empty())
        throw unsupported("Column " + std::to_string(column) +
                          " of the recordset is an expression and cannot be changed.");
    return info;
}

/// A statement that finds no row means that it has been deleted, or that its key was changed elsewhere.
void RowChanges::change(const std::string& text, std::span<const ado::Parameter> parameters) const
{
    if (link_.changeRows({text, parameters, timeoutSeconds_}) == 0)
        throw Error{errors::rowDeleted, "The row of table '" + table_.name + "' has been deleted.",
                    std::string{sourceName}};
}

// The key of the row may be among the assignments: the caller goes on with the new one.
KeyValues RowChanges::update(const KeyValues& key, std::span<const ado::Assignment> assignments) const
{
    requireKey(key);
    KeyValues changed = key;
    if (assignments.empty()) return changed;
    std::string text = "UPDATE " + link_.quoted(table_.name) + " SET ";
    std::vector<ado::Parameter> parameters;
    for (const ado::Assignment& assignment : assignments) {
        const ado::ColumnInfo& column = target(assignment.column);
        text += (parameters.empty() ? "" : ",") + link_.quoted(column.baseColumn) + "=?";
        parameters.push_back(parameterOf(assignment.value, column.type));
        for (std::size_t i = 0; i < changed.size(); ++i)
            if (sameName(table_.keyColumns[i], column.baseColumn)) changed[i] = assignment.value;
    }
    for (ado::Parameter& parameter : keyParameters(key))
        parameters.push_back(std::move(parameter));
    change(text + " WHERE " + keyCondition(link_, table_.keyColumns), parameters);
    return changed;
}

/// The key of a new row is what was assigned to it, and the number that the server gives. It is not known where a
/// default of the table gives a part of it.
KeyValues RowChanges::keyOfNewRow(std::span<const ado::Assignment> assignments) const
{
    KeyValues key;
    if (!table_.showsKey()) return key;
    for (const std::string& name : table_.keyColumns) {
        const auto assigned = std::ranges::find_if(assignments, [&](const ado::Assignment& assignment) {
            return sameName(target(assignment.column).baseColumn, name);
        });
        // Only the T-SQL servers tell which column they number; the others number the key or refuse the row.
        const NewKey numbering = link_.traits().newKey;
        const bool numbered =
            numbering == NewKey::ScopeIdentity ? sameName(name, table_.identity) : numbering != NewKey::Unknown;
        if (assigned == assignments.end() && !(numbered && table_.keyColumns.size() == 1)) return {};
        key.push_back(assigned == assignments.end() ? Variant{} : assigned->value);
    }
    return key;
}

/// On a T-SQL server the number is asked for in the same batch: a later one could read that of another insertion.
Variant RowChanges::insertNumbered(const std::string& text, std::span<const ado::Parameter> parameters,
                                   const std::string& column) const
{
    switch (link_.traits().newKey) {
    case NewKey::ScopeIdentity:
        return link_.read({text + " SELECT CAST(SCOPE_IDENTITY() AS BIGINT)", parameters, timeoutSeconds_}).at(0).at(0);
    case NewKey::Returning: return link_.read({text + " RETURNING " + column, parameters, timeoutSeconds_}).at(0).at(0);
    default: break;
    }
    link_.runToEnd({text, parameters, timeoutSeconds_});
    // The key need not be the number of the row.
    const std::string row =
        "SELECT " + column + " FROM " + link_.quoted(table_.name) + " WHERE rowid=last_insert_rowid()";
    return link_.read({row, {}, timeoutSeconds_}).at(0).at(0);
}

// Columns without assignment have the defaults of the table.
KeyValues RowChanges::insert(std::span<const ado::Assignment> assignments, bool toBeFound) const
{
    KeyValues key = keyOfNewRow(assignments);
    if (toBeFound) requireKey(key);
    std::string names;
    std::string values;
    std::vector<ado::Parameter> parameters;
    for (const ado::Assignment& assignment : assignments) {
        const ado::ColumnInfo& column = target(assignment.column);
        names += (names.empty() ? "" : ",") + link_.quoted(column.baseColumn);
        values += values.empty() ? "?" : ",?";
        parameters.push_back(parameterOf(assignment.value, column.type));
    }
    const std::string text =
        "INSERT INTO " + link_.quoted(table_.name) +
        (names.empty() ? std::string{" DEFAULT VALUES"} : "(" + names + ") VALUES(" + values + ")");
    const auto open = std::ranges::find_if(key, [](const Variant& value) { return value.isEmpty(); });
    if (open == key.end()) {
        link_.runToEnd({text, parameters, timeoutSeconds_});
        return key;
    }
    const std::string name = link_.quoted(table_.keyColumns[static_cast<std::size_t>(open - key.begin())]);
    *open = insertNumbered(text, parameters, name);
    return key;
}

void RowChanges::erase(const KeyValues& key) const
{
    requireKey(key);
    change("DELETE FROM " + link_.quoted(table_.name) + " WHERE " + keyCondition(link_, table_.keyColumns),
           keyParameters(key));
}

// By the key and from the table itself: the row is found even if it no longer meets the condition of the statement.
std::optional<std::vector<Variant>> RowChanges::read(const KeyValues& key) const
{
    std::string names;
    for (const ado::ColumnInfo& column : columns_)
        names += (names.empty() ? "" : ",") + link_.quoted(column.baseColumn);
    const std::vector<ado::Parameter> parameters = keyParameters(key);
    auto rows = link_.read(
        {"SELECT " + names + " FROM " + link_.quoted(table_.name) + " WHERE " + keyCondition(link_, table_.keyColumns),
         parameters, timeoutSeconds_});
    if (rows.empty()) return std::nullopt;
    return std::move(rows.front());
}

} // namespace tamarok::odbc
