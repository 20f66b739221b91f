#pragma once

#include <string_view>

/// The name of a function, taken from a pointer to it at compile time.
namespace tamarok::component {

/// The compiler's own text of a template function's signature, which contains the template argument.
template <auto function>
constexpr std::string_view signatureText() noexcept
{
#if defined(_MSC_VER) && !defined(__clang__)
    return __FUNCSIG__;
#else
    return __PRETTY_FUNCTION__;
#endif
}

/// The unqualified name of a member function or free function: "GetColumn" for `&Comm_CSel::GetColumn`.
/// g++ writes "[with auto function = &Comm_CSel::GetColumn; ...]", clang "[function = &...]", and Visual
/// C++ "signatureText<&...>(void)" (not yet tried there; a different form fails the comparison in
/// `operation` and so cannot pass unnoticed).
template <auto function>
constexpr std::string_view memberName() noexcept
{
    constexpr std::string_view label = "function = ";
    std::string_view text = signatureText<function>();
    const std::size_t argument = text.find(label);
    if (argument == std::string_view::npos) {
        text = text.substr(0, text.rfind('>'));
    } else {
        text = text.substr(argument + label.size());
        text = text.substr(0, text.find_first_of(";]"));
    }
    return text.substr(text.find_last_of(":&") + 1);
}

} // namespace tamarok::component
