#pragma once

#include <typeinfo>

#include "tamarok/ado.h"
#include "tamarok/object.h"
#include "tamarok/variant.h"

namespace tamarok {

/// The value of an ADODB.Field, or of another object that has one.
/// Errors: 91 for an object reference that holds nothing, 438 for an object without a value, 3021 and
/// 3704 of the field.
inline Variant valueOfField(const ObjectRef& object)
{
    if (object) [[likely]] {
        const Object& source = *object;
        // A recordset's own field is read without looking its property up by name.
        if (typeid(source) == typeid(ado::Field)) return static_cast<const ado::Field&>(source).Value();
    }
    return require(object, "The field").get("Value", {});
}

/// The value that was handed in, or the value of the field where that was an ADODB.Field. Plain values
/// are not copied: the argument must live as long as this. Errors as for `valueOfField`.
class FieldValue {
public:
    explicit FieldValue(const Variant& value) :
        plain_{value}, read_{value.isObject() ? valueOfField(value.asObject()) : Variant{}}
    {}

    const Variant& content() const noexcept { return plain_.isObject() ? read_ : plain_; }

private:
    const Variant& plain_;
    Variant read_;
};

} // namespace tamarok
