#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "tamarok/regional.h"

namespace tamarok {

/// The words of a typed date: names and abbreviations of the regional settings and of English, in any case, with
/// or without the point of an abbreviation. Words are passed without that point.
class DateWords {
public:
    explicit DateWords(const Regional& regional) noexcept : regional_{regional} {}

    /// Returns the number of a month, 0 for any other word.
    std::int32_t month(std::string_view word) const;
    bool isWeekday(std::string_view word) const;
    bool isRegionalWeekday(std::string_view word) const;
    /// Returns true for a word for after noon, false for before noon, nothing for any other word.
    std::optional<bool> halfDay(std::string_view word) const;

private:
    const Regional& regional_;
};

} // namespace tamarok
