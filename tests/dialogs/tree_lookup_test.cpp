#include <gmock/gmock.h>

#include "recording_window.h"
#include "support/errors.h"
#include "support/surroundings.h"
#include "tree_lookup.h"

namespace tamarok::dialogs {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::string_view budgetStatement =
    "SELECT HH_TITEL.NUMBER+ ' ' +ISNULL(HH_TITEL.NAME,''),T_EBENE1.SHORT+ ' ' +ISNULL(T_EBENE1.LONG,''),"
    "T_EBENE2.SHORT+ ' ' +ISNULL(T_EBENE2.LONG,''),T_EBENE3.SHORT+ ' ' +ISNULL(T_EBENE3.LONG,''),"
    "T_EBENE4.SHORT+ ' ' +ISNULL(T_EBENE4.LONG,''),HH_TITEL.ID,T_EBENE1.ID,T_EBENE2.ID,T_EBENE3.ID,T_EBENE4.ID"
    " FROM HH_TITEL LEFT JOIN T_EBENE1 ON T_EBENE1.ID_HH_TITEL = HH_TITEL.ID"
    " LEFT JOIN T_EBENE2 ON T_EBENE2.ID_T_EBENE1 = T_EBENE1.ID"
    " LEFT JOIN T_EBENE3 ON T_EBENE3.ID_T_EBENE2 = T_EBENE2.ID"
    " LEFT JOIN T_EBENE4 ON T_EBENE4.ID_T_EBENE3 = T_EBENE3.ID"
    " WHERE ISNULL(HH_TITEL.DISABLE,0) = 0 AND ISNULL(T_EBENE1.DISABLE,0) = 0 AND ISNULL(T_EBENE2.DISABLE,0) = 0"
    " AND ISNULL(T_EBENE3.DISABLE,0) = 0 AND ISNULL(T_EBENE4.DISABLE,0) = 0"
    " AND HH_TITEL.ID IN (SELECT ID_SLAVE FROM ONETOMANY WHERE RELATION = 'HH_KAPITEL.HH_TITEL' AND ID_MASTER = 0"
    "@) ORDER BY HH_TITEL.NUMBER,T_EBENE1.SHORT,T_EBENE2.SHORT,T_EBENE3.SHORT,T_EBENE4.SHORT";

std::string statementFor(std::string_view master)
{
    std::string statement{budgetStatement};
    return statement.replace(statement.find('@'), 1, master);
}

class RecordingTree final : public test::Recording<TreeWindow> {
public:
    void clearTree() override { log.emplace_back("clear"); }
    void indentation(float twips) override { log.push_back("indent " + std::to_string(static_cast<int>(twips))); }
    void addNode(std::string_view parent, std::string_view key, std::string_view text) override
    {
        log.push_back(std::string{parent} + " > " + std::string{key} + " " + std::string{text});
    }
    void expandNode(std::string_view key) override { log.push_back("expand " + std::string{key}); }
    void selectNode(std::string_view key) override
    {
        log.push_back("select " + std::string{key});
        selected = key;
    }
    std::optional<std::string> selectedNode() const override { return selected; }

    std::optional<std::string> selected;
};

class CountingKeyboard final : public Keyboard {
public:
    void pressEnter() override { ++pressed; }
    int pressed = 0;
};

class TreeLookupTest : public ::testing::Test {
protected:
    TreeLookupTest()
    {
        Platform::current().keyboard = keyboard;
        with.loc.texts[223] = "Choose a leaf.";
    }

    /// A row of a title with levels; the ids that are left out are Null.
    static tamarok::test::Row row(const std::vector<int>& ids)
    {
        tamarok::test::Row cells(10);
        for (Variant& cell : cells)
            cell = Null{};
        for (std::size_t level = 0; level < ids.size(); ++level) {
            cells[level] = "T" + std::to_string(ids[level]);
            cells[5 + level] = std::int32_t{ids[level]};
        }
        return cells;
    }

    void answer(std::string_view master, std::vector<tamarok::test::Row> rows)
    {
        with.database.addAnswer(statementFor(master), {"A", "B", "C", "D", "E", "I0", "I1", "I2", "I3", "I4"},
                                std::move(rows));
    }

