#pragma once

#include "tamarok/object.h"
#include "tamarok/variant.h"

namespace tamarok {

/// The value that was handed in, or the value of the field where that was an ADODB.Field. Plain values
/// are not copied: the argument must live as long as this.
/// Errors: 91 for an object reference that holds nothing, 438 for an object without a value, 3021 and
/// 3704 of the field.
class FieldValue {
public:
    explicit FieldValue(const Variant& value) : plain_{value}
    {
        if (value.isObject()) read_ = require(value.asObject(), "The field").get("Value", {});
    }

    const Variant& content() const noexcept { return plain_.isObject() ? read_ : plain_; }

private:
    const Variant& plain_;
    Variant read_;
};

} // namespace tamarok
