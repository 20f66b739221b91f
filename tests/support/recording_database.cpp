#include "support/recording_database.h"

#include <algorithm>
#include <utility>

namespace tamarok::test {

namespace {

std::shared_ptr<Table> makeTable(const std::vector<std::string>& columns, std::vector<Row> rows)
{
    auto table = std::make_shared<Table>();
    for (const std::string& column : columns)
        table->columns.push_back({column, "", "", ado::DataType::Variant, 0});
    for (Row& row : rows)
        table->rows.emplace(static_cast<std::int64_t>(table->rows.size()) + 1, std::move(row));
    return table;
}

std::string withColumns(std::string operation, std::span<const ado::Assignment> assignments)
{
    for (const ado::Assignment& assignment : assignments)
        operation.append(" ").append(std::to_string(assignment.column));
    return operation;
}

void assign(Row& row, std::span<const ado::Assignment> assignments)
{
    for (const ado::Assignment& assignment : assignments)
        row[assignment.column] = assignment.value;
}

} // namespace

class RecordingCursor final : public ado::Cursor {
public:
    RecordingCursor(RecordingDatabase& database, std::string connection, const ado::Statement& statement) :
        database_{database}, connection_{std::move(connection)}, text_{statement.text},
        isLocking_{statement.lockType == ado::LockType::Pessimistic}, table_{database.take(text_)}
    {
        ++database_.openCursors;
    }
    ~RecordingCursor() override
    {
        --database_.openCursors;
        if (isLocking_) database_.log.push_back(connection_ + "close cursor");
    }

    const std::vector<ado::ColumnInfo>& columns() const override { return table_->columns; }

    bool next() override
    {
        const auto found = key_ ? table_->rows.upper_bound(*key_) : table_->rows.begin();
        if (found == table_->rows.end()) return false;
        if (table_->unreadable == found->first) throw Error{errors::providerFailure, "The row cannot be read."};
        key_ = found->first;
        return true;
    }
    Variant value(std::size_t column) const override { return table_->rows.at(key_.value()).at(column); }
    void restart() override
    {
        record("restart");
        key_.reset();
        table_ = database_.take(text_);
    }

    bool updatable() const override { return table_->updatable; }
    std::int64_t rowKey() const override { return key_.value(); }
    void lockRow(std::int64_t key) override
    {
        record("lock " + std::to_string(key));
        if (table_->beforeLock) table_->beforeLock(key);
        if (table_->lockedByOthers.contains(key)) throw Error{errors::timeout, "The row is locked."};
        if (table_->goneForLocks.contains(key))
            throw Error{static_cast<std::int32_t>(0x80040E23U), "The row has been deleted."};
    }
    void unlockRow() override { record("unlock"); }
    void updateRow(std::int64_t key, std::span<const ado::Assignment> assignments) override
    {
        record(withColumns("update " + std::to_string(key), assignments));
        refuseIfWanted();
        assign(table_->rows.at(key), assignments);
    }
    std::int64_t insertRow(std::span<const ado::Assignment> assignments) override
    {
        record(withColumns("insert", assignments));
        refuseIfWanted();
        const std::int64_t key = table_->rows.empty() ? 1 : table_->rows.rbegin()->first + 1;
        assign(table_->rows.emplace(key, Row(table_->columns.size(), Null{})).first->second, assignments);
        return key;
    }
    void deleteRow(std::int64_t key) override
    {
        record("delete " + std::to_string(key));
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
    void record(const std::string& operation) { database_.record({.what = connection_ + operation}); }
    void refuseIfWanted()
    {
        if (table_->refusal) throw *std::exchange(table_->refusal, std::nullopt);
    }

    RecordingDatabase& database_;
    std::string connection_; ///< with a blank behind it, or ""
    std::string text_;
    bool isLocking_;
    std::shared_ptr<Table> table_;
    std::optional<std::int64_t> key_;
};

class RecordingSession final : public ado::Session {
public:
    RecordingSession(RecordingDatabase& database, const std::string& name) :
        database_{database}, prefix_{name.empty() ? name : name + " "}
    {}
    ~RecordingSession() override { database_.log.push_back(prefix_ + "end session"); }

    std::string_view name() const override { return "recording database"; }

