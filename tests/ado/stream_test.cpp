#include "ado_fixture.h"

namespace tamarok::ado {

using StreamTest = AdoTest;

TEST_F(StreamTest, StandsOnTheFirstRowAfterOpening)
{
    const auto recordset = open();
    EXPECT_EQ(recordset->State(), ObjectState::Open);
    EXPECT_FALSE(recordset->AtEOF());
    EXPECT_FALSE(recordset->AtBOF());
    EXPECT_EQ(id(*recordset), Variant{1});
}

TEST_F(StreamTest, WalksToTheEnd)
{
    const auto recordset = open();
    std::vector<Variant> ids;
    for (; !recordset->AtEOF(); recordset->MoveNext())
        ids.push_back(id(*recordset));
    EXPECT_EQ(ids, (std::vector<Variant>{1, 2, 3}));
    EXPECT_FALSE(recordset->AtBOF());
    EXPECT_EQ(errorNumber([&] { recordset->MoveNext(); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { id(*recordset); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { recordset->GetRows(); }), errors::noCurrentRecord);
}

TEST_F(StreamTest, EmptyResultIsAtBothEnds)
{
    species->rows.clear();
    const auto recordset = open();
    EXPECT_TRUE(recordset->AtEOF());
    EXPECT_TRUE(recordset->AtBOF());
    EXPECT_EQ(recordset->Fields().Count(), 3);
    EXPECT_EQ(recordset->Fields().Item("name").DefinedSize(), 40);
    EXPECT_EQ(errorNumber([&] { recordset->MoveNext(); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { recordset->MoveFirst(); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { recordset->Find("ID = 1"); }), errors::noCurrentRecord);
}

TEST_F(StreamTest, StatementWithoutResultSetLeavesItClosed)
{
    Recordset recordset;
    recordset.Open("DELETE FROM SPECIES", connection);
    EXPECT_EQ(recordset.State(), ObjectState::Closed);
    EXPECT_EQ(errorNumber([&] { recordset.AtEOF(); }), errors::objectClosed);
    recordset.Open(query, connection);
    EXPECT_EQ(recordset.State(), ObjectState::Open);
    EXPECT_EQ(database->openCursors, 1);
}

TEST_F(StreamTest, MovesForwardOnly)
{
    const auto recordset = open();
    recordset->MoveFirst();
    recordset->Move(0);
    EXPECT_EQ(id(*recordset), Variant{1});
    recordset->Move(2);
    EXPECT_EQ(id(*recordset), Variant{3});
    EXPECT_EQ(errorNumber([&] { recordset->MoveFirst(); }), errors::badCursorOperation);
    EXPECT_EQ(errorNumber([&] { recordset->MovePrevious(); }), errors::badCursorOperation);
    EXPECT_EQ(errorNumber([&] { recordset->MoveLast(); }), errors::badCursorOperation);
    EXPECT_EQ(errorNumber([&] { recordset->Move(-1); }), errors::badCursorOperation);
    EXPECT_EQ(id(*recordset), Variant{3});
    recordset->Move(5);
    EXPECT_TRUE(recordset->AtEOF());
    EXPECT_EQ(errorNumber([&] { recordset->Move(1); }), errors::noCurrentRecord);
}

TEST_F(StreamTest, RefusesWhatNeedsKeptRows)
{
    const auto recordset = open();
    EXPECT_EQ(recordset->AbsolutePosition(), positionUnknown);
    EXPECT_EQ(recordset->RecordCount(), -1);
    EXPECT_EQ(errorNumber([&] { recordset->Bookmark(); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { recordset->Bookmark(1); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { recordset->Clone(); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { recordset->AbsolutePosition(1); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { recordset->AddNew(); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { recordset->Update(); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { recordset->CancelUpdate(); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { recordset->Delete(); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { recordset->Fields().Item(0).Value(7); }), errors::readOnlyRecordset);
}

TEST_F(StreamTest, UnspecifiedTypesAreForwardOnlyAndReadOnly)
{
    const auto recordset = open(CursorType::Unspecified, LockType::Unspecified);
    EXPECT_EQ(errorNumber([&] { recordset->MovePrevious(); }), errors::badCursorOperation);
    EXPECT_EQ(errorNumber([&] { recordset->AddNew(); }), errors::readOnlyRecordset);
}

TEST_F(StreamTest, GetRowsGivesFieldsByRows)
{
    const auto recordset = open();
    recordset->MoveNext();
    const VariantArray rows = recordset->GetRows();
    EXPECT_EQ(rows.bounds(1), (VariantArray::Bounds{0, 2}));
    EXPECT_EQ(rows.bounds(2), (VariantArray::Bounds{0, 1}));
    EXPECT_EQ(rows.at(0, 0), Variant{2});
    EXPECT_EQ(rows.at(2, 0), Variant{Null{}});
    EXPECT_EQ(rows.at(1, 1), Variant{"Lärche"});
    EXPECT_TRUE(recordset->AtEOF());
}

TEST_F(StreamTest, GetRowsTakesNoMoreThanAskedFor)
{
    const auto recordset = open();
    EXPECT_EQ(recordset->GetRows(0).elements().size(), 0U);
    EXPECT_EQ(id(*recordset), Variant{1});
    EXPECT_EQ(recordset->GetRows(2).bounds(2).upper, 1);
    EXPECT_EQ(id(*recordset), Variant{3});
    EXPECT_EQ(errorNumber([&] { recordset->GetRows(-2); }), errors::invalidArgument);
    EXPECT_EQ(recordset->GetRows(10).bounds(2).upper, 0);
    EXPECT_TRUE(recordset->AtEOF());
}

TEST_F(StreamTest, FailedStepRaisesAndEndsTheRows)
{
    species->unreadable = 2;
    const auto recordset = open();
    const Error failure = failureOf([&] { recordset->MoveNext(); });
    EXPECT_EQ(failure.number, errors::providerFailure);
    EXPECT_EQ(failure.statement, query);
    EXPECT_EQ(failure.source, "recording database");
    EXPECT_TRUE(recordset->AtEOF());
    EXPECT_EQ(errorNumber([&] { recordset->MoveNext(); }), errors::noCurrentRecord);
}

TEST_F(StreamTest, FailureOfTheFirstStepFailsOpen)
{
    species->unreadable = 1;
    Recordset recordset;
    EXPECT_EQ(errorNumber([&] { recordset.Open(query, connection); }), errors::providerFailure);
    EXPECT_EQ(recordset.State(), ObjectState::Closed);
    EXPECT_EQ(database->openCursors, 0);
}

TEST_F(StreamTest, OpenChecksItsArguments)
{
    Recordset recordset;
    EXPECT_EQ(errorNumber([&] { recordset.Open(query, nullptr); }), errors::objectNotSet);
    EXPECT_EQ(errorNumber([&] { recordset.Open(query, connection, CursorType::OpenStatic, LockType::ReadOnly, 2); }),
              errors::invalidArgument);
    recordset.Open(query, connection);
    EXPECT_EQ(errorNumber([&] { recordset.Open(query, connection); }), errors::objectOpen);
    EXPECT_EQ(id(recordset), Variant{1});
}

TEST_F(StreamTest, ClosedRecordsetRefusesEveryMember)
{
    const auto opened = open();
    opened->Close();
    EXPECT_EQ(database->openCursors, 0);
    for (const auto& recordset : {opened, std::make_shared<Recordset>()}) {
        const std::vector<std::function<void()>> members{
            [&] { recordset->Close(); },
            [&] { recordset->AtEOF(); },
            [&] { recordset->AtBOF(); },
            [&] { recordset->Fields(); },
            [&] { recordset->RecordCount(); },
            [&] { recordset->MoveNext(); },
            [&] { recordset->MoveFirst(); },
            [&] { recordset->MoveLast(); },
            [&] { recordset->MovePrevious(); },
            [&] { recordset->Move(1); },
            [&] { recordset->GetRows(); },
            [&] { recordset->Find("ID = 1"); },
            [&] { recordset->Clone(); },
            [&] { recordset->Bookmark(); },
            [&] { recordset->Bookmark(1); },
            [&] { recordset->AbsolutePosition(); },
            [&] { recordset->AbsolutePosition(1); },
            [&] { recordset->AddNew(); },
            [&] { recordset->Update(); },
            [&] { recordset->CancelUpdate(); },
            [&] { recordset->Delete(); },
            [&] { recordset->Delete(2); },
        };
        for (std::size_t member = 0; member < members.size(); ++member) {
            const Error failure = failureOf(members[member]);
            EXPECT_EQ(failure.number, errors::objectClosed) << "member " << member;
            EXPECT_EQ(failure.source, "ADODB.Recordset") << "member " << member;
            EXPECT_FALSE(failure.description.empty()) << "member " << member;
        }
    }
}

TEST_F(StreamTest, CanBeOpenedAgainAfterClosing)
{
    const auto recordset = open();
    recordset->Close();
    species->rows.erase(1);
    recordset->Open(query, connection);
    EXPECT_EQ(id(*recordset), Variant{2});
}

TEST_F(StreamTest, DestructionReleasesTheCursor)
{
    open();
    EXPECT_EQ(database->openCursors, 0);
}

} // namespace tamarok::ado
