#include "server_kind.h"

#include <algorithm>
#include <array>

#include "tamarok/text.h"

namespace tamarok::odbc {

namespace {

// A member that a row leaves out has the value of a server about which nothing is known.
constexpr std::array traits{
    ServerTraits{.server = Server::SqlServer,
                 .name = "Microsoft SQL Server",
                 .rowHold = RowHold::UpdateLock,
                 .newKey = NewKey::ScopeIdentity,
                 .nestsTransactions = true,
                 .secondNet = true,
                 .begin = "BEGIN TRANSACTION",
                 .commit = "COMMIT TRANSACTION",
                 .rollback = "ROLLBACK TRANSACTION",
                 .lockTimeout = "SET LOCK_TIMEOUT ",
                 .probeTimeout = "SET LOCK_TIMEOUT 100",
                 .endlessTimeout = "-1"},
    ServerTraits{.server = Server::OpenTsql,
                 .name = "open T-SQL server on PostgreSQL",
                 .rowHold = RowHold::SelfUpdate,
                 .newKey = NewKey::ScopeIdentity,
                 .nestsTransactions = true,
                 .secondNet = true,
                 .begin = "BEGIN TRANSACTION",
                 .commit = "COMMIT TRANSACTION",
                 .rollback = "ROLLBACK TRANSACTION",
                 .lockTimeout = "SET LOCK_TIMEOUT ",
                 .probeTimeout = "SET LOCK_TIMEOUT 100",
                 .endlessTimeout = "-1"},
    ServerTraits{.server = Server::PostgreSql,
                 .name = "PostgreSQL",
                 .rowHold = RowHold::ForUpdate,
                 .newKey = NewKey::Returning,
                 .driverNamesBases = true,
                 .lockTimeout = "SET statement_timeout TO ",
                 .probeTimeout = "SET lock_timeout TO 100",
                 .endlessTimeout = "0"},
    ServerTraits{.server = Server::Sqlite,
                 .name = "SQLite",
                 .newKey = NewKey::LastRowId,
                 .exceedsWidths = true,
                 .lockTimeout = "PRAGMA busy_timeout=",
                 .endlessTimeout = "2147483647"},
    ServerTraits{.server = Server::Other, .name = "another server"},
};

/// The table is indexed by the enumeration.
constexpr bool inOrder()
{
    for (std::size_t i = 0; i < traits.size(); ++i)
        if (static_cast<std::size_t>(traits[i].server) != i) return false;
    return true;
}
static_assert(inOrder(), "traits is indexed by Server");

} // namespace

// Microsoft's driver and FreeTDS tell "Microsoft SQL Server" for both T-SQL servers; Link::identify looks at the
// version.
const ServerTraits& traitsOf(Server server)
{
    return traits.at(static_cast<std::size_t>(server));
}

Server serverNamed(std::string_view dbmsName)
{
    const auto* const row =
        std::ranges::find_if(traits, [dbmsName](const ServerTraits& candidate) { return candidate.name == dbmsName; });
    return row == traits.end() ? Server::Other : row->server;
}

std::string quotedName(Server server, std::string_view name)
{
    const bool brackets = server == Server::SqlServer || server == Server::OpenTsql;
    if (brackets) return "[" + text::replaceAll(name, "]", "]]") + "]";
    return "\"" + text::replaceAll(name, "\"", "\"\"") + "\"";
}

} // namespace tamarok::odbc
