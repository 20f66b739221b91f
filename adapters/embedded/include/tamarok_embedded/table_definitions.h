#pragma once

#include <cstdint>
#include <string_view>

#include "tamarok_tsql/table_definition.h"

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

/// What a program must know to move an embedded database elsewhere, or into one.
namespace tamarok::embedded {

/// The tables of the database in the order in which they were made, without temporary ones.
/// Errors: 5 where the connection is not one of the embedded database, 3709 closed, 0x80004005 for a column whose type
/// is none of the server's.
tsql::SchemaDefinition schemaDefinition(ado::Connection& connection);

/// The last number that the identity column of a table has given out, 0 for none. Errors 5 and 3709 as above.
std::int64_t lastIdentity(ado::Connection& connection, std::string_view table);

/// Makes the identity column of a table go on after `number`; a higher number that it has given out stays.
/// Errors: 5 and 3709 as above, failures of the database.
void raiseIdentity(ado::Connection& connection, std::string_view table, std::int64_t number);

} // namespace tamarok::embedded

#pragma GCC visibility pop
