#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "host_platform.h"
#include "qt/support/user.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_qt/platform.h"
#include "windows/list_window.h"
#include "windows/main_window.h"
#include "windows/measure_window.h"
#include "windows/options_window.h"
#include "work/navigation.h"

#include "tamarok/comm_get.h"
#include "tamarok/list_catalogue.h"

// The windows of the workbench on a sample database, drawn into memory.

namespace tamarok::workbench {
namespace {

constexpr int patience = 10000; ///< milliseconds until a list must be there

class Windows : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_->path());
        QApplication::setOrganizationName("test");
        QApplication::setApplicationName("workbench");
        embedded::NewDatabase made{file(), embedded::NewDatabase::Existing::Refuse};
        database::createReferenceDatabase(*made.connection(), {.logs = 900, .records = 40});
        made.complete();
    }
    static void TearDownTestSuite() { folder_.reset(); }
    static std::string file() { return folder_->filePath("sample.db").toStdString(); }

    Windows()
    {
        QSettings{}.clear();
        useLanguage(Language::German);
        Platform platform = cli::commandPlatform("de-AT");
        qt::equip(platform);
        scope = std::make_unique<PlatformScope>(platform);
        place = std::make_unique<Workplace>(databaseOf(file()), yard);
    }
    static cli::DatabaseChoice databaseOf(const std::string& path)
    {
        cli::DatabaseChoice choice;
        choice.file = path;
        return choice;
    }
    void logIn(std::int32_t user = 1)
    {
        for (const Account& account : place->accounts())
            if (account.id == user) {
                ASSERT_TRUE(place->logIn(account));
            }
        window = std::make_unique<MainWindow>(*place);
        window->show();
    }
    static void waitFor(const ListWindow& list)
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !list.isLoading(); }, patience));
    }
    /// Waits until the first rows have come into view.
    static QString cell(ListWindow& list, int row, int column)
    {
        const QAbstractItemModel& model = *list.table().model();
        const auto read = [&] { return model.index(row, column).data().toString(); };
        (void)QTest::qWaitFor([&] { return !model.index(row, 0).data().toString().isEmpty(); }, patience);
        return read();
    }
    static QAction* tool(ListWindow& list, const QKeySequence& key)
    {
        for (QAction* const action : list.findChild<QToolBar*>()->actions())
            if (action->shortcut() == key) return action;
        return nullptr;
    }
    static QString stateOf(const QWidget& page)
    {
        for (const QLabel* const label : page.findChildren<QLabel*>())
            if (label->textInteractionFlags() & Qt::TextSelectableByMouse) return label->text();
        return {};
    }

    static std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<PlatformScope> scope;
    Yard yard;
    std::unique_ptr<Workplace> place;
    std::unique_ptr<MainWindow> window; ///< goes before the workplace
};
std::unique_ptr<QTemporaryDir> Windows::folder_;

TEST_F(Windows, EachListTypeHasOnePlaceInTheNavigation)
{
    std::vector<std::string> listed;
    for (const ListGroup& group : listGroups())
        for (const ListNode& list : group.lists)
            listed.emplace_back(list.type);
    std::ranges::sort(listed);
    std::vector<std::string> all;
    for (const std::string_view type : catalogue::listTypeKeys())
        all.emplace_back(type);
    std::ranges::sort(all);
    EXPECT_EQ(listed, all);
}

TEST_F(Windows, EachListOpensWithItsRows)
{
    logIn();
    for (const std::string_view type : catalogue::listTypeKeys()) {
        ListWindow& list = window->openList(std::string{type});
        waitFor(list);
        EXPECT_GT(list.table().model()->rowCount(), 0) << type << ": " << stateOf(list).toStdString();
        EXPECT_FALSE(list.title().isEmpty()) << type;
    }
}

TEST_F(Windows, RowsAreReadWhereTheyAreLookedAt)
{
    logIn();
    ListWindow& list = window->openList("LOG");
    waitFor(list);
    EXPECT_EQ(list.table().model()->rowCount(), 900);
    EXPECT_EQ(cell(list, 0, 0), "L22-000001");
    EXPECT_FALSE(cell(list, 899, 0).isEmpty());
}

TEST_F(Windows, ThreeClicksOnAHeadSortUpDownAndNotAtAll)
{
    logIn();
    ListWindow& list = window->openList("LOG");
    waitFor(list);
    QHeaderView& heads = *list.table().horizontalHeader();
    const auto click = [&] {
        emit heads.sectionClicked(0);
        waitFor(list);
    };
    click();
    EXPECT_EQ(list.setup().order.size(), 1U);
    const QString first = cell(list, 0, 0);
    click();
    EXPECT_TRUE(list.setup().descending);
    EXPECT_GT(cell(list, 0, 0), first);
    click();
    EXPECT_TRUE(list.setup().order.empty());
}

