#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/object.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

/// The recordset model: connection, recordset, field, command, under their familiar names and numbers. A back
/// end implements `Session` and `Cursor` of ado_backend.h; the model works with any.
namespace tamarok::ado {

enum class CursorType : std::int32_t {
    Unspecified = -1,
    OpenForwardOnly = 0, ///< streams; MoveNext only
    OpenKeyset = 1,
    OpenDynamic = 2, ///< MoveFirst runs the statement again and so finds new rows
    OpenStatic = 3   ///< keeps the rows that it has read; moves in both directions
};

enum class LockType : std::int32_t {
    Unspecified = -1, ///< read-only
    ReadOnly = 1,
    Pessimistic = 2, ///< the current row is locked in the database until the recordset moves or closes
    Optimistic = 3,
    BatchOptimistic = 4 ///< as Optimistic: each Update is sent at once
};

enum class DataType : std::int32_t {
    Empty = 0,
    SmallInt = 2,
    Integer = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    BSTR = 8,
    Boolean = 11,
    Variant = 12,
    Decimal = 14,
    TinyInt = 16,
    UnsignedTinyInt = 17,
    BigInt = 20,
    GUID = 72,
    Binary = 128,
    Char = 129,
    WChar = 130,
    Numeric = 131,
    DBDate = 133,
    DBTime = 134,
    DBTimeStamp = 135,
    VarChar = 200,
    LongVarChar = 201,
    VarWChar = 202,
    LongVarWChar = 203,
    VarBinary = 204,
    LongVarBinary = 205
};

enum class ParameterDirection : std::int32_t { Unknown = 0, Input = 1, Output = 2, InputOutput = 3, ReturnValue = 4 };

enum class CommandType : std::int32_t { Unspecified = -1, Text = 1, StoredProcedure = 4 };

enum class ObjectState : std::int32_t { Closed = 0, Open = 1 };

enum class SearchDirection : std::int32_t { Backward = -1, Forward = 1 };

/// Special values of Recordset::AbsolutePosition.
inline constexpr std::int64_t positionUnknown = -1;
inline constexpr std::int64_t positionBOF = -2;
inline constexpr std::int64_t positionEOF = -3;

class Session;
class Cursor;
class Recordset;

/// An object that uses the session of a connection; it must be closed before the session is.
class Dependent {
public:
    virtual ~Dependent() = default;
    /// Releases everything held in the session, without errors, and detaches itself from the connection.
    virtual void release() noexcept = 0;

protected:
    Dependent() = default;
    Dependent(const Dependent&) = delete;
    Dependent& operator=(const Dependent&) = delete;
};

/// A connection to a database. A back end's `connect` makes it; the caller owns it.
class Connection final : public Object {
public:
    /// @param session         the back end's session, not null
    /// @param connectionText  as given by the user, without password
    Connection(std::unique_ptr<Session> session, std::string connectionText);
    ~Connection() override;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Runs one statement text, batch or stored procedure and discards its result sets.
    /// @param options  -1, 1 or 8: a statement text; 4: the name of a stored procedure; 128 may be added
    /// @return number of rows that the last counted statement changed, -1 if none was counted
    /// Errors: 3709 for a closed connection, 5 for other options, failures of the database.
    std::int64_t Execute(std::string_view statement, std::int32_t options = -1);

    /// Returns the time-out of a statement in seconds, waits for locks included; 0 means no limit. Default 30.
    std::int32_t CommandTimeout() const noexcept;
    /// Sets the time-out in seconds. Error 5 below 0.
    void CommandTimeout(std::int32_t seconds);

    const std::string& ConnectionString() const noexcept;
    ObjectState State() const noexcept;

    /// Asks the statement that runs to end; it then fails with error 0x80040E4E. Nothing happens if none runs, and
    /// where the back end cannot end one. May be called by any thread while the connection is open.
    void Cancel() const noexcept;

    /// Closes the recordsets of the connection, ends its session and releases the session's locks. Error 3704
    /// if the connection is closed already.
    void Close();

    /// Transactions of the caller; the library itself uses none. Errors: 3709 for a closed connection, failures
    /// of the database.
    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();

    /// Sets a function that is called with each statement text before it is sent. A procedure call is passed
    /// as "EXEC name 'text', 2". Replaces the previous listener; an empty function removes it.
    void listen(std::function<void(std::string_view)> listener);

