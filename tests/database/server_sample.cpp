#include "server_sample.h"

#include <set>
#include <string_view>

#include "resources.h"
#include "sql_batches.h"
#include "tamarok_odbc/connect.h"

#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/regional.h"
#include "tamarok/text.h"

namespace tamarok::database::test {

namespace {

/// A value as a literal of the server. Its dates have no order to mistake.
std::string literal(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Null: return "NULL";
    case Variant::Kind::String: return "N'" + text::replaceAll(value.asString(), "'", "''") + "'";
    case Variant::Kind::Boolean: return value.asBoolean() ? "1" : "0";
    case Variant::Kind::Double: return convert::toPlainText(value.asDouble());
    case Variant::Kind::Date: {
        const Regional& english = Regional::named("en-GB");
        return "'" + format::date(value.asDate(), "yyyymmdd hh:nn:ss", english) + "'";
    }
    default: return convert::toText(value);
    }
}

std::string rowLiteral(const ado::FieldCollection& fields)
{
    std::string row;
    for (std::int32_t i = 0; i < fields.Count(); ++i)
        row.append(i == 0 ? "(" : ",").append(literal(fields.Item(i).Value()));
    return row + ")";
}

/// Both collations compare a name exactly; the server at hand may have the newer one only.
std::string collated(std::string_view batch)
{
    return text::replaceAll(text::replaceAll(batch, "_BIN2", "_BIN"), "_BIN", "_BIN2");
}

/// Returns the name of the table that a batch makes, "" for any other batch.
std::string tableOf(std::string_view batch)
{
    constexpr std::string_view words = "CREATE TABLE ";
    const std::size_t begin = batch.find(words);
    if (begin == std::string_view::npos) return {};
    const std::string_view name = batch.substr(begin + words.size());
    return std::string{name.substr(0, name.find(' '))};
}

std::set<std::string> numberedTables(const ado::ConnectionRef& server)
{
    std::set<std::string> names;
    ado::Recordset rows;
    for (rows.Open("SELECT OBJECT_NAME(object_id) FROM sys.columns WHERE is_identity = 1", server); !rows.AtEOF();
         rows.MoveNext())
        names.insert(text::toUpper(convert::toText(rows.Fields().Item(0).Value())));
    return names;
}

void copyRows(const std::string& table, const ado::ConnectionRef& original, ado::Connection& server)
{
    constexpr std::size_t rowsOfStatement = 200;
    ado::Recordset rows;
    rows.Open("SELECT * FROM " + table, original);
    std::string columns;
    for (std::int32_t i = 0; i < rows.Fields().Count(); ++i)
        columns.append(i == 0 ? "[" : ",[").append(rows.Fields().Item(i).Name()).append("]");
    const std::string front = "INSERT INTO " + table + " (" + columns + ") VALUES ";
    while (!rows.AtEOF()) {
        std::string statement;
        for (std::size_t i = 0; i < rowsOfStatement && !rows.AtEOF(); ++i, rows.MoveNext())
            statement += (i == 0 ? front : std::string{","}) + rowLiteral(rows.Fields());
        server.Execute(statement);
    }
}

} // namespace

ServerSample::ServerSample(const ado::ConnectionRef& original)
{
    const ado::ConnectionRef server = connect();
    for (const char* group : {"schema", "procedures"})
        for (const Resource& file : resources(group))
            for (const std::string_view batch : splitBatches(file.text))
                server->Execute(collated(batch));
    const std::set<std::string> numbered = numberedTables(server);
    for (const Resource& file : resources("schema")) {
        for (const std::string_view batch : splitBatches(file.text)) {
            const std::string table = tableOf(batch);
            if (table.empty()) continue;
            const bool givesNumbers = numbered.contains(text::toUpper(table));
            if (givesNumbers) server->Execute("SET IDENTITY_INSERT " + table + " ON");
            copyRows(table, original, *server);
            if (givesNumbers) server->Execute("SET IDENTITY_INSERT " + table + " OFF");
        }
    }
}

ado::ConnectionRef ServerSample::connect() const
{
    return odbc::connectText(database_.connectionText());
}

} // namespace tamarok::database::test
