#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "list/visible_services.h"
#include "lists/list_columns.h"
#include "lists/record_list.h"
#include "server_sample.h"
#include "session.h"
#include "support/platforms.h"
#include "support/tsql_server.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/convert.h"
#include "tamarok/list_catalogue.h"

// The lists of the windows on a server: what the embedded database shows, the server shows too.

namespace tamarok::workbench {
namespace {

class ServerLists : public testing::TestWithParam<std::string_view> {
protected:
    static void SetUpTestSuite()
    {
        if (!test::tsqlServer()) return;
        embedded_ = embedded::connectInMemory();
        database::createReferenceDatabase(*embedded_, {.logs = 300, .records = 30});
        server_ = std::make_unique<database::test::ServerSample>(embedded_);
        connection_ = server_->connect();
    }
    static void TearDownTestSuite()
    {
        connection_.reset();
        server_.reset();
        embedded_.reset();
    }
    static Platform platform()
    {
        Platform platform = test::platformOf("de-AT");
        platform.makeLocService = loc::makeLocService;
        return platform;
    }

    /// What a window shows of a list: the cells of all rows, read by their keys or as a whole, and the totals.
    struct Shown {
        std::vector<std::vector<std::string>> rows;
        std::vector<std::string> totals;
    };
    static Shown show(const ado::ConnectionRef& connection, ListSetup setup)
    {
        const TmkVar session = cli::commandSession(connection);
        cli::prepareList(setup.type, session);
        const std::vector<ListColumn> all = listColumns(setup.type, session);
        if (setup.columns.empty()) setup.columns = firstColumns(setup.type, all);
        const ListStatements list{setup, session};
        Shown shown;
        const auto add = [&](const Row& row) { shown.rows.push_back(texts(row, setup.columns, all)); };
        if (list.hasKeys()) {
            const RowKeys keys = RowKeys::read(connection, list, {});
            if (setup.order.empty()) {
                EXPECT_TRUE(areFirst(readFirstRows(connection, list, 20, {}), keys, 20));
            }
            for (const std::optional<Row>& row : readRows(connection, list, keys, 0, keys.count()))
                add(row.value());
        } else {
            readAllRows(connection, list.rows(), {}, add);
        }
        std::ranges::sort(shown.rows); // rows of one key have no order
        if (const std::string totals = list.totals(session); !totals.empty())
            readAllRows(connection, totals, {}, [&](const Row& row) {
                for (const Variant& value : row)
                    shown.totals.push_back(value.isNull() ? "" : std::to_string(convert::toDouble(value)));
            });
        return shown;
    }
    static std::vector<std::string> texts(const Row& row, const std::vector<std::int16_t>& ids,
                                          const std::vector<ListColumn>& all)
    {
        std::vector<std::string> cells;
        for (std::size_t place = 0; place < ids.size(); ++place)
            cells.push_back(cellText(row.at(place), *std::ranges::find(all, ids[place], &ListColumn::id)));
        return cells;
    }
    static void expectAlike(const ListSetup& setup)
    {
        const Shown here = show(embedded_, setup);
        const Shown there = show(connection_, setup);
        EXPECT_FALSE(here.rows.empty());
        EXPECT_EQ(there.rows, here.rows);
        EXPECT_EQ(there.totals, here.totals);
    }

    static ado::ConnectionRef embedded_;
    static std::unique_ptr<database::test::ServerSample> server_;
    static ado::ConnectionRef connection_;
    PlatformScope scope{platform()};
};
ado::ConnectionRef ServerLists::embedded_;
std::unique_ptr<database::test::ServerSample> ServerLists::server_;
ado::ConnectionRef ServerLists::connection_;

TEST_P(ServerLists, ShowTheSameRowsAndTotals)
{
    if (!connection_) GTEST_SKIP() << "no T-SQL server";
    ListSetup setup;
    setup.type = GetParam();
    expectAlike(setup);
}

INSTANTIATE_TEST_SUITE_P(Types, ServerLists, testing::ValuesIn(catalogue::listTypeKeys()),
                         [](const auto& type) { return std::string{type.param}; });

TEST_F(ServerLists, FilteredSortedAndGroupedLogsAreAlike)
{
    if (!connection_) GTEST_SKIP() << "no T-SQL server";
    ListSetup setup;
    setup.filters = {{22, Variant{"FI"}}};
    setup.order = {36};
    setup.descending = true;
    expectAlike(setup);
    setup.columns = {22, 32, 36};
    setup.order = {32};
    setup.grouped = true;
    expectAlike(setup);
}

} // namespace
} // namespace tamarok::workbench
