#include "tamarok/object.h"

#include "tamarok/error.h"
#include "tamarok/text.h"
#include "tamarok/variant.h"

namespace tamarok {

Variant Object::get(std::string_view name, std::span<const Variant>) const
{
    noSuchMember(name);
}

void Object::put(std::string_view name, const Variant&)
{
    noSuchMember(name);
}

Variant Object::call(std::string_view name, std::span<Variant>)
{
    noSuchMember(name);
}

void Object::noSuchMember(std::string_view name) const
{
    throw Error{errors::noSuchMember, "An object of the type " + std::string{typeName()} +
                                          " has no property or method \"" + std::string{name} + "\"."};
}

Object& require(const ObjectRef& object, std::string_view what)
{
    if (!object) throw Error{errors::objectNotSet, "Object not set: " + std::string{what} + " holds nothing."};
    return *object;
}

bool isMember(std::string_view name, std::string_view member) noexcept
{
    return text::equalsNoCase(name, member);
}

} // namespace tamarok
