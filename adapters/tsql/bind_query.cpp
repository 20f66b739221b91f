#include <algorithm>
#include <charconv>

#include "tamarok_tsql/binder.h"
#include "tamarok_tsql/type_rules.h"
#include "tamarok_tsql/visit.h"

namespace tamarok::tsql {

namespace {

/// Most columns of a result; back ends have such a limit.
constexpr std::size_t mostColumns = 2000;
/// Most columns that the stars of one statement stand for. Bounds the memory of a statement whose text is short.
constexpr std::size_t mostExpanded = 100000;

} // namespace

std::int32_t Source::find(const Name& column) const
{
    if (table != nullptr) {
        // Oracle has no column LONG, so that its statements call it LONG_.
        const std::int32_t index = table->column(column.text);
        return index < 0 && sameName(column.text, "LONG_") ? table->column("LONG") : index;
    }
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        if (sameName(outputs[i].name, column.text)) return static_cast<std::int32_t>(i);
    }
    return -1;
}

Scope& Binder::makeScope(Scope* outer)
{
    return *arena_.make<Scope>(outer, ArenaList<Source*>(arena_), ArenaList<ColumnExpr*>(arena_));
}

const Table& Binder::requireTable(const Name& name) const
{
    const Table* table = schema_.table(name.text);
    if (table == nullptr) {
        source_.refuse(name.offset, messages::unknownTable, "Invalid object name '" + std::string(name.text) + "'.",
                       "42S02");
    }
    return *table;
}

std::int32_t Binder::requireColumn(const Table& table, const Name& name) const
{
    const std::int32_t index = table.column(name.text);
    if (index < 0) {
        source_.refuse(name.offset, messages::unknownColumn, "Invalid column name '" + std::string(name.text) + "'.",
                       "42S22");
    }
    return index;
}

/// Two sources of one FROM must differ in name. The number is counted over the statement, so that columns of two
/// sources never have the same hash.
Source& Binder::addSource(const Name& name, Scope& scope, bool correlation)
{
    for (const Source* other : scope.sources.span()) {
        if (!(other->name == name)) continue;
        if (correlation) {
            source_.refuse(name.offset, 1011,
                           "The correlation name '" + std::string(name.text) +
                               "' is specified multiple times in a FROM clause.");
        }
        source_.refuse(name.offset, 1013,
                       "The objects \"" + std::string(other->name.text) + "\" and \"" + std::string(name.text) +
                           "\" in the FROM clause have the same exposed names. Use correlation names to "
                           "distinguish them.");
    }
    Source* added = arena_.make<Source>();
    added->name = name;
    added->scope = &scope;
    added->number = ++sources_;
    scope.sources.push(added);
    return *added;
}

Source& Binder::addTable(const Table& table, const Name& name, Scope& scope, bool correlation)
{
    Source& added = addSource(name, scope, correlation);
    added.table = &table;
    return added;
}

/// Sets the clause that messages name, and puts the previous state back: the expression may be one inside another.
void Binder::bindPlain(Expr& expr, Scope& scope, std::string_view clause)
{
    const Aggregates before = std::exchange(aggregates_, Aggregates::Refused);
    const std::string_view clauseBefore = std::exchange(clause_, clause);
    const bool plainBefore = std::exchange(scope.plain, true);
    bindExpression(expr, scope);
    scope.plain = plainBefore;
    aggregates_ = before;
    clause_ = clauseBefore;
}

/// The sources of both sides of a join come into the scope before its ON is bound.
void Binder::bindFrom(FromItem* item, Scope& scope)
{
    if (item == nullptr) return;
    switch (item->kind) {
    case FromKind::Table:
        item->source = &addTable(requireTable(item->table), item->alias.empty() ? item->table : item->alias, scope,
                                 !item->alias.empty());
        break;
    case FromKind::Derived: bindDerived(*item, scope); break;
    default:
        bindFrom(item->left, scope);
        bindFrom(item->right, scope);
        if (item->on != nullptr) bindPlain(*item->on, scope, "ON");
    }
}

