#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

#include "catalogue/table_file.h"

#include "tamarok/comm_set.h"
#include "tamarok/error.h"
#include "tamarok/selection_book.h"

namespace tamarok {
namespace {

std::string statementOf(std::string_view key, std::string_view fields, bool oracle = false)
{
    TmkVar session;
    session.bolOracle = oracle;
    return Comm_Set{}.CreateSQL(session, key, fields);
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
    for (const auto& row : testing::readTable("selection_texts.tsv")) {
        ASSERT_EQ(row.size(), 4U);
        EXPECT_EQ(statementOf(row[0], tabbed(row[1]), row[2] == "Oracle"), row[3]) << row[0] << ' ' << row[2];
        keys.insert(row[0]);
    }
    EXPECT_GE(keys.size(), 500U);
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
    try {
        statementOf("PA_KOPF_VALID", "1\t2024\t1111\t");
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.number, 9);
        EXPECT_NE(error.description.find("PA_KOPF_VALID"), std::string::npos);
    }
    EXPECT_NO_THROW(statementOf("PA_KOPF_VALID", "1\t2024\t1111\t\t7"));
}

TEST(CreateSQL, AFieldThatOnlyDecidesAnOptionalPartIsNeededToo)
{
    EXPECT_THROW(statementOf("VERTRAG_VALID3", "V1"), Error);
    EXPECT_THROW(statementOf("BB_TSM_SOGLA_LEISTUNGSART_GRID", "1"), Error);
    EXPECT_THROW(statementOf("ZUGANGSART_GRID", ""), Error);
}

TEST(CreateSQL, HolzsorteOfAnotherMeasureKindTakesEveryNamedAssortment)
{
    EXPECT_EQ(statementOf("HOLZSORTE", "7\t"),
              "SELECT ID,HS FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND HS IS NOT NULL ORDER BY SHOW_ORDER");
}

TEST(CreateSQL, RelationListsAreTakenByTheirNumber)
{
    EXPECT_NE(statementOf("RELTABLE3_GRID", "1=1").find("RELTABLE_ID = 3 AND"), std::string::npos);
    EXPECT_NE(statementOf("RELTABLE10", "1=1").find("RELTABLE_ID = 10 AND"), std::string::npos);
}

TEST(CreateSQL, AllContractsIncludeClosedOnes)
{
    EXPECT_NE(statementOf("VERTRAG_VALID10", "V\t").find("ABGESCHLOSSEN"), std::string::npos);
    const std::string all = statementOf("VERTRAG_VALID_ALL10", "V\t");
    EXPECT_EQ(all.find("ABGESCHLOSSEN"), std::string::npos);
    EXPECT_NE(all.find("ID_FAKTART = 10"), std::string::npos);
}

TEST(CreateSQL, OnOracleSomeKeysStayServerText)
{
    EXPECT_NE(statementOf("FARBE_VALID", "rt", true).find("NVL(DISABLE,0)"), std::string::npos);
    EXPECT_EQ(statementOf("FARBE_GRID", "", true), statementOf("FARBE_GRID", ""));
}

TEST(CreateSQL, TheCheckOfACodeGroupLacksItsClosingQuote)
{
    EXPECT_EQ(statementOf("MENGEN_VALID", "fm"), "SELECT SHORTNAME,LONGNAME FROM STAMM_TABELLEN WHERE "
                                                 "ISNULL(DISABLE,0)=0 AND LABEL_GROUP = 'MENGEN_' AND SHORTNAME = 'fm "
                                                 "ORDER BY SHORTNAME");
}

TEST(CreateSQL, TheDialectTakesWholeArms)
{
    EXPECT_EQ(statementOf("BB_T_LAND_VALID", "AT", true),
              "SELECT ID,NUMMER,SHORT,LONG_ FROM BB_T_LAND WHERE NVL(DISABLE,0)=0 AND SHORT = 'AT'");
    EXPECT_EQ(statementOf("SCHADHOLZ_GRID", "", true),
              "SELECT SHORT,NUMMER,LONG_ FROM BB_T_SCHADHOLZ WHERE NVL(DISABLE,0)=0 ORDER BY LDNR");
    EXPECT_EQ(statementOf("WARENEINHEIT_HOLZ_GRID", "1\t\t", true).find("ISNULL"), std::string::npos);
}

TEST(CreateSQL, AssortmentsByMeasureKind)
{
    EXPECT_EQ(statementOf("HOLZSORTE_GRID", "\t AND LDNR < 50"),
              "SELECT HS AS \"SO\",HS_LANG AS \"SO-lang\" FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND LDNR < 50 ORDER "
              "BY LDNR");
    EXPECT_EQ(statementOf("HOLZSORTE_VALID", "1\tBL"),
              "SELECT ID,HS,HS_LANG FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND RUND = 1 AND HS = 'BL'");
    EXPECT_EQ(statementOf("HOLZSORTE_LOGS_VALID", "2\tif", true),
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

TEST(CreateSQL, AForestLocationGluesItsLevels)
{
    EXPECT_TRUE(statementOf("WALDORT_VALID", "01\t5,6\t")
                    .starts_with("SELECT WALDORT.ID_WALDORT,WALDORT.WO1+(CASE WHEN WALDORT.WO2 IS NULL THEN '' ELSE "
                                 "'/ '+WALDORT.WO2 END)+(CASE WHEN WALDORT.WO3 IS NULL THEN '' ELSE"));
    const std::string oracle = statementOf("WALDORT_VALID", "01/ 02\t5,6\t77", true);
    EXPECT_TRUE(oracle.starts_with("SELECT /*+ FIRST_ROWS */ WALDORT.ID_WALDORT,WALDORT.WO1||(CASE WHEN WALDORT.WO2 "
                                   "IS NULL THEN NULL ELSE '/ '||WALDORT.WO2 END)||"))
        << oracle;
    EXPECT_NE(oracle.find(" INNER JOIN (SELECT WO1,WO2,WO3,WO4,WO5,WO6 FROM WALDORT WHERE ID_WALDORT = 77) A  ON "
                          "(A.WO1 IS NULL OR A.WO1 = WALDORT.WO1) AND (A.WO2 IS NULL OR A.WO2 = WALDORT.WO2)"),
              std::string::npos);
    EXPECT_TRUE(oracle.ends_with(" WHERE NVL(DISABLE,0)=0 AND NVL(ID_ACCESS_LEVELS,0) IN (0,5,6) AND "
                                 "UPPER(WALDORT.WO1) = '01' AND UPPER(WALDORT.WO2) = '02'"))
        << oracle;
}

TEST(CreateSQL, AnOrderHeadIsListedWithAndWithoutItsKey)
{
    const std::string withKey = statementOf("BB_AUFTRAG_KOPF_ID_GRID", "1=1");
    const std::string without = statementOf("BB_AUFTRAG_KOPF_GRID", "1=1");
    EXPECT_TRUE(without.starts_with("SELECT BB_AUFTRAG_KOPF.AUFTRAG_NUMMER AS [Auftragsnummer],"));
    EXPECT_EQ(withKey, "SELECT BB_AUFTRAG_KOPF.ID," + without.substr(7));
}

TEST(CreateSQL, ReadyPlacesOfDeliveryCountFromTwo)
{
    EXPECT_TRUE(statementOf("WVO_T_BEREITSELLUNGS_VALID", "FW")
                    .starts_with("SELECT ID,SHORT,LONG FROM (SELECT 2 AS ID,'FW' AS SHORT,"));
    EXPECT_TRUE(statementOf("WVO_T_BEREITSELLUNGS_GRID", "").starts_with("SELECT 'FW' AS SHORT,'frei Waldstraße' AS "));
}

TEST(CreateSQL, LevelsComeFromTheUsersRelation)
{
    EXPECT_NE(statementOf("ACCESS_LEVELS00_GRID", "1\t5").find("LEN(ACCESS_LEVELS)-0)+ ''"), std::string::npos);
    EXPECT_NE(statementOf("ACCESS_LEVELS01_GRID", "1", true).find("LEN(ACCESS_LEVELS)-2) || '00'"), std::string::npos);
}

} // namespace
} // namespace tamarok
