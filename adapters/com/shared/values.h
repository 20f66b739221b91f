#pragma once

#include <utility>

#include "windows_headers.h"

#include "tamarok/variant.h"

/// Values between the component interface and the library.
namespace tamarok::com {

/// Returns a value of the library for a value of the interface. References are followed. Byte becomes Integer, unsigned
/// types the next wider one, Single, Currency and Decimal Double (LongLong where a whole Decimal has more digits than a
/// Double), an omitted argument `component::missingArgument`, a record an object with the record's fields. An object
/// without late binding and any other type is error 13.
Variant fromVariant(const VARIANT& value);

/// Returns a value of the interface for a value of the library. The caller clears it. LongLong becomes Long where it
/// fits, otherwise Decimal, since clients have no 64-bit type.
VARIANT toVariant(const Variant& value);

/// The same converted to a type of the interface; VT_VARIANT keeps the type. For VT_ARRAY with an element type an array
/// is made. Errors 13, 6.
VARIANT toVariant(const Variant& value, VARTYPE type);

/// Writes a value to a variable of the caller: any type with VT_BYREF. The old content is released, the type stays;
/// only a Variant takes the type of the value. Errors 13, 6; nothing is written then.
void writeBack(const VARIANT& reference, const Variant& value);

/// An owned value of the interface.
class OwnedVariant {
public:
    OwnedVariant() noexcept { VariantInit(&value_); }
    explicit OwnedVariant(const VARIANT& taken) noexcept : value_{taken} {}
    ~OwnedVariant() { VariantClear(&value_); }
    OwnedVariant(OwnedVariant&& other) noexcept : value_{other.release()} {}
    OwnedVariant& operator=(OwnedVariant&& other) noexcept
    {
        std::swap(value_, other.value_);
        return *this;
    }

    VARIANT& get() noexcept { return value_; }
    const VARIANT& get() const noexcept { return value_; }
    VARIANT* put() noexcept
    {
        VariantClear(&value_);
        return &value_;
    }
    /// Gives the value to the caller, who clears it.
    VARIANT release() noexcept
    {
        const VARIANT value = value_;
        VariantInit(&value_);
        return value;
    }

private:
    VARIANT value_;
};

} // namespace tamarok::com
