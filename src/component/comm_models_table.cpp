#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_models.h"

namespace tamarok::component {

namespace {

using C = Comm_Models;

// clang-format off
constexpr std::array operations{
    operation<&C::ColWidth_Get>(1, "ColWidth_Get", "&TmkVar, model, &DG", "Restores the saved widths of a control's columns."),
    operation<&C::ColWidth_Set>(2, "ColWidth_Set", "&TmkVar, relation, &DG", "Saves the widths of a control's columns."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commModels{"Comm_Models", "Saving and restoring of column widths.", operations, makeClass<C>};

} // namespace tamarok::component
