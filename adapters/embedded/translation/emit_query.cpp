#include <algorithm>
#include <set>
#include <utility>

#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

namespace tamarok::embedded::translation {

/// Names are always quoted, since a column may be called like a keyword of SQLite. Most have no quote inside and are
/// copied at once.
void Emitter::writeName(std::string_view name)
{
    out_ += '"';
    if (name.find('"') == std::string_view::npos) {
        out_ += name;
    } else {
        for (const char c : name) {
            out_ += c;
            if (c == '"') out_ += c;
        }
    }
    out_ += '"';
}

void Emitter::writeText(std::string_view value)
{
    out_ += '\'';
    for (const char c : value) {
        out_ += c;
        if (c == '\'') out_ += c;
    }
    out_ += '\'';
}

/// A compound query has its ORDER BY and LIMIT after the last arm; a SELECT writes its own.
void Emitter::query(const Query& query, Naming naming, const Source* keySource)
{
    if (query.select != nullptr) {
        select(query, naming, false, keySource);
        return;
    }
    compound(query, naming, false);
    orderBy(query);
    limit(query, false);
}

namespace {

/// The operator with its blanks.
std::string_view operatorText(SetOperator op)
{
    switch (op) {
    case SetOperator::Union: return " UNION ";
    case SetOperator::UnionAll: return " UNION ALL ";
    case SetOperator::Except: return " EXCEPT ";
    default: return " INTERSECT ";
    }
}

bool isLimited(const Query& query)
{
    const bool top = query.select != nullptr && (query.select->top != nullptr || query.select->rowLimit != nullptr);
    return top || !query.order.empty();
}

} // namespace

/// SQLite joins compound queries from the left with one precedence; everything else is enclosed.
void Emitter::compound(const Query& query, Naming naming, bool collate)
{
    const bool distinct = collate || query.op != SetOperator::UnionAll;
    if (query.left->select == nullptr && query.left->order.empty()) {
        compound(*query.left, naming, distinct);
    } else {
        arm(*query.left, naming, distinct);
    }
    write(operatorText(query.op));
    arm(*query.right, naming, distinct);
}

/// SQLite allows ORDER BY and LIMIT only after the whole compound query. An arm with one of them, and a compound query
/// on the right, becomes a subquery.
void Emitter::arm(const Query& query, Naming naming, bool collate)
{
    if (query.select != nullptr && !isLimited(query)) {
        select(query, naming, collate, nullptr);
        return;
    }
    write("SELECT * FROM (");
    if (query.select != nullptr) {
        select(query, naming == Naming::None ? Naming::Numbered : naming, collate, nullptr);
    } else {
        this->query(query, naming == Naming::None ? Naming::Numbered : naming);
    }
    write(")");
}

/// Oracle counts rows with ROWNUM before it sorts, groups or removes duplicates; SQLite's LIMIT comes last. Where the
/// order matters, the limit goes into an inner query.
bool Emitter::needsLimitedRows(const Query& query)
{
    const Select& select = *query.select;
    return select.rowLimit != nullptr &&
           (select.distinct || select.aggregated || select.top != nullptr || !query.order.empty());
}

bool Emitter::comesFromLimitedRows(const Source& source) const
{
    return std::find(limitedScopes_.begin(), limitedScopes_.end(), source.scope) != limitedScopes_.end();
}

/// Writes the clauses in order. While `limitedScopes_` contains the scope, its columns are written as columns of the
/// inner query; inside that query they are written as those of the tables.
void Emitter::select(const Query& query, Naming naming, bool collate, const Source* keySource)
{
    const Select& select = *query.select;
    const bool limitsFirst = needsLimitedRows(query);
    const Joins joins(*this, select.source, 0, [&] { return joinUsers(query); });
    if (limitsFirst) limitedScopes_.push_back(select.scope);
    write(select.distinct ? "SELECT DISTINCT " : "SELECT ");
    items(query, naming, collate || select.distinct, limitsFirst ? nullptr : keySource);
    if (limitsFirst) {
        limitedScopes_.pop_back();
        limitedRows(select);
        limitedScopes_.push_back(select.scope);
    } else {
        if (select.source != nullptr) write(" FROM ");
        rows(select.source, select.filter);
    }
    groupBy(select);
    if (select.having != nullptr) {
        write(" HAVING ");
        expression(*select.having);
    }
    orderBy(query);
    limit(query, select.rowLimit != nullptr && !limitsFirst);
    if (limitsFirst) limitedScopes_.pop_back();
}

/// The rows that ROWNUM lets pass, taken before they are grouped or sorted.
void Emitter::limitedRows(const Select& select)
{
    write(" FROM (SELECT ");
    bool first = true;
    // A column may be used many times and is listed once.
    std::set<std::pair<const Source*, std::int32_t>> listed;
    for (const ColumnExpr* used : select.scope->used.span()) {
        if (!listed.emplace(used->source, used->column).second) continue;
        if (!first) write(", ");
        first = false;
        column(*used);
        write(" AS ");
        writeName(std::string(used->source->name.text) + "." +
                  std::string(used->source->columnName(static_cast<std::size_t>(used->column))));
    }
    // The query around it uses no column, as in COUNT(*).
    if (first) write("1");
    if (select.source != nullptr) write(" FROM ");
    rows(select.source, select.filter);
    write(" LIMIT ");
    if (select.rowCount >= 0) {
        write(std::to_string(select.rowCount));
    } else {
        expression(*select.rowLimit);
    }
    write(") AS \"~r\"");
}

/// Each item is converted to the type of the compound query, if it belongs to one, then collated where duplicates are
/// to be found, then named.
void Emitter::items(const Query& query, Naming naming, bool collate, const Source* keySource)
{
    const std::span<OutputColumn> outputs = query.select->outputs;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const OutputColumn& output = outputs[i];
        if (i != 0) write(", ");
        const bool text = needsCollation(*output.value) || (!query.targets.empty() && isText(query.targets[i]));
        const bool collates = collate && text && !bringsCollation(*output.value);
        const Binding need = collates ? Binding::Collate : Binding::None;
        if (query.targets.empty()) {
            expression(*output.value, need);
        } else {
            as(*output.value, query.targets[i], BadDate::LeftToRunTime, need);
        }
        if (collates) write(" COLLATE TAMAROK");
        if (naming == Naming::Numbered) {
            write(" AS \"c");
            write(std::to_string(i + 1));
            write("\"");
        } else if (naming == Naming::ByName && !output.name.empty()) {
            write(" AS ");
            writeName(output.name);
        }
    }
    if (keySource != nullptr) {
        write(", ");
        rowKey(*keySource);
    }
}

