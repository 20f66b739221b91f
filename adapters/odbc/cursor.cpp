#include "cursor.h"

#include <utility>

#include "base_columns.h"
#include "failures.h"
#include "session.h"

namespace tamarok::odbc {

StreamCursor::StreamCursor(std::shared_ptr<SessionState> session, const ado::Statement& statement) :
    session_{std::move(session)}, text_{statementText(statement)},
    parameters_{statement.parameters.begin(), statement.parameters.end()}, timeoutSeconds_{statement.timeoutSeconds}
{}

// A recordset that is dropped half-read frees the connection at once.
StreamCursor::~StreamCursor()
{
    endLive();
}

Link& StreamCursor::link() const noexcept
{
    return session_->link;
}

/// Sends the statement and claims the connection for its rows. Another result that was open has been spooled then.
void StreamCursor::start()
{
    endLive();
    spool_.clear();
    failure_ = nullptr;
    onRow_ = false;
    Executed executed = link().run({text_, parameters_, timeoutSeconds_});
    if (!executed.statement) {
        columns_.clear();
        return;
    }
    live_ = std::make_unique<ResultSet>(std::move(executed.statement), link().traits());
    // The columns of a statement that runs again stay those that the recordset knows.
    if (columns_.empty()) columns_ = live_->columns();
    link().claim(*this);
}

void StreamCursor::restart()
{
    start();
}

// Either the rows still come from the server, or they wait in the spool.
bool StreamCursor::next()
{
    if (live_ != nullptr) [[likely]]
        return nextLive();
    return nextSpooled();
}

/// A failure ends the result: the driver gives nothing more after it.
bool StreamCursor::nextLive()
{
    try {
        onRow_ = live_->fetch();
    } catch (...) {
        endLive();
        rethrow();
    }
    if (!onRow_) endLive();
    return onRow_;
}

/// A failure met while spooling is thrown where its row would have come, and only once.
bool StreamCursor::nextSpooled()
{
    onRow_ = spool_.take(row_);
    if (onRow_) return true;
    spool_.clear();
    if (failure_ != nullptr) {
        try {
            std::rethrow_exception(std::exchange(failure_, nullptr));
        } catch (...) {
            rethrow();
        }
    }
    return false;
}

// The first test fails only for a caller that has not called `next`.
Variant StreamCursor::value(std::size_t column) const
{
    if (!onRow_) throw Error{errors::noCurrentRecord, "The cursor stands on no row.", std::string{sourceName}};
    if (live_ == nullptr) {
        if (column < row_.size()) return row_[column];
        throw Error{errors::itemNotFound, "The result has no column " + std::to_string(column) + ".",
                    std::string{sourceName}};
    }
    return live_->value(column);
}

/// The current row comes first: `value` finds it in `row_` afterwards.
void StreamCursor::spool() noexcept
{
    if (live_ == nullptr) return;
    try {
        const auto takeRow = [this](std::vector<Variant>& row) {
            row.resize(columns_.size());
            for (std::size_t column = 0; column < row.size(); ++column)
                row[column] = live_->value(column);
        };
        if (onRow_) takeRow(row_);
        std::vector<Variant> row;
        while (live_->fetch()) {
            takeRow(row);
            spool_.append(row);
        }
    } catch (...) {
        failure_ = std::current_exception();
    }
    endLive();
}

/// The connection closes. What is left of the rows goes too.
void StreamCursor::abandon() noexcept
{
    endLive();
    spool_.clear();
    onRow_ = false;
}

void StreamCursor::endLive() noexcept
{
    if (live_ == nullptr) return;
    link().leave(*this);
    live_.reset();
}

/// Completes the failure being handled with the statement and with what it did to the connection.
void StreamCursor::rethrow() const
{
    try {
        throw;
    } catch (Error& error) {
        if (error.statement.empty()) error.statement = text_;
        link().settle(error);
        throw;
    }
}

// Drivers that know the names have told them when the result was described.
void StreamCursor::nameBases(std::vector<ado::ColumnInfo>& columns)
{
    if (!link().traits().driverNamesBases) nameBaseColumns(session_->catalogue, text_, columns);
}

} // namespace tamarok::odbc
