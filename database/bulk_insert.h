#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "tamarok/ado.h"

namespace tamarok::database {

/// One INSERT statement that is run many times. A value stays until it is set again, so that what is
/// the same for many rows is set once.
class BulkInsert {
public:
    struct Column {
        std::string_view name;
        ado::DataType type = ado::DataType::VarWChar;
    };

    BulkInsert(ado::Connection& connection, std::string_view table, std::span<const Column> columns);

    /// The value of the column at that place of the list; Null at first.
    Variant& operator[](std::size_t column) { return command_.Parameters()[column].value; }

    /// Sets every value back to Null.
    void clear();

    /// Inserts a row of the present values.
    void insert();

private:
    ado::Command command_;
};

} // namespace tamarok::database
