#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "library_statements.h"
#include "row_contents.h"
#include "server_sample.h"
#include "support/errors.h"
#include "support/platforms.h"
#include "support/surroundings.h"
#include "support/tsql_server.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

/// The statements of the library on the T-SQL server, through the back end for ODBC: the rows are those that the
/// embedded database gives on the same data.
namespace tamarok::database {
namespace {

using test::FixedStatement;
using test::RowContents;

/// Columns of statements whose values differ on the server at hand, and why; everything else of these statements is
/// compared. A name that ends in "*" stands for all that begin so. Each row must be needed: the test fails otherwise.
struct Exception {
    std::string_view name;
    std::string_view column;
    std::string_view reason;
    bool everywhere = false; ///< on SQL Server too, not on the open T-SQL server alone
};

constexpr Exception exceptions[]{
    {"VERTRAG_GRID*", "DATE", "the open server ignores style 104 for smalldatetime"},
    {"VERTRAG_VALID*", "DATE", "the open server takes LEFT of a date from its ISO form"},
    {"VERTRAEGE_VALID*", "DATE", "the open server takes LEFT of a date from its ISO form"},
    {"time of the server", "", "the clocks of two machines", true},
};

bool speaksOf(const Exception& row, std::string_view name)
{
    if (row.name.ends_with('*')) return name.starts_with(row.name.substr(0, row.name.size() - 1));
    return row.name == name;
}

/// A sample database and its copy on the server, made once for all cases.
struct Databases {
    Databases() : embedded{embedded::connectInMemory()}
    {
        createReferenceDatabase(*embedded, {.logs = 500, .records = 100});
        for (const std::string& statement : test::callersTables())
            embedded->Execute(statement);
        server.emplace(embedded);
        const RowContents version = test::readContents("SELECT @@VERSION", server->connect());
        isOpenServer = version.rows.at(0).at(0).asString().starts_with("Babelfish");
    }

    ado::ConnectionRef embedded;
    std::optional<test::ServerSample> server;
    bool isOpenServer = false;
};

Platform quietPlatform()
{
    Platform platform = tamarok::test::platformOf("de-AT");
    platform.makeLocService = loc::makeLocService;
    platform.messageBox = std::make_shared<tamarok::test::RecordingMessageBox>();
    return platform;
}

class ServerStatements : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (tamarok::test::tsqlServer()) databases_ = std::make_unique<Databases>();
    }
    static void TearDownTestSuite() { databases_.reset(); }

    ServerStatements() : scope_{quietPlatform()} {}
    void SetUp() override
    {
        if (!databases_) GTEST_SKIP() << "no T-SQL server: no statement was run on one";
    }

    static const ado::ConnectionRef& sample() { return databases_->embedded; }
    static ado::ConnectionRef connect() { return databases_->server->connect(); }

    /// A session with the temporary tables that the library's callers fill.
    static ado::ConnectionRef connectWithCallersTables()
    {
        ado::ConnectionRef connection = connect();
        for (const std::string& statement : test::callersTables())
            connection->Execute(statement);
        return connection;
    }

    /// The rows on one of the databases, or its failure.
    struct Outcome {
        RowContents contents;
        std::optional<Error> failure;
    };
    static Outcome outcomeOf(const std::string& statement, const ado::ConnectionRef& connection)
    {
        try {
            return {test::readContents(statement, connection), std::nullopt};
        } catch (const Error& error) {
            return {{}, error};
        }
    }

