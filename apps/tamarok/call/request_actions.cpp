#include "call/request_actions.h"

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "call/describe.h"
#include "call/host_state.h"
#include "call/json_value.h"
#include "call/object_makers.h"
#include "call/request_fields.h"
#include "connections.h"

#include "tamarok/component.h"
#include "tamarok/controls.h"
#include "tamarok/error.h"
#include "tamarok/object_path.h"

namespace tamarok::cli {

namespace {

/// Error 5 for a name that always stands for the same object. @param connectionToo  whether "db" counts
void refuseFixedName(const std::string& name, bool connectionToo)
{
    if (name == "TmkVar" || (connectionToo && name == "db")) refuse("the name '" + name + "' is taken");
}

// ---- operations --------------------------------------------------------------------------------

Json describeArguments(HostState& state, const std::vector<Variant>& args)
{
    Json described = Json::array();
    for (const Variant& value : args)
        described.push_back(fromVariant(value, state.names));
    return described;
}

/// Runs an operation, describes its arguments as they stand then, and returns its result.
template <class Operation>
Json runAndDescribe(HostState& state, std::vector<Variant>& args, Json& report, const Operation& operation)
{
    // Described before the call too: where a changed argument has no form in JSON, the answer still has the
    // arguments as they were given.
    report = describeArguments(state, args);
    Variant result;
    try {
        result = operation();
    } catch (...) {
        report = describeArguments(state, args);
        throw;
    }
    report = describeArguments(state, args);
    return fromVariant(result, state.names);
}

Json callOperation(HostState& state, const Json& request, Json& report)
{
    const component::ClassInfo& classInfo = component::requireClass(textMember(request, "class"));
    std::vector<Variant> args = readArguments(request, state.names);
    const component::OperationInfo& operation =
        component::requireOperation(classInfo, textMember(request, "op"), args.size());
    const Json result = runAndDescribe(state, args, report, [&] {
        return component::invoke(classInfo, operation, *component::makeInstance(classInfo), args);
    });
    return operation.result == component::ValueType::None ? Json{} : result;
}

Json describe(HostState&, const Json& request, Json&)
{
    const Json& wanted = requireMember(request, "describe");
    if (!wanted.is_boolean() || !wanted.get<bool>()) refuse("\"describe\" is true");
    return describeClasses();
}

// ---- objects -----------------------------------------------------------------------------------

/// Writes the properties of a new object. Where one is refused, the object does not stay on a form that it was put on.
void setProperties(const HostState& state, const ObjectRef& object, const Json& properties)
{
    requireObject(properties, "set");
    try {
        for (const auto& [property, value] : properties.items())
            putPath(object, property, toVariant(value, state.names));
    } catch (...) {
        if (const auto control = std::dynamic_pointer_cast<controls::Control>(object)) control->Parent({});
        throw;
    }
}

Json makeNamed(HostState& state, const Json& request, Json&)
{
    const Json* name = findMember(request, "as");
    if (name != nullptr) refuseFixedName(requireText(*name, "as"), true);
    const ObjectRef object = makeObject(textMember(request, "new"));
    if (const Json* properties = findMember(request, "set")) setProperties(state, object, *properties);
    if (name != nullptr) state.names.keep(name->get_ref<const std::string&>(), object);
    return {{"$ref", state.names.nameOf(object)}};
}

/// The object whose name is the member `verb` of the request. Error 91 for the name of a connection that is not open.
ObjectRef namedObject(const HostState& state, const Json& request, std::string_view verb)
{
    const std::string& name = textMember(request, verb);
    ObjectRef object = state.names.find(name);
    require(object, "'" + name + "'");
    return object;
}

Json getNamed(HostState& state, const Json& request, Json&)
{
    const ObjectRef object = namedObject(state, request, "get");
    return fromVariant(getPath(object, textMember(request, "name")), state.names);
}

Json putNamed(HostState& state, const Json& request, Json&)
{
    const ObjectRef object = namedObject(state, request, "put");
    putPath(object, textMember(request, "name"), toVariant(requireMember(request, "value"), state.names));
    return nullptr;
}

/// Whether an Empty that a method returned is its result, rather than the lack of one.
bool hasResult(const Object& object, std::string_view method, std::size_t arguments)
{
    const component::ClassInfo* classInfo = component::findClass(object.typeName());
    if (classInfo == nullptr) return false;
    const component::OperationInfo* operation = component::findOperation(*classInfo, method, arguments);
    return operation != nullptr && operation->result != component::ValueType::None;
}

/// The arguments of a request as a method takes them: none at the end that is left out, and for a method of an object
/// Empty for one that is left out before others, since only the classes of the library know the mark of it. What the
/// method changed is handed back at the end, whether it succeeds or fails.
class PassedArguments {
public:
    PassedArguments(std::vector<Variant>& given, bool knowsTheMark) : given_{given}, passed_{given}
    {
        while (!passed_.empty() && component::isMissing(passed_.back()))
            passed_.pop_back();
        if (knowsTheMark) return;
        std::ranges::replace_if(passed_, component::isMissing, Variant{});
    }
    ~PassedArguments()
    {
        for (std::size_t index = 0; index < passed_.size(); ++index)
            if (!passed_[index].isEmpty() || !component::isMissing(given_[index]))
                given_[index] = std::move(passed_[index]);
    }
    PassedArguments(const PassedArguments&) = delete;
    PassedArguments& operator=(const PassedArguments&) = delete;

