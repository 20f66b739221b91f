#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tamarok_tsql/parsed_batch.h"
#include "tamarok_tsql/types.h"

#include "tamarok/error.h"

namespace tamarok::tsql {
namespace {

using testing::ElementsAre;

std::string shown(const Expr& expr);

std::string shown(std::string_view head, std::initializer_list<const Expr*> parts)
{
    std::string text = "(";
    text += head;
    for (const Expr* part : parts) {
        if (part != nullptr) text.append(" ").append(shown(*part));
    }
    return text.append(")");
}

std::string shown(std::string_view head, ExprList parts)
{
    std::string text = "(";
    text += head;
    for (const Expr* part : parts)
        text.append(" ").append(shown(*part));
    return text.append(")");
}

std::string_view operatorOf(TokenKind op)
{
    switch (op) {
    case TokenKind::Plus: return "+";
    case TokenKind::Minus: return "-";
    case TokenKind::Star: return "*";
    case TokenKind::Slash: return "/";
    case TokenKind::BarBar: return "||";
    case TokenKind::Equal: return "=";
    case TokenKind::Less: return "<";
    case TokenKind::NotEqual: return "<>";
    case TokenKind::Tilde: return "~";
    default: return "?operator";
    }
}

/// An expression in prefix form, such as "(+ 1 (* A.X 2))".
std::string shown(const Expr& expr)
{
    switch (expr.kind) {
    case ExprKind::Null: return "NULL";
    case ExprKind::Number: return std::string(as<NumberExpr>(expr).text);
    case ExprKind::Text: return std::string(as<TextExpr>(expr).raw);
    case ExprKind::Parameter: return std::string("?").append(std::to_string(as<ParameterExpr>(expr).index));
    case ExprKind::Column: {
        const auto& column = as<ColumnExpr>(expr);
        std::string text(column.qualifier.text);
        if (!text.empty()) text += '.';
        return text.append(column.name.text);
    }
    case ExprKind::Unary: return shown(operatorOf(as<UnaryExpr>(expr).op), {as<UnaryExpr>(expr).operand});
    case ExprKind::Binary:
    case ExprKind::Compare: {
        const auto& binary = as<BinaryExpr>(expr);
        return shown(operatorOf(binary.op), {binary.left, binary.right});
    }
    case ExprKind::And: return shown("AND", as<ChainExpr>(expr).operands);
    case ExprKind::Or: return shown("OR", as<ChainExpr>(expr).operands);
    case ExprKind::Not: return shown("NOT", {as<NotExpr>(expr).operand});
    case ExprKind::Between: {
        const auto& between = as<BetweenExpr>(expr);
        return shown(between.negated ? "NOT-BETWEEN" : "BETWEEN", {between.value, between.low, between.high});
    }
    case ExprKind::InList:
        return shown(std::string("IN ").append(shown(*as<InListExpr>(expr).value)), as<InListExpr>(expr).items);
    case ExprKind::Like: {
        const auto& like = as<LikeExpr>(expr);
        return shown(like.negated ? "NOT-LIKE" : "LIKE", {like.value, like.pattern, like.escape});
    }
    case ExprKind::IsNull:
        return shown(as<IsNullExpr>(expr).negated ? "NOT-NULL" : "NULL", {as<IsNullExpr>(expr).value});
    case ExprKind::Cast:
        return shown(std::string("CAST ").append(declaredText(as<CastExpr>(expr).target)), {as<CastExpr>(expr).value});
    case ExprKind::IsNullCall: return shown("ISNULL", as<CallExpr>(expr).arguments);
    case ExprKind::Function: return shown(as<FunctionExpr>(expr).name.text, as<FunctionExpr>(expr).arguments);
    default: return "?expression";
    }
}

/// The first item of a SELECT.
std::string item(const std::string& expression)
{
    const ParsedBatch batch("SELECT " + expression);
    return shown(*batch.steps()[0].query->core->items[0].value);
}

std::string condition(const std::string& text)
{
    const ParsedBatch batch("SELECT 1 WHERE " + text);
    return shown(*batch.steps()[0].query->core->where);
}

std::string refusal(const std::string& text)
{
    try {
        const ParsedBatch batch(text);
    } catch (const Error& error) {
        EXPECT_EQ(error.number, errors::statementRefused);
        return std::to_string(error.nativeError) + " " + error.description;
    }
    return "accepted";
}

std::vector<StepKind> kindsOf(const std::string& text)
{
    const ParsedBatch batch(text);
    std::vector<StepKind> kinds;
    for (const ParsedStep& step : batch.steps())
        kinds.push_back(step.kind);
    return kinds;
}

TEST(Parser, OperatorsBindByPrecedenceFromTheLeft)
{
    EXPECT_EQ(item("1 + 2 * A.X - 3"), "(- (+ 1 (* 2 A.X)) 3)");
    EXPECT_EQ(item("(1 + 2) * -x"), "(* (+ 1 2) (- x))");
    EXPECT_EQ(item("a || b + 'c'"), "(+ (|| a b) 'c')");
    EXPECT_EQ(condition("a = 1 OR b = 2 AND NOT c < 3 AND d <> 4"),
              "(OR (= a 1) (AND (= b 2) (NOT (< c 3)) (<> d 4)))");
}

TEST(Parser, PredicatesKeepTheirOperands)
{
    EXPECT_EQ(condition("a NOT BETWEEN 1 AND 2 AND b IS NOT NULL"), "(AND (NOT-BETWEEN a 1 2) (NOT-NULL b))");
    EXPECT_EQ(condition("a IN (1, ?, NULL) OR b LIKE 'x!%' ESCAPE '!'"), "(OR (IN a 1 ?0 NULL) (LIKE b 'x!%' '!'))");
}

TEST(Parser, CallsAndConversionsHaveArgumentsAndTarget)
{
    EXPECT_EQ(item("ISNULL(LEFT(a, 2), N'x')"), "(ISNULL (LEFT a 2) 'x')");
    EXPECT_EQ(item("CAST(a AS decimal(10,2))"), "(CAST DECIMAL(10,2) a)");
    EXPECT_EQ(item("CONVERT(varchar, a)"), "(CAST VARCHAR(30) a)");
    EXPECT_EQ(item("NVL(a, 0)"), "(ISNULL a 0)");
}

TEST(Parser, AQueryKeepsItsClauses)
{
    const ParsedBatch batch("SELECT DISTINCT TOP 5 a AS x, T.*, y = b FROM T LEFT JOIN U V ON T.id = V.id "
                            "WHERE a > 1 GROUP BY a HAVING COUNT(*) > 1 ORDER BY a DESC, 2");
    const Query& query = *batch.steps()[0].query;
    const Core& core = *query.core;
    EXPECT_TRUE(core.distinct);
    EXPECT_EQ(shown(*core.top), "5");
    ASSERT_EQ(core.items.size(), 3U);
    EXPECT_EQ(core.items[0].alias.text, "x");
    EXPECT_EQ(core.items[1].value, nullptr);
    EXPECT_EQ(core.items[1].qualifier.text, "T");
    EXPECT_EQ(core.items[2].alias.text, "y");
    ASSERT_EQ(core.from->kind, FromKind::Left);
    EXPECT_EQ(core.from->left->table.text, "T");
    EXPECT_EQ(core.from->right->alias.text, "V");
    EXPECT_EQ(shown(*core.from->on), "(= T.id V.id)");
    EXPECT_EQ(core.groupBy.size(), 1U);
    EXPECT_NE(core.having, nullptr);
    ASSERT_EQ(query.order.size(), 2U);
    EXPECT_TRUE(query.order[0].descending);
    EXPECT_FALSE(query.order[1].descending);
}

TEST(Parser, StatementsAreSeparatedByLinesSemicolonsAndGo)
{
    EXPECT_THAT(kindsOf(" ; ;\n-- nothing\n/* at all /* nested */ */"), ElementsAre());
    EXPECT_THAT(kindsOf("SELECT 1 DELETE T;UPDATE T SET a = 1\nINSERT T VALUES (1)\nGO"),
                ElementsAre(StepKind::Query, StepKind::Delete, StepKind::Update, StepKind::Insert, StepKind::Nothing));
}

TEST(Parser, IfAndElseBecomeJumps)
{
    const ParsedBatch batch("IF 1 = 1 BEGIN SELECT 1 SELECT 2 END ELSE SELECT 3 SELECT 4");
    ASSERT_EQ(batch.steps().size(), 6U);
    EXPECT_EQ(batch.steps()[0].kind, StepKind::JumpUnless);
    EXPECT_EQ(batch.steps()[0].jump, 4U);
    EXPECT_EQ(batch.steps()[3].kind, StepKind::Jump);
    EXPECT_EQ(batch.steps()[3].jump, 5U);
}

TEST(Parser, DefinitionsKeepColumnsAndConstraints)
{
    const ParsedBatch batch("CREATE TABLE T (ID int IDENTITY(1,1) NOT NULL, N nvarchar(5) COLLATE Latin1_General_BIN "
                            "DEFAULT 'x', CONSTRAINT PK PRIMARY KEY (ID), FOREIGN KEY (N) REFERENCES U (K) ON DELETE "
                            "CASCADE)");
    const CreateTableStatement& create = *batch.steps()[0].createTable;
    ASSERT_EQ(create.columns.size(), 2U);
    EXPECT_TRUE(create.columns[0].identity);
    EXPECT_TRUE(create.columns[0].notNull);
    EXPECT_EQ(declaredText(create.columns[1].type), "NVARCHAR(5)");
    EXPECT_TRUE(create.columns[1].binary);
    EXPECT_EQ(shown(*create.columns[1].defaultValue), "'x'");
    ASSERT_EQ(create.constraints.size(), 2U);
    EXPECT_EQ(create.constraints[0].name.text, "PK");
    EXPECT_EQ(create.constraints[1].referencedTable.text, "U");
    EXPECT_EQ(create.constraints[1].referenceActions, "ON DELETE CASCADE");
}

TEST(Parser, ExecAndSetKeepTheirArguments)
{
    const ParsedBatch batch("EXEC dbo.P 'A''B', -5, @N = ? SET DATEFORMAT ydm SET LANGUAGE German SET NOCOUNT ON");
    const ParsedStep& execute = batch.steps()[0];
    EXPECT_EQ(execute.name.text, "P");
    ASSERT_EQ(execute.arguments.size(), 3U);
    EXPECT_EQ(execute.arguments[0].value, Variant("A'B"));
    EXPECT_EQ(execute.arguments[1].value, Variant(std::int32_t{-5}));
    EXPECT_EQ(execute.arguments[2].name, "N");
    EXPECT_EQ(execute.arguments[2].parameter, 0);
    EXPECT_EQ(batch.steps()[1].dateOrder, DateOrder::Ydm);
    EXPECT_EQ(batch.steps()[2].dateOrder, DateOrder::Dmy);
    EXPECT_EQ(batch.steps()[3].kind, StepKind::NoCount);
    EXPECT_TRUE(batch.steps()[3].flag);
}

TEST(Parser, ErrorsNameTheConstructLineAndColumn)
{
    EXPECT_EQ(refusal("SELECT (1"),
              "102 Incorrect syntax: the statement ends where ')' is expected. (line 1, column 10)");
    EXPECT_EQ(refusal("SELECT a\nFROM T\nGROUP a"),
              "102 Incorrect syntax near 'a': 'BY' is expected. (line 3, column 7)");
    EXPECT_EQ(refusal("SELECT 1)"), "102 Incorrect syntax near ')'. (line 1, column 9)");
    EXPECT_EQ(refusal("SELECT 1 WHERE a"),
              "4145 An expression of non-boolean type is specified in a context where a condition is expected. "
              "(line 1, column 16)");
    EXPECT_EQ(refusal("SELECT CAST(1 AS geography)"),
              "243 Type geography is not a defined system type. (line 1, column 18)");
    EXPECT_EQ(refusal("SELECT 1\nWHILE 1 = 1"),
              "40517 The statement WHILE is not supported by the embedded database. (line 2, column 1)");
    EXPECT_EQ(refusal("SELECT TOP 5 PERCENT a FROM T"),
              "40517 TOP ... PERCENT is not supported by the embedded database. (line 1, column 14)");
}

} // namespace
} // namespace tamarok::tsql
