#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "bulk_insert.h"
#include "row_column.h"
#include "tamarok_database/transfer.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// Inserts rows into a table. Values of the identity column are taken as they are.
class RowWriter {
public:
    /// @param store  must outlive the writer
    RowWriter(Store& store, const tsql::TableDefinition& table, std::vector<RowColumn> columns);
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;

    /// Inserts a row, at the latest with `finish`. Errors: failures of the database.
    void write(std::span<const Variant> row);
    /// Inserts what is left.
    void finish();

    /// An INSERT of rows as literals. Columns that are Null in all rows are left out where `omittable`.
    /// @param omittable  one for each column: it has no default
    static std::string statementOf(const std::string& table, std::span<const std::vector<Variant>> rows,
                                   const std::vector<RowColumn>& columns, const std::vector<bool>& omittable);

private:
    void execute(const std::string& statement) { store_.connection()->Execute(statement); }
    void send();

    Store& store_;
    std::string table_;
    std::vector<RowColumn> columns_;
    std::vector<bool> omittable_;
    bool hasIdentity_;
    std::vector<std::vector<Variant>> rows_;
    std::size_t bytes_ = 0; ///< of the texts in `rows_`, about
    std::unique_ptr<BulkInsert> single_;
};

} // namespace tamarok::database
