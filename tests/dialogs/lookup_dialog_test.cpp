#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "lookup_dialog.h"
#include "lookup_double.h"
#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/grid_help.h"

namespace tamarok::dialogs {
namespace {

using test::errorNumber;
using test::expectError;
using test::LookupRecord;
using test::Row;

const std::string buttonTexts = "SELECT ID_STRING,ISNULL(CUSTOM_GERMAN,ISNULL(GERMAN,'')) AS RESULT FROM STRINGS WHERE "
                                "ID_STRING IN (91,94,268,610) ORDER BY 2";
const std::string species = "SELECT HA,HA_LANG FROM HOLZART ORDER BY LDNR";
const std::string speciesByCode = "SELECT HA,HA_LANG FROM HOLZART ORDER BY 1";
const std::string speciesByCodeDown = "SELECT HA,HA_LANG FROM HOLZART ORDER BY 1 DESC";
const std::string speciesByName = "SELECT HA,HA_LANG FROM HOLZART ORDER BY 2";
const std::string defaultSpecies = "SELECT HA FROM HOLZART WHERE STANDART = 1";
const std::string speciesWidths = "SELECT MODEL FROM MODELS WHERE NAME = 'STANDARD' AND RELATION = 'GH_HOLZARTHAHA'";

class CountingKeyboard final : public Keyboard {
public:
    void pressEnter() override { ++pressed; }
    int pressed = 0;
};

class DoubleWindows final : public DialogWindows {
public:
    explicit DoubleWindows(LookupRecord& record) : record_{record} {}
    std::unique_ptr<QuestionWindow> makeQuestion() override { return nullptr; }
    std::unique_ptr<ProgressWindow> makeProgress() override { return nullptr; }
    std::unique_ptr<TreeWindow> makeTree() override { return nullptr; }
    std::unique_ptr<MapWindow> makeMap() override { return nullptr; }
    std::unique_ptr<LookupWindow> makeLookup() override { return std::make_unique<test::LookupDouble>(record_); }

private:
    LookupRecord& record_;
};

std::shared_ptr<test::Table> speciesRows(std::vector<Row> rows)
{
    auto table = std::make_shared<test::Table>();
    table->columns = {{"HA", "HOLZART", "HA", ado::DataType::VarWChar, 10},
                      {"HA_LANG", "HOLZART", "HA_LANG", ado::DataType::VarWChar, 50}};
    for (Row& row : rows)
        table->rows.emplace(static_cast<std::int64_t>(table->rows.size()) + 1, std::move(row));
    return table;
}

/// The lookup of species over doubles of the database, the window and the keyboard. The lookup's connection is called
/// "own".
class Lookup : public testing::Test {
protected:
    Lookup()
    {
        Platform& platform = Platform::current();
        platform.keyboard = keyboard;
        platform.dialogWindows = std::make_shared<DoubleWindows>(window);
        platform.makeConnection = [this](std::string_view text) {
            EXPECT_EQ(text, "the text");
            return with.database.connect("own");
        };
        with.session.strConnection = "the text";
        with.session.strLanguage = "GERMAN";
        with.database.addAnswer(buttonTexts, {"ID_STRING", "RESULT"},
                                {{91, "Bearbeiten"}, {94, "Neuer Satz"}, {268, "Sichern"}, {610, "Abbrechen"}});
        with.database.answerNoRow(speciesWidths);
        with.database.answerTable(species,
                                  speciesRows({{"FI", "Fichte"}, {"TA", "Tanne"}, {"FO", "Föhre"}, {"B", "Buche"}}));
        with.database.answerTable(speciesByCode,
                                  speciesRows({{"B", "Buche"}, {"FI", "Fichte"}, {"FO", "Föhre"}, {"TA", "Tanne"}}));
        with.database.answerTable(speciesByCodeDown,
                                  speciesRows({{"TA", "Tanne"}, {"FO", "Föhre"}, {"FI", "Fichte"}, {"B", "Buche"}}));
        with.database.answerTable(speciesByName,
                                  speciesRows({{"B", "Buche"}, {"FI", "Fichte"}, {"FO", "Föhre"}, {"TA", "Tanne"}}));
    }
    ~Lookup() override { EXPECT_EQ(with.database.openCursors, 0) << "nothing stays open"; }

