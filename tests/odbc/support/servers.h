#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "support/scratch_folder.h"

/// The servers that the tests of the ODBC back end use.
namespace tamarok::test {

/// The connection text of the T-SQL server, without DATABASE: that of the environment variable TAMAROK_TSQL_SERVER, or
/// the last line that the command in TAMAROK_TSQL_START prints. Nothing where neither is set; one loud line then says
/// so.
const std::optional<std::string>& tsqlServer();

/// The same with a database of these tests, made where it is missing.
std::string tsqlDatabase(const std::string& name);

/// Drops it again; its connections must be closed.
void dropTsqlDatabase(const std::string& name);

/// A PostgreSQL server of this process: in a temporary folder, on a free port of the loopback, as a user without rights
/// where the tests run as root. It ends with this object.
class PostgresServer {
public:
    PostgresServer();
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// Whether the programs of a server are installed.
    static bool isInstalled();

    std::string connectionText() const;
    void start();
    /// Ends the server at once, as a crash does.
    void stop();

private:
    void command(const std::string& arguments) const;

    ScratchFolder folder_;
    std::string programs_;
    int port_ = 0;
};

/// An SQLite database in a temporary folder.
std::string sqliteText(const std::string& file);

/// Prints once, to standard error, that tests were skipped.
void tellSkipped(std::string_view what);

} // namespace tamarok::test
