#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/table_file.h"
#include "support/errors.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_csel.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok {
namespace {

/// Every column of the log list, with its joins, run on the reference database.
class LogColumnsOnDatabase : public ::testing::TestWithParam<std::tuple<std::string, bool>> {
protected:
    static void SetUpTestSuite()
    {
        connection() = embedded::connectInMemory();
        database::ReferenceOptions small;
        small.logs = 200;
        small.records = 0;
        database::createReferenceDatabase(*connection(), small);
    }
    static void TearDownTestSuite() { connection() = nullptr; }

    LogColumnsOnDatabase() : scope_{makePlatform()}
    {
        session.db_ADO = connection();
        session.strLanguage = "GERMAN";
        session.bolOracle = std::get<1>(GetParam());
        for (const auto& row : test::readTable("log_columns_expected.tsv")) {
            ids.push_back(static_cast<std::int16_t>(std::stoi(row.at(0))));
        }
    }

    static Platform makePlatform()
    {
        Platform platform;
        platform.regional = Regional::named("de-AT");
        platform.makeLocService = loc::makeLocService;
        return platform;
    }
    static ado::ConnectionRef& connection()
    {
        static ado::ConnectionRef shared;
        return shared;
    }

    std::string from(std::int16_t id) const { return csel.GetFrom("LOG", id, "", version, session); }

    std::string select(std::int16_t id, bool grouped) const
    {
        std::string selected;
        return csel.CorrectStrSelect("LOG", std::vector{id}, selected, "NULL", version, session, "", from(id), grouped);
    }

    /// Reads to the end, so that expressions are not only compiled.
    void run(const std::string& statement, std::int16_t id) const
    {
        try {
            ado::Recordset rows;
            rows.Open(statement, session.db_ADO);
            while (!rows.AtEOF()) {
                static_cast<void>(rows.Fields().Item(0).Value());
                rows.MoveNext();
            }
            rows.Close();
        } catch (const Error& error) {
            ADD_FAILURE() << id << ": " << error.what() << "\n" << statement;
        }
    }

    TmkVar session;
    Comm_CSel csel;
    std::string version = std::get<0>(GetParam());
    std::vector<std::int16_t> ids;

private:
    PlatformScope scope_;
};

/// Its expression lacks the first operand, as the contract requires.
constexpr std::int16_t invalidText = 980;

TEST_P(LogColumnsOnDatabase, EveryColumnInADetailList)
{
    ASSERT_EQ(ids.size(), 580U);
    for (const std::int16_t id : ids) {
        if (id != invalidText) {
            run("SELECT " + select(id, false) + " FROM " + from(id), id);
        }
    }
}

/// The server sorts neither ntext nor text.
TEST_P(LogColumnsOnDatabase, EveryColumnSortsADetailList)
{
    for (const std::int16_t id : ids) {
        if (id != invalidText) {
            run("SELECT " + select(id, false) + " FROM " + from(id) + " ORDER BY 1", id);
        }
    }
}

TEST_P(LogColumnsOnDatabase, EveryColumnInAnAggregateList)
{
    for (const std::int16_t id : ids) {
        if (id == invalidText) {
            continue;
        }
        const std::string group = csel.GetGroupByClause2(id, version, session);
        const std::string order = csel.OrderBy("1", csel.GetOrderByClause2(id, version, session));
        run("SELECT " + select(id, true) + " FROM " + from(id) + (group.empty() ? "" : " GROUP BY " + group) + order,
            id);
    }
}

TEST_P(LogColumnsOnDatabase, ColumnsTogetherInOneList)
{
    std::string body;
    for (const std::int16_t id : ids)
        body = csel.GetFrom("LOG", id, body, version, session);
    run("SELECT COUNT(*) FROM " + body + " WHERE LOGS.STK < 0", ids.back());
}

TEST_P(LogColumnsOnDatabase, TheInvalidColumnIsRefusedByTheDatabase)
{
    for (const bool grouped : {false, true}) {
        ado::Recordset rows;
        EXPECT_EQ(test::errorNumber([&] {
                      rows.Open("SELECT " + select(invalidText, grouped) + " FROM " + from(invalidText),
                                session.db_ADO);
                  }),
                  errors::statementRefused);
    }
}

INSTANTIATE_TEST_SUITE_P(Versions, LogColumnsOnDatabase,
                         ::testing::Combine(::testing::Values("R", "A1", "A8"), ::testing::Bool()),
                         [](const auto& instance) {
                             return std::get<0>(instance.param) +
                                    (std::get<1>(instance.param) ? "_Oracle" : "_SqlServer");
                         });

} // namespace
} // namespace tamarok
