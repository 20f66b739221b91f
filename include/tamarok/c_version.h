#pragma once

#include <string>

#pragma GCC visibility push(default)

namespace tamarok {

/// The version of the library. The class has no state.
class C_Version {
public:
    /// Returns major and minor version as whole numbers, separated by a point: "2.0".
    std::string DLL_Version() const;
};

} // namespace tamarok

#pragma GCC visibility pop
