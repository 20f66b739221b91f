#include <utility>

#include "ado_failure.h"
#include "parameter_values.h"

#include "tamarok/ado_backend.h"
#include "tamarok/convert.h"
#include "tamarok/members.h"
#include "tamarok/spelling.h"

// The command, its parameters and their late binding. Late-bound parameters and collections share the list of
// the command, so that they stay valid after the command is gone.

namespace tamarok::ado {

Command::Command() : parameters_{std::make_shared<std::vector<Parameter>>()} {}

Command::~Command() = default;

Parameter Command::CreateParameter(std::string_view name, DataType type, ParameterDirection direction,
                                   std::int32_t size, Variant value) const
{
    return {std::string{name}, type, direction, size, std::move(value)};
}

std::vector<Parameter>& Command::Parameters() noexcept
{
    return *parameters_;
}

const std::vector<Parameter>& Command::Parameters() const noexcept
{
    return *parameters_;
}

std::int64_t Command::Execute()
{
    if (!ActiveConnection) fail(errors::connectionClosed, commandSource, "Execute: the command has no connection.");
    Session& session = ActiveConnection->session();
    const bool procedure = CommandType == tamarok::ado::CommandType::StoredProcedure;
    // Conversion errors come before the announcement: listeners see only what is sent.
    const ParameterValues values{*parameters_};
    const std::string& text = CommandText;
    const Statement statement{.text = text,
                              .parameters = values.get(),
                              .timeoutSeconds = ActiveConnection->CommandTimeout(),
                              .procedure = procedure};
    // A listener sees the call with its values; a plain statement is announced as it is.
    const std::string call = procedure ? describeCall(text, values.get()) : std::string{};
    const std::string& announced = procedure ? call : text;
    ActiveConnection->announce(announced);
    return guarded(announced, session.name(), [&] { return session.execute(statement); });
}

namespace {

using ReadArguments = std::span<const Variant>;
using CallArguments = std::span<Variant>;
using ParameterList = std::shared_ptr<std::vector<Parameter>>;

/// A parameter by late binding. It has a list of its own until it is appended to that of a command.
class ParameterObject final : public Object {
public:
    explicit ParameterObject(const Parameter& parameter) : list_{std::make_shared<std::vector<Parameter>>(1, parameter)}
    {}
    ParameterObject(ParameterList list, std::size_t index) : list_{std::move(list)}, index_{index} {}

    Parameter& parameter() const
    {
        if (index_ >= list_->size())
            fail(errors::itemNotFound, parametersSource, "The parameter has been taken out of its command.");
        return (*list_)[index_];
    }
    /// Appends the parameter to the list of a command; this object then stands for the entry there.
    void moveTo(ParameterList list)
    {
        // A copy, since the list that held the parameter so far is dropped below.
        list->push_back(parameter());
        index_ = list->size() - 1;
        list_ = std::move(list);
    }

    std::string_view typeName() const override { return "Parameter"; }
    Variant get(std::string_view name, ReadArguments arguments) const override;
    void put(std::string_view name, const Variant& value) override;
    std::vector<std::string_view> memberNames() const override;
    Variant defaultValue() const override { return parameter().value; }
    bool hasDefaultValue() const noexcept override { return true; }

private:
    ParameterList list_;
    std::size_t index_ = 0;
};

// The caller gives types and directions as numbers.
constexpr Member<ParameterObject> parameterRows[]{
    {.name = "Value",
     .get = [](const ParameterObject& p, ReadArguments) -> Variant { return p.parameter().value; },
     .put = [](ParameterObject& p, const Variant& value) { p.parameter().value = value; }},
    {.name = "Name",
     .get = [](const ParameterObject& p, ReadArguments) -> Variant { return p.parameter().name; },
     .put = [](ParameterObject& p, const Variant& value) { p.parameter().name = convert::toText(value); }},
    {.name = "Type",
     .get = [](const ParameterObject& p, ReadArguments) -> Variant {
         return static_cast<std::int32_t>(p.parameter().type);
     },
     .put = [](ParameterObject& p,
               const Variant& value) { p.parameter().type = static_cast<DataType>(convert::toLong(value)); }},
    {.name = "Direction",
     .get = [](const ParameterObject& p, ReadArguments) -> Variant {
         return static_cast<std::int32_t>(p.parameter().direction);
     },
     .put =
         [](ParameterObject& p, const Variant& value) {
             p.parameter().direction = static_cast<ParameterDirection>(convert::toLong(value));
         }},
    {.name = "Size",
     .get = [](const ParameterObject& p, ReadArguments) -> Variant { return p.parameter().size; },
     .put = [](ParameterObject& p, const Variant& value) { p.parameter().size = convert::toLong(value); }},
};

constexpr std::span<const Member<ParameterObject>> parameterMembers{parameterRows};

Variant ParameterObject::get(std::string_view name, ReadArguments arguments) const
{
    if (const auto getter = findGetter(parameterMembers, name)) return getter(*this, arguments);
    noSuchMember(name);
}

void ParameterObject::put(std::string_view name, const Variant& value)
{
    if (const auto setter = findSetter(parameterMembers, name)) return setter(*this, value);
    noSuchMember(name);
}

std::vector<std::string_view> ParameterObject::memberNames() const
{
    return spelling::namesOf(parameterMembers);
}

/// Returns a parameter by index, from 0, or by name. Error 3265 for an unknown one.
Variant parameterOf(const ParameterList& list, const Variant& key)
{
    // A number is an index, a text a name without case. A number beyond the list fails like an unknown name.
    if (!key.isString()) {
        const std::int64_t index = convert::toLongLong(key);
        if (index >= 0 && index < static_cast<std::int64_t>(list->size()))
            return std::make_shared<ParameterObject>(list, static_cast<std::size_t>(index));
    }
    for (std::size_t index = 0; key.isString() && index < list->size(); ++index)
        if (text::equalsNoCase((*list)[index].name, key.asString()))
            return std::make_shared<ParameterObject>(list, index);
    const std::string name = convert::toText(key);
    fail(errors::itemNotFound, parametersSource,
         "The command has no parameter \"" + name + '"' +
             (key.isString() ? spelling::suggestionOrPoint(name, spelling::namesOf(*list)) : "."));
}

/// The collection `Parameters`.
class ParametersObject final : public Object {
public:
    explicit ParametersObject(ParameterList list) : list_{std::move(list)} {}

