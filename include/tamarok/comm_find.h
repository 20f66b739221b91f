#pragma once

#include <cstdint>
#include <string>

#pragma GCC visibility push(default)

namespace tamarok {

/// Counts occurrences of a substring and extracts the n-th field of a separated text.
class Comm_find {
public:
    /// Returns how often `strFChar` occurs in `sTmpString`, ignoring case. Occurrences may overlap: "aa" occurs
    /// twice in "aaa". Error 6 above 32,767 occurrences.
    std::int16_t FindNumOfChar(const std::string& sTmpString, const std::string& strFChar) const;

    /// Returns a field of a separated text.
    /// @param strFChar    the separator, one character, compared exactly; a longer text never matches, so that
    ///        the whole text is returned
    /// @param tmp_Number  number of the field, from 0; above the last field the last one is returned, below 0
    ///        the first one
    /// Error 6 above 32,767 separators.
    std::string FindSubstring(const std::string& sTmpString, const std::string& strFChar,
                              std::int16_t tmp_Number) const;
};

} // namespace tamarok

#pragma GCC visibility pop
