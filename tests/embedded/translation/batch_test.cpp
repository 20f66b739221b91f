#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "embedded/translation/test_database.h"

/// The members of a step other than its text.
namespace tamarok::embedded::translation {
namespace {

using testing::ElementsAre;

Step translateOne(std::string_view text, RowKey rowKey = RowKey::Omitted)
{
    const TestDatabase database;
    const ParsedBatch batch(text);
    EXPECT_EQ(batch.steps().size(), 1U);
    return translateStep(batch, 0, database, DateOrder::Dmy, rowKey);
}

TEST(Batches, IfAndElseBecomeJumps)
{
    const TestDatabase database;
    const ParsedBatch batch("IF EXISTS(SELECT 1) BEGIN SELECT 1 SELECT 2 END ELSE SELECT 3 SELECT 4");
    ASSERT_EQ(batch.steps().size(), 6U);
    EXPECT_EQ(translateStep(batch, 0, database, DateOrder::Dmy).kind, Step::Kind::JumpUnless);
    EXPECT_EQ(translateStep(batch, 0, database, DateOrder::Dmy).jump, 4U);
    EXPECT_EQ(translateStep(batch, 3, database, DateOrder::Dmy).kind, Step::Kind::Jump);
    EXPECT_EQ(translateStep(batch, 3, database, DateOrder::Dmy).jump, 5U);
}

TEST(Batches, IfTakesOneArmOnly)
{
    TestDatabase database;
    EXPECT_THAT(database.run("IF 1 = 1 SELECT 1 ELSE SELECT 2"), ElementsAre("1"));
    EXPECT_THAT(database.run("IF NULL = 1 SELECT 1 ELSE SELECT 2 SELECT 3"), ElementsAre("2", "3"));
    EXPECT_THAT(database.run("IF NOT EXISTS (SELECT * FROM LOGS) BEGIN SELECT 1; SELECT 2 END SELECT 3"),
                ElementsAre("1", "2", "3"));
    EXPECT_THAT(database.run("IF 1=2 SELECT 1 ELSE IF 1=1 SELECT 2 ELSE SELECT 3"), ElementsAre("2"));
}

TEST(Batches, ParametersAreCountedOverTheBatchAndMappedInTheOrderOfTheText)
{
    const TestDatabase database;
    const ParsedBatch batch("SELECT ? SELECT NULLIF(?, ?), ?");
    EXPECT_THAT(translateStep(batch, 0, database, DateOrder::Dmy).parameters, ElementsAre(0));
    EXPECT_THAT(translateStep(batch, 1, database, DateOrder::Dmy).parameters, ElementsAre(1, 2, 3));
}

TEST(Batches, TheLockProbeHasItsOwnParameters)
{
    const Step step = translateOne("UPDATE LOGS SET HA = ? WHERE ID_LOG = ?");
    EXPECT_EQ(step.kind, Step::Kind::Update);
    EXPECT_EQ(step.target, "LOGS");
    EXPECT_THAT(step.parameters, ElementsAre(0, 1));
    EXPECT_THAT(step.probeParameters, ElementsAre(1));
}

TEST(Batches, ColumnsTellNameOriginAndType)
{
    const Step step = translateOne("SELECT A.HA AS X, KUBATUR * 2, STK FROM LOGS, (SELECT HA FROM HOLZART) A");
    ASSERT_EQ(step.columns.size(), 3U);
    EXPECT_EQ(step.columns[0].name, "X");
    EXPECT_EQ(step.columns[0].baseTable, "HOLZART");
    EXPECT_EQ(step.columns[0].baseColumn, "HA");
    EXPECT_EQ(step.columns[0].type, parseDeclaredType("NVARCHAR(5)"));
    EXPECT_EQ(step.columns[1].name, "");
    EXPECT_EQ(step.columns[1].baseTable, "");
    EXPECT_EQ(step.columns[1].type.kind, TypeKind::Float);
    EXPECT_EQ(step.columns[2].name, "STK");
    EXPECT_EQ(step.columns[2].type.kind, TypeKind::Int);
}

TEST(Batches, ARowKeyIsGivenWhereOneTableStandsBehindTheRows)
{
    const Step step = translateOne("SELECT HA FROM LOGS L WHERE STK > 1 ORDER BY HA", RowKey::Added);
    EXPECT_EQ(step.keyTable, "LOGS");
    EXPECT_EQ(step.columns.size(), 1U);
    EXPECT_THAT(step.text, testing::HasSubstr("\"L\".rowid FROM"));
    for (const char* text : {"SELECT DISTINCT HA FROM LOGS", "SELECT COUNT(*) FROM LOGS", "SELECT 1",
                             "SELECT LOGS.HA FROM LOGS, HOLZART", "SELECT HA FROM LOGS UNION ALL SELECT 'x'",
                             "SELECT HA FROM (SELECT HA FROM LOGS) A", "SELECT HA FROM LOGS GROUP BY HA"}) {
        EXPECT_EQ(translateOne(text, RowKey::Added).keyTable, "") << text;
    }
}

TEST(Batches, ExecCarriesItsArguments)
{
    const Step step =
        translateOne("EXEC dbo.tmk_OPTIONEN_INS 'A''B', -5, 1.5, NULL, ?, @NAME = N'x', @ID = 99999999999");
    EXPECT_EQ(step.kind, Step::Kind::Procedure);
    EXPECT_EQ(step.target, "tmk_OPTIONEN_INS");
    ASSERT_EQ(step.arguments.size(), 7U);
    EXPECT_EQ(step.arguments[0].value, Variant("A'B"));
    EXPECT_EQ(step.arguments[1].value, Variant(std::int32_t{-5}));
    EXPECT_EQ(step.arguments[2].value, Variant(1.5));
    EXPECT_TRUE(step.arguments[3].value.isNull());
    EXPECT_EQ(step.arguments[4].parameter, 0);
    EXPECT_EQ(step.arguments[5].name, "NAME");
    EXPECT_EQ(step.arguments[5].value, Variant("x"));
    EXPECT_EQ(step.arguments[6].value, Variant(99999999999.0));
}

TEST(Batches, SettingsAndTransactionsAreSteps)
{
    EXPECT_EQ(translateOne("SET NOCOUNT ON").kind, Step::Kind::NoCount);
    EXPECT_TRUE(translateOne("SET NOCOUNT ON").flag);
    EXPECT_FALSE(translateOne("SET NOCOUNT OFF").flag);
    EXPECT_EQ(translateOne("SET DATEFORMAT dmy").dateOrder, DateOrder::Dmy);
    EXPECT_EQ(translateOne("SET DATEFORMAT YMD").dateOrder, DateOrder::Ymd);
    EXPECT_EQ(translateOne("SET LANGUAGE Deutsch").dateOrder, DateOrder::Dmy);
    EXPECT_EQ(translateOne("SET ANSI_NULLS ON").kind, Step::Kind::Nothing);
    EXPECT_EQ(translateOne("SET IDENTITY_INSERT LOGS ON").kind, Step::Kind::IdentityInsert);
    EXPECT_EQ(translateOne("SET XACT_ABORT ON").kind, Step::Kind::XactAbort);
    EXPECT_EQ(translateOne("SET TRANSACTION ISOLATION LEVEL READ COMMITTED").kind, Step::Kind::Nothing);
    EXPECT_EQ(translateOne("BEGIN TRAN").kind, Step::Kind::Begin);
    EXPECT_EQ(translateOne("BEGIN TRANSACTION T1").kind, Step::Kind::Begin);
    EXPECT_EQ(translateOne("COMMIT").kind, Step::Kind::Commit);
    EXPECT_EQ(translateOne("COMMIT TRAN").kind, Step::Kind::Commit);
    EXPECT_EQ(translateOne("ROLLBACK WORK").kind, Step::Kind::Rollback);
}

TEST(Batches, LaterStatementsSeeTablesOfEarlierOnes)
{
    TestDatabase database;
    EXPECT_THAT(database.run("CREATE TABLE #A (ID INT IDENTITY(1,1), T NVARCHAR(9))\n"
                             "INSERT #A (T) VALUES ('x'),('y')\nSELECT * FROM #A ORDER BY ID DESC\nDROP TABLE #A"),
                ElementsAre("2|y", "1|x"));
    EXPECT_EQ(database.table("#A"), nullptr);
}

TEST(Batches, ATranslationCanBeRepeatedAfterTheSchemaChanged)
{
    TestDatabase database;
    const ParsedBatch batch("SELECT * FROM HOLZART ORDER BY HA");
    const std::size_t before = translateStep(batch, 0, database, DateOrder::Dmy).columns.size();
    database.run("ALTER TABLE HOLZART ADD NEU INT NULL");
    EXPECT_EQ(translateStep(batch, 0, database, DateOrder::Dmy).columns.size(), before + 1);
}

TEST(Batches, DeclaredTypesComeBackFromSqliteAsDeclared)
{
    const TestDatabase database;
    const Table* logs = database.table("logs");
    ASSERT_NE(logs, nullptr);
    EXPECT_TRUE(logs->columns[0].identity);
    EXPECT_EQ(logs->columns[0].type.kind, TypeKind::Int);
    const auto typeOf = [&](std::string_view name) {
        return logs->columns[static_cast<std::size_t>(logs->column(name))].type;
    };
    EXPECT_EQ(typeOf("LISTE"), parseDeclaredType("NVARCHAR(20)"));
    EXPECT_EQ(typeOf("listdatum").kind, TypeKind::SmallDateTime);
    EXPECT_EQ(typeOf("PREIS"), parseDeclaredType("DECIMAL(12,3)"));
    EXPECT_EQ(typeOf("BEMERKUNG"), parseDeclaredType("NVARCHAR(MAX)"));
    EXPECT_EQ(logs->column("NICHTS"), -1);
    const Table* street = database.table("STRAßE ö");
    ASSERT_NE(street, nullptr);
    EXPECT_EQ(street->column("name DER straße"), 0);
}

} // namespace
} // namespace tamarok::embedded::translation
