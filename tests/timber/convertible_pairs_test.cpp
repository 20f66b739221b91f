#include <gtest/gtest.h>
#include <string>

#include "timber/small_database.h"

#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

using test::expectError;

class ConvertiblePairs : public test::SmallDatabase {
protected:
    ConvertiblePairs()
    {
        session.strCustomer = "SACHSEN";
        table("TSM_MENGECALC", "ID_HOLZSORTE INT, ID_WARENEINHEIT INT, CALC SMALLINT");
        table("WARENEINHEIT", "EINHEIT_ID INT");
        table("HOLZSORTE", "ID INT");
        insert("WARENEINHEIT", {"1", "2", "3"});
        insert("HOLZSORTE", {"10", "20", "30"});
    }

    std::int16_t of(const char* assortment, const char* unit)
    {
        return set.MengeCalc(session, pairs, assortment, unit);
    }

    Variant pairs;
    Comm_Set set;
};

TEST_F(ConvertiblePairs, AnExactPair)
{
    insert("TSM_MENGECALC", {"10,1,1", "10,2,5"});
    EXPECT_EQ(of("10", "1"), 1);
    EXPECT_EQ(of("10", "2"), 5);
    EXPECT_EQ(of("10", "3"), 0);
    EXPECT_EQ(of("20", "1"), 0);
}

TEST_F(ConvertiblePairs, AWildcardFillsInWhereNoExactPairExists)
{
    insert("TSM_MENGECALC", {"NULL,3,1", "20,3,0", "30,NULL,7"});
    EXPECT_EQ(of("10", "3"), 1);
    EXPECT_EQ(of("20", "3"), 0);
    EXPECT_EQ(of("30", "1"), 7);
    EXPECT_EQ(of("30", "2"), 7);
    EXPECT_EQ(of("30", "3"), 7); // the greatest among the wildcards
    EXPECT_EQ(of("10", "1"), 0);
}

TEST_F(ConvertiblePairs, AmongSeveralTheGreatestCounts)
{
    insert("TSM_MENGECALC", {"10,1,1", "10,1,4", "10,1,NULL", "NULL,2,2", "NULL,2,3", "10,NULL,1"});
    EXPECT_EQ(of("10", "1"), 4);
    EXPECT_EQ(of("10", "2"), 3);
    EXPECT_EQ(of("20", "2"), 3);
}

TEST_F(ConvertiblePairs, AnExactPairWithoutValueIsZeroBeforeAnyWildcard)
{
    insert("TSM_MENGECALC", {"10,1,NULL", "NULL,1,6"});
    EXPECT_EQ(of("10", "1"), 0);
    EXPECT_EQ(of("20", "1"), 6);
}

TEST_F(ConvertiblePairs, AWildcardWithoutValueIsZero)
{
    insert("TSM_MENGECALC", {"NULL,1,NULL"});
    EXPECT_EQ(of("10", "1"), 0);
}

TEST_F(ConvertiblePairs, BothKeysNullCountForNothing)
{
    insert("TSM_MENGECALC", {"NULL,NULL,1"});
    EXPECT_EQ(of("10", "1"), 0);
    ASSERT_TRUE(pairs.isArray());
    EXPECT_EQ(pairs.asArray().elements().size(), 3U);
}

TEST_F(ConvertiblePairs, AnEmptyTableIsLoadedOnce)
{
    int statements = 0;
    connection->listen([&](std::string_view) { ++statements; });
    EXPECT_EQ(of("10", "1"), 0);
    EXPECT_EQ(statements, 2); // the pairs, and the row of zeros
    EXPECT_EQ(of("10", "1"), 0);
    EXPECT_EQ(of("0", "0"), 0);
    EXPECT_EQ(statements, 2);
}

TEST_F(ConvertiblePairs, TheArrayIsLoadedEvenForEmptyKeysAndThenKept)
{
    insert("TSM_MENGECALC", {"10,1,1"});
    EXPECT_EQ(of("", "1"), 0);
    EXPECT_TRUE(pairs.isArray());
    run("UPDATE TSM_MENGECALC SET CALC = 9");
    EXPECT_EQ(of("10", "1"), 1);
    pairs = Variant{};
    EXPECT_EQ(of("10", "1"), 9);
}

TEST_F(ConvertiblePairs, AnotherEditionAsksNothing)
{
    session.strCustomer = "BB";
    session.db_ADO.reset();
    EXPECT_EQ(of("10", "1"), 0);
    EXPECT_TRUE(pairs.isEmpty());
}

TEST_F(ConvertiblePairs, AFailedLoadLeavesTheArrayEmpty)
{
    run("DROP TABLE TSM_MENGECALC");
    test::expectError(errors::statementRefused, "TSM_MENGECALC", [&] { of("10", "1"); });
    EXPECT_TRUE(pairs.isEmpty());
}

} // namespace
} // namespace tamarok
