#pragma once

#include <string>

#include "com_pointer.h"

#include "tamarok/object.h"
#include "tamarok/variant.h"

namespace tamarok::com {

/// An object of a client, reached by name: a control, a connection, a recordset. Members are looked up through
/// IDispatchEx where the object offers it. A name is read as a property first and called as a method where there is no
/// such property, each by itself: some objects refuse a request for either. Arguments go by value.
class AutomationObject final : public Object {
public:
    /// @param object  not null
    explicit AutomationObject(IDispatch* object);

    IDispatch* dispatch() const noexcept { return object_.get(); }

    /// Whether the object knows a name. Errors: those of an object that cannot be reached any more.
    bool hasMember(std::string_view name) const;

    /// The name of the class, or of the interface without its leading "_". An object that describes neither, as those
    /// of scripts, states it by a property TypeName; otherwise it is "Object".
    std::string_view typeName() const override;
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    Variant defaultValue() const override;
    bool hasDefaultValue() const noexcept override;

private:
    class Call;
    DISPID idOf(std::string_view name) const;
    bool findId(std::string_view name, DISPID& id) const;
    HRESULT invoke(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result, EXCEPINFO& info) const;
    Variant read(DISPID id, std::string_view name, std::span<const Variant> args, bool methodFirst) const;
    std::string describedType() const;

    ComPointer<IDispatch> object_;
    ComPointer<IDispatchEx> extended_; ///< empty where the object has no such interface
    mutable std::string typeName_;     ///< empty until it is asked for
};

/// Returns an object of the interface as one of the library: Nothing for the null pointer, the library's own object
/// where this DLL has given it out, otherwise an AutomationObject.
Variant fromDispatch(IDispatch* object);

} // namespace tamarok::com
