#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "rights/workstation.h"
#include "support/errors.h"

#include "tamarok/comm_sql.h"

namespace tamarok {
namespace {

using test::failureOf;
using Texts = std::vector<std::string>;

class UsersAndLevels : public ::testing::Test {
protected:
    UsersAndLevels() { at.session.ID_Access_Levels = 40000; }

    test::Workstation at;
    Comm_SQL sql;
};

TEST_F(UsersAndLevels, CodeOfTheCurrentLevel)
{
    at.database.addValue("SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = 40000", "ACCESS_LEVELS", "0102");
    at.database.addValue("SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = 40000", "ACCESS_LEVELS", Null{});
    at.database.addAnswer("SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = 40000", {"ACCESS_LEVELS"}, {});
    EXPECT_EQ(sql.ACL(at.session), "0102");
    EXPECT_EQ(sql.ACL(at.session), "") << "Null";
    EXPECT_EQ(sql.ACL(at.session), "") << "no row";
    at.session.ID_Access_Levels = 0;
    EXPECT_EQ(sql.ACL(at.session), "");
    EXPECT_EQ(at.sent().back(), "main open SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID  IS NULL");
    for (const test::Call& call : at.database.calls) {
        EXPECT_EQ(call.cursorType, ado::CursorType::OpenForwardOnly);
        EXPECT_EQ(call.lockType, ado::LockType::ReadOnly);
    }
}

TEST_F(UsersAndLevels, StatementsAboutOneLevel)
{
    EXPECT_EQ(sql.ACL_str(at.session, 1, 5),
              "SELECT NAME FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = REPLICATE(0,LEN(ACCESS_LEVELS))");
    EXPECT_EQ(sql.ACL_str(at.session, 2, 5), "SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = 5");
    EXPECT_EQ(sql.ACL_str(at.session, 0, 5), "");
    EXPECT_EQ(sql.ACL_str(at.session, 3, 5), "");
    at.session.bolOracle = true;
    EXPECT_EQ(sql.ACL_str(at.session, 1, 5),
              "SELECT NAME FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = LPAD('0',LEN(ACCESS_LEVELS),'0')");
    EXPECT_EQ(at.sent(), Texts{});
}

/// The relation and its deputy rule for a subject.
std::string relation(const std::string& subject)
{
    return std::string{" FROM ACCESS_LEVELS INNER JOIN ONETOMANY ON ACCESS_LEVELS.ID = ONETOMANY.ID_SLAVE"}
        .append(" WHERE ONETOMANY.RELATION = 'USERS.ACCESS_LEVELS' AND (ONETOMANY.ID_MASTER IN (")
        .append(subject)
        .append(") OR ID_MASTER IN (SELECT USERS.ID FROM USERS INNER JOIN USERS_PROPERTY ON "
                "USERS_PROPERTY.ID_USERS = USERS.ID AND USERS_PROPERTY.B055 = 1 WHERE USERS.ID_USERS_VERTRETER IN (")
        .append(subject)
        .append(")))");
}

TEST_F(UsersAndLevels, StatementsAboutTheLevelsOfUsers)
{
    struct Subject {
        std::string name;
        std::int16_t mode;
        std::string text;
    };
    const std::string choice = "SELECT ACCESS_LEVELS AS NUMMER, NAME AS SHORT,NAME_LANG AS LONG FROM ACCESS_LEVELS";
    for (const Subject& subject : {Subject{"EDER", 1, "7"},
                                   {"EDER", 0, "SELECT ID FROM USERS WHERE NAME = 'EDER'"},
                                   {"EDER", 2, "SELECT ID FROM USERS WHERE NAME = 'EDER'"},
                                   {"", 1, "0"},
                                   {"", 0, "0"},
                                   {"O'NEILL", 0, "SELECT ID FROM USERS WHERE NAME = 'O'NEILL'"}}) {
        const auto text = [&](std::int16_t form) {
            return sql.ACL_USERS_str(at.session, form, subject.name, subject.mode, "0102");
        };
        const std::string levels = relation(subject.text);
        EXPECT_EQ(text(1), choice + " WHERE ID IN (SELECT ACCESS_LEVELS.ID" + levels + ") ORDER BY 1");
        EXPECT_EQ(text(2),
                  "SELECT ACCESS_LEVELS.ID,ACCESS_LEVELS.NAME" + levels + " AND ACCESS_LEVELS.ACCESS_LEVELS = '0102'");
        EXPECT_EQ(text(3), "SELECT ACCESS_LEVELS.ACCESS_LEVELS" + levels);
        EXPECT_EQ(text(4), choice + " WHERE  LEFT(ACCESS_LEVELS,6) IN (SELECT LEFT(ACCESS_LEVELS,6) FROM "
                                    "ACCESS_LEVELS WHERE ID = 40000) ORDER BY 1");
        EXPECT_EQ(text(0), "");
        EXPECT_EQ(text(5), "");
    }
    EXPECT_EQ(at.sent(), Texts{});
}

TEST_F(UsersAndLevels, FirstLevelOfANamedUser)
{
    const std::string tail =
        " AND (ONETOMANY.ID_MASTER IN (SELECT ID FROM USERS WHERE NAME = 'EDER') OR ID_MASTER IN (SELECT USERS.ID "
        "FROM USERS INNER JOIN USERS_PROPERTY ON USERS_PROPERTY.ID_USERS = USERS.ID AND USERS_PROPERTY.B055 = 1 WHERE "
        "USERS.ID_USERS_VERTRETER = (SELECT ID FROM USERS WHERE NAME = 'EDER')))";
    const std::string join = " FROM ACCESS_LEVELS INNER JOIN ONETOMANY ON ACCESS_LEVELS.ID = ONETOMANY.ID_SLAVE WHERE ";
    const std::string server =
        "SELECT TOP 1 ACCESS_LEVELS.ACCESS_LEVELS" + join + "ONETOMANY.RELATION = 'USERS.ACCESS_LEVELS'" + tail;
    const std::string oracle =
        "SELECT ACCESS_LEVELS.ACCESS_LEVELS" + join + "ROWNUM =1 AND ONETOMANY.RELATION = 'USERS.ACCESS_LEVELS'" + tail;
    std::string level = "as it was";
    EXPECT_FALSE(sql.ACL_USERS(at.session, "EDER", level));
    EXPECT_EQ(level, "as it was");
    at.database.addValue(server, "ACCESS_LEVELS", "0102");
    EXPECT_TRUE(sql.ACL_USERS(at.session, "EDER", level));
    EXPECT_EQ(level, "0102");
    at.session.bolOracle = true;
    at.database.addValue(oracle, "ACCESS_LEVELS", "0203");
    EXPECT_TRUE(sql.ACL_USERS(at.session, "EDER", level));
    EXPECT_EQ(level, "0203");
    EXPECT_EQ(at.sent(), (Texts{"main open " + server, "main open " + server, "main open " + oracle}));
}

TEST_F(UsersAndLevels, UserWithoutPassword)
{
    EXPECT_FALSE(sql.USERS(at.session, "EDER"));
    at.session.bolOracle = true;
    at.database.addValue("SELECT ID FROM USERS WHERE NAME = 'EDER' AND PASSWORD IS NULL", "ID", 9);
    EXPECT_TRUE(sql.USERS(at.session, "EDER"));
    EXPECT_EQ(at.sent(), (Texts{"main open SELECT ID FROM USERS WHERE NAME = 'EDER' AND ISNULL(PASSWORD,'') = ''",
                                "main open SELECT ID FROM USERS WHERE NAME = 'EDER' AND PASSWORD IS NULL"}));
}

TEST_F(UsersAndLevels, NameOfTheUser)
{
    EXPECT_EQ(sql.USERS_NAME(at.session), "");
    at.database.addValue("SELECT NAME FROM USERS WHERE ID = 7", "NAME", "MOSER");
    EXPECT_EQ(sql.USERS_NAME(at.session), "MOSER");
}

TEST_F(UsersAndLevels, NumberOfLevels)
{
    const std::string tail =
        "(COUNT(*),0) AS CNT FROM ONETOMANY WHERE ONETOMANY.RELATION = 'USERS.ACCESS_LEVELS' AND (ONETOMANY.ID_MASTER "
        "= 7 OR ONETOMANY.ID_MASTER IN (SELECT USERS.ID FROM USERS INNER JOIN USERS_PROPERTY ON "
        "USERS_PROPERTY.ID_USERS = USERS.ID AND USERS_PROPERTY.B055 = 1 WHERE USERS.ID_USERS_VERTRETER = 7))";
    EXPECT_EQ(sql.ONETOMANY_USERS_ACL_cnt(at.session), 0) << "no row";
    at.database.addValue("SELECT ISNULL" + tail, "CNT", 32767);
    EXPECT_EQ(sql.ONETOMANY_USERS_ACL_cnt(at.session), 32767);
    at.session.bolOracle = true;
    at.database.addValue("SELECT NVL" + tail, "CNT", 32768);
    EXPECT_EQ(failureOf([&] { sql.ONETOMANY_USERS_ACL_cnt(at.session); }).number, errors::overflow);
    EXPECT_EQ(at.sent(), (Texts{"main open SELECT ISNULL" + tail, "main open SELECT ISNULL" + tail,
                                "main open SELECT NVL" + tail}));
}

} // namespace
} // namespace tamarok
