#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::cli::check {

/// The rows of a statement, as texts; Null is empty.
std::vector<std::vector<std::string>> readTexts(const ado::ConnectionRef& connection, std::string_view statement);

/// The first value of a statement as text; empty for Null and for no row.
std::string readText(const ado::ConnectionRef& connection, std::string_view statement);

/// Runs a statement and reads its rows to their end. @return their number
std::int64_t countRows(const ado::ConnectionRef& connection, std::string_view statement);

} // namespace tamarok::cli::check
