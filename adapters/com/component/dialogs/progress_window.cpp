#include <algorithm>

#include "design_texts.h"
#include "native_windows.h"
#include "window_shell.h"

namespace tamarok::com {

namespace {

constexpr dialogs::Size windowSize{6110, 1450};
constexpr int steps = 10000; ///< of the bar, which counts in whole numbers

/// Draws itself when a value is written, and handles no events while the caller works.
class ProgressDialog final : public Shelled<dialogs::ProgressWindow> {
public:
    ProgressDialog() : Shelled{"F_Info"}
    {
        shell().caption(designText(DesignText::Info));
        shell().outerSize(windowSize);
        shell().addControl("LbInfo1", {L"STATIC", SS_LEFT | SS_NOPREFIX});
        place("LbInfo1", {0, 0, 6000, 450});
        bar_ = shell().addControl("ProgressBar1", {L"msctls_progress32", 0});
        SendMessageW(bar_, PBM_SETRANGE32, 0, steps);
        place("ProgressBar1", {0, 570, 6000, 360});
    }

    void show() override { shell().showBeside(); }
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
    void repaint() override { shell().drawNow(); }

private:
    void showValue()
    {
        const float share = maximum_ > 0 ? std::clamp(value_ / maximum_, 0.0F, 1.0F) : 0;
        SendMessageW(bar_, PBM_SETPOS, static_cast<WPARAM>(share * static_cast<float>(steps)), 0);
    }

    HWND bar_ = nullptr;
    float maximum_ = 100;
    float value_ = 0;
};

} // namespace

std::unique_ptr<dialogs::ProgressWindow> makeProgressWindow()
{
    return std::make_unique<ProgressDialog>();
}

} // namespace tamarok::com
