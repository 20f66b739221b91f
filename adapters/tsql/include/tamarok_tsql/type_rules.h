#pragma once

#include <cstdint>
#include <string>

#include "tamarok_tsql/types.h"

#pragma GCC visibility push(default)

/// The server's rules on the types of operations. The binder types expressions with them, and the translation decides
/// by them where a conversion is needed.
namespace tamarok::tsql {

enum class TypeClass : std::uint8_t { Unknown, Null, Whole, Fixed, Floating, Text, Date, Guid, Binary };

/// Classes of types that the rules treat alike.
TypeClass classOf(const Type& type);

inline bool isText(const Type& type)
{
    return classOf(type) == TypeClass::Text;
}
/// A text of the old long types TEXT and NTEXT, which the server neither compares nor sorts.
inline bool isLongText(const Type& type)
{
    return type.kind == TypeKind::Text || type.kind == TypeKind::NText;
}
/// A text in Unicode: NCHAR, NVARCHAR, NTEXT.
inline bool isNational(const Type& type)
{
    return type.kind == TypeKind::NChar || type.kind == TypeKind::NVarChar || type.kind == TypeKind::NText;
}
inline bool isWhole(const Type& type)
{
    return classOf(type) == TypeClass::Whole;
}
inline bool isDate(const Type& type)
{
    return classOf(type) == TypeClass::Date;
}
inline bool isFraction(const Type& type)
{
    return classOf(type) == TypeClass::Fixed || classOf(type) == TypeClass::Floating;
}
inline bool isNumber(const Type& type)
{
    return isWhole(type) || isFraction(type);
}
/// A whole type smaller than int, whose results the server does not widen.
inline bool isSmall(const Type& type)
{
    return type.kind == TypeKind::TinyInt || type.kind == TypeKind::SmallInt;
}
inline bool isMoney(const Type& type)
{
    return type.kind == TypeKind::Money || type.kind == TypeKind::SmallMoney;
}
/// True for NULL and for parameters, which take the type of their context.
inline bool isOpen(const Type& type)
{
    return type.kind == TypeKind::Unknown || type.kind == TypeKind::Null;
}

/// Name by which the server's messages call a type: "nvarchar", without sizes. A parameter counts as nvarchar.
std::string typeName(const Type& type);

/// Bytes of a value of a type of fixed size, as DATALENGTH counts them.
std::int32_t bytesOf(const Type& type);

/// Largest absolute value of a whole type.
std::int64_t largestMagnitude(TypeKind kind);

/// Decimal that holds every value of a whole or fixed type.
Type asDecimal(const Type& type);

/// Type of a CASE, UNION or comparison with parts of both types.
Type unify(const Type& a, const Type& b);

/// Type of a + b, a - b, a * b, a / b, a % b of two numbers. `op` is the operator's character.
Type arithmeticType(char op, const Type& a, const Type& b);

/// Type of a text joined of two.
Type concatenationType(const Type& a, const Type& b);

constexpr Type makeType(TypeKind kind, std::int32_t length = 0)
{
    return {kind, 0, 0, length};
}
constexpr Type makeDecimal(int precision, int scale)
{
    return {TypeKind::Decimal, static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(scale), 0};
}

} // namespace tamarok::tsql

#pragma GCC visibility pop
