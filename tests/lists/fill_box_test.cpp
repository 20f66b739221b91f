#include <gtest/gtest.h>

#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_set.h"
#include "tamarok/controls.h"
#include "tamarok/error.h"

namespace tamarok {
namespace {

constexpr const char* statement = "SELECT ID, NAME FROM HOLZART";

class FillObject : public ::testing::Test {
protected:
    void fill(controls::Control& box) { Comm_Set{}.FillObject(with.session.db_ADO, box, statement); }

    test::Surroundings with;
    controls::ComboBox combo;
};

TEST_F(FillObject, TwoFieldsGiveNumberAndText)
{
    with.database.addAnswer(statement, {"ID", "NAME", "MORE"}, {{7, "Fichte", 1}, {9, "L\xC3\xA4rche", 1}});
    combo.AddItem("first");
    fill(combo);
    ASSERT_EQ(combo.ListCount(), 3);
    EXPECT_EQ(combo.List(1), "Fichte");
    EXPECT_EQ(combo.ItemData(1), 7);
    EXPECT_EQ(combo.List(2), "L\xC3\xA4rche");
    EXPECT_EQ(combo.ItemData(2), 9);
}

TEST_F(FillObject, OneFieldGivesTheText)
{
    with.database.addAnswer(statement, {"NAME"}, {{"Fichte"}, {12.5}});
    fill(combo);
    ASSERT_EQ(combo.ListCount(), 2);
    EXPECT_EQ(combo.List(0), "Fichte");
    EXPECT_EQ(combo.List(1), "12,5");
    EXPECT_EQ(combo.ItemData(0), 0);
}

/// A sorted box chooses the place; NewIndex tells it.
TEST_F(FillObject, SortedBoxKeepsNumberBesideText)
{
    with.database.addAnswer(statement, {"ID", "NAME"}, {{7, "Tanne"}, {9, "Buche"}});
    combo.Sorted = true;
    fill(combo);
    EXPECT_EQ(combo.List(0), "Buche");
    EXPECT_EQ(combo.ItemData(0), 9);
    EXPECT_EQ(combo.ItemData(1), 7);
}

TEST_F(FillObject, NoRowsAddNothing)
{
    with.database.addAnswer(statement, {"ID", "NAME"}, {});
    fill(combo);
    EXPECT_EQ(combo.ListCount(), 0);
}

TEST_F(FillObject, FailuresReachTheCallerAndLeaveWhatWasAdded)
{
    with.database.addAnswer(statement, {"ID", "NAME"}, {{7, "Tanne"}, {9, Null{}}, {11, "Buche"}});
    EXPECT_EQ(test::errorNumber([&] { fill(combo); }), errors::invalidUseOfNull);
    EXPECT_EQ(combo.ListCount(), 1);
    EXPECT_EQ(test::errorNumber([&] { Comm_Set{}.FillObject(with.session.db_ADO, combo, "SELECT NOTHING"); }),
              errors::statementRefused);
    EXPECT_EQ(test::errorNumber([&] { Comm_Set{}.FillObject(nullptr, combo, statement); }), errors::objectNotSet);
    controls::TextBox noBox;
    EXPECT_EQ(test::errorNumber([&] { fill(noBox); }), errors::noSuchMember);
}

} // namespace
} // namespace tamarok
