#include <limits>

#include "tamarok_tsql/date_text.h"
#include "tamarok_tsql/literals.h"
#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

namespace tamarok::embedded::translation {
namespace {

/// The SQLite function that converts a value to a type.
struct ConversionRow {
    TypeKind kind;
    std::string_view function;
};

constexpr ConversionRow conversions[] = {
    {TypeKind::Bit, "tm_bit"},
    {TypeKind::TinyInt, "tm_tinyint"},
    {TypeKind::SmallInt, "tm_smallint"},
    {TypeKind::Int, "tm_int"},
    {TypeKind::BigInt, "tm_bigint"},
    {TypeKind::Decimal, "tm_decimal"},
    {TypeKind::SmallMoney, "tm_smallmoney"},
    {TypeKind::Money, "tm_money"},
    {TypeKind::Real, "tm_real"},
    {TypeKind::Float, "tm_float"},
    {TypeKind::Date, "tm_date"},
    {TypeKind::SmallDateTime, "tm_smalldatetime"},
    {TypeKind::DateTime, "tm_datetime"},
    {TypeKind::DateTime2, "tm_datetime2"},
    {TypeKind::Time, "tm_time"},
    {TypeKind::Char, "tm_char"},
    {TypeKind::NChar, "tm_nchar"},
    {TypeKind::VarChar, "tm_varchar"},
    {TypeKind::Text, "tm_varchar"},
};

std::string_view conversionFunction(TypeKind kind)
{
    for (const ConversionRow& row : conversions) {
        if (row.kind == kind) return row.function;
    }
    return "tm_nvarchar";
}

/// Whether every value of a whole or fixed type is one of the decimal `target`.
bool fitsDecimal(const Type& given, const Type& target)
{
    if (target.kind != TypeKind::Decimal || !isNumber(given) || classOf(given) == TypeClass::Floating) return false;
    const Type decimal = asDecimal(given);
    return decimal.scale <= target.scale && decimal.precision - decimal.scale <= target.precision - target.scale;
}

bool isPadded(const Type& type)
{
    return type.kind == TypeKind::Char || type.kind == TypeKind::NChar;
}

} // namespace

void Emitter::conversionCall(const Type& target)
{
    write(conversionFunction(target.kind));
    write("(");
}

/// Closes the call with the sizes that the function of the type takes: precision and scale, or the length (-1 for no
/// limit).
void Emitter::conversionEnd(const Type& target)
{
    if (target.kind == TypeKind::Decimal) {
        write(", " + std::to_string(target.precision) + ", " + std::to_string(target.scale));
    } else if (isText(target) || classOf(target) == TypeClass::Guid) {
        write(", " + std::to_string(target.length));
    }
    write(")");
}

void Emitter::number(std::string_view function, const Expr& expr)
{
    write(function);
    write("(");
    expression(expr);
    write(")");
}

// --- constants ---------------------------------------------------------------------------------

/// A text beside a whole number, as in ID = '5'. If it is no number of the type it is left to the function, which
/// raises the server's error when the statement runs. A negative number is put in parentheses: after a minus it would
/// begin a comment ("--").
bool Emitter::literalWhole(const TextExpr& text, const Type& target)
{
    const std::string value = textValue(text.raw);
    std::optional<std::int64_t> whole = wholeOf(value);
    if (target.kind == TypeKind::Bit) {
        if (sameName(value, "true")) whole = 1;
        if (sameName(value, "false")) whole = 0;
        if (whole && *whole != 0) whole = 1;
    }
    const std::int64_t bound = largestMagnitude(target.kind);
    const std::int64_t least = target.kind == TypeKind::TinyInt || target.kind == TypeKind::Bit ? 0 : -bound;
    const std::int64_t most = target.kind == TypeKind::SmallInt || target.kind == TypeKind::Int ? bound - 1 : bound;
    if (!whole || *whole < least || *whole > most) return false;
    write(*whole < 0 ? "(" + std::to_string(*whole) + ")" : std::to_string(*whole));
    return true;
}

/// Only for FLOAT: the other types round or check, which their functions do. ".0" makes SQLite see a REAL.
bool Emitter::literalNumber(const TextExpr& text, const Type& target)
{
    std::string value = textValue(text.raw);
    if (target.kind == TypeKind::Decimal || isMoney(target) || target.kind == TypeKind::Real) {
        return false;
    }
    if (!isNumberText(value, true)) return false;
    value.erase(0, value.find_first_not_of(" +\t\r\n"));
    value.erase(value.find_last_not_of(" \t\r\n") + 1);
    if (value.empty()) value = "0";
    if (value.find_first_of(".eE") == std::string::npos) value += ".0";
    write(value.front() == '-' ? "(" + value + ")" : value);
    return true;
}

/// The date order of the connection is known at translation; a change of it (SET DATEFORMAT) makes the cache translate
/// anew.
bool Emitter::literalDate(const TextExpr& text, const Type& target, BadDate badDate)
{
    const auto conversion = tsql::convertDateText(textValue(text.raw), target.kind, tsql::readingOf(order_));
    if (conversion.error == 0) {
        writeText(tsql::storedText(conversion.instant));
    } else if (badDate == BadDate::Refused) {
        source_.refuse(text.offset, conversion.error, tsql::dateErrorMessage(conversion.error, target.kind), "22007");
    }
    return conversion.error == 0;
}

/// Constants are converted here, so that SQLite can compare a column with a constant and use its index.
bool Emitter::literalAs(const Expr& expr, const Type& target, BadDate badDate)
{
    if (expr.kind == ExprKind::Number) {
        const auto& literal = tsql::as<NumberExpr>(expr);
        if (isText(target) && literal.token == TokenKind::Integer && literal.magnitude >= 0) {
            writeText(std::to_string(literal.magnitude));
            return true;
        }
        if (isFraction(target) && literal.token == TokenKind::Integer) {
            write(literal.text);
            write(".0");
            return true;
        }
        return false;
    }
    if (expr.kind != ExprKind::Text) return false;
    const auto& text = tsql::as<TextExpr>(expr);
    if (isWhole(target)) return literalWhole(text, target);
    if (isFraction(target)) return literalNumber(text, target);
    if (isDate(target)) return literalDate(text, target, badDate);
    return false;
}

// --- implicit conversions -----------------------------------------------------------------------

/// Writes the server's implicit conversion, or the plain expression where the stored forms of
/// both types agree.
void Emitter::as(const Expr& expr, const Type& target, BadDate badDate, Binding need)
{
    if (expr.type == target || expr.type.kind == TypeKind::Null || isOpen(target)) return expression(expr, need);
    if (literalAs(expr, target, badDate)) return;
    if (isWhole(target)) return toWhole(expr, target, need);
    if (isFraction(target)) return toFraction(expr, target, need);
    if (isDate(target)) return toDate(expr, target, need);
    if (isText(target)) return asText(expr, need);
    expression(expr, need);
}

/// A whole number of a smaller type is stored alike. A date counts as days from 1900-01-01.
void Emitter::toWhole(const Expr& expr, const Type& target, Binding need)
{
    if (isDate(expr.type)) {
        conversionCall(target);
        wholeDays(expr);
        write(")");
        return;
    }
    const bool narrower = isWhole(expr.type) && (largestMagnitude(expr.type.kind) <= largestMagnitude(target.kind));
    if (narrower || expr.type.kind == TypeKind::Unknown) return expression(expr, need);
    conversionCall(target);
    wholeOperand(expr, target);
    write(")");
}

/// All numbers are stored as binary fractions, so that only a text, or a decimal that loses places, needs a function.
void Emitter::toFraction(const Expr& expr, const Type& target, Binding need)
{
    if (isDate(expr.type)) return dayNumber(expr);
    const bool loses = target.kind == TypeKind::Decimal && isFraction(expr.type) &&
                       (expr.type.kind != TypeKind::Decimal || expr.type.scale > target.scale);
    if (!isText(expr.type) && !loses) return expression(expr, need);
    conversionCall(target);
    expression(expr);
    conversionEnd(target);
}

/// DATETIME and DATETIME2 hold the stored text of DATE, SMALLDATETIME and each other unchanged.
void Emitter::toDate(const Expr& expr, const Type& target, Binding need)
{
    const bool finer = target.kind == TypeKind::DateTime || target.kind == TypeKind::DateTime2;
    const bool same = finer && isDate(expr.type) && expr.type.kind != TypeKind::Time;
    if (same) return expression(expr, need);
    number(conversionFunction(target.kind), expr);
}

/// Texts and identifiers are stored as they are shown; all others go through the function of their type.
void Emitter::asText(const Expr& expr, Binding need)
{
    const bool shown = isText(expr.type) || isOpen(expr.type) || classOf(expr.type) == TypeClass::Guid;
    if (shown) return expression(expr, need);
    if (literalAs(expr, makeType(TypeKind::NVarChar, -1), BadDate::LeftToRunTime)) return;
    textOf(expr, nullptr, makeType(TypeKind::NVarChar, -1));
}

/// A value that is no text as text, by a CONVERT style where one is given.
void Emitter::textOf(const Expr& expr, const Expr* style, const Type& target)
{
    // Each kind of number has its own text form on the server: a decimal shows all places of its scale, money two, a
    // float six digits. Styles count for money, floats and dates only. 23 and 108 are the styles in which the server
    // shows a date and a time by default.
    const TypeClass of = classOf(expr.type);
    if (expr.type.kind == TypeKind::Decimal) {
        write("tm_decimaltext(");
        expression(expr);
        write(", " + std::to_string(expr.type.scale));
    } else if (isMoney(expr.type)) {
        write("tm_moneytext(");
        expression(expr);
        write(", ");
        if (style != nullptr) {
            expression(*style);
        } else {
            write("0");
        }
    } else if (of == TypeClass::Date || (of == TypeClass::Floating && style != nullptr)) {
        write(of == TypeClass::Date ? "tm_datetext(" : "tm_floattext(");
        expression(expr);
        write(", ");
        if (style != nullptr) {
            expression(*style);
        } else {
            write(expr.type.kind == TypeKind::Date ? "23" : expr.type.kind == TypeKind::Time ? "108" : "0");
        }
    } else {
        write(target.kind == TypeKind::Char || target.kind == TypeKind::VarChar ? "tm_varchar(" : "tm_nvarchar(");
        expression(expr);
    }
    write(", " + std::to_string(target.length) + ")");
}

// --- CAST and CONVERT --------------------------------------------------------------------------

void Emitter::cast(const CastExpr& cast, Binding need)
{
    if (cast.value->type.kind == TypeKind::Null) return expression(*cast.value, need);
    switch (classOf(cast.target)) {
    case TypeClass::Text: return castText(cast, need);
    case TypeClass::Date: return castDate(cast, need);
    case TypeClass::Guid:
        write("tm_nvarchar(");
        expression(*cast.value);
        write(", 36)");
        return;
    case TypeClass::Binary: source_.unsupported(cast.offset, "A conversion to a binary type");
    default: castNumber(cast, need);
    }
}

/// CAST cuts a text that is too long without an error, unlike an assignment. A text that fits by its type is not
/// touched. CHAR and NCHAR pad as well, around the rest.
void Emitter::castText(const CastExpr& cast, Binding need)
{
    const Expr& value = *cast.value;
    const Type& target = cast.target;
    const bool padded = isPadded(target);
    if (padded) conversionCall(target);
    if (isText(value.type)) {
        const bool fits = target.length < 0 || (value.type.length >= 0 && value.type.length <= target.length);
        if (!fits && !padded) write("tm_nvarchar(");
        expression(value, fits && !padded ? need : Binding::None);
        if (!fits && !padded) write(", " + std::to_string(target.length) + ")");
    } else if (value.type.kind == TypeKind::Unknown && cast.style != nullptr) {
        write("tm_datetext(");
        expression(value);
        write(", ");
        expression(*cast.style);
        write(", " + std::to_string(target.length) + ")");
    } else {
        textOf(value, cast.style, target);
    }
    if (padded) write(", " + std::to_string(target.length) + ")");
}

/// A style determines the order of day, month and year in a text. A constant without a style is converted at once.
void Emitter::castDate(const CastExpr& cast, Binding need)
{
    const Expr& value = *cast.value;
    const bool text = isText(value.type) || value.type.kind == TypeKind::Unknown;
    if (value.type == cast.target) return expression(value, need);
    if (cast.style == nullptr && literalAs(value, cast.target, BadDate::LeftToRunTime)) return;
    conversionCall(cast.target);
    if (text && cast.style != nullptr) {
        write("tm_datetimestyle(");
        expression(value);
        write(", ");
        expression(*cast.style);
        write(")");
    } else {
        expression(value);
    }
    write(")");
}

/// Like an assignment to a column of that type, but a widened value and a whole literal as float need no function.
void Emitter::castNumber(const CastExpr& cast, Binding need)
{
    const Expr& value = *cast.value;
    const Type& target = cast.target;
    const bool widens = isWhole(target) && isWhole(value.type) && target.kind != TypeKind::Bit &&
                        largestMagnitude(value.type.kind) <= largestMagnitude(target.kind);
    if (value.type == target || widens) return expression(value, need);
    if (value.kind == ExprKind::Number && target.kind == TypeKind::Float) {
        if (!literalAs(value, target, BadDate::LeftToRunTime)) expression(value, need);
        return;
    }
    conversionCall(target);
    if (isDate(value.type) && isWhole(target)) {
        wholeDays(value);
    } else if (isDate(value.type)) {
        dayNumber(value);
    } else {
        wholeOperand(value, target);
    }
    conversionEnd(target);
}

/// A decimal is stored as a binary fraction. It is rounded to its scale before it is truncated to a whole number;
/// otherwise 0.29 * 100 would become 28. An amount of money is rounded to a whole one.
void Emitter::wholeOperand(const Expr& expr, const Type& target)
{
    if (isWhole(target) && target.kind != TypeKind::Bit && isMoney(expr.type)) {
        write("ROUND(");
        expression(expr);
        write(", 0)");
        return;
    }
    const bool fixed = isWhole(target) && expr.type.kind == TypeKind::Decimal && expr.kind != ExprKind::Number;
    if (fixed) write("tm_decimal(");
    expression(expr);
    if (fixed) write(", 38, " + std::to_string(expr.type.scale) + ")");
}

// --- assignment --------------------------------------------------------------------------------

/// Refuses a text constant that is too long at translation, where table and column are known for the message. Lengths
/// are in code points; trailing blanks do not count.
void Emitter::checkLiteralLength(const Expr& expr, const TableColumn& column, const Table& table) const
{
    if (expr.kind != ExprKind::Text || column.type.length < 0) return;
    std::string value = textValue(tsql::as<TextExpr>(expr).raw);
    value.erase(value.find_last_not_of(' ') + 1);
    std::int32_t length = 0;
    for (const char c : value)
        length += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
    if (length <= column.type.length) return;
    source_.refuse(expr.offset, 2628,
                   "String or binary data would be truncated in table '" + table.name + "', column '" + column.name +
                       "'. Truncated value: '" + value.substr(0, 100) + "'.",
                   "22001");
}

/// Writes `operand` inside the check of the length and, for CHAR and NCHAR, the padding. TEXT and (MAX) have no limit.
void Emitter::storeText(const TableColumn& column, auto&& operand)
{
    const bool padded = isPadded(column.type);
    if (padded) write("tm_nchar(");
    if (column.type.length >= 0) write("tm_store_text(");
    operand();
    if (column.type.length >= 0) write(", " + std::to_string(column.type.length) + ")");
    if (padded) write(", " + std::to_string(column.type.length) + ")");
}

/// Leaves the conversion out where the type alone shows that the value fits. A parameter is always converted: its type
/// is not known at translation.
void Emitter::assigned(const Expr& expr, const TableColumn& column, const Table& table)
{
    const Type& target = column.type;
    const Type& given = expr.type;
    if (given.kind == TypeKind::Null || isOpen(target)) return expression(expr);
    if (isText(target)) {
        checkLiteralLength(expr, column, table);
        const bool fits = isText(given) && !isPadded(target) &&
                          (target.length < 0 || (given.length >= 0 && given.length <= target.length));
        if (fits) return expression(expr);
        storeText(column, [&] { asText(expr); });
        return;
    }
    if (given == target && expr.kind != ExprKind::Parameter) return expression(expr);
    if (literalAs(expr, target, BadDate::Refused)) return;
    const bool widens = isWhole(target) && isWhole(given) && target.kind != TypeKind::Bit &&
                        largestMagnitude(given.kind) <= largestMagnitude(target.kind);
    const std::int64_t most = largestMagnitude(target.kind) - (target.kind == TypeKind::Bit ? 0 : 1);
    const bool smallLiteral =
        expr.kind == ExprKind::Number && isWhole(target) && expr.magnitude >= 0 && expr.magnitude <= most;
    const bool free = (target.kind == TypeKind::Float && isNumber(given)) || fitsDecimal(given, target);
    if (widens || smallLiteral || free || classOf(target) == TypeClass::Binary) return expression(expr);
    if (isNumber(target) && isDate(given)) {
        source_.refuse(expr.offset, 257,
                       "Implicit conversion from data type " + typeName(given) + " to " + typeName(target) +
                           " is not allowed. Use the CONVERT function to run this query.");
    }
    conversionCall(target);
    wholeOperand(expr, target);
    conversionEnd(target);
}

/// Builds a column reference to the inner query "~q" and treats it as any other expression.
void Emitter::assignedColumn(std::string_view name, const Type& type, const TableColumn& column, const Table& table)
{
    ColumnExpr reference{};
    Source inner{};
    OutputColumn output{name, type};
    inner.outputs = {&output, 1};
    inner.name.text = "~q";
    reference.kind = ExprKind::Column;
    reference.type = type;
    reference.source = &inner;
    assigned(reference, column, table);
}

} // namespace tamarok::embedded::translation
