#include "apps/server_installation.h"

#include <set>
#include <string_view>
#include <vector>

#include "resources.h"
#include "sql_batches.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/catalogue.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/regional.h"
#include "tamarok/text.h"

namespace tamarok::test {

namespace {

std::string quoted(const std::string& front, std::string_view value)
{
    std::string literal{front};
    literal.append(text::replaceAll(value, "'", "''")).append("'");
    return literal;
}

/// A value as a literal of the server. Its dates have no order to mistake.
std::string literal(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Null: return "NULL";
    case Variant::Kind::String: return quoted("N'", value.asString());
    case Variant::Kind::Boolean: return value.asBoolean() ? "1" : "0";
    case Variant::Kind::Double: return convert::toPlainText(value.asDouble());
    case Variant::Kind::Date:
        return quoted("'", format::date(value.asDate(), "yyyymmdd hh:nn:ss", Regional::named("en-GB")));
    default: return convert::toText(value);
    }
}

std::string rowLiteral(const ado::FieldCollection& fields)
{
    std::string row;
    for (std::int32_t i = 0; i < fields.Count(); ++i)
        row.append(i == 0 ? "(" : ",").append(literal(fields.Item(i).Value()));
    return row.append(")");
}

void copyRows(ado::Connection& server, const ado::ConnectionRef& reference, const tsql::Table& table)
{
    constexpr int rowsOfStatement = 200;
    std::string columns;
    bool identity = false;
    for (const tsql::TableColumn& column : table.columns) {
        columns.append(columns.empty() ? "[" : ",[").append(column.name).append("]");
        identity = identity || column.identity;
    }
    std::string name{"["};
    name.append(table.name).append("]");
    ado::Recordset rows;
    rows.Open("SELECT * FROM " + name, reference);
    if (rows.AtEOF()) return;
    if (identity) server.Execute("SET IDENTITY_INSERT " + name + " ON");
    while (!rows.AtEOF()) {
        std::string statement = "INSERT INTO " + name + " (" + columns + ") VALUES ";
        for (int i = 0; i < rowsOfStatement && !rows.AtEOF(); ++i, rows.MoveNext())
            statement.append(i == 0 ? "" : ",").append(rowLiteral(rows.Fields()));
        server.Execute(statement);
    }
    if (identity) server.Execute("SET IDENTITY_INSERT " + name + " OFF");
}

/// The rows of a query, sorted, one a line.
std::string rowsOf(const ado::ConnectionRef& server, const std::string& query)
{
    std::multiset<std::string> lines;
    ado::Recordset rows;
    for (rows.Open(query, server); !rows.AtEOF(); rows.MoveNext())
        lines.insert(rowLiteral(rows.Fields()));
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

} // namespace

std::string withNewestCollation(std::string_view batch)
{
    const std::string older = text::replaceAll(batch, "Latin1_General_BIN2", "Latin1_General_BIN");
    return text::replaceAll(older, "Latin1_General_BIN", "Latin1_General_BIN2");
}

void makeInstallation(const ado::ConnectionRef& server)
{
    for (const char* group : {"schema", "procedures"})
        for (const database::Resource& file : database::resources(group))
            for (const std::string_view batch : database::splitBatches(file.text))
                server->Execute(withNewestCollation(batch));
    const auto reference = embedded::connectInMemory();
    database::createReferenceDatabase(*reference, {.logs = 50, .records = 2});
    for (const tsql::Table& table : embedded::tables(*reference))
        copyRows(*server, reference, table);
}

std::map<std::string, std::string> dumpOf(const ado::ConnectionRef& server)
{
    std::map<std::string, std::string> dump;
    std::vector<std::string> tables;
    ado::Recordset names;
    for (names.Open("SELECT TABLE_NAME FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_SCHEMA = 'dbo'", server);
         !names.AtEOF(); names.MoveNext())
        tables.push_back(convert::toText(names.Fields().Item(0).Value()));
    names.Close();
    for (const std::string& table : tables)
        dump[table] = rowsOf(server, std::string{"SELECT * FROM ["}.append(table).append("]"));
    dump["the columns"] =
        rowsOf(server, "SELECT TABLE_NAME, COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, IS_NULLABLE "
                       "FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_SCHEMA = 'dbo'");
    dump["the procedures"] = rowsOf(server, "SELECT ROUTINE_NAME, ROUTINE_DEFINITION FROM INFORMATION_SCHEMA.ROUTINES "
                                            "WHERE ROUTINE_SCHEMA = 'dbo'");
    return dump;
}

} // namespace tamarok::test
