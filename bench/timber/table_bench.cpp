#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "turns.h"
#include "volume/csv_fields.h"
#include "volume/line_reader.h"
#include "volume/volume_table.h"

// A table of a million measured lines, beside reading the same lines and splitting them into fields:
// with the standard library alone, once into texts of their own and once into views of the line, and with
// the program's own reader.

namespace tamarok::cli {
namespace {

constexpr std::size_t lineCount = 1'000'000;

/// The table as a file of the system's temporary folder, removed at the end.
class TableFile {
public:
    TableFile() :
        path_{std::filesystem::temp_directory_path() / ("timber_table_" + std::to_string(std::random_device{}()))}
    {
        std::mt19937_64 engine{3};
        const auto between = [&](int low, int high) { return std::uniform_int_distribution<int>{low, high}(engine); };
        std::ofstream file{path_, std::ios::binary};
        file << "d;l;pieces;bark;mode\n";
        for (std::size_t line = 0; line < lineCount; ++line)
            file << between(10, 90) << ',' << between(0, 9) << ';' << between(2, 19) << ',' << between(0, 9) << ';'
                 << between(1, 9) << ';' << between(0, 9) << ',' << between(0, 9) << (line % 2 == 0 ? ";%\n" : ";cm\n");
    }
    ~TableFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    TableFile(const TableFile&) = delete;
    TableFile& operator=(const TableFile&) = delete;

    const std::filesystem::path& path() const noexcept { return path_; }

private:
    std::filesystem::path path_;
};

const std::filesystem::path& table()
{
    static const TableFile file;
    return file.path();
}

template <class Field>
std::size_t readAndSplit()
{
    std::ifstream file{table(), std::ios::binary};
    std::size_t count = 0;
    std::vector<Field> fields;
    for (std::string line; std::getline(file, line);) {
        fields.clear();
        std::string_view rest{line};
        for (std::size_t end = rest.find(';'); end != std::string_view::npos; end = rest.find(';')) {
            fields.emplace_back(rest.substr(0, end));
            rest.remove_prefix(end + 1);
        }
        fields.emplace_back(rest);
        count += fields.size();
    }
    return count;
}

std::size_t readAndSplitByProgram()
{
    std::filebuf file;
    file.open(table(), std::ios::in | std::ios::binary);
    LineReader lines{file};
    CsvFields fields{';'};
    std::size_t count = 0;
    for (std::string_view line; lines.next(line);)
        if (fields.split(line)) count += fields.size();
    return count;
}

void measureTable()
{
    std::filebuf file;
    file.open(table(), std::ios::in | std::ios::binary);
    LineReader lines{file};
    VolumeTable volumes{{}};
    std::size_t bytes = 0;
    const std::int64_t leftOut = volumes.measure(
        lines, [&](std::string_view block) { bytes += block.size(); }, [](std::int64_t, std::string_view) {},
        [](std::int64_t, std::int64_t) {});
    if (leftOut != 0) std::abort();
    benchmark::DoNotOptimize(bytes);
}

void measureBeside(benchmark::State& state, std::size_t (*split)())
{
    table();
    bench::compare(
        state, lineCount, [&] { benchmark::DoNotOptimize(split()); }, measureTable);
}
BENCHMARK_CAPTURE(measureBeside, standard_texts, readAndSplit<std::string>)->UseManualTime()->Iterations(15);
BENCHMARK_CAPTURE(measureBeside, standard_views, readAndSplit<std::string_view>)->UseManualTime()->Iterations(15);
BENCHMARK_CAPTURE(measureBeside, own_reader, readAndSplitByProgram)->UseManualTime()->Iterations(15);

} // namespace
} // namespace tamarok::cli
