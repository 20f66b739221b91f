// The function resources() is in the source that database/cmake/embed.cmake generates.
#include "resources.h"

#include <string>

#include "tamarok/error.h"

namespace tamarok::database {

const Resource& resource(std::string_view group, std::string_view name)
{
    for (const Resource& file : resources(group))
        if (file.name == name) return file;
    throw Error{errors::fileNotFound, "The program holds no file " + std::string{group} + "/" + std::string{name} + ".",
                "database"};
}

} // namespace tamarok::database
