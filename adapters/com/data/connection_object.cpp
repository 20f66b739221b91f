#include "connection_object.h"

#include <algorithm>
#include <array>

#include "opening.h"
#include "recordset_object.h"

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::data {

namespace {

using ReadArguments = std::span<const Variant>;
using CallArguments = std::span<Variant>;

constexpr std::string_view source = "Tamarok.Connection";
constexpr std::int32_t noRecords = 128; ///< option of Execute: no recordset is wanted

[[noreturn]] void fail(std::int32_t number, std::string description)
{
    throw Error{number, std::move(description), std::string{source}};
}

std::string optionalText(CallArguments arguments, std::size_t index)
{
    const Variant* value = optionalArgument(arguments, index);
    return value != nullptr ? convert::toText(*value) : std::string{};
}

/// Open([text], [user], [password], [options]). The only option is 0 or -1: opening waits until it is done.
Variant callOpen(ConnectionObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 4, "Open", source);
    const Variant* options = optionalArgument(arguments, 3);
    if (options != nullptr && convert::toLong(*options) > 0)
        fail(errors::readOnlyRecordset, "Open: a connection cannot be opened in the background.");
    self.open(optionalText(arguments, 0), optionalText(arguments, 1), optionalText(arguments, 2));
    return {};
}

/// True for a text that begins with a statement whose changed rows are counted.
bool isChange(std::string_view statement)
{
    static constexpr std::array<std::string_view, 3> changes{"INSERT", "UPDATE", "DELETE"};
    statement = text::trim(statement);
    return std::ranges::any_of(changes, [statement](std::string_view word) {
        return text::equalsNoCase(statement.substr(0, word.size()), word);
    });
}

/// Execute(statement, [rows changed by reference], [options]): a recordset with the rows, closed where there are none.
/// The rows that a statement changes are counted where the caller asks for them, and the statement is a change or the
/// caller wants no rows; otherwise the count is -1.
Variant callExecute(ConnectionObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 3, "Execute", source);
    const std::string statement = convert::toText(arguments[0]);
    const Variant* given = optionalArgument(arguments, 2);
    const std::int32_t options = given != nullptr ? convert::toLong(*given) : -1;
    const bool withoutRows = options > 0 && (options & noRecords) != 0;
    auto recordset = std::make_shared<RecordsetObject>();
    std::int64_t touched = -1;
    if (withoutRows || (arguments.size() > 1 && isChange(statement)))
        touched = noting(self.errors(), [&] { return self.connection()->Execute(statement, options); });
    else
        recordset->open(statement, self.shared_from_this(), ado::CursorType::OpenForwardOnly, ado::LockType::ReadOnly,
                        options);
    if (arguments.size() > 1) arguments[1] = touched;
    return recordset;
}

/// BeginTrans returns the level, which is 1: outer transactions alone are counted by the back ends.
Variant callBeginTrans(ConnectionObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "BeginTrans", source);
    noting(self.errors(), [&] { self.connection()->BeginTrans(); });
    return std::int32_t{1};
}

template <void (ado::Connection::*operation)()>
Variant transaction(ConnectionObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "The method", source);
    noting(self.errors(), [&] { (self.connection().get()->*operation)(); });
    return {};
}

Variant callClose(ConnectionObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "Close", source);
    self.close();
    return {};
}

Variant callCancel(ConnectionObject& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "Cancel", source);
    self.connection()->Cancel();
    return {};
}

Variant callCreateRecordset(ConnectionObject&, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "CreateRecordset", source);
    return std::make_shared<RecordsetObject>();
}

/// MakeDatabase(file, [logs]).
Variant callMakeDatabase(ConnectionObject&, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 2, "MakeDatabase", source);
    const Variant* logs = optionalArgument(arguments, 1);
    makeDatabase(convert::toText(arguments[0]), logs != nullptr ? convert::toLongLong(*logs) : 0);
    return {};
}

Variant readErrors(const ConnectionObject& self, ReadArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "Errors", source);
    return arguments.empty() ? Variant{self.errors()} : self.errors()->get("Item", arguments);
}

/// Provider: the part of the connection text. Setting it puts it before a text that names none.
Variant readProvider(const ConnectionObject& self, ReadArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "Provider", source);
    return providerOf(self.connectionText());
}

