#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/date_order.h"

/// What the servers differ in, in one table.
namespace tamarok::odbc {

enum class Server : std::uint8_t {
    SqlServer,  ///< Microsoft SQL Server and its cloud forms
    OpenTsql,   ///< the open T-SQL server on PostgreSQL
    PostgreSql, ///
    Sqlite,
    Other ///< read and written by what all servers have in common; no row locks
};

/// How a row is held for a recordset.
enum class RowHold : std::uint8_t {
    UpdateLock, ///< reading it WITH (UPDLOCK, ROWLOCK)
    SelfUpdate, ///< an UPDATE of a column to itself, which readers pass by row versions
    ForUpdate,  ///< SELECT ... FOR UPDATE
    None
};

/// How the number that the server gives a new row is found out.
enum class NewKey : std::uint8_t {
    ScopeIdentity, ///< SELECT SCOPE_IDENTITY() in the same batch
    Returning,     ///< INSERT ... RETURNING
    LastRowId,     ///< SELECT ... WHERE rowid = last_insert_rowid() on the same connection
    Unknown
};

struct ServerTraits {
    Server server = Server::Other;
    std::string_view name;
    RowHold rowHold = RowHold::None;
    NewKey newKey = NewKey::Unknown;
    bool nestsTransactions = false; ///< BEGIN inside a transaction counts; @@TRANCOUNT tells the depth
    bool exceedsWidths = false;     ///< a text may be longer than its column is declared
    bool driverNamesBases = false;  ///< the driver knows the base column of a column
    bool secondNet = false;         ///< the driver's time-out stands behind the server's
    std::string_view begin = "BEGIN";
    std::string_view commit = "COMMIT";
    std::string_view rollback = "ROLLBACK";
    std::string_view lockTimeout =
        {}; ///< bounds waits: the milliseconds follow; empty where there is nothing of the kind
    std::string_view probeTimeout = {};   ///< bounds waits for locks alone by a tenth of a second
    std::string_view endlessTimeout = {}; ///< what stands for no limit
};

const ServerTraits& traitsOf(Server server);

/// The server that a driver names. SQL Server and the open server have one name; their version tells them apart.
Server serverNamed(std::string_view dbmsName);

/// A name as it stands in a statement.
std::string quotedName(Server server, std::string_view name);

} // namespace tamarok::odbc
