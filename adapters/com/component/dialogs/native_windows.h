#pragma once

#include <memory>

#include "tamarok/dialog_windows.h"

namespace tamarok::com {

std::unique_ptr<dialogs::QuestionWindow> makeQuestionWindow();
std::unique_ptr<dialogs::ProgressWindow> makeProgressWindow();
std::unique_ptr<dialogs::TreeWindow> makeTreeWindow();
std::unique_ptr<dialogs::LookupWindow> makeLookupWindow();

/// Makes the native windows of the dialogs. Error 445 for the map, which has none.
std::shared_ptr<dialogs::DialogWindows> makeNativeWindows();

} // namespace tamarok::com