    /// Returns the session, for recordsets and commands. Error 3709 for a closed connection.
    Session& session() const;
    /// Passes a statement text to the listener, if there is one.
    void announce(std::string_view statement) const;
    /// Registers an open recordset, so that Close closes it before the session ends.
    void attach(Dependent& dependent);
    void detach(const Dependent& dependent) noexcept;

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    std::vector<std::string_view> memberNames() const override;

private:
    std::unique_ptr<Session> session_;
    std::string connectionText_;
    std::int32_t commandTimeout_ = 30;
    std::function<void(std::string_view)> listener_;
    std::vector<Dependent*> dependents_;
};

using ConnectionRef = std::shared_ptr<Connection>;

/// Returns the connection of a reference. Error 91 for an empty reference.
Connection& require(const ConnectionRef& connection);

/// One column of a recordset. Its value is that of the recordset's current row. After the recordset is closed
/// every member fails with Error 3704.
class Field final : public Object {
public:
    struct Source; ///< the state of the recordset, shared by its fields
    Field(std::shared_ptr<Source> source, std::size_t ordinal);
    ~Field() override;
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;

    const std::string& Name() const;
    /// Returns the value in the current row. Errors: 3021 without current row, 3704, failures of the database.
    Variant Value() const;
    /// Sets the value in the row that is edited or added; Update sends it. Empty is stored as Null, an object as
    /// its default value. Errors: 3251 for a read-only recordset, 3021, 13 for an array or another object.
    void Value(const Variant& value);
    DataType Type() const;
    /// Returns the size in characters of a text column, in bytes of any other; -1 for a column without limit.
    std::int32_t DefinedSize() const;
    /// Returns the name of the column in its base table and that of the table, "" for an expression.
    const std::string& BASECOLUMNNAME() const;
    const std::string& BASETABLENAME() const;

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    std::vector<std::string_view> memberNames() const override;
    Variant defaultValue() const override; ///< Value
    bool hasDefaultValue() const noexcept override { return true; }

private:
    std::shared_ptr<Source> source_;
    std::size_t ordinal_;
};

using FieldRef = std::shared_ptr<Field>;

/// The columns of a recordset, zero-based.
class FieldCollection {
public:
    std::int32_t Count() const noexcept;
    /// Returns a field by ordinal, from 0, or by name, compared without regard to case. Of several columns of
    /// one name the first is returned. Error 3265 for an unknown ordinal or name.
    Field& Item(std::int32_t ordinal) const;
    Field& Item(std::string_view name) const;
    /// The same as a shared reference, which may outlive the recordset.
    FieldRef share(std::int32_t ordinal) const;
    FieldRef share(std::string_view name) const;

private:
    friend class Recordset;
    const FieldRef& at(std::int32_t ordinal) const;
    const FieldRef& at(std::string_view name) const;
    void buildIndex() const;

    std::vector<FieldRef> fields_;
    mutable std::vector<std::int32_t> slots_; ///< hash table of the names: ordinals, -1 where free; built on first use
};

/// The rows of a statement. A forward-only read-only recordset streams: it holds the current row only.
class Recordset final : public Object {
public:
    Recordset();
    ~Recordset() override; ///< closes without errors and discards a pending edit
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Runs a statement and moves to its first row, or to EOF if it has none. A statement without a result
    /// set leaves the recordset closed.
    /// @param source   statement text or name of a stored procedure
    /// @param options  -1, 1 or 8: a statement text; 4: the name of a stored procedure; 128 may be added
    /// Errors: 3705 if the recordset is open, 91 without connection, 3709 for a closed connection, 5 for other
    /// options, 3251 for a pessimistic lock on rows that cannot be locked, failures of the database.
    void Open(std::string_view source, const ConnectionRef& connection,
              CursorType cursorType = CursorType::OpenForwardOnly, LockType lockType = LockType::ReadOnly,
              std::int32_t options = -1);
    /// Releases rows and row locks. Errors: 3704 if the recordset is closed, 3219 while an edit is pending.
    void Close();
    ObjectState State() const noexcept;

    /// Returns whether the position is after the last row, before the first row; both are true if there are no
    /// rows. Error 3704 for a closed recordset.
    bool AtEOF() const;
    bool AtBOF() const;

    /// Returns the columns. Error 3704 for a closed recordset.
    const FieldCollection& Fields() const;

    /// Keeps the rows of a forward-only recordset from the current one on, so that it moves as a static one does. Reads
    /// them all, so that the connection is free for other statements. Nothing happens to any other recordset.
    /// Errors: 3704 for a closed recordset, failures of the database.
    void keepRows();

    /// Reads all rows and returns their number; -1 for a forward-only or dynamic recordset.
    /// Error 3704 for a closed recordset.
    std::int64_t RecordCount() const;

    // Moves. A move sends a pending edit first. If a pessimistic recordset cannot lock the new row, the move
    // fails and there is no current row; the next move starts where the failed one did.
    // Errors: 3704 for a closed recordset; 3021 past the end and for a recordset without rows; 3219 backwards
    // on a forward-only recordset, which includes MoveLast, but not MoveFirst on the first row.

