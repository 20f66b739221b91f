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

/// The class map: every public operation once, in slot order, callable by name with the argument
/// coercions of a late-bound call.
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
    bool byReference = false;
    bool optional = false; ///< left out, it counts as false, 0, "", Empty or Nothing
};

struct OperationInfo {
    static constexpr std::size_t maxParameters = 16;
    using Invoker = Variant (*)(const OperationInfo&, void*, std::span<Variant>);

    std::int16_t slot = 0; ///< position in the class's full interface, from 1
    std::string_view name;
    MemberKind kind = MemberKind::Method;
    ValueType result = ValueType::None;
    std::string_view help; ///< one sentence
    std::size_t parameterCount = 0;
    std::array<ParameterInfo, maxParameters> parameterList{};
    Invoker invoker = nullptr; ///< takes exactly parameterCount arguments; call it through `invoke`

    std::span<const ParameterInfo> parameters() const noexcept { return {parameterList.data(), parameterCount}; }
};

struct ClassInfo {
    std::string_view name;
    std::string_view help; ///< one sentence
    std::span<const OperationInfo> operations;
    std::shared_ptr<void> (*make)() = nullptr; ///< a fresh instance
};

/// All classes, in the order of the interface.
std::span<const ClassInfo> classes() noexcept;

/// The class of that name, compared without regard to case, or nullptr.
const ClassInfo* findClass(std::string_view name) noexcept;
/// The same; Error 429 that names it where there is none.
const ClassInfo& requireClass(std::string_view name);

/// The operation of that name, compared without regard to case, or nullptr. Of a property that can
/// be read and written, the one that `arguments` select: written with one argument, read with none.
const OperationInfo* findOperation(const ClassInfo& classInfo, std::string_view name, std::size_t arguments) noexcept;
/// The same; Error 438 that names class and operation where there is none.
const OperationInfo& requireOperation(const ClassInfo& classInfo, std::string_view name, std::size_t arguments);

/// Stands for an optional argument that is left out.
const Variant& missingArgument();
bool isMissing(const Variant& value) noexcept;

/// Calls an operation on an instance that `classInfo.make` made.
/// @param args  in the order of the signature; trailing optional ones may be left out. Arguments are
///              converted to the declared types as an assignment does it; those by reference hold
///              the changed value, in the declared type, afterwards.
/// @return the result; Empty for an operation without one
/// Errors: 450 too many arguments, or fewer than the operation needs; 449 a missing argument that is
/// not optional; 6, 13 and 94 where a value does not convert, with the parameter named; 91 where
/// an object is needed and Nothing came; and whatever the operation raises. An error without a
/// source gets "Class.Operation".
Variant invoke(const ClassInfo& classInfo, const OperationInfo& operation, void* instance, std::span<Variant> args);

/// The same on a fresh instance, by name.
Variant invoke(std::string_view className, std::string_view operation, std::span<Variant> args);

/// A new instance of a class, reached by late binding: `call` for operations, `get` and `put` for
/// properties (`get` also for operations without parameters). Error 429 for an unknown class.
ObjectRef makeInstance(std::string_view className);

/// A session record as an object: fields are its properties. This is what an argument of type
/// TmkVar takes. The record must outlive the object.
ObjectRef makeRecordObject(TmkVar& record);

} // namespace tamarok::component
