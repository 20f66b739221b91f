#include <array>
#include <benchmark/benchmark.h>
#include <charconv>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "turns.h"

#include "tamarok/comm_set.h"
#include "tamarok/platform.h"

// The volume of a line of round wood, texts in and text out, beside the bare arithmetic: the same
// four texts through from_chars, the same formula and rounding, the result through to_chars.

namespace tamarok {
namespace {

struct Line {
    std::string pieces;
    std::string diameter;
    std::string length;
    std::string bark;
};

std::vector<Line> lines()
{
    std::mt19937_64 engine{1};
    const auto between = [&](int low, int high) { return std::uniform_int_distribution<int>{low, high}(engine); };
    const auto decimal = [](int tenths) { return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10); };
    std::vector<Line> all(4096);
    for (Line& line : all)
        line = {std::to_string(between(1, 40)), decimal(between(70, 900)), decimal(between(20, 200)),
                decimal(between(0, 60))};
    return all;
}

double number(const std::string& text)
{
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string bareVolume(const Line& line)
{
    const double inner = number(line.diameter) - number(line.bark);
    const double volume = inner * inner * 3.1416 * number(line.length) / 40000;
    const double result = std::nearbyint(volume * 1000) / 1000 * number(line.pieces);
    std::array<char, 32> buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), result).ptr};
}

void roundWood(benchmark::State& state, const char* mode, const char* pattern)
{
    Platform platform;
    platform.regional = Regional::named("en-GB");
    const PlatformScope scope{platform};
    const std::vector<Line> all = lines();
    const Comm_Set set;
    bench::compare(
        state, all.size(),
        [&] {
            for (const Line& line : all)
                benchmark::DoNotOptimize(bareVolume(line));
        },
        [&] {
            for (const Line& line : all)
                benchmark::DoNotOptimize(set.CalculateRundKubatur(line.pieces, line.diameter, line.length, line.bark,
                                                                  false, mode, false, pattern, 3));
        });
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(all.size()));
}
BENCHMARK_CAPTURE(roundWood, centimetres, "cm", "0.000")->UseManualTime();
BENCHMARK_CAPTURE(roundWood, percent, "%", "0.000")->UseManualTime();
BENCHMARK_CAPTURE(roundWood, grouped, "cm", "#,##0.00")->UseManualTime();

} // namespace
} // namespace tamarok