/// A derived table sees the scope around the query, not the tables beside it in FROM. Its columns get the names of the
/// alias list if there is one: A (X, Y).
void Binder::bindDerived(FromItem& item, Scope& scope)
{
    bindQuery(*item.query, scope.parent);
    // Oracle's way to take the first rows: FROM (SELECT ... ORDER BY ...) WHERE ROWNUM <= n.
    if (!scope.collectUsed) checkNestedOrder(*item.query);
    Source& added = addSource(item.alias, scope, true);
    std::span<OutputColumn> outputs = arena_.copy(std::span<const OutputColumn>(item.query->outputs));
    if (!item.columnNames.empty()) {
        if (item.columnNames.size() != outputs.size()) {
            source_.refuse(item.alias.offset, 8158,
                           "'" + std::string(item.alias.text) +
                               "' has more or fewer columns than were specified in the column list.");
        }
        for (std::size_t i = 0; i < outputs.size(); ++i)
            outputs[i].name = item.columnNames[i].text;
    }
    checkDerivedNames(item, outputs);
    added.outputs = outputs;
    added.renamed = !item.columnNames.empty();
    item.source = &added;
}

void Binder::checkDerivedNames(const FromItem& item, std::span<OutputColumn> outputs) const
{
    const std::string derived(item.alias.text);
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        if (outputs[i].name.empty()) {
            source_.refuse(item.offset, 8155,
                           "No column name was specified for column " + std::to_string(i + 1) + " of '" + derived +
                               "'.");
        }
        for (std::size_t k = 0; k < i; ++k) {
            if (!sameName(outputs[i].name, outputs[k].name)) continue;
            source_.refuse(item.offset, 8156,
                           "The column '" + std::string(outputs[i].name) + "' was specified multiple times for '" +
                               derived + "'.");
        }
    }
}

/// Binds the SELECT or both arms, then ORDER BY, then checks GROUP BY, since both need the columns of the result. The
/// state for aggregates is saved: a subquery inside an aggregate may have aggregates itself.
void Binder::bindQuery(Query& query, Scope* outer)
{
    const Aggregates before = aggregates_;
    const std::string_view clauseBefore = clause_;
    query.targets = {};
    if (query.select != nullptr) {
        bindSelect(*query.select, outer);
        query.outputs = query.select->outputs;
    } else {
        bindQuery(*query.left, outer);
        bindQuery(*query.right, outer);
        combineArms(query);
    }
    bindOrder(query);
    checkOrder(query.order, query.outputs);
    if (query.select != nullptr) checkGroups(query);
    // OFFSET and FETCH see no column of the query.
    Scope& nothing = makeScope(outer);
    for (Expr* limit : {query.skip, query.fetch}) {
        if (limit != nullptr) bindPlain(*limit, nothing, "OFFSET");
    }
    aggregates_ = before;
    clause_ = clauseBefore;
}

void Binder::setTargets(Query& query, std::span<Type> targets)
{
    query.targets = targets;
    if (query.select != nullptr) return;
    setTargets(*query.left, targets);
    setTargets(*query.right, targets);
}

/// The result has the names of the left arm and types that hold both. It is no column of a table any more. All SELECTs
/// below receive the types, into which they convert their items.
void Binder::combineArms(Query& query)
{
    const std::span<OutputColumn> left = query.left->outputs;
    const std::span<OutputColumn> right = query.right->outputs;
    if (left.size() != right.size()) {
        source_.refuse(query.offset, 205,
                       "All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number of "
                       "expressions in their target lists.");
    }
    if (query.op != SetOperator::UnionAll) {
        checkCombined(*query.left);
        checkCombined(*query.right);
    }
    query.outputs = arena_.copy(std::span<const OutputColumn>(left));
    const std::span<Type> targets = arena_.array<Type>(left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        targets[i] = unify(left[i].type, right[i].type);
        OutputColumn& output = query.outputs[i];
        output.type = targets[i];
        output.base = nullptr;
        output.value = nullptr;
    }
    setTargets(query, targets);
}

