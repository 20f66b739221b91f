#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tamarok/tmkvar.h"

namespace tamarok::cli {

/// Converts what the user typed for columns to their ids: a whole number is an id, anything else a label in the
/// session's language or its short form. Throws UnknownColumn for a label that no column or more than one has; an
/// id without a column is left to the list.
/// @param words  numbers from 1 to 32767, or labels
std::vector<std::int16_t> columnIds(const std::string& type, const std::vector<std::string>& words,
                                    const TmkVar& session);

} // namespace tamarok::cli
