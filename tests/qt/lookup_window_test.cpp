#include "dialogs/grid_model.h"
#include "dialogs/windows.h"
#include "qt/support/sample.h"
#include "qt/support/user.h"
#include "tamarok_qt/twips.h"

#include "tamarok/error.h"
#include "tamarok/grid_help.h"

// The lookup in its real window: keys and clicks of a user, on the sample database.

namespace tamarok::qt {
namespace {

using namespace acting;

const std::string projects = "SELECT NUMMER,LONG,SHORT FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER < '2' ORDER BY NUMMER";

class LookupWindowTest : public ::testing::Test {
protected:
    std::string run(const std::string& config, const std::string& preset = "", const std::string& select = projects)
    {
        return Grid_Help{}.GridHelp(sample.session, select, "Projekte", preset, config);
    }
    static QTableView& grid(QDialog& dialog) { return find<QTableView>(dialog, "DataGrid1"); }
    static QString cell(QDialog& dialog, int row, int column)
    {
        return grid(dialog).model()->index(row, column).data().toString();
    }
    static QString head(QDialog& dialog, int column)
    {
        return grid(dialog).model()->headerData(column, Qt::Horizontal).toString();
    }
    static User::Step clickHead(int column)
    {
        return [column](QDialog& dialog) {
            QHeaderView* const heads = grid(dialog).horizontalHeader();
            const QPoint place{heads->sectionViewportPosition(column) + heads->sectionSize(column) / 2,
                               heads->height() / 2};
            QTest::mouseClick(heads->viewport(), Qt::LeftButton, {}, place);
        };
    }
    static User::Step clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        return [row, modifiers](QDialog& dialog) {
            QTableView& view = grid(dialog);
            const QPoint place = view.visualRect(view.model()->index(row, 1)).center();
            QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, place);
        };
    }
    static User::Step expectCurrent(int row)
    {
        return [row](QDialog& dialog) { EXPECT_EQ(grid(dialog).currentIndex().row(), row); };
    }

    Sample sample;
};

TEST_F(LookupWindowTest, TypesSortsAndTakesARow)
{
    User user{expectCurrent(0),
              clickHead(1),
              [](QDialog& dialog) {
                  EXPECT_EQ(head(dialog, 1), " »»  Langbezeichnung");
                  EXPECT_EQ(cell(dialog, 0, 1), "Borkenkäferaufarbeitung");
              },
              typeKeys("w"),
              expectCurrent(4),
              typeKeys("E"),
              [](QDialog& dialog) {
                  EXPECT_EQ(find<QGroupBox>(dialog, "Frame1").title(), "wE");
                  EXPECT_EQ(cell(dialog, grid(dialog).currentIndex().row(), 1), "Wertholzsubmission");
              },
              pressKey(Qt::Key_Backspace),
              [](QDialog& dialog) { EXPECT_EQ(find<QGroupBox>(dialog, "Frame1").title(), "w"); },
              pressKey(Qt::Key_Down),
              [](QDialog& dialog) { EXPECT_EQ(find<QGroupBox>(dialog, "Frame1").title(), ""); },
              pressKey(Qt::Key_Return)};
    EXPECT_EQ(run("000"), "1006");
}

TEST_F(LookupWindowTest, MarksTheRowThatItTakes)
{
    User user{[](QDialog& dialog) {
                  const QModelIndexList marked = grid(dialog).selectionModel()->selectedRows();
                  ASSERT_EQ(marked.size(), 1);
                  EXPECT_EQ(marked.front().row(), 2) << "the value of the field";
              },
              pressKey(Qt::Key_Up),
              pressKey(Qt::Key_Up),
              pressKey(Qt::Key_PageDown),
              clickRow(3),
              [](QDialog& dialog) { EXPECT_EQ(grid(dialog).selectionModel()->selectedRows().size(), 1); },
              clickRow(1, Qt::ControlModifier),
              [](QDialog& dialog) { EXPECT_EQ(grid(dialog).selectionModel()->selectedRows().size(), 1); },
              click("cmdOk")};
    EXPECT_EQ(run("000", "1003"), "1002");
}

