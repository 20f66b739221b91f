#pragma once

#include <span>
#include <string_view>

namespace tamarok::database {

/// One file of the folder `database/`, embedded in the library.
struct Resource {
    std::string_view name; ///< file name without folder
    std::string_view text; ///< content in UTF-8
};

/// Returns the files of a group in the order of their names.
/// @param group  schema, procedures, texts, master or selections; any other group is empty
std::span<const Resource> resources(std::string_view group);

/// Returns one file of a group. Error 53 if the group has no file of that name.
const Resource& resource(std::string_view group, std::string_view name);

} // namespace tamarok::database
