#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "lookup_config.h"
#include "lookup_layout.h"
#include "lookup_search.h"
#include "lookup_statement.h"
#include "support/errors.h"
#include "support/recording_database.h"

namespace tamarok::dialogs {
namespace {

using test::expectError;

TEST(LookupConfig, MissingPositionsMeanNo)
{
    const LookupConfig none{""};
    EXPECT_FALSE(none.hidesFirstColumn || none.selectsSeveral || none.showsNew() || none.withoutEnter);
    const LookupConfig all{"1111"};
    EXPECT_TRUE(all.hidesFirstColumn && all.selectsSeveral && all.entersRows && all.withoutEnter);
    EXPECT_FALSE(all.newClosesDialog);
    const LookupConfig closing{"002"};
    EXPECT_TRUE(closing.newClosesDialog && closing.showsNew());
    EXPECT_FALSE(closing.entersRows);
    const LookupConfig others{"2x32"};
    EXPECT_FALSE(others.hidesFirstColumn || others.selectsSeveral || others.showsNew() || others.withoutEnter);
}

TEST(LookupStatement, ThreeClicksOrderAscendingDescendingAscending)
{
    std::string statement = "SELECT A,B FROM T WHERE X IN (SELECT Y FROM U ORDER BY 1) ORDER BY LDNR";
    statement = orderedBy(statement, 2);
    EXPECT_EQ(statement, "SELECT A,B FROM T WHERE X IN (SELECT Y FROM U ORDER BY 1) ORDER BY 2");
    EXPECT_FALSE(isDescending(statement));
    statement = orderedBy(statement, 2);
    EXPECT_EQ(statement, "SELECT A,B FROM T WHERE X IN (SELECT Y FROM U ORDER BY 1) ORDER BY 2 DESC");
    EXPECT_TRUE(isDescending(statement));
    EXPECT_EQ(orderedBy(statement, 2), "SELECT A,B FROM T WHERE X IN (SELECT Y FROM U ORDER BY 1) ORDER BY 2");
    EXPECT_EQ(orderedBy("SELECT A FROM T", 1), "SELECT A FROM T ORDER BY 1");
}

TEST(LookupStatement, TableIsTheWordBehindTheFirstFrom)
{
    EXPECT_EQ(tableOf("SELECT A FROM T"), "T");
    EXPECT_EQ(tableOf("SELECT A FROM T WHERE B IN (SELECT C FROM U)"), "T");
    EXPECT_EQ(tableOf("SELECT 1"), "");
    EXPECT_EQ(tableOf("select A from T"), "") << "case counts";
    EXPECT_EQ(tableOf("SELECT A FROM  T"), "") << "the word between two blanks is empty";
}

TEST(LookupStatement, DefaultRowIsReadFromTheFirstElementOfTheList)
{
    EXPECT_EQ(defaultRowStatement("SELECT NUMMER,LONG FROM BB_T_LAND WHERE ISNULL(DISABLE,0)=0", 0),
              "SELECT NUMMER FROM BB_T_LAND WHERE STANDART = 1");
    EXPECT_EQ(defaultRowStatement("SELECT A,B FROM T", 1), "SELECT B FROM T WHERE STANDART = 1");
    EXPECT_EQ(defaultRowStatement("SELECT A FROM T", 1), "");
    EXPECT_EQ(defaultRowStatement("SELECT 1", 0), "");
    // The list is split at every comma, those of functions included.
    EXPECT_EQ(defaultRowStatement("SELECT ISNULL(A,0) FROM T", 0), "SELECT ISNULL(A FROM T WHERE STANDART = 1");
}

TEST(LookupStatement, WidthsRelationHasThirtyCharacters)
{
    EXPECT_EQ(widthsRelation("SELECT HA,HA_LANG FROM HOLZART", std::vector<std::string>{"HA", "HA_LANG"}),
              "GH_HOLZARTHAHA");
    EXPECT_EQ(widthsRelation("SELECT 1", std::vector<std::string>{""}), "") << "without a table";
    EXPECT_EQ(widthsRelation("SELECT A FROM A_TABLE_WITH_A_VERY_LONG_NAME", std::vector<std::string>{"ABC"}),
              "GH_BLE_WITH_A_VERY_LONG_NAMEAB");
    EXPECT_EQ(widthsRelation("SELECT A FROM T", std::vector<std::string>{"", "B", "ÄÖÜ"}), "GH_TBÄÖ")
        << "an expression gives nothing, a short name one character";
}

TEST(LookupStatement, ColumnsThatLeaveNoRoomForTheTableFail)
{
    std::vector<std::string> columns(13, "NUMMER");
    columns.emplace_back("X");
    EXPECT_EQ(widthsRelation("SELECT * FROM T", columns), "GH_NUNUNUNUNUNUNUNUNUNUNUNUNUX") << "exactly 27";
    columns.emplace_back("Y");
    expectError(errors::invalidArgument, "28 characters", [&] { widthsRelation("SELECT * FROM T", columns); });
    EXPECT_EQ(widthsRelation("SELECT * FROM T", std::vector<std::string>(200)), "GH_T") << "200 expressions";
}

/// Rows of a recording database.
class LookupSearch : public testing::Test {
protected:
    LookupSearch()
    {
        database_.addAnswer("rows", {"CODE", "NAME", "PRICE"},
                            {{"FI", "Fichte", 1.5}, {Null{}, Null{}, Null{}}, {"f", "Föhre", 12.25}, {"", "leer", 2}});
        ado::Recordset recordset;
        recordset.Open("rows", database_.connect(), ado::CursorType::OpenStatic);
        rows_.read(recordset);
    }