/// Recognises ROWNUM = 1, ROWNUM < n and ROWNUM <= n with a whole number, and ROWNUM <= ?. ROWNUM = n for another n is
/// never true on Oracle, since a number is given only to a row that passes, beginning with 1.
bool Binder::isRowLimit(Expr& expr, Select& select)
{
    if (expr.kind != ExprKind::Compare) return false;
    auto& compare = as<BinaryExpr>(expr);
    if (compare.left->kind != ExprKind::RowNum) return false;
    Expr& limit = *compare.right;
    std::int32_t rows = 0;
    const bool literal = limit.kind == ExprKind::Number;
    if (literal) {
        const std::string_view digits = as<NumberExpr>(limit).text;
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), rows);
        if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) return false;
    } else if (limit.kind != ExprKind::Parameter || compare.op != TokenKind::LessEqual) {
        return false;
    }
    switch (compare.op) {
    case TokenKind::LessEqual: break;
    case TokenKind::Less: --rows; break;
    case TokenKind::Equal: rows = rows == 1 ? 1 : 0; break;
    default: return false;
    }
    select.rowLimit = &limit;
    select.rowCount = literal ? std::max(rows, 0) : -1;
    return true;
}

/// ROWNUM numbers the rows before they are grouped and sorted, so it is taken out of WHERE as a limit.
void Binder::takeRowLimit(Select& select)
{
    select.rowLimit = nullptr;
    select.filter = select.where;
    if (select.where == nullptr) return;
    if (isRowLimit(*select.where, select)) {
        select.filter = nullptr;
        return;
    }
    // Only an operand of the outermost AND limits the rows; under OR or NOT it would be a condition on each row.
    if (select.where->kind != ExprKind::And) return;
    auto& chain = as<ChainExpr>(*select.where);
    ArenaList<Expr*> others(arena_);
    for (Expr* operand : chain.operands) {
        if (select.rowLimit != nullptr || !isRowLimit(*operand, select)) others.push(operand);
    }
    if (select.rowLimit == nullptr) return;
    auto* rest = arena_.make<ChainExpr>(chain);
    rest->operands = others.span();
    select.filter = others.size() == 1 ? others.span()[0] : rest;
}

/// The clauses are bound in the order in which the server evaluates them: FROM, WHERE, GROUP BY, then the items and
/// HAVING, which alone may have aggregates. DUAL is Oracle's table of one row; without a table of that name, FROM is
/// left out.
void Binder::bindSelect(Select& select, Scope* outer)
{
    Scope& scope = makeScope(outer);
    select.scope = &scope;
    takeRowLimit(select);
    scope.collectUsed = select.rowLimit != nullptr;
    const bool dual = select.from != nullptr && select.from->kind == FromKind::Table &&
                      sameName(select.from->table.text, "DUAL") && schema_.table("DUAL") == nullptr;
    select.source = dual ? nullptr : select.from;
    bindFrom(select.source, scope);
    if (select.filter != nullptr) bindPlain(*select.filter, scope, "WHERE");
    bindGroups(select, scope);
    if (select.top != nullptr) bindPlain(*select.top, makeScope(outer), "TOP");
    aggregates_ = Aggregates::Allowed;
    clause_ = "the select list";
    bindItems(select, scope);
    checkDistinct(select);
    if (select.having != nullptr) bindExpression(*select.having, scope);
}

/// A GROUP BY expression must name a column of this SELECT and must not have a query in it, as on the server.
void Binder::bindGroups(Select& select, Scope& scope)
{
    for (Expr* group : select.groupBy) {
        bindPlain(*group, scope, "GROUP BY");
        checkSorted(*group, group->type);
        bool named = false;
        const auto inspect = [&](auto& self, Expr& expr) -> void {
            if (expr.kind == ExprKind::Subquery || expr.kind == ExprKind::Exists || expr.kind == ExprKind::InQuery) {
                source_.refuse(expr.offset, 144,
                               "Cannot use an aggregate or a subquery in an expression used for the group by list of "
                               "a GROUP BY clause.");
            }
            if (expr.kind == ExprKind::Column && as<ColumnExpr>(expr).source != nullptr &&
                as<ColumnExpr>(expr).source->scope == &scope) {
                named = true;
            }
            visitChildren(expr, [&](Expr& child) { self(self, child); });
        };
        inspect(inspect, *group);
        if (!named) {
            source_.refuse(group->offset, 164,
                           "Each GROUP BY expression must contain at least one column that is not an outer "
                           "reference.");
        }
    }
}

