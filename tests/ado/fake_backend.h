#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tamarok/ado.h"
#include "tamarok/ado_backend.h"
#include "tamarok/error.h"

/// A back end in memory that does what a test prepares and writes down what it is asked for.
namespace tamarok::ado::fake {

using Row = std::vector<Variant>;

/// The rows behind a statement, by key.
struct Table {
    std::vector<ColumnInfo> columns;
    std::map<std::int64_t, Row> rows;
    bool updatable = true;
    std::set<std::int64_t> lockedByOthers;        ///< lockRow times out
    std::set<std::int64_t> goneForLocks;          ///< lockRow finds the row gone
    std::function<void(std::int64_t)> beforeLock; ///< what others do while a lock is waited for
    std::optional<std::int64_t> unreadable;       ///< the step to this row fails
    std::optional<Error> refusal;                 ///< of the next write
};

/// What all sessions share.
struct Database {
    std::map<std::string, std::shared_ptr<Table>, std::less<>> tables; ///< by statement text
    std::map<std::string, Error, std::less<>> failures;                ///< by statement text
    std::vector<std::string> log;
    std::vector<Parameter> parameters; ///< of the last execution
    std::int32_t timeout = -1;         ///< of the last statement
    std::int64_t touched = -1;         ///< what executions give back
    int openCursors = 0;

    void write(std::string entry) { log.push_back(std::move(entry)); }
    void write(std::string_view operation, std::int64_t key)
    {
        std::string entry{operation};
        entry += ' ';
        entry += std::to_string(key);
        log.push_back(std::move(entry));
    }
    std::vector<std::string> takeLog() { return std::exchange(log, {}); }
};

class FakeCursor final : public Cursor {
public:
    FakeCursor(Database& database, std::shared_ptr<Table> table, bool locking) :
        database_{database}, table_{std::move(table)}, locking_{locking}
    {
        ++database_.openCursors;
    }
    ~FakeCursor() override
    {
        --database_.openCursors;
        if (locking_) database_.write("close cursor");
    }

    const std::vector<ColumnInfo>& columns() const override { return table_->columns; }

    bool next() override
    {
        const auto found = key_ ? table_->rows.upper_bound(*key_) : table_->rows.begin();
        if (found == table_->rows.end()) return false;
        if (table_->unreadable == found->first) throw Error{errors::providerFailure, "The row cannot be read."};
        key_ = found->first;
        return true;
    }
    Variant value(std::size_t column) const override { return table_->rows.at(key_.value())[column]; }
    void restart() override
    {
        database_.write("restart");
        key_.reset();
    }

    bool updatable() const override { return table_->updatable; }
    std::int64_t rowKey() const override { return key_.value(); }
    void lockRow(std::int64_t key) override
    {
        database_.write("lock", key);
        if (table_->beforeLock) table_->beforeLock(key);
        if (table_->lockedByOthers.contains(key)) throw Error{errors::timeout, "The row is locked."};
        if (table_->goneForLocks.contains(key))
            throw Error{static_cast<std::int32_t>(0x80040E23U), "The row has been deleted."};
    }
    void unlockRow() override { database_.write("unlock"); }
    void updateRow(std::int64_t key, std::span<const Assignment> assignments) override
    {
        database_.write("update", key);
        appendColumns(assignments);
        refuseIfWanted();
        assign(table_->rows.at(key), assignments);
    }
    std::int64_t insertRow(std::span<const Assignment> assignments) override
    {
        database_.write("insert");
        appendColumns(assignments);
        refuseIfWanted();
        const std::int64_t key = table_->rows.empty() ? 1 : table_->rows.rbegin()->first + 1;
        assign(table_->rows.emplace(key, Row(table_->columns.size(), Null{})).first->second, assignments);
        return key;
    }
    void deleteRow(std::int64_t key) override
    {
        database_.write("delete", key);
        refuseIfWanted();
        table_->rows.erase(key);
    }
    bool readRow(std::int64_t key, std::vector<Variant>& values) override
    {
        const auto found = table_->rows.find(key);
        if (found == table_->rows.end()) return false;
        values = found->second;
        return true;
    }

private:
    void appendColumns(std::span<const Assignment> assignments)
    {
        for (const Assignment& assignment : assignments) {
            database_.log.back() += ' ';
            database_.log.back() += std::to_string(assignment.column);
        }
    }
    static void assign(Row& row, std::span<const Assignment> assignments)
    {
        for (const Assignment& assignment : assignments)
            row[assignment.column] = assignment.value;
    }
    void refuseIfWanted()
    {
        if (table_->refusal) throw *std::exchange(table_->refusal, std::nullopt);
    }

    Database& database_;
    std::shared_ptr<Table> table_;
    bool locking_;
    std::optional<std::int64_t> key_;
};

class FakeSession final : public Session {
public:
    explicit FakeSession(std::shared_ptr<Database> database) : database_{std::move(database)} {}
    ~FakeSession() override { database_->write("end session"); }

    std::string_view name() const override { return "Fake database"; }

    std::unique_ptr<Cursor> open(const Statement& statement) override
    {
        enter("open ", statement);
        const auto found = database_->tables.find(statement.text);
        auto table = found == database_->tables.end() ? std::make_shared<Table>() : found->second;
        return std::make_unique<FakeCursor>(*database_, std::move(table), statement.lockType == LockType::Pessimistic);
    }
    std::int64_t execute(const Statement& statement) override
    {
        enter("execute ", statement);
        return database_->touched;
    }
    void begin() override { database_->write("begin"); }
    void commit() override { database_->write("commit"); }
    void rollback() override { database_->write("rollback"); }

private:
    void enter(std::string_view operation, const Statement& statement)
    {
        database_->write(std::string{operation} + (statement.procedure ? "procedure " : "") +
                         std::string{statement.text});
        database_->timeout = statement.timeoutSeconds;
        database_->parameters.assign(statement.parameters.begin(), statement.parameters.end());
        const auto failure = database_->failures.find(statement.text);
        if (failure != database_->failures.end()) throw failure->second;
    }

    std::shared_ptr<Database> database_;
};

} // namespace tamarok::ado::fake
