#include "child.h"
#include "test_database.h"

/// Keys are checked at the end of a statement, unique keys take one Null, identity columns number for themselves.
namespace tamarok::embedded::test {
namespace {

class Keys : public testing::Test {
protected:
    std::int32_t failure(std::string_view text)
    {
        return failureOf([&] { run(connection_, text); }).nativeError;
    }
    std::vector<Variant> column(std::string_view text) { return columnOf(connection_, text); }
    static std::vector<Variant> numbers(std::initializer_list<std::int32_t> values)
    {
        std::vector<Variant> variants;
        for (const std::int32_t value : values)
            variants.emplace_back(value);
        return variants;
    }

    Folder folder_;
    ado::ConnectionRef connection_ = create(folder_ / "a.db");
};

// --- keys that move ----------------------------------------------------------------------------

class MovedKeys : public Keys, public testing::WithParamInterface<const char*> {
protected:
    /// The table, once in the file and once a temporary one.
    std::string named(std::string text) const
    {
        for (std::size_t at = 0; (at = text.find('%', at)) != std::string::npos;)
            text.replace(at, 1, GetParam());
        return text;
    }
    void does(const std::string& text, std::int64_t rows) { EXPECT_EQ(run(connection_, named(text)), rows) << text; }
    void fails(const std::string& text, std::int32_t number) { EXPECT_EQ(failure(named(text)), number) << text; }
    void expectIds(std::initializer_list<std::int32_t> ids, const std::string& tail = " ORDER BY N")
    {
        EXPECT_EQ(column(named("SELECT ID FROM %" + tail)), numbers(ids));
    }
    void fill()
    {
        run(connection_, named("CREATE TABLE % (ID INT PRIMARY KEY CHECK (ID < 1000), N INT, A NVARCHAR(5), B INT, "
                               "UNIQUE (A, B)) INSERT INTO % VALUES (1,1,'a',1) INSERT INTO % VALUES (2,2,'a',2) "
                               "INSERT INTO % VALUES (3,3,'b',1)"));
    }
};

TEST_P(MovedKeys, OnlyTheFinalKeysCollide)
{
    fill();
    does("UPDATE % SET ID = ID + 1", 3);
    expectIds({2, 3, 4});
    EXPECT_EQ(valueOf(connection_, "SELECT @@ROWCOUNT"), Variant{3});
    does("UPDATE % SET ID = 5 - ID WHERE ID < 4", 2);
    expectIds({3, 2, 4});
    does("UPDATE % SET ID = ID - 1, N = N + 10 WHERE N > 0", 3);
    expectIds({2, 1, 3});
    EXPECT_EQ(column(named("SELECT N FROM % ORDER BY N")), numbers({11, 12, 13}));
}

TEST_P(MovedKeys, ACollisionAtTheEndChangesNothing)
{
    fill();
    fails("UPDATE % SET ID = 7", 2627);
    fails("UPDATE % SET ID = ID + 1 WHERE ID < 3", 2627);
    fails("UPDATE % SET ID = ID + 998", 547);
    fails("UPDATE % SET B = 1", 2627);
    expectIds({1, 2, 3});
    EXPECT_EQ(column(named("SELECT B FROM % ORDER BY N")), numbers({1, 2, 1}));
    // The connection goes on as before: checks are in force, and the statement works again.
    fails("UPDATE % SET ID = 1000 WHERE ID = 1", 547);
    does("UPDATE % SET ID = ID + 1", 3);
}

TEST_P(MovedKeys, OfSeveralColumnsAndOfIndexes)
{
    fill();
    does("UPDATE % SET B = 3 - B WHERE A = 'a'", 2);
    EXPECT_EQ(column(named("SELECT B FROM % ORDER BY N")), numbers({2, 1, 1}));
    run(connection_, named("CREATE UNIQUE INDEX IX_N ON % (N DESC)"));
    does("UPDATE % SET N = N + 1", 3);
    fails("UPDATE % SET N = 5", 2601);
    EXPECT_EQ(column(named("SELECT N FROM % ORDER BY N")), numbers({2, 3, 4}));
}

TEST_P(MovedKeys, InAJoinAndWithParameters)
{
    fill();
    does("UPDATE X SET ID = X.ID + Y.N FROM % X INNER JOIN % Y ON Y.N = 1", 3);
    expectIds({2, 3, 4});
    std::vector<ado::Parameter> parameters(2);
    parameters[0].value = -1;
    parameters[1].value = 0;
    const std::string text = named("UPDATE % SET ID = ID + ? WHERE ID > ?");
    ado::Statement wanted = statement(text);
    wanted.parameters = parameters;
    EXPECT_EQ(connection_->session().execute(wanted), 3);
    expectIds({1, 2, 3});
}

TEST_P(MovedKeys, InATransaction)
{
    fill();
    run(connection_, "BEGIN TRANSACTION");
    does("UPDATE % SET ID = ID + 1", 3);
    fails("UPDATE % SET ID = 7", 2627);
    run(connection_, "ROLLBACK");
    expectIds({1, 2, 3});
    run(connection_, "BEGIN TRANSACTION");
    does("UPDATE % SET ID = ID + 1", 3);
    run(connection_, "COMMIT");
    expectIds({2, 3, 4});
}

INSTANTIATE_TEST_SUITE_P(Keys, MovedKeys, testing::Values("T", "#T"),
                         [](const auto& row) { return row.param[0] == '#' ? "temporary" : "stored"; });

TEST_F(Keys, ReferencesToAMovedKeyAreCheckedAtTheEnd)
{
    run(connection_, "CREATE TABLE P (ID INT PRIMARY KEY) CREATE TABLE C (ID_P INT REFERENCES P (ID)) INSERT INTO P "
                     "VALUES (1) INSERT INTO P VALUES (2) INSERT INTO C VALUES (2)");
    EXPECT_EQ(run(connection_, "UPDATE P SET ID = ID + 1"), 2) << "another row has key 2 afterwards";
    EXPECT_EQ(failure("UPDATE P SET ID = ID + 1"), 547) << "no row has key 2 afterwards";
    EXPECT_EQ(column("SELECT ID FROM P ORDER BY ID"), numbers({2, 3}));
}

TEST_F(Keys, ReferencesToASwappedKeyHold)
{
    run(connection_, "CREATE TABLE P (ID INT PRIMARY KEY, N INT) CREATE TABLE C (ID_P INT REFERENCES P (ID)) INSERT "
                     "INTO P VALUES (1,1) INSERT INTO P VALUES (2,2) INSERT INTO C VALUES (2)");
    EXPECT_EQ(run(connection_, "UPDATE P SET ID = 3 - ID"), 2);
    EXPECT_EQ(column("SELECT ID FROM P ORDER BY N"), numbers({2, 1}));
    EXPECT_EQ(failure("DELETE FROM P WHERE ID = 2"), 547);
}

TEST_F(Keys, ACascadeFollowsTheFinalKeys)
{
    run(connection_, "CREATE TABLE P (ID INT PRIMARY KEY) CREATE TABLE C (N INT, ID_P INT NOT NULL CHECK (ID_P < 10) "
                     "REFERENCES P (ID) ON UPDATE CASCADE) INSERT INTO P VALUES (1) INSERT INTO P VALUES (2) INSERT "
                     "INTO C VALUES (1, 1) INSERT INTO C VALUES (2, 2)");
    EXPECT_EQ(run(connection_, "UPDATE P SET ID = 3 - ID"), 2);
    EXPECT_EQ(column("SELECT ID_P FROM C ORDER BY N"), numbers({2, 1}));
    EXPECT_EQ(run(connection_, "UPDATE P SET ID = ID + 1"), 2);
    EXPECT_EQ(column("SELECT ID_P FROM C ORDER BY N"), numbers({3, 2}));
}

// --- Null in a unique key ----------------------------------------------------------------------

TEST_F(Keys, UniqueTakesOneNull)
{
    for (const std::string table : {"T", "#T"}) {
        run(connection_, "CREATE TABLE " + table + " (A INT NULL UNIQUE, B NVARCHAR(5), C INT)");
        run(connection_, "CREATE UNIQUE INDEX IX ON " + table + " (B, C DESC)");
        const std::string insert = "INSERT INTO " + table + " (A,B,C) VALUES ";
        run(connection_, insert + "(NULL,'x',1)");
        EXPECT_EQ(failure(insert + "(NULL,'y',1)"), 2627);
        run(connection_, insert + "(1,'x',NULL)");
        EXPECT_EQ(failure(insert + "(2,'X ',NULL)"), 2601) << "the collation of the column counts";
        run(connection_, insert + "(2,'y',NULL)");
        run(connection_, insert + "(3,NULL,0)");
        run(connection_, insert + "(4,NULL,NULL)");
        EXPECT_EQ(failure(insert + "(5,NULL,0)"), 2601);
        EXPECT_EQ(failure(insert + "(5,NULL,NULL)"), 2601);
        EXPECT_EQ(failure("UPDATE " + table + " SET A = NULL WHERE A = 4"), 2627);
        EXPECT_EQ(run(connection_, "UPDATE " + table + " SET C = 7 WHERE A = 4"), 1);
        run(connection_, "DROP INDEX IX ON " + table);
        run(connection_, insert + "(5,NULL,0)");
        run(connection_, "CREATE INDEX IX ON " + table + " (B)");
        run(connection_, "DROP TABLE " + table);
    }
}

TEST_F(Keys, UniqueOfSeveralColumnsInABinaryCollation)
{
    run(connection_, "CREATE TABLE T (A NVARCHAR(5) COLLATE Latin1_General_BIN, B INT NOT NULL, CONSTRAINT U_AB UNIQUE "
                     "(B, A)) INSERT INTO T VALUES (NULL, 1) INSERT INTO T VALUES (NULL, 2) INSERT INTO T VALUES ('a', "
                     "1) INSERT INTO T VALUES ('A', 1)");
    EXPECT_EQ(failure("INSERT INTO T VALUES (NULL, 1)"), 2627);
    EXPECT_EQ(failure("UPDATE T SET B = 1 WHERE B = 2"), 2627);
    EXPECT_EQ(run(connection_, "UPDATE T SET B = 3 - B WHERE A IS NULL"), 2);
}

TEST_F(Keys, AColumnThatForbidsNullNeedsNoSecondIndex)
{
    run(connection_, "CREATE TABLE T (A INT NOT NULL UNIQUE, B INT PRIMARY KEY)");
    const std::string text = translate(*connection_, "CREATE UNIQUE INDEX IX ON T (B, A)");
    EXPECT_EQ(text.find("~null"), std::string::npos) << text;
}

// --- identity columns --------------------------------------------------------------------------

class Identity : public Keys {
protected:
    Identity() { run(connection_, "CREATE TABLE T (ID INT IDENTITY(1,1) PRIMARY KEY, N INT UNIQUE CHECK (N < 1000))"); }

