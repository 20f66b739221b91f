#pragma once

#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

namespace tamarok::database {

/// A stored procedure.
struct ProcedureScript {
    std::string_view name;
    std::string_view text; ///< the batch that makes it, in T-SQL
};

/// The stored procedures of the reference schema, in the order of their names.
std::vector<ProcedureScript> procedureScripts();

/// The name of the script of the reference schema that makes a table, such as "08_logs.sql"; empty where none does.
/// @param table  without regard to case
std::string_view scriptOfTable(std::string_view table);

} // namespace tamarok::database

#pragma GCC visibility pop
