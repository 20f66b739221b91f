#include <QAction>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <iostream>

#include "host_platform.h"
#include "qt/support/user.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_qt/platform.h"
#include "windows/list_window.h"
#include "windows/login_dialog.h"
#include "windows/main_window.h"
#include "windows/measure_window.h"
#include "windows/options_window.h"
#include "windows/theme.h"

// Draws each window of the workbench into a file: draw_windows FOLDER GERMAN|ENGLISH|FRENCH light|dark. QT_SCALE_FACTOR
// sets the scale. The pictures of docs/images are made by it.

namespace {

using namespace tamarok;
using namespace tamarok::workbench;
using qt::acting::User;

constexpr int patience = 30000; ///< milliseconds until a list must be there

/// Draws windows into the files of a folder.
class Artist {
public:
    explicit Artist(QString folder) : folder_{std::move(folder)} {}

    void draw(QWidget& window, const char* name) const
    {
        const QString file = folder_ + "/" + name + ".png";
        QApplication::processEvents();
        if (!window.grab().save(file)) std::cerr << "cannot write " << file.toStdString() << '\n';
    }
    /// Returns the step of a user that draws a dialog and closes it.
    User::Step drawDialog(const char* name) const
    {
        return [this, name](QDialog& dialog) {
            QTest::qWait(50);
            draw(dialog, name);
            dialog.close();
        };
    }

private:
    QString folder_;
};

void makeDatabase(const std::string& file)
{
    embedded::NewDatabase made{file, embedded::NewDatabase::Existing::Refuse};
    database::createReferenceDatabase(*made.connection(), {.logs = 20000});
    made.complete();
}

void waitFor(ListWindow& list)
{
    (void)QTest::qWaitFor([&] { return !list.isLoading(); }, patience);
    (void)QTest::qWaitFor([&] { return !list.table().model()->index(0, 0).data().toString().isEmpty(); }, patience);
    QTest::qWait(300); // the chart's bars are read as well
}

void trigger(ListWindow& list, const QKeySequence& key)
{
    for (QAction* const action : list.findChild<QToolBar*>()->actions())
        if (action->shortcut() == key) action->trigger();
}

void drawLists(MainWindow& window, const Artist& artist)
{
    ListWindow& logs = window.openList("LOG");
    waitFor(logs);
    artist.draw(window, "workbench-logs");
    trigger(logs, QKeySequence{Qt::CTRL | Qt::Key_B});
    waitFor(logs);
    artist.draw(window, "workbench-list");
    {
        const User user{artist.drawDialog("workbench-columns")};
        trigger(logs, QKeySequence{Qt::CTRL | Qt::Key_K});
    }
    {
        const User user{artist.drawDialog("workbench-statement")};
        trigger(logs, QKeySequence{Qt::Key_F8});
    }
    ListSetup groups;
    groups.columns = {22, 32, 35, 36, 38};
    groups.filters = {{26, Variant{"BL"}}, {29, Variant{"B"}}};
    groups.order = {22};
    groups.grouped = true;
    waitFor(window.openList(groups));
    artist.draw(window, "workbench-groups");
    waitFor(window.openList("BBHAB"));
    artist.draw(window, "workbench-bbhab");
}

void drawMeasuring(MainWindow& window, const Artist& artist)
{
    // Without a window manager nobody activates the window again after a dialog, and in a window that is not active no
    // field tells that it is left.
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) std::cerr << "the window is not active\n";
    window.measure("L22-000001");
    auto& measuring = dynamic_cast<MeasureWindow&>(*window.findChild<QTabWidget*>()->currentWidget());
    const auto type = [&](const char* name, const char* keys) {
        auto* const box = measuring.findChild<QLineEdit*>(name);
        box->setFocus();
        box->clear();
        QTest::keyClicks(box, keys);
        QTest::keyClick(box, Qt::Key_Tab);
        QTest::qWait(20);
    };
    type("species", "FI");
    type("assortment", "BL");
    type("quality", "B");
    type("barkKey", "OR");
    type("diameter", "32");
    type("length", "4");
    QTest::qWait(500);
    artist.draw(window, "workbench-measure");
    const User user{artist.drawDialog("workbench-lookup")};
    QTest::keyClick(measuring.findChild<QLineEdit*>("species"), Qt::Key_F4);
}

void drawAll(Workplace& place, Language language, const Artist& artist)
{
    {
        const User user{artist.drawDialog("workbench-login")};
        logIn(place);
    }
    useLanguage(language);
    place.language(nameOf(language));
    for (const Account& account : place.accounts())
        if (account.id == 1) place.logIn(account);
    MainWindow window{place};
    window.show();
    artist.draw(window, "workbench-welcome");
    drawLists(window, artist);
    drawMeasuring(window, artist);
    window.openOptions();
    artist.draw(window, "workbench-options");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) return 2;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application{argc, argv};
    QApplication::setOrganizationName("pictures");
    QApplication::setApplicationName("workbench");
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    const Language language = languageOf(argv[2]);
    useLanguage(language);
    QSettings{}.setValue("language", static_cast<int>(language));
    useColours(application, QString{argv[3]} == "dark" ? Colours::Dark : Colours::Light);
    const QString pictures = QDir{argv[1]}.absolutePath();
    QDir::setCurrent(folder.path()); // the windows name the file as it was given
    const std::string file = "timber.db";
    makeDatabase(file);

    Platform platform = cli::commandPlatform("de-AT");
    qt::equip(platform);
    const PlatformScope scope{platform};
    Yard yard;
    cli::DatabaseChoice database;
    database.file = file;
    Workplace place{database, yard};
    drawAll(place, language, Artist{pictures});
    return 0;
}
