#include "call/request.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "call/request_actions.h"
#include "call/request_fields.h"
#include "call/request_settings.h"

#include "tamarok/spelling.h"

namespace tamarok::cli {

namespace {

/// The one action of a request, or nullptr where it has none.
const Action* findAction(const Json& request)
{
    const Action* chosen = nullptr;
    for (const Action& action : actions()) {
        if (findMember(request, action.key) == nullptr) continue;
        if (chosen != nullptr) {
            refuse("a request has one action, not both \"" + std::string{chosen->key} + "\" and \"" +
                   std::string{action.key} + "\"");
        }
        chosen = &action;
    }
    return chosen;
}

/// The members that a request may have: of its action, or any action where none was recognised.
std::vector<std::string_view> knownMembers(const Action* action)
{
    std::vector<std::string_view> known{"id"};
    for (const std::string_view setting : settingKeys())
        known.push_back(setting);
    if (action != nullptr) {
        known.push_back(action->key);
        known.insert(known.end(), action->companions.begin(), action->companions.end()); // unused places are empty
        return known;
    }
    for (const Action& each : actions())
        known.push_back(each.key);
    return known;
}

bool belongsTo(const Action& action, const std::string& key)
{
    // An unused place among the companions is an empty text, which is no member's name.
    return key == action.key || (!key.empty() && std::ranges::find(action.companions, key) != action.companions.end());
}

/// Every member must be known, belong to the action, and stand once.
void checkMembers(const Json& request, const Action* action)
{
    std::set<std::string_view> seen;
    for (const auto& item : request.items()) {
        const std::string& key = item.key();
        if (!seen.insert(key).second) refuse("the member \"" + key + "\" stands twice");
        if (key == "id" || isSetting(key)) continue;
        if (action != nullptr && belongsTo(*action, key)) continue;
        refuse("unknown member \"" + key + "\"" +
               (action == nullptr ? "" : " of a request \"" + std::string{action->key} + "\"") +
               spelling::suggestion(key, knownMembers(action)));
    }
}

} // namespace

Json carryOut(HostState& state, const Json& request, Json& args)
{
    const Action* action = findAction(request);
    checkMembers(request, action);
    if (action == nullptr && !hasSetting(request)) {
        refuse("the request asks for nothing; known are class, session, regional, now, answers, dialog, map, new, get, "
               "put, "
               "invoke, connect, exec, query, drop, describe");
    }
    applySettings(state, request);
    return action == nullptr ? Json{} : action->run(state, request, args);
}

} // namespace tamarok::cli
