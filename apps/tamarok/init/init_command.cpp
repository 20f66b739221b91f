#include "init/init_command.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "connections.h"
#include "init/interrupt.h"
#include "print/progress_bar.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_database/transfer.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_embedded/shown_text.h"
#include "usage_error.h"

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

/// Passes the progress on to a bar, and ends the work after a signal.
database::ProgressListener drawing(ProgressBar& bar)
{
    return [&bar](const database::Progress& progress) {
        InterruptScope::check();
        bar.show(progress);
    };
}

void fill(ado::Connection& connection, const InitOptions& options, ProgressBar& bar)
{
    if (options.empty) return database::createMasterDatabase(connection, drawing(bar));
    database::ReferenceOptions reference;
    reference.logs = options.logs;
    reference.records = options.records;
    reference.seed = options.seed;
    database::createReferenceDatabase(connection, reference, drawing(bar));
    InterruptScope::check();
}

void makeFile(const InitOptions& options)
{
    embedded::NewDatabase file = begin(options);
    {
        ProgressBar bar;
        fill(*file.connection(), options, bar);
    }
    file.complete();
}

/// The rows are made in memory, so that they are those of a file, and then moved.
void fillServer(const InitOptions& options)
{
    const auto server = database::serverStore(openOdbc(*options.odbc));
    ProgressBar bar;
    const auto sample = database::embeddedStore(embedded::connectInMemory());
    fill(*sample->connection(), options, bar);
    database::loadReferenceDatabase(*sample, *server, drawing(bar));
}

} // namespace

int runInit(const InitOptions& options, Output& output)
{
    using Time = std::chrono::steady_clock;
    if (options.file.empty() && !options.odbc) throw UsageError{"init: name a FILE, or a server with --odbc"};
    if (options.odbc && options.force)
        throw UsageError{"init: --force replaces files; a server's database must be empty"};
    const InterruptScope interrupts;
    const Time::time_point start = Time::now();
    if (options.odbc)
        fillServer(options);
    else
        makeFile(options);
    const double seconds = std::max(std::chrono::duration<double>(Time::now() - start).count(), 0.001);
    const auto tenths = static_cast<std::int64_t>(seconds * 10.0);
    const std::int64_t logs = options.empty ? 0 : options.logs;
    output.write((options.odbc ? std::string{"The server's database"} : embedded::shownText(options.file)) + ": " +
                 std::to_string(logs) + " logs in " + std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) +
                 " s, " + std::to_string(static_cast<std::int64_t>(static_cast<double>(logs) / seconds)) + " logs/s\n");
    output.flush();
    return 0;
}

} // namespace tamarok::cli
