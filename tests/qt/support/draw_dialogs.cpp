#include <QApplication>
#include <QPalette>
#include <QStyleFactory>
#include <cstdlib>
#include <iostream>

#include "qt/support/sample.h"
#include "qt/support/user.h"

#include "tamarok/comm_forms.h"
#include "tamarok/grid_help.h"

// Draws each dialog into a file: draw_dialogs FOLDER LANGUAGE light|dark. The pictures of docs/images are made by it.

namespace {

using namespace tamarok;
using namespace tamarok::qt;

QPalette darkPalette()
{
    QPalette palette;
    const QColor window{45, 45, 48};
    const QColor base{30, 30, 30};
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ButtonText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, Qt::gray);
    palette.setColor(QPalette::Highlight, QColor{42, 130, 218});
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor{127, 127, 127});
    return palette;
}

/// Returns the step that draws the window into a file and closes it.
acting::User::Step draw(const QString& file)
{
    return [file](QDialog& dialog) {
        if (!dialog.grab().save(file)) std::cerr << "cannot write " << file.toStdString() << '\n';
    };
}

void drawAll(const QString& folder, const QString& suffix, acting::Sample& sample)
{
    const auto file = [&](const char* name) { return folder + "/" + name + suffix + ".png"; };
    const std::string projects = "SELECT NUMMER,LONG,SHORT FROM BB_T_PROJEKT_PLANUNG ORDER BY NUMMER";
    {
        acting::User user{acting::typeKeys("1"), draw(file("dialog-lookup")), acting::closeWindow()};
        Grid_Help{}.GridHelp(sample.session, projects, "Projekte", "", "000");
    }
    {
        acting::User user{acting::click("cmdNew"), draw(file("dialog-master-data")), acting::click("cmdSave"),
                          acting::closeWindow()};
        Grid_Help{}.GridHelp(sample.session, projects, "Projekte", "", "001");
    }
    {
        acting::User user{draw(file("dialog-date")), acting::closeWindow()};
        Grid_Help{}.GridHelp(sample.session, "DATUM", "Datum", "17.05.2024", "");
    }
    {
        acting::User user{draw(file("dialog-tree")), acting::closeWindow()};
        Grid_Help{}.TreeviewHelp(sample.session, "EBENE1", "Budget", "|1|1|1|1|1");
    }
    {
        acting::User user{draw(file("dialog-question")), acting::closeWindow()};
        Comm_Forms{}.MessageBox_All(sample.session, "Datensatz 4711 ist gesperrt. Trotzdem speichern?", 268, 91, 94,
                                    268, 610, 610);
    }
    {
        acting::User user{draw(file("dialog-question-one")), acting::closeWindow()};
        Comm_Forms{}.MessageBox_All(sample.session, "Eins\nZwei\nDrei", 0, 0, 0, 0, 0, 610);
    }
    Comm_Forms progress;
    progress.Info_Init(200, {});
    progress.Info_ProgressLabel("Lose werden gerechnet: 84 von 200");
    progress.Info_ProgressValue(84);
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (window->objectName() == "F_Info") window->grab().save(file("dialog-progress"));
    progress.Info_Release({});
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) return 2;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application{argc, argv};
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    const QString language = argv[2];
    const bool isDark = QString{argv[3]} == "dark";
    if (isDark) QApplication::setPalette(darkPalette());
    QLocale::setDefault(language == "GERMAN"   ? QLocale{QLocale::German, QLocale::Austria}
                        : language == "FRENCH" ? QLocale{QLocale::French, QLocale::France}
                                               : QLocale{QLocale::English, QLocale::UnitedKingdom});
    acting::Sample sample{language.toStdString()};
    QWidget caller;
    caller.resize(900, 700);
    caller.show();
    drawAll(argv[1], "", sample);
    return 0;
}
