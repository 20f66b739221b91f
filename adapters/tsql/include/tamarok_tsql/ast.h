#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/date_order.h"
#include "tamarok_tsql/names.h"
#include "tamarok_tsql/token_kind.h"
#include "tamarok_tsql/types.h"

#include "tamarok/variant.h"

/// The syntax tree of a batch. Nodes live in an arena, texts are slices of the batch's text. Members below
/// "set by the binder" are written anew whenever a statement is bound.
namespace tamarok::tsql {

struct Query;
struct Source;
struct Scope;
struct Builtin;

enum class ExprKind : std::uint8_t {
    Null,
    Number,
    Text,
    Parameter,
    System,
    Default,
    Column,
    RowNum,
    Unary,
    Binary,
    Compare,
    And,
    Or,
    Not,
    Between,
    InList,
    InQuery,
    Like,
    IsNull,
    Exists,
    Case,
    Cast,
    IsNullCall, ///< ISNULL(a, b), NVL(a, b)
    Coalesce,
    NullIf,
    Function,
    Subquery
};

/// Base of all expressions; `kind` determines the derived type.
struct Expr {
    ExprKind kind;
    bool condition = false; ///< true or false, and so no value
    std::uint16_t height = 1;
    std::uint32_t offset = 0;
    // set by the binder:
    Type type{};
    std::uint64_t hash = 0;      ///< of the structure: equal expressions have equal ones, others do not
    std::int64_t magnitude = -1; ///< whole numbers: largest absolute value, -1 for not known
};

using ExprList = std::span<Expr*>;

/// A numeric literal.
struct NumberExpr : Expr {
    std::string_view text;
    TokenKind token;
};

/// A text literal.
struct TextExpr : Expr {
    std::string_view raw; ///< with its quotes, without the N before them
    bool national;
};

/// A parameter "?"; `index` counts from 0 over the batch.
struct ParameterExpr : Expr {
    std::int32_t index;
};

/// @@IDENTITY, @@ROWCOUNT.
struct SystemExpr : Expr {
    std::string_view name;
};

struct ColumnExpr : Expr {
    Name qualifier;
    Name name;
    // set by the binder:
    Source* source = nullptr;
    std::int32_t column = 0;
};

struct UnaryExpr : Expr {
    TokenKind op;
    Expr* operand;
};

/// Binary, Compare
struct BinaryExpr : Expr {
    TokenKind op;
    Expr* left;
    Expr* right;
};

/// And, Or
struct ChainExpr : Expr {
    ExprList operands;
};

struct NotExpr : Expr {
    Expr* operand;
};

struct BetweenExpr : Expr {
    Expr* value;
    Expr* low;
    Expr* high;
    bool negated;
};

struct InListExpr : Expr {
    Expr* value;
    ExprList items;
    bool negated;
    Type common{}; ///< set by the binder: type in which the comparison is made
};

struct InQueryExpr : Expr {
    Expr* value;
    Query* query;
    bool negated;
    Type common{};
};

struct LikeExpr : Expr {
    Expr* value;
    Expr* pattern;
    Expr* escape; ///< may be nullptr
    bool negated;
};

struct IsNullExpr : Expr {
    Expr* value;
    bool negated;
};

/// How many rows a subquery for one value may have, and so how a second row can be noticed.
enum class SubqueryRows : std::uint8_t {
    AtMostOne, ///< whatever the tables hold
    OfOwnItem, ///< any number; an aggregate around the item of the SELECT list would count the query's rows
    Any        ///< any number
};

/// Exists, Subquery
struct QueryExpr : Expr {
    Query* query;
    SubqueryRows rows = SubqueryRows::Any; ///< set by the binder
};

struct CaseArm {
    Expr* when;
    Expr* then;
};

struct CaseExpr : Expr {
    Expr* operand; ///< nullptr for the searched form
    std::span<CaseArm> arms;
    Expr* otherwise; ///< nullptr without ELSE
    Type common{};   ///< set by the binder: type in which operand and arms are compared
};

struct CastExpr : Expr {
    Type target;
    Expr* value;
    Expr* style; ///< nullptr without one
};

/// IsNullCall, Coalesce, NullIf
struct CallExpr : Expr {
    ExprList arguments;
};

struct OrderItem {
    Expr* value;
    bool descending;
    std::int32_t ordinal = 0; ///< set by the binder: position in the SELECT list from 1, or 0
};

struct Over {
    ExprList partition;
    std::span<OrderItem> order;
};

struct FunctionExpr : Expr {
    Name name;
    ExprList arguments;
    bool star;
    bool distinct;
    Over* over;
    // set by the binder:
    const Builtin* builtin = nullptr;
    Scope* scope = nullptr; ///< whose rows an aggregate takes
    bool aggregate = false; ///< and not a window function
};

// --- queries -----------------------------------------------------------------------------------

enum class FromKind : std::uint8_t { Table, Derived, Inner, Left, Right, Full, Cross, Comma };

/// A table, a derived table or a join of two items.
struct FromItem {
    FromKind kind;
    std::uint32_t offset = 0;
    Name table;
    Name alias;
    Query* query = nullptr;
    std::span<Name> columnNames; ///< of a derived table: A (X, Y)
    FromItem* left = nullptr;
    FromItem* right = nullptr;
    Expr* on = nullptr;
    Source* source = nullptr; ///< set by the binder
};

/// An item of the SELECT list as written.
struct SelectItem {
    Expr* value = nullptr; ///< nullptr for a star
    Name qualifier;        ///< of a star
    Name alias;
    std::uint32_t offset = 0;
};

/// A column of a query's result; a star is expanded to several.
struct OutputColumn {
    std::string_view name;
    Type type;
    const Source* base = nullptr; ///< of a plain column
    std::int32_t baseColumn = 0;
    Expr* value = nullptr;
};

/// One SELECT with its clauses, without ORDER BY: what UNION combines.
struct Select {
    bool distinct = false;
    Expr* top = nullptr;
    std::span<SelectItem> items;
    Name into;
    FromItem* from = nullptr;
    Expr* where = nullptr;
    ExprList groupBy;
    Expr* having = nullptr;
    std::uint32_t offset = 0;
    // set by the binder:
    Scope* scope = nullptr;
    bool aggregated = false;
    FromItem* source = nullptr; ///< `from`, or nullptr for Oracle's DUAL
    Expr* filter = nullptr;     ///< `where` without ROWNUM
    Expr* rowLimit = nullptr;   ///< what ROWNUM is compared with
    std::int32_t rowCount = -1; ///< the rows that ROWNUM lets pass, -1 for a parameter
    std::span<OutputColumn> outputs;
};

enum class SetOperator : std::uint8_t { None, Union, UnionAll, Except, Intersect };

/// A SELECT, or two queries joined by UNION, EXCEPT or INTERSECT.
struct Query {
    SetOperator op = SetOperator::None;
    Select* select = nullptr;
    Query* left = nullptr;
    Query* right = nullptr;
    std::span<OrderItem> order;
    Expr* skip = nullptr;
    Expr* fetch = nullptr;
    std::uint16_t arms = 1;
    std::uint32_t offset = 0;
    // set by the binder:
    std::span<OutputColumn> outputs;
    std::span<Type> targets; ///< types into which the items are brought; empty for their own
};

// --- statements --------------------------------------------------------------------------------

struct InsertStatement {
    Name table;
    std::span<Name> columns;
    std::span<ExprList> rows;
    Query* query = nullptr;
    bool defaults = false;
};

struct Assignment {
    Name column;
    Expr* value;
};

struct UpdateStatement {
    Name target; ///< table, or alias of the FROM clause
    std::span<Assignment> assignments;
    FromItem* from = nullptr;
    Expr* where = nullptr;
};

struct DeleteStatement {
    Name target;
    FromItem* from = nullptr;
    Expr* where = nullptr;
};

struct ColumnDefinition {
    Name name;
    std::string_view typeText;
    Type type;
    bool identity = false;
    bool notNull = false;
    bool primaryKey = false;
    bool unique = false;
    bool binary = false; ///< a collation that tells upper from lower case
    Expr* defaultValue = nullptr;
    Expr* check = nullptr;
    Name referencedTable;
    std::span<Name> referencedColumns;
    std::string_view referenceActions;
};

enum class ConstraintKind : std::uint8_t { PrimaryKey, Unique, ForeignKey, Check };

struct TableConstraint {
    ConstraintKind kind;
    Name name;
    std::span<Name> columns;
    Expr* check = nullptr;
    Name referencedTable;
    std::span<Name> referencedColumns;
    std::string_view referenceActions;
};

struct CreateTableStatement {
    Name table;
    std::span<ColumnDefinition> columns;
    std::span<TableConstraint> constraints;
};

struct IndexColumn {
    Name name;
    bool descending;
};

struct CreateIndexStatement {
    Name index;
    Name table;
    std::span<IndexColumn> columns;
    bool unique;
};

struct DropStatement {
    enum class What : std::uint8_t { Table, Index, View };
    What what;
    bool ifExists;
    Name name;
    Name table; ///< of an index
};

struct AlterStatement {
    Name table;
    std::span<ColumnDefinition> added;
    std::span<Name> dropped;
};

struct CreateViewStatement {
    Name view;
    std::span<Name> columns;
    Query* query;
};

/// An argument of EXEC: a literal value, or the statement's parameter of that index.
struct Argument {
    std::string name; ///< without "@"; empty for a positional one
    Variant value;
    std::int32_t parameter = -1;
};

enum class StepKind : std::uint8_t {
    Query,
    Insert,
    Update,
    Delete,
    CreateTable,
    CreateIndex,
    CreateView,
    Drop,
    Alter,
    Truncate, ///< of `name`
    Execute,  ///< of the procedure `name` with `arguments`
    Begin,
    Commit,
    Rollback,
    NoCount,        ///< SET NOCOUNT: `flag`
    XactAbort,      ///< SET XACT_ABORT: `flag`
    IdentityInsert, ///< SET IDENTITY_INSERT: table `name`, `flag`
    DateFormat,     ///< SET DATEFORMAT, SET LANGUAGE: `dateOrder`
    Nothing,        ///< accepted and without effect here (SET ANSI_NULLS and its kind, GO)
    JumpUnless,     ///< continues at step `jump` unless `condition` is true
    Jump            ///< continues at step `jump`
};

/// One step of a batch: its kind, and the members that this kind uses.
struct ParsedStep {
    StepKind kind = StepKind::Nothing;
    std::uint32_t offset = 0; ///< of the statement in the batch's text
    Query* query = nullptr;
    InsertStatement* insert = nullptr;
    UpdateStatement* update = nullptr;
    DeleteStatement* erase = nullptr;
    CreateTableStatement* createTable = nullptr;
    CreateIndexStatement* createIndex = nullptr;
    CreateViewStatement* createView = nullptr;
    DropStatement* drop = nullptr;
    AlterStatement* alter = nullptr;
    Expr* condition = nullptr;
    Name name;
    std::vector<Argument> arguments;
    std::size_t jump = 0;
    DateOrder dateOrder = DateOrder::Dmy;
    bool flag = false;
};

/// The node as its derived type, which `kind` must agree with.
template <class T>
T& as(Expr& expr)
{
    return static_cast<T&>(expr);
}
template <class T>
const T& as(const Expr& expr)
{
    return static_cast<const T&>(expr);
}

} // namespace tamarok::tsql
