#pragma once

#include <string>

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/schema.h"
#include "tamarok_tsql/scope.h"
#include "tamarok_tsql/source_text.h"

namespace tamarok::tsql {

/// Resolves the names of a statement against the schema and gives every expression its type, by the server's rules.
/// Results are written into the tree. Errors: 0x80040E14 with the server's number, line and column.
class Binder {
public:
    Binder(const SourceText& source, const Schema& schema, Arena& arena) :
        source_(source), schema_(schema), arena_(arena)
    {}

    /// @param outer  scope of the query around this one; nullptr for a statement
    void bindQuery(Query& query, Scope* outer);
    void bindExpression(Expr& expr, Scope& scope);

    /// Error 1033 for an ORDER BY without TOP or OFFSET in a query inside another one or in a view.
    void checkNestedOrder(const Query& query) const;

    /// Scope of the FROM clause of UPDATE or DELETE.
    Scope& makeScope(Scope* outer);
    void bindFrom(FromItem* item, Scope& scope);
    /// WHERE, SET and the like: no aggregates.
    void bindPlain(Expr& expr, Scope& scope, std::string_view clause);

    /// Error 208 for an unknown table.
    const Table& requireTable(const Name& name) const;
    /// Position of the column. Error 207 for an unknown one.
    std::int32_t requireColumn(const Table& table, const Name& name) const;
    /// Adds a table to a scope under `name`. Error 1013 or, for a correlation name, 1011 if the name is taken.
    Source& addTable(const Table& table, const Name& name, Scope& scope, bool correlation = false);

private:
    /// Whether the expression being bound may contain an aggregate.
    enum class Aggregates : std::uint8_t { Allowed, Refused, Inside };

    // queries
    void bindSelect(Select& select, Scope* outer);
    void bindItems(Select& select, Scope& scope);
    /// Replaces * and T.* with the columns of the sources.
    void expandStar(const SelectItem& item, Scope& scope, ArenaList<OutputColumn>& outputs);
    void appendColumns(Source& source, const SelectItem& item, ArenaList<OutputColumn>& outputs);
    void bindGroups(Select& select, Scope& scope);
    void bindOrder(Query& query);
    bool bindOrdinal(const Query& query, OrderItem& item);
    void bindSelectOrder(Query& query, OrderItem& item);
    /// Refuses columns outside of aggregates that GROUP BY does not name (error 8120).
    void checkGroups(Query& query);
    void checkGrouped(Expr& expr, const Select& select, std::string_view clause);
    /// Gives a compound query the columns of its first SELECT, with types that hold the values of both sides.
    void combineArms(Query& query);
    /// Hands the types of a query's columns down to all SELECTs of a compound query.
    static void setTargets(Query& query, std::span<Type> targets);
    Source& addSource(const Name& name, Scope& scope, bool correlation);
    void bindDerived(FromItem& item, Scope& scope);
    void checkDerivedNames(const FromItem& item, std::span<OutputColumn> outputs) const;
    void takeRowLimit(Select& select);
    bool isRowLimit(Expr& expr, Select& select);

    // expressions
    void bindColumn(ColumnExpr& column, Scope& scope);
    bool findColumn(ColumnExpr& column, Scope& scope);
    bool bindPseudoColumn(ColumnExpr& column) const;
    void bindNumber(NumberExpr& number) const;
    void bindText(TextExpr& text) const;
    void bindSystem(SystemExpr& system) const;
    void bindUnary(UnaryExpr& unary);
    void bindBinary(BinaryExpr& binary);
    void bindDateArithmetic(BinaryExpr& binary) const;
    /// Bounds the absolute value of a whole result, so that small numbers need no overflow check.
    void bindMagnitude(BinaryExpr& binary) const;
    void bindInQuery(InQueryExpr& in, Scope& scope);
    void bindCase(CaseExpr& expr, Scope& scope);
    void bindCall(CallExpr& call);
    void bindFunction(FunctionExpr& function, Scope& scope);
    void bindArguments(FunctionExpr& function, Scope& scope);
    void bindAggregate(FunctionExpr& function, Scope& scope);
    void checkArgumentCount(const FunctionExpr& function) const;
    Type resultType(const FunctionExpr& function) const;
    Type aggregateType(const FunctionExpr& function, Type argument) const;
    Type textResult(const FunctionExpr& function, Type argument) const;
    void bindOver(Over& over, Scope& scope);
    void bindScalarQuery(QueryExpr& subquery, Scope& scope);
    static SubqueryRows rowsOf(const Query& query);
    // What the server refuses (bind_checks.cpp)
    /// Error 402 for an operand of a long text type.
    void checkOperands(std::uint32_t offset, const Type& left, const Type& right, std::string_view operation) const;
    /// The same for the operands that a bound expression compares.
    void checkCompared(const Expr& expr) const;
    /// Error 529 for a conversion between a number and date, time or datetime2.
    void checkConverted(const CastExpr& cast) const;
    /// Error 306 for a long text in GROUP BY or ORDER BY.
    void checkSorted(const Expr& expr, const Type& type) const;
    /// Error 421 for a long text in SELECT DISTINCT.
    void checkDistinct(const Select& select) const;
    /// Error 5335 for a long text under UNION, INTERSECT or EXCEPT.
    void checkCombined(const Query& arm) const;
    /// Error 169 for an item that stands twice in ORDER BY.
    void checkOrder(std::span<const OrderItem> order, std::span<const OutputColumn> outputs) const;
    /// Errors 8116 and 8117 for arguments of types that the function does not take.
    void checkArgumentTypes(const FunctionExpr& function) const;
    /// Error 130 for a subquery inside an aggregate.
    void checkAggregated(Expr& argument) const;
    /// Computes the hash of the expression's structure, by which GROUP BY and ORDER BY recognise it.
    void finish(Expr& expr) const;
    [[noreturn]] void refuseOperand(const Expr& expr, const Type& type, std::string_view operation) const;

    const SourceText& source_;
    const Schema& schema_;
    Arena& arena_;
    Aggregates aggregates_ = Aggregates::Refused;
    std::string_view clause_ = "WHERE"; ///< named by messages on aggregates
    std::uint32_t sources_ = 0;         ///< number of the last source
    std::size_t expanded_ = 0;          ///< columns that stars stood for
};

} // namespace tamarok::tsql
