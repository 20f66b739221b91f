#include "tamarok/c_version.h"

namespace tamarok {

// The build defines both numbers from the version of the project.
std::string C_Version::DLL_Version() const
{
    return std::to_string(TAMAROK_VERSION_MAJOR) + "." + std::to_string(TAMAROK_VERSION_MINOR);
}

} // namespace tamarok
