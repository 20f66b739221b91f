#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include "timber/small_database.h"

#include "tamarok/comm_get.h"
#include "tamarok/controls.h"

namespace tamarok {
namespace {

using test::expectError;

/// A form that records what is written to it, in order.
class FactorForm final : public Object {
public:
    explicit FactorForm(std::string missing = {}) : missing_{std::move(missing)} {}
    std::string_view typeName() const override { return "F_UFakt"; }
    void put(std::string_view name, const Variant& value) override
    {
        if (name == missing_) noSuchMember(name);
        written.emplace_back(std::string{name}, value);
    }
    std::vector<std::pair<std::string, Variant>> written;

private:
    std::string missing_;
};

class ConversionFactors : public test::SmallDatabase {
protected:
    ConversionFactors()
    {
        table("U_FAKT", "ID INT, ID_DSART INT, ID_HA INT, ID_HS INT, ID_ME INT, ID_GKL INT, ID_STKL INT, "
                        "ID_RINDENKENNZ INT, LANGE_VON FLOAT, LANGE_BIS FLOAT, ORDERBY INT, ATO_UFA FLOAT, "
                        "LUT_UFA FLOAT, RM_UFA FLOAT, STK100_UFA FLOAT");
        table("HOLZART", "ID INT, HA NVARCHAR(10)");
        table("HOLZSORTE", "ID INT, HS NVARCHAR(10), ATO_UFA FLOAT, LUT_UFA FLOAT, RM_UFA FLOAT, STK100_UFA FLOAT");
        table("STAMM_TABELLEN", "ID_STRING INT, LABEL_GROUP NVARCHAR(20), SHORTNAME NVARCHAR(20)");
        table("GUETEKLASSE", "ID INT, GKL NVARCHAR(10)");
        table("STKL", "ID INT, STKL NVARCHAR(10)");
        table("RINDENKENNZ", "ID_RINDENKENNZ INT, RINDENKENNZ NVARCHAR(10)");
        insert("HOLZART", {"1,'FI'", "2,'BU'"});
        insert("HOLZSORTE", {"11,'IF',2.3,1.6,0.67,NULL", "12,'BR',NULL,NULL,NULL,NULL"});
        insert("STAMM_TABELLEN", {"21,'MENGEN','rm'", "22,'OTHER','fm'"});
        insert("GUETEKLASSE", {"31,'B'"});
        insert("STKL", {"41,'2a'"});
        insert("RINDENKENNZ", {"51,'MR'"});
    }

    /// A rule with its conditions, its rank, and the factor of stacked measure.
    void rule(const std::string& conditions, const std::string& rank, const std::string& factor)
    {
        run("INSERT INTO U_FAKT (ID_DSART,ID_HA,ID_HS,ID_ME,ID_GKL,ID_STKL,ID_RINDENKENNZ,LANGE_VON,LANGE_BIS,"
            "ORDERBY,RM_UFA) VALUES (" +
            conditions + "," + rank + "," + factor + ")");
    }

    double factor(const ObjectRef& object = {}, bool onlyAssortment = false, double length = 2.0,
                  const char* field = "RM_UFA")
    {
        return get.GetHolzTabValue(session, object, field, 2, "FI", "IF", "rm", "B", "2a", onlyAssortment, "MR",
                                   length);
    }

    static ObjectRef textBox(const char* text)
    {
        auto box = std::make_shared<controls::TextBox>();
        box->text(text);
        return box;
    }

