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

/// The recordset model of the database under its familiar names and numbers. A back end
/// implements `Session` and `Cursor` of ado_backend.h; nothing here knows which one it is.
namespace tamarok::ado {

enum class CursorType : std::int32_t {
    Unspecified = -1,
    OpenForwardOnly = 0, ///< streams; MoveNext only
    OpenKeyset = 1,
    OpenDynamic = 2, ///< MoveFirst runs the statement again and so sees rows that came since
    OpenStatic = 3   ///< rows are kept as they are visited; moves in both directions
};

enum class LockType : std::int32_t {
    Unspecified = -1, ///< read-only
    ReadOnly = 1,
    Pessimistic = 2, ///< the current row stays locked in the database until the recordset moves or closes
    Optimistic = 3,
    BatchOptimistic = 4 ///< as Optimistic: every Update is sent at once
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

/// Something that lives on a connection's session and must let go of it before the session ends.
class Dependent {
public:
    virtual ~Dependent() = default;
    /// Gives up everything held in the session, without errors, and detaches itself.
    virtual void release() noexcept = 0;

protected:
    Dependent() = default;
    Dependent(const Dependent&) = delete;
    Dependent& operator=(const Dependent&) = delete;
};

/// An open connection to a database. Made by a back end's `connect`; the caller owns it.
class Connection final : public Object {
public:
    /// @param session         the back end's session, not null
    /// @param connectionText  as given by the user, without password
    Connection(std::unique_ptr<Session> session, std::string connectionText);
    ~Connection() override;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Runs one statement text or batch; a result set is dropped.
    /// @return number of rows touched by the last counted statement, -1 where nothing was counted
    /// Errors: 3709 closed; provider failures.
    std::int64_t Execute(std::string_view statement, std::int32_t options = -1);

    /// Seconds that a statement may take, waits for locks included; 0 is without limit. Default 30.
    std::int32_t CommandTimeout() const noexcept;
    /// Error 5 below 0.
    void CommandTimeout(std::int32_t seconds);

    const std::string& ConnectionString() const noexcept;
    ObjectState State() const noexcept;

    /// Ends the session; its locks fall and its recordsets are closed. Error 3704 if it is closed already.
    void Close();

    /// Transactions of the caller; the library itself uses none. Error 3709 closed.
    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();

    /// Called with each statement text before it is sent, exactly as composed. A procedure call is
    /// told as "EXEC name 'text', 2". Replaces the previous listener; an empty function removes it.
    void listen(std::function<void(std::string_view)> listener);

    /// The session, or Error 3709 where the connection is closed. For recordsets and commands.
    Session& session() const;
    /// Tells the listener, if there is one.
    void announce(std::string_view statement) const;
    /// Open recordsets enter themselves here, so that closing the connection closes them first.
    void attach(Dependent& dependent);
    void detach(const Dependent& dependent) noexcept;

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;

private:
    std::unique_ptr<Session> session_;
    std::string connectionText_;
    std::int32_t commandTimeout_ = 30;
    std::function<void(std::string_view)> listener_;
    std::vector<Dependent*> dependents_;
};

using ConnectionRef = std::shared_ptr<Connection>;

/// `*connection`, or Error 91 where the reference holds nothing.
Connection& require(const ConnectionRef& connection);

/// One column of a recordset. Its value is that of the recordset's current row.
class Field final : public Object {
public:
    struct Source; ///< the recordset's shared state
    Field(std::shared_ptr<Source> source, std::size_t ordinal);
    ~Field() override;
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;

    // Every member gives Error 3704 once the recordset is closed.

    const std::string& Name() const;
    /// Value in the current row. Errors: 3021 no current row, 3704 closed.
    Variant Value() const;
    /// Sets the value of the row being edited or added; sent by Update. Error 3251 read-only.
    void Value(const Variant& value);
    DataType Type() const;
    /// Characters of a text column, bytes of any other; -1 where the column has no limit.
    std::int32_t DefinedSize() const;
    /// The columns' names in the base table, empty for an expression.
    const std::string& BASECOLUMNNAME() const;
    const std::string& BASETABLENAME() const;

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;

private:
    std::shared_ptr<Source> source_;
    std::size_t ordinal_;
};

using FieldRef = std::shared_ptr<Field>;

/// The columns of a recordset, zero-based.
class FieldCollection {
public:
    std::int32_t Count() const noexcept;
    /// Error 3265 for an ordinal or name that is not there; names compare without regard to case.
    Field& Item(std::int32_t ordinal) const;
    Field& Item(std::string_view name) const;
    /// The same as a reference that can be kept and passed on.
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

/// The rows of a statement. A forward-only read-only recordset streams: no row is kept.
class Recordset final : public Object {
public:
    Recordset();
    ~Recordset() override; ///< closes, without errors; a pending edit is dropped
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Runs `source` on `connection` and stands on the first row, or at EOF. A statement without a
    /// result set leaves the recordset closed.
    /// @param options  -1, 1 or 8: a statement text; 4: the name of a stored procedure; 128 may be added
    /// Errors: 3705 already open, 91 no connection, 3709 connection closed, 5 other options, 3251 a
    /// pessimistic lock on rows that cannot be locked, provider failures.
    void Open(std::string_view source, const ConnectionRef& connection,
              CursorType cursorType = CursorType::OpenForwardOnly, LockType lockType = LockType::ReadOnly,
              std::int32_t options = -1);
    /// Releases rows and row locks. Errors: 3704 closed, 3219 while an edit is pending.
    void Close();
    ObjectState State() const noexcept;

