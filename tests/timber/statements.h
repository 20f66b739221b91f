#pragma once

#include <string>
#include <string_view>

/// The statements of timber measurement written out in full, letter by letter, one piece a line. "@"
/// stands for the text that the caller gives in, "^" for a second one.
namespace tamarok::test::statements {

inline constexpr std::string_view bark =
#include "timber/statements/bark_statement.inc"
    ;
inline constexpr std::string_view factorRule =
#include "timber/statements/factor_rule_statement.inc"
    ;
inline constexpr std::string_view unitCascade =
#include "timber/statements/unit_cascade_statement.inc"
    ;
inline constexpr std::string_view conversionTable =
#include "timber/statements/conversion_table_statement.inc"
    ;
inline constexpr std::string_view conversionPairs =
#include "timber/statements/conversion_pairs_statement.inc"
    ;
inline constexpr std::string_view classOfSelectedLines =
#include "timber/statements/volume_class_selected_lines.inc"
    ;
inline constexpr std::string_view classOfWholeGroups =
#include "timber/statements/volume_class_whole_groups.inc"
    ;
inline constexpr std::string_view classOfSingleLines =
#include "timber/statements/volume_class_single_lines.inc"
    ;

/// A statement with its places filled.
inline std::string filled(std::string_view statement, std::string_view first, std::string_view second = {})
{
    std::string text;
    for (const char c : statement) {
        if (c == '@')
            text.append(first);
        else if (c == '^')
            text.append(second);
        else
            text += c;
    }
    return text;
}

} // namespace tamarok::test::statements
