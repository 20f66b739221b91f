#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "list_types.h"
#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/collection.h"
#include "tamarok/comm_csel.h"
#include "tamarok/controls.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::Surroundings;
using Entries = std::vector<std::pair<std::string, int>>;

constexpr std::string_view belegbuchLabels =
    "859,4689,1700,4831,4830,4995,4756,1757,4814,2520,1751,298,1755,4803,138,5462,2508";

const std::string transportOption =
    "SELECT NUMBER_VALUE FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'NETLOGISTIK_TRANSPORT'";

std::string statementFor(std::string_view labels)
{
    return "SELECT ID_STRING,ISNULL(CUSTOM_GERMAN,ISNULL(GERMAN,'')) AS RESULT FROM STRINGS WHERE ID_STRING IN (" +
           std::string{labels} + ") ORDER BY 2";
}

class ChoiceLists : public ::testing::Test {
protected:
    /// Gives every label of a statement the text "L" and its number, except one.
    void answerLabels(const std::string& statement, int missing = 0)
    {
        std::vector<test::Row> rows;
        const std::size_t open = statement.find("IN (") + 4;
        std::istringstream numbers{statement.substr(open, statement.find(')', open) - open)};
        for (std::string number; std::getline(numbers, number, ',');) {
            if (std::stoi(number) != missing) rows.push_back({std::int32_t{std::stoi(number)}, "L" + number});
        }
        with.database.addAnswer(statement, {"ID_STRING", "RESULT"}, rows);
    }

    Entries entries() const
    {
        Entries all;
        for (std::int32_t index = 0; index < box.ListCount(); ++index)
            all.emplace_back(box.List(index), box.ItemData(index));
        return all;
    }

    /// The statement of the box's labels, from a first fill that finds none.
    std::string statementOf(std::string_view key)
    {
        with.database.clearRecord();
        Surroundings empty{"de-AT", test::Unanswered::HasNoRows};
        empty.session.strCustomer = with.session.strCustomer;
        controls::ComboBox unused;
        try {
            csel.AddComboTyp(key, unused, empty.session, false);
        } catch (const Error&) {
            // The labels are missing; the statement is what is wanted.
        }
        return empty.database.openedTexts().empty() ? std::string{} : empty.database.openedTexts().back();
    }

    Surroundings with;
    Comm_CSel csel;
    controls::ComboBox box;
};

TEST_F(ChoiceLists, LabelsComeFromOneStatementInEachDialectAndForm)
{
    struct Form {
        bool oracle;
        bool shortForms;
        std::string text;
    };
    for (const Form& form : {
             Form{false, false, "ISNULL(CUSTOM_GERMAN,ISNULL(GERMAN,''))"},
             Form{false, true, "ISNULL(SHORT_GERMAN,ISNULL(CUSTOM_GERMAN,ISNULL(GERMAN,'')))"},
             Form{true, false, "NVL(CUSTOM_GERMAN,NVL(GERMAN,''))"},
             Form{true, true, "NVL(SHORT_GERMAN,NVL(CUSTOM_GERMAN,NVL(GERMAN,'')))"},
         }) {
        with.session.bolOracle = form.oracle;
        const std::string statement =
            "SELECT ID_STRING," + form.text + " AS RESULT FROM STRINGS WHERE ID_STRING IN (91,94) ORDER BY 2";
        with.database.addAnswer(statement, {"ID_STRING", "RESULT"},
                                {{std::int32_t{94}, "Neu"}, {std::int32_t{91}, "\xC3\x84ndern"}});
        const auto labels = csel.LoadColString("91,94", with.session, form.shortForms);
        EXPECT_EQ(labels->Count(), 2);
        EXPECT_EQ(labels->Item("91").asString(), "\xC3\x84ndern");
        EXPECT_EQ(labels->Item(std::int32_t{1}).asString(), "Neu");
        EXPECT_EQ(with.database.opened.back().cursorType, ado::CursorType::OpenForwardOnly);
        EXPECT_EQ(with.database.opened.back().lockType, ado::LockType::ReadOnly);
    }
    EXPECT_EQ(with.database.openCursors, 0);
}