TEST_F(LookupWindowTest, SeveralRowsAreTakenInTheOrderOfTheRows)
{
    User user{clickRow(4), clickRow(1, Qt::ControlModifier), clickRow(3, Qt::ControlModifier),
              clickRow(4, Qt::ControlModifier), click("cmdOk")};
    EXPECT_EQ(run("010"), "1002,1004");
    User none{pressKey(Qt::Key_Down), click("cmdOk")};
    EXPECT_EQ(run("010"), "1002") << "the current row, where none was marked beside it";
}

TEST_F(LookupWindowTest, ADoubleClickTakesAndEscapeLeaves)
{
    User user{[](QDialog& dialog) {
        QTableView& view = grid(dialog);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(view.model()->index(5, 0)).center());
    }};
    EXPECT_EQ(run("000"), "1006");
    User leaving{pressKey(Qt::Key_Escape)};
    EXPECT_EQ(run("000", "x"), "x");
    User closing{closeWindow()};
    EXPECT_EQ(run("000", "x"), "x");
}

TEST_F(LookupWindowTest, ClosingIsRefusedWhileARowIsEdited)
{
    User user{click("cmdNew"),
              [](QDialog& dialog) {
                  EXPECT_FALSE(find<QPushButton>(dialog, "cmdClose").isEnabled());
                  EXPECT_FALSE(grid(dialog).isEnabled());
                  EXPECT_EQ(dialog.focusWidget()->objectName(), "Text1");
                  EXPECT_EQ(find<QLineEdit>(dialog, "Text2").accessibleName(), "Langbezeichnung");
              },
              typeKeys("17"),
              closeWindow(),
              pressKey(Qt::Key_Escape),
              [](QDialog& dialog) {
                  EXPECT_TRUE(dialog.isVisible());
                  EXPECT_EQ(find<QLineEdit>(dialog, "Text1").text(), "17") << "no input is lost";
              },
              pressKey(Qt::Key_Return), // goes on to the next box
              [](QDialog& dialog) { EXPECT_EQ(dialog.focusWidget()->objectName(), "Text2"); },
              click("cmdSave"), // leaves the edit
              closeWindow()};
    EXPECT_EQ(run("001", "kept"), "kept");
}

TEST_F(LookupWindowTest, ARowIsAddedAndTaken)
{
    User user{click("cmdNew"),
              typeKeys("1990"),
              pressKey(Qt::Key_Tab),
              typeKeys("Windwurf"),
              pressKey(Qt::Key_Tab),
              typeKeys("Wind"),
              click("cmdNew"),
              [](QDialog& dialog) {
                  EXPECT_TRUE(grid(dialog).isEnabled());
                  EXPECT_EQ(grid(dialog).model()->rowCount(), 7);
              },
              [](QDialog& dialog) { grid(dialog).setFocus(); },
              typeKeys("199"),
              click("cmdOk")};
    EXPECT_EQ(run("001"), "1990");
    EXPECT_TRUE(sample.messages->shown.empty());
    sample.session.db_ADO->Execute("DELETE FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER = '1990'");
}

TEST_F(LookupWindowTest, PicksADate)
{
    User taking{pressKey(Qt::Key_Right), pressKey(Qt::Key_Return)};
    EXPECT_EQ(run("", "17.05.2024", "DATUM"), "18.05.2024");
    User leaving{pressKey(Qt::Key_Right), pressKey(Qt::Key_Escape)};
    EXPECT_EQ(run("", "17.05.2024", "DATUM"), "17.05.2024");
    User emptied{closeWindow()};
    EXPECT_EQ(run("1", "17.05.2024", "DATUM"), "") << "the field may be emptied";
    User today{pressKey(Qt::Key_Return)};
    EXPECT_EQ(run("", "no date", "DATUM"), "17.05.2024");
}

