#pragma once

#include <span>

#include "com_pointer.h"

#include "tamarok/component.h"

namespace tamarok::com {

/// An instance of a class of the library, and what IDispatch does with it over the class map. Dispatch ids are the
/// places of the operations in the interface; the two functions of a property have one id, that of the first.
class ClassDispatch {
public:
    /// @param place  of the class in the class map
    explicit ClassDispatch(std::size_t place);

    const component::ClassInfo& info() const noexcept { return info_; }
    const Object& instance() const noexcept { return *instance_; }

    HRESULT idsOfNames(std::span<LPOLESTR> names, DISPID* ids) const noexcept;
    HRESULT invoke(DISPID id, WORD kind, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                   UINT* wrongArgument) const noexcept;
    /// Calls an operation by its place, from 0. The result is the caller's.
    VARIANT call(std::size_t operation, std::span<const VARIANT> arguments) const;

private:
    const component::OperationInfo& operationOf(DISPID id, WORD kind) const;

    const component::ClassInfo& info_;
    ObjectRef instance_;
};

/// Returns the description of an interface or class of the type library in this DLL.
HRESULT describe(const GUID& id, ITypeInfo** description) noexcept;

} // namespace tamarok::com
