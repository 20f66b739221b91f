#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "call/json.h"

#include "tamarok/object.h"

namespace tamarok::cli {

/// The objects of a host by name. Names compare exactly.
class ObjectNames {
public:
    /// Keeps `object` under `name`, in place of the one that had that name. Error 5 for an empty name.
    void keep(std::string_view name, ObjectRef object);

    /// The object of that name, which may be an empty reference. Error 5 that names it where there is none.
    ObjectRef find(std::string_view name) const;

    /// Removes a name; the object ends unless something else uses it. Error 5 where there is none.
    void drop(std::string_view name);

    /// The name of an object, not an empty reference. An object without name gets one, made of its type
    /// and a number, which lasts if the answer mentions it; see keepOnlyNamedIn.
    std::string nameOf(const ObjectRef& object);

    /// Ends a request: drops the names given by nameOf since the last call that `answer` does not mention
    /// as {"$ref":"name"}, for no script can know them.
    void keepOnlyNamedIn(const Json& answer);

private:
    void forget(std::string_view name, const Object* object);

    std::map<std::string, ObjectRef, std::less<>> objects_;
    std::unordered_map<const Object*, std::string> names_;  ///< first name of each object
    std::unordered_map<std::string, std::size_t> counters_; ///< last number used for a type
    std::vector<std::string> given_;                        ///< names that nameOf gave in this request
};

} // namespace tamarok::cli
