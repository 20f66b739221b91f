#include <gtest/gtest.h>
#include <set>
#include <string>

#include "timber/class_rule.h"
#include "timber/small_database.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

using test::bothSettings;
using test::ClassRule;
using test::expectError;
using test::overBark;
using test::secondBounds;
using test::underBark;

class StrengthClass : public test::SmallDatabase {
protected:
    StrengthClass()
    {
        table("STKL", "ID INT, STKL NVARCHAR(10), DM_VON FLOAT, DM_BIS FLOAT, DM_VON_OR FLOAT, DM_BIS_OR FLOAT, "
                      "DISABLE BIT");
    }

    /// 1a up to 2a, a gap from 25 to 30, 3a and 4; two classes that are switched off.
    void usualClasses()
    {
        insert("STKL",
               {"1,'1a',10,19.99,11,20.99,0", "2,'2a',20,24.99,21,25.99,0", "3,'off',25,29.99,26,30.99,1",
                "4,'3a',30,39.99,31,40.99,0", "5,'4',40,999.99,41,1000.99,NULL", "6,'giant',1000,2000,1000,2000,1"});
    }

    std::string of(const char* diameter, const char* ids = "", ClassRule rule = overBark, const char* mode = "",
                   const char* bark = "")
    {
        return set.MakeStkl("typed", diameter, mode, bark, connection, rule.deductsByOption, rule.computesBark, false,
                            ids);
    }

    Comm_Set set;
    Comm_Get get;
};

TEST_F(StrengthClass, BoundsAreInclusive)
{
    usualClasses();
    EXPECT_EQ(of("10"), "1a");
    EXPECT_EQ(of("19,99"), "1a");
    EXPECT_EQ(of("20"), "2a");
    EXPECT_EQ(of("24,99"), "2a");
    EXPECT_EQ(of("24,994"), "2a");
    EXPECT_EQ(of("40"), "4");
    // Between two bounds there is no class once the diameter has two decimals.
    EXPECT_EQ(of("19,994"), "1a");
    EXPECT_EQ(of("19,995"), "2a");
}

TEST_F(StrengthClass, OutsideAllClassesTheHighestStandsIn)
{
    usualClasses();
    EXPECT_EQ(of("24,995"), "4"); // searches 25, where the class is switched off
    EXPECT_EQ(of("27"), "4");
    EXPECT_EQ(of("9,99"), "4");
    EXPECT_EQ(of("0"), "4");
    EXPECT_EQ(of("-12"), "4");
    EXPECT_EQ(of("5000"), "4");
    EXPECT_EQ(of("1500"), "4");
    EXPECT_EQ(of("thick"), "4");
}

TEST_F(StrengthClass, TheListLimitsTheSearchAndTheStandIn)
{
    usualClasses();
    EXPECT_EQ(of("22", "1,2"), "2a");
    EXPECT_EQ(of("22", "4, 5"), "4");
    EXPECT_EQ(of("27", "5"), "4");
    // The highest class of all is not in the list: there is none.
    EXPECT_EQ(of("27", "1,2"), "");
    EXPECT_EQ(of("22", "1"), "");
    EXPECT_EQ(of("22", "99"), "");
}

TEST_F(StrengthClass, OverlappingClassesGiveOneOfThem)
{
    insert("STKL", {"1,'low',10,30,10,30,0", "2,'high',20,40,20,40,0"});
    EXPECT_TRUE((std::set<std::string>{"low", "high"}.contains(of("25"))));
    EXPECT_EQ(of("25", "1"), "low");
    EXPECT_EQ(of("25", "2"), "high");
}

TEST_F(StrengthClass, TheSecondBoundsAreSearchedWithTheOptionAlone)
{
    usualClasses();
    EXPECT_EQ(of("20,5", "", overBark), "2a");
    EXPECT_EQ(of("20,5", "", secondBounds), "1a");
    EXPECT_EQ(of("20,5", "", bothSettings, "cm", "5"), "2a");
    EXPECT_EQ(of("20,5", "", underBark, "cm", "5"), "1a");
    EXPECT_EQ(of("30", "", underBark, "%", "50"), "2a"); // 21.21 cm
    // The stand-in goes by the first lower bound all the same.
    EXPECT_EQ(of("10,5", "", secondBounds), "4");
}

