#include <utility>

#include "translation/emitter.h"

/// FROM and WHERE. Joins beyond those that SQLite takes are nested, see join_nest.h.
namespace tamarok::embedded::translation {

namespace {

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

Emitter::Joins::Joins(Emitter& emitter, const FromItem* from, std::size_t tablesBeside,
                      const std::function<JoinUsers()>& users) :
    emitter_(emitter)
{
    if (from == nullptr || joinedTables(*from) + tablesBeside <= mostJoined) return;
    JoinUsers known = users();
    known.tablesBeside = tablesBeside;
    nest_ = nestJoins(*from, known, emitter.source_, emitter.joinAliases_);
    emitter.nests_.push_back(&*nest_);
}

Emitter::Joins::~Joins()
{
    if (nest_) emitter_.nests_.pop_back();
}

/// Tables are always written with an alias: columns are qualified with the name that the binder knows.
void Emitter::table(const Source& source)
{
    writeName(source.table->name);
    write(" AS ");
    writeName(source.name.text);
}

void Emitter::derived(const FromItem& item, bool kept)
{
    const NestingLevel level(nested_, out_, item.offset, "the derived table ", item.alias.text);
    write("(");
    query(*item.query, item.columnNames.empty() ? Naming::ByName : Naming::Numbered);
    write(kept ? " LIMIT -1) AS " : ") AS ");
    writeName(item.source->name.text);
}

/// A join on the right side of a join is enclosed, since SQLite reads joins from the left.
void Emitter::joinOperand(const JoinTerm& term)
{
    if (term.operand->kind == FromKind::Table) return table(*term.operand->source);
    if (term.operand->kind == FromKind::Derived) return derived(*term.operand, term.kept);
    write("(");
    from(*term.operand);
    write(")");
}

/// A comma binds less tightly than joins on the server, equally in SQLite; it becomes an inner join with its right side
/// in parentheses where that matters (RIGHT and FULL JOIN).
void Emitter::join(const JoinTerm& term)
{
    const bool comma = term.kind == FromKind::Comma && isPlain(*term.operand);
    write(comma ? ", " : joinText(term.kind));
    joinOperand(term);
    if (term.on == nullptr) return;
    write(" ON ");
    expression(*term.on);
}

void Emitter::from(const FromItem& item)
{
    bool first = true;
    for (const JoinTerm& term : joinTerms(item)) {
        if (std::exchange(first, false)) {
            joinOperand(term);
        } else {
            join(term);
        }
    }
}

void Emitter::where(std::span<const Expr* const> conditions)
{
    if (conditions.empty()) return;
    write(" WHERE ");
    if (conditions.size() == 1) return expression(*conditions[0]);
    operands(conditions, true, Binding::None);
}

/// RIGHT and FULL JOIN would take in a table before them, so that the table beside them comes last.
void Emitter::rows(const FromItem* item, const Expr* condition, const Source* beside)
{
    const bool besideFirst = item == nullptr || isChained(*item);
    if (beside != nullptr && besideFirst) {
        table(*beside);
        if (item != nullptr) write(", ");
    }
    JoinNest* const nest = !nests_.empty() && nests_.back()->from == item ? nests_.back() : nullptr;
    if (nest != nullptr) {
        nestedFrom(*nest);
    } else if (item != nullptr) {
        from(*item);
    }
    if (beside != nullptr && !besideFirst) {
        write(", ");
        table(*beside);
    }
    if (nest != nullptr) {
        where(nest->filter);
    } else if (condition != nullptr) {
        where({{condition}});
    }
}

// --- nested joins ------------------------------------------------------------------------------

/// The derived table out of which columns of the source come; nullptr for a table of the FROM that is being written.
const JoinLevel* Emitter::nestedLevel(const Source& source) const
{
    for (const JoinNest* nest : nests_) {
        if (const JoinLevel* const level = nest->levelOf(source)) return level;
    }
    return nullptr;
}

void Emitter::passedColumn(const JoinLevel& level, const PassedColumn& column)
{
    writeName(level.alias);
    write(".");
    writeName(passedName(column));
}

void Emitter::rowKey(const Source& source)
{
    if (const JoinLevel* const level = nestedLevel(source)) {
        passedColumn(*level, {source.number, PassedColumn::rowKey, &source});
        return;
    }
    writeName(source.name.text);
    write(".rowid");
}

/// FROM of the level that is being written: the derived table inside it, then its own joins.
void Emitter::nestedFrom(JoinNest& nest)
{
    const std::size_t level = nest.writing;
    const std::size_t end = level < nest.levels.size() ? nest.levels[level].end : nest.terms.size();
    std::size_t begin = 1;
    if (level == 0) {
        joinOperand(nest.terms[0]);
    } else {
        begin = nest.levels[level - 1].end;
        nestedTable(nest);
    }
    for (std::size_t i = begin; i < end; ++i)
        join(nest.terms[i]);
}

/// The derived table inside the level that is being written. A query needs a column, also where nobody asks for one, as
/// in COUNT(*).
void Emitter::nestedTable(JoinNest& nest)
{
    const JoinLevel& inside = nest.levels[--nest.writing];
    const NestingLevel nesting(nested_, out_, nest.from->offset, "the joins");
    write("(SELECT ");
    bool first = true;
    for (const PassedColumn& column : inside.columns) {
        if (!std::exchange(first, false)) write(", ");
        if (column.column == PassedColumn::rowKey) {
            rowKey(*column.source);
        } else {
            sourceColumn(*column.source, column.column);
        }
        write(" AS ");
        writeName(passedName(column));
    }
    if (first) write("1");
    write(" FROM ");
    nestedFrom(nest);
    where(inside.filter);
    write(" LIMIT -1) AS ");
    writeName(inside.alias);
    ++nest.writing;
}

} // namespace tamarok::embedded::translation
