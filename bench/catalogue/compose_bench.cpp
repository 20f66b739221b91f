#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/list_composer.h"
#include "catalogue/price_options.h"

#include "tamarok/comm_csel.h"
#include "tamarok/list_catalogue.h"

// GetColumn against a copy of the same text out of an array, and the composition of a whole list
// with a database that answers at once.

namespace tamarok {
namespace {

using test::Surroundings;

constexpr std::array<std::int16_t, 16> plainIds{1, 22, 23, 26, 33, 34, 35, 36, 40, 57, 152, 203, 319, 434, 570, 1041};

void copyFromArray(benchmark::State& state)
{
    const Surroundings with;
    std::vector<std::string> texts;
    for (const std::int16_t id : plainIds) {
        texts.push_back(Comm_CSel{}.GetColumn(id, "R", with.session));
    }
    for (auto _ : state) {
        for (const std::string& text : texts) {
            std::string copy{text};
            benchmark::DoNotOptimize(copy);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(plainIds.size()));
}
BENCHMARK(copyFromArray);

void getColumnOfPlainRow(benchmark::State& state)
{
    const Surroundings with;
    const Comm_CSel csel;
    for (auto _ : state) {
        for (const std::int16_t id : plainIds) {
            std::string column = csel.GetColumn(id, "R", with.session);
            benchmark::DoNotOptimize(column);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(plainIds.size()));
}
BENCHMARK(getColumnOfPlainRow);

/// Keys, measures, averages and prices over some twenty tables.
constexpr std::array<std::int16_t, 40> listIds{1,   2,   4,   5,   6,   15,  16,  19,  22,  23,  27,  30, 32, 33,
                                               35,  36,  37,  40,  42,  43,  49,  51,  54,  58,  66,  68, 70, 109,
                                               117, 122, 152, 202, 203, 205, 238, 280, 304, 318, 319, 320};

struct ListText {
    std::string select;
    std::string tabbed;
    std::string from;
    std::string group;
    std::string order;
};

ListText composeList(const TmkVar& session, bool grouped)
{
    const Comm_CSel csel;
    ListText list;
    for (const std::int16_t id : listIds) {
        list.from = csel.GetFrom("LOG", id, list.from, "R", session);
    }
    list.select =
        csel.CorrectStrSelect("LOG", listIds, list.tabbed, "0", "R", session, "LOGS.STK > 0", list.from, grouped);
    std::string order;
    for (const std::int16_t id : listIds) {
        list.group = csel.InsertToStr2(Variant{std::move(list.group)}, csel.GetGroupByClause2(id, "R", session), "R");
        order = csel.InsertToStr2(Variant{std::move(order)}, csel.GetOrderByClause2(id, "R", session), "R");
    }
    list.order = csel.OrderBy("1", order);
    return list;
}

void composeFortyColumns(benchmark::State& state)
{
    Surroundings with;
    test::setPriceOptions(with.database, 13.7603, 0);
    const bool grouped = state.range(0) != 0;
    for (auto _ : state) {
        ListText list = composeList(with.session, grouped);
        benchmark::DoNotOptimize(list);
        with.database.opened.clear();
    }
    const ListText list = composeList(with.session, grouped);
    state.counters["bytes"] = static_cast<double>(list.select.size() + list.from.size() + list.group.size());
}
BENCHMARK(composeFortyColumns)->ArgName("grouped")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// GetColumnTyp, which finds its list type by key first, against a copy of the same text.

constexpr std::array<std::int16_t, 12> typedIds{1, 2, 3, 10, 20, 60, 61, 110, 111, 150, 176, 177};

void copyTypedFromArray(benchmark::State& state)
{
    const Surroundings with;
    std::vector<std::string> texts;
    for (const std::int16_t id : typedIds) {
        texts.push_back(Comm_CSel{}.GetColumnTyp("BBHAB", id, false, false, with.session));
    }
    for (auto _ : state) {
        for (const std::string& text : texts) {
            std::string copy{text};
            benchmark::DoNotOptimize(copy);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(typedIds.size()));
}
BENCHMARK(copyTypedFromArray);

void getColumnTypOfPlainRow(benchmark::State& state)
{
    const Surroundings with;
    const Comm_CSel csel;
    for (auto _ : state) {
        for (const std::int16_t id : typedIds) {
            std::string column = csel.GetColumnTyp("BBHAB", id, false, false, with.session);
            benchmark::DoNotOptimize(column);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(typedIds.size()));
}
BENCHMARK(getColumnTypOfPlainRow);

/// Every column of the type with the most joins: SELECT and FROM, and with `grouped` the GROUP BY list as well, whose
/// operation takes and returns the whole list for each column.
void composeAllColumns(benchmark::State& state)
{
    const bool grouped = state.range(0) != 0;
    const Surroundings with;
    const Comm_CSel csel;
    const auto columns = catalogue::columnsOf("BBHAB");
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::string select;
        std::string from;
        std::string group;
        for (const catalogue::ColumnInfo& column : columns) {
            select = csel.InsertToStr(select, csel.GetColumnTyp("BBHAB", column.id, grouped, false, with.session));
            from = csel.GetFrom("BBHAB", column.id, from, "R", with.session);
            if (!grouped) continue;
            group = csel.InsertToStr2(Variant{std::move(group)},
                                      csel.GetColumnTyp("BBHAB", column.id, true, true, with.session), "R");
        }
        bytes = select.size() + from.size() + group.size();
        benchmark::DoNotOptimize(bytes);
    }
    state.counters["columns"] = static_cast<double>(columns.size());
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(composeAllColumns)->ArgName("grouped")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

/// The three texts of the same list by the composer that the list views use.
void composeAllColumnsAtOnce(benchmark::State& state)
{
    const Surroundings with;
    const auto columns = catalogue::columnsOf("BBHAB");
    std::size_t bytes = 0;
    for (auto _ : state) {
        catalogue::ListComposer list{"BBHAB", "R", with.session, ""};
        for (const catalogue::ColumnInfo& column : columns)
            list.addColumn(column.id);
        bytes = list.select().size() + list.from().size() + list.group().size();
        benchmark::DoNotOptimize(bytes);
    }
    state.counters["columns"] = static_cast<double>(columns.size());
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(composeAllColumnsAtOnce)->Unit(benchmark::kMicrosecond);

void growFromClause(benchmark::State& state)
{
    const Surroundings with;
    const Comm_CSel csel;
    for (auto _ : state) {
        std::string from;
        for (const std::int16_t id : listIds) {
            from = csel.GetFrom("LOG", id, from, "R", with.session);
        }
        benchmark::DoNotOptimize(from);
    }
}
BENCHMARK(growFromClause)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tamarok
