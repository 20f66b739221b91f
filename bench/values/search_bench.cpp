// Searches in long texts, on texts that are hard to search: at each place nearly the whole pattern fits. The peer reads
// the text once and converts each character to upper case. Where own_ns and peer_ns, both for one character, stay the
// same from size to size, the time is linear. The time of a plain search grows with the length of the pattern as well;
// it runs beside the own one at the smallest size.

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <string>

#include "turns.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_find.h"
#include "tamarok/text.h"

namespace {

using namespace tamarok;
using bench::compare;

/// A text of letters "a", and a pattern of half its length, "aa...ab", that is never found.
struct HardText {
    explicit HardText(const benchmark::State& state) :
        size{static_cast<std::size_t>(state.range(0))}, text(size, 'a'), pattern(size / 2, 'a')
    {
        pattern.back() = 'b';
    }
    std::size_t size;
    std::string text;
    std::string pattern;
};

void readOnce(const std::string& text)
{
    char32_t sum = 0;
    for (std::size_t offset = 0; offset < text.size();)
        sum ^= text::toUpper(text::decode(text, offset));
    benchmark::DoNotOptimize(sum);
}

/// Every place of the text that the pattern fits is compared.
void plainSearch(const HardText& hard)
{
    std::size_t found = 0;
    for (std::size_t start = 0; start + hard.pattern.size() <= hard.text.size(); ++start)
        if (hard.text.compare(start, hard.pattern.size(), hard.pattern) == 0) ++found;
    benchmark::DoNotOptimize(found);
}

void findNumOfChar(benchmark::State& state)
{
    const HardText hard{state};
    compare(
        state, hard.size, [&] { readOnce(hard.text); },
        [&] { benchmark::DoNotOptimize(Comm_find{}.FindNumOfChar(hard.text, hard.pattern)); });
}

void insertToWhere(benchmark::State& state)
{
    const HardText hard{state};
    compare(
        state, hard.size, [&] { readOnce(hard.text); },
        [&] { benchmark::DoNotOptimize(Comm_CSel{}.InsertToWhere(hard.text, hard.pattern)); });
}

void removeString(benchmark::State& state)
{
    const HardText hard{state};
    compare(
        state, hard.size, [&] { readOnce(hard.text); },
        [&] { benchmark::DoNotOptimize(Comm_CSel{}.RemoveString(hard.text, hard.pattern)); });
}

void findNumOfCharBesidePlainSearch(benchmark::State& state)
{
    const HardText hard{state};
    compare(
        state, hard.size, [&] { plainSearch(hard); },
        [&] { benchmark::DoNotOptimize(Comm_find{}.FindNumOfChar(hard.text, hard.pattern)); });
}

void eachSize(benchmark::internal::Benchmark* searches)
{
    searches->UseManualTime()->Unit(benchmark::kMicrosecond)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Iterations(15);
}

BENCHMARK(findNumOfChar)->Apply(eachSize);
BENCHMARK(insertToWhere)->Apply(eachSize);
BENCHMARK(removeString)->Apply(eachSize);
BENCHMARK(findNumOfCharBesidePlainSearch)->UseManualTime()->Unit(benchmark::kMicrosecond)->Arg(10'000)->Iterations(15);

} // namespace
