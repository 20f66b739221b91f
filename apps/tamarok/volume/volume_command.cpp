#include "volume/volume_command.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>
#include <unistd.h>

#include "host_platform.h"
#include "print/progress_bar.h"
#include "usage_error.h"
#include "volume/line_reader.h"
#include "volume/measure_ranges.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

constexpr std::int32_t cannotRead = errors::pathAccess;

/// Shows the progress through a table. Nothing is drawn where standard output is a terminal, too: the bar
/// would stand between its lines.
class TableProgress {
public:
    explicit TableProgress(std::int64_t bytes) : bytes_{bytes}
    {
        if (bytes > 0 && ::isatty(STDOUT_FILENO) == 0) bar_.emplace();
    }

    void show(std::int64_t lines, std::int64_t bytes)
    {
        const auto now = Time::now();
        if (!bar_ || bytes <= 0 || now - shown_ < interval) return;
        shown_ = now;
        const double share = static_cast<double>(bytes_) / static_cast<double>(bytes);
        bar_->show({"lines", lines, static_cast<std::int64_t>(static_cast<double>(lines) * share)});
    }

    /// Prints a line on standard error in place of the bar.
    void print(std::string_view message)
    {
        if (bar_ && ::isatty(STDERR_FILENO) == 1) std::cerr << "\r\x1b[K";
        std::cerr << message << '\n';
    }

private:
    using Time = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds interval{100};
    std::optional<ProgressBar> bar_;
    std::int64_t bytes_;
    Time::time_point shown_; ///< last time, long ago at first
};

[[noreturn]] void fail(const std::string& file, const std::string& reason)
{
    throw Error{cannotRead, "cannot read " + file + ": " + reason, "volume"};
}

/// Size of a file in bytes; 0 for anything else that can be read, such as a pipe.
std::int64_t sizeOf(const std::string& file)
{
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (error) fail(file, error.message());
    if (std::filesystem::is_directory(status)) fail(file, "it is a folder");
    if (!std::filesystem::is_regular_file(status)) return 0;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) fail(file, error.message());
    return static_cast<std::int64_t>(size);
}

int measureTable(const VolumeOptions& options, Output& output)
{
    TableProgress progress{sizeOf(options.csv)};
    std::filebuf file;
    if (file.open(options.csv, std::ios::in | std::ios::binary) == nullptr)
        fail(options.csv, std::generic_category().message(errno));
    LineReader lines{file};
    VolumeTable table{options.settings};
    try {
        const std::int64_t leftOut = table.measure(
            lines, [&](std::string_view block) { output.write(block); },
            [&](std::int64_t line, std::string_view fault) {
                progress.print("tamarok: line " + std::to_string(line) + ": " + std::string{fault});
            },
            [&](std::int64_t done, std::int64_t bytes) { progress.show(done, bytes); });
        output.flush();
        return leftOut == 0 ? 0 : 1;
    } catch (Error& error) {
        throw error.addContext(options.csv);
    }
}

/// The settings by which the options' numbers are read. They have no grouping: "32,5" must never be read
/// as 325.
Regional numberSettings(const VolumeSettings& settings)
{
    Regional regional = commandPlatform(settings.locale).regional;
    regional.thousands.clear();
    return regional;
}

/// The number of an option with the separator of `regional`; Error 13, naming the option, where it is none.
std::string entered(std::string_view option, const std::string& number, const Regional& regional)
{
    std::string unified = unifiedSeparator(number, regional);
    if (convert::parseNumber(unified, regional)) return unified;
    throw Error{errors::typeMismatch,
                std::string{option} + ": \"" + number +
                    "\" is no number; decimals have a comma or a point, and there is no grouping",
                "volume"};
}

void checkRange(const Measures& measures, const Regional& regional)
{
    if (const auto fault = findRangeFault(measures, regional)) throw UsageError{fault->describe(measures)};
}

int measureLine(const VolumeOptions& options, Output& output)
{
    const VolumeSettings& settings = options.settings;
    const Regional regional = numberSettings(settings);
    const std::string pieces = entered("--pieces", settings.pieces, regional);
    const std::string diameter = entered("--d", *options.diameter, regional);
    const std::string length = entered("--l", *options.length, regional);
    const std::string bark = entered("--bark", settings.bark, regional);
    checkRange({pieces, diameter, length, bark, settings.mode}, regional);
    const PlatformScope scope{commandPlatform(settings.locale)}; // its grouping is that of the pattern
    output.write(Comm_Set{}.CalculateRundKubatur(pieces, diameter, length, bark, false, settings.mode, false,
                                                 settings.patternOrPlaces(), settings.places) +
                 "\n");
    output.flush();
    return 0;
}

/// Of a line that is not there yet: bark in cm may be as much as any diameter allows.
constexpr std::string_view greatestDiameter = "999";

/// Checks the options that replace missing fields, so that an error is reported once and not for each line.
void checkDefaults(const VolumeSettings& settings)
{
    const Regional regional = numberSettings(settings);
    const std::string pieces = entered("--pieces", settings.pieces, regional);
    const std::string bark = entered("--bark", settings.bark, regional);
    checkRange({pieces, greatestDiameter, "0", bark, settings.mode}, regional);
}

} // namespace

int runVolume(const VolumeOptions& options, Output& output)
{
    if (!options.csv.empty()) {
        checkDefaults(options.settings);
        return measureTable(options, output);
    }
    if (!options.diameter || !options.length) throw UsageError{"a diameter and a length are needed, or --csv FILE"};
    if (options.settings.bark != "0" && options.settings.mode.empty())
        throw UsageError{"--bark needs --mode % or --mode cm"};
    return measureLine(options, output);
}

} // namespace tamarok::cli
