#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "tamarok/object.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

/// The class map: describes every public operation once, in slot order, and calls it by name with the
/// argument conversions of a late-bound call.
namespace tamarok::component {

/// Types of parameters and results as the component interface names them.
enum class ValueType : std::uint8_t {
    None, ///< an operation without a result
    Boolean,
    Byte,    ///< 8 bits without sign
    Integer, ///< 16 bits
    Long,    ///< 32 bits
    Double,
    Date,
    String,
    Variant,
    IntegerArray,
    StringArray,
    Object,
    Connection,
    Recordset,
    Command,
    Record ///< the session record TmkVar
};

/// The type's name ("Integer", "ADODB.Connection", "TmkVar").
std::string_view name(ValueType type) noexcept;

enum class MemberKind : std::uint8_t { Method, PropertyGet, PropertyPut };

/// The kind's name ("method", "get", "put").
std::string_view name(MemberKind kind) noexcept;

struct ParameterInfo {
    std::string_view name;
    ValueType type = ValueType::None;
    bool byReference = false; ///< declared by reference, whether or not the operation changes it
    bool optional = false;    ///< left out, it counts as false, 0, "", Empty or Nothing
};

struct OperationInfo {
    static constexpr std::size_t maxParameters = 16;
    using Invoker = Variant (*)(const OperationInfo&, const Object& instance, std::span<Variant>);

    std::int16_t slot = 0; ///< position in the class's full interface, from 1
    std::string_view name;
    MemberKind kind = MemberKind::Method;
    ValueType result = ValueType::None;
    std::string_view help; ///< one sentence
    std::size_t parameterCount = 0;
    std::array<ParameterInfo, maxParameters> parameterList{};
    Invoker invoker = nullptr; ///< needs exactly parameterCount arguments; call it through `invoke`

    std::span<const ParameterInfo> parameters() const noexcept { return {parameterList.data(), parameterCount}; }
};

struct ClassInfo {
    std::string_view name;
    std::string_view help; ///< one sentence
    std::span<const OperationInfo> operations;
    ObjectRef (*make)(const ClassInfo&) = nullptr; ///< call it through `makeInstance`
};

/// All classes, in the order of the interface.
std::span<const ClassInfo> classes() noexcept;

/// The class of that name, compared without regard to case, or nullptr.
const ClassInfo* findClass(std::string_view name) noexcept;
/// The class of that name. Error 429 that names it where there is none.
const ClassInfo& requireClass(std::string_view name);

/// The operation of that name, compared without regard to case, or nullptr. A property that can be read
/// and written has two operations: one argument selects the writing one, no argument the reading one.
const OperationInfo* findOperation(const ClassInfo& classInfo, std::string_view name, std::size_t arguments) noexcept;
/// As findOperation. Error 438 that names class and operation where there is none.
const OperationInfo& requireOperation(const ClassInfo& classInfo, std::string_view name, std::size_t arguments);

/// The value that stands for a left-out optional argument in a list of arguments.
const Variant& missingArgument();
bool isMissing(const Variant& value) noexcept;

/// Makes an instance of a class. It is reached by late binding: `call` for operations, `get` and `put`
/// for properties (`get` also for operations without parameters). A module of free functions has an
/// instance too. Error 91 for the language service where the thread's platform has none.
ObjectRef makeInstance(const ClassInfo& classInfo);
/// Makes an instance of a class by name. Error 429 for an unknown class.
ObjectRef makeInstance(std::string_view className);

/// Calls an operation.
/// @param instance  made by `makeInstance` from the same class
/// @param args      in the order of the signature; trailing optional ones may be left out. Arguments are
///                  converted to the declared types as an assignment does it. Afterwards those that the
///                  operation can change hold their new value in the declared type, also where the
///                  operation failed after it had changed them.
/// @return the result; Empty for an operation without one
/// Errors: 450 too many arguments, or fewer than the operation needs; 449 a missing argument that is
/// not optional; 6, 13 and 94 where a value does not convert, with the parameter named; 91 where
/// an object is needed and Nothing is given; 13 for an instance of another class; and whatever the
/// operation raises. An error without a source gets "Class.Operation".
Variant invoke(const ClassInfo& classInfo, const OperationInfo& operation, const Object& instance,
               std::span<Variant> args);

/// Calls an operation by name on a new instance. Errors as for requireClass, requireOperation and above.
Variant invoke(std::string_view className, std::string_view operation, std::span<Variant> args);

/// Makes a session record an object whose properties are the record's fields. An argument of type
/// TmkVar must be such an object. The record must outlive it.
ObjectRef makeRecordObject(TmkVar& record);

} // namespace tamarok::component

#pragma GCC visibility pop
