#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_get.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::Surroundings;

constexpr const char* series = "SELECT MAX(NUMMER) FROM BB_BELEGE";

struct Step {
    const char* last;
    const char* next;
};

TEST(NextNumber, CountsATextUp)
{
    for (const Step& step : {
             Step{"", "1"},          Step{"1", "2"},
             Step{"9", "10"},        Step{"99", "100"},
             Step{"A99", "B00"},     Step{"Z", "1A"},
             Step{"ZZ", "1AA"},      Step{"zz", "1aa"},
             Step{"Zz9", "1Aa0"},    Step{"2024-009", "2024-010"},
             Step{"1-9", "2-0"},     Step{"A-Z", "B-A"},
             Step{"-", "1-"},        Step{"9/24", "9/25"},
             Step{"L-9.", "M-0."},   Step{"Az", "Ba"},
             Step{"ä9", "1ä0"},      Step{"9ß", "10ß"},
             Step{"BM 09", "BM 10"}, Step{"Y", "Z"},
             Step{" 7 ", " 8 "},     Step{"0", "1"},
         }) {
        Surroundings with;
        with.database.answer(series, step.last);
        EXPECT_EQ(Comm_Get{}.GetNewNumber(0, with.session, series), step.next) << step.last;
        EXPECT_EQ(with.database.openCursors, 0);
    }
}

TEST(NextNumber, OfASeriesWithoutOneIsOne)
{
    Surroundings with;
    with.database.answerNoRow(series);
    EXPECT_EQ(Comm_Get{}.GetNewNumber(0, with.session, series), "1");
    with.database.answer(series, Null{});
    EXPECT_EQ(Comm_Get{}.GetNewNumber(0, with.session, series), "1");
    with.database.answer(series, std::int32_t{41});
    EXPECT_EQ(Comm_Get{}.GetNewNumber(2, with.session, series), "42") << "any other type takes the statement";
    EXPECT_EQ(with.database.openedTexts(), std::vector<std::string>(3, series));
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly);
}

std::string listsOf(const std::string& level)
{
    return "SELECT LISTE FROM LISTENKOPF WHERE ID IN (SELECT MAX(LISTENKOPF.ID) FROM LISTENKOPF  WHERE "
           "LISTENKOPF.ID_ACCESS_LEVELS" +
           level + ")";
}

TEST(NextNumber, OfAListIsThatOfItsAccessLevel)
{
    Surroundings with;
    with.database.answer(listsOf(" = 5"), "L24-000999");
    EXPECT_EQ(Comm_Get{}.GetNewNumber(1, with.session, " 5 "), "L24-001000");
    with.database.answer(listsOf(" IS NULL"), "L24-000001");
    EXPECT_EQ(Comm_Get{}.GetNewNumber(1, with.session, "0"), "L24-000002");
    with.database.answer(listsOf(" = -3"), "7");
    EXPECT_EQ(Comm_Get{}.GetNewNumber(1, with.session, "-3"), "8");
    with.database.answerNoRow(listsOf(" = 2147483647"));
    EXPECT_EQ(Comm_Get{}.GetNewNumber(1, with.session, "2147483647"), "1") << "only ALF makes a first number";
}

TEST(NextNumber, OfAListNeedsANumberAsAccessLevel)
{
    Surroundings with;
    for (const std::string level : {"", "five"}) {
        EXPECT_EQ(errorNumber([&] { Comm_Get{}.GetNewNumber(1, with.session, level); }), errors::typeMismatch);
    }
    EXPECT_EQ(errorNumber([&] { Comm_Get{}.GetNewNumber(1, with.session, "2147483648"); }), errors::overflow);
    EXPECT_TRUE(with.database.opened.empty());
}

class NextNumberOfAlf : public testing::Test {
protected:
    NextNumberOfAlf()
    {
        with.session.strCustomer = "ALF";
        with.session.ID_Access_Levels = 8;
    }
    static std::string office(int level)
    {
        return "SELECT TOP 1 PERSONAL.NUMMER FROM PERSONAL WHERE PERSONAL.MANDANTEN = 1 AND "
               "ISNULL(PERSONAL.DISABLE,0) = 0 AND PERSONAL.ID_ACCESS_LEVELS = " +
               std::to_string(level);
    }
    std::string next(std::int16_t type, std::string_view statement)
    {
        return Comm_Get{}.GetNewNumber(type, with.session, statement);
    }
    Surroundings with; ///< on 17 May 2024
};

TEST_F(NextNumberOfAlf, TheFirstListBeginsWithTheOffice)
{
    with.database.answerNoRow(listsOf(" = 5"));
    with.database.answer(office(5), "4711");
    EXPECT_EQ(next(1, "5"), "00004711"
                            "24"
                            "047"
                            "01");
    with.database.answer(office(5), "1234567890");
    EXPECT_EQ(next(1, "5"), "34567890"
                            "24"
                            "678"
                            "01")
        << "eight characters from the right";
    with.database.answer(office(5), Null{});
    EXPECT_EQ(next(1, "5"), "00000000"
                            "24"
                            "000"
                            "01");
    with.database.answerNoRow(office(5));
    EXPECT_EQ(next(1, "5"), "1") << "a level without an office";
    EXPECT_EQ(with.database.openCursors, 0);
}

TEST_F(NextNumberOfAlf, TheFirstListOfNoLevelAsksForLevelZero)
{
    with.database.answer(listsOf(" IS NULL"), Null{});
    with.database.answer(office(0), "1");
    EXPECT_EQ(next(1, "0"), "00000001"
                            "24"
                            "000"
                            "01");
}

TEST_F(NextNumberOfAlf, TheFirstProvisionBeginsWithBM)
{
    const std::string provisions = "SELECT MAX(NAME) FROM BEREITSTELLUNG_KOPF";
    with.database.answerNoRow(provisions);
    with.database.answer(office(8), "4711");
    EXPECT_EQ(next(0, provisions), "BM00004711-2401");
    with.database.answer(provisions, "BM00004711-2409");
    EXPECT_EQ(next(0, provisions), "BM00004711-2410") << "a series with a number goes on";
}

TEST_F(NextNumberOfAlf, NoOtherSeriesHasAFirstNumber)
{
    for (const std::string statement :
         {"SELECT NUMMER FROM BB_BELEGE", "BEREITSTELLUNG", "SELECT 1 FROM bereitstellung_kopf"}) {
        with.database.answerNoRow(statement);
        EXPECT_EQ(next(0, statement), "1") << statement;
    }
    with.database.answerNoRow("SELECT 1 FROM BEREITSTELLUNG_KOPF");
    EXPECT_EQ(next(2, "SELECT 1 FROM BEREITSTELLUNG_KOPF"), "1") << "another type";
    with.session.strCustomer = "alf";
    EXPECT_EQ(next(0, "SELECT 1 FROM BEREITSTELLUNG_KOPF"), "1") << "another edition";
    with.session.strCustomer = "ALF";
    with.database.answer(listsOf(" = 5"), "A1");
    EXPECT_EQ(next(1, "5"), "A2") << "a level that has a list";
}

} // namespace
} // namespace tamarok
