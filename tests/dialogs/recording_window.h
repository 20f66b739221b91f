#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/dialog_windows.h"
#include "tamarok/form.h"

/// Doubles of dialog windows: they record the verbs, and a function acts for the user.
namespace tamarok::dialogs::test {

/// What all windows can do. @tparam Kind  such as TreeWindow
template <class Kind>
class RecordingVerbs : public Kind {
public:
    void caption(std::string_view text) override { log.push_back("caption " + std::string{text}); }
    Size size() const override { return present; }
    Size innerSize() const override { return {present.width - 100, present.height - 400}; }
    void resize(Size size) override { present = size; }
    void text(std::string_view control, std::string_view text) override { texts[std::string{control}] = text; }
    std::string text(std::string_view control) const override { return texts.at(std::string{control}); }
    void visible(std::string_view control, bool visible) override
    {
        if (!visible) hidden.insert(std::string{control});
    }
    void enabled(std::string_view control, bool enabled) override
    {
        log.push_back((enabled ? "enable " : "disable ") + std::string{control});
    }
    Box place(std::string_view control) const override
    {
        const auto found = boxes.find(std::string{control});
        return found == boxes.end() ? Box{} : found->second;
    }
    void place(std::string_view control, const Box& box) override { boxes[std::string{control}] = box; }
    void bringToFront(std::string_view control) override { log.push_back("front " + std::string{control}); }
    void focus(std::string_view control) override { log.push_back("focus " + std::string{control}); }
    Object& form() override { return *translated; }
    void close() override
    {
        log.push_back("close");
        closed = true;
    }

    std::vector<std::string> log;
    Size present{5000, 2000};
    std::map<std::string, Box> boxes;
    std::map<std::string, std::string> texts;
    std::set<std::string> hidden;
    std::shared_ptr<controls::Form> translated = std::make_shared<controls::Form>();
    bool closed = false;
};

/// A window that asks the user. A user that does not close it leaves it open: `closed` tells.
template <class Kind>
class Recording : public RecordingVerbs<Kind> {
public:
    void showModal(typename Kind::Events& events) override
    {
        this->log.emplace_back("show");
        events.resized();
        if (user) user(events);
    }

    std::function<void(typename Kind::Events&)> user;
};

} // namespace tamarok::dialogs::test
