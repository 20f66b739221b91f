#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tamarok_embedded/connect.h"

#include "tamarok/comm_lock.h"
#include "tamarok/comm_set.h"
#include "tamarok/comm_sql.h"
#include "tamarok/platform.h"

namespace tamarok {
namespace {

/// A tree of levels with two branches at every node, and tables with one row a level and one without.
/// What a condition lets through is compared with what the codes say. The row's number is its level's
/// id, 0 for none.
class LevelsOnTree : public ::testing::TestWithParam<std::tuple<int, bool>> {
protected:
    LevelsOnTree() : connection_{embedded::connectInMemory()}
    {
        session.db_ADO = connection_;
        session.bolOracle = std::get<1>(GetParam());
        session.ID_User = 7;
        connection_->Execute(
            "CREATE TABLE ACCESS_LEVELS (ID INT NOT NULL PRIMARY KEY, ACCESS_LEVELS NVARCHAR(20), "
            "NAME NVARCHAR(20), ID_ACL_0 INT, ID_ACL_1 INT, ID_ACL_2 INT, ID_ACL_3 INT, ID_ACL_4 INT)");
        addNode("", std::get<0>(GetParam()));
    }

    void addNode(const std::string& prefix, int groupsLeft)
    {
        const std::string code = prefix + std::string(static_cast<std::size_t>(2 * groupsLeft), '0');
        const int id = static_cast<int>(codes.size()) + 1;
        codes[id] = code;
        connection_->Execute("INSERT INTO ACCESS_LEVELS (ID,ACCESS_LEVELS,NAME) VALUES (" + std::to_string(id) + ",'" +
                             code + "','L" + code + "')");
        if (groupsLeft == 0) return;
        addNode(prefix + "01", groupsLeft - 1);
        addNode(prefix + "10", groupsLeft - 1);
    }

    void makeTable(const std::string& name)
    {
        connection_->Execute("CREATE TABLE " + name + " (ID INT, ID_ACCESS_LEVELS INT)");
        connection_->Execute("INSERT INTO " + name + " (ID) VALUES (0)");
        connection_->Execute("INSERT INTO " + name + " (ID,ID_ACCESS_LEVELS) SELECT ID,ID FROM ACCESS_LEVELS");
    }

    std::set<int> rows(const std::string& statement) const
    {
        ado::Recordset found;
        found.Open(statement, session.db_ADO);
        std::set<int> ids;
        for (; !found.AtEOF(); found.MoveNext())
            ids.insert(found.Fields().Item(0).Value().asLong());
        return ids;
    }
    std::set<int> seen(const std::string& table, int level) const
    {
        std::string where;
        Comm_Lock{}.Access_Levels(table, where, session, level);
        return rows("SELECT ID FROM " + table + " WHERE " + where);
    }

    /// Rows without level, and those whose code passes.
    std::set<int> expected(const std::function<bool(const std::string&)>& passes) const
    {
        std::set<int> ids{0};
        for (const auto& [id, code] : codes)
            if (passes(code)) ids.insert(id);
        return ids;
    }
    bool isRoot(const std::string& code) const { return code.find_first_not_of('0') == std::string::npos; }
    /// The code without its closing groups of zeros.
    static std::string stem(std::string code)
    {
        while (code.ends_with("00"))
            code.resize(code.size() - 2);
        return code;
    }

