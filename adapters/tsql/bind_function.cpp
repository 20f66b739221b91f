#include <algorithm>
#include <functional>

#include "tamarok_tsql/binder.h"
#include "tamarok_tsql/builtins.h"
#include "tamarok_tsql/scope.h"
#include "tamarok_tsql/type_rules.h"
#include "tamarok_tsql/visit.h"

namespace tamarok::tsql {
namespace {

/// POWER keeps the scale of its first argument in 38 digits; DEGREES and RADIANS have 18 decimal places at least.
Type decimalResult(const Builtin& builtin, const Type& argument)
{
    constexpr int anglePlaces = 18;
    if (builtin.name == "POWER") return makeDecimal(38, argument.scale);
    if (builtin.name != "DEGREES" && builtin.name != "RADIANS") return argument;
    return makeDecimal(38, std::max<int>(argument.scale, anglePlaces));
}

} // namespace

/// The argument pattern gives the numbers: small letters are required, capitals optional, * repeats up to 255
/// arguments.
void Binder::checkArgumentCount(const FunctionExpr& function) const
{
    const std::string_view pattern = function.builtin->arguments;
    const bool repeated = pattern.ends_with('*');
    const std::size_t most = repeated ? 255 : pattern.size();
    const auto least = static_cast<std::size_t>(
        std::count_if(pattern.begin(), pattern.end(), [](char letter) { return letter >= 'a' && letter <= 'z'; }));
    const std::size_t given = function.star ? 1 : function.arguments.size();
    const bool starAllowed = function.builtin->name == "COUNT" || function.builtin->name == "COUNT_BIG";
    if (given < least || given > most || (function.star && !starAllowed)) {
        source_.refuse(
            function.offset, messages::argumentCount,
            "The " + std::string(function.builtin->name) + " function requires " +
                (least == most ? std::to_string(least) : std::to_string(least) + " to " + std::to_string(most)) +
                " argument(s).");
    }
}

/// A part of a date (DATEADD(day, ...)) arrives as a column name. It is checked and not bound, and gets a hash of its
/// own, so that `dd` and `day` are the same expression.
void Binder::bindArguments(FunctionExpr& function, Scope& scope)
{
    const std::string_view pattern = function.builtin->arguments;
    for (std::size_t i = 0; i < function.arguments.size(); ++i) {
        Expr& argument = *function.arguments[i];
        if (i >= pattern.size() || pattern[i] != 'p') {
            bindExpression(argument, scope);
            continue;
        }
        const bool named = argument.kind == ExprKind::Column && as<ColumnExpr>(argument).qualifier.empty();
        if (!named || findDatePart(as<ColumnExpr>(argument).name.text).empty()) {
            source_.refuse(argument.offset, 155,
                           "The first argument of " + std::string(function.builtin->name) +
                               " is not a recognized part of a date.");
        }
        as<ColumnExpr>(argument).source = nullptr;
        argument.hash = std::hash<std::string_view>{}(findDatePart(as<ColumnExpr>(argument).name.text));
    }
}

namespace {

/// The innermost scope whose columns an expression names; nullptr if it names none.
Scope* innermostScope(Expr& expr, Scope& from)
{
    Scope* found = nullptr;
    if (expr.kind == ExprKind::Column && as<ColumnExpr>(expr).source != nullptr) {
        found = as<ColumnExpr>(expr).source->scope;
    }
    const auto isCloser = [&](const Scope* a, const Scope* b) {
        for (const Scope* level = &from; level != nullptr; level = level->parent) {
            if (level == a || level == b) return level == a;
        }
        return false;
    };
    visitChildren(expr, [&](Expr& child) {
        Scope* other = innermostScope(child, from);
        if (other != nullptr && (found == nullptr || isCloser(other, found))) found = other;
    });
    return found;
}

constexpr std::string_view aggregateInWhere = "An aggregate may not appear in the WHERE clause unless it is in a "
                                              "subquery contained in a HAVING clause or a select "
                                              "list, and the column being aggregated is an outer reference.";

} // namespace

/// An aggregate whose columns are all those of a query around this one is an aggregate of that query.
void Binder::bindAggregate(FunctionExpr& function, Scope& scope)
{
    if (aggregates_ == Aggregates::Inside) {
        source_.refuse(function.offset, 130,
                       "Cannot perform an aggregate function on an expression containing an aggregate or a subquery.");
    }
    if (aggregates_ == Aggregates::Refused) {
        if (clause_ == "WHERE") source_.refuse(function.offset, 147, std::string(aggregateInWhere));
        source_.refuse(function.offset, 1761,
                       "An aggregate may not appear in the " + std::string(clause_) +
                           " clause unless it is in a subquery contained in a HAVING clause or a select list.");
    }
    aggregates_ = Aggregates::Inside;
    bindArguments(function, scope);
    aggregates_ = Aggregates::Allowed;
    for (Expr* argument : function.arguments) {
        if (Scope* owner = innermostScope(*argument, scope)) function.scope = owner;
    }
    if (function.scope != &scope && scope.sources.size() != 0) {
        source_.unsupported(function.offset, "An aggregate of an outer query's columns in a subquery with FROM");
    }
    if (function.scope->plain) source_.refuse(function.offset, 147, std::string(aggregateInWhere));
    function.scope->aggregated = true;
}

/// Finds the function, checks how it is called (number of arguments, OVER, DISTINCT, place of an aggregate), binds its
/// arguments and gives it a type. An aggregate with OVER is a window function and groups nothing.
void Binder::bindFunction(FunctionExpr& function, Scope& scope)
{
    function.builtin = findBuiltin(function.name);
    if (function.builtin == nullptr) {
        source_.refuse(function.offset, messages::unknownFunction,
                       "'" + std::string(function.name.text) + "' is not a recognized built-in function name.");
    }
    const Builtin& builtin = *function.builtin;
    checkArgumentCount(function);
    function.aggregate = builtin.isAggregate() && function.over == nullptr;
    function.scope = &scope;
    if (function.over != nullptr && !builtin.isAggregate() && !builtin.isWindowOnly()) {
        source_.refuse(function.offset, 4113,
                       "The function '" + std::string(builtin.name) + "' is not a valid windowing function.");
    }
    if ((function.over == nullptr || function.over->order.empty()) && builtin.isWindowOnly()) {
        source_.refuse(function.offset, 4112,
                       "The function '" + std::string(builtin.name) + "' must have an OVER clause with ORDER BY.");
    }
    if ((function.distinct && !builtin.isAggregate()) || (function.distinct && function.over != nullptr)) {
        source_.refuse(function.offset, messages::syntax, "Incorrect syntax near the keyword 'DISTINCT'.");
    }
    if (function.aggregate) {
        bindAggregate(function, scope);
    } else {
        bindArguments(function, scope);
    }
    if (builtin.isAggregate()) {
        for (Expr* argument : function.arguments)
            checkAggregated(*argument);
    }
    checkArgumentTypes(function);
    if (function.over != nullptr) bindOver(*function.over, scope);
    function.type = resultType(function);
    function.magnitude = builtin.magnitude;
}

/// Here a number is a constant and no position in the SELECT list, so the server refuses it.
void Binder::bindOver(Over& over, Scope& scope)
{
    for (Expr* partition : over.partition) {
        bindExpression(*partition, scope);
        checkSorted(*partition, partition->type);
    }
    for (OrderItem& item : over.order) {
        item.ordinal = 0;
        if (item.value->kind == ExprKind::Number) {
            source_.refuse(item.value->offset, 5308,
                           "Windowed functions do not support integer indices as ORDER BY clause expressions.");
        }
        bindExpression(*item.value, scope);
        checkSorted(*item.value, item.value->type);
    }
    checkOrder(over.order, {});
}

/// The result is Unicode if the argument is. A part of a text (LEFT, SUBSTRING) is at most as long as the text and,
/// with a constant length, as that length.
Type Binder::textResult(const FunctionExpr& function, Type argument) const
{
    const bool national =
        argument.kind == TypeKind::NVarChar || argument.kind == TypeKind::NChar || argument.kind == TypeKind::NText;
    Type result = makeType(national ? TypeKind::NVarChar : TypeKind::VarChar, -1);
    if (function.builtin->result != ResultRule::TextLike || !isText(argument)) return result;
    result.length = argument.length;
    const bool counted = function.builtin->arguments.find('i') != std::string_view::npos;
    const Expr* last = function.arguments.back();
    if (counted && last->kind == ExprKind::Number && last->magnitude >= 0 &&
        (result.length < 0 || last->magnitude < result.length)) {
        result.length = static_cast<std::int32_t>(last->magnitude);
    }
    return result;
}

/// SUM and AVG widen: tinyint and smallint to int, decimals to 38 digits, real to float. AVG of decimals has at least 6
/// decimal places.
Type Binder::aggregateType(const FunctionExpr& function, Type argument) const
{
    const std::string_view name = function.builtin->name;
    if (isText(argument) || isDate(argument) || argument.kind == TypeKind::Bit) {
        refuseOperand(function, argument, name == "AVG" ? "avg" : "sum");
    }
    if (argument.kind == TypeKind::TinyInt || argument.kind == TypeKind::SmallInt) return makeType(TypeKind::Int);
    if (isMoney(argument)) return makeType(TypeKind::Money);
    if (argument.kind == TypeKind::Decimal) {
        const int scale = argument.scale;
        return makeDecimal(38, name == "AVG" ? std::max(scale, 6) : scale);
    }
    return argument.kind == TypeKind::Real ? makeType(TypeKind::Float) : argument;
}

/// The result rule decides; SameNumber, which needs a closer look, is what is left after the switch.
Type Binder::resultType(const FunctionExpr& function) const
{
    const Type argument = function.arguments.empty() ? Type{} : function.arguments[0]->type;
    const Type last = function.arguments.empty() ? Type{} : function.arguments.back()->type;
    switch (function.builtin->result) {
    case ResultRule::Int: return makeType(TypeKind::Int);
    case ResultRule::BigInt: return makeType(TypeKind::BigInt);
    case ResultRule::Float: return makeType(TypeKind::Float);
    case ResultRule::DateTime: return makeType(TypeKind::DateTime);
    case ResultRule::Date: return makeType(TypeKind::Date);
    case ResultRule::TextLike:
    case ResultRule::TextMax: return textResult(function, argument);
    case ResultRule::Text30: return makeType(TypeKind::NVarChar, 30);
    case ResultRule::Text128: return makeType(TypeKind::NVarChar, 128);
    case ResultRule::Text1: return makeType(TypeKind::NVarChar, 1);
    case ResultRule::Guid: return makeType(TypeKind::UniqueIdentifier, 36);
    case ResultRule::SameDate: return isDate(last) ? last : makeType(TypeKind::DateTime);
    case ResultRule::Same: return argument;
    case ResultRule::SameNumber: break;
    }
    if (function.builtin->isAggregate()) return aggregateType(function, argument);
    if (isText(argument)) return makeType(TypeKind::Float);
    if (argument.kind == TypeKind::Real) return makeType(TypeKind::Float);
    if (isWhole(argument) && argument.kind != TypeKind::BigInt) return makeType(TypeKind::Int);
    if (isMoney(argument)) return makeType(TypeKind::Money);
    return argument.kind == TypeKind::Decimal ? decimalResult(*function.builtin, argument) : argument;
}

} // namespace tamarok::tsql
