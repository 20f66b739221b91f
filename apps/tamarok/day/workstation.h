#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "connections.h"
#include "host_platform.h"

#include "tamarok/ado.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

namespace tamarok::cli::day {

/// A user of the reference data and the id of the access level in which the user works.
struct Account {
    std::int32_t user;
    std::int32_t level;
};

inline constexpr Account officeHead{3, 3}; ///< STEINER, deputy of HUBER, GRUBER and FUCHS
inline constexpr Account ranger{9, 18};    ///< EDER
inline constexpr Account colleague{2, 2};  ///< HUBER

/// A workstation in multi-user operation, with the second connection that keeps its session row. The
/// destructor releases its locks and logs out, so that the database is left as it was.
class Workstation {
public:
    /// @param database  where the second connection is opened
    Workstation(const TmkVar& base, const DatabaseChoice& database, const Account& account);
    ~Workstation();
    Workstation(const Workstation&) = delete;
    Workstation& operator=(const Workstation&) = delete;

    /// Starts the session; false where it is refused.
    bool logIn();
    /// Locks an object; false where another session has locked it.
    bool lockOn(const std::string& column, const std::string& key);
    /// The messages shown since the last call, such as the reason of a refusal; empty for none.
    std::string message();
    const TmkVar& session() const noexcept { return session_; }

private:
    static Platform quietPlatform(const std::shared_ptr<RecordingMessageBox>& messages);

    TmkVar session_;
    ado::ConnectionRef dbLock_;
    ado::Recordset rsLock_;
    std::shared_ptr<RecordingMessageBox> messages_ = std::make_shared<RecordingMessageBox>();
    PlatformScope scope_;
    bool loggedIn_ = false;
};

} // namespace tamarok::cli::day
