#include "native_windows.h"

#include "tamarok/error.h"

namespace tamarok::com {

namespace {

constexpr std::int32_t actionNotSupported = 445;

class NativeWindows final : public dialogs::DialogWindows {
public:
    std::unique_ptr<dialogs::QuestionWindow> makeQuestion() override { return makeQuestionWindow(); }
    std::unique_ptr<dialogs::ProgressWindow> makeProgress() override { return makeProgressWindow(); }
    std::unique_ptr<dialogs::TreeWindow> makeTree() override { return makeTreeWindow(); }
    std::unique_ptr<dialogs::LookupWindow> makeLookup() override { return makeLookupWindow(); }
    std::unique_ptr<dialogs::MapWindow> makeMap() override
    {
        throw Error{actionNotSupported, "Object doesn't support this action: the map is not available here."};
    }
};

} // namespace

std::shared_ptr<dialogs::DialogWindows> makeNativeWindows()
{
    return std::make_shared<NativeWindows>();
}

} // namespace tamarok::com