/// An item that is a plain column keeps its name and remembers the column of the table, by which recordsets know what
/// they may change. Other items have no name without an alias.
void Binder::bindItems(Select& select, Scope& scope)
{
    ArenaList<OutputColumn> outputs(arena_);
    for (const SelectItem& item : select.items) {
        if (item.value == nullptr) {
            expandStar(item, scope, outputs);
            continue;
        }
        bindExpression(*item.value, scope);
        OutputColumn output{item.alias.text, item.value->type};
        output.value = item.value;
        if (item.value->kind == ExprKind::Column && as<ColumnExpr>(*item.value).source != nullptr) {
            const auto& column = as<ColumnExpr>(*item.value);
            if (item.alias.empty()) output.name = column.name.text;
            output.base = column.source;
            output.baseColumn = column.column;
        }
        outputs.push(output);
    }
    select.outputs = outputs.span();
}

/// T.* may name one source only; * gives the columns of all, in the order of FROM.
void Binder::expandStar(const SelectItem& item, Scope& scope, ArenaList<OutputColumn>& outputs)
{
    if (scope.sources.size() == 0) {
        source_.refuse(item.offset, 263, "Must specify table to select from.");
    }
    bool found = item.qualifier.empty();
    for (Source* source : scope.sources.span()) {
        if (!item.qualifier.empty() && !(source->name == item.qualifier)) continue;
        found = true;
        appendColumns(*source, item, outputs);
    }
    if (!found) {
        source_.refuse(item.qualifier.offset, 107,
                       "The column prefix '" + std::string(item.qualifier.text) +
                           "' does not match with a table name or alias name used in the query.");
    }
}

void Binder::appendColumns(Source& source, const SelectItem& item, ArenaList<OutputColumn>& outputs)
{
    expanded_ += source.columnCount();
    if (outputs.size() + source.columnCount() > mostColumns) {
        source_.refuse(item.offset, messages::tooManyItems,
                       "The number of elements in the select list exceeds the maximum allowed number of 2000 elements "
                       "with the columns that * stands for.");
    }
    if (expanded_ > mostExpanded) {
        source_.refuse(item.offset, messages::tooComplex,
                       "The query processor ran out of internal resources: the stars of the statement stand for more "
                       "than 100000 columns.");
    }
    for (std::size_t i = 0; i < source.columnCount(); ++i) {
        auto* column = arena_.make<ColumnExpr>();
        column->kind = ExprKind::Column;
        column->offset = item.offset;
        column->name.text = source.columnName(i);
        column->source = &source;
        column->column = static_cast<std::int32_t>(i);
        column->type = source.columnType(i);
        finish(*column);
        if (source.scope->collectUsed) source.scope->used.push(column);
        OutputColumn output{column->name.text, column->type};
        output.value = column;
        output.base = &source;
        output.baseColumn = column->column;
        outputs.push(output);
    }
}

// --- ORDER BY ----------------------------------------------------------------------------------

/// An ordinal, or the name of an item of the SELECT list.
bool Binder::bindOrdinal(const Query& query, OrderItem& item)
{
    item.ordinal = 0;
    if (item.value->kind == ExprKind::Number) {
        const std::string_view digits = as<NumberExpr>(*item.value).text;
        std::size_t ordinal = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), ordinal);
        if (as<NumberExpr>(*item.value).token != TokenKind::Integer || ordinal < 1 || ordinal > query.outputs.size()) {
            source_.refuse(item.value->offset, 108,
                           "The ORDER BY position number " + std::string(digits) +
                               " is out of range of the number of items in the select list.");
        }
        item.ordinal = static_cast<std::int32_t>(ordinal);
        return true;
    }
    if (item.value->kind != ExprKind::Column) return false;
    auto& column = as<ColumnExpr>(*item.value);
    if (!column.qualifier.empty()) return false;
    for (std::size_t i = 0; i < query.outputs.size(); ++i) {
        if (!sameName(query.outputs[i].name, column.name.text)) continue;
        // The same name twice in the list is ambiguous, unless both items are the same expression.
        if (item.ordinal != 0) {
            const OutputColumn& first = query.outputs[static_cast<std::size_t>(item.ordinal) - 1];
            const bool same = first.value != nullptr && query.outputs[i].value != nullptr &&
                              first.value->hash == query.outputs[i].value->hash;
            if (same) continue;
            source_.refuse(column.offset, messages::ambiguousColumn,
                           "Ambiguous column name '" + std::string(column.name.text) + "'.");
        }
        item.ordinal = static_cast<std::int32_t>(i + 1);
    }
    if (item.ordinal != 0) column.source = nullptr;
    return item.ordinal != 0;
}

