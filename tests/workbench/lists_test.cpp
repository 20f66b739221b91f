#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "list/visible_services.h"
#include "lists/csv_export.h"
#include "lists/list_columns.h"
#include "lists/record_list.h"
#include "session.h"
#include "support/errors.h"
#include "support/platforms.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/list_catalogue.h"

// Lists as the windows read them: by the keys of their rows, in groups, with totals, and as a file.

namespace tamarok::workbench {
namespace {

class WorkbenchLists : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample_ = embedded::connectInMemory();
        database::createReferenceDatabase(*sample_, {.logs = 700, .records = 60});
        cli::prepareList("BBLTN", cli::commandSession(sample_));
    }
    static void TearDownTestSuite() { sample_.reset(); }

    static Platform platform()
    {
        Platform platform = test::platformOf("de-AT");
        platform.makeLocService = loc::makeLocService;
        return platform;
    }

    static ListSetup setupOf(const std::string& type, std::vector<std::int16_t> columns)
    {
        ListSetup setup;
        setup.type = type;
        setup.columns = std::move(columns);
        return setup;
    }

    static std::vector<Row> allRows(const ListStatements& list)
    {
        std::vector<Row> rows;
        readAllRows(sample_, list.rows(), {}, [&](Row row) { rows.push_back(std::move(row)); });
        return rows;
    }

    /// Reads a list by its keys in pieces that do not divide its length.
    static std::vector<Row> rowsByKeys(const ListStatements& list)
    {
        constexpr std::size_t piece = 37;
        const RowKeys keys = RowKeys::read(sample_, list, {});
        std::vector<Row> rows;
        for (std::size_t first = 0; first < keys.count(); first += piece)
            for (const std::optional<Row>& row : readRows(sample_, list, keys, first, piece))
                rows.push_back(row.value());
        return rows;
    }

    static ado::ConnectionRef sample_;
    TmkVar session = cli::commandSession(sample_);
    PlatformScope scope{platform()};
};
ado::ConnectionRef WorkbenchLists::sample_;

TEST_F(WorkbenchLists, FirstRowsAreThoseOfTheList)
{
    const ListStatements list{setupOf("LOG", {1, 20, 36}), cli::commandSession(sample_)};
    const std::vector<Row> all = allRows(list);
    const FirstRows first = readFirstRows(sample_, list, 40, {});
    ASSERT_EQ(first.rows.size(), 40U);
    for (std::size_t row = 0; row < first.rows.size(); ++row)
        EXPECT_EQ(first.rows[row], all[row]) << row;
    EXPECT_TRUE(areFirst(first, RowKeys::read(sample_, list, {}), 40));
    const FirstRows whole = readFirstRows(sample_, list, 5000, {});
    EXPECT_EQ(whole.rows.size(), all.size());
    EXPECT_TRUE(areFirst(whole, RowKeys::read(sample_, list, {}), 5000));
}

TEST_F(WorkbenchLists, FirstRowsThatHaveChangedMeanwhileAreNotTakenForTheFirstOnes)
{
    const ListStatements list{setupOf("LOG", {1, 20, 36}), cli::commandSession(sample_)};
    const RowKeys keys = RowKeys::read(sample_, list, {});
    FirstRows first = readFirstRows(sample_, list, 40, {});
    std::swap(first.keys[3], first.keys[4]);
    EXPECT_FALSE(areFirst(first, keys, 40)) << "another order";
    std::swap(first.keys[3], first.keys[4]);
    first.keys.pop_back();
    EXPECT_FALSE(areFirst(first, keys, 40)) << "a row has come";
}

TEST_F(WorkbenchLists, RowsByKeysAreTheRowsOfTheListForEveryType)
{
    for (const std::string_view key : catalogue::listTypeKeys()) {
        const std::string type{key};
        const std::vector<ListColumn> columns = listColumns(type, session);
        ListSetup setup = setupOf(type, firstColumns(type, columns));
        ASSERT_GE(setup.columns.size(), 4U) << type;
        const ListStatements list{setup, session};
        const std::vector<Row> rows = allRows(list);
        EXPECT_FALSE(rows.empty()) << type;
        // Its first measures are computed over the whole list.
        ASSERT_EQ(list.hasKeys(), type != "ARTIKEL") << type;
        if (list.hasKeys()) {
            EXPECT_TRUE(rowsByKeys(list) == rows) << type;
        }
    }
}

