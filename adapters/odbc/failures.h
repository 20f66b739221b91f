#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "odbc_api.h"

#include "tamarok/error.h"

/// Failures of drivers and servers as errors of the provider.
namespace tamarok::odbc {

inline constexpr std::string_view sourceName = "Tamarok ODBC";

/// Numbers of the server that this back end raises itself.
namespace native {
inline constexpr std::int32_t lockTimeout = 1222;
inline constexpr std::int32_t commitWithoutBegin = 3902;
inline constexpr std::int32_t rollbackWithoutBegin = 3903;
} // namespace native

/// One record of a handle's diagnostics.
struct Diagnostic {
    std::string state; ///< SQLSTATE
    std::int32_t native = 0;
    std::string text; ///< without the names of driver and server in brackets before it
};

/// Reads all records of the last call on a handle, and of it alone.
std::vector<Diagnostic> readDiagnostics(SQLSMALLINT type, SQLHANDLE handle);

/// The error of a failed call: the first record that is no mere message, with the provider's number of its kind.
/// 0x80040E31 for a time-out, 0x80040E2F for a broken constraint, 0x80040E14 for a refused statement, else 0x80004005.
Error failure(const std::vector<Diagnostic>& diagnostics);

/// A failure of this back end itself.
Error providerFailure(std::string description);
/// What the rows or the server do not support: Error 3251.
Error unsupported(std::string description);

/// Whether one of the records is more than a message or a warning.
bool tellsFailure(const std::vector<Diagnostic>& diagnostics);

} // namespace tamarok::odbc
