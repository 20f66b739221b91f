#include "call/object_names.h"

#include <utility>

#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

constexpr std::string_view nothing = "Nothing";

} // namespace

void ObjectNames::keep(std::string_view name, ObjectRef object)
{
    if (name.empty()) throw Error{errors::invalidArgument, "an object needs a name"};
    if (name == nothing) throw Error{errors::invalidArgument, "the name 'Nothing' is taken"};
    const auto [place, isNew] = objects_.try_emplace(std::string{name});
    if (!isNew) {
        const auto known = names_.find(place->second.get());
        if (known != names_.end() && known->second == name) names_.erase(known);
    }
    if (object) names_.try_emplace(object.get(), name);
    place->second = std::move(object);
}

ObjectRef ObjectNames::find(std::string_view name) const
{
    if (name == nothing) return nullptr;
    const auto found = objects_.find(name);
    if (found == objects_.end()) {
        throw Error{errors::invalidArgument, "there is no object named '" + std::string{name} + "'"};
    }
    return found->second;
}

std::string ObjectNames::nameOf(const ObjectRef& object)
{
    if (!object) return std::string{nothing};
    const auto known = names_.find(object.get());
    if (known != names_.end()) return known->second;
    const std::string type{object->typeName()};
    std::string name;
    do
        name = type + std::to_string(++counters_[type]);
    while (objects_.contains(name));
    keep(name, object);
    return name;
}

} // namespace tamarok::cli
