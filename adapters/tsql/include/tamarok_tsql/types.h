#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tamarok::embedded::sql {

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

/// How values lie in the SQLite file:
///   Bit, TinyInt, SmallInt, Int, BigInt   INTEGER
///   Decimal, Money, Real, Float           REAL (an INTEGER may turn up where SQLite folded it)
///   texts, UniqueIdentifier               TEXT in UTF-8, compared by collation TAMAROK
///   Date, SmallDateTime, DateTime, DateTime2, Time
///                                         TEXT "YYYY-MM-DD HH:MM:SS.mmm", always 23 characters, so that
///                                         plain text order is time order (Date has 00:00:00.000; Time
///                                         lies on 1900-01-01)
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

} // namespace tamarok::embedded::sql