TEST_F(ChoiceLists, NoLabelGivesAnEmptyCollection)
{
    with.database.addAnswer(statementFor("1"), {"ID_STRING", "RESULT"}, {});
    EXPECT_EQ(csel.LoadColString("1", with.session, false)->Count(), 0);
}

TEST_F(ChoiceLists, TheDocumentBookHasItsLabelsInOrderAndThreeFixedItems)
{
    answerLabels(statementFor(belegbuchLabels));
    box.AddItem("left over");
    csel.AddComboTyp("BELEGBUCH", box, with.session, false);
    EXPECT_EQ(with.database.opened.size(), 1U) << "one statement for a box";
    const Entries expected{{"L859", 1},
                           {"L4689", 2},
                           {"L1700", 3},
                           {"L4831", 4},
                           {"L4830", 5},
                           {"L4995", 6},
                           {"L4756", 7},
                           {"L1757", 8},
                           {"L4814", 9},
                           {"L2520", 10},
                           {"L1751", 11},
                           {"L298", 12},
                           {"L1755", 13},
                           {"L4803", 14},
                           {"L138", 15},
                           {"L5462", 16},
                           {"L2508", 17},
                           {"Auftragnummer", 18},
                           {"AuftragKurzname", 19},
                           {"AuftragLangname", 20}};
    EXPECT_EQ(entries(), expected);
}

TEST_F(ChoiceLists, AMissingLabelLeavesAMarkAndTheNextEntryFindsItsPlace)
{
    answerLabels(statementFor(belegbuchLabels), 1700);
    csel.AddComboTyp("BELEGBUCH", box, with.session, false);
    const Entries all = entries();
    ASSERT_EQ(all.size(), 20U);
    EXPECT_EQ(all[2], (std::pair<std::string, int>{"<Null>", 3}));
    EXPECT_EQ(all[3], (std::pair<std::string, int>{"L4831", 4}));
}

TEST_F(ChoiceLists, AnyOtherErrorReachesTheCallerAfterASecondTry)
{
    with.database.fail("open " + statementFor(belegbuchLabels));
    EXPECT_EQ(errorNumber([&] { csel.AddComboTyp("BELEGBUCH", box, with.session, false); }), errors::timeout);
    EXPECT_EQ(with.database.log, (std::vector<std::string>{"open " + statementFor(belegbuchLabels),
                                                           "open " + statementFor(belegbuchLabels)}));
    EXPECT_EQ(box.ListCount(), 0);
}

