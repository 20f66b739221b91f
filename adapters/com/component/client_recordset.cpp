#include "client_recordset.h"

#include <array>
#include <map>

#include "automation_object.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::com {

namespace {

using ado::DataType;

Variant read(const Object& object, std::string_view name)
{
    return object.get(name, {});
}

Object& element(const Object& list, const Variant& index, ObjectRef& holder)
{
    holder = list.get("Item", {&index, 1}).asObject();
    return require(holder, "Item");
}

/// Returns a value in the kind that the column's type demands: a client may deliver a Currency or a Decimal.
Variant ofType(DataType type, Variant value)
{
    if (value.isNull() || value.isEmpty()) return Null{};
    switch (type) {
    case DataType::SmallInt:
    case DataType::TinyInt:
    case DataType::UnsignedTinyInt: return convert::toInteger(value);
    case DataType::Integer: return convert::toLong(value);
    case DataType::BigInt: return convert::toLongLong(value);
    case DataType::Single:
    case DataType::Double:
    case DataType::Currency:
    case DataType::Decimal:
    case DataType::Numeric: return convert::toDouble(value);
    default: return value;
    }
}

/// A connection's recordset as a cursor of the library. It can change and delete its current row; rows are locked by
/// the client's recordset itself.
class ClientCursor final : public ado::Cursor {
public:
    ClientCursor(ObjectRef recordset, bool updatable, bool closes) :
        recordset_{std::move(recordset)}, updatable_{updatable}, closes_{closes}
    {
        if (!isOpenRecordset(*recordset_)) return;
        const Variant fields = read(*recordset_, "Fields");
        const Object& list = require(fields.asObject(), "Fields");
        const std::int32_t count = convert::toLong(read(list, "Count"));
        for (std::int32_t ordinal = 0; ordinal < count; ++ordinal)
            add(list, ordinal);
    }
    ~ClientCursor() override
    {
        if (!closes_) return;
        try {
            if (isOpenRecordset(*recordset_)) recordset_->call("Close", {});
        } catch (const Error&) {
            closes_ = false; // the reference goes, and with it the recordset
        }
    }
    ClientCursor(const ClientCursor&) = delete;
    ClientCursor& operator=(const ClientCursor&) = delete;

    const std::vector<ado::ColumnInfo>& columns() const override { return columns_; }

    bool next() override
    {
        if (state_ == State::End) return false;
        // An open recordset stands on its first row already.
        if (state_ == State::Row) {
            moveTo(lastRow_);
            recordset_->call("MoveNext", {});
        }
        const bool isAtEnd = convert::toBoolean(read(*recordset_, "EOF"));
        state_ = isAtEnd ? State::End : State::Row;
        if (!isAtEnd) standOn(++lastRow_);
        return !isAtEnd;
    }

    Variant value(std::size_t column) const override
    {
        return ofType(columns_[column].type, read(*fields_[column], "Value"));
    }

    void restart() override
    {
        // A dynamic recordset finds new rows by it; one without rows refuses it.
        try {
            recordset_->call("MoveFirst", {});
        } catch (const Error& error) {
            if (error.number != errors::noCurrentRecord) throw;
        }
        // The marks of a dynamic recordset end with it; keys are never given twice.
        marks_.clear();
        state_ = State::Opened;
    }

    void nameBases(std::vector<ado::ColumnInfo>& columns) override
    {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            columns[column].baseColumn = property(*fields_[column], "BASECOLUMNNAME");
            columns[column].baseTable = property(*fields_[column], "BASETABLENAME");
        }
    }

    bool updatable() const override { return updatable_; }
    std::int64_t rowKey() const override { return row_; }
    void lockRow(std::int64_t key) override { moveTo(key); }
    void unlockRow() override {}

    void updateRow(std::int64_t key, std::span<const ado::Assignment> assignments) override
    {
        moveTo(key);
        assign(assignments);
    }
    std::int64_t insertRow(std::span<const ado::Assignment> assignments) override
    {
        recordset_->call("AddNew", {});
        assign(assignments);
        standOn(++lastRow_);
        return row_;
    }
    void deleteRow(std::int64_t key) override
    {
        moveTo(key);
        std::array affect{Variant{std::int32_t{1}}};
        recordset_->call("Delete", affect);
    }
    bool readRow(std::int64_t key, std::vector<Variant>& values) override
    {
        moveTo(key);
        values.clear();
        for (std::size_t column = 0; column < columns_.size(); ++column)
            values.push_back(value(column));
        return true;
    }

private:
    enum class State : std::uint8_t { Opened, Row, End };