void Emitter::groupBy(const Select& select)
{
    bool first = true;
    for (const Expr* group : select.groupBy) {
        write(first ? " GROUP BY " : ", ");
        first = false;
        collated(*group);
    }
}

/// An item that is in the SELECT list as well is written as its position there, so that SQLite computes it once. Texts
/// are ordered by collation TAMAROK.
void Emitter::orderBy(const Query& query)
{
    bool first = true;
    for (const OrderItem& item : query.order) {
        write(first ? " ORDER BY " : ", ");
        first = false;
        if (item.ordinal == 0) {
            collated(*item.value);
        } else {
            const OutputColumn& output = query.outputs[static_cast<std::size_t>(item.ordinal) - 1];
            write(std::to_string(item.ordinal));
            const bool text = isText(output.type) || output.type.kind == TypeKind::Unknown;
            const bool brings = output.value != nullptr && bringsCollation(*output.value);
            if (text && !brings) write(" COLLATE TAMAROK");
        }
        if (item.descending) write(" DESC");
    }
}

/// SQLite takes any expression after LIMIT; parentheses keep it apart from what follows.
void Emitter::limitValue(const Expr& expr)
{
    if (expr.kind == ExprKind::Number || expr.kind == ExprKind::Parameter) {
        expression(expr);
        return;
    }
    write("(");
    expression(expr);
    write(")");
}

/// ROWNUM, TOP and FETCH all become LIMIT; OFFSET alone needs LIMIT -1 before it, which is no limit.
void Emitter::limit(const Query& query, bool rowLimitHere)
{
    const Expr* top = query.select != nullptr ? query.select->top : nullptr;
    if (rowLimitHere) {
        write(" LIMIT ");
        if (query.select->rowCount >= 0) {
            write(std::to_string(query.select->rowCount));
        } else {
            expression(*query.select->rowLimit);
        }
        return;
    }
    if (query.fetch != nullptr) top = query.fetch;
    if (top == nullptr && query.skip == nullptr) return;
    write(" LIMIT ");
    if (top != nullptr) {
        limitValue(*top);
    } else {
        write("-1");
    }
    if (query.skip == nullptr) return;
    write(" OFFSET ");
    limitValue(*query.skip);
}

} // namespace tamarok::embedded::translation
