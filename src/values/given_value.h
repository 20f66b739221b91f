#pragma once

#include "tamarok/object.h"
#include "tamarok/variant.h"

namespace tamarok {

/// Returns the default value of an object, such as that of a recordset's Field.
/// Errors: 91 for an empty reference, 438 for an object without default value, those of reading the value
/// (3021 and 3704 of a field).
inline Variant defaultValueOf(const ObjectRef& object)
{
    return require(object, "The field").defaultValue();
}

/// A value that an operation was given: the value itself, or the default value of an object. A plain value
/// is referred to, not copied, and must outlive this object. Errors as of `defaultValueOf`.
class GivenValue {
public:
    explicit GivenValue(const Variant& given) :
        read_{given.isObject() ? defaultValueOf(given.asObject()) : Variant{}}, value_{given.isObject() ? &read_
                                                                                                        : &given}
    {}
    GivenValue(const GivenValue&) = delete;
    GivenValue& operator=(const GivenValue&) = delete;

    const Variant& operator*() const noexcept { return *value_; }
    const Variant* operator->() const noexcept { return value_; }

private:
    Variant read_;
    const Variant* value_;
};

} // namespace tamarok
