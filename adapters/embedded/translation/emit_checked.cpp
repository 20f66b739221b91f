#include <array>

#include "tamarok_tsql/builtins.h"
#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

/// Expressions whose results the server checks, or counts, in a way that SQLite does not: numbers that may leave their
/// type, amounts of money, bytes of a value, subqueries for one value.
namespace tamarok::embedded::translation {

namespace {

/// An operator, and the functions that compute it in 32 bits and on amounts of money.
struct CheckedOperator {
    TokenKind op;
    std::string_view whole;
    std::string_view money;
};

constexpr std::array checkedOperators{
    CheckedOperator{TokenKind::Plus, "tm_iadd", "tm_money_add"},
    CheckedOperator{TokenKind::Minus, "tm_isub", "tm_money_sub"},
    CheckedOperator{TokenKind::Star, "tm_imul", "tm_money_mul"},
    CheckedOperator{TokenKind::Slash, "tm_idiv", "tm_money_div"},
    CheckedOperator{TokenKind::Percent, "tm_imod", "tm_money_mod"},
};

/// nullptr for the bitwise operators, whose results fit always.
const CheckedOperator* checkedOperator(TokenKind op)
{
    for (const CheckedOperator& row : checkedOperators) {
        if (row.op == op) return &row;
    }
    return nullptr;
}

std::string_view fitFunction(const Type& type)
{
    return type.kind == TypeKind::TinyInt ? "tm_fit_tinyint(" : "tm_fit_smallint(";
}

/// Whether DATEADD may leave the whole minutes of a smalldatetime.
bool addsLessThanMinute(const FunctionExpr& function)
{
    if (function.builtin->name != "DATEADD") return false;
    const std::string_view part = findDatePart(tsql::as<ColumnExpr>(*function.arguments[0]).name.text);
    return part == "second" || part == "millisecond";
}

/// Whether the result of the function may be beyond the type of the call. The functions themselves compute in 64 bits
/// and in floating point.
bool mayLeaveType(const FunctionExpr& function)
{
    const Type& type = function.type;
    const std::string_view name = function.builtin->name;
    if (type.kind == TypeKind::SmallDateTime) return addsLessThanMinute(function);
    const bool whole = type.kind == TypeKind::Int;
    if (!whole && type.kind != TypeKind::Decimal && !isMoney(type)) return false;
    if (computesLikeArgument(*function.builtin)) return true;
    // Places to the right of the point change no whole number.
    if (name == "ROUND") return !whole || function.arguments[1]->kind != ExprKind::Number;
    if (name != "ABS" || !whole) return false;
    const std::int64_t magnitude = function.arguments[0]->magnitude;
    return magnitude < 0 || magnitude >= largestMagnitude(TypeKind::Int);
}

} // namespace

/// The server computes tinyint and smallint in their own type, so that each operation may overflow.
void Emitter::smallArithmetic(const BinaryExpr& binary, Binding need)
{
    const CheckedOperator* row = checkedOperator(binary.op);
    const bool divides = binary.op == TokenKind::Slash || binary.op == TokenKind::Percent;
    if (row == nullptr || (binary.magnitude >= 0 && !divides)) return wholeArithmetic(binary, need);
    const bool tiny = binary.type.kind == TypeKind::TinyInt;
    if (chained(binary, "+-*/%", tiny ? "tm_tinyint_chain" : "tm_smallint_chain")) return;
    write(fitFunction(binary.type));
    call(row->whole, *binary.left, *binary.right, binary.type);
    write(")");
}

/// Amounts have four decimal places: the server rounds products and cuts quotients.
void Emitter::moneyArithmetic(const BinaryExpr& binary)
{
    const bool small = binary.type.kind == TypeKind::SmallMoney;
    if (chained(binary, "+-", small ? "tm_smallmoney_chain" : "tm_money_chain")) return;
    if (small) write("tm_smallmoney(");
    call(checkedOperator(binary.op)->money, *binary.left, *binary.right, binary.type);
    if (small) write(")");
}

void Emitter::checkedMinus(const UnaryExpr& unary)
{
    const bool small = isSmall(unary.type);
    if (small) write(fitFunction(unary.type));
    write(unary.type.kind == TypeKind::BigInt ? "tm_bsub(0, " : "tm_isub(0, ");
    expression(*unary.operand);
    write(small ? "))" : ")");
}

void Emitter::wholeDays(const Expr& expr)
{
    write("FLOOR(0.5 + ");
    dayNumber(expr);
    write(")");
}

/// A result that may leave the type of the call is converted to it, which raises error 8115.
void Emitter::function(const FunctionExpr& function)
{
    if (function.builtin->name == "DATALENGTH") return dataLength(*function.arguments[0]);
    if (!mayLeaveType(function)) return uncheckedFunction(function);
    conversionCall(function.type);
    uncheckedFunction(function);
    conversionEnd(function.type);
}

/// Bytes that the server's type takes. A text has one byte or, as Unicode, two for each character; where the type is
/// not known the value decides.
void Emitter::dataLength(const Expr& value)
{
    const Type& type = value.type;
    const bool known = !isText(type) && !isOpen(type) && classOf(type) != TypeClass::Binary;
    write(known ? "tm_bytes(" : isText(type) && !isNational(type) ? "tm_characters(" : "DATALENGTH(");
    expression(value);
    if (known) write(", " + std::to_string(bytesOf(type)));
    write(")");
}

/// SQLite takes the first row of such a query and drops the others; on the server a second row is error 512. The
/// aggregate tm_only takes the value of the only row and raises the error at the second. Most queries for one value are
/// aggregates or take TOP 1, and are written as they are.
void Emitter::scalarQuery(const QueryExpr& subquery)
{
    const Query& query = *subquery.query;
    if (subquery.rows == SubqueryRows::AtMostOne) {
        write("(");
        this->query(query, Naming::None);
    } else if (subquery.rows == SubqueryRows::Any) {
        write("(SELECT tm_only(\"c1\") FROM (");
        this->query(query, Naming::Numbered);
        write(")");
    } else {
        const Expr& item = *query.outputs[0].value;
        write("(SELECT tm_only(");
        as(item, query.targets.empty() ? item.type : query.targets[0]);
        write(")");
        if (query.select->source != nullptr) write(" FROM ");
        if (query.select->source != nullptr) from(query.select->source);
        where(query.select->filter);
    }
    write(")");
}

} // namespace tamarok::embedded::translation
