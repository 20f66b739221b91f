#pragma once

#include <string_view>

#include "tamarok/backend_registry.h"

#pragma GCC visibility push(default)

namespace tamarok::odbc {

/// The name of the back end in the property Provider of a connection text.
inline constexpr std::string_view provider = "Tamarok.Odbc";

/// Registers the back end under its own name and under those of the usual OLE DB providers for SQL Server (SQLOLEDB,
/// SQLNCLI11, MSOLEDBSQL) and for ODBC (MSDASQL), so that their connection texts work as they are.
void registerBackend(ado::BackendRegistry& registry);

} // namespace tamarok::odbc

#pragma GCC visibility pop