    /// Behind the last row / before the first one; both on an empty recordset. Error 3704 closed.
    bool AtEOF() const;
    bool AtBOF() const;

    /// The columns; Error 3704 closed.
    const FieldCollection& Fields() const;

    /// Number of rows, all of which are read for it; -1 on a forward-only or dynamic recordset.
    /// Error 3704 closed.
    std::int64_t RecordCount() const;

    /// Errors of the moves: 3704 closed, 3021 past the end or on an empty recordset, 3219 backwards
    /// on a forward-only recordset (MoveLast included; MoveFirst does nothing on the first row).
    /// A move sends a pending edit first. Where a pessimistic recordset cannot lock the row it moves
    /// to, the move fails and there is no current row; the next move starts where the failed one did.
    void MoveNext();
    void MoveFirst();
    void MoveLast();
    void MovePrevious();
    /// @param rows  number of rows to move, negative backwards; 0 reads the current row anew
    void Move(std::int64_t rows);

    /// All rows from the current one on (or at most `rows`) as an array of (field, row), zero-based,
    /// leaving the recordset behind the last row taken. Errors: 3021 where there is none, 5 below -1.
    VariantArray GetRows(std::int64_t rows = -1);

    /// Moves to the next row for which "COLUMN operator value" holds (=, <>, <, <=, >, >=, LIKE with
    /// leading or trailing *), or to EOF/BOF. The current row counts. Texts ('x', quotes doubled) are
    /// compared without regard to case, numbers with a point, dates as #yyyy-mm-dd hh:mm:ss#; Null never
    /// holds. @param skip rows to leave out before the search, 0 or more.
    /// Errors: 5 for a criterion of another form, 13 for a value that does not fit the column, 3265 for
    /// an unknown column, 3021 without a current row, 3219 backwards on a forward-only recordset.
    void Find(std::string_view criterion, std::int64_t skip = 0, SearchDirection direction = SearchDirection::Forward);

    /// A second recordset over the same rows, standing on the first one, with a position of its own. It
    /// holds no row locks; a clone of a pessimistic recordset is read-only. Error 3251 on a
    /// forward-only one.
    std::shared_ptr<Recordset> Clone() const;

    /// A mark of the current row that can be set again, on clones too. Running a dynamic recordset again
    /// ends its marks. Errors: 3251 on a forward-only one, 5 for a mark that names no row, 3021.
    Variant Bookmark() const;
    void Bookmark(const Variant& mark);

    /// 1-based number of the current row, or positionUnknown (forward-only, no current row), positionBOF,
    /// positionEOF. Setting it: 5 below 1, 3021 past the end, 3251 on a forward-only one.
    std::int64_t AbsolutePosition() const;
    void AbsolutePosition(std::int64_t position);

    /// Editing; Error 3251 on a read-only recordset or rows that have no key. Setting a field's value
    /// begins an edit. After AddNew fields are Null until set; Update makes the new row the current one.
    /// Update of an optimistic recordset fails with 0x80040E38 where the row has been changed or deleted
    /// since it was read. A failed Update leaves the edit pending.
    void AddNew();
    void Update();
    void CancelUpdate();
    /// Deletes the current row in the database; there is no current row until the next move.
    /// Errors: 5 for another argument than 1 (the current record), 3219 during AddNew, 3021.
    void Delete(std::int32_t affect = 1);

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;

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

/// A statement or procedure with parameters. Positional: in a text, "?" marks a parameter.
class Command final : public Object {
public:
    Command();
    ~Command() override;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    Parameter CreateParameter(std::string_view name, DataType type,
                              ParameterDirection direction = ParameterDirection::Input, std::int32_t size = 0,
                              Variant value = {}) const;
    /// The parameters in the order of the procedure's declaration.
    std::vector<Parameter>& Parameters() noexcept;
    const std::vector<Parameter>& Parameters() const noexcept;

    ConnectionRef ActiveConnection;
    std::string CommandText;
    tamarok::ado::CommandType CommandType = tamarok::ado::CommandType::Text;

    /// Runs it; a result set is dropped. Values are converted to their parameter's type, Empty to Null; a
    /// text longer than its parameter's size is cut to it.
    /// @return as Connection::Execute. Errors: 3709 without an open connection, 13 or 6 for a value that
    /// does not fit its type, 3251 for a parameter that is not input, provider failures.
    std::int64_t Execute();

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;

private:
    std::shared_ptr<std::vector<Parameter>> parameters_; ///< shared with its late-bound collection, never null
};

} // namespace tamarok::ado
