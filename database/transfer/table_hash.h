#pragma once

#include <cstdint>
#include <span>

#include "tamarok_database/transfer.h"

#include "tamarok/variant.h"

namespace tamarok::database {

/// Returns the hash of a row. Null, "" and 0 differ, as do 1 and True; the width of a whole number and the sign of a
/// zero do not count. Dates count to the millisecond. Error 13 for a value that no column holds.
std::uint64_t hashOf(std::span<const Variant> row);

/// Adds a row to the sum of its table.
inline void add(TableSum& sum, std::span<const Variant> row)
{
    ++sum.rows;
    sum.sum += hashOf(row);
}

} // namespace tamarok::database
