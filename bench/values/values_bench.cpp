// Readers, writers' texts and conversions as forms call them, each beside its peer in the same run: the
// standard library's conversion of the same inputs plus one copy of the text, and for the readers the
// reading of the field itself. Counter `ratio` is what counts; ROWS in the environment sets the number
// of rows (default 1,000,000).

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "standard_conversions.h"
#include "tamarok_embedded/connect.h"
#include "turns.h"

#include "tamarok/comm_conv.h"
#include "tamarok/comm_get.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace {

using namespace tamarok;
using bench::compare;
using bench::measures;
using bench::standardNumber;
using bench::standardText;

PlatformScope germanScope()
{
    Platform platform;
    platform.regional = Regional::named("de-DE");
    return PlatformScope{std::move(platform)};
}

void numberToText(benchmark::State& state)
{
    const PlatformScope scope = germanScope();
    const Comm_Get get;
    std::vector<double> numbers = measures();
    std::vector<Variant> values{numbers.begin(), numbers.end()};
    compare(
        state, numbers.size(),
        [&] {
            for (const double number : numbers)
                benchmark::DoNotOptimize(standardText(number));
        },
        [&] {
            for (const Variant& value : values)
                benchmark::DoNotOptimize(get.Get_Val(value));
        });
}

void numberToPlainText(benchmark::State& state)
{
    const Comm_Get get;
    std::vector<double> numbers = measures();
    std::vector<Variant> values{numbers.begin(), numbers.end()};
    compare(
        state, numbers.size(),
        [&] {
            for (const double number : numbers)
                benchmark::DoNotOptimize(standardText(number));
        },
        [&] {
            for (const Variant& value : values)
                benchmark::DoNotOptimize(get.Get_Number(value));
        });
}

/// The texts of the measures with a point for the standard library and with a comma for the readers.
struct Texts {
    Texts()
    {
        for (const double number : measures()) {
            plain.push_back(standardText(number));
            std::string german = plain.back();
            std::replace(german.begin(), german.end(), '.', ',');
            values.emplace_back(german);
            typed.push_back(std::move(german));
        }
    }
    std::vector<std::string> plain;
    std::vector<std::string> typed;
    std::vector<Variant> values;
};

void textToNumber(benchmark::State& state)
{
    const PlatformScope scope = germanScope();
    const Comm_Get get;
    const Texts texts;
    compare(
        state, texts.plain.size(),
        [&] {
            for (const std::string& text : texts.plain)
                benchmark::DoNotOptimize(standardNumber(text));
        },
        [&] {
            for (const Variant& value : texts.values)
                benchmark::DoNotOptimize(get.Get_Number_N(value));
        });
}

void noComma(benchmark::State& state)
{
    const Comm_Conv conv;
    const Texts texts;
    compare(
        state, texts.plain.size(),
        [&] {
            for (const std::string& text : texts.plain)
                benchmark::DoNotOptimize(standardNumber(text));
        },
        [&] {
            for (const std::string& text : texts.typed)
                benchmark::DoNotOptimize(conv.NoComma(text, "."));
        });
}

BENCHMARK(numberToText)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(numberToPlainText)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(textToNumber)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(noComma)->UseManualTime()->Unit(benchmark::kMicrosecond);

std::size_t rowCount()
{
    const char* const rows = std::getenv("ROWS");
    return rows != nullptr ? static_cast<std::size_t>(std::strtoull(rows, nullptr, 10)) : 1'000'000;
}

