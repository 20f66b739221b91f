#include <gtest/gtest.h>

#include "fixed_statements.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

using test::FixedStatement;

/// Rows that a statement gives, or changes.
std::int64_t rowsOf(const ado::ConnectionRef& connection, const std::string& text)
{
    if (!text.starts_with("SELECT ")) return connection->Execute(text);
    std::int64_t count = 0;
    ado::Recordset rows;
    for (rows.Open(text, connection); !rows.AtEOF(); rows.MoveNext())
        ++count;
    return count;
}

/// Every statement runs by itself and leaves the database as it was.
TEST(FixedStatements, RunOnTheSampleDatabase)
{
    const ado::ConnectionRef connection = embedded::connectInMemory();
    createReferenceDatabase(*connection, {.logs = 500, .records = 100});
    for (const std::string& statement : test::callersTables())
        connection->Execute(statement);
    const std::vector<FixedStatement> statements = test::fixedStatements(connection);
    EXPECT_EQ(statements.size(), 553U);
    for (const FixedStatement& statement : statements) {
        connection->BeginTrans();
        try {
            const std::int64_t rows = rowsOf(connection, statement.text);
            const bool enough = rows > 0 || statement.expect == FixedStatement::Expect::Runs;
            EXPECT_TRUE(enough) << statement.name << "\n" << statement.text;
        } catch (const Error& error) {
            ADD_FAILURE() << statement.name << ": " << error.description << "\n" << statement.text;
        }
        connection->RollbackTrans();
    }
}

} // namespace
} // namespace tamarok::database
