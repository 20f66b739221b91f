#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "call/object_names.h"
#include "connections.h"
#include "host_platform.h"

#include "tamarok/ado.h"
#include "tamarok/platform.h"
#include "tamarok/scripted_windows.h"
#include "tamarok/tmkvar.h"

namespace tamarok::cli {

/// What the requests of a script share. It lives as long as the host.
struct HostState {
    /// Fills the session record and names it "TmkVar", and the connection "db".
    /// @param connection  may be empty
    HostState(const ado::ConnectionRef& connection, std::string_view locale, ServerTexts known = {});

    /// Keeps a connection under a name and records the statements that it is sent.
    void addConnection(std::string_view name, const ado::ConnectionRef& connection);

    /// Rolls back the transactions that are still open. @return whether there was one
    bool rollBackOpenTransactions();

    std::vector<std::string> sql; ///< statements of the current request
    std::shared_ptr<RecordingMessageBox> messages = std::make_shared<RecordingMessageBox>();
    std::shared_ptr<RecordingKeyboard> keyboard = std::make_shared<RecordingKeyboard>();
    std::shared_ptr<dialogs::DialogScripts> dialogs = std::make_shared<dialogs::DialogScripts>();
    PlatformScope scope;
    std::shared_ptr<Clock> systemClock; ///< the machine's, for {"now":null}
    ServerTexts servers;
    TmkVar session;
    ObjectNames names;

private:
    std::vector<std::weak_ptr<ado::Connection>> connections_;
};

} // namespace tamarok::cli
