#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/binder.h"
#include "tamarok_tsql/date_order.h"
#include "tamarok_tsql/schema.h"
#include "tamarok_tsql/scope.h"
#include "tamarok_tsql/source_text.h"
#include "translation/join_nest.h"
#include "translation/nesting.h"

namespace tamarok::embedded::translation {

using namespace tsql;

/// How the columns of a SELECT are named.
enum class Naming : std::uint8_t {
    None,    ///< not at all: nobody asks for names
    ByName,  ///< by their alias or column, always written out
    Numbered ///< "c1", "c2", ... for an enclosing query of the translation
};

/// What becomes of a date literal that is no date: an error of the translation, or of SQLite's run.
enum class BadDate : std::uint8_t { Refused, LeftToRunTime };

/// Whether the function computes in whole numbers where its first argument is one, and in floating point otherwise.
bool computesLikeArgument(const Builtin& builtin);

/// How tightly an operator of SQLite binds, loosest first. The place of an operand states how tightly it must bind, and
/// what binds less tightly is put in parentheses there: SQLite's parser has room for about 100 open symbols, and each
/// parenthesis takes one of them.
enum class Binding : std::uint8_t {
    None, ///< a place of its own, such as an argument or an item of a list
    Or,
    And,
    Not,
    Equality, ///< =, <>, IS, IN, BETWEEN
    Relation, ///< <, <=, >, >=
    Bitwise,
    Sum,
    Product,
    Join, ///< ||
    Collate,
    Sign,
    Primary ///< a name, a literal, a call, a CASE
};

/// Writes bound trees as SQLite text. The text relies on how the file stores the values of each type:
///   Bit, TinyInt, SmallInt, Int, BigInt   INTEGER
///   Decimal, Money, Real, Float           REAL (SQLite stores a whole REAL value as INTEGER)
///   texts, UniqueIdentifier               TEXT in UTF-8, compared by collation TAMAROK
///   Date, SmallDateTime, DateTime, DateTime2, Time
///                                         TEXT "YYYY-MM-DD HH:MM:SS.mmm", always 23 characters, so that
///                                         the order of texts is the order of times. A Date has the time
///                                         00:00:00.000, a Time the day 1900-01-01.
///
/// An expression is put in parentheses only where it would otherwise be read differently, see Binding. The text grows
/// linearly with the statement: no operand is written twice.
class Emitter {
public:
    Emitter(const SourceText& source, DateOrder order, std::size_t expected) : source_(source), order_(order)
    {
        out_.reserve(expected);
    }

    std::string& text() { return out_; }
    std::vector<std::int32_t>& parameters() { return parameters_; }
    std::vector<NestedConstruct>& nested() { return nested_.constructs; }

    void write(std::string_view text) { out_ += text; }
    void writeName(std::string_view name);
    void writeText(std::string_view value);

    void query(const Query& query, Naming naming, const Source* keySource = nullptr);
    /// The tables of FROM, without the word, and the WHERE clause; either may be nullptr.
    /// @param beside  a table that is joined to those of FROM; nullptr for none
    void rows(const FromItem* from, const Expr* condition, const Source* beside = nullptr);
    /// The rowid of a table.
    void rowKey(const Source& source);

    /// While an object lives, columns of the FROM clause are written as they come out of its nested joins. An ordinary
    /// FROM clause has none.
    class Joins {
    public:
        /// @param tablesBeside  tables that the statement joins to those of FROM
        /// @param users         called for a FROM clause of too many tables alone
        Joins(Emitter& emitter, const FromItem* from, std::size_t tablesBeside,
              const std::function<JoinUsers()>& users);
        ~Joins();
        Joins(const Joins&) = delete;
        Joins& operator=(const Joins&) = delete;

    private:
        Emitter& emitter_;
        std::optional<JoinNest> nest_;
    };

