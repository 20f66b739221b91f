#include <gtest/gtest.h>
#include <string>

#include "support/errors.h"
#include "support/surroundings.h"
#include "timber/statements.h"

#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

using test::expectError;
using test::Surroundings;
using namespace test::statements;

class VolumeClassStatement : public ::testing::Test {
protected:
    Surroundings with;
    Comm_Set set;
};

TEST_F(VolumeClassStatement, RunsTheFormOfTheSelectedLinesInOneText)
{
    EXPECT_EQ(set.CalculateKubaturKlasse(with.session.db_ADO, "1,2,3", false), "");
    EXPECT_EQ(with.database.executed, std::vector<std::string>{filled(classOfSelectedLines, "1,2,3") + "\r\n" +
                                                               filled(classOfSingleLines, "1,2,3")});
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(VolumeClassStatement, ReturnsTheFormOfTheWholeGroupsAndRunsNothing)
{
    const std::string selection = "SELECT ID_LOG FROM LOGS WHERE LISTE = 'A'";
    const std::string expected = filled(classOfWholeGroups, selection) + "\r\n" + filled(classOfSingleLines, selection);
    EXPECT_EQ(set.CalculateKubaturKlasse(with.session.db_ADO, selection, true), expected);
    EXPECT_EQ(set.CalculateKubaturKlasse({}, selection, true), expected);
    EXPECT_TRUE(with.database.executed.empty());
}

TEST_F(VolumeClassStatement, AnEmptySelectionIsSentAsItIs)
{
    set.CalculateKubaturKlasse(with.session.db_ADO, "", false);
    ASSERT_EQ(with.database.executed.size(), 1U);
    EXPECT_NE(with.database.executed[0].find("ID_LOG IN () GROUP BY"), std::string::npos);
}

TEST_F(VolumeClassStatement, ArchiveRunsOrReturnsItsStatement)
{
    const std::string expected = "INSERT LOGS_HISTORY SELECT * FROM LOGS WHERE ID_LOG = 7";
    EXPECT_EQ(set.Set_Logs_Archiv("ID_LOG = 7", with.session.db_ADO, true), expected);
    EXPECT_EQ(set.Set_Logs_Archiv("ID_LOG = 7", {}, true), expected);
    EXPECT_TRUE(with.database.executed.empty());
    EXPECT_EQ(set.Set_Logs_Archiv("ID_LOG = 7", with.session.db_ADO, false), "");
    EXPECT_EQ(with.database.executed, std::vector<std::string>{expected});
}

TEST_F(VolumeClassStatement, RunningNeedsAConnection)
{
    expectError(errors::objectNotSet, "", [&] { set.CalculateKubaturKlasse({}, "1", false); });
    expectError(errors::objectNotSet, "", [&] { set.Set_Logs_Archiv("1 = 1", {}, false); });
}

} // namespace
} // namespace tamarok
