#include "wide_text.h"

#include "tamarok/error.h"

namespace tamarok::com {

namespace {

/// Returns a length as the system's functions take it. Error 7 beyond 31 bits.
int length(std::size_t count)
{
    if (count > 0x7FFFFFFF) throw Error{errors::outOfMemory, "Out of memory: a text is too long."};
    return static_cast<int>(count);
}

} // namespace

std::string toUtf8(std::wstring_view text)
{
    if (text.empty()) return {};
    // A UTF-16 unit takes three bytes at most, so that one pass converts a short text.
    std::string bytes(text.size() * 3, '\0');
    const int written = WideCharToMultiByte(CP_UTF8, 0, text.data(), length(text.size()), bytes.data(),
                                            length(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(written));
    return bytes;
}

std::wstring toWide(std::string_view text)
{
    if (text.empty()) return {};
    std::wstring units(text.size(), L'\0');
    const int written =
        MultiByteToWideChar(CP_UTF8, 0, text.data(), length(text.size()), units.data(), length(units.size()));
    units.resize(static_cast<std::size_t>(written));
    return units;
}

std::wstring_view view(BSTR text) noexcept
{
    return text == nullptr ? std::wstring_view{} : std::wstring_view{text, SysStringLen(text)};
}

BSTR makeBstr(std::string_view text)
{
    const std::wstring units = toWide(text);
    BSTR const made = SysAllocStringLen(units.data(), static_cast<UINT>(units.size()));
    if (made == nullptr) throw Error{errors::outOfMemory, "Out of memory: a text of the component interface."};
    return made;
}

} // namespace tamarok::com
