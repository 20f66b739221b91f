#pragma once

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "statement_cache.h"

#include "tamarok/ado_backend.h"

namespace tamarok::embedded {

class Engine;

/// The rows of a query, streamed out of SQLite without a buffer. Before the same connection writes, it buffers the
/// remaining rows: a cursor shows the rows as they were when it was opened, and its statement can be reset.
class StreamCursor : public ado::Cursor {
public:
    /// @param batch  the batch that contains the query
    /// @param lease  the query with its parameters bound; none for a statement without a result set
    StreamCursor(Engine& engine, std::shared_ptr<const CachedBatch> batch, Lease lease, std::int32_t timeoutSeconds);
    StreamCursor(const StreamCursor&) = delete;
    StreamCursor& operator=(const StreamCursor&) = delete;
    ~StreamCursor() override;

    const std::vector<ado::ColumnInfo>& columns() const override { return layout_->columns; }
    bool next() override;
    Variant value(std::size_t column) const override;
    void restart() override;

    /// Runs the statement up to its first row, which `next` then returns.
    void start();
    /// True if the schema has changed since the statement was translated.
    bool outdated() const noexcept { return lease_.recompiled(); }
    /// Buffers the remaining rows and resets the statement. A failure is kept; the `next` that reaches it throws it.
    void bufferRows() noexcept;
    /// The connection closes: nothing more can be read.
    virtual void abandon() noexcept;

protected:
    /// The engine. Error 3709 if the connection is closed.
    Engine& engine() const;
    Engine* engineOrNull() const noexcept { return engine_; }
    std::int32_t timeoutSeconds() const noexcept { return timeoutSeconds_; }
    sqlite3_stmt* statement() const noexcept { return lease_.get(); }
    const Step& step() const noexcept { return lease_.step(); }
    const ResultLayout& layout() const noexcept { return *layout_; }
    /// Index of the current row among those in memory. Error 3021 if there is none.
    std::size_t bufferedRow() const;
    /// Rethrows the exception being handled with the statement's text, after the engine has settled it.
    [[noreturn]] void rethrow() const;

    /// Called for each row that is buffered, while it is SQLite's current row.
    virtual void bufferExtra() {}
    virtual void dropExtra() noexcept {}

private:
    bool stepLive();
    bool nextBuffered();
    void bufferRow();
    void dropBuffer() noexcept;

    Engine* engine_;
    std::shared_ptr<const CachedBatch> batch_;
    Lease lease_;
    std::shared_ptr<const ResultLayout> layout_;
    std::int32_t timeoutSeconds_;
    sqlite3_stmt* live_ = nullptr; ///< the statement while rows stream out of it
    bool waiting_ = false;         ///< SQLite stands on a row that `next` has not returned yet
    bool onRow_ = false;

    std::vector<Variant> values_; ///< rows in memory, column after column
    std::size_t rows_ = 0;
    std::size_t row_ = 0; ///< number of rows in memory that `next` has returned
    std::exception_ptr failure_;
};

} // namespace tamarok::embedded
