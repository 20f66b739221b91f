#pragma once

#include <span>
#include <string_view>

namespace tamarok::database {

/// One file of the folder database/, held in the binary.
struct Resource {
    std::string_view name; ///< file name without folder
    std::string_view text; ///< content in UTF-8
};

/// The files of a group in the order of their names.
/// @param group  schema, procedures, texts, masterdata or selections; any other has no files
std::span<const Resource> resources(std::string_view group);

/// The file of that group and name. Error 53 where there is none.
const Resource& resource(std::string_view group, std::string_view name);

} // namespace tamarok::database
