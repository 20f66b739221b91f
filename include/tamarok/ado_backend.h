#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"

/// What a database back end implements: a session and a cursor, and nothing else.
namespace tamarok::ado {

/// One column of a result.
struct ColumnInfo {
    std::string name;       ///< as the statement names it; empty for an unnamed expression
    std::string baseTable;  ///< empty for an expression
    std::string baseColumn; ///< empty for an expression
    DataType type = DataType::VarWChar;
    std::int32_t definedSize = 0; ///< characters of a text, bytes of any other type
};

/// A statement on its way to the database.
struct Statement {
    std::string_view text;                      ///< statement text, batch, or procedure name
    std::span<const Parameter> parameters = {}; ///< values for "?" or the procedure's parameters
    CursorType cursorType = CursorType::OpenForwardOnly;
    LockType lockType = LockType::ReadOnly;
    std::int32_t timeoutSeconds = 30; ///< 0 without limit; waits for locks count
    bool procedure = false;           ///< `text` is the name of a stored procedure
};

/// A value for a column of the cursor, by ordinal.
struct Assignment {
    std::size_t column = 0;
    Variant value;
};

/// The rows of one open statement, stepped forward. Destruction releases everything it holds, row
/// locks included. All failures are `Error`s with the provider's numbers.
class Cursor {
public:
    virtual ~Cursor() = default;

    /// Empty where the statement had no result set.
    virtual const std::vector<ColumnInfo>& columns() const = 0;

    /// Steps to the next row (the first one after opening). False at the end, and ever after.
    virtual bool next() = 0;

    /// Value of a column in the row that `next` has reached, typed by the column's type: Boolean,
    /// Integer (SmallInt, UnsignedTinyInt), Long, LongLong, Double, Date, String or Null.
    virtual Variant value(std::size_t column) const = 0;

    /// Runs the statement again from the start; `next` then gives the first row.
    virtual void restart() = 0;

    // The rest serves recordsets that are not read-only. Rows are named by a key that stays the
    // same while the row lives. The default implementations throw Error 3251.

    virtual bool updatable() const { return false; }
    virtual std::int64_t rowKey() const;
    /// Locks a row against change and deletion by any other session, until unlockRow, another
    /// lockRow, or the cursor's end, the end of the process included. Waits up to the statement's
    /// time-out, then Error 0x80040E31. Error 0x80040E23, or success, where the row has gone.
    virtual void lockRow(std::int64_t key);
    virtual void unlockRow();
    virtual void updateRow(std::int64_t key, std::span<const Assignment> assignments);
    virtual std::int64_t insertRow(std::span<const Assignment> assignments);
    virtual void deleteRow(std::int64_t key);
    /// The row's present values; false where it has gone.
    virtual bool readRow(std::int64_t key, std::vector<Variant>& values);
};

/// One session with a database. Used by one thread at a time.
class Session {
public:
    virtual ~Session() = default;

    /// The back end's name, for the source of errors ("Tamarok embedded database").
    virtual std::string_view name() const = 0;

    /// Opens the first result set of a statement or batch; the statements before it have run.
    virtual std::unique_ptr<Cursor> open(const Statement& statement) = 0;

    /// Runs a statement, batch or procedure to its end and drops result sets.
    /// @return rows touched by the last counted statement, -1 where nothing was counted
    virtual std::int64_t execute(const Statement& statement) = 0;

    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
};

} // namespace tamarok::ado
