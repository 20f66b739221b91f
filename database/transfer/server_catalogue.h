#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/table_definition.h"

#include "tamarok/ado.h"

/// The system views of a T-SQL server.
namespace tamarok::database {

using Rows = std::vector<std::vector<Variant>>;

/// Runs a query and returns its rows.
Rows rowsOf(const ado::ConnectionRef& connection, std::string_view query);

/// A value of a row as text, "" for Null.
std::string textAt(const std::vector<Variant>& row, std::size_t column);
/// A value of a row as a whole number, 0 for Null.
std::int64_t numberAt(const std::vector<Variant>& row, std::size_t column);

/// Reads tables with columns, keys and indexes, and names what they do not express.
/// Error 0x80004005 that names all tables which the embedded database cannot hold: those of other schemas than dbo,
/// with computed columns, or with types that it does not know; and where the login may not read the whole database.
tsql::SchemaDefinition readServerSchema(const ado::ConnectionRef& connection);

} // namespace tamarok::database
