#include <algorithm>

#include "tamarok_tsql/type_rules.h"
#include "translation/translator.h"

namespace tamarok::embedded::translation {

/// SQLite accepts neither brackets nor (MAX) after a type's name, but any text in quotes.
std::string sqliteDeclaration(std::string_view declaration)
{
    // SQLite would number a primary key of the type INTEGER.
    if (sameName(declaration, "INTEGER")) return "INT";
    const bool plain =
        std::none_of(declaration.begin(), declaration.end(), [](char c) { return c == '[' || c == ']' || c == '"'; });
    const bool unlimited = parseDeclaredType(declaration).length < 0 && declaration.find('(') != std::string_view::npos;
    if (plain && !unlimited) return std::string(declaration);
    std::string quoted = "\"";
    for (const char c : declaration) {
        if (c != '"' && c != '[' && c != ']') quoted += c;
    }
    return quoted + "\"";
}

namespace {

const TableConstraint* primaryKey(const CreateTableStatement& create)
{
    for (const TableConstraint& constraint : create.constraints) {
        if (constraint.kind == ConstraintKind::PrimaryKey) return &constraint;
    }
    return nullptr;
}

/// Whether the column alone is the primary key.
bool isKeyOf(const TableConstraint* key, const ColumnDefinition& column)
{
    return key != nullptr && key->columns.size() == 1 && key->columns[0] == column.name;
}

} // namespace

void Translator::nameList(std::span<const Name> names)
{
    emitter_.write("(");
    bool first = true;
    for (const Name& name : names) {
        if (!first) emitter_.write(", ");
        first = false;
        emitter_.writeName(name.text);
    }
    emitter_.write(")");
}

/// The table that is being created, against which its constraints and defaults are bound.
Table Translator::declaredTable(const CreateTableStatement& create)
{
    Table table;
    table.name = create.table.text;
    for (const ColumnDefinition& column : create.columns) {
        if (table.column(column.name.text) >= 0) {
            source_.refuse(column.name.offset, 2705,
                           "Column names in each table must be unique. Column name '" + std::string(column.name.text) +
                               "' in table '" + table.name + "' is specified more than once.");
        }
        TableColumn& added = table.columns.emplace_back();
        added = {std::string(column.name.text), column.type, column.identity};
        added.nullable = !column.notNull && !column.primaryKey && !column.identity;
        added.binary = column.binary;
    }
    if (const TableConstraint* key = primaryKey(create)) {
        for (const Name& name : key->columns)
            table.columns[static_cast<std::size_t>(binder_.requireColumn(table, name))].nullable = false;
    }
    return table;
}

/// Checks the identity column, then writes columns and constraints. A primary key of the identity column alone is
/// written with the column, not again as a constraint.
void Translator::createTable(const CreateTableStatement& create)
{
    if (schema_.table(create.table.text) != nullptr) {
        source_.refuse(create.table.offset, 2714,
                       "There is already an object named '" + std::string(create.table.text) + "' in the database.",
                       "42S01");
    }
    const Table table = declaredTable(create);
    const TableConstraint* key = primaryKey(create);
    const auto identities = std::count_if(create.columns.begin(), create.columns.end(),
                                          [](const ColumnDefinition& column) { return column.identity; });
    if (identities > 1) {
        source_.refuse(create.table.offset, 2744,
                       "Multiple identity columns specified for table '" + table.name + "'.");
    }
    step_.kind = Step::Kind::Define;
    step_.target = table.name;
    // The server's temporary tables are known by the # of their names, which stays part of the name here.
    emitter_.write(create.table.text.starts_with('#') ? "CREATE TEMP TABLE " : "CREATE TABLE ");
    emitter_.writeName(create.table.text);
    emitter_.write(" (");
    bool first = true;
    bool keyDone = false;
    for (const ColumnDefinition& column : create.columns) {
        if (!first) emitter_.write(", ");
        first = false;
        const bool inKey =
            key != nullptr && std::find(key->columns.begin(), key->columns.end(), column.name) != key->columns.end();
        keyDone = keyDone || (column.identity && isKeyOf(key, column));
        columnDefinition(column, table, inKey || (column.primaryKey && identities > 0));
    }
    for (const TableConstraint& constraint : create.constraints) {
        if (&constraint == key && keyDone) continue;
        for (const Name& name : constraint.columns)
            binder_.requireColumn(table, name);
        emitter_.write(", ");
        tableConstraint(constraint, table, identities > 0);
    }
    emitter_.write(")");
    uniqueNulls(create, table);
}

/// The index for the Nulls of each UNIQUE constraint, numbered since a constraint needs no name.
void Translator::uniqueNulls(const CreateTableStatement& create, const Table& table)
{
    std::int32_t number = 0;
    for (const ColumnDefinition& column : create.columns) {
        if (!column.unique) continue;
        const std::int32_t index = binder_.requireColumn(table, column.name);
        oneNull(table, {&index, 1}, "constraint", std::to_string(++number));
    }
    for (const TableConstraint& constraint : create.constraints) {
        if (constraint.kind != ConstraintKind::Unique) continue;
        std::vector<std::int32_t> columns;
        for (const Name& name : constraint.columns)
            columns.push_back(binder_.requireColumn(table, name));
        oneNull(table, columns, "constraint", std::to_string(++number));
    }
}

/// A column numbered by the database is SQLite's row key; another primary key beside it becomes UNIQUE.
void Translator::columnDefinition(const ColumnDefinition& column, const Table& table, bool inKey)
{
    emitter_.writeName(column.name.text);
    if (column.identity) {
        emitter_.write(" INTEGER PRIMARY KEY AUTOINCREMENT");
        return;
    }
    emitter_.write(" " + sqliteDeclaration(column.typeText));
    const bool identityBeside = std::any_of(table.columns.begin(), table.columns.end(),
                                            [](const TableColumn& other) { return other.identity; });
    // SQLite allows NULL in a primary key of several columns; the server does not.
    if (column.notNull || column.primaryKey || inKey) emitter_.write(" NOT NULL");
    if (column.primaryKey) emitter_.write(identityBeside ? " UNIQUE" : " PRIMARY KEY");
    if (column.unique) emitter_.write(" UNIQUE");
    if (column.defaultValue != nullptr) {
        binder_.bindPlain(*column.defaultValue, binder_.makeScope(nullptr), "DEFAULT");
        emitter_.write(" DEFAULT (");
        emitter_.assigned(*column.defaultValue, {std::string(column.name.text), column.type}, table);
        emitter_.write(")");
    }
    const bool text = isText(column.type) || column.type.kind == TypeKind::UniqueIdentifier;
    if (text) emitter_.write(column.binary ? " COLLATE BINARY" : " COLLATE TAMAROK");
    if (column.check != nullptr) {
        emitter_.write(" ");
        check(*column.check, table);
    }
    if (!column.referencedTable.empty()) {
        referenceTo(column.referencedTable, column.referencedColumns, column.referenceActions);
    }
}

/// A check names columns of its own table only, so they are written without it.
void Translator::check(Expr& condition, const Table& table)
{
    Scope& scope = binder_.makeScope(nullptr);
    binder_.addTable(table, {table.name, condition.offset}, scope);
    binder_.bindPlain(condition, scope, "CHECK");
    emitter_.write("CHECK (");
    emitter_.writeUnqualifiedColumns(true);
    emitter_.expression(condition);
    emitter_.writeUnqualifiedColumns(false);
    emitter_.write(")");
}

void Translator::referenceTo(const Name& table, std::span<const Name> columns, std::string_view actions)
{
    emitter_.write(" REFERENCES ");
    emitter_.writeName(table.text);
    if (!columns.empty()) nameList(columns);
    if (!actions.empty()) {
        emitter_.write(" ");
        emitter_.write(actions);
    }
}

/// SQLite spells the constraints as the server does. A primary key beside an identity column becomes UNIQUE, since the
/// identity column is SQLite's row key.
void Translator::tableConstraint(const TableConstraint& constraint, const Table& table, bool demoted)
{
    if (!constraint.name.empty()) {
        emitter_.write("CONSTRAINT ");
        emitter_.writeName(constraint.name.text);
        emitter_.write(" ");
    }
    switch (constraint.kind) {
    case ConstraintKind::PrimaryKey:
        emitter_.write(demoted ? "UNIQUE " : "PRIMARY KEY ");
        nameList(constraint.columns);
        break;
    case ConstraintKind::Unique:
        emitter_.write("UNIQUE ");
        nameList(constraint.columns);
        break;
    case ConstraintKind::ForeignKey:
        emitter_.write("FOREIGN KEY ");
        nameList(constraint.columns);
        referenceTo(constraint.referencedTable, constraint.referencedColumns, constraint.referenceActions);
        break;
    case ConstraintKind::Check: check(*constraint.check, table); break;
    }
}

namespace {

/// Index names are unique within a table only; in SQLite within the file.
std::string indexName(const Table& table, const Name& index)
{
    return table.name + "." + std::string(index.text);
}

} // namespace

/// The index of a temporary table must be created in SQLite's schema `temp`, where the table is.
void Translator::createIndex(const CreateIndexStatement& create)
{
    const Table& table = binder_.requireTable(create.table);
    step_.kind = Step::Kind::Define;
    step_.target = table.name;
    emitter_.write(create.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ");
    if (table.name.starts_with('#')) emitter_.write("temp.");
    emitter_.writeName(indexName(table, create.index));
    emitter_.write(" ON ");
    emitter_.writeName(table.name);
    emitter_.write(" (");
    std::vector<std::int32_t> columns;
    for (const IndexColumn& column : create.columns) {
        if (!columns.empty()) emitter_.write(", ");
        columns.push_back(binder_.requireColumn(table, column.name));
        emitter_.writeName(table.columns[static_cast<std::size_t>(columns.back())].name);
        if (column.descending) emitter_.write(" DESC");
    }
    emitter_.write(")");
    if (create.unique) oneNull(table, columns, "index", create.index.text);
}

/// The view is stored as translated text. Every column must have a name, from the column list or from the query.
void Translator::createView(const CreateViewStatement& create)
{
    binder_.bindQuery(*create.query, nullptr);
    binder_.checkNestedOrder(*create.query);
    if (!create.columns.empty() && create.columns.size() != create.query->outputs.size()) {
        source_.refuse(create.view.offset, 8158,
                       "'" + std::string(create.view.text) +
                           "' has more or fewer columns than were specified in the column list.");
    }
    for (std::size_t i = 0; i < create.query->outputs.size(); ++i) {
        if (!create.columns.empty() || !create.query->outputs[i].name.empty()) continue;
        source_.refuse(create.view.offset, 4511,
                       "Create View or Function failed because no column name was specified for column " +
                           std::to_string(i + 1) + ".");
    }
    step_.kind = Step::Kind::Define;
    step_.target = create.view.text;
    emitter_.write("CREATE VIEW ");
    emitter_.writeName(create.view.text);
    if (!create.columns.empty()) {
        emitter_.write(" ");
        nameList(create.columns);
    }
    emitter_.write(" AS ");
    emitter_.query(*create.query, Naming::ByName);
    if (!emitter_.parameters().empty()) source_.unsupported(create.view.offset, "A parameter in a view");
}

/// The kind of object is taken from the statement, its spelling from the schema. IF EXISTS of a missing table is no
/// statement at all.
void Translator::drop(const DropStatement& drop)
{
    step_.kind = Step::Kind::Define;
    step_.target = drop.name.text;
    if (drop.what == DropStatement::What::Index) {
        const Table& table = binder_.requireTable(drop.table);
        step_.target = table.name;
        emitter_.write(drop.ifExists ? "DROP INDEX IF EXISTS " : "DROP INDEX ");
        emitter_.writeName(indexName(table, drop.name));
        emitter_.write("; DROP INDEX IF EXISTS ");
        emitter_.writeName(oneNullIndexName("index", table.name, drop.name.text));
        return;
    }
    const Table* table = schema_.table(drop.name.text);
    if (table == nullptr) {
        if (drop.ifExists) {
            step_.kind = Step::Kind::Nothing;
            return;
        }
        source_.refuse(drop.name.offset, 3701,
                       "Cannot drop '" + std::string(drop.name.text) +
                           "', because it does not exist or you do not have permission.",
                       "42S02");
    }
    step_.target = table->name;
    emitter_.write(drop.what == DropStatement::What::View ? "DROP VIEW " : "DROP TABLE ");
    emitter_.writeName(table->name);
}

/// The server adds and drops several columns in one statement, SQLite one in each: one statement is written for every
/// column.
void Translator::alter(const AlterStatement& alter)
{
    const Table& table = binder_.requireTable(alter.table);
    step_.kind = Step::Kind::Define;
    step_.target = table.name;
    bool first = true;
    const auto begin = [&](std::string_view action) {
        if (!first) emitter_.write("; ");
        first = false;
        emitter_.write("ALTER TABLE ");
        emitter_.writeName(table.name);
        emitter_.write(action);
    };
    for (const ColumnDefinition& column : alter.added) {
        if (table.column(column.name.text) >= 0) {
            source_.refuse(column.name.offset, 2705,
                           "Column names in each table must be unique. Column name '" + std::string(column.name.text) +
                               "' in table '" + table.name + "' is specified more than once.");
        }
        if (column.identity || column.primaryKey || column.unique) {
            source_.unsupported(column.name.offset, "ALTER TABLE ... ADD of a key or IDENTITY column");
        }
        begin(" ADD COLUMN ");
        columnDefinition(column, table, false);
    }
    for (const Name& column : alter.dropped) {
        const std::int32_t index = binder_.requireColumn(table, column);
        begin(" DROP COLUMN ");
        emitter_.writeName(table.columns[static_cast<std::size_t>(index)].name);
    }
}

/// TRUNCATE also starts the numbering of an identity column anew, which SQLite keeps in its own table.
void Translator::truncate(const Name& name)
{
    const Table& table = binder_.requireTable(name);
    step_.kind = Step::Kind::Define;
    step_.target = table.name;
    emitter_.write("DELETE FROM ");
    emitter_.writeName(table.name);
    const bool numbered = std::any_of(table.columns.begin(), table.columns.end(),
                                      [](const TableColumn& column) { return column.identity; });
    if (!numbered) return;
    emitter_.write(table.name.starts_with('#') ? "; DELETE FROM temp.sqlite_sequence WHERE name = "
                                               : "; DELETE FROM sqlite_sequence WHERE name = ");
    emitter_.writeText(table.name);
}

} // namespace tamarok::embedded::translation
