#include <utility>

#include "server_catalogue.h"
#include "tamarok_database/server_scripts.h"
#include "tamarok_database/transfer.h"
#include "tamarok_tsql/types.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::database {
namespace {

/// The name of a table inside a text of a statement.
std::string quotedName(const tsql::TableDefinition& table)
{
    return "'[dbo]." + text::replaceAll(tsql::bracketed(table.name), "'", "''") + "'";
}

/// A condition for numbers that may have more digits than a double holds. The conversion alone does not tell it: the
/// open server converts with 15 digits, although a double holds most numbers of 16.
std::string digitsCondition(const std::string& name, const std::string& type, int scale)
{
    constexpr int digitsOfDouble = 15;
    std::string changed = "CONVERT(" + type + ", CONVERT(FLOAT, " + name + ")) <> " + name;
    if (scale >= digitsOfDouble) return changed;
    const std::string limit = "1" + std::string(static_cast<std::size_t>(digitsOfDouble - scale), '0');
    return "(" + name + " >= " + limit + " OR " + name + " <= -" + limit + ") AND " + changed;
}

/// A condition that finds values which a double, or milliseconds, do not hold; empty for any other type.
std::string lossCondition(const tsql::DefinedColumn& column)
{
    constexpr int moneyScale = 4;
    const tsql::Type type = tsql::parseDeclaredType(column.type);
    const std::string name = tsql::bracketed(column.name);
    switch (type.kind) {
    case tsql::TypeKind::Money: return digitsCondition(name, column.type, moneyScale);
    case tsql::TypeKind::Decimal: return digitsCondition(name, column.type, type.scale);
    case tsql::TypeKind::DateTime2:
    case tsql::TypeKind::Time: return "DATEPART(NANOSECOND, " + name + ") % 1000000 <> 0";
    default: return {};
    }
}

class ServerStore final : public Store {
public:
    ServerStore(ado::ConnectionRef connection, bool readsJson) : Store{std::move(connection)}, readsJson_{readsJson} {}

    tsql::SchemaDefinition schema() override { return readServerSchema(connection()); }

    void requireReadable(const tsql::TableDefinition& table) override
    {
        for (const tsql::DefinedColumn& column : table.columns)
            requireHeld(table, column);
    }

    /// A table into which nothing has been inserted yet tells the first number, or that of the last RESEED: sure of
    /// never giving a number out twice, the latter counts as given out.
    std::int64_t lastIdentity(const tsql::TableDefinition& table) override
    {
        const Rows rows = rowsOf(connection(), "SELECT CONVERT(BIGINT, IDENT_CURRENT(" + quotedName(table) + "))");
        const std::int64_t last = numberAt(rows.at(0), 0);
        return last == 1 && isEmpty(table) ? 0 : last;
    }

    /// A table into which nothing was ever inserted begins with the number itself, any other one goes on after it.
    void raiseIdentity(const tsql::TableDefinition& table, std::int64_t number, std::int64_t rows) override
    {
        if (number == 0) return;
        connection()->Execute("DBCC CHECKIDENT (" + quotedName(table) + ", RESEED, " +
                              std::to_string(rows == 0 ? number + 1 : number) + ")");
    }

    RowForm rowForm() const noexcept override { return readsJson_ ? RowForm::Json : RowForm::Values; }

    void finish() override { runScript(*connection(), procedureScript().text); }

private:
    bool isEmpty(const tsql::TableDefinition& table)
    {
        return rowsOf(connection(), "SELECT TOP 1 1 FROM " + tsql::bracketed(table.name)).empty();
    }

    void requireHeld(const tsql::TableDefinition& table, const tsql::DefinedColumn& column)
    {
        const std::string condition = lossCondition(column);
        if (condition.empty()) return;
        const Rows rows =
            rowsOf(connection(), "SELECT COUNT(*) FROM " + tsql::bracketed(table.name) + " WHERE " + condition);
        if (numberAt(rows.at(0), 0) == 0) return;
        throw Error{errors::providerFailure,
                    textAt(rows[0], 0) + " values of column " + column.name + " of table " + table.name +
                        " have more digits than the library reads (15 of a decimal, milliseconds of a time). Round "
                        "them, and try again.",
                    "moveDatabase"};
    }

    bool readsJson_;
};

/// Servers before 2016 do not, nor does a database with an older compatibility level.
bool readsJson(const ado::ConnectionRef& connection)
{
    try {
        const Rows rows = rowsOf(connection, "SELECT V FROM OPENJSON(N'[[\"x\"]]') WITH (V NVARCHAR(MAX) '$[0]')");
        return rows.size() == 1 && textAt(rows[0], 0) == "x";
    } catch (const Error&) {
        return false; // a lost connection is met by the next statement
    }
}

} // namespace

std::unique_ptr<Store> serverStore(ado::ConnectionRef connection)
{
    std::string schema;
    try {
        const Rows rows = rowsOf(connection, "SELECT SCHEMA_NAME(), SERVERPROPERTY('ProductVersion')");
        schema = textAt(rows.at(0), 0);
    } catch (const Error& error) {
        throw Error{errors::providerFailure,
                    "The connection leads to no T-SQL server (SQL Server, or the open one on PostgreSQL): " +
                        error.description,
                    "serverStore"};
    }
    if (!text::equalsNoCase(schema, "dbo"))
        throw Error{errors::providerFailure,
                    "The tables belong into schema dbo, but the default schema of the login is '" + schema +
                        "'. ALTER USER name WITH DEFAULT_SCHEMA = dbo changes it.",
                    "serverStore"};
    const bool json = readsJson(connection);
    return std::make_unique<ServerStore>(std::move(connection), json);
}

} // namespace tamarok::database
