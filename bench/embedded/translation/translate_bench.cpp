#include <benchmark/benchmark.h>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "tamarok_tsql/names.h"
#include "tamarok_tsql/parsed_batch.h"
#include "tamarok_tsql/schema.h"
#include "token.h"
#include "translation/step.h"

/// Translation of a log list with 40 columns over 20 joins. `compare.py` beside this file sets the
/// figures against a general transpiler on the same text.
namespace {

using namespace tamarok::tsql;

std::string readFile(const std::string& name)
{
    std::ifstream file(std::string(TAMAROK_BENCH_DATA) + "/" + name);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The tables of tables.txt: a table's name on a line, its columns indented below it.
class FileSchema final : public Schema {
public:
    FileSchema()
    {
        std::ifstream file(std::string(TAMAROK_BENCH_DATA) + "/tables.txt");
        Table* table = nullptr;
        for (std::string line; std::getline(file, line);) {
            if (!line.starts_with("  ")) {
                table = &tables_[nameHash(line)];
                table->name = line;
                continue;
            }
            const std::size_t blank = line.find(' ', 2);
            table->columns.push_back({line.substr(2, blank - 2), parseDeclaredType(line.substr(blank + 1))});
        }
        for (auto& entry : tables_)
            entry.second.indexColumns();
    }

    const Table* table(std::string_view name) const override
    {
        const auto found = tables_.find(nameHash(name));
        return found == tables_.end() ? nullptr : &found->second;
    }

private:
    std::map<std::uint32_t, Table> tables_;
};

void tokenizeList(benchmark::State& state)
{
    const std::string text = readFile("log_list.sql");
    for (auto _ : state)
        benchmark::DoNotOptimize(tokenize(text));
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(tokenizeList);

void parseList(benchmark::State& state)
{
    const std::string text = readFile("log_list.sql");
    for (auto _ : state)
        benchmark::DoNotOptimize(ParsedBatch(text).steps());
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(parseList);

void parseAndTranslateList(benchmark::State& state)
{
    const std::string text = readFile("log_list.sql");
    const FileSchema schema;
    for (auto _ : state) {
        benchmark::DoNotOptimize(tamarok::embedded::translateStep(ParsedBatch(text), 0, schema, DateOrder::Mdy));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(parseAndTranslateList);

/// The limit of the machine for this text: one copy of it.
void copyList(benchmark::State& state)
{
    const std::string text = readFile("log_list.sql");
    for (auto _ : state) {
        std::string copy = text;
        benchmark::DoNotOptimize(copy.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(copyList);

} // namespace