    void expression(const Expr& expr, Binding need = Binding::None);
    /// As an operand or result of type `target`, with the server's implicit conversion.
    void as(const Expr& expr, const Type& target, BadDate badDate = BadDate::LeftToRunTime,
            Binding need = Binding::None);
    /// As a text, the way the server shows values.
    void asText(const Expr& expr, Binding need = Binding::None);
    /// As the new value of a column: too long texts and numbers out of range are errors.
    void assigned(const Expr& expr, const TableColumn& column, const Table& table);
    /// The same for the column "name" of an enclosed query.
    void assignedColumn(std::string_view name, const Type& type, const TableColumn& column, const Table& table);

    /// Columns are written without their table, as CHECK needs it.
    void writeUnqualifiedColumns(bool unqualified) { unqualified_ = unqualified; }

private:
    /// Opens a parenthesis where `own` binds less tightly than needed. @return whether `close` must write one
    bool open(Binding own, Binding need);
    void close(bool opened)
    {
        if (opened) out_ += ')';
    }
    /// Refuses a text that has become too long.
    void checkLength(std::uint32_t offset) const;

    // conversions
    // Conversions call the functions tm_..., which convert as the server does and raise its errors.
    void number(std::string_view function, const Expr& expr);
    // Literals are converted at once where that is possible. @return whether the literal was written
    bool literalAs(const Expr& expr, const Type& target, BadDate badDate);
    bool literalWhole(const TextExpr& text, const Type& target);
    bool literalNumber(const TextExpr& text, const Type& target);
    bool literalDate(const TextExpr& text, const Type& target, BadDate badDate);
    void toWhole(const Expr& expr, const Type& target, Binding need);
    void toFraction(const Expr& expr, const Type& target, Binding need);
    void toDate(const Expr& expr, const Type& target, Binding need);
    void dayNumber(const Expr& expr);
    /// A date as whole days from 1900-01-01, rounded at noon.
    void wholeDays(const Expr& expr);
    void cast(const CastExpr& cast, Binding need);
    void castText(const CastExpr& cast, Binding need);
    void castDate(const CastExpr& cast, Binding need);
    void castNumber(const CastExpr& cast, Binding need);
    /// A value that is no text, as text; `style` is CONVERT's, or nullptr.
    void textOf(const Expr& expr, const Expr* style, const Type& target);
    void wholeOperand(const Expr& expr, const Type& target);
    void conversionCall(const Type& target);
    void conversionEnd(const Type& target);
    void storeText(const TableColumn& column, auto&& operand);
    void checkLiteralLength(const Expr& expr, const TableColumn& column, const Table& table) const;

