#pragma once

#include <string>
#include <string_view>

#include "tamarok_embedded/connect.h"

namespace tamarok::embedded {

struct ConnectionTarget {
    std::string file;
    OpenOptions options;
};

/// Takes a connection text apart; see connectText.
ConnectionTarget parseConnectionText(std::string_view text);

std::string composeConnectionText(const std::string& file, const OpenOptions& options);

} // namespace tamarok::embedded
