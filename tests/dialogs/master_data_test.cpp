#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "dialogs/master_data_home.h"
#include "support/errors.h"
#include "support/platforms.h"
#include "support/surroundings.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/convert.h"
#include "tamarok/grid_help.h"
#include "tamarok/scripted_windows.h"

// The lookup and its entry of master data on the sample database, by scripts.

namespace tamarok::dialogs {
namespace {

using test::expectError;

class NoKeyboard final : public Keyboard {
public:
    void pressEnter() override {}
};

// Steps of scripts.
DialogStep step(StepKind kind, std::string text = {})
{
    return {.kind = kind, .text = std::move(text), .numbers = {}, .value = {}, .written = "a step"};
}
DialogStep numbered(StepKind kind, std::vector<std::int32_t> numbers)
{
    return {.kind = kind, .text = {}, .numbers = std::move(numbers), .value = {}, .written = "a numbered step"};
}
DialogStep type(std::string text)
{
    return step(StepKind::Type, std::move(text));
}
DialogStep click(std::string button)
{
    return step(StepKind::Click, std::move(button));
}
DialogStep read(std::string property)
{
    return step(StepKind::Read, std::move(property));
}
DialogStep set(std::string property, Variant value)
{
    return {
        .kind = StepKind::Set, .text = std::move(property), .numbers = {}, .value = std::move(value), .written = "set"};
}
const DialogStep ok = step(StepKind::Ok);
const DialogStep close = step(StepKind::Close);

const std::string warning = "Der eingegebene Wert ist ungültig.";
const std::string orders =
    "SELECT NUMMER,LONG,IST_STUNDEN_ZV FROM BB_T_AUFTRAGS_PLANUNG WHERE ISNULL(DISABLE,0)=0 ORDER BY NUMMER";
const std::string projects =
    "SELECT NUMMER,LONG,SHORT FROM BB_T_PROJEKT_PLANUNG WHERE ISNULL(DISABLE,0)=0 ORDER BY NUMMER";
const std::string freeList =
    "SELECT KURZNAME,LANGNAME FROM RELTABLE WHERE ISNULL(DISABLE,0)=0 AND RELTABLE_ID = 11 AND "
    "(ID_ACCESS_LEVELS = 5) ORDER BY KURZNAME";
const std::string standing = "SELECT SHORT,LONG,STAMMDATEN_EXPORT FROM T_STEH_RELTABLE WHERE RELTABLE_ID = 12 AND "
                             "(ID_ACCESS_LEVELS = 5) ORDER BY SHORT";
const std::string contracts = "SELECT SHORT,LONG,NUMMER FROM BB_T_VERTRAG WHERE ISNULL(DISABLE,0)=0 ORDER BY LDNR";
const std::string others = "SELECT CODE,AMOUNT,NAME FROM ENTRY_TEST ORDER BY CODE";

/// One database for all cases, which use numbers of their own.
class MasterData : public testing::Test {
protected:
    static void SetUpTestSuite() { home_ = makeMasterDataHome(); }
    static void TearDownTestSuite() { home_.reset(); }
    void SetUp() override
    {
        if (!home_) GTEST_SKIP() << "no server";
    }

    MasterData() : scope_{platform()}
    {
        if (home_) session.strConnection = home_->connectionText();
        if (home_) session.db_ADO = home_->open(session.strConnection);
        session.strLanguage = "GERMAN";
        session.strDateFormat = "YYYY-MM-DD";
        session.ID_User = 1;
        session.ID_Access_Levels = 5;
    }

    /// Shows a lookup that offers the entry, and returns what the script read.
    std::vector<Variant> enter(const std::string& select, DialogScript script, const std::string& config = "001")
    {
        windows->scripts().add(std::move(script));
        result = Grid_Help{}.GridHelp(session, select, "Stammdaten", "", config);
        return windows->scripts().takeReport().read;
    }
    /// The script that adds a row.
    static DialogScript added(const std::string& first, const std::string& second, const std::string& third,
                              std::vector<DialogStep> behind)
    {
        DialogScript script{click("cmdNew"), set("Text1", first), set("Text2", second)};
        if (!third.empty()) script.push_back(set("Text3", third));
        script.push_back(click("cmdNew"));
        script.insert(script.end(), behind.begin(), behind.end());
        return script;
    }
    Variant value(const std::string& statement) const
    {
        ado::Recordset rows;
        rows.Open(statement, session.db_ADO);
        return rows.AtEOF() ? Variant{"no row"} : rows.Fields().Item(0).Value();
    }
    std::int64_t count(const std::string& table) const
    {
        return convert::toLongLong(value("SELECT COUNT(*) FROM " + table));
    }
    int warnings() const { return static_cast<int>(messages->shown.size()); }

