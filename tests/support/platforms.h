#pragma once

#include <memory>
#include <string_view>

#include "tamarok/platform.h"

namespace tamarok::test {

/// The day that most tests run on: 17 May 2024, 18:00.
inline Date dayOfTests()
{
    return fromCivil({.year = 2024, .month = 5, .day = 17, .hour = 18});
}

/// Returns a platform under a built-in locale whose clock stands still.
inline Platform platformOf(std::string_view locale, Date now = dayOfTests())
{
    Platform platform;
    platform.regional = Regional::named(locale);
    platform.clock = std::make_shared<FixedClock>(now);
    return platform;
}

} // namespace tamarok::test
