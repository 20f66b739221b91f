#include <benchmark/benchmark.h>
#include <random>
#include <string>
#include <vector>

#include "turns.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/tmkvar.h"

// Finding a pair in the cache of MengeCalc, beside the plain code: the text of each cell compared with the keys,
// row by row. Both go through the caller's array from its first row to the pair and give the same result.
// MengeCalc reads the keys once and compares numbers: 13 times as fast with 2,000 pairs, 9 to 10 times with
// 20,000, which no longer fit the second-level cache. An index would be faster still, but the array belongs to
// the caller and has no room for one.

namespace tamarok {
namespace {

constexpr std::int32_t units = 50;

Variant cachedPairs(std::int32_t assortments)
{
    std::vector<Variant> cells;
    for (std::int32_t assortment = 1; assortment <= assortments; ++assortment)
        for (std::int32_t unit = 1; unit <= units; ++unit)
            cells.insert(cells.end(), {Variant{assortment}, Variant{unit}, Variant{std::int16_t{1}}});
    return VariantArray{{0, 2}, {0, assortments * units - 1}, std::move(cells)};
}

struct Keys {
    std::string assortment;
    std::string unit;
};

std::vector<Keys> questions(std::int32_t assortments)
{
    std::mt19937_64 engine{5};
    std::uniform_int_distribution<std::int32_t> assortment{1, assortments};
    std::uniform_int_distribution<std::int32_t> unit{1, units};
    std::vector<Keys> all(64);
    for (Keys& keys : all)
        keys = {std::to_string(assortment(engine)), std::to_string(unit(engine))};
    return all;
}

std::int16_t plainWalk(const Variant& pairs, const Keys& keys)
{
    const VariantArray& array = pairs.asArray();
    const auto rows = array.bounds(2);
    for (std::int32_t row = rows.lower; row <= rows.upper; ++row) {
        if (convert::toText(array.at(0, row)) == keys.assortment && convert::toText(array.at(1, row)) == keys.unit)
            return convert::toInteger(array.at(2, row));
    }
    return 0;
}

void lookUp(benchmark::State& state)
{
    const auto assortments = static_cast<std::int32_t>(state.range(0)) / units;
    Variant pairs = cachedPairs(assortments);
    const std::vector<Keys> all = questions(assortments);
    TmkVar session;
    session.strCustomer = "SACHSEN";
    const Comm_Set set;
    bench::compare(
        state, all.size(),
        [&] {
            for (const Keys& keys : all)
                benchmark::DoNotOptimize(plainWalk(pairs, keys));
        },
        [&] {
            for (const Keys& keys : all)
                benchmark::DoNotOptimize(set.MengeCalc(session, pairs, keys.assortment, keys.unit));
        });
}
BENCHMARK(lookUp)->Arg(2'000)->Arg(20'000)->UseManualTime();

} // namespace
} // namespace tamarok
