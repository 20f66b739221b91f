#include "windows_platform.h"

#include "machine_regional.h"
#include "native_windows.h"
#include "tamarok_loc/loc_service.h"
#include "wide_text.h"
#include "windows_files.h"
#include "windows_headers.h"

namespace tamarok::com {

namespace {

class SystemMessageBox final : public MessageBox {
public:
    std::int16_t show(std::string_view text, std::int32_t flags, std::string_view title) override
    {
        const int pressed = MessageBoxW(GetActiveWindow(), toWide(text).c_str(), toWide(title).c_str(),
                                        static_cast<UINT>(flags) | MB_TASKMODAL | MB_SETFOREGROUND);
        return static_cast<std::int16_t>(pressed);
    }
};

class SystemKeyboard final : public Keyboard {
public:
    void pressEnter() override
    {
        keybd_event(VK_RETURN, 0, 0, 0);
        keybd_event(VK_RETURN, 0, KEYEVENTF_KEYUP, 0);
    }
};

} // namespace

void equipThread()
{
    Platform& platform = Platform::current();
    // The keyboard tells whether the thread was here before.
    if (dynamic_cast<SystemKeyboard*>(platform.keyboard.get()) != nullptr) return;
    platform.regional = machineRegional();
    platform.files = makeWindowsFiles();
    platform.messageBox = std::make_shared<SystemMessageBox>();
    platform.makeLocService = [] { return loc::makeLocService(); };
    platform.dialogWindows = makeNativeWindows();
    platform.keyboard = std::make_shared<SystemKeyboard>();
}

} // namespace tamarok::com
