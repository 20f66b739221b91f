#pragma once

#include <cstdint>
#include <string_view>

#pragma GCC visibility push(default)

namespace tamarok::mComm {

/// Shows a message box of the thread's platform and waits for a button.
/// @param strPrompt    the text
/// @param lngButtons   flags of buttons and icon: 16 stop, 48 warning, 64 information
/// @param strTitle     title; an empty one is "Tamarok"
/// @param strHelpFile  help file of the box; ignored by platforms without a help key
/// @param lngContext   number of the help topic; ignored by platforms without a help key
/// @return number of the button pressed (1 for OK)
/// Error 91 if the platform has no message box.
std::int16_t ShowMessage(std::string_view strPrompt, std::int32_t lngButtons, std::string_view strTitle = {},
                         std::string_view strHelpFile = {}, std::int32_t lngContext = 0);

} // namespace tamarok::mComm

#pragma GCC visibility pop
