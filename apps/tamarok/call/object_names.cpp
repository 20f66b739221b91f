#include "call/object_names.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

/// Collects the names in every {"$ref":"name"} of `json`.
void collectNames(const Json& json, std::set<std::string, std::less<>>& names)
{
    if (!json.is_structured()) return;
    for (const auto& item : json.items()) {
        if (json.is_object() && item.key() == "$ref" && item.value().is_string()) {
            names.insert(item.value().get_ref<const std::string&>());
        }
        collectNames(item.value(), names);
    }
}

} // namespace

void ObjectNames::keep(std::string_view name, ObjectRef object)
{
    if (name.empty()) throw Error{errors::invalidArgument, "an object needs a name"};
    const auto [place, isNew] = objects_.try_emplace(std::string{name});
    if (!isNew) forget(name, place->second.get());
    if (object) names_.try_emplace(object.get(), name);
    place->second = std::move(object);
    std::erase(given_, name); // a name that the script gave itself lasts
}

ObjectRef ObjectNames::find(std::string_view name) const
{
    const auto found = objects_.find(name);
    if (found == objects_.end()) {
        throw Error{errors::invalidArgument, "there is no object named '" + std::string{name} + "'"};
    }
    return found->second;
}

void ObjectNames::drop(std::string_view name)
{
    const auto found = objects_.find(name);
    if (found == objects_.end()) {
        throw Error{errors::invalidArgument, "there is no object named '" + std::string{name} + "'"};
    }
    forget(name, found->second.get());
    objects_.erase(found);
}

std::string ObjectNames::nameOf(const ObjectRef& object)
{
    const auto known = names_.find(object.get());
    if (known != names_.end()) return known->second;
    const std::string type{object->typeName()};
    std::string name;
    do
        name = type + std::to_string(++counters_[type]);
    while (objects_.contains(name));
    keep(name, object);
    given_.push_back(name);
    return name;
}

void ObjectNames::keepOnlyNamedIn(const Json& answer)
{
    if (given_.empty()) return;
    std::set<std::string, std::less<>> mentioned;
    collectNames(answer, mentioned);
    for (const std::string& name : std::exchange(given_, {})) {
        if (!mentioned.contains(name)) drop(name);
    }
}

/// Removes `name` as the name of `object`. An object that has a further name goes by that one from now
/// on, so that it is never described under a name that no longer exists.
void ObjectNames::forget(std::string_view name, const Object* object)
{
    const auto known = names_.find(object);
    if (known == names_.end() || known->second != name) return;
    names_.erase(known);
    const auto other = std::ranges::find_if(
        objects_, [&](const auto& entry) { return entry.second.get() == object && entry.first != name; });
    if (other != objects_.end()) names_.try_emplace(object, other->first);
}

} // namespace tamarok::cli
