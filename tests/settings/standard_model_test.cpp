#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_lock.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::Surroundings;

const std::string front =
    "SELECT TOP 1 MODELS.ID FROM MODELS LEFT JOIN ACCESS_LEVELS ON MODELS.ID_ACCESS_LEVELS = ACCESS_LEVELS.ID "
    "WHERE MODELS.RELATION = '";
const std::string groupedFront =
    "SELECT TOP 1 MIN(MODELS.ID) AS ID FROM MODELS LEFT JOIN ACCESS_LEVELS ON MODELS.ID_ACCESS_LEVELS = "
    "ACCESS_LEVELS.ID WHERE MODELS.RELATION = '";
const std::string rights =
    " AND ((MODELS.ID_ACCESS_LEVELS IS NULL AND (MODELS.NICHT_ANDERBAR = 1 OR MODELS.ID_USER = 7)))";
const std::string group = " GROUP BY MODELS.NAME,MODELS.ID_USER,MODELS.NICHT_ANDERBAR,MODELS.ID_ACCESS_LEVELS";
const std::string order = " ORDER BY (CASE WHEN MODELS.NICHT_ANDERBAR = 1 THEN 3 WHEN MODELS.ID_ACCESS_LEVELS IS NOT "
                          "NULL THEN 2 ELSE 1 END),MODELS.NAME";
const std::string isDefault = " AND MODELS.STANDARD = 1";

class StandardModel : public testing::Test {
protected:
    StandardModel() : with{"de-AT", test::Unanswered::HasNoRows} { with.session.ID_User = 7; }

    /// Returns the statement that finds the model; the first one reads the level's code.
    std::string statementFor(std::string_view relation, bool notWhere)
    {
        with.database.opened.clear();
        EXPECT_EQ(get.GetStandardModel(with.session, relation, notWhere), 0) << "no row";
        EXPECT_EQ(with.database.opened.size(), 2U);
        EXPECT_EQ(with.database.openCursors, 0);
        return with.database.opened.back().text;
    }

    Surroundings with;
    Comm_Get get;
};

TEST_F(StandardModel, IsReadByOneStatement)
{
    EXPECT_EQ(statementFor("LOG", false), front + "LOG'" + rights + isDefault + order);
    EXPECT_EQ(statementFor("LOG", true), front + "LOG'" + isDefault + order);
    EXPECT_EQ(with.database.opened.back().cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened.back().lockType, ado::LockType::ReadOnly);
}

TEST_F(StandardModel, OfARelationWithSeveralRowsIsGrouped)
{
    std::vector<std::string> grouped{"ABSCHLAG", "ABSCHLAG_A"};
    for (char digit = '1'; digit <= '8'; ++digit) {
        grouped.push_back(std::string{"ABSCHLAG"} + digit);
        grouped.push_back(std::string{"ABSCHLAG"} + digit + "_A");
    }
    for (const std::string& relation : grouped)
        EXPECT_EQ(statementFor(relation, true), groupedFront + relation + "'" + isDefault + group + order);
    EXPECT_EQ(statementFor("ABSCHLAG3", false), groupedFront + "ABSCHLAG3'" + rights + isDefault + group + order);
    for (const std::string relation : {"ABSCHLAG9", "ABSCHLAG0", "ABSCHLAG12", "ABSCHLAG9_A", "abschlag1", "ABSCHLAG_B",
                                       "ABSCHLAG_A1", "ABSCHLAGA", "ABSCHLAG_A_A", "XABSCHLAG1", ""})
        EXPECT_EQ(statementFor(relation, true), front + relation + "'" + isDefault + order);
}

TEST_F(StandardModel, OnOracleTheRowLimitComesFirst)
{
    with.session.bolOracle = true;
    EXPECT_EQ(statementFor("LOG", true),
              "SELECT MODELS.ID FROM MODELS LEFT JOIN ACCESS_LEVELS ON MODELS.ID_ACCESS_LEVELS = ACCESS_LEVELS.ID "
              "WHERE ROWNUM =1 AND MODELS.RELATION = 'LOG'" +
                  isDefault + order);
    EXPECT_EQ(statementFor("ABSCHLAG8_A", true),
              "SELECT  MIN(MODELS.ID) AS ID FROM MODELS LEFT JOIN ACCESS_LEVELS ON MODELS.ID_ACCESS_LEVELS = "
              "ACCESS_LEVELS.ID WHERE ROWNUM =1 AND MODELS.RELATION = 'ABSCHLAG8_A'" +
                  isDefault + group + order);
}

TEST_F(StandardModel, IsTheIdOfTheFirstRow)
{
    with.database.answer(front + "LOG'" + isDefault + order, std::int32_t{70000}, "ID");
    EXPECT_EQ(get.GetStandardModel(with.session, "LOG", true), 70000);
    with.database.answer(front + "LOG'" + isDefault + order, Null{}, "ID");
    EXPECT_EQ(errorNumber([&] { get.GetStandardModel(with.session, "LOG", true); }), errors::invalidUseOfNull);
}

TEST_F(StandardModel, RightsAreThoseOfTheSessionsLevel)
{
    with.session.ID_Access_Levels = 5;
    std::string clause;
    Comm_Lock{}.Access_Levels("MODELS", clause, with.session, 5);
    EXPECT_EQ(statementFor("LOG", false), front + "LOG' AND " + clause + isDefault + order);
    with.session.ID_Access_Levels = 40000;
    for (const bool notWhere : {false, true})
        EXPECT_EQ(errorNumber([&] { get.GetStandardModel(with.session, "LOG", notWhere); }), errors::overflow)
            << "the rights are asked for in any case";
}

/// A combo box that keeps what is done to it.
class Box final : public Object {
public:
    std::string_view typeName() const override { return "ComboBox"; }
    Variant get(std::string_view name, std::span<const Variant>) const override
    {
        if (name != "ListCount") noSuchMember(name);
        return static_cast<std::int16_t>(entries.size());
    }
    void put(std::string_view name, const Variant& value) override
    {
        done.push_back(std::string{name} + " = " + convert::toText(value));
    }
    Variant call(std::string_view name, std::span<Variant> args) override
    {
        std::string text{name};
        for (const Variant& argument : args)
            text.append(" ").append(convert::toText(argument));
        done.push_back(text);
        if (name == "AddItem") entries.push_back(convert::toText(args[0]));
        return {};
    }
    std::vector<std::string> entries{"a", "b"};
    std::vector<std::string> done;
};

TEST(UnknownModel, IsAddedAsTheLastEntryAndSelected)
{
    Surroundings with;
    with.loc.texts[4454] = "<neu>";
    Box box;
    Comm_Set{}.Set_UnknownModelCmb(with.session, box);
    EXPECT_EQ(box.done, (std::vector<std::string>{"AddItem <neu> 2", "ListIndex = 2", "Refresh"}));
    EXPECT_EQ(with.loc.asked, std::vector<int>{4454});
    EXPECT_TRUE(with.database.opened.empty());
}

} // namespace
} // namespace tamarok
