#include <algorithm>
#include <bit>
#include <charconv>
#include <functional>
#include <limits>

#include "tamarok_tsql/binder.h"
#include "tamarok_tsql/builtins.h"
#include "tamarok_tsql/literals.h"
#include "tamarok_tsql/type_rules.h"
#include "tamarok_tsql/visit.h"

namespace tamarok::tsql {
namespace {

/// Folds a value into a hash. The multiplier is an odd constant with well-spread bits (2^64 divided by the golden
/// ratio).
constexpr std::uint64_t mix(std::uint64_t hash, std::uint64_t value)
{
    hash = (hash ^ value) * 0x9E3779B97F4A7C15ULL;
    return hash ^ (hash >> 32U);
}

std::uint64_t textHash(std::uint64_t hash, std::string_view text)
{
    return mix(hash, std::hash<std::string_view>{}(text));
}

/// What distinguishes a node from others of its kind with the same children.
std::uint64_t nodeHash(const Expr& expr)
{
    const auto kind = mix(14695981039346656037ULL, static_cast<std::uint64_t>(expr.kind));
    switch (expr.kind) {
    case ExprKind::Number: return textHash(kind, as<NumberExpr>(expr).text);
    case ExprKind::Text: return textHash(kind, as<TextExpr>(expr).raw);
    case ExprKind::System: return textHash(kind, as<SystemExpr>(expr).name);
    case ExprKind::Parameter: return mix(kind, static_cast<std::uint64_t>(as<ParameterExpr>(expr).index) + 1);
    case ExprKind::Column: {
        const auto& column = as<ColumnExpr>(expr);
        const std::uint64_t source = column.source == nullptr ? 0 : column.source->number;
        return mix(mix(kind, source), static_cast<std::uint64_t>(column.column) + 1);
    }
    case ExprKind::Unary: return mix(kind, static_cast<std::uint64_t>(as<UnaryExpr>(expr).op));
    case ExprKind::Binary:
    case ExprKind::Compare: return mix(kind, static_cast<std::uint64_t>(as<BinaryExpr>(expr).op));
    case ExprKind::Between: return mix(kind, as<BetweenExpr>(expr).negated ? 1 : 0);
    case ExprKind::InList: return mix(kind, as<InListExpr>(expr).negated ? 1 : 0);
    case ExprKind::Like: return mix(kind, as<LikeExpr>(expr).negated ? 1 : 0);
    case ExprKind::IsNull: return mix(kind, as<IsNullExpr>(expr).negated ? 1 : 0);
    case ExprKind::Case: return mix(kind, as<CaseExpr>(expr).operand != nullptr ? 1 : 0);
    case ExprKind::Cast: {
        const Type& type = as<CastExpr>(expr).target;
        const auto sizes = static_cast<std::uint64_t>(type.precision) << 8U | type.scale;
        return mix(mix(mix(kind, static_cast<std::uint64_t>(type.kind)), sizes),
                   static_cast<std::uint64_t>(static_cast<std::uint32_t>(type.length)));
    }
    case ExprKind::Function: {
        const auto& function = as<FunctionExpr>(expr);
        return mix(textHash(kind, function.builtin->name), (function.distinct ? 1U : 0U) + (function.star ? 2U : 0U));
    }
    default: return kind;
    }
}

bool holdsQuery(const Expr& expr)
{
    return expr.kind == ExprKind::Subquery || expr.kind == ExprKind::Exists || expr.kind == ExprKind::InQuery ||
           (expr.kind == ExprKind::Function && as<FunctionExpr>(expr).over != nullptr);
}

} // namespace

/// Two expressions with equal hashes count as the same one, which decides on error 8120 and on ORDER BY. Subqueries and
/// window functions never do: their hash contains the node's address.
void Binder::finish(Expr& expr) const
{
    expr.hash = nodeHash(expr);
    if (holdsQuery(expr)) {
        expr.hash = mix(expr.hash, std::bit_cast<std::uintptr_t>(&expr));
        return;
    }
    switch (expr.kind) {
    case ExprKind::Number:
    case ExprKind::Text:
    case ExprKind::Column: return;
    default: visitChildren(expr, [&](const Expr& child) { expr.hash = mix(expr.hash, child.hash); });
    }
}

void Binder::refuseOperand(const Expr& expr, const Type& type, std::string_view operation) const
{
    source_.refuse(expr.offset, 8117,
                   "Operand data type " + typeName(type) + " is invalid for " + std::string(operation) + " operator.");
}

/// Binds the children first, since the type of a node follows from theirs; then sets type, magnitude and hash. Kinds
/// with a scope or an order of their own have functions of their own; all others are bound by `visitChildren` in the
/// default branch.
void Binder::bindExpression(Expr& expr, Scope& scope)
{
    source_.work();
    expr.magnitude = -1;
    switch (expr.kind) {
    case ExprKind::Null: expr.type = makeType(TypeKind::Null); break;
    case ExprKind::Parameter: expr.type = {}; break;
    case ExprKind::Default:
        source_.refuse(expr.offset, messages::syntax, "Incorrect syntax near the keyword 'DEFAULT'.");
    case ExprKind::RowNum: {
        auto& column = as<ColumnExpr>(expr);
        if (!findColumn(column, scope)) {
            source_.unsupported(expr.offset, "ROWNUM other than in WHERE with = 1, < n or <= n");
        }
        break;
    }
    case ExprKind::Number: bindNumber(as<NumberExpr>(expr)); break;
    case ExprKind::Text: bindText(as<TextExpr>(expr)); break;
    case ExprKind::System: bindSystem(as<SystemExpr>(expr)); break;
    case ExprKind::Column: bindColumn(as<ColumnExpr>(expr), scope); break;
    case ExprKind::Function: bindFunction(as<FunctionExpr>(expr), scope); break;
    case ExprKind::Case: bindCase(as<CaseExpr>(expr), scope); break;
    case ExprKind::Subquery: bindScalarQuery(as<QueryExpr>(expr), scope); break;
    case ExprKind::Exists:
        bindQuery(*as<QueryExpr>(expr).query, &scope);
        checkNestedOrder(*as<QueryExpr>(expr).query);
        break;
    case ExprKind::InQuery: bindInQuery(as<InQueryExpr>(expr), scope); break;
    default:
        visitChildren(expr, [&](Expr& child) { bindExpression(child, scope); });
        if (expr.kind == ExprKind::Unary) {
            bindUnary(as<UnaryExpr>(expr));
        } else if (expr.kind == ExprKind::Binary) {
            bindBinary(as<BinaryExpr>(expr));
        } else if (expr.kind == ExprKind::InList) {
            auto& in = as<InListExpr>(expr);
            in.common = in.value->type;
            for (const Expr* item : in.items)
                in.common = unify(in.common, item->type);
        } else if (expr.kind == ExprKind::Cast) {
            checkConverted(as<CastExpr>(expr));
            expr.type = as<CastExpr>(expr).target;
        } else if (expr.kind == ExprKind::IsNullCall || expr.kind == ExprKind::Coalesce ||
                   expr.kind == ExprKind::NullIf) {
            bindCall(as<CallExpr>(expr));
        }
    }
    checkCompared(expr);
    finish(expr);
}

// --- names -------------------------------------------------------------------------------------

/// Looks for a column from the inside out: the first scope that has it wins, so that a subquery may name a column of
/// the query around it. Two sources of one scope with that column are error 209.
bool Binder::findColumn(ColumnExpr& column, Scope& scope)
{
    column.source = nullptr;
    for (Scope* level = &scope; level != nullptr; level = level->parent) {
        for (Source* source : level->sources.span()) {
            if (!column.qualifier.empty() && !(source->name == column.qualifier)) continue;
            const std::int32_t index = source->find(column.name);
            if (index < 0) {
                if (column.qualifier.empty()) continue;
                source_.refuse(column.name.offset, messages::unknownColumn,
                               "Invalid column name '" + std::string(column.name.text) + "'.", "42S22");
            }
            if (column.source != nullptr) {
                source_.refuse(column.offset, messages::ambiguousColumn,
                               "Ambiguous column name '" + std::string(column.name.text) + "'.");
            }
            column.source = source;
            column.column = index;
        }
        if (column.source == nullptr) continue;
        column.type = column.source->columnType(static_cast<std::size_t>(column.column));
        // A BIGINT may hold any 64-bit number, so nothing is known about its magnitude.
        if (isWhole(column.type) && column.type.kind != TypeKind::BigInt)
            column.magnitude = largestMagnitude(column.type.kind);
        if (level->collectUsed) level->used.push(&column);
        return true;
    }
    return false;
}

/// An unknown column with a qualifier is error 4104, one without is 207: the server tells the two apart. An existing
/// column named SYSDATE wins over the pseudo-column.
void Binder::bindColumn(ColumnExpr& column, Scope& scope)
{
    if (findColumn(column, scope) || bindPseudoColumn(column)) return;
    if (!column.qualifier.empty()) {
        source_.refuse(column.offset, messages::unresolvedName,
                       "The multi-part identifier \"" + std::string(column.qualifier.text) + "." +
                           std::string(column.name.text) + "\" could not be bound.");
    }
    source_.refuse(column.offset, messages::unknownColumn,
                   "Invalid column name '" + std::string(column.name.text) + "'.", "42S22");
}

/// Names that are calls without parentheses.
bool Binder::bindPseudoColumn(ColumnExpr& column) const
{
    if (!column.qualifier.empty()) return false;
    if (!sameName(column.name.text, "SYSDATE") && !sameName(column.name.text, "CURRENT_TIMESTAMP")) return false;
    column.column = -1;
    column.type = makeType(TypeKind::DateTime);
    return true;
}

// --- literals ----------------------------------------------------------------------------------

/// A whole literal is an int if it fits, otherwise a decimal: the server has no bigint literals. The precision of a
/// decimal counts the digits without leading zeros.
void Binder::bindNumber(NumberExpr& number) const
{
    const std::string_view digits = number.text;
    if (number.token == TokenKind::Float) {
        number.type = makeType(TypeKind::Float);
        return;
    }
    std::int64_t whole = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
    if (number.token == TokenKind::Integer && read.ec == std::errc() &&
        whole <= std::numeric_limits<std::int32_t>::max()) {
        number.type = makeType(TypeKind::Int);
        number.magnitude = whole;
        return;
    }
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t zeros = std::min(digits.find_first_not_of('0'), point);
    const std::size_t scale = point == digits.size() ? 0 : digits.size() - point - 1;
    const std::size_t precision = std::max<std::size_t>(1, point - zeros + scale);
    if (precision > 38) {
        source_.refuse(number.offset, 1007,
                       "The number '" + std::string(digits.substr(0, 60)) +
                           "' is out of the range for numeric representation (maximum precision 38).");
    }
    number.type = makeDecimal(static_cast<int>(precision), static_cast<int>(scale));
}

void Binder::bindText(TextExpr& text) const
{
    text.type = makeType(text.national ? TypeKind::NVarChar : TypeKind::VarChar, textLength(text.raw));
}

void Binder::bindSystem(SystemExpr& system) const
{
    if (sameName(system.name, "@@IDENTITY")) {
        system.type = makeType(TypeKind::BigInt);
    } else if (sameName(system.name, "@@ROWCOUNT")) {
        system.type = makeType(TypeKind::Int);
    } else {
        source_.unsupported(system.offset, std::string(system.name));
    }
}

// --- operators ---------------------------------------------------------------------------------

/// The server has no unary operator for texts and dates, and no ~ for fractions.
void Binder::bindUnary(UnaryExpr& unary)
{
    const Type& operand = unary.operand->type;
    unary.type = operand;
    const bool minus = unary.op == TokenKind::Minus;
    if (isText(operand) || isDate(operand) || (minus && operand.kind == TypeKind::Bit)) {
        refuseOperand(unary, operand, "minus");
    }
    // A tinyint has no sign.
    if (minus && operand.kind == TypeKind::TinyInt) unary.type = makeType(TypeKind::SmallInt);
    if (unary.op == TokenKind::Tilde && !isWhole(operand) && !isOpen(operand)) {
        refuseOperand(unary, operand, "'~'");
    }
    unary.magnitude = minus ? unary.operand->magnitude : -1;
}

namespace {

char operatorCharacter(TokenKind op)
{
    switch (op) {
    case TokenKind::Plus: return '+';
    case TokenKind::Minus: return '-';
    case TokenKind::Star: return '*';
    case TokenKind::Slash: return '/';
    case TokenKind::Percent: return '%';
    case TokenKind::Ampersand: return '&';
    case TokenKind::Bar: return '|';
    case TokenKind::Caret: return '^';
    default: return ' ';
    }
}

std::string_view operatorName(TokenKind op)
{
    switch (op) {
    case TokenKind::Plus: return "add";
    case TokenKind::Minus: return "subtract";
    case TokenKind::Star: return "multiply";
    case TokenKind::Slash: return "divide";
    case TokenKind::Percent: return "modulo";
    default: return "boolean";
    }
}

} // namespace

namespace {

/// A whole constant beside a decimal has just the digits that it shows.
Type constantType(const Expr& expr, const Type& beside)
{
    const bool shown = expr.kind == ExprKind::Number && isWhole(expr.type) && beside.kind == TypeKind::Decimal;
    if (!shown) return expr.type;
    int digits = 1;
    for (std::int64_t rest = expr.magnitude / 10; rest > 0; rest /= 10)
        ++digits;
    return makeDecimal(digits, 0);
}

} // namespace

/// The rules in the order in which they apply: joining texts, arithmetic of dates, operands of unknown type, numbers. A
/// NULL beside a text joins as a text. Two texts know no operator but +. A text beside a number becomes the number's
/// type; arithmeticType says so.
void Binder::bindBinary(BinaryExpr& binary)
{
    const Type& left = binary.left->type;
    const Type& right = binary.right->type;
    const bool joined = binary.op == TokenKind::BarBar;
    if (!joined) checkOperands(binary.offset, left, right, operatorName(binary.op));
    if (joined || (binary.op == TokenKind::Plus && isText(left) && (isText(right) || right.kind == TypeKind::Null)) ||
        (binary.op == TokenKind::Plus && isText(right) && left.kind == TypeKind::Null)) {
        const Type unlimited = makeType(TypeKind::VarChar, -1);
        binary.type = concatenationType(isText(left) ? left : unlimited, isText(right) ? right : unlimited);
        return;
    }
    if (isDate(left) || isDate(right)) return bindDateArithmetic(binary);
    if (isText(left) && isText(right)) refuseOperand(binary, left, operatorName(binary.op));
    if (left.kind == TypeKind::Unknown || right.kind == TypeKind::Unknown) {
        // Decided at run time by the functions tm_add and the like.
        binary.type = {};
        return;
    }
    for (const Type* type : {&left, &right}) {
        if (classOf(*type) == TypeClass::Guid || classOf(*type) == TypeClass::Binary) {
            refuseOperand(binary, *type, operatorName(binary.op));
        }
    }
    const bool bitwise =
        binary.op == TokenKind::Ampersand || binary.op == TokenKind::Bar || binary.op == TokenKind::Caret;
    if (!bitwise && left.kind == TypeKind::Bit && right.kind == TypeKind::Bit) {
        source_.refuse(binary.offset, 402,
                       "The data types bit and bit are incompatible in the " + std::string(operatorName(binary.op)) +
                           " operator.");
    }
    binary.type = arithmeticType(operatorCharacter(binary.op), constantType(*binary.left, right),
                                 constantType(*binary.right, left));
    if (bitwise && !isWhole(binary.type) && !isOpen(binary.type)) {
        refuseOperand(binary, binary.type, operatorCharacter(binary.op) == '&' ? "'&'" : "'|'");
    }
    bindMagnitude(binary);
}

/// Date and number go together as days; date minus date is the server's date again, counted from 1900.
void Binder::bindDateArithmetic(BinaryExpr& binary) const
{
    if (binary.op != TokenKind::Plus && binary.op != TokenKind::Minus) {
        refuseOperand(binary, isDate(binary.left->type) ? binary.left->type : binary.right->type,
                      operatorName(binary.op));
    }
    binary.type = makeType(TypeKind::DateTime);
    for (const Expr* side : {binary.left, binary.right}) {
        if (side->type.kind == TypeKind::Date || side->type.kind == TypeKind::DateTime2) {
            source_.refuse(binary.offset, 206, "Operand type clash: date is incompatible with int.");
        }
    }
    if (binary.left->type.kind == TypeKind::SmallDateTime && !isDate(binary.right->type)) {
        binary.type = binary.left->type;
    }
}

/// Keeps track of how large a whole number can become, so that small ones need no overflow check.
void Binder::bindMagnitude(BinaryExpr& binary) const
{
    const std::int64_t left = binary.left->magnitude;
    const std::int64_t right = binary.right->magnitude;
    constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
    // The range of tinyint is not symmetric, so its differences are always checked.
    if (binary.type.kind == TypeKind::TinyInt && binary.op == TokenKind::Minus) return;
    if (left < 0 || right < 0 || left > limit + 1 || right > limit + 1 || !isWhole(binary.type)) return;
    switch (binary.op) {
    case TokenKind::Plus:
    case TokenKind::Minus: binary.magnitude = left + right; break;
    case TokenKind::Star: binary.magnitude = left * right; break;
    case TokenKind::Slash: binary.magnitude = left; break;
    case TokenKind::Percent: binary.magnitude = std::min(left, right); break;
    default: break;
    }
    const std::int64_t most = binary.type.kind == TypeKind::TinyInt    ? UINT8_MAX
                              : binary.type.kind == TypeKind::SmallInt ? INT16_MAX
                                                                       : limit;
    if (binary.magnitude > most && binary.type.kind != TypeKind::BigInt) binary.magnitude = -1;
}

/// Both sides are compared in their common type. If the class of types of the query's column changes by that, the query
/// converts its items itself.
void Binder::bindInQuery(InQueryExpr& in, Scope& scope)
{
    bindExpression(*in.value, scope);
    bindQuery(*in.query, &scope);
    checkNestedOrder(*in.query);
    if (in.query->outputs.size() != 1) {
        source_.refuse(in.offset, 116,
                       "Only one expression can be specified in the select list when the subquery is not introduced "
                       "with EXISTS.");
    }
    const Type inner = in.query->outputs[0].type;
    in.common = unify(in.value->type, inner);
    if (classOf(in.common) == classOf(inner) || isOpen(inner)) return;
    const std::span<Type> targets = arena_.array<Type>(1);
    targets[0] = in.common;
    setTargets(*in.query, targets);
}

/// A query in parentheses that stands for one value; more than one row is an error of the run.
void Binder::bindScalarQuery(QueryExpr& subquery, Scope& scope)
{
    bindQuery(*subquery.query, &scope);
    checkNestedOrder(*subquery.query);
    if (subquery.query->outputs.size() != 1) {
        source_.refuse(subquery.offset, 116,
                       "Only one expression can be specified in the select list when the subquery is not introduced "
                       "with EXISTS.");
    }
    subquery.type = subquery.query->outputs[0].type;
    subquery.rows = rowsOf(*subquery.query);
}

/// The result has the type that holds all branches; a branch that is NULL says nothing about it. The operand and the
/// values after WHEN have a common type of their own.
void Binder::bindCase(CaseExpr& expr, Scope& scope)
{
    if (expr.operand != nullptr) {
        bindExpression(*expr.operand, scope);
        expr.common = expr.operand->type;
    }
    expr.type = makeType(TypeKind::Null);
    std::int64_t bound = 0;
    bool hasValue = false;
    const auto result = [&](Expr& value) {
        bindExpression(value, scope);
        hasValue = hasValue || value.kind != ExprKind::Null;
        expr.type = unify(expr.type, value.type);
        if (value.type.kind != TypeKind::Null) {
            bound = bound < 0 || value.magnitude < 0 ? -1 : std::max(bound, value.magnitude);
        }
    };
    for (const CaseArm& arm : expr.arms) {
        bindExpression(*arm.when, scope);
        if (expr.operand != nullptr) expr.common = unify(expr.common, arm.when->type);
        result(*arm.then);
    }
    if (expr.otherwise != nullptr) result(*expr.otherwise);
    if (!hasValue) {
        source_.refuse(expr.offset, 8133,
                       "At least one of the result expressions in a CASE specification must be an expression other "
                       "than the NULL constant.");
    }
    if (isWhole(expr.type)) expr.magnitude = bound;
}

/// COALESCE has the type that holds all arguments, ISNULL that of its first one, unless that is NULL, and NULLIF that
/// of its first one.
void Binder::bindCall(CallExpr& call)
{
    const Type first = call.arguments[0]->type;
    call.type = first;
    if (call.kind == ExprKind::Coalesce) {
        if (std::ranges::all_of(call.arguments,
                                [](const Expr* argument) { return argument->kind == ExprKind::Null; })) {
            source_.refuse(call.offset, 4127,
                           "At least one of the arguments to COALESCE must be an expression that is not the NULL "
                           "constant.");
        }
        for (const Expr* argument : call.arguments)
            call.type = unify(call.type, argument->type);
    } else if (isOpen(first) && call.kind == ExprKind::IsNullCall) {
        call.type = call.arguments[1]->type;
    }
    if (!isWhole(call.type)) return;
    std::int64_t bound = 0;
    for (const Expr* argument : call.arguments) {
        bound = bound < 0 || argument->magnitude < 0 ? -1 : std::max(bound, argument->magnitude);
    }
    call.magnitude = bound;
}

} // namespace tamarok::tsql
