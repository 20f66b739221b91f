#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cursor.h"
#include "tamarok_tsql/schema.h"

namespace tamarok::embedded {

/// The rows of a query on one base table, each with its row key, to change them. All rows are read when the cursor
/// starts, since an open statement would keep SQLite from shrinking its write-ahead log.
class EditableCursor final : public StreamCursor {
public:
    EditableCursor(Engine& engine, std::shared_ptr<const CachedBatch> batch, Lease lease,
                   const ado::Statement& statement, const tsql::Table& table);
    ~EditableCursor() override;

    bool next() override;
    bool updatable() const override { return true; }
    std::int64_t rowKey() const override;
    void lockRow(std::int64_t key) override;
    void unlockRow() override;
    void updateRow(std::int64_t key, std::span<const ado::Assignment> assignments) override;
    std::int64_t insertRow(std::span<const ado::Assignment> assignments) override;
    void deleteRow(std::int64_t key) override;
    bool readRow(std::int64_t key, std::vector<Variant>& values) override;

    void abandon() noexcept override;

protected:
    void bufferExtra() override;
    void dropExtra() noexcept override { keys_.clear(); }

private:
    struct HeldLock {
        std::int64_t key;
        std::int64_t position;
    };

    const tsql::TableColumn& target(std::size_t column) const;
    std::string readText() const;
    void changeRow(std::int64_t key, const std::string& text, std::span<const ado::Assignment> assignments);
    void releaseLock() noexcept;

    tsql::Table table_;
    std::vector<ado::Parameter> parameters_; ///< of the query
    std::vector<std::int64_t> keys_;
    std::optional<HeldLock> held_;
};

} // namespace tamarok::embedded
