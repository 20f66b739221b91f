#pragma once

#include <optional>
#include <string>

#include "print/output.h"
#include "volume/volume_table.h"

namespace tamarok::cli {

struct VolumeOptions {
    std::optional<std::string> diameter; ///< in centimetres, as typed
    std::optional<std::string> length;   ///< in metres, as typed
    std::string csv;                     ///< file of the table; empty for a single line
    VolumeSettings settings;
};

/// Prints the volume of one line of round timber or of each line of a table. Returns the exit status: 1
/// where lines were left out. Errors: 13 for an option that is no number, 75 for a file that cannot be
/// read. Throws UsageError where neither measures nor a table are given.
int runVolume(const VolumeOptions& options, Output& output);

} // namespace tamarok::cli
