#include "call/host_state.h"

#include <utility>

#include "connections.h"
#include "session.h"

#include "tamarok/component.h"
#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

/// A platform without windows, whose dialogs act by `dialogs`.
Platform hostPlatform(std::string_view locale, std::shared_ptr<MessageBox> messages, std::shared_ptr<Keyboard> keyboard,
                      std::shared_ptr<dialogs::DialogScripts> dialogs)
{
    Platform platform = commandPlatform(locale);
    platform.messageBox = std::move(messages);
    platform.keyboard = std::move(keyboard);
    platform.dialogWindows = std::make_shared<dialogs::ScriptedWindows>(std::move(dialogs));
    return platform;
}

/// The number of the server's error for a rollback without a transaction.
constexpr std::int32_t nothingToRollBack = 3903;

/// Rolls back the transaction of a connection; false where it has none. Any other failure is passed on.
bool rollBack(ado::Connection& connection)
{
    if (connection.State() == ado::ObjectState::Closed) return false;
    try {
        connection.RollbackTrans();
        return true;
    } catch (const Error& error) {
        if (error.nativeError != nothingToRollBack) throw;
        return false;
    }
}

} // namespace

HostState::HostState(const ado::ConnectionRef& connection, std::string_view locale, ServerTexts known) :
    scope{hostPlatform(locale, messages, keyboard, dialogs)},
    systemClock{scope.platform().clock}, servers{std::move(known)}, session{commandSession(connection)}
{
    // The connection of a lookup is no named one, but its statements are those of the call too.
    scope.platform().makeConnection = [this](std::string_view connectionText) {
        ado::ConnectionRef opened = servers.open(connectionText);
        opened->listen([this](std::string_view statement) { sql.emplace_back(statement); });
        return opened;
    };
    names.keep("TmkVar", component::makeRecordObject(session));
    names.keep("db", nullptr);
    if (connection) addConnection("db", connection);
}

void HostState::addConnection(std::string_view name, const ado::ConnectionRef& connection)
{
    names.keep(name, connection);
    connections_.emplace_back(connection);
    connection->listen([this](std::string_view statement) { sql.emplace_back(statement); });
}

bool HostState::rollBackOpenTransactions()
{
    bool found = false;
    for (const std::weak_ptr<ado::Connection>& known : connections_) {
        const ado::ConnectionRef connection = known.lock();
        if (connection && rollBack(*connection)) found = true;
    }
    return found;
}

} // namespace tamarok::cli
