#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tamarok/tmkvar.h"

namespace tamarok::cli {

/// The label of a column in the session's language; type and id, such as "LOG 36", where it has none.
std::string columnHeader(const std::string& type, std::int16_t id, const TmkVar& session);

/// The labels of several columns.
std::vector<std::string> columnHeaders(const std::string& type, const std::vector<std::int16_t>& ids,
                                       const TmkVar& session);

} // namespace tamarok::cli
