#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/platforms.h"
#include "support/recording_database.h"

#include "tamarok/error.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

/// Doubles of what surrounds the library on a workstation: the language service, the message box, and both
/// together with a database.
namespace tamarok::test {

/// A procedure call as the language service received it.
struct ProcedureCall {
    std::string name;
    std::vector<ado::Parameter> parameters;
};

/// What the language service answers, and what it was asked.
struct LocScript {
    std::map<int, std::string> texts; ///< by number; any other number fails
    std::set<int> unreadable;         ///< reading these fails as the database does
    std::vector<int> asked;
    std::vector<ProcedureCall> procedures;
    int services = 0; ///< services made so far
};

class ScriptedLocService final : public LocService {
public:
    explicit ScriptedLocService(LocScript& script) : script_{script} { ++script_.services; }

    void TranslateForm(const TmkVar&, Object&) override {}
    std::string GetText(std::int16_t number, const TmkVar&) override
    {
        script_.asked.push_back(number);
        if (script_.unreadable.contains(number)) throw Error{errors::timeout, "Timeout expired", "language service"};
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

/// A message box that keeps what it was to show.
class RecordingMessageBox final : public MessageBox {
public:
    std::int16_t show(std::string_view text, std::int32_t flags, std::string_view title) override
    {
        shown.push_back({std::string{text}, flags, std::string{title}});
        return answer;
    }
    std::vector<ShownMessage> shown;
    std::int16_t answer = 1; ///< number of the button that is pressed
};

/// A session with doubles of everything around it, under the regional settings of `locale`, on 17 May 2024 at
/// 18:00. A statement without a prepared answer is refused.
class Surroundings {
public:
    explicit Surroundings(std::string_view locale = "de-AT", Unanswered unanswered = Unanswered::IsRefused) :
        database{unanswered}, scope_{makePlatform(locale)}
    {
        session.db_ADO = database.connect();
        session.strLanguage = "GERMAN";
    }

    RecordingDatabase database;
    LocScript loc;
    std::shared_ptr<RecordingMessageBox> messages = std::make_shared<RecordingMessageBox>();
    TmkVar session;

private:
    Platform makePlatform(std::string_view locale)
    {
        Platform platform = platformOf(locale);
        platform.messageBox = messages;
        platform.makeLocService = [this] { return std::make_unique<ScriptedLocService>(loc); };
        return platform;
    }

    PlatformScope scope_;
};

} // namespace tamarok::test
