#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/scripted_database.h"

/// A database with several connections that keeps one record of all they were asked, in order, with
/// the time-out that each statement had; answers and failures are prepared.
namespace tamarok::testing {

using Row = std::vector<Variant>;

struct Call {
    std::string what; ///< "main open ...", "lock execute ...", "lock restart", "lock delete row"
    std::int32_t timeout = 0;
    ado::CursorType cursorType = ado::CursorType::OpenForwardOnly;
    ado::LockType lockType = ado::LockType::ReadOnly;
};

class RecordingDatabase {
public:
    struct Rows {
        std::vector<std::string> columns;
        std::vector<Row> rows;
    };

    /// Answers of one statement follow each other; the last one stays.
    void answer(const std::string& statement, std::vector<std::string> columns, std::vector<Row> rows)
    {
        answers_[statement].push_back({std::move(columns), std::move(rows)});
    }
    void answerValue(const std::string& statement, const std::string& column, Variant value)
    {
        answer(statement, {column}, {{std::move(value)}});
    }
    /// Fails whatever is recorded as `call`, as an unanswered wait for a lock does.
    void fail(const std::string& call) { failing_.insert(call); }

    ado::ConnectionRef connect(const std::string& name);

    std::vector<std::string> texts() const
    {
        std::vector<std::string> all;
        for (const Call& call : calls)
            all.push_back(call.what);
        return all;
    }
    const Call& find(std::string_view what) const
    {
        for (const Call& call : calls)
            if (call.what == what) return call;
        throw Error{errors::invalidArgument, "never sent: " + std::string{what}, "recording database"};
    }

    void record(Call call)
    {
        const std::string what = call.what;
        calls.push_back(std::move(call));
        if (failing_.contains(what)) throw Error{errors::timeout, "Timeout expired", "recording database"};
    }
    /// A statement without a prepared answer has no rows.
    Rows take(std::string_view statement)
    {
        const auto found = answers_.find(statement);
        if (found == answers_.end()) return {{"ID"}, {}};
        Rows rows = found->second.front();
        if (found->second.size() > 1) found->second.pop_front();
        return rows;
    }

    std::vector<Call> calls;

private:
    std::map<std::string, std::deque<Rows>, std::less<>> answers_;
    std::set<std::string> failing_;
};

class RecordingCursor final : public ado::Cursor {
public:
    RecordingCursor(RecordingDatabase& database, std::string connection, const ado::Statement& statement) :
        database_{database}, connection_{std::move(connection)}, text_{statement.text}, updatable_{
                                                                                            statement.lockType !=
                                                                                            ado::LockType::ReadOnly}
    {
        fetch();
    }

    const std::vector<ado::ColumnInfo>& columns() const override { return columns_; }
    bool next() override { return ++position_ <= rows_.rows.size(); }
    Variant value(std::size_t column) const override { return rows_.rows.at(position_ - 1).at(column); }
    void restart() override
    {
        database_.record({.what = connection_ + " restart"});
        position_ = 0;
        fetch();
    }
    bool updatable() const override { return updatable_; }
    std::int64_t rowKey() const override { return static_cast<std::int64_t>(position_); }
    void lockRow(std::int64_t) override { database_.record({.what = connection_ + " lock row"}); }
    void unlockRow() override {}
    void deleteRow(std::int64_t) override { database_.record({.what = connection_ + " delete row"}); }
    bool readRow(std::int64_t key, std::vector<Variant>& values) override
    {
        values = rows_.rows.at(static_cast<std::size_t>(key) - 1);
        return true;
    }

private:
    void fetch()
    {
        rows_ = database_.take(text_);
        columns_.clear();
        for (const std::string& name : rows_.columns)
            columns_.push_back({name, "LOCK", name, ado::DataType::Variant, 0});
    }

    RecordingDatabase& database_;
    std::string connection_;
    std::string text_;
    bool updatable_;
    RecordingDatabase::Rows rows_;
    std::vector<ado::ColumnInfo> columns_;
    std::size_t position_ = 0;
};

class RecordingSession final : public ado::Session {
public:
    RecordingSession(RecordingDatabase& database, std::string name) : database_{database}, name_{std::move(name)} {}

    std::string_view name() const override { return "recording database"; }
    std::unique_ptr<ado::Cursor> open(const ado::Statement& statement) override
    {
        record(" open ", statement);
        return std::make_unique<RecordingCursor>(database_, name_, statement);
    }
    std::int64_t execute(const ado::Statement& statement) override
    {
        record(" execute ", statement);
        return 1;
    }
    void begin() override {}
    void commit() override {}
    void rollback() override {}

private:
    void record(std::string_view how, const ado::Statement& statement)
    {
        database_.record({.what = name_ + std::string{how} + std::string{statement.text},
                          .timeout = statement.timeoutSeconds,
                          .cursorType = statement.cursorType,
                          .lockType = statement.lockType});
    }

    RecordingDatabase& database_;
    std::string name_;
};

inline ado::ConnectionRef RecordingDatabase::connect(const std::string& name)
{
    return std::make_shared<ado::Connection>(std::make_unique<RecordingSession>(*this, name), name);
}

/// A workstation in multi-user operation: user 7, two connections with unusual time-outs, texts that
/// show their numbers, and messages that are kept.
class Workstation {
public:
    explicit Workstation(std::string_view locale = "de-AT") : scope_{makePlatform(locale)}
    {
        for (const int number :
             {625, 629, 632, 638, 642, 646, 649, 652, 655, 4887, 4888, 4889, 4890, 4891, 4892, 4893}) {
            loc.texts[number] = std::string{"T"}.append(std::to_string(number));
        }
        session.db_ADO->CommandTimeout(41);
        dbLock->CommandTimeout(17);
        session.ID_User = 7;
        session.bolLan = true;
        session.strLanguage = "GERMAN";
        session.strDateFormat = "DD.MM.YYYY";
    }

    std::vector<std::string> sent() const { return database.texts(); }

    RecordingDatabase database;
    LocScript loc;
    std::shared_ptr<RecordingMessageBox> messages = std::make_shared<RecordingMessageBox>();
    ado::ConnectionRef dbLock = database.connect("lock");
    TmkVar session = [this] {
        TmkVar made;
        made.db_ADO = database.connect("main");
        return made;
    }();

private:
    Platform makePlatform(std::string_view locale)
    {
        Platform platform;
        platform.regional = Regional::named(locale);
        platform.messageBox = messages;
        platform.makeLocService = [this] { return std::make_unique<ScriptedLocService>(loc); };
        platform.clock = std::make_shared<FixedClock>(makeDate(2024, 5, 17));
        return platform;
    }

    PlatformScope scope_;
};

/// The failure of `action`; number 0 where it does not fail.
template <class Action>
Error failureOf(Action&& action)
{
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    return Error{0, "no failure", "test"};
}

} // namespace tamarok::testing
