#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Texts between the UTF-8 of the library and the UTF-16 of Windows.
namespace tamarok::windows {

/// A length as the system's functions take it. Error 7 beyond 31 bits.
int systemLength(std::size_t count);

/// A text in UTF-16. An invalid byte becomes U+FFFD. Error 7 beyond 2^31 characters, here and below.
std::wstring wide(std::string_view text);

/// A text in UTF-8. A surrogate without its partner becomes U+FFFD.
std::string narrow(std::wstring_view text);

} // namespace tamarok::windows
