#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "connections.h"
#include "work/worker.h"

#include "tamarok/ado.h"
#include "tamarok/tmkvar.h"

namespace tamarok::workbench {

/// A user who may log in.
struct Account {
    std::int32_t id = 0;
    std::string name;
    bool hasPassword = false;
    std::int32_t level = 0; ///< id of the access level in which the user works
    std::string levelName;
};

/// The session of a user at a database: its connections, the record that all operations receive, and the login.
class Workplace {
public:
    /// Opens the database. Errors: those of the back end. @param yard  outlives the workplace
    Workplace(cli::DatabaseChoice database, Yard& yard);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    /// Returns the users of the database by their names.
    std::vector<Account> accounts() const;
    /// Returns whether a password is that of a user. A user without one has the empty password.
    bool isPassword(const Account& account, const std::string& password) const;

    /// Logs a user in. Returns false, after a message, if another session of the user is alive.
    /// Errors: those of the database.
    bool logIn(const Account& account);
    /// Logs out, if a user is logged in. Failures are ignored: a dead session is removed by the next login.
    void logOut() noexcept;
    const Account& user() const noexcept { return user_; }

    /// The session record. Windows of the main thread use its connection.
    const TmkVar& session() const noexcept { return session_; }
    void language(std::string_view name) { session_.strLanguage = name; }

    /// Returns the session record over another connection, for a thread of its own.
    TmkVar sessionOver(const ado::ConnectionRef& connection) const;
    /// Returns what opens a further connection to the database, for a worker.
    Worker::Open opener() const;
    /// Returns where the threads of workers go whose windows have gone.
    Yard& yard() const noexcept { return yard_; }
    /// Names the database for a title, without password.
    std::string databaseName() const;

private:
    std::string visibleLevels(std::int32_t level) const;

    cli::DatabaseChoice database_;
    Yard& yard_;
    TmkVar session_;
    Account user_;
    ado::ConnectionRef dbLock_; ///< for nothing but the session row
    ado::Recordset rsLock_;
    bool loggedIn_ = false;
};

} // namespace tamarok::workbench
