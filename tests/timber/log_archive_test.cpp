#include <gtest/gtest.h>
#include <string>

#include "tamarok_database/reference_database.h"
#include "timber/small_database.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

class LogArchive : public test::SmallDatabase {
protected:
    LogArchive() { database::createReferenceDatabase(*connection, {.logs = 40, .seed = 3, .records = 0}); }

    std::int64_t count(const std::string& table) const
    {
        return convert::toLongLong(ask("SELECT COUNT(*) FROM " + table));
    }
    VariantArray rows(const std::string& table) const
    {
        ado::Recordset records;
        records.Open("SELECT * FROM " + table + " WHERE ID_LOG <= 7 ORDER BY ID_LOG", connection);
        return records.GetRows();
    }

    Comm_Set set;
};

TEST_F(LogArchive, CopiesEveryColumnOfTheLines)
{
    EXPECT_EQ(set.Set_Logs_Archiv("ID_LOG <= 7", connection, false), "");
    EXPECT_EQ(count("LOGS_HISTORY"), 7);
    EXPECT_EQ(count("LOGS"), 40);
    EXPECT_EQ(rows("LOGS_HISTORY"), rows("LOGS"));
}

TEST_F(LogArchive, ARepeatCopiesAgain)
{
    set.Set_Logs_Archiv("ID_LOG IN (1,2)", connection, false);
    set.Set_Logs_Archiv("ID_LOG IN (1,2)", connection, false);
    EXPECT_EQ(count("LOGS_HISTORY"), 4);
}

TEST_F(LogArchive, ReturningTheTextRunsNothing)
{
    const std::string text = set.Set_Logs_Archiv("ID_LOG = 1", connection, true);
    EXPECT_EQ(count("LOGS_HISTORY"), 0);
    run(text);
    EXPECT_EQ(count("LOGS_HISTORY"), 1);
}

TEST_F(LogArchive, ABadConditionIsRefused)
{
    test::expectError(errors::statementRefused, "", [&] { set.Set_Logs_Archiv("", connection, false); });
    test::expectError(errors::statementRefused, "NO_COLUMN",
                      [&] { set.Set_Logs_Archiv("NO_COLUMN = 1", connection, false); });
    set.Set_Logs_Archiv("1 = 0", connection, false);
    EXPECT_EQ(count("LOGS_HISTORY"), 0);
}

/// Sample master data and measured lines agree: what was stored with the lines is what the
/// operations give for them.
TEST_F(LogArchive, StoredClassesOfSingleLinesAreThoseOfTheOperation)
{
    const std::string single = "KLST NOT IN (2,3) AND DSART IN (1,5)";
    ado::Recordset before;
    before.Open("SELECT ID_LOG,KKLASSE FROM LOGS WHERE " + single + " ORDER BY ID_LOG", connection);
    ASSERT_FALSE(before.AtEOF());
    const VariantArray stored = before.GetRows();
    before.Close();
    run("UPDATE LOGS SET KKLASSE = NULL");
    set.CalculateKubaturKlasse(connection, "SELECT ID_LOG FROM LOGS WHERE " + single, false);
    ado::Recordset after;
    after.Open("SELECT ID_LOG,KKLASSE FROM LOGS WHERE " + single + " ORDER BY ID_LOG", connection);
    EXPECT_EQ(after.GetRows(), stored);
}

} // namespace
} // namespace tamarok