    // expressions
    void column(const ColumnExpr& column);
    void sourceColumn(const Source& source, std::int32_t column);
    void system(const SystemExpr& system);
    void unary(const UnaryExpr& unary, Binding need);
    void binary(const BinaryExpr& binary, Binding need);
    void joinTexts(const BinaryExpr& binary, Binding need);
    /// Arithmetic on operands whose types are known at run time only.
    void openArithmetic(const BinaryExpr& binary);
    /// Whole numbers: with an overflow check where the magnitudes of the operands require one.
    void wholeArithmetic(const BinaryExpr& binary, Binding need);
    void fractionArithmetic(const BinaryExpr& binary, Binding need);
    void term(const Expr& expr, const Type& type, Binding need);
    void decimalTerm(const BinaryExpr& binary);
    // Types whose results need a check of their own (emit_checked.cpp)
    void smallArithmetic(const BinaryExpr& binary, Binding need);
    void arithmeticChain(const BinaryExpr& binary);
    /// The negative of a whole number whose type may not hold it.
    void checkedMinus(const UnaryExpr& unary);
    /// A query for one value, which fails with error 512 for several rows.
    void scalarQuery(const QueryExpr& subquery);
    void dataLength(const Expr& value);
    void dateArithmetic(const BinaryExpr& binary);
    void call(std::string_view function, const Expr& left, const Expr& right, const Type& type);
    void infix(const BinaryExpr& binary, std::string_view op, const Type& type, Binding need);
    /// One flat call for operators that follow each other, outermost first: a - b + c becomes f(a, b, c, '-+').
    void flatCall(std::string_view function, std::span<const BinaryExpr* const> steps, const Type& type);
    void compare(const BinaryExpr& compare, Binding need);
    /// An operand of a comparison, brought to the common type of both sides.
    void operand(const Expr& expr, const Type& common, bool collate, Binding need = Binding::Bitwise);
    void chain(const ChainExpr& chain, Binding need);
    void operands(std::span<const Expr* const> operands, bool both, Binding need);
    void negation(const NotExpr& negation, Binding need);
    void isNull(const IsNullExpr& isNull, Binding need);
    void between(const BetweenExpr& between, Binding need);
    void inList(const InListExpr& in, Binding need);
    void inQuery(const InQueryExpr& in, Binding need);
    void like(const LikeExpr& like, Binding need);
    void caseOf(const CaseExpr& expr);
    // CASE with its deepest branch last, where SQLite's parser has the fewest symbols open.
    void caseWithLast(const CaseExpr& expr, std::size_t last);
    void searchedWithLast(const CaseExpr& expr, std::size_t last);
    void otherwise(const CaseExpr& expr);
    bool needsOperandCollation(const CaseExpr& expr) const;
    void isNullCall(const CallExpr& call);
    void coalesce(const CallExpr& call, Binding need);
    /// A call of any number of arguments, in calls of as many as SQLite takes.
    void longCall(std::string_view function, std::size_t count, const std::function<void(std::size_t)>& argument);
    void nullIf(const CallExpr& call);
    void function(const FunctionExpr& function);
    void uncheckedFunction(const FunctionExpr& function);
    void resultType(const FunctionExpr& function);
    void argument(const FunctionExpr& function, std::size_t index);
    void replaceLength(const Type& type);
    void aggregate(const FunctionExpr& function);
    void aggregateName(const FunctionExpr& function);
    void over(const Over& over);
    /// With the collation where text order or equality matters and no column brings it along.
    void collated(const Expr& expr);
    static bool needsCollation(const Expr& expr);
    bool bringsCollation(const Expr& expr) const;

    // queries
    void select(const Query& query, Naming naming, bool collate, const Source* keySource);
    // Compound queries. `collate`: duplicates are found by collation TAMAROK.
    void compound(const Query& query, Naming naming, bool collate);
    void arm(const Query& query, Naming naming, bool collate);
    void items(const Query& query, Naming naming, bool collate, const Source* keySource);
    void groupBy(const Select& select);
    void orderBy(const Query& query);
    void limit(const Query& query, bool rowLimitHere);
    void limitValue(const Expr& expr);
    /// FROM of a query that ROWNUM limits before it groups or sorts: an inner query with LIMIT.
    void limitedRows(const Select& select);
    bool comesFromLimitedRows(const Source& source) const;
    static bool needsLimitedRows(const Query& query);

    // FROM (emit_from.cpp)
    void from(const FromItem& item);
    void table(const Source& source);
    void derived(const FromItem& item, bool kept);
    void joinOperand(const JoinTerm& term);
    void join(const JoinTerm& term);
    void where(std::span<const Expr* const> conditions);
    const JoinLevel* nestedLevel(const Source& source) const;
    void passedColumn(const JoinLevel& level, const PassedColumn& column);
    void nestedFrom(JoinNest& nest);
    void nestedTable(JoinNest& nest);

    const SourceText& source_;
    DateOrder order_;
    std::string out_;
    std::vector<std::int32_t> parameters_;
    Nesting nested_;
    bool unqualified_ = false; ///< columns are written without their table
    /// Scopes whose columns come out of an inner query, because ROWNUM limits the rows.
    std::vector<const Scope*> limitedScopes_;
    std::vector<JoinNest*> nests_; ///< of the FROM clauses being written, the innermost last
    std::size_t joinAliases_ = 0;  ///< derived tables of nested joins so far
};

} // namespace tamarok::embedded::translation
