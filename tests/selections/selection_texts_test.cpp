#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

#include "catalogue/table_file.h"
#include "support/errors.h"

#include "tamarok/comm_set.h"
#include "tamarok/error.h"
#include "tamarok/selection_book.h"

namespace tamarok {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::string statementOf(std::string_view key, std::string_view fields)
{
    return Comm_Set{}.CreateSQL(TmkVar{}, key, fields);
}

std::string oracleStatementOf(std::string_view key, std::string_view fields)
{
    TmkVar session;
    session.bolOracle = true;
    return Comm_Set{}.CreateSQL(session, key, fields);
}

void expectSubscriptError(std::string_view key, std::string_view fields)
{
    test::expectError(errors::subscriptOutOfRange, key, [&] { statementOf(key, fields); });
}

std::string tabbed(std::string fields)
{
    std::ranges::replace(fields, '|', '\t');
    return fields;
}

/// Statement by statement: key, fields, dialect and text.
TEST(SelectionTexts, AreThoseOfTheBook)
{
    std::set<std::string> keys;
    for (const auto& row : test::readTable("selection_texts.tsv")) {
        ASSERT_EQ(row.size(), 4U);
        const auto compose = row[2] == "Oracle" ? oracleStatementOf : statementOf;
        EXPECT_EQ(compose(row[0], tabbed(row[1])), row[3]) << row[0] << ' ' << row[2];
        keys.insert(row[0]);
    }
    EXPECT_EQ(keys.size(), 715U);
}

TEST(SelectionBook, HoldsEveryKeyUnderItsName)
{
    EXPECT_EQ(selections::all().size(), 777U);
    for (const selections::Selection& selection : selections::all())
        EXPECT_EQ(selections::find(selection.key), &selection);
}

TEST(CreateSQL, AnUnknownKeyReturnsTheEmptyText)
{
    for (const std::string_view key : {"", "VERTRAG9", "VERTRAEGE_VALID10", "RELTABLE11", "HOLZART_", "ZZZ", "A"})
        EXPECT_EQ(statementOf(key, "1"), "") << key;
}

TEST(CreateSQL, ALowerCaseKeyMatchesNothing)
{
    EXPECT_EQ(statementOf("holzart_grid", ""), "");
    EXPECT_EQ(statementOf("Holzart_GRID", ""), "");
}

TEST(CreateSQL, AnEmptyVectorHasOneEmptyField)
{
    EXPECT_EQ(statementOf("AKKORD_VALID", ""),
              "SELECT ID,NUMMER,LONG FROM T_AKKORD WHERE ISNULL(DISABLE,0)=0 AND NUMMER = ''");
}

TEST(CreateSQL, AFieldBeyondTheVectorIsASubscriptError)
{
    expectSubscriptError("PA_KOPF_VALID", "1\t2024\t1111\t");
    EXPECT_NO_THROW(statementOf("PA_KOPF_VALID", "1\t2024\t1111\t\t7"));
}

TEST(CreateSQL, AFieldThatOnlyDecidesAnOptionalPartIsNeededToo)
{
    expectSubscriptError("VERTRAG_VALID3", "V1");
    expectSubscriptError("BB_TSM_SOGLA_LEISTUNGSART_GRID", "1");
    expectSubscriptError("ZUGANGSART_GRID", "");
}

TEST(CreateSQL, AssortmentsOfAnotherKindOfMeasurementAreAllNamedOnes)
{
    EXPECT_EQ(statementOf("HOLZSORTE", "7\t"),
              "SELECT ID,HS FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND HS IS NOT NULL ORDER BY SHOW_ORDER");
}

TEST(CreateSQL, RelationListsAreTakenByTheirNumber)
{
    EXPECT_THAT(statementOf("RELTABLE3_GRID", "1=1"), HasSubstr("RELTABLE_ID = 3 AND"));
    EXPECT_THAT(statementOf("RELTABLE10", "1=1"), HasSubstr("RELTABLE_ID = 10 AND"));
}

TEST(CreateSQL, AllContractsIncludeClosedOnes)
{
    EXPECT_THAT(statementOf("VERTRAG_VALID10", "V\t"), HasSubstr("ABGESCHLOSSEN"));
    const std::string all = statementOf("VERTRAG_VALID_ALL10", "V\t");
    EXPECT_EQ(all.find("ABGESCHLOSSEN"), std::string::npos);
    EXPECT_THAT(all, HasSubstr("ID_FAKTART = 10"));
}

TEST(CreateSQL, OnOracleSomeKeysStayServerText)
{
    EXPECT_THAT(oracleStatementOf("FARBE_VALID", "rt"), HasSubstr("NVL(DISABLE,0)"));
    EXPECT_EQ(oracleStatementOf("FARBE_GRID", ""), statementOf("FARBE_GRID", ""));
}

TEST(CreateSQL, TheCheckOfACodeGroupLacksItsClosingQuote)
{
    EXPECT_EQ(statementOf("MENGEN_VALID", "fm"), "SELECT SHORTNAME,LONGNAME FROM STAMM_TABELLEN WHERE "
                                                 "ISNULL(DISABLE,0)=0 AND LABEL_GROUP = 'MENGEN_' AND SHORTNAME = 'fm "
                                                 "ORDER BY SHORTNAME");
}

TEST(CreateSQL, TheDialectTakesWholeArms)
{
    EXPECT_EQ(oracleStatementOf("BB_T_LAND_VALID", "AT"),
              "SELECT ID,NUMMER,SHORT,LONG_ FROM BB_T_LAND WHERE NVL(DISABLE,0)=0 AND SHORT = 'AT'");
    EXPECT_EQ(oracleStatementOf("SCHADHOLZ_GRID", ""),
              "SELECT SHORT,NUMMER,LONG_ FROM BB_T_SCHADHOLZ WHERE NVL(DISABLE,0)=0 ORDER BY LDNR");
    const std::string units = oracleStatementOf("WARENEINHEIT_HOLZ_GRID", "1\t\t");
    EXPECT_EQ(units.find("ISNULL"), std::string::npos);
    EXPECT_EQ(units.find("SELECT EINHEIT AS SHORT,BESCHREIBUNG AS LONG_,NUMMER FROM WARENEINHEIT"), 0U)
        << "LONG is a reserved word";
    EXPECT_EQ(statementOf("WARENEINHEIT_HOLZ_GRID", "1\t\t").find("SELECT EINHEIT AS SHORT,BESCHREIBUNG AS LONG,"), 0U);
}

TEST(CreateSQL, AssortmentsByMeasureKind)
{
    EXPECT_EQ(statementOf("HOLZSORTE_GRID", "\t AND LDNR < 50"),
              "SELECT HS AS \"SO\",HS_LANG AS \"SO-lang\" FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND LDNR < 50 ORDER "
              "BY LDNR");
    EXPECT_EQ(statementOf("HOLZSORTE_VALID", "1\tBL"),
              "SELECT ID,HS,HS_LANG FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND RUND = 1 AND HS = 'BL'");
    EXPECT_EQ(oracleStatementOf("HOLZSORTE_LOGS_VALID", "2\tif"),
              "SELECT HS AS SHORT,HS_LANG AS LONG FROM HOLZSORTE WHERE NVL(DISABLE,0)=0 AND SCHICHT = 1 AND UPPER(HS) "
              "= 'IF'");
}

TEST(CreateSQL, StrengthClassesOfAnAssortmentAreABatch)
{
    EXPECT_EQ(statementOf("BBSTKL_GRID", "20\t40\t1"),
              "IF EXISTS(SELECT ID FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON >= 020 AND DM_BIS <= 040 AND "
              "ID_BB_TSM_STKLG IN (SELECT ID_BB_TSM_STKLG FROM HOLZSORTE WHERE ID = 01))\r\nBEGIN\r\n"
              "SELECT STKL,DM_VON,DM_BIS FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON >= 020 AND DM_BIS <= 040 AND "
              "ID_BB_TSM_STKLG IN (SELECT ID_BB_TSM_STKLG FROM HOLZSORTE WHERE ID = 01) ORDER BY STKL\r\nEND\r\n"
              "ELSE\r\nBEGIN\r\n"
              "SELECT STKL,DM_VON,DM_BIS FROM STKL WHERE ISNULL(DISABLE,0)=0 AND STANDART_LEER = 1 AND "
              "ID_BB_TSM_STKLG IN (SELECT ID_BB_TSM_STKLG FROM HOLZSORTE WHERE ID = 01) ORDER BY STKL\r\nEND");
}

TEST(CreateSQL, AForestLocationJoinsItsLevels)
{
    EXPECT_THAT(statementOf("WALDORT_VALID", "01\t5,6\t"),
                StartsWith("SELECT WALDORT.ID_WALDORT,WALDORT.WO1+(CASE WHEN WALDORT.WO2 IS NULL THEN '' ELSE "
                           "'/ '+WALDORT.WO2 END)+(CASE WHEN WALDORT.WO3 IS NULL THEN '' ELSE"));
    const std::string oracle = oracleStatementOf("WALDORT_VALID", "01/ 02\t5,6\t77");
    EXPECT_THAT(oracle, StartsWith("SELECT /*+ FIRST_ROWS */ WALDORT.ID_WALDORT,WALDORT.WO1||(CASE WHEN WALDORT.WO2 "
                                   "IS NULL THEN NULL ELSE '/ '||WALDORT.WO2 END)||"));
    EXPECT_THAT(oracle,
                HasSubstr(" INNER JOIN (SELECT WO1,WO2,WO3,WO4,WO5,WO6 FROM WALDORT WHERE ID_WALDORT = 77) A  ON "
                          "(A.WO1 IS NULL OR A.WO1 = WALDORT.WO1) AND (A.WO2 IS NULL OR A.WO2 = WALDORT.WO2)"));
    EXPECT_THAT(oracle, EndsWith(" WHERE NVL(DISABLE,0)=0 AND NVL(ID_ACCESS_LEVELS,0) IN (0,5,6) AND "
                                 "UPPER(WALDORT.WO1) = '01' AND UPPER(WALDORT.WO2) = '02'"));
}

TEST(CreateSQL, AnOrderHeadIsListedWithAndWithoutItsKey)
{
    const std::string withKey = statementOf("BB_AUFTRAG_KOPF_ID_GRID", "1=1");
    const std::string without = statementOf("BB_AUFTRAG_KOPF_GRID", "1=1");
    EXPECT_THAT(without, StartsWith("SELECT BB_AUFTRAG_KOPF.AUFTRAG_NUMMER AS [Auftragsnummer],"));
    EXPECT_EQ(withKey, "SELECT BB_AUFTRAG_KOPF.ID," + without.substr(7));
}

TEST(CreateSQL, ReadyPlacesOfDeliveryCountFromTwo)
{
    EXPECT_THAT(statementOf("WVO_T_BEREITSELLUNGS_VALID", "FW"),
                StartsWith("SELECT ID,SHORT,LONG FROM (SELECT 2 AS ID,'FW' AS SHORT,"));
    EXPECT_THAT(statementOf("WVO_T_BEREITSELLUNGS_GRID", ""), StartsWith("SELECT 'FW' AS SHORT,'frei Waldstraße' AS "));
}

TEST(CreateSQL, LevelsComeFromTheUsersRelation)
{
    EXPECT_THAT(statementOf("ACCESS_LEVELS00_GRID", "1\t5"), HasSubstr("LEN(ACCESS_LEVELS)-0)+ ''"));
    EXPECT_THAT(oracleStatementOf("ACCESS_LEVELS01_GRID", "1"), HasSubstr("LEN(ACCESS_LEVELS)-2) || '00'"));
}

} // namespace
} // namespace tamarok