TEST_F(ChoiceLists, AnUnknownKeyLeavesTheBoxEmptyAndCaseCounts)
{
    for (const char* key : {"", "NOTHING", "belegbuch", "BELEGBUCH KIZ", "LOHNERFASS "}) {
        box.AddItem("left over");
        csel.AddComboTyp(key, box, with.session, false);
        EXPECT_EQ(box.ListCount(), 0) << key;
    }
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(ChoiceLists, EachGroupOfKeysBelongsToItsOperation)
{
    const std::string dogs = statementOf("BBHUNDE");
    const std::string bags = statementOf("BBSTRK");
    ASSERT_NE(dogs, "");
    ASSERT_NE(bags, "");
    answerLabels(dogs);
    answerLabels(bags);
    box.AddItem("kept");
    csel.AddComboTyp_2("BBHUNDE", box, with.session, false);
    csel.AddComboTyp_1("BBSTRK", box, with.session, false);
    csel.AddComboTyp_1("BELEGBUCH", box, with.session, false);
    EXPECT_EQ(box.ListCount(), 1) << "a key of another operation adds nothing, and the box is not emptied";
    csel.AddComboTyp_1("BBHUNDE", box, with.session, false);
    const std::int32_t afterDogs = box.ListCount();
    EXPECT_GT(afterDogs, 1);
    csel.AddComboTyp_2("BBSTRK", box, with.session, false);
    EXPECT_GT(box.ListCount(), afterDogs);
}

/// Every key of a list type with entries for an edition.
TEST_F(ChoiceLists, EditionItemsComeForExactlyTheirCustomer)
{
    int found = 0;
    for (const catalogue::ListType* type : catalogue::listTypes()) {
        for (const catalogue::Choice& row : type->description().choices) {
            const std::string edition = row.edition;
            if (edition.empty()) continue;
            ++found;
            const std::string key = std::string{row.keys}.substr(0, std::string{row.keys}.find(' '));
            std::vector<int> wanted;
            catalogue::forEachId(row.columns, [&](std::int16_t id) { wanted.push_back(id); });
            const std::string statement = statementOf(key);
            with.database.answer(transportOption, 0.0, "NUMBER_VALUE");
            const auto offers = [&](const std::string& customer) {
                with.session.strCustomer = customer;
                answerLabels(statement);
                if (*row.option != '\0') return true; // by an option too: another test
                csel.AddComboTyp(key, box, with.session, false);
                bool offered = false;
                for (const auto& [text, column] : entries())
                    offered = offered || column == wanted.front();
                return offered;
            };
            EXPECT_TRUE(offers(edition)) << key << " for " << edition;
            if (*row.option != '\0') continue;
            for (const std::string& other : {std::string{}, edition + " ", edition + "X", std::string{"de"}})
                EXPECT_FALSE(offers(other)) << key << " for '" << other << "'";
        }
    }
    EXPECT_GE(found, 5);
}

TEST_F(ChoiceLists, TheOptionOfTransportsAddsItsItems)
{
    const catalogue::ListType* type = catalogue::findListType("TRANSPORT");
    const auto optional = std::ranges::find_if(type->description().choices, [](const catalogue::Choice& row) {
        return std::string_view{row.option} == "NETLOGISTIK_TRANSPORT";
    });
    ASSERT_NE(optional, type->description().choices.end());
    std::vector<std::int32_t> counts;
    for (const double value : {0.0, 1.0}) {
        Surroundings other{"de-AT", test::Unanswered::HasNoRows};
        other.database.answer(transportOption, value, "NUMBER_VALUE");
        controls::ComboBox filled;
        csel.AddComboTyp("EXPORTLV", filled, other.session, false);
        counts.push_back(filled.ListCount());
    }
    EXPECT_GT(counts[1], counts[0]);
}

std::string logStatement()
{
    std::string labels;
    for (const catalogue::Choice& row : catalogue::logList().description().choices) {
        catalogue::forEachId(row.columns, [&](std::int16_t id) {
            labels += (labels.empty() ? "" : ",") + std::to_string(catalogue::logList().column(id)->label);
        });
    }
    return statementFor(labels);
}

TEST_F(ChoiceLists, TheLogListsBoxesStartWithTheMostUsedColumns)
{
    EXPECT_TRUE(
        logStatement().find("IN (383,5999,6000,6001,6002,6003,6004,6005,6006,4074,6007,6008,6009,6010,6011,6012,"
                            "6013,6014,5462,1516,") != std::string::npos)
        << logStatement().substr(0, 300);
    answerLabels(logStatement());
    csel.AddComboTyp("LOG", box, with.session, true);
    const Entries log = entries();
    EXPECT_EQ(log[0], (std::pair<std::string, int>{"L383", 1}));
    EXPECT_EQ(log[1], (std::pair<std::string, int>{"L5999", 2}));
    EXPECT_EQ(log[9], (std::pair<std::string, int>{"L4074", 49}));
    answerLabels(logStatement());
    csel.AddComboTyp("HIZ", box, with.session, false);
    const Entries overview = entries();
    const auto offers = [](const Entries& all, int column) {
        return std::ranges::any_of(all, [&](const auto& entry) { return entry.second == column; });
    };
    EXPECT_TRUE(offers(log, 580));
    EXPECT_FALSE(offers(overview, 580));
    EXPECT_TRUE(offers(overview, 1041));
    EXPECT_FALSE(offers(log, 1041));
}

/// The pairs of the log list are read by an operation without a trap of its own.
TEST_F(ChoiceLists, AMissingLabelEndsTheLogListsBox)
{
    answerLabels(logStatement(), 6001);
    csel.AddComboTyp("LOG", box, with.session, false);
    EXPECT_EQ(entries(), (Entries{{"L383", 1}, {"L5999", 2}, {"L6000", 3}}));
    answerLabels(logStatement(), 6001);
    EXPECT_EQ(errorNumber([&] { csel.ComboList_String(1, "LOG", with.session); }), errors::invalidArgument);
}

TEST_F(ChoiceLists, AColumnOfTheLogListFindsItsLabel)
{
    for (const auto& [column, key, label] :
         std::vector<std::tuple<int, const char*, const char*>>{{36, "LOG", "L6010"},
                                                                {36, "HIZ", "L6010"},
                                                                {580, "LOG", "L20580"},
                                                                {580, "HIZ", ""},
                                                                {1041, "LOG", ""},
                                                                {485, "LOG", ""},
                                                                {0, "LOG", ""},
                                                                {36, "ACL", ""}}) {
        answerLabels(logStatement());
        EXPECT_EQ(csel.ComboList_String(column, key, with.session), label) << column << " " << key;
    }
}

TEST_F(ChoiceLists, SelectsAnEntryByItsNumber)
{
    for (const int number : {5, 7, 7}) {
        box.AddItem("entry");
        box.ItemData(box.NewIndex(), number);
    }
    csel.SetListIndex2(box, 7);
    EXPECT_EQ(box.ListIndex(), 1) << "the first of several";
    csel.SetListIndex2(box, 6);
    EXPECT_EQ(box.ListIndex(), 1) << "the selection stays";
}

TEST_F(ChoiceLists, EveryKeyHasOneListTypeAndEntries)
{
    for (const char* key : {"USERS",
                            "PERSONAL",
                            "AKAT",
                            "PLAN_BEARBEITUNG_BB",
                            "PLAN_ABSCHLUSS_BB",
                            "PLAN_VORBEREITUNG_BB",
                            "BBTALK",
                            "ANGEBOT_BB",
                            "RECHNUNG_BB",
                            "FAKTURA_BB",
                            "BBHAB_UMBUCH",
                            "KLR_UBERNAHME",
                            "SAPAGRUPPE",
                            "BBLTN",
                            "BBAUFTRAGS_PLANUNG",
                            "BBMAP",
                            "BBJAGD",
                            "BBWILD",
                            "BBHUNDE",
                            "BBZV",
                            "BBZV_HIZ",
                            "BBSTRK",
                            "LAGER_BB",
                            "VERLOHN",
                            "WAL_BB",
                            "DTZB",
                            "EXPORTLV",
                            "VERTSCH_BB",
                            "MBUCH_SCH",
                            "BERM",
                            "PLAN",
                            "BB_JAGDBEZIRKE",
                            "BBFAHR",
                            "BBOBJ",
                            "MVLOSE",
                            "FHPEXP",
                            "FHPIZ",
                            "STEH",
                            "LOG",
                            "HIZ",
                            "KIZ",
                            "ARTIKEL",
                            "WAREN",
                            "1VVM",
                            "2VABR1",
                            "2VABR2",
                            "2VABR3",
                            "2VABR4",
                            "2VABR5",
                            "2VABR6",
                            "2VABR7",
                            "2VABR8",
                            "EXP_VER0",
                            "EXP_VER1",
                            "EXP_VER2",
                            "EXP_VER3",
                            "EXP_VER4",
                            "EXP_VER5",
                            "EXP_VER6",
                            "EXP_VER7",
                            "EXP_VER8",
                            "BBF_PLANN",
                            "BBKLR",
                            "BBHAB",
                            "BBHAB_ANGEBOT",
                            "BBHAB_RECHNUNG",
                            "BBHAB_RECHNUNG_MV",
                            "BBHIZ_ARTIKEL",
                            "BBFAK_FAKTURA",
                            "LOHNERFASS",
                            "BELEGBUCH"}) {
        int types = 0;
        for (const catalogue::ListType* type : catalogue::listTypes()) {
            types += std::ranges::any_of(type->description().choices,
                                         [&](const catalogue::Choice& row) { return catalogue::namesKey(row, key); });
        }
        EXPECT_EQ(types, 1) << key;
    }
}

TEST_F(ChoiceLists, CostAccountingOffersTheNamesOfItsFields)
{
    csel.AddComboTyp("KIZ", box, with.session, false);
    EXPECT_TRUE(with.database.opened.empty()) << "no label is read";
    ASSERT_GE(box.ListCount(), 12);
    for (const auto& [text, column] : entries()) {
        const std::string expression =
            csel.GetColumnTyp("KIZ", static_cast<std::int16_t>(column), false, false, with.session);
        EXPECT_NE(expression.find("KLR." + text), std::string::npos) << text << ": " << expression;
    }
}

} // namespace
} // namespace tamarok
