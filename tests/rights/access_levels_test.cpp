#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "rights/workstation.h"
#include "support/errors.h"

#include "tamarok/comm_lock.h"
#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

using test::failureOf;
using Texts = std::vector<std::string>;

const std::string root = ".ID_ACCESS_LEVELS IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN (SELECT TOP 1 "
                         "REPLICATE(0,LEN(ACCESS_LEVELS)) FROM ACCESS_LEVELS))";
const std::string rootOracle = ".ID_ACCESS_LEVELS IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN (SELECT "
                               "LPAD(0,LEN(ACCESS_LEVELS),0) FROM ACCESS_LEVELS WHERE rownum = 1))";
const std::string code = "SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = ";

class AccessLevels : public ::testing::Test {
protected:
    AccessLevels()
    {
        at.session.DateFrom = at.session.DateFromDefault = makeDate(2000, 1, 1);
        at.session.DateTo = Date{makeDate(2024, 5, 17).days + 30};
        at.session.intDateToDays = 30;
    }

    std::string clause(std::string_view table, std::int32_t level, std::string where = {})
    {
        const std::string result = lock.Access_Levels(table, where, at.session, level);
        EXPECT_EQ(result, where) << "the same text is left in strWhere";
        return result;
    }
    void levelIs(std::int32_t id, const std::string& levelCode)
    {
        at.database.addValue(code + std::to_string(id), "ACCESS_LEVELS", levelCode);
    }
    Texts sent() const { return at.sent(); }

    test::Workstation at;
    Comm_Lock lock;
};

const std::vector<std::string> sharedKeys{
    "PERSONAL",     "BB_T_AUFTRAGS_PLANUNG", "BB_T_PROJEKT_PLANUNG", "VERKAUFSART",
    "BB_T_OBJEKTE", "BB_T_VERTRAG",          "WARENKATALOG",         "BB_T_FSC",
    "T_ERLEGER",    "T_JAGDBEZIRK"};

TEST_F(AccessLevels, StaffOfAlfIsSeenThroughReferences)
{
    at.session.strCustomer = "ALF";
    const std::string references =
        "SELECT ID_ACL_0,ID_ACL_1,ID_ACL_2,ID_ACL_3,ID_ACL_4 FROM ACCESS_LEVELS WHERE ID = 70000";
    const Texts fields{"ID_ACL_0", "ID_ACL_1", "ID_ACL_2", "ID_ACL_3", "ID_ACL_4"};
    at.database.addAnswer(references, fields, {{Null{}, 9, Null{}, 12, 3}});
    at.database.addAnswer(references, fields, {{Null{}, Null{}, Null{}, Null{}, Null{}}});
    at.database.addAnswer(references, fields, {});
    EXPECT_EQ(clause("PERSONAL", 70000), "(PERSONAL.ID_ACCESS_LEVELS IN (9,12,3))");
    EXPECT_EQ(clause("PERSONAL", 70000), "(1=1)");
    EXPECT_EQ(clause("PERSONAL", 70000), "(1=1)") << "no such level";
    EXPECT_EQ(sent(), Texts(3, "main open " + references));
    EXPECT_EQ(clause("VERKAUFSART", 0), "(ISNULL(VERKAUFSART.ID_ACCESS_LEVELS,0)=0 OR VERKAUFSART" + root + ")")
        << "the customer matters to staff alone";
}

TEST_F(AccessLevels, RuleOfBbInBothDialectsReadsNothing)
{
    at.session.strCustomer = "BB";
    for (const bool oracle : {false, true}) {
        at.session.bolOracle = oracle;
        for (const std::string& t : sharedKeys) {
            EXPECT_EQ(clause(t, 70000),
                      "(ISNULL(" + t + ".ID_ACCESS_LEVELS,0)=0 OR " + t + (oracle ? rootOracle : root) + " OR " + t +
                          ".ID_ACCESS_LEVELS IN (SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS,LEN(ACCESS_"
                          "LEVELS) - 4) IN (SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS) - 4) FROM ACCESS_LEVELS WHERE "
                          "ID = 70000)))");
        }
    }
    EXPECT_EQ(sent(), Texts{});
}

