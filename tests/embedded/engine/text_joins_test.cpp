#include <sqlite3.h>

#include "functions/collation.h"
#include "session.h"
#include "test_database.h"
#include "text_joins.h"

/// Joins of texts that the collation makes equal find all rows, whatever plan SQLite chooses.
namespace tamarok::embedded::test {
namespace {

Database& databaseOf(const ado::ConnectionRef& connection)
{
    return dynamic_cast<EmbeddedSession&>(connection->session()).engine().database();
}

const std::vector<std::string> texts{"x",      "X",       "x ", "x    ", "X  ", "äx", "ÄX",   "äx  ",
                                     "fichte", "FICHTE ", "xx", "",      " ",   "X0", "Holz", "holz  "};

/// Two tables, one with padded texts and one without; the rows of a join by a loop over all pairs.
class TextJoins : public testing::Test {
protected:
    TextJoins()
    {
        run(connection_, "CREATE TABLE #A (I INT, C CHAR(8), V VARCHAR(10)) CREATE TABLE #B (I INT, C CHAR(5), N "
                         "NVARCHAR(10))");
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const std::string values = std::to_string(i) + ",'" + texts[i] + "','" + texts[i] + "')";
            run(connection_, "INSERT INTO #A VALUES (" + values);
            if (texts[i].size() <= 5) run(connection_, "INSERT INTO #B VALUES (" + values);
        }
    }

    static std::int32_t pairs(std::size_t longest)
    {
        std::int32_t count = 0;
        for (const std::string& a : texts)
            for (const std::string& b : texts)
                count += b.size() <= longest && functions::compareTexts(a, b) == 0 ? 1 : 0;
        return count;
    }

    void expectComplete()
    {
        for (const char* const condition : {"A.C = B.C", "A.C = B.N", "A.V = B.C", "A.V = B.N", "B.N = A.V"}) {
            const std::string on = std::string{" ON "} + condition;
            EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM #A A INNER JOIN #B B" + on), Variant{pairs(5)}) << on;
            EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM #B B INNER JOIN #A A" + on), Variant{pairs(5)}) << on;
            EXPECT_EQ(valueOf(connection_, "SELECT COUNT(B.I) FROM #A A LEFT JOIN #B B" + on), Variant{pairs(5)}) << on;
            EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM #A A INNER JOIN (SELECT DISTINCT I, C, N FROM #B) B" +
                                               on + " AND A.I >= B.I") != Variant{0},
                      true)
                << on;
        }
        EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM #A WHERE V IN (SELECT C FROM #B)"),
                  valueOf(connection_, "SELECT COUNT(*) FROM #A A WHERE EXISTS (SELECT 1 FROM #B B WHERE B.C = A.V)"));
    }

    ado::ConnectionRef connection_ = connectInMemory();
};

TEST_F(TextJoins, FindAllRowsWithAutomaticIndexes)
{
    expectComplete();
}

TEST_F(TextJoins, FindAllRowsWithoutAutomaticIndexes)
{
    databaseOf(connection_).run("PRAGMA automatic_index=OFF");
    expectComplete();
}

TEST_F(TextJoins, PaddedAndPlainTextsMeet)
{
    run(connection_, "CREATE TABLE #C (C CHAR(5), V VARCHAR(10)) INSERT INTO #C VALUES ('x','x')");
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM #C A, #C B WHERE A.C = B.V"), Variant{1});
}

TEST_F(TextJoins, FindAllRowsOfAFile)
{
    const Folder folder;
    const auto file = create(folder / "a.db");
    run(file, "CREATE TABLE A (C CHAR(5)) CREATE TABLE B (V VARCHAR(10)) INSERT INTO A VALUES ('x') INSERT INTO B "
              "VALUES ('X')");
    for (const bool readOnly : {false, true}) {
        OpenOptions options;
        options.mode = readOnly ? OpenMode::ReadOnly : OpenMode::OpenExisting;
        EXPECT_EQ(valueOf(connect(folder / "a.db", options), "SELECT COUNT(*) FROM A, B WHERE A.C = B.V"), Variant{1});
    }
}

/// With the filters switched on again, the check must refuse exactly the versions of SQLite that lose rows.
TEST_F(TextJoins, AnEngineThatLosesRowsIsRefused)
{
    Database& database = databaseOf(connection_);
    EXPECT_NO_THROW(requireCompleteTextJoins(database.handle()));
    sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, database.handle(), 0U);
    const bool losesRows = valueOf(connection_, "SELECT COUNT(*) FROM #A A, #B B WHERE A.C = B.N") != Variant{pairs(5)};
    if (losesRows) {
        const Error error = failureOf([&] { requireCompleteTextJoins(database.handle()); });
        EXPECT_EQ(error.number, errors::providerFailure);
        EXPECT_NE(error.description.find(sqlite3_libversion()), std::string::npos) << error.description;
    } else {
        EXPECT_NO_THROW(requireCompleteTextJoins(database.handle()));
    }
    switchOffJoinFilters(database.handle());
    EXPECT_NO_THROW(requireCompleteTextJoins(database.handle()));
}

} // namespace
} // namespace tamarok::embedded::test
