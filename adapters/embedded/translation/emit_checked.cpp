#include <vector>

#include "tamarok_tsql/builtins.h"
#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

/// Expressions whose results the server checks, or counts, in a way that SQLite does not: numbers that may leave their
/// type, amounts of money, bytes of a value, subqueries for one value.
namespace tamarok::embedded::translation {

namespace {

/// The node as an operator of + - * / % that computes in the type; nullptr if it is none.
const BinaryExpr* arithmeticStep(const Expr& expr, const Type& type)
{
    if (expr.kind != ExprKind::Binary || !(expr.type == type)) return nullptr;
    const auto& binary = tsql::as<BinaryExpr>(expr);
    const bool bitwise =
        binary.op == TokenKind::Ampersand || binary.op == TokenKind::Bar || binary.op == TokenKind::Caret;
    return bitwise ? nullptr : &binary;
}

/// The function that computes a chain of operators in the type.
std::string_view chainFunction(TypeKind kind)
{
    switch (kind) {
    case TypeKind::TinyInt: return "tm_tinyint_chain";
    case TypeKind::SmallInt: return "tm_smallint_chain";
    case TypeKind::SmallMoney: return "tm_smallmoney_chain";
    default: return "tm_money_chain";
    }
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
    const bool divides = binary.op == TokenKind::Slash || binary.op == TokenKind::Percent;
    const bool fits = binary.magnitude >= 0 && !divides;
    if (fits || arithmeticStep(binary, binary.type) == nullptr) return wholeArithmetic(binary, need);
    arithmeticChain(binary);
}

/// Operators that follow each other are written as one flat call, which checks each step.
void Emitter::arithmeticChain(const BinaryExpr& binary)
{
    std::vector<const BinaryExpr*> steps;
    for (const BinaryExpr* step = arithmeticStep(binary, binary.type); step != nullptr;
         step = arithmeticStep(*step->left, binary.type)) {
        steps.push_back(step);
    }
    flatCall(chainFunction(binary.type.kind), steps, binary.type);
}

void Emitter::checkedMinus(const UnaryExpr& unary)
{
    const bool small = isSmall(unary.type);
    write(small ? chainFunction(unary.type.kind) : unary.type.kind == TypeKind::BigInt ? "tm_bsub" : "tm_isub");
    write("(0, ");
    expression(*unary.operand);
    write(small ? ", '-')" : ")");
}

void Emitter::wholeDays(const Expr& expr)
{
    write("FLOOR(0.5 + ");
    dayNumber(expr);
    write(")");
}

/// A smalldatetime stays one: it has whole minutes.
void Emitter::function(const FunctionExpr& function)
{
    if (function.builtin->name == "DATALENGTH") return dataLength(*function.arguments[0]);
    const bool rounded = function.type.kind == TypeKind::SmallDateTime && addsLessThanMinute(function);
    if (rounded) write("tm_smalldatetime(");
    uncheckedFunction(function);
    if (rounded) write(")");
}

/// The type that a result must fit into, as a further argument of the function: see functions/number_functions.cpp.
void Emitter::resultType(const FunctionExpr& function)
{
    if (!mayLeaveType(function)) return;
    const Type& type = function.type;
    if (function.builtin->name == "ROUND" && function.arguments.size() == 2) write(", 0");
    const int decimal = type.precision * 100 + type.scale;
    write(", " + std::to_string(type.kind == TypeKind::Int ? 0 : isMoney(type) ? -1 : decimal));
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
        const Joins joins(*this, query.select->source, 0, [&] { return joinUsers(query); });
        write("(SELECT tm_only(");
        as(item, query.targets.empty() ? item.type : query.targets[0]);
        write(")");
        if (query.select->source != nullptr) write(" FROM ");
        rows(query.select->source, query.select->filter);
    }
    write(")");
}

} // namespace tamarok::embedded::translation
