#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

/// The reference database as scripts for SQL Server 2012 and later, and for the open T-SQL server. They may run any
/// number of times: what is there stays.
namespace tamarok::database {

/// One file of `database/sqlserver`.
struct ServerScript {
    std::string name;
    std::string text; ///< UTF-8; a line with the word GO ends a batch
};

/// Tables with their indexes.
ServerScript tableScript();
/// The stored procedures, which replace earlier ones of the same names.
ServerScript procedureScript();

/// All scripts in the order in which they run: tables, procedures, texts, master data.
/// @param master  a database of `createMasterDatabase`
std::vector<ServerScript> serverScripts(const ado::ConnectionRef& master);

/// Runs the batches of a script. Errors: failures of the database.
void runScript(ado::Connection& connection, std::string_view script);

} // namespace tamarok::database

#pragma GCC visibility pop
