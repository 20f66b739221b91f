#pragma once

#include <string>

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/schema.h"
#include "tamarok_tsql/scope.h"
#include "tamarok_tsql/source_text.h"

namespace tamarok::tsql {

/// Gives every name of a statement its column and every expression its type, by the server's rules.
class Binder {
public:
    Binder(const SourceText& source, const Schema& schema, Arena& arena) :
        source_(source), schema_(schema), arena_(arena)
    {}

    void bindQuery(Query& query, Scope* outer);
    void bindExpression(Expr& expr, Scope& scope);

    /// Scope of the FROM clause of UPDATE or DELETE.
    Scope& makeScope(Scope* outer);
    void bindFrom(FromItem* item, Scope& scope);
    /// WHERE, SET and the like: no aggregates.
    void bindPlain(Expr& expr, Scope& scope, std::string_view clause);

    const Table& requireTable(const Name& name) const;
    std::int32_t requireColumn(const Table& table, const Name& name) const;
    Source& addTable(const Table& table, const Name& name, Scope& scope, bool correlation = false);

private:
    enum class Aggregates : std::uint8_t { Allowed, Refused, Inside };

    // queries
    void bindCore(Core& core, Scope* outer);
    void bindItems(Core& core, Scope& scope);
    void expandStar(const SelectItem& item, Scope& scope, ArenaList<OutputColumn>& outputs);
    void appendColumns(Source& source, const SelectItem& item, ArenaList<OutputColumn>& outputs);
    void bindGroups(Core& core, Scope& scope);
    void bindOrder(Query& query);
    bool bindOrdinal(const Query& query, OrderItem& item);
    void bindCoreOrder(Query& query, OrderItem& item);
    void checkGroups(Query& query);
    void checkGrouped(Expr& expr, const Core& core, std::string_view clause);
    void combineArms(Query& query);
    Source& addSource(const Name& name, Scope& scope, bool correlation);
    void bindDerived(FromItem& item, Scope& scope);
    void checkDerivedNames(const FromItem& item, std::span<OutputColumn> outputs) const;
    void takeRowLimit(Core& core);
    bool isRowLimit(Expr& expr, Core& core);

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
    void bindMagnitude(BinaryExpr& binary) const;
    void bindInQuery(InQueryExpr& in, Scope& scope);
    void bindCase(CaseExpr& expr, Scope& scope);
    void bindCall(CallExpr& call);
    void bindFunction(FunctionExpr& function, Scope& scope);
    void bindArguments(FunctionExpr& function, Scope& scope);
    void checkArgumentCount(const FunctionExpr& function) const;
    Type resultType(const FunctionExpr& function) const;
    Type aggregateType(const FunctionExpr& function, Type argument) const;
    Type textResult(const FunctionExpr& function, Type argument) const;
    void bindOver(Over& over, Scope& scope);
    void bindScalarQuery(QueryExpr& subquery, Scope& scope);
    void finish(Expr& expr) const;
    [[noreturn]] void refuseOperand(const Expr& expr, const Type& type, std::string_view operation) const;

    const SourceText& source_;
    const Schema& schema_;
    Arena& arena_;
    Aggregates aggregates_ = Aggregates::Refused;
    std::string_view clause_ = "WHERE";
    std::uint32_t sources_ = 0;
};

} // namespace tamarok::tsql
