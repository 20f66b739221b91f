#include "call/call_host.h"

#include <exception>
#include <functional>
#include <istream>
#include <new>
#include <nlohmann/json.hpp>

#include "call/dialog_script.h"
#include "call/request.h"
#include "call/request_fields.h"

#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

using errors::internalError;

Json describeError(std::int32_t number, const std::string& source, const std::string& description)
{
    return {{"number", number}, {"source", source.empty() ? "tamarok call" : source}, {"description", description}};
}

Json describeMessages(const std::vector<RecordingMessageBox::Shown>& shown)
{
    Json messages = Json::array();
    for (const auto& message : shown) {
        messages.push_back({{"text", message.text}, {"flags", message.flags}, {"title", message.title}});
    }
    return messages;
}

const Json* findId(const Json& request)
{
    if (!request.is_object()) return nullptr;
    const auto found = request.find("id");
    return found == request.end() ? nullptr : &*found;
}

/// What a request gives: its result, or the description of its error.
struct Outcome {
    bool failed = false;
    Json content;
};

Outcome outcomeOf(const std::function<Json()>& action)
{
    try {
        return {false, action()};
    } catch (const Error& error) {
        return {true, describeError(error.number, error.source, error.description)};
    } catch (const std::bad_alloc&) {
        return {true, describeError(errors::outOfMemory, {}, "The memory does not suffice for this request.")};
    } catch (const std::exception& error) {
        return {true, describeError(internalError, {}, error.what())};
    }
}

struct Line {
    enum class Kind { EndOfInput, Whole, TooLong };
    Kind kind = Kind::EndOfInput;
    std::string text; ///< of a whole line, without its end
};

/// Reads up to the next line end. Each line has a text of its own, so that the memory of a long one is given back.
Line readLine(std::streambuf& source)
{
    using Traits = std::streambuf::traits_type;
    Line line;
    for (auto next = source.sbumpc(); !Traits::eq_int_type(next, Traits::eof()); next = source.sbumpc()) {
        if (line.kind == Line::Kind::EndOfInput) line.kind = Line::Kind::Whole;
        const char character = Traits::to_char_type(next);
        if (character == '\n') return line;
        if (line.text.size() < CallHost::longestLine)
            line.text += character;
        else
            line.kind = Line::Kind::TooLong;
    }
    return line;
}

} // namespace

/// Answers with the outcome of `action`, which sets the request and its arguments as far as it gets.
std::string CallHost::answerByAction(const std::function<Json(Json& request, Json& args)>& action)
{
    Json request;
    Json args = Json::array();
    state_.sql.clear();
    Outcome outcome = outcomeOf([&] { return action(request, args); });
    Json dialogs = Json::object();
    Outcome described = outcomeOf([&] {
        describeDialogs(dialogs, state_.dialogs->takeReport(), state_.keyboard->take(), state_.names);
        return Json{};
    });
    if (described.failed && !outcome.failed) outcome = std::move(described);
    Json answer = Json::object();
    if (const Json* id = findId(request)) answer["id"] = *id;
    answer[outcome.failed ? "error" : "result"] = std::move(outcome.content);
    answer["args"] = std::move(args);
    answer["messages"] = describeMessages(state_.messages->take());
    answer["sql"] = state_.sql;
    answer.update(dialogs);
    state_.names.keepOnlyNamedIn(answer);
    return toLine(answer);
}

std::string CallHost::answer(std::string_view line)
{
    return answerByAction([&](Json& request, Json& args) {
        request = parseJson(line);
        if (!request.is_object()) {
            throw Error{errors::invalidArgument, "a request is a JSON object, not " + std::string{kindOf(request)}};
        }
        return carryOut(state_, request, args);
    });
}

void CallHost::run(std::istream& requests, Output& output)
{
    const auto refuseLongLine = [](Json&, Json&) -> Json {
        refuse("the line has more than " + std::to_string(longestLine) + " bytes");
    };
    std::streambuf& source = *requests.rdbuf();
    for (Line line = readLine(source); line.kind != Line::Kind::EndOfInput; line = readLine(source)) {
        const bool whole = line.kind == Line::Kind::Whole;
        output.write((whole ? answer(line.text) : answerByAction(refuseLongLine)) + "\n");
        output.flush();
    }
}

void CallHost::finish()
{
    if (state_.rollBackOpenTransactions()) {
        throw Error{errors::invalidArgument, "the input ended inside an open transaction, which was rolled back"};
    }
}

} // namespace tamarok::cli
