#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProcess>
#include <QSettings>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>
#include <string>

#include "host_platform.h"
#include "qt/support/display.h"
#include "qt/support/user.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_qt/platform.h"
#include "windows/list_window.h"
#include "windows/main_window.h"
#include "windows/measure_window.h"

#include "tamarok/comm_get.h"

// Whole stories on a display: the keys and clicks come from the system, by xdotool. Two workbenches run as two
// programs.

namespace tamarok::workbench {
namespace {

using qt::acting::act;
using qt::acting::Display;
using qt::acting::User;

constexpr int patience = 60'000; ///< milliseconds until the display must have brought an event

void keys(const QStringList& names)
{
    act(QStringList{"key"} + names);
}

void click(const QPoint& place, int button = 1)
{
    act({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", QString::number(button)});
}

/// Presses keys in the next menu. The click that opens a menu returns when the menu has closed.
class MenuKeys {
public:
    explicit MenuKeys(const QStringList& names)
    {
        timer_.callOnTimeout([this, names] {
            if (QApplication::activePopupWidget() == nullptr) return;
            timer_.stop();
            keys(names);
        });
        timer_.start(50);
    }

private:
    QTimer timer_;
};

/// Reads the next message box and closes it.
class MessageReader {
public:
    MessageReader()
    {
        timer_.callOnTimeout([this] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            timer_.stop();
            text = box->text();
            box->close();
        });
        timer_.start(50);
    }

    QString text;

private:
    QTimer timer_;
};

class Story : public testing::Test {
protected:
    Story()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
        QApplication::setOrganizationName("test");
        QApplication::setApplicationName("stories");
        embedded::NewDatabase made{file(), embedded::NewDatabase::Existing::Refuse};
        database::createReferenceDatabase(*made.connection(), {.logs = 900, .records = 40});
        made.complete();
        useLanguage(Language::German);
        Platform platform = cli::commandPlatform("de-AT");
        qt::equip(platform);
        scope = std::make_unique<PlatformScope>(platform);
        cli::DatabaseChoice database;
        database.file = file();
        place = std::make_unique<Workplace>(database, yard);
        logIn("Administration");
        window = std::make_unique<MainWindow>(*place);
        window->show();
        takeKeyboard();
    }
    std::string file() const { return folder.filePath("sample.db").toStdString(); }
    void logIn(const std::string& name)
    {
        for (const Account& account : place->accounts())
            if (account.name == name) {
                EXPECT_TRUE(place->logIn(account));
            }
    }
    /// There is no window manager on the display, so that the window itself asks for the keyboard.
    void takeKeyboard()
    {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), patience));
    }
    QWidget* page() const { return window->findChild<QTabWidget*>()->currentWidget(); }
    /// Finds the log list by its name and opens it, with keys alone.
    ListWindow& openLogs()
    {
        keys({"ctrl+f", "h", "o", "l", "z", "l", "i", "s", "Return"});
        EXPECT_TRUE(waitFor([this] { return dynamic_cast<ListWindow*>(page()) != nullptr; }));
        auto& list = dynamic_cast<ListWindow&>(*page());
        EXPECT_TRUE(waitFor([&] { return !list.isLoading(); }));
        return list;
    }
    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, patience); }
    static QString cell(ListWindow& list, int row, int column)
    {
        return list.table().model()->index(row, column).data().toString();
    }
    double logsOf(const std::string& list) const
    {
        return Comm_Get{}.Get_FieldValueN(place->session(), "COUNT(*)", "LOGS", "LISTE = '" + list + "'");
    }

    QTemporaryDir folder;
    std::unique_ptr<PlatformScope> scope;
    Yard yard;
    std::unique_ptr<Workplace> place;
    std::unique_ptr<MainWindow> window; ///< goes before the workplace
};

TEST_F(Story, FindAListSortItAndFilterIt)
{
    ListWindow& list = openLogs();
    const QHeaderView& heads = *list.table().horizontalHeader();
    const QPoint head = heads.viewport()->mapToGlobal(QPoint{heads.sectionSize(0) / 2, heads.height() / 2});
    click(head);
    ASSERT_TRUE(waitFor([&] { return !list.isLoading() && list.setup().order.size() == 1; }));
    const QString first = cell(list, 0, 0);
    QTest::qWait(QApplication::doubleClickInterval() + 50); // two clicks are not a double click
    click(head);
    ASSERT_TRUE(waitFor([&] { return !list.isLoading() && list.setup().descending; }));
    EXPECT_GT(cell(list, 0, 0), first);

    const QTableView& table = list.table();
    const QString value = cell(list, 0, 0);
    const MenuKeys choice{{"Down", "Return"}};
    click(table.viewport()->mapToGlobal(table.visualRect(table.model()->index(0, 0)).center()), 3);
    ASSERT_TRUE(waitFor([&] { return !list.isLoading() && list.setup().filters.size() == 1; }));
    EXPECT_LT(table.model()->rowCount(), 900);
    EXPECT_EQ(cell(list, table.model()->rowCount() - 1, 0), value);
}