    void add(const Object& list, std::int32_t ordinal)
    {
        ObjectRef holder;
        const Object& field = element(list, Variant{ordinal}, holder);
        ado::ColumnInfo info;
        info.name = convert::toText(read(field, "Name"));
        info.type = static_cast<DataType>(convert::toLong(read(field, "Type")));
        info.definedSize = convert::toLong(read(field, "DefinedSize"));
        columns_.push_back(std::move(info));
        fields_.push_back(std::move(holder));
    }

    /// A property of a field that only some providers know: a member of its Properties, or of itself. "" for none.
    static std::string property(const Object& field, std::string_view name)
    {
        try {
            const Variant properties = read(field, "Properties");
            ObjectRef holder;
            const Variant value = read(element(*properties.asObject(), Variant{name}, holder), "Value");
            return value.isString() ? value.asString() : std::string{};
        } catch (const Error&) {
            return ownProperty(field, name);
        }
    }
    static std::string ownProperty(const Object& field, std::string_view name)
    {
        try {
            const Variant value = read(field, name);
            return value.isString() ? value.asString() : std::string{};
        } catch (const Error&) {
            return {}; // an expression, or a provider that does not tell
        }
    }

    /// Notes that the recordset stands on a row, with its mark where rows are come back to.
    void standOn(std::int64_t row)
    {
        row_ = row;
        if (updatable_) marks_.emplace(row, read(*recordset_, "Bookmark"));
    }

    void moveTo(std::int64_t row)
    {
        if (row == row_) return;
        const auto mark = marks_.find(row);
        if (mark == marks_.end())
            throw Error{errors::readOnlyRecordset, "The recordset of the client does not move back to a row."};
        recordset_->put("Bookmark", mark->second);
        row_ = row;
    }

    void assign(std::span<const ado::Assignment> assignments)
    {
        for (const ado::Assignment& assignment : assignments)
            fields_[assignment.column]->put("Value", assignment.value);
        recordset_->call("Update", {});
    }

    ObjectRef recordset_;
    std::vector<ado::ColumnInfo> columns_;
    std::vector<ObjectRef> fields_; ///< they stay valid while the recordset moves
    State state_ = State::Opened;
    std::map<std::int64_t, Variant> marks_; ///< bookmarks by row keys
    std::int64_t row_ = 0;                  ///< the current one
    std::int64_t lastRow_ = 0;              ///< the last one that was read
    bool updatable_;
    bool closes_;
};

/// The session of a recordset whose connection is not known: its one statement is the recordset.
class GivenRecordset final : public ado::Session {
public:
    explicit GivenRecordset(ObjectRef recordset) : recordset_{std::move(recordset)} {}

    std::string_view name() const override { return "recordset of the client"; }
    std::unique_ptr<ado::Cursor> open(const ado::Statement& statement) override
    {
        return makeClientCursor(recordset_, statement.lockType != ado::LockType::ReadOnly, false);
    }
    std::int64_t execute(const ado::Statement&) override { refuse(); }
    void begin() override { refuse(); }
    void commit() override { refuse(); }
    void rollback() override { refuse(); }

private:
    [[noreturn]] static void refuse()
    {
        throw Error{errors::badCursorOperation, "A recordset without connection runs no statement."};
    }

    ObjectRef recordset_;
};

} // namespace

bool isOpenRecordset(const Object& recordset)
{
    return (convert::toLong(read(recordset, "State")) & 1) != 0;
}

std::unique_ptr<ado::Cursor> makeClientCursor(ObjectRef recordset, bool updatable, bool closes)
{
    return std::make_unique<ClientCursor>(std::move(recordset), updatable, closes);
}

std::shared_ptr<ado::Recordset> wrapRecordset(const ObjectRef& recordset)
{
    const auto connection = std::make_shared<ado::Connection>(std::make_unique<GivenRecordset>(recordset), "");
    const auto lock = static_cast<ado::LockType>(convert::toLong(read(*recordset, "LockType")));
    const bool isReadOnly = lock == ado::LockType::ReadOnly || lock == ado::LockType::Unspecified;
    auto made = std::make_shared<ado::Recordset>();
    made->Open("", connection, isReadOnly ? ado::CursorType::OpenForwardOnly : ado::CursorType::OpenDynamic,
               isReadOnly ? ado::LockType::ReadOnly : ado::LockType::Pessimistic);
    return made;
}

} // namespace tamarok::com