    /// Both give the same rows, or both refuse the statement. @return "rows", "empty" or "refused"
    std::string compare(const FixedStatement& statement, const ado::ConnectionRef& server)
    {
        Outcome expected = outcomeOf(statement.text, sample());
        Outcome found = outcomeOf(statement.text, server);
        if (expected.failure && found.failure) return "refused";
        if (expected.failure || found.failure) {
            ADD_FAILURE() << statement.name << ": "
                          << (expected.failure ? std::string{"embedded: "} + expected.failure->what()
                                               : std::string{"server: "} + found.failure->what())
                          << "\n"
                          << statement.text.substr(0, 2000);
            return "refused";
        }
        const std::string kind = expected.contents.rows.empty() ? "empty" : "rows";
        for (const Exception& exception : exceptions) {
            if (!counts(exception) || !speaksOf(exception, statement.name)) continue;
            if (test::firstDifference(statement.text, expected.contents, found.contents)) met().insert(exception.name);
            for (std::size_t column = 0; column < expected.contents.columns.size(); ++column) {
                if (expected.contents.columns[column] != exception.column) continue;
                expected.contents.drop(column);
                found.contents.drop(column);
            }
        }
        const auto difference =
            test::firstDifference(statement.text, std::move(expected.contents), std::move(found.contents));
        EXPECT_FALSE(difference) << statement.name << ": " << *difference << "\n" << statement.text.substr(0, 2000);
        return kind;
    }

    /// Compares all. @return how many there are of each kind
    std::map<std::string, int> compareAll(const std::vector<FixedStatement>& statements,
                                          const ado::ConnectionRef& server)
    {
        std::map<std::string, int> kinds;
        for (const FixedStatement& statement : statements)
            ++kinds[compare(statement, server)];
        std::cout << statements.size() << " statements, " << kinds["rows"] << " with rows, " << kinds["refused"]
                  << " refused\n";
        return kinds;
    }

    /// What a statement does that is no query: the number of rows, and the contents of the table afterwards.
    void compareChange(const FixedStatement& statement, const ado::ConnectionRef& server)
    {
        const auto run = [&](const ado::ConnectionRef& connection) {
            try {
                return std::to_string(connection->Execute(statement.text)) + " rows";
            } catch (const Error& error) {
                return std::string{error.what()};
            }
        };
        EXPECT_EQ(run(sample()), run(server)) << statement.name << "\n" << statement.text;
        const std::string table = changedTable(statement.text);
        if (!table.empty()) compare({statement.name, "SELECT * FROM " + table}, server);
    }

    /// The table that an INSERT, UPDATE, DELETE or the procedure of options writes; "" for anything else.
    static std::string changedTable(std::string_view text)
    {
        if (text.starts_with("EXEC tmk_OPTIONEN_INS")) return "OPTIONEN";
        for (const std::string_view words : {"INSERT INTO ", "INSERT ", "UPDATE ", "DELETE FROM "}) {
            const std::size_t at = text.find(words);
            if (at == std::string_view::npos) continue;
            const std::string_view rest = text.substr(at + words.size());
            return std::string{rest.substr(0, rest.find_first_of(" ("))};
        }
        return {};
    }

    static bool counts(const Exception& row) { return row.everywhere || databases_->isOpenServer; }

    /// The exceptions that were needed so far.
    static std::set<std::string_view>& met()
    {
        static std::set<std::string_view> names;
        return names;
    }

    /// Expects that each exception whose name begins so was needed.
    static void expectMet(std::string_view front)
    {
        for (const Exception& row : exceptions) {
            const bool concerned = counts(row) && row.name.starts_with(front);
            EXPECT_TRUE(!concerned || met().contains(row.name)) << row.name << " no longer differs: " << row.reason;
        }
    }

private:
    static inline std::unique_ptr<Databases> databases_;
    PlatformScope scope_;
};

/// Each runs by itself and leaves both databases as they were.
TEST_F(ServerStatements, FixedStatements)
{
    const ado::ConnectionRef server = connectWithCallersTables();
    const std::vector<FixedStatement> statements = test::fixedStatements(sample());
    for (const FixedStatement& statement : statements) {
        sample()->BeginTrans();
        server->BeginTrans();
        if (statement.text.starts_with("SELECT "))
            compare(statement, server);
        else
            compareChange(statement, server);
        server->RollbackTrans();
        sample()->RollbackTrans();
    }
    std::cout << statements.size() << " statements\n";
}

/// The checks of the 21 code groups, whose texts lack a closing quote, are refused by both.
TEST_F(ServerStatements, Selections)
{
    auto kinds = compareAll(test::selectionStatements(sample()), connect());
    expectMet("VERTR");
    EXPECT_EQ(kinds["refused"], 21);
    EXPECT_GT(kinds["rows"], 10 * kinds["empty"]);
}

