#include "script_player.h"

#include "tamarok/controls.h"

namespace tamarok::dialogs {

namespace {

/// The bar of the progress window. The presenter keeps the value inside the range.
class ProgressBar final : public WithMembers<ProgressBar, controls::Control> {
public:
    static std::span<const Member<ProgressBar>> members() noexcept
    {
        static constexpr Member<ProgressBar> all[]{
            {.name = "Value",
             .get = [](const ProgressBar& bar, std::span<const Variant>) -> Variant { return double{bar.Value}; }},
            {.name = "Max",
             .get = [](const ProgressBar& bar, std::span<const Variant>) -> Variant { return double{bar.Max}; }},
        };
        return all;
    }
    std::string_view typeName() const override { return "ProgressBar"; }

    float Value = 0;
    float Max = 100;
};

/// It asks nothing, so that it takes no script.
class HeadlessProgress final : public Headless<ProgressWindow> {
public:
    HeadlessProgress() : Headless{"F_Info"}
    {
        controls().Caption = "Info";
        controls().resize({6000, 1500});
        controls().add(std::make_shared<controls::Label>(), "LbInfo1", {150, 150, 5700, 240});
        bar_ = controls().add(std::make_shared<ProgressBar>(), "ProgressBar1", {150, 600, 5700, 300});
        controls().Visible = false;
    }

    void show() override { controls().Visible = true; }
    void close() override { controls().Visible = false; }
    void maximum(float maximum) override { bar_->Max = maximum; }
    void value(float value) override { bar_->Value = value; }
    void repaint() override {} // without pixels there is nothing to draw

private:
    std::shared_ptr<ProgressBar> bar_;
};

} // namespace

std::unique_ptr<ProgressWindow> ScriptedWindows::makeProgress()
{
    return std::make_unique<HeadlessProgress>();
}

} // namespace tamarok::dialogs
