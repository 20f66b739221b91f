#include <gtest/gtest.h>

#include "tamarok_tsql/type_rules.h"

namespace tamarok::tsql {
namespace {

struct Declaration {
    const char* written;
    Type type;
    const char* shown;
};

TEST(Types, DeclarationsAreReadAndWritten)
{
    const Declaration rows[] = {
        {"bit", makeType(TypeKind::Bit), "BIT"},
        {"TINYINT", makeType(TypeKind::TinyInt), "TINYINT"},
        {"smallint", makeType(TypeKind::SmallInt), "SMALLINT"},
        {"INT", makeType(TypeKind::Int), "INT"},
        {"INTEGER", makeType(TypeKind::Int), "INT"},
        {"BIGINT", makeType(TypeKind::BigInt), "BIGINT"},
        {"DECIMAL", makeDecimal(18, 0), "DECIMAL(18,0)"},
        {"decimal(10, 2)", makeDecimal(10, 2), "DECIMAL(10,2)"},
        {"numeric(5)", makeDecimal(5, 0), "DECIMAL(5,0)"},
        {"money", makeType(TypeKind::Money), "MONEY"},
        {"smallmoney", makeType(TypeKind::SmallMoney), "SMALLMONEY"},
        {"real", makeType(TypeKind::Real), "REAL"},
        {"float", makeType(TypeKind::Float), "FLOAT"},
        {"float(24)", makeType(TypeKind::Real), "REAL"},
        {"float(53)", makeType(TypeKind::Float), "FLOAT"},
        {"char", makeType(TypeKind::Char, 1), "CHAR(1)"},
        {"varchar(20)", makeType(TypeKind::VarChar, 20), "VARCHAR(20)"},
        {"nchar(3)", makeType(TypeKind::NChar, 3), "NCHAR(3)"},
        {"NVARCHAR (40)", makeType(TypeKind::NVarChar, 40), "NVARCHAR(40)"},
        {"[nvarchar](40)", makeType(TypeKind::NVarChar, 40), "NVARCHAR(40)"},
        {"nvarchar(max)", makeType(TypeKind::NVarChar, -1), "NVARCHAR(MAX)"},
        {"text", makeType(TypeKind::Text, -1), "TEXT"},
        {"ntext", makeType(TypeKind::NText, -1), "NTEXT"},
        {"date", makeType(TypeKind::Date), "DATE"},
        {"smalldatetime", makeType(TypeKind::SmallDateTime), "SMALLDATETIME"},
        {"datetime", makeType(TypeKind::DateTime), "DATETIME"},
        {"datetime2(7)", makeType(TypeKind::DateTime2), "DATETIME2"},
        {"time", makeType(TypeKind::Time), "TIME"},
        {"uniqueidentifier", makeType(TypeKind::UniqueIdentifier, 36), "UNIQUEIDENTIFIER"},
        {"varbinary(8)", makeType(TypeKind::Binary, 8), "BINARY(8)"},
        {"geography", {}, ""},
        {"", {}, ""},
    };
    for (const Declaration& row : rows) {
        EXPECT_EQ(parseDeclaredType(row.written), row.type) << row.written;
        EXPECT_EQ(declaredText(row.type), row.shown) << row.written;
    }
}

TEST(Types, ArithmeticOnDecimalsHasTheServersSizes)
{
    const Type a = makeDecimal(10, 2);
    const Type b = makeDecimal(5, 1);
    EXPECT_EQ(arithmeticType('+', a, b), makeDecimal(11, 2));
    EXPECT_EQ(arithmeticType('-', a, b), makeDecimal(11, 2));
    EXPECT_EQ(arithmeticType('*', a, b), makeDecimal(16, 3));
    EXPECT_EQ(arithmeticType('/', a, b), makeDecimal(17, 8));
    EXPECT_EQ(arithmeticType('%', a, b), makeDecimal(6, 2));
    EXPECT_EQ(arithmeticType('*', makeDecimal(38, 4), makeDecimal(10, 2)), makeDecimal(38, 6));
}

TEST(Types, TheHigherTypeWins)
{
    const Type smallDate = makeType(TypeKind::SmallDateTime);
    EXPECT_EQ(unify(makeType(TypeKind::Int), makeType(TypeKind::Float)).kind, TypeKind::Float);
    EXPECT_EQ(unify(makeType(TypeKind::VarChar, 5), makeType(TypeKind::Int)).kind, TypeKind::Int);
    EXPECT_EQ(unify(makeType(TypeKind::VarChar, 5), smallDate).kind, TypeKind::SmallDateTime);
    EXPECT_EQ(unify(makeType(TypeKind::Null), smallDate), smallDate);
    EXPECT_EQ(unify(makeType(TypeKind::Char, 3), makeType(TypeKind::NVarChar, 7)), makeType(TypeKind::NVarChar, 7));
    EXPECT_EQ(unify(makeType(TypeKind::Char, 3), makeType(TypeKind::Char, 4)), makeType(TypeKind::Char, 4));
    EXPECT_EQ(unify(makeDecimal(5, 2), makeType(TypeKind::Int)), makeDecimal(12, 2));
    EXPECT_EQ(unify(makeType(TypeKind::Bit), makeType(TypeKind::TinyInt)).kind, TypeKind::TinyInt);
    EXPECT_EQ(unify(makeType(TypeKind::SmallMoney), makeType(TypeKind::BigInt)).kind, TypeKind::SmallMoney);
    EXPECT_EQ(unify(makeType(TypeKind::SmallMoney), makeType(TypeKind::Money)).kind, TypeKind::Money);
    const Type longText = makeType(TypeKind::NText, -1);
    EXPECT_EQ(unify(makeType(TypeKind::NVarChar, 5), longText), longText);
}

} // namespace
} // namespace tamarok::tsql
