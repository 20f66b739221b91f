#include "copy/copy_command.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>

#include "connections.h"
#include "host_platform.h"
#include "init/interrupt.h"
#include "print/progress_bar.h"
#include "tamarok_database/transfer.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_embedded/shown_text.h"

#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

/// A sum as 16 hexadecimal digits.
std::string shownSum(std::uint64_t sum)
{
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(sum));
    return digits.data();
}

database::Move move(database::Store& source, database::Store& target)
{
    ProgressBar bar;
    return database::moveDatabase(source, target, [&bar](const database::Progress& progress) {
        InterruptScope::check();
        bar.show(progress);
    });
}

database::Move moveToServer(const CopyOptions& options)
{
    const auto source = database::embeddedStore(openForReading(options.file));
    const auto target = database::serverStore(openOdbc(options.odbc));
    return move(*source, *target);
}

/// Begins the new file; a refusal tells what to do.
embedded::NewDatabase begin(const std::string& file)
{
    try {
        return embedded::NewDatabase{file};
    } catch (Error& error) {
        if (error.number == errors::fileExists) error.description += " Name a new file.";
        throw;
    }
}

database::Move moveToFile(const CopyOptions& options)
{
    const auto source = database::serverStore(openOdbc(options.odbc));
    embedded::NewDatabase file = begin(options.file);
    const auto target = database::embeddedStore(file.connection());
    database::Move moved = move(*source, *target);
    InterruptScope::check();
    file.complete();
    return moved;
}

void print(const database::Move& moved, double seconds, const CopyOptions& options, Output& output)
{
    const auto printer = makeListPrinter(
        options.format, output, {"Table", "Rows of source", "Sum of source", "Rows of target", "Sum of target"});
    std::int64_t rows = 0;
    for (const database::MovedTable& table : moved.tables) {
        printer->row(
            {table.name, table.source.rows, shownSum(table.source.sum), table.target.rows, shownSum(table.target.sum)});
        rows += table.target.rows;
    }
    printer->finish();
    for (const std::string& omission : moved.omissions)
        std::cerr << "tamarok: not copied: " << embedded::shownText(omission) << '\n';
    const auto tenths = static_cast<std::int64_t>(seconds * 10.0);
    std::cerr << "tamarok: " << moved.tables.size() << " tables with " << rows << " rows in " << tenths / 10 << '.'
              << tenths % 10 << " s; both sides are the same\n";
}

} // namespace

int runCopy(const CopyOptions& options, Output& output)
{
    using Time = std::chrono::steady_clock;
    const PlatformScope scope{commandPlatform({})};
    const InterruptScope interrupts;
    const Time::time_point start = Time::now();
    const database::Move moved = options.fromOdbc ? moveToFile(options) : moveToServer(options);
    print(moved, std::chrono::duration<double>(Time::now() - start).count(), options, output);
    return 0;
}

} // namespace tamarok::cli
