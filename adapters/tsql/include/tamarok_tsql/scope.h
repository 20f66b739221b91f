#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/ast.h"

namespace tamarok::embedded::sql {

/// A table, view or derived table under the name by which columns refer to it.
struct Source {
    Name name;
    const Table* table = nullptr;
    std::span<OutputColumn> outputs; ///< of a derived table
    Scope* scope = nullptr;
    std::uint32_t number = 0; ///< distinguishes the sources of a statement
    bool numbered = false;    ///< its columns are written as "c1", "c2", ...
    bool folded = false;      ///< its columns come out of an inner query that ROWNUM limits

    std::size_t columnCount() const { return table != nullptr ? table->columns.size() : outputs.size(); }
    std::string_view columnName(std::size_t index) const
    {
        return table != nullptr ? std::string_view(table->columns[index].name) : outputs[index].name;
    }
    Type columnType(std::size_t index) const
    {
        return table != nullptr ? table->columns[index].type : outputs[index].type;
    }
    std::int32_t find(const Name& column) const;
};

/// The names that one SELECT, UPDATE or DELETE brings into sight.
struct Scope {
    Scope* parent = nullptr;
    ArenaList<Source*> sources;
    ArenaList<ColumnExpr*> used; ///< kept where ROWNUM needs it
    bool collectUsed = false;
    bool aggregated = false; ///< an aggregate was met
};

/// Calls `visit` for each expression directly under `expr`, those of subqueries included.
template <class Visit>
void visitChildren(Expr& expr, Visit&& visit);

template <class Visit>
void visitFrom(FromItem* item, Visit&& visit);

/// Calls `visit` for each topmost expression of a query.
template <class Visit>
void visitQuery(Query& query, Visit&& visit)
{
    const auto each = [&](Expr* expr) {
        if (expr != nullptr) visit(*expr);
    };
    if (query.core != nullptr) {
        Core& core = *query.core;
        for (const OutputColumn& output : core.outputs)
            each(output.value);
        visitFrom(core.from, visit);
        each(core.where);
        for (Expr* group : core.groupBy)
            each(group);
        each(core.having);
    } else {
        visitQuery(*query.left, visit);
        visitQuery(*query.right, visit);
    }
    for (const OrderItem& item : query.order) {
        if (item.ordinal == 0) each(item.value);
    }
}

template <class Visit>
void visitFrom(FromItem* item, Visit&& visit)
{
    if (item == nullptr) return;
    visitFrom(item->left, visit);
    visitFrom(item->right, visit);
    if (item->on != nullptr) visit(*item->on);
    if (item->query != nullptr) visitQuery(*item->query, visit);
}

template <class Visit>
void visitChildren(Expr& expr, Visit&& visit)
{
    const auto each = [&](Expr* child) {
        if (child != nullptr) visit(*child);
    };
    const auto all = [&](ExprList list) {
        for (Expr* child : list)
            each(child);
    };
    switch (expr.kind) {
    case ExprKind::Unary: each(as<UnaryExpr>(expr).operand); break;
    case ExprKind::Binary:
    case ExprKind::Compare:
        each(as<BinaryExpr>(expr).left);
        each(as<BinaryExpr>(expr).right);
        break;
    case ExprKind::And:
    case ExprKind::Or: all(as<ChainExpr>(expr).operands); break;
    case ExprKind::Not: each(as<NotExpr>(expr).operand); break;
    case ExprKind::Between:
        each(as<BetweenExpr>(expr).value);
        each(as<BetweenExpr>(expr).low);
        each(as<BetweenExpr>(expr).high);
        break;
    case ExprKind::InList:
        each(as<InListExpr>(expr).value);
        all(as<InListExpr>(expr).items);
        break;
    case ExprKind::InQuery:
        each(as<InQueryExpr>(expr).value);
        visitQuery(*as<InQueryExpr>(expr).query, visit);
        break;
    case ExprKind::Like:
        each(as<LikeExpr>(expr).value);
        each(as<LikeExpr>(expr).pattern);
        each(as<LikeExpr>(expr).escape);
        break;
    case ExprKind::IsNull: each(as<IsNullExpr>(expr).value); break;
    case ExprKind::Exists:
    case ExprKind::Subquery: visitQuery(*as<QueryExpr>(expr).query, visit); break;
    case ExprKind::Case:
        each(as<CaseExpr>(expr).operand);
        for (const CaseArm& arm : as<CaseExpr>(expr).arms) {
            each(arm.when);
            each(arm.then);
        }
        each(as<CaseExpr>(expr).otherwise);
        break;
    case ExprKind::Cast:
        each(as<CastExpr>(expr).value);
        each(as<CastExpr>(expr).style);
        break;
    case ExprKind::IsNullCall:
    case ExprKind::Coalesce:
    case ExprKind::NullIf: all(as<CallExpr>(expr).arguments); break;
    case ExprKind::Function: {
        const auto& call = as<FunctionExpr>(expr);
        all(call.arguments);
        if (call.over != nullptr) {
            all(call.over->partition);
            for (const OrderItem& item : call.over->order)
                each(item.value);
        }
        break;
    }
    default: break;
    }
}

} // namespace tamarok::embedded::sql
