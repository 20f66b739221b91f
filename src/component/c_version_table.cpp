#include "binder.h"
#include "class_tables.h"

#include "tamarok/c_version.h"

namespace tamarok::component {

namespace {

using C = C_Version;

// clang-format off
constexpr std::array operations{
    operation<&C::DLL_Version>(1, "DLL_Version", "", "Major and minor version of the library."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo cVersion{"C_Version", "Version of the library.", operations, makeClass<C>};

} // namespace tamarok::component
