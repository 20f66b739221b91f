#pragma once

#include <QApplication>
#include <QLocale>
#include <QProcess>
#include <QStyleFactory>
#include <QTest>
#include <cstdio>
#include <gtest/gtest.h>

#include "qt/support/x_display.h"

/// Stories on a display of the test's own, on which keys and clicks come from the system.
namespace tamarok::qt::acting {

/// Runs xdotool with these arguments, and lets the program handle what it does.
inline void act(const QStringList& arguments)
{
    QProcess tool;
    tool.start("xdotool", arguments);
    while (tool.state() != QProcess::NotRunning && !tool.waitForFinished(5))
        QCoreApplication::processEvents();
    EXPECT_EQ(tool.exitCode(), 0) << arguments.join(' ').toStdString() << tool.readAllStandardError().toStdString();
}

/// Runs all tests with a display. @return the status of the program; 77, which CTest takes for skipped, where a tool is
/// missing
inline int runOnDisplay(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (!isInstalled("Xvfb") || !isInstalled("xdotool")) {
        std::fputs("**** SKIPPED: the stories on a display; Xvfb or xdotool is missing ****\n", stderr);
        return 77;
    }
    const Display display;
    if (display.name.isEmpty()) {
        std::fputs("Xvfb did not start\n", stderr);
        return 1;
    }
    qputenv("DISPLAY", display.name);
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application{argc, argv};
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QLocale::setDefault(QLocale{QLocale::German, QLocale::Austria});
    return RUN_ALL_TESTS();
}

} // namespace tamarok::qt::acting
