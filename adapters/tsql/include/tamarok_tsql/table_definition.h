#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

/// The definition of a table as a database tells it, and the statements that make the same table elsewhere.
namespace tamarok::tsql {

struct DefinedColumn {
    std::string name;
    std::string type;      ///< as declared: "NVARCHAR(20)"
    bool identity = false; ///< numbered from 1 by the database
    bool nullable = true;
    bool binary = false;           ///< a text column that compares byte by byte
    std::string defaultValue = {}; ///< a literal or GETDATE(); empty for none
};

struct IndexPart {
    std::string column;
    bool descending = false;
};

struct TableIndex {
    std::string name;
    bool unique = false;
    std::vector<IndexPart> parts;
};

struct TableDefinition {
    std::string name;
    std::vector<DefinedColumn> columns = {};
    std::vector<std::string> primaryKey = {};
    std::vector<std::vector<std::string>> uniqueKeys = {};
    std::vector<TableIndex> indexes = {};

    /// The column that the database numbers; nullptr for none.
    const DefinedColumn* identity() const noexcept;
};

/// The tables of a database, and by name what these definitions cannot express: views, checks, references.
struct SchemaDefinition {
    std::vector<TableDefinition> tables;
    std::vector<std::string> omissions; ///< such as "the view SALES"
};

/// A name in brackets, closing brackets doubled.
std::string bracketed(std::string_view name);

/// CREATE TABLE with columns, defaults, and primary and unique keys. It has no indexes.
std::string createTableText(const TableDefinition& table);
/// CREATE INDEX of one of the table's indexes.
std::string createIndexText(const TableDefinition& table, const TableIndex& index);

/// Whether every server takes a default as it is written: a number, a text, GETDATE() or NULL.
bool isPlainDefault(std::string_view value) noexcept;

} // namespace tamarok::tsql

#pragma GCC visibility pop
