#include "class_dispatch.h"

#include <algorithm>
#include <array>
#include <string>

#include "class_call.h"
#include "failures.h"
#include "module.h"
#include "wide_text.h"
#include "windows_platform.h"

#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::com {

namespace {

using component::ClassInfo;
using component::MemberKind;
using component::OperationInfo;

constexpr std::size_t mostArguments = OperationInfo::maxParameters;

/// The dispatch id of an operation: the place of the first one of its name, from 1. 0 for an unknown name.
DISPID idOf(const ClassInfo& info, std::string_view name) noexcept
{
    const auto operations = info.operations;
    const auto found = std::ranges::find_if(
        operations, [name](const OperationInfo& operation) { return text::equalsNoCase(operation.name, name); });
    return found == operations.end() ? 0 : static_cast<DISPID>(found - operations.begin()) + 1;
}

DISPID parameterOf(const OperationInfo& operation, std::string_view name) noexcept
{
    const auto parameters = operation.parameters();
    const auto found = std::ranges::find_if(parameters, [name](const component::ParameterInfo& parameter) {
        return text::equalsNoCase(parameter.name, name);
    });
    return found == parameters.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - parameters.begin());
}

VARIANT missing() noexcept
{
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = VT_ERROR;
    V_ERROR(&value) = DISP_E_PARAMNOTFOUND;
    return value;
}

/// The arguments of a request in the order of the signature.
class OrderedArguments {
public:
    OrderedArguments(const OperationInfo& operation, const DISPPARAMS& parameters)
    {
        const std::span given{parameters.rgvarg, parameters.cArgs};
        if (given.size() > mostArguments || parameters.cNamedArgs > given.size())
            throw Error{errors::wrongArgumentCount, "Wrong number of arguments: " + std::to_string(given.size())};
        // Named arguments come first, the others in reverse order behind them.
        const std::size_t positional = given.size() - parameters.cNamedArgs;
        for (std::size_t index = 0; index < positional; ++index)
            values_[index] = given[given.size() - 1 - index];
        count_ = positional;
        for (std::size_t index = 0; index < parameters.cNamedArgs; ++index)
            place(operation, parameters.rgdispidNamedArgs[index], given[index]);
    }

    std::span<const VARIANT> all() const noexcept { return {values_.data(), count_}; }

private:
    void place(const OperationInfo& operation, DISPID name, const VARIANT& value)
    {
        // The value of a property has a name of its own, and stands last.
        const auto index = name == DISPID_PROPERTYPUT ? count_ : static_cast<std::size_t>(name);
        if (name < DISPID_PROPERTYPUT || index >= operation.parameterCount)
            throw Error{448, "Named argument not found: id " + std::to_string(name)};
        for (; count_ <= index; ++count_)
            values_[count_] = missing();
        values_[index] = value;
    }

    std::array<VARIANT, mostArguments> values_;
    std::size_t count_ = 0;
};

bool fits(MemberKind kind, WORD asked) noexcept
{
    constexpr WORD puts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    // Scripts ask for a method or a property without knowing which it is.
    return ((kind == MemberKind::PropertyPut ? puts : WORD{DISPATCH_METHOD | DISPATCH_PROPERTYGET}) & asked) != 0;
}

const ClassInfo& classAt(std::size_t place)
{
    return component::classes()[place];
}

ObjectRef prepared(const ClassInfo& info)
{
    equipThread();
    return component::makeInstance(info);
}

} // namespace

ClassDispatch::ClassDispatch(std::size_t place) : info_{classAt(place)}, instance_{prepared(info_)} {}

HRESULT ClassDispatch::idsOfNames(std::span<LPOLESTR> names, DISPID* ids) const noexcept
{
    return guarded([&] {
        std::fill_n(ids, names.size(), DISPID_UNKNOWN);
        const DISPID member = idOf(info_, toUtf8(std::wstring_view{names[0]}));
        if (member == 0) return DISP_E_UNKNOWNNAME;
        ids[0] = member;
        const OperationInfo& operation = info_.operations[static_cast<std::size_t>(member) - 1];
        HRESULT found = S_OK;
        for (std::size_t index = 1; index < names.size(); ++index) {
            ids[index] = parameterOf(operation, toUtf8(std::wstring_view{names[index]}));
            if (ids[index] == DISPID_UNKNOWN) found = DISP_E_UNKNOWNNAME;
        }
        return found;
    });
}

const OperationInfo& ClassDispatch::operationOf(DISPID id, WORD kind) const
{
    const auto operations = info_.operations;
    const auto place = static_cast<std::size_t>(id) - 1;
    if (id >= 1 && place < operations.size()) {
        // Behind the first function of a property stands the second one.
        for (std::size_t index = place; index < operations.size() && operations[index].name == operations[place].name;
             ++index)
            if (fits(operations[index].kind, kind)) return operations[index];
    }
    throw Error{errors::noSuchMember,
                "The class has no such member, or none that is used this way: id " + std::to_string(id),
                std::string{info_.name}};
}

HRESULT ClassDispatch::invoke(DISPID id, WORD kind, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                              UINT*) const noexcept
{
    if (parameters == nullptr) return E_INVALIDARG;
    try {
        equipThread();
        const OperationInfo& operation = operationOf(id, kind);
        const OrderedArguments arguments{operation, *parameters};
        OwnedVariant returned{callOperation(info_, operation, *instance_, arguments.all())};
        if (result != nullptr) *result = returned.release();
        return S_OK;
    } catch (...) {
        return fill(info, currentError());
    }
}

VARIANT ClassDispatch::call(std::size_t operation, std::span<const VARIANT> arguments) const
{
    equipThread();
    return callOperation(info_, info_.operations[operation], *instance_, arguments);
}

HRESULT describe(const GUID& id, ITypeInfo** description) noexcept
{
    return guarded([&] {
        ComPointer<ITypeLib> library;
        // The library lies in the DLL's resources; nothing is registered by reading it.
        const HRESULT loaded = LoadTypeLibEx(module::path().c_str(), REGKIND_NONE, library.put());
        return FAILED(loaded) ? loaded : library->GetTypeInfoOfGuid(id, description);
    });
}

} // namespace tamarok::com
