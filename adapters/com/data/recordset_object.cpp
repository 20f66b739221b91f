#include "recordset_object.h"

#include "kept_object.h"

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::data {

namespace {

using ReadArguments = std::span<const Variant>;
using CallArguments = std::span<Variant>;

constexpr std::string_view recordsetSource = "Tamarok.Recordset";
constexpr std::int32_t serverLocation = 2;
constexpr std::int32_t clientLocation = 3;

void requireClosed(const RecordsetObject& self, std::string_view what)
{
    if (!self.isOpen()) return;
    throw Error{errors::objectOpen, std::string{what} + ": the recordset is open.", std::string{recordsetSource}};
}

/// An argument of Open; what is left out, Empty or -1 stands for the property.
template <class Number>
Number argumentOr(CallArguments arguments, std::size_t index, Number property)
{
    const Variant* value = optionalArgument(arguments, index);
    const std::int32_t number = value != nullptr ? convert::toLong(*value) : -1;
    return number == -1 ? property : static_cast<Number>(number);
}

/// Open([source], [connection], [cursor type], [lock type], [options]).
Variant callOpen(RecordsetObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 5, "Open", recordsetSource);
    requireClosed(self, "Open");
    const Variant* statement = optionalArgument(arguments, 0);
    const Variant* connection = optionalArgument(arguments, 1);
    self.open(statement != nullptr ? convert::toText(*statement) : self.source,
              connection != nullptr ? connectionOf(*connection) : self.connection,
              argumentOr(arguments, 2, self.cursorType), argumentOr(arguments, 3, self.lockType),
              argumentOr(arguments, 4, std::int32_t{-1}));
    return {};
}

Variant callRequery(RecordsetObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "Requery", recordsetSource);
    self.requery();
    return {};
}

Variant callClone(RecordsetObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "Clone", recordsetSource);
    return self.clone();
}

/// Writes values into the fields that an array, or a single name or ordinal, names.
void assign(const RecordsetObject& self, const Variant& fields, const Variant& values)
{
    const auto write = [&](const Variant& field, const Variant& value) {
        self.rows().putIndexed("Fields", std::span{&field, 1}, value);
    };
    if (!fields.isArray()) return write(fields, values);
    const std::vector<Variant>& names = fields.asArray().elements();
    const std::vector<Variant>& given = values.asArray().elements();
    if (names.size() != given.size())
        throw Error{errors::invalidArgument,
                    std::to_string(names.size()) + " fields are given, and " + std::to_string(given.size()) +
                        " values.",
                    std::string{recordsetSource}};
    for (std::size_t index = 0; index < names.size(); ++index)
        write(names[index], given[index]);
}

/// AddNew([fields], [values]). With values the row is written at once.
Variant callAddNew(RecordsetObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 2, "AddNew", recordsetSource);
    noting(self.connection ? self.connection->errors() : nullptr, [&] {
        self.rows().AddNew();
        if (optionalArgument(arguments, 0) == nullptr) return;
        checkArgumentCount(arguments.size(), 2, 2, "AddNew", recordsetSource);
        assign(self, arguments[0], arguments[1]);
        self.rows().Update();
        self.noteNewRow();
    });
    return {};
}

/// Update([fields], [values]).
Variant callUpdate(RecordsetObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 2, "Update", recordsetSource);
    noting(self.connection ? self.connection->errors() : nullptr, [&] {
        if (optionalArgument(arguments, 0) != nullptr) {
            checkArgumentCount(arguments.size(), 2, 2, "Update", recordsetSource);
            assign(self, arguments[0], arguments[1]);
        }
        self.rows().Update();
        self.noteNewRow();
    });
    return {};
}

/// The collection of the fields, or one of them by name or ordinal. It keeps the rows, also without the recordset.
Variant readFields(const RecordsetObject& self, ReadArguments arguments)
{
    return keeping(self.rows().get("Fields", arguments), self.shareRows());
}

/// `recordset(key)` is the field of that name or ordinal.
Variant readItem(const RecordsetObject& self, ReadArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 1, "Item", recordsetSource);
    return readFields(self, arguments);
}

void putItem(RecordsetObject& self, ReadArguments index, const Variant& value)
{
    self.rows().putIndexed("Fields", index, value);
}

Variant readConnection(const RecordsetObject& self, ReadArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "ActiveConnection", recordsetSource);
    return self.connection ? Variant{self.connection} : Variant{ObjectRef{}};
}

/// Takes a connection or a text; Nothing and Empty remove the connection.
void putConnection(RecordsetObject& self, const Variant& value)
{
    requireClosed(self, "ActiveConnection");
    const bool isNothing = value.isEmpty() || (value.isObject() && !value.asObject());
    self.connection = isNothing ? nullptr : connectionOf(value);
}

