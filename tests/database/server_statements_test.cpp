#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "catalogue/table_file.h"
#include "embedded/contract/server_session.h"
#include "fixed_statements.h"
#include "lists/list_views.h"
#include "resources.h"
#include "sql_batches.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/format.h"
#include "tamarok/list_catalogue.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

/// The schema, the procedures and the fixed statements on the T-SQL server that the environment variable
/// TAMAROK_TSQL_SERVER names by an ODBC connection text with the rights to create a database.
namespace tamarok::database {
namespace {

using embedded::contract::ServerSession;
using test::FixedStatement;

constexpr const char* databaseName = "tamarok_statements";

std::string serverText()
{
    const char* const value = std::getenv("TAMAROK_TSQL_SERVER");
    return value == nullptr ? std::string{} : value;
}

/// A value as a literal of the server. Its dates have no order to mistake.
std::string literal(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Null: return "NULL";
    case Variant::Kind::String: return "N'" + text::replaceAll(value.asString(), "'", "''") + "'";
    case Variant::Kind::Boolean: return value.asBoolean() ? "1" : "0";
    case Variant::Kind::Double: return convert::toPlainText(value.asDouble());
    case Variant::Kind::Date: {
        const Regional& english = Regional::named("en-GB");
        return "'" + format::date(value.asDate(), "yyyymmdd hh:nn:ss", english) + "'";
    }
    default: return convert::toText(value);
    }
}

/// The reference schema with the rows of a sample database, made once; dropped at the end.
class ServerStatements : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (serverText().empty()) return;
        sample_ = embedded::connectInMemory();
        createReferenceDatabase(*sample_, {.logs = 500, .records = 100});
        for (const std::string& statement : test::callersTables())
            sample_->Execute(statement);
        ServerSession admin{serverText()};
        admin.answer("DROP DATABASE " + std::string{databaseName});
        admin.run("CREATE DATABASE " + std::string{databaseName});
        const auto session = connect();
        for (const char* group : {"schema", "procedures"})
            for (const Resource& file : resources(group))
                for (const std::string_view batch : splitBatches(file.text))
                    session->run(std::string{batch});
        for (const Resource& file : resources("schema"))
            for (const std::string_view batch : splitBatches(file.text))
                copyRows(*session, tableOf(batch));
    }
    static void TearDownTestSuite()
    {
        sample_.reset();
        if (!serverText().empty()) ServerSession{serverText()}.answer("DROP DATABASE " + std::string{databaseName});
    }

    void SetUp() override
    {
        if (serverText().empty()) GTEST_SKIP() << "TAMAROK_TSQL_SERVER names no server: no statement was run on one.";
    }

    static std::unique_ptr<ServerSession> connect()
    {
        auto session = std::make_unique<ServerSession>(serverText());
        session->run("USE " + std::string{databaseName});
        return session;
    }

    /// A session with the temporary tables that the library's callers fill.
    static std::unique_ptr<ServerSession> connectWithCallersTables()
    {
        auto session = connect();
        for (const std::string& statement : test::callersTables())
            session->run(statement);
        return session;
    }

    static ado::ConnectionRef sample_;

private:
    /// Returns the name of the table that a batch makes, "" for any other batch.
    static std::string tableOf(std::string_view batch)
    {
        constexpr std::string_view words = "CREATE TABLE ";
        const std::size_t begin = batch.find(words);
        if (begin == std::string_view::npos) return {};
        const std::string_view name = batch.substr(begin + words.size());
        return std::string{name.substr(0, name.find(' '))};
    }

    static void copyRows(ServerSession& session, const std::string& table)
    {
        if (table.empty()) return;
        constexpr std::size_t rowsOfStatement = 200;
        ado::Recordset rows;
        rows.Open("SELECT * FROM " + table, sample_);
        std::string columns;
        for (std::int32_t i = 0; i < rows.Fields().Count(); ++i)
            columns.append(i == 0 ? "[" : ",[").append(rows.Fields().Item(i).Name()).append("]");
        // Refused for a table that gives no numbers itself, which is of no harm.
        session.answer("SET IDENTITY_INSERT " + table + " ON");
        const std::string front = "INSERT INTO " + table + " (" + columns + ") VALUES ";
        while (!rows.AtEOF()) {
            std::string statement;
            for (std::size_t i = 0; i < rowsOfStatement && !rows.AtEOF(); ++i, rows.MoveNext())
                statement += (i == 0 ? front : std::string{","}) + rowLiteral(rows.Fields());
            session.run(statement);
        }
        session.answer("SET IDENTITY_INSERT " + table + " OFF");
    }

    static std::string rowLiteral(const ado::FieldCollection& fields)
    {
        std::string row;
        for (std::int32_t i = 0; i < fields.Count(); ++i)
            row.append(i == 0 ? "(" : ",").append(literal(fields.Item(i).Value()));
        return row + ")";
    }
};
ado::ConnectionRef ServerStatements::sample_;

