#pragma once

#include <string>
#include <vector>

#include "connections.h"
#include "list/list_query.h"
#include "print/list_printer.h"
#include "print/output.h"

namespace tamarok::cli {

struct ListOptions {
    DatabaseChoice database;
    std::string locale; ///< empty: the machine's
    std::string language = "GERMAN";
    bool oracle = false;
    ListRequest list;                      ///< without the columns, which are found when the database is open
    std::vector<std::string> columns;      ///< ids or labels
    std::vector<std::string> orderColumns; ///< ids or labels
    ListFormat format = ListFormat::Table;
};

/// Composes a list, runs it and prints its rows. Returns the exit status.
/// Throws UnknownColumn, and the errors of the operations and of the database.
int runList(const ListOptions& options, Output& output);

/// Prints the statement that runList would run. Errors as runList.
int runSql(const ListOptions& options, Output& output);

} // namespace tamarok::cli
