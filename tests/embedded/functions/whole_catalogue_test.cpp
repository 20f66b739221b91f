#include <array>
#include <gtest/gtest.h>
#include <string>

#include "embedded/functions/scratch_database.h"

namespace tamarok::embedded::functions {
namespace {

constexpr std::array values = {"NULL",
                               "0",
                               "-9223372036854775808",
                               "9223372036854775807",
                               "2.5",
                               "-1e308",
                               "''",
                               "'-'",
                               "'2024-03-05 10:15:30.127'",
                               "'%[a-'",
                               "CAST(x'00C3E28261F0' AS TEXT)",
                               "x'FF00'"};

/// A failure is "error NUMBER:message", or SQLite's own refusal of a text that is too long.
bool isValueOrNumberedError(const std::string& answer)
{
    if (!answer.starts_with("error ")) return !answer.starts_with("refused");
    const std::size_t colon = answer.find(':');
    if (answer == "error string or blob too big") return true;
    return colon != std::string::npos && colon > 6 && answer.find_first_not_of("0123456789", 6) == colon &&
           answer.size() > colon + 1;
}

void callWithEverything(ScratchDatabase& database, const std::string& name, std::size_t arguments)
{
    std::size_t combinations = 1;
    for (std::size_t index = 0; index < arguments; ++index)
        combinations *= values.size();
    for (std::size_t combination = 0; combination < combinations; ++combination) {
        std::string call = '"' + name + "\"(";
        std::size_t rest = combination;
        for (std::size_t index = 0; index < arguments; ++index, rest /= values.size()) {
            if (index > 0) call += ',';
            call += values[rest % values.size()];
        }
        call += ')';
        const std::string answer = database.evaluate(call);
        ASSERT_TRUE(isValueOrNumberedError(answer)) << call << " gives " << answer;
    }
}

/// Entries of the catalogue in functions/register.cpp, aggregates excluded; a new function raises the number.
constexpr int registeredFunctions = 161;

/// Every function with every combination of awkward values: an answer, or an error with a number.
TEST(WholeCatalogue, AnswersOrFailsWithANumber)
{
    ScratchDatabase database;
    // What SQLite brings of its own (full-text search) is not marked as harmless.
    const std::string ours = " FROM pragma_function_list WHERE builtin = 0 AND type IN ('s','w') AND flags & " +
                             std::to_string(SQLITE_INNOCUOUS);
    const std::string count = database.rows("SELECT count(*)" + ours);
    ASSERT_EQ(std::stoi(count), registeredFunctions);
    for (int index = 0; index < std::stoi(count); ++index) {
        const std::string from = ours + " LIMIT 1 OFFSET " + std::to_string(index);
        const std::string name = database.rows("SELECT name" + from);
        const int arguments = std::stoi(database.rows("SELECT narg" + from));
        callWithEverything(database, name.substr(1, name.size() - 2),
                           arguments < 0 ? 2 : static_cast<std::size_t>(arguments));
    }
}

} // namespace
} // namespace tamarok::embedded::functions
