#pragma once

#include <string>
#include <string_view>

#include "tamarok_embedded/connect.h"

namespace tamarok::embedded {

/// What a connection text names: the file and how to open it.
struct ConnectionTarget {
    std::string file;
    OpenOptions options;
};

/// Takes a connection text apart; see connectText.
ConnectionTarget parseConnectionText(std::string_view text);

/// The connection text of an open connection, by which it can be opened again.
std::string composeConnectionText(const std::string& file, const OpenOptions& options);

} // namespace tamarok::embedded