    std::string show(const std::string& select, const std::string& value = "", const std::string& config = "")
    {
        return Grid_Help{}.GridHelp(with.session, select, "Baumart", value, config);
    }
    /// Shows the species to a user.
    std::string show(std::function<void(LookupEvents&)> user, const std::string& value = "",
                     const std::string& config = "")
    {
        window.user = std::move(user);
        return show(species, value, config);
    }
    static void type(LookupEvents& events, std::string_view text)
    {
        for (const char character : text)
            events.keyPressed(static_cast<unsigned char>(character));
    }
    static void ok(LookupEvents& events) { events.clicked("cmdOk"); }

    test::Surroundings with;
    LookupRecord window;
    std::shared_ptr<CountingKeyboard> keyboard = std::make_shared<CountingKeyboard>();
};

TEST_F(Lookup, OpensItsRowsOverAConnectionOfItsOwn)
{
    show([this](LookupEvents& events) {
        EXPECT_EQ(window.caption, "Baumart");
        EXPECT_EQ(window.rows->count(), 4U);
        EXPECT_EQ(window.rows->text(2, 1), "Föhre");
        EXPECT_EQ(window.focus, "DataGrid1");
        EXPECT_TRUE(window.visible["DataGrid1"]);
        EXPECT_FALSE(window.visible["MonthView1"] || window.visible["cmdNew"] || window.visible["Text1"]);
        EXPECT_EQ(window.column(1).Width, 4500);
        EXPECT_EQ(window.size.width, 900 + 1440 + 4500 - 15);
        events.closeAsked();
    });
    const test::Call& opening = with.database.find("own open " + species);
    EXPECT_EQ(opening.cursorType, ado::CursorType::OpenStatic);
    EXPECT_EQ(opening.lockType, ado::LockType::Optimistic);
    EXPECT_EQ(with.database.log.back(), "own end session");
}

TEST_F(Lookup, TemporaryTableIsReadOverTheSessionsConnection)
{
    Platform::current().makeConnection = nullptr;
    const std::string select = "SELECT CODE,NAME FROM #CHOICE";
    with.database.addAnswer(select, {"CODE", "NAME"}, {{"1", "eins"}, {"2", "zwei"}, {"3", "drei"}});
    with.database.answerNoRow("SELECT MODEL FROM MODELS WHERE NAME = 'STANDARD' AND RELATION = 'GH_#CHOICE'");
    window.user = [this](LookupEvents& events) {
        EXPECT_EQ(with.database.openCursors, 1) << "the rows were read at once";
        type(events, "3");
        ok(events);
    };
    EXPECT_EQ(show(select), "3");
    const test::Call& opening = with.database.find("open " + select);
    EXPECT_EQ(opening.cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(opening.lockType, ado::LockType::ReadOnly);
}

TEST_F(Lookup, CancelReturnsTheDefaultValue)
{
    EXPECT_EQ(show([](LookupEvents& events) { events.clicked("cmdClose"); }, "XY"), "XY");
    EXPECT_EQ(show([](LookupEvents& events) { events.closeAsked(); }, "XY"), "XY");
    EXPECT_TRUE(window.closed);
    EXPECT_EQ(keyboard->pressed, 0);
}

TEST_F(Lookup, DefaultThatNoRowMatchesLeavesTheFirstRowCurrent)
{
    EXPECT_EQ(show(ok, "XY"), "FI");
    EXPECT_EQ(show(ok, "T"), "TA") << "a beginning";
    EXPECT_EQ(show(ok, "FO"), "FO");
    EXPECT_EQ(show(ok, "fo"), "FI") << "case counts";
}

TEST_F(Lookup, DefaultRowOfTheTableIsSoughtWithoutAValue)
{
    with.database.answer(defaultSpecies, "TA");
    EXPECT_EQ(show(ok), "TA");
    EXPECT_EQ(show(ok, "FO"), "FO") << "the field's value comes first";
    with.database.answer(defaultSpecies, Null{});
    EXPECT_EQ(show(ok), "FI");
}

TEST_F(Lookup, OkPressesEnterUnlessTheConfigurationForbidsIt)
{
    show(ok);
    EXPECT_EQ(keyboard->pressed, 1);
    show(ok, "", "0001");
    EXPECT_EQ(keyboard->pressed, 1);
}

TEST_F(Lookup, EnterTakesTheCurrentRowAndEscapeCancels)
{
    const auto press = [](char32_t key) {
        return [key](LookupEvents& events) {
            events.rowChosen(1);
            events.keyPressed(key);
        };
    };
    EXPECT_EQ(show(press(13), "FI"), "TA");
    EXPECT_EQ(keyboard->pressed, 1);
    EXPECT_EQ(show(press(27), "FI"), "FI");
    EXPECT_EQ(keyboard->pressed, 1);
}

TEST_F(Lookup, TypingSearchesTheFirstColumnUntilAHeadIsClicked)
{
    EXPECT_EQ(show([this](LookupEvents& events) {
                  events.keyPressed('f');
                  EXPECT_EQ(window.texts["Frame1"], "f");
                  EXPECT_EQ(window.tags["Frame1"], "1");
                  EXPECT_EQ(window.current, 0U);
                  events.keyPressed('O');
                  EXPECT_EQ(window.texts["Frame1"], "fO");
                  EXPECT_EQ(window.current, 2U);
                  ok(events);
              }),
              "FO");
}

TEST_F(Lookup, TextThatMatchesNothingIsKeptOnTheFirstRow)
{
    show([this](LookupEvents& events) {
        type(events, "taxi");
        EXPECT_EQ(window.texts["Frame1"], "taxi");
        EXPECT_EQ(window.current, 0U);
        events.closeAsked();
    });
}

TEST_F(Lookup, BackspaceRetypesTheShortenedText)
{
    show([this](LookupEvents& events) {
        type(events, "fox");
        EXPECT_EQ(window.current, 0U);
        events.keyPressed(8);
        EXPECT_EQ(window.texts["Frame1"], "fo");
        EXPECT_EQ(window.current, 2U);
        events.closeAsked();
    });
}

TEST_F(Lookup, BackspaceWithOneTypedCharacterReturnsToTheFirstRow)
{
    show([this](LookupEvents& events) {
        type(events, "t");
        EXPECT_EQ(window.current, 1U);
        events.keyPressed(8);
        EXPECT_EQ(window.texts["Frame1"], "");
        EXPECT_EQ(window.current, 0U);
        events.keyPressed(8);
        EXPECT_EQ(window.current, 0U);
        events.closeAsked();
    });
}

TEST_F(Lookup, TypedTextDoesNotSurviveAChangeOfRow)
{
    EXPECT_EQ(show([this](LookupEvents& events) {
                  type(events, "f");
                  events.rowChosen(3);
                  EXPECT_EQ(window.texts["Frame1"], "");
                  EXPECT_EQ(window.current, 3U);
                  ok(events);
              }),
              "B");
}

TEST_F(Lookup, ThreeClicksOnAHeadSortAscendingDescendingAscending)
{
    show([this](LookupEvents& events) {
        EXPECT_EQ(window.head(0), "HA");
        events.headClicked(0);
        EXPECT_EQ(window.head(0), " »»  HA");
        EXPECT_EQ(window.tags["Frame1"], "1");
        EXPECT_EQ(window.rows->text(0, 0), "B");
        events.headClicked(0);
        EXPECT_EQ(window.head(0), " ««  HA");
        EXPECT_EQ(window.rows->text(0, 0), "TA");
        events.headClicked(0);
        EXPECT_EQ(window.head(0), " »»  HA");
        events.headClicked(1);
        EXPECT_EQ(window.head(0), "HA");
        EXPECT_EQ(window.head(1), " »»  HA_LANG");
        EXPECT_EQ(window.tags["Frame1"], "2");
        type(events, "ta");
        EXPECT_EQ(window.current, 3U) << "typing searches the sorted column";
        events.closeAsked();
    });
}

TEST_F(Lookup, SortingSeeksTheWholeCodeInCellsCutToOneCharacter)
{
    show([this](LookupEvents& events) {
        events.rowChosen(1); // TA
        events.headClicked(0);
        EXPECT_EQ(window.current, 0U) << "TA is not found in cells of one character";
        events.rowChosen(0); // B
        events.headClicked(0);
        EXPECT_EQ(window.rows->text(*window.current, 0), "B") << "a code of one character is found";
        events.closeAsked();
    });
}

TEST_F(Lookup, RefusedOrderLeavesTheFormerOne)
{
    with.database.fail("own open " + speciesByName, {errors::statementRefused, "no such order", "double"});
    show([this](LookupEvents& events) {
        events.headClicked(0);
        events.headClicked(1);
        EXPECT_EQ(window.rows->text(0, 0), "B");
        EXPECT_EQ(window.head(0), " »»  HA");
        EXPECT_EQ(window.head(1), "HA_LANG");
        events.closeAsked();
    });
    EXPECT_TRUE(window.closed);
}

TEST_F(Lookup, SortingKeepsWidthsAndTheHiddenColumn)
{
    show(
        [this](LookupEvents& events) {
            EXPECT_FALSE(window.column(0).Visible);
            window.column(1).Width = 777;
            events.headClicked(1);
            EXPECT_FALSE(window.column(0).Visible);
            EXPECT_EQ(window.column(1).Width, 777);
            events.closeAsked();
        },
        "", "1");
}

TEST_F(Lookup, HeadsOfNumberShortAndLongNameAreTranslated)
{
    const std::string select = "SELECT NUMMER,SHORT,LONG,LONG_,Long FROM T";
    with.database.addAnswer(select, {"NUMMER", "SHORT", "LONG", "LONG_", "Long"}, {});
    with.database.answerNoRow("SELECT MODEL FROM MODELS WHERE NAME = 'STANDARD' AND RELATION = 'GH_T'");
    with.loc.texts = {{5243, "Nummer"}, {5244, "Kurz"}, {5245, "Lang"}};
    window.user = [this](LookupEvents& events) {
        EXPECT_EQ(window.head(0), "Nummer");
        EXPECT_EQ(window.head(1), "Kurz");
        EXPECT_EQ(window.head(2), "Lang");
        EXPECT_EQ(window.head(3), "Lang");
        EXPECT_EQ(window.head(4), "Long");
        events.closeAsked();
    };
    show(select);
}

TEST_F(Lookup, EmptyResultGivesTheDefaultValue)
{
    with.database.answerTable(species, speciesRows({}));
    EXPECT_EQ(show(
                  [this](LookupEvents& events) {
                      EXPECT_EQ(window.current, std::nullopt);
                      type(events, "fi");
                      events.keyPressed(8);
                      events.keyPressed(8);
                      events.headClicked(0);
                      events.selectionChanged();
                      ok(events);
                  },
                  "FI"),
              "FI");
    EXPECT_EQ(show(ok, "FI", "01"), "FI") << "several rows could be selected";
}

TEST_F(Lookup, StatementThatFailsIsTheErrorOfTheCall)
{
    with.database.fail("own open " + species, {errors::statementRefused, "no such table", "double"});
    expectError(errors::statementRefused, "no such table", [&] { show(species); });
    expectError(errors::objectNotSet, "connections", [&] {
        Platform::current().makeConnection = nullptr;
        show(species);
    });
}

TEST_F(Lookup, OrdersThatAllFailLeaveTheRows)
{
    show([this](LookupEvents& events) {
        for (const std::string& statement : {speciesByCode, species})
            with.database.fail("own open " + statement, {errors::providerFailure, "gone", "double"});
        events.headClicked(0);
        EXPECT_EQ(window.rows->count(), 4U);
        EXPECT_EQ(window.head(0), "HA");
        type(events, "ta");
        EXPECT_EQ(window.current, 1U);
        events.closeAsked();
    });
}

TEST_F(Lookup, DatabaseThatGoesAwayIsTheErrorOfTheCall)
{
    std::weak_ptr<ado::Connection> own;
    Platform::current().makeConnection = [&](std::string_view) {
        const ado::ConnectionRef opened = with.database.connect("own");
        own = opened;
        return opened;
    };
    const auto shown = [&](std::function<void(LookupEvents&)> next) {
        window.closed = false;
        return [this, &own, next = std::move(next)] {
            show([&](LookupEvents& events) {
                own.lock()->Close();
                next(events);
            });
        };
    };
    expectError(errors::objectClosed, "closed", shown([](LookupEvents& events) { events.headClicked(0); }));
    expectError(errors::objectClosed, "closed", shown([](LookupEvents& events) { events.keyPressed('f'); }));
    expectError(errors::objectClosed, "closed", shown([](LookupEvents& events) { events.activated(); }));
    expectError(errors::objectClosed, "closed", shown(ok));
    EXPECT_TRUE(own.expired());
}

TEST_F(Lookup, TooManyColumnsAreAnError)
{
    auto table = std::make_shared<test::Table>();
    for (int column = 0; column < 200; ++column)
        table->columns.push_back(
            {std::string{"C"}.append(std::to_string(column)), "T", "COLUMN", ado::DataType::VarWChar, 10});
    with.database.answerTable("SELECT * FROM T", table);
    expectError(errors::invalidArgument, "200 columns", [&] { show("SELECT * FROM T"); });
}

TEST_F(Lookup, TwoHundredExpressionsAreShown)
{
    const std::vector<std::string> names(200, "X");
    with.database.addAnswer("SELECT * FROM T", names, {Row(200, 1)});
    with.database.answerNoRow("SELECT MODEL FROM MODELS WHERE NAME = 'STANDARD' AND RELATION = 'GH_T'");
    window.user = ok;
    EXPECT_EQ(show("SELECT * FROM T"), "1");
}

TEST_F(Lookup, CellOfAMegabyteIsFoundAndReturned)
{
    const std::string large(1 << 20, 'x');
    with.database.answerTable(species, speciesRows({{"a", "b"}, {large, "c"}}));
    EXPECT_EQ(show([](LookupEvents& events) {
                  type(events, "xx");
                  ok(events);
              }).size(),
              large.size());
}

TEST_F(Lookup, HiddenFirstColumnIsReturnedAllTheSame)
{
    EXPECT_EQ(show(ok, "TA", "1"), "TA");
}

TEST_F(Lookup, NullCodeIsEmptyAndGivesTheDefaultValue)
{
    with.database.answerTable(species, speciesRows({{Null{}, "ohne"}}));
    EXPECT_EQ(show(ok, "XY"), "XY");
}

TEST_F(Lookup, SelectedRowsAreReturnedInTheOrderOfTheRows)
{
    EXPECT_EQ(show(
                  [this](LookupEvents& events) {
                      window.selected = {3, 0, 2};
                      events.selectionChanged();
                      EXPECT_EQ(window.selected.size(), 3U);
                      ok(events);
                  },
                  "", "01"),
              "FI,FO,B");
    window.selected.clear();
    EXPECT_EQ(show(ok, "TA", "01"), "TA") << "no selected row: the current one";
}

TEST_F(Lookup, SelectionOfOneRowIsTheCurrentRow)
{
    EXPECT_EQ(show([this](LookupEvents& events) {
                  events.rowChosen(1);
                  window.selected = {3, 0, 2};
                  events.selectionChanged();
                  EXPECT_EQ(window.selected, std::vector<std::size_t>{1});
                  ok(events);
              }),
              "TA");
}

TEST_F(Lookup, OkIsIgnoredWhileTheDialogPositionsItself)
{
    LookupEvents* waiting = nullptr;
    window.waitingEvents = [&] {
        if (waiting != nullptr) waiting->clicked("cmdOk");
    };
    show([&](LookupEvents& events) {
        waiting = &events;
        events.activated();
        EXPECT_FALSE(window.closed);
        events.closeAsked();
    });
    EXPECT_EQ(keyboard->pressed, 0);
}

TEST_F(Lookup, RowThatOthersDeletedGoesFromTheGrid)
{
    const auto table = speciesRows({{"FI", "Fichte"}, {"TA", "Tanne"}});
    with.database.answerTable(species, table);
    EXPECT_EQ(show(
                  [&](LookupEvents& events) {
                      table->rows.at(1)[1] = "Rotfichte";
                      events.activated();
                      EXPECT_EQ(window.rows->text(0, 1), "Rotfichte") << "the current row is read again";
                      table->rows.erase(1);
                      events.activated();
                      EXPECT_EQ(window.rows->count(), 1U);
                      EXPECT_EQ(window.current, std::nullopt);
                      ok(events);
                  },
                  "XY"),
              "XY");
}

TEST_F(Lookup, WidthsAreRestoredAndKeptUnderTheQuery)
{
    with.database.answer(speciesWidths, "700,3000,8000,4000");
    show([this](LookupEvents& events) {
        EXPECT_EQ(window.column(0).Width, 700);
        EXPECT_EQ(window.column(1).Width, 3000);
        EXPECT_EQ(window.form->Width, 8000);
        events.closeAsked();
    });
    ASSERT_EQ(with.loc.procedures.size(), 1U);
    EXPECT_EQ(with.loc.procedures[0].parameters[0].value, Variant{"GH_HOLZARTHAHA"});
    EXPECT_EQ(with.loc.procedures[0].parameters[2].value, Variant{"700,3000,8000,4000"});
}

// The date picker.

TEST_F(Lookup, DateIsReturnedWithPoints)
{
    window.user = [this](LookupEvents& events) {
        EXPECT_EQ(window.date, makeDate(2024, 2, 1));
        EXPECT_FALSE(window.visible["DataGrid1"] || window.visible["cmdOk"] || window.visible["cmdClose"]);
        window.date = makeDate(2024, 3, 5);
        events.doubleClicked();
    };
    EXPECT_EQ(show("DATUM", "01.02.2024"), "05.03.2024");
    EXPECT_EQ(keyboard->pressed, 1);
    EXPECT_TRUE(with.loc.procedures.empty()) << "a date has no widths";
}

TEST_F(Lookup, DateBeginsTodayWithoutADate)
{
    window.user = [](LookupEvents& events) { events.monthKeyPressed(13); };
    EXPECT_EQ(show("DATUM", "kein Datum"), "17.05.2024");
}

TEST_F(Lookup, CancelledDateGivesTheDefaultValueOrNothing)
{
    window.user = [](LookupEvents& events) { events.monthKeyPressed(27); };
    EXPECT_EQ(show("DATUM", "01.02.2024"), "01.02.2024");
    EXPECT_EQ(show("DATUM", "01.02.2024", "1"), "");
}

// Entry of master data; what is saved is tested on the sample database.

TEST_F(Lookup, NewClosesTheDialogWhereTheConfigurationSaysSo)
{
    EXPECT_EQ(show(
                  [this](LookupEvents& events) {
                      EXPECT_TRUE(window.visible["cmdNew"]);
                      EXPECT_FALSE(window.visible["cmdSave"] || window.visible["Text1"]);
                      events.clicked("cmdNew");
                  },
                  "FI", "002"),
              "&New");
    EXPECT_TRUE(window.closed);
    EXPECT_EQ(keyboard->pressed, 0);
}

TEST_F(Lookup, EntryShowsABoxForEachColumn)
{
    show(
        [this](LookupEvents& events) {
            EXPECT_TRUE(window.visible["Text1"] && window.visible["Text2"] && window.visible["cmdSave"]);
            EXPECT_FALSE(window.visible["Text3"]);
            EXPECT_EQ(window.texts["Text1"], "FI");
            events.rowChosen(1);
            EXPECT_EQ(window.texts["Text2"], "Tanne");
            EXPECT_EQ(window.texts["cmdNew"], "Neuer Satz");
            EXPECT_EQ(window.texts["cmdSave"], "Bearbeiten");
            EXPECT_FALSE(window.enabled["Text1"]);
            events.closeAsked();
        },
        "", "001");
}

TEST_F(Lookup, HiddenFirstColumnLeavesOneBoxLess)
{
    show(
        [this](LookupEvents& events) {
            EXPECT_TRUE(window.visible["Text1"]);
            EXPECT_FALSE(window.visible["Text2"]);
            EXPECT_EQ(window.places["Text1"].left, window.places["DataGrid1"].left + window.places["Frame1"].left);
            EXPECT_EQ(window.places["Text1"].width, 4500);
            events.closeAsked();
        },
        "", "101");
}

TEST_F(Lookup, ClosingWhileEditingIsRefused)
{
    show(
        [this](LookupEvents& events) {
            events.clicked("cmdNew");
            EXPECT_EQ(window.tags["cmdNew"], "NEW");
            EXPECT_EQ(window.focus, "Text1");
            EXPECT_EQ(window.texts["Text1"], "");
            EXPECT_EQ(window.texts["cmdNew"], "Sichern");
            EXPECT_EQ(window.texts["cmdSave"], "Abbrechen");
            EXPECT_FALSE(window.enabled["Frame1"] || window.enabled["cmdClose"] || window.enabled["cmdOk"]);
            EXPECT_TRUE(window.enabled["Text1"]);
            events.closeAsked();
            EXPECT_FALSE(window.closed);
            events.activated();
            EXPECT_EQ(window.texts["Text1"], "") << "coming back to the window keeps what was typed";
            events.clicked("cmdSave");
            EXPECT_EQ(window.texts["Text1"], "FI") << "the changes are dropped";
            events.closeAsked();
            EXPECT_TRUE(window.closed);
        },
        "", "001");
}

TEST_F(Lookup, ChangingKeepsTheCurrentRowInTheBoxes)
{
    show(
        [this](LookupEvents& events) {
            events.rowChosen(1);
            events.clicked("cmdSave");
            EXPECT_EQ(window.tags["cmdNew"], "");
            EXPECT_EQ(window.texts["Text1"], "TA");
            EXPECT_TRUE(window.enabled["Text1"]);
            events.clicked("cmdSave");
            events.closeAsked();
        },
        "", "001");
}

TEST_F(Lookup, BoxThatIsEnteredIsSelected)
{
    show([this](LookupEvents& events) {
        events.boxEntered("Text2");
        EXPECT_EQ(window.selectedText, "Text2");
        events.closeAsked();
    });
}

} // namespace
} // namespace tamarok::dialogs