/// A property that Open uses, as a number.
template <auto member>
Variant readNumber(const RecordsetObject& self, ReadArguments)
{
    return static_cast<std::int32_t>(self.*member);
}

template <auto member>
void putNumber(RecordsetObject& self, const Variant& value)
{
    requireClosed(self, "The property");
    self.*member = static_cast<std::remove_reference_t<decltype(self.*member)>>(convert::toLong(value));
}

Variant readLocation(const RecordsetObject& self, ReadArguments)
{
    return self.cursorLocation.value_or(self.connection ? self.connection->cursorLocation : serverLocation);
}

void putLocation(RecordsetObject& self, const Variant& value)
{
    requireClosed(self, "CursorLocation");
    self.cursorLocation = checkedLocation(value, recordsetSource);
}

} // namespace

std::span<const Member<RecordsetObject>> RecordsetObject::members() noexcept
{
    using R = RecordsetObject;
    static constexpr Member<R> rows[]{
        {.name = "Fields", .get = readFields, .putIndexed = putItem},
        {.name = "Item", .get = readItem, .putIndexed = putItem},
        {.name = "Open", .call = callOpen},
        {.name = "Update", .call = callUpdate},
        {.name = "AddNew", .call = callAddNew},
        {.name = "Clone", .call = callClone},
        {.name = "Requery", .call = callRequery},
        {.name = "Source",
         .get = [](const R& r, ReadArguments) -> Variant { return r.source; },
         .put =
             [](R& r, const Variant& value) {
                 requireClosed(r, "Source");
                 r.source = convert::toText(value);
             }},
        {.name = "ActiveConnection", .get = readConnection, .put = putConnection},
        {.name = "CursorType", .get = readNumber<&R::cursorType>, .put = putNumber<&R::cursorType>},
        {.name = "LockType", .get = readNumber<&R::lockType>, .put = putNumber<&R::lockType>},
        {.name = "Sort",
         .get = [](const R& r, ReadArguments) -> Variant { return r.order(); },
         .put = [](R& r, const Variant& value) { r.sort(convert::toText(value)); }},
        {.name = "CursorLocation", .get = readLocation, .put = putLocation},
    };
    return rows;
}

/// What was used stays in the properties.
void RecordsetObject::open(const std::string& statement, std::shared_ptr<ConnectionObject> used,
                           ado::CursorType wantedType, ado::LockType wantedLock, std::int32_t options)
{
    source = statement;
    connection = std::move(used);
    cursorType = keepsRows() ? ado::CursorType::OpenStatic : wantedType;
    // Rows with the client hold no locks.
    lockType = keepsRows() && wantedLock == ado::LockType::Pessimistic ? ado::LockType::Optimistic : wantedLock;
    options_ = options;
    sorted_.reset();
    order_.clear();
    noting(failures(), [&] {
        rows_->Open(source, connection ? connection->connection() : nullptr, cursorType, lockType, options_);
    });
}

void RecordsetObject::requery()
{
    rows_->Close();
    open(std::string{source}, connection, cursorType, lockType, options_);
}

void RecordsetObject::sort(std::string_view order)
{
    if (!text::trim(order).empty()) {
        if (cursorType != ado::CursorType::OpenStatic && cursorType != ado::CursorType::OpenKeyset)
            throw Error{errors::readOnlyRecordset, "Sort: only static and keyset rows can be sorted.",
                        std::string{recordsetSource}};
        sorted_ = std::make_unique<SortedRows>(rows_, order);
    } else {
        sorted_.reset();
        if (!rows_->AtBOF() || !rows_->AtEOF()) rows_->MoveFirst();
    }
    order_ = order;
}

void RecordsetObject::noteNewRow()
{
    if (sorted_) sorted_->addRow();
}

std::shared_ptr<RecordsetObject> RecordsetObject::clone() const
{
    auto copy = std::make_shared<RecordsetObject>();
    copy->rows_ = rows_->Clone();
    copy->source = source;
    copy->connection = connection;
    copy->cursorType = cursorType;
    copy->lockType = lockType;
    copy->cursorLocation = cursorLocation;
    copy->options_ = options_;
    return copy;
}

bool RecordsetObject::keepsRows() const noexcept
{
    return cursorLocation.value_or(connection ? connection->cursorLocation : serverLocation) == clientLocation;
}

std::int32_t checkedLocation(const Variant& value, std::string_view of)
{
    const std::int32_t location = convert::toLong(value);
    if (location == serverLocation || location == clientLocation) return location;
    throw Error{errors::invalidArgument, "CursorLocation: " + std::to_string(location) + " is neither 2 nor 3.",
                std::string{of}};
}

} // namespace tamarok::data