    std::span<Variant> all() noexcept { return passed_; }

private:
    std::vector<Variant>& given_;
    std::vector<Variant> passed_;
};

Json invokeNamed(HostState& state, const Json& request, Json& report)
{
    const ObjectRef object = namedObject(state, request, "invoke");
    const std::string& path = textMember(request, "name");
    std::vector<Variant> args = readArguments(request, state.names);
    bool empty = false;
    std::size_t count = 0;
    Json result = runAndDescribe(state, args, report, [&] {
        PassedArguments passed{args, component::findClass(object->typeName()) != nullptr};
        count = passed.all().size();
        Variant value = callPath(object, path, passed.all());
        empty = value.isEmpty();
        return value;
    });
    return empty && !hasResult(*object, path, count) ? Json{} : result;
}

Json drop(HostState& state, const Json& request, Json&)
{
    const std::string& name = textMember(request, "drop");
    if (name == "TmkVar" || name == "db") refuse("'" + name + "' always exists and cannot be dropped");
    state.names.drop(name);
    return nullptr;
}

// ---- connections -------------------------------------------------------------------------------

ado::ConnectionRef openWanted(HostState& state, const Json& request)
{
    const Json* odbc = findMember(request, "odbc");
    const Json* file = findMember(request, "db");
    if ((odbc == nullptr) == (file == nullptr)) refuse("a request \"connect\" needs either \"db\" or \"odbc\"");
    if (odbc == nullptr) return openDatabase(requireText(*file, "db"));
    const std::string& text = requireText(*odbc, "odbc");
    ado::ConnectionRef connection = openOdbc(text);
    state.servers.remember(*connection, text);
    return connection;
}

Json connect(HostState& state, const Json& request, Json&)
{
    const std::string& name = textMember(request, "connect");
    refuseFixedName(name, false);
    const ado::ConnectionRef connection = openWanted(state, request);
    state.addConnection(name, connection);
    if (name == "db") {
        state.session.db_ADO = connection;
        state.session.strConnection = connection->ConnectionString();
    }
    return {{"$ref", name}};
}

ado::ConnectionRef connectionFor(const HostState& state, const Json& request)
{
    const Json* on = findMember(request, "on");
    const std::string name = on == nullptr ? "db" : requireText(*on, "on");
    const ObjectRef object = state.names.find(name);
    auto connection = std::dynamic_pointer_cast<ado::Connection>(object);
    if (object && !connection) throw Error{errors::typeMismatch, "'" + name + "' is no connection"};
    if (!connection) throw Error{errors::objectNotSet, "there is no open connection '" + name + "'"};
    return connection;
}

Json execute(HostState& state, const Json& request, Json&)
{
    return connectionFor(state, request)->Execute(textMember(request, "exec"));
}

/// Greatest number of rows that an answer holds unless the request says otherwise.
constexpr std::int64_t defaultRowLimit = 100'000;
constexpr std::int64_t greatestRowLimit = 2'147'483'647;

Json readRow(const ado::FieldCollection& fields, ObjectNames& names)
{
    Json row = Json::array();
    for (std::int32_t index = 0; index < fields.Count(); ++index)
        row.push_back(fromVariant(fields.Item(index).Value(), names));
    return row;
}

Json query(HostState& state, const Json& request, Json&)
{
    const Json* wanted = findMember(request, "limit");
    const std::int64_t limit =
        wanted == nullptr ? defaultRowLimit : requireCount(*wanted, greatestRowLimit, "\"limit\"");
    ado::Recordset records;
    records.Open(textMember(request, "query"), connectionFor(state, request));
    Json columns = Json::array();
    Json rows = Json::array();
    if (records.State() == ado::ObjectState::Closed) return {{"columns", columns}, {"rows", rows}};
    const ado::FieldCollection& fields = records.Fields();
    for (std::int32_t index = 0; index < fields.Count(); ++index)
        columns.push_back(fields.Item(index).Name());
    std::int64_t count = 0;
    for (; !records.AtEOF() && count < limit; records.MoveNext(), ++count)
        rows.push_back(readRow(fields, state.names));
    Json result{{"columns", std::move(columns)}, {"rows", std::move(rows)}};
    if (!records.AtEOF()) result["truncated"] = true;
    return result;
}

constexpr std::array actionTable{
    Action{"class", {"op", "args"}, callOperation},
    Action{"new", {"as", "set"}, makeNamed},
    Action{"get", {"name"}, getNamed},
    Action{"put", {"name", "value"}, putNamed},
    Action{"invoke", {"name", "args"}, invokeNamed},
    Action{"drop", {}, drop},
    Action{"connect", {"db", "odbc"}, connect},
    Action{"exec", {"on"}, execute},
    Action{"query", {"on", "limit"}, query},
    Action{"describe", {}, describe},
};

} // namespace

std::span<const Action> actions() noexcept
{
    return actionTable;
}

} // namespace tamarok::cli
