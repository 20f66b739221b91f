#pragma once

#include <memory>
#include <utility>

#include "desk.h"
#include "tamarok_qt/platform.h"

#include "tamarok/dialog_windows.h"

namespace tamarok::qt {

std::unique_ptr<dialogs::QuestionWindow> makeQuestionWindow(const std::shared_ptr<Desk>& desk);
std::unique_ptr<dialogs::ProgressWindow> makeProgressWindow(const std::shared_ptr<Desk>& desk);
std::unique_ptr<dialogs::TreeWindow> makeTreeWindow(const std::shared_ptr<Desk>& desk);
std::unique_ptr<dialogs::LookupWindow> makeLookupWindow(const std::shared_ptr<Desk>& desk);

/// Makes the windows of a Qt program.
class Windows final : public dialogs::DialogWindows {
public:
    Windows(std::shared_ptr<Desk> desk, MapMaker makesMap) : desk_{std::move(desk)}, makeMap_{std::move(makesMap)} {}

    std::unique_ptr<dialogs::QuestionWindow> makeQuestion() override { return makeQuestionWindow(checkedDesk()); }
    std::unique_ptr<dialogs::ProgressWindow> makeProgress() override { return makeProgressWindow(checkedDesk()); }
    std::unique_ptr<dialogs::TreeWindow> makeTree() override { return makeTreeWindow(checkedDesk()); }
    std::unique_ptr<dialogs::LookupWindow> makeLookup() override { return makeLookupWindow(checkedDesk()); }
    std::unique_ptr<dialogs::MapWindow> makeMap() override;

private:
    /// Error 5 where no window can be shown.
    const std::shared_ptr<Desk>& checkedDesk() const
    {
        requireApplication();
        return desk_;
    }
    std::shared_ptr<Desk> desk_;
    MapMaker makeMap_;
};

} // namespace tamarok::qt
