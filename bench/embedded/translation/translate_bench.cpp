#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

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
                table = &tables_[line];
                table->name = line;
                continue;
            }
            const std::size_t blank = line.find(' ', 2);
            table->columns.push_back({line.substr(2, blank - 2), parseDeclaredType(line.substr(blank + 1))});
        }
    }

    const Table* table(std::string_view name) const override
    {
        const auto found = tables_.find(name);
        return found == tables_.end() ? nullptr : &found->second;
    }

private:
    std::map<std::string, Table, std::less<>> tables_;
};

/// The names and keywords of a statement.
std::vector<std::string_view> wordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    for (const Token& token : tokenize(SourceText(text))) {
        if (token.kind == TokenKind::Name) words.push_back(text.substr(token.offset, token.length));
    }
    return words;
}

void tokenizeList(benchmark::State& state)
{
    const std::string text = readFile("log_list.sql");
    for (auto _ : state)
        benchmark::DoNotOptimize(tokenize(SourceText(text)));
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

/// The words of the list, looked up among the keywords.
void findKeywords(benchmark::State& state)
{
    const std::string text = readFile("log_list.sql");
    const std::vector<std::string_view> words = wordsOf(text);
    for (auto _ : state) {
        for (const std::string_view word : words)
            benchmark::DoNotOptimize(findKeyword(word));
    }
}
BENCHMARK(findKeywords);

/// The plain code for the same: a binary search over all keywords.
void findKeywordsByBinarySearch(benchmark::State& state)
{
    const std::string text = readFile("log_list.sql");
    const std::vector<std::string_view> words = wordsOf(text);
    std::vector<std::string_view> keywords;
    for (int i = 1; i <= static_cast<int>(Keyword::Work); ++i)
        keywords.push_back(keywordText(static_cast<Keyword>(i)));
    for (auto _ : state) {
        for (const std::string_view word : words) {
            std::array<char, 12> upper{};
            if (word.size() > upper.size()) continue;
            std::ranges::transform(word, upper.begin(),
                                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
            benchmark::DoNotOptimize(std::ranges::binary_search(keywords, std::string_view(upper.data(), word.size())));
        }
    }
}
BENCHMARK(findKeywordsByBinarySearch);

constexpr int nodeCount = 1000;

void nodesInArena(benchmark::State& state)
{
    for (auto _ : state) {
        Arena arena(16 * 1024);
        for (int i = 0; i < nodeCount; ++i)
            benchmark::DoNotOptimize(arena.make<ColumnExpr>());
    }
}
BENCHMARK(nodesInArena);

/// The plain code for the same: an owner for each node.
void nodesOnHeap(benchmark::State& state)
{
    for (auto _ : state) {
        std::vector<std::unique_ptr<ColumnExpr>> nodes;
        for (int i = 0; i < nodeCount; ++i)
            benchmark::DoNotOptimize(nodes.emplace_back(std::make_unique<ColumnExpr>()));
    }
}
BENCHMARK(nodesOnHeap);

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
