#include <gtest/gtest.h>
#include <string>

#include "timber/small_database.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

class VolumeClass : public test::SmallDatabase {
protected:
    VolumeClass()
    {
        table("KUBATURKLASSE", "KKLASSE NVARCHAR(10), VOLUME_FROM FLOAT, VOLUME_TO FLOAT");
        insert("KUBATURKLASSE", {"'A',0.01,0.3", "'B',0.3,0.6", "'C',0.6,1", "'E',2,9"});
        table("LOGS", "ID_LOG INT, LISTE NVARCHAR(15), BLNR INT, DSART SMALLINT, KLST SMALLINT, KUBATUR FLOAT, "
                      "STK INT, KKLASSE NVARCHAR(10)");
    }

    /// A line with the class "old"; `rest` holds BLNR, DSART, KLST, KUBATUR, STK.
    void line(int id, const std::string& rest, const std::string& list = "'L'")
    {
        std::string statement{"INSERT INTO LOGS (ID_LOG,LISTE,BLNR,DSART,KLST,KUBATUR,STK,KKLASSE) VALUES ("};
        run(statement.append(std::to_string(id)).append(",").append(list).append(",").append(rest).append(",'old')"));
    }
    void classify(const char* selected) { EXPECT_EQ(set.CalculateKubaturKlasse(connection, selected, false), ""); }
    void classifyByText(const char* selected) { run(set.CalculateKubaturKlasse(connection, selected, true)); }

    std::string classOf(int id) const
    {
        const Variant found = ask("SELECT KKLASSE FROM LOGS WHERE ID_LOG = " + std::to_string(id));
        return found.isNull() ? "Null" : convert::toText(found);
    }

    Comm_Set set;
};

TEST_F(VolumeClass, ASingleLineByItsMeanPiece)
{
    line(1, "1,1,1,2,4");
    line(2, "1,2,1,2,4");
    line(3, "1,5,1,2,4");
    line(4, "1,1,1,2,4");
    classify("1,2,3");
    EXPECT_EQ(classOf(1), "B");    // 0.5
    EXPECT_EQ(classOf(2), "Null"); // this measure kind has no class
    EXPECT_EQ(classOf(3), "B");
    EXPECT_EQ(classOf(4), "old"); // not selected
}

TEST_F(VolumeClass, AGroupByItsSum)
{
    line(1, "1,1,2,0.2,2");
    line(2, "1,1,2,2.8,4");
    line(3, "1,1,3,9,1");
    line(4, "2,1,2,9,3");
    classify("1,2");
    EXPECT_EQ(classOf(1), "B"); // 3 / 6
    EXPECT_EQ(classOf(2), "B");
    EXPECT_EQ(classOf(3), "B"); // of the group, though not selected
    EXPECT_EQ(classOf(4), "old");
}

TEST_F(VolumeClass, TheTwoModesCountDifferentLines)
{
    const auto lines = [&] {
        run("DELETE FROM LOGS");
        line(1, "1,1,2,0.2,1");
        line(2, "1,1,2,0.2,1");
        line(3, "1,1,2,2.0,1");
        line(4, "1,1,1,0.8,1");
    };
    lines();
    classify("1,2");
    for (const int id : {1, 2, 3, 4})
        EXPECT_EQ(classOf(id), "A") << id; // 0.4 / 2
    lines();
    classifyByText("1,2");
    for (const int id : {1, 2, 3, 4})
        EXPECT_EQ(classOf(id), "C") << id; // 3.2 / 4, the single line included
}

TEST_F(VolumeClass, SelectedSingleLinesOfAGroupGetTheirOwnClassLast)
{
    line(1, "1,1,2,0.2,1");
    line(2, "1,1,1,0.8,1");
    line(3, "1,1,4,0.8,1");
    classify("1,2");
    EXPECT_EQ(classOf(1), "A");
    EXPECT_EQ(classOf(2), "C");
    EXPECT_EQ(classOf(3), "A"); // not selected: overwritten by the group
}

TEST_F(VolumeClass, BoundsAreInclusiveAndTheGreatestLowerBoundWins)
{
    line(1, "1,1,1,0.3,1");
    line(2, "1,1,1,0.6,1");
    line(3, "1,1,1,1,1");
    classify("1,2,3");
    EXPECT_EQ(classOf(1), "B");
    EXPECT_EQ(classOf(2), "C");
    EXPECT_EQ(classOf(3), "C");
}

TEST_F(VolumeClass, OutsideAllClassesThereIsNone)
{
    line(1, "1,1,1,1.5,1");
    line(2, "1,1,1,99,1");
    line(3, "1,1,1,0,1");
    line(4, "1,1,1,-1,1");
    classify("SELECT ID_LOG FROM LOGS");
    for (const int id : {1, 2, 3, 4})
        EXPECT_EQ(classOf(id), "Null") << id;
}

TEST_F(VolumeClass, NoPiecesNoClassAndNoFailure)
{
    line(1, "1,1,1,2,0");
    line(2, "1,1,1,2,NULL");
    line(3, "1,1,1,2,-4");
    line(4, "7,1,2,2,0");
    line(5, "8,1,3,2,NULL");
    classify("1,2,3,4,5");
    for (const int id : {1, 2, 3, 4, 5})
        EXPECT_EQ(classOf(id), "Null") << id;
}

TEST_F(VolumeClass, NullsInEveryColumnRead)
{
    line(1, "1,1,1,NULL,4");      // no volume
    line(2, "1,NULL,1,2,4");      // no measure kind
    line(3, "1,1,NULL,2,4");      // no line kind: neither single nor group
    line(4, "NULL,1,2,2,4");      // no sheet: a group that no line is found in again
    line(5, "5,1,2,2,4", "NULL"); // no list: the same
    line(6, "6,NULL,2,2,4");
    classify("1,2,3,4,5,6");
    EXPECT_EQ(classOf(1), "Null");
    EXPECT_EQ(classOf(2), "Null");
    EXPECT_EQ(classOf(3), "old");
    EXPECT_EQ(classOf(4), "old");
    EXPECT_EQ(classOf(5), "old");
    EXPECT_EQ(classOf(6), "old");
    run("UPDATE KUBATURKLASSE SET VOLUME_TO = NULL");
    line(7, "7,1,1,2,4");
    classify("7");
    EXPECT_EQ(classOf(7), "Null");
}

TEST_F(VolumeClass, EmptyTables)
{
    classify("1,2,3");
    line(1, "1,1,1,2,4");
    run("DELETE FROM KUBATURKLASSE");
    classify("1");
    EXPECT_EQ(classOf(1), "Null");
}

TEST_F(VolumeClass, AnEmptySelectionIsRefusedAndChangesNothing)
{
    line(1, "1,1,1,2,4");
    test::expectError(errors::statementRefused, "", [&] { set.CalculateKubaturKlasse(connection, "", false); });
    EXPECT_EQ(classOf(1), "old");
}

TEST_F(VolumeClass, ReturningTheTextRunsNothing)
{
    line(1, "1,1,1,2,4");
    int statements = 0;
    connection->listen([&](std::string_view) { ++statements; });
    EXPECT_FALSE(set.CalculateKubaturKlasse(connection, "1", true).empty());
    EXPECT_EQ(statements, 0);
    EXPECT_EQ(classOf(1), "old");
}

} // namespace
} // namespace tamarok
