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

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/round_wood.h"

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

/// The number of an option; Error 13, naming the option, where it is none.
double entered(std::string_view option, const std::string& number, const Regional& regional)
{
    if (const auto read = convert::parseNumber(unifiedSeparator(number, regional), regional)) return *read;
    throw Error{errors::typeMismatch,
                std::string{option} + ": \"" + number +
                    "\" is no number; decimals have a comma or a point, and there is no grouping",
                "volume"};
}

void checkRange(const timber::RoundWood& wood, const MeasureTexts& texts)
{
    if (const RangeFault* const fault = findRangeFault(wood)) throw UsageError{fault->describe(texts)};
}

int measureLine(const VolumeOptions& options, Output& output)
{
    const VolumeSettings& settings = options.settings;
    const Regional regional = numberSettings(settings);
    timber::RoundWood wood;
    wood.pieces = entered("--pieces", settings.pieces, regional);
    wood.diameter = entered("--d", *options.diameter, regional);
    wood.length = entered("--l", *options.length, regional);
    wood.bark = entered("--bark", settings.bark, regional);
    wood.mode = timber::barkMode(settings.mode);
    checkRange(wood, {settings.pieces, *options.diameter, *options.length, settings.bark});
    const Platform platform = commandPlatform(settings.locale); // its grouping is that of the pattern
    output.write(timber::roundWoodVolume(wood, settings.patternOrPlaces(), settings.places, platform.regional) + "\n");
    output.flush();
    return 0;
}

/// Of a line that is not there yet: bark in cm may be as much as any diameter allows.
constexpr double greatestDiameter = 999;

/// Checks the options that replace missing fields, so that an error is reported once and not for each line.
void checkDefaults(const VolumeSettings& settings)
{
    const Regional regional = numberSettings(settings);
    timber::RoundWood wood;
    wood.pieces = entered("--pieces", settings.pieces, regional);
    wood.diameter = greatestDiameter;
    wood.bark = entered("--bark", settings.bark, regional);
    wood.mode = timber::barkMode(settings.mode);
    checkRange(wood, {settings.pieces, {}, {}, settings.bark});
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
