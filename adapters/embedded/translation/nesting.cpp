#include "translation/nesting.h"

#include <algorithm>
#include <string>

#include "translation/step.h"

namespace tamarok::embedded {

/// The constructs are in the order in which they begin, so that the last one that spans the byte is the innermost.
const NestedConstruct* innermostAt(std::span<const NestedConstruct> constructs, std::size_t position)
{
    const auto behind = std::ranges::upper_bound(constructs, position, {}, &NestedConstruct::begin);
    for (auto at = behind; at != constructs.begin();) {
        --at;
        if (position < at->end) return &*at;
    }
    return nullptr;
}

void refuseNesting(const tsql::ParsedBatch& batch, const Step& step, std::size_t position)
{
    const NestedConstruct* construct = innermostAt(step.nested, position == 0 ? 0 : position - 1);
    std::string message = "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into "
                          "smaller queries.";
    if (construct != nullptr) {
        message +=
            " No deeper level is possible at " + std::string(construct->name) + std::string(construct->qualifier) + ".";
    }
    batch.source().refuse(construct != nullptr ? construct->offset : step.sourceOffset, tsql::messages::tooDeep,
                          std::move(message));
}

namespace translation {

std::string_view constructName(tsql::ExprKind kind)
{
    using tsql::ExprKind;
    switch (kind) {
    case ExprKind::Unary: return "the sign";
    case ExprKind::Binary: return "the operator";
    case ExprKind::And: return "the AND condition";
    case ExprKind::Or: return "the OR condition";
    case ExprKind::Not: return "NOT";
    case ExprKind::InList: return "the IN list";
    case ExprKind::InQuery: return "the IN subquery";
    case ExprKind::Like: return "LIKE";
    case ExprKind::Exists: return "EXISTS";
    case ExprKind::Case: return "CASE";
    case ExprKind::Cast: return "CAST or CONVERT";
    case ExprKind::IsNullCall: return "the function ISNULL";
    case ExprKind::Coalesce: return "the function COALESCE";
    case ExprKind::NullIf: return "the function NULLIF";
    case ExprKind::Function: return "the function ";
    case ExprKind::Subquery: return "the subquery";
    default: return {};
    }
}

} // namespace translation
} // namespace tamarok::embedded
