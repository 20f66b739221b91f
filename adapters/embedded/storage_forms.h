#pragma once

#include <cstdint>
#include <span>

#include "tamarok_tsql/types.h"

#include "tamarok/ado_backend.h"

/// Finds values that are stored in the form in which a caller passes them.
namespace tamarok::embedded {

/// True if every parameter can be stored in a column of its type as it is, without conversion and check. Conservative:
/// returns false when unsure.
/// @param types   for each "?" of the statement, the type of its column
/// @param wanted  for each "?" of the statement, the index of its parameter
bool areStoredUnchanged(std::span<const tsql::Type> types, std::span<const std::int32_t> wanted,
                        std::span<const ado::Parameter> parameters);

} // namespace tamarok::embedded
