#include "server_test.h"

#include <random>

#include "support/scratch_folder.h"

namespace tamarok::odbc {

test::PostgresServer& postgres()
{
    static test::PostgresServer server;
    return server;
}

const std::string& tsqlText()
{
    static const test::TsqlDatabase database{"odbc"};
    return database.connectionText();
}

std::string serverName(const ::testing::TestParamInfo<TestServer>& server)
{
    switch (server.param) {
    case TestServer::Tsql: return "Tsql";
    case TestServer::Postgres: return "Postgres";
    case TestServer::Sqlite: break;
    }
    return "Sqlite";
}

void ServerTest::SetUp()
{
    if (isTsql() && !test::tsqlServer()) GTEST_SKIP() << "no T-SQL server";
    if (isPostgres() && !test::PostgresServer::isInstalled()) GTEST_SKIP() << "no PostgreSQL";
    connection = connect();
}

void ServerTest::TearDown()
{
    if (tables_.empty()) return;
    connection.reset();
    const auto last = connect();
    for (const std::string& table : tables_)
        last->Execute("DROP TABLE IF EXISTS " + table);
}

std::string ServerTest::word(const char* tsql, const char* postgres, const char* sqlite) const
{
    if (isTsql()) return tsql;
    return isPostgres() ? postgres : sqlite;
}

std::string ServerTest::connectionText() const
{
    static const test::ScratchFolder folder;
    if (isTsql()) return tsqlText();
    if (isPostgres()) return postgres().connectionText();
    return test::sqliteText((folder / "test.db").string());
}

std::string ServerTest::makeTable(const std::string& columns)
{
    static const std::string token = std::to_string(std::random_device{}());
    const std::string name = "tmt_" + token + "_" + std::to_string(tables_.size());
    tables_.push_back(name);
    connection->Execute("DROP TABLE IF EXISTS " + name);
    connection->Execute("CREATE TABLE " + name + " (" + columns + ")");
    return name;
}

std::string ServerTest::numbers(std::int64_t count, std::string_view columns) const
{
    const std::string last = std::to_string(count);
    const std::string list{columns};
    if (isTsql())
        return "SELECT TOP " + last + " " + list +
               " FROM (SELECT ROW_NUMBER() OVER (ORDER BY (SELECT NULL)) AS N FROM sys.all_columns a, sys.all_columns "
               "b, (SELECT TOP 10 1 AS N FROM sys.all_columns) c) q";
    if (isPostgres()) return "SELECT " + list + " FROM generate_series(1, " + last + ") AS q(N)";
    return "WITH RECURSIVE q(N) AS (SELECT 1 UNION ALL SELECT N + 1 FROM q WHERE N < " + last + ") SELECT " + list +
           " FROM q";
}

std::shared_ptr<ado::Recordset> ServerTest::open(std::string_view statement, ado::CursorType cursor,
                                                 ado::LockType lock) const
{
    auto rows = std::make_shared<ado::Recordset>();
    rows->Open(statement, connection, cursor, lock);
    return rows;
}

Variant ServerTest::scalar(std::string_view statement) const
{
    return open(statement)->Fields().Item(0).Value();
}

} // namespace tamarok::odbc
