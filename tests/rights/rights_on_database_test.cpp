#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/errors.h"
#include "tamarok_database/schema.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_lock.h"
#include "tamarok/comm_sql.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok {
namespace {

using test::errorNumber;

/// Users A (1) to E (5). B lends A his rights, C lends B his, so that A stands in for B alone; D names A
/// as deputy and lends nothing; E has no deputy.
class RightsOnDatabase : public ::testing::TestWithParam<bool> {
protected:
    RightsOnDatabase()
    {
        database::createTables(*connection);
        session.db_ADO = connection;
        session.bolOracle = GetParam();
        session.strLanguage = "GERMAN";
        run("INSERT INTO USERS (ID,NAME,[PASSWORD],ID_USERS_VERTRETER) VALUES "
            "(1,'A',NULL,NULL),(2,'B','',1),(3,'C','x',2),(4,'D',NULL,1),(5,'E',NULL,NULL)");
        run("INSERT INTO USERS_PROPERTY (ID_USERS,B007,B054,B055) VALUES "
            "(1,0,0,0),(2,1,1,1),(3,0,1,1),(4,1,1,0),(5,1,NULL,0)");
        run("INSERT INTO ACCESS_LEVELS (ID,ACCESS_LEVELS,NAME) VALUES (1,'000000','ROOT'),(2,'010000','A'),"
            "(3,'010100','B'),(4,'010101','C'),(5,'010201','D')");
        for (const char* relation : {"1,2", "2,3", "3,4", "4,5"})
            run("INSERT INTO ONETOMANY (RELATION,ID_MASTER,ID_SLAVE) VALUES ('USERS.ACCESS_LEVELS'," +
                std::string{relation} + ")");
        run("INSERT INTO ONETOMANY (RELATION,ID_MASTER,ID_SLAVE) VALUES ('OTHER',1,4)");
    }

    void run(const std::string& statement) { connection->Execute(statement); }
    void grant(int user, const std::string& right, const std::string& read, const std::string& write)
    {
        run("INSERT INTO USERS_TREEVIEW (ID_USERS,TREEVIEW,LESEN,SCHREIBEN) VALUES (" + std::to_string(user) + ",'" +
            right + "'," + read + "," + write + ")");
    }
    bool visible(int user, const std::string& key)
    {
        session.ID_User = user;
        std::vector<std::string> hidden;
        return lock.NodeVisibleCheck(session, hidden, key) == Variant{true};
    }
    bool writable(int user, const std::string& key)
    {
        session.ID_User = user;
        return lock.NodeWrite(session, key);
    }
    bool property(int user, const std::string& column)
    {
        session.ID_User = user;
        return lock.Users_Property(session, column);
    }
    /// First column of a statement, sorted.
    std::vector<std::string> texts(const std::string& statement) const
    {
        ado::Recordset rows;
        rows.Open(statement, connection);
        std::vector<std::string> all;
        for (; !rows.AtEOF(); rows.MoveNext())
            all.push_back(rows.Fields().Item(0).Value().asString());
        std::ranges::sort(all);
        return all;
    }
    std::vector<std::string> levelsOf(const std::string& name, std::int16_t mode = 0) const
    {
        return texts(sql.ACL_USERS_str(session, 3, name, mode, ""));
    }

