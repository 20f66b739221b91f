#include "runtime/late_bound.h"

#include "tamarok/convert.h"

namespace tamarok::late_bound {

namespace {

ObjectRef checked(const Variant& value, std::string_view what)
{
    const ObjectRef& object = value.asObject();
    require(object, what);
    return object;
}

} // namespace

ObjectRef objectOf(const Object& object, std::string_view property)
{
    return checked(object.get(property, {}), property);
}

ObjectRef elementOf(const Object& object, std::string_view property, std::int32_t index)
{
    const Variant place{index};
    return checked(object.get(property, {&place, 1}), property);
}

ObjectRef elementOf(const Object& collection, std::int32_t position)
{
    return elementOf(collection, "Item", position);
}

std::int32_t numberOf(const Object& object, std::string_view property)
{
    return convert::toLong(object.get(property, {}));
}

} // namespace tamarok::late_bound
