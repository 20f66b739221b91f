#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

/// The interface of a database back end: a session and a cursor.
namespace tamarok::ado {

/// One column of a result.
struct ColumnInfo {
    std::string name;       ///< as the statement names it; empty for an unnamed expression
    std::string baseTable;  ///< empty for an expression, and where Cursor::nameBases fills it in
    std::string baseColumn; ///< empty for an expression
    DataType type = DataType::VarWChar;
    std::int32_t definedSize = 0; ///< characters of a text, bytes of any other type
};

/// A statement that a session runs.
struct Statement {
    std::string_view text;                      ///< statement text, batch, or procedure name
    std::span<const Parameter> parameters = {}; ///< values for "?" or the procedure's parameters
    CursorType cursorType = CursorType::OpenForwardOnly;
    LockType lockType = LockType::ReadOnly;
    std::int32_t timeoutSeconds = 30; ///< 0 means no limit; waits for locks are included
    bool procedure = false;           ///< `text` is the name of a stored procedure
};

/// A value for a column of the cursor, by ordinal.
struct Assignment {
    std::size_t column = 0;
    Variant value;
};

/// The rows of one open statement, read forward. The destructor releases everything, row locks included. All
/// failures are `Error`s with the provider's numbers.
class Cursor {
public:
    virtual ~Cursor() = default;

    /// Returns the columns of the result; none if the statement has no result set.
    virtual const std::vector<ColumnInfo>& columns() const = 0;

    /// Moves to the next row; the first call moves to the first row. Returns false at the end, also if called
    /// again.
    virtual bool next() = 0;

    /// Returns the value of a column in the current row, of the kind that the column's type demands: Boolean,
    /// Integer (SmallInt, UnsignedTinyInt), Long, LongLong, Double, Date, String; or Null.
    virtual Variant value(std::size_t column) const = 0;

    /// Runs the statement again; `next` then moves to the first row.
    virtual void restart() = 0;

    /// Fills in the base names of these columns, which are those of `columns()`. For a back end that must ask the
    /// server for them and so waits until somebody wants them.
    virtual void nameBases(std::vector<ColumnInfo>&) {}

    // Editing and locking of rows. A row has a key that does not change while the row exists. The default
    // implementations throw Error 3251.

    /// Returns whether the rows have keys, so that they can be edited and locked.
    virtual bool updatable() const { return false; }
    /// Returns the key of the current row.
    virtual std::int64_t rowKey() const;
    /// Locks a row against change and deletion by other sessions until unlockRow, the next lockRow or the
    /// destruction of the cursor; the end of the process, however it comes, releases the lock too.
    /// Errors: 0x80040E31 after the statement's time-out, 0x80040E23 for a deleted row (a back end may also
    /// succeed; `readRow` then returns false).
    virtual void lockRow(std::int64_t key);
    virtual void unlockRow();
    virtual void updateRow(std::int64_t key, std::span<const Assignment> assignments);
    virtual std::int64_t insertRow(std::span<const Assignment> assignments);
    virtual void deleteRow(std::int64_t key);
    /// Reads the present values of a row; leaves `values` empty for a row without key. Returns false if it is deleted.
    virtual bool readRow(std::int64_t key, std::vector<Variant>& values);
};

/// One session with a database. Used by one thread at a time, but for `cancel`.
class Session {
public:
    virtual ~Session() = default;

    /// Returns the name of the back end, the source of its errors: "Tamarok embedded database".
    virtual std::string_view name() const = 0;

    /// Runs a statement or batch up to its first result set and returns a cursor on it.
    virtual std::unique_ptr<Cursor> open(const Statement& statement) = 0;

    /// Runs a statement, batch or procedure to its end and discards its result sets.
    /// @return number of rows that the last counted statement changed, -1 if none was counted
    virtual std::int64_t execute(const Statement& statement) = 0;

    /// Ends the statement that runs on another thread, if there is one: it fails with error 0x80040E4E. A back end that
    /// cannot do so lets it run.
    virtual void cancel() noexcept {}

    // Transactions. They nest: the outermost commit writes, a rollback ends all levels. A statement that fails in a
    // transaction may roll it back, as SQL Server's conversion errors do; its error then says so.

    virtual void begin() = 0;
    /// Error with native number 3902 if no transaction is open, also after a failed statement has rolled it back.
    virtual void commit() = 0;
    /// Rolls back and leaves no lock behind. Error with native number 3903 if no transaction is open. A host learns by
    /// it whether its input ended inside a transaction; a back end must not succeed where there is nothing to roll
    /// back.
    virtual void rollback() = 0;
};

} // namespace tamarok::ado

#pragma GCC visibility pop
