#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/names.h"
#include "tamarok_tsql/types.h"

#include "tamarok/ado.h"

namespace tamarok::cli::check {

/// A column as a catalogue describes it.
struct ColumnShape {
    std::string name;
    tsql::Type type;
    std::string declared; ///< the type in words, such as "NVARCHAR(40)"
    bool identity = false;
    bool nullable = true;
    bool inKey = false;      ///< of a primary key or a unique index; known for embedded databases alone
    bool hasDefault = false; ///< the database gives a value itself
    bool exact = false;      ///< texts compare with regard to case
    std::string collation;   ///< empty where the catalogue names none
};

struct TableShape {
    std::string name;
    std::string schema; ///< empty for a file
    bool hasKey = true; ///< a primary key or a unique index; views, and files with their row numbers, need none
    std::vector<ColumnShape> columns;

    /// Finds a column without regard to case; nullptr for none.
    const ColumnShape* column(std::string_view wanted) const;
};

struct NameLess {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return tsql::nameLess(a, b); }
};

/// The tables and views of a database by their names, without regard to case.
using TableShapes = std::map<std::string, TableShape, NameLess>;

/// Reads the catalogue of an embedded database.
TableShapes embeddedTables(ado::Connection& connection);

/// Reads the catalogue of a T-SQL server: what an unqualified name of the login means, so that a table of the login's
/// default schema hides that of dbo. The server shows a login only the tables on which it has a right.
TableShapes serverTables(const ado::ConnectionRef& connection);

} // namespace tamarok::cli::check
