#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tamarok_database/progress.h"
#include "tamarok_tsql/table_definition.h"

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

/// Moves whole databases between the embedded database and a T-SQL server.
namespace tamarok::database {

/// How rows are written.
enum class RowForm : std::uint8_t {
    Parameters, ///< a statement with parameters for each row
    Values,     ///< statements of many rows as literals, which save a server's answers
    Json        ///< statements of many rows as one JSON text, which save the server reading the literals too
};

/// One end of a move. The statements that copy rows are the same for all; an end knows what differs.
class Store {
public:
    virtual ~Store() = default;
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    const ado::ConnectionRef& connection() const noexcept { return connection_; }

    /// The tables, with what cannot be moved by name. Errors: 0x80004005 for a table that the other end could not
    /// hold, with its name; failures of the database.
    virtual tsql::SchemaDefinition schema() = 0;
    /// Error 0x80004005 where the table has values that the library would read with a loss: decimals of more digits
    /// than a double holds, times finer than milliseconds.
    virtual void requireReadable(const tsql::TableDefinition& table) = 0;
    /// The last number that the table's identity column has given out, 0 for none.
    virtual std::int64_t lastIdentity(const tsql::TableDefinition& table) = 0;
    /// Makes the identity column of a filled table go on after `number`.
    virtual void raiseIdentity(const tsql::TableDefinition& table, std::int64_t number, std::int64_t rows) = 0;
    virtual RowForm rowForm() const noexcept = 0;
    /// Adds what belongs to a complete database besides its tables, such as procedures.
    virtual void finish() = 0;

protected:
    explicit Store(ado::ConnectionRef connection) : connection_{std::move(connection)} {}

private:
    ado::ConnectionRef connection_;
};

/// The embedded database of a connection. Error 5 where the connection is not one.
std::unique_ptr<Store> embeddedStore(ado::ConnectionRef connection);

/// The database of a T-SQL server. Error 0x80004005 where the connection leads to another server.
std::unique_ptr<Store> serverStore(ado::ConnectionRef connection);

/// The rows of one table on one end. The sum does not depend on the order of the rows: each row is hashed from the
/// values that the library reads, and the hashes are added.
struct TableSum {
    std::int64_t rows = 0;
    std::uint64_t sum = 0;

    friend bool operator==(const TableSum&, const TableSum&) = default;
};

struct MovedTable {
    std::string name;
    TableSum source;
    TableSum target;
};

struct Move {
    std::vector<MovedTable> tables;
    std::vector<std::string> omissions; ///< what was not moved
};

/// Counts and sums a table as it stands. Errors: failures of the database.
TableSum sumOf(Store& store, const tsql::TableDefinition& table);

/// Moves all tables with their rows, keys, indexes and identity numbers into an empty database, reads the rows back and
/// compares them. All of it is one transaction of the target, so that whatever stops it leaves the target empty.
/// Errors: 0x80004005 where the target has tables, and for rows that are not the same on the target; failures of both.
Move moveDatabase(Store& source, Store& target, const ProgressListener& progress = {});

/// Makes the reference schema in an empty database of a server by its scripts, and moves the rows of `sample`, which
/// has that schema, into it. Tables of the schema may be there, but must be empty. Otherwise as moveDatabase.
Move loadReferenceDatabase(Store& sample, Store& server, const ProgressListener& progress = {});

} // namespace tamarok::database

#pragma GCC visibility pop
