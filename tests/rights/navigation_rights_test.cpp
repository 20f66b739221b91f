#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "rights/workstation.h"
#include "support/errors.h"

#include "tamarok/comm_lock.h"

namespace tamarok {
namespace {

using test::failureOf;
using test::ShownMessage;
using Texts = std::vector<std::string>;

struct KeyPair {
    std::string_view tree;
    std::string_view right;
};
const std::vector<KeyPair> renamedKeys{
#include "rights/data/renamed_keys.inc"
};
const std::vector<std::string_view> ownKeys{
#include "rights/data/own_keys.inc"
};
const std::vector<KeyPair> families{
    {"STAMMEINGABE_BB", "HE_HAB-BEARBEITUNG"}, {"ANGEBOT_BB", "HV_ANGEBOTE"},
    {"RECHNUNG_BB", "HV_BETRIEBSWIRTSCHAFT"},  {"FAKTURA_BB", "FA_BETRIEBSWIRTSCHAFT"},
    {"BELEG_BB", "BB_BETRIEBSWIRTSCHAFT"},     {"LEISTUNGS_BB", "KW_AUFTRAGSABRECHNUNG"},
};

TEST(NavigationKeys, EveryKeyOfTheTree)
{
    const Comm_Lock lock;
    EXPECT_EQ(renamedKeys.size(), 41U);
    EXPECT_EQ(ownKeys.size(), 51U);
    for (const KeyPair& key : renamedKeys)
        EXPECT_EQ(lock.konvUSERS_TREEVIEW_KEY(key.tree), key.right) << key.tree;
    for (const std::string_view key : ownKeys)
        EXPECT_EQ(lock.konvUSERS_TREEVIEW_KEY(key), key);
}

TEST(NavigationKeys, FamiliesByPrefix)
{
    const Comm_Lock lock;
    for (const KeyPair& family : families) {
        for (const std::string tail : {"", "1", "_47", " x"})
            EXPECT_EQ(lock.konvUSERS_TREEVIEW_KEY(std::string{family.tree} + tail), family.right);
        EXPECT_EQ(lock.konvUSERS_TREEVIEW_KEY(family.tree.substr(1)), "");
        EXPECT_EQ(lock.konvUSERS_TREEVIEW_KEY(" " + std::string{family.tree}), "");
    }
}

TEST(NavigationKeys, OtherKeysAreUnknown)
{
    const Comm_Lock lock;
    for (const char* key : {"", "tmk24", "TMK24 ", "TMK2", "TMK241", "1imp_bb", "HV_FREIGABE1", "stammeingabe_bb",
                            "HE_HAB-BEARBEITUNG", "FI_EINSTELLUNGEN", "'", "\xC3\x84"})
        EXPECT_EQ(lock.konvUSERS_TREEVIEW_KEY(key), "") << key;
}

const std::string denials =
    "SELECT TREEVIEW,MAX(CASE WHEN LESEN = 1 THEN 1 ELSE 0 END) AS LESEN FROM USERS_TREEVIEW WHERE ID_USERS IN (SELECT "
    "USERS.ID FROM USERS INNER JOIN USERS_PROPERTY ON USERS_PROPERTY.ID_USERS = USERS.ID AND USERS_PROPERTY.B055 = 1 "
    "AND USERS.ID_USERS_VERTRETER = 7 UNION ALL SELECT 7 AS ID) GROUP BY TREEVIEW HAVING MAX(CASE WHEN LESEN = 1 THEN "
    "1 ELSE 0 END)=0";
const std::string denialsOracle =
    "SELECT TREEVIEW,MAX(LESEN) AS LESEN FROM USERS_TREEVIEW WHERE ID_USERS IN (SELECT USERS.ID FROM USERS INNER JOIN "
    "USERS_PROPERTY ON USERS_PROPERTY.ID_USERS = USERS.ID AND USERS_PROPERTY.B055 = 1 AND USERS.ID_USERS_VERTRETER = 7 "
    "UNION ALL SELECT 7 AS ID FROM DUAL) GROUP BY TREEVIEW HAVING NVL(MAX(LESEN),0)=0";

std::string levelDenials(const std::string& nullFunction)
{
    return std::string{"SELECT ANWENDUNGSOBJEKTE FROM BB_ORGANISATIONS_RECHTE WHERE 0="}
        .append(nullFunction)
        .append("((SELECT CASE WHEN RIGHT(ACCESS_LEVELS,6) = '000000' Then LESEN_3 WHEN RIGHT(ACCESS_LEVELS,4) = "
                "'0000' Then LESEN_2 WHEN RIGHT(ACCESS_LEVELS,2) = '00' Then LESEN_1 ELSE LESEN_0 END FROM "
                "ACCESS_LEVELS WHERE ID = 40000),0)");
}

class NavigationRights : public ::testing::Test {
protected:
    NavigationRights() { at.session.ID_Access_Levels = 40000; }