    TmkVar session;
    std::map<int, std::string> codes;

private:
    ado::ConnectionRef connection_;
    PlatformScope scope_{[] {
        Platform platform;
        platform.regional = Regional::named("de-AT");
        return platform;
    }()};
};

TEST_P(LevelsOnTree, SubtreeShowsTheNodeAllUnderItTheRootAndRowsWithoutLevel)
{
    for (const std::string table : {"PERSONAL", "T_ERLEGER"}) {
        makeTable(table);
        for (const auto& [level, own] : codes) {
            EXPECT_EQ(seen(table, level), expected([this, stemmed = stem(own)](const std::string& code) {
                          return isRoot(code) || code.starts_with(stemmed);
                      }))
                << own;
        }
        EXPECT_EQ(seen(table, 0), expected([&](const std::string& code) { return isRoot(code); }));
    }
}

TEST_P(LevelsOnTree, BbShowsWhatAgreesInAllButTheLastTwoGroups)
{
    session.strCustomer = "BB";
    makeTable("PERSONAL");
    for (const auto& [level, own] : codes) {
        const std::string prefix = own.substr(0, own.size() - 4);
        EXPECT_EQ(seen("PERSONAL", level),
                  expected([&](const std::string& code) { return isRoot(code) || code.starts_with(prefix); }))
            << own;
    }
    EXPECT_EQ(seen("PERSONAL", 9999), expected([&](const std::string& code) { return isRoot(code); }))
        << "no such level";
}

TEST_P(LevelsOnTree, AlfShowsTheReferencedLevelsOrAll)
{
    session.strCustomer = "ALF";
    makeTable("PERSONAL");
    session.db_ADO->Execute("UPDATE ACCESS_LEVELS SET ID_ACL_1 = 4, ID_ACL_4 = 2 WHERE ID = 3");
    EXPECT_EQ(seen("PERSONAL", 3), (std::set<int>{2, 4})) << "rows without level are not seen here";
    EXPECT_EQ(seen("PERSONAL", 4).size(), codes.size() + 1);
    EXPECT_EQ(seen("PERSONAL", 9999).size(), codes.size() + 1);
}

TEST_P(LevelsOnTree, ModelsOfOneselfOfTheLevelAndOfTheNodesAbove)
{
    session.db_ADO->Execute("CREATE TABLE MODELS (ID INT, ID_ACCESS_LEVELS INT, ID_USER INT, NICHT_ANDERBAR BIT)");
    session.db_ADO->Execute("INSERT INTO MODELS (ID,ID_ACCESS_LEVELS,ID_USER,NICHT_ANDERBAR) "
                            "SELECT ID,ID,8,0 FROM ACCESS_LEVELS");
    session.db_ADO->Execute("INSERT INTO MODELS (ID,ID_USER,NICHT_ANDERBAR) VALUES (1001,7,0),(1002,8,0),(1003,8,1)");
    for (const auto& [level, own] : codes) {
        std::set<int> visible{1001, 1003};
        for (const auto& [id, code] : codes)
            if (own.starts_with(stem(code))) visible.insert(id);
        EXPECT_EQ(seen("MODELS", level), visible) << own;
    }
    EXPECT_EQ(seen("MODELS", 0), (std::set<int>{1001, 1003}));
}

TEST_P(LevelsOnTree, ServicesShowTheVisibleLevelsAndThreeParents)
{
    makeTable("BB_LEISTUNGS_KOPF");
    session.strID_Access_Levels = "2";
    for (const auto& [level, own] : codes) {
        std::set<int> visible = expected([ownCode = own](const std::string& code) {
            for (const std::size_t cut : {2U, 4U, 6U})
                if (code == ownCode.substr(0, ownCode.size() - cut) + std::string(cut, '0')) return true;
            return false;
        });
        visible.insert(2);
        EXPECT_EQ(seen("BB_LEISTUNGS_KOPF", level), visible) << own;
    }
    session.strID_Access_Levels.clear();
    EXPECT_EQ(seen("BB_LEISTUNGS_KOPF", 2), (std::set<int>{0}));
}

TEST_P(LevelsOnTree, RelationTablesShowTheLevelItself)
{
    for (const std::string table : {"RELTABLE", "T_STEH_RELTABLE"}) {
        makeTable(table);
        EXPECT_EQ(seen(table, 3), (std::set<int>{0, 3}));
        EXPECT_EQ(seen(table, 0), (std::set<int>{0}));
    }
}

TEST_P(LevelsOnTree, CostingHoldsTheCodeItself)
{
    session.db_ADO->Execute("CREATE TABLE KLR (ID INT, ACCESSLEVEL NVARCHAR(20))");
    session.db_ADO->Execute(
        "INSERT INTO KLR (ID) VALUES (0) INSERT INTO KLR SELECT ID,ACCESS_LEVELS FROM ACCESS_LEVELS");
    EXPECT_EQ(seen("KLR", 3), (std::set<int>{0}));
    session.strID_Access_Levels = "3,5";
    EXPECT_EQ(seen("KLR", 2), (std::set<int>{0, 3, 5}));
}

TEST_P(LevelsOnTree, OtherTablesShowTheVisibleLevels)
{
    makeTable("LOGS");
    EXPECT_EQ(seen("LOGS", 3), (std::set<int>{0}));
    session.strID_Access_Levels = session.bolOracle ? "SELECT ID FROM ACCESS_LEVELS WHERE ID = 3 OR ID = 5" : "3,5";
    EXPECT_EQ(seen("LOGS", 2), (std::set<int>{0, 3, 5}));
}

TEST_P(LevelsOnTree, ConditionByPositionInTheHierarchy)
{
    makeTable("T");
    const auto found = [&](std::string_view level, std::uint8_t groups, std::string_view exactly) {
        return rows("SELECT ID FROM T WHERE ID_ACCESS_LEVELS " +
                    Comm_Set{}.CreateSQL_ACCESS_LEVELS(session, level, groups, exactly));
    };
    EXPECT_EQ(found("0", 1, ""), (std::set<int>{0}));
    for (const auto& [level, own] : codes) {
        const std::string prefix = own.substr(0, own.size() - 2);
        std::set<int> above;
        std::set<int> beside;
        for (const auto& [id, code] : codes) {
            if (code == prefix + "00") above.insert(id);
            if (code.starts_with(prefix)) beside.insert(id);
        }
        EXPECT_EQ(found(std::to_string(level), 1, "True"), above) << own;
        EXPECT_EQ(found(std::to_string(level), 1, "False"), beside) << own;
        EXPECT_EQ(found("SELECT " + std::to_string(level) + (session.bolOracle ? " FROM DUAL" : ""), 1, "True"), above)
            << own;
        EXPECT_EQ(found(std::to_string(level), 0, "0"), (std::set<int>{level})) << own;
    }
}

TEST_P(LevelsOnTree, RootsName)
{
    ado::Recordset root;
    root.Open(Comm_SQL{}.ACL_str(session, 1, 0), session.db_ADO);
    EXPECT_EQ(root.Fields().Item("NAME").Value(), Variant{"L" + codes.at(1)});
    root.MoveNext();
    EXPECT_TRUE(root.AtEOF());
}

INSTANTIATE_TEST_SUITE_P(Depths, LevelsOnTree, ::testing::Combine(::testing::Values(3, 4, 5), ::testing::Bool()),
                         [](const auto& instance) {
                             return "Groups" + std::to_string(std::get<0>(instance.param)) +
                                    (std::get<1>(instance.param) ? "Oracle" : "SqlServer");
                         });

} // namespace
} // namespace tamarok
