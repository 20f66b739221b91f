#include "translation/join_nest.h"

#include <algorithm>

#include "tamarok_tsql/visit.h"

namespace tamarok::embedded::translation {

namespace {

void appendTerms(const FromItem& item, std::vector<JoinTerm>& terms)
{
    if (isPlain(item)) {
        terms.push_back({FromKind::Table, &item});
        return;
    }
    appendTerms(*item.left, terms);
    const std::size_t right = terms.size();
    if (item.kind == FromKind::Comma && isChained(*item.right)) {
        appendTerms(*item.right, terms);
        terms[right].kind = FromKind::Comma;
    } else {
        terms.push_back({item.kind, item.right, item.on});
    }
}

/// SQLite leaves a derived table alone that groups, limits or combines rows.
bool isDissolved(const FromItem& derived)
{
    const Select* select = derived.query->select;
    if (select == nullptr || select->source == nullptr || select->distinct || select->aggregated) return false;
    return select->top == nullptr && select->rowLimit == nullptr && derived.query->skip == nullptr;
}

/// The source that was bound last in the item.
const Source& lastSource(const FromItem& item)
{
    return isPlain(item) ? *item.source : lastSource(*item.right);
}

/// Appends the conditions that must all be true.
void appendConditions(Expr& condition, std::vector<Expr*>& conditions)
{
    if (condition.kind != ExprKind::And) {
        conditions.push_back(&condition);
        return;
    }
    for (Expr* operand : as<ChainExpr>(condition).operands)
        appendConditions(*operand, conditions);
}

/// Calls `visit` for each column of the scope in the expression, those in subqueries included.
template <class Visit>
void visitColumns(Expr& expr, const Scope& scope, const Visit& visit)
{
    if (expr.kind == ExprKind::Column || expr.kind == ExprKind::RowNum) {
        const auto& column = as<ColumnExpr>(expr);
        if (column.source != nullptr && column.source->scope == &scope) visit(column);
        return;
    }
    visitChildren(expr, [&](Expr& child) { visitColumns(child, scope, visit); });
}

/// Divides the terms into levels, then finds the columns that each level must pass outwards.
class Planner {
public:
    Planner(JoinNest& nest, const JoinUsers& users, const SourceText& text) : nest_(nest), users_(users), text_(text) {}

    /// Each level takes as many tables as SQLite joins.
    void divide(std::size_t& aliases)
    {
        std::size_t left = joinedTables(*nest_.from) + users_.tablesBeside;
        std::size_t at = 0;
        // The derived table of the level before takes one place.
        while (left + (nest_.levels.empty() ? 0 : 1) > mostJoined) {
            std::size_t room = mostJoined - (nest_.levels.empty() ? 0 : 1);
            const std::size_t begin = at;
            for (; at < nest_.terms.size() && tablesOf(nest_.terms[at]) <= room; ++at) {
                room -= tablesOf(nest_.terms[at]);
                left -= tablesOf(nest_.terms[at]);
            }
            if (at == begin) {
                left -= tablesOf(nest_.terms[at]) - 1;
                keep(nest_.terms[at]);
                continue;
            }
            JoinLevel& level = nest_.levels.emplace_back();
            level.end = at;
            level.lastSource = lastSource(*nest_.terms[at - 1].operand).number;
            level.alias = "~j" + std::to_string(++aliases);
        }
        nest_.writing = nest_.levels.size();
    }

    void passColumns()
    {
        const std::size_t outermost = nest_.levels.size();
        for (Expr* value : users_.values)
            pass(*value, outermost);
        if (users_.rowKey != nullptr) pass(*users_.rowKey, PassedColumn::rowKey, outermost);
        std::size_t level = 0;
        for (std::size_t i = 0; i < nest_.terms.size(); ++i) {
            while (level < outermost && i >= nest_.levels[level].end)
                ++level;
            if (nest_.terms[i].on != nullptr) pass(*nest_.terms[i].on, level);
            visitFrom(nest_.terms[i].operand, [&](Expr& expr) { pass(expr, level); });
        }
    }

    /// Tests each condition of WHERE in the innermost level that has its columns, so that an index still finds the few
    /// rows that it leaves.
    void divideFilter()
    {
        if (users_.where == nullptr) return;
        std::vector<Expr*> conditions;
        appendConditions(*users_.where, conditions);
        const std::size_t first = firstFiltered();
        for (Expr* condition : conditions) {
            std::size_t level = first;
            visitColumns(*condition, *nest_.scope,
                         [&](const ColumnExpr& column) { level = std::max(level, homeOf(*column.source)); });
            (level < nest_.levels.size() ? nest_.levels[level].filter : nest_.filter).push_back(condition);
            pass(*condition, level);
        }
    }

private:
    static std::size_t tablesOf(const JoinTerm& term) { return term.kept ? 1 : joinedTables(*term.operand); }

