#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "rights/workstation.h"
#include "support/errors.h"

#include "tamarok/comm_lock.h"

namespace tamarok {
namespace {

using test::failureOf;

/// How a refused lock of one kind reads.
struct Refusal {
    std::string column;
    std::string key;
    std::string lookup; ///< without the key; "" where nothing is looked up
    std::vector<std::string> fields;
    test::Row values;
    std::string message;
};

const std::vector<Refusal> refusals{
    {"LISTE", "'L-1'", "", {}, {}, "T4890 'L-1' T4892 EDER T4893"},
    {"RECHNUNG", "'R R-24'", "", {}, {}, "T4891 (T642) 'R-24' T4892 EDER T4893"},
    {"RECHNUNG", "'A1R-24'", "", {}, {}, "T4891 (T646) 'R-24' T4892 EDER T4893"},
    {"RECHNUNG", "'A2R-24'", "", {}, {}, "T4891 (T649) 'R-24' T4892 EDER T4893"},
    {"RECHNUNG", "'A3R-24'", "", {}, {}, "T4891 (T652) 'R-24' T4892 EDER T4893"},
    {"RECHNUNG", "'A4R-24'", "", {}, {}, "T4891 (T655) 'R-24' T4892 EDER T4893"},
    {"RECHNUNG", "'A5R-24'", "", {}, {}, "T4891 (T629) 'R-24' T4892 EDER T4893"},
    {"RECHNUNG", "'A6R-24'", "", {}, {}, "T4891 (T632) 'R-24' T4892 EDER T4893"},
    {"RECHNUNG", "'A7R-24'", "", {}, {}, "T4891 (T625) 'R-24' T4892 EDER T4893"},
    {"RECHNUNG", "'A8R-24'", "", {}, {}, "T4891 (T638) 'R-24' T4892 EDER T4893"},
    {"RECHNUNG", "'A9R-24'", "", {}, {}, ""},
    {"RECHNUNG", "'r R-24'", "", {}, {}, ""},
    {"BELEGE",
     "5",
     "SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = ",
     {"BELEGNUMMER"},
     {"X"},
     "T4890 'X' T4892 EDER T4893"},
    {"HAB", "5", "SELECT HAB_NUMMER FROM BB_HAB_KOPF WHERE ID = ", {"HAB_NUMMER"}, {"X"}, "T4890 'X' T4892 EDER T4893"},
    {"FAKTURA", "5", "SELECT FA_NUMMER FROM BB_FAKTURA_KOPF WHERE ID = ", {"FA_NUMMER"}, {"X"}, "'X' T4892 EDER T4893"},
    {"LOHNERFASSUNG",
     "5",
     "SELECT BUCHUNGS_YEAR,BUCHUNGS_MONTH FROM LOHNERFASSUNG_KOPF WHERE ID = ",
     {"BUCHUNGS_YEAR", "BUCHUNGS_MONTH"},
     {2024, 3},
     "'3/2024' T4892 EDER T4893"},
    {"BELEGBUCHUNG",
     "5",
     "SELECT BELEGNUMMER FROM SCH_BELEGE_KOPF WHERE ID = ",
     {"BELEGNUMMER"},
     {"X"},
     "T4890 'X' T4892 EDER T4893"},
    {"MASCHINEN", "5", "SELECT NUMMER FROM SCH_MASCHINENBUCH WHERE ID = ", {"NUMMER"}, {"X"}, "'X' T4892 EDER T4893"},
    {"PLANN", "5", "SELECT PLANNUMMER FROM PLAN_KOPF WHERE ID = ", {"PLANNUMMER"}, {"X"}, "T4890 'X' T4892 EDER T4893"},
    {"PLAN_BB",
     "5",
     "SELECT PLAN_NUMMER FROM BB_PLAN_KOPF WHERE ID = ",
     {"PLAN_NUMMER"},
     {"X"},
     "T4890 'X' T4892 EDER T4893"},
    {"ZV_BB",
     "5",
     "SELECT AUFTRAG_NUMMER FROM BB_AUFTRAG_KOPF WHERE ID = ",
     {"AUFTRAG_NUMMER"},
     {"X"},
     "T4890 'X' T4892 EDER T4893"},
    {"BB_MAP",
     "5",
     "SELECT MAP_NUMMER FROM BB_MAP_KOPF WHERE ID = ",
     {"MAP_NUMMER"},
     {"X"},
     "T4890 'X' T4892 EDER T4893"},
    {"JAGD_BB",
     "5",
     "SELECT JAGDJAHR FROM BB_ABSCHUSSPLAN_KOPF WHERE ID = ",
     {"JAGDJAHR"},
     {2024},
     "T4890 '2024' T4892 EDER T4893"},
    {"WILD_BB",
     "5",
     "SELECT WILDMARKENNUMMER FROM BB_WILDURSPRUNGS WHERE ID = ",
     {"WILDMARKENNUMMER"},
     {"X"},
     "T4890 'X' T4892 EDER T4893"},
    {"HUNDE_BB", "5", "SELECT NUMMER FROM BB_JAGDHUNDE WHERE ID = ", {"NUMMER"}, {"X"}, "T4890 'X' T4892 EDER T4893"},
    {"STRK_BB",
     "5",
     "SELECT NUMMER FROM BB_STRECKE_NIEDER WHERE ID = ",
     {"NUMMER"},
     {"X"},
     "T4890 'X' T4892 EDER T4893"},
    {"WAL_BB",
     "5",
     "SELECT (CAST(ABRECHNUNGSMONAT as nvarchar(2))+'/'+CAST(JAHR as nvarchar(4)) FROM BB_WALDARBEITERLOHN_KOPF WHERE "
     "ID = ",
     {""},
     {"3/2024"},
     "T4890 '3/2024' T4892 EDER T4893"},
    {"STEH",
     "5",
     "SELECT NUMMER FROM STEH_AUFNAHMEPROTOKOLL_KOPF WHERE ID = ",
     {"NUMMER"},
     {"X"},
     "'X' T4892 EDER T4893"},
    {"SOMETHING", "5", "", {}, {}, ""},
    {"belege", "5", "", {}, {}, ""},
};

/// User 8, whose session is alive, holds the object; user 7 asks for it.
class LockRefusal : public ::testing::Test {
protected:
    void holdElsewhere(const std::string& column, const std::string& key)
    {
        const std::string condition = " AND " + column + " = " + key;
        at.database.addValue("SELECT ID_USERS FROM LOCK WHERE ID_USERS <> 7" + condition + " GROUP BY ID_USERS",
                             "ID_USERS", 8);
        at.database.addValue("SELECT ID FROM LOCK WHERE ID_USERS = 8 AND LOGIN IS NOT NULL", "ID", 20);
        at.database.fail("main execute DELETE FROM LOCK WHERE ID = 20");
        at.database.addAnswer("SELECT ID FROM LOCK WHERE ID_USERS = 7" + condition, {"ID"}, {});
        at.database.addValue("SELECT ID FROM LOCK WHERE ID_USERS = 7" + condition, "ID", 50);
        at.database.addValue("SELECT NAME FROM USERS WHERE ID = 8", "NAME", "EDER");
    }
    bool wasTakenBack() const
    {
        return at.database.find("main execute DELETE FROM LOCK WHERE ID = 50").timeoutSeconds == 5;
    }

