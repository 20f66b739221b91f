#include "component/binder.h"
#include "component/class_tables.h"

#include "tamarok/comm_sql.h"

namespace tamarok::component {

namespace {

using C = Comm_SQL;

// clang-format off
constexpr std::array operations{
    operation<&C::OPTIONEN_glbModel>(5, "OPTIONEN_glbModel", "TmkVar", "Whether models may be changed globally: 1 by default."),
};
// clang-format on

} // namespace

constinit const ClassInfo commSQL{"Comm_SQL", "Answers that one fixed statement gives.", operations, makeClass<C>};

} // namespace tamarok::component