TEST_F(Story, LookACodeUpMeasureALogAndSaveIt)
{
    window->measure("L22-000001");
    auto* const measuring = dynamic_cast<MeasureWindow*>(page());
    ASSERT_NE(measuring, nullptr);
    const auto box = [&](const char* name) { return measuring->findChild<QLineEdit*>(name); };
    const auto leads = [&](const char* name) { return waitFor([&, name] { return box(name)->hasFocus(); }); };
    const double before = logsOf("L22-000001");
    ASSERT_TRUE(leads("species"));
    {
        // The look-up opens on the first row; the code of the second one is taken.
        const User user{[](QDialog& dialog) {
            dialog.activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog, patience));
            keys({"Down", "Return"});
        }};
        keys({"F4"});
        EXPECT_TRUE(waitFor([&] { return !box("species")->text().isEmpty(); }));
    }
    EXPECT_EQ(box("species")->text(), "TA");
    takeKeyboard();
    box("assortment")->setFocus();
    ASSERT_TRUE(leads("assortment"));
    keys({"b", "l", "Return"});
    ASSERT_TRUE(leads("quality"));
    EXPECT_EQ(box("assortment")->text(), "BL") << "spelled as the table has it";
    keys({"b", "Tab"});
    ASSERT_TRUE(leads("barkKey"));
    keys({"o", "r", "Return"});
    ASSERT_TRUE(leads("diameter"));
    keys({"3", "2", "comma", "5", "Return"});
    ASSERT_TRUE(leads("length"));
    keys({"4", "comma", "1", "Return"});
    ASSERT_TRUE(leads("pieces"));
    QStringList figures;
    for (const QLabel* const label : measuring->findChildren<QLabel*>("figure"))
        figures += label->text();
    EXPECT_TRUE(figures.contains(QString::fromUtf8("0,340 m³"))) << figures.join(" ").toStdString();
    keys({"Return"});
    EXPECT_TRUE(waitFor([&] { return logsOf("L22-000001") == before + 1; }));
    EXPECT_TRUE(leads("diameter")) << "the next log follows";
    EXPECT_EQ(box("diameter")->text(), "");
}

/// A second workbench as a program of its own, on a display of its own, that is used by its keys alone.
class SecondWorkbench {
public:
    /// @param user  id of the user whom the login offers
    SecondWorkbench(const std::string& file, const QTemporaryDir& settings, int user)
    {
        QSettings{settings.filePath("Tamarok/tamarok-workbench.conf"), QSettings::IniFormat}.setValue("user", user);
        QProcessEnvironment environment = display.environment();
        environment.insert("XDG_CONFIG_HOME", settings.path());
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(TAMAROK_WORKBENCH, {"--db", QString::fromStdString(file), "--locale", "de-AT"});
    }
    ~SecondWorkbench()
    {
        program.kill();
        program.waitForFinished();
    }
    SecondWorkbench(const SecondWorkbench&) = delete;
    SecondWorkbench& operator=(const SecondWorkbench&) = delete;

    /// Waits for a window by a pattern of its title, and gives it the keyboard.
    void use(const QString& title)
    {
        run({"search", "--sync", "--onlyvisible", "--name", title, "windowfocus", "--sync"});
    }
    void press(const QStringList& names) { run(QStringList{"key", "--delay", "60"} + names); }

    QProcess program;

private:
    void run(const QStringList& arguments)
    {
        QProcess tool;
        tool.setProcessEnvironment(display.environment());
        tool.start("xdotool", arguments);
        EXPECT_TRUE(tool.waitForFinished(patience)) << arguments.join(' ').toStdString();
        EXPECT_EQ(tool.exitCode(), 0) << arguments.join(' ').toStdString();
    }

    Display display;
};

TEST_F(Story, SecondWorkbenchIsToldWhoHoldsTheRecord)
{
    const QTemporaryDir settings;
    SecondWorkbench second{file(), settings, 5};
    second.use("^Tamarok Arbeitsplatz$"); // the login
    second.press({"Return"});
    second.use("^Tamarok Arbeitsplatz – Josef Bauer$");
    second.press({"ctrl+f", "h", "o", "l", "z", "l", "i", "s", "Return"});
    const auto holds = [this] {
        return Comm_Get{}.Get_FieldValueN(place->session(), "COUNT(*)", "LOCK", "LISTE = 'L22-000001'") == 1;
    };
    // The list fills within a moment; the menu of its first row ends with the measuring.
    for (int attempt = 0; attempt < 20 && !holds(); ++attempt) {
        second.press({"Menu", "Up", "Return"});
        (void)QTest::qWaitFor(holds, 1000);
    }
    ASSERT_TRUE(holds());

    const MessageReader told;
    window->measure("L22-000001");
    EXPECT_TRUE(told.text.contains("BAUER")) << told.text.toStdString();
    EXPECT_EQ(dynamic_cast<MeasureWindow*>(page()), nullptr);

    second.program.kill();
    ASSERT_TRUE(second.program.waitForFinished());
    window->measure("L22-000001");
    EXPECT_NE(dynamic_cast<MeasureWindow*>(page()), nullptr) << "the lock went with its holder";
}

} // namespace
} // namespace tamarok::workbench

int main(int argc, char** argv)
{
    return tamarok::qt::acting::runOnDisplay(argc, argv);
}
