#include "cursor.h"

#include <utility>

#include "column_values.h"
#include "engine.h"
#include "failures.h"

namespace tamarok::embedded {

/// Without a lease the cursor is that of a statement without rows: it has no columns.
StreamCursor::StreamCursor(Engine& engine, std::shared_ptr<const CachedBatch> batch, Lease lease,
                           std::int32_t timeoutSeconds) :
    engine_{&engine},
    batch_{std::move(batch)}, lease_{std::move(lease)}, layout_{lease_.get() != nullptr
                                                                    ? lease_.layout()
                                                                    : std::make_shared<const ResultLayout>()},
    timeoutSeconds_{timeoutSeconds}
{
    engine_->enter(*this);
}

StreamCursor::~StreamCursor()
{
    if (engine_ != nullptr) {
        engine_->leave(*this);
    }
}

/// The first row has been fetched by `start` and waits; each other one is fetched here, under a new deadline.
bool StreamCursor::next()
{
    if (live_ == nullptr) {
        return nextBuffered();
    }
    if (waiting_) {
        waiting_ = false;
        onRow_ = true;
        return true;
    }
    engine_->database().deadline().arm(timeoutSeconds_);
    try {
        return stepLive();
    } catch (...) {
        rethrow();
    }
}

/// The first branch is the loop over a list: the row under the statement.
Variant StreamCursor::value(std::size_t column) const
{
    if (live_ != nullptr && onRow_ && column < layout_->readings.size()) [[likely]] {
        return readValue(live_, static_cast<int>(column), layout_->readings[column]);
    }
    if (column >= layout_->readings.size()) {
        throw Error{errors::itemNotFound, "The result has no column " + std::to_string(column) + ".",
                    std::string{sourceName}};
    }
    return values_[bufferedRow() * layout_->readings.size() + column];
}

void StreamCursor::restart()
{
    engine().database().deadline().arm(timeoutSeconds_);
    try {
        start();
    } catch (...) {
        rethrow();
    }
}

/// Fetches the first row at once, so that an error of the statement is reported by the opening.
void StreamCursor::start()
{
    dropBuffer();
    if (lease_.get() == nullptr) {
        return;
    }
    sqlite3_reset(lease_.get());
    live_ = lease_.get();
    waiting_ = stepLive();
    onRow_ = false;
}

/// Fetches all remaining rows. The current one comes first, where `value` finds it again.
void StreamCursor::bufferRows() noexcept
{
    if (live_ == nullptr) {
        return;
    }
    // The current row is buffered as well, so that its values can still be read.
    const bool given = onRow_;
    try {
        bool more = waiting_ || onRow_;
        while (more) {
            bufferRow();
            more = engine_->database().step(lease_.get());
        }
    } catch (...) {
        failure_ = std::current_exception();
    }
    row_ = given ? 1 : 0;
    live_ = nullptr;
    waiting_ = false;
    onRow_ = false;
    sqlite3_reset(lease_.get());
}

/// The statement must go before the database closes; buffered rows are dropped as well.
void StreamCursor::abandon() noexcept
{
    dropBuffer();
    lease_ = Lease{};
    batch_.reset();
    engine_ = nullptr;
}

Engine& StreamCursor::engine() const
{
    if (engine_ == nullptr) {
        throw Error{errors::connectionClosed, "The connection of the recordset is closed.", std::string{sourceName}};
    }
    return *engine_;
}

/// `row_` counts from 1; 0 is before the first row.
std::size_t StreamCursor::bufferedRow() const
{
    static_cast<void>(engine());
    if (live_ != nullptr || row_ == 0 || row_ > rows_) {
        throw Error{errors::noCurrentRecord, "The cursor stands on no row.", std::string{sourceName}};
    }
    return row_ - 1;
}

void StreamCursor::rethrow() const
{
    try {
        throw;
    } catch (Error& error) {
        if (error.statement.empty() && batch_ != nullptr) {
            error.statement = batch_->text();
        }
        if (engine_ != nullptr) {
            engine_->settle(error);
        }
        throw;
    }
}

/// A statement that has ended or failed is reset at once: it would hold a read transaction otherwise.
bool StreamCursor::stepLive()
{
    try {
        onRow_ = engine_->database().step(live_);
    } catch (...) {
        live_ = nullptr;
        onRow_ = false;
        sqlite3_reset(lease_.get());
        throw;
    }
    if (!onRow_) {
        live_ = nullptr;
        sqlite3_reset(lease_.get());
    }
    return onRow_;
}

/// A failure met while buffering is thrown where its row would have come, and only once.
bool StreamCursor::nextBuffered()
{
    static_cast<void>(engine());
    if (row_ < rows_) {
        ++row_;
        return true;
    }
    if (failure_ != nullptr) {
        try {
            std::rethrow_exception(std::exchange(failure_, nullptr));
        } catch (...) {
            rethrow();
        }
    }
    dropBuffer();
    return false;
}

void StreamCursor::bufferRow()
{
    for (std::size_t column = 0; column < layout_->readings.size(); ++column) {
        values_.push_back(readValue(lease_.get(), static_cast<int>(column), layout_->readings[column]));
    }
    bufferExtra();
    ++rows_;
}

void StreamCursor::dropBuffer() noexcept
{
    live_ = nullptr;
    waiting_ = false;
    onRow_ = false;
    std::vector<Variant>{}.swap(values_); // gives the memory back, which clear() would keep
    rows_ = 0;
    row_ = 0;
    failure_ = nullptr;
    dropExtra();
}

} // namespace tamarok::embedded
