#include <QScreen>

#include "qt/support/display.h"
#include "qt/support/sample.h"
#include "qt/support/user.h"

#include "tamarok/comm_forms.h"
#include "tamarok/grid_help.h"

// Whole stories with a display: the keys and clicks come from the system, by xdotool.

namespace tamarok::qt {
namespace {

using namespace acting;

constexpr int patience = 30'000; ///< milliseconds until the display must have brought an event

/// Waits until the program has handled what the user did.
User::Step eventually(std::function<bool(QDialog&)> condition)
{
    return [condition](QDialog& dialog) { EXPECT_TRUE(QTest::qWaitFor([&] { return condition(dialog); }, patience)); };
}

User::Step keys(const QStringList& names)
{
    return [names](QDialog&) { act(QStringList{"key"} + names); };
}
/// There is no window manager on the display, so that the window itself asks for the keyboard.
User::Step takeKeyboard()
{
    return [](QDialog& dialog) {
        dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog, patience));
    };
}
User::Step clickAt(std::string name)
{
    return [name](QDialog& dialog) {
        const auto& widget = find<QWidget>(dialog, name);
        const QPoint place = widget.mapToGlobal(widget.rect().center());
        act({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1"});
    };
}
User::Step clickHead(int column)
{
    return [column](QDialog& dialog) {
        const QHeaderView& heads = *find<QTableView>(dialog, "DataGrid1").horizontalHeader();
        const QPoint place = heads.viewport()->mapToGlobal(
            QPoint{heads.sectionViewportPosition(column) + heads.sectionSize(column) / 2, heads.height() / 2});
        act({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1"});
    };
}

const std::string projects = "SELECT NUMMER,LONG,SHORT FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER < '2' ORDER BY NUMMER";

class Story : public ::testing::Test {
protected:
    Story()
    {
        caller.resize(500, 300);
        field.setGeometry(20, 20, 200, 30);
        next.setGeometry(20, 60, 200, 30);
        QObject::connect(&field, &QLineEdit::returnPressed, &next, [this] { next.setFocus(); });
        caller.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&caller, patience));
        caller.activateWindow();
        field.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&caller, patience));
    }
    Sample sample;
    QWidget caller;
    QLineEdit field{&caller};
    QLineEdit next{&caller};
};

TEST_F(Story, FindSortTypeAndTake)
{
    User user{takeKeyboard(), clickHead(1), keys({"w", "e", "r"}),
              eventually([](QDialog& dialog) { return find<QGroupBox>(dialog, "Frame1").title() == "wer"; }),
              keys({"BackSpace", "Up", "Down", "Return"})};
    field.setText(toQt(Grid_Help{}.GridHelp(sample.session, projects, "Projekte", "", "")));
    EXPECT_EQ(field.text(), "1006");
    EXPECT_TRUE(QTest::qWaitFor([&] { return caller.focusWidget() == &next; }, patience))
        << "Enter reached the caller's field and moved on";
}

TEST_F(Story, AnEditIsNotLostByClosing)
{
    User user{takeKeyboard(),
              clickAt("cmdNew"),
              eventually([](QDialog& dialog) { return dialog.focusWidget()->objectName() == "Text1"; }),
              keys({"4", "2", "Tab", "x", "Escape"}),
              eventually([](QDialog& dialog) { return find<QLineEdit>(dialog, "Text2").text() == "x"; }),
              [](QDialog& dialog) { dialog.close(); },
              [](QDialog& dialog) {
                  EXPECT_EQ(find<QLineEdit>(dialog, "Text1").text(), "42");
                  EXPECT_EQ(find<QLineEdit>(dialog, "Text2").text(), "x");
              },
              clickAt("cmdSave"),
              eventually([](QDialog& dialog) { return find<QPushButton>(dialog, "cmdClose").isEnabled(); }),
              clickAt("cmdClose")};
    EXPECT_EQ(Grid_Help{}.GridHelp(sample.session, projects, "Projekte", "kept", "001"), "kept");
}

TEST_F(Story, APointedDateIsTakenByADoubleClick)
{
    User user{takeKeyboard(), [](QDialog& dialog) {
                  const auto& days =
                      *find<QCalendarWidget>(dialog, "MonthView1").findChild<QTableView*>("qt_calendar_calendarview");
                  const QPoint place = days.viewport()->mapToGlobal(days.visualRect(days.currentIndex()).center());
                  act({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "--repeat", "2",
                       "--delay", "30", "1"});
              }};
    EXPECT_EQ(Grid_Help{}.GridHelp(sample.session, "DATUM", "Datum", "15.05.2024", ""), "15.05.2024");
}

TEST_F(Story, TheProgressWindowIsDrawnWithoutAnEventLoop)
{
    Comm_Forms forms;
    forms.Info_Init(100, {});
    QWidget* window = nullptr;
    for (QWidget* const top : QApplication::topLevelWidgets())
        if (top->objectName() == "F_Info") window = top;
    ASSERT_NE(window, nullptr);
    const auto pictured = [&] { return window->screen()->grabWindow(window->winId()).toImage(); };
    forms.Info_ProgressValue(0);
    const QImage empty = pictured();
    forms.Info_ProgressValue(100);
    EXPECT_NE(pictured(), empty) << "what the display shows has changed";
    forms.Info_Release({});
}

} // namespace
} // namespace tamarok::qt

int main(int argc, char** argv)
{
    return tamarok::qt::acting::runOnDisplay(argc, argv);
}
