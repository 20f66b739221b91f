#include "component/binder.h"
#include "component/class_tables.h"

#include "tamarok/comm_get.h"

namespace tamarok::component {

namespace {

using C = Comm_Get;

// clang-format off
constexpr std::array operations{
    operation<&C::GetOptionenNumber>(14, "GetOptionenNumber", "TmkVar, property", "Whole number of an option; 0 by default."),
    operation<&C::GetOptionenDouble>(15, "GetOptionenDouble", "TmkVar, property", "Number of an option; 0 by default."),
    operation<&C::GetOptionenText>(16, "GetOptionenText", "TmkVar, property", "Text of an option; empty by default."),
    operation<&C::GetOptionenDate>(17, "GetOptionenDate", "TmkVar, property", "Date of an option, with a default of its own."),
    operation<&C::GetKonfNumber>(26, "GetKonfNumber", "&dbAdo, property, intDefault", "Setting of the master-data form as text."),
};
// clang-format on

} // namespace

constinit const ClassInfo commGet{"Comm_Get", "Reading of values and options.", operations, makeClass<C>};

} // namespace tamarok::component
