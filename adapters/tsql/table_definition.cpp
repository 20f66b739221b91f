#include "tamarok_tsql/table_definition.h"

#include <algorithm>

#include "tamarok_tsql/names.h"

namespace tamarok::tsql {

namespace {

/// Appends the items in parentheses, divided by commas.
template <class Items, class Write>
void appendList(std::string& text, const Items& items, Write write)
{
    text += '(';
    bool first = true;
    for (const auto& item : items) {
        if (!first) text += ", ";
        first = false;
        text += write(item);
    }
    text += ')';
}

std::string columnText(const DefinedColumn& column)
{
    std::string text = bracketed(column.name) + " " + column.type;
    if (column.binary) text += " COLLATE Latin1_General_BIN2";
    if (column.identity) text += " IDENTITY(1,1)";
    text += column.nullable && !column.identity ? " NULL" : " NOT NULL";
    if (!column.defaultValue.empty()) text += " DEFAULT " + column.defaultValue;
    return text;
}

bool isNumber(std::string_view value) noexcept
{
    if (value.starts_with('-') || value.starts_with('+')) value.remove_prefix(1);
    return !value.empty() && value.front() >= '0' && value.front() <= '9' && std::ranges::count(value, '.') <= 1 &&
           std::ranges::all_of(value, [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
}

/// One literal from quote to quote: quotes inside it are doubled.
bool isText(std::string_view value) noexcept
{
    if (value.starts_with('N')) value.remove_prefix(1);
    if (value.size() < 2 || value.front() != '\'' || value.back() != '\'') return false;
    value = value.substr(1, value.size() - 2);
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\'') continue;
        if (i + 1 == value.size() || value[i + 1] != '\'') return false;
        ++i;
    }
    return true;
}

} // namespace

const DefinedColumn* TableDefinition::identity() const noexcept
{
    const auto found = std::ranges::find(columns, true, &DefinedColumn::identity);
    return found == columns.end() ? nullptr : &*found;
}

std::string bracketed(std::string_view name)
{
    std::string text = "[";
    for (const char letter : name)
        text.append(letter == ']' ? 2U : 1U, letter);
    return text + "]";
}

std::string createTableText(const TableDefinition& table)
{
    std::string text = "CREATE TABLE " + bracketed(table.name) + " (";
    bool first = true;
    for (const DefinedColumn& column : table.columns) {
        if (!first) text += ", ";
        first = false;
        text += columnText(column);
    }
    if (!table.primaryKey.empty()) appendList(text += ", PRIMARY KEY ", table.primaryKey, bracketed);
    for (const std::vector<std::string>& key : table.uniqueKeys)
        appendList(text += ", UNIQUE ", key, bracketed);
    return text + ")";
}

std::string createIndexText(const TableDefinition& table, const TableIndex& index)
{
    std::string text = index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
    text += bracketed(index.name) + " ON " + bracketed(table.name) + " ";
    appendList(text, index.parts,
               [](const IndexPart& part) { return bracketed(part.column) + (part.descending ? " DESC" : ""); });
    return text;
}

bool isPlainDefault(std::string_view value) noexcept
{
    return isNumber(value) || isText(value) || sameName(value, "GETDATE()") || sameName(value, "NULL");
}

} // namespace tamarok::tsql
