#pragma once

#include "tamarok_tsql/ast.h"

/// Traversal of the syntax tree.
namespace tamarok::tsql {

/// Calls `visit` for each expression directly under `expr`, those of subqueries included.
template <class Visit>
void visitChildren(Expr& expr, Visit&& visit);

template <class Visit>
void visitFrom(const FromItem* item, Visit&& visit);

/// Calls `visit` for each topmost expression of a query.
template <class Visit>
void visitQuery(Query& query, Visit&& visit)
{
    const auto each = [&](Expr* expr) {
        if (expr != nullptr) visit(*expr);
    };
    if (query.select != nullptr) {
        Select& select = *query.select;
        for (const OutputColumn& output : select.outputs)
            each(output.value);
        visitFrom(select.from, visit);
        each(select.where);
        for (Expr* group : select.groupBy)
            each(group);
        each(select.having);
    } else {
        visitQuery(*query.left, visit);
        visitQuery(*query.right, visit);
    }
    for (const OrderItem& item : query.order) {
        if (item.ordinal == 0) each(item.value);
    }
}

template <class Visit>
void visitFrom(const FromItem* item, Visit&& visit)
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

} // namespace tamarok::tsql
