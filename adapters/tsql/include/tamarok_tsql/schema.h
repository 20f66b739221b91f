#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/types.h"

#pragma GCC visibility push(default)

/// The tables and columns that a statement may name. A back end fills them in.
namespace tamarok::tsql {

struct TableColumn {
    std::string name;
    Type type;
    bool identity = false; ///< numbered by the database
    bool nullable = true;
    bool inKey = false;  ///< part of a primary key or a unique index
    bool binary = false; ///< a collation that tells upper from lower case
};

/// A table or view.
struct Table {
    std::string name; ///< in its declared spelling; a temporary table keeps its "#"
    std::vector<TableColumn> columns;
    bool identityInsert = false; ///< SET IDENTITY_INSERT is ON: an INSERT gives the identity column's values

    /// Position of a column, from 0; -1 for an unknown one. The name is case-insensitive.
    std::int32_t column(std::string_view wanted) const;
};

/// The tables of a database.
class Schema {
public:
    virtual ~Schema() = default;
    /// Looks up a table or view by its case-insensitive name.
    /// @return nullptr for an unknown one. The pointer is valid until the schema changes.
    virtual const Table* table(std::string_view name) const = 0;
};

} // namespace tamarok::tsql

#pragma GCC visibility pop