    Variant nextId(std::int32_t n)
    {
        return valueOf(connection_, "SET NOCOUNT ON INSERT INTO T (N) VALUES (" + std::to_string(n) +
                                        ") SET NOCOUNT OFF SELECT CAST(@@IDENTITY AS int)");
    }
};

TEST_F(Identity, RefusesValuesUnlessTheyAreAskedFor)
{
    EXPECT_EQ(failure("INSERT INTO T (ID, N) VALUES (5, 1)"), 544);
    EXPECT_EQ(failure("INSERT INTO T (ID, N) SELECT 5, 1"), 544);
    EXPECT_EQ(failure("INSERT INTO T VALUES (5, 1)"), 8101);
    EXPECT_EQ(failure("UPDATE T SET ID = 5"), 8102);
    run(connection_, "SET IDENTITY_INSERT T ON");
    EXPECT_EQ(failure("INSERT INTO T (N) VALUES (1)"), 545);
    EXPECT_EQ(failure("INSERT INTO T VALUES (1)"), 545);
    EXPECT_EQ(failure("INSERT INTO T DEFAULT VALUES"), 545);
    run(connection_, "INSERT INTO T (ID, N) VALUES (5, 1)");
    run(connection_, "SET IDENTITY_INSERT T OFF");
    EXPECT_EQ(failure("INSERT INTO T (ID, N) VALUES (6, 2)"), 544);
    EXPECT_EQ(nextId(2), Variant{6}) << "the counter follows the highest number";
    run(connection_, "INSERT INTO T VALUES (3)");
    EXPECT_EQ(column("SELECT ID FROM T"), numbers({5, 6, 7}));
}

TEST_F(Identity, InsertIsOpenForOneTable)
{
    run(connection_, "CREATE TABLE U (ID INT IDENTITY PRIMARY KEY, N INT) CREATE TABLE V (ID INT PRIMARY KEY)");
    run(connection_, "SET IDENTITY_INSERT T ON");
    run(connection_, "SET IDENTITY_INSERT T ON");
    EXPECT_EQ(failure("SET IDENTITY_INSERT U ON"), 8107);
    EXPECT_EQ(failure("SET IDENTITY_INSERT V ON"), 8106);
    EXPECT_EQ(failure("SET IDENTITY_INSERT W ON"), 1088);
    run(connection_, "SET IDENTITY_INSERT U OFF INSERT INTO T (ID, N) VALUES (9, 9)");
    run(connection_, "SET IDENTITY_INSERT t OFF SET IDENTITY_INSERT dbo.U ON INSERT INTO U (ID) VALUES (3)");
    EXPECT_EQ(failureOf([&] { run(connect(folder_ / "a.db"), "INSERT INTO U (ID) VALUES (4)"); }).nativeError, 544)
        << "the setting is the session's own";
}

TEST_F(Identity, TheSettingGoesWithItsTable)
{
    run(connection_, "SET IDENTITY_INSERT T ON DROP TABLE T CREATE TABLE T (ID INT IDENTITY, N INT) INSERT INTO T (N) "
                     "VALUES (1)");
    run(connection_,
        "SET IDENTITY_INSERT T ON DROP TABLE T CREATE TABLE U (ID INT IDENTITY, N INT) SET IDENTITY_INSERT "
        "U ON INSERT INTO U (ID) VALUES (4)");
    EXPECT_EQ(column("SELECT ID FROM U"), numbers({4}));
}

TEST_F(Identity, ThroughARecordset)
{
    const auto cursor = openEditable(connection_, "SELECT * FROM T");
    const std::vector<ado::Assignment> given{{0, Variant{5}}, {1, Variant{1}}};
    EXPECT_EQ(failureOf([&] { cursor->insertRow(given); }).nativeError, 544);
    EXPECT_EQ(cursor->insertRow(std::span{given}.subspan(1)), 1);
    EXPECT_EQ(failureOf([&] { cursor->updateRow(1, std::span{given}.first(1)); }).nativeError, 8102);
    run(connection_, "SET IDENTITY_INSERT T ON");
    const std::vector<ado::Assignment> other{{0, Variant{5}}, {1, Variant{2}}};
    EXPECT_EQ(cursor->insertRow(other), 5);
    EXPECT_EQ(failureOf([&] { cursor->insertRow(std::span{other}.subspan(1)); }).nativeError, 545);
}

TEST_F(Identity, NumbersOfARolledBackTransactionStayUsed)
{
    EXPECT_EQ(nextId(1), Variant{1});
    run(connection_, "BEGIN TRANSACTION");
    EXPECT_EQ(nextId(2), Variant{2});
    EXPECT_EQ(nextId(3), Variant{3});
    run(connection_, "ROLLBACK");
    EXPECT_EQ(column("SELECT N FROM T"), numbers({1}));
    EXPECT_EQ(nextId(4), Variant{4});
    run(connection_, "BEGIN TRANSACTION");
    EXPECT_EQ(nextId(5), Variant{5});
    failureOf([&] { run(connection_, "SELECT CAST('x' AS int)"); });
    EXPECT_EQ(valueOf(connect(folder_ / "a.db"),
                      "SET NOCOUNT ON INSERT INTO T (N) VALUES (6) SELECT CAST(@@IDENTITY AS int)"),
              Variant{6})
        << "nor may another session get them";
}

TEST_F(Identity, OfATemporaryTableAndOfAnEmptyOne)
{
    run(connection_, "CREATE TABLE #T (ID INT IDENTITY PRIMARY KEY, N INT) BEGIN TRANSACTION INSERT INTO #T (N) VALUES "
                     "(1) INSERT INTO T (N) VALUES (1) CREATE TABLE GONE (ID INT IDENTITY, N INT) INSERT INTO GONE (N) "
                     "VALUES (1) ROLLBACK INSERT INTO #T (N) VALUES (2)");
    EXPECT_EQ(column("SELECT ID FROM #T"), numbers({2}));
    EXPECT_EQ(nextId(2), Variant{2});
    run(connection_, "CREATE TABLE GONE (ID INT IDENTITY, N INT) INSERT INTO GONE (N) VALUES (1)");
    EXPECT_EQ(column("SELECT ID FROM GONE"), numbers({1})) << "another table of that name begins anew";
}

TEST_F(Identity, AFailedRowUsesItsNumber)
{
    EXPECT_EQ(nextId(1), Variant{1});
    EXPECT_EQ(failure("INSERT INTO T (N) VALUES (1)"), 2627);
    EXPECT_EQ(valueOf(connection_, "SELECT CAST(@@IDENTITY AS int)"), Variant{1});
    EXPECT_EQ(nextId(2), Variant{3});
    EXPECT_EQ(failure("INSERT INTO T (N) VALUES (1000)"), 547);
    EXPECT_EQ(failure("INSERT INTO T (N) SELECT 5 UNION ALL SELECT 6 UNION ALL SELECT 1"), 2627);
    EXPECT_EQ(nextId(7), Variant{8});
    run(connection_, "BEGIN TRANSACTION");
    EXPECT_EQ(failure("INSERT INTO T (N) VALUES (1)"), 2627);
    EXPECT_EQ(nextId(10), Variant{10});
    run(connection_, "COMMIT");
    EXPECT_EQ(column("SELECT ID FROM T"), numbers({1, 3, 8, 10}));
}

TEST_F(Identity, AWholeNumberKeyIsNoIdentity)
{
    run(connection_, "CREATE TABLE W (ID INTEGER PRIMARY KEY, N INT) INSERT INTO W VALUES (7, 1)");
    EXPECT_EQ(failure("INSERT INTO W (N) VALUES (1)"), 515);
    EXPECT_EQ(failure("INSERT INTO W (ID) VALUES (NULL)"), 515);
    run(connection_, "UPDATE W SET ID = 8");
    EXPECT_EQ(column("SELECT ID FROM W"), numbers({8}));
}

/// Two processes that insert and roll back at once never get the same number.
TEST_F(Identity, NumbersAreUniqueAcrossProcesses)
{
    const std::string file = (folder_ / "a.db").string();
    run(connection_,
        "CREATE TABLE LOGBOOK (ID INT IDENTITY PRIMARY KEY, N INT) CREATE TABLE SEEN (ID INT PRIMARY KEY)");
    // The number is noted behind the rollback; a number given out twice violates the key of SEEN.
    const std::vector<std::string> work{
        "repeat", file,
        "40 BEGIN TRANSACTION INSERT INTO LOGBOOK (N) VALUES (1) ROLLBACK INSERT INTO SEEN SELECT @@IDENTITY"};
    runBeside(work);
    EXPECT_EQ(column("SELECT COUNT(*) FROM SEEN"), numbers({80}));
    EXPECT_EQ(column("SELECT COUNT(*) FROM LOGBOOK"), numbers({0}));
}

TEST_F(Keys, NamesWithLettersOfLatin1AreFoundInAnyCase)
{
    run(connection_, "CREATE TABLE Bäume (Höhe INT) INSERT INTO BÄUME (HÖHE) VALUES (3)");
    EXPECT_EQ(column("SELECT höhe FROM bäume"), numbers({3}));
    EXPECT_EQ(failure("CREATE TABLE BÄUME (A INT)"), 2714);
}

} // namespace
} // namespace tamarok::embedded::test
