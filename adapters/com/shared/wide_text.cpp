#include "wide_text.h"

#include <algorithm>

#include "tamarok/error.h"

namespace tamarok::com {

std::wstring_view view(BSTR text) noexcept
{
    return text == nullptr ? std::wstring_view{} : std::wstring_view{text, SysStringLen(text)};
}

BSTR makeBstr(std::string_view text)
{
    const auto count = static_cast<UINT>(windows::systemLength(text.size()));
    BSTR made = SysAllocStringLen(nullptr, count);
    if (made == nullptr) throw Error{errors::outOfMemory, "Out of memory: a text of the component interface."};
    const auto widened = [](char byte) { return static_cast<wchar_t>(static_cast<unsigned char>(byte)); };
    // A byte of ASCII stands for itself in both forms; see windows::narrow.
    if (std::ranges::all_of(
            text, [](wchar_t unit) { return unit < 0x80; }, widened)) {
        std::ranges::transform(text, made, widened);
        return made;
    }
    // UTF-16 never has more units than UTF-8 has bytes.
    const int written = MultiByteToWideChar(CP_UTF8, 0, text.data(), windows::systemLength(text.size()), made,
                                            windows::systemLength(text.size()));
    const BSTR longer = made;
    made = SysAllocStringLen(longer, static_cast<UINT>(written));
    SysFreeString(longer);
    if (made == nullptr) throw Error{errors::outOfMemory, "Out of memory: a text of the component interface."};
    return made;
}

} // namespace tamarok::com
