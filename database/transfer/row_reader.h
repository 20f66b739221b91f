#pragma once

#include <string>
#include <vector>

#include "row_writer.h"
#include "tamarok_database/transfer.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// The rows of a table, one after the other.
class RowReader {
public:
    /// @param store  must outlive the reader
    RowReader(Store& store, const tsql::TableDefinition& table);

    /// The columns in the order of the definition, with the types of the result.
    std::vector<RowColumn> columns() const;
    /// Reads the next row. Returns false after the last one. Errors: failures of the database.
    bool read(std::vector<Variant>& row);

private:
    ado::Recordset records_;
    bool isFirst_ = true;
};

} // namespace tamarok::database
