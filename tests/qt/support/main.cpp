#include <QApplication>
#include <QLocale>
#include <QStyleFactory>
#include <gtest/gtest.h>

// The tests draw into memory unless QT_QPA_PLATFORM tells otherwise.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application{argc, argv};
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QLocale::setDefault(QLocale{QLocale::German, QLocale::Austria});
    return RUN_ALL_TESTS();
}
