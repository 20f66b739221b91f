#include "backend_fixture.h"

namespace tamarok::ado::backend {

class BackendEdits : public BackendTest {
protected:
    std::shared_ptr<Recordset> edit(std::string_view rest = "ORDER BY WHOLE")
    {
        return open(select("*", rest), CursorType::OpenKeyset, LockType::Optimistic);
    }
};

TEST_F(BackendEdits, UpdateWritesTheChangedFields)
{
    fill(2);
    const auto rows = edit();
    rows->Fields().Item("SHORT_TEXT").Value(tree());
    rows->Fields().Item("AMOUNT").Value(1.5);
    rows->Update();
    EXPECT_EQ(scalar(select("SHORT_TEXT", "WHERE WHOLE = 1")), Variant{tree()});
    EXPECT_EQ(scalar(select("AMOUNT", "WHERE WHOLE = 1")), Variant{1.5});
    EXPECT_EQ(scalar(select("SHORT_TEXT", "WHERE WHOLE = 2")), Variant{"row 2"});
    rows->Fields().Item("SHORT_TEXT").Value(Null{});
    rows->Update();
    EXPECT_EQ(scalar(select("SHORT_TEXT", "WHERE WHOLE = 1")), Variant{Null{}});
}

TEST_F(BackendEdits, AddNewGivesTheRowAsTheDatabaseKeepsIt)
{
    const auto rows = edit();
    rows->AddNew();
    rows->Fields().Item("SHORT_TEXT").Value("new");
    rows->Fields().Item("WHOLE").Value(5);
    rows->Update();
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(rows->Fields().Item("ID").Value(), scalar(select("MAX(ID)")));
    EXPECT_EQ(rows->Fields().Item("WHOLE").Value(), Variant{5});
    expectName(rows->Fields().Item("SHORT_TEXT").BASETABLENAME(), table);
}

TEST_F(BackendEdits, CancelUpdateWritesNothing)
{
    fill(1);
    const auto rows = edit();
    rows->Fields().Item("SHORT_TEXT").Value("x");
    rows->CancelUpdate();
    rows->AddNew();
    rows->CancelUpdate();
    EXPECT_EQ(rows->Fields().Item("SHORT_TEXT").Value(), Variant{"row 1"});
    EXPECT_EQ(count("WHERE SHORT_TEXT = 'row 1'"), 1);
    EXPECT_EQ(count(), 1);
}

TEST_F(BackendEdits, DeleteRemovesTheCurrentRowAlone)
{
    fill(3);
    const auto rows = edit();
    rows->MoveNext();
    rows->Delete();
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(count("WHERE WHOLE = 2"), 0);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields().Item("WHOLE").Value(), Variant{3});
}

TEST_F(BackendEdits, RefusedRowStaysPending)
{
    fill(2);
    const auto rows = edit();
    rows->AddNew();
    rows->Fields().Item("REQUIRED").Value(Null{});
    EXPECT_EQ(errorNumber([&] { rows->Update(); }), errors::constraintViolated);
    rows->Fields().Item("REQUIRED").Value("x");
    rows->Update();
    EXPECT_EQ(count(), 3);
}

TEST_F(BackendEdits, OptimisticUpdateNoticesAChange)
{
    fill(1);
    const auto rows = edit();
    connection->Execute("UPDATE " + table + " SET AMOUNT = 9 WHERE WHOLE = 1");
    rows->Fields().Item("SHORT_TEXT").Value("x");
    EXPECT_EQ(errorNumber([&] { rows->Update(); }), static_cast<std::int32_t>(0x80040E38U));
    rows->CancelUpdate();
    rows->Move(0);
    EXPECT_EQ(rows->Fields().Item("AMOUNT").Value(), Variant{9.0});
}

TEST_F(BackendEdits, AggregatesAreReadOnly)
{
    fill(1);
    const auto rows = open(select("COUNT(*) AS N"), CursorType::OpenKeyset, LockType::Optimistic);
    EXPECT_EQ(errorNumber([&] { rows->AddNew(); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { rows->Delete(); }), errors::readOnlyRecordset);
    if (quirk("no_row_locks")) return;
    Recordset locked;
    EXPECT_EQ(errorNumber([&] {
                  locked.Open(select("COUNT(*) AS N"), connection, CursorType::OpenDynamic, LockType::Pessimistic);
              }),
              errors::readOnlyRecordset);
}

TEST_F(BackendEdits, StaticRecordsetOfSomeColumnsTakesANewRow)
{
    fill(2);
    const auto rows = open(select("SHORT_TEXT AS CODE,AMOUNT+1 AS MORE", "WHERE WHOLE > 0 ORDER BY SHORT_TEXT"),
                           CursorType::OpenStatic, LockType::Optimistic);
    expectName(rows->Fields().Item(0).BASECOLUMNNAME(), "SHORT_TEXT");
    expectName(rows->Fields().Item(0).BASETABLENAME(), table);
    EXPECT_EQ(rows->Fields().Item(1).BASECOLUMNNAME(), "");
    rows->AddNew();
    rows->Fields().Item(0).Value("a new one");
    rows->Update();
    EXPECT_EQ(rows->AbsolutePosition(), 3) << "it becomes the last row and the current one";
    EXPECT_EQ(rows->Fields().Item("CODE").Value(), Variant{"a new one"});
    const Variant mark = rows->Bookmark();
    rows->MoveFirst();
    rows->Find("CODE = 'row 2'");
    EXPECT_EQ(rows->AbsolutePosition(), 2);
    rows->Bookmark(mark);
    EXPECT_EQ(rows->AbsolutePosition(), 3);
    EXPECT_EQ(count("WHERE SHORT_TEXT = 'a new one'"), 1);
}

} // namespace tamarok::ado::backend
