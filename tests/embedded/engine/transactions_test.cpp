#include "child.h"
#include "test_database.h"

/// What an error takes with it: its statement, its batch, or the transaction.
namespace tamarok::embedded::test {
namespace {

struct ErrorCase {
    const char* name;
    std::int32_t number;
    const char* statement;
    bool endsBatch;
    bool rollsBack;
    bool rollsBackWithXactAbort;
};

void PrintTo(const ErrorCase& row, std::ostream* out)
{
    *out << row.name;
}

constexpr ErrorCase errorCases[] = {
    {"duplicateKey", 2627, "INSERT INTO T (ID) VALUES (1)", false, false, true},
    {"duplicateInIndex", 2601, "INSERT INTO T (ID, U) VALUES (8, 'u')", false, false, true},
    {"nullIntoKey", 515, "INSERT INTO T (ID) VALUES (NULL)", false, false, true},
    {"check", 547, "UPDATE T SET N = -1", false, false, true},
    {"reference", 547, "INSERT INTO D (ID_T) VALUES (99)", false, false, true},
    {"divisionByZero", 8134, "SELECT 1 / (ID - 1) FROM T", false, false, true},
    {"overflow", 8115, "UPDATE T SET N = 2147483647 + ID", false, false, true},
    {"tooLong", 2628, "UPDATE T SET S = 'too long'", false, false, true},
    {"noSuchDay", 242, "SELECT CAST('20240230' AS datetime)", false, false, true},
    {"unknownProcedure", 2812, "EXEC nothing", false, false, true},
    {"unknownTableToDrop", 3701, "DROP TABLE NOTHING", false, false, false},
    {"notANumber", 245, "SELECT CAST('x' AS int)", true, true, true},
    {"notANumberInAColumn", 245, "SELECT CAST(S AS int) FROM T", true, true, true},
    {"notANumberStored", 245, "UPDATE T SET N = S", true, true, true},
    {"notAFloat", 8114, "SELECT CAST(S AS float) FROM T", true, true, true},
    {"notADate", 241, "SELECT CAST('x' AS datetime)", true, true, true},
    {"notASmallDate", 295, "SELECT CAST(S AS smalldatetime) FROM T", true, true, true},
    {"tableExists", 2714, "CREATE TABLE T (A INT)", true, true, true},
    {"unknownTable", 208, "SELECT * FROM NOTHING", true, false, true},
};

/// A table with a row, and another one that refers to it.
class Transactions : public testing::Test {
protected:
    Transactions()
    {
        run(connection_, "CREATE TABLE T (ID INT PRIMARY KEY, N INT CHECK (N >= 0), S NVARCHAR(3), U NVARCHAR(3)) "
                         "CREATE UNIQUE INDEX IX_U ON T (U) CREATE TABLE D (ID_T INT REFERENCES T (ID))");
        run(connection_, "INSERT INTO T VALUES (1,1,'a','u')");
    }

    std::int32_t rows() { return valueOf(connection_, "SELECT COUNT(*) FROM T").asLong(); }

    /// Another connection can write at once: no lock stays.
    void expectUnlocked()
    {
        const auto other = connect(folder_ / "a.db");
        EXPECT_NO_THROW(run(other, "UPDATE T SET N = N", 1));
    }

    Folder folder_;
    ado::ConnectionRef connection_ = create(folder_ / "a.db");
};

class ErrorScope : public Transactions, public testing::WithParamInterface<ErrorCase> {
protected:
    /// Runs a batch with the failing statement between two that insert a row, in a transaction.
    void runBatch()
    {
        const Error error = failureOf([&] {
            run(connection_, "BEGIN TRANSACTION INSERT INTO T (ID, U) VALUES (2, 'v') " +
                                 std::string{GetParam().statement} + " INSERT INTO T (ID, U) VALUES (3, 'w')");
        });
        EXPECT_EQ(error.nativeError, GetParam().number) << error.what();
    }

    void expectRolledBack()
    {
        EXPECT_EQ(rows(), 1);
        expectUnlocked();
        EXPECT_EQ(failureOf([&] { run(connection_, "COMMIT"); }).nativeError, 3902);
        EXPECT_EQ(failureOf([&] { run(connection_, "ROLLBACK"); }).nativeError, 3903);
    }

