#include "tamarok/object.h"

#include <algorithm>

#include "tamarok/error.h"
#include "tamarok/members.h"
#include "tamarok/spelling.h"
#include "tamarok/text.h"
#include "tamarok/variant.h"

// The defaults of late binding: an object without members and without default value.

namespace tamarok {

Variant Object::get(std::string_view name, std::span<const Variant>) const
{
    noSuchMember(name);
}

void Object::put(std::string_view name, const Variant&)
{
    noSuchMember(name);
}

void Object::putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value)
{
    const Variant element = get(name, index);
    if (!element.isObject() || !element.asObject())
        throw Error{errors::invalidArgument,
                    std::string{typeName()} + "." + std::string{name} + " cannot be written with an index."};
    element.asObject()->put("Value", value);
}

Variant Object::call(std::string_view name, std::span<Variant> args)
{
    // A late-bound call does not tell a method from an indexed property: `List(1)` may be either.
    return get(name, args);
}

Variant Object::defaultValue() const
{
    throw Error{errors::noSuchMember, "An object of the type " + std::string{typeName()} + " has no default value."};
}

bool Object::hasDefaultValue() const noexcept
{
    return false;
}

std::vector<std::string_view> Object::memberNames() const
{
    return {};
}

void Object::noSuchMember(std::string_view name) const
{
    const std::vector<std::string_view> known = memberNames();
    // A member that cannot be used this way, such as a read-only property, is no misspelling.
    const bool isKnown =
        std::ranges::any_of(known, [&](std::string_view own) { return text::equalsNoCase(own, name); });
    throw Error{errors::noSuchMember, "An object of the type " + std::string{typeName()} +
                                          " has no property or method \"" + std::string{name} + '"' +
                                          (isKnown ? "." : spelling::suggestionOrPoint(name, known))};
}

Object& require(const ObjectRef& object, std::string_view what)
{
    if (!object) throw Error{errors::objectNotSet, "Object not set: " + std::string{what} + " holds nothing."};
    return *object;
}

void checkArgumentCount(std::size_t count, std::size_t least, std::size_t most, std::string_view member,
                        std::string_view source)
{
    if (count >= least && count <= most) return;
    const std::string expected = std::to_string(least) + (least == most ? "" : " to " + std::to_string(most));
    throw Error{errors::wrongArgumentCount,
                std::string{member} + " takes " + expected + " arguments, not " + std::to_string(count) + ".",
                std::string{source}};
}

} // namespace tamarok
