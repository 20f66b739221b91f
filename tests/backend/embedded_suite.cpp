#include <filesystem>

#include "backend_context.h"
#include "tamarok_embedded/connect.h"

// The shared suite on the embedded database, in a file of its own under the folder for temporary files.

namespace tamarok::ado::backend {

namespace {

const std::string& insertProcedureName()
{
    static const std::string name = "tmt_insert_" + processToken();
    return name;
}

std::filesystem::path databaseFolder()
{
    return std::filesystem::temp_directory_path() / ("tamarok_backend_" + processToken());
}

embedded::Procedure insertInto(std::string_view table)
{
    std::string statement{"INSERT INTO "};
    statement.append(table).append(" (SHORT_TEXT, WHOLE) VALUES (?, ?)");
    return {insertProcedureName(),
            {{"text", true}, {"whole", true}},
            [statement](embedded::ProcedureScope& scope, std::span<const Variant> arguments) {
                scope.execute(statement, arguments);
            }};
}

class EmbeddedContext final : public BackendContext {
public:
    ConnectionRef connect() override
    {
        embedded::OpenOptions options;
        const auto file = databaseFolder() / "suite.tmk";
        options.mode = std::filesystem::exists(file) ? embedded::OpenMode::OpenExisting : embedded::OpenMode::Create;
        // Procedures are native code that a connection knows from its opening on.
        options.procedures.add(insertInto("TMT_ROWS_" + processToken()));
        return embedded::connect(file, options);
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
    std::string dateLiteral(std::string_view isoDateTime) const override
    {
        std::string text{"'"};
        return text.append(isoDateTime).append("'");
    }
    std::string insertProcedure(Connection&, std::string_view) override { return insertProcedureName(); }
};

} // namespace

std::unique_ptr<BackendContext> makeBackendContext()
{
    return std::make_unique<EmbeddedContext>();
}

} // namespace tamarok::ado::backend

int main(int argc, char** argv)
{
    using namespace tamarok::ado::backend;
    const auto folder = databaseFolder();
    std::filesystem::create_directory(folder);
    const int status = runBackendSuite(argc, argv, 55, 0);
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    return status;
}