    void expectOpen(std::int32_t wanted)
    {
        EXPECT_EQ(rows(), wanted);
        run(connection_, "COMMIT");
        EXPECT_EQ(rows(), wanted);
        expectUnlocked();
    }
};

TEST_P(ErrorScope, IsThatOfTheServer)
{
    runBatch();
    if (GetParam().rollsBack) return expectRolledBack();
    expectOpen(GetParam().endsBatch ? 2 : 3);
}

TEST_P(ErrorScope, WithXactAbort)
{
    run(connection_, "SET XACT_ABORT ON");
    runBatch();
    if (GetParam().rollsBackWithXactAbort) return expectRolledBack();
    expectOpen(GetParam().endsBatch ? 2 : 3);
}

TEST_P(ErrorScope, WithoutATransactionKeepsWhatWasWritten)
{
    failureOf([&] {
        run(connection_, "INSERT INTO T (ID, U) VALUES (2, 'v') " + std::string{GetParam().statement} +
                             " INSERT INTO T (ID, U) VALUES (3, 'w')");
    });
    EXPECT_EQ(rows(), GetParam().endsBatch ? 2 : 3);
    expectUnlocked();
}

INSTANTIATE_TEST_SUITE_P(Transactions, ErrorScope, testing::ValuesIn(errorCases),
                         [](const auto& row) { return std::string{row.param.name}; });

TEST_F(Transactions, ADoomedOneSaysSo)
{
    run(connection_, "BEGIN TRANSACTION");
    const Error error = failureOf([&] { run(connection_, "SELECT CAST('x' AS int)"); });
    EXPECT_TRUE(error.description.starts_with("The transaction was rolled back: ")) << error.description;
    EXPECT_FALSE(failureOf([&] { run(connection_, "SELECT CAST('x' AS int)"); }).description.starts_with("The trans"));
}

TEST_F(Transactions, OfTheRecordsetModelEndToo)
{
    connection_->BeginTrans();
    run(connection_, "INSERT INTO T (ID) VALUES (2)");
    failureOf([&] { connection_->Execute("UPDATE T SET N = S"); });
    EXPECT_EQ(failureOf([&] { connection_->CommitTrans(); }).nativeError, 3902);
    EXPECT_EQ(failureOf([&] { connection_->RollbackTrans(); }).nativeError, 3903);
    EXPECT_EQ(rows(), 1);
}

TEST_F(Transactions, AllLevelsEndAtOnce)
{
    run(connection_, "BEGIN TRANSACTION BEGIN TRANSACTION INSERT INTO T (ID) VALUES (2)");
    failureOf([&] { run(connection_, "SELECT CAST('x' AS int)"); });
    EXPECT_EQ(failureOf([&] { run(connection_, "COMMIT"); }).nativeError, 3902);
    expectUnlocked();
}

TEST_F(Transactions, ARowOfAStreamThatFailsEndsItsTransaction)
{
    run(connection_, "INSERT INTO T (ID, S, U) VALUES (2, '7', 'v') UPDATE T SET S = '6' WHERE ID = 1");
    run(connection_, "INSERT INTO T (ID, S, U) VALUES (3, 'x', 'w') BEGIN TRANSACTION INSERT INTO D VALUES (1)");
    const auto cursor = open(connection_, "SELECT CAST(S AS int) FROM T ORDER BY ID");
    EXPECT_TRUE(cursor->next());
    EXPECT_TRUE(cursor->next());
    EXPECT_EQ(failureOf([&] { cursor->next(); }).nativeError, 245);
    EXPECT_EQ(failureOf([&] { run(connection_, "COMMIT"); }).nativeError, 3902);
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM D"), Variant{0});
    expectUnlocked();
}

TEST_F(Transactions, SeveralFailuresOfABatchAreCounted)
{
    const Error error =
        failureOf([&] { run(connection_, "INSERT INTO T (ID) VALUES (1) SELECT 1/0 INSERT INTO T (ID) VALUES (2)"); });
    EXPECT_EQ(error.nativeError, 2627);
    EXPECT_TRUE(error.description.starts_with("2 statements of the batch failed; the first one: "))
        << error.description;
    EXPECT_EQ(rows(), 2);
}

TEST_F(Transactions, AFailedConditionRunsNeitherBranch)
{
    EXPECT_EQ(failureOf([&] {
                  run(connection_, "IF 1/0 = 1 INSERT INTO T (ID) VALUES (2) ELSE INSERT INTO T (ID) VALUES (3)");
              }).nativeError,
              8134);
    EXPECT_EQ(rows(), 1);
}

TEST_F(Transactions, AQueryBehindAFailureRunsAndTheFailureIsTheAnswer)
{
    EXPECT_EQ(failureOf([&] { open(connection_, "INSERT INTO T (ID) VALUES (1) SELECT * FROM T"); }).nativeError, 2627);
    EXPECT_EQ(failureOf([&] { open(connection_, "SELECT 1/0 INSERT INTO T (ID) VALUES (2)"); }).nativeError, 8134);
    EXPECT_EQ(rows(), 2) << "the batch went on behind the failed query";
}

TEST_F(Transactions, XactAbortLastsAndCanBeSwitchedOff)
{
    run(connection_, "SET XACT_ABORT ON BEGIN TRANSACTION");
    failureOf([&] { run(connection_, "INSERT INTO T (ID) VALUES (1)"); });
    EXPECT_EQ(failureOf([&] { run(connection_, "COMMIT"); }).nativeError, 3902);
    run(connection_, "SET XACT_ABORT OFF BEGIN TRANSACTION");
    failureOf([&] { run(connection_, "INSERT INTO T (ID) VALUES (1)"); });
    EXPECT_NO_THROW(run(connection_, "COMMIT"));
}

TEST_F(Transactions, AProcedureThatFailsRollsItsCallersTransactionBack)
{
    OpenOptions options;
    options.procedures.add({"addTwice", {{"N"}}, [](ProcedureScope& scope, auto arguments) {
                                scope.execute("INSERT INTO T (ID, U) VALUES (?, 'v')", arguments);
                                scope.execute("INSERT INTO T (ID, U) VALUES (?, 'w')", arguments);
                            }});
    const auto connection = connect(folder_ / "a.db", options);
    run(connection, "BEGIN TRANSACTION INSERT INTO T (ID) VALUES (5)");
    EXPECT_EQ(failureOf([&] { run(connection, "EXEC addTwice 6 INSERT INTO T (ID) VALUES (7)"); }).nativeError, 2627);
    EXPECT_EQ(failureOf([&] { run(connection, "COMMIT"); }).nativeError, 3902);
    EXPECT_EQ(rows(), 1);
    expectUnlocked();
}

/// SQLite cannot end a write in the middle and keep the transaction. The error says so; reading keeps it.
TEST_F(Transactions, ATimeOutOfAWriteRollsBackAndSaysSo)
{
    run(connection_, "CREATE TABLE #MANY (N INT) INSERT INTO #MANY VALUES (1),(2),(3),(4),(5),(6),(7),(8),(9),(10)");
    const std::string endless = "(SELECT COUNT(*) FROM #MANY A, #MANY B, #MANY C, #MANY D, #MANY E, #MANY F, #MANY G, "
                                "#MANY H, #MANY I, #MANY J WHERE A.N + B.N + C.N + D.N + E.N + F.N + G.N + H.N < T.ID)";
    run(connection_, "BEGIN TRANSACTION INSERT INTO T (ID, U) VALUES (2, 'v')");
    EXPECT_EQ(failureOf([&] { run(connection_, "SELECT " + endless + " FROM T", 1); }).number, errors::timeout);
    EXPECT_EQ(rows(), 2) << "reading only";
    const Error error = failureOf([&] { run(connection_, "UPDATE T SET N = " + endless, 1); });
    EXPECT_EQ(error.number, errors::timeout);
    EXPECT_TRUE(error.description.starts_with("The transaction was rolled back: ")) << error.description;
    EXPECT_EQ(rows(), 1);
    expectUnlocked();
    EXPECT_EQ(failureOf([&] { run(connection_, "COMMIT"); }).nativeError, 3902);
}

TEST_F(Transactions, AReadAheadOfARollbackKeepsItsRows)
{
    run(connection_, "INSERT INTO T (ID, U) VALUES (2, 'v') BEGIN TRANSACTION DELETE FROM T WHERE ID = 2");
    const auto cursor = open(connection_, "SELECT ID FROM T");
    failureOf([&] { run(connection_, "SELECT CAST('x' AS int)"); });
    EXPECT_TRUE(cursor->next());
    EXPECT_EQ(cursor->value(0), Variant{1});
    EXPECT_FALSE(cursor->next());
    EXPECT_EQ(rows(), 2);
}

} // namespace
} // namespace tamarok::embedded::test
