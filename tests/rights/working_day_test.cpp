#include <gtest/gtest.h>
#include <string>

#include "apps/program.h"

namespace tamarok::test {
namespace {

/// The steps of the working day that log in and lock, as the program shows them.
class WorkingDay : public ::testing::Test {
protected:
    std::string database() const { return database_; }
    std::string rows(const std::string& table) const
    {
        return run({"call", "--db", database()}, R"({"query":"SELECT * FROM )" + table + "\"}\n").output;
    }

private:
    ScratchFolder folder_;
    std::string database_ = makeDatabase(folder_);
};

TEST_F(WorkingDay, ShowsRightsAndARefusedRecordAndLeavesTheDatabaseAsItWas)
{
    const std::string locks = rows("LOCK");
    const std::string seen = rows("USERS_TREEVIEW_SEEN");
    const Outcome day = run({"day", "--db", database()});
    EXPECT_EQ(day.status, 0) << day.errors;
    EXPECT_EQ(day.errors, "");
    for (const char* text :
         {"EDER logs in at level 01020201", "STEINER logs in at level 01010000", "HV_BERICHTELISTEN       no",
          "HV_BERICHTELISTEN       yes", "' wird gerade vom Benutzer HUBER bearbeitet und ist gesperrt.",
          "EDER opens the list again: granted at once."}) {
        EXPECT_NE(day.output.find(text), std::string::npos) << text << "\n" << day.output;
    }
    EXPECT_EQ(rows("LOCK"), locks);
    EXPECT_NE(locks.find(R"("rows":[])"), std::string::npos) << locks;
    EXPECT_EQ(rows("USERS_TREEVIEW_SEEN"), seen);
}

TEST_F(WorkingDay, WithoutListsThereIsNothingToOpen)
{
    EXPECT_EQ(run({"call", "--db", database()}, "{\"exec\":\"DELETE FROM LOGS_RECH DELETE FROM LOGS\"}\n").status, 0);
    const Outcome day = run({"day", "--db", database()});
    EXPECT_EQ(day.status, 0) << day.errors;
    EXPECT_NE(day.output.find("The database has no timber list to open."), std::string::npos);
}

} // namespace
} // namespace tamarok::test
