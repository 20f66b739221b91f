#include <algorithm>

#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

namespace tamarok::embedded::translation {

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

void Emitter::query(const Query& query, Naming naming, const Source* keySource)
{
    if (query.core != nullptr) {
        core(query, naming, false, keySource);
        return;
    }
    compound(query, naming, false);
    orderBy(query);
    limit(query, false);
}

namespace {

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
    const bool top = query.core != nullptr && (query.core->top != nullptr || query.core->rowLimit != nullptr);
    return top || !query.order.empty();
}

} // namespace

/// SQLite joins compound queries from the left with one precedence; everything else is enclosed.
void Emitter::compound(const Query& query, Naming naming, bool collate)
{
    const bool distinct = collate || query.op != SetOperator::UnionAll;
    if (query.left->core == nullptr && query.left->order.empty()) {
        compound(*query.left, naming, distinct);
    } else {
        arm(*query.left, naming, distinct);
    }
    write(operatorText(query.op));
    arm(*query.right, naming, distinct);
}

void Emitter::arm(const Query& query, Naming naming, bool collate)
{
    if (query.core != nullptr && !isLimited(query)) {
        core(query, naming, collate, nullptr);
        return;
    }
    write("SELECT * FROM (");
    if (query.core != nullptr) {
        core(query, naming == Naming::None ? Naming::Numbered : naming, collate, nullptr);
    } else {
        this->query(query, naming == Naming::None ? Naming::Numbered : naming);
    }
    write(")");
}

bool Emitter::foldsRows(const Query& query)
{
    const Core& core = *query.core;
    return core.rowLimit != nullptr &&
           (core.distinct || core.aggregated || core.top != nullptr || !query.order.empty());
}

bool Emitter::isFolded(const Source& source) const
{
    return std::find(folded_.begin(), folded_.end(), source.scope) != folded_.end();
}

void Emitter::core(const Query& query, Naming naming, bool collate, const Source* keySource)
{
    const Core& core = *query.core;
    const bool folds = foldsRows(query);
    if (folds) folded_.push_back(core.scope);
    write(core.distinct ? "SELECT DISTINCT " : "SELECT ");
    items(query, naming, collate || core.distinct, folds ? nullptr : keySource);
    if (folds) {
        folded_.pop_back();
        foldedRows(core);
        folded_.push_back(core.scope);
    } else {
        if (core.source != nullptr) {
            write(" FROM ");
            from(core.source);
        }
        where(core.filter);
    }
    groupBy(core);
    if (core.having != nullptr) {
        write(" HAVING ");
        expression(*core.having);
    }
    orderBy(query);
    limit(query, core.rowLimit != nullptr && !folds);
    if (folds) folded_.pop_back();
}

/// The rows that ROWNUM lets pass, taken before they are grouped or sorted.
void Emitter::foldedRows(const Core& core)
{
    write(" FROM (SELECT ");
    bool first = true;
    for (const ColumnExpr* used : core.scope->used.span()) {
        bool written = false;
        for (const ColumnExpr* before : core.scope->used.span()) {
            if (before == used) break;
            written = written || (before->source == used->source && before->column == used->column);
        }
        if (written) continue;
        if (!first) write(", ");
        first = false;
        column(*used);
        write(" AS ");
        writeName(std::string(used->source->name.text) + "." +
                  std::string(used->source->columnName(static_cast<std::size_t>(used->column))));
    }
    if (first) write("1");
    if (core.source != nullptr) {
        write(" FROM ");
        from(core.source);
    }
    where(core.filter);
    write(" LIMIT ");
    if (core.rowCount >= 0) {
        write(std::to_string(core.rowCount));
    } else {
        expression(*core.rowLimit);
    }
    write(") AS \"~r\"");
}

void Emitter::items(const Query& query, Naming naming, bool collate, const Source* keySource)
{
    const std::span<OutputColumn> outputs = query.core->outputs;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const OutputColumn& output = outputs[i];
        if (i != 0) write(", ");
        if (query.targets.empty()) {
            expression(*output.value);
        } else {
            as(*output.value, query.targets[i]);
        }
        const bool text = needsCollation(*output.value) || (!query.targets.empty() && isText(query.targets[i]));
        if (collate && text && !bringsCollation(*output.value)) write(" COLLATE TAMAROK");
        if (naming == Naming::Numbered) {
            write(" AS \"c");
            write(std::to_string(i + 1));
            write("\"");
        } else if (naming == Naming::Own && !output.name.empty()) {
            write(" AS ");
            writeName(output.name);
        }
    }
    if (keySource != nullptr) {
        write(", ");
        writeName(keySource->name.text);
        write(".rowid");
    }
}

void Emitter::where(const Expr* condition)
{
    if (condition == nullptr) return;
    write(" WHERE ");
    expression(*condition);
}

void Emitter::groupBy(const Core& core)
{
    bool first = true;
    for (const Expr* group : core.groupBy) {
        write(first ? " GROUP BY " : ", ");
        first = false;
        collated(*group);
    }
}

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

void Emitter::limit(const Query& query, bool rowLimitHere)
{
    const Expr* top = query.core != nullptr ? query.core->top : nullptr;
    if (rowLimitHere) {
        write(" LIMIT ");
        if (query.core->rowCount >= 0) {
            write(std::to_string(query.core->rowCount));
        } else {
            expression(*query.core->rowLimit);
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

// --- FROM --------------------------------------------------------------------------------------

void Emitter::fromOperand(const FromItem& item)
{
    const bool plain = item.kind == FromKind::Table || item.kind == FromKind::Derived;
    if (!plain) write("(");
    from(&item);
    if (!plain) write(")");
}

namespace {

/// Whether the joins may be read from the left without changing what they give.
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

std::string_view joinText(FromKind kind)
{
    switch (kind) {
    case FromKind::Left: return " LEFT JOIN ";
    case FromKind::Right: return " RIGHT JOIN ";
    case FromKind::Full: return " FULL JOIN ";
    default: return " INNER JOIN ";
    }
}

} // namespace

void Emitter::from(const FromItem* item)
{
    switch (item->kind) {
    case FromKind::Table:
        writeName(item->source->table->name);
        write(" AS ");
        writeName(item->source->name.text);
        return;
    case FromKind::Derived:
        write("(");
        query(*item->query, item->columnNames.empty() ? Naming::Own : Naming::Numbered);
        write(") AS ");
        writeName(item->source->name.text);
        return;
    default: break;
    }
    from(item->left);
    if (item->kind == FromKind::Comma && isChained(*item->right)) {
        write(", ");
        from(item->right);
        return;
    }
    write(joinText(item->kind));
    fromOperand(*item->right);
    if (item->on != nullptr) {
        write(" ON ");
        expression(*item->on);
    }
}

} // namespace tamarok::embedded::translation
