#pragma once

#include <functional>
#include <map>
#include <optional>
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

/// The database of a command: a file of the embedded database, or a server by the text of its connection.
struct DatabaseChoice {
    std::string file = "tamarok.db";
    std::optional<std::string> odbc; ///< option --odbc; instead of the file
};

/// Option --db FILE: opens an embedded database file, which must exist, for reading and writing.
/// Errors name the file and the reason.
ado::ConnectionRef openDatabase(const std::string& file);

/// Whether the program was built with the ODBC back end.
bool hasOdbc();
/// Option --db FILE of a command that only reads: nothing is written, whatever a condition of the command line says,
/// and an option of the application that has no row has its default. Errors as openDatabase.
ado::ConnectionRef openForReading(const std::string& file);

/// Option --odbc TEXT: opens a connection with the ODBC back end, which receives the text as it is.
/// Error 3706 where the program was built without it.
ado::ConnectionRef openOdbc(std::string_view odbcText);

/// The same as openForReading for a command that reports itself how the connection reads dates.
ado::ConnectionRef openToCheck(const DatabaseChoice& choice);

/// The texts of the servers that a command has connected to, by the texts that the connections show, which have no
/// password. A lookup opens a connection of its own by the text that its session shows.
class ServerTexts {
public:
    /// Remembers by which text a connection was opened.
    void remember(const ado::Connection& connection, const std::string& odbcText)
    {
        texts_.insert_or_assign(connection.ConnectionString(), odbcText);
    }
    /// Opens a connection by a remembered text where `connectionText` shows one, else as openConnection.
    ado::ConnectionRef open(std::string_view connectionText) const;

private:
    std::map<std::string, std::string, std::less<>> texts_;
};

/// Opens what --db or --odbc has chosen, for reading and writing.
ado::ConnectionRef openDatabase(const DatabaseChoice& choice);
/// The same for a command that only reads. On a server, the rights of the user decide what can be written.
ado::ConnectionRef openForReading(const DatabaseChoice& choice);

} // namespace tamarok::cli
