#include <array>
#include <benchmark/benchmark.h>
#include <charconv>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "standard_conversions.h"

#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/regional.h"
#include "tamarok/text.h"

// Each conversion stands beside its peer: the standard library's conversion of the same inputs and
// one copy of the text. Items are single conversions, so that the figures divide into a ratio.

namespace tamarok {
namespace {

using bench::inputCount;
using bench::measures;
using bench::standardNumber;
using bench::standardText;

/// Results of computations, with all the digits that a double has.
std::vector<double> products()
{
    std::mt19937_64 engine{2};
    std::uniform_real_distribution<double> any{0.0, 1e6};
    std::vector<double> numbers(inputCount);
    for (double& number : numbers)
        number = any(engine);
    return numbers;
}

std::vector<std::string> texts(const std::vector<double>& numbers, const Regional& regional)
{
    std::vector<std::string> result;
    for (const double number : numbers)
        result.push_back(convert::toText(number, regional));
    return result;
}

template <class Inputs, class Convert>
void forEach(benchmark::State& state, const Inputs& inputs, Convert convert)
{
    for (auto _ : state)
        for (const auto& input : inputs)
            benchmark::DoNotOptimize(convert(input));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(inputs.size()));
}

void numberToText_measures_standard(benchmark::State& state)
{
    forEach(state, measures(), standardText);
}

void numberToText_measures(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    forEach(state, measures(), [&](double number) { return convert::toText(number, german); });
}

void numberToText_products_standard(benchmark::State& state)
{
    forEach(state, products(), standardText);
}

void numberToText_products(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    forEach(state, products(), [&](double number) { return convert::toText(number, german); });
}

void textToNumber_measures_standard(benchmark::State& state)
{
    forEach(state, texts(measures(), Regional::named("en-US")), standardNumber);
}

void textToNumber_measures(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    forEach(state, texts(measures(), german),
            [&](const std::string& text) { return convert::parseNumber(text, german); });
}

/// The same numbers followed by a blank, which only the general parser reads.
void textToNumber_measures_general(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    std::vector<std::string> inputs = texts(measures(), german);
    for (std::string& input : inputs)
        input += ' ';
    forEach(state, inputs, [&](const std::string& text) { return convert::parseNumber(text, german); });
}

void textToNumber_products_standard(benchmark::State& state)
{
    forEach(state, texts(products(), Regional::named("en-US")), standardNumber);
}

void textToNumber_products(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    forEach(state, texts(products(), german),
            [&](const std::string& text) { return convert::parseNumber(text, german); });
}

void numberToSql(benchmark::State& state)
{
    forEach(state, texts(products(), Regional::named("de-DE")),
            [](const std::string& text) { return convert::toSqlNumber(text, "."); });
}

void numberPattern_standard(benchmark::State& state)
{
    forEach(state, products(), [](double number) {
        std::array<char, 32> buffer;
        char* const last = buffer.data() + buffer.size();
        return std::string{buffer.data(), std::to_chars(buffer.data(), last, number, std::chars_format::fixed, 3).ptr};
    });
}

void numberPattern(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    forEach(state, products(), [&](double number) { return format::number(number, "0.000", german); });
}

void numberPattern_measures(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    forEach(state, measures(), [&](double number) { return format::number(number, "0.00", german); });
}

/// The same output by a pattern that only the general writer knows.
void numberPattern_general(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    forEach(state, products(), [&](double number) { return format::number(number, "0.000;", german); });
}

std::vector<Date> days()
{
    std::mt19937_64 engine{3};
    std::uniform_int_distribution<std::int32_t> day{30'000, 60'000};
    std::vector<Date> dates(inputCount);
    for (Date& date : dates)
        date = Date{static_cast<double>(day(engine))};
    return dates;
}

/// The peer of the date pattern: the same three numbers and two points, by the standard conversion.
std::string standardDateText(Date date)
{
    const CivilTime parts = toCivil(date);
    std::array<char, 16> buffer;
    char* at = buffer.data();
    char* const last = buffer.data() + buffer.size();
    for (const std::int32_t number : {parts.day, parts.month}) {
        if (number < 10) *at++ = '0';
        at = std::to_chars(at, last, number).ptr;
        *at++ = '.';
    }
    return {buffer.data(), std::to_chars(at, last, parts.year).ptr};
}

void datePattern_standard(benchmark::State& state)
{
    forEach(state, days(), standardDateText);
}

void datePattern(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    forEach(state, days(), [&](Date date) { return format::date(date, "dd.mm.yyyy", german); });
}

/// The peer of reading a date: the same three numbers by the standard conversion.
Date standardDate(const std::string& text)
{
    std::int32_t day = 0;
    std::int32_t month = 0;
    std::int32_t year = 0;
    const char* const end = text.data() + text.size();
    const char* at = std::from_chars(text.data(), end, day).ptr;
    at = std::from_chars(at + 1, end, month).ptr;
    std::from_chars(at + 1, end, year);
    return makeDate(year, month, day);
}

void textToDate_standard(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    std::vector<std::string> inputs;
    for (const Date date : days())
        inputs.push_back(convert::toText(date, german));
    forEach(state, inputs, [](const std::string& text) { return standardDate(text); });
}

void textToDate(benchmark::State& state)
{
    const Regional german = Regional::named("de-DE");
    std::vector<std::string> inputs;
    for (const Date date : days())
        inputs.push_back(convert::toText(date, german));
    forEach(state, inputs, [&](const std::string& text) { return convert::parseDate(text, german); });
}

BENCHMARK(numberToText_measures_standard);
BENCHMARK(numberToText_measures);
BENCHMARK(numberToText_products_standard);
BENCHMARK(numberToText_products);
BENCHMARK(textToNumber_measures_standard);
BENCHMARK(textToNumber_measures);
BENCHMARK(textToNumber_measures_general);
BENCHMARK(textToNumber_products_standard);
BENCHMARK(textToNumber_products);
BENCHMARK(numberToSql);
BENCHMARK(numberPattern_standard);
BENCHMARK(numberPattern);
BENCHMARK(numberPattern_measures);
BENCHMARK(numberPattern_general);
BENCHMARK(datePattern_standard);
BENCHMARK(datePattern);
BENCHMARK(textToDate_standard);
BENCHMARK(textToDate);

} // namespace
} // namespace tamarok
