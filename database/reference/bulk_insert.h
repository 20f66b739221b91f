#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "tamarok/ado.h"

namespace tamarok::database {

/// One parameterised INSERT statement that runs many times. A value stays until it is set again, so that a
/// value that many rows share is set once.
class BulkInsert {
public:
    struct Column {
        std::string_view name;
        ado::DataType type = ado::DataType::VarWChar;
    };

    /// @param connection  must outlive the object
    /// @param table, columns  inserted into the SQL verbatim
    BulkInsert(ado::Connection& connection, std::string_view table, std::span<const Column> columns);

    /// Returns the value of a column by its place in the list of columns; Null at first.
    Variant& operator[](std::size_t column) { return command_.Parameters()[column].value; }

    /// Sets every value to Null.
    void clear();

    /// Inserts a row of the current values. Errors: provider failures.
    void insert();

private:
    ado::Command command_;
};

} // namespace tamarok::database
