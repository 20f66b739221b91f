#include "translation/translator.h"

#include "tamarok_tsql/type_rules.h"

namespace tamarok::embedded::translation {

namespace {
// Bytes; the bound tree of an ordinary statement fits into one block.
constexpr std::size_t arenaBlock = std::size_t{16} * 1024;
// Bytes; most translations fit. It does not depend on the length of the batch, which may have 100,000 statements.
constexpr std::size_t textReserve = 1024;
} // namespace

Translator::Translator(const SourceText& source, const Schema& schema, DateOrder order) :
    source_(source), schema_(schema), order_(order), arena_(arenaBlock), binder_(source, schema, arena_),
    emitter_(source, order, 0)
{}

/// Each kind of step sets `step_.kind` and writes its text; `finish` moves the text out of the emitter.
Step Translator::translate(const ParsedStep& parsed, RowKey rowKey)
{
    step_.sourceOffset = parsed.offset;
    step_.jump = parsed.jump;
    step_.flag = parsed.flag;
    step_.dateOrder = parsed.dateOrder;
    switch (parsed.kind) {
    case StepKind::Query: query(*parsed.query, rowKey); break;
    case StepKind::Insert: insert(*parsed.insert); break;
    case StepKind::Update: update(*parsed.update); break;
    case StepKind::Delete: erase(*parsed.erase); break;
    case StepKind::CreateTable: createTable(*parsed.createTable); break;
    case StepKind::CreateIndex: createIndex(*parsed.createIndex); break;
    case StepKind::CreateView: createView(*parsed.createView); break;
    case StepKind::Drop: drop(*parsed.drop); break;
    case StepKind::Alter: alter(*parsed.alter); break;
    case StepKind::Truncate: truncate(parsed.name); break;
    case StepKind::Execute:
        step_.kind = Step::Kind::Procedure;
        step_.target = parsed.name.text;
        step_.arguments = parsed.arguments;
        break;
    case StepKind::JumpUnless: condition(*parsed.condition); break;
    case StepKind::Begin: step_.kind = Step::Kind::Begin; break;
    case StepKind::Commit: step_.kind = Step::Kind::Commit; break;
    case StepKind::Rollback: step_.kind = Step::Kind::Rollback; break;
    case StepKind::NoCount: step_.kind = Step::Kind::NoCount; break;
    case StepKind::XactAbort: step_.kind = Step::Kind::XactAbort; break;
    case StepKind::IdentityInsert: identityInsert(parsed.name); break;
    case StepKind::DateFormat: step_.kind = Step::Kind::DateFormat; break;
    case StepKind::Jump: step_.kind = Step::Kind::Jump; break;
    case StepKind::Nothing: step_.kind = Step::Kind::Nothing; break;
    }
    finish();
    return std::move(step_);
}

void Translator::finish()
{
    step_.text = std::move(emitter_.text());
    step_.parameters = std::move(emitter_.parameters());
    step_.nested = std::move(emitter_.nested());
}

/// The condition of IF becomes a query with one number. Unknown gives NULL, which the engine reads as 0.
void Translator::condition(Expr& condition)
{
    binder_.bindPlain(condition, binder_.makeScope(nullptr), "IF");
    step_.kind = Step::Kind::JumpUnless;
    emitter_.write("SELECT ");
    emitter_.expression(condition);
}

// --- SELECT ------------------------------------------------------------------------------------

/// A query may turn out to be SELECT ... INTO, which is a definition. With a row key, the rowid follows the columns of
/// the query and is not among the described ones.
void Translator::query(Query& query, RowKey rowKey)
{
    emitter_.text().reserve(textReserve);
    binder_.bindQuery(query, nullptr);
    if (query.select != nullptr && !query.select->into.empty()) {
        selectInto(query);
        return;
    }
    step_.kind = Step::Kind::Query;
    const Source* key = rowKey == RowKey::Added ? keySource(query) : nullptr;
    if (key != nullptr) step_.keyTable = key->table->name;
    emitter_.query(query, Naming::ByName, key);
    describe(query.outputs);
}

/// The one base table whose rows the query returns, each at most once; nullptr if there is no such table.
const Source* Translator::keySource(const Query& query) const
{
    if (query.select == nullptr) return nullptr;
    const Select& select = *query.select;
    const bool oneTable = select.source != nullptr && select.source->kind == FromKind::Table;
    // ROWNUM with ORDER BY reads from an inner query, which has no rowid.
    const bool limitsFirst = select.rowLimit != nullptr && (select.top != nullptr || !query.order.empty());
    if (!oneTable || select.distinct || select.aggregated || limitsFirst) return nullptr;
    return select.source->source;
}

/// The columns of the result with their base columns, where they have one.
void Translator::describe(std::span<const OutputColumn> outputs)
{
    step_.columns.reserve(outputs.size());
    for (const OutputColumn& output : outputs) {
        ResultColumn& column = step_.columns.emplace_back();
        column.name = output.name;
        column.type = output.type;
        const BaseColumn base = baseOf(output);
        if (base.table == nullptr) continue;
        column.baseTable = base.table->name;
        column.baseColumn = base.table->columns[base.column].name;
    }
}

/// SQLite's CREATE TABLE AS would lose the declared types and the collation. The table is therefore declared and filled
/// by two statements in one text. A column of open type becomes INT, as on the server for NULL.
void Translator::selectInto(Query& query)
{
    const Name& into = query.select->into;
    const bool temporary = into.text.starts_with('#');
    step_.kind = Step::Kind::Define;
    emitter_.write(temporary ? "CREATE TEMP TABLE " : "CREATE TABLE ");
    emitter_.writeName(into.text);
    emitter_.write(" (");
    bool first = true;
    for (const OutputColumn& output : query.outputs) {
        if (output.name.empty()) {
            source_.refuse(into.offset, 1038, "An object or column name is missing or empty in SELECT INTO.");
        }
        if (!first) emitter_.write(", ");
        first = false;
        emitter_.writeName(output.name);
        emitter_.write(" " +
                       sqliteDeclaration(declaredText(isOpen(output.type) ? makeType(TypeKind::Int) : output.type)));
        const bool text = isText(output.type) || output.type.kind == TypeKind::UniqueIdentifier;
        if (text) emitter_.write(" COLLATE TAMAROK");
    }
    emitter_.write("); INSERT INTO ");
    emitter_.writeName(into.text);
    emitter_.write(" ");
    emitter_.query(query, Naming::ByName);
    // A text of several statements is run as a whole, without parameters.
    if (!emitter_.parameters().empty()) source_.unsupported(into.offset, "A parameter in SELECT INTO");
}

// --- INSERT ------------------------------------------------------------------------------------

/// Without a column list the values go to all columns but the identity column, as on the server.
std::span<std::int32_t> Translator::insertColumns(const InsertStatement& insert, const Table& table)
{
    ArenaList<std::int32_t> columns(arena_);
    for (const Name& name : insert.columns) {
        const std::int32_t column = binder_.requireColumn(table, name);
        for (const std::int32_t before : columns.span()) {
            if (before != column) continue;
            source_.refuse(name.offset, 264,
                           "The column name '" + std::string(name.text) +
                               "' is specified more than once in the column list of an INSERT.");
        }
        columns.push(column);
    }
    if (!insert.columns.empty()) return columns.span();
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (!table.columns[i].identity) columns.push(static_cast<std::int32_t>(i));
    }
    return columns.span();
}