TEST_F(AccessLevels, SubtreeOfALevel)
{
    const auto expected = [](const std::string& t, const std::string& subquery) {
        return "(ISNULL(" + t + ".ID_ACCESS_LEVELS,0)=0 OR " + t + root + " OR " + t + ".ID_ACCESS_LEVELS IN (" +
               subquery + "))";
    };
    const std::vector<std::pair<std::string, std::string>> subqueries{
        {"01020304", "SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = '01020304'"},
        {"01020300", "SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS,6) = '010203'"},
        {"01020000", "SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS,4) = '0102'"},
        {"01000000", "SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS,2) = '01'"},
        {"00000000", "SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS,0) = ''"},
        {"01000300", "SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS,6) = '010003'"},
        {"01020310", "SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = '01020310'"},
        {"0100000", "SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS,3) = '010'"},
        {"010", "SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = '010'"},
        {"", "SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = ''"},
    };
    std::int32_t id = 0;
    for (const auto& [levelCode, subquery] : subqueries) {
        levelIs(++id, levelCode);
        EXPECT_EQ(clause("PERSONAL", id), expected("PERSONAL", subquery)) << levelCode;
    }
    for (const std::string& t : sharedKeys)
        EXPECT_EQ(clause(t, 1), expected(t, subqueries[0].second));
    at.session.bolOracle = true;
    EXPECT_EQ(clause("PERSONAL", 1), expected("PERSONAL", subqueries[0].second)) << "the same text under Oracle";
    EXPECT_EQ(sent().front(), "main open " + code + "1");
    EXPECT_EQ(at.database.calls.front().cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(at.database.calls.front().lockType, ado::LockType::ReadOnly);
}

TEST_F(AccessLevels, SubtreeWithoutALevelIsTheRootAlone)
{
    for (const std::int32_t id : {0, -1, -40000})
        EXPECT_EQ(clause("T_ERLEGER", id), "(ISNULL(T_ERLEGER.ID_ACCESS_LEVELS,0)=0 OR T_ERLEGER" + root + ")");
    EXPECT_EQ(sent(), Texts{});
}

TEST_F(AccessLevels, MissingLevelFailsAndLeavesTheCondition)
{
    std::string where = "A = 1";
    EXPECT_EQ(failureOf([&] { lock.Access_Levels("PERSONAL", where, at.session, 99); }).number,
              errors::noCurrentRecord);
    EXPECT_EQ(where, "A = 1");
}

TEST_F(AccessLevels, LevelsAbove16BitsOverflowWhereTheCodeIsRead)
{
    levelIs(32767, "01");
    EXPECT_NO_THROW(clause("PERSONAL", 32767));
    for (const std::string table : {"PERSONAL", "MODELS"}) {
        std::string where;
        EXPECT_EQ(failureOf([&] { lock.Access_Levels(table, where, at.session, 32768); }).number, errors::overflow);
    }
    EXPECT_EQ(clause("RELTABLE", 32768),
              "(ISNULL(RELTABLE.ID_ACCESS_LEVELS,0)=0 OR RELTABLE.ID_ACCESS_LEVELS = 32768)");
}

const std::string ofModel = "(SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = MODELS.ID_ACCESS_LEVELS)";
const std::string withoutLevel =
    "(MODELS.ID_ACCESS_LEVELS IS NULL AND (MODELS.NICHT_ANDERBAR = 1 OR MODELS.ID_USER = 7))";

TEST_F(AccessLevels, Models)
{
    levelIs(5, "010200");
    EXPECT_EQ(clause("MODELS", 5),
              "(" + withoutLevel + " OR (MODELS.ID_ACCESS_LEVELS IS NOT NULL AND 1=(CASE  WHEN RIGHT(" + ofModel +
                  ",6) = '000000' THEN 1 WHEN RIGHT(" + ofModel + ",4)  = '0000' THEN  (CASE WHEN '010200' LIKE LEFT(" +
                  ofModel + ",2)+'____'  THEN 1 ELSE 0 END) WHEN RIGHT(" + ofModel +
                  ",2)  = '00' THEN  (CASE WHEN '010200' LIKE LEFT(" + ofModel +
                  ",4)+'__'  THEN 1 ELSE 0 END) WHEN 1=1 THEN (CASE WHEN '010200' = " + ofModel +
                  " THEN 1 ELSE 0 END) END)))");
    EXPECT_EQ(sent(), Texts{"main open " + code + "5"});
    EXPECT_EQ(clause("MODELS", 0), "(" + withoutLevel + ")") << "no such level";
    levelIs(6, "");
    EXPECT_EQ(clause("MODELS", 6), "(" + withoutLevel + ")");
    at.session.bolOracle = true;
    EXPECT_EQ(clause("MODELS", 0), "(" + withoutLevel + ")") << "no Oracle form";
}

TEST_F(AccessLevels, ServicesSeeTheParentsToo)
{
    const std::string t = "BB_LEISTUNGS_KOPF.ID_ACCESS_LEVELS";
    at.session.strID_Access_Levels = "5,6";
    EXPECT_EQ(clause("BB_LEISTUNGS_KOPF", 40000),
              "(ISNULL(" + t + ",0)=0 OR " + t + " IN (5,6) OR " + t +
                  " IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN ("
                  "(SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-2)+'00'     FROM ACCESS_LEVELS WHERE ID = 40000),"
                  "(SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-4)+'0000'   FROM ACCESS_LEVELS WHERE ID = 40000),"
                  "(SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-6)+'000000' FROM ACCESS_LEVELS WHERE ID = 40000))))");
    at.session.strID_Access_Levels.clear();
    EXPECT_EQ(clause("BB_LEISTUNGS_KOPF", 40000), "(ISNULL(" + t + ",0)=0)");
}

/// Rows of the table that depend on nothing but the visible levels and the level asked for.
struct PlainRow {
    std::string table;
    bool oracle;
    std::string visible;
    std::int32_t level;
    std::string clause;
};
const std::vector<PlainRow> plainRows{
    {"RELTABLE", false, "1,2", 0, "(ISNULL(RELTABLE.ID_ACCESS_LEVELS,0)=0)"},
    {"RELTABLE", true, "1,2", 3, "(ISNULL(RELTABLE.ID_ACCESS_LEVELS,0)=0 OR RELTABLE.ID_ACCESS_LEVELS = 3)"},
    {"RELTABLE", false, "", -3, "(ISNULL(RELTABLE.ID_ACCESS_LEVELS,0)=0 OR RELTABLE.ID_ACCESS_LEVELS = -3)"},
    {"T_STEH_RELTABLE", false, "", 0, "(ISNULL(T_STEH_RELTABLE.ID_ACCESS_LEVELS,0)=0)"},
    {"T_STEH_RELTABLE", false, "", 4,
     "(ISNULL(T_STEH_RELTABLE.ID_ACCESS_LEVELS,0)=0 OR T_STEH_RELTABLE.ID_ACCESS_LEVELS = 4)"},
    {"KLR", false, "", 4, "(KLR.ACCESSLEVEL IS NULL)"},
    {"KLR", true, "1,2", 4,
     "(KLR.ACCESSLEVEL IS NULL OR KLR.ACCESSLEVEL IN (SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID IN (1,2)))"},
    {"LOGS", true, "SELECT ID FROM X", 4,
     "(NVL(LOGS.ID_ACCESS_LEVELS,0) IN (SELECT ID FROM X UNION ALL SELECT 0 AS ID FROM DUAL))"},
    {"LOGS", true, "", 4, "(NVL(LOGS.ID_ACCESS_LEVELS,0) IN (0))"},
    {"LOGS", false, "1,2", 4, "(ISNULL(LOGS.ID_ACCESS_LEVELS,0)=0 OR LOGS.ID_ACCESS_LEVELS IN (1,2))"},
    {"LOGS", false, "", 4, "(ISNULL(LOGS.ID_ACCESS_LEVELS,0)=0)"},
    {"personal", false, "", 4, "(ISNULL(personal.ID_ACCESS_LEVELS,0)=0)"},
    {"Models", false, "1", 4, "(ISNULL(Models.ID_ACCESS_LEVELS,0)=0 OR Models.ID_ACCESS_LEVELS IN (1))"},
    {"", false, "", 4, "(ISNULL(.ID_ACCESS_LEVELS,0)=0)"},
};

TEST_F(AccessLevels, RowsOfTheTableThatReadNothing)
{
    at.session.strCustomer = "WVO";
    for (const PlainRow& row : plainRows) {
        at.session.bolOracle = row.oracle;
        at.session.strID_Access_Levels = row.visible;
        EXPECT_EQ(clause(row.table, row.level), row.clause);
    }
    EXPECT_EQ(sent(), Texts{});
}

TEST_F(AccessLevels, ConditionIsAddedToTheOneThatStands)
{
    EXPECT_EQ(clause("LOGS", 0, "A = 1"), "A = 1 AND (ISNULL(LOGS.ID_ACCESS_LEVELS,0)=0)");
}

TEST_F(AccessLevels, InvoicesAreAlwaysWithinThePeriod)
{
    for (const std::string table : {"HEADERRECH", "RECHNUNGSJOURNAL"}) {
        EXPECT_EQ(clause(table, 0), " " + table + ".INVDATE >= '1.1.2000' AND  " + table +
                                        ".INVDATE <= '16.6.2024' AND (ISNULL(" + table + ".ID_ACCESS_LEVELS,0)=0)");
    }
    at.session.bolOracle = true;
    at.session.strID_Access_Levels = "";
    EXPECT_EQ(clause("HEADERRECH", 0), " HEADERRECH.INVDATE >= '1.1.2000' AND  HEADERRECH.INVDATE <= '16.6.2024' AND "
                                       "(NVL(HEADERRECH.ID_ACCESS_LEVELS,0) IN (0))");
}

TEST_F(AccessLevels, ListsTakeTheDefaultPeriodAsNoLimit)
{
    const std::string level = "(ISNULL(LISTENKOPF.ID_ACCESS_LEVELS,0)=0)";
    EXPECT_EQ(clause("LISTENKOPF", 0), level);
    at.session.DateFrom = makeDate(2024, 1, 1);
    EXPECT_EQ(clause("LISTENKOPF", 0), "LOGS.LISTDATUM >= '1.1.2024' AND " + level);
    at.session.DateTo = makeDate(2024, 12, 31);
    EXPECT_EQ(clause("LISTENKOPF", 0), "LOGS.LISTDATUM >= '1.1.2024' AND LOGS.LISTDATUM <= '31.12.2024' AND " + level);
    at.session.DateFrom = at.session.DateFromDefault;
    EXPECT_EQ(clause("LISTENKOPF", 0), "LOGS.LISTDATUM <= '31.12.2024' AND " + level);
}

class LevelCondition : public AccessLevels {
protected:
    std::string condition(std::string_view level, std::uint8_t groups, std::string_view exactly)
    {
        return set.CreateSQL_ACCESS_LEVELS(at.session, level, groups, exactly);
    }
    Comm_Set set;
};

TEST_F(LevelCondition, ZeroIsNoLevel)
{
    for (const char* zero : {"0", "0,0", " 0 ", "-0"})
        EXPECT_EQ(condition(zero, 1, "no Boolean"), "IS NULL") << zero;
}

TEST_F(LevelCondition, NumberParameterAndSubquery)
{
    EXPECT_EQ(condition("5", 1, "True"),
              "IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS LIKE (SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-"
              "2)+ '00' FROM ACCESS_LEVELS WHERE ID IN (5)))");
    EXPECT_EQ(condition("@id_Access_Levels", 2, "0"),
              "IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS LIKE (SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-"
              "4)+ '____' FROM ACCESS_LEVELS WHERE ID IN (@id_Access_Levels)))");
    at.session.bolOracle = true;
    EXPECT_EQ(condition("SELECT 3", 0, "-1"),
              "IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN (SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-0)"
              " || '' FROM ACCESS_LEVELS WHERE ID IN (SELECT 3)))");
    at.session.bolOracle = false;
    EXPECT_EQ(condition("5", 255, "1"),
              "IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS LIKE (SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-"
              "510)+ '" +
                  std::string(510, '0') + "' FROM ACCESS_LEVELS WHERE ID IN (5)))");
}

TEST_F(LevelCondition, BadTexts)
{
    for (const char* level : {"", "abc", "select 3", "@OTHER", "5'"})
        EXPECT_EQ(failureOf([&] { condition(level, 1, "1"); }).number, errors::typeMismatch) << level;
    for (const char* exactly : {"", "perhaps", "'"})
        EXPECT_EQ(failureOf([&] { condition("5", 1, exactly); }).number, errors::typeMismatch) << exactly;
}

} // namespace
} // namespace tamarok