    std::unique_ptr<ado::Cursor> open(const ado::Statement& statement) override
    {
        database_.opened.push_back({std::string{statement.text}, statement.cursorType, statement.lockType});
        record("open ", statement);
        return std::make_unique<RecordingCursor>(database_, prefix_, statement);
    }
    std::int64_t execute(const ado::Statement& statement) override
    {
        database_.executed.emplace_back(statement.text);
        record("execute ", statement);
        return database_.affectedRows;
    }
    void begin() override { record("begin"); }
    void commit() override { record("commit"); }
    void rollback() override { record("rollback"); }

private:
    void record(const std::string& operation) { database_.record({.what = prefix_ + operation}); }
    void record(std::string operation, const ado::Statement& statement)
    {
        if (statement.procedure) operation += "procedure ";
        database_.timeoutSeconds = statement.timeoutSeconds;
        database_.parameters.assign(statement.parameters.begin(), statement.parameters.end());
        database_.record({.what = prefix_ + operation.append(statement.text),
                          .timeoutSeconds = statement.timeoutSeconds,
                          .cursorType = statement.cursorType,
                          .lockType = statement.lockType});
    }

    RecordingDatabase& database_;
    std::string prefix_; ///< begins each call: the connection's name and a blank, or ""
};

ado::ConnectionRef RecordingDatabase::connect(const std::string& name)
{
    return std::make_shared<ado::Connection>(std::make_unique<RecordingSession>(*this, name),
                                             name.empty() ? "recording" : name);
}

void RecordingDatabase::answer(const std::string& statement, Variant value, std::string column)
{
    answerTable(statement, makeTable({std::move(column)}, {{std::move(value)}}));
}

void RecordingDatabase::answerNoRow(const std::string& statement, std::string column)
{
    answerTable(statement, makeTable({std::move(column)}, {}));
}

void RecordingDatabase::answerTable(const std::string& statement, std::shared_ptr<Table> table)
{
    answers_[statement] = {std::move(table)};
}

void RecordingDatabase::addAnswer(const std::string& statement, const std::vector<std::string>& columns,
                                  std::vector<Row> rows)
{
    answers_[statement].push_back(makeTable(columns, std::move(rows)));
}

void RecordingDatabase::addValue(const std::string& statement, std::string column, Variant value)
{
    addAnswer(statement, {std::move(column)}, {{std::move(value)}});
}

void RecordingDatabase::fail(const std::string& call, Error failure)
{
    failures_.insert_or_assign(call, std::move(failure));
    successes_.erase(call);
}

void RecordingDatabase::failLater(int successes, const std::string& call)
{
    fail(call);
    successes_[call] = successes;
}

std::vector<std::string> RecordingDatabase::openedTexts() const
{
    std::vector<std::string> texts;
    for (const OpenedStatement& statement : opened)
        texts.push_back(statement.text);
    return texts;
}

const Call& RecordingDatabase::find(std::string_view what) const
{
    const auto found = std::ranges::find(calls, what, &Call::what);
    if (found == calls.end())
        throw Error{errors::invalidArgument, "Never asked: " + std::string{what}, "recording database"};
    return *found;
}

std::vector<std::string> RecordingDatabase::takeLog()
{
    return std::exchange(log, {});
}

void RecordingDatabase::clearRecord()
{
    calls.clear();
    log.clear();
    opened.clear();
    executed.clear();
}

void RecordingDatabase::record(Call call)
{
    const auto failure = failures_.find(call.what);
    const auto spared = successes_.find(call.what);
    log.push_back(call.what);
    calls.push_back(std::move(call));
    if (failure == failures_.end()) return;
    if (spared != successes_.end() && spared->second-- > 0) return;
    throw failure->second;
}

std::shared_ptr<Table> RecordingDatabase::take(std::string_view statement)
{
    const auto found = answers_.find(statement);
    if (found == answers_.end()) {
        if (unanswered_ == Unanswered::IsRefused)
            throw Error{errors::statementRefused, "No answer for: " + std::string{statement}, "recording database"};
        return unanswered_ == Unanswered::HasNoRows ? makeTable({"ID"}, {}) : std::make_shared<Table>();
    }
    std::shared_ptr<Table> table = found->second.front();
    if (found->second.size() > 1) found->second.pop_front();
    return table;
}

} // namespace tamarok::test
