#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "tamarok/regional.h"

namespace tamarok {

/// The words that a typed date may hold: those of the regional settings and the English ones, long
/// and short, in any case, with or without the point of an abbreviation.
class DateWords {
public:
    explicit DateWords(const Regional& regional) noexcept : regional_{regional} {}

    /// 1 to 12, 0 for a word that names no month.
    std::int32_t month(std::string_view word) const;
    bool isWeekday(std::string_view word) const;
    bool isRegionalWeekday(std::string_view word) const;
    /// True for a word that means after noon, false for before noon.
    std::optional<bool> halfDay(std::string_view word) const;

private:
    const Regional& regional_;
};

} // namespace tamarok
