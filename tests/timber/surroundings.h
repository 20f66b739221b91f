#pragma once

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::testing {

/// The thread's platform under a locale, on 17 May 2024.
inline Platform platformOf(std::string_view locale)
{
    Platform platform;
    platform.regional = Regional::named(locale);
    platform.clock = std::make_shared<FixedClock>(Date{makeDate(2024, 5, 17).days + 0.75});
    return platform;
}

/// Expects that `work` fails with this number, and with `named` in its description.
inline void expectError(std::int32_t number, std::string_view named, const std::function<void()>& work)
{
    try {
        work();
        ADD_FAILURE() << "no error, expected number " << number;
    } catch (const Error& error) {
        EXPECT_EQ(error.number, number) << error.what();
        EXPECT_NE(error.description.find(named), std::string::npos) << error.what();
    }
}

} // namespace tamarok::testing
