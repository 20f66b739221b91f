#include "automation_object.h"

#include <algorithm>
#include <ranges>
#include <vector>

#include "failures.h"
#include "object_dispatch.h"
#include "values.h"
#include "wide_text.h"

namespace tamarok::com {

namespace {

/// What JScript answers to a call of a property that is no function.
constexpr auto functionExpected = static_cast<HRESULT>(0x800A138AU);

/// The name of a type without the leading "_" of an interface.
std::string nameOf(ITypeInfo& type)
{
    Bstr name;
    if (FAILED(type.GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr))) return {};
    std::string text = toUtf8(name.get());
    if (text.starts_with('_')) text.erase(0, 1);
    return text;
}

} // namespace

/// One request to an object: the arguments in the order of the interface, and what came back.
class AutomationObject::Call {
public:
    /// @param value  what a property is set to, behind the index; nullptr for any other request
    explicit Call(std::span<const Variant> args, const Variant* value = nullptr)
    {
        values_.reserve(args.size() + 1);
        // The interface takes arguments from the last to the first.
        if (value != nullptr) values_.emplace_back(toVariant(*value));
        for (const Variant& argument : std::views::reverse(args))
            values_.emplace_back(toVariant(argument));
        raw_.reserve(values_.size());
        for (const OwnedVariant& owned : values_)
            raw_.push_back(owned.get());
        parameters_ = {raw_.data(), nullptr, static_cast<UINT>(raw_.size()), 0};
        if (value != nullptr) {
            parameters_.rgdispidNamedArgs = &putName_;
            parameters_.cNamedArgs = 1;
        }
    }

    /// Makes the request as one kind. A failed one may be made again as another kind.
    bool run(const AutomationObject& object, DISPID id, WORD kind)
    {
        info_ = {};
        const bool wantsResult = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0;
        outcome_ = object.invoke(id, kind, parameters_, wantsResult ? result_.put() : nullptr, info_);
        return SUCCEEDED(outcome_);
    }

    /// Whether the object has the member, but not of this kind.
    bool isOtherKind() const noexcept
    {
        return outcome_ == DISP_E_MEMBERNOTFOUND || outcome_ == DISP_E_BADPARAMCOUNT || outcome_ == E_NOTIMPL ||
               (outcome_ == DISP_E_EXCEPTION && info_.scode == functionExpected) || outcome_ == functionExpected;
    }

    Variant result() const { return fromVariant(result_.get()); }
    [[noreturn]] void fail(std::string_view what) { throw errorOf(outcome_, &info_, what); }

private:
    std::vector<OwnedVariant> values_;
    std::vector<VARIANT> raw_;
    DISPID putName_ = DISPID_PROPERTYPUT;
    DISPPARAMS parameters_{};
    OwnedVariant result_;
    HRESULT outcome_ = S_OK;
    EXCEPINFO info_{};
};

AutomationObject::AutomationObject(IDispatch* object) : object_{object}, extended_{query<IDispatchEx>(object)} {}

HRESULT AutomationObject::invoke(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result, EXCEPINFO& info) const
{
    if (extended_) return extended_->InvokeEx(id, LOCALE_USER_DEFAULT, kind, &parameters, result, &info, nullptr);
    UINT wrong = 0;
    return object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result, &info, &wrong);
}

bool AutomationObject::findId(std::string_view name, DISPID& id) const
{
    const Bstr text{name};
    if (extended_ && SUCCEEDED(extended_->GetDispID(text.get(), fdexNameCaseInsensitive, &id))) return true;
    LPOLESTR raw = text.get();
    const HRESULT found = object_->GetIDsOfNames(IID_NULL, &raw, 1, LOCALE_USER_DEFAULT, &id);
    // An object that cannot be asked any more must not pass for one without the member.
    if (HRESULT_FACILITY(found) == FACILITY_RPC && FAILED(found)) throw errorOf(found, nullptr, name);
    return SUCCEEDED(found);
}

bool AutomationObject::hasMember(std::string_view name) const
{
    DISPID id = DISPID_UNKNOWN;
    return findId(name, id);
}