    std::string run(std::string_view mode, std::string_view defaultKey = {})
    {
        return TreeLookup{with.session, window}.run(mode, "Budget", defaultKey);
    }

    tamarok::test::Surroundings with;
    std::shared_ptr<CountingKeyboard> keyboard = std::make_shared<CountingKeyboard>();
    RecordingTree window;
};

TEST_F(TreeLookupTest, TheModeAsksForTheTitlesOfAChapter)
{
    answer("12", {});
    run("EBENE12");
    ASSERT_EQ(with.database.opened.size(), 1U);
    EXPECT_EQ(with.database.opened[0].text, statementFor("12"));
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly);
    EXPECT_EQ(with.database.openCursors, 0);
}

TEST_F(TreeLookupTest, AnEmptyParameterAsksForChapter0)
{
    answer("", {});
    run("EBENE");
    EXPECT_THAT(with.database.openedTexts(), ElementsAre(statementFor("")));
}

TEST_F(TreeLookupTest, AnyOtherModeOpensAnEmptyTree)
{
    for (const std::string_view mode : {"", "EBEN", "ebene1", "SELECT 1", " EBENE1"}) {
        RecordingTree tree;
        tree.selected = "|1";
        tree.user = [](DialogEvents& events) { events.clicked("cmdOk"); };
        EXPECT_EQ((TreeLookup{with.session, tree}.run(mode, "Budget", "|1")), "") << mode;
        EXPECT_THAT(tree.log, ElementsAre("caption Budget", "show", "close")) << mode;
    }
    EXPECT_THAT(with.database.log, IsEmpty());
    EXPECT_EQ(keyboard->pressed, 0);
}

TEST_F(TreeLookupTest, WithoutRowsTheTreeStaysEmpty)
{
    answer("1", {});
    run("EBENE1", "|1");
    EXPECT_THAT(window.log, ElementsAre("caption Budget", "clear", "show"));
}

TEST_F(TreeLookupTest, EachChangeOfAnIdIsANode)
{
    answer("1", {row({1, 10, 100, 1000, 10000}), row({1, 10, 100, 1000, 10001}), row({1, 10, 101}), row({2})});
    run("EBENE1");
    EXPECT_THAT(window.log, ElementsAre("caption Budget", "clear", " > Root Budget", "indent 300", "Root > |1 T1",
                                        "|1 > |1|10 T10", "|1|10 > |1|10|100 T100", "|1|10|100 > |1|10|100|1000 T1000",
                                        "|1|10|100|1000 > |1|10|100|1000|10000 T10000",
                                        "|1|10|100|1000 > |1|10|100|1000|10001 T10001", "|1|10 > |1|10|101 T101",
                                        "Root > |2 T2", "expand Root", "show"));
}

TEST_F(TreeLookupTest, ANullIdNeverDiffersAndAnId0IsTheOneBeforeTheFirstRow)
{
    answer("1", {row({0}), row({7, 70}), row({7})});
    run("EBENE1");
    EXPECT_THAT(window.log, ElementsAre("caption Budget", "clear", " > Root Budget", "indent 300", "Root > |7 T7",
                                        "|7 > |7|70 T70", "expand Root", "show"));
}

TEST_F(TreeLookupTest, ANullTextIsEmpty)
{
    tamarok::test::Row cells = row({7});
    cells[0] = Null{};
    answer("1", {cells});
    run("EBENE1");
    EXPECT_EQ(window.log[4], "Root > |7 ");
}

TEST_F(TreeLookupTest, TheDefaultIsSelectedAtAnyLevel)
{
    for (const std::string_view key : {"|1", "|1|10", "|1|10|100|1000|10001"}) {
        answer("1", {row({1, 10, 100, 1000, 10000}), row({1, 10, 100, 1000, 10001}), row({2})});
        RecordingTree tree;
        TreeLookup{with.session, tree}.run("EBENE1", "Budget", key);
        EXPECT_EQ(tree.log[tree.log.size() - 2], "select " + std::string{key});
    }
}

