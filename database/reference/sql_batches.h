#pragma once

#include <string_view>
#include <vector>

namespace tamarok::database {

/// Splits a SQL script into its batches at the lines that hold the single word GO. Empty batches are dropped.
/// @param script  must outlive the result, whose views point into it
std::vector<std::string_view> splitBatches(std::string_view script);

} // namespace tamarok::database
