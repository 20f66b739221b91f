#include "tamarok_tsql/type_rules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "tamarok_tsql/names.h"

namespace tamarok::tsql {
namespace {

/// A type name as statements may spell it. The first row of a kind is the spelling that `declaredText` writes.
struct TypeRow {
    std::string_view name;
    TypeKind kind;
    std::int32_t length; ///< where none is declared
};

constexpr std::int32_t unlimited = -1;
constexpr std::array typeRows{
    TypeRow{"BIT", TypeKind::Bit, 0},
    TypeRow{"TINYINT", TypeKind::TinyInt, 0},
    TypeRow{"SMALLINT", TypeKind::SmallInt, 0},
    TypeRow{"INT", TypeKind::Int, 0},
    TypeRow{"INTEGER", TypeKind::Int, 0},
    TypeRow{"BIGINT", TypeKind::BigInt, 0},
    TypeRow{"DECIMAL", TypeKind::Decimal, 0},
    TypeRow{"DEC", TypeKind::Decimal, 0},
    TypeRow{"NUMERIC", TypeKind::Decimal, 0},
    TypeRow{"NUMBER", TypeKind::Decimal, 0},
    TypeRow{"MONEY", TypeKind::Money, 0},
    TypeRow{"SMALLMONEY", TypeKind::SmallMoney, 0},
    TypeRow{"REAL", TypeKind::Real, 0},
    TypeRow{"FLOAT", TypeKind::Float, 0},
    TypeRow{"CHAR", TypeKind::Char, 1},
    TypeRow{"CHARACTER", TypeKind::Char, 1},
    TypeRow{"VARCHAR", TypeKind::VarChar, 1},
    TypeRow{"VARCHAR2", TypeKind::VarChar, 1},
    TypeRow{"NCHAR", TypeKind::NChar, 1},
    TypeRow{"NVARCHAR", TypeKind::NVarChar, 1},
    TypeRow{"NVARCHAR2", TypeKind::NVarChar, 1},
    TypeRow{"SYSNAME", TypeKind::NVarChar, 128},
    TypeRow{"TEXT", TypeKind::Text, unlimited},
    TypeRow{"NTEXT", TypeKind::NText, unlimited},
    TypeRow{"DATE", TypeKind::Date, 0},
    TypeRow{"SMALLDATETIME", TypeKind::SmallDateTime, 0},
    TypeRow{"DATETIME", TypeKind::DateTime, 0},
    TypeRow{"DATETIME2", TypeKind::DateTime2, 0},
    TypeRow{"TIME", TypeKind::Time, 0},
    TypeRow{"BINARY", TypeKind::Binary, 1},
    TypeRow{"VARBINARY", TypeKind::Binary, 1},
    TypeRow{"IMAGE", TypeKind::Binary, unlimited},
    TypeRow{"UNIQUEIDENTIFIER", TypeKind::UniqueIdentifier, 36},
};

/// Indexed by TypeKind.
constexpr std::array classes{
    TypeClass::Unknown,  TypeClass::Null,     TypeClass::Whole, TypeClass::Whole,  TypeClass::Whole,
    TypeClass::Whole,    TypeClass::Whole,    TypeClass::Fixed, TypeClass::Fixed,  TypeClass::Fixed,
    TypeClass::Floating, TypeClass::Floating, TypeClass::Text,  TypeClass::Text,   TypeClass::Text,
    TypeClass::Text,     TypeClass::Text,     TypeClass::Text,  TypeClass::Date,   TypeClass::Date,
    TypeClass::Date,     TypeClass::Date,     TypeClass::Date,  TypeClass::Binary, TypeClass::Guid,
};
static_assert(classes.size() == static_cast<std::size_t>(TypeKind::UniqueIdentifier) + 1);

/// The server's order of precedence, lowest first.
constexpr int rank(TypeKind kind)
{
    switch (kind) {
    case TypeKind::Unknown:
    case TypeKind::Null: return 0;
    case TypeKind::Binary: return 1;
    case TypeKind::Char:
    case TypeKind::VarChar:
    case TypeKind::NChar:
    case TypeKind::NVarChar: return 2;
    case TypeKind::UniqueIdentifier: return 3;
    case TypeKind::Text: return 4;
    case TypeKind::NText: return 5;
    case TypeKind::Bit: return 6;
    case TypeKind::TinyInt: return 7;
    case TypeKind::SmallInt: return 8;
    case TypeKind::Int: return 9;
    case TypeKind::BigInt: return 10;
    case TypeKind::SmallMoney: return 11;
    case TypeKind::Money: return 12;
    case TypeKind::Decimal: return 13;
    case TypeKind::Real: return 14;
    case TypeKind::Float: return 15;
    case TypeKind::Time: return 16;
    case TypeKind::Date: return 17;
    case TypeKind::SmallDateTime: return 18;
    case TypeKind::DateTime: return 19;
    case TypeKind::DateTime2: return 20;
    }
    return 0;
}

constexpr bool isVariable(TypeKind kind)
{
    return kind != TypeKind::Char && kind != TypeKind::NChar;
}

/// A join of two texts is Unicode if one of them is, and of variable length unless both have a fixed one.
TypeKind textKind(const Type& a, const Type& b)
{
    const bool national = isNational(a) || isNational(b);
    const bool variable = isVariable(a.kind) || isVariable(b.kind);
    return variable ? (national ? TypeKind::NVarChar : TypeKind::VarChar)
                    : (national ? TypeKind::NChar : TypeKind::Char);
}

constexpr int maximumPrecision = 38;

/// Cuts a decimal type to 38 digits as the server does: the whole part keeps its digits, and of the decimal places
/// at least 6 remain (or all, if fewer).
Type limited(int precision, int scale)
{
    if (precision > maximumPrecision) {
        const int whole = precision - scale;
        scale = std::max(maximumPrecision - whole, std::min(scale, 6));
        precision = maximumPrecision;
    }
    return makeDecimal(precision, scale);
}

/// Precision p and scale s of a result of decimals (p1,s1) and (p2,s2), by the server's documented formulas.
Type decimalArithmetic(char op, const Type& a, const Type& b)
{
    const int p1 = a.precision;
    const int p2 = b.precision;
    const int s1 = a.scale;
    const int s2 = b.scale;
    switch (op) {
    case '*': return limited(p1 + p2 + 1, s1 + s2);
    case '/': {
        const int scale = std::max(6, s1 + p2 + 1);
        return limited(p1 - s1 + s2 + scale, scale);
    }
    case '%': {
        const int scale = std::max(s1, s2);
        return limited(std::min(p1 - s1, p2 - s2) + scale, scale);
    }
    default: {
        const int scale = std::max(s1, s2);
        return limited(std::max(p1 - s1, p2 - s2) + scale + 1, scale);
    }
    }
}

/// Reads the next number of "(p, s)" and moves `at` behind it. @return `missing` if there is none, as for "max"
int readNumber(std::string_view text, std::size_t& at, int missing)
{
    while (at < text.size() && (text[at] == ' ' || text[at] == ',' || text[at] == '('))
        ++at;
    int value = missing;
    const auto [end, failure] = std::from_chars(text.data() + at, text.data() + text.size(), value);
    if (failure != std::errc()) return missing;
    at = static_cast<std::size_t>(end - text.data());
    return value;
}

} // namespace

TypeClass classOf(const Type& type)
{
    return classes[static_cast<std::size_t>(type.kind)];
}

std::string typeName(const Type& type)
{
    if (type.kind == TypeKind::Null) return "NULL";
    std::string name = declaredText(isOpen(type) ? makeType(TypeKind::NVarChar) : type);
    name.erase(std::min(name.find('('), name.size()));
    for (char& c : name)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    return name;
}

/// A decimal takes a byte for the sign and 4 to 16 for the digits, which its precision decides.
std::int32_t bytesOf(const Type& type)
{
    switch (type.kind) {
    case TypeKind::Bit:
    case TypeKind::TinyInt: return 1;
    case TypeKind::SmallInt: return 2;
    case TypeKind::Int:
    case TypeKind::SmallMoney:
    case TypeKind::Real:
    case TypeKind::SmallDateTime: return 4;
    case TypeKind::Date: return 3;
    case TypeKind::Time: return 5;
    case TypeKind::Decimal: return type.precision < 10 ? 5 : type.precision < 20 ? 9 : type.precision < 29 ? 13 : 17;
    case TypeKind::UniqueIdentifier: return 16;
    default: return 8;
    }
}

std::int64_t largestMagnitude(TypeKind kind)
{
    switch (kind) {
    case TypeKind::Bit: return 1;
    case TypeKind::TinyInt: return 255;
    case TypeKind::SmallInt: return 32768;
    case TypeKind::Int: return 2147483648LL;
    default: return std::numeric_limits<std::int64_t>::max();
    }
}

/// The decimals by which the server replaces the other exact types in arithmetic with a decimal.
Type asDecimal(const Type& type)
{
    switch (type.kind) {
    case TypeKind::Bit: return makeDecimal(1, 0);
    case TypeKind::TinyInt: return makeDecimal(3, 0);
    case TypeKind::SmallInt: return makeDecimal(5, 0);
    case TypeKind::Int: return makeDecimal(10, 0);
    case TypeKind::BigInt: return makeDecimal(19, 0);
    case TypeKind::SmallMoney: return makeDecimal(10, 4);
    case TypeKind::Money: return makeDecimal(19, 4);
    default: return type;
    }
}

/// A type still open gives way to a known one. Two texts give the longer of them, decimals one that holds the digits of
/// both on either side of the point; otherwise the type of higher precedence wins.
Type unify(const Type& a, const Type& b)
{
    if (isOpen(a)) return a.kind == TypeKind::Unknown && b.kind == TypeKind::Null ? a : b;
    if (isOpen(b)) return a;
    if (isLongText(a) || isLongText(b)) {
        if (isText(a) && isText(b)) return rank(a.kind) >= rank(b.kind) ? a : b;
    } else if (isText(a) && isText(b)) {
        const bool longText = a.length < 0 || b.length < 0;
        return makeType(textKind(a, b), longText ? unlimited : std::max(a.length, b.length));
    }
    const Type& winner = rank(a.kind) >= rank(b.kind) ? a : b;
    if (winner.kind == TypeKind::Decimal && isNumber(a) && isNumber(b)) {
        const Type da = asDecimal(a);
        const Type db = asDecimal(b);
        const int scale = std::max(da.scale, db.scale);
        return limited(std::max(da.precision - da.scale, db.precision - db.scale) + scale, scale);
    }
    return winner;
}

/// A decimal makes the result a decimal with a precision of its own. Bits know bitwise operators alone; beside NULL
/// they count as int.
Type arithmeticType(char op, const Type& a, const Type& b)
{
    const Type winner = unify(a, b);
    if (winner.kind == TypeKind::Decimal) return decimalArithmetic(op, asDecimal(a), asDecimal(b));
    const bool bitwise = op == '&' || op == '|' || op == '^';
    if (winner.kind == TypeKind::Bit && !bitwise) return makeType(TypeKind::Int);
    return winner;
}

/// The lengths add up; one text without a limit makes the result unlimited.
Type concatenationType(const Type& a, const Type& b)
{
    const bool known = a.length >= 0 && b.length >= 0;
    return makeType(textKind(a, b), known ? a.length + b.length : unlimited);
}

/// Also reads the forms in which SQLite keeps a declaration: [type], "type" and "type(max)" in quotes as a whole. An
/// unknown name gives Unknown.
Type parseDeclaredType(std::string_view declaration)
{
    std::string_view name = declaration;
    if (!name.empty() && (name.front() == '[' || name.front() == '"')) {
        const std::size_t end = name.find(name.front() == '[' ? ']' : '"', 1);
        if (end == std::string_view::npos) return {};
        if (name.front() == '"' && end + 1 == name.size()) return parseDeclaredType(name.substr(1, end - 1));
        name = name.substr(1, end - 1);
    } else {
        name = name.substr(0, name.find_first_of(" ("));
    }
    const auto row = std::find_if(typeRows.begin(), typeRows.end(),
                                  [&](const TypeRow& candidate) { return sameName(candidate.name, name); });
    if (row == typeRows.end()) return {};
    Type type = makeType(row->kind, row->length);
    std::size_t at = declaration.find('(');
    const bool sized = at != std::string_view::npos;
    if (type.kind == TypeKind::Decimal) {
        if (!sized) return makeDecimal(18, 0);
        const int precision = readNumber(declaration, at, 18);
        return makeDecimal(precision, readNumber(declaration, at, 0));
    }
    if (sized && type.length != 0) type.length = readNumber(declaration, at, unlimited);
    // FLOAT(n) with up to 24 bits of mantissa is REAL on the server.
    if (type.kind == TypeKind::Float && sized && readNumber(declaration, at, 53) <= 24) type.kind = TypeKind::Real;
    return type;
}

/// Writes the type in the form that parseDeclaredType reads back.
std::string declaredText(const Type& type)
{
    if (isOpen(type)) return {};
    const auto row = std::find_if(typeRows.begin(), typeRows.end(),
                                  [&](const TypeRow& candidate) { return candidate.kind == type.kind; });
    std::string text(row->name);
    if (type.kind == TypeKind::Decimal) {
        text += "(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
    } else if (type.kind != TypeKind::Text && type.kind != TypeKind::NText && type.length != 0 &&
               type.kind != TypeKind::UniqueIdentifier) {
        text += type.length < 0 ? "(MAX)" : "(" + std::to_string(type.length) + ")";
    }
    return text;
}

} // namespace tamarok::tsql