TEST_F(Windows, GroupedListShowsTotalsAndOpensTheRowsOfAGroup)
{
    logIn();
    ListSetup setup;
    setup.columns = {32, 36};
    setup.grouped = true;
    ListWindow& list = window->openList(setup);
    waitFor(list);
    const int groups = list.table().model()->rowCount();
    EXPECT_GT(groups, 2);
    EXPECT_LT(groups, 30);
    const QString species = cell(list, 1, 0);
    emit list.table().activated(list.table().model()->index(1, 0));
    auto& records = dynamic_cast<ListWindow&>(*window->findChild<QTabWidget*>()->currentWidget());
    ASSERT_NE(&records, &list);
    waitFor(records);
    EXPECT_FALSE(records.setup().grouped);
    ASSERT_EQ(records.setup().filters.size(), 1U);
    EXPECT_EQ(cell(records, 0, 0), species);
}

TEST_F(Windows, WidthsAndColumnsAreKeptForTheNextTime)
{
    logIn();
    ListSetup setup;
    setup.columns = {1, 32};
    ListWindow& list = window->openList(setup);
    waitFor(list);
    list.table().setColumnWidth(1, 217);
    window.reset();
    window = std::make_unique<MainWindow>(*place);
    ListWindow& again = window->openList("LOG");
    EXPECT_EQ(again.setup().columns, setup.columns);
    EXPECT_EQ(again.table().columnWidth(1), 217);
}

TEST_F(Windows, LanguageChangesAtRunTime)
{
    logIn();
    ListWindow& list = window->openList("LOG");
    waitFor(list);
    const QString german = list.title();
    window->useLanguage(Language::French);
    waitFor(list);
    EXPECT_NE(list.title(), german);
    EXPECT_EQ(tool(list, QKeySequence{Qt::CTRL | Qt::Key_G})->text(), "Grouper");
    window->useLanguage(Language::English);
    waitFor(list);
    EXPECT_EQ(tool(list, QKeySequence{Qt::CTRL | Qt::Key_G})->text(), "Group");
    EXPECT_NE(list.table().model()->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), "");
}

TEST_F(Windows, ClosingWhileTheListIsFilledLeavesNothingBehind)
{
    logIn();
    for (const char* type : {"LOG", "BBHAB", "ARTIKEL"})
        window->openList(std::string{type});
    window.reset(); // the jobs have hardly begun
    QApplication::processEvents();
}

TEST_F(Windows, StoppedReadingSaysSoAndCanBeRepeated)
{
    logIn();
    ListWindow& list = window->openList("LOG");
    tool(list, QKeySequence{Qt::Key_Escape})->trigger();
    EXPECT_FALSE(list.isLoading());
    EXPECT_EQ(stateOf(list), textOf(Text::Stopped));
    list.refresh();
    waitFor(list);
    EXPECT_EQ(list.table().model()->rowCount(), 900);
}

TEST_F(Windows, DatabaseThatDisappearsIsToldInTheList)
{
    const QString copy = folder_->filePath("gone.db");
    ASSERT_TRUE(QFile::copy(QString::fromStdString(file()), copy));
    place = std::make_unique<Workplace>(databaseOf(copy.toStdString()), yard);
    logIn();
    for (const char* suffix : {"", "-wal", "-shm"})
        QFile::remove(copy + suffix);
    ListWindow& list = window->openList("BBHUNDE");
    waitFor(list);
    EXPECT_EQ(list.table().model()->rowCount(), 0);
    EXPECT_TRUE(stateOf(list).contains("gone.db")) << stateOf(list).toStdString();
    window.reset();
    place.reset();
}

TEST_F(Windows, CopyTakesTheCellOrTheSelectedRows)
{
    logIn();
    ListWindow& list = window->openList("LOG");
    waitFor(list);
    cell(list, 0, 0);
    list.table().setCurrentIndex(list.table().model()->index(0, 0));
    QTest::keyClick(&list.table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "L22-000001");
}

TEST_F(Windows, UserSeesOnlyWhatHisRightsShow)
{
    logIn(9); // a ranger
    const auto& tree = *window->findChild<QTreeWidget*>();
    int shown = 0;
    for (int group = 0; group < tree.topLevelItemCount(); ++group)
        shown += tree.topLevelItem(group)->childCount();
    EXPECT_GT(shown, 5);
    EXPECT_LT(shown, 41);
    ListWindow& list = window->openList("LOG");
    waitFor(list);
    EXPECT_LT(list.table().model()->rowCount(), 900);
}

