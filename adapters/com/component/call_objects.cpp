#include "call_objects.h"

#include <algorithm>

#include "automation_object.h"
#include "client_connection.h"
#include "client_recordset.h"
#include "session_record.h"
#include "values.h"

#include "tamarok/error.h"

namespace tamarok::com {

namespace {

using component::ValueType;

/// Whether two references lead to the same object of the client.
bool isSame(const ObjectRef& a, const ObjectRef& b)
{
    const auto* const first = dynamic_cast<const AutomationObject*>(a.get());
    const auto* const second = dynamic_cast<const AutomationObject*>(b.get());
    if (first == nullptr || second == nullptr) return a == b;
    return query<IUnknown>(first->dispatch()).get() == query<IUnknown>(second->dispatch()).get();
}

bool isClientObject(const Variant& value)
{
    return value.isObject() && dynamic_cast<const AutomationObject*>(value.asObject().get()) != nullptr;
}

/// The value that a reference of any depth leads to.
const VARIANT& target(const VARIANT& value) noexcept
{
    const bool isReference = V_VT(&value) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(&value) != nullptr;
    return isReference ? target(*V_VARIANTREF(&value)) : value;
}

} // namespace

CallObjects::~CallObjects()
{
    if (formerMaker_) Platform::current().makeConnection = std::move(*formerMaker_);
}

Variant CallObjects::argument(ValueType type, const VARIANT& value)
{
    switch (type) {
    case ValueType::Record: return record(target(value));
    case ValueType::Connection: return connection(fromVariant(value));
    case ValueType::Recordset: return recordset(fromVariant(value));
    default: return fromVariant(value);
    }
}

ado::ConnectionRef CallObjects::connectionTo(const ObjectRef& object)
{
    // The connection of the record and that of another argument are mostly one.
    const auto known = std::ranges::find_if(connections_, [&](const auto& pair) { return isSame(pair.first, object); });
    if (known != connections_.end()) return known->second;
    auto made = connectToClient(object);
    connections_.emplace_back(object, made);
    return made;
}

Variant CallObjects::connection(const Variant& value)
{
    return isClientObject(value) ? Variant{connectionTo(value.asObject())} : value;
}

Variant CallObjects::recordset(const Variant& value)
{
    if (!isClientObject(value)) return value;
    const ObjectRef& object = value.asObject();
    auto made = isOpenRecordset(*object) ? wrapRecordset(object) : std::make_shared<ado::Recordset>();
    recordsets_.push_back({object, made});
    return Variant{std::move(made)};
}

Variant CallObjects::record(const VARIANT& value)
{
    if (isNothing(value)) return (V_VT(&value) & VT_TYPEMASK) == VT_RECORD ? Variant{ObjectRef{}} : fromVariant(value);
    TmkVar& made = *records_.emplace_back(std::make_unique<TmkVar>());
    readSessionRecord(value, made, [this](const ObjectRef& object) {
        // What an operation reads beside the session goes over a connection of the session's kind.
        auto& maker = Platform::current().makeConnection;
        if (!formerMaker_) formerMaker_ = std::move(maker);
        maker = [object](std::string_view text) { return openLike(object, text); };
        return connectionTo(object);
    });
    return Variant{component::makeRecordObject(made)};
}

void CallObjects::prepare() const
{
    for (const ClientRecordset& client : recordsets_) {
        if (client.recordset->State() == ado::ObjectState::Open) continue;
        for (const auto& [object, connection] : connections_)
            lendRecordset(*connection, client.object);
    }
}

void CallObjects::finish()
{
    for (const ClientRecordset& client : recordsets_)
        if (client.recordset->State() == ado::ObjectState::Closed && isOpenRecordset(*client.object))
            client.object->call("Close", {});
}

} // namespace tamarok::com
