#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>
#include <vector>

#include "tamarok/comm_set.h"
#include "tamarok/selection_book.h"

// CreateSQL against a copy of the same finished text, and the place of a key in the book.

namespace tamarok {
namespace {

constexpr std::string_view fields = "176\t2\t1\tBL\t101";

std::string compose(std::string_view key, const TmkVar& session)
{
    return Comm_Set{}.CreateSQL(session, key, fields);
}

/// The keys whose statements are shortest, of median length and longest.
std::string_view keyOfRank(std::size_t rank)
{
    const TmkVar session;
    std::vector<std::pair<std::size_t, std::string_view>> lengths;
    for (const selections::Selection& selection : selections::all())
        lengths.emplace_back(compose(selection.key, session).size(), selection.key);
    std::ranges::sort(lengths);
    return lengths[rank].second;
}

void createSql(benchmark::State& state, std::string_view key)
{
    const TmkVar session;
    for (auto _ : state) {
        std::string statement = compose(key, session);
        benchmark::DoNotOptimize(statement);
    }
    state.SetLabel(std::string{key} + ", " + std::to_string(compose(key, session).size()) + " bytes");
}

void copyOfText(benchmark::State& state, std::string_view key)
{
    const std::string text = compose(key, TmkVar{});
    for (auto _ : state) {
        std::string copy{text};
        benchmark::DoNotOptimize(copy);
    }
}

void wholeBook(benchmark::State& state)
{
    const TmkVar session;
    for (auto _ : state) {
        for (const selections::Selection& selection : selections::all()) {
            std::string statement = compose(selection.key, session);
            benchmark::DoNotOptimize(statement);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(selections::all().size()));
}
BENCHMARK(wholeBook);

/// Finds the keys of one tenth of the book, from its beginning (0) to its end (9).
void findByPlace(benchmark::State& state)
{
    const std::size_t tenth = selections::all().size() / 10;
    const auto part = selections::all().subspan(static_cast<std::size_t>(state.range(0)) * tenth, tenth);
    for (auto _ : state) {
        for (const selections::Selection& selection : part)
            benchmark::DoNotOptimize(selections::find(selection.key));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(tenth));
}
BENCHMARK(findByPlace)->DenseRange(0, 9, 3);

const int registered = [] {
    const std::size_t count = selections::all().size();
    for (const std::size_t rank : std::array{count / 2, count - 1}) {
        const std::string_view key = keyOfRank(rank);
        const std::string kind = rank == count - 1 ? "Longest" : "Median";
        benchmark::RegisterBenchmark(("copy" + kind).c_str(), copyOfText, key);
        benchmark::RegisterBenchmark(("createSql" + kind).c_str(), createSql, key);
    }
    // The keys with the most decisions: choices within choices, levels of the organisation, a path.
    for (const std::string_view key : {"WARENEINHEIT_HOLZ_GRID", "ACCESS_LEVELS00_GRID", "WALDORT_VALID"}) {
        benchmark::RegisterBenchmark("copyManyDecisions", copyOfText, key);
        benchmark::RegisterBenchmark("createSqlManyDecisions", createSql, key);
    }
    return 0;
}();

} // namespace
} // namespace tamarok
