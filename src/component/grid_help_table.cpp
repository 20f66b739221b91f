#include "binder.h"
#include "class_tables.h"

#include "tamarok/grid_help.h"

namespace tamarok::component {

namespace {

using C = Grid_Help;

// clang-format off
constexpr std::array operations{
    operation<&C::GridHelp>(1, "GridHelp", "&TmkVar, strSQL, strCaption, DefaultValue, strConfig", "Lets the user choose a row or a date."),
    operation<&C::TreeviewHelp>(2, "TreeviewHelp", "&TmkVar, strSQL, strCaption, DefaultValue", "Lets the user choose a leaf of a tree."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo gridHelp{"GridHelp", "Look-up dialogs behind code fields.", operations, makeClass<C>};

} // namespace tamarok::component
