#include "tamarok/c_version.h"

namespace tamarok {

std::string C_Version::DLL_Version() const
{
    return std::to_string(TAMAROK_VERSION_MAJOR) + "." + std::to_string(TAMAROK_VERSION_MINOR);
}

} // namespace tamarok
