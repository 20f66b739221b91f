#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text_encoding.h"

#include "tamarok/text.h"

namespace tamarok::settings {

/// A key in the form in which keys are compared.
inline std::string comparableKey(std::string_view key)
{
    return text::toUpper(text::trim(key));
}

/// The key of the list of databases: the one that may occur more than once.
inline constexpr std::string_view repeatedKey = "DATABASENAME";

/// A line "key = value", in the bytes of the file.
struct ParameterLine {
    std::string_view key;
    std::string_view value;

    /// Splits a line at its first "=". Nothing if it has none.
    static std::optional<ParameterLine> split(std::string_view line) noexcept
    {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) return std::nullopt;
        return ParameterLine{line.substr(0, equals), line.substr(equals + 1)};
    }

    /// @param wanted  from comparableKey
    bool hasKey(std::string_view wanted, TextEncoding encoding) const
    {
        return comparableKey(decode(key, encoding)) == wanted;
    }
};

} // namespace tamarok::settings
