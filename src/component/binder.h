#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "arguments.h"
#include "instance.h"
#include "member_name.h"

#include "tamarok/collection.h"
#include "tamarok/string_array.h"

/// Makes the description of an operation, and the function that calls it, from a member-function
/// pointer and the parameters' names. Private to the class map.
namespace tamarok::component {

/// How one C++ parameter type is declared at the interface, and how an argument reaches it. A
/// specialisation converts the argument in its constructor and holds the result for the length of the
/// call; `pass` hands it to the operation; `store` writes it back to the caller's variable.
/// `changes` says that the operation can write the argument, so that the table must declare it by
/// reference. Whether any other parameter is by reference is stated in the table alone.
template <class T>
struct Argument;

/// A plain value with a conversion of its own, passed by value.
template <class T, ValueType declared, T (*convert)(const Variant&, const ParameterInfo&)>
struct ValueArgument {
    static constexpr ValueType type = declared;
    static constexpr bool changes = false;
    ValueArgument(Variant& value, const ParameterInfo& parameter) :
        held{isMissing(value) ? T{} : convert(value, parameter)}
    {}
    const T& pass() noexcept { return held; }
    void store(Variant&) {}
    T held;
};

/// A value that the operation can change: the caller's variable receives it in the declared type.
template <class Value, class T>
struct ReferenceArgument : Value {
    static constexpr bool changes = true;
    using Value::Value;
    T& pass() noexcept { return this->held; }
    void store(Variant& target) { target = Variant{this->held}; }
};

inline Boolean toBooleanValue(const Variant& value, const ParameterInfo& parameter)
{
    return argument::toBoolean(value, parameter);
}

// clang-format off
template <> struct Argument<bool> : ValueArgument<bool, ValueType::Boolean, argument::toBoolean> { using ValueArgument::ValueArgument; };
template <> struct Argument<Boolean> : ValueArgument<Boolean, ValueType::Boolean, toBooleanValue> { using ValueArgument::ValueArgument; };
template <> struct Argument<std::uint8_t> : ValueArgument<std::uint8_t, ValueType::Byte, argument::toByte> { using ValueArgument::ValueArgument; };
template <> struct Argument<std::int16_t> : ValueArgument<std::int16_t, ValueType::Integer, argument::toInteger> { using ValueArgument::ValueArgument; };
template <> struct Argument<std::int32_t> : ValueArgument<std::int32_t, ValueType::Long, argument::toLong> { using ValueArgument::ValueArgument; };
template <> struct Argument<double> : ValueArgument<double, ValueType::Double, argument::toDouble> { using ValueArgument::ValueArgument; };
template <> struct Argument<Date> : ValueArgument<Date, ValueType::Date, argument::toDate> { using ValueArgument::ValueArgument; };
template <> struct Argument<std::string> : ValueArgument<std::string, ValueType::String, argument::toString> { using ValueArgument::ValueArgument; };
template <> struct Argument<std::string_view> : Argument<std::string> { using Argument<std::string>::Argument; };
template <> struct Argument<const std::string&> : Argument<std::string> { using Argument<std::string>::Argument; };
template <> struct Argument<ObjectRef> : ValueArgument<ObjectRef, ValueType::Object, argument::toObject> { using ValueArgument::ValueArgument; };
template <> struct Argument<const ObjectRef&> : Argument<ObjectRef> { using Argument<ObjectRef>::Argument; };
template <> struct Argument<ado::ConnectionRef> : ValueArgument<ado::ConnectionRef, ValueType::Connection, argument::toConnection> { using ValueArgument::ValueArgument; };
template <> struct Argument<const ado::ConnectionRef&> : Argument<ado::ConnectionRef> { using Argument<ado::ConnectionRef>::Argument; };
template <> struct Argument<std::shared_ptr<ado::Recordset>> : ValueArgument<std::shared_ptr<ado::Recordset>, ValueType::Recordset, argument::toRecordset> { using ValueArgument::ValueArgument; };
template <> struct Argument<const std::shared_ptr<ado::Recordset>&> : Argument<std::shared_ptr<ado::Recordset>> { using Argument<std::shared_ptr<ado::Recordset>>::Argument; };
template <> struct Argument<std::span<const std::int16_t>> : ValueArgument<std::vector<std::int16_t>, ValueType::IntegerArray, argument::toIntegers> { using ValueArgument::ValueArgument; };
template <> struct Argument<bool&> : ReferenceArgument<Argument<bool>, bool> { using ReferenceArgument::ReferenceArgument; };
template <> struct Argument<Boolean&> : ReferenceArgument<Argument<Boolean>, Boolean> { using ReferenceArgument::ReferenceArgument; };
template <> struct Argument<std::int16_t&> : ReferenceArgument<Argument<std::int16_t>, std::int16_t> { using ReferenceArgument::ReferenceArgument; };
template <> struct Argument<std::int32_t&> : ReferenceArgument<Argument<std::int32_t>, std::int32_t> { using ReferenceArgument::ReferenceArgument; };
template <> struct Argument<double&> : ReferenceArgument<Argument<double>, double> { using ReferenceArgument::ReferenceArgument; };
template <> struct Argument<Date&> : ReferenceArgument<Argument<Date>, Date> { using ReferenceArgument::ReferenceArgument; };
template <> struct Argument<std::string&> : ReferenceArgument<Argument<std::string>, std::string> { using ReferenceArgument::ReferenceArgument; };
// clang-format on

template <>
struct Argument<const Variant&> {
    static constexpr ValueType type = ValueType::Variant;
    static constexpr bool changes = false;
    Argument(Variant& value, const ParameterInfo&) : held{argument::toVariant(value)} {}
    const Variant& pass() noexcept { return held; }
    void store(Variant&) {}
    const Variant& held;
};

template <>
struct Argument<Variant> : Argument<const Variant&> {
    using Argument<const Variant&>::Argument;
};

template <>
struct Argument<Variant&> {
    static constexpr ValueType type = ValueType::Variant;
    static constexpr bool changes = true;
    Argument(Variant& value, const ParameterInfo&) : held{argument::toVariant(value)} {}
    Variant& pass() noexcept { return held; }
    void store(Variant& target) { target = held; }
    Variant held;
};

template <>
struct Argument<const TmkVar&> {
    static constexpr ValueType type = ValueType::Record;
    static constexpr bool changes = false;
    Argument(Variant& value, const ParameterInfo& parameter) : held{argument::toRecord(value, parameter)} {}
    const TmkVar& pass() noexcept { return held; }
    void store(Variant&) {}
    const TmkVar& held;
};

template <>
struct Argument<Object&> {
    static constexpr ValueType type = ValueType::Object;
    static constexpr bool changes = false;
    Argument(Variant& value, const ParameterInfo& parameter) : held{argument::toObject(value, parameter)}
    {
        require(held, parameter.name);
    }
    Object& pass() noexcept { return *held; }
    void store(Variant&) {}
    ObjectRef held;
};

/// A collection is a result only.
template <>
struct Argument<std::shared_ptr<Collection>> {
    static constexpr ValueType type = ValueType::Object;
};

template <>
struct Argument<std::vector<std::string>&> {
    static constexpr ValueType type = ValueType::StringArray;
    static constexpr bool changes = true;
    Argument(Variant& value, const ParameterInfo& parameter) : held{argument::toStrings(value, parameter)} {}
    std::vector<std::string>& pass() noexcept { return held; }
    void store(Variant& target) { target = argument::fromStrings(held, target.asArray().bounds().lower); }
    std::vector<std::string> held;
};

/// An array whose lower bound the operation sets.
template <>
struct Argument<StringArray&> {
    static constexpr ValueType type = ValueType::StringArray;
    static constexpr bool changes = true;
    Argument(Variant& value, const ParameterInfo& parameter) :
        held{argument::toStrings(value, parameter), value.asArray().bounds().lower}
    {}
    StringArray& pass() noexcept { return held; }
    void store(Variant& target) { target = argument::fromStrings(held.values, held.lower); }
    StringArray held;
};

template <>
struct Argument<ado::Recordset&> {
    static constexpr ValueType type = ValueType::Recordset;
    static constexpr bool changes = false;
    Argument(Variant& value, const ParameterInfo& parameter) : held{argument::requireRecordset(value, parameter)} {}
    ado::Recordset& pass() noexcept { return held; }
    void store(Variant&) {}
    ado::Recordset& held;
};

/// A recordset that may be missing: Nothing is a null pointer.
template <>
struct Argument<ado::Recordset*> {
    static constexpr ValueType type = ValueType::Recordset;
    static constexpr bool changes = false;
    Argument(Variant& value, const ParameterInfo& parameter) : held{argument::toRecordset(value, parameter)} {}
    ado::Recordset* pass() noexcept { return held.get(); }
    void store(Variant&) {}
    std::shared_ptr<ado::Recordset> held;
};

template <>
struct Argument<ado::Command&> {
    static constexpr ValueType type = ValueType::Command;
    static constexpr bool changes = false;
    Argument(Variant& value, const ParameterInfo& parameter) : held{argument::toCommand(value, parameter)} {}
    ado::Command& pass() noexcept { return held; }
    void store(Variant&) {}
    ado::Command& held;
};

/// The declared type of a C++ result.
template <class T>
constexpr ValueType resultType()
{
    if constexpr (std::is_void_v<T>) {
        return ValueType::None;
    } else {
        return Argument<T>::type;
    }
}

/// What a function's type states: its class (void for a free function), result and parameters.
template <class C, class R, class... P>
struct Signature {
    using Class = C;
    using Result = R;
    using Parameters = std::tuple<Argument<P>...>;
    static constexpr std::size_t arity = sizeof...(P);
    static constexpr std::array<ValueType, arity> types{Argument<P>::type...};
    static constexpr std::array<bool, arity> changes{Argument<P>::changes...};
};

// clang-format off
template <class C, class R, class... P> Signature<C, R, P...> signatureOf(R (C::*)(P...));
template <class C, class R, class... P> Signature<const C, R, P...> signatureOf(R (C::*)(P...) const);
template <class C, class R, class... P> Signature<C, R, P...> signatureOf(R (C::*)(P...) noexcept);
template <class C, class R, class... P> Signature<const C, R, P...> signatureOf(R (C::*)(P...) const noexcept);
template <class R, class... P> Signature<void, R, P...> signatureOf(R (*)(P...));
template <class R, class... P> Signature<void, R, P...> signatureOf(R (*)(P...) noexcept);
// clang-format on

template <auto function>
using SignatureOf = decltype(signatureOf(function));

/// Writes an argument back to the caller's variable; a left-out argument has none.
template <class Held>
void storeBack(Held& held, Variant& target)
{
    if (!isMissing(target)) held.store(target);
}

/// Calls the operation on the instance that `object` holds; `object` is not used for a free function.
template <auto function, class... Held>
decltype(auto) run([[maybe_unused]] const Object& object, Held&... held)
{
    using S = SignatureOf<function>;
    if constexpr (std::is_void_v<typename S::Class>) {
        return function(held.pass()...);
    } else {
        return (instanceIn<std::remove_const_t<typename S::Class>>(object).*function)(held.pass()...);
    }
}

/// Converts the arguments, calls the operation, and writes the arguments back. An operation that fails
/// may have written some before: the caller receives these as they stand then.
template <auto function, std::size_t... index>
Variant call(const OperationInfo& operation, const Object& object, [[maybe_unused]] std::span<Variant> args,
             std::index_sequence<index...>)
{
    using S = SignatureOf<function>;
    // List initialisation converts the arguments from left to right.
    typename S::Parameters held{
        std::tuple_element_t<index, typename S::Parameters>{args[index], operation.parameterList[index]}...};
    const auto store = [&]() { (storeBack(std::get<index>(held), args[index]), ...); };
    Variant result;
    try {
        if constexpr (std::is_void_v<typename S::Result>) {
            run<function>(object, std::get<index>(held)...);
        } else {
            result = Variant{run<function>(object, std::get<index>(held)...)};
        }
    } catch (...) {
        store();
        throw;
    }
    store();
    return result;
}

template <auto function>
Variant callBound(const OperationInfo& operation, const Object& object, std::span<Variant> args)
{
    return call<function>(operation, object, args, std::make_index_sequence<SignatureOf<function>::arity>{});
}

/// Takes the next parameter from the front of a comma list: "[name]" is optional, "&name" is by
/// reference, "[&name]" is both.
constexpr ParameterInfo nextParameter(std::string_view& names)
{
    const std::size_t comma = names.find(',');
    std::string_view item = names.substr(0, comma);
    names = comma == std::string_view::npos ? std::string_view{} : names.substr(comma + 1);
    while (!item.empty() && item.front() == ' ')
        item.remove_prefix(1);
    ParameterInfo parameter;
    if (!item.empty() && item.front() == '[' && item.back() == ']') {
        parameter.optional = true;
        item = item.substr(1, item.size() - 2);
    }
    if (!item.empty() && item.front() == '&') {
        parameter.byReference = true;
        item.remove_prefix(1);
    }
    if (item.empty()) throw "every parameter needs a name";
    parameter.name = item;
    return parameter;
}

/// One row of a class's table. A row that contradicts the C++ declaration does not compile.
/// @param slot   position in the class's full interface, from 1
/// @param name   the operation's name, which must be that of the C++ function
/// @param names  the parameters in order, separated by commas; see nextParameter
/// @param help   one sentence
template <auto function>
consteval OperationInfo operation(std::int16_t slot, std::string_view name, std::string_view names,
                                  std::string_view help, MemberKind kind = MemberKind::Method)
{
    using S = SignatureOf<function>;
    static_assert(S::arity <= OperationInfo::maxParameters);
    if (name != memberName<function>()) throw "the row names another operation than its function pointer";
    OperationInfo info;
    info.slot = slot;
    info.name = name;
    info.kind = kind;
    info.result = resultType<typename S::Result>();
    info.help = help;
    info.parameterCount = S::arity;
    for (std::size_t index = 0; index < S::arity; ++index) {
        ParameterInfo parameter = nextParameter(names);
        parameter.type = S::types[index];
        if (S::changes[index] && !parameter.byReference) throw "a parameter that the operation can change needs '&'";
        if (!parameter.optional && index > 0 && info.parameterList[index - 1].optional) {
            throw "an optional parameter is followed by one that is not";
        }
        info.parameterList[index] = parameter;
    }
    if (!names.empty()) throw "more names than parameters";
    info.invoker = &callBound<function>;
    return info;
}

/// Whether the rows stand in ascending order of slots, each slot once. For static_assert.
template <std::size_t count>
consteval bool slotsAscend(const std::array<OperationInfo, count>& rows)
{
    for (std::size_t index = 1; index < count; ++index) {
        if (rows[index].slot <= rows[index - 1].slot) return false;
    }
    return true;
}

/// Maker of a class that is created by its default constructor.
template <class C>
ObjectRef makeClass(const ClassInfo& classInfo)
{
    return std::make_shared<InstanceOf<C>>(classInfo, std::make_shared<C>());
}

} // namespace tamarok::component
