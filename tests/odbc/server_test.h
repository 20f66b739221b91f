#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include "odbc/support/servers.h"
#include "support/errors.h"
#include "tamarok_odbc/connect.h"

#include "tamarok/ado.h"

namespace tamarok::odbc {

using test::errorNumber;
using test::expectError;
using test::failureOf;

enum class TestServer { Tsql, Postgres, Sqlite };

/// The PostgreSQL server of this program, started at the first use.
test::PostgresServer& postgres();

/// The connection text of a database on the T-SQL server that this process has for itself.
const std::string& tsqlText();

/// A connection to one of the servers; the test is skipped where there is none.
class ServerTest : public ::testing::TestWithParam<TestServer> {
protected:
    void SetUp() override;

    bool isTsql() const { return GetParam() == TestServer::Tsql; }
    bool isPostgres() const { return GetParam() == TestServer::Postgres; }
    /// The word of the server: of T-SQL, PostgreSQL, SQLite.
    std::string word(const char* tsql, const char* postgres, const char* sqlite) const;
    std::string connectionText() const;
    ado::ConnectionRef connect() const { return connectText(connectionText()); }

    /// Makes a table anew that is dropped at the end. @return its name
    std::string makeTable(const std::string& columns);
    /// "SELECT ..." of `count` rows with one column N, from 1 on.
    std::string numbers(std::int64_t count, std::string_view columns = "N") const;
    std::shared_ptr<ado::Recordset> open(std::string_view statement,
                                         ado::CursorType cursor = ado::CursorType::OpenForwardOnly,
                                         ado::LockType lock = ado::LockType::ReadOnly) const;
    Variant scalar(std::string_view statement) const;
    void TearDown() override;

    ado::ConnectionRef connection;

private:
    std::vector<std::string> tables_;
};

std::string serverName(const ::testing::TestParamInfo<TestServer>& server);

} // namespace tamarok::odbc
