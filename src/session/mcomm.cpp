#include "tamarok/mcomm.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

// The message box of the thread's platform. Help file and topic have no use without a help key.

namespace tamarok::mComm {

std::int16_t ShowMessage(std::string_view strPrompt, std::int32_t lngButtons, std::string_view strTitle,
                         std::string_view /*strHelpFile*/, std::int32_t /*lngContext*/)
{
    // Without a message box nobody could answer a question, so the call fails.
    const auto& box = Platform::current().messageBox;
    if (!box) {
        throw Error{errors::objectNotSet, "The platform has no message box for \"" + std::string{strPrompt} + "\".",
                    "mComm.ShowMessage"};
    }
    return box->show(strPrompt, lngButtons, strTitle.empty() ? "Tamarok" : strTitle);
}

} // namespace tamarok::mComm
