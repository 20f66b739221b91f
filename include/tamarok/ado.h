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
    BatchOptimistic = 4
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

/// An open connection to a database. Made by a back end's `connect`; the caller owns it.
class Connection final : public Object {
public:
    /// @param session         the back end's session, not null
    /// @param connectionText  as given by the user, without password
    Connection(std::unique_ptr<Session> session, std::string connectionText);
    ~Connection() override;

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

    /// Ends the session; its locks fall. Error 3704 if it is closed already.
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

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;

private:
    std::unique_ptr<Session> session_;
    std::string connectionText_;
    std::int32_t commandTimeout_ = 30;
    std::function<void(std::string_view)> listener_;
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

private:
    friend class Recordset;
    std::vector<FieldRef> fields_;
};

/// The rows of a statement. A forward-only read-only recordset streams: no row is kept.
class Recordset final : public Object {
public:
    Recordset();
    ~Recordset() override; ///< closes, without errors

    /// Runs `source` on `connection` and stands on the first row, or at EOF. A statement without a
    /// result set leaves the recordset closed.
    /// Errors: 3705 already open, 91 no connection, 3709 connection closed, provider failures.
    void Open(std::string_view source, const ConnectionRef& connection,
              CursorType cursorType = CursorType::OpenForwardOnly, LockType lockType = LockType::ReadOnly,
              std::int32_t options = -1);
    /// Releases rows and row locks. Error 3704 if it is closed.
    void Close();
    ObjectState State() const noexcept;

    /// Behind the last row / before the first one; both on an empty recordset. Error 3704 closed.
    bool AtEOF() const;
    bool AtBOF() const;

    /// The columns; Error 3704 closed.
    const FieldCollection& Fields() const;

    /// Errors of the moves: 3704 closed, 3021 past the end or on an empty recordset, 3219 backwards
    /// on a forward-only recordset.
    void MoveNext();
    void MoveFirst();
    void MoveLast();
    void MovePrevious();
    /// @param rows  number of rows to move, negative backwards
    void Move(std::int64_t rows);

    /// All rows from the current one on (or at most `rows`) as an array of (field, row), zero-based,
    /// leaving the recordset behind the last row taken. Error 3021 where there is none.
    VariantArray GetRows(std::int64_t rows = -1);

    /// Moves to the next row for which "COLUMN operator value" holds (=, <>, <, <=, >, >=, LIKE with
    /// leading or trailing *), or to EOF/BOF. @param skip rows to leave out before the search.
    /// Error 5 for a criterion of another form, 3265 for an unknown column.
    void Find(std::string_view criterion, std::int64_t skip = 0, SearchDirection direction = SearchDirection::Forward);

    /// A second recordset over the same rows, with a position of its own. Error 3251 on a
    /// forward-only one.
    std::shared_ptr<Recordset> Clone() const;

    /// A mark of the current row that can be set again, on clones too. Error 3251 on a forward-only one.
    Variant Bookmark() const;
    void Bookmark(const Variant& mark);

    /// 1-based number of the current row, or positionUnknown (forward-only), positionBOF, positionEOF.
    std::int64_t AbsolutePosition() const;
    void AbsolutePosition(std::int64_t position);

    /// Editing; Error 3251 on a read-only recordset. Setting a field's value begins an edit.
    void AddNew();
    void Update();
    void CancelUpdate();
    /// Deletes the current row in the database (argument 1, the current record, is the only one supported).
    void Delete(std::int32_t affect = 1);

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;

private:
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

    Parameter CreateParameter(std::string_view name, DataType type,
                              ParameterDirection direction = ParameterDirection::Input, std::int32_t size = 0,
                              Variant value = {}) const;
    /// The parameters in the order of the procedure's declaration.
    std::vector<Parameter>& Parameters() noexcept;
    const std::vector<Parameter>& Parameters() const noexcept;

    ConnectionRef ActiveConnection;
    std::string CommandText;
    tamarok::ado::CommandType CommandType = tamarok::ado::CommandType::Text;

    /// Runs it; a result set is dropped. A text value longer than its parameter's size is cut to it.
    /// @return as Connection::Execute. Errors: 3709 without an open connection, provider failures.
    std::int64_t Execute();

    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;

private:
    std::vector<Parameter> parameters_;
};

} // namespace tamarok::ado