TEST_F(LookupWindowTest, WidthsAndSizePersist)
{
    const auto drag = [](QDialog& dialog) { grid(dialog).horizontalHeader()->resizeSection(0, 123); };
    User dragging{drag, [](QDialog& dialog) { dialog.resize(700, 444); }, closeWindow()};
    run("000");
    User looking{[](QDialog& dialog) {
                     EXPECT_EQ(grid(dialog).columnWidth(0), 123);
                     EXPECT_EQ(dialog.size(), QSize(700, 444));
                 },
                 closeWindow()};
    run("000");
}

TEST_F(LookupWindowTest, ADatabaseThatDisappearsEndsTheDialogWithItsError)
{
    // Sorting keeps the rows that it has; a new row cannot be saved.
    User user{clickHead(1), [&](QDialog&) { sample.session.db_ADO->Execute("DROP TABLE VANISHING"); }, clickHead(1),
              [](QDialog& dialog) { EXPECT_EQ(grid(dialog).model()->rowCount(), 2); }, click("cmdOk")};
    sample.session.db_ADO->Execute("CREATE TABLE VANISHING (CODE NVARCHAR(5) NOT NULL PRIMARY KEY, NAME NVARCHAR(9))");
    sample.session.db_ADO->Execute("INSERT INTO VANISHING (CODE, NAME) VALUES ('A', 'Ahorn'), ('B', 'Buche')");
    int number = 0;
    try {
        run("000", "", "SELECT CODE, NAME FROM VANISHING ORDER BY CODE");
    } catch (const Error& error) {
        number = error.number;
    }
    EXPECT_EQ(number, 0) << "the rows that were read stay usable";
    EXPECT_THROW(run("000", "", "SELECT CODE, NAME FROM VANISHING ORDER BY CODE"), Error);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(LookupWindowTest, ATypedRowOutlivesAFailureOfTheDatabase)
{
    sample.session.db_ADO->Execute(
        "CREATE TABLE FLEETING (ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY, CODE NVARCHAR(5), "
        "NAME NVARCHAR(9), ID_ACCESS_LEVELS INT)");
    User user{click("cmdNew"),
              typeKeys("AH"),
              pressKey(Qt::Key_Tab),
              typeKeys("Ahorn"),
              [&](QDialog&) { sample.session.db_ADO->Execute("DROP TABLE FLEETING"); },
              click("cmdNew"),
              [&](QDialog& dialog) {
                  EXPECT_EQ(sample.messages->shown.size(), 1U);
                  EXPECT_EQ(find<QLineEdit>(dialog, "Text1").text(), "AH");
                  EXPECT_EQ(find<QLineEdit>(dialog, "Text2").text(), "Ahorn");
                  EXPECT_TRUE(find<QLineEdit>(dialog, "Text2").isEnabled());
              },
              click("cmdSave"),
              closeWindow()};
    run("001", "", "SELECT CODE, NAME FROM FLEETING ORDER BY CODE");
}

TEST_F(LookupWindowTest, EveryControlHasANameAndIsReachedByTab)
{
    User user{click("cmdNew"),
              [](QDialog& dialog) {
                  QStringList passed;
                  for (int presses = 0; presses < 8; ++presses) {
                      passed << dialog.focusWidget()->objectName();
                      QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
                  }
                  for (const char* name : {"Text1", "Text2", "Text3", "cmdNew", "cmdSave"})
                      EXPECT_TRUE(passed.contains(name)) << name;
                  for (const char* name : {"DataGrid1", "Text1", "Text2", "Text3"})
                      EXPECT_FALSE(find<QWidget>(dialog, name).accessibleName().isEmpty()) << name;
              },
              click("cmdSave"), closeWindow()};
    run("001");
}

TEST_F(LookupWindowTest, AWindowWhoseScreenGoesAwayComesBack)
{
    User user{click("cmdNew"),
              typeKeys("17"),
              [](QDialog& dialog) {
                  dialog.move(4000, 3000);
                  emit qApp->screenRemoved(dialog.screen());
              },
              [](QDialog& dialog) {
                  EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.frameGeometry()));
                  EXPECT_EQ(find<QLineEdit>(dialog, "Text1").text(), "17");
              },
              click("cmdSave"),
              closeWindow()};
    EXPECT_EQ(run("001", "kept"), "kept");
}

