#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "tamarok/object.h"

namespace tamarok::cli {

/// The objects of a host by name. Names compare exactly.
class ObjectNames {
public:
    /// Keeps `object` under `name` in place of what had that name. "Nothing" is taken.
    void keep(std::string_view name, ObjectRef object);

    /// The object of that name, which may be an empty reference; Error 5 that names it where there is
    /// none. "Nothing" is always the empty reference.
    ObjectRef find(std::string_view name) const;

    /// The name of an object; a new one, made of its type and a number, where it has none.
    std::string nameOf(const ObjectRef& object);

private:
    std::map<std::string, ObjectRef, std::less<>> objects_;
    std::unordered_map<const Object*, std::string> names_;
    std::unordered_map<std::string, std::size_t> counters_;
};

} // namespace tamarok::cli
