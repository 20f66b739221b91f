#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "bulk_insert.h"
#include "tamarok_database/transfer.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// A column of the rows to write.
struct RowColumn {
    std::string name;
    ado::DataType type = ado::DataType::VarWChar;
};

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

    /// The beginning of a statement with many rows, up to VALUES.
    static std::string insertText(const std::string& table, const std::vector<RowColumn>& columns);
    /// Appends "(...)" with a literal for each value.
    static void appendRow(std::string& text, std::span<const Variant> row, const std::vector<RowColumn>& columns);

private:
    void execute(const std::string& statement) { store_.connection()->Execute(statement); }
    void send();

    Store& store_;
    std::string table_;
    std::vector<RowColumn> columns_;
    bool hasIdentity_;
    std::string front_;
    std::string statement_;
    std::size_t rows_ = 0; ///< in the statement
    std::unique_ptr<BulkInsert> single_;
};

} // namespace tamarok::database