TEST_F(WorkbenchLists, OrderedListsHaveTheSameRowsByKeys)
{
    for (const std::string_view key : catalogue::listTypeKeys()) {
        const std::string type{key};
        const std::vector<ListColumn> columns = listColumns(type, session);
        ListSetup setup = setupOf(type, firstColumns(type, columns));
        for (const bool descending : {false, true}) {
            setup.order = {setup.columns.at(1)};
            setup.descending = descending;
            const ListStatements list{setup, session};
            if (list.hasKeys()) {
                EXPECT_TRUE(rowsByKeys(list) == allRows(list)) << type;
            }
        }
    }
}

TEST_F(WorkbenchLists, RecordsWithSeveralRowsHaveAllOfThem)
{
    // The positions of a record multiply its rows.
    ListSetup setup = setupOf("BBHAB", {});
    std::size_t most = 0;
    for (const catalogue::ColumnInfo& column : catalogue::columnsOf("BBHAB")) {
        setup.columns = {1, column.id};
        const ListStatements list{setup, session};
        const std::vector<Row> rows = allRows(list);
        most = std::max(most, rows.size());
        ASSERT_EQ(rowsByKeys(list).size(), rows.size()) << column.id;
    }
    EXPECT_GT(most, 60U);
}

TEST_F(WorkbenchLists, DeletedRecordLeavesItsRowEmpty)
{
    const ListStatements list{setupOf("BBHUNDE", {1, 2}), session};
    const RowKeys keys = RowKeys::read(sample_, list, {});
    sample_->BeginTrans();
    sample_->Execute("DELETE FROM BB_JAGDHUNDE WHERE ID = " + keys.text(3));
    const auto rows = readRows(sample_, list, keys, 0, 10);
    sample_->RollbackTrans();
    ASSERT_EQ(rows.size(), 10U);
    EXPECT_FALSE(rows[3]);
    EXPECT_TRUE(rows[2] && rows[4]);
}

TEST_F(WorkbenchLists, RowsBeyondTheEndAreNone)
{
    const ListStatements list{setupOf("BBHUNDE", {1}), session};
    const RowKeys keys = RowKeys::read(sample_, list, {});
    EXPECT_TRUE(readRows(sample_, list, keys, keys.count(), 5).empty());
    EXPECT_EQ(readRows(sample_, list, keys, keys.count() - 2, 5).size(), 2U);
}

TEST_F(WorkbenchLists, ColumnsComputedOverTheWholeListAreNotReadByKeys)
{
    EXPECT_FALSE(ListStatements(setupOf("ARTIKEL", {459}), session).hasKeys());
}

TEST_F(WorkbenchLists, FilterLeavesTheRowsWithTheValue)
{
    ListSetup setup = setupOf("LOG", {1, 32, 36});
    const std::vector<Row> all = allRows(ListStatements{setup, session});
    const Variant species = all.at(5).at(1);
    setup.filters = {{32, species}};
    const std::vector<Row> some = rowsByKeys(ListStatements{setup, session});
    const auto expected = std::ranges::count_if(all, [&](const Row& row) { return row[1] == species; });
    EXPECT_EQ(static_cast<std::ptrdiff_t>(some.size()), expected);
    EXPECT_LT(some.size(), all.size());
    for (const Row& row : some)
        EXPECT_EQ(row[1], species);
}

TEST_F(WorkbenchLists, FilterOfAColumnThatIsNotShownJoinsItsTable)
{
    for (const std::string_view key : catalogue::listTypeKeys()) {
        const std::string type{key};
        const std::vector<ListColumn> columns = listColumns(type, session);
        const auto last = std::ranges::find_if(columns.rbegin(), columns.rend(), &ListColumn::canFilter);
        if (last == columns.rend()) continue;
        ListSetup setup = setupOf(type, {columns.front().id});
        setup.filters = {{last->id, Null{}}};
        EXPECT_NO_THROW(allRows(ListStatements(setup, session))) << type << " " << last->id;
    }
}

TEST_F(WorkbenchLists, TypesWithoutFilterOfferNone)
{
    for (const char* type : {"VERTRAG", "WAREN", "RJ"})
        for (const ListColumn& column : listColumns(type, session))
            EXPECT_FALSE(column.canFilter) << type << " " << column.id;
}

