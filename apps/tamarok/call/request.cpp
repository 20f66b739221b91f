#include "call/call_requests.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <utility>

#include "call/call_host.h"
#include "call/describe.h"
#include "call/json_value.h"
#include "call/object_makers.h"
#include "call/object_path.h"
#include "session.h"

#include "tamarok/component.h"
#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

[[noreturn]] void refuse(const std::string& reason)
{
    throw Error{errors::invalidArgument, reason};
}

const Json* find(const Json& object, std::string_view name)
{
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

const Json& member(const Json& request, std::string_view name)
{
    const Json* found = find(request, name);
    if (found == nullptr) refuse("the request needs \"" + std::string{name} + "\"");
    return *found;
}

const std::string& text(const Json& value, std::string_view what)
{
    if (!value.is_string()) refuse("\"" + std::string{what} + "\" is a text, not " + std::string{kindOf(value)});
    return value.get_ref<const std::string&>();
}

const std::string& textMember(const Json& request, std::string_view name)
{
    return text(member(request, name), name);
}

void needObject(const Json& value, std::string_view what)
{
    if (!value.is_object()) refuse("\"" + std::string{what} + "\" is an object, not " + std::string{kindOf(value)});
}

std::vector<Variant> arguments(const HostState& state, const Json& request)
{
    const Json* given = find(request, "args");
    if (given == nullptr) return {};
    if (!given->is_array()) refuse("\"args\" is an array, not " + std::string{kindOf(*given)});
    std::vector<Variant> args;
    for (const Json& value : *given)
        args.push_back(toVariant(value, state.names));
    return args;
}

/// Tells the arguments as they stand when the operation has ended, well or not.
class ArgumentReport {
public:
    ArgumentReport(HostState& state, const std::vector<Variant>& args, Json& report) :
        state_{state}, args_{args}, report_{report}
    {}
    void tell()
    {
        Json told = Json::array();
        for (const Variant& value : args_)
            told.push_back(fromVariant(value, state_.names));
        report_ = std::move(told);
    }

private:
    HostState& state_;
    const std::vector<Variant>& args_;
    Json& report_;
};

template <class Operation>
Json reported(HostState& state, std::vector<Variant>& args, Json& report, const Operation& operation)
{
    ArgumentReport arguments{state, args, report};
    arguments.tell(); // a result that cannot be told must not take the arguments with it
    Variant result;
    try {
        result = operation();
    } catch (...) {
        arguments.tell();
        throw;
    }
    arguments.tell();
    return fromVariant(result, state.names);
}

// ---- settings ----------------------------------------------------------------------------------

/// What the settings of a request change, worked out before anything is changed.
struct Settings {
    std::optional<TmkVar> session;
    std::optional<Regional> regional;
    std::shared_ptr<Clock> clock;
    std::optional<std::deque<std::int16_t>> answers;
    std::optional<std::vector<std::string>> dialog;
};

TmkVar readSession(const HostState& state, const Json& fields)
{
    needObject(fields, "session");
    TmkVar session = state.session;
    for (const auto& [name, value] : fields.items()) {
        const TmkVarField* field = findTmkVarField(name);
        if (field == nullptr) refuse("the session record has no field '" + name + "'");
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

Regional readRegional(const Json& given)
{
    if (given.is_string()) return Regional::named(given.get_ref<const std::string&>());
    if (!given.is_object()) refuse("\"regional\" is a text or an object, not " + std::string{kindOf(given)});
    Regional regional = Platform::current().regional;
    if (const Json* name = find(given, "name")) regional = Regional::named(text(*name, "name"));
    for (const auto& [name, value] : given.items()) {
        if (name == "name") continue;
        const auto field = std::ranges::find(regionalFields, name, &RegionalField::name);
        if (field == regionalFields.end()) refuse("there is no regional field '" + name + "'");
        regional.*(field->field) = text(value, name);
    }
    return regional;
}

std::shared_ptr<Clock> readClock(const HostState& state, const Json& given)
{
    if (given.is_null()) return state.systemClock;
    const Date now = parseIsoDate(text(given, "now"));
    if (!isInRange(now)) refuse("a clock shows the years 100 to 9999, not " + given.dump());
    return std::make_shared<FixedClock>(now);
}

std::deque<std::int16_t> readAnswers(const Json& given)
{
    if (!given.is_array()) refuse("\"answers\" is an array, not " + std::string{kindOf(given)});
    std::deque<std::int16_t> answers;
    for (const Json& button : given) {
        if (!button.is_number_integer()) refuse("an answer is the whole number of a button, not " + button.dump());
        const auto number = button.get<std::int64_t>();
        if (number < 0 || number > 32767) refuse("an answer is a button number, not " + button.dump());
        answers.push_back(static_cast<std::int16_t>(number));
    }
    return answers;
}

constexpr std::array<std::string_view, 10> dialogSteps{"type", "key", "click",  "head",  "select",
                                                       "set",  "ok",  "cancel", "close", "navigate"};

std::vector<std::string> readDialog(const Json& given)
{
    if (!given.is_array()) refuse("\"dialog\" is an array, not " + std::string{kindOf(given)});
    std::vector<std::string> steps;
    for (const Json& step : given) {
        needObject(step, "dialog step");
        const std::string& name = textMember(step, "do");
        if (std::ranges::find(dialogSteps, name) == dialogSteps.end()) refuse("unknown dialog step '" + name + "'");
        steps.push_back(step.dump());
    }
    return steps;
}

void apply(HostState& state, Settings settings)
{
    Platform& platform = state.scope.platform();
    if (settings.session) state.session = std::move(*settings.session);
    if (settings.regional) platform.regional = std::move(*settings.regional);
    if (settings.clock) platform.clock = std::move(settings.clock);
    if (settings.answers) state.messages->prepare(std::move(*settings.answers));
    if (settings.dialog) state.dialogScript = std::move(*settings.dialog);
}

void applySettings(HostState& state, const Json& request)
{
    Settings settings;
    if (const Json* given = find(request, "session")) settings.session = readSession(state, *given);
    if (const Json* given = find(request, "regional")) settings.regional = readRegional(*given);
    if (const Json* given = find(request, "now")) settings.clock = readClock(state, *given);
    if (const Json* given = find(request, "answers")) settings.answers = readAnswers(*given);
    if (const Json* given = find(request, "dialog")) settings.dialog = readDialog(*given);
    apply(state, std::move(settings));
}

// ---- actions -----------------------------------------------------------------------------------

Json callOperation(HostState& state, const Json& request, Json& report)
{
    const component::ClassInfo& classInfo = component::requireClass(textMember(request, "class"));
    std::vector<Variant> args = arguments(state, request);
    const component::OperationInfo& operation =
        component::requireOperation(classInfo, textMember(request, "op"), args.size());
    const Json result = reported(state, args, report, [&] {
        return component::invoke(classInfo, operation, *component::makeInstance(classInfo), args);
    });
    return operation.result == component::ValueType::None ? Json{} : result;
}

Json makeNamed(HostState& state, const Json& request, Json&)
{
    ObjectRef object = makeObject(textMember(request, "new"));
    if (const Json* properties = find(request, "set")) {
        needObject(*properties, "set");
        for (const auto& [name, value] : properties->items())
            putPath(object, name, toVariant(value, state.names));
    }
    if (const Json* name = find(request, "as")) {
        const std::string& wanted = text(*name, "as");
        if (wanted == "TmkVar" || wanted == "db") refuse("the name '" + wanted + "' is taken");
        state.names.keep(wanted, object);
    }
    return {{"$ref", state.names.nameOf(object)}};
}

Json getNamed(HostState& state, const Json& request, Json&)
{
    const ObjectRef object = state.names.find(textMember(request, "get"));
    return fromVariant(getPath(object, textMember(request, "name")), state.names);
}

Json putNamed(HostState& state, const Json& request, Json&)
{
    const ObjectRef object = state.names.find(textMember(request, "put"));
    putPath(object, textMember(request, "name"), toVariant(member(request, "value"), state.names));
    return nullptr;
}

/// Whether an Empty that a method gave is a value of its own and not the lack of a result.
bool hasResult(const Object& object, std::string_view method, std::size_t arguments)
{
    const component::ClassInfo* classInfo = component::findClass(object.typeName());
    if (classInfo == nullptr) return false;
    const component::OperationInfo* operation = component::findOperation(*classInfo, method, arguments);
    return operation != nullptr && operation->result != component::ValueType::None;
}

Json invokeNamed(HostState& state, const Json& request, Json& report)
{
    const ObjectRef object = state.names.find(textMember(request, "invoke"));
    const std::string& path = textMember(request, "name");
    std::vector<Variant> args = arguments(state, request);
    while (!args.empty() && component::isMissing(args.back()))
        args.pop_back();
    bool empty = false;
    Json result = reported(state, args, report, [&] {
        Variant value = callPath(object, path, args);
        empty = value.isEmpty();
        return value;
    });
    return empty && !hasResult(*object, path, args.size()) ? Json{} : result;
}

Json connect(HostState& state, const Json& request, Json&)
{
    const std::string& name = textMember(request, "connect");
    if (name == "TmkVar") refuse("the name 'TmkVar' is taken");
    const ado::ConnectionRef connection = openDatabase(textMember(request, "db"));
    state.addConnection(name, connection);
    if (name == "db") {
        state.session.db_ADO = connection;
        state.session.strConnection = connection->ConnectionString();
    }
    return {{"$ref", name}};
}

ado::ConnectionRef connectionFor(const HostState& state, const Json& request)
{
    const Json* on = find(request, "on");
    const std::string name = on == nullptr ? "db" : text(*on, "on");
    const ObjectRef object = state.names.find(name);
    const auto connection = std::dynamic_pointer_cast<ado::Connection>(object);
    if (object && !connection) throw Error{errors::typeMismatch, "'" + name + "' is no connection"};
    if (!connection) throw Error{errors::objectNotSet, "there is no open connection '" + name + "'"};
    return connection;
}

Json execute(HostState& state, const Json& request, Json&)
{
    return connectionFor(state, request)->Execute(textMember(request, "exec"));
}

Json query(HostState& state, const Json& request, Json&)
{
    ado::Recordset records;
    records.Open(textMember(request, "query"), connectionFor(state, request));
    Json columns = Json::array();
    Json rows = Json::array();
    if (records.State() == ado::ObjectState::Closed) return {{"columns", columns}, {"rows", rows}};
    const std::int32_t count = records.Fields().Count();
    for (std::int32_t index = 0; index < count; ++index)
        columns.push_back(records.Fields().Item(index).Name());
    for (; !records.AtEOF(); records.MoveNext()) {
        Json row = Json::array();
        for (std::int32_t index = 0; index < count; ++index) {
            row.push_back(fromVariant(records.Fields().Item(index).Value(), state.names));
        }
        rows.push_back(std::move(row));
    }
    return {{"columns", std::move(columns)}, {"rows", std::move(rows)}};
}

Json describe(HostState&, const Json& request, Json&)
{
    const Json& wanted = member(request, "describe");
    if (!wanted.is_boolean() || !wanted.get<bool>()) refuse("\"describe\" is true");
    return describeClasses();
}

// ---- the request as a whole --------------------------------------------------------------------

struct Action {
    std::string_view key;
    std::array<std::string_view, 3> companions; ///< further members that belong to it
    Json (*run)(HostState&, const Json&, Json&);
};

constexpr std::array actions{
    Action{"class", {"op", "args"}, callOperation},
    Action{"new", {"as", "set"}, makeNamed},
    Action{"get", {"name"}, getNamed},
    Action{"put", {"name", "value"}, putNamed},
    Action{"invoke", {"name", "args"}, invokeNamed},
    Action{"connect", {"db"}, connect},
    Action{"exec", {"on"}, execute},
    Action{"query", {"on"}, query},
    Action{"describe", {}, describe},
};

constexpr std::array<std::string_view, 5> settingKeys{"session", "regional", "now", "answers", "dialog"};

const Action* findAction(const Json& request)
{
    const Action* chosen = nullptr;
    for (const Action& action : actions) {
        if (find(request, action.key) == nullptr) continue;
        if (chosen != nullptr) {
            refuse("a request has one action, not both \"" + std::string{chosen->key} + "\" and \"" +
                   std::string{action.key} + "\"");
        }
        chosen = &action;
    }
    return chosen;
}

/// Every member must be known, belong to the action, and stand once.
void checkMembers(const Json& request, const Action* action)
{
    std::set<std::string_view> seen;
    for (const auto& item : request.items()) {
        const std::string& key = item.key();
        if (!seen.insert(key).second) refuse("the member \"" + key + "\" stands twice");
        if (key == "id" || std::ranges::find(settingKeys, key) != settingKeys.end()) continue;
        if (action != nullptr && (key == action->key || (!key.empty() && std::ranges::find(action->companions, key) !=
                                                                             action->companions.end()))) {
            continue;
        }
        refuse("unknown member \"" + key + "\"" +
               (action == nullptr ? "" : " of a request \"" + std::string{action->key} + "\""));
    }
}

bool hasSetting(const Json& request)
{
    return std::ranges::any_of(settingKeys, [&](std::string_view key) { return find(request, key) != nullptr; });
}

} // namespace

Json carryOut(HostState& state, const Json& request, Json& args)
{
    const Action* action = findAction(request);
    checkMembers(request, action);
    if (action == nullptr && !hasSetting(request)) {
        refuse("the request asks for nothing; known are class, session, regional, now, answers, new, get, put, "
               "invoke, connect, exec, query, dialog, describe");
    }
    applySettings(state, request);
    return action == nullptr ? Json{} : action->run(state, request, args);
}

} // namespace tamarok::cli
