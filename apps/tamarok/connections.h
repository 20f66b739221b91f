#pragma once

#include <string>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/backend_registry.h"

namespace tamarok::cli {

/// The back ends that this program was built with. A further one is one more line in the definition.
ado::BackendRegistry backends();

/// Opens a connection by its text, such as "Provider=Tamarok.Embedded;Data Source=demo.db".
/// Errors as ado::BackendRegistry::open.
ado::ConnectionRef openConnection(std::string_view connectionText);

/// Option --db FILE: the connection text of an embedded database file, opened for reading and writing.
std::string databaseText(const std::string& file);

/// Opens an embedded database file, which must exist. Errors name the file and the reason.
ado::ConnectionRef openDatabase(const std::string& file);

/// Whether the program was built with the ODBC back end.
bool hasOdbc();

/// Option --odbc TEXT: opens a connection with the ODBC back end, which receives the text as it is.
/// Error 3706 where the program was built without it.
ado::ConnectionRef openOdbc(std::string_view odbcText);

} // namespace tamarok::cli
