#include "ado_fixture.h"

namespace tamarok::ado {

using ConnectionTest = AdoTest;

TEST_F(ConnectionTest, NeedsASession)
{
    EXPECT_EQ(errorNumber([] { const Connection made{nullptr, ""}; }), errors::objectNotSet);
}

TEST_F(ConnectionTest, ExecutesWithItsTimeoutAndGivesTheRowsTouched)
{
    database->affectedRows = 3;
    EXPECT_EQ(connection->Execute("DELETE FROM SPECIES"), 3);
    EXPECT_EQ(database->timeoutSeconds, 30);
    connection->CommandTimeout(5);
    connection->Execute("DELETE FROM SPECIES", 1);
    EXPECT_EQ(database->timeoutSeconds, 5);
    EXPECT_EQ(database->log, (Log{"execute DELETE FROM SPECIES", "execute DELETE FROM SPECIES"}));
}

TEST_F(ConnectionTest, RefusesATimeoutBelowZeroAndKeepsTheFormerOne)
{
    connection->CommandTimeout(0);
    EXPECT_EQ(errorNumber([&] { connection->CommandTimeout(-1); }), errors::invalidArgument);
    EXPECT_EQ(connection->CommandTimeout(), 0);
}

TEST_F(ConnectionTest, OptionsNameATextOrAProcedure)
{
    for (const std::int32_t options : {-1, 1, 8, 128, 129})
        connection->Execute("X", options);
    connection->Execute("tmk_X", 4);
    connection->Execute("tmk_X", 132);
    EXPECT_EQ(database->takeLog(), (Log{"execute X", "execute X", "execute X", "execute X", "execute X",
                                        "execute procedure tmk_X", "execute procedure tmk_X"}));
    for (const std::int32_t options : {2, 256, -2})
        EXPECT_EQ(errorNumber([&] { connection->Execute("X", options); }), errors::invalidArgument) << options;
    EXPECT_TRUE(database->log.empty());
}

TEST_F(ConnectionTest, ClosedConnectionRefusesEverything)
{
    connection->Close();
    EXPECT_EQ(connection->State(), ObjectState::Closed);
    EXPECT_EQ(errorNumber([&] { connection->Close(); }), errors::objectClosed);
    EXPECT_EQ(errorNumber([&] { connection->Execute("X"); }), errors::connectionClosed);
    EXPECT_EQ(errorNumber([&] { connection->BeginTrans(); }), errors::connectionClosed);
    EXPECT_EQ(errorNumber([&] { connection->CommitTrans(); }), errors::connectionClosed);
    EXPECT_EQ(errorNumber([&] { connection->RollbackTrans(); }), errors::connectionClosed);
    EXPECT_EQ(errorNumber([&] { connection->session(); }), errors::connectionClosed);
    EXPECT_EQ(errorNumber([&] { open(); }), errors::connectionClosed);
}

TEST_F(ConnectionTest, PassesTransactionsOn)
{
    connection->BeginTrans();
    connection->CommitTrans();
    connection->BeginTrans();
    connection->RollbackTrans();
    EXPECT_EQ(database->log, (Log{"begin", "commit", "begin", "rollback"}));
}

TEST_F(ConnectionTest, TellsEachStatementAsComposedBeforeItIsSent)
{
    Log told;
    connection->listen([&](std::string_view statement) {
        told.emplace_back(statement);
        EXPECT_EQ(database->log.size(), told.size() - 1) << "told before it is sent";
    });
    connection->Execute("SET NOCOUNT ON\r\nINSERT INTO LOCK (ID_USERS) VALUES (1)");
    open();
    Recordset closed;
    closed.Open("tmk_LIST", connection, CursorType::OpenForwardOnly, LockType::ReadOnly, 4);
    EXPECT_EQ(told, (Log{"SET NOCOUNT ON\r\nINSERT INTO LOCK (ID_USERS) VALUES (1)", query, "EXEC tmk_LIST"}));
    connection->listen({});
    connection->Execute("X");
    EXPECT_EQ(told.size(), 3U);
}

TEST_F(ConnectionTest, TellsARefusedStatementToo)
{
    Log told;
    connection->listen([&](std::string_view statement) { told.emplace_back(statement); });
    database->fail("execute BAD", Error{errors::statementRefused, "Refused."});
    EXPECT_EQ(errorNumber([&] { connection->Execute("BAD"); }), errors::statementRefused);
    EXPECT_EQ(told, Log{"BAD"});
}

TEST_F(ConnectionTest, ProviderErrorLearnsStatementAndSourceWhereItHasNone)
{
    database->fail("execute BAD", Error{errors::statementRefused, "Refused."});
    Error own{errors::timeout, "Too late.", "Driver"};
    own.statement = "the driver's text";
    database->fail("execute SLOW", own);

    const Error refused = failureOf([&] { connection->Execute("BAD"); });
    EXPECT_EQ(refused.statement, "BAD");
    EXPECT_EQ(refused.source, "recording database");
    EXPECT_EQ(refused.description, "Refused.");
    const Error late = failureOf([&] { connection->Execute("SLOW"); });
    EXPECT_EQ(late.statement, "the driver's text");
    EXPECT_EQ(late.source, "Driver");
}

TEST_F(ConnectionTest, ClosingClosesItsRecordsetsBeforeTheSessionEnds)
{
    const auto stream = open();
    const auto scrolling = open(CursorType::OpenStatic);
    const auto clone = scrolling->Clone();
    const FieldRef field = stream->Fields().share(0);
    EXPECT_EQ(database->openCursors, 2);
    connection->Close();
    EXPECT_EQ(database->openCursors, 0);
    for (const auto& recordset : {stream, scrolling, clone}) {
        EXPECT_EQ(recordset->State(), ObjectState::Closed);
        EXPECT_EQ(errorNumber([&] { recordset->MoveNext(); }), errors::objectClosed);
        EXPECT_EQ(errorNumber([&] { recordset->Close(); }), errors::objectClosed);
    }
    EXPECT_EQ(errorNumber([&] { field->Value(); }), errors::objectClosed);
}

TEST_F(ConnectionTest, RecordsetOutlivesTheCallersReference)
{
    const auto recordset = open();
    connection.reset();
    EXPECT_EQ(id(*recordset), Variant{1});
    recordset->MoveNext();
    EXPECT_EQ(id(*recordset), Variant{2});
    EXPECT_EQ(database->log.size(), 1U) << "the session goes on";
    recordset->Close();
    EXPECT_EQ(database->log.back(), "end session");
}

TEST_F(ConnectionTest, RequireNamesAnUnsetConnection)
{
    EXPECT_EQ(&require(connection), connection.get());
    EXPECT_EQ(errorNumber([] { require(ConnectionRef{}); }), errors::objectNotSet);
}

} // namespace tamarok::ado
