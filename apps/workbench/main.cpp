#include <CLI/CLI.hpp>
#include <QApplication>
#include <QMessageBox>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>

#include "connections.h"
#include "host_platform.h"
#include "tamarok_qt/platform.h"
#include "tamarok_qt/texts.h"
#include "windows/login_dialog.h"
#include "windows/main_window.h"
#include "windows/sample_database.h"
#include "windows/theme.h"
#include "work/workplace.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace {

using namespace tamarok;

/// Opens the database, lets the user log in, and runs until the main window closes.
int run(const cli::DatabaseChoice& database, workbench::Yard& yard)
{
    workbench::Workplace place{database, yard};
    // A look-up opens a connection of its own by the text that the session shows, which has no password.
    cli::ServerTexts servers;
    if (database.odbc) servers.remember(*place.session().db_ADO, *database.odbc);
    Platform::current().makeConnection = [servers](std::string_view text) { return servers.open(text); };
    if (!workbench::logIn(place)) return 0;
    workbench::MainWindow window{place};
    window.show();
    return QApplication::exec();
}

} // namespace

int main(int count, char** arguments)
{
    QApplication application{count, arguments};
    QApplication::setOrganizationName("Tamarok");
    QApplication::setApplicationName("tamarok-workbench");
    workbench::useLanguage(workbench::Language::German);
    workbench::useColours(application, workbench::keptColours());

    CLI::App options{"The workbench: lists, measured timber and records of a database, in windows."};
    cli::DatabaseChoice database;
    database.file.clear();
    std::string odbc;
    std::string locale;
    auto* const file = options.add_option("--db", database.file, "database file; a sample database by default");
    options.add_option("--odbc", odbc, "connection text of a server, instead of a file")->excludes(file);
    options.add_option("--locale", locale, "regional settings such as de-AT or en-GB; the machine's by default");
    CLI11_PARSE(options, count, arguments);

    try {
        Platform platform = cli::commandPlatform(locale);
        qt::equip(platform);
        const PlatformScope scope{platform};
        if (!odbc.empty()) database.odbc = odbc;
        if (!database.odbc && database.file.empty()) {
            const auto sample = workbench::sampleDatabase();
            if (!sample) return 0;
            database.file = *sample;
        }
        workbench::Yard yard;
        const int status = run(database, yard);
        // A statement that a server goes on with does not keep the program: the connection ends with the process.
        if (!yard.isEmptyWithin(std::chrono::seconds{2})) std::_Exit(status);
        return status;
    } catch (const Error& error) {
        std::cerr << "tamarok-workbench: " << error.description << '\n';
        QMessageBox::critical(nullptr, workbench::textOf(workbench::Text::Program), qt::toQt(error.description));
        return 1;
    }
}
