#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "column_types.h"
#include "database.h"
#include "schema_catalog.h"
#include "tamarok_tsql/parsed_batch.h"
#include "translation/step.h"

namespace tamarok::embedded {

/// One translated SQLite text with its compiled statements that are not in use just now. Several
/// cursors may have the same statement open, each with a separate compiled statement.
class CompiledText {
public:
    Compiled acquire(const Database& database, const std::string& text);
    void release(Compiled statement);

private:
    std::vector<Compiled> idle_;
};

/// A translated step with its compiled statements. It is out of date when the catalogue's generation or the date order
/// has changed.
struct CachedStep {
    Step step;
    std::shared_ptr<const tsql::ParsedBatch> batch; ///< for the place that a message names
    std::shared_ptr<const ResultLayout> layout;
    CompiledText statement;
    CompiledText probe;
    CompiledText unconverted;
    std::uint64_t generation = 0;
    tsql::DateOrder order = tsql::DateOrder::Dmy;
};

/// Selects one of the SQLite texts of a step.
enum class StepText : std::uint8_t { Statement, Probe, Unconverted };

/// A compiled statement in use by a cursor or a change. Its destructor resets it and puts it back into the pool of its
/// step.
class Lease {
public:
    Lease() = default;
    Lease(std::shared_ptr<CachedStep> owner, const Database& database, StepText text = StepText::Statement);
    Lease(Lease&& other) noexcept = default;
    Lease& operator=(Lease&& other) noexcept;
    ~Lease();

    sqlite3_stmt* get() const noexcept { return statement_.get(); }
    const Step& step() const noexcept { return owner_->step; }
    const std::shared_ptr<const ResultLayout>& layout() const noexcept { return owner_->layout; }
    /// True if SQLite has compiled the statement anew since it was lent, because the schema changed.
    bool recompiled() const noexcept;

private:
    CompiledText& pool() const noexcept;
    void release() noexcept;

    std::shared_ptr<CachedStep> owner_;
    Compiled statement_;
    StepText text_ = StepText::Statement;
    int compilations_ = 0;
};

/// A parsed batch with the translations of its steps, with and without row key. Cursors share it with the cache, so it
/// outlives its removal from there.
class CachedBatch {
public:
    static constexpr std::size_t mostKept = 64; ///< steps of a batch whose translations are kept

    CachedBatch(std::string_view text, tsql::Watch watch);

    const std::string& text() const noexcept { return text_; }
    std::size_t size() const noexcept { return batch_->steps().size(); }
    /// Whether the step is a query that returns rows, and whether it is the condition of an IF.
    bool givesRows(std::size_t index) const noexcept;
    bool isCondition(std::size_t index) const noexcept;
    /// The step, translated against the present schema. Of a batch of many steps the last one asked for is kept alone.
    const std::shared_ptr<CachedStep>& step(std::size_t index, bool withRowKey, SchemaCatalog& catalog,
                                            tsql::DateOrder order);

private:
    std::shared_ptr<CachedStep>& slot(std::size_t index, bool withRowKey);

    std::string text_;
    std::shared_ptr<const tsql::ParsedBatch> batch_;
    std::vector<std::shared_ptr<CachedStep>> plain_;
    std::vector<std::shared_ptr<CachedStep>> keyed_;
    std::shared_ptr<CachedStep> latest_; ///< in place of both for a batch of many steps
    std::size_t latestIndex_ = 0;
    bool latestKeyed_ = false;
};

/// The batches of a connection by their text; the least recently used one is evicted first.
class StatementCache {
public:
    static constexpr std::size_t capacity = 256;
    static constexpr std::size_t longestText = 65536; ///< a longer one is not kept

    /// @param watch  ends the parsing and translation of a long text by throwing
    explicit StatementCache(tsql::Watch watch = {}) : watch_{std::move(watch)} {}

    /// Parses a text that is not known.
    std::shared_ptr<CachedBatch> batch(std::string_view text);
    void clear();
    std::size_t size() const noexcept { return batches_.size(); }

private:
    using Batches = std::list<std::shared_ptr<CachedBatch>>;
    tsql::Watch watch_;
    Batches batches_; ///< most recently used first
    std::unordered_map<std::string_view, Batches::iterator> index_;
};

} // namespace tamarok::embedded
