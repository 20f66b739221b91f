// A Qt program that knows the library by its installed package alone: qt_consumer DATABASE [--act]. It makes the sample
// database where there is none, and opens a form on it. With --act it presses the keys of a user by itself, tells what
// the form then shows, and ends.
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QTimer>
#include <filesystem>
#include <iostream>
#include <tamarok/backend_registry.h>
#include <tamarok/platform.h>
#include <tamarok_database/reference_database.h>
#include <tamarok_embedded/backend.h>
#include <tamarok_embedded/new_database.h>
#include <tamarok_loc/loc_service.h>
#include <tamarok_qt/platform.h>
#include <tamarok_qt/texts.h>

#include "dog_form.h"

using namespace tamarok;

namespace {

void press(QWidget* widget, int key, const QString& text)
{
    QKeyEvent event{QEvent::KeyPress, key, Qt::NoModifier, text};
    if (widget != nullptr) QCoreApplication::sendEvent(widget, &event);
}

/// Looks a code up, types an amount, and tells what the form shows.
void act(DogForm& form)
{
    auto& code = *form.findChild<QLineEdit*>("txtProject");
    auto& amount = *form.findChild<QLineEdit*>("txtAmount");
    QTimer::singleShot(200, &form, [] {
        QWidget* const lookup = QApplication::activeModalWidget();
        QWidget* const grid = lookup != nullptr ? lookup->findChild<QWidget*>("DataGrid1") : nullptr;
        press(grid, Qt::Key_Down, {});
        press(grid, Qt::Key_Return, "\r");
    });
    press(&code, Qt::Key_F4, {});
    for (const char character : {'x', '7', '.', '5'})
        press(&amount, 0, QString{QLatin1Char{character}});
    QCoreApplication::processEvents();
    std::cout << form.findChild<QTreeView*>("LstDogs")->model()->rowCount() << " dogs, project "
              << qt::fromQt(code.text()) << ' ' << qt::fromQt(form.findChild<QLabel*>("lblProject")->text())
              << ", amount " << qt::fromQt(amount.text()) << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application{argc, argv};
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) return 2;
    const std::filesystem::path file{qt::fromQt(arguments[1])};
    if (!std::filesystem::exists(file)) {
        embedded::NewDatabase building{file};
        database::createReferenceDatabase(*building.connection(), {.logs = 0, .records = 20});
        building.complete();
    }

    ado::BackendRegistry backends;
    embedded::registerBackend(backends);
    Platform platform = qt::platform();
    platform.regional = Regional::named("de-AT");
    platform.makeLocService = [] { return loc::makeLocService(); };
    platform.makeConnection = [&](std::string_view text) { return backends.open(text); };
    const PlatformScope scope{platform};

    TmkVar session;
    session.strConnection = "Provider=Tamarok.Embedded;Data Source=" + file.string();
    session.db_ADO = backends.open(session.strConnection);
    session.strLanguage = "GERMAN";
    session.ID_User = 1;
    session.ID_Access_Levels = 5;

    DogForm form{session};
    form.resize(640, 480);
    form.show();
    if (!arguments.contains("--act")) return QApplication::exec();
    QTimer::singleShot(0, &form, [&] {
        act(form);
        QApplication::quit();
    });
    return QApplication::exec();
}
