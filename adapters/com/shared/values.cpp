#include "values.h"

#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "arrays.h"
#include "automation_object.h"
#include "failures.h"
#include "object_dispatch.h"
#include "record_value.h"
#include "wide_text.h"

#include "tamarok/component.h"
#include "tamarok/error.h"

namespace tamarok::com {

namespace {

[[noreturn]] void refuse(VARTYPE type)
{
    throw Error{errors::typeMismatch,
                "Type mismatch: the interface's type " + std::to_string(type) + " has no counterpart."};
}

/// Below it a Double holds each whole number exactly.
constexpr double exactWholeNumbers = 9007199254740992.0;

Variant fromDecimal(DECIMAL decimal)
{
    double number = 0;
    check(VarR8FromDec(&decimal, &number), "Decimal");
    LONG64 whole = 0;
    if (decimal.scale == 0 && std::abs(number) >= exactWholeNumbers && SUCCEEDED(VarI8FromDec(&decimal, &whole)))
        return std::int64_t{whole};
    return number;
}

Variant fromUnsigned(std::uint64_t number)
{
    if (number <= std::uint64_t{std::numeric_limits<std::int32_t>::max()}) return static_cast<std::int32_t>(number);
    if (number <= std::uint64_t{std::numeric_limits<std::int64_t>::max()}) return static_cast<std::int64_t>(number);
    return static_cast<double>(number);
}

Variant fromUnknown(IUnknown* object)
{
    if (object == nullptr) return Variant{ObjectRef{}};
    const auto dispatch = query<IDispatch>(object);
    if (!dispatch) throw Error{errors::typeMismatch, "Type mismatch: the object cannot be reached by name."};
    return fromDispatch(dispatch.get());
}

/// What a reference refers to, as a value that owns nothing.
VARIANT referenced(const VARIANT& value)
{
    VARIANT target;
    VariantInit(&target);
    const VARTYPE type = V_VT(&value) & static_cast<VARTYPE>(~VT_BYREF);
    V_VT(&target) = type;
    if (V_BYREF(&value) == nullptr) refuse(V_VT(&value));
    if (type == VT_VARIANT) return *V_VARIANTREF(&value);
    if ((type & VT_ARRAY) != 0) {
        V_ARRAY(&target) = *V_ARRAYREF(&value);
        return target;
    }
    switch (type) {
    case VT_I1:
    case VT_UI1: V_UI1(&target) = *V_UI1REF(&value); break;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL: V_I2(&target) = *V_I2REF(&value); break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR: V_I4(&target) = *V_I4REF(&value); break;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE: V_I8(&target) = *V_I8REF(&value); break;
    case VT_BSTR: V_BSTR(&target) = *V_BSTRREF(&value); break;
    case VT_DISPATCH:
    case VT_UNKNOWN: V_UNKNOWN(&target) = *V_UNKNOWNREF(&value); break;
    case VT_DECIMAL:
        target.decVal = *V_DECIMALREF(&value);
        V_VT(&target) = VT_DECIMAL;
        break;
    default: refuse(V_VT(&value));
    }
    return target;
}

VARIANT variantOf(VARTYPE type) noexcept
{
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = type;
    return value;
}

VARIANT fromLongLong(std::int64_t number)
{
    const bool isLong =
        number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<std::int32_t>::max();
    VARIANT value = variantOf(VT_I4);
    if (isLong) {
        V_I4(&value) = static_cast<LONG>(number);
        return value;
    }
    check(VarDecFromI8(number, &value.decVal), "Decimal");
    V_VT(&value) = VT_DECIMAL;
    return value;
}

/// Moves a value of exactly the reference's type to where the reference points.
void store(const VARIANT& reference, VARIANT& value)
{
    const VARTYPE type = V_VT(&value);
    if ((type & VT_ARRAY) != 0) {
        if (*V_ARRAYREF(&reference) != nullptr) check(SafeArrayDestroy(*V_ARRAYREF(&reference)), "array");
        *V_ARRAYREF(&reference) = V_ARRAY(&value);
        return;
    }
    switch (type) {
    case VT_I1:
    case VT_UI1: *V_UI1REF(&reference) = V_UI1(&value); break;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL: *V_I2REF(&reference) = V_I2(&value); break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4: *V_I4REF(&reference) = V_I4(&value); break;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE: *V_I8REF(&reference) = V_I8(&value); break;
    case VT_DECIMAL: *V_DECIMALREF(&reference) = value.decVal; break;
    case VT_BSTR:
        SysFreeString(*V_BSTRREF(&reference));
        *V_BSTRREF(&reference) = V_BSTR(&value);
        break;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        if (*V_UNKNOWNREF(&reference) != nullptr) (*V_UNKNOWNREF(&reference))->Release();
        *V_UNKNOWNREF(&reference) = V_UNKNOWN(&value);
        break;
    default: refuse(V_VT(&reference));
    }
}

} // namespace

Variant fromVariant(const VARIANT& value)
{
    const VARTYPE type = V_VT(&value);
    if (type == (VT_RECORD | VT_BYREF) || type == VT_RECORD) return makeRecordValue(value);
    if ((type & VT_BYREF) != 0) return fromVariant(referenced(value));
    if ((type & VT_ARRAY) != 0) return fromSafeArray(V_ARRAY(&value));
    switch (type) {
    case VT_EMPTY: return Empty{};
    case VT_NULL: return Null{};
    case VT_BOOL: return V_BOOL(&value) != VARIANT_FALSE;
    case VT_I1: return static_cast<std::int16_t>(V_I1(&value));
    case VT_UI1: return static_cast<std::int16_t>(V_UI1(&value));
    case VT_I2: return std::int16_t{V_I2(&value)};
    case VT_UI2: return static_cast<std::int32_t>(V_UI2(&value));
    case VT_I4: return static_cast<std::int32_t>(V_I4(&value));
    case VT_INT: return static_cast<std::int32_t>(V_INT(&value));
    case VT_UI4: return fromUnsigned(V_UI4(&value));
    case VT_UINT: return fromUnsigned(V_UINT(&value));
    case VT_I8: return std::int64_t{V_I8(&value)};
    case VT_UI8: return fromUnsigned(V_UI8(&value));
    case VT_R4: return static_cast<double>(V_R4(&value));
    case VT_R8: return V_R8(&value);
    case VT_CY: return static_cast<double>(V_CY(&value).int64) / 10000.0;
    case VT_DECIMAL: return fromDecimal(value.decVal);
    case VT_DATE: return Date{V_DATE(&value)};
    case VT_BSTR: return toUtf8(V_BSTR(&value));
    case VT_DISPATCH: return fromDispatch(V_DISPATCH(&value));
    case VT_UNKNOWN: return fromUnknown(V_UNKNOWN(&value));
    case VT_ERROR:
        if (V_ERROR(&value) == DISP_E_PARAMNOTFOUND) return component::missingArgument();
        [[fallthrough]];
    default: refuse(type);
    }
}

VARIANT toVariant(const Variant& value)
{
    VARIANT made = variantOf(VT_EMPTY);
    if (component::isMissing(value)) {
        made = variantOf(VT_ERROR);
        V_ERROR(&made) = DISP_E_PARAMNOTFOUND;
        return made;
    }
    switch (value.kind()) {
    case Variant::Kind::Empty: break;
    case Variant::Kind::Null: return variantOf(VT_NULL);
    case Variant::Kind::Boolean:
        made = variantOf(VT_BOOL);
        V_BOOL(&made) = value.asBoolean().number();
        break;
    case Variant::Kind::Integer:
        made = variantOf(VT_I2);
        V_I2(&made) = value.asInteger();
        break;
    case Variant::Kind::Long:
        made = variantOf(VT_I4);
        V_I4(&made) = value.asLong();
        break;
    case Variant::Kind::LongLong: return fromLongLong(value.asLongLong());
    case Variant::Kind::Double:
        made = variantOf(VT_R8);
        V_R8(&made) = value.asDouble();
        break;
    case Variant::Kind::Date:
        made = variantOf(VT_DATE);
        V_DATE(&made) = value.asDate().days;
        break;
    case Variant::Kind::String:
        made = variantOf(VT_BSTR);
        V_BSTR(&made) = makeBstr(value.asString());
        break;
    case Variant::Kind::Object:
        made = variantOf(VT_DISPATCH);
        V_DISPATCH(&made) = toDispatch(value.asObject()).release();
        break;
    case Variant::Kind::Array:
        made = variantOf(VT_ARRAY | VT_VARIANT);
        V_ARRAY(&made) = toSafeArray(value.asArray(), VT_VARIANT);
        break;
    }
    return made;
}

VARIANT toVariant(const Variant& value, VARTYPE type)
{
    if (value.isArray() && (type & VT_ARRAY) != 0) {
        VARIANT made = variantOf(type);
        V_ARRAY(&made) = toSafeArray(value.asArray(), type & VT_TYPEMASK);
        return made;
    }
    OwnedVariant made{toVariant(value)};
    const bool isNothing = value.isObject() && type == VT_UNKNOWN;
    if (isNothing) V_VT(&made.get()) = VT_UNKNOWN; // an IDispatch is an IUnknown
    if (type != VT_VARIANT && V_VT(&made.get()) != type)
        check(VariantChangeTypeEx(&made.get(), &made.get(), LOCALE_USER_DEFAULT, 0, type), "conversion of a value");
    return made.release();
}

void writeBack(const VARIANT& reference, const Variant& value)
{
    const VARTYPE type = V_VT(&reference) & static_cast<VARTYPE>(~VT_BYREF);
    if (type != VT_VARIANT) {
        OwnedVariant converted{toVariant(value, type)};
        store(reference, converted.get());
        converted.release();
        return;
    }
    VARIANT& target = *V_VARIANTREF(&reference);
    // A Variant that refers to a variable itself passes the value on to it.
    if ((V_VT(&target) & VT_BYREF) != 0) return writeBack(target, value);
    // An array keeps its element type, by which a client declared it.
    const bool keepsElements = value.isArray() && (V_VT(&target) & VT_ARRAY) != 0;
    OwnedVariant made{toVariant(value, keepsElements ? V_VT(&target) : static_cast<VARTYPE>(VT_VARIANT))};
    check(VariantClear(&target), "variable of the caller");
    target = made.release();
}

} // namespace tamarok::com
