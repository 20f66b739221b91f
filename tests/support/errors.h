#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "tamarok/error.h"

namespace tamarok::test {

/// Returns the Error that `action` fails with. The test fails, and the number is 0, if there is none.
template <class Action>
Error failureOf(Action&& action)
{
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "no error was thrown";
    return Error{0, "no error"};
}

/// Returns the number of the Error that `action` fails with; 0 if it does not fail.
template <class Action>
std::int32_t errorNumber(Action&& action)
{
    try {
        action();
    } catch (const Error& error) {
        return error.number;
    }
    return 0;
}

/// Returns the description of the Error that `action` fails with; "" if it does not fail.
template <class Action>
std::string errorText(Action&& action)
{
    try {
        action();
    } catch (const Error& error) {
        return error.description;
    }
    return {};
}

/// Expects that `action` fails with this number, and with `named` in the description.
template <class Action>
void expectError(std::int32_t number, std::string_view named, Action&& action)
{
    const Error error = failureOf(action);
    EXPECT_EQ(error.number, number) << error.what();
    EXPECT_NE(error.description.find(named), std::string::npos) << error.what();
}

} // namespace tamarok::test
