#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/source_text.h"
#include "token.h"

namespace tamarok::tsql {

/// Recursive descent over the tokens of a batch. What it does not understand it refuses with line
/// and column; what the grammar knows and the embedded database cannot do it refuses by name.
class Parser {
public:
    Parser(std::string_view text, Arena& arena) : source_(text), arena_(arena), tokens_(tokenize(text)) {}

    /// The batch as steps, IF ... ELSE flattened into jumps.
    std::vector<ParsedStep> parse();

private:
    /// Counts the levels of nesting while it lives.
    class Level {
    public:
        explicit Level(Parser& parser);
        ~Level() { --parser_.depth_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

    private:
        Parser& parser_;
    };

    // tokens
    const Token& current() const { return tokens_[position_]; }
    const Token& ahead(std::size_t count) const { return tokens_[std::min(position_ + count, tokens_.size() - 1)]; }
    std::string_view text(const Token& token) const { return source_.text().substr(token.offset, token.length); }
    bool at(TokenKind kind) const { return current().kind == kind; }
    bool at(Keyword keyword) const { return current().keyword == keyword; }
    bool atWord(std::string_view word) const;
    bool accept(TokenKind kind);
    bool accept(Keyword keyword);
    bool acceptWord(std::string_view word);
    void expect(TokenKind kind, std::string_view shown);
    void expect(Keyword keyword);
    void expectWord(std::string_view word);
    [[noreturn]] void refuseHere() const;
    [[noreturn]] void refuseWithout(std::string_view expected) const;
    [[noreturn]] void unsupportedHere(std::string_view construct) const;
    bool atName() const;
    Name name();
    Name nameOf(const Token& token);
    Name qualifiedName();
    std::span<Name> nameList();
    Name optionalAlias();

    // expressions
    Expr* expression();
    Expr* value();
    Expr* condition();
    Expr* requireValue(Expr* expr) const;
    Expr* requireCondition(Expr* expr) const;
    Expr* andChain();
    Expr* notOperand();
    Expr* predicate();
    Expr* negatablePredicate(Expr* left);
    Expr* inPredicate(Expr* left, bool negated, std::uint32_t offset);
    Expr* additive();
    Expr* multiplicative();
    Expr* unary();
    Expr* primary();
    Expr* parenthesised();
    Expr* wordExpression();
    Expr* columnOrCall();
    Expr* functionCall(const Name& called);
    Over* overClause();
    Expr* caseExpression();
    Expr* iifExpression();
    Expr* castExpression();
    Expr* convertExpression();
    Expr* callExpression(ExprKind kind, std::size_t least, std::size_t most);
    Expr* textLiteral(const Token& token);
    Expr* binary(ExprKind kind, TokenKind op, Expr* left, Expr* right, std::uint32_t offset);
    Expr* chain(ExprKind kind, Expr* first, Keyword keyword);
    ExprList valueList();
    Type typeName(std::string_view& written);
    std::int32_t smallNumber();

    template <class T>
    T* node(ExprKind kind, std::uint32_t offset)
    {
        T* result = arena_.make<T>();
        result->kind = kind;
        result->offset = offset;
        return result;
    }

    // queries
    Query* query();
    Query* setExpression();
    Query* intersectTerm();
    Query* queryTerm();
    Query* combine(SetOperator op, Query* left, Query* right, std::uint32_t offset);
    Core* core();
    void topClause(Core& core);
    SelectItem selectItem();
    bool aliasedByEquals() const;
    std::span<OrderItem> orderItems();
    void offsetClause(Query& query);
    FromItem* fromClause();
    FromItem* joined();
    FromItem* joinTail(FromItem* left);
    FromItem* fromPrimary();
    bool atJoin() const;
    void tableHints();
    bool atHint() const;
    FromItem* join(FromKind kind, FromItem* left, FromItem* right, std::uint32_t offset);

    // statements
    void statement();
    void statementBody();
    void block();
    void ifStatement();
    void setStatement();
    void setOption(const Token& option);
    void insertStatement();
    void updateStatement();
    void deleteStatement();
    void transactionStatement();
    void executeStatement();
    Argument argument();
    ParsedStep& add(StepKind kind, std::uint32_t offset);
    void refuseStatement();

    // definitions
    void createStatement();
    void createTable(std::uint32_t offset);
    void createIndex(std::uint32_t offset, bool unique);
    void createView(std::uint32_t offset);
    ColumnDefinition columnDefinition();
    bool columnOption(ColumnDefinition& column);
    bool atConstraint() const;
    TableConstraint tableConstraint();
    void references(Name& table, std::span<Name>& columns, std::string_view& actions);
    void indexWords();
    void dropStatement();
    void alterStatement();
    void truncateStatement();

    SourceText source_;
    Arena& arena_;
    std::vector<Token> tokens_;
    std::size_t position_ = 0;
    int depth_ = 0;
    std::int32_t parameters_ = 0;
    std::vector<ParsedStep> steps_;
};

} // namespace tamarok::tsql