    TmkVar session;
    std::string result;
    std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
    std::shared_ptr<test::RecordingMessageBox> messages = std::make_shared<test::RecordingMessageBox>();

private:
    Platform platform()
    {
        Platform platform = test::platformOf("de-AT");
        platform.makeLocService = loc::makeLocService;
        platform.keyboard = std::make_shared<NoKeyboard>();
        platform.messageBox = messages;
        platform.dialogWindows = windows;
        platform.makeConnection = [](std::string_view text) { return home_->open(text); };
        return platform;
    }

    static inline std::unique_ptr<MasterDataHome> home_;
    PlatformScope scope_;
};

TEST_F(MasterData, SpeciesIsFoundByTypingAndTaken)
{
    enter("SELECT HA,HA_LANG FROM HOLZART ORDER BY LDNR", {numbered(StepKind::Head, {1}), type("tan"), ok}, "");
    EXPECT_EQ(value("SELECT HA_LANG FROM HOLZART WHERE HA = '" + result + "'").asString().substr(0, 3), "Tan");
}

TEST_F(MasterData, TemporaryTableIsShown)
{
    session.db_ADO->Execute("CREATE TABLE #CHOICE (CODE NVARCHAR(5), NAME NVARCHAR(20))");
    session.db_ADO->Execute("INSERT INTO #CHOICE (CODE, NAME) VALUES ('a', 'eins')");
    session.db_ADO->Execute("INSERT INTO #CHOICE (CODE, NAME) VALUES ('b', 'zwei')");
    const auto seen = enter("SELECT CODE,NAME FROM #CHOICE ORDER BY CODE",
                            {numbered(StepKind::Head, {0}), numbered(StepKind::Head, {0}),
                             read("DataGrid1.Columns(1).Text"), numbered(StepKind::SelectRow, {1}), ok},
                            "");
    EXPECT_EQ(seen.at(0), Variant{"eins"}) << "a code of one character is found again";
    EXPECT_EQ(result, "b");
}

TEST_F(MasterData, WidthsOfTheColumnsComeBack)
{
    const std::string select = "SELECT NUMMER,LONG FROM BB_T_LAND";
    enter(select, {set("DataGrid1.Columns(0).Width", 777), numbered(StepKind::Resize, {8100, 6200}), close}, "");
    const auto seen = enter(
        select, {read("DataGrid1.Columns(0).Width"), read("Width"), read("DataGrid1.Columns(0).Caption"), close}, "");
    EXPECT_EQ(seen.at(0), Variant{777.0});
    EXPECT_EQ(seen.at(1), Variant{8100.0});
    EXPECT_EQ(seen.at(2).asString().find("NUMMER"), std::string::npos) << "translated";
}

TEST_F(MasterData, NewFreeListRowIsFoundAgain)
{
    const auto seen = enter(freeList, added("Kurzname zu lang", std::string(60, 'x'), "", {read("Text1"), ok}));
    EXPECT_EQ(result, "Kurzname") << "cut, and the current row after the saving";
    EXPECT_EQ(seen.at(0), Variant{"Kurzname"});
    EXPECT_EQ(value("SELECT LANGNAME FROM RELTABLE WHERE KURZNAME = 'Kurzname' AND RELTABLE_ID = 11 AND "
                    "ID_ACCESS_LEVELS = 5"),
              Variant{std::string(50, 'x')});
    EXPECT_EQ(value("SELECT MAX(ID) FROM RELTABLE"), value("SELECT ID FROM RELTABLE WHERE KURZNAME = 'Kurzname'"));
}

TEST_F(MasterData, ChangedFreeListRowIsFoundByItsOldTextsAndSoAreItsTwins)
{
    for (int twin = 0; twin < 2; ++twin)
        enter(freeList, added("zw", "Zwilling", "", {close}));
    EXPECT_EQ(count("RELTABLE WHERE KURZNAME = 'zw'"), 2);
    enter(freeList, {type("zw"), click("cmdSave"), set("Text2", "Drilling"), click("cmdNew"), close});
    EXPECT_EQ(count("RELTABLE WHERE KURZNAME = 'zw' AND LANGNAME = 'Drilling'"), 2);
}

TEST_F(MasterData, FreeListWithoutShortNameEndsAsIfSaved)
{
    const std::int64_t before = count("RELTABLE");
    const auto seen = enter(freeList, added("", "ohne", "", {read("cmdNew.Caption"), read("cmdClose.Enabled"), close}));
    EXPECT_EQ(seen.at(1), Variant{true}) << "browsing again";
    EXPECT_EQ(count("RELTABLE"), before);
    EXPECT_EQ(warnings(), 0);
}

TEST_F(MasterData, StandingFreeListRowsAreAddedAndChanged)
{
    enter(standing, added("neu", "Neuer", "1", {close}));
    EXPECT_EQ(value("SELECT STAMMDATEN_EXPORT FROM T_STEH_RELTABLE WHERE SHORT = 'neu' AND RELTABLE_ID = 12 AND "
                    "ID_ACCESS_LEVELS = 5"),
              Variant{true});
    enter(standing, {type("neu"), click("cmdSave"), set("Text2", "Alter"), set("Text3", "2"), click("cmdNew"), close});
    EXPECT_EQ(value("SELECT LONG FROM T_STEH_RELTABLE WHERE SHORT = 'neu' AND STAMMDATEN_EXPORT IS NULL"),
              Variant{"Alter"});
}

TEST_F(MasterData, NewOrderStoresItsHours)
{
    const auto seen =
        enter(orders, added("ZZ 12345678901234567", "Auftrag", "12,5", {read("DataGrid1.Columns(2).Text"), ok}));
    EXPECT_EQ(result, "ZZ 123456789012") << "cut to 15 characters";
    EXPECT_EQ(value("SELECT IST_STUNDEN_ZV FROM BB_T_AUFTRAGS_PLANUNG WHERE NUMMER = '" + result + "'"), Variant{12.5});
    EXPECT_EQ(value("SELECT ERSTELLERDATUM FROM BB_T_AUFTRAGS_PLANUNG WHERE NUMMER = '" + result + "'"),
              Variant{makeDate(2024, 5, 17)});
    EXPECT_EQ(value("SELECT ID_ACCESS_LEVELS FROM BB_T_AUFTRAGS_PLANUNG WHERE NUMMER = '" + result + "'"), Variant{5});
}

TEST_F(MasterData, OrderWithHoursThatAreNoNumberIsRefused)
{
    const auto seen =
        enter(orders, added("ZZ hours", "x", "viel", {read("cmdOk.Enabled"), read("Text3"), click("cmdSave"), close}));
    EXPECT_EQ(seen.at(0), Variant{false}) << "still editing";
    EXPECT_EQ(seen.at(1), Variant{"viel"});
    ASSERT_EQ(warnings(), 1);
    EXPECT_EQ(messages->shown[0].text, warning);
    EXPECT_EQ(messages->shown[0].flags, 48);
    EXPECT_EQ(count("BB_T_AUFTRAGS_PLANUNG WHERE NUMMER = 'ZZ hours'"), 0);
}

TEST_F(MasterData, DuplicateOrderIsRefusedUnlessItIsTheChangedRow)
{
    enter(orders, added("ZZ dup", "erster", "", {close}));
    const auto seen = enter(orders, added("ZZ dup", "zweiter", "", {read("cmdOk.Enabled"), click("cmdSave"), close}));
    EXPECT_EQ(seen.at(0), Variant{false});
    EXPECT_EQ(warnings(), 1);
    enter(orders, {type("zz dup"), click("cmdSave"), set("Text2", "anders"), click("cmdNew"), close});
    EXPECT_EQ(warnings(), 1) << "its own number is no duplicate";
    EXPECT_EQ(value("SELECT LONG FROM BB_T_AUFTRAGS_PLANUNG WHERE NUMMER = 'ZZ dup'"), Variant{"anders"});
}

TEST_F(MasterData, OrderWithoutNumberGetsTheFocusAndNoMessage)
{
    const auto seen = enter(
        orders, added(" ", "x", "", {read("cmdOk.Enabled"), type("ZZ typed"), read("Text1"), click("cmdNew"), ok}));
    EXPECT_EQ(seen.at(0), Variant{false});
    EXPECT_EQ(seen.at(1), Variant{"ZZ typed"}) << "the text of the box is selected, so typing replaces it";
    EXPECT_EQ(warnings(), 0);
    EXPECT_EQ(result, "ZZ typed");
}

TEST_F(MasterData, QuoteFailsAsADatabaseError)
{
    const auto seen =
        enter(orders, added("ZZ'q", "x", "", {read("Text1"), read("cmdOk.Enabled"), click("cmdSave"), close}));
    EXPECT_EQ(seen.at(0), Variant{"ZZ'q"}) << "what was typed stays";
    EXPECT_EQ(seen.at(1), Variant{false});
    EXPECT_EQ(warnings(), 1);
}

TEST_F(MasterData, ProjectsAreAddedAndChanged)
{
    enter(projects, added("P-neu", "Projekt", "kurz", {close}));
    EXPECT_EQ(value("SELECT LONG FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER = 'P-neu' AND SHORT = 'kurz'"),
              Variant{"Projekt"});
    enter(projects,
          {type("p-neu"), click("cmdSave"), set("Text3", ""), set("Text2", "Vorhaben"), click("cmdNew"), close});
    EXPECT_EQ(value("SELECT LONG FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER = 'P-neu' AND SHORT IS NULL"),
              Variant{"Vorhaben"});
    enter(projects, added("P-2", "", "", {click("cmdSave"), close}));
    EXPECT_EQ(count("BB_T_PROJEKT_PLANUNG WHERE NUMMER = 'P-2'"), 0) << "the text is required";
    EXPECT_EQ(warnings(), 0);
}

TEST_F(MasterData, ObjectsAreAddedButNotChanged)
{
    // The kind of the object comes from the tail of the condition on TABLE_NAME.
    const std::string select = "SELECT NUMBER,NAME FROM OBJEKT WHERE TABLE_NAME IN (SELECT OBJEKT FROM PERSONAL WHERE "
                               "ID_PERSONAL = 01) ORDER BY NUMBER";
    session.db_ADO->Execute("UPDATE PERSONAL SET OBJEKT = 'WEG' WHERE ID_PERSONAL = 1");
    enter(select, added("W-1", "Weg", "", {close}));
    EXPECT_EQ(count("OBJEKT WHERE NUMBER = 'W-1' AND NAME = 'Weg' AND TABLE_NAME = 'WEG'"), 1);
    const auto seen = enter(select, {type("w-1"), click("cmdSave"), set("Text2", "anders"), click("cmdNew"),
                                     read("cmdOk.Enabled"), click("cmdSave"), close});
    EXPECT_EQ(seen.at(0), Variant{false}) << "nothing was saved";
    EXPECT_EQ(count("OBJEKT WHERE NUMBER = 'W-1'"), 1);
    EXPECT_EQ(warnings(), 0);
    enter(select, added("W-1", "doppelt", "", {click("cmdSave"), close}));
    EXPECT_EQ(warnings(), 1) << "a duplicate among the objects of the list";
}

TEST_F(MasterData, ContractNumberMustBeNewWithinTheLevels)
{
    enter(contracts, added("V1", "Vertrag", "4711", {close}));
    EXPECT_EQ(value("SELECT SHORT FROM BB_T_VERTRAG WHERE NUMMER = '4711' AND ID_ACCESS_LEVELS = 5"), Variant{"V1"});
    const auto seen =
        enter(contracts, added("V2", "Vertrag", "4711", {read("cmdOk.Enabled"), click("cmdSave"), close}));
    EXPECT_EQ(seen.at(0), Variant{false});
    EXPECT_EQ(warnings(), 1);
    enter(contracts, added("V3", "Vertrag", "", {click("cmdSave"), close}));
    EXPECT_EQ(warnings(), 1) << "a missing number gets the focus, and no message";
    EXPECT_EQ(count("BB_T_VERTRAG WHERE NUMMER = '4711'"), 1);
}

TEST_F(MasterData, OtherTableGetsTheRowThroughTheRecordset)
{
    const auto seen = enter(others, added("a1", "2,5", "Name", {read("Text1"), read("DataGrid1.ApproxCount"), ok}));
    EXPECT_EQ(seen.at(0), Variant{""}) << "the boxes are emptied";
    EXPECT_EQ(value("SELECT AMOUNT FROM ENTRY_TEST WHERE CODE = 'a1' AND ID_ACCESS_LEVELS = 5"), Variant{2.5});
    EXPECT_EQ(result, "a1") << "the new row is the current one";
}

TEST_F(MasterData, EditingInTheGeneralBranchAddsARow)
{
    enter(others, added("e1", "", "alt", {close}));
    enter(others, {type("e1"), click("cmdSave"), set("Text3", "neu"), click("cmdNew"), close});
    EXPECT_EQ(count("ENTRY_TEST WHERE CODE = 'e1'"), 2);
    EXPECT_EQ(value("SELECT AMOUNT FROM ENTRY_TEST WHERE CODE = 'e1' AND NAME = 'neu'"), Variant{Null{}});
}

TEST_F(MasterData, RefusedValueLeavesTheFocusOnItsBox)
{
    const auto seen = enter(
        others, added("r1", "viel", "x", {type("3"), read("Text2"), click("cmdNew"), read("cmdOk.Enabled"), close}));
    EXPECT_EQ(seen.at(0), Variant{"3"});
    EXPECT_EQ(seen.at(1), Variant{true}) << "the corrected row is saved";
    EXPECT_EQ(warnings(), 1);
    EXPECT_EQ(value("SELECT AMOUNT FROM ENTRY_TEST WHERE CODE = 'r1'"), Variant{3.0});
    enter(others, added("toolong", "1", "x", {click("cmdSave"), close}));
    EXPECT_EQ(warnings(), 2) << "more than the five characters of the code";
}

TEST_F(MasterData, RefusedRowIsCancelled)
{
    // BB_T_LAND has no growing id: its key is missing.
    const std::int64_t before = count("BB_T_LAND");
    const auto seen = enter("SELECT NUMMER,LONG FROM BB_T_LAND",
                            added("XX", "Land", "", {read("cmdOk.Enabled"), click("cmdSave"), ok}));
    EXPECT_EQ(seen.at(0), Variant{false});
    EXPECT_EQ(warnings(), 1);
    EXPECT_EQ(count("BB_T_LAND"), before);
    EXPECT_NE(result, "");
}

TEST_F(MasterData, RowsThatCannotBeAddedToStayInEditMode)
{
    const auto seen = enter("SELECT COUNT(*),MAX(NUMMER) FROM BB_T_LAND",
                            added("1", "Land", "", {read("cmdOk.Enabled"), click("cmdSave"), close}));
    EXPECT_EQ(seen.at(0), Variant{false});
    EXPECT_EQ(warnings(), 0);
}

TEST_F(MasterData, FirstRowOfAnEmptyTableIsAdded)
{
    session.db_ADO->Execute("DELETE FROM ENTRY_TEST");
    enter(others, added("first", "1", "x", {ok}));
    EXPECT_EQ(result, "first");
    session.db_ADO->Execute("DELETE FROM BB_T_PROJEKT_PLANUNG");
    enter(projects, added("P-first", "x", "y", {ok}));
    EXPECT_EQ(result, "P-first");
}

TEST_F(MasterData, ScriptThatEndsWhileARowIsEditedFailsTheCall)
{
    expectError(errors::invalidArgument, "refuses to close", [&] { enter(others, {click("cmdNew"), close}); });
    expectError(errors::invalidArgument, "no column 7", [&] { enter(others, {numbered(StepKind::Head, {7})}); });
    expectError(errors::invalidArgument, "no row 99", [&] { enter(others, {numbered(StepKind::SelectRow, {99})}); });
}

TEST_F(MasterData, LevelThatCannotBeSetLeavesTheNewRow)
{
    session.db_ADO->listen([](std::string_view statement) {
        if (statement.starts_with("UPDATE ENTRY_TEST")) throw Error{errors::providerFailure, "no such column"};
    });
    enter(others, added("level", "1", "x", {ok}));
    EXPECT_EQ(result, "level");
    EXPECT_EQ(warnings(), 0);
    EXPECT_EQ(value("SELECT ID_ACCESS_LEVELS FROM ENTRY_TEST WHERE CODE = 'level'"), Variant{Null{}});
}

TEST_F(MasterData, DatabaseThatGoesAwayIsTheErrorOfTheCall)
{
    const std::int64_t before = count("RELTABLE");
    session.db_ADO->listen([gone = false](std::string_view statement) mutable {
        gone = gone || statement.starts_with("INSERT INTO RELTABLE");
        if (gone) throw Error{errors::providerFailure, "The database is gone."};
    });
    // The text of the message cannot be read either.
    expectError(errors::providerFailure, "gone", [&] { enter(freeList, added("gone", "x", "", {close})); });
    session.db_ADO->listen({});
    EXPECT_EQ(count("RELTABLE"), before);
    enter(freeList, {close});
    session.db_ADO->Close();
    expectError(errors::connectionClosed, "", [&] { enter(freeList, {close}); });
}

TEST_F(MasterData, DateIsPickedByScript)
{
    enter("DATUM", {set("MonthView1", "5.3.2024"), numbered(StepKind::Key, {13})}, "");
    EXPECT_EQ(result, "05.03.2024");
    expectError(errors::invalidArgument, "no grid", [&] { enter("DATUM", {numbered(StepKind::Head, {0})}, ""); });
}

} // namespace
} // namespace tamarok::dialogs