void Translator::columnList(const Table& table, std::span<const std::int32_t> columns)
{
    emitter_.write(" (");
    bool first = true;
    for (const std::int32_t column : columns) {
        if (!first) emitter_.write(", ");
        first = false;
        emitter_.writeName(table.columns[static_cast<std::size_t>(column)].name);
    }
    emitter_.write(")");
}

/// INSERT of rows and of a query differ only after the column list.
void Translator::insert(const InsertStatement& insert)
{
    const Table& table = binder_.requireTable(insert.table);
    step_.kind = Step::Kind::Insert;
    step_.target = table.name;
    emitter_.text().reserve(textReserve);
    emitter_.write("INSERT INTO ");
    emitter_.writeName(table.name);
    if (insert.defaults) {
        checkIdentity(insert, table, {});
        emitter_.write(" DEFAULT VALUES");
        return;
    }
    const std::span<std::int32_t> columns = insertColumns(insert, table);
    checkIdentity(insert, table, columns);
    if (insert.query != nullptr) {
        columnList(table, columns);
        insertQuery(insert, table, columns);
    } else {
        insertRows(insert, table, columns);
    }
}

namespace {

/// Refuses an INSERT whose rows have another number of values than it has columns.
[[noreturn]] void refuseCount(const SourceText& source, const InsertStatement& insert, std::size_t values,
                              std::size_t columns)
{
    if (insert.columns.empty()) {
        source.refuse(insert.table.offset, 213,
                      "Column name or number of supplied values does not match table definition.");
    }
    const bool tooMany = values > columns;
    source.refuse(insert.table.offset, tooMany ? 110 : 109,
                  "There are " + std::string(tooMany ? "fewer" : "more") +
                      " columns in the INSERT statement than values specified. The number of values must match the "
                      "number of columns.");
}

} // namespace

