#include <gtest/gtest.h>
#include <map>

#include "catalogue/table_file.h"
#include "support/surroundings.h"

#include "tamarok/comm_csel.h"

namespace tamarok {
namespace {

using test::Surroundings;

constexpr std::string_view logBase = "LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = LOGS_RECH.ID_LOG";

class FromClause : public ::testing::Test {
protected:
    std::string from(std::string_view type, int id, std::string_view body, std::string_view version = "R") const
    {
        return csel.GetFrom(type, static_cast<std::int16_t>(id), body, version, with.session);
    }

    Surroundings with;
    Comm_CSel csel;
};

struct ExpectedJoin {
    std::vector<int> prerequisites;
    std::string mainInvoice;
    std::string thirdSettlement;
};

std::map<int, ExpectedJoin> expectedJoins()
{
    std::map<int, ExpectedJoin> joins;
    for (const auto& row : test::readTable("log_joins_expected.tsv")) {
        ExpectedJoin join{{}, row.at(2), row.at(3)};
        for (std::size_t at = 0; at < row.at(1).size(); at = row[1].find(' ', at)) {
            at += row[1][at] == ' ' ? 1U : 0U;
            join.prerequisites.push_back(std::stoi(row[1].substr(at)));
        }
        joins[std::stoi(row.at(0))] = join;
    }
    return joins;
}

TEST_F(FromClause, EveryColumnOfTheLogList)
{
    const auto joins = expectedJoins();
    ASSERT_EQ(joins.size(), 449U);
    for (int id = -1; id <= 1042; ++id) {
        std::string main{logBase};
        std::string third{logBase};
        if (const auto found = joins.find(id); found != joins.end()) {
            for (const int prerequisite : found->second.prerequisites) {
                main += joins.at(prerequisite).mainInvoice;
                third += joins.at(prerequisite).thirdSettlement;
            }
            main += found->second.mainInvoice;
            third += found->second.thirdSettlement;
        }
        EXPECT_EQ(from("LOG", id, ""), main) << id;
        EXPECT_EQ(from("LOG", id, main), main) << id;
        EXPECT_EQ(from("LOG", id, "", "A3"), third) << id;
        EXPECT_EQ(from("LOG", id, "", "a3"), third) << id;
    }
    EXPECT_TRUE(with.messages->shown.empty());
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(FromClause, OpensWithTheBaseAndAddsAJoinOnce)
{
    const std::string body = "LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = LOGS_RECH.ID_LOG LEFT JOIN LISTENART ON "
                             "LOGS.LISTENART = LISTENART.LISTENART";
    EXPECT_EQ(from("LOG", 4, ""), body);
    EXPECT_EQ(from("LOG", 4, body), body);
    EXPECT_EQ(from("log", 4, ""), body);
    EXPECT_EQ(from("LOG", 1, ""), logBase);
    EXPECT_EQ(from("LOG", 1, "X"), "X");
}

TEST_F(FromClause, PrerequisiteStandsBeforeTheJoinThatNeedsIt)
{
    const std::string body = from("LOG", 68, "");
    EXPECT_EQ(body, std::string{logBase} +
                        " LEFT JOIN HEADERRECH ON HEADERRECH.R_NAME = LOGS_RECH.R_NAME  AND HEADERRECH.VER_TYPE = 'R'"
                        " LEFT JOIN RECHNUNGSART ON RECHNUNGSART.RART_ID = HEADERRECH.RART_ID");
    EXPECT_EQ(from("LOG", 70, body), body);
}

TEST_F(FromClause, OrderOfColumnsDoesNotMatterForTheSetOfJoins)
{
    std::string forwards;
    std::string backwards;
    for (int id = 1; id <= 1041; ++id) {
        forwards = from("LOG", id, forwards);
        backwards = from("LOG", 1042 - id, backwards);
    }
    EXPECT_EQ(forwards.size(), backwards.size());
}

TEST_F(FromClause, DuplicateGuardIsACaseSensitiveTestOnTheWholeFragment)
{
    const std::string lower = "logs left join dsart on dsart.id = logs.dsart";
    EXPECT_EQ(from("LOG", 19, lower), lower + " LEFT JOIN DSART ON DSART.ID = LOGS.DSART");
    const std::string blank = "LOGS LEFT JOIN DSART ON DSART.ID  = LOGS.DSART";
    EXPECT_EQ(from("LOG", 19, blank), blank + " LEFT JOIN DSART ON DSART.ID = LOGS.DSART");
    const std::string inside = "X LEFT JOIN DSART ON DSART.ID = LOGS.DSARTEN";
    EXPECT_EQ(from("LOG", 19, inside), inside);
}

TEST_F(FromClause, UnitJoinGoesByTheLastCharacterOfTheVersion)
{
    EXPECT_EQ(from("LOG", 210, "X", "R"), from("LOG", 202, "X", "R"));
    EXPECT_EQ(from("LOG", 210, "X", "a8"), from("LOG", 218, "X", "R"));
    for (const char* version : {"", "r", "A0", "A9"}) {
        EXPECT_EQ(from("LOG", 210, "X", version), "X") << version;
    }
}

TEST_F(FromClause, AFromTextIsReportedAndUsed)
{
    const test::ShownMessage message{"Error In GetFrom", 0, "Tamarok"};
    EXPECT_EQ(from("LOG", 19, "FROM LOGS"), "FROM LOGS LEFT JOIN DSART ON DSART.ID = LOGS.DSART");
    EXPECT_EQ(with.messages->shown, std::vector{message});
    EXPECT_EQ(from("LOG", 1, "fromage"), "fromage");
    EXPECT_EQ(with.messages->shown.size(), 2U);
    static_cast<void>(from("LOG", 1, " FROM LOGS"));
    EXPECT_EQ(with.messages->shown.size(), 2U);
    static_cast<void>(from("NONE", 1, "From"));
    EXPECT_EQ(with.messages->shown.size(), 3U);
}

TEST_F(FromClause, UnknownTypeAddsNothing)
{
    EXPECT_EQ(from("NONE", 4, ""), "");
    EXPECT_EQ(from("", 4, ""), "");
    EXPECT_EQ(from("NONE", 4, "LOGS"), "LOGS");
}

TEST_F(FromClause, EveryTypeHasItsBase)
{
    const std::vector<std::pair<const char*, const char*>> bases{
        {"ARTIKEL", "NN_POSITIONEN"},
        {"BBF", "ARBEITSAUFTRAG_KOPF"},
        {"BBF_PLANN", "ARBEITSAUFTRAG_KOPF_PLANN"},
        {"LOG", "LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = LOGS_RECH.ID_LOG"},
        {"VERTRAG", "VERTRAEGE"},
        {"WAREN", "WARENKATALOG"},
        {"TRANSPORT", "TRANSPORTLOGISTIK_KOPF"},
        {"PERSONAL", "PERSONAL"},
        {"RJ", "HEADERRECH"},
        {"BBKLR", "BB_BELEGE_KOPF"},
        {"BBLTN", "BB_LEISTUNGS_KOPF INNER JOIN #BB_LEISTUNGS_KOPF ON BB_LEISTUNGS_KOPF.ID = #BB_LEISTUNGS_KOPF.ID"},
        {"BBHAB", "BB_HAB_KOPF"},
        {"BBFAK", "BB_FAKTURA_KOPF"},
        {"BBFS", "LOHNERFASSUNG_KOPF"},
        {"KIZ", "KLR"},
        {"BBFB", "SCH_BELEGE_KOPF"},
        {"BBLAG", "BB_BELEGE_LAGER"},
        {"BBVS", "BB_VERTEILSCHLUSSEL_KOPF"},
        {"USERS", "USERS"},
        {"ACL", "ACCESS_LEVELS"},
        {"BBUN", "BB_TAKL01_KLR"},
        {"MSCH", "SCH_MASCHINENBUCH"},
        {"BERM", "BEREITSTELLUNG_KOPF"},
        {"PLAN", "PLAN_KOPF"},
        {"BBPLAN", "BB_PLAN_KOPF"},
        {"BBTALK", "BB_TAKL01_KLR"},
        {"SAPAGRUPPE", "PA_GRUPPE"},
        {"BBZV", "BB_AUFTRAG_KOPF"},
        {"BBMAP", "BB_MAP_KOPF"},
        {"AKAT", "BB_T_AUFTRAGS_PLANUNG"},
        {"BBJAGD", "BB_ABSCHUSSPLAN_KOPF"},
        {"BBWILD", "BB_WILDURSPRUNGS"},
        {"BBHUNDE", "BB_JAGDHUNDE"},
        {"BBSTRK", "BB_STRECKE_NIEDER"},
        {"BBWAL", "BB_WALDARBEITERLOHN_KOPF"},
        {"BBJB", "BB_JAGDBEZIRKE"},
        {"BBFAHR", "BB_FAHRTENBUCH_KOPF"},
        {"BBOBJ", "BB_T_OBJEKTE"},
        {"STEH", "STEH_AUFNAHMEPROTOKOLL_KOPF"},
        {"MVLOSE", "BB_MV_VERKAUFSZIEL"},
        {"FHPEXP", "FHP_IMPORT"}};
    ASSERT_EQ(bases.size(), 41U);
    for (const auto& [key, base] : bases) {
        EXPECT_EQ(from(key, 0, ""), base) << key;
    }
}

} // namespace
} // namespace tamarok
