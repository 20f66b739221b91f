#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "catalogue.h"
#include "link.h"
#include "row_locks.h"

#include "tamarok/ado_backend.h"

namespace tamarok::odbc {

/// What a session and its cursors share. A cursor may outlive its session; it then finds the link closed.
struct SessionState {
    explicit SessionState(const ConnectionTarget& target) : link{target}, catalogue{link}, locks{link} {}

    Link link;
    Catalogue catalogue;
    RowLocks locks;
};

class OdbcSession final : public ado::Session {
public:
    explicit OdbcSession(std::shared_ptr<SessionState> state) : state_{std::move(state)} {}
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;
    ~OdbcSession() override { state_->link.close(); }

    std::string_view name() const override;
    std::unique_ptr<ado::Cursor> open(const ado::Statement& statement) override;
    std::int64_t execute(const ado::Statement& statement) override;
    void begin() override { state_->link.begin(); }
    void commit() override { state_->link.commit(); }
    void rollback() override { state_->link.rollback(); }

    Link& link() const noexcept { return state_->link; }

private:
    void prepare(const ado::Statement& statement);

    std::shared_ptr<SessionState> state_;
    std::string regionalOrder_; ///< that the server was told last
};

/// The text that runs a statement: a procedure is called by the driver's escape sequence.
std::string statementText(const ado::Statement& statement);

} // namespace tamarok::odbc