TEST_F(Windows, SecondLogInOfTheSameUserIsRefused)
{
    logIn();
    Workplace second{databaseOf(file()), yard};
    Platform platform = Platform::current();
    const auto messages = std::make_shared<cli::RecordingMessageBox>();
    platform.messageBox = messages;
    const PlatformScope quiet{platform};
    EXPECT_FALSE(second.logIn(place->user()));
    EXPECT_EQ(messages->take().size(), 1U);
}

TEST_F(Windows, TimberListIsMeasuredAndLockedForOthers)
{
    logIn(1);
    window->measure("L22-000001");
    auto* const tabs = window->findChild<QTabWidget*>();
    auto* const measuring = dynamic_cast<MeasureWindow*>(tabs->currentWidget());
    ASSERT_NE(measuring, nullptr);
    const auto box = [&](const char* name) { return measuring->findChild<QLineEdit*>(name); };
    const auto type = [&](const char* name, const char* keys) {
        box(name)->setFocus();
        QTest::keyClicks(box(name), keys);
        QTest::keyClick(box(name), Qt::Key_Return);
        QTest::qWait(20); // the check of a code follows
    };
    type("species", "fi");
    EXPECT_EQ(box("species")->text(), "FI");
    type("assortment", "BL");
    type("quality", "B");
    type("barkKey", "OR");
    type("diameter", "3x2,5");
    type("length", "4,1");
    EXPECT_EQ(box("diameter")->text(), "32,5") << "letters are refused";
    QStringList figures;
    for (const QLabel* const label : measuring->findChildren<QLabel*>("figure"))
        figures += label->text();
    EXPECT_TRUE(figures.contains(QString::fromUtf8("0,340 m³"))) << figures.join(" ").toStdString();

    Workplace second{databaseOf(file()), yard};
    Platform platform = Platform::current();
    const auto messages = std::make_shared<cli::RecordingMessageBox>();
    platform.messageBox = messages;
    {
        const PlatformScope quiet{platform};
        for (const Account& account : second.accounts())
            if (account.id == 9) {
                ASSERT_TRUE(second.logIn(account));
            }
        EXPECT_EQ(MeasureWindow::open(second, "L22-000001"), nullptr);
        const auto shown = messages->take();
        ASSERT_EQ(shown.size(), 1U);
        EXPECT_NE(shown[0].text.find("ADMIN"), std::string::npos) << shown[0].text;
    }
    const auto lines = [&] {
        return Comm_Get{}.Get_FieldValueN(place->session(), "COUNT(*)", "LOGS", "LISTE = 'L22-000001'");
    };
    const double before = lines();
    QTest::keyClick(box("pieces"), Qt::Key_Return);
    EXPECT_EQ(lines(), before + 1);
    emit tabs->tabCloseRequested(tabs->currentIndex());
    EXPECT_NE(MeasureWindow::open(second, "L22-000001"), nullptr) << "the lock went with the window";
}

TEST_F(Windows, WrongCodeIsToldAndNothingIsSaved)
{
    logIn(1);
    Platform platform = Platform::current();
    const auto messages = std::make_shared<cli::RecordingMessageBox>();
    platform.messageBox = messages;
    const PlatformScope quiet{platform};
    const auto measuring = MeasureWindow::open(*place, "L22-000001");
    ASSERT_NE(measuring, nullptr);
    measuring->show();
    auto* const species = measuring->findChild<QLineEdit*>("species");
    QTest::keyClicks(species, "xx");
    QTest::keyClick(species, Qt::Key_Return);
    QTest::qWait(50);
    EXPECT_EQ(messages->take().size(), 1U);
}

/// Returns the controls of a window that the keyboard reaches and that have no name for screen readers.
QStringList namelessControls(const QWidget& window)
{
    QStringList nameless;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        const bool isReached = widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0;
        // A box inside another control, such as the list of a combo box, is read with it.
        if (!isReached || widget->focusProxy() != nullptr) continue;
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(widget);
        if (spoken == nullptr || spoken->text(QAccessible::Name).isEmpty())
            nameless += QString{widget->metaObject()->className()} + " " + widget->objectName();
    }
    return nameless;
}

TEST_F(Windows, EachControlThatTheKeyboardReachesHasANameForScreenReaders)
{
    logIn(1);
    const auto expectNames = [this](const char* page) {
        EXPECT_EQ(namelessControls(*window).join(", ").toStdString(), "") << page;
    };
    expectNames("welcome");
    ListWindow& list = window->openList("LOG");
    waitFor(list);
    tool(list, QKeySequence{Qt::CTRL | Qt::Key_B})->trigger();
    expectNames("list");
    window->measure("L22-000001");
    expectNames("measuring");
    window->openOptions();
    expectNames("options");
}