TEST_F(StrengthClass, AnEmptyTableGivesTheEmptyText)
{
    EXPECT_EQ(of("25"), "");
    EXPECT_EQ(of("25", "1,2"), "");
}

TEST_F(StrengthClass, NullsInEveryColumn)
{
    insert("STKL", {"1,'open',NULL,NULL,NULL,NULL,NULL", "2,'half',10,NULL,10,NULL,0", "NULL,NULL,20,30,20,30,0"});
    EXPECT_EQ(of("25"), "");      // the class that matches has no name
    EXPECT_EQ(of("25", "2"), ""); // the highest lower bound is that of the nameless class
    EXPECT_EQ(of("5"), "");
    run("DELETE FROM STKL WHERE ID IS NULL");
    EXPECT_EQ(of("25"), "half"); // matches nothing, and stands in
}

TEST_F(StrengthClass, ABadListIsTheProvidersError)
{
    usualClasses();
    expectError(errors::statementRefused, "", [&] { of("25", "1,,2"); });
    expectError(errors::statementRefused, "", [&] { of("25", "1)"); });
    expectError(errors::statementRefused, "no_such_column", [&] { of("25", "no_such_column"); });
    // Nothing is left open.
    EXPECT_EQ(of("22"), "2a");
}

TEST_F(StrengthClass, AMissingTableOrColumnIsTheProvidersError)
{
    run("DROP TABLE STKL");
    expectError(errors::statementRefused, "STKL", [&] { of("25"); });
    table("STKL", "ID INT, STKL NVARCHAR(10), DISABLE BIT");
    expectError(errors::statementRefused, "DM_VON", [&] { of("25"); });
}

TEST_F(StrengthClass, TheBarkKeySaysWhetherItComputes)
{
    table("RINDENKENNZ", "ID_RINDENKENNZ INT, RINDENKENNZ NVARCHAR(10), CALCULATION BIT");
    EXPECT_FALSE(get.GetCalculationRinden("MR", connection));
    insert("RINDENKENNZ", {"1,'OR',0", "2,'MR',1", "3,'IR',NULL", "4,NULL,1"});
    EXPECT_FALSE(get.GetCalculationRinden("OR", connection));
    EXPECT_TRUE(get.GetCalculationRinden("MR", connection));
    EXPECT_FALSE(get.GetCalculationRinden("IR", connection));
    EXPECT_FALSE(get.GetCalculationRinden("??", connection));
    EXPECT_FALSE(get.GetCalculationRinden("", connection));
    expectError(errors::statementRefused, "quotation mark", [&] { get.GetCalculationRinden("O'Hara", connection); });
}

TEST_F(StrengthClass, TheAssortmentSaysWhetherAndWhich)
{
    table("HOLZSORTE", "ID INT, HS NVARCHAR(10), NOT_CALC_STKL BIT, STKL NVARCHAR(255), DISABLE BIT");
    insert("HOLZSORTE", {"1,'BL',0,'2,3,4',0", "2,'IF',1,NULL,NULL", "3,'XX',NULL,'',0", "4,'OFF',1,'7',1"});
    EXPECT_FALSE(get.GetCalculationSTKL("BL", connection));
    EXPECT_TRUE(get.GetCalculationSTKL("IF", connection));
    EXPECT_FALSE(get.GetCalculationSTKL("XX", connection));
    // A disabled or unknown assortment gets a computed class, an empty one does not.
    EXPECT_FALSE(get.GetCalculationSTKL("OFF", connection));
    EXPECT_FALSE(get.GetCalculationSTKL("??", connection));
    EXPECT_TRUE(get.GetCalculationSTKL("", connection));
    EXPECT_EQ(get.GetCalculationSTKL_ID("BL", connection), "2,3,4");
    EXPECT_EQ(get.GetCalculationSTKL_ID("IF", connection), "");
    EXPECT_EQ(get.GetCalculationSTKL_ID("XX", connection), "");
    EXPECT_EQ(get.GetCalculationSTKL_ID("OFF", connection), "");
    EXPECT_EQ(get.GetCalculationSTKL_ID("??", connection), "");
    EXPECT_EQ(get.GetCalculationSTKL_ID("", connection), "");
}

} // namespace
} // namespace tamarok
