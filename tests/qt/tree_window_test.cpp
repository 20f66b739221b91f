#include "dialogs/windows.h"
#include "qt/support/sample.h"
#include "qt/support/user.h"

#include "tamarok/error.h"
#include "tamarok/grid_help.h"
#include "tamarok/list_view.h"

namespace tamarok::qt {
namespace {

using namespace acting;

class TreeWindowTest : public ::testing::Test {
protected:
    std::string run(const std::string& mode, const std::string& key = "")
    {
        return Grid_Help{}.TreeviewHelp(sample.session, mode, "Budget", key);
    }
    static QTreeWidget& tree(QDialog& dialog) { return find<QTreeWidget>(dialog, "TreeView1"); }
    Sample sample;
};

TEST_F(TreeWindowTest, ALeafIsFoundByTheKeyboardAndTaken)
{
    User user{[](QDialog& dialog) {
                  EXPECT_EQ(dialog.focusWidget(), &tree(dialog));
                  EXPECT_EQ(tree(dialog).currentItem()->text(0), "1111 Holzernte");
                  EXPECT_TRUE(tree(dialog).currentItem()->parent()->isExpanded());
              },
              pressKey(Qt::Key_Down), pressKey(Qt::Key_Return)};
    EXPECT_EQ(run("EBENE1", "|1|1|1|1|1"), "|1|1|1|1|2");
}

TEST_F(TreeWindowTest, ABranchIsRefusedAndTheDialogStays)
{
    User user{pressKey(Qt::Key_Down), pressKey(Qt::Key_Home), click("cmdOk"),
              [&](QDialog& dialog) {
                  EXPECT_EQ(sample.messages->shown.size(), 1U);
                  EXPECT_EQ(dialog.focusWidget(), &tree(dialog));
              },
              pressKey(Qt::Key_Escape)};
    EXPECT_EQ(run("EBENE1"), "");
}

TEST_F(TreeWindowTest, AnEmptyTreeIsLeft)
{
    User user{[](QDialog& dialog) { EXPECT_EQ(tree(dialog).topLevelItemCount(), 0); }, click("cmdOk")};
    EXPECT_EQ(run("EBENE999"), "");
}

TEST_F(TreeWindowTest, ControlsFollowTheSize)
{
    User user{[](QDialog& dialog) { dialog.resize(300, 250); },
              [](QDialog& dialog) {
                  const auto& ok = find<QPushButton>(dialog, "cmdOk");
                  EXPECT_GT(ok.y(), tree(dialog).geometry().bottom());
                  EXPECT_LT(ok.mapTo(&dialog, ok.rect().bottomRight()).y(), dialog.height());
                  EXPECT_GE(ok.width(), ok.sizeHint().width());
              },
              closeWindow()};
    run("EBENE1");
}

/// A presenter of the test.
class Events final : public dialogs::DialogEvents {
public:
    std::function<void()> onClick = [] {};
    void clicked(std::string_view) override { onClick(); }
    void closeAsked() override { asked = true; }
    bool asked = false;
};

TEST(DialogShellTest, AnErrorOfAnEventClosesTheWindowAndReachesTheCaller)
{
    const auto window = makeTreeWindow(std::make_shared<Desk>());
    Events events;
    events.onClick = [] { throw Error{errors::timeout, "Timeout expired."}; };
    User user{click("cmdOk")};
    try {
        window->showModal(events);
        ADD_FAILURE() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number, errors::timeout);
    }
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    QCoreApplication::processEvents();
}

TEST(DialogShellTest, TheWindowStaysUntilTheEventThatClosesItHasEnded)
{
    const auto window = makeTreeWindow(std::make_shared<Desk>());
    Events events;
    bool wasVisible = false;
    events.onClick = [&] {
        window->close();
        QCoreApplication::processEvents();
        wasVisible = QApplication::activeModalWidget() != nullptr;
        window->caption("still there");
    };
    User user{click("cmdClose")};
    window->showModal(events);
    EXPECT_TRUE(wasVisible);
}

TEST(DialogShellTest, ARefusedCloseLeavesTheWindowOpen)
{
    const auto window = makeTreeWindow(std::make_shared<Desk>());
    Events events;
    events.onClick = [&] { window->close(); };
    User user{closeWindow(), [&](QDialog& dialog) { EXPECT_TRUE(events.asked && dialog.isVisible()); }, click("cmdOk")};
    window->showModal(events);
}

TEST(TreeNodesTest, KeysAreUniqueAndParentsKnown)
{
    const auto window = makeTreeWindow(std::make_shared<Desk>());
    window->addNode("", "Root", "Budget");
    window->addNode("Root", "|1", "Eins");
    const auto numberOf = [](const std::function<void()>& act) {
        try {
            act();
        } catch (const Error& error) {
            return error.number;
        }
        return 0;
    };
    EXPECT_EQ(numberOf([&] { window->addNode("Root", "|1", "Zwei"); }), errors::keyNotUnique);
    EXPECT_EQ(numberOf([&] { window->addNode("|9", "|2", "Zwei"); }), errors::elementNotFound);
    EXPECT_EQ(numberOf([&] { window->selectNode("|7"); }), errors::elementNotFound);
    EXPECT_EQ(window->selectedNode(), std::nullopt);
    window->selectNode("|1");
    EXPECT_EQ(window->selectedNode(), "|1");
    window->clearTree();
    EXPECT_EQ(window->selectedNode(), std::nullopt);
    EXPECT_EQ(numberOf([&] { window->text("cmdNo", "x"); }), errors::invalidArgument) << "no such control";
}

} // namespace
} // namespace tamarok::qt
