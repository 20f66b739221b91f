#include "tamarok_tsql/builtins.h"
#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

namespace tamarok::embedded::translation {

/// Writes an expression in its own type. DEFAULT does not get here: INSERT leaves its column out, and the binder
/// refuses it elsewhere.
void Emitter::expression(const Expr& expr)
{
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
    case ExprKind::Unary: unary(tsql::as<UnaryExpr>(expr)); break;
    case ExprKind::Binary: binary(tsql::as<BinaryExpr>(expr)); break;
    case ExprKind::Compare: compare(tsql::as<BinaryExpr>(expr)); break;
    case ExprKind::And: chain(tsql::as<ChainExpr>(expr).operands, " AND "); break;
    case ExprKind::Or: chain(tsql::as<ChainExpr>(expr).operands, " OR "); break;
    case ExprKind::Not:
        write("(NOT ");
        expression(*tsql::as<NotExpr>(expr).operand);
        write(")");
        break;
    case ExprKind::Between: between(tsql::as<BetweenExpr>(expr)); break;
    case ExprKind::InList: inList(tsql::as<InListExpr>(expr)); break;
    case ExprKind::InQuery: inQuery(tsql::as<InQueryExpr>(expr)); break;
    case ExprKind::Like: like(tsql::as<LikeExpr>(expr)); break;
    case ExprKind::IsNull:
        write("(");
        expression(*tsql::as<IsNullExpr>(expr).value);
        write(tsql::as<IsNullExpr>(expr).negated ? " IS NOT NULL)" : " IS NULL)");
        break;
    case ExprKind::Exists:
        write("EXISTS (");
        query(*tsql::as<QueryExpr>(expr).query, Naming::None);
        write(")");
        break;
    case ExprKind::Subquery: scalarQuery(tsql::as<QueryExpr>(expr)); break;
    case ExprKind::Case: caseOf(tsql::as<CaseExpr>(expr)); break;
    case ExprKind::Cast: cast(tsql::as<CastExpr>(expr)); break;
    case ExprKind::IsNullCall: isNullCall(tsql::as<CallExpr>(expr)); break;
    case ExprKind::Coalesce: coalesce(tsql::as<CallExpr>(expr)); break;
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
    const auto index = static_cast<std::size_t>(column.column);
    if (comesFromLimitedRows(*source)) {
        write("\"~r\".");
        writeName(std::string(source->name.text) + "." + std::string(source->columnName(index)));
        return;
    }
    if (!unqualified_) {
        writeName(source->name.text);
        out_ += '.';
    }
    if (source->renamed) {
        write("\"c" + std::to_string(index + 1) + "\"");
    } else {
        writeName(source->columnName(index));
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
/// any other expression, and for a column of a subquery, COLLATE is written.
bool Emitter::bringsCollation(const Expr& expr) const
{
    if (expr.kind != ExprKind::Column) return false;
    const Source* source = tsql::as<ColumnExpr>(expr).source;
    return source != nullptr && source->table != nullptr && !comesFromLimitedRows(*source);
}

void Emitter::collated(const Expr& expr)
{
    expression(expr);
    if (needsCollation(expr) && !bringsCollation(expr)) write(" COLLATE TAMAROK");
}

void Emitter::operand(const Expr& expr, const Type& common, bool collate)
{
    as(expr, common, BadDate::Refused);
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

bool isTextual(const Type& type)
{
    return isText(type) || classOf(type) == TypeClass::Guid;
}

} // namespace

/// Both sides are brought to their common type; SQLite would otherwise compare storage classes, in which any number is
/// less than any text. If both types are known at run time only, tm_compare decides then. Where neither side is such a
/// column, COLLATE on the left side decides.
void Emitter::compare(const BinaryExpr& compare)
{
    const Expr& left = *compare.left;
    const Expr& right = *compare.right;
    const Type common = unify(left.type, right.type);
    if (left.type.kind == TypeKind::Unknown && right.type.kind == TypeKind::Unknown) {
        write("(tm_compare(");
        expression(left);
        write(", ");
        expression(right);
        write(")");
        write(comparisonText(compare.op));
        write("0)");
        return;
    }
    write("(");
    operand(left, common, isTextual(common) && !bringsCollation(left) && !bringsCollation(right));
    write(comparisonText(compare.op));
    operand(right, common, false);
    write(")");
}

/// Long chains become a balanced tree: SQLite limits its depth.
void Emitter::chain(ExprList operands, std::string_view op)
{
    constexpr std::size_t flat = 64;
    write("(");
    if (operands.size() > flat) {
        const std::size_t half = operands.size() / 2;
        chain(operands.first(half), op);
        write(op);
        chain(operands.subspan(half), op);
    } else {
        bool first = true;
        for (const Expr* operand : operands) {
            if (!first) write(op);
            first = false;
            expression(*operand);
        }
    }
    write(")");
}

/// All three operands have one common type. The collation of the left operand counts for both bounds.
void Emitter::between(const BetweenExpr& between)
{
    const Type common = unify(unify(between.value->type, between.low->type), between.high->type);
    write("(");
    operand(*between.value, common, isTextual(common) && !bringsCollation(*between.value));
    write(between.negated ? " NOT BETWEEN " : " BETWEEN ");
    operand(*between.low, common, false);
    write(" AND ");
    operand(*between.high, common, false);
    write(")");
}

/// SQLite uses the collation of the left operand for all items.
void Emitter::inList(const InListExpr& in)
{
    write("(");
    operand(*in.value, in.common, isTextual(in.common) && !bringsCollation(*in.value));
    write(in.negated ? " NOT IN (" : " IN (");
    bool first = true;
    for (const Expr* item : in.items) {
        if (!first) write(", ");
        first = false;
        operand(*item, in.common, false);
    }
    write("))");
}

void Emitter::inQuery(const InQueryExpr& in)
{
    write("(");
    operand(*in.value, in.common, isTextual(in.common) && !bringsCollation(*in.value));
    write(in.negated ? " NOT IN (" : " IN (");
    query(*in.query, Naming::None);
    write("))");
}

/// SQLite's LIKE knows no character classes, and folds the case of ASCII letters only. Trailing blanks of the value are
/// ignored in a match of non- Unicode texts only, as on the server, hence two functions.
void Emitter::like(const LikeExpr& like)
{
    const bool national = isNational(like.value->type) || isNational(like.pattern->type);
    if (like.negated) write("(NOT ");
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
    write(like.negated ? "))" : ")");
}

// --- choices -----------------------------------------------------------------------------------

/// The branches are converted to the common type of all of them: SQLite would give each row the type of its branch.
void Emitter::caseOf(const CaseExpr& expr)
{
    write("(CASE ");
    if (expr.operand != nullptr) {
        operand(*expr.operand, expr.common, isTextual(expr.common) && !bringsCollation(*expr.operand));
        write(" ");
    }
    for (const CaseArm& arm : expr.arms) {
        write("WHEN ");
        if (expr.operand != nullptr) {
            operand(*arm.when, expr.common, false);
        } else {
            expression(*arm.when);
        }
        write(" THEN ");
        as(*arm.then, expr.type);
        write(" ");
    }
    if (expr.otherwise != nullptr) {
        write("ELSE ");
        as(*expr.otherwise, expr.type);
        write(" ");
    }
    write("END)");
}

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
void Emitter::coalesce(const CallExpr& call)
{
    write(call.arguments.size() == 1 ? "(" : "coalesce(");
    bool first = true;
    for (const Expr* argument : call.arguments) {
        if (!first) write(", ");
        first = false;
        as(*argument, call.type);
    }
    write(")");
}

/// SQLite's nullif would compare without conversion to a common type.
void Emitter::nullIf(const CallExpr& call)
{
    const Expr& value = *call.arguments[0];
    const Expr& other = *call.arguments[1];
    const Type common = unify(value.type, other.type);
    write("(CASE WHEN ");
    operand(value, common, isTextual(common) && !bringsCollation(value));
    write(" = ");
    operand(other, common, false);
    write(" THEN NULL ELSE ");
    expression(value);
    write(" END)");
}

// --- arithmetic --------------------------------------------------------------------------------

namespace {

/// Whether the type holds the negative of every possible value: the smallest whole number has no counterpart.
bool isNegatable(const UnaryExpr& unary)
{
    const std::int64_t magnitude = unary.operand->magnitude;
    return !isWhole(unary.type) || (magnitude >= 0 && magnitude < largestMagnitude(unary.type.kind));
}

} // namespace

/// ~ of a bit is 0 or 1 on the server; SQLite's ~ would make it -1 or -2.
void Emitter::unary(const UnaryExpr& unary)
{
    if (unary.op == TokenKind::Minus && !isNegatable(unary)) return checkedMinus(unary);
    if (unary.op == TokenKind::Tilde && unary.type.kind == TypeKind::Bit) {
        write("(1 - ");
    } else {
        write(unary.op == TokenKind::Tilde ? "(~" : "(-");
    }
    expression(*unary.operand);
    write(")");
}

void Emitter::infix(const Expr& left, std::string_view op, const Expr& right, const Type& type)
{
    write("(");
    as(left, type);
    write(op);
    as(right, type);
    write(")");
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
void Emitter::binary(const BinaryExpr& binary)
{
    if (isText(binary.type)) {
        write("(");
        asText(*binary.left);
        write(" || ");
        asText(*binary.right);
        write(")");
    } else if (isDate(binary.type)) {
        dateArithmetic(binary);
    } else if (isSmall(binary.type)) {
        smallArithmetic(binary);
    } else if (isMoney(binary.type)) {
        moneyArithmetic(binary);
    } else if (isWhole(binary.type) || binary.type.kind == TypeKind::Null) {
        wholeArithmetic(binary);
    } else if (binary.type.kind == TypeKind::Unknown) {
        openArithmetic(binary);
    } else {
        fractionArithmetic(binary);
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
    default: return wholeArithmetic(binary);
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
/// SQLite turns an overflow into a REAL and a division by zero into NULL.
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
};

bool isNonZero(const Expr& expr)
{
    return expr.kind == ExprKind::Number && tsql::as<NumberExpr>(expr).text.find_first_of("123456789") <
                                                tsql::as<NumberExpr>(expr).text.find_first_of("eE");
}

} // namespace

/// The plain operator is written where nothing can go wrong: the bound magnitude of the result fits, or the divisor is
/// a constant other than 0. SQLite has no exclusive or; a ^ b is (a | b) - (a & b).
void Emitter::wholeArithmetic(const BinaryExpr& binary)
{
    const Expr& left = *binary.left;
    const Expr& right = *binary.right;
    if (binary.op == TokenKind::Caret) {
        write("(");
        infix(left, " | ", right, binary.type);
        write(" - ");
        infix(left, " & ", right, binary.type);
        write(")");
        return;
    }
    for (const WholeOperator& row : wholeOperators) {
        if (row.op != binary.op) continue;
        const bool divides = row.op == TokenKind::Slash || row.op == TokenKind::Percent;
        const bool safe = row.checked.empty() || (divides ? isNonZero(right) : binary.magnitude >= 0);
        if (safe) {
            infix(left, row.plain, right, binary.type);
        } else {
            call(binary.type.kind == TypeKind::BigInt ? row.checkedBig : row.checked, left, right, binary.type);
        }
    }
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
void Emitter::term(const Expr& expr, const Type& type)
{
    if (isDecimalTerm(expr)) {
        decimalTerm(tsql::as<BinaryExpr>(expr));
    } else {
        as(expr, type);
    }
}

void Emitter::decimalTerm(const BinaryExpr& binary)
{
    const Type operandType = unify(binary.left->type, binary.right->type);
    write("(");
    term(*binary.left, operandType);
    write(binary.op == TokenKind::Plus ? " + " : binary.op == TokenKind::Minus ? " - " : " * ");
    term(*binary.right, operandType);
    write(")");
}

/// Decimals are stored as binary fractions. Results are therefore brought to their decimal places: the server rounds
/// products and truncates quotients.
void Emitter::fractionArithmetic(const BinaryExpr& binary)
{
    const Expr& left = *binary.left;
    const Expr& right = *binary.right;
    const Type operandType = unify(left.type, right.type);
    const bool fixed = binary.type.kind == TypeKind::Decimal;
    const bool divides = binary.op == TokenKind::Slash;
    if (fixed) write(divides ? "tm_decimal_cut(" : "tm_decimal(");
    if (binary.op == TokenKind::Percent) {
        call("tm_fmod", left, right, operandType);
    } else if (!divides) {
        decimalTerm(binary);
    } else if (isNonZero(right)) {
        infix(left, " / ", right, makeType(TypeKind::Float));
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
        expression(left);
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
        expression(days);
    }
    write(")");
}

} // namespace tamarok::embedded::translation
