#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "lookup_rows.h"

/// Finding rows of a lookup.
namespace tamarok::dialogs {

/// Returns the index of the first row whose cell, cut to `length` characters, equals `value`, ignoring case. A Null
/// equals nothing.
std::optional<std::size_t> findCut(const LookupRows& rows, std::size_t column, std::size_t length,
                                   std::string_view value);

/// Returns the index of the row that a value stands for: the first whose cell equals it, otherwise the first whose cell
/// begins with it. Case counts.
std::optional<std::size_t> findDefault(const LookupRows& rows, std::size_t column, std::string_view value);

/// A typed text before its last key, and that key.
struct Retyped {
    std::string typed;
    char32_t key;
};

/// Returns what is typed anew after a backspace: the text without its last character, divided before its last key.
/// @param typed  two characters at least
Retyped afterBackspace(std::string_view typed);

} // namespace tamarok::dialogs
