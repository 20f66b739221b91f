#pragma once

#include <cstdint>
#include <string>

namespace tamarok {

/// Two scanners of text.
class Comm_find {
public:
    /// How often `strFChar` occurs in `sTmpString`, without regard to case; occurrences of a longer
    /// text may overlap. Error 6 above 32767.
    std::int16_t FindNumOfChar(const std::string& sTmpString, const std::string& strFChar) const;

    /// Field `tmp_Number`, counted from 0, of a text separated by the one character `strFChar`. Beyond
    /// the last field the last one, below 0 the first one; a separator of more than one character
    /// never matches. Error 6 above 32767 separators.
    std::string FindSubstring(const std::string& sTmpString, const std::string& strFChar,
                              std::int16_t tmp_Number) const;
};

} // namespace tamarok
