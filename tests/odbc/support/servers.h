#pragma once

#include <string>

#include "odbc/support/tsql_database.h"
#include "support/scratch_folder.h"
#include "support/tsql_server.h"

/// The servers that the tests of the ODBC back end start themselves.
namespace tamarok::test {

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

} // namespace tamarok::test