    test::RecordingDatabase database_;
    LookupRows rows_;
};

TEST_F(LookupSearch, CellsAreCutAndComparedInUpperCase)
{
    EXPECT_EQ(findCut(rows_, 0, 1, "F"), 0U);
    EXPECT_EQ(findCut(rows_, 1, 2, "fÖ"), 2U);
    EXPECT_EQ(findCut(rows_, 1, 9, "FICHTE"), 0U) << "a cell shorter than the cut is compared whole";
    EXPECT_EQ(findCut(rows_, 1, 5, "FICHTE"), std::nullopt);
    EXPECT_EQ(findCut(rows_, 2, 2, "12"), 2U) << "numbers are compared by their text";
    EXPECT_EQ(findCut(rows_, 0, 1, ""), 3U) << "Null is no empty text";
    EXPECT_EQ(findCut(rows_, 3, 1, "F"), std::nullopt) << "no such column";
}

TEST_F(LookupSearch, WholeValueIsFoundInCutCellsOnlyIfItIsThatShort)
{
    EXPECT_EQ(findCut(rows_, 0, 1, "FI"), std::nullopt);
    EXPECT_EQ(findCut(rows_, 0, 2, "FI"), 0U);
}

TEST_F(LookupSearch, DefaultIsFoundWholeBeforeItIsFoundAsABeginning)
{
    EXPECT_EQ(findDefault(rows_, 1, "F"), 0U);
    EXPECT_EQ(findDefault(rows_, 1, "Föhre"), 2U);
    EXPECT_EQ(findDefault(rows_, 1, "fichte"), std::nullopt) << "case counts";
    EXPECT_EQ(findDefault(rows_, 1, "Fichten"), std::nullopt);
}

TEST(LookupRetyping, TakesTheLastCharacterOff)
{
    const Retyped two = afterBackspace("fö");
    EXPECT_EQ(two.typed, "");
    EXPECT_EQ(two.key, U'f');
    const Retyped three = afterBackspace("äöü");
    EXPECT_EQ(three.typed, "ä");
    EXPECT_EQ(three.key, U'ö');
}

TEST(LookupLayout, KeepsTheLeastSizeAndTheDistances)
{
    const LookupLayout layout = layOutLookup({100, 100}, false, {});
    EXPECT_EQ(layout.form, (Size{3500, 2000}));
    EXPECT_EQ(layout.frame, (Box{0, 0, 3350, 1160}));
    EXPECT_EQ(layout.grid.width, 3110);
    EXPECT_EQ(layout.grid.height, 800);
    EXPECT_EQ(layout.closeButton.left + layout.closeButton.width, 3500 - 180);
    EXPECT_EQ(layout.okButton.left + layout.okButton.width, layout.closeButton.left - 30);
}

TEST(LookupLayout, PutsTheBoxesUnderTheirColumns)
{
    const LookupLayout plain = layOutLookup({6000, 5000}, false, {});
    const LookupLayout layout = layOutLookup({6000, 5000}, true, {{{40, 900}, {940, 1500}, {2440, 700}}});
    EXPECT_EQ(layout.frame.height, plain.frame.height - 360);
    EXPECT_EQ(layout.okButton.top, plain.okButton.top) << "360 lower under a frame that is 360 lower";
    EXPECT_EQ(layout.boxes[0].left, layout.frame.left + layout.grid.left + 40);
    EXPECT_EQ(layout.boxes[0].width, 900);
    EXPECT_EQ(layout.boxes[1].left, layout.boxes[0].left + 900);
    EXPECT_EQ(layout.boxes[2].left, layout.boxes[1].left + 1500);
    EXPECT_EQ(layout.boxes[0].top, layout.frame.top + layout.frame.height + 80);
}

TEST(LookupLayout, FitsTheWindowAroundTheMonth)
{
    const DateLayout layout = layOutDate({2595, 2370});
    EXPECT_EQ(layout.form, (Size{2705, 2720}));
    EXPECT_EQ(layout.frame, (Box{0, 0, 2595, 2370}));
    EXPECT_EQ(layout.month, layout.frame);
}

} // namespace
} // namespace tamarok::dialogs