TEST_F(WorkbenchLists, TotalsAreTheSumsOfTheMeasures)
{
    const ListStatements list{setupOf("LOG", {1, 36, 32}), session};
    const std::string totals = list.totals(session);
    double sum = 0;
    for (const Row& row : allRows(list))
        sum += row[1].isNull() ? 0.0 : convert::toDouble(row[1]);
    Row read;
    readAllRows(sample_, totals, {}, [&](Row row) { read = std::move(row); });
    ASSERT_EQ(read.size(), 1U);
    EXPECT_NEAR(convert::toDouble(read[0]), sum, 1e-6);
    EXPECT_EQ(ListStatements(setupOf("LOG", {1, 32}), session).totals(session), "");
}

TEST_F(WorkbenchLists, GroupedListHasOneRowForEachCombination)
{
    ListSetup setup = setupOf("LOG", {32, 36});
    setup.grouped = true;
    setup.order = {32};
    std::set<std::string> species;
    for (const Row& row : allRows(ListStatements{setup, session}))
        EXPECT_TRUE(species.insert(cellText(row[0], {})).second);
    EXPECT_GT(species.size(), 3U);
}

TEST_F(WorkbenchLists, ValuesOfAColumnAreOfferedInTheirOrder)
{
    const ListStatements list{setupOf("LOG", {1}), session};
    std::vector<std::string> values;
    readAllRows(sample_, list.values(32, 100, session), {},
                [&](const Row& row) { values.push_back(cellText(row[0], {})); });
    EXPECT_GT(values.size(), 3U);
    EXPECT_TRUE(std::ranges::is_sorted(values));
}

TEST_F(WorkbenchLists, LevelLimitsWhatIsSeen)
{
    const ListSetup setup = setupOf("LOG", {1});
    const std::size_t all = allRows(ListStatements{setup, session}).size();
    session.ID_Access_Levels = 18;
    session.strID_Access_Levels = "18";
    const std::size_t own = allRows(ListStatements{setup, session}).size();
    EXPECT_LT(own, all);
    for (const std::string_view type : catalogue::listTypeKeys())
        EXPECT_NO_THROW(
            allRows(ListStatements(setupOf(std::string{type}, {catalogue::columnsOf(type)[0].id}), session)))
            << type;
}

TEST_F(WorkbenchLists, StoppedReadingEndsAtOnce)
{
    std::stop_source source;
    source.request_stop();
    const ListStatements list{setupOf("LOG", {1}), session};
    EXPECT_THROW(RowKeys::read(sample_, list, source.get_token()), Stopped);
}

TEST_F(WorkbenchLists, ExportSeparatesByTheRegionalSettings)
{
    const std::vector<ListColumn> all = listColumns("LOG", session);
    const auto column = [&](std::int16_t id) { return *std::ranges::find(all, id, &ListColumn::id); };
    const ListStatements list{setupOf("LOG", {1, 2, 36}), session};
    std::string text;
    const std::size_t count = exportCsv(sample_, list, {column(1), column(2), column(36)},
                                        [&](std::string_view piece) { text += piece; }, {}, {});
    EXPECT_EQ(count, allRows(list).size());
    EXPECT_EQ(std::ranges::count(text, '\n'), static_cast<std::ptrdiff_t>(count) + 1);
    EXPECT_TRUE(text.starts_with("\xEF\xBB\xBF" + column(1).header + ";")) << text.substr(0, 60);
    const std::string row = text.substr(text.find('\n') + 1, 40);
    EXPECT_NE(row.find(','), std::string::npos) << row;
}

TEST_F(WorkbenchLists, CellsHaveTheFormOfTheirColumn)
{
    ListColumn volume;
    volume.pattern = "#,##0.00";
    EXPECT_EQ(cellText(1234.5, volume), "1.234,50");
    EXPECT_EQ(cellText(Null{}, volume), "");
    EXPECT_EQ(cellText("Fichte", ListColumn{}), "Fichte");
}

TEST_F(WorkbenchLists, UnknownTypeIsAnError)
{
    EXPECT_EQ(test::errorNumber([] { recordKeyOf("NONE"); }), errors::invalidArgument);
}

} // namespace
} // namespace tamarok::workbench
