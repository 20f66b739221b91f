#include "wide_text.h"

#include <algorithm>

#include "tamarok/error.h"

namespace tamarok::com {

namespace {

/// Returns a length as the system's functions take it. Error 7 beyond 31 bits.
int length(std::size_t count)
{
    if (count > 0x7FFFFFFF) throw Error{errors::outOfMemory, "Out of memory: a text is too long."};
    return static_cast<int>(count);
}

/// Whether a unit or byte stands for itself in both forms.
constexpr bool isPlain(wchar_t unit) noexcept
{
    return unit < 0x80;
}

} // namespace

std::wstring_view view(BSTR text) noexcept
{
    return text == nullptr ? std::wstring_view{} : std::wstring_view{text, SysStringLen(text)};
}

BSTR makeBstr(std::string_view text)
{
    const auto count = static_cast<UINT>(length(text.size()));
    BSTR made = SysAllocStringLen(nullptr, count);
    if (made == nullptr) throw Error{errors::outOfMemory, "Out of memory: a text of the component interface."};
    const auto widened = [](char byte) { return static_cast<wchar_t>(static_cast<unsigned char>(byte)); };
    if (std::ranges::all_of(text, isPlain, widened)) {
        std::ranges::transform(text, made, widened);
        return made;
    }
    // UTF-16 never has more units than UTF-8 has bytes.
    const int written = MultiByteToWideChar(CP_UTF8, 0, text.data(), length(text.size()), made, length(text.size()));
    const BSTR longer = made;
    made = SysAllocStringLen(longer, static_cast<UINT>(written));
    SysFreeString(longer);
    if (made == nullptr) throw Error{errors::outOfMemory, "Out of memory: a text of the component interface."};
    return made;
}

} // namespace tamarok::com
