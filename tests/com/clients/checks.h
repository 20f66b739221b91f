#pragma once

#include <cstdio>
#include <string_view>

/// What the programs for Windows check: each failure is a line, and the status of the program.
namespace checks {

/// Returns the number of failures so far.
inline int& failures() noexcept
{
    static int count = 0;
    return count;
}

inline void expect(bool condition, std::string_view what) noexcept
{
    if (condition) return;
    ++failures();
    std::printf("FAILED %.*s\n", static_cast<int>(what.size()), what.data());
}

/// Ends `main`: the runner takes the last line for the sign that the program came to its end.
inline int finish() noexcept
{
    if (failures() == 0) std::printf("END OF SCRIPT\n");
    return failures() == 0 ? 0 : 1;
}

} // namespace checks
