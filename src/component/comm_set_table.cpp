#include "component/binder.h"
#include "component/class_tables.h"

#include "tamarok/comm_set.h"

namespace tamarok::component {

namespace {

using C = Comm_Set;

// clang-format off
constexpr std::array operations{
    operation<&C::SetOptionenNumber>(13, "SetOptionenNumber", "TmkVar, property, value", "Stores a whole number as an option."),
    operation<&C::SetOptionenDouble>(14, "SetOptionenDouble", "TmkVar, property, value", "Stores a number as an option."),
    operation<&C::SetOptionenText>(15, "SetOptionenText", "TmkVar, property, value", "Stores a text as an option."),
    operation<&C::SetOptionenDate>(16, "SetOptionenDate", "TmkVar, property, &value", "Stores a date as an option."),
};
// clang-format on

} // namespace

constinit const ClassInfo commSet{"Comm_Set", "Writing of values and options.", operations, makeClass<C>};

} // namespace tamarok::component