    void denied(std::vector<test::Row> personal, std::vector<test::Row> ofLevel)
    {
        at.database.addAnswer(denials, {"TREEVIEW", "LESEN"}, std::move(personal));
        at.database.addAnswer(levelDenials("ISNULL"), {"ANWENDUNGSOBJEKTE"}, std::move(ofLevel));
    }
    Variant visible(std::string_view key) { return lock.NodeVisibleCheck(at.session, hidden, key); }

    test::Workstation at;
    Comm_Lock lock;
    std::vector<std::string> hidden;
};

TEST_F(NavigationRights, HiddenKeysAreReadOnce)
{
    denied({{"HV_BERICHTELISTEN", 0}, {"JAGD_PLAN", 0}}, {{"JAGD_PLAN"}, {"FI_EINSTELLUNGEN"}});
    EXPECT_EQ(visible("TMK1225"), Variant{false});
    EXPECT_EQ(hidden, (Texts{"HV_BERICHTELISTEN", "JAGD_PLAN", "FI_EINSTELLUNGEN"}));
    EXPECT_EQ(visible("TMK24"), Variant{false});
    EXPECT_EQ(visible("JAGD_PLAN"), Variant{false});
    EXPECT_EQ(visible("TMK1213"), Variant{true});
    EXPECT_EQ(visible("RECHNUNG_BB4"), Variant{true});
    EXPECT_EQ(at.sent(), (Texts{"main open " + denials, "main open " + levelDenials("ISNULL")}));
    hidden.clear();
    visible("TMK24");
    EXPECT_EQ(at.sent().size(), 4U) << "emptied, it is read again";
}

TEST_F(NavigationRights, NothingHiddenLeavesOneEmptyElement)
{
    denied({}, {});
    EXPECT_EQ(visible("TMK24"), Variant{true});
    EXPECT_EQ(hidden, Texts{""});
    EXPECT_EQ(visible("TMK24"), Variant{true});
    EXPECT_EQ(at.sent().size(), 2U);
}

TEST_F(NavigationRights, LevelsFirstKeyTakesTheEmptyElement)
{
    denied({}, {{"JAGD_PLAN"}, {"JAGD_WILD"}, {"JAGD_PLAN"}});
    EXPECT_EQ(visible("JAGD_WILD"), Variant{false});
    EXPECT_EQ(hidden, (Texts{"JAGD_PLAN", "JAGD_WILD"}));
}

TEST_F(NavigationRights, HiddenKeysUnderOracle)
{
    at.session.bolOracle = true;
    EXPECT_EQ(visible("TMK24"), Variant{true});
    EXPECT_EQ(at.sent(), (Texts{"main open " + denialsOracle, "main open " + levelDenials("NVL")}));
}

TEST_F(NavigationRights, CallersArrayIsTakenAsItIs)
{
    hidden = {"FI_EINSTELLUNGEN"};
    EXPECT_EQ(visible("TMK24"), Variant{false});
    EXPECT_EQ(visible("TMK1225"), Variant{true});
    EXPECT_EQ(hidden, Texts{"FI_EINSTELLUNGEN"});
    EXPECT_EQ(at.sent(), Texts{});
}

TEST_F(NavigationRights, EachPersonalDenialHasAnElementAlsoAnEmptyOneOrATwin)
{
    denied({{Null{}, 0}, {"JAGD_PLAN", 0}, {"", 0}, {"JAGD_PLAN", 0}}, {{"JAGD_PLAN"}, {""}, {"JAGD_WILD"}});
    visible("TMK24");
    EXPECT_EQ(hidden, (Texts{"", "JAGD_PLAN", "", "JAGD_PLAN", "JAGD_WILD"}));
}

TEST_F(NavigationRights, WhatWasReadBeforeAFailureStays)
{
    at.database.addAnswer(denials, {"TREEVIEW", "LESEN"}, {{"HV_BERICHTELISTEN", 0}, {"JAGD_PLAN", 0}});
    at.database.fail("main open " + levelDenials("ISNULL"));
    EXPECT_EQ(failureOf([&] { visible("TMK24"); }).number, errors::timeout);
    EXPECT_EQ(hidden, (Texts{"HV_BERICHTELISTEN", "JAGD_PLAN"}));
    EXPECT_EQ(visible("TMK1225"), Variant{false});
    EXPECT_EQ(at.sent().size(), 2U) << "nothing is read again";

    hidden.clear();
    at.database.fail("main open " + denials);
    EXPECT_EQ(failureOf([&] { visible("TMK24"); }).number, errors::timeout);
    EXPECT_EQ(hidden, Texts{""});
}

TEST_F(NavigationRights, RowsBeforeAnUnreadableOneStay)
{
    auto table = std::make_shared<test::Table>();
    table->columns.push_back({"TREEVIEW", "", "", ado::DataType::VarWChar, 50});
    table->rows = {{1, {"HV_BERICHTELISTEN"}}, {2, {"JAGD_PLAN"}}};
    table->unreadable = 2;
    at.database.answerTable(denials, table);
    EXPECT_EQ(failureOf([&] { visible("TMK24"); }).number, errors::providerFailure);
    EXPECT_EQ(hidden, Texts{"HV_BERICHTELISTEN"});
}

TEST_F(NavigationRights, WithoutUserEveryKnownNodeIsVisible)
{
    at.session.ID_User = 0;
    hidden = {"FI_EINSTELLUNGEN"};
    EXPECT_EQ(visible("TMK24"), Variant{true});
    hidden.clear();
    for (const KeyPair& key : renamedKeys)
        EXPECT_EQ(visible(key.tree), Variant{true});
    EXPECT_TRUE(hidden.empty());
    lock.NodeVisible(at.session, "TMK24");
    EXPECT_TRUE(at.loc.procedures.empty());
    EXPECT_TRUE(at.messages->shown.empty());
    EXPECT_EQ(at.sent(), Texts{});
}

TEST_F(NavigationRights, UnknownKeyShowsOneWord)
{
    for (const std::int32_t user : {7, 0}) {
        at.session.ID_User = user;
        EXPECT_TRUE(visible("UNKNOWN").isEmpty());
        lock.NodeVisible(at.session, "UNKNOWN");
    }
    EXPECT_EQ(at.messages->shown, std::vector<ShownMessage>(4, {"CHYBA", 0, "Tamarok"}));
    EXPECT_TRUE(at.loc.asked.empty()) << "without a look-up of texts";
    EXPECT_TRUE(at.loc.procedures.empty());
    EXPECT_TRUE(hidden.empty());
    EXPECT_EQ(at.sent(), Texts{});
}

TEST_F(NavigationRights, NodeVisibleCallsTheProcedure)
{
    lock.NodeVisible(at.session, "RECHNUNG_BB12");
    ASSERT_EQ(at.loc.procedures.size(), 1U);
    EXPECT_EQ(at.loc.procedures[0].name, "tmk_NodeVisible");
    ASSERT_EQ(at.loc.procedures[0].parameters.size(), 1U);
    const ado::Parameter& key = at.loc.procedures[0].parameters[0];
    EXPECT_EQ(key.name, "strKey");
    EXPECT_EQ(static_cast<int>(key.type), 200);
    EXPECT_EQ(static_cast<int>(key.direction), 1);
    EXPECT_EQ(key.size, 200);
    EXPECT_EQ(key.value, Variant{"HV_BETRIEBSWIRTSCHAFT"});
}

std::string writeStatement(bool personalOnly, const std::string& right)
{
    return std::string{"SELECT B.A FROM (SELECT (CASE WHEN USERS_TREEVIEW.SCHREIBEN = 1"}
        .append(personalOnly
                    ? ""
                    : " AND (SELECT (SELECT (CASE WHEN RIGHT(ACCESS_LEVELS,6) = '000000' Then SCHREIBEN_3 WHEN "
                      "RIGHT(ACCESS_LEVELS,4) = '0000' Then SCHREIBEN_2 WHEN RIGHT(ACCESS_LEVELS,2) = '00' Then "
                      "SCHREIBEN_1 ELSE SCHREIBEN_0 END) FROM ACCESS_LEVELS WHERE ID = 40000) FROM "
                      "BB_ORGANISATIONS_RECHTE WHERE ANWENDUNGSOBJEKTE = USERS_TREEVIEW.TREEVIEW)=1")
        .append(" THEN 1 ELSE 0 END) AS A FROM USERS_TREEVIEW WHERE (USERS_TREEVIEW.ID_USERS = 7 OR "
                "USERS_TREEVIEW.ID_USERS IN (SELECT USERS.ID FROM USERS INNER JOIN USERS_PROPERTY ON "
                "USERS_PROPERTY.ID_USERS = USERS.ID AND USERS_PROPERTY.B055 = 1 WHERE USERS.ID_USERS_VERTRETER = 7)) "
                "AND USERS_TREEVIEW.TREEVIEW = '")
        .append(right)
        .append("') B ORDER BY A DESC");
}

TEST_F(NavigationRights, WriteStatementOfEveryKey)
{
    const std::set<std::string_view> actions{"AG_EINWEISUNG", "AG_ZURUCKNEHMEN", "HV_FREIGABE",        "HV_STORNO",
                                             "HV_BEZAHLT",    "FA_FREIGABE",     "FA_STORNO",          "FA_BEZAHLT",
                                             "BB_FREIGABE",   "BB_STORNO",       "BB_RECHNUNG",        "BB_BEENDET",
                                             "BB_SPERREN",    "KW_FREIGABE",     "KW_MONATSABSCHLUSS", "OBJEKTE_FIX"};
    std::vector<KeyPair> keys = renamedKeys;
    keys.insert(keys.end(), families.begin(), families.end());
    for (const std::string_view key : ownKeys)
        keys.push_back({key, key});
    for (const bool oracle : {false, true}) {
        at.session.bolOracle = oracle;
        for (const KeyPair& key : keys) {
            at.database.clearRecord();
            EXPECT_FALSE(lock.NodeWrite(at.session, key.tree)) << "no row";
            EXPECT_EQ(at.sent(),
                      Texts{"main open " + writeStatement(actions.contains(key.tree), std::string{key.right})});
        }
    }
}

TEST_F(NavigationRights, FirstRowDecidesAboutWriting)
{
    const std::string statement = writeStatement(true, "HV_FREIGABE");
    at.database.addAnswer(statement, {"A"}, {{1}, {0}});
    EXPECT_TRUE(lock.NodeWrite(at.session, "HV_FREIGABE"));
    for (const Variant& other : {Variant{0}, Variant{2}, Variant{Null{}}}) {
        test::Workstation fresh;
        fresh.database.addValue(statement, "A", other);
        EXPECT_FALSE(lock.NodeWrite(fresh.session, "HV_FREIGABE"));
    }
}

TEST_F(NavigationRights, WritingBehindAnUnknownKeyIsDeniedWithoutAMessage)
{
    EXPECT_FALSE(lock.NodeWrite(at.session, "UNKNOWN"));
    EXPECT_EQ(at.sent(), Texts{"main open " + writeStatement(false, "")});
    EXPECT_TRUE(at.messages->shown.empty());
}

TEST_F(NavigationRights, WritingIsAskedForUserZeroToo)
{
    at.session.ID_User = 0;
    EXPECT_FALSE(lock.NodeWrite(at.session, "HV_FREIGABE"));
    EXPECT_EQ(at.sent().size(), 1U);
}

TEST_F(NavigationRights, PropertiesWithoutUserHoldUpToTwenty)
{
    at.session.ID_User = 0;
    for (const char* column : {"B001", "B020", "X20", "B-5", "B0",
                               "\xC3\x84"
                               "7",
                               "B19,9"})
        EXPECT_TRUE(lock.Users_Property(at.session, column)) << column;
    for (const char* column : {"B021", "B054", "B055", "B20,1"})
        EXPECT_FALSE(lock.Users_Property(at.session, column)) << column;
    for (const char* column : {"", "B", "BB20", "NAME", "B'"})
        EXPECT_EQ(failureOf([&] { lock.Users_Property(at.session, column); }).number, errors::typeMismatch) << column;
    EXPECT_EQ(at.sent(), Texts{});
}

TEST_F(NavigationRights, PropertyOfTheUserOrOfAPrincipal)
{
    const std::string deputies =
        " OR ID_USERS IN (SELECT USERS.ID FROM USERS INNER JOIN USERS_PROPERTY ON USERS_PROPERTY.ID_USERS = USERS.ID "
        "AND USERS_PROPERTY.B055 = 1 WHERE USERS.ID_USERS_VERTRETER = 7)";
    const auto statement = [&](const std::string& column, const std::string& more) {
        return "SELECT " + column + " FROM USERS_PROPERTY WHERE ID_USERS = 7" + more + " ORDER BY 1 DESC";
    };
    for (const char* column : {"B001", "B053", "B056", "b054"}) {
        at.database.clearRecord();
        EXPECT_FALSE(lock.Users_Property(at.session, column)) << "no row";
        EXPECT_EQ(at.sent(), Texts{"main open " + statement(column, deputies)});
    }
    for (const char* column : {"B054", "B055"}) {
        at.database.clearRecord();
        EXPECT_FALSE(lock.Users_Property(at.session, column));
        EXPECT_EQ(at.sent(), Texts{"main open " + statement(column, "")}) << "personal";
    }
    struct Case {
        Variant first;
        bool holds;
    };
    for (const Case& one : {Case{true, true}, {false, false}, {Null{}, false}, {1, true}, {0, false}, {"-1", true}}) {
        test::Workstation fresh;
        fresh.database.addAnswer(statement("B001", deputies), {"B001"}, {{one.first}, {true}});
        EXPECT_EQ(lock.Users_Property(fresh.session, "B001"), one.holds);
    }
}

} // namespace
} // namespace tamarok
