#include <charconv>
#include <string>

#include "check/checks.h"
#include "check/rows.h"
#include "tamarok_tsql/table_definition.h"

#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::cli::check {

namespace {

constexpr int oldestVersion = 11; // SQL Server 2012

int majorVersion(const std::string& version)
{
    int major = 0;
    std::from_chars(version.data(), version.data() + version.size(), major);
    return major;
}

std::string firstLine(const std::string& text)
{
    return std::string{text::trim(text.substr(0, text.find('\n')))};
}

} // namespace

/// Kind and version. What follows is written for T-SQL servers alone.
void checkServer(Context& context)
{
    const ado::ConnectionRef& connection = context.installation.connection();
    std::string version;
    try {
        version = readText(connection, "SELECT @@VERSION");
    } catch (const Error&) {
        if (!context.installation.answers()) throw;
        context.report.add(State::Different, "server",
                           "not a T-SQL server: it does not know @@VERSION. Name a SQL Server or the open T-SQL "
                           "server in the connection text");
        context.installation.obstacle = "the server is no T-SQL server";
        return;
    }
    const std::string number = readText(connection, "SELECT CAST(SERVERPROPERTY('ProductVersion') AS NVARCHAR(40))");
    const bool recent = majorVersion(number) >= oldestVersion;
    context.report.add(recent ? State::Ok : State::Different, "server",
                       firstLine(version) + ", version " + number +
                           (recent ? "" : "; the library needs SQL Server 2012 (11.0) or later"));
}

/// Who is connected with what. A database that refuses changes is told here, once.
void checkLogin(Context& context)
{
    const auto row = readTexts(context.installation.connection(),
                               "SELECT SUSER_SNAME(), USER_NAME(), DB_NAME(), SCHEMA_NAME(), "
                               "CAST(DATABASEPROPERTYEX(DB_NAME(), 'Updateability') AS NVARCHAR(20))")
                         .at(0);
    const std::string& database = row.at(2);
    context.report.add(State::Ok, "login " + row.at(0),
                       "user " + row.at(1) + ", database " + database + ", default schema " + row.at(3));
    if (text::equalsNoCase(row.at(4), "READ_ONLY"))
        context.report.add(State::Different, "database " + database,
                           "it is set to read only: ALTER DATABASE " + tsql::bracketed(database) + " SET READ_WRITE");
}

/// Whether readers wait for writers. Both settings work; the remark tells what the present one means.
void checkReading(Context& context)
{
    const std::string setting =
        readText(context.installation.connection(),
                 "SELECT CAST(is_read_committed_snapshot_on AS INT) FROM sys.databases WHERE name = DB_NAME()");
    context.report.add(State::Ok, "readers beside writers",
                       setting == "1" ? "readers pass writers by row versions (READ_COMMITTED_SNAPSHOT)"
                                      : "readers wait for uncommitted changes; ALTER DATABASE CURRENT SET "
                                        "READ_COMMITTED_SNAPSHOT ON lets them pass");
}

} // namespace tamarok::cli::check
