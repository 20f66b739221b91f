#include "init/init_command.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "init/interrupt.h"
#include "print/progress_bar.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_embedded/shown_text.h"

#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

/// Begins the new file; a refusal names the option that replaces an existing one.
embedded::NewDatabase begin(const InitOptions& options)
{
    using Existing = embedded::NewDatabase::Existing;
    try {
        return embedded::NewDatabase{options.file, options.force ? Existing::Replace : Existing::Refuse};
    } catch (Error& error) {
        if (error.number == errors::fileExists) error.description += " --force replaces it.";
        throw;
    }
}

void fill(const embedded::NewDatabase& file, const InitOptions& options)
{
    ProgressBar bar;
    database::ReferenceOptions reference;
    reference.logs = options.logs;
    reference.records = options.records;
    reference.seed = options.seed;
    database::createReferenceDatabase(*file.connection(), reference, [&bar](const database::Progress& progress) {
        InterruptScope::check();
        bar.show(progress);
    });
    InterruptScope::check();
}

} // namespace

int runInit(const InitOptions& options, Output& output)
{
    using Time = std::chrono::steady_clock;
    const InterruptScope interrupts;
    embedded::NewDatabase file = begin(options);
    const Time::time_point start = Time::now();
    fill(file, options);
    file.complete();
    const double seconds = std::max(std::chrono::duration<double>(Time::now() - start).count(), 0.001);
    const auto tenths = static_cast<std::int64_t>(seconds * 10.0);
    output.write(embedded::shownText(options.file) + ": " + std::to_string(options.logs) + " logs in " +
                 std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s, " +
                 std::to_string(static_cast<std::int64_t>(static_cast<double>(options.logs) / seconds)) + " logs/s\n");
    output.flush();
    return 0;
}

} // namespace tamarok::cli
