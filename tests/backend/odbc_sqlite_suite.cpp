#include <clocale>

#include "backend_context.h"
#include "odbc/support/servers.h"
#include "support/scratch_folder.h"
#include "tamarok_odbc/connect.h"

// The shared suite on SQLite through its ODBC driver: a server without anything that is not common to all.

namespace tamarok::ado::backend {

namespace {

class SqliteContext final : public BackendContext {
public:
    ConnectionRef connect() override
    {
        static const test::ScratchFolder folder;
        return odbc::connectText(test::sqliteText((folder / "suite.db").string()));
    }

    std::string createTable(std::string_view table) const override
    {
        std::string text{"CREATE TABLE "};
        return text.append(table).append(
            " (ID INTEGER PRIMARY KEY NOT NULL, SHORT_TEXT NVARCHAR(40) NULL, PLAIN_TEXT VARCHAR(20) NULL, "
            "FIXED_TEXT NCHAR(5) NULL, LONG_TEXT NTEXT NULL, AMOUNT FLOAT NULL, WHOLE INT NULL, SMALL SMALLINT NULL, "
            "TINY TINYINT NULL, BIG BIGINT NULL, FELLED DATETIME NULL, ACTIVE BIT NULL, "
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
    std::string dateLiteral(std::string_view isoDateTime) const override
    {
        return "'" + std::string{isoDateTime} + "'";
    }
    std::string insertProcedure(Connection&, std::string_view) override { return {}; }
    Words words() const override
    {
        return {.national = "",
                .noCount = "",
                .next = ";\r\n",
                .rowLock = "",
                .topNone = "",
                .limitNone = " LIMIT 0",
                .yes = "1",
                .no = "0"};
    }
    std::vector<Quirk> quirks() const override
    {
        return {{"no_batches", "the driver takes one statement at a time"},
                {"no_procedures", "there are no procedures"},
                {"no_row_locks", "SQLite locks whole databases"},
                {"no_wide_planes",
                 "the driver manager converts for a driver without wide functions, and breaks characters of two units"},
                {"inexact_doubles", "the driver reads numbers through texts of 15 digits"},
                {"no_padding", "a text of fixed length is kept as it is written"},
                {"lenient_values", "a text that does not fit its column is kept, and a wrong number is 0"},
                {"no_zero_character", "the driver ends a text at the character zero"}};
    }
};

} // namespace

std::unique_ptr<BackendContext> makeBackendContext()
{
    return std::make_unique<SqliteContext>();
}

} // namespace tamarok::ado::backend

int main(int argc, char** argv)
{
    // The driver has no wide functions: the driver manager converts by the locale.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    return tamarok::ado::backend::runBackendSuite(argc, argv, 42, 13);
}
