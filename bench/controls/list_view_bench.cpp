#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <malloc.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "text_order.h"
#include "turns.h"

#include "tamarok/list_view.h"

// A list view of 100,000 rows and 12 columns: filling it by name against filling it by its C++ interface, the memory
// of a cell, and sorting it against std::stable_sort on texts that are prepared already.

namespace tamarok {
namespace {

using bench::compare;
using controls::ListView;

constexpr std::int32_t rows = 100'000;
constexpr std::int32_t columns = 12;

struct Row {
    std::string key;
    std::vector<std::string> texts;
};

/// Short texts as lists have them: dates, numbers, codes, names.
std::vector<Row> sampleRows()
{
    constexpr std::array<std::string_view, 8> names{"Fichte", "Tanne",      "Lärche",         "Buche",
                                                    "Eiche",  "Weißkiefer", "Douglasie grün", "Zirbe"};
    std::vector<Row> made(rows);
    std::uint32_t state = 7;
    std::int32_t number = 0;
    for (Row& row : made) {
        ++number;
        row.key = std::to_string(number) + "R" + std::to_string(1'000'000 + number);
        for (std::int32_t column = 0; column < columns; ++column) {
            state = state * 1664525U + 1013904223U;
            const std::uint32_t value = state >> 12U;
            switch (column % 3) {
            case 0: row.texts.push_back(std::to_string(value % 1'000'000)); break;
            case 1: row.texts.emplace_back(names[value % names.size()]); break;
            default:
                row.texts.push_back("0" + std::to_string(1 + value % 9) + ".1" + std::to_string(value % 3) + ".2024");
            }
        }
    }
    return made;
}

const std::vector<Row>& sample()
{
    static const std::vector<Row> made = sampleRows();
    return made;
}

std::shared_ptr<ListView> emptyList()
{
    auto list = std::make_shared<ListView>();
    for (std::int32_t column = 0; column < columns; ++column)
        list->headers()->Add({}, "COL_" + std::to_string(column));
    return list;
}

void fill(ListView& list)
{
    for (const Row& row : sample()) {
        const controls::ListItemRef item = list.items()->Add({}, row.key, row.texts[0]);
        for (std::int32_t column = 1; column < columns; ++column)
            item->SubItems(column, row.texts[static_cast<std::size_t>(column)]);
    }
}

void fillByNameInto(Object& list)
{
    const ObjectRef items = list.get("ListItems", {}).asObject();
    for (const Row& row : sample()) {
        std::array<Variant, 3> arguments{Variant{}, Variant{row.key}, Variant{row.texts[0]}};
        const Variant added = items->call("Add", arguments);
        Object& item = *added.asObject();
        for (std::int32_t column = 1; column < columns; ++column) {
            const Variant index{column};
            item.putIndexed("SubItems", {&index, 1}, Variant{row.texts[static_cast<std::size_t>(column)]});
        }
    }
}

void fillByName(benchmark::State& state)
{
    const auto plain = emptyList();
    const auto named = emptyList();
    sample();
    compare(
        state, std::size_t{rows} * columns,
        [&] {
            plain->items()->Clear();
            fill(*plain);
        },
        [&] {
            named->items()->Clear();
            fillByNameInto(*named);
        });
}
BENCHMARK(fillByName)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

/// Reading and writing back a column by name, as the preparation of a sort does. The peer uses the C++ interface.
void rewriteColumnByName(benchmark::State& state)
{
    const auto list = emptyList();
    fill(*list);
    Object& items = *list->items();
    compare(
        state, rows,
        [&] {
            for (const controls::ListItemRef& item : list->items()->all())
                item->SubItems(3, std::string{item->SubItems(3)});
        },
        [&] {
            const Variant column{std::int32_t{3}};
            for (std::int32_t row = 1; row <= rows; ++row) {
                const Variant index{row};
                const Variant found = items.get("Item", {&index, 1});
                Object& item = *found.asObject();
                item.putIndexed("SubItems", {&column, 1}, item.get("SubItems", {&column, 1}));
            }
        });
}
BENCHMARK(rewriteColumnByName)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

/// Filling a list that is sorted by its keys, with rows in that order or in none. The peer fills an unsorted list and
/// sorts it at the end.
void fillSorted(benchmark::State& state, bool inOrder)
{
    std::vector<std::pair<std::string, const Row*>> texts;
    for (const Row& row : sample())
        texts.emplace_back(row.texts[0], &row);
    if (inOrder) std::ranges::sort(texts);
    const auto fill = [&](ListView& list) {
        for (const auto& [text, row] : texts)
            list.items()->Add({}, row->key, text);
    };
    const auto later = emptyList();
    const auto sorted = emptyList();
    sorted->Sorted(true);
    compare(
        state, rows,
        [&] {
            later->Sorted(false);
            later->items()->Clear();
            fill(*later);
            later->Sorted(true);
            later->items()->all();
        },
        [&] {
            sorted->items()->Clear();
            fill(*sorted);
        });
}
BENCHMARK_CAPTURE(fillSorted, inOrder, true)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fillSorted, inNoOrder, false)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

/// The list against rows of vectors of strings, which is what a cell costs at least without packing.
void memoryOfACell(benchmark::State& state)
{
    sample();
    for (auto _ : state) {
        const auto list = emptyList();
        const std::size_t before = ::mallinfo2().uordblks;
        fill(*list);
        const std::size_t filled = ::mallinfo2().uordblks;
        std::vector<std::vector<std::string>> bare;
        bare.reserve(rows);
        for (const Row& row : sample())
            bare.push_back(row.texts);
        const std::size_t last = ::mallinfo2().uordblks;
        constexpr double cells = double{rows} * columns;
        state.counters["bytes_per_cell"] = static_cast<double>(filled - before) / cells;
        state.counters["bare_bytes_per_cell"] = static_cast<double>(last - filled) / cells;
    }
}
BENCHMARK(memoryOfACell)->Iterations(1)->Unit(benchmark::kMillisecond);

struct Prepared {
    std::string key;
    std::uint32_t position = 0;
};

std::vector<Prepared> prepared(std::size_t column)
{
    std::vector<Prepared> entries;
    for (const Row& row : sample())
        entries.push_back({controls::text_order::keyOf(row.texts[column]), static_cast<std::uint32_t>(entries.size())});
    return entries;
}

/// Sorts by two columns of numbers in turn. The peer sorts a copy of the prepared texts; the list prepares them itself.
void sortedList(benchmark::State& state)
{
    const auto list = emptyList();
    fill(*list);
    list->Sorted(true);
    list->items()->all();
    std::int32_t column = 0;
    const std::vector<Prepared> texts = prepared(3);
    std::vector<Prepared> sorted;
    compare(
        state, rows,
        [&] {
            sorted = texts;
            std::ranges::stable_sort(sorted, {}, &Prepared::key);
        },
        [&] {
            column = column == 3 ? 6 : 3;
            list->SortKey(column);
            benchmark::DoNotOptimize(list->items()->all().data());
        });
}
BENCHMARK(sortedList)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

std::vector<std::string_view> textsOf(std::size_t column)
{
    std::vector<std::string_view> texts;
    for (const Row& row : sample())
        texts.emplace_back(row.texts[column]);
    return texts;
}

std::vector<std::uint32_t> orderOf(const std::vector<std::string_view>& texts)
{
    controls::text_order::Keys keys;
    keys.reserve(texts.size());
    for (const std::string_view text : texts)
        keys.add(text);
    return keys.stableOrder(false);
}

/// The order of texts against keys that are made in each comparison.
void keysMadeOnce(benchmark::State& state)
{
    const std::vector<std::string_view> texts = textsOf(3);
    std::vector<std::uint32_t> order(rows);
    compare(
        state, rows,
        [&] {
            for (std::uint32_t row = 0; row < rows; ++row)
                order[row] = row;
            std::ranges::stable_sort(order, {},
                                     [&](std::uint32_t row) { return controls::text_order::keyOf(texts[row]); });
        },
        [&] { benchmark::DoNotOptimize(orderOf(texts).data()); });
}
BENCHMARK(keysMadeOnce)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

/// The order of texts, their keys included, against std::stable_sort of keys that are made already: of numbers, names
/// of which many are equal, and dates that differ at the end.
void orderOfTexts(benchmark::State& state, std::size_t column)
{
    const std::vector<std::string_view> texts = textsOf(column);
    const std::vector<Prepared> keys = prepared(column);
    std::vector<Prepared> sorted;
    compare(
        state, rows,
        [&] {
            sorted = keys;
            std::ranges::stable_sort(sorted, {}, &Prepared::key);
        },
        [&] { benchmark::DoNotOptimize(orderOf(texts).data()); });
}
BENCHMARK_CAPTURE(orderOfTexts, numbers, 3U)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(orderOfTexts, names, 4U)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(orderOfTexts, dates, 5U)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

/// A click on a head sets SortKey, SortOrder and Sorted, each of which sorts. The peer looks at the order in between.
void clickOnAHead(benchmark::State& state)
{
    const auto list = emptyList();
    fill(*list);
    list->Sorted(true);
    std::int32_t column = 0;
    std::int32_t order = 0;
    const auto click = [&](auto look) {
        column = column == 3 ? 6 : 3;
        order = 1 - order;
        list->SortKey(column);
        look();
        list->SortOrder(order);
        look();
        list->Sorted(true);
        look();
    };
    const auto all = [&] { benchmark::DoNotOptimize(list->items()->all().data()); };
    compare(
        state, rows, [&] { click(all); },
        [&] {
            click([] {});
            all();
        });
}
BENCHMARK(clickOnAHead)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tamarok
