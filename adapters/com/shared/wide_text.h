#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "tamarok_windows/wide_text.h"
#include "windows_headers.h"

namespace tamarok::com {

/// Text between the library's UTF-8 and the system's UTF-16. A code unit that stands for no character becomes U+FFFD.
inline std::string toUtf8(std::wstring_view text)
{
    return windows::narrow(text);
}
inline std::wstring toWide(std::string_view text)
{
    return windows::wide(text);
}

/// Returns the characters of a counted text; none for the null pointer, which is the empty text.
std::wstring_view view(BSTR text) noexcept;
inline std::string toUtf8(BSTR text)
{
    return toUtf8(view(text));
}

/// Makes a counted text, which the caller frees. Error 7 where the memory does not suffice.
BSTR makeBstr(std::string_view text);

/// An owned counted text.
class Bstr {
public:
    Bstr() noexcept = default;
    explicit Bstr(std::string_view text) : text_{makeBstr(text)} {}
    ~Bstr() { SysFreeString(text_); }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;

    BSTR get() const noexcept { return text_; }
    BSTR* put() noexcept
    {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    BSTR release() noexcept { return std::exchange(text_, nullptr); }

private:
    BSTR text_ = nullptr;
};

} // namespace tamarok::com