TEST_F(Windows, LogThatIsNotSavedIsAskedForBeforeItsWindowCloses)
{
    logIn(1);
    window->measure("L22-000001");
    auto* const tabs = window->findChild<QTabWidget*>();
    auto& measuring = dynamic_cast<MeasureWindow&>(*tabs->currentWidget());
    auto* const diameter = measuring.findChild<QLineEdit*>("diameter");
    QTest::keyClicks(diameter, "32");
    const int pages = tabs->count();
    const auto answer = [](QMessageBox::ButtonRole role) {
        return [role](QDialog& dialog) {
            auto& question = dynamic_cast<QMessageBox&>(dialog);
            for (QAbstractButton* const button : question.buttons())
                if (question.buttonRole(button) == role) return QTest::mouseClick(button, Qt::LeftButton);
        };
    };
    {
        const qt::acting::User user{answer(QMessageBox::RejectRole)};
        emit tabs->tabCloseRequested(tabs->currentIndex());
    }
    ASSERT_EQ(tabs->count(), pages);
    EXPECT_EQ(diameter->text(), "32");
    {
        const qt::acting::User user{answer(QMessageBox::RejectRole)};
        EXPECT_FALSE(window->close());
    }
    {
        const qt::acting::User user{answer(QMessageBox::AcceptRole)};
        emit tabs->tabCloseRequested(tabs->currentIndex());
    }
    EXPECT_EQ(tabs->count(), pages) << "a line without a length cannot be saved";
    {
        const qt::acting::User user{answer(QMessageBox::DestructiveRole)};
        emit tabs->tabCloseRequested(tabs->currentIndex());
    }
    EXPECT_EQ(tabs->count(), pages - 1);
}

TEST_F(Windows, DatabaseThatDisappearsLeavesWhatWasTyped)
{
    const QString copy = folder_->filePath("lost.db");
    ASSERT_TRUE(QFile::copy(QString::fromStdString(file()), copy));
    place = std::make_unique<Workplace>(databaseOf(copy.toStdString()), yard);
    logIn(1);
    Platform platform = Platform::current();
    const auto messages = std::make_shared<cli::RecordingMessageBox>();
    platform.messageBox = messages;
    const PlatformScope quiet{platform};
    auto measuring = MeasureWindow::open(*place, "L22-000001");
    ASSERT_NE(measuring, nullptr);
    measuring->show();
    const auto type = [&](const char* name, const char* keys) {
        QTest::keyClicks(measuring->findChild<QLineEdit*>(name), keys);
    };
    type("diameter", "32");
    type("length", "4");
    for (const char* suffix : {"", "-wal", "-shm"})
        QFile::remove(copy + suffix);
    QTest::keyClick(measuring->findChild<QLineEdit*>("pieces"), Qt::Key_Return);
    EXPECT_EQ(measuring->findChild<QLineEdit*>("diameter")->text(), "32");
    QStringList shown;
    for (const QLabel* const label : measuring->findChildren<QLabel*>())
        shown += label->text();
    EXPECT_TRUE(shown.join(" ").contains("lost.db")) << shown.join(" ").toStdString();
    measuring.reset();
    EXPECT_EQ(messages->take().size(), 1U) << "the lock could not be taken back";
    window.reset();
    place.reset();
}

TEST_F(Windows, WindowOfAScreenThatHasGoneComesBackToOneThatIsThere)
{
    logIn(1);
    window->setGeometry(9000, 7000, 600, 400);
    window->close();
    window = std::make_unique<MainWindow>(*place);
    window->show();
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().contains(window->frameGeometry().topLeft()))
        << window->x() << " " << window->y();
}

TEST_F(Windows, OptionIsChangedAndAWrongValueRefused)
{
    logIn(1);
    window->openOptions();
    auto& options = dynamic_cast<OptionsWindow&>(*window->findChild<QTabWidget*>()->currentWidget());
    QTableWidget& table = options.table();
    const auto row = table.row(table.findItems("KUBATURPLACE", Qt::MatchExactly).at(0));
    table.item(row, 1)->setText("2");
    EXPECT_EQ(Comm_Get{}.GetOptionenNumber(place->session(), "KUBATURPLACE"), 2);
    table.item(row, 1)->setText("many");
    EXPECT_EQ(table.item(row, 1)->text(), "2");
    EXPECT_EQ(Comm_Get{}.GetOptionenNumber(place->session(), "KUBATURPLACE"), 2);
    table.item(row, 1)->setText("3");
}

} // namespace
} // namespace tamarok::workbench
