#include "arguments.h"

#include "record_object.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

// The arguments of a call by name, converted to the types that an operation declares. Every error names the
// parameter; the class and the operation are added by invoke.
namespace tamarok::component::argument {

namespace {

std::string label(const ParameterInfo& parameter)
{
    return "argument " + std::string{parameter.name};
}

/// Error 13 that names what was given and what is needed.
[[noreturn]] void mismatch(const Variant& value, const ParameterInfo& parameter)
{
    const std::string_view given =
        value.isObject() && value.asObject() ? value.asObject()->typeName() : name(value.kind());
    throw Error{errors::typeMismatch, "Type mismatch: " + std::string{given} + " given where " +
                                          std::string{name(parameter.type)} + " is needed"}
        .addContext(label(parameter));
}

/// Runs a conversion; an error of it receives the parameter's name.
template <class Convert>
auto named(const Convert& convert, const Variant& value, const ParameterInfo& parameter)
{
    try {
        // An argument that is left out converts like Empty.
        return convert(toVariant(value));
    } catch (Error& error) {
        throw error.addContext(label(parameter));
    }
}

/// The object as a `T`; an empty reference for Nothing and for a left-out argument.
template <class T>
std::shared_ptr<T> as(const Variant& value, const ParameterInfo& parameter)
{
    if (isMissing(value)) return nullptr;
    if (!value.isObject()) mismatch(value, parameter);
    if (!value.asObject()) return nullptr;
    // No default value is tried: a parameter of an object type takes the object itself.
    auto object = std::dynamic_pointer_cast<T>(value.asObject());
    if (!object) mismatch(value, parameter);
    return object;
}

/// Error 91 for a parameter that needs an object.
[[noreturn]] void notSet(const ParameterInfo& parameter)
{
    throw Error{errors::objectNotSet, "Object variable not set"}.addContext(label(parameter));
}

} // namespace

bool toBoolean(const Variant& value, const ParameterInfo& parameter)
{
    return named([](const Variant& given) { return convert::toBoolean(given); }, value, parameter);
}

std::uint8_t toByte(const Variant& value, const ParameterInfo& parameter)
{
    const std::int16_t number = toInteger(value, parameter);
    if (number < 0 || number > 255) {
        throw Error{errors::overflow, "Overflow: " + std::to_string(number) + " is no Byte"}.addContext(
            label(parameter));
    }
    return static_cast<std::uint8_t>(number);
}

std::int16_t toInteger(const Variant& value, const ParameterInfo& parameter)
{
    return named([](const Variant& given) { return convert::toInteger(given); }, value, parameter);
}

std::int32_t toLong(const Variant& value, const ParameterInfo& parameter)
{
    return named([](const Variant& given) { return convert::toLong(given); }, value, parameter);
}

double toDouble(const Variant& value, const ParameterInfo& parameter)
{
    return named([](const Variant& given) { return convert::toDouble(given); }, value, parameter);
}

Date toDate(const Variant& value, const ParameterInfo& parameter)
{
    return named([](const Variant& given) { return convert::toDate(given); }, value, parameter);
}

std::string toString(const Variant& value, const ParameterInfo& parameter)
{
    return named([](const Variant& given) { return convert::toText(given); }, value, parameter);
}

const Variant& toVariant(const Variant& value)
{
    static const Variant empty;
    return isMissing(value) ? empty : value;
}

std::vector<std::int16_t> toIntegers(const Variant& value, const ParameterInfo& parameter)
{
    // The lower bound does not count: the operation sees the elements in their order.
    if (!value.isArray() || value.asArray().dimensions() != 1) mismatch(value, parameter);
    std::vector<std::int16_t> values;
    values.reserve(value.asArray().elements().size());
    for (const Variant& element : value.asArray().elements())
        values.push_back(toInteger(element, parameter));
    return values;
}

std::vector<std::string> toStrings(const Variant& value, const ParameterInfo& parameter)
{
    if (!value.isArray() || value.asArray().dimensions() != 1) mismatch(value, parameter);
    std::vector<std::string> values;
    values.reserve(value.asArray().elements().size());
    for (const Variant& element : value.asArray().elements())
        values.push_back(toString(element, parameter));
    return values;
}

Variant fromStrings(const std::vector<std::string>& values, std::int32_t lower)
{
    return VariantArray{std::vector<Variant>(values.begin(), values.end()), lower};
}

ObjectRef toObject(const Variant& value, const ParameterInfo& parameter)
{
    return as<Object>(value, parameter);
}

ado::ConnectionRef toConnection(const Variant& value, const ParameterInfo& parameter)
{
    return as<ado::Connection>(value, parameter);
}

std::shared_ptr<ado::Recordset> toRecordset(const Variant& value, const ParameterInfo& parameter)
{
    return as<ado::Recordset>(value, parameter);
}

ado::Recordset& requireRecordset(const Variant& value, const ParameterInfo& parameter)
{
    const auto recordset = toRecordset(value, parameter);
    if (!recordset) notSet(parameter);
    return *recordset; // the argument keeps it alive
}

ado::Command& toCommand(const Variant& value, const ParameterInfo& parameter)
{
    const auto command = as<ado::Command>(value, parameter);
    if (!command) notSet(parameter);
    return *command; // the argument keeps it alive
}

// A reference into the object, so that the caller sees what the operation changes in the record.
TmkVar& toRecord(const Variant& value, const ParameterInfo& parameter)
{
    const auto record = as<RecordObject>(value, parameter);
    if (!record) notSet(parameter);
    return record->record();
}

} // namespace tamarok::component::argument
