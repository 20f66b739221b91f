#include <algorithm>
#include <array>
#include <vector>

#include "tamarok_tsql/binder.h"
#include "tamarok_tsql/builtins.h"
#include "tamarok_tsql/type_rules.h"
#include "tamarok_tsql/visit.h"

/// What the server refuses by the types or the place of an expression, with the texts of its documentation.
namespace tamarok::tsql {
namespace {

std::string_view comparisonName(TokenKind op)
{
    switch (op) {
    case TokenKind::Equal: return "equal to";
    case TokenKind::NotEqual: return "not equal to";
    case TokenKind::Less: return "less than";
    case TokenKind::LessEqual: return "less than or equal to";
    case TokenKind::Greater: return "greater than";
    default: return "greater than or equal to";
    }
}

/// An argument that may be a long text; all other functions of texts refuse it.
struct LongArgument {
    std::string_view function;
    std::size_t index;
};

/// The last four are functions of Oracle, which take its long texts.
constexpr std::array longArguments{
    LongArgument{"CHARINDEX", 1}, LongArgument{"DATALENGTH", 0}, LongArgument{"PATINDEX", 1},
    LongArgument{"SUBSTRING", 0}, LongArgument{"INSTR", 0},      LongArgument{"LENGTH", 0},
    LongArgument{"SUBSTR", 0},    LongArgument{"TO_CHAR", 0},
};

bool takesLongText(std::string_view function, std::size_t index)
{
    return std::ranges::any_of(longArguments, [&](const LongArgument& argument) {
        return argument.function == function && argument.index == index;
    });
}

std::string lowerCase(std::string_view name)
{
    std::string lower(name);
    for (char& c : lower)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    return lower;
}

/// Whether the number is a constant of at most 1.
bool isAtMostOne(const Expr* limit)
{
    return limit != nullptr && limit->kind == ExprKind::Number && limit->magnitude >= 0 && limit->magnitude <= 1;
}

/// Whether the query has one row at most whatever the tables hold.
bool hasOneRow(const Query& query)
{
    if (isAtMostOne(query.fetch)) return true;
    if (query.select == nullptr) return false;
    const Select& select = *query.select;
    const bool limited = isAtMostOne(select.top) || select.rowCount == 0 || select.rowCount == 1;
    const bool ungrouped = select.aggregated && select.groupBy.empty();
    return limited || ungrouped || select.source == nullptr;
}

/// What the item of a query refers to.
struct References {
    bool own = false;    ///< columns of the query itself
    bool others = false; ///< columns of the queries around it
    bool nested = false; ///< a subquery or a window function
};

void collect(Expr& expr, const Scope* scope, References& found)
{
    if (expr.kind == ExprKind::Column || expr.kind == ExprKind::RowNum) {
        const Source* source = as<ColumnExpr>(expr).source;
        found.own = found.own || (source != nullptr && source->scope == scope);
        found.others = found.others || (source != nullptr && source->scope != scope);
    }
    const bool window = expr.kind == ExprKind::Function && as<FunctionExpr>(expr).over != nullptr;
    if (window || expr.kind == ExprKind::Subquery || expr.kind == ExprKind::Exists || expr.kind == ExprKind::InQuery) {
        found.nested = true;
        return;
    }
    visitChildren(expr, [&](Expr& child) { collect(child, scope, found); });
}

/// Whether an aggregate around the item would count the rows of the query. An aggregate must not enclose another one or
/// a window function, and one that names columns of an outer query alone would become an aggregate of that query.
bool countsRowsByItem(const Query& query)
{
    if (query.select == nullptr || !query.order.empty() || query.skip != nullptr) return false;
    const Select& select = *query.select;
    if (select.distinct || select.aggregated || select.top != nullptr || select.rowLimit != nullptr) return false;
    References found;
    collect(*query.outputs[0].value, select.scope, found);
    return !found.nested && (found.own || !found.others);
}

} // namespace

SubqueryRows Binder::rowsOf(const Query& query)
{
    if (hasOneRow(query)) return SubqueryRows::AtMostOne;
    return countsRowsByItem(query) ? SubqueryRows::OfOwnItem : SubqueryRows::Any;
}

void Binder::checkOperands(std::uint32_t offset, const Type& left, const Type& right, std::string_view operation) const
{
    if (!isLongText(left) && !isLongText(right)) return;
    source_.refuse(offset, 402,
                   "The data types " + typeName(left) + " and " + typeName(right) + " are incompatible in the " +
                       std::string(operation) + " operator.");
}

/// LIKE and IS NULL are not among them: they take long texts.
void Binder::checkCompared(const Expr& expr) const
{
    const auto pair = [&](const Expr& left, const Expr& right, TokenKind op) {
        checkOperands(expr.offset, left.type, right.type, comparisonName(op));
    };
    switch (expr.kind) {
    case ExprKind::Compare: {
        const auto& compare = as<BinaryExpr>(expr);
        pair(*compare.left, *compare.right, compare.op);
        break;
    }
    case ExprKind::Between: {
        const auto& between = as<BetweenExpr>(expr);
        pair(*between.value, *between.low, TokenKind::GreaterEqual);
        pair(*between.value, *between.high, TokenKind::LessEqual);
        break;
    }
    case ExprKind::InList:
        for (const Expr* item : as<InListExpr>(expr).items)
            pair(*as<InListExpr>(expr).value, *item, TokenKind::Equal);
        break;
    case ExprKind::NullIf:
        pair(*as<CallExpr>(expr).arguments[0], *as<CallExpr>(expr).arguments[1], TokenKind::Equal);
        break;
    case ExprKind::Case:
        if (as<CaseExpr>(expr).operand == nullptr) break;
        for (const CaseArm& arm : as<CaseExpr>(expr).arms)
            pair(*as<CaseExpr>(expr).operand, *arm.when, TokenKind::Equal);
        break;
    case ExprKind::InQuery:
        checkOperands(expr.offset, as<InQueryExpr>(expr).value->type, as<InQueryExpr>(expr).query->outputs[0].type,
                      comparisonName(TokenKind::Equal));
        break;
    default: break;
    }
}

/// date, time and datetime2 have no number of days, unlike datetime and smalldatetime.
void Binder::checkConverted(const CastExpr& cast) const
{
    const auto isNewDate = [](const Type& type) {
        return isDate(type) && type.kind != TypeKind::DateTime && type.kind != TypeKind::SmallDateTime;
    };
    const Type& given = cast.value->type;
    const bool refused = (isNewDate(given) && isNumber(cast.target)) || (isNumber(given) && isNewDate(cast.target));
    if (!refused) return;
    source_.refuse(cast.offset, 529,
                   "Explicit conversion from data type " + typeName(given) + " to " + typeName(cast.target) +
                       " is not allowed.");
}

void Binder::checkSorted(const Expr& expr, const Type& type) const
{
    if (!isLongText(type)) return;
    source_.refuse(expr.offset, 306,
                   "The text, ntext, and image data types cannot be compared or sorted, except when using IS NULL or "
                   "LIKE operator.");
}

void Binder::checkDistinct(const Select& select) const
{
    if (!select.distinct) return;
    for (const OutputColumn& output : select.outputs) {
        if (!isLongText(output.type)) continue;
        source_.refuse(select.offset, 421,
                       "The " + typeName(output.type) +
                           " data type cannot be selected as DISTINCT because it is not comparable.");
    }
}

void Binder::checkCombined(const Query& arm) const
{
    for (const OutputColumn& output : arm.outputs) {
        if (!isLongText(output.type)) continue;
        source_.refuse(arm.offset, 5335,
                       "The data type " + typeName(output.type) +
                           " cannot be used as an operand to the UNION, INTERSECT or EXCEPT operators because it is "
                           "not comparable.");
    }
}

/// An expression is known by its hash, which a position in the SELECT list shares with the expression there. An item of
/// a compound query has no expression; its position alone tells it apart.
void Binder::checkOrder(std::span<const OrderItem> order, std::span<const OutputColumn> outputs) const
{
    std::vector<std::uint64_t> met;
    met.reserve(order.size());
    for (const OrderItem& item : order) {
        const Expr* value = item.value;
        if (item.ordinal != 0) value = outputs[static_cast<std::size_t>(item.ordinal) - 1].value;
        met.push_back(value != nullptr ? value->hash : static_cast<std::uint64_t>(item.ordinal));
    }
    std::ranges::sort(met);
    if (std::ranges::adjacent_find(met) == met.end()) return;
    source_.refuse(order.front().value->offset, 169,
                   "A column has been specified more than once in the order by list. Columns in the order by list "
                   "must be unique.");
}

/// FETCH needs OFFSET. Oracle's ROWNUM is taken out of WHERE, and limits the rows as TOP does.
void Binder::checkNestedOrder(const Query& query) const
{
    if (query.order.empty() || query.skip != nullptr) return;
    if (query.select != nullptr && (query.select->top != nullptr || query.select->rowLimit != nullptr)) return;
    source_.refuse(query.order.front().value->offset, 1033,
                   "The ORDER BY clause is invalid in views, inline functions, derived tables, subqueries, and common "
                   "table expressions, unless TOP, OFFSET or FOR XML is also specified.");
}

namespace {

/// The server adds microseconds to datetime2 and time alone, whose fractions of a millisecond are not kept here.
void checkDateAdd(const SourceText& source, const FunctionExpr& function)
{
    const std::string_view part = as<ColumnExpr>(*function.arguments[0]).name.text;
    if (findDatePart(part) != "microsecond") return;
    const Type& type = function.arguments[2]->type;
    if (type.kind == TypeKind::DateTime2 || type.kind == TypeKind::Time) {
        source.unsupported(function.offset, "DATEADD of microseconds");
    }
    source.refuse(function.offset, 9810,
                  "The datepart " + std::string(part) + " is not supported by date function dateadd for data type " +
                      typeName(isDate(type) ? type : makeType(TypeKind::DateTime)) + ".");
}

} // namespace

/// SUBSTRING alone of the functions of texts takes no number: the others convert it.
void Binder::checkArgumentTypes(const FunctionExpr& function) const
{
    const std::string_view name = function.builtin->name;
    if (name == "DATEADD") checkDateAdd(source_, function);
    for (std::size_t i = 0; i < function.arguments.size(); ++i) {
        const Expr& argument = *function.arguments[i];
        const Type& type = argument.type;
        const bool aggregated = function.builtin->isAggregate();
        const bool counts = name == "COUNT" || name == "COUNT_BIG";
        if (aggregated && (isLongText(type) || (!counts && type.kind == TypeKind::Bit))) {
            refuseOperand(argument, type, lowerCase(name));
        }
        const bool wrongLong = isLongText(type) && !takesLongText(name, i);
        const bool wrongPart = name == "SUBSTRING" && i == 0 && !isText(type) && type.kind != TypeKind::Unknown &&
                               classOf(type) != TypeClass::Binary;
        if (!wrongLong && !wrongPart) continue;
        source_.refuse(argument.offset, 8116,
                       "Argument data type " + typeName(type) + " is invalid for argument " + std::to_string(i + 1) +
                           " of " + lowerCase(name) + " function.");
    }
}

void Binder::checkAggregated(Expr& argument) const
{
    if (argument.kind == ExprKind::Subquery || argument.kind == ExprKind::Exists ||
        argument.kind == ExprKind::InQuery) {
        source_.refuse(argument.offset, 130,
                       "Cannot perform an aggregate function on an expression containing an aggregate or a subquery.");
    }
    visitChildren(argument, [&](Expr& child) { checkAggregated(child); });
}

} // namespace tamarok::tsql