/// Rows of an answer, which are divided by " | ".
std::int64_t rowsOf(std::string_view answer)
{
    if (answer == "none") return 0;
    std::int64_t rows = 1;
    for (std::size_t at = 0; (at = answer.find(" | ", at)) != std::string_view::npos; ++at)
        ++rows;
    return rows;
}

std::int64_t rowsOf(const ado::ConnectionRef& connection, const std::string& statement)
{
    std::int64_t count = 0;
    ado::Recordset rows;
    for (rows.Open(statement, connection); !rows.AtEOF(); rows.MoveNext())
        ++count;
    return count;
}

/// Without an error and with as many rows as on the embedded database.
TEST_F(ServerStatements, FixedStatementsRunAsOnTheEmbeddedDatabase)
{
    const auto session = connectWithCallersTables();
    const std::vector<FixedStatement> statements = test::fixedStatements(sample_);
    for (const FixedStatement& statement : statements) {
        session->run("BEGIN TRANSACTION");
        const std::string answer = session->answer(statement.text);
        session->answer("ROLLBACK TRANSACTION");
        ASSERT_FALSE(answer.starts_with("error ")) << statement.name << ": " << answer << "\n" << statement.text;
        if (!statement.text.starts_with("SELECT ")) continue;
        EXPECT_EQ(rowsOf(answer), rowsOf(sample_, statement.text)) << statement.name << "\n" << statement.text;
    }
    std::cout << statements.size() << " statements\n";
}

/// The statements of the base selections with the fields that their own tests try them with.
std::vector<FixedStatement> selectionStatements(const ado::ConnectionRef& sample)
{
    TmkVar session;
    session.db_ADO = sample;
    const auto statement = [&](const std::string& key, const std::string& fields) {
        return Comm_Set{}.CreateSQL(session, key, text::replaceAll(fields, "|", "\t"));
    };
    std::map<std::string, std::string> lists;
    const auto rows = tamarok::test::readTable("selection_fields.tsv");
    for (const auto& row : rows)
        lists[row.at(0)] = row.at(1);
    std::vector<FixedStatement> all;
    for (const auto& row : rows) {
        std::string code;
        if (!row.at(2).empty()) {
            ado::Recordset offered;
            offered.Open(statement(row.at(2), lists.at(row.at(2))), sample);
            if (!offered.AtEOF()) code = convert::toText(offered.Fields().Item(0).Value());
        }
        all.push_back({row.at(0), statement(row.at(0), text::replaceAll(row.at(1), "{code}", code))});
    }
    return all;
}

/// As many rows; the checks of the 21 code groups, whose texts lack a closing quote, are refused by both.
TEST_F(ServerStatements, SelectionsRunAsOnTheEmbeddedDatabase)
{
    const auto session = connect();
    std::map<std::string, int> outcomes;
    for (const FixedStatement& statement : selectionStatements(sample_)) {
        const std::string answer = session->answer(statement.text);
        std::string expected;
        try {
            expected = std::to_string(rowsOf(sample_, statement.text));
        } catch (const Error&) {
            expected = "refused";
        }
        EXPECT_EQ(answer.starts_with("error ") ? "refused" : std::to_string(rowsOf(answer)), expected)
            << statement.name << "\n"
            << statement.text << "\n"
            << answer.substr(0, 60);
        ++outcomes[expected == "refused" ? "refused" : expected == "0" ? "empty" : "rows"];
    }
    EXPECT_EQ(outcomes["refused"], 21);
    EXPECT_GT(outcomes["rows"], 10 * outcomes["empty"]);
    std::cout << outcomes["rows"] << " selections with rows, " << outcomes["empty"] << " without\n";
}

