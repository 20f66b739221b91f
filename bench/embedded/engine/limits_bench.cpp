#include <benchmark/benchmark.h>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_embedded/connect.h"
#include "turns.h"

#include "tamarok/ado_backend.h"
#include "tamarok/error.h"

/// Time against the length of the text. Each benchmark runs an input and one of twice its size turn by turn: a `ratio`
/// of 2 means that the time grows linearly with the text, 4 that it grows with the square. Where the larger one is
/// beyond a limit, a ratio near that of the lengths or below means that it is refused as fast as it is read.
namespace {

using namespace tamarok;

std::string repeated(std::string_view part, std::size_t count)
{
    std::string text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        text += part;
    return text;
}

/// A database in memory, and statements with one text parameter that are read to their end.
class Runner {
public:
    void run(std::string_view text, const std::string& parameter = {}) const
    {
        const std::vector<ado::Parameter> parameters = parametersOf(parameter);
        ado::Statement statement;
        statement.text = text;
        statement.timeoutSeconds = 0;
        statement.parameters = parameters;
        try {
            const auto cursor = connection_->session().open(statement);
            while (cursor->next())
                benchmark::DoNotOptimize(cursor->value(0));
        } catch (const Error& error) {
            benchmark::DoNotOptimize(error.number);
        }
    }

private:
    static std::vector<ado::Parameter> parametersOf(const std::string& text)
    {
        if (text.empty()) return {};
        std::vector<ado::Parameter> parameters(1);
        parameters.front().value = Variant{text};
        return parameters;
    }

    ado::ConnectionRef connection_ = embedded::connectInMemory();
};

/// A statement on a text of `size` characters and on one of twice as many.
void textFunction(benchmark::State& state, std::string_view statement, std::string (*text)(std::size_t))
{
    constexpr std::size_t size = 200000;
    const Runner runner;
    const std::string once = text(size);
    const std::string twice = text(2 * size);
    bench::compare(
        state, size, [&] { runner.run(statement, once); }, [&] { runner.run(statement, twice); });
}

std::string sameLetters(std::size_t size)
{
    return std::string(size, 'a');
}

/// A statement that is repeated or grows by `count` parts, and by twice as many.
void statementOf(benchmark::State& state, std::string (*text)(std::size_t))
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const Runner runner;
    const std::string once = text(count);
    const std::string twice = text(2 * count);
    // The number keeps the statement cache out.
    int number = 0;
    const auto numbered = [&](const std::string& statement) { return statement + " --" + std::to_string(++number); };
    bench::compare(
        state, count, [&] { runner.run(numbered(once)); }, [&] { runner.run(numbered(twice)); });
}

std::string conditions(std::string_view op, std::size_t count)
{
    return "SELECT 1 WHERE 1 = 2" + repeated(std::string{op} + "'a' = 'b'", count - 1);
}

std::string orChain(std::size_t count)
{
    return conditions(" OR ", count);
}

std::string andChain(std::size_t count)
{
    return conditions(" AND ", count);
}

std::string textSum(std::size_t count)
{
    return "SELECT 'x'" + repeated(" + 'y'", count - 1);
}

std::string numberSum(std::size_t count)
{
    return "SELECT 1" + repeated(" + CAST(1 AS INT)", count - 1);
}

std::string batchOf(std::size_t count)
{
    return repeated("SELECT 1;\n", count);
}

std::string stars(std::size_t count)
{
    return "SELECT " + repeated("*, ", count) + "1";
}

// The part is not found and shares its beginning with every place of the text.
BENCHMARK_CAPTURE(textFunction, charIndex, "SELECT CHARINDEX(REPLICATE('a', 4000) + 'b', ?)", sameLetters)
    ->UseManualTime();
BENCHMARK_CAPTURE(textFunction, patIndex, "SELECT PATINDEX('%a_a%[b-z]%', ?)", sameLetters)->UseManualTime();
BENCHMARK_CAPTURE(textFunction, like, "SELECT 1 WHERE ? LIKE '%a%a_a%b%'", sameLetters)->UseManualTime();
BENCHMARK_CAPTURE(textFunction, replace, "SELECT LEN(REPLACE(?, 'aa', 'b'))", sameLetters)->UseManualTime();

BENCHMARK_CAPTURE(statementOf, orChain, orChain)->Arg(2500)->UseManualTime();
BENCHMARK_CAPTURE(statementOf, orChainBeyondTheLimit, orChain)->Arg(50000)->UseManualTime();
BENCHMARK_CAPTURE(statementOf, andChain, andChain)->Arg(2500)->UseManualTime();
BENCHMARK_CAPTURE(statementOf, textSum, textSum)->Arg(450)->UseManualTime();
BENCHMARK_CAPTURE(statementOf, numberSum, numberSum)->Arg(400)->UseManualTime();
BENCHMARK_CAPTURE(statementOf, sumBeyondTheLimit, textSum)->Arg(50000)->UseManualTime();
BENCHMARK_CAPTURE(statementOf, batchOfStatements, batchOf)->Arg(50000)->UseManualTime();
BENCHMARK_CAPTURE(statementOf, starsBeyondTheLimit, stars)->Arg(50000)->UseManualTime();

} // namespace
