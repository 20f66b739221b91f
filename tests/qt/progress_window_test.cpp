#include "qt/support/sample.h"
#include "qt/support/user.h"

#include "tamarok/comm_forms.h"

namespace tamarok::qt {
namespace {

using namespace acting;

QWidget* progressWindow()
{
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (window->objectName() == "F_Info") return window;
    return nullptr;
}

/// Counts the drawings of a widget.
class Drawings final : public QObject {
public:
    explicit Drawings(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) ++count;
        return false;
    }
    int count = 0;
};

TEST(ProgressWindowTest, DrawsItselfAtEachWrite)
{
    Sample sample;
    Comm_Forms forms;
    forms.Info_Init(200, {});
    QWidget* const window = progressWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    auto& bar = *window->findChild<QProgressBar*>("ProgressBar1");
    Drawings drawings{bar};
    for (int value = 1; value <= 20; ++value)
        forms.Info_ProgressValue(value);
    EXPECT_GE(drawings.count, 20) << "without a return to the event loop";
    EXPECT_EQ(bar.value(), bar.maximum() / 10);
    forms.Info_ProgressValue(200);
    EXPECT_EQ(bar.value(), bar.maximum());
    forms.Info_ProgressLabel("Zeile 200 & <b>mehr</b>");
    EXPECT_EQ(window->findChild<QLabel*>("LbInfo1")->text(), "Zeile 200 & <b>mehr</b>");
    forms.Info_Release({});
    EXPECT_EQ(progressWindow(), nullptr);
}

TEST(ProgressWindowTest, HandlesNoInputMeanwhile)
{
    Sample sample;
    QWidget caller;
    QLineEdit box{&caller};
    caller.show();
    box.setFocus();
    QCoreApplication::processEvents();
    // A key of the user waits in the queue of the program.
    QCoreApplication::postEvent(
        &box, std::make_unique<QKeyEvent>(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a").release());
    Comm_Forms forms;
    forms.Info_ProgressLabel("hidden"); // before it is shown
    forms.Info_ProgressValue(5);
    EXPECT_EQ(box.text(), "");
    forms.Info_Release({});
    QCoreApplication::processEvents();
    EXPECT_EQ(box.text(), "a") << "the key is not lost";
}

TEST(ProgressWindowTest, ClosedByTheUserItStaysWritable)
{
    Sample sample;
    Comm_Forms forms;
    forms.Info_Init(10, {});
    progressWindow()->close();
    forms.Info_ProgressValue(5);
    EXPECT_EQ(forms.Info_ProgressValue(), 5);
    forms.Info_Release({});
}

} // namespace
} // namespace tamarok::qt
