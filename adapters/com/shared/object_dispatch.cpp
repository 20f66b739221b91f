#include "object_dispatch.h"

#include <algorithm>

#include "automation_object.h"
#include "failures.h"
#include "value_enumerator.h"
#include "values.h"
#include "wide_text.h"

#include "tamarok/component.h"
#include "tamarok/text.h"
#include "tamarok/variant.h"

namespace tamarok::com {

/// How an object tells which DLL it belongs to. Another DLL may implement it, so that it is not of this file alone: the
/// compiler would take the answer of this DLL for everyone's.
class HeldObject : public IUnknown {
public:
    virtual const void* STDMETHODCALLTYPE module() noexcept = 0;
    virtual const ObjectRef* STDMETHODCALLTYPE object() noexcept = 0;

protected:
    ~HeldObject() = default;
};

namespace {

/// {3E5E5A0C-9D43-4B8E-8F0B-6C1B2D7A40E9}: asks an object whether it is this DLL's own.
constexpr GUID heldObjectId{0x3E5E5A0C, 0x9D43, 0x4B8E, {0x8F, 0x0B, 0x6C, 0x1B, 0x2D, 0x7A, 0x40, 0xE9}};

/// The DLL that an object belongs to: objects of another DLL have other code and must be reached by name.
const void* thisModule() noexcept
{
    static const char mark = 0;
    return &mark;
}

/// The arguments of a request in the library's order.
std::vector<Variant> argumentsOf(const DISPPARAMS& parameters)
{
    std::vector<Variant> values;
    values.reserve(parameters.cArgs);
    for (UINT index = parameters.cArgs; index-- > 0;) {
        Variant value = fromVariant(parameters.rgvarg[index]);
        values.push_back(component::isMissing(value) ? Variant{} : std::move(value));
    }
    return values;
}

/// Gives changed arguments back to the client's variables.
void storeChanged(const DISPPARAMS& parameters, const std::vector<Variant>& before, const std::vector<Variant>& after)
{
    for (std::size_t index = 0; index < after.size(); ++index) {
        const VARIANT& argument = parameters.rgvarg[parameters.cArgs - 1 - index];
        if ((V_VT(&argument) & VT_BYREF) != 0 && before[index] != after[index]) writeBack(argument, after[index]);
    }
}

bool isPut(WORD kind) noexcept
{
    return (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

/// An object of the library as clients see it. Dispatch ids are given to names as they are asked for.
class ObjectDispatch final : public IDispatch,
                             public ISupportErrorInfo,
                             public HeldObject,
                             public CountedObject<ObjectDispatch> {
public:
    explicit ObjectDispatch(ObjectRef object) : object_{std::move(object)} {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** target) override
    {
        if (target == nullptr) return E_POINTER;
        if (id == IID_IUnknown || id == IID_IDispatch) return give(static_cast<IDispatch*>(this), target);
        if (id == IID_ISupportErrorInfo) return give(static_cast<ISupportErrorInfo*>(this), target);
        if (id == heldObjectId) return give(static_cast<HeldObject*>(this), target);
        *target = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return addReference(); }
    ULONG STDMETHODCALLTYPE Release() override { return dropReference(); }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override
    {
        return id == IID_IDispatch ? S_OK : S_FALSE;
    }

    const void* STDMETHODCALLTYPE module() noexcept override { return thisModule(); }
    const ObjectRef* STDMETHODCALLTYPE object() noexcept override { return &object_; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        if (count == nullptr) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** type) override
    {
        if (type != nullptr) *type = nullptr;
        return DISP_E_BADINDEX;
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
        return guarded([&] {
            std::fill_n(ids, count, DISPID_UNKNOWN);
            const HRESULT found = idOf(toUtf8(std::wstring_view{names[0]}), ids[0]);
            // Arguments have no names.
            return count > 1 ? DISP_E_UNKNOWNNAME : found;
        });
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* info, UINT*) override
    {
        if (parameters == nullptr) return E_INVALIDARG;
        try {
            if (parameters->cNamedArgs != (isPut(kind) ? 1U : 0U)) return DISP_E_NONAMEDARGS;
            if (id == DISPID_NEWENUM) return giveEnumerator(result);
            const Variant value = request(id, kind, *parameters);
            if (result != nullptr) *result = toVariant(value);
            return S_OK;
        } catch (...) {
            return fill(info, currentError());
        }
    }

private:
    HRESULT idOf(std::string name, DISPID& id)
    {
        const auto equals = [&name](std::string_view known) { return text::equalsNoCase(known, name); };
        const auto found = std::ranges::find_if(names_, equals);
        id = static_cast<DISPID>(found - names_.begin()) + 1;
        if (found != names_.end()) return S_OK;
        // A class that tells no names is asked at the call.
        const auto members = object_->memberNames();
        if (!members.empty() && std::ranges::none_of(members, equals)) {
            id = DISPID_UNKNOWN;
            return DISP_E_UNKNOWNNAME;
        }
        names_.push_back(std::move(name));
        return S_OK;
    }

    Variant request(DISPID id, WORD kind, const DISPPARAMS& parameters)
    {
        std::vector<Variant> arguments = argumentsOf(parameters);
        if (id == DISPID_VALUE) return requestDefault(kind, arguments);
        if (id < 1 || static_cast<std::size_t>(id) > names_.size())
            throw Error{errors::noSuchMember, "The object has no member of the id " + std::to_string(id) + "."};
        const std::string& name = names_[static_cast<std::size_t>(id) - 1];
        if (isPut(kind)) return write(name, arguments);
        if (kind == DISPATCH_PROPERTYGET) return object_->get(name, arguments);
        const std::vector<Variant> before = arguments;
        Variant result = object_->call(name, arguments);
        storeChanged(parameters, before, arguments);
        return result;
    }

    Variant write(std::string_view name, const std::vector<Variant>& arguments)
    {
        if (arguments.empty()) throw Error{errors::wrongArgumentCount, std::string{name} + ": no value is given."};
        const std::span<const Variant> all{arguments};
        if (all.size() == 1)
            object_->put(name, all.back());
        else
            object_->putIndexed(name, all.first(all.size() - 1), all.back());
        return {};
    }

    HRESULT giveEnumerator(VARIANT* result) const
    {
        if (result == nullptr) return E_POINTER;
        V_UNKNOWN(result) = makeEnumerator(*object_).release();
        V_VT(result) = VT_UNKNOWN;
        return S_OK;
    }

    /// The object as a value, `object(index)` as its element.
    Variant requestDefault(WORD kind, std::vector<Variant>& arguments)
    {
        if (isPut(kind)) return write(arguments.size() > 1 ? "Item" : "Value", arguments);
        return arguments.empty() ? object_->defaultValue() : object_->get("Item", arguments);
    }

    ObjectRef object_;
    std::vector<std::string> names_; ///< by dispatch id, from 1
};

} // namespace

ComPointer<IDispatch> toDispatch(const ObjectRef& object)
{
    if (!object) return {};
    if (const auto* const client = dynamic_cast<const AutomationObject*>(object.get()))
        return ComPointer<IDispatch>{client->dispatch()};
    return adopt<IDispatch>(makeObject<ObjectDispatch>(object).release());
}

ObjectRef heldObject(IUnknown* object)
{
    HeldObject* held = nullptr;
    if (FAILED(object->QueryInterface(heldObjectId, static_cast<void**>(static_cast<void*>(&held))))) return {};
    const auto owner = adopt(held);
    return held->module() == thisModule() ? *held->object() : nullptr;
}

} // namespace tamarok::com