    void MoveNext();
    void MoveFirst();
    void MoveLast();
    void MovePrevious();
    /// @param rows  number of rows to move, negative backwards; 0 reads the current row again
    void Move(std::int64_t rows);

    /// Returns the rows from the current one on as an array with the indices (field, row), both from 0, and
    /// moves past the last row returned.
    /// @param rows  greatest number of rows, -1 for all
    /// Errors: 3021 without current row, 5 below -1, 3704, failures of the database.
    VariantArray GetRows(std::int64_t rows = -1);

    /// Moves to the first row that meets a criterion, the current row included, or to EOF (BOF backwards).
    /// @param criterion  "COLUMN operator value" with =, <>, <, <=, >, >= or LIKE, whose pattern may begin and
    ///        end with *. The value is a text ('x', single quotes doubled), compared without regard to case, a
    ///        number with ".", or a date #yyyy-mm-dd hh:mm:ss#. Null meets no criterion.
    /// @param skip       number of rows to move before the search, 0 or more
    /// Errors: 5 for a criterion of another form, 13 for a value that cannot be compared with the column, 3265
    /// for an unknown column, 3021 without current row, 3219 backwards on a forward-only recordset.
    void Find(std::string_view criterion, std::int64_t skip = 0, SearchDirection direction = SearchDirection::Forward);

    /// Returns a second recordset over the same rows with a position of its own, on the first row. It holds no
    /// row locks; the clone of a pessimistic recordset is read-only. Error 3251 for a forward-only recordset.
    std::shared_ptr<Recordset> Clone() const;

    /// Returns a mark of the current row, or moves to a marked row. A mark is also valid for clones. It becomes
    /// invalid when a dynamic recordset runs its statement again. Errors: 3251 for a forward-only recordset,
    /// 5 for a mark of no row, 3021 without current row and for a deleted row.
    Variant Bookmark() const;
    void Bookmark(const Variant& mark);

    /// Returns the number of the current row from 1 on, or positionBOF, positionEOF, positionUnknown (for a
    /// forward-only recordset and without current row).
    std::int64_t AbsolutePosition() const;
    /// Moves to a row by its number. Errors: 5 below 1, 3021 past the end, 3251 for a forward-only recordset.
    void AbsolutePosition(std::int64_t position);

    // Editing. Setting the value of a field begins an edit of the current row.
    // Errors: 3251 for a read-only recordset and for rows without key, 3704, failures of the database.

    /// Begins a new row, all of whose fields are Null.
    void AddNew();
    /// Sends the pending edit; a new row becomes the current row. A failed Update leaves the edit pending.
    /// Error 0x80040E38 if the row of an optimistic recordset has been changed or deleted since it was read.
    void Update();
    /// Discards the pending edit.
    void CancelUpdate();
    /// Deletes the current row in the database. There is no current row until the next move.
    /// @param affect  1, the current record; Error 5 for any other number
    /// Errors: 3219 during AddNew, 3021 without current row.
    void Delete(std::int32_t affect = 1);

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    std::vector<std::string_view> memberNames() const override;

private:
    void adopt(std::shared_ptr<Field::Source> source);

    std::shared_ptr<Field::Source> source_;
    FieldCollection fields_;
};

/// One parameter of a command.
struct Parameter {
    std::string name;
    DataType type = DataType::VarWChar;
    ParameterDirection direction = ParameterDirection::Input;
    std::int32_t size = 0; ///< characters; 0 for types of fixed size
    Variant value;
};

/// A statement or stored procedure with parameters. Parameters are positional: each "?" of a statement text
/// takes the next one.
class Command final : public Object {
public:
    Command();
    ~Command() override;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    /// Returns a parameter, which the caller appends to Parameters.
    Parameter CreateParameter(std::string_view name, DataType type,
                              ParameterDirection direction = ParameterDirection::Input, std::int32_t size = 0,
                              Variant value = {}) const;
    /// Returns the parameters in the order of the procedure's declaration.
    std::vector<Parameter>& Parameters() noexcept;
    const std::vector<Parameter>& Parameters() const noexcept;

    ConnectionRef ActiveConnection;
    std::string CommandText;
    tamarok::ado::CommandType CommandType = tamarok::ado::CommandType::Text;

    /// Runs the command and discards its result sets. Each value is converted to its parameter's type, Empty
    /// to Null; a text longer than its parameter's size is cut.
    /// @return as Connection::Execute
    /// Errors: 3709 without open connection, 13 or 6 for a value that does not convert to its type, 3251 for a
    /// parameter that is not an input parameter, failures of the database.
    std::int64_t Execute();

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    std::vector<std::string_view> memberNames() const override;

private:
    std::shared_ptr<std::vector<Parameter>> parameters_; ///< shared with the late-bound collection, never null
};

} // namespace tamarok::ado

#pragma GCC visibility pop
