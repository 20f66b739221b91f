#pragma once

#include <string>

#include "tamarok/ado.h"
#include "tamarok/tmkvar.h"

namespace tamarok::cli {

/// Opens an embedded database file that exists. Errors name the file and the reason.
ado::ConnectionRef openDatabase(const std::string& file);

/// The session record of the command line: user 1, German texts, dates as DD.MM.YYYY, single-user
/// operation, SQL Server text, no limits of time or level. `connection` may be empty.
TmkVar commandSession(const ado::ConnectionRef& connection);

} // namespace tamarok::cli