    const std::string any = "NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL";
    Comm_Get get;
};

TEST_F(ConversionFactors, WithoutARuleTheNumberOfTheTextBoxStands)
{
    EXPECT_EQ(factor(textBox("0,75")), 0.75);
    EXPECT_EQ(factor(textBox("1.234,5")), 1234.5);
    EXPECT_EQ(factor(textBox("about one")), 0.0);
    EXPECT_EQ(factor(textBox("")), 0.0);
    EXPECT_EQ(factor(), 0.0);
    // Another control's number does not count.
    auto combo = std::make_shared<controls::ComboBox>();
    combo->text("0,75");
    EXPECT_EQ(factor(combo), 0.0);
}

TEST_F(ConversionFactors, ARuleReplacesTheNumber)
{
    rule(any, "1", "0.6");
    EXPECT_EQ(factor(textBox("0,75")), 0.6);
    EXPECT_EQ(factor(), 0.6);
    EXPECT_EQ(factor({}, false, 2.0, "rm_ufa"), 0.6);
    EXPECT_EQ(factor({}, false, 2.0, "ATO_UFA"), 0.0); // Null counts as 0
}

TEST_F(ConversionFactors, TheLowestRankWinsEvenOverTheMoreSpecific)
{
    rule("2,1,11,21,31,41,51,1,3", "20", "0.68");
    EXPECT_EQ(factor(), 0.68);
    rule(any, "10", "0.5");
    EXPECT_EQ(factor(), 0.5);
    rule(any, "30", "0.4");
    EXPECT_EQ(factor(), 0.5);
    rule(any, "NULL", "0.3"); // no rank at all comes first
    EXPECT_EQ(factor(), 0.3);
}

TEST_F(ConversionFactors, EveryConditionMustHold)
{
    // Each rule asks for something else in one place; the last one is right in all.
    for (const char* wrong : {"3,1,11,21,31,41,51,1,3", "2,2,11,21,31,41,51,1,3", "2,1,12,21,31,41,51,1,3",
                              "2,1,11,22,31,41,51,1,3", "2,1,11,21,32,41,51,1,3", "2,1,11,21,31,42,51,1,3",
                              "2,1,11,21,31,41,52,1,3", "2,1,11,21,31,41,51,2.01,3", "2,1,11,21,31,41,51,1,1.99"})
        rule(wrong, "1", "0.1");
    EXPECT_EQ(factor(textBox("9")), 9.0);
    rule("2,1,11,21,31,41,51,1,3", "2", "0.68");
    EXPECT_EQ(factor(textBox("9")), 0.68);
}

TEST_F(ConversionFactors, TheLengthBandHoldsItsBounds)
{
    rule("NULL,NULL,NULL,NULL,NULL,NULL,NULL,2.5,4.25", "1", "0.6");
    EXPECT_EQ(factor({}, false, 2.49), 0.0);
    EXPECT_EQ(factor({}, false, 2.5), 0.6);
    EXPECT_EQ(factor({}, false, 4.25), 0.6);
    EXPECT_EQ(factor({}, false, 4.26), 0.0);
    rule("NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,1", "2", "0.5");
    EXPECT_EQ(factor({}, false, 0.0), 0.5);
    EXPECT_EQ(factor({}, false, -1.0), 0.5);
    rule("NULL,NULL,NULL,NULL,NULL,NULL,NULL,10,NULL", "3", "0.4");
    EXPECT_EQ(factor({}, false, 1e6), 0.4);
}

TEST_F(ConversionFactors, UnknownKeysMeetOnlyRulesForAny)
{
    rule("2,1,11,21,31,41,51,NULL,NULL", "1", "0.6");
    const auto ask = [&] {
        return get.GetHolzTabValue(session, {}, "RM_UFA", 2, "??", "", "fm", "", "", true, "", 1.0);
    };
    EXPECT_EQ(ask(), 0.0);
    rule(any, "2", "0.5");
    EXPECT_EQ(ask(), 0.5);
}

TEST_F(ConversionFactors, DefaultsOfTheAssortment)
{
    EXPECT_EQ(factor(textBox("9"), false), 9.0);
    EXPECT_EQ(factor(textBox("9"), true), 0.67);
    EXPECT_EQ(factor(textBox("9"), true, 2.0, "STK100_UFA"), 0.0);
    const auto of = [&](const char* assortment) {
        return get.GetHolzTabValue(session, textBox("9"), "RM_UFA", 2, "FI", assortment, "", "", "", true, "", 1.0);
    };
    EXPECT_EQ(of("BR"), 0.0); // there is a row, and its Null counts as 0
    EXPECT_EQ(of("??"), 9.0); // there is none
}

TEST_F(ConversionFactors, AFormGetsAllFourInOrder)
{
    run("INSERT INTO U_FAKT (ORDERBY,ATO_UFA,LUT_UFA,RM_UFA) VALUES (1,2.33,1.61,0.68)");
    const auto form = std::make_shared<FactorForm>();
    EXPECT_EQ(factor(form), 0.0);
    ASSERT_EQ(form->written.size(), 4U);
    EXPECT_EQ(form->written[0], (std::pair<std::string, Variant>{"txtUFakt_Ato", 2.33}));
    EXPECT_EQ(form->written[1], (std::pair<std::string, Variant>{"txtUFakt_Lut", 1.61}));
    EXPECT_EQ(form->written[2], (std::pair<std::string, Variant>{"txtUFakt_Rm", 0.68}));
    EXPECT_EQ(form->written[3].first, "txtUFakt_Stk100");
    EXPECT_EQ(factor(std::make_shared<FactorForm>(), false, 2.0, "no such field"), 0.0);
}

TEST_F(ConversionFactors, AFormStaysAsItIsWithoutARule)
{
    const auto form = std::make_shared<FactorForm>();
    EXPECT_EQ(factor(form), 0.0);
    EXPECT_TRUE(form->written.empty());
    EXPECT_EQ(factor(form, true), 0.0);
    EXPECT_EQ(form->written.size(), 4U);
}

TEST_F(ConversionFactors, FailuresReachTheCaller)
{
    rule(any, "1", "0.6");
    expectError(errors::itemNotFound, "NO_UFA", [&] { factor({}, false, 2.0, "NO_UFA"); });
    expectError(errors::noSuchMember, "txtUFakt_Rm", [&] { factor(std::make_shared<FactorForm>("txtUFakt_Rm")); });
    run("DROP TABLE STKL");
    expectError(errors::statementRefused, "STKL", [&] { factor(); });
    session.db_ADO.reset();
    expectError(errors::objectNotSet, "", [&] { factor(); });
}

} // namespace
} // namespace tamarok