/// Each item is a position, a name of the SELECT list, or, in a single SELECT, any expression.
void Binder::bindOrder(Query& query)
{
    for (OrderItem& item : query.order) {
        if (bindOrdinal(query, item)) {
            checkSorted(*item.value, query.outputs[static_cast<std::size_t>(item.ordinal) - 1].type);
            continue;
        }
        if (query.select == nullptr) {
            source_.refuse(item.value->offset, 104,
                           "ORDER BY items must appear in the select list if the statement contains a UNION, "
                           "INTERSECT or EXCEPT operator.");
        }
        bindSelectOrder(query, item);
        checkSorted(*item.value, item.value->type);
    }
}

/// An expression that also stands in the SELECT list is ordered by its position there. With DISTINCT only those are
/// allowed, since a removed duplicate may have had another value.
void Binder::bindSelectOrder(Query& query, OrderItem& item)
{
    aggregates_ = Aggregates::Allowed;
    clause_ = "the ORDER BY clause";
    bindExpression(*item.value, *query.select->scope);
    const Expr& value = *item.value;
    if (value.kind == ExprKind::Text || value.kind == ExprKind::Null) {
        source_.refuse(value.offset, 408, "A constant expression was encountered in the ORDER BY list.");
    }
    for (std::size_t i = 0; i < query.outputs.size() && item.ordinal == 0; ++i) {
        const Expr* output = query.outputs[i].value;
        if (output != nullptr && output->hash == value.hash) item.ordinal = static_cast<std::int32_t>(i + 1);
    }
    if (item.ordinal == 0 && query.select->distinct) {
        source_.refuse(value.offset, 145,
                       "ORDER BY items must appear in the select list if SELECT DISTINCT is specified.");
    }
}

// --- GROUP BY ----------------------------------------------------------------------------------

/// A SELECT is aggregated by GROUP BY, by HAVING or by an aggregate anywhere in it. Then all that it shows or orders by
/// must be grouped.
void Binder::checkGroups(Query& query)
{
    Select& select = *query.select;
    select.aggregated = select.scope->aggregated || !select.groupBy.empty() || select.having != nullptr;
    if (!select.aggregated) return;
    for (const OutputColumn& output : select.outputs)
        checkGrouped(*output.value, select, "the select list");
    if (select.having != nullptr) checkGrouped(*select.having, select, "the HAVING clause");
    for (const OrderItem& item : query.order) {
        if (item.ordinal == 0) checkGrouped(*item.value, select, "the ORDER BY clause");
    }
}

/// Walks down until it meets a grouped expression or an aggregate of this SELECT. A column of this SELECT that is met
/// before is error 8120; a column of a query around it is constant here.
void Binder::checkGrouped(Expr& expr, const Select& select, std::string_view clause)
{
    for (const Expr* group : select.groupBy) {
        if (group->hash == expr.hash) return;
    }
    if (expr.kind == ExprKind::Function) {
        const auto& function = as<FunctionExpr>(expr);
        if (function.builtin != nullptr && function.aggregate && function.scope == select.scope) return;
    }
    if (expr.kind == ExprKind::Column) {
        const auto& column = as<ColumnExpr>(expr);
        if (column.source == nullptr || column.source->scope != select.scope) return;
        source_.refuse(expr.offset, 8120,
                       "Column '" + std::string(column.source->name.text) + "." + std::string(column.name.text) +
                           "' is invalid in " + std::string(clause) +
                           " because it is not contained in either an aggregate function or the GROUP BY clause.");
    }
    visitChildren(expr, [&](Expr& child) { checkGrouped(child, select, clause); });
}

} // namespace tamarok::tsql