void putProvider(ConnectionObject& self, const Variant& value)
{
    const std::string text = self.connectionText();
    if (!providerOf(text).empty()) fail(errors::invalidArgument, "Provider: the connection text names one already.");
    self.connectionText("Provider=" + convert::toText(value) + (text.empty() ? "" : ";" + text));
}

} // namespace

std::span<const Member<ConnectionObject>> ConnectionObject::members() noexcept
{
    using C = ConnectionObject;
    static constexpr Member<C> rows[]{
        {.name = "Execute", .call = callExecute},
        {.name = "Open", .call = callOpen},
        {.name = "Close", .call = callClose},
        {.name = "State", .get = [](const C& c, ReadArguments) -> Variant { return std::int32_t{c.isOpen()}; }},
        {.name = "ConnectionString",
         .get = [](const C& c, ReadArguments) -> Variant { return c.connectionText(); },
         .put = [](C& c, const Variant& value) { c.connectionText(convert::toText(value)); }},
        {.name = "CommandTimeout",
         .get = [](const C& c, ReadArguments) -> Variant { return c.commandTimeout(); },
         .put = [](C& c, const Variant& value) { c.commandTimeout(convert::toLong(value)); }},
        {.name = "ConnectionTimeout",
         .get = [](const C& c, ReadArguments) -> Variant { return c.connectionTimeout; },
         .put = [](C& c, const Variant& value) { c.connectionTimeout = convert::toLong(value); }},
        {.name = "CursorLocation",
         .get = [](const C& c, ReadArguments) -> Variant { return c.cursorLocation; },
         .put = [](C& c, const Variant& value) { c.cursorLocation = checkedLocation(value, source); }},
        {.name = "Errors", .get = readErrors},
        {.name = "BeginTrans", .call = callBeginTrans},
        {.name = "CommitTrans", .call = transaction<&ado::Connection::CommitTrans>},
        {.name = "RollbackTrans", .call = transaction<&ado::Connection::RollbackTrans>},
        {.name = "Cancel", .call = callCancel},
        {.name = "Provider", .get = readProvider, .put = putProvider},
        {.name = "CreateRecordset", .call = callCreateRecordset},
        {.name = "MakeDatabase", .call = callMakeDatabase},
    };
    return rows;
}

void ConnectionObject::open(const std::string& text, std::string_view user, std::string_view password)
{
    requireClosed("Open");
    const std::string& chosen = text.empty() ? text_ : text;
    if (chosen.empty()) fail(errors::invalidArgument, "Open: no connection text is given.");
    connection_ = noting(errors_, [&] { return openConnection(withAccount(chosen, user, password)); });
    text_ = chosen;
    connection_->CommandTimeout(commandTimeout_);
}

void ConnectionObject::close()
{
    if (!isOpen()) fail(errors::objectClosed, "Close: the connection is closed.");
    connection_->Close();
}

bool ConnectionObject::isOpen() const noexcept
{
    return connection_ && connection_->State() == ado::ObjectState::Open;
}

const ado::ConnectionRef& ConnectionObject::connection() const
{
    if (!isOpen()) fail(errors::connectionClosed, "The connection is closed.");
    return connection_;
}

/// The text of an open connection is that of the back end: it shows no password.
std::string ConnectionObject::connectionText() const
{
    return isOpen() ? connection_->ConnectionString() : text_;
}

void ConnectionObject::connectionText(std::string text)
{
    requireClosed("ConnectionString");
    text_ = std::move(text);
}

void ConnectionObject::commandTimeout(std::int32_t seconds)
{
    if (seconds < 0) fail(errors::invalidArgument, "CommandTimeout: " + std::to_string(seconds) + " is below 0.");
    commandTimeout_ = seconds;
    if (isOpen()) connection_->CommandTimeout(seconds);
}

void ConnectionObject::requireClosed(std::string_view what) const
{
    if (isOpen()) fail(errors::objectOpen, std::string{what} + ": the connection is open.");
}

std::shared_ptr<ConnectionObject> connectionOf(const Variant& value)
{
    if (value.isString()) {
        auto opened = std::make_shared<ConnectionObject>();
        opened->open(value.asString(), {}, {});
        return opened;
    }
    auto connection = value.isObject() ? std::dynamic_pointer_cast<ConnectionObject>(value.asObject()) : nullptr;
    if (!connection) fail(errors::typeMismatch, "The argument is no connection of the class Tamarok.Connection.");
    static_cast<void>(connection->connection());
    return connection;
}

} // namespace tamarok::data