    test::Workstation at;
    Comm_Lock lock;
};

/// The numbers of the texts in a message, "T4890" and so on, in their order.
std::vector<int> textsIn(const std::string& message)
{
    constexpr std::string_view digits = "0123456789";
    std::vector<int> numbers;
    for (std::size_t mark = message.find('T'); mark != std::string::npos; mark = message.find('T', mark + 1)) {
        const std::string number = message.substr(mark + 1, message.find_first_not_of(digits, mark + 1) - mark - 1);
        if (!number.empty()) numbers.push_back(std::stoi(number));
    }
    return numbers;
}

class LockRefusalOfKind : public LockRefusal, public ::testing::WithParamInterface<Refusal> {};

TEST_P(LockRefusalOfKind, ReadsExactly)
{
    const Refusal& refusal = GetParam();
    holdElsewhere(refusal.column, refusal.key);
    if (!refusal.lookup.empty()) at.database.addAnswer(refusal.lookup + refusal.key, refusal.fields, {refusal.values});
    EXPECT_FALSE(lock.LockOn(refusal.column, refusal.key, at.session));
    EXPECT_TRUE(wasTakenBack());
    EXPECT_EQ(at.session.db_ADO->CommandTimeout(), 41);
    if (refusal.message.empty()) {
        EXPECT_TRUE(at.messages->shown.empty());
    } else {
        EXPECT_EQ(at.messages->shown, (std::vector<test::ShownMessage>{{refusal.message, 48, "Tamarok"}}));
    }
    EXPECT_EQ(at.loc.asked, textsIn(refusal.message)) << "in the order in which they are shown";
    if (!refusal.lookup.empty()) {
        const test::Call& lookup = at.database.find("main open " + refusal.lookup + refusal.key);
        EXPECT_EQ(lookup.timeoutSeconds, 41);
        EXPECT_EQ(lookup.cursorType, ado::CursorType::OpenForwardOnly);
        EXPECT_EQ(lookup.lockType, ado::LockType::ReadOnly);
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, LockRefusalOfKind, ::testing::ValuesIn(refusals),
                         [](const auto& instance) { return std::to_string(instance.index) + instance.param.column; });

TEST_F(LockRefusal, MissingHeadRecordFailsAfterTheLockHasBeenTakenBack)
{
    int looked = 0;
    for (const Refusal& refusal : refusals) {
        if (refusal.lookup.empty()) continue;
        holdElsewhere(refusal.column, refusal.key);
        at.database.clearRecord();
        at.database.addAnswer(refusal.lookup + refusal.key, refusal.fields, {});
        EXPECT_EQ(failureOf([&] { lock.LockOn(refusal.column, refusal.key, at.session); }).number,
                  errors::noCurrentRecord)
            << refusal.column;
        EXPECT_TRUE(wasTakenBack());
        EXPECT_EQ(at.session.db_ADO->CommandTimeout(), 41);
        ++looked;
    }
    EXPECT_EQ(looked, 16);
    EXPECT_TRUE(at.messages->shown.empty());
}

TEST_F(LockRefusal, RefusedLookUpFailsAfterTheLockHasBeenTakenBack)
{
    holdElsewhere("WAL_BB", "5");
    at.database.fail("main open SELECT (CAST(ABRECHNUNGSMONAT as nvarchar(2))+'/'+CAST(JAHR as nvarchar(4)) FROM "
                     "BB_WALDARBEITERLOHN_KOPF WHERE ID = 5");
    EXPECT_EQ(failureOf([&] { lock.LockOn("WAL_BB", "5", at.session); }).number, errors::timeout);
    EXPECT_TRUE(wasTakenBack());
    EXPECT_EQ(at.session.db_ADO->CommandTimeout(), 41);
    EXPECT_TRUE(at.messages->shown.empty());
}

} // namespace
} // namespace tamarok
