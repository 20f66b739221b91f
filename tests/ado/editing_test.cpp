#include "ado_fixture.h"

namespace tamarok::ado {

class EditingTest : public AdoTest {
protected:
    EditingTest() { database->takeLog(); }

    Field& name() const { return rows->Fields().Item("NAME"); }

    std::shared_ptr<Recordset> rows = open(CursorType::OpenKeyset, LockType::Optimistic);
};

TEST_F(EditingTest, ChangedFieldIsSentByUpdateAlone)
{
    name().Value("Rotfichte");
    EXPECT_EQ(name().Value(), Variant{"Rotfichte"});
    EXPECT_EQ(species->rows.at(1)[1], Variant{"Fichte"});
    rows->Update();
    EXPECT_EQ(database->log, Log{"update 1 1"});
    EXPECT_EQ(species->rows.at(1)[1], Variant{"Rotfichte"});
    EXPECT_EQ(name().Value(), Variant{"Rotfichte"});
    rows->Update();
    EXPECT_EQ(database->log.size(), 1U) << "nothing is left to send";
}

TEST_F(EditingTest, CancelUpdateGivesTheFormerValuesBack)
{
    name().Value("Rotfichte");
    rows->CancelUpdate();
    EXPECT_EQ(name().Value(), Variant{"Fichte"});
    rows->CancelUpdate();
    rows->Update();
    EXPECT_TRUE(database->log.empty());
}

TEST_F(EditingTest, MoveSendsAPendingEdit)
{
    name().Value("Rotfichte");
    rows->MoveNext();
    EXPECT_EQ(database->log, Log{"update 1 1"});
    EXPECT_EQ(id(*rows), Variant{2});
}

TEST_F(EditingTest, CloseRefusesAPendingEdit)
{
    name().Value("Rotfichte");
    EXPECT_EQ(errorNumber([&] { rows->Close(); }), errors::badCursorOperation);
    EXPECT_EQ(rows->State(), ObjectState::Open);
    rows->CancelUpdate();
    rows->Close();
}

TEST_F(EditingTest, DestructionDropsAPendingEdit)
{
    name().Value("Rotfichte");
    rows.reset();
    EXPECT_TRUE(database->log.empty());
    EXPECT_EQ(database->openCursors, 0);
}

TEST_F(EditingTest, EmptyBecomesNullAndAFieldItsValue)
{
    const auto other = open();
    name().Value(Variant{});
    rows->Fields().Item("ID").Value(Variant{other->Fields().share("PRICE")});
    rows->Update();
    EXPECT_EQ(species->rows.at(1), (Row{80.5, Null{}, 80.5}));
    EXPECT_EQ(errorNumber([&] { name().Value(Variant{rows}); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { name().Value(VariantArray{}); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { name().Value(ObjectRef{}); }), errors::typeMismatch);
    rows->Close();
}

TEST_F(EditingTest, OptimisticUpdateNoticesThatTheRowHasChanged)
{
    species->rows.at(1)[2] = 99.0;
    name().Value("Rotfichte");
    EXPECT_EQ(errorNumber([&] { rows->Update(); }), static_cast<std::int32_t>(0x80040E38U));
    EXPECT_TRUE(database->log.empty());
    rows->CancelUpdate();
    rows->Move(0);
    EXPECT_EQ(rows->Fields().Item("PRICE").Value(), Variant{99.0});
    name().Value("Rotfichte");
    rows->Update();
    EXPECT_EQ(database->log, Log{"update 1 1"});
}

TEST_F(EditingTest, OptimisticUpdateNoticesThatTheRowHasGone)
{
    species->rows.erase(1);
    name().Value("Rotfichte");
    EXPECT_EQ(errorNumber([&] { rows->Update(); }), static_cast<std::int32_t>(0x80040E38U));
    rows->CancelUpdate();
    rows->Move(0);
    EXPECT_EQ(errorNumber([&] { id(*rows); }), errors::noCurrentRecord);
    rows->MoveNext();
    EXPECT_EQ(rows->AbsolutePosition(), 1);
}

TEST_F(EditingTest, RefusedUpdateStaysPending)
{
    species->refusal = Error{errors::constraintViolated, "Twice."};
    name().Value("Tanne");
    const Error failure = failureOf([&] { rows->Update(); });
    EXPECT_EQ(failure.number, errors::constraintViolated);
    EXPECT_EQ(failure.statement, query);
    EXPECT_EQ(name().Value(), Variant{"Tanne"});
    rows->Update();
    EXPECT_EQ(species->rows.at(1)[1], Variant{"Tanne"});
}

TEST_F(EditingTest, AddNewStandsOnTheNewRowAfterUpdate)
{
    rows->AddNew();
    EXPECT_EQ(name().Value(), Variant{Null{}});
    EXPECT_FALSE(rows->AtEOF() || rows->AtBOF());
    EXPECT_EQ(rows->AbsolutePosition(), positionUnknown);
    name().Value("Kiefer");
    EXPECT_EQ(name().Value(), Variant{"Kiefer"});
    rows->Update();
    EXPECT_EQ(database->log, Log{"insert 1"});
    EXPECT_EQ(rows->AbsolutePosition(), 4);
    EXPECT_EQ(name().Value(), Variant{"Kiefer"});
    EXPECT_EQ(rows->RecordCount(), 4);
    rows->MovePrevious();
    EXPECT_EQ(id(*rows), Variant{3});
}

TEST_F(EditingTest, CancelledNewRowGivesTheFormerRowBack)
{
    rows->MoveNext();
    rows->AddNew();
    name().Value("Kiefer");
    rows->CancelUpdate();
    EXPECT_EQ(id(*rows), Variant{2});
    EXPECT_TRUE(database->log.empty());
}

TEST_F(EditingTest, RefusedNewRowStaysPendingAndCanBeCancelled)
{
    species->refusal = Error{errors::constraintViolated, "Twice."};
    rows->AddNew();
    name().Value("Tanne");
    EXPECT_EQ(errorNumber([&] { rows->Update(); }), errors::constraintViolated);
    EXPECT_EQ(name().Value(), Variant{"Tanne"});
    rows->CancelUpdate();
    EXPECT_EQ(id(*rows), Variant{1});
    EXPECT_EQ(rows->RecordCount(), 3);
}

TEST_F(EditingTest, AddNewOnAnEmptyRecordset)
{
    species->rows.clear();
    const auto empty = open(CursorType::OpenKeyset, LockType::Optimistic);
    empty->AddNew();
    EXPECT_FALSE(empty->AtEOF() || empty->AtBOF());
    empty->Fields().Item("NAME").Value("Kiefer");
    empty->Update();
    EXPECT_FALSE(empty->AtEOF() || empty->AtBOF());
    empty->MoveNext();
    EXPECT_TRUE(empty->AtEOF());
    EXPECT_FALSE(empty->AtBOF());
}

TEST_F(EditingTest, AddNewTwiceSendsTheFirst)
{
    rows->AddNew();
    name().Value("Kiefer");
    rows->AddNew();
    EXPECT_EQ(database->log, Log{"insert 1"});
    rows->Update();
    EXPECT_EQ(database->log, (Log{"insert 1", "insert"}));
}

TEST_F(EditingTest, DeletedRowIsLeftOutOfEveryMove)
{
    rows->MoveNext();
    rows->Delete();
    EXPECT_EQ(database->log, Log{"delete 2"});
    EXPECT_EQ(errorNumber([&] { id(*rows); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { rows->Delete(); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { rows->Move(0); }), errors::noCurrentRecord);
    EXPECT_FALSE(rows->AtEOF() || rows->AtBOF());
    rows->MoveNext();
    EXPECT_EQ(id(*rows), Variant{3});
    EXPECT_EQ(rows->AbsolutePosition(), 2);
    rows->MovePrevious();
    EXPECT_EQ(id(*rows), Variant{1});
    EXPECT_EQ(rows->GetRows().bounds(2).upper, 1);
    EXPECT_EQ(rows->RecordCount(), 2);
}

TEST_F(EditingTest, MarkOfADeletedRowNamesNoRow)
{
    const Variant mark = rows->Bookmark();
    rows->Delete();
    EXPECT_EQ(errorNumber([&] { rows->Bookmark(mark); }), errors::noCurrentRecord);
    rows->MoveFirst();
    EXPECT_EQ(id(*rows), Variant{2});
}

TEST_F(EditingTest, DeletionOfTheLastRowLeavesBothEnds)
{
    species->rows = {{1, {1, "Fichte", 80.5}}};
    const auto one = open(CursorType::OpenKeyset, LockType::Optimistic);
    one->Delete();
    EXPECT_FALSE(one->AtEOF() || one->AtBOF());
    one->MoveNext();
    EXPECT_TRUE(one->AtEOF() && one->AtBOF());
    EXPECT_EQ(errorNumber([&] { one->MoveFirst(); }), errors::noCurrentRecord);
    EXPECT_EQ(errorNumber([&] { one->MoveLast(); }), errors::noCurrentRecord);
}

TEST_F(EditingTest, DeleteKnowsTheCurrentRecordAlone)
{
    EXPECT_EQ(errorNumber([&] { rows->Delete(2); }), errors::invalidArgument);
    rows->AddNew();
    EXPECT_EQ(errorNumber([&] { rows->Delete(); }), errors::badCursorOperation);
    rows->CancelUpdate();
    rows->MovePrevious();
    EXPECT_EQ(errorNumber([&] { rows->Delete(); }), errors::noCurrentRecord);
    EXPECT_TRUE(database->log.empty());
}

TEST_F(EditingTest, RefusedDeletionKeepsTheRow)
{
    species->refusal = Error{errors::constraintViolated, "In use."};
    EXPECT_EQ(errorNumber([&] { rows->Delete(); }), errors::constraintViolated);
    EXPECT_EQ(id(*rows), Variant{1});
}

TEST_F(EditingTest, SettingAFieldNeedsARow)
{
    rows->MovePrevious();
    EXPECT_EQ(errorNumber([&] { name().Value("x"); }), errors::noCurrentRecord);
}

TEST_F(EditingTest, RowsWithoutKeyAreReadOnly)
{
    species->updatable = false;
    const auto joined = open(CursorType::OpenKeyset, LockType::Optimistic);
    EXPECT_EQ(id(*joined), Variant{1});
    EXPECT_EQ(errorNumber([&] { joined->AddNew(); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { joined->Delete(); }), errors::readOnlyRecordset);
    EXPECT_EQ(errorNumber([&] { joined->Fields().Item(0).Value(7); }), errors::readOnlyRecordset);
}

TEST_F(EditingTest, ClonesSeeEachOthersEdits)
{
    const auto clone = rows->Clone();
    clone->Fields().Item("NAME").Value("Rotfichte");
    clone->Update();
    EXPECT_EQ(name().Value(), Variant{"Rotfichte"});
    clone->Delete();
    rows->MoveFirst();
    EXPECT_EQ(id(*rows), Variant{2});
}

TEST_F(EditingTest, CursorOfABackEndThatOnlyReadsRefusesTheRest)
{
    struct Reader final : Cursor {
        std::vector<ColumnInfo> none;
        const std::vector<ColumnInfo>& columns() const override { return none; }
        bool next() override { return false; }
        Variant value(std::size_t) const override { return {}; }
        void restart() override {}
    };
    Reader cursor;
    std::vector<Variant> values;
    EXPECT_FALSE(cursor.updatable());
    for (const auto& operation : std::vector<std::function<void()>>{
             [&] { cursor.rowKey(); }, [&] { cursor.lockRow(1); }, [&] { cursor.unlockRow(); },
             [&] { cursor.updateRow(1, {}); }, [&] { cursor.insertRow({}); }, [&] { cursor.deleteRow(1); },
             [&] { cursor.readRow(1, values); }})
        EXPECT_EQ(errorNumber(operation), errors::readOnlyRecordset);
}

} // namespace tamarok::ado
