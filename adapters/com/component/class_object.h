#pragma once

#include <array>
#include <cstring>

#include "class_call.h"
#include "class_dispatch.h"
#include "component_server.h"
#include "component_types.h"
#include "counted_object.h"
#include "failures.h"

namespace tamarok::com {

/// A class of the library as a COM object with its dual interface. `Derived` has the methods of the interface, which
/// call `callTyped`, and `Derived::place`, the place of the class in the class map.
template <class Derived, class Interface>
class ClassObject : public Interface,
                    public ISupportErrorInfo,
                    public IProvideClassInfo,
                    public CountedObject<Derived> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** target) override
    {
        if (target == nullptr) return E_POINTER;
        const GUID& own = componentServer().interfaces[Derived::place].id;
        if (id == own || id == IID_IDispatch || id == IID_IUnknown) return give(static_cast<Interface*>(this), target);
        if (id == IID_ISupportErrorInfo) return give(static_cast<ISupportErrorInfo*>(this), target);
        if (id == IID_IProvideClassInfo) return give(static_cast<IProvideClassInfo*>(this), target);
        *target = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return this->addReference(); }
    ULONG STDMETHODCALLTYPE Release() override { return this->dropReference(); }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override
    {
        return id == IID_IDispatch || id == componentServer().interfaces[Derived::place].id ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** description) override
    {
        return description == nullptr ? E_POINTER : describe(componentServer().classes[Derived::place].id, description);
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        if (count == nullptr) return E_POINTER;
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** description) override
    {
        if (description == nullptr) return E_POINTER;
        *description = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        return describe(componentServer().interfaces[Derived::place].id, description);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
        return class_.idsOfNames({names, count}, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* info, UINT* wrongArgument) override
    {
        return class_.invoke(id, kind, parameters, result, info, wrongArgument);
    }

protected:
    /// Calls an operation with the arguments of its typed method.
    /// @param returned  where the result goes, nullptr for an operation without one
    template <class Result, class... Arguments>
    HRESULT callTyped(std::size_t operation, Result returned, Arguments... arguments)
    {
        if constexpr (!std::is_null_pointer_v<Result>)
            if (returned == nullptr) return E_POINTER;
        return guarded([&] {
            const auto* const parameters = class_.info().operations[operation].parameterList.data();
            // List initialisation keeps the order of the arguments.
            std::size_t index = 0;
            const std::array<VARIANT, sizeof...(Arguments)> values{asVariant(parameters[index++], arguments)...};
            VARIANT result = class_.call(operation, values);
            if constexpr (std::is_null_pointer_v<Result>)
                VariantClear(&result);
            else
                take(result, returned);
            return S_OK;
        });
    }

private:
    /// A view of a typed argument, which owns nothing.
    template <class Argument>
    static VARIANT asVariant(const component::ParameterInfo& parameter, Argument argument)
    {
        if constexpr (std::is_same_v<Argument, VARIANT>) {
            return argument;
        } else {
            static_assert(sizeof(Argument) <= sizeof(double));
            VARIANT view;
            VariantInit(&view);
            V_VT(&view) = typeOf(parameter.type);
            if (parameter.byReference) V_VT(&view) |= VT_BYREF;
            // A record goes without its description; it comes from the type library.
            if (V_VT(&view) == (VT_RECORD | VT_BYREF)) V_RECORDINFO(&view) = nullptr;
            std::memcpy(&V_BYREF(&view), &argument, sizeof(Argument));
            return view;
        }
    }

    /// Moves a result into the caller's variable of its type.
    template <class Result>
    static void take(VARIANT& result, Result* returned)
    {
        if constexpr (std::is_same_v<Result, VARIANT>)
            *returned = result;
        else
            std::memcpy(returned, &V_BYREF(&result), sizeof(Result));
    }

    ClassDispatch class_{Derived::place};
};

/// Makes an object of a class for its class object.
template <class Class>
ComPointer<IUnknown> makeUnknown()
{
    const auto made = makeObject<Class>();
    return query<IUnknown>(static_cast<IDispatch*>(made.get()));
}

} // namespace tamarok::com
