#include "ado_fixture.h"

namespace tamarok::ado {

class ScrollingTest : public AdoTest {
protected:
    std::shared_ptr<Recordset> rows = open(CursorType::OpenStatic);
};

TEST_F(ScrollingTest, MovesInBothDirections)
{
    rows->MoveLast();
    EXPECT_EQ(id(*rows), Variant{3});
    rows->MovePrevious();
    EXPECT_EQ(id(*rows), Variant{2});
    rows->MoveFirst();
    EXPECT_EQ(id(*rows), Variant{1});
    rows->Move(2);
    EXPECT_EQ(id(*rows), Variant{3});
    rows->Move(-2);
    EXPECT_EQ(id(*rows), Variant{1});
    rows->Move(0);
    EXPECT_EQ(id(*rows), Variant{1});
}

TEST_F(ScrollingTest, KeysetMovesInBothDirections)
{
    const auto keyset = open(CursorType::OpenKeyset);
    keyset->MoveLast();
    keyset->MovePrevious();
    EXPECT_EQ(id(*keyset), Variant{2});
}

TEST_F(ScrollingTest, StandsBeforeTheFirstAndBehindTheLastRow)
{
    rows->MovePrevious();
    EXPECT_TRUE(rows->AtBOF());
    EXPECT_FALSE(rows->AtEOF());
    EXPECT_EQ(rows->AbsolutePosition(), positionBOF);
    EXPECT_EQ(errorNumber([&] { id(*rows); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { rows->MovePrevious(); }), errors::noCurrentRecord);
    rows->MoveNext();
    EXPECT_EQ(id(*rows), Variant{1});
    rows->Move(3);
    EXPECT_TRUE(rows->AtEOF());
    EXPECT_FALSE(rows->AtBOF());
    EXPECT_EQ(rows->AbsolutePosition(), positionEOF);
    EXPECT_EQ(errorNumber([&] { rows->MoveNext(); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { rows->Move(0); }), errors::noCurrentRecord);
    rows->MovePrevious();
    EXPECT_EQ(id(*rows), Variant{3});
    rows->Move(-10);
    EXPECT_TRUE(rows->AtBOF());
}

TEST_F(ScrollingTest, EmptyResultIsAtBothEnds)
{
    species->rows.clear();
    const auto empty = open(CursorType::OpenStatic);
    EXPECT_TRUE(empty->AtEOF() && empty->AtBOF());
    EXPECT_EQ(empty->RecordCount(), 0);
    for (const auto& move : std::vector<std::function<void()>>{
             [&] { empty->MoveFirst(); }, [&] { empty->MoveLast(); }, [&] { empty->MoveNext(); },
             [&] { empty->MovePrevious(); }, [&] { empty->Move(0); }, [&] { empty->GetRows(); }})
        EXPECT_EQ(errorNumber(move), errors::noCurrentRecord);
    EXPECT_TRUE(empty->AtEOF() && empty->AtBOF());
}

TEST_F(ScrollingTest, ReadsRowsWhenTheyAreVisitedAndKeepsThem)
{
    species->rows.at(1)[1] = "changed";
    species->rows.at(3)[1] = "changed";
    EXPECT_EQ(rows->Fields().Item("NAME").Value(), Variant{"Fichte"});
    rows->MoveLast();
    EXPECT_EQ(rows->Fields().Item("NAME").Value(), Variant{"changed"});
    rows->MoveFirst();
    EXPECT_EQ(rows->Fields().Item("NAME").Value(), Variant{"Fichte"});
}

TEST_F(ScrollingTest, CountsItsRowsWithoutMoving)
{
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(id(*rows), Variant{2});
}

TEST_F(ScrollingTest, AbsolutePositionIsReadAndSet)
{
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    rows->AbsolutePosition(3);
    EXPECT_EQ(id(*rows), Variant{3});
    EXPECT_EQ(rows->AbsolutePosition(), 3);
    EXPECT_EQ(errorNumber([&] { rows->AbsolutePosition(0); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([&] { rows->AbsolutePosition(4); }), errors::noCurrentRecord);
    EXPECT_EQ(id(*rows), Variant{3});
}

TEST_F(ScrollingTest, BookmarkLeadsBackAndServesClonesToo)
{
    rows->MoveNext();
    const Variant second = rows->Bookmark();
    rows->MoveLast();
    EXPECT_NE(rows->Bookmark(), second);
    const auto clone = rows->Clone();
    rows->Bookmark(second);
    EXPECT_EQ(id(*rows), Variant{2});
    EXPECT_EQ(rows->Bookmark(), second);
    clone->Bookmark(second);
    EXPECT_EQ(id(*clone), Variant{2});
    EXPECT_EQ(errorNumber([&] { rows->Bookmark(99); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([&] { rows->Bookmark("x"); }), errors::typeMismatch);
    rows->MoveLast();
    rows->MoveNext();
    EXPECT_EQ(errorNumber([&] { rows->Bookmark(); }), errors::noCurrentRecord);
}

TEST_F(ScrollingTest, CloneHasAPositionOfItsOwn)
{
    rows->MoveNext();
    const auto clone = rows->Clone();
    EXPECT_EQ(id(*clone), Variant{1});
    clone->MoveLast();
    EXPECT_EQ(id(*clone), Variant{3});
    EXPECT_EQ(id(*rows), Variant{2});
    EXPECT_EQ(clone->GetRows().bounds(2).upper, 0);
    rows->Close();
    clone->MoveFirst();
    EXPECT_EQ(id(*clone), Variant{1});
    clone->Close();
    EXPECT_EQ(database->openCursors, 0);
}

TEST_F(ScrollingTest, CloneRunsNoStatement)
{
    database->takeLog();
    rows->Clone()->GetRows();
    EXPECT_TRUE(database->log.empty());
}

TEST_F(ScrollingTest, GetRowsStartsAtTheCurrentRow)
{
    rows->MoveNext();
    EXPECT_EQ(rows->GetRows(1).at(1, 0), Variant{"Tanne"});
    EXPECT_EQ(id(*rows), Variant{3});
    EXPECT_EQ(rows->GetRows(0).elements().size(), 0U);
    EXPECT_EQ(id(*rows), Variant{3});
    EXPECT_EQ(rows->GetRows().at(0, 0), Variant{3});
    EXPECT_TRUE(rows->AtEOF());
    EXPECT_EQ(errorNumber([&] { rows->GetRows(); }), errors::noCurrentRecord);
    rows->MoveFirst();
    EXPECT_EQ(rows->GetRows().bounds(2).upper, 2);
}

TEST_F(ScrollingTest, FailedStepLeavesTheRecordsetWhereItWas)
{
    species->unreadable = 3;
    rows->MoveNext();
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_EQ(errorNumber([&] { rows->MoveNext(); }), errors::providerFailure);
        EXPECT_EQ(id(*rows), Variant{2});
        EXPECT_EQ(errorNumber([&] { rows->MoveLast(); }), errors::providerFailure);
        EXPECT_EQ(errorNumber([&] { rows->RecordCount(); }), errors::providerFailure);
    }
    rows->MovePrevious();
    EXPECT_EQ(id(*rows), Variant{1});
}

TEST_F(ScrollingTest, StaticKeepsItsRowsOnMoveFirst)
{
    rows->MoveLast();
    species->rows[4] = {4, "Kiefer", 70.0};
    database->takeLog();
    rows->MoveFirst();
    EXPECT_TRUE(database->log.empty());
    EXPECT_EQ(id(*rows), Variant{1});
}

class DynamicTest : public AdoTest {
protected:
    std::shared_ptr<Recordset> rows = open(CursorType::OpenDynamic);
};

TEST_F(DynamicTest, MoveFirstRunsTheStatementAgainWithoutTellingIt)
{
    Log told;
    connection->listen([&](std::string_view statement) { told.emplace_back(statement); });
    rows->MoveLast();
    species->rows[0] = {0, "Kiefer", 70.0};
    database->takeLog();
    rows->MoveFirst();
    EXPECT_EQ(database->log, Log{"restart"});
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(id(*rows), Variant{0});
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    EXPECT_EQ(rows->RecordCount(), -1);
}

TEST_F(DynamicTest, OpensEmptyAndFindsTheRowThatCameSince)
{
    const auto kept = std::exchange(species->rows, {});
    const auto empty = open(CursorType::OpenDynamic);
    EXPECT_TRUE(empty->AtEOF() && empty->AtBOF());
    EXPECT_EQ(errorNumber([&] { empty->MoveFirst(); }), errors::noCurrentRecord);
    EXPECT_TRUE(empty->AtEOF() && empty->AtBOF());
    species->rows = kept;
    empty->MoveFirst();
    EXPECT_FALSE(empty->AtEOF() || empty->AtBOF());
    EXPECT_EQ(id(*empty), Variant{1});
}

TEST_F(DynamicTest, ScrollsBackOverVisitedRows)
{
    rows->MoveLast();
    rows->MovePrevious();
    EXPECT_EQ(id(*rows), Variant{2});
}

TEST_F(DynamicTest, RunningAgainEndsTheMarks)
{
    const Variant mark = rows->Bookmark();
    rows->Bookmark(mark);
    rows->MoveFirst();
    EXPECT_EQ(errorNumber([&] { rows->Bookmark(mark); }), errors::invalidArgument);
    EXPECT_EQ(id(*rows), Variant{1});
}

TEST_F(DynamicTest, CloneKeepsTheRowsItKnows)
{
    rows->MoveNext();
    const auto clone = rows->Clone();
    species->rows.erase(1);
    rows->MoveFirst();
    EXPECT_EQ(id(*rows), Variant{2});
    EXPECT_EQ(id(*clone), Variant{1});
    clone->MoveLast();
    EXPECT_EQ(id(*clone), Variant{2});
    clone->MoveFirst();
    EXPECT_EQ(id(*clone), Variant{1});
}

TEST_F(ScrollingTest, ForwardOnlyRecordsetKeepsItsRows)
{
    const auto stream = open();
    stream->MoveNext();
    stream->keepRows();
    EXPECT_EQ(id(*stream), Variant{2}) << "it stays on its row";
    EXPECT_EQ(stream->RecordCount(), 2) << "the rows before it were not kept";
    EXPECT_EQ(stream->AbsolutePosition(), 1);
    stream->MoveLast();
    EXPECT_EQ(id(*stream), Variant{3});
    stream->MoveFirst();
    EXPECT_EQ(id(*stream), Variant{2});
    EXPECT_EQ(id(*stream->Clone()), Variant{2});
    EXPECT_EQ(errorNumber([&] { stream->AddNew(); }), errors::readOnlyRecordset);
    stream->keepRows(); // nothing is left to do
    stream->Close();
    EXPECT_EQ(errorNumber([&] { stream->keepRows(); }), errors::objectClosed);
}

TEST_F(ScrollingTest, KeepsNoRowOfAnEmptyRecordset)
{
    species->rows.clear();
    const auto stream = open();
    stream->keepRows();
    EXPECT_TRUE(stream->AtEOF());
    EXPECT_TRUE(stream->AtBOF());
    EXPECT_EQ(stream->RecordCount(), 0);
    EXPECT_EQ(errorNumber([&] { stream->MoveFirst(); }), errors::noCurrentRecord);
}

TEST_F(ScrollingTest, RowThatCannotBeReadFailsTheKeeping)
{
    species->unreadable = 3;
    const auto stream = open();
    EXPECT_EQ(errorNumber([&] { stream->keepRows(); }), errors::providerFailure);
    EXPECT_EQ(id(*stream), Variant{1}) << "the rows before it are there";
}

} // namespace tamarok::ado