    std::string_view typeName() const override { return "Parameters"; }
    Variant get(std::string_view name, ReadArguments arguments) const override
    {
        if (text::equalsNoCase(name, "Count")) return static_cast<std::int32_t>(list_->size());
        if (!text::equalsNoCase(name, "Item")) noSuchMember(name);
        checkArgumentCount(arguments.size(), 1, 1, "Item", adodb);
        return parameterOf(list_, arguments[0]);
    }
    Variant call(std::string_view name, CallArguments arguments) override
    {
        if (!text::equalsNoCase(name, "Append")) return get(name, arguments);
        checkArgumentCount(arguments.size(), 1, 1, "Append", adodb);
        // Afterwards the caller's object and the entry of the command are the same parameter.
        const auto parameter = std::dynamic_pointer_cast<ParameterObject>(arguments[0].asObject());
        if (!parameter) fail(errors::typeMismatch, parametersSource, "Append: the argument is no parameter.");
        parameter->moveTo(list_);
        return {};
    }
    std::vector<std::string_view> memberNames() const override { return {"Count", "Item", "Append"}; }

private:
    ParameterList list_;
};

/// CreateParameter([name], [type], [direction], [size], [value]); the direction is input if it is left out.
Variant callCreateParameter(Command& command, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 5, "CreateParameter", adodb);
    const auto number = [&](std::size_t index, std::int32_t otherwise) {
        const Variant* value = optionalArgument(arguments, index);
        return value ? convert::toLong(*value) : otherwise;
    };
    const Variant* name = optionalArgument(arguments, 0);
    return std::make_shared<ParameterObject>(command.CreateParameter(
        name ? convert::toText(*name) : std::string{}, static_cast<DataType>(number(1, 0)),
        static_cast<ParameterDirection>(number(2, 1)), number(3, 0), arguments.size() > 4 ? arguments[4] : Variant{}));
}

/// Execute([rows changed by reference]).
Variant callExecute(Command& command, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "Execute", adodb);
    const std::int64_t touched = command.Execute();
    if (!arguments.empty()) arguments[0] = touched;
    return {};
}

/// Sets the connection; Empty and an empty reference remove it.
void putConnection(Command& command, const Variant& value)
{
    if (value.isEmpty()) {
        command.ActiveConnection = nullptr;
        return;
    }
    auto connection = std::dynamic_pointer_cast<Connection>(value.asObject());
    if (!connection && value.asObject())
        fail(errors::typeMismatch, commandSource, "ActiveConnection: the object is no connection.");
    command.ActiveConnection = std::move(connection);
}

constexpr Member<Command> members[]{
    {.name = "ActiveConnection",
     .get = [](const Command& c, ReadArguments) -> Variant { return c.ActiveConnection; },
     .put = putConnection},
    {.name = "CommandText",
     .get = [](const Command& c, ReadArguments) -> Variant { return c.CommandText; },
     .put = [](Command& c, const Variant& value) { c.CommandText = convert::toText(value); }},
    {.name = "CommandType",
     .get = [](const Command& c, ReadArguments) -> Variant { return static_cast<std::int32_t>(c.CommandType); },
     .put = [](Command& c, const Variant& value) { c.CommandType = static_cast<CommandType>(convert::toLong(value)); }},
    {.name = "CreateParameter", .call = callCreateParameter},
    {.name = "Execute", .call = callExecute},
};

constexpr std::span<const Member<Command>> table{members};
constexpr std::string_view parametersName = "Parameters";

} // namespace

std::string_view Command::typeName() const
{
    return "Command";
}

Variant Command::get(std::string_view name, std::span<const Variant> args) const
{
    // Not in the table: the object shares the list of the command, which a table function cannot reach.
    if (text::equalsNoCase(name, parametersName)) {
        checkArgumentCount(args.size(), 0, 1, parametersName, adodb);
        if (!args.empty()) return parameterOf(parameters_, args[0]);
        return std::make_shared<ParametersObject>(parameters_);
    }
    if (const auto getter = findGetter(table, name)) return getter(*this, args);
    noSuchMember(name);
}

void Command::put(std::string_view name, const Variant& value)
{
    if (const auto setter = findSetter(table, name)) return setter(*this, value);
    noSuchMember(name);
}

Variant Command::call(std::string_view name, std::span<Variant> args)
{
    if (const auto found = findMethod(table, name)) return found(*this, args);
    return get(name, args);
}

std::vector<std::string_view> Command::memberNames() const
{
    return spelling::namesOf(table, {parametersName});
}

} // namespace tamarok::ado
