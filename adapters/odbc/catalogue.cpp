#include "catalogue.h"

#include <algorithm>
#include <utility>

#include "failures.h"
#include "link.h"
#include "parameters.h"
#include "result_set.h"
#include "wide_text.h"

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::odbc {

namespace {

/// Columns of the driver manager's catalogue results, by position from 0.
namespace at {
constexpr std::size_t tableName = 2;
constexpr std::size_t columnName = 3;
constexpr std::size_t columnTypeName = 5;
constexpr std::size_t columnSize = 6;
constexpr std::size_t decimalDigits = 8;
constexpr std::size_t nullable = 10;
constexpr std::size_t keySequence = 4;
constexpr std::size_t indexNonUnique = 3;
constexpr std::size_t indexName = 5;
constexpr std::size_t indexSequence = 7;
constexpr std::size_t indexColumn = 8;
} // namespace at

using Row = std::vector<Variant>;

/// Values of a catalogue row; empty and 0 for Null and for columns that a driver leaves out.
std::string textAt(const Row& row, std::size_t column)
{
    return column < row.size() && !row[column].isNull() ? convert::toText(row[column]) : std::string{};
}

std::int32_t numberAt(const Row& row, std::size_t column)
{
    return column < row.size() && !row[column].isNull() ? convert::toLong(row[column]) : 0;
}

/// Asks the driver and reads the answer. The table's name is a pattern in some of the questions: a longer name may fit
/// it, so that the rows are looked through for the table itself.
template <class Ask>
std::vector<Row> ask(Link& link, std::string_view table, Ask question)
{
    StatementHandle statement = link.makeStatement();
    std::vector<SQLWCHAR> name = toWide(table);
    if (!succeeded(question(statement.get(), name.data(), static_cast<SQLSMALLINT>(name.size())))) {
        Error error = failure(readDiagnostics(SQL_HANDLE_STMT, statement.get()));
        link.settle(error);
        throw error;
    }
    std::vector<Row> rows;
    ResultSet result{std::move(statement), link.traits()};
    while (result.fetch()) {
        Row row;
        for (std::size_t column = 0; column < result.columns().size(); ++column)
            row.push_back(result.value(column));
        if (tsql::sameName(textAt(row, at::tableName), table)) rows.push_back(std::move(row));
    }
    return rows;
}

/// The type in the front end's words. What it does not know has no type; the names of columns do not need it.
tsql::Type typeOf(const Row& row)
{
    std::string name = textAt(row, at::columnTypeName);
    name.erase(std::min(name.find(' '), name.size())); // "int identity"
    const std::string size = std::to_string(numberAt(row, at::columnSize));
    const bool sized = text::equalsNoCase(name, "nvarchar") || text::equalsNoCase(name, "varchar") ||
                       text::equalsNoCase(name, "nchar") || text::equalsNoCase(name, "char");
    const bool scaled = text::equalsNoCase(name, "decimal") || text::equalsNoCase(name, "numeric");
    if (sized) name += "(" + (size == "0" || size.size() > 4 ? std::string{"max"} : size) + ")";
    if (scaled) name += "(" + size + "," + std::to_string(numberAt(row, at::decimalDigits)) + ")";
    return tsql::parseDeclaredType(name);
}

} // namespace

/// The entry of a name, made at its first use.
Catalogue::Entry& Catalogue::entry(std::string_view name) const
{
    const auto found = tables_.find(name);
    if (found != tables_.end()) return found->second;
    return tables_.emplace(std::string{name}, Entry{}).first->second;
}

// A name that is unknown is asked for again: the table may be made later.
const tsql::Table* Catalogue::table(std::string_view name) const
{
    Entry& known = entry(name);
    if (!known.table) known.table = readTable(name);
    return known.table ? &*known.table : nullptr;
}

const std::vector<std::string>& Catalogue::key(std::string_view name) const
{
    Entry& known = entry(name);
    if (!known.key) known.key = readKey(name);
    return *known.key;
}

std::string Catalogue::identity(std::string_view name) const
{
    const tsql::Table* const found = table(name);
    if (found == nullptr) return {};
    const auto column = std::ranges::find(found->columns, true, &tsql::TableColumn::identity);
    return column == found->columns.end() ? std::string{} : column->name;
}

/// The columns come in the order of the table.
std::optional<tsql::Table> Catalogue::readTable(std::string_view name) const
{
    const auto rows = ask(link_, name, [](SQLHANDLE statement, SQLWCHAR* table, SQLSMALLINT length) {
        return SQLColumnsW(statement, nullptr, 0, nullptr, 0, table, length, nullptr, 0);
    });
    if (rows.empty()) return std::nullopt;
    tsql::Table table;
    table.name = textAt(rows.front(), at::tableName);
    for (const Row& row : rows) {
        tsql::TableColumn column;
        column.name = textAt(row, at::columnName);
        column.type = typeOf(row);
        column.nullable = numberAt(row, at::nullable) != SQL_NO_NULLS;
        table.columns.push_back(std::move(column));
    }
    markIdentity(table);
    return table;
}

/// Drivers do not tell this alike; the T-SQL servers do.
void Catalogue::markIdentity(tsql::Table& table) const
{
    std::string name;
    if (link_.traits().nestsTransactions) {
        const ado::Parameter parameter = parameterOf(link_.quoted(table.name), ado::DataType::VarWChar);
        const auto rows = link_.read({.text = "SELECT name FROM sys.columns WHERE object_id = OBJECT_ID(?) AND "
                                              "is_identity = 1",
                                      .parameters = {&parameter, 1}});
        if (!rows.empty()) name = convert::toText(rows[0][0]);
    }
    for (tsql::TableColumn& column : table.columns)
        column.identity = !name.empty() && tsql::sameName(column.name, name);
}

/// The primary key in its own order; without one, the first unique index that the driver names.
std::vector<std::string> Catalogue::readKey(std::string_view name) const
{
    auto rows = ask(link_, name, [](SQLHANDLE statement, SQLWCHAR* table, SQLSMALLINT length) {
        return SQLPrimaryKeysW(statement, nullptr, 0, nullptr, 0, table, length);
    });
    std::vector<std::string> key;
    key.reserve(rows.size());
    std::ranges::sort(rows, {}, [](const Row& row) { return numberAt(row, at::keySequence); });
    for (const Row& row : rows)
        key.push_back(textAt(row, at::columnName));
    if (!key.empty()) return key;
    rows = ask(link_, name, [](SQLHANDLE statement, SQLWCHAR* table, SQLSMALLINT length) {
        return SQLStatisticsW(statement, nullptr, 0, nullptr, 0, table, length, SQL_INDEX_UNIQUE, SQL_QUICK);
    });
    // The rows come by index; the first index counts.
    std::string index;
    for (const Row& row : rows) {
        const std::string rowIndex = textAt(row, at::indexName);
        if (rowIndex.empty() || numberAt(row, at::indexNonUnique) != 0 || numberAt(row, at::indexSequence) == 0)
            continue;
        if (index.empty()) index = rowIndex;
        if (index == rowIndex) key.push_back(textAt(row, at::indexColumn));
    }
    return key;
}

} // namespace tamarok::odbc
