#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

namespace tamarok::tsql {

/// Types of the server as the front end reasons about them.
enum class TypeKind : std::uint8_t {
    Unknown, ///< decided at run time by the value's storage class
    Null,    ///< the literal NULL
    Bit,
    TinyInt,
    SmallInt,
    Int,
    BigInt,
    Decimal,
    SmallMoney,
    Money,
    Real,
    Float,
    Char,
    VarChar,
    NChar,
    NVarChar,
    Text,
    NText,
    Date,
    SmallDateTime,
    DateTime,
    DateTime2,
    Time,
    Binary,
    UniqueIdentifier
};

/// A type of the server with its sizes.
struct Type {
    TypeKind kind = TypeKind::Unknown;
    std::uint8_t precision = 0; ///< Decimal
    std::uint8_t scale = 0;     ///< Decimal
    std::int32_t length = 0;    ///< characters of a text, bytes of a binary; -1 for max

    friend constexpr bool operator==(const Type&, const Type&) = default;
};

/// Type of a declaration as the server writes it: "NVARCHAR(40)", "decimal(10, 2)", "varchar(max)";
/// "INTEGER" is Int. Unknown for what is none of the server's types.
Type parseDeclaredType(std::string_view declaration);

/// Declaration of a type, "NVARCHAR(40)"; empty for Unknown and Null.
std::string declaredText(const Type& type);

} // namespace tamarok::tsql

#pragma GCC visibility pop
