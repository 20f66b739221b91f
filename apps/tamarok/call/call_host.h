#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host_platform.h"
#include "call/json.h"
#include "call/object_names.h"
#include "print/output.h"

#include "tamarok/ado.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

namespace tamarok::cli {

/// What a script's requests work on. It lives as long as the host; the requests come one by one.
struct HostState {
    /// Connects `db` and fills the session record. @param connection  may be empty
    HostState(const ado::ConnectionRef& connection, std::string_view locale);

    /// Keeps a connection under a name and records its statements.
    void addConnection(std::string_view name, const ado::ConnectionRef& connection);

    std::vector<std::string> sql; ///< statements of the current request
    std::shared_ptr<RecordingMessageBox> messages = std::make_shared<RecordingMessageBox>();
    PlatformScope scope;
    std::shared_ptr<Clock> systemClock; ///< the machine's, for when the clock is freed
    TmkVar session;
    ObjectNames names;
    std::vector<std::string> dialogScript; ///< steps for the next dialog, each a JSON text
};

/// Answers requests, one JSON object a line, with one JSON object on one line each.
class CallHost {
public:
    CallHost(const ado::ConnectionRef& connection, std::string_view locale) : state_{connection, locale} {}

    /// To the end of `requests`.
    void run(std::istream& requests, Output& output);

    /// The answer to one line, without line end. Never fails for what a line may hold.
    std::string answer(std::string_view line);

private:
    HostState state_;
};

} // namespace tamarok::cli
