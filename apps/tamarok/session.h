#pragma once

#include "tamarok/ado.h"
#include "tamarok/tmkvar.h"

namespace tamarok::cli {

/// The date format of the sessions that the commands make.
inline constexpr const char* commandDateFormat = "DD.MM.YYYY";

/// Makes the session record of the command line: user 1, German texts, dates as DD.MM.YYYY, single-user
/// operation, SQL Server text, no limits of time or level. @param connection  may be empty
TmkVar commandSession(const ado::ConnectionRef& connection);

} // namespace tamarok::cli