/// Leaves out the columns that get DEFAULT in every row, since SQLite has no DEFAULT in VALUES.
std::span<std::int32_t> Translator::withoutDefaults(const InsertStatement& insert, std::span<std::int32_t> columns)
{
    const std::span<std::int32_t> kept = arena_.copy(std::span<const std::int32_t>(columns));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool first = insert.rows[0][i]->kind == ExprKind::Default;
        for (const ExprList& row : insert.rows) {
            if ((row[i]->kind == ExprKind::Default) == first) continue;
            source_.unsupported(row[i]->offset, "DEFAULT in some rows of VALUES only");
        }
        if (first) kept[i] = -1;
    }
    return kept;
}

/// Keeps a second text of the statement without conversions if the row consists of parameters alone.
void Translator::unconvertedRow(const ExprList& row, const Table& table, std::span<const std::int32_t> kept)
{
    std::string text = emitter_.text() + " VALUES (";
    std::vector<Type> types;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (kept[i] < 0) continue;
        if (row[i]->kind != ExprKind::Parameter) return;
        text += types.empty() ? "?" : ", ?";
        types.push_back(table.columns[static_cast<std::size_t>(kept[i])].type);
    }
    step_.unconvertedText = std::move(text) + ")";
    step_.unconvertedTypes = std::move(types);
}

/// Checks the number of values of every row, drops the columns that get DEFAULT, then writes the rows with each value
/// converted to the type of its column. `kept` has the position of the column for each value, -1 for a dropped one.
void Translator::insertRows(const InsertStatement& insert, const Table& table, std::span<const std::int32_t> columns)
{
    for (const ExprList& row : insert.rows) {
        if (row.size() == columns.size()) continue;
        refuseCount(source_, insert, row.size(), columns.size());
    }
    const std::span<std::int32_t> all = arena_.copy(columns);
    const std::span<std::int32_t> kept = withoutDefaults(insert, all);
    ArenaList<std::int32_t> listed(arena_);
    for (const std::int32_t column : kept) {
        if (column >= 0) listed.push(column);
    }
    if (listed.size() == 0) {
        if (insert.rows.size() > 1) source_.unsupported(insert.table.offset, "VALUES of DEFAULT in several rows");
        emitter_.write(" DEFAULT VALUES");
        return;
    }
    columnList(table, listed.span());
    if (insert.rows.size() == 1) unconvertedRow(insert.rows[0], table, kept);
    Scope& scope = binder_.makeScope(nullptr);
    bool firstRow = true;
    for (const ExprList& row : insert.rows) {
        emitter_.write(firstRow ? " VALUES (" : ", (");
        firstRow = false;
        bool first = true;
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (kept[i] < 0) continue;
            if (!first) emitter_.write(", ");
            first = false;
            binder_.bindPlain(*row[i], scope, "VALUES");
            emitter_.assigned(*row[i], table.columns[static_cast<std::size_t>(kept[i])], table);
        }
        emitter_.write(")");
    }
}

/// The rows of a query, brought to the columns' types by a query around it.
void Translator::insertQuery(const InsertStatement& insert, const Table& table, std::span<const std::int32_t> columns)
{
    Query& query = *insert.query;
    binder_.bindQuery(query, nullptr);
    // The server has three errors for this: 213 without a column list, 120 and 121 with one.
    if (query.outputs.size() != columns.size()) {
        if (insert.columns.empty()) refuseCount(source_, insert, query.outputs.size(), columns.size());
        const bool tooMany = query.outputs.size() > columns.size();
        source_.refuse(insert.table.offset, tooMany ? 121 : 120,
                       "The select list for the INSERT statement contains " + std::string(tooMany ? "more" : "fewer") +
                           " items than the insert list. The number of SELECT values must match the number of INSERT "
                           "columns.");
    }
    // If all types agree, no conversion is needed and the query needs no other one around it.
    bool same = true;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const Type& target = table.columns[static_cast<std::size_t>(columns[i])].type;
        same = same && (query.outputs[i].type == target || query.outputs[i].type.kind == TypeKind::Null);
    }
    if (same) {
        emitter_.write(" ");
        emitter_.query(query, Naming::None);
        return;
    }
    emitter_.write(" SELECT ");
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i != 0) emitter_.write(", ");
        const std::string_view name = arena_.text("c" + std::to_string(i + 1));
        emitter_.assignedColumn(name, query.outputs[i].type, table.columns[static_cast<std::size_t>(columns[i])],
                                table);
    }
    emitter_.write(" FROM (");
    emitter_.query(query, Naming::Numbered);
    emitter_.write(") AS \"~q\"");
}

