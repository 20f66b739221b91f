#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_act.h"

namespace tamarok::component {

namespace {

using C = Comm_Act;

// clang-format off
constexpr std::array operations{
    operation<&C::WriteReport>(1, "WriteReport", "strModul, strName, strAction, strUserName, strProtokolPath", "Appends a line to the action protocol."),
    operation<&C::SaveParam>(2, "SaveParam", "Key, value, filename", "Writes a parameter into a parameter file."),
    operation<&C::GetExistingParam>(3, "GetExistingParam", "Key, filename, &arrValue", "Value of a parameter, or all values of DATABASENAME."),
    operation<&C::GetParam>(4, "GetParam", "Key, default, filename", "Value of a parameter, or a default."),
    operation<&C::GetPhotoesFormats>(5, "GetPhotoesFormats", "&s, &strAPPPath, &initFile", "Picture formats that the application accepts."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commAct{"Comm_Act", "Parameter files and the action protocol.", operations, makeClass<C>};

} // namespace tamarok::component