    using Texts = std::vector<std::string>;
    ado::ConnectionRef connection = embedded::connectInMemory();
    TmkVar session;
    Comm_Lock lock;
    Comm_SQL sql;

private:
    PlatformScope scope_{[] {
        Platform platform;
        platform.regional = Regional::named("de-AT");
        platform.makeLocService = loc::makeLocService;
        return platform;
    }()};
};

TEST_P(RightsOnDatabase, LevelsOfAUserAndOfThoseWhoLendHimTheirRights)
{
    EXPECT_EQ(levelsOf("A"), (Texts{"010000", "010100"})) << "B lends; C lends to B alone; D does not lend";
    EXPECT_EQ(levelsOf("B"), (Texts{"010100", "010101"}));
    EXPECT_EQ(levelsOf("C"), (Texts{"010101"}));
    EXPECT_EQ(levelsOf("E"), Texts{});
    EXPECT_EQ(levelsOf("NOBODY"), Texts{});
    EXPECT_EQ(levelsOf(""), Texts{});
    session.ID_User = 2;
    EXPECT_EQ(levelsOf("whoever", 1), (Texts{"010100", "010101"}));
    EXPECT_EQ(levelsOf("", 1), Texts{});
    run("UPDATE USERS_PROPERTY SET B055 = 0 WHERE ID_USERS = 2");
    EXPECT_EQ(levelsOf("A"), (Texts{"010000"}));
}

TEST_P(RightsOnDatabase, FormsOfTheLevelStatement)
{
    session.ID_Access_Levels = 3;
    EXPECT_EQ(texts(sql.ACL_USERS_str(session, 1, "A", 0, "")), (Texts{"010000", "010100"}));
    EXPECT_EQ(texts(sql.ACL_USERS_str(session, 4, "A", 0, "")), (Texts{"010100"}));
    ado::Recordset found;
    found.Open(sql.ACL_USERS_str(session, 2, "A", 0, "010100"), connection);
    EXPECT_EQ(found.Fields().Item("ID").Value(), Variant{3});
    EXPECT_EQ(found.Fields().Item("NAME").Value(), Variant{"B"});
    found.Close();
    found.Open(sql.ACL_USERS_str(session, 2, "A", 0, "010101"), connection);
    EXPECT_TRUE(found.AtEOF()) << "C's level";
}

TEST_P(RightsOnDatabase, FirstLevelAndNumberOfLevels)
{
    std::string level = "none";
    EXPECT_TRUE(sql.ACL_USERS(session, "C", level));
    EXPECT_EQ(level, "010101");
    EXPECT_TRUE(sql.ACL_USERS(session, "A", level));
    EXPECT_TRUE(level == "010000" || level == "010100") << level;
    EXPECT_FALSE(sql.ACL_USERS(session, "E", level));
    for (const auto& [user, count] : {std::pair{1, 2}, {2, 2}, {3, 1}, {4, 1}, {5, 0}, {99, 0}}) {
        session.ID_User = user;
        EXPECT_EQ(sql.ONETOMANY_USERS_ACL_cnt(session), count) << user;
    }
    run("UPDATE USERS_PROPERTY SET B055 = 0 WHERE ID_USERS = 2");
    session.ID_User = 1;
    EXPECT_EQ(sql.ONETOMANY_USERS_ACL_cnt(session), 1);
}

TEST_P(RightsOnDatabase, CodeNameAndPassword)
{
    session.ID_Access_Levels = 3;
    EXPECT_EQ(sql.ACL(session), "010100");
    session.ID_Access_Levels = 0;
    EXPECT_EQ(sql.ACL(session), "");
    session.ID_User = 4;
    EXPECT_EQ(sql.USERS_NAME(session), "D");
    session.ID_User = 99;
    EXPECT_EQ(sql.USERS_NAME(session), "");
    EXPECT_TRUE(sql.USERS(session, "A"));
    EXPECT_FALSE(sql.USERS(session, "C"));
    EXPECT_FALSE(sql.USERS(session, "NOBODY"));
    EXPECT_EQ(sql.USERS(session, "B"), !session.bolOracle) << "an empty text counts as none on SQL Server only";
}

TEST_P(RightsOnDatabase, QuotesInNamesBreakTheStatement)
{
    std::string level = "as it was";
    for (const std::string name : {"O'NEILL", "'"}) {
        EXPECT_EQ(errorNumber([&] { sql.USERS(session, name); }), errors::statementRefused);
        EXPECT_EQ(errorNumber([&] { sql.ACL_USERS(session, name, level); }), errors::statementRefused);
        EXPECT_EQ(errorNumber([&] { texts(sql.ACL_USERS_str(session, 2, "A", 0, name)); }), errors::statementRefused);
    }
    EXPECT_EQ(level, "as it was");
    session.ID_User = 1;
    EXPECT_EQ(errorNumber([&] { lock.Users_Property(session, "B'"); }), errors::statementRefused);
    EXPECT_EQ(errorNumber([&] { lock.Users_Property(session, "NO_COLUMN"); }), errors::statementRefused);
}

TEST_P(RightsOnDatabase, NodesAreVisibleUnlessDenied)
{
    grant(1, "FI_EINSTELLUNGEN", "0", "0");
    grant(2, "FI_EINSTELLUNGEN", "1", "0");
    grant(1, "JAGD_PLAN", "NULL", "0");
    grant(4, "JAGD_PLAN", "1", "0");
    grant(1, "JAGD_WILD", "0", "0");
    grant(3, "JAGD_WILD", "1", "0");
    EXPECT_TRUE(visible(1, "TMK24")) << "B lends the right";
    EXPECT_FALSE(visible(1, "JAGD_PLAN")) << "Null denies; D lends nothing";
    EXPECT_FALSE(visible(1, "JAGD_WILD")) << "C lends to B, and B's deputy does not get it";
    EXPECT_TRUE(visible(2, "JAGD_WILD"));
    EXPECT_TRUE(visible(1, "TMK1225")) << "no row denies nothing";
    EXPECT_TRUE(visible(5, "TMK24"));
    run("UPDATE USERS_PROPERTY SET B055 = 0 WHERE ID_USERS = 2");
    EXPECT_FALSE(visible(1, "TMK24"));
}

TEST_P(RightsOnDatabase, NodesAreDeniedByTheDepthOfTheLevel)
{
    run("INSERT INTO BB_ORGANISATIONS_RECHTE (ANWENDUNGSOBJEKTE,LESEN_0,LESEN_1,LESEN_2,LESEN_3) VALUES "
        "('JAGD_PLAN',0,1,1,1),('JAGD_WILD',1,0,1,1),('JAGD_HUNDE',1,1,NULL,1),('JAGD_STRECKE',1,1,1,0)");
    const std::vector<std::string> keys{"JAGD_PLAN", "JAGD_WILD", "JAGD_HUNDE", "JAGD_STRECKE"};
    const std::vector<std::pair<int, std::size_t>> deniedAt{{4, 0}, {3, 1}, {2, 2}, {1, 3}};
    for (const auto& [level, denied] : deniedAt) {
        session.ID_Access_Levels = level;
        for (std::size_t key = 0; key < keys.size(); ++key)
            EXPECT_EQ(visible(5, keys[key]), key != denied) << level << keys[key];
        EXPECT_TRUE(visible(5, "JAGD_PRINT")) << "no row";
    }
    session.ID_Access_Levels = 0;
    EXPECT_FALSE(visible(5, "JAGD_PLAN")) << "without a level every listed key is denied";
}

TEST_P(RightsOnDatabase, Writing)
{
    run("INSERT INTO BB_ORGANISATIONS_RECHTE (ANWENDUNGSOBJEKTE,SCHREIBEN_0,SCHREIBEN_1,SCHREIBEN_2,SCHREIBEN_3) "
        "VALUES "
        "('HV_BERICHTELISTEN',0,1,0,1),('HV_FREIGABE',0,0,0,0)");
    for (const char* right : {"HV_BERICHTELISTEN", "HV_FREIGABE", "JAGD_PLAN"})
        grant(2, right, "1", "1");
    grant(1, "HV_BERICHTELISTEN", "1", "0");
    for (const auto& [level, granted] : {std::pair{4, false}, {3, true}, {2, false}, {1, true}, {0, false}}) {
        session.ID_Access_Levels = level;
        EXPECT_EQ(writable(2, "TMK1225"), granted) << level;
        EXPECT_EQ(writable(1, "TMK1225"), granted) << "by B's grant";
        EXPECT_TRUE(writable(2, "HV_FREIGABE")) << "the personal grant suffices";
        EXPECT_FALSE(writable(2, "JAGD_PLAN")) << "no row of the organisation";
        EXPECT_FALSE(writable(3, "TMK1225"));
        EXPECT_FALSE(writable(0, "HV_FREIGABE"));
        EXPECT_FALSE(writable(2, "UNKNOWN"));
    }
    run("UPDATE USERS_PROPERTY SET B055 = 0 WHERE ID_USERS = 2");
    EXPECT_FALSE(writable(1, "HV_FREIGABE"));
}

TEST_P(RightsOnDatabase, Properties)
{
    EXPECT_TRUE(property(1, "B007")) << "B lends it";
    EXPECT_FALSE(property(3, "B007"));
    EXPECT_TRUE(property(2, "B007"));
    EXPECT_TRUE(property(5, "B007"));
    EXPECT_FALSE(property(5, "B001")) << "Null";
    EXPECT_FALSE(property(99, "B007")) << "no row";
    EXPECT_FALSE(property(1, "B054")) << "personal, though B has it";
    EXPECT_FALSE(property(1, "B055"));
    EXPECT_TRUE(property(2, "B055"));
    EXPECT_FALSE(property(5, "B054"));
    run("UPDATE USERS_PROPERTY SET B055 = 0 WHERE ID_USERS = 2");
    EXPECT_FALSE(property(1, "B007"));
}

TEST_P(RightsOnDatabase, SeenNodesAreRecordedOnceForTheLogin)
{
    session.ID_User = 1;
    lock.NodeVisible(session, "TMK24");
    lock.NodeVisible(session, "RECHNUNG_BB1");
    run("UPDATE USERS_TREEVIEW_SEEN SET SEEN = '2001-01-01'");
    lock.NodeVisible(session, "TMK24");
    EXPECT_EQ(texts("SELECT TREEVIEW FROM USERS_TREEVIEW_SEEN WHERE LOGIN = SUSER_SNAME()"),
              (Texts{"FI_EINSTELLUNGEN", "HV_BETRIEBSWIRTSCHAFT"}));
    EXPECT_EQ(texts("SELECT TREEVIEW FROM USERS_TREEVIEW_SEEN WHERE SEEN > '2020-01-01'"), (Texts{"FI_EINSTELLUNGEN"}));
    session.ID_User = 0;
    lock.NodeVisible(session, "JAGD_PLAN");
    EXPECT_EQ(texts("SELECT TREEVIEW FROM USERS_TREEVIEW_SEEN").size(), 2U);
    EXPECT_THROW(run("EXEC tmk_NodeVisible ''"), Error);
    EXPECT_THROW(run("EXEC tmk_NodeVisible NULL"), Error);
    EXPECT_THROW(run("EXEC tmk_NodeVisible"), Error);
}

INSTANTIATE_TEST_SUITE_P(Dialects, RightsOnDatabase, ::testing::Bool(),
                         [](const auto& instance) { return instance.param ? "Oracle" : "SqlServer"; });

} // namespace
} // namespace tamarok
