#pragma once

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "statement_cache.h"

#include "tamarok/ado_backend.h"

namespace tamarok::embedded {

class Engine;

/// The rows of a query. They stream out of SQLite, nothing is kept; only where the same connection
/// is about to write are the rows still to come read into memory first, so that a cursor shows the
/// rows as they were when it was opened and never stands in the way of a write.
class StreamCursor : public ado::Cursor {
public:
    /// @param batch  that the query stands in
    /// @param lease  of the query, with its parameters bound; none for a statement without a result set
    StreamCursor(Engine& engine, std::shared_ptr<const CachedBatch> batch, Lease lease, std::int32_t timeoutSeconds);
    StreamCursor(const StreamCursor&) = delete;
    StreamCursor& operator=(const StreamCursor&) = delete;
    ~StreamCursor() override;

    const std::vector<ado::ColumnInfo>& columns() const override { return layout_->columns; }
    bool next() override;
    Variant value(std::size_t column) const override;
    void restart() override;

    /// Runs the statement up to its first row, which `next` then gives.
    void start();
    /// True if the schema turned out to have changed since the statement was translated.
    bool outdated() const noexcept { return lease_.recompiled(); }
    /// Reads what is still to come into memory and lets go of the database. A failure is kept and
    /// thrown by the `next` that reaches it.
    void settle() noexcept;
    /// The connection closes: nothing more can be read.
    virtual void abandon() noexcept;

protected:
    /// Error 3709 where the connection has closed.
    Engine& engine() const;
    Engine* engineOrNull() const noexcept { return engine_; }
    std::int32_t timeoutSeconds() const noexcept { return timeoutSeconds_; }
    sqlite3_stmt* statement() const noexcept { return lease_.get(); }
    const Step& step() const noexcept { return lease_.step(); }
    const ResultLayout& layout() const noexcept { return *layout_; }
    /// Number of the current row among those in memory. Error 3021 where there is none.
    std::size_t keptRow() const;
    /// Rethrows the failure in hand with the statement's text.
    [[noreturn]] void rethrow() const;

    /// For each row that goes into memory, while SQLite stands on it.
    virtual void keepExtra() {}
    virtual void dropExtra() noexcept {}

private:
    bool stepLive();
    bool nextKept();
    void keepRow();
    void dropKept() noexcept;

    Engine* engine_;
    std::shared_ptr<const CachedBatch> batch_;
    Lease lease_;
    std::shared_ptr<const ResultLayout> layout_;
    std::int32_t timeoutSeconds_;
    sqlite3_stmt* live_ = nullptr; ///< the statement while rows stream out of it
    bool waiting_ = false;         ///< the live row has been stepped to and not yet asked for
    bool onRow_ = false;

    std::vector<Variant> values_; ///< rows in memory, column after column
    std::size_t rows_ = 0;
    std::size_t row_ = 0; ///< rows in memory that `next` has given
    std::exception_ptr failure_;
};

} // namespace tamarok::embedded
