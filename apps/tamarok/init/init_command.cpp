#include "init/init_command.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "init/interrupt.h"
#include "init/new_file.h"
#include "print/progress_bar.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

namespace tamarok::cli {

namespace {

/// Fills the new file; the connection is closed when it returns.
void fill(const NewFile& file, const InitOptions& options)
{
    const InterruptScope interrupts;
    embedded::OpenOptions create;
    create.mode = embedded::OpenMode::Build;
    const ado::ConnectionRef connection = embedded::connect(file.path(), create);
    ProgressBar bar;
    database::ReferenceOptions reference;
    reference.logs = options.logs;
    reference.seed = options.seed;
    database::createReferenceDatabase(*connection, reference, [&bar](const database::Progress& progress) {
        InterruptScope::check();
        bar.show(progress);
    });
    InterruptScope::check();
    connection->Close();
}

} // namespace

int runInit(const InitOptions& options, Output& output)
{
    using Time = std::chrono::steady_clock;
    NewFile file{options.file, options.force};
    const Time::time_point start = Time::now();
    fill(file, options);
    file.complete();
    const double seconds = std::max(std::chrono::duration<double>(Time::now() - start).count(), 0.001);
    const auto tenths = static_cast<std::int64_t>(seconds * 10.0);
    output.write(options.file + ": " + std::to_string(options.logs) + " logs in " + std::to_string(tenths / 10) + "." +
                 std::to_string(tenths % 10) + " s, " +
                 std::to_string(static_cast<std::int64_t>(static_cast<double>(options.logs) / seconds)) + " logs/s\n");
    output.flush();
    return 0;
}

} // namespace tamarok::cli
