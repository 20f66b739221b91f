#include <thread>

#include "qt/support/sample.h"
#include "qt/support/user.h"
#include "tamarok_qt/platform.h"

#include "tamarok/comm_forms.h"
#include "tamarok/error.h"
#include "tamarok/grid_help.h"

namespace tamarok::qt {
namespace {

using namespace acting;

User::Step pressButton(QMessageBox::StandardButton which)
{
    return [which](QDialog& dialog) {
        QAbstractButton* const button = dynamic_cast<QMessageBox&>(dialog).button(which);
        ASSERT_NE(button, nullptr);
        QTest::mouseClick(button, Qt::LeftButton);
    };
}

TEST(MessageBoxTest, ButtonsIconsAndAnswers)
{
    struct Row {
        std::int32_t flags;
        QMessageBox::StandardButton pressed;
        std::int16_t answer;
        QMessageBox::Icon icon;
    };
    const Row rows[]{
        {0, QMessageBox::Ok, 1, QMessageBox::NoIcon},
        {1 + 16, QMessageBox::Cancel, 2, QMessageBox::Critical},
        {2 + 32, QMessageBox::Abort, 3, QMessageBox::Question},
        {2 + 48, QMessageBox::Retry, 4, QMessageBox::Warning},
        {2 + 64, QMessageBox::Ignore, 5, QMessageBox::Information},
        {3, QMessageBox::Yes, 6, QMessageBox::NoIcon},
        {4 + 256, QMessageBox::No, 7, QMessageBox::NoIcon},
        {5, QMessageBox::Retry, 4, QMessageBox::NoIcon},
    };
    const Platform services = platform();
    for (const Row& row : rows) {
        User user{[&](QDialog& dialog) {
                      const auto& box = dynamic_cast<QMessageBox&>(dialog);
                      EXPECT_EQ(box.icon(), row.icon);
                      EXPECT_EQ(box.text(), "Text <b> & mehr");
                      EXPECT_EQ(box.textFormat(), Qt::PlainText);
                  },
                  pressButton(row.pressed)};
        EXPECT_EQ(services.messageBox->show("Text <b> & mehr", row.flags, "Titel"), row.answer) << row.flags;
    }
}

TEST(MessageBoxTest, EscapeCancelsWhereItCan)
{
    const Platform services = platform();
    User only{pressKey(Qt::Key_Escape)};
    EXPECT_EQ(services.messageBox->show("x", 0, ""), 1);
    User cancels{pressKey(Qt::Key_Escape)};
    EXPECT_EQ(services.messageBox->show("x", 3, ""), 2);
    User preset{pressKey(Qt::Key_Return)};
    EXPECT_EQ(services.messageBox->show("x", 4 + 256, ""), 7) << "the second button is the default one";
}

TEST(MessageBoxTest, TextsFollowTheLanguage)
{
    const QLocale former;
    const Platform services = platform();
    struct Row {
        QLocale::Language language;
        const char* cancel;
    };
    for (const Row& row :
         {Row{QLocale::German, "Abbrechen"}, Row{QLocale::French, "Annuler"}, Row{QLocale::Dutch, "Cancel"}}) {
        QLocale::setDefault(QLocale{row.language});
        User user{[&](QDialog& dialog) {
                      EXPECT_EQ(dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Cancel)->text(), row.cancel);
                  },
                  pressButton(QMessageBox::Ok)};
        services.messageBox->show("x", 1, "");
    }
    QLocale::setDefault(former);
}

TEST(KeyboardTest, EnterReachesTheCallersWindowAfterTheDialog)
{
    Sample sample;
    QWidget caller;
    QLineEdit field{&caller};
    caller.show();
    caller.activateWindow();
    field.setFocus();
    QCoreApplication::processEvents();
    QString textAtEnter = "none";
    int presses = 0;
    QObject::connect(&field, &QLineEdit::returnPressed, [&] {
        textAtEnter = field.text();
        ++presses;
    });
    User user{click("cmdOk")};
    field.setText(toQt(Grid_Help{}.GridHelp(
        sample.session, "SELECT NUMMER,LONG FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER = '1002'", "", "", "")));
    EXPECT_EQ(presses, 0) << "the caller has the result first";
    EXPECT_TRUE(QTest::qWaitFor([&] { return presses == 1; }, 30'000));
    EXPECT_EQ(textAtEnter, "1002");

    User silent{click("cmdOk")};
    Grid_Help{}.GridHelp(sample.session, "SELECT NUMMER FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER = '1002'", "", "",
                         "0001");
    QTest::qWait(20);
    EXPECT_EQ(presses, 1) << "the fourth position of the configuration sends none";
}

TEST(MessageBoxTest, TheCallersWindowMayGoFirst)
{
    const Platform services = platform();
    auto caller = std::make_unique<QWidget>();
    caller->show();
    caller->activateWindow();
    QCoreApplication::processEvents();
    User user{[&](QDialog&) { caller.reset(); }, pressButton(QMessageBox::Ok)};
    EXPECT_EQ(services.messageBox->show("x", 1, ""), 1);
}

TEST(WindowsTest, OnlyTheThreadOfTheApplicationShowsThem)
{
    const Platform services = platform();
    std::vector<std::int32_t> numbers;
    std::thread other{[&] {
        const std::function<void()> ways[]{[&] { services.messageBox->show("x", 0, ""); },
                                           [&] { services.dialogWindows->makeTree(); },
                                           [&] { services.dialogWindows->makeProgress(); }};
        for (const auto& way : ways) {
            try {
                way();
            } catch (const Error& error) {
                numbers.push_back(error.number);
            }
        }
    }};
    other.join();
    EXPECT_EQ(numbers, std::vector<std::int32_t>(3, errors::invalidArgument));
}

TEST(WindowsTest, WithoutTheMapItsDialogIsRefused)
{
    Sample sample;
    Platform::current().mapEndpoints = {"vendor.example", "https://maps.example"};
    StringArray point;
    point.values = {"1", "2"};
    try {
        Comm_Forms{}.WebBrowser_Run(sample.session, "https://maps.example", point);
        ADD_FAILURE() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number, errors::cannotCreateObject);
    }
}

} // namespace
} // namespace tamarok::qt
