#include "backend_fixture.h"

namespace tamarok::ado::backend {

using BackendRows = BackendTest;

TEST_F(BackendRows, StreamWalksToTheEnd)
{
    fill(5);
    const auto rows = open(select("WHOLE", "ORDER BY WHOLE"));
    int expected = 0;
    for (; !rows->AtEOF(); rows->MoveNext())
        EXPECT_EQ(rows->Fields().Item(0).Value(), Variant{++expected});
    EXPECT_EQ(expected, 5);
    EXPECT_EQ(errorNumber([&] { rows->MoveNext(); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { rows->Fields().Item(0).Value(); }), errors::noCurrentRecord);
}

TEST_F(BackendRows, EmptyResult)
{
    const auto rows = open(select("*"));
    EXPECT_TRUE(rows->AtEOF() && rows->AtBOF());
    EXPECT_EQ(rows->Fields().Count(), 13);
    EXPECT_EQ(errorNumber([&] { rows->GetRows(); }), errors::noCurrentRecord);
}

TEST_F(BackendRows, SeveralStreamsAtOnce)
{
    fill(3);
    const auto outer = open(select("WHOLE", "ORDER BY WHOLE"));
    int pairs = 0;
    for (; !outer->AtEOF(); outer->MoveNext()) {
        const auto inner = open(select("WHOLE", "ORDER BY WHOLE DESC"));
        for (; !inner->AtEOF(); inner->MoveNext())
            ++pairs;
    }
    EXPECT_EQ(pairs, 9);
}

TEST_F(BackendRows, WritingWhileAStreamIsOpen)
{
    fill(3);
    const auto rows = open(select("ID, WHOLE", "ORDER BY WHOLE"));
    int seen = 0;
    for (; !rows->AtEOF(); rows->MoveNext(), ++seen)
        connection->Execute("UPDATE " + table + " SET SHORT_TEXT = 'seen' WHERE WHOLE = " + std::to_string(seen + 1));
    EXPECT_EQ(seen, 3);
    rows->Close();
    EXPECT_EQ(count("WHERE SHORT_TEXT = 'seen'"), 3);
}

TEST_F(BackendRows, GetRows)
{
    fill(3);
    const auto rows = open(select("WHOLE, SHORT_TEXT, AMOUNT", "ORDER BY WHOLE"));
    rows->MoveNext();
    const VariantArray taken = rows->GetRows();
    EXPECT_EQ(taken.bounds(1), (VariantArray::Bounds{0, 2}));
    EXPECT_EQ(taken.bounds(2), (VariantArray::Bounds{0, 1}));
    EXPECT_EQ(taken.elements(), (std::vector<Variant>{2, "row 2", Null{}, 3, "row 3", Null{}}));
    EXPECT_TRUE(rows->AtEOF());
}

TEST_F(BackendRows, StaticScrollsBothWays)
{
    fill(4);
    const auto rows = open(select("WHOLE", "ORDER BY WHOLE"), CursorType::OpenStatic);
    const Field& whole = rows->Fields().Item(0);
    rows->MoveLast();
    EXPECT_EQ(whole.Value(), Variant{4});
    EXPECT_EQ(rows->AbsolutePosition(), 4);
    rows->Move(-2);
    EXPECT_EQ(whole.Value(), Variant{2});
    const Variant mark = rows->Bookmark();
    rows->MoveFirst();
    rows->MovePrevious();
    EXPECT_TRUE(rows->AtBOF());
    rows->Bookmark(mark);
    EXPECT_EQ(whole.Value(), Variant{2});
    rows->Find("WHOLE > 3");
    EXPECT_EQ(whole.Value(), Variant{4});
    EXPECT_EQ(rows->RecordCount(), 4);
    const auto clone = rows->Clone();
    EXPECT_EQ(clone->Fields().Item(0).Value(), Variant{1});
}

TEST_F(BackendRows, DynamicFindsRowsThatCameSinceItWasOpened)
{
    const auto rows = open(select("WHOLE", "WHERE WHOLE IN (SELECT WHOLE FROM " + table + " WHERE WHOLE = 7)"),
                           CursorType::OpenDynamic);
    EXPECT_TRUE(rows->AtEOF());
    connection->Execute(insert("WHOLE", "7"));
    rows->MoveFirst();
    EXPECT_FALSE(rows->AtEOF());
    EXPECT_EQ(rows->Fields().Item(0).Value(), Variant{7});
}

TEST_F(BackendRows, DynamicFindsRowsOfAnotherConnection)
{
    if (const auto reason = quirk("single_connection")) GTEST_SKIP() << *reason;
    const auto rows = open(select("WHOLE"), CursorType::OpenDynamic);
    EXPECT_TRUE(rows->AtEOF());
    context->connect()->Execute(insert("WHOLE", "7"));
    rows->MoveFirst();
    EXPECT_EQ(rows->Fields().Item(0).Value(), Variant{7});
}

TEST_F(BackendRows, ClosingTheConnectionClosesWhatIsOpen)
{
    fill(3);
    const auto stream = open(select("WHOLE"));
    const auto scrolling = open(select("WHOLE"), CursorType::OpenKeyset, LockType::Optimistic);
    const LockType lock = quirk("no_row_locks") ? LockType::Optimistic : LockType::Pessimistic;
    const auto locking = open(select("ID, WHOLE"), CursorType::OpenDynamic, lock);
    const FieldRef field = stream->Fields().share(0);
    connection->Close();
    for (const auto& rows : {stream, scrolling, locking}) {
        EXPECT_EQ(rows->State(), ObjectState::Closed);
        EXPECT_EQ(errorNumber([&] { rows->MoveNext(); }), errors::objectClosed);
    }
    EXPECT_EQ(errorNumber([&] { field->Value(); }), errors::objectClosed);
    EXPECT_EQ(errorNumber([&] { connection->Execute(select("1")); }), errors::connectionClosed);
    EXPECT_EQ(errorNumber([&] { open(select("1")); }), errors::connectionClosed);
    EXPECT_EQ(errorNumber([&] { connection->Close(); }), errors::objectClosed);
}

TEST_F(BackendRows, RecordsetOutlivesTheConnectionReference)
{
    fill(2);
    ConnectionRef second = context->connect();
    Recordset rows;
    rows.Open(select("WHOLE", "ORDER BY WHOLE"), second);
    second.reset();
    rows.MoveNext();
    EXPECT_EQ(rows.Fields().Item(0).Value(), Variant{2});
}

TEST_F(BackendRows, ClosedRecordset)
{
    fill(1);
    const auto rows = open(select("WHOLE"));
    EXPECT_EQ(errorNumber([&] { rows->Open(select("WHOLE"), connection); }), errors::objectOpen);
    rows->Close();
    EXPECT_EQ(errorNumber([&] { rows->Close(); }), errors::objectClosed);
    EXPECT_EQ(errorNumber([&] { rows->AtEOF(); }), errors::objectClosed);
    rows->Open(select("WHOLE"), connection);
    EXPECT_EQ(rows->Fields().Item(0).Value(), Variant{1});
}

TEST_F(BackendRows, ForwardOnlyRecordsetKeepsItsRows)
{
    fill(3);
    const auto rows = open(select("WHOLE", "ORDER BY WHOLE"));
    rows->keepRows();
    connection->Execute(insert("WHOLE", "4"));
    rows->MoveLast();
    EXPECT_EQ(rows->Fields().Item(0).Value(), Variant{3});
    rows->AbsolutePosition(2);
    EXPECT_EQ(rows->Fields().Item(0).Value(), Variant{2});
    const auto clone = rows->Clone();
    EXPECT_EQ(clone->GetRows().bounds(2).upper, 2);
    EXPECT_EQ(rows->Fields().Item(0).Value(), Variant{2});
}

} // namespace tamarok::ado::backend