// --- UPDATE and DELETE -------------------------------------------------------------------------

void Translator::bindWhere(Expr* where, Scope& scope)
{
    if (where != nullptr) binder_.bindPlain(*where, scope, "WHERE");
}

/// The table to change: one of the FROM clause by alias or name, or a table beside it.
/// `joined` receives whether its rows come out of the FROM clause.
Source& Translator::targetSource(const Name& target, FromItem* from, Scope& scope, bool& joined)
{
    joined = false;
    if (from == nullptr) return binder_.addTable(binder_.requireTable(target), target, scope);
    binder_.bindFrom(from, scope);
    // An alias that equals the name wins over a table of that name.
    Source* found = nullptr;
    for (Source* source : scope.sources.span()) {
        if (source->name == target) found = source;
    }
    for (Source* source : scope.sources.span()) {
        const bool named = source->table != nullptr && sameName(source->table->name, target.text);
        if (found != nullptr && source != found) continue;
        if (named) found = source;
    }
    if (found == nullptr) return binder_.addTable(binder_.requireTable(target), target, scope);
    if (found->table == nullptr) {
        source_.refuse(target.offset, 4421, "Derived table '" + std::string(target.text) + "' is not updatable.");
    }
    joined = true;
    return *found;
}

/// Writes its text with an emitter of its own, since the parameters of the probe are fewer than those of the statement
/// (SET has no part in it). A join may give a row of the target several times, hence DISTINCT.
void Translator::lockProbe(const Source& target, const FromItem* from, bool joined, Expr* where)
{
    Emitter probe(source_, order_, 256);
    const Emitter::Joins joins(probe, from, joined ? 0 : 1, [&] {
        return JoinUsers{{}, where, joined ? &target : nullptr};
    });
    probe.write(from != nullptr ? "SELECT DISTINCT " : "SELECT ");
    probe.rowKey(target);
    probe.write(" FROM ");
    probe.rows(from, where, joined ? nullptr : &target);
    step_.lockProbe = std::move(probe.text());
    step_.probeParameters = std::move(probe.parameters());
    probeNested_ = std::move(probe.nested());
}

/// @param fromRows  the values are the columns "c1", "c2", ... of the joined rows "~u"; otherwise expressions
void Translator::updateAssignments(const UpdateStatement& update, const Source& target, bool fromRows)
{
    emitter_.write(" SET ");
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        const Assignment& assignment = update.assignments[i];
        const TableColumn& column =
            target.table->columns[static_cast<std::size_t>(binder_.requireColumn(*target.table, assignment.column))];
        if (column.identity) {
            source_.refuse(assignment.column.offset, 8102, "Cannot update identity column '" + column.name + "'.");
        }
        if (i != 0) emitter_.write(", ");
        emitter_.writeName(column.name);
        emitter_.write(" = ");
        if (fromRows) {
            emitter_.write("\"~u\".\"c" + std::to_string(i + 1) + "\"");
        } else {
            emitter_.assigned(*assignment.value, column, *target.table);
        }
    }
}

/// Error 264 for a column that an assignment before this one sets.
void Translator::checkAssignedOnce(const UpdateStatement& update, const Assignment& assignment) const
{
    for (const Assignment& before : update.assignments) {
        if (&before == &assignment) return;
        if (!(before.column == assignment.column)) continue;
        source_.refuse(assignment.column.offset, 264,
                       "The column name '" + std::string(assignment.column.text) +
                           "' is specified more than once in the SET clause or column list of an INSERT. A column "
                           "cannot be assigned more than one value in the same clause. Modify the clause to make "
                           "sure that a column is updated only once. If this statement updates or inserts columns "
                           "into a view, column aliasing can conceal the duplication in your code.");
    }
}