/// A table of rows with a short text, a text beyond the short-string size with blanks around it, and a
/// measure; filled by doubling what is there.
ado::ConnectionRef filled(std::size_t rows)
{
    ado::ConnectionRef connection = embedded::connectInMemory();
    connection->CommandTimeout(0);
    connection->Execute("CREATE TABLE LINES (ID INT, SPECIES NVARCHAR(20), REMARK NVARCHAR(60), VOLUME FLOAT)");
    connection->Execute("INSERT INTO LINES VALUES (0, 'Fichte', '  stored beside the forest road, lot 12  ', 0.537)");
    for (std::size_t present = 1; present < rows; present *= 2) {
        const std::string count = std::to_string(present);
        connection->Execute("INSERT INTO LINES (ID, SPECIES, REMARK, VOLUME) SELECT ID + " + count +
                            ", SPECIES, REMARK, VOLUME FROM LINES WHERE ID < " +
                            std::to_string(std::min(present, rows - present)));
    }
    return connection;
}

struct Streams {
    ado::ConnectionRef connection;
    std::size_t rows = 0;

    /// Reads `column` of every row; `use` gets the column.
    template <class Use>
    void read(std::string_view column, Use use) const
    {
        ado::Recordset records;
        records.Open("SELECT " + std::string{column} + " FROM LINES", connection);
        std::size_t count = 0;
        for (; !records.AtEOF(); records.MoveNext(), ++count)
            use(records.Fields());
        if (count != rows) std::abort();
    }
};

const Streams& streams()
{
    static const Streams made{filled(rowCount()), rowCount()};
    return made;
}

/// `read` reads the first field of the current row; `handed` returns the argument of Get_String.
template <class Read, class Handed>
void getString(benchmark::State& state, std::string_view column, Read read, Handed handed)
{
    const PlatformScope scope = germanScope();
    const Comm_Get get;
    const Streams& source = streams();
    compare(
        state, source.rows,
        [&] {
            source.read(column, [&](const ado::FieldCollection& fields) { benchmark::DoNotOptimize(read(fields)); });
        },
        [&] {
            source.read(column, [&](const ado::FieldCollection& fields) {
                benchmark::DoNotOptimize(get.Get_String(handed(fields)));
            });
        });
}

void getStringOfValue(benchmark::State& state, const char* column)
{
    const auto value = [](const ado::FieldCollection& fields) { return fields.Item(0).Value(); };
    getString(state, column, value, value);
}

/// A reference to the field, as late-bound callers have it.
void getStringOfField(benchmark::State& state, const char* column)
{
    getString(
        state, column, [](const ado::FieldCollection& fields) { return fields.share(0)->Value(); },
        [](const ado::FieldCollection& fields) { return fields.share(0); });
}

void eachText(benchmark::internal::Benchmark* readers)
{
    readers->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);
}

/// The look-up of fields by name among 40 columns, beside a search through the columns.
void fieldByName(benchmark::State& state)
{
    constexpr std::int32_t columns = 40;
    const ado::ConnectionRef connection = embedded::connectInMemory();
    std::vector<std::string> names;
    std::string statement = "SELECT ";
    for (std::int32_t column = 1; column <= columns; ++column) {
        names.push_back("COLUMN_" + std::to_string(column));
        statement += (column > 1 ? ", " : "") + std::to_string(column) + " AS " + names.back();
    }
    ado::Recordset records;
    records.Open(statement, connection);
    const ado::FieldCollection& fields = records.Fields();
    const auto search = [&](std::string_view name) {
        std::int32_t ordinal = 0;
        while (!text::equalsNoCase(fields.Item(ordinal).Name(), name))
            ++ordinal;
        return &fields.Item(ordinal);
    };
    compare(
        state, names.size(),
        [&] {
            for (const std::string& name : names)
                benchmark::DoNotOptimize(search(name));
        },
        [&] {
            for (const std::string& name : names)
                benchmark::DoNotOptimize(&fields.Item(name));
        });
}

BENCHMARK(fieldByName)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(getStringOfValue, short_text, "SPECIES")->Apply(eachText);
BENCHMARK_CAPTURE(getStringOfValue, long_text, "REMARK")->Apply(eachText);
BENCHMARK_CAPTURE(getStringOfField, short_text, "SPECIES")->Apply(eachText);
BENCHMARK_CAPTURE(getStringOfField, long_text, "REMARK")->Apply(eachText);

} // namespace
