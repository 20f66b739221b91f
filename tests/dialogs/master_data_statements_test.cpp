#include <gtest/gtest.h>
#include <string>

#include "master_data_statements.h"
#include "support/platforms.h"

namespace tamarok::dialogs {
namespace {

const std::string freeList =
    "SELECT KURZNAME,LANGNAME FROM RELTABLE WHERE ISNULL(DISABLE,0)=0 AND RELTABLE_ID = 11 AND "
    "(ID_ACCESS_LEVELS = 5) ORDER BY KURZNAME";
const std::string standing = "SELECT SHORT,LONG,STAMMDATEN_EXPORT FROM T_STEH_RELTABLE WHERE RELTABLE_ID = 12";
const std::string orders =
    "SELECT NUMMER,LONG,IST_STUNDEN_ZV FROM BB_T_AUFTRAGS_PLANUNG WHERE ISNULL(DISABLE,0)=0 ORDER BY NUMMER";
const std::string projects =
    "SELECT NUMMER,LONG,SHORT FROM BB_T_PROJEKT_PLANUNG WHERE ISNULL(DISABLE,0)=0 ORDER BY LDNR";
const std::string objects = "SELECT NUMBER AS NUMMER,NAME AS LONG FROM OBJEKT WHERE TABLE_NAME IN (SELECT OBJEKT FROM "
                            "PERSONAL WHERE ID_PERSONAL = 01) ORDER BY OBJEKT.NUMBER";

TmkVar session()
{
    TmkVar session;
    session.strDateFormat = "YYYY-MM-DD";
    session.ID_Access_Levels = 5;
    session.ID_User = 3;
    return session;
}

TEST(MasterDataTables, AreFoundByTheirPatterns)
{
    EXPECT_EQ(masterTableOf(freeList), MasterTable::FreeList);
    EXPECT_EQ(masterTableOf(standing), MasterTable::StandingFreeList);
    EXPECT_EQ(masterTableOf(orders), MasterTable::Order);
    EXPECT_EQ(masterTableOf("SELECT SHORT FROM BB_T_VERTRAG"), MasterTable::Contract);
    EXPECT_EQ(masterTableOf(objects), MasterTable::Object);
    EXPECT_EQ(masterTableOf(projects), MasterTable::Project);
    EXPECT_EQ(masterTableOf("SELECT NUMMER FROM BB_T_LAND"), MasterTable::Other);
}

TEST(MasterDataTables, OtherSpacingFallsToTheGeneralBranch)
{
    EXPECT_EQ(masterTableOf("SELECT NUMMER FROM  BB_T_AUFTRAGS_PLANUNG WHERE 1=1"), MasterTable::Other);
    EXPECT_EQ(masterTableOf("SELECT NUMMER FROM BB_T_AUFTRAGS_PLANUNG"), MasterTable::Other) << "no blank behind it";
    EXPECT_EQ(masterTableOf("SELECT NUMBER FROM OBJEKT"), MasterTable::Other);
    EXPECT_EQ(masterTableOf("SELECT KURZNAME from RELTABLE"), MasterTable::Other);
}

TEST(MasterDataTables, ThreeHaveAUniqueFirstField)
{
    EXPECT_TRUE(hasUniqueFirstField(orders));
    EXPECT_TRUE(hasUniqueFirstField(projects));
    EXPECT_TRUE(hasUniqueFirstField(objects));
    EXPECT_FALSE(hasUniqueFirstField(freeList));
    EXPECT_FALSE(hasUniqueFirstField("SELECT SHORT FROM BB_T_VERTRAG"));
}

TEST(MasterDataWidths, CutTheValues)
{
    const std::string longText(60, 'x');
    const MasterRow row{"0123456789ABCDEFGH", longText, longText};
    EXPECT_EQ(cutToWidths(MasterTable::FreeList, row).first, "01234567");
    EXPECT_EQ(cutToWidths(MasterTable::StandingFreeList, row).first, "01234567");
    EXPECT_EQ(cutToWidths(MasterTable::Order, row).first, "0123456789ABCDE");
    EXPECT_EQ(cutToWidths(MasterTable::Project, row).first, "0123456789ABCDE");
    EXPECT_EQ(cutToWidths(MasterTable::Project, row).third, std::string(50, 'x'));
    EXPECT_EQ(cutToWidths(MasterTable::Object, row).first, "0123456789");
    for (const auto table : {MasterTable::FreeList, MasterTable::StandingFreeList, MasterTable::Order,
                             MasterTable::Project, MasterTable::Object})
        EXPECT_EQ(cutToWidths(table, row).second, std::string(50, 'x'));
    EXPECT_EQ(cutToWidths(MasterTable::FreeList, {"äöüäöüäöü", "", ""}).first, "äöüäöüäö") << "characters, not bytes";
    EXPECT_EQ(cutToWidths(MasterTable::Other, row).first, row.first);
}

TEST(MasterDataStatements, OfTheFreeList)
{
    EXPECT_EQ(newFreeListRow(freeList, {"7", "neu", ""}),
              "INSERT INTO RELTABLE (ID,RELTABLE_ID,KURZNAME,LANGNAME,ID_ACCESS_LEVELS) SELECT ISNULL(MAX(ID),0)+1,11,"
              "'7','neu',5 FROM RELTABLE");
    EXPECT_EQ(changedFreeListRow(freeList, {"7", "neu", ""}, {"6", "alt"}, 0),
              "UPDATE RELTABLE SET KURZNAME = '7',LANGNAME = 'neu' WHERE RELTABLE_ID = 11 AND KURZNAME = '6' AND "
              "LANGNAME  = 'alt' AND ID_ACCESS_LEVELS  IS NULL ");
    EXPECT_EQ(changedFreeListRow(freeList, {"7", "neu", ""}, {"6", std::nullopt}, 5),
              "UPDATE RELTABLE SET KURZNAME = '7',LANGNAME = 'neu' WHERE RELTABLE_ID = 11 AND KURZNAME = '6' AND "
              "LANGNAME  = '' AND ID_ACCESS_LEVELS  = 5");
}

TEST(MasterDataStatements, ThreeDigitListNumberIsCutToTwo)
{
    EXPECT_NE(
        newFreeListRow("SELECT KURZNAME FROM RELTABLE WHERE RELTABLE_ID = 123", {"7", "neu", ""}).find("+1,12,'7'"),
        std::string::npos);
}

TEST(MasterDataStatements, LevelIsNullUnlessTheSelectHasANumber)
{
    for (const char* const condition :
         {"", " AND (ID_ACCESS_LEVELS = X)", " AND ID_ACCESS_LEVELS = 5", " AND ID_ACCESS_LEVELS IN (5)"}) {
        const std::string select = std::string{"SELECT KURZNAME FROM RELTABLE WHERE RELTABLE_ID = 11"} + condition;
        EXPECT_TRUE(newFreeListRow(select, {"7", "neu", ""}).ends_with(",'neu',NULL FROM RELTABLE")) << condition;
    }
}

TEST(MasterDataStatements, OfTheFreeListOfStandingTimber)
{
    const std::string levelled = standing + " AND (ID_ACCESS_LEVELS = 5)";
    EXPECT_EQ(newStandingFreeListRow(levelled, {"7", "neu", "1"}),
              "INSERT INTO T_STEH_RELTABLE (RELTABLE_ID,SHORT,LONG,STAMMDATEN_EXPORT,ID_ACCESS_LEVELS) VALUES "
              "(12,'7','neu',1,5)");
    EXPECT_EQ(newStandingFreeListRow(standing, {"7", "neu", "2"}),
              "INSERT INTO T_STEH_RELTABLE (RELTABLE_ID,SHORT,LONG,STAMMDATEN_EXPORT,ID_ACCESS_LEVELS) VALUES "
              "(12,'7','neu',NULL,NULL)");
    EXPECT_EQ(changedStandingFreeListRow(standing, {"7", "neu", "1"}, {"6", "alt"}),
              "UPDATE T_STEH_RELTABLE SET SHORT = '7',LONG = 'neu',STAMMDATEN_EXPORT = 1 WHERE RELTABLE_ID = 12 AND "
              "SHORT = '6' AND LONG  = 'alt' AND ID_ACCESS_LEVELS = NULL");
}

TEST(MasterDataStatements, OfAnOrder)
{
    const PlatformScope scope{test::platformOf("de-AT")};
    EXPECT_EQ(newOrder({"7", "neu", "12,50"}, session()),
              "INSERT INTO BB_T_AUFTRAGS_PLANUNG (NUMMER,LONG,IST_STUNDEN_ZV,ERSTELLERDATUM,ID_ACCESS_LEVELS,ID_USER) "
              "VALUES ('7','neu',12.50,'2024-5-17',5,3)");
    EXPECT_EQ(newOrder({"7", "", ""}, session()),
              "INSERT INTO BB_T_AUFTRAGS_PLANUNG (NUMMER,LONG,IST_STUNDEN_ZV,ERSTELLERDATUM,ID_ACCESS_LEVELS,ID_USER) "
              "VALUES ('7',NULL,NULL,'2024-5-17',5,3)");
    EXPECT_EQ(
        changedOrder(orders, {"7", "neu", ""}, {"6", std::nullopt}),
        "UPDATE BB_T_AUFTRAGS_PLANUNG SET NUMMER = '7',LONG = 'neu',IST_STUNDEN_ZV = NULL WHERE ID IN (SELECT TOP "
        "1 BB_T_AUFTRAGS_PLANUNG.ID  FROM BB_T_AUFTRAGS_PLANUNG WHERE ISNULL(DISABLE,0)=0 AND NUMMER = '6' AND "
        "LONG IS NULL ORDER BY NUMMER)");
}

TEST(MasterDataStatements, OfAProject)
{
    EXPECT_EQ(newProject({"7", "neu", ""}, 5),
              "INSERT INTO BB_T_PROJEKT_PLANUNG (NUMMER,LONG,SHORT,ID_ACCESS_LEVELS)  VALUES ('7','neu','',5)");
    EXPECT_EQ(changedProject("SELECT NUMMER FROM BB_T_PROJEKT_PLANUNG WHERE 1=1", {"7", "", ""}, {"6", "alt"}),
              "UPDATE BB_T_PROJEKT_PLANUNG SET NUMMER = '7',LONG = NULL,SHORT = NULL WHERE ID IN (SELECT TOP 1 "
              "BB_T_PROJEKT_PLANUNG.ID  FROM BB_T_PROJEKT_PLANUNG WHERE 1=1 AND NUMMER = '6' AND LONG = 'alt')");
}

TEST(MasterDataStatements, OfAnObject)
{
    EXPECT_EQ(newObject(objects, {"7", "neu", ""}),
              "INSERT INTO OBJEKT (ID,TABLE_NAME,NUMBER,NAME) SELECT (SELECT ISNULL(MAX(ID),0)+1 FROM OBJEKT),OBJEKT,"
              "'7','neu' FROM PERSONAL WHERE ID_PERSONAL = 01");
}

} // namespace
} // namespace tamarok::dialogs
