#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "windows_headers.h"

#include "tamarok/ado.h"
#include "tamarok/component.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

namespace tamarok::com {

/// The objects that the arguments of one call stand for: session records, connections, recordsets. They live until the
/// call has ended.
class CallObjects {
public:
    CallObjects() = default;
    ~CallObjects();
    CallObjects(const CallObjects&) = delete;
    CallObjects& operator=(const CallObjects&) = delete;

    /// Returns an argument as the library takes it for a parameter of a type. Connections, recordsets and records of a
    /// client become those of the library, which reach the client's by name.
    Variant argument(component::ValueType type, const VARIANT& value);

    /// To be called when all arguments are read: lends closed recordsets to the connections.
    void prepare() const;

    /// Brings the client's recordsets into the state that the call has left theirs in.
    void finish();

private:
    struct ClientRecordset {
        ObjectRef object;
        std::shared_ptr<ado::Recordset> recordset;
    };

    Variant connection(const Variant& value);
    Variant recordset(const Variant& value);
    Variant record(const VARIANT& value);
    ado::ConnectionRef connectionTo(const ObjectRef& object);

    using MakeConnection = decltype(Platform::makeConnection);
    std::optional<MakeConnection> formerMaker_; ///< of the thread's platform, while the call has one of its own
    std::vector<std::unique_ptr<TmkVar>> records_;
    std::vector<std::pair<ObjectRef, ado::ConnectionRef>> connections_;
    std::vector<ClientRecordset> recordsets_;
};

} // namespace tamarok::com
