// Writes the program's icon as pictures of the sizes that desktops look for: hicolor/NxN/apps/tamarok-workbench.png.
#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QPixmap>
#include <cstdlib>
#include <iostream>

#include "windows/theme.h"

int main(int count, char** arguments)
{
    const QApplication application{count, arguments};
    if (count != 2) {
        std::cerr << "usage: write_icons FOLDER\n";
        return 2;
    }
    const QIcon icon = tamarok::workbench::programIcon();
    for (const QSize& size : icon.availableSizes()) {
        const QString folder =
            QStringLiteral("%1/hicolor/%2x%2/apps").arg(QString::fromLocal8Bit(arguments[1])).arg(size.width());
        const QString file = folder + QStringLiteral("/tamarok-workbench.png");
        if (QDir{}.mkpath(folder) && icon.pixmap(size).save(file)) continue;
        std::cerr << "write_icons: cannot write " << file.toStdString() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
