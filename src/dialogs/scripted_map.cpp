#include "script_player.h"

namespace tamarok::dialogs {

namespace {

/// A browser that shows no page and only knows its address.
class Browser final : public WithMembers<Browser, controls::Control> {
public:
    static std::span<const Member<Browser>> members() noexcept
    {
        static constexpr Member<Browser> all[]{
            {.name = "LocationURL",
             .get = [](const Browser& browser, std::span<const Variant>) -> Variant { return browser.LocationURL; }},
        };
        return all;
    }
    std::string_view typeName() const override { return "WebBrowser"; }

    std::string LocationURL;
};

/// Steps of its own: `Navigate`. The first page is never reported as finished: a script reports pages.
class ScriptedMap final : public Scripted<MapWindow> {
public:
    explicit ScriptedMap(std::shared_ptr<DialogScripts> scripts) : Scripted{"F_WebBrowser", std::move(scripts)}
    {
        controls().resize({12000, 9000});
        browser_ = controls().add(std::make_shared<Browser>(), "WebBrowser1", {});
        controls().addButton("btnClose", {0, 0, buttonWidth, 375});
        controls().text("btnClose", "Close$");
    }

    void navigate(std::string_view address) override { browser_->LocationURL = address; }
    std::string address() const override { return browser_->LocationURL; }

private:
    bool takeStep(const DialogStep& step) override
    {
        if (step.kind != StepKind::Navigate) return false;
        browser_->LocationURL = step.text;
        events().pageFinished();
        return true;
    }

    std::shared_ptr<Browser> browser_;
};

} // namespace

std::unique_ptr<MapWindow> ScriptedWindows::makeMap()
{
    return std::make_unique<ScriptedMap>(scripts_);
}

} // namespace tamarok::dialogs
