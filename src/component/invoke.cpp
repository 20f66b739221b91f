#include <algorithm>
#include <string>

#include "tamarok/component.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::component {

namespace {

// Calls by name: the number of arguments is checked, missing ones are marked, then the wrapper of the operation
// converts each argument and runs it.
constexpr std::int32_t argumentNotOptional = 449;

/// Marks a left-out argument; it has no members.
class Missing final : public Object {
public:
    std::string_view typeName() const override { return "Missing"; }
};

std::string qualified(const ClassInfo& classInfo, const OperationInfo& operation)
{
    return std::string{classInfo.name} + "." + std::string{operation.name};
}

std::size_t requiredCount(const OperationInfo& operation)
{
    const auto parameters = operation.parameters();
    return static_cast<std::size_t>(
        std::ranges::count_if(parameters, [](const ParameterInfo& parameter) { return !parameter.optional; }));
}

void checkArguments(const OperationInfo& operation, std::span<const Variant> args)
{
    const std::size_t required = requiredCount(operation);
    if (args.size() > operation.parameterCount || args.size() < required) {
        const std::string wanted = required == operation.parameterCount
                                       ? std::to_string(required)
                                       : std::to_string(required) + " to " + std::to_string(operation.parameterCount);
        throw Error{errors::wrongArgumentCount,
                    "Wrong number of arguments: " + wanted + " needed, " + std::to_string(args.size()) + " given"};
    }
    for (std::size_t index = 0; index < args.size(); ++index) {
        const ParameterInfo& parameter = operation.parameterList[index];
        if (isMissing(args[index]) && !parameter.optional) {
            throw Error{argumentNotOptional, "Argument not optional: " + std::string{parameter.name}};
        }
    }
}

/// The caller's arguments with a mark for each one that is left out at the end. They are moved here for
/// the call and back into the caller's variables afterwards, whether the operation succeeds or fails.
class FullArguments {
public:
    FullArguments(std::span<Variant> given, std::size_t count) : given_{given}, count_{count}
    {
        std::ranges::move(given, full_.begin());
        std::fill(full_.begin() + static_cast<std::ptrdiff_t>(given.size()),
                  full_.begin() + static_cast<std::ptrdiff_t>(count), missingArgument());
    }
    ~FullArguments()
    {
        std::move(full_.begin(), full_.begin() + static_cast<std::ptrdiff_t>(given_.size()), given_.begin());
    }
    FullArguments(const FullArguments&) = delete;
    FullArguments& operator=(const FullArguments&) = delete;

    std::span<Variant> all() noexcept { return {full_.data(), count_}; }

private:
    std::span<Variant> given_;
    std::size_t count_;
    std::array<Variant, OperationInfo::maxParameters> full_;
};

} // namespace

const Variant& missingArgument()
{
    static const Variant mark{ObjectRef{std::make_shared<Missing>()}};
    return mark;
}

bool isMissing(const Variant& value) noexcept
{
    return value.isObject() && dynamic_cast<const Missing*>(value.asObject().get()) != nullptr;
}

Variant invoke(const ClassInfo& classInfo, const OperationInfo& operation, const Object& instance,
               std::span<Variant> args)
{
    try {
        // The arguments are moved only after the check, so that a refused call leaves them as they are.
        checkArguments(operation, args);
        FullArguments full{args, operation.parameterCount};
        return operation.invoker(operation, instance, full.all());
    } catch (Error& error) {
        // The innermost source is the most exact one and stays.
        if (error.source.empty()) error.source = qualified(classInfo, operation);
        throw;
    }
}

Variant invoke(std::string_view className, std::string_view operation, std::span<Variant> args)
{
    // A fresh instance serves each call by class name.
    const ClassInfo& classInfo = requireClass(className);
    const OperationInfo& info = requireOperation(classInfo, operation, args.size());
    return invoke(classInfo, info, *makeInstance(classInfo), args);
}

} // namespace tamarok::component
