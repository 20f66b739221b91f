#include "binder.h"
#include "class_tables.h"

#include "tamarok/mcomm.h"

namespace tamarok::component {

namespace {

/// A module has functions and no C++ object.
ObjectRef makeModule(const ClassInfo& classInfo)
{
    return std::make_shared<Instance>(classInfo);
}

// clang-format off
constexpr std::array operations{
    operation<&mComm::ShowMessage>(1, "ShowMessage", "strPrompt, lngButtons, [strTitle], [strHelpFile], [lngContext]", "Shows a message box and gives the button pressed."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo mCommModule{"mComm", "The library's plain message box.", operations, makeModule};

} // namespace tamarok::component