/// Three forms: a table alone, a table beside a FROM clause (SQLite knows both), and a target inside its own FROM
/// clause, which `updateJoined` rewrites.
void Translator::update(const UpdateStatement& update)
{
    Scope& scope = binder_.makeScope(nullptr);
    bool joined = false;
    const Source& target = targetSource(update.target, update.from, scope, joined);
    for (const Assignment& assignment : update.assignments) {
        if (assignment.value->kind == ExprKind::Default) {
            source_.unsupported(assignment.value->offset, "DEFAULT in UPDATE");
        }
        checkAssignedOnce(update, assignment);
        binder_.bindPlain(*assignment.value, scope, "SET");
    }
    bindWhere(update.where, scope);
    step_.kind = Step::Kind::Update;
    step_.target = target.table->name;
    emitter_.write("UPDATE ");
    emitter_.writeName(target.table->name);
    emitter_.write(" AS ");
    if (joined) {
        updateJoined(update, target);
    } else {
        const Emitter::Joins joins = nestedJoins(emitter_, update, target, false);
        emitter_.writeName(target.name.text);
        updateAssignments(update, target, false);
        if (update.from != nullptr) emitter_.write(" FROM ");
        emitter_.rows(update.from, update.where);
    }
    lockProbe(target, update.from, joined, update.where);
    newRows(update, target, joined);
}

/// The joins of an UPDATE, which uses their columns in the new values.
Emitter::Joins Translator::nestedJoins(Emitter& emitter, const UpdateStatement& update, const Source& target,
                                       bool joined)
{
    return {emitter, update.from, 1, [&] {
                JoinUsers users{{}, update.where, joined ? &target : nullptr};
                for (const Assignment& assignment : update.assignments)
                    users.values.push_back(assignment.value);
                return users;
            }};
}

/// SQLite's UPDATE does not find its own table in FROM: the joined rows are taken by their row keys.
void Translator::updateJoined(const UpdateStatement& update, const Source& target)
{
    const Emitter::Joins joins = nestedJoins(emitter_, update, target, true);
    emitter_.write("\"~t\"");
    updateAssignments(update, target, true);
    emitter_.write(" FROM (SELECT ");
    emitter_.rowKey(target);
    emitter_.write(" AS \"k\"");
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        const Assignment& assignment = update.assignments[i];
        const std::int32_t column = binder_.requireColumn(*target.table, assignment.column);
        emitter_.write(", ");
        emitter_.assigned(*assignment.value, target.table->columns[static_cast<std::size_t>(column)], *target.table);
        emitter_.write(" AS \"c" + std::to_string(i + 1) + "\"");
    }
    emitter_.write(" FROM ");
    emitter_.rows(update.from, update.where);
    emitter_.write(") AS \"~u\" WHERE \"~t\".rowid = \"~u\".\"k\"");
}

/// SQLite's DELETE has no FROM clause for joins: the rows to delete are those that the lock probe finds.
void Translator::erase(const DeleteStatement& erase)
{
    Scope& scope = binder_.makeScope(nullptr);
    bool joined = false;
    const Source& target = targetSource(erase.target, erase.from, scope, joined);
    bindWhere(erase.where, scope);
    step_.kind = Step::Kind::Delete;
    step_.target = target.table->name;
    lockProbe(target, erase.from, joined, erase.where);
    emitter_.write("DELETE FROM ");
    emitter_.writeName(target.table->name);
    if (erase.from == nullptr) {
        emitter_.write(" AS ");
        emitter_.writeName(target.name.text);
        emitter_.rows(nullptr, erase.where);
        return;
    }
    emitter_.write(" WHERE rowid IN (");
    const std::size_t begin = emitter_.text().size();
    emitter_.write(step_.lockProbe);
    emitter_.write(")");
    emitter_.parameters() = step_.probeParameters;
    for (NestedConstruct& construct : probeNested_) {
        construct.begin += begin;
        construct.end += begin;
    }
    emitter_.nested() = std::move(probeNested_);
}

} // namespace tamarok::embedded::translation

namespace tamarok::embedded {

Step translateStep(const tsql::ParsedBatch& batch, std::size_t index, const tsql::Schema& schema, tsql::DateOrder order,
                   RowKey rowKey)
{
    return translation::Translator(batch.source(), schema, order).translate(batch.steps()[index], rowKey);
}

} // namespace tamarok::embedded
