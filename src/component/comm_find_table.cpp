#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_find.h"

namespace tamarok::component {

namespace {

using C = Comm_find;

// clang-format off
constexpr std::array operations{
    operation<&C::FindNumOfChar>(1, "FindNumOfChar", "&sTmpString, &strFChar", "How often a text occurs in another one."),
    operation<&C::FindSubstring>(2, "FindSubstring", "&sTmpString, &strFChar, &tmp_Number", "One field of a separated text."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commFind{"Comm_find", "Counts occurrences in a text and takes fields from a separated text.",
                                   operations, makeClass<C>};

} // namespace tamarok::component
