#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "connection_text.h"
#include "handles.h"
#include "server_kind.h"

#include "tamarok/ado.h"
#include "tamarok/error.h"

namespace tamarok::odbc {

/// A result whose rows still come from the server. A connection has one at most.
class OpenResult {
public:
    virtual ~OpenResult() = default;
    /// Takes the remaining rows out of the connection. A failure is kept for the call that would have met it.
    virtual void spool() noexcept = 0;
    /// The connection closes: nothing more can be read.
    virtual void abandon() noexcept = 0;

protected:
    OpenResult() = default;
    OpenResult(const OpenResult&) = delete;
    OpenResult& operator=(const OpenResult&) = delete;
};

/// A statement for the server.
struct Request {
    std::string_view text;
    std::span<const ado::Parameter> parameters = {};
    std::int32_t timeoutSeconds = 30;
};

/// What the execution of a statement has led to: its first result set, or its end.
struct Executed {
    StatementHandle statement; ///< with columns; empty where there is no result set
    std::int64_t touched = -1; ///< rows that the last counted statement before it changed, -1 for none
};

/// The connection with a server, shared by a session and its cursors. It runs statements one after the other and bounds
/// their waits. Errors: 3709 when it is closed, 0x80004005 when it is lost, failures of the server.
class Link {
public:
    explicit Link(const ConnectionTarget& target);
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;
    ~Link();

    const ConnectionTarget& target() const noexcept { return target_; }
    const ServerTraits& traits() const noexcept { return *traits_; }
    Server server() const noexcept { return traits_->server; }
    SQLHANDLE handle() const noexcept { return connection_.get(); }
    std::string quoted(std::string_view name) const { return quotedName(server(), name); }

    /// Runs a statement up to its first result set.
    Executed run(const Request& request);
    /// Runs a statement to its end and drops its result sets. @return as Connection::Execute
    std::int64_t runToEnd(const Request& request);
    /// Runs an UPDATE or DELETE. @return number of rows that it changed, whatever SET NOCOUNT says
    std::int64_t changeRows(const Request& request);
    /// Runs a statement and reads its rows.
    std::vector<std::vector<Variant>> read(const Request& request);
    /// A new statement handle, for questions to the catalogue. The open result is taken into memory first.
    StatementHandle makeStatement();

    /// The result that still has rows in the server; a new one takes the place of the last one.
    void claim(OpenResult& result) noexcept { openResult_ = &result; }
    void leave(const OpenResult& result) noexcept
    {
        if (openResult_ == &result) openResult_ = nullptr;
    }
    /// Makes the connection free for another statement.
    void freeConnection();

    void begin();
    void commit();
    void rollback();

    /// A transaction around a row that is held. It counts together with the caller's.
    void beginHold();
    void endHold();
    /// Number of rollbacks so far: rows that were held before the last one are free.
    std::uint64_t rollbacks() const noexcept { return rollbacks_; }

    /// Completes the error of a failed call: whether the connection is lost or a transaction was rolled back.
    void settle(Error& error) noexcept;
    bool isLost() const noexcept { return lost_; }
    void close() noexcept;

private:
    void connect(const std::string& driverText);
    void identify();
    void checkTexts();
    void command(std::string_view text);
    void requireOpen() const;
    void boundWaits(std::int32_t seconds);
    void noteRollback(Error& error);
    bool isDead() const noexcept;

    ConnectionTarget target_;
    EnvironmentHandle environment_;
    ConnectionHandle connection_;
    const ServerTraits* traits_ = &traitsOf(Server::Other);
    OpenResult* openResult_ = nullptr;
    std::optional<std::int32_t> boundSeconds_; ///< the limit that the server has been told
    std::int32_t depth_ = 0;                   ///< open transactions, as far as this object has begun them
    std::uint64_t rollbacks_ = 0;
    bool freetds_ = false;
    bool connected_ = false;
    bool lost_ = false;
};

} // namespace tamarok::odbc
