#include "command_object.h"

#include "tamarok/convert.h"

namespace tamarok::data {

namespace {

using ReadArguments = std::span<const Variant>;
using CallArguments = std::span<Variant>;

constexpr std::string_view source = "Tamarok.Command";

Variant readConnection(const CommandObject& self, ReadArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "ActiveConnection", source);
    return self.connection() ? Variant{self.connection()} : Variant{ObjectRef{}};
}

void putConnection(CommandObject& self, const Variant& value)
{
    const bool isNothing = value.isEmpty() || (value.isObject() && !value.asObject());
    self.connect(isNothing ? nullptr : connectionOf(value));
}

/// Execute([rows changed by reference], [values of the parameters], [options]).
Variant callExecute(CommandObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 3, "Execute", source);
    if (const Variant* values = optionalArgument(arguments, 1)) {
        const std::vector<Variant>& given = values->asArray().elements();
        std::vector<ado::Parameter>& parameters = self.command().Parameters();
        if (given.size() != parameters.size())
            throw Error{errors::invalidArgument,
                        std::to_string(given.size()) + " values are given for " + std::to_string(parameters.size()) +
                            " parameters.",
                        std::string{source}};
        for (std::size_t index = 0; index < given.size(); ++index)
            parameters[index].value = given[index];
    }
    const auto errors = self.connection() ? self.connection()->errors() : nullptr;
    const std::int64_t touched = noting(errors, [&] { return self.command().Execute(); });
    if (!arguments.empty()) arguments[0] = touched;
    return {};
}

} // namespace

std::span<const Member<CommandObject>> CommandObject::members() noexcept
{
    static constexpr Member<CommandObject> rows[]{
        {.name = "ActiveConnection", .get = readConnection, .put = putConnection},
        {.name = "Execute", .call = callExecute},
    };
    return rows;
}

void CommandObject::connect(std::shared_ptr<ConnectionObject> connection)
{
    command_->ActiveConnection = connection ? connection->connection() : nullptr;
    connection_ = std::move(connection);
}

} // namespace tamarok::data
