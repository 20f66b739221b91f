#include "client_connection.h"

#include <array>

#include "automation_object.h"
#include "client_recordset.h"
#include "failures.h"
#include "sql_literal.h"
#include "wide_text.h"

#include "tamarok/ado_backend.h"
#include "tamarok/component.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::com {

namespace {

constexpr std::string_view commandTimeout = "CommandTimeout";

/// Whether a connection is one of the bundle: only these make recordsets by themselves.
bool canCreateRecordsets(const Object& connection)
{
    const auto* const client = dynamic_cast<const AutomationObject*>(&connection);
    return client != nullptr && client->hasMember("CreateRecordset");
}

/// A client's time-out is set for one statement and put back afterwards.
class TimeoutScope {
public:
    TimeoutScope(Object& connection, std::int32_t known, std::int32_t wanted) : connection_{connection}, known_{known}
    {
        isChanged_ = wanted != known;
        if (isChanged_) connection_.put(commandTimeout, wanted);
    }
    ~TimeoutScope()
    {
        if (!isChanged_) return;
        try {
            connection_.put(commandTimeout, known_);
        } catch (const Error&) {
            isChanged_ = false; // a connection that was lost meanwhile has no time-out
        }
    }
    TimeoutScope(const TimeoutScope&) = delete;
    TimeoutScope& operator=(const TimeoutScope&) = delete;

private:
    Object& connection_;
    std::int32_t known_;
    bool isChanged_ = false;
};

class ClientSession final : public ado::Session {
public:
    ClientSession(ObjectRef connection, std::int32_t timeout) : connection_{std::move(connection)}, timeout_{timeout} {}

    std::string_view name() const override { return "connection of the client"; }

    std::unique_ptr<ado::Cursor> open(const ado::Statement& statement) override
    {
        const TimeoutScope timeout{*connection_, timeout_, statement.timeoutSeconds};
        const bool isPlain =
            statement.lockType == ado::LockType::ReadOnly && statement.cursorType == ado::CursorType::OpenForwardOnly;
        if (isPlain) return makeClientCursor(execute(textOf(statement), true), false, true);
        return openOther(statement);
    }

    std::int64_t execute(const ado::Statement& statement) override
    {
        const TimeoutScope timeout{*connection_, timeout_, statement.timeoutSeconds};
        execute(textOf(statement), false);
        return -1; // nobody looks at the number of rows
    }

    void cancel() noexcept override
    {
        try {
            connection_->call("Cancel", {});
        } catch (...) {
            return; // a connection that cannot end its statement lets it run
        }
    }
    void begin() override { connection_->call("BeginTrans", {}); }
    void commit() override { connection_->call("CommitTrans", {}); }
    void rollback() override { connection_->call("RollbackTrans", {}); }

    void lend(const ObjectRef& recordset) { lent_ = recordset; }

private:
    /// Runs a statement as the client's connection does it: the number of rows is left out, no options.
    ObjectRef execute(const std::string& text, bool wantsRows)
    {
        std::array arguments{Variant{text}, component::missingArgument(), Variant{std::int32_t{-1}}};
        const Variant result = connection_->call("Execute", arguments);
        ObjectRef rows = result.isObject() ? result.asObject() : nullptr;
        if (wantsRows && !rows)
            throw Error{errors::objectNotSet, "Object not set: the connection's Execute gives no recordset."};
        return rows;
    }

    /// Makes a closed recordset of the connection's kind: by its member CreateRecordset, or the one that Execute gives,
    /// which may be opened anew when it is closed.
    ObjectRef makeRecordset(const ado::Statement& statement)
    {
        if (canCreateRecordsets(*connection_)) return connection_->call("CreateRecordset", {}).asObject();
        ObjectRef recordset = execute(textOf(statement), true);
        if (isOpenRecordset(*recordset)) recordset->call("Close", {});
        return recordset;
    }

    /// A cursor or lock of another kind needs a recordset that is opened for it: the client's own, or one of the
    /// connection's kind.
    std::unique_ptr<ado::Cursor> openOther(const ado::Statement& statement)
    {
        const bool locks = statement.lockType == ado::LockType::Pessimistic;
        const bool isLent = locks && lent_ != nullptr;
        ObjectRef recordset = isLent ? std::exchange(lent_, nullptr) : makeRecordset(statement);
        std::array arguments{Variant{textOf(statement)}, Variant{connection_},
                             Variant{static_cast<std::int32_t>(statement.cursorType)},
                             Variant{static_cast<std::int32_t>(statement.lockType)}, Variant{std::int32_t{-1}}};
        recordset->call("Open", arguments);
        return makeClientCursor(recordset, statement.lockType != ado::LockType::ReadOnly, !isLent);
    }

    static std::string textOf(const ado::Statement& statement)
    {
        if (!statement.procedure) {
            if (!statement.parameters.empty())
                throw Error{errors::readOnlyRecordset, "A connection of the client takes no parameters in statements."};
            return std::string{statement.text};
        }
        // Every kind of connection runs a procedure by its statement; not every kind has commands.
        std::string text = "EXEC " + std::string{statement.text};
        const char* separator = " ";
        for (const ado::Parameter& parameter : statement.parameters) {
            text += separator + sqlLiteral(parameter.value);
            separator = ", ";
        }
        return text;
    }

    ObjectRef connection_;
    ObjectRef lent_; ///< the client's closed recordset, for the next statement with a lock
    std::int32_t timeout_;
};

} // namespace

ado::ConnectionRef connectToClient(const ObjectRef& object)
{
    const std::int32_t timeout = convert::toLong(object->get(commandTimeout, {}));
    auto connection = std::make_shared<ado::Connection>(std::make_unique<ClientSession>(object, timeout), "");
    connection->CommandTimeout(timeout);
    return connection;
}

ado::ConnectionRef openLike(const ObjectRef& object, std::string_view connectionText)
{
    const bool isOwn = object && canCreateRecordsets(*object);
    const std::wstring name = isOwn ? L"Tamarok.Connection" : L"ADODB.Connection";
    CLSID id{};
    check(CLSIDFromProgID(name.c_str(), &id), toUtf8(name));
    ComPointer<IDispatch> made;
    check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, made.putVoid()), toUtf8(name));
    const auto opened = std::make_shared<AutomationObject>(made.get());
    Variant argument{connectionText};
    opened->call("Open", {&argument, 1});
    return connectToClient(opened);
}

void lendRecordset(const ado::Connection& connection, const ObjectRef& recordset)
{
    if (auto* const session = dynamic_cast<ClientSession*>(&connection.session())) session->lend(recordset);
}

} // namespace tamarok::com
