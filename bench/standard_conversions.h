#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

/// Numbers to convert, and the standard library's conversions that the library's own are compared with.
namespace tamarok::bench {

inline constexpr std::size_t inputCount = 4096;

/// Measures as they are typed and stored: at most three decimals. The same numbers in each run.
inline std::vector<double> measures()
{
    std::mt19937_64 engine{1};
    std::uniform_int_distribution<std::int64_t> thousandths{0, 99'999'999};
    std::vector<double> numbers(inputCount);
    for (double& number : numbers)
        number = static_cast<double>(thousandths(engine)) / 1000.0;
    return numbers;
}

inline std::string standardText(double number)
{
    std::array<char, 32> buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

/// Reads a copy of the text, as a conversion does that must take out separators first.
inline double standardNumber(const std::string& text)
{
    const std::string copy{text};
    double number = 0.0;
    std::from_chars(copy.data(), copy.data() + copy.size(), number);
    return number;
}

} // namespace tamarok::bench
