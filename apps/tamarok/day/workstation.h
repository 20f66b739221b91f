#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host_platform.h"

#include "tamarok/ado.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

namespace tamarok::cli::day {

/// A user of the reference data and the level in which he works.
struct Account {
    std::int32_t user;
    std::int32_t level;
};

inline constexpr Account officeHead{3, 3}; ///< STEINER, deputy of HUBER, GRUBER and FUCHS
inline constexpr Account ranger{9, 18};    ///< EDER
inline constexpr Account colleague{2, 2};  ///< HUBER

/// A workstation in multi-user operation, with the second connection that keeps its session row. Logs
/// out and releases what it locked when it ends, so that the database is left as it was.
class Workstation {
public:
    Workstation(const TmkVar& base, const Account& account);
    ~Workstation();
    Workstation(const Workstation&) = delete;
    Workstation& operator=(const Workstation&) = delete;

    bool logIn();
    bool lockOn(const std::string& column, const std::string& key);
    /// What the last refusal showed to the user, "" for none.
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
