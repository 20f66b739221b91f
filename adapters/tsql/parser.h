#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/source_text.h"
#include "token.h"

namespace tamarok::tsql {

/// Recursive descent over the tokens of a batch. Each private function reads one rule of the grammar, written beside
/// it: [x] is optional, {x} repeats, | separates alternatives. A text outside the grammar is refused with line and
/// column; a construct that the server knows and the embedded database does not is refused by its name.
class Parser {
public:
    Parser(const SourceText& source, Arena& arena) : source_(source), arena_(arena), tokens_(tokenize(source)) {}

    /// Parses the whole batch. IF ... ELSE is flattened into jumps.
    std::vector<ParsedStep> parse();

private:
    /// One level of nesting, counted while the object lives. Refuses more than 200, before the stack overflows.
    /// `construct` is named by the message.
    class Level {
    public:
        Level(Parser& parser, std::string_view construct);
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
    /// Whether the current token is this word, which is no keyword.
    bool atWord(std::string_view word) const;
    // accept: consumes the token if it is there; expect: refuses the text if it is not.
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
    /// A plain or quoted name; not a reserved word.
    Name name();
    /// Name of a token, without its quotes and with doubled quotes made single.
    Name nameOf(const Token& token);
    Name qualifiedName();       ///< [[server.]database.][schema.]name: the last part
    std::span<Name> nameList(); ///< (name {, name})
    Name optionalAlias();       ///< [[AS] name | 'text']

    // expressions
    Expr* expression(); ///< andChain {OR andChain}: a value or a condition
    Expr* value();      ///< an expression that is no condition
    Expr* condition();  ///< an expression that is true or false
    Expr* requireValue(Expr* expr) const;
    Expr* requireCondition(Expr* expr) const;
    Expr* andChain();   ///< notOperand {AND notOperand}
    Expr* notOperand(); ///< {NOT} predicate
    Expr* predicate();  ///< EXISTS (query) | additive [comparison additive] | negatablePredicate
    /// left IS [NOT] NULL | left [NOT] IN ... | left [NOT] BETWEEN a AND b | left [NOT] LIKE p [ESCAPE e]
    Expr* negatablePredicate(Expr* left);
    Expr* inPredicate(Expr* left, bool negated, std::uint32_t offset);
    Expr* additive();                       ///< multiplicative {(+ | - | & | | | ^ | ||) multiplicative}
    Expr* multiplicative();                 ///< unary {(* | / | %) unary}
    Expr* unary();                          ///< {- | + | ~} primary
    Expr* primary();                        ///< literal | ? | @@name | parenthesised | wordExpression
    Expr* parenthesised();                  ///< (expression) | (query)
    Expr* wordExpression();                 ///< NULL | DEFAULT | CASE | a call with a grammar of its own | columnOrCall
    Expr* columnOrCall();                   ///< {name .} (name | functionCall)
    Expr* functionCall(const Name& called); ///< called ([* | [DISTINCT] value {, value}]) [OVER (...)]
    Over* overClause();
    Expr* caseExpression();
    Expr* iifExpression();
    Expr* castExpression();
    Expr* convertExpression(); ///< CONVERT (type, value [, style])
    Expr* callExpression(ExprKind kind, std::size_t least, std::size_t most);
    Expr* textLiteral(const Token& token);
    Expr* binary(ExprKind kind, TokenKind op, Expr* left, Expr* right, std::uint32_t offset);
    Expr* chain(ExprKind kind, Expr* first, Keyword keyword);
    /// Makes the tree of `node` at least one higher than that of its child. Refuses one that is too high.
    void raise(Expr& node, const Expr* child) const;
    template <class T>
    T* raised(T* node, std::initializer_list<const Expr*> children) const
    {
        for (const Expr* child : children)
            raise(*node, child);
        return node;
    }
    ExprList valueList();
    /// A type with its sizes; `written` receives its spelling in the text.
    Type typeName(std::string_view& written);
    std::int32_t smallNumber();

    template <class T>
    T* node(ExprKind kind, std::uint32_t offset)
    {
        source_.work();
        T* result = arena_.make<T>();
        result->kind = kind;
        result->offset = offset;
        return result;
    }

    // queries
    Query* query();         ///< setExpression [ORDER BY items [OFFSET ...]]
    Query* setExpression(); ///< intersectTerm {(UNION [ALL] | EXCEPT | MINUS) intersectTerm}
    Query* intersectTerm(); ///< queryTerm {INTERSECT queryTerm}
    Query* queryTerm();     ///< (query) | select
    Query* combine(SetOperator op, Query* left, Query* right, std::uint32_t offset);
    Select* select(); ///< SELECT [DISTINCT] [TOP n] items [INTO ...] [FROM ...] [WHERE ...] [GROUP BY ...] ...
    void topClause(Select& select);
    SelectItem selectItem();
    bool aliasedByEquals() const;
    std::span<OrderItem> orderItems();
    void offsetClause(Query& query);
    FromItem* fromClause(); ///< joined {, joined}
    FromItem* joined();     ///< fromPrimary {joinTail}
    FromItem* joinTail(FromItem* left);
    void countTable();       ///< error 106 for more than 256 in one FROM
    FromItem* fromPrimary(); ///< (joined) | (query) alias [(names)] | table [hints] [alias] [hints]
    bool atJoin() const;
    void tableHints(); ///< [WITH] (hint {, hint}): read and ignored, as they change no result
    bool atHint() const;
    FromItem* join(FromKind kind, FromItem* left, FromItem* right, std::uint32_t offset);

    // statements
    void statement();
    void statementBody();
    void block(); ///< BEGIN {statement} END
    void ifStatement();
    void setStatement();
    void setOption(const Token& option);
    void insertStatement();
    void updateStatement();
    void deleteStatement();
    void transactionStatement();
    void executeStatement();
    Argument argument();
    /// Appends a step. The reference is valid until the next one is appended.
    ParsedStep& add(StepKind kind, std::uint32_t offset);
    /// Refuses what begins no supported statement, by its name where the server knows it.
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

    const SourceText& source_;
    Arena& arena_;
    std::vector<Token> tokens_;
    std::size_t position_ = 0;
    int depth_ = 0;                ///< levels of nesting
    std::size_t tables_ = 0;       ///< of the FROM clause that is being read
    std::size_t listedValues_ = 0; ///< in all lists of the statement that is being read
    std::int32_t parameters_ = 0;  ///< parameters met so far, counted over the batch
    std::vector<ParsedStep> steps_;
};

} // namespace tamarok::tsql
