#pragma once

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/binder.h"
#include "tamarok_tsql/schema.h"
#include "tamarok_tsql/source_text.h"
#include "translation/emitter.h"
#include "translation/step.h"

namespace tamarok::embedded::translation {

/// A declared type as SQLite text. SQLite stores the text, from which the schema is read back.
std::string sqliteDeclaration(std::string_view declaration);

/// Translates one parsed step: binds it, and writes SQLite text for it. An object translates once.
class Translator {
public:
    Translator(const SourceText& source, const Schema& schema, DateOrder order);

    Step translate(const ParsedStep& parsed, RowKey rowKey);

private:
    void query(Query& query, RowKey rowKey);
    /// SELECT ... INTO: creates the table, then inserts the rows.
    void selectInto(Query& query);
    /// Records names, types and base columns of the result.
    void describe(std::span<const OutputColumn> outputs);
    const Source* keySource(const Query& query) const;

    void identityInsert(const Name& name);
    void insert(const InsertStatement& insert);
    /// Errors 544, 545 and 8101: the identity column has a value, or none, against SET IDENTITY_INSERT.
    void checkIdentity(const InsertStatement& insert, const Table& table, std::span<const std::int32_t> columns);
    /// Positions of the columns that receive values: those listed, or all but the identity column.
    std::span<std::int32_t> insertColumns(const InsertStatement& insert, const Table& table);
    void unconvertedRow(const ExprList& row, const Table& table, std::span<const std::int32_t> kept);
    void insertRows(const InsertStatement& insert, const Table& table, std::span<const std::int32_t> columns);
    void insertQuery(const InsertStatement& insert, const Table& table, std::span<const std::int32_t> columns);
    void columnList(const Table& table, std::span<const std::int32_t> columns);
    std::span<std::int32_t> withoutDefaults(const InsertStatement& insert, std::span<std::int32_t> columns);

    void update(const UpdateStatement& update);
    /// Writes the query for the new values of the rows that the statement touches.
    void newRows(const UpdateStatement& update, const Source& target, bool joined);
    void checkAssignedOnce(const UpdateStatement& update, const Assignment& assignment) const;
    void updateAssignments(const UpdateStatement& update, const Source& target, bool fromRows);
    static Emitter::Joins nestedJoins(Emitter& emitter, const UpdateStatement& update, const Source& target,
                                      bool joined);
    // UPDATE ... FROM in which the target is one of the joined tables.
    void updateJoined(const UpdateStatement& update, const Source& target);
    void erase(const DeleteStatement& erase);
    /// @param joined  receives whether the rows of the target come out of the FROM clause
    Source& targetSource(const Name& target, FromItem* from, Scope& scope, bool& joined);
    /// Writes the query for the rowids that the statement touches.
    void lockProbe(const Source& target, const FromItem* from, bool joined, Expr* where);
    void bindWhere(Expr* where, Scope& scope);

    Table declaredTable(const CreateTableStatement& create);
    void createTable(const CreateTableStatement& create);
    void uniqueNulls(const CreateTableStatement& create, const Table& table);
    void columnDefinition(const ColumnDefinition& column, const Table& table, bool inKey);
    /// @param demoted  a primary key becomes UNIQUE, since an identity column is SQLite's primary key
    void tableConstraint(const TableConstraint& constraint, const Table& table, bool demoted);
    void check(Expr& condition, const Table& table);
    void referenceTo(const Name& table, std::span<const Name> columns, std::string_view actions);
    void nameList(std::span<const Name> names);
    void createIndex(const CreateIndexStatement& create);
    /// Appends the index that lets only one Null into a unique key; nothing for a key without nullable columns.
    void oneNull(const Table& table, std::span<const std::int32_t> columns, std::string_view kind,
                 std::string_view name);
    void createView(const CreateViewStatement& create);
    void drop(const DropStatement& drop);
    void alter(const AlterStatement& alter);
    void truncate(const Name& name);
    void condition(Expr& condition);
    void finish();

    const SourceText& source_;
    const Schema& schema_;
    DateOrder order_;
    Arena arena_;
    Binder binder_;
    Emitter emitter_;
    Step step_;
    std::vector<NestedConstruct> probeNested_; ///< of the lock probe
};

} // namespace tamarok::embedded::translation