TEST_F(TreeLookupTest, ADefaultThatNoNodeHasExpandsTheRootAndSelectsNothing)
{
    answer("1", {row({1, 10})});
    run("EBENE1", "|1|11");
    EXPECT_EQ(window.log[window.log.size() - 2], "expand Root");
    EXPECT_FALSE(window.selected);
}

TEST_F(TreeLookupTest, OkOnTheRootOrABranchAsksForALeafAndStays)
{
    for (const std::string_view key : {"Root", "|1"}) {
        answer("1", {row({1, 10})});
        RecordingTree tree;
        tree.user = [&](DialogEvents& events) {
            tree.selected = key;
            tree.log.clear();
            events.clicked("cmdOk");
            EXPECT_THAT(tree.log, ElementsAre("focus TreeView1")) << key;
            EXPECT_FALSE(tree.closed) << key;
        };
        EXPECT_EQ((TreeLookup{with.session, tree}.run("EBENE1", "Budget", "")), "") << key;
    }
    EXPECT_THAT(with.messages->shown, ElementsAre(tamarok::test::ShownMessage{"Choose a leaf.", 0, "Tamarok"},
                                                  tamarok::test::ShownMessage{"Choose a leaf.", 0, "Tamarok"}));
    EXPECT_EQ(keyboard->pressed, 0);
}

TEST_F(TreeLookupTest, ALeafIsTakenAndEnterPressed)
{
    answer("1", {row({1, 10})});
    window.user = [&](DialogEvents& events) {
        window.selected = "|1|10";
        events.clicked("cmdOk");
    };
    EXPECT_EQ(run("EBENE1"), "|1|10");
    EXPECT_TRUE(window.closed);
    EXPECT_EQ(keyboard->pressed, 1);
}

TEST_F(TreeLookupTest, ATitleWithoutLevelsIsALeaf)
{
    answer("1", {row({7})});
    window.user = [](DialogEvents& events) { events.clicked("cmdOk"); };
    EXPECT_EQ(run("EBENE1", "|7"), "|7");
}

TEST_F(TreeLookupTest, OkWithoutASelectedNodeClosesWithNothing)
{
    answer("1", {row({7})});
    window.user = [](DialogEvents& events) { events.clicked("cmdOk"); };
    EXPECT_EQ(run("EBENE1"), "");
    EXPECT_TRUE(window.closed);
    EXPECT_EQ(keyboard->pressed, 0);
}

TEST_F(TreeLookupTest, CancelAndTheWindowsOwnCloseGiveNothing)
{
    for (const bool byButton : {true, false}) {
        answer("1", {row({7})});
        RecordingTree tree;
        tree.user = [&](DialogEvents& events) { byButton ? events.clicked("cmdClose") : events.closeAsked(); };
        EXPECT_EQ((TreeLookup{with.session, tree}.run("EBENE1", "Budget", "|7")), "");
        EXPECT_TRUE(tree.closed);
    }
}

TEST_F(TreeLookupTest, AFailureOfTheDatabaseGoesToTheCaller)
{
    with.database.fail("open " + statementFor("1"));
    EXPECT_EQ(tamarok::test::errorNumber([&] { run("EBENE1"); }), errors::timeout);
    EXPECT_THAT(window.log, ElementsAre("caption Budget"));
}

TEST_F(TreeLookupTest, AFailureWhileTheDialogIsOpenGoesToTheCaller)
{
    answer("1", {row({1, 10})});
    with.loc.unreadable.insert(223);
    window.user = [&](DialogEvents& events) {
        window.selected = "|1";
        events.clicked("cmdOk");
    };
    EXPECT_EQ(tamarok::test::errorNumber([&] { run("EBENE1"); }), errors::timeout);
    EXPECT_EQ(with.database.openCursors, 0);
    EXPECT_EQ(keyboard->pressed, 0);
}

TEST_F(TreeLookupTest, TheSessionIsCopied)
{
    answer("1", {row({1, 10})});
    window.user = [&](DialogEvents& events) {
        with.session.strLanguage = "changed meanwhile";
        window.selected = "Root";
        events.clicked("cmdOk");
    };
    EXPECT_EQ(run("EBENE1"), "");
    EXPECT_EQ(with.messages->shown.size(), 1U);
}

} // namespace
} // namespace tamarok::dialogs
