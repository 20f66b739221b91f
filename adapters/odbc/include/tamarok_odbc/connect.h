#pragma once

#include <string_view>

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

/// Connections to a server through its ODBC driver: SQL Server, the open T-SQL server on PostgreSQL, PostgreSQL,
/// SQLite.
namespace tamarok::odbc {

/// Opens what a connection text names, in one of two styles:
///
///  - ODBC: "Driver={FreeTDS};Server=host;Database=timber;UID=user;PWD={a;b}" or "DSN=name;UID=...". A value in braces
///    may contain anything; a closing brace in it is doubled.
///  - ADO: "Provider=MSOLEDBSQL;Data Source=host,1433;Initial Catalog=timber;User ID=user;Password='a;b'", with quotes
///    instead of braces. Without Driver, the driver for SQL Server that the machine has is taken.
///
/// "Date Order=MDY" names the order of dates in the texts of statements: DMY, which is the default, MDY, YMD, YDM, MYD
/// or DYM. The opening sets that order in the server and reads a date back.
///
/// The connection text of the connection, messages and the session's errors never contain the password.
/// Errors: 5 for a text of another form, which names the place but not the text; 0x80004005 with SQLSTATE, native
/// number and text of the driver where the connection fails, and where the server does not take the date order.
ado::ConnectionRef connectText(std::string_view connectionText);

/// Checks that a connection reads dates as the session record writes them, by a probe in that format: under DMY, SQL
/// Server reads the '2024-3-5' of "YYYY-MM-DD" as 3 May. A program calls it once it knows the session's format.
/// @param strDateFormat  as TmkVar::strDateFormat
/// Errors: 0x80004005 with the remedy where the probe is read as another day; 5 where the connection is not of this
/// back end, 3709 closed.
void requireDateFormat(ado::Connection& connection, std::string_view strDateFormat);

} // namespace tamarok::odbc

#pragma GCC visibility pop
