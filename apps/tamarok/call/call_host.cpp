#include "call/call_host.h"

#include <exception>
#include <istream>
#include <nlohmann/json.hpp>

#include "call/request.h"

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

} // namespace

std::string CallHost::answer(std::string_view line)
{
    Json request;
    Json outcome;
    Json args = Json::array();
    const char* kind = "error";
    state_.sql.clear();
    try {
        request = parseJson(line);
        if (!request.is_object()) {
            throw Error{errors::invalidArgument, "a request is a JSON object, not " + std::string{kindOf(request)}};
        }
        outcome = carryOut(state_, request, args);
        kind = "result";
    } catch (const Error& error) {
        outcome = describeError(error.number, error.source, error.description);
    } catch (const std::exception& error) {
        outcome = describeError(internalError, {}, error.what());
    }
    Json answer = Json::object();
    if (const Json* id = findId(request)) answer["id"] = *id;
    answer[kind] = std::move(outcome);
    answer["args"] = std::move(args);
    answer["messages"] = describeMessages(state_.messages->take());
    answer["sql"] = state_.sql;
    state_.names.keepOnlyNamedIn(answer);
    return toLine(answer);
}

void CallHost::run(std::istream& requests, Output& output)
{
    std::string line;
    while (std::getline(requests, line)) {
        output.write(answer(line) + "\n");
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