DISPID AutomationObject::idOf(std::string_view name) const
{
    DISPID id = DISPID_UNKNOWN;
    if (!findId(name, id)) noSuchMember(name);
    return id;
}

Variant AutomationObject::read(DISPID id, std::string_view name, std::span<const Variant> args, bool methodFirst) const
{
    const WORD first = methodFirst ? DISPATCH_METHOD : DISPATCH_PROPERTYGET;
    const WORD second = methodFirst ? DISPATCH_PROPERTYGET : DISPATCH_METHOD;
    Call call{args};
    if (call.run(*this, id, first) || (call.isOtherKind() && call.run(*this, id, second))) return call.result();
    if (args.empty() || !call.isOtherKind()) call.fail(name);
    // An index may be meant for the object that the property holds, as in `ColumnHeaders(1)`.
    Call whole{{}};
    if (!whole.run(*this, id, DISPATCH_PROPERTYGET)) call.fail(name);
    const Variant holder = whole.result();
    const auto* const list =
        holder.isObject() ? dynamic_cast<const AutomationObject*>(holder.asObject().get()) : nullptr;
    if (list == nullptr) call.fail(name);
    Call element{args};
    if (element.run(*list, DISPID_VALUE, DISPATCH_PROPERTYGET) ||
        (element.isOtherKind() && element.run(*list, DISPID_VALUE, DISPATCH_METHOD)))
        return element.result();
    element.fail(name);
}

Variant AutomationObject::get(std::string_view name, std::span<const Variant> args) const
{
    // Script hosts ignore the arguments of a property, so that a function of theirs is called first.
    return read(idOf(name), name, args, extended_ && !args.empty());
}

Variant AutomationObject::call(std::string_view name, std::span<Variant> args)
{
    return read(idOf(name), name, args, true);
}

void AutomationObject::put(std::string_view name, const Variant& value)
{
    putIndexed(name, {}, value);
}

void AutomationObject::putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value)
{
    const DISPID id = idOf(name);
    Call call{index, &value};
    if (value.isObject() && call.run(*this, id, DISPATCH_PROPERTYPUTREF)) return;
    if (call.run(*this, id, DISPATCH_PROPERTYPUT)) return;
    if (index.empty() || !call.isOtherKind()) call.fail(name);
    Object::putIndexed(name, index, value);
}

Variant AutomationObject::defaultValue() const
{
    Call call{{}};
    if (!call.run(*this, DISPID_VALUE, DISPATCH_PROPERTYGET) &&
        !(call.isOtherKind() && call.run(*this, DISPID_VALUE, DISPATCH_METHOD)))
        call.fail("default value");
    return call.result();
}

bool AutomationObject::hasDefaultValue() const noexcept
{
    // The interface has no other question for it than to read the value.
    try {
        Call call{{}};
        return call.run(*this, DISPID_VALUE, DISPATCH_PROPERTYGET) || !call.isOtherKind();
    } catch (...) {
        return false;
    }
}

std::string AutomationObject::describedType() const
{
    ComPointer<ITypeInfo> type;
    if (const auto provider = query<IProvideClassInfo>(object_.get());
        provider && SUCCEEDED(provider->GetClassInfo(type.put())))
        if (std::string name = nameOf(*type); !name.empty()) return name;
    if (DISPID id = DISPID_UNKNOWN; findId("TypeName", id)) {
        Call call{{}};
        if (!call.run(*this, id, DISPATCH_PROPERTYGET) && !call.isOtherKind()) call.fail("TypeName");
        if (const Variant name = call.result(); name.isString()) return name.asString();
    }
    if (!extended_ && SUCCEEDED(object_->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.put())))
        if (std::string name = nameOf(*type); !name.empty()) return name;
    return "Object";
}

std::string_view AutomationObject::typeName() const
{
    if (typeName_.empty()) typeName_ = describedType();
    return typeName_;
}

Variant fromDispatch(IDispatch* object)
{
    if (object == nullptr) return Variant{ObjectRef{}};
    if (ObjectRef own = heldObject(object)) return Variant{std::move(own)};
    return Variant{std::make_shared<AutomationObject>(object)};
}

} // namespace tamarok::com
