#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ado_failure.h"

namespace tamarok::ado {

/// Returns whether the options of Open or Execute say that the statement is the name of a stored procedure.
/// Error 5 for options that mean neither a text nor a procedure.
inline bool namesProcedure(std::int32_t options, std::string_view source)
{
    constexpr std::int32_t unspecified = -1;
    constexpr std::int32_t text = 1;
    constexpr std::int32_t storedProcedure = 4;
    constexpr std::int32_t unknown = 8;
    constexpr std::int32_t noRecords = 128;
    if (options == unspecified) return false;
    const std::int32_t kind = options & ~noRecords;
    if (kind != 0 && kind != text && kind != unknown && kind != storedProcedure)
        fail(errors::invalidArgument, source,
             "Options " + std::to_string(options) + " ask for neither a statement text nor a stored procedure.");
    return kind == storedProcedure;
}

} // namespace tamarok::ado
