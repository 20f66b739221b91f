#include "call/dialog_script.h"

#include <algorithm>
#include <array>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>

#include "call/json_value.h"
#include "call/request_fields.h"

#include "tamarok/error.h"
#include "tamarok/spelling.h"

namespace tamarok::cli {

namespace {

using dialogs::DialogStep;
using dialogs::StepKind;

/// A form of a step: its word and its members, "" for none.
struct StepForm {
    std::string_view name;
    StepKind kind;
    std::array<std::string_view, 2> members{};
};

constexpr std::array stepForms{
    StepForm{"type", StepKind::Type, {"text"}},
    StepForm{"key", StepKind::Key, {"code"}},
    StepForm{"click", StepKind::Click, {"name"}},
    StepForm{"head", StepKind::Head, {"index"}},
    StepForm{"select", StepKind::SelectRow, {"row"}},
    StepForm{"select", StepKind::SelectRows, {"rows"}},
    StepForm{"select", StepKind::SelectNode, {"key"}},
    StepForm{"set", StepKind::Set, {"name", "value"}},
    StepForm{"read", StepKind::Read, {"name"}},
    StepForm{"navigate", StepKind::Navigate, {"url"}},
    StepForm{"resize", StepKind::Resize, {"width", "height"}},
    StepForm{"ok", StepKind::Ok},
    StepForm{"cancel", StepKind::Cancel},
    StepForm{"close", StepKind::Close},
};

constexpr std::array<std::string_view, 4> textMembers{"text", "name", "key", "url"};

std::int32_t readNumber(const Json& given, std::string_view member)
{
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(requireCount(given, most, "\"" + std::string{member} + "\""));
}

/// Puts a member into the step, in the kind that its name has.
void readMember(DialogStep& step, const Json& given, std::string_view member, const ObjectNames& names)
{
    if (std::ranges::find(textMembers, member) != textMembers.end()) {
        step.text = requireText(given, member);
    } else if (member == "value") {
        step.value = toVariant(given, names);
    } else if (member == "rows") {
        if (!given.is_array()) refuse("\"rows\" is an array, not " + std::string{kindOf(given)});
        for (const Json& row : given)
            step.numbers.push_back(readNumber(row, "rows"));
    } else {
        step.numbers.push_back(readNumber(given, member));
    }
}

bool hasMembers(const Json& given, const StepForm& form)
{
    return std::ranges::all_of(
        form.members, [&](std::string_view member) { return member.empty() || findMember(given, member) != nullptr; });
}

/// The members that a step of that word needs, for messages: "row", "rows" or "key".
std::string neededMembers(std::string_view word)
{
    std::string needed;
    for (const StepForm& form : stepForms) {
        if (form.name != word) continue;
        if (!needed.empty()) needed += " or ";
        needed.append("\"").append(form.members[0]).append("\"");
        if (!form.members[1].empty()) needed.append(" and \"").append(form.members[1]).append("\"");
    }
    return needed;
}

/// Names the nearest step, or all of them where none is near.
[[noreturn]] void refuseWord(const std::string& word)
{
    std::string help = spelling::suggestionByName(word, stepForms);
    if (help.empty())
        help = "; known are type, key, click, head, select, set, read, navigate, resize, ok, cancel, close";
    refuse("there is no step '" + word + "'" + help);
}

const StepForm& findForm(const Json& given)
{
    if (!given.is_object()) refuse("a step is an object, not " + std::string{kindOf(given)});
    const std::string& word = textMember(given, "do");
    if (std::ranges::find(stepForms, word, &StepForm::name) == stepForms.end()) refuseWord(word);
    const auto form = std::ranges::find_if(
        stepForms, [&](const StepForm& each) { return each.name == word && hasMembers(given, each); });
    if (form == stepForms.end()) refuse("a step '" + word + "' needs " + neededMembers(word));
    return *form;
}

/// Every member must belong to the form, and stand once.
void checkMembers(const Json& given, const StepForm& form)
{
    // The word alone does not tell the form of a step "select".
    std::string step = "a step '" + std::string{form.name} + "'";
    if (!form.members[0].empty()) step.append(" with \"").append(form.members[0]).append("\"");
    std::set<std::string_view> seen;
    for (const auto& item : given.items()) {
        const std::string& key = item.key();
        const bool belongs =
            key == "do" || (!key.empty() && std::ranges::find(form.members, key) != form.members.end());
        if (!belongs) refuse(step.append(" has no member \"").append(key).append("\""));
        if (!seen.insert(key).second) refuse("the member \"" + key + "\" stands twice");
    }
}

DialogStep readStep(const Json& given, const ObjectNames& names)
{
    const StepForm& form = findForm(given);
    checkMembers(given, form);
    DialogStep step{.kind = form.kind, .text = {}, .numbers = {}, .value = {}, .written = toLine(given)};
    for (const std::string_view member : form.members)
        if (!member.empty()) readMember(step, *findMember(given, member), member, names);
    return step;
}

} // namespace

dialogs::DialogScript readScript(const Json& given, const ObjectNames& names)
{
    if (!given.is_array()) refuse("\"dialog\" is an array of steps, not " + std::string{kindOf(given)});
    dialogs::DialogScript script;
    for (const Json& step : given) {
        try {
            script.push_back(readStep(step, names));
        } catch (Error& error) {
            throw error.addContext("step " + std::to_string(script.size() + 1) + " " + toLine(step));
        }
    }
    return script;
}

MapEndpoints readMapEndpoints(MapEndpoints present, const Json& given)
{
    struct Endpoint {
        std::string_view name;
        std::string MapEndpoints::*field;
    };
    static constexpr std::array endpoints{Endpoint{"home", &MapEndpoints::home},
                                          Endpoint{"service", &MapEndpoints::service}};
    requireObject(given, "map");
    for (const auto& [name, value] : given.items()) {
        const auto endpoint = std::ranges::find(endpoints, name, &Endpoint::name);
        if (endpoint == endpoints.end())
            refuse("the map has no endpoint '" + name + "'" + spelling::suggestionByName(name, endpoints));
        present.*(endpoint->field) = requireText(value, name);
    }
    return present;
}

void describeDialogs(Json& answer, const dialogs::DialogScripts::Report& report, const std::vector<std::int16_t>& keys,
                     ObjectNames& names)
{
    if (report.shown) {
        Json read = Json::array();
        for (const Variant& value : report.read)
            read.push_back(fromVariant(value, names));
        answer["dialog"] = std::move(read);
    }
    if (!keys.empty()) answer["keys"] = keys;
    if (report.left > 0) answer["dialogLeft"] = report.left;
}

} // namespace tamarok::cli
