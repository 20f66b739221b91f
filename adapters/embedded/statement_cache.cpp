#include "statement_cache.h"

#include <algorithm>

#include "failures.h"

namespace tamarok::embedded {

namespace {

/// How often SQLite itself compiled the statement again, because the schema had changed.
int compilationsOf(sqlite3_stmt* statement) noexcept
{
    return sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0);
}

/// The SQLite text that a lease compiles.
const std::string& textOf(const Step& step, StepText text) noexcept
{
    switch (text) {
    case StepText::Probe: return step.lockProbe;
    case StepText::Unconverted: return step.unconvertedText;
    case StepText::Statement: break;
    }
    return step.text;
}

} // namespace

/// An idle compiled statement, or a new one if all are in use.
Compiled CompiledText::acquire(const Database& database, const std::string& text)
{
    if (idle_.empty()) {
        return database.compile(text, nullptr, true);
    }
    Compiled statement = std::move(idle_.back());
    idle_.pop_back();
    return statement;
}

void CompiledText::release(Compiled statement)
{
    idle_.push_back(std::move(statement));
}

Lease::Lease(std::shared_ptr<CachedStep> owner, const Database& database, StepText text) :
    owner_{std::move(owner)}, text_{text}
{
    try {
        statement_ = pool().acquire(database, textOf(owner_->step, text));
    } catch (const NestingFailure& failure) {
        refuseNesting(*owner_->batch, owner_->step, failure.position);
    }
    compilations_ = compilationsOf(statement_.get());
}

Lease& Lease::operator=(Lease&& other) noexcept
{
    if (this != &other) {
        release();
        owner_ = std::move(other.owner_);
        statement_ = std::move(other.statement_);
        text_ = other.text_;
        compilations_ = other.compilations_;
    }
    return *this;
}

CompiledText& Lease::pool() const noexcept
{
    switch (text_) {
    case StepText::Probe: return owner_->probe;
    case StepText::Unconverted: return owner_->unconverted;
    case StepText::Statement: break;
    }
    return owner_->statement;
}

Lease::~Lease()
{
    release();
}

/// Compares the count at the beginning of the lease with the present one.
bool Lease::recompiled() const noexcept
{
    return compilationsOf(statement_.get()) != compilations_;
}

void Lease::release() noexcept
{
    if (statement_ == nullptr) {
        return;
    }
    sqlite3_reset(statement_.get());
    try {
        pool().release(std::move(statement_));
    } catch (...) {
        statement_.reset(); // without memory for keeping it, it is compiled again next time
    }
}

CachedBatch::CachedBatch(std::string_view text, tsql::Watch watch) :
    text_{text}, batch_{std::make_shared<const tsql::ParsedBatch>(text_, std::move(watch))},
    plain_(std::min(batch_->steps().size(), mostKept)), keyed_(plain_.size())
{}

/// SELECT ... INTO makes a table and returns no rows.
bool CachedBatch::givesRows(std::size_t index) const noexcept
{
    const tsql::ParsedStep& step = batch_->steps()[index];
    return step.kind == tsql::StepKind::Query && (step.query->select == nullptr || step.query->select->into.empty());
}

bool CachedBatch::isCondition(std::size_t index) const noexcept
{
    return batch_->steps()[index].kind == tsql::StepKind::JumpUnless;
}

/// The same query may be open with and without row key; the texts differ. A script of 100,000 statements runs each of
/// them once, so that its translations and compiled statements are not worth their memory.
std::shared_ptr<CachedStep>& CachedBatch::slot(std::size_t index, bool withRowKey)
{
    if (size() <= mostKept) return withRowKey ? keyed_[index] : plain_[index];
    if (index != latestIndex_ || withRowKey != latestKeyed_) latest_ = nullptr;
    latestIndex_ = index;
    latestKeyed_ = withRowKey;
    return latest_;
}

/// Translates a step at its first use, and again when the schema or the date order has changed since.
const std::shared_ptr<CachedStep>& CachedBatch::step(std::size_t index, bool withRowKey, SchemaCatalog& catalog,
                                                     tsql::DateOrder order)
{
    std::shared_ptr<CachedStep>& cached = slot(index, withRowKey);
    if (cached == nullptr || cached->generation != catalog.generation() || cached->order != order) {
        catalog.refresh();
        auto fresh = std::make_shared<CachedStep>();
        fresh->step = translateStep(*batch_, index, catalog, order, withRowKey ? RowKey::Added : RowKey::Omitted);
        fresh->layout = std::make_shared<ResultLayout>(layoutOf(fresh->step.columns));
        fresh->generation = catalog.generation();
        fresh->order = order;
        fresh->batch = batch_;
        cached = std::move(fresh);
    }
    return cached;
}

/// The most recently used batch is the first; the last one is evicted. Very long texts are not kept.
std::shared_ptr<CachedBatch> StatementCache::batch(std::string_view text)
{
    // The same text again needs no hash: a program often repeats a statement.
    if (!batches_.empty() && batches_.front()->text() == text) {
        return batches_.front();
    }
    if (const auto found = index_.find(text); found != index_.end()) {
        batches_.splice(batches_.begin(), batches_, found->second);
        return batches_.front();
    }
    auto batch = std::make_shared<CachedBatch>(text, watch_);
    if (text.size() > longestText) {
        return batch;
    }
    if (batches_.size() == capacity) {
        index_.erase(batches_.back()->text());
        batches_.pop_back();
    }
    batches_.push_front(batch);
    index_.emplace(batch->text(), batches_.begin());
    return batch;
}

void StatementCache::clear()
{
    index_.clear();
    batches_.clear();
}

} // namespace tamarok::embedded
