#include "backend_fixture.h"

namespace tamarok::ado::backend {

class BackendStatements : public BackendTest {
protected:
    BackendStatements()
    {
        connection->listen([this](std::string_view statement) { told.emplace_back(statement); });
    }

    std::vector<std::string> told;
};

TEST_F(BackendStatements, ExecuteCountsTheRowsTouched)
{
    fill(3);
    EXPECT_EQ(connection->Execute("UPDATE " + table + " SET AMOUNT = 1 WHERE WHOLE > 1"), 2);
    EXPECT_EQ(connection->Execute("DELETE FROM " + table), 3);
    EXPECT_EQ(connection->Execute("DELETE FROM " + table), 0);
}

TEST_F(BackendStatements, BatchRunsAllItsStatements)
{
    if (const auto reason = quirk("no_batches")) GTEST_SKIP() << *reason;
    connection->Execute(insert("WHOLE", "1") + words.next + insert("WHOLE", "2") + "; " + insert("WHOLE", "3"));
    EXPECT_EQ(count(), 3);
}

TEST_F(BackendStatements, OpenGivesTheFirstResultSetOfABatch)
{
    if (const auto reason = quirk("no_batches")) GTEST_SKIP() << *reason;
    const auto rows = open(words.noCount + insert("WHOLE", "4") + words.next + select("WHOLE"));
    ASSERT_EQ(rows->State(), ObjectState::Open);
    EXPECT_EQ(rows->Fields().Item(0).Value(), Variant{4});
}

TEST_F(BackendStatements, StatementWithoutResultSetLeavesTheRecordsetClosed)
{
    EXPECT_EQ(open(insert("WHOLE", "4"))->State(), ObjectState::Closed);
    EXPECT_EQ(count(), 1);
}

TEST_F(BackendStatements, ExecuteDropsAResultSet)
{
    fill(2);
    connection->Execute(select("*"));
    EXPECT_EQ(count(), 2);
}

TEST_F(BackendStatements, ProcedureTakesItsParameters)
{
    if (const auto reason = quirk("no_procedures")) GTEST_SKIP() << *reason;
    Command command;
    command.ActiveConnection = connection;
    command.CommandType = CommandType::StoredProcedure;
    command.CommandText = context->insertProcedure(*connection, table);
    command.Parameters() = {command.CreateParameter("", DataType::VarWChar, ParameterDirection::Input, 40, "O'Neill 🌲"),
                            command.CreateParameter("", DataType::BigInt, ParameterDirection::Input, 8, 12)};
    told.clear();
    command.Execute();
    EXPECT_EQ(told, std::vector<std::string>{"EXEC " + command.CommandText + " 'O''Neill 🌲', 12"});
    EXPECT_EQ(open(select("SHORT_TEXT, WHOLE"))->GetRows().elements(), (std::vector<Variant>{"O'Neill 🌲", 12}));
}

TEST_F(BackendStatements, UnknownProcedureIsRefused)
{
    Command command;
    command.ActiveConnection = connection;
    command.CommandType = CommandType::StoredProcedure;
    command.CommandText = "tmt_no_such_procedure";
    const Error failure = failureOf([&] { command.Execute(); });
    EXPECT_EQ(failure.number, errors::statementRefused);
    EXPECT_NE(failure.description.find("tmt_no_such_procedure"), std::string::npos) << failure.description;
}

TEST_F(BackendStatements, ListenerHearsEachStatementOnceAndExactly)
{
    const std::string statement = "  " + select("WHOLE", "WHERE  WHOLE = 1 -- as it stands");
    open(statement);
    connection->Execute(insert("WHOLE", "1"));
    EXPECT_EQ(told, (std::vector<std::string>{statement, insert("WHOLE", "1")}));
}

TEST_F(BackendStatements, TransactionsCommitAndRollBack)
{
    connection->BeginTrans();
    connection->Execute(insert("WHOLE", "1"));
    connection->RollbackTrans();
    EXPECT_EQ(count(), 0);
    connection->BeginTrans();
    connection->Execute(insert("WHOLE", "2"));
    connection->CommitTrans();
    EXPECT_EQ(scalar(context->connect(), select("WHOLE")), Variant{2});
}

TEST_F(BackendStatements, ConnectionClosedWithinATransactionRollsBack)
{
    const ConnectionRef second = context->connect();
    second->BeginTrans();
    second->Execute(insert("WHOLE", "1"));
    second->Close();
    EXPECT_EQ(count(), 0);
}

TEST_F(BackendStatements, RefusedStatementNamesItself)
{
    for (const std::string& statement :
         {select("NO_SUCH_COLUMN"), std::string{"SELECT * FROM TMT_NO_SUCH_TABLE"}, std::string{"SELEC 1"},
          select("SHORT_TEXT", "WHERE (WHOLE = 1"), select("'open")}) {
        const Error failure = failureOf([&] { open(statement); });
        EXPECT_EQ(failure.number, errors::statementRefused) << statement;
        EXPECT_EQ(failure.statement, statement);
        EXPECT_FALSE(failure.description.empty());
        EXPECT_FALSE(failure.source.empty());
        EXPECT_EQ(errorNumber([&] { connection->Execute(statement); }), errors::statementRefused) << statement;
    }
    fill(1);
    EXPECT_EQ(count(), 1) << "the connection goes on working";
}

TEST_F(BackendStatements, FailedConversionAndDivisionAreRefused)
{
    fill(1);
    connection->Execute("UPDATE " + table + " SET SHORT_TEXT = 'no number', AMOUNT = 0");
    if (const auto reason = quirk("lenient_values")) GTEST_SKIP() << *reason;
    const auto run = [&](const std::string& statement) { open(statement)->GetRows(); };
    EXPECT_NE(errorNumber([&] { run(select("CAST(SHORT_TEXT AS INT)")); }), 0);
    EXPECT_NE(errorNumber([&] { run(select("1 / AMOUNT")); }), 0);
}

TEST_F(BackendStatements, NullWhereAValueIsRequired)
{
    fill(1);
    const std::string statement = "UPDATE " + table + " SET REQUIRED = NULL";
    const Error failure = failureOf([&] { connection->Execute(statement); });
    EXPECT_EQ(failure.number, errors::constraintViolated);
    EXPECT_EQ(failure.statement, statement);
    EXPECT_EQ(count("WHERE REQUIRED = ''"), 1);
}

TEST_F(BackendStatements, KeyThatIsThereAlready)
{
    const std::string keys = table + "_K";
    connection->Execute(context->dropTable(keys));
    connection->Execute(context->createKeyTable(keys));
    const std::string statement = "INSERT INTO " + keys + " (CODE) VALUES ('A')";
    connection->Execute(statement);
    EXPECT_EQ(errorNumber([&] { connection->Execute(statement); }), errors::constraintViolated);
    expectCount(scalar("SELECT COUNT(*) FROM " + keys), 1);
    connection->Execute(context->dropTable(keys));
}

} // namespace tamarok::ado::backend