/// The statements of a list view: with all columns of a type, and with each one alone, together with what names the
/// record of a row.
std::vector<FixedStatement> listStatements(const ado::ConnectionRef& sample)
{
    TmkVar session;
    session.db_ADO = sample;
    session.strDateFormat = "YYYY-MM-DD";
    session.strLanguage = "GERMAN";
    std::vector<FixedStatement> all;
    std::string type;
    sample->listen([&](std::string_view text) {
        // What else is sent reads labels and options.
        const std::string base{catalogue::listTypeInfo(type).base};
        if (text.starts_with("SELECT ") && text.find(" FROM " + base) != std::string_view::npos)
            all.push_back({type, std::string{text}});
    });
    for (const std::string_view key : catalogue::listTypeKeys()) {
        if (key == "LOG") continue;
        type = key;
        std::vector<std::vector<std::int16_t>> lists(1);
        for (const catalogue::ColumnInfo& column : catalogue::columnsOf(key)) {
            lists.front().push_back(column.id);
            lists.push_back({column.id});
        }
        for (const std::vector<std::int16_t>& ids : lists) {
            tamarok::test::ListOnForm list{ids};
            // A column that does not bring the tables that the conditions of its list read is the caller's matter.
            try {
                Comm_CSel{}.FillListview(session, "R", key, *list.view, "");
            } catch (const Error&) {
                all.pop_back();
            }
        }
    }
    sample->listen({});
    return all;
}

TEST_F(ServerStatements, ListViewsRunAsOnTheEmbeddedDatabase)
{
    Platform platform;
    platform.makeLocService = loc::makeLocService;
    const PlatformScope scope{platform};
    const auto session = connectWithCallersTables();
    const std::vector<FixedStatement> statements = listStatements(sample_);
    EXPECT_GT(statements.size(), 2900U);
    for (const FixedStatement& statement : statements) {
        const std::string answer = session->answer(statement.text);
        EXPECT_FALSE(answer.starts_with("error ")) << statement.name << ": " << answer << "\n" << statement.text;
        if (answer.starts_with("error ")) continue;
        EXPECT_EQ(rowsOf(answer), rowsOf(sample_, statement.text)) << statement.name << "\n" << statement.text;
    }
    std::cout << statements.size() << " statements\n";
}

TEST_F(ServerStatements, TwoStationsThatStoreTheSameModelsLeaveOneRowOfEach)
{
    constexpr int models = 100;
    const auto work = [](int station) {
        const auto session = connect();
        for (int model = 0; model < models; ++model)
            session->run("EXEC tmk_MODELS_INS 'NEW" + std::to_string(model) + "','STANDARD','" +
                         std::to_string(station) + "',1,0,0,0");
    };
    std::vector<std::jthread> stations;
    for (int station = 1; station <= 3; ++station)
        stations.emplace_back(work, station);
    stations.clear();
    const auto session = connect();
    EXPECT_EQ(session->answer("SELECT COUNT(*), COUNT(DISTINCT RELATION) FROM MODELS WHERE RELATION LIKE 'NEW%'"),
              std::to_string(models) + ", " + std::to_string(models));
}

/// The same calls on both leave the same rows.
TEST_F(ServerStatements, ModelsAreStoredAsOnTheEmbeddedDatabase)
{
    std::string widths;
    for (int column = 0; column < 300; ++column)
        widths += "1234,";
    const auto session = connect();
    const std::vector<std::string> calls{"'w','STANDARD','1,2',1,0,0,0",
                                         "'W ','standard','3',1,0,0,0",
                                         "'X','STANDARD','" + widths + "',1,0,0,0",
                                         "'Y','STANDARD','7," + widths + "',1,0,0,0",
                                         "'Z','STANDARD','" + std::string(1200, '7') + "',0,7,1,5",
                                         "'V','STANDARD',NULL,NULL,NULL,NULL,NULL",
                                         "'" + std::string(70, 'R') + "','STANDARD','1',1,0,0,0"};
    for (const std::string& arguments : calls) {
        session->run("EXEC tmk_MODELS_INS " + arguments);
        sample_->Execute("EXEC tmk_MODELS_INS " + arguments);
    }
    const std::string from = " FROM MODELS WHERE LEN(RELATION) IN (1,60)";
    for (const std::string columns : {"COUNT(*)", "SUM(LEN(MODEL))", "SUM(ID_USER)", "SUM(ID_ACCESS_LEVELS)",
                                      "SUM(CAST(STANDARD AS INT))", "SUM(CAST(NICHT_ANDERBAR AS INT))"}) {
        ado::Recordset rows;
        rows.Open("SELECT " + columns + from, sample_);
        EXPECT_EQ(session->answer("SELECT " + columns + from), convert::toText(rows.Fields().Item(0).Value()))
            << columns;
    }
    for (const std::string arguments : {"'','STANDARD','1',1,0,0,0", "NULL,'STANDARD','1',1,0,0,0"})
        EXPECT_EQ(session->answer("EXEC tmk_MODELS_INS " + arguments), "error 50000");
}

} // namespace
} // namespace tamarok::database
