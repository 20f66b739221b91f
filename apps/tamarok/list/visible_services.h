#pragma once

#include <string>

#include "tamarok/tmkvar.h"

namespace tamarok::cli {

/// Makes what a list reads besides its tables: the list of services ("BBLTN") takes the visible ones from a temporary
/// table of their ids, which its form fills before it shows the list. Other types need nothing.
void prepareList(const std::string& type, const TmkVar& session);

} // namespace tamarok::cli
