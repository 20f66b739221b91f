#include "backend_context.h"
#include "odbc/support/tsql_database.h"
#include "support/tsql_server.h"
#include "tamarok_odbc/connect.h"

// The shared suite on the T-SQL server that the environment names, in a database of these tests.

namespace tamarok::ado::backend {

namespace {

/// Types as the server tells them where they differ.
class TsqlContext final : public BackendContext {
public:
    ConnectionRef connect() override
    {
        static const test::TsqlDatabase database{"suite"};
        return odbc::connectText(database.connectionText());
    }

    std::string createTable(std::string_view table) const override
    {
        std::string text{"CREATE TABLE "};
        return text.append(table).append(" (ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY, SHORT_TEXT NVARCHAR(40) NULL, "
                                         "PLAIN_TEXT VARCHAR(20) NULL, FIXED_TEXT NCHAR(5) NULL, LONG_TEXT NTEXT NULL, "
                                         "AMOUNT FLOAT NULL, WHOLE INT NULL, SMALL SMALLINT NULL, TINY TINYINT NULL, "
                                         "BIG BIGINT NULL, FELLED DATETIME NULL, ACTIVE BIT NULL, "
                                         "REQUIRED NVARCHAR(10) NOT NULL DEFAULT '')");
    }
    std::string createKeyTable(std::string_view table) const override
    {
        std::string text{"CREATE TABLE "};
        return text.append(table).append(" (CODE NVARCHAR(10) NOT NULL PRIMARY KEY)");
    }
    std::string dropTable(std::string_view table) const override
    {
        std::string text{"DROP TABLE IF EXISTS "};
        return text.append(table);
    }
    /// The form with T means the same under every date order.
    std::string dateLiteral(std::string_view isoDateTime) const override
    {
        std::string text{isoDateTime};
        text[10] = 'T';
        return "'" + text + "'";
    }
    std::string insertProcedure(Connection& connection, std::string_view table) override
    {
        const std::string name = "tmt_insert_" + processToken();
        connection.Execute("DROP PROCEDURE IF EXISTS " + name);
        connection.Execute("CREATE PROCEDURE " + name + " @T NVARCHAR(40), @W BIGINT AS INSERT INTO " +
                           std::string{table} + " (SHORT_TEXT, WHOLE) VALUES (@T, @W)");
        return name;
    }
    std::vector<Quirk> quirks() const override
    {
        return {{"no_zero_character", "the open server keeps texts in PostgreSQL, which has no character zero"}};
    }
};

} // namespace

std::unique_ptr<BackendContext> makeBackendContext()
{
    return std::make_unique<TsqlContext>();
}

} // namespace tamarok::ado::backend

int main(int argc, char** argv)
{
    if (!tamarok::test::tsqlServer()) return tamarok::ado::backend::serverMissing;
    return tamarok::ado::backend::runBackendSuite(argc, argv, 54, 1);
}
