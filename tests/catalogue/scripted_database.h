#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tamarok/ado_backend.h"
#include "tamarok/error.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

/// A database, a language service and a message box that answer from a script and keep a record of
/// what was asked.
namespace tamarok::testing {

struct OpenedStatement {
    std::string text;
    ado::CursorType cursorType;
    ado::LockType lockType;
};

/// What the database answers, and what it was asked. One column, called VALUE unless said otherwise.
class Script {
public:
    void answer(std::string statement, Variant value, std::string column = "VALUE")
    {
        answers_[std::move(statement)] = {std::move(column), {std::move(value)}};
    }
    void answerNoRow(std::string statement) { answers_[std::move(statement)] = {"VALUE", {}}; }

    struct Rows {
        std::string column;
        std::vector<Variant> values;
    };
    const Rows& find(std::string_view statement) const
    {
        const auto found = answers_.find(statement);
        if (found == answers_.end()) {
            throw Error{errors::statementRefused, "No answer for: " + std::string{statement}, "scripted database"};
        }
        return found->second;
    }

    std::vector<OpenedStatement> opened;
    std::vector<std::string> executed;
    int openCursors = 0;

    std::vector<std::string> openedTexts() const
    {
        std::vector<std::string> texts;
        for (const OpenedStatement& statement : opened) {
            texts.push_back(statement.text);
        }
        return texts;
    }

private:
    std::map<std::string, Rows, std::less<>> answers_;
};

class ScriptedCursor final : public ado::Cursor {
public:
    ScriptedCursor(Script& script, Script::Rows rows) : script_{script}, rows_{std::move(rows)}
    {
        columns_.push_back({rows_.column, "", "", ado::DataType::Variant, 0});
        ++script_.openCursors;
    }
    ~ScriptedCursor() override { --script_.openCursors; }

    const std::vector<ado::ColumnInfo>& columns() const override { return columns_; }
    bool next() override
    {
        ++position_;
        return position_ <= rows_.values.size();
    }
    Variant value(std::size_t) const override { return rows_.values.at(position_ - 1); }
    void restart() override { position_ = 0; }

private:
    Script& script_;
    Script::Rows rows_;
    std::vector<ado::ColumnInfo> columns_;
    std::size_t position_ = 0;
};

class ScriptedSession final : public ado::Session {
public:
    explicit ScriptedSession(Script& script) : script_{script} {}

    std::string_view name() const override { return "scripted database"; }
    std::unique_ptr<ado::Cursor> open(const ado::Statement& statement) override
    {
        script_.opened.push_back({std::string{statement.text}, statement.cursorType, statement.lockType});
        return std::make_unique<ScriptedCursor>(script_, script_.find(statement.text));
    }
    std::int64_t execute(const ado::Statement& statement) override
    {
        script_.executed.emplace_back(statement.text);
        return 1;
    }
    void begin() override {}
    void commit() override {}
    void rollback() override {}

private:
    Script& script_;
};

inline ado::ConnectionRef connect(Script& script)
{
    return std::make_shared<ado::Connection>(std::make_unique<ScriptedSession>(script), "scripted");
}

/// A procedure call as the language service got it.
struct ProcedureCall {
    std::string name;
    std::vector<ado::Parameter> parameters;
};

struct LocScript {
    std::map<int, std::string> texts;
    std::vector<int> asked;
    std::vector<ProcedureCall> procedures;
    int services = 0; ///< made so far
};

class ScriptedLocService final : public LocService {
public:
    explicit ScriptedLocService(LocScript& script) : script_{script} { ++script_.services; }

    void TranslateForm(const TmkVar&, Object&) override {}
    std::string GetText(std::int16_t number, const TmkVar&) override
    {
        script_.asked.push_back(number);
        return script_.texts.at(number);
    }
    std::string GetText2(std::int16_t number, const TmkVar& session) override { return GetText(number, session); }
    void RunProcedure(const TmkVar&, std::string_view name, ado::Command& command) override
    {
        script_.procedures.push_back({std::string{name}, command.Parameters()});
    }

private:
    LocScript& script_;
};

struct ShownMessage {
    std::string text;
    std::int32_t flags;
    std::string title;
    friend bool operator==(const ShownMessage&, const ShownMessage&) = default;
};

class RecordingMessageBox final : public MessageBox {
public:
    std::int16_t show(std::string_view text, std::int32_t flags, std::string_view title) override
    {
        shown.push_back({std::string{text}, flags, std::string{title}});
        return answer;
    }
    std::vector<ShownMessage> shown;
    std::int16_t answer = 1;
};

/// A session on scripted surroundings, under the regional settings of `locale`.
class Surroundings {
public:
    explicit Surroundings(std::string_view locale = "de-AT") : scope_{makePlatform(locale)}
    {
        session.db_ADO = connect(database);
        session.strLanguage = "GERMAN";
    }

    Script database;
    LocScript loc;
    std::shared_ptr<RecordingMessageBox> messages = std::make_shared<RecordingMessageBox>();
    TmkVar session;

private:
    Platform makePlatform(std::string_view locale)
    {
        Platform platform;
        platform.regional = Regional::named(locale);
        platform.messageBox = messages;
        platform.makeLocService = [this] { return std::make_unique<ScriptedLocService>(loc); };
        platform.clock = std::make_shared<FixedClock>(Date{makeDate(2024, 5, 17).days + 0.75});
        return platform;
    }

    PlatformScope scope_;
};

} // namespace tamarok::testing
