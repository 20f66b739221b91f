#include "call/request_settings.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>

#include "call/dialog_script.h"
#include "call/host_state.h"
#include "call/json_value.h"
#include "call/request_fields.h"

#include "tamarok/error.h"
#include "tamarok/spelling.h"

namespace tamarok::cli {

namespace {

constexpr std::array<std::string_view, 6> keys{"session", "regional", "now", "answers", "dialog", "map"};

/// What the settings of a request change. It is read as a whole before anything is changed.
struct Settings {
    std::optional<TmkVar> session;
    std::optional<Regional> regional;
    std::shared_ptr<Clock> clock;
    std::optional<std::deque<std::int16_t>> answers;
    std::optional<dialogs::DialogScript> script;
    std::optional<MapEndpoints> map;
};

TmkVar readSession(const HostState& state, const Json& fields)
{
    requireObject(fields, "session");
    TmkVar session = state.session;
    for (const auto& [name, value] : fields.items()) {
        const TmkVarField* field = findTmkVarField(name);
        if (field == nullptr) {
            refuse("the session record has no field '" + name + "'" + spelling::suggestionByName(name, tmkVarFields()));
        }
        try {
            field->set(session, toVariant(value, state.names));
        } catch (Error& error) {
            throw error.addContext("session field " + name);
        }
    }
    return session;
}

struct RegionalField {
    std::string_view name;
    std::string Regional::*field;
};

constexpr std::array regionalFields{
    RegionalField{"decimal", &Regional::decimal},      RegionalField{"thousands", &Regional::thousands},
    RegionalField{"short_date", &Regional::shortDate}, RegionalField{"time", &Regional::time},
    RegionalField{"true", &Regional::trueText},        RegionalField{"false", &Regional::falseText},
};

/// A name gives all fields; an object changes single ones of the present settings, or of those that its
/// member "name" names.
Regional readRegional(const Json& given)
{
    if (given.is_string()) return Regional::named(given.get_ref<const std::string&>());
    if (!given.is_object()) refuse("\"regional\" is a text or an object, not " + std::string{kindOf(given)});
    Regional regional = Platform::current().regional;
    if (const Json* name = findMember(given, "name")) regional = Regional::named(requireText(*name, "name"));
    for (const auto& [name, value] : given.items()) {
        if (name == "name") continue;
        const auto field = std::ranges::find(regionalFields, name, &RegionalField::name);
        if (field == regionalFields.end()) {
            refuse("there is no regional field '" + name + "'" + spelling::suggestionByName(name, regionalFields));
        }
        regional.*(field->field) = requireText(value, name);
    }
    return regional;
}

std::shared_ptr<Clock> readClock(const HostState& state, const Json& given)
{
    if (given.is_null()) return state.systemClock;
    const Date now = parseIsoDate(requireText(given, "now"));
    if (!isInRange(now)) refuse("a clock shows the years 100 to 9999, not " + given.dump());
    return std::make_shared<FixedClock>(now);
}

std::deque<std::int16_t> readAnswers(const Json& given)
{
    constexpr std::int64_t greatestButton = 32767;
    if (!given.is_array()) refuse("\"answers\" is an array, not " + std::string{kindOf(given)});
    std::deque<std::int16_t> answers;
    for (const Json& button : given)
        answers.push_back(static_cast<std::int16_t>(requireCount(button, greatestButton, "the number of a button")));
    return answers;
}

void apply(HostState& state, Settings settings)
{
    Platform& platform = state.scope.platform();
    if (settings.session) state.session = std::move(*settings.session);
    if (settings.regional) platform.regional = std::move(*settings.regional);
    if (settings.clock) platform.clock = std::move(settings.clock);
    if (settings.answers) state.messages->prepare(std::move(*settings.answers));
    if (settings.script) state.dialogs->add(std::move(*settings.script));
    if (settings.map) platform.mapEndpoints = std::move(*settings.map);
}

} // namespace

std::span<const std::string_view> settingKeys() noexcept
{
    return keys;
}

bool isSetting(std::string_view key) noexcept
{
    return std::ranges::find(keys, key) != keys.end();
}

bool hasSetting(const Json& request)
{
    return std::ranges::any_of(keys, [&](std::string_view key) { return findMember(request, key) != nullptr; });
}

void applySettings(HostState& state, const Json& request)
{
    Settings settings;
    if (const Json* given = findMember(request, "session")) settings.session = readSession(state, *given);
    if (const Json* given = findMember(request, "regional")) settings.regional = readRegional(*given);
    if (const Json* given = findMember(request, "now")) settings.clock = readClock(state, *given);
    if (const Json* given = findMember(request, "answers")) settings.answers = readAnswers(*given);
    if (const Json* given = findMember(request, "dialog")) settings.script = readScript(*given, state.names);
    if (const Json* given = findMember(request, "map"))
        settings.map = readMapEndpoints(Platform::current().mapEndpoints, *given);
    apply(state, std::move(settings));
}

} // namespace tamarok::cli
