#include <algorithm>
#include <utility>

#include "ado_failure.h"
#include "open_options.h"

#include "tamarok/ado_backend.h"
#include "tamarok/convert.h"
#include "tamarok/members.h"
#include "tamarok/spelling.h"

// The connection and its late binding. Every statement is announced to the listener before it is sent.

namespace tamarok::ado {

Connection::Connection(std::unique_ptr<Session> session, std::string connectionText) :
    session_{std::move(session)}, connectionText_{std::move(connectionText)}
{
    if (!session_) fail(errors::objectNotSet, connectionSource, "A connection was made without a session.");
}

// Recordsets hold a reference to their connection, so none of them is open when it is destroyed.
Connection::~Connection() = default;

std::int64_t Connection::Execute(std::string_view statement, std::int32_t options)
{
    Session& open = session();
    // The listener sees a procedure call with EXEC before it; the session gets the bare name and the flag.
    const bool procedure = namesProcedure(options, connectionSource);
    announce(procedure ? "EXEC " + std::string{statement} : statement);
    return guarded(statement, open.name(), [&] {
        return open.execute({.text = statement, .timeoutSeconds = commandTimeout_, .procedure = procedure});
    });
}

std::int32_t Connection::CommandTimeout() const noexcept
{
    return commandTimeout_;
}

void Connection::CommandTimeout(std::int32_t seconds)
{
    if (seconds < 0)
        fail(errors::invalidArgument, connectionSource,
             "CommandTimeout: " + std::to_string(seconds) + " seconds are below 0.");
    commandTimeout_ = seconds;
}

const std::string& Connection::ConnectionString() const noexcept
{
    return connectionText_;
}

ObjectState Connection::State() const noexcept
{
    return session_ ? ObjectState::Open : ObjectState::Closed;
}

void Connection::Cancel() const noexcept
{
    if (session_) session_->cancel();
}

void Connection::Close()
{
    if (!session_) fail(errors::objectClosed, connectionSource, "Close: the connection is closed already.");
    // Cursors must be gone before the session that they read from.
    // A recordset removes itself from the list when it is released.
    while (!dependents_.empty())
        dependents_.back()->release();
    session_.reset();
}

void Connection::BeginTrans()
{
    Session& open = session();
    // Transaction calls have no statement that an error could name.
    guarded({}, open.name(), [&] { open.begin(); });
}

void Connection::CommitTrans()
{
    Session& open = session();
    guarded({}, open.name(), [&] { open.commit(); });
}

void Connection::RollbackTrans()
{
    Session& open = session();
    guarded({}, open.name(), [&] { open.rollback(); });
}

void Connection::listen(std::function<void(std::string_view)> listener)
{
    listener_ = std::move(listener);
}

Session& Connection::session() const
{
    if (!session_) fail(errors::connectionClosed, connectionSource, "The connection is closed.");
    return *session_;
}

void Connection::announce(std::string_view statement) const
{
    if (listener_) listener_(statement);
}

void Connection::attach(Dependent& dependent)
{
    dependents_.push_back(&dependent);
}

void Connection::detach(const Dependent& dependent) noexcept
{
    std::erase(dependents_, &dependent);
}

// An absent connection is Error 91; a closed one is found by session(), as Error 3709.
Connection& require(const ConnectionRef& connection)
{
    if (!connection) fail(errors::objectNotSet, connectionSource, "No connection is set.");
    return *connection;
}

namespace {

// Late binding: one row a member, sorted by name. Arguments are converted as an assignment to the declared type.
using ReadArguments = std::span<const Variant>;
using CallArguments = std::span<Variant>;

/// Execute(statement, [rows changed by reference], [options]).
Variant callExecute(Connection& connection, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 3, "Execute", adodb);
    const Variant* options = optionalArgument(arguments, 2);
    const std::int64_t touched =
        connection.Execute(convert::toText(arguments[0]), options ? convert::toLong(*options) : -1);
    // The caller passes the second argument by reference and reads the number of changed rows from it.
    if (arguments.size() > 1) arguments[1] = touched;
    return {};
}

/// A method without arguments and result.
template <void (Connection::*operation)()>
Variant plain(Connection& connection, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "The method", adodb);
    (connection.*operation)();
    return {};
}

constexpr Member<Connection> members[]{
    {.name = "BeginTrans", .call = plain<&Connection::BeginTrans>},
    {.name = "Close", .call = plain<&Connection::Close>},
    {.name = "CommandTimeout",
     .get = [](const Connection& c, ReadArguments) -> Variant { return c.CommandTimeout(); },
     .put = [](Connection& c, const Variant& value) { c.CommandTimeout(convert::toLong(value)); }},
    {.name = "CommitTrans", .call = plain<&Connection::CommitTrans>},
    {.name = "ConnectionString",
     .get = [](const Connection& c, ReadArguments) -> Variant { return c.ConnectionString(); }},
    {.name = "Execute", .call = callExecute},
    {.name = "RollbackTrans", .call = plain<&Connection::RollbackTrans>},
    {.name = "State",
     .get = [](const Connection& c, ReadArguments) -> Variant { return static_cast<std::int32_t>(c.State()); }},
};

constexpr std::span<const Member<Connection>> table{members};

} // namespace

std::string_view Connection::typeName() const
{
    return "Connection";
}

Variant Connection::get(std::string_view name, std::span<const Variant> args) const
{
    if (const auto getter = findGetter(table, name)) return getter(*this, args);
    noSuchMember(name);
}

void Connection::put(std::string_view name, const Variant& value)
{
    if (const auto setter = findSetter(table, name)) return setter(*this, value);
    noSuchMember(name);
}

Variant Connection::call(std::string_view name, std::span<Variant> args)
{
    // A property with parentheses arrives as a call.
    if (const auto found = findMethod(table, name)) return found(*this, args);
    return get(name, args);
}

std::vector<std::string_view> Connection::memberNames() const
{
    return spelling::namesOf(table);
}

} // namespace tamarok::ado
