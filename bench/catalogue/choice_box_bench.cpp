#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/comm_csel.h"
#include "tamarok/controls.h"

// Filling the boxes of columns from the embedded database: one statement for the labels and one entry for each column.
// The peer is the statement alone.

namespace tamarok {
namespace {

const TmkVar& session()
{
    static const TmkVar filled = [] {
        TmkVar made;
        made.db_ADO = embedded::connectInMemory();
        made.strLanguage = "GERMAN";
        database::createReferenceDatabase(*made.db_ADO, {.logs = 0, .records = 0});
        return made;
    }();
    return filled;
}

void fillBox(benchmark::State& state, const char* key)
{
    const TmkVar& with = session();
    const Comm_CSel csel;
    controls::ComboBox box;
    for (auto _ : state)
        csel.AddComboTyp(key, box, with, false);
    state.counters["entries"] = box.ListCount();
}
BENCHMARK_CAPTURE(fillBox, logList, "LOG")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(fillBox, harvestRecords, "BBHAB")->Unit(benchmark::kMicrosecond);

void readLabels(benchmark::State& state)
{
    const TmkVar& with = session();
    const Comm_CSel csel;
    std::string labels;
    for (int number = 20001; number <= 20580; ++number)
        labels += (labels.empty() ? "" : ",") + std::to_string(number);
    for (auto _ : state)
        benchmark::DoNotOptimize(csel.LoadColString(labels, with, false));
}
BENCHMARK(readLabels)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tamarok
