#include <algorithm>

#include "tamarok_tsql/builtins.h"
#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

namespace tamarok::embedded::translation {

bool Emitter::open(Binding own, Binding need)
{
    const bool opens = own < need;
    if (opens) out_ += '(';
    return opens;
}

namespace {

/// Names the construct, if it is one that nests others.
NestingLevel levelOf(const Expr& expr, Nesting& nesting, const std::string& text)
{
    const bool named = expr.kind == ExprKind::Function;
    return {nesting, text, expr.offset, constructName(expr.kind),
            named ? tsql::as<FunctionExpr>(expr).builtin->name : std::string_view{}};
}

} // namespace

/// Writes an expression in its own type. DEFAULT does not get here: INSERT leaves its column out, and the binder
/// refuses it elsewhere.
void Emitter::expression(const Expr& expr, Binding need)
{
    source_.work();
    checkLength(expr.offset);
    const NestingLevel level = levelOf(expr, nested_, out_);
    switch (expr.kind) {
    case ExprKind::Null:
    case ExprKind::Default: write("NULL"); break;
    case ExprKind::Number: write(tsql::as<NumberExpr>(expr).text); break;
    case ExprKind::Text: write(tsql::as<TextExpr>(expr).raw); break;
    case ExprKind::Parameter:
        write("?");
        parameters_.push_back(tsql::as<ParameterExpr>(expr).index);
        break;
    case ExprKind::System: system(tsql::as<SystemExpr>(expr)); break;
    case ExprKind::RowNum:
    case ExprKind::Column: column(tsql::as<ColumnExpr>(expr)); break;
    case ExprKind::Unary: unary(tsql::as<UnaryExpr>(expr), need); break;
    case ExprKind::Binary: binary(tsql::as<BinaryExpr>(expr), need); break;
    case ExprKind::Compare: compare(tsql::as<BinaryExpr>(expr), need); break;
    case ExprKind::And:
    case ExprKind::Or: chain(tsql::as<ChainExpr>(expr), need); break;
    case ExprKind::Not: negation(tsql::as<NotExpr>(expr), need); break;
    case ExprKind::Between: between(tsql::as<BetweenExpr>(expr), need); break;
    case ExprKind::InList: inList(tsql::as<InListExpr>(expr), need); break;
    case ExprKind::InQuery: inQuery(tsql::as<InQueryExpr>(expr), need); break;
    case ExprKind::Like: like(tsql::as<LikeExpr>(expr), need); break;
    case ExprKind::IsNull: isNull(tsql::as<IsNullExpr>(expr), need); break;
    case ExprKind::Exists:
        write("EXISTS (");
        query(*tsql::as<QueryExpr>(expr).query, Naming::None);
        write(")");
        break;
    case ExprKind::Subquery: scalarQuery(tsql::as<QueryExpr>(expr)); break;
    case ExprKind::Case: caseOf(tsql::as<CaseExpr>(expr)); break;
    case ExprKind::Cast: cast(tsql::as<CastExpr>(expr), need); break;
    case ExprKind::IsNullCall: isNullCall(tsql::as<CallExpr>(expr)); break;
    case ExprKind::Coalesce: coalesce(tsql::as<CallExpr>(expr), need); break;
    case ExprKind::NullIf: nullIf(tsql::as<CallExpr>(expr)); break;
    case ExprKind::Function: function(tsql::as<FunctionExpr>(expr)); break;
    }
}

/// "table"."column"; the binder's pseudo-columns (SYSDATE) have no source. Columns that come out of the inner query for
/// ROWNUM are named "table.column" there, and columns of a derived table with a column list "c1", "c2", ...
void Emitter::column(const ColumnExpr& column)
{
    const Source* source = column.source;
    if (source == nullptr) {
        write("GETDATE()");
        return;
    }
    if (comesFromLimitedRows(*source)) {
        write("\"~r\".");
        writeName(std::string(source->name.text) + "." +
                  std::string(source->columnName(static_cast<std::size_t>(column.column))));
        return;
    }
    sourceColumn(*source, column.column);
}

void Emitter::sourceColumn(const Source& source, std::int32_t column)
{
    if (const JoinLevel* const level = nestedLevel(source)) {
        passedColumn(*level, {source.number, column, &source});
        return;
    }
    const auto index = static_cast<std::size_t>(column);
    if (!unqualified_) {
        writeName(source.name.text);
        out_ += '.';
    }
    if (source.renamed) {
        write("\"c" + std::to_string(index + 1) + "\"");
    } else {
        writeName(source.columnName(index));
    }
}

/// @@IDENTITY is the last rowid inserted by this connection, @@ROWCOUNT the number of rows changed last.
void Emitter::system(const SystemExpr& system)
{
    write(sameName(system.name, "@@IDENTITY") ? "last_insert_rowid()" : "changes()");
}

// --- collation ---------------------------------------------------------------------------------

bool Emitter::needsCollation(const Expr& expr)
{
    const TypeClass of = classOf(expr.type);
    return of == TypeClass::Text || of == TypeClass::Guid || expr.type.kind == TypeKind::Unknown;
}

/// SQLite takes the collation of a comparison from a plain column of a table, since it is declared with the column. For
/// any other expression, and for a column of a subquery, COLLATE is written. A column that passes through nested joins
/// keeps its collation.
bool Emitter::bringsCollation(const Expr& expr) const
{
    if (expr.kind != ExprKind::Column) return false;
    const Source* source = tsql::as<ColumnExpr>(expr).source;
    return source != nullptr && source->table != nullptr && !comesFromLimitedRows(*source);
}

void Emitter::collated(const Expr& expr)
{
    const bool collate = needsCollation(expr) && !bringsCollation(expr);
    expression(expr, collate ? Binding::Collate : Binding::None);
    if (collate) write(" COLLATE TAMAROK");
}

void Emitter::operand(const Expr& expr, const Type& common, bool collate, Binding need)
{
    as(expr, common, BadDate::Refused, collate ? Binding::Collate : need);
    if (collate) write(" COLLATE TAMAROK");
}

// --- conditions --------------------------------------------------------------------------------

namespace {

std::string_view comparisonText(TokenKind op)
{
    switch (op) {
    case TokenKind::Equal: return " = ";
    case TokenKind::NotEqual: return " <> ";
    case TokenKind::Less: return " < ";
    case TokenKind::LessEqual: return " <= ";
    case TokenKind::Greater: return " > ";
    default: return " >= ";
    }
}

/// The comparison with its sides exchanged.
TokenKind turnedRound(TokenKind op)
{
    switch (op) {
    case TokenKind::Less: return TokenKind::Greater;
    case TokenKind::LessEqual: return TokenKind::GreaterEqual;
    case TokenKind::Greater: return TokenKind::Less;
    case TokenKind::GreaterEqual: return TokenKind::LessEqual;
    default: return op;
    }
}

bool isTextual(const Type& type)
{
    return isText(type) || classOf(type) == TypeClass::Guid;
}

} // namespace

bool Emitter::needsOperandCollation(const CaseExpr& expr) const
{
    return isTextual(expr.common) && !bringsCollation(*expr.operand);
}

/// Both sides are brought to their common type; SQLite would otherwise compare storage classes, in which any number is
/// less than any text. If both types are known at run time only, tm_compare decides then. Where neither side is such a
/// column, COLLATE on the left side decides.
void Emitter::compare(const BinaryExpr& compare, Binding need)
{
    const bool equality = compare.op == TokenKind::Equal || compare.op == TokenKind::NotEqual;
    const bool opened = open(equality ? Binding::Equality : Binding::Relation, need);
    const Expr& left = *compare.left;
    const Expr& right = *compare.right;
    const Type common = unify(left.type, right.type);
    if (left.type.kind == TypeKind::Unknown && right.type.kind == TypeKind::Unknown) {
        write("tm_compare(");
        expression(left);
        write(", ");
        expression(right);
        write(")");
        write(comparisonText(compare.op));
        write("0");
        return close(opened);
    }
    // A deep subquery goes to the left, where it has two symbols of the parser less around it.
    const bool turned = right.kind == ExprKind::Subquery && nested_.level >= Nesting::deep;
    const bool collate = isTextual(common) && !bringsCollation(left) && !bringsCollation(right);
    operand(turned ? right : left, common, collate);
    write(comparisonText(turned ? turnedRound(compare.op) : compare.op));
    operand(turned ? left : right, common, false);
    close(opened);
}

/// NOT binds less tightly than the predicates, which so need no parentheses behind it.
void Emitter::negation(const NotExpr& negation, Binding need)
{
    const bool opened = open(Binding::Not, need);
    write("NOT ");
    expression(*negation.operand, Binding::Not);
    close(opened);
}

void Emitter::isNull(const IsNullExpr& isNull, Binding need)
{
    const bool opened = open(Binding::Equality, need);
    expression(*isNull.value, Binding::Bitwise);
    write(isNull.negated ? " IS NOT NULL" : " IS NULL");
    close(opened);
}

/// All three operands have one common type. The collation of the left operand counts for both bounds.
void Emitter::between(const BetweenExpr& between, Binding need)
{
    const Type common = unify(unify(between.value->type, between.low->type), between.high->type);
    const bool opened = open(Binding::Equality, need);
    operand(*between.value, common, isTextual(common) && !bringsCollation(*between.value));
    write(between.negated ? " NOT BETWEEN " : " BETWEEN ");
    operand(*between.low, common, false);
    write(" AND ");
    operand(*between.high, common, false);
    close(opened);
}

/// SQLite uses the collation of the left operand for all items.
void Emitter::inList(const InListExpr& in, Binding need)
{
    const bool opened = open(Binding::Equality, need);
    operand(*in.value, in.common, isTextual(in.common) && !bringsCollation(*in.value));
    write(in.negated ? " NOT IN (" : " IN (");
    bool first = true;
    for (const Expr* item : in.items) {
        if (!first) write(", ");
        first = false;
        operand(*item, in.common, false, Binding::None);
    }
    write(")");
    close(opened);
}

void Emitter::inQuery(const InQueryExpr& in, Binding need)
{
    const bool opened = open(Binding::Equality, need);
    operand(*in.value, in.common, isTextual(in.common) && !bringsCollation(*in.value));
    write(in.negated ? " NOT IN (" : " IN (");
    query(*in.query, Naming::None);
    write(")");
    close(opened);
}

/// SQLite's LIKE knows no character classes, and folds the case of ASCII letters only. Trailing blanks of the value are
/// ignored in a match of non- Unicode texts only, as on the server, hence two functions.
void Emitter::like(const LikeExpr& like, Binding need)
{
    const bool opened = like.negated && open(Binding::Not, need);
    const bool national = isNational(like.value->type) || isNational(like.pattern->type);
    if (like.negated) write("NOT ");
    write(national ? "tm_nlike(" : "tm_like(");
    asText(*like.value);
    write(", ");
    asText(*like.pattern);
    write(", ");
    if (like.escape != nullptr) {
        asText(*like.escape);
    } else {
        write("''");
    }
    write(")");
    close(opened);
}

// --- choices -----------------------------------------------------------------------------------

/// ISNULL has the type of its first argument, so that a longer second text is cut to its length. Required by the
/// server's rule; COALESCE does not cut.
void Emitter::isNullCall(const CallExpr& call)
{
    write("ifnull(");
    expression(*call.arguments[0]);
    write(", ");
    const Expr& other = *call.arguments[1];
    const bool cut = isText(call.type) && call.type.length >= 0 && isText(other.type) &&
                     (other.type.length < 0 || other.type.length > call.type.length);
    if (cut) {
        write("tm_nvarchar(");
        expression(other);
        write(", " + std::to_string(call.type.length) + ")");
    } else {
        as(other, call.type);
    }
    write(")");
}

/// SQLite's coalesce needs at least two arguments.
void Emitter::coalesce(const CallExpr& call, Binding need)
{
    if (call.arguments.size() == 1) return as(*call.arguments[0], call.type, BadDate::LeftToRunTime, need);
    longCall("coalesce", call.arguments.size(), [&](std::size_t index) { as(*call.arguments[index], call.type); });
}

/// SQLite's nullif compares without conversion to a common type. Where one is needed, tm_nullif compares, so that the
/// first operand is written once: a CASE would double it with each level.
void Emitter::nullIf(const CallExpr& call)
{
    const Expr& value = *call.arguments[0];
    const Expr& other = *call.arguments[1];
    const Type common = unify(value.type, other.type);
    const bool sameForm = value.type.kind == TypeKind::Null || classOf(value.type) == classOf(common) ||
                          (isNumber(value.type) && isNumber(common));
    if (sameForm && common.kind != TypeKind::Unknown) {
        const bool collate = isTextual(common) && !bringsCollation(value);
        write("nullif(");
        expression(value, collate ? Binding::Collate : Binding::None);
        if (collate) write(" COLLATE TAMAROK");
    } else {
        write("tm_nullif(");
        expression(value);
    }
    write(", ");
    operand(other, common, false, Binding::None);
    write(")");
}

// --- arithmetic --------------------------------------------------------------------------------

namespace {

/// Whether the type holds the negative of every possible value: the smallest whole number has no counterpart. It is no
/// result of another minus.
bool isNegatable(const UnaryExpr& unary)
{
    const Expr& operand = *unary.operand;
    if (operand.kind == ExprKind::Unary && tsql::as<UnaryExpr>(operand).op == TokenKind::Minus) return true;
    const std::int64_t magnitude = unary.operand->magnitude;
    return !isWhole(unary.type) || (magnitude >= 0 && magnitude < largestMagnitude(unary.type.kind));
}

} // namespace

/// ~ of a bit is 0 or 1 on the server; SQLite's ~ would make it -1 or -2. A blank keeps two minus signs apart, which
/// would begin a comment.
void Emitter::unary(const UnaryExpr& unary, Binding need)
{
    if (unary.op == TokenKind::Minus && !isNegatable(unary)) return checkedMinus(unary);
    const bool bit = unary.op == TokenKind::Tilde && unary.type.kind == TypeKind::Bit;
    const bool opened = open(bit ? Binding::Sum : Binding::Sign, need);
    write(bit ? "1 - " : unary.op == TokenKind::Tilde ? "~" : "-");
    if (unary.operand->kind == ExprKind::Unary) write(" ");
    expression(*unary.operand, bit ? Binding::Product : Binding::Sign);
    close(opened);
}

namespace {

Binding bindingOf(TokenKind op)
{
    switch (op) {
    case TokenKind::Plus:
    case TokenKind::Minus: return Binding::Sum;
    case TokenKind::Ampersand:
    case TokenKind::Bar: return Binding::Bitwise;
    default: return Binding::Product;
    }
}

/// What the right operand must do so that operators of one rank group from the left.
Binding tighterThan(Binding binding)
{
    return static_cast<Binding>(static_cast<int>(binding) + 1);
}

} // namespace

void Emitter::infix(const BinaryExpr& binary, std::string_view op, const Type& type, Binding need)
{
    const Binding own = bindingOf(binary.op);
    const bool opened = open(own, need);
    as(*binary.left, type, BadDate::LeftToRunTime, own);
    write(op);
    as(*binary.right, type, BadDate::LeftToRunTime, tighterThan(own));
    close(opened);
}

void Emitter::call(std::string_view function, const Expr& left, const Expr& right, const Type& type)
{
    write(function);
    write("(");
    as(left, type);
    write(", ");
    as(right, type);
    write(")");
}

/// The binder has put the type of the result into the node, which determines what + and the others mean here.
void Emitter::binary(const BinaryExpr& binary, Binding need)
{
    if (isText(binary.type)) {
        joinTexts(binary, need);
    } else if (isDate(binary.type)) {
        dateArithmetic(binary);
    } else if (isSmall(binary.type)) {
        smallArithmetic(binary, need);
    } else if (isMoney(binary.type)) {
        arithmeticChain(binary);
    } else if (isWhole(binary.type) || binary.type.kind == TypeKind::Null) {
        wholeArithmetic(binary, need);
    } else if (binary.type.kind == TypeKind::Unknown) {
        openArithmetic(binary);
    } else {
        fractionArithmetic(binary, need);
    }
}

/// The functions look at the storage classes when they run. Bitwise operators have only whole operands and need none.
void Emitter::openArithmetic(const BinaryExpr& binary)
{
    std::string_view function;
    switch (binary.op) {
    case TokenKind::Plus: function = "tm_add"; break;
    case TokenKind::Minus: function = "tm_sub"; break;
    case TokenKind::Star: function = "tm_mul"; break;
    case TokenKind::Slash: function = "tm_div"; break;
    case TokenKind::Percent: function = "tm_mod"; break;
    default: return wholeArithmetic(binary, Binding::Primary);
    }
    write(function);
    write("(");
    expression(*binary.left);
    write(", ");
    expression(*binary.right);
    write(")");
}

namespace {

/// An operator on whole numbers: its plain form, and the functions that raise errors 8115 and 8134 for int and bigint.
/// SQLite turns an overflow into a REAL and a division by zero into NULL, and has no exclusive or.
struct WholeOperator {
    TokenKind op;
    std::string_view plain;
    std::string_view checked;
    std::string_view checkedBig;
};

constexpr WholeOperator wholeOperators[] = {
    {TokenKind::Plus, " + ", "tm_iadd", "tm_badd"},
    {TokenKind::Minus, " - ", "tm_isub", "tm_bsub"},
    {TokenKind::Star, " * ", "tm_imul", "tm_bmul"},
    {TokenKind::Slash, " / ", "tm_idiv", "tm_bdiv"},
    {TokenKind::Percent, " % ", "tm_imod", "tm_bmod"},
    {TokenKind::Ampersand, " & ", {}, {}},
    {TokenKind::Bar, " | ", {}, {}},
    {TokenKind::Caret, {}, "tm_xor", "tm_xor"},
};

bool isNonZero(const Expr& expr)
{
    return expr.kind == ExprKind::Number && tsql::as<NumberExpr>(expr).text.find_first_of("123456789") <
                                                tsql::as<NumberExpr>(expr).text.find_first_of("eE");
}

} // namespace

namespace {

const WholeOperator& wholeOperator(TokenKind op)
{
    return *std::ranges::find(wholeOperators, op, &WholeOperator::op);
}

/// Whether nothing can go wrong: the bound magnitude of the result fits, or the divisor is a constant other than 0.
bool isSafe(const BinaryExpr& binary)
{
    const bool divides = binary.op == TokenKind::Slash || binary.op == TokenKind::Percent;
    if (divides) return isNonZero(*binary.right);
    const WholeOperator& row = wholeOperator(binary.op);
    return row.checked.empty() || (!row.plain.empty() && binary.magnitude >= 0);
}

/// The node as an operator of + - * / % that computes in whole numbers of the type; nullptr if it is none.
const BinaryExpr* wholeStep(const Expr& expr, const Type& type)
{
    if (expr.kind != ExprKind::Binary || !(expr.type == type)) return nullptr;
    const auto& binary = tsql::as<BinaryExpr>(expr);
    const WholeOperator& row = wholeOperator(binary.op);
    return row.plain.empty() || row.checked.empty() ? nullptr : &binary;
}

} // namespace

/// Safe operations are written plainly. Checked ones that follow each other are written as one flat call, since each
/// call inside another takes three symbols of SQLite's parser.
void Emitter::wholeArithmetic(const BinaryExpr& binary, Binding need)
{
    const WholeOperator& row = wholeOperator(binary.op);
    const bool big = binary.type.kind == TypeKind::BigInt;
    if (isSafe(binary)) return infix(binary, row.plain, binary.type, need);
    std::vector<const BinaryExpr*> steps;
    for (const BinaryExpr* step = wholeStep(binary, binary.type); step != nullptr;
         step = wholeStep(*step->left, binary.type)) {
        steps.push_back(step);
    }
    if (steps.size() > 1 && isWhole(binary.type)) {
        return flatCall(big ? "tm_bigint_chain" : "tm_int_chain", steps, binary.type);
    }
    call(big ? row.checkedBig : row.checked, *binary.left, *binary.right, binary.type);
}

namespace {

/// A sum, difference or product of decimals.
bool isDecimalTerm(const Expr& expr)
{
    if (expr.kind != ExprKind::Binary || expr.type.kind != TypeKind::Decimal) return false;
    const TokenKind op = tsql::as<BinaryExpr>(expr).op;
    return op == TokenKind::Plus || op == TokenKind::Minus || op == TokenKind::Star;
}

} // namespace

/// An operand of decimal arithmetic: rounding once, around the outermost operation, is enough.
void Emitter::term(const Expr& expr, const Type& type, Binding need)
{
    if (isDecimalTerm(expr)) {
        const bool opened = open(bindingOf(tsql::as<BinaryExpr>(expr).op), need);
        decimalTerm(tsql::as<BinaryExpr>(expr));
        close(opened);
    } else {
        as(expr, type, BadDate::LeftToRunTime, need);
    }
}

void Emitter::decimalTerm(const BinaryExpr& binary)
{
    const Type operandType = unify(binary.left->type, binary.right->type);
    const Binding own = bindingOf(binary.op);
    term(*binary.left, operandType, own);
    write(binary.op == TokenKind::Plus ? " + " : binary.op == TokenKind::Minus ? " - " : " * ");
    term(*binary.right, operandType, tighterThan(own));
}

/// Decimals are stored as binary fractions. Results are therefore brought to their decimal places: the server rounds
/// products and truncates quotients.
void Emitter::fractionArithmetic(const BinaryExpr& binary, Binding need)
{
    const Expr& left = *binary.left;
    const Expr& right = *binary.right;
    const Type operandType = unify(left.type, right.type);
    const bool fixed = binary.type.kind == TypeKind::Decimal;
    const bool divides = binary.op == TokenKind::Slash;
    if (fixed) write(divides ? "tm_decimal_cut(" : "tm_decimal(");
    const Binding inner = fixed ? Binding::None : need;
    if (binary.op == TokenKind::Percent) {
        call("tm_fmod", left, right, operandType);
    } else if (!divides) {
        const bool opened = open(bindingOf(binary.op), inner);
        decimalTerm(binary);
        close(opened);
    } else if (isNonZero(right)) {
        infix(binary, " / ", makeType(TypeKind::Float), inner);
    } else {
        call("tm_fdiv", left, right, operandType);
    }
    if (fixed) {
        write(", " + std::to_string(binary.type.precision) + ", " + std::to_string(binary.type.scale) + ")");
    }
}

/// A date as days from 1900-01-01.
void Emitter::dayNumber(const Expr& expr)
{
    write("tm_datediff_days(");
    as(expr, makeType(TypeKind::DateTime));
    write(", '1900-01-01 00:00:00.000')");
}

/// Date plus or minus a number moves by days; the number may itself be a date, which then counts as days from
/// 1900-01-01. Date minus date is the difference in days as a datetime, as on the server.
void Emitter::dateArithmetic(const BinaryExpr& binary)
{
    const Expr& left = *binary.left;
    const Expr& right = *binary.right;
    const bool minus = binary.op == TokenKind::Minus;
    const auto isMoment = [](const Expr& expr) { return isDate(expr.type) || isText(expr.type); };
    if (isMoment(left) && isMoment(right) && minus) {
        write("tm_datetime(tm_datediff_days(");
        as(left, makeType(TypeKind::DateTime));
        write(", ");
        as(right, makeType(TypeKind::DateTime));
        write("))");
        return;
    }
    const Expr& moment = isMoment(left) ? left : right;
    const Expr& days = isMoment(left) ? right : left;
    if (minus && !isMoment(left)) {
        write("tm_datetime(");
        expression(left, Binding::Sum);
        write(" - ");
        dayNumber(right);
        write(")");
        return;
    }
    write("tm_dateadd_days(");
    as(moment, makeType(TypeKind::DateTime));
    write(minus ? ", -" : ", ");
    if (isMoment(days)) {
        dayNumber(days);
    } else {
        expression(days, minus ? Binding::Primary : Binding::None);
    }
    write(")");
}

} // namespace tamarok::embedded::translation
