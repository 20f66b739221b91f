#pragma once

#include <string>

#include "check/table_shapes.h"
#include "connections.h"

#include "tamarok/ado.h"
#include "tamarok/tmkvar.h"

namespace tamarok::cli::check {

/// The database under check.
struct Installation {
    /// Opens it: a server as it is, a file for reading only. Errors as openForReading, but without the probe of the
    /// date format, which a check of its own makes.
    Installation(const DatabaseChoice& choice, const std::string& dateFormat);

    bool isFile() const noexcept { return !choice.odbc; }
    /// Whether the connection still answers, after a failure.
    bool answers() const;

    DatabaseChoice choice;
    TmkVar session; ///< with the connection and the date format
    TableShapes tables;
    /// Where statements that write are tried: the server within a transaction that is rolled back; for a file, a
    /// database in memory with copies of the tables concerned.
    ado::ConnectionRef trial;
    /// Whether the procedure that writes options is that of this version, and so ends no transaction but its own.
    bool knowsOptionProcedure = false;
    std::string obstacle; ///< why the remaining checks are left out; empty while they run

    const ado::ConnectionRef& connection() const noexcept { return session.db_ADO; }
};

} // namespace tamarok::cli::check