TEST_F(ServerStatements, ListViews)
{
    const std::vector<FixedStatement> statements = test::listStatements(sample());
    EXPECT_GT(statements.size(), 2900U);
    auto kinds = compareAll(statements, connectWithCallersTables());
    EXPECT_EQ(kinds["refused"], 0);
}

TEST_F(ServerStatements, LogColumns)
{
    const std::vector<FixedStatement> statements = test::logStatements(sample());
    EXPECT_GT(statements.size(), 1100U);
    auto kinds = compareAll(statements, connect());
    EXPECT_EQ(kinds["refused"], 0);
}

/// What locks, rights, options and timber send, one after the other on both. They are recorded on a database of their
/// own: a later statement names the number of a row that an earlier one has added.
TEST_F(ServerStatements, Operations)
{
    const ado::ConnectionRef scratch = embedded::connectInMemory();
    createReferenceDatabase(*scratch, {.logs = 50, .records = 20});
    const std::vector<FixedStatement> statements = test::operationStatements(scratch);
    const ado::ConnectionRef server = connect();
    for (FixedStatement statement : statements) {
        if (statement.text.find("GETDATE()") != std::string::npos) statement.name = "time of the server";
        if (statement.text.starts_with("SELECT "))
            compare(statement, server);
        else
            compareChange(statement, server);
    }
    expectMet("time");
    EXPECT_GT(statements.size(), 100U);
    std::cout << statements.size() << " statements\n";
}

TEST_F(ServerStatements, TwoStationsThatStoreTheSameModelsLeaveOneRowOfEach)
{
    constexpr int models = 100;
    const auto work = [](int station) {
        const ado::ConnectionRef connection = connect();
        for (int model = 0; model < models; ++model)
            connection->Execute("EXEC tmk_MODELS_INS 'NEW" + std::to_string(model) + "','STANDARD','" +
                                std::to_string(station) + "',1,0,0,0");
    };
    std::vector<std::jthread> stations;
    for (int station = 1; station <= 3; ++station)
        stations.emplace_back(work, station);
    stations.clear();
    ado::Recordset counts;
    counts.Open("SELECT COUNT(*), COUNT(DISTINCT RELATION) FROM MODELS WHERE RELATION LIKE 'NEW%'", connect());
    EXPECT_EQ(counts.Fields().Item(0).Value(), Variant{models});
    EXPECT_EQ(counts.Fields().Item(1).Value(), Variant{models});
}

/// The same calls on both leave the same rows.
TEST_F(ServerStatements, ModelsAreStoredAsOnTheEmbeddedDatabase)
{
    std::string widths;
    for (int column = 0; column < 300; ++column)
        widths += "1234,";
    const ado::ConnectionRef server = connect();
    const std::vector<std::string> calls{"'w','STANDARD','1,2',1,0,0,0",
                                         "'W ','standard','3',1,0,0,0",
                                         "'X','STANDARD','" + widths + "',1,0,0,0",
                                         "'Y','STANDARD','7," + widths + "',1,0,0,0",
                                         "'Z','STANDARD','" + std::string(1200, '7') + "',0,7,1,5",
                                         "'V','STANDARD',NULL,NULL,NULL,NULL,NULL",
                                         std::string{"'"}.append(70, 'R').append("','STANDARD','1',1,0,0,0")};
    for (const std::string& arguments : calls) {
        server->Execute("EXEC tmk_MODELS_INS " + arguments);
        sample()->Execute("EXEC tmk_MODELS_INS " + arguments);
    }
    const FixedStatement stored{"models", "SELECT RELATION,NAME,MODEL,ID_USER,ID_ACCESS_LEVELS,STANDARD,NICHT_ANDERBAR "
                                          "FROM MODELS WHERE LEN(RELATION) IN (1,60)"};
    EXPECT_EQ(compare(stored, server), "rows");
    for (const std::string arguments : {"'','STANDARD','1',1,0,0,0", "NULL,'STANDARD','1',1,0,0,0"})
        EXPECT_EQ(tamarok::test::failureOf([&] { server->Execute("EXEC tmk_MODELS_INS " + arguments); }).nativeError,
                  50000);
}

} // namespace
} // namespace tamarok::database