    /// A derived table with too many tables to be dissolved is kept as one; joins in parentheses cannot be.
    void keep(JoinTerm& term) const
    {
        if (term.operand->kind != FromKind::Derived) {
            text_.refuse(term.operand->offset, messages::tooManyTables,
                         "Too many table names in the query. The maximum allowable is 63 in parentheses.");
        }
        term.kept = true;
    }

    /// The innermost level that holds the source.
    std::size_t homeOf(const Source& source) const
    {
        const auto holds = [&](const JoinLevel& level) { return source.number <= level.lastSource; };
        return static_cast<std::size_t>(std::ranges::find_if(nest_.levels, holds) - nest_.levels.begin());
    }

    /// The innermost level behind which no RIGHT or FULL JOIN stands: these give rows that a condition tested before
    /// them would not see.
    std::size_t firstFiltered() const
    {
        std::size_t first = 0;
        for (std::size_t i = 0; i < nest_.terms.size(); ++i) {
            const FromKind kind = nest_.terms[i].kind;
            if (kind != FromKind::Right && kind != FromKind::Full) continue;
            while (first < nest_.levels.size() && i >= nest_.levels[first].end)
                ++first;
        }
        return first;
    }

    /// The levels from the one that holds the source to the one inside `user` pass the column.
    void pass(const Source& source, std::int32_t column, std::size_t user)
    {
        for (std::size_t level = homeOf(source); level < user; ++level)
            nest_.levels[level].columns.insert({source.number, column, &source});
    }

    void pass(Expr& expr, std::size_t user)
    {
        visitColumns(expr, *nest_.scope, [&](const ColumnExpr& column) { pass(*column.source, column.column, user); });
    }

    JoinNest& nest_;
    const JoinUsers& users_;
    const SourceText& text_;
};

} // namespace

bool isChained(const FromItem& item)
{
    switch (item.kind) {
    case FromKind::Table:
    case FromKind::Derived: return true;
    case FromKind::Right:
    case FromKind::Full: return false;
    default: return isChained(*item.left);
    }
}

bool isPlain(const FromItem& item)
{
    return item.kind == FromKind::Table || item.kind == FromKind::Derived;
}

std::size_t joinedTables(const FromItem& from)
{
    if (from.kind == FromKind::Table) return 1;
    if (from.kind != FromKind::Derived) return joinedTables(*from.left) + joinedTables(*from.right);
    // What is nested itself has as many as SQLite joins.
    return isDissolved(from) ? std::min(joinedTables(*from.query->select->source), mostJoined) : 1;
}

std::vector<JoinTerm> joinTerms(const FromItem& from)
{
    std::vector<JoinTerm> terms;
    appendTerms(from, terms);
    return terms;
}

const JoinLevel* JoinNest::levelOf(const Source& source) const
{
    if (source.scope != scope || writing == 0) return nullptr;
    const JoinLevel& inside = levels[writing - 1];
    return source.number <= inside.lastSource ? &inside : nullptr;
}

JoinNest nestJoins(const FromItem& from, const JoinUsers& users, const SourceText& text, std::size_t& aliases)
{
    JoinNest nest;
    nest.from = &from;
    nest.scope = lastSource(from).scope;
    nest.terms = joinTerms(from);
    Planner planner(nest, users, text);
    planner.divide(aliases);
    planner.passColumns();
    planner.divideFilter();
    return nest;
}

JoinUsers joinUsers(const Query& query)
{
    const Select& select = *query.select;
    JoinUsers users;
    users.where = select.filter;
    for (const OutputColumn& output : select.outputs)
        users.values.push_back(output.value);
    users.values.insert(users.values.end(), select.groupBy.begin(), select.groupBy.end());
    if (select.having != nullptr) users.values.push_back(select.having);
    for (const OrderItem& item : query.order) {
        if (item.ordinal == 0) users.values.push_back(item.value);
    }
    // The inner query for ROWNUM lists all columns, those of ON too; without ROWNUM the list is empty.
    const std::span<ColumnExpr*> used = select.scope->used.span();
    users.values.insert(users.values.end(), used.begin(), used.end());
    return users;
}

std::string passedName(const PassedColumn& passed)
{
    std::string name = std::to_string(passed.number);
    if (passed.column == PassedColumn::rowKey) return name;
    return name.append(".").append(passed.source->columnName(static_cast<std::size_t>(passed.column)));
}

} // namespace tamarok::embedded::translation
