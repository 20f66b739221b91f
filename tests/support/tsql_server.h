#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Where the T-SQL server of the tests is.
namespace tamarok::test {

/// The connection text of the T-SQL server in ODBC style, without DATABASE: that of the environment variable
/// TAMAROK_TSQL_SERVER, or the last line that the command in TAMAROK_TSQL_START prints. Nothing where neither is set;
/// one loud line of the program then says so.
const std::optional<std::string>& tsqlServer();

/// Prints to standard error that tests were skipped.
void tellSkipped(std::string_view what);

} // namespace tamarok::test
