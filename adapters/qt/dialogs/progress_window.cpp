#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QWindow>
#include <algorithm>

#include "dialogs/design_texts.h"
#include "dialogs/dialog_shell.h"
#include "dialogs/windows.h"
#include "owned.h"
#include "tamarok_qt/twips.h"

namespace tamarok::qt {

namespace {

constexpr dialogs::Size windowSize{6110, 1450};
constexpr int steps = 10000;  ///< of the bar, which counts in whole numbers
constexpr int patience = 500; ///< milliseconds that the system has to show the window

/// Draws itself when a value is written, and handles no events while the caller works.
class ProgressDialog final : public Shelled<dialogs::ProgressWindow> {
public:
    explicit ProgressDialog(const std::shared_ptr<Desk>& desk) : Shelled{"F_Info", desk}
    {
        shell().setWindowTitle(designText(DesignText::Info));
        shell().outerSize(windowSize);
        label_ = &makeOwned<QLabel>(&shell().content());
        label_->setTextFormat(Qt::PlainText);
        shell().addControl("LbInfo1", *label_);
        place("LbInfo1", {0, 0, 6000, 450});
        bar_ = &makeOwned<QProgressBar>(&shell().content());
        bar_->setRange(0, steps);
        bar_->setValue(0);
        shell().addControl("ProgressBar1", *bar_);
        place("ProgressBar1", {0, 570, 6000, 360});
    }

    /// Waits until the system has shown the window, since only then it can be drawn. The user's input waits meanwhile.
    void show() override
    {
        shell().showBeside();
        QElapsedTimer waited;
        waited.start();
        const auto isExposed = [this] {
            return shell().windowHandle() != nullptr && shell().windowHandle()->isExposed();
        };
        while (!isExposed() && waited.elapsed() < patience)
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers,
                                            10);
        repaint();
    }
    void maximum(float maximum) override
    {
        maximum_ = maximum;
        showValue();
    }
    void value(float value) override
    {
        value_ = value;
        showValue();
    }
    void repaint() override { shell().repaint(); }

private:
    void showValue()
    {
        const float share = maximum_ > 0 ? std::clamp(value_ / maximum_, 0.0F, 1.0F) : 0;
        bar_->setValue(static_cast<int>(share * static_cast<float>(steps)));
    }

    QLabel* label_ = nullptr;
    QProgressBar* bar_ = nullptr;
    float maximum_ = 100;
    float value_ = 0;
};

} // namespace

std::unique_ptr<dialogs::ProgressWindow> makeProgressWindow(const std::shared_ptr<Desk>& desk)
{
    return std::make_unique<ProgressDialog>(desk);
}

} // namespace tamarok::qt