TEST_F(LookupWindowTest, NumbersAreAlignedRight)
{
    sample.session.db_ADO->Execute("INSERT INTO MANY (CODE, AMOUNT, NAME) VALUES ('A', NULL, 'x'), ('B', 12.5, '7')");
    User user{[](QDialog& dialog) {
                  const auto isRight = [&](int column) {
                      const QModelIndex cell = grid(dialog).model()->index(1, column);
                      return (cell.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0;
                  };
                  EXPECT_FALSE(isRight(0));
                  EXPECT_TRUE(isRight(1)) << "the first value is Null";
                  EXPECT_FALSE(isRight(2)) << "a text of digits";
              },
              closeWindow()};
    run("000", "", "SELECT CODE, AMOUNT, NAME FROM MANY ORDER BY CODE");
}

TEST_F(LookupWindowTest, ClosedWhileItLoads)
{
    // The window is closed before its first events are handled.
    QTimer::singleShot(0, [] {
        for (QWidget* const window : QApplication::topLevelWidgets())
            if (window->objectName() == "frmViewGrid") window->close();
    });
    EXPECT_EQ(run("000", "kept"), "kept");
}

TEST_F(LookupWindowTest, TheCallersWindowMayGoFirst)
{
    auto caller = std::make_unique<QWidget>();
    caller->show();
    caller->activateWindow();
    QCoreApplication::processEvents();
    User user{[&](QDialog&) { caller.reset(); }, click("cmdOk")};
    EXPECT_EQ(run("000", "1002"), "1002");
}

/// Many rows, and a count of the cells that were asked for.
class ManyRows final : public dialogs::GridRows {
public:
    std::size_t count() const override { return 100'000; }
    std::size_t columns() const override { return 3; }
    std::string text(std::size_t row, std::size_t column) const override
    {
        ++asked;
        return column == 2 ? std::string(1 << 20, 'x') : std::to_string(row);
    }
    bool isNumber(std::size_t column) const override { return column == 0; }
    mutable std::size_t asked = 0;
};

TEST(GridModelTest, AsksForTheCellsThatCanBeSeen)
{
    const ManyRows rows;
    GridModel model;
    QTableView view;
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.setModel(&model);
    model.show(rows, std::vector<std::string>{"A", "B", "C"});
    view.resize(400, 300);
    view.show();
    view.grab();
    EXPECT_EQ(model.rowCount(), 100'000);
    EXPECT_GT(rows.asked, 0U);
    EXPECT_LT(rows.asked, 2'000U);
    rows.asked = 0;
    view.scrollToBottom();
    view.grab();
    EXPECT_LT(rows.asked, 2'000U);
    EXPECT_EQ(model.index(0, 2).data().toString().size(), 1001) << "a very long text is cut, with a mark";
    EXPECT_EQ(model.index(0, 0).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight, Qt::AlignRight);
}

TEST(ShownTextTest, KeepsWholeCharacters)
{
    std::string trees;
    for (int count = 0; count < 5000; ++count)
        trees += "🌲";
    EXPECT_FALSE(shownText(trees).contains(QChar::ReplacementCharacter));
    EXPECT_EQ(shownText("a\r\nb\tc"), "a  b c");
    EXPECT_EQ(shownText(""), "");
}

} // namespace
} // namespace tamarok::qt
