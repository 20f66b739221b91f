#include "late_bound.h"

#include "tamarok/convert.h"

namespace tamarok::lists {

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

ObjectRef elementOf(const Object& collection, std::int32_t position)
{
    const Variant index{position};
    return checked(collection.get("Item", {&index, 1}), "Item");
}

std::int32_t numberOf(const Object& object, std::string_view property)
{
    return convert::toLong(object.get(property, {}));
}

} // namespace tamarok::lists
