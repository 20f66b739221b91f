#include "binder.h"
#include "class_tables.h"

#include "tamarok/loc_service.h"
#include "tamarok/platform.h"

namespace tamarok::component {

namespace {

using C = LocService;

/// The language service that the thread's platform makes. Error 91 where the platform has none.
ObjectRef makeLocService(const ClassInfo& classInfo)
{
    return std::make_shared<InstanceOf<C>>(classInfo, std::shared_ptr<C>{Platform::locService()});
}

// clang-format off
constexpr std::array operations{
    operation<&C::TranslateForm>(1, "TranslateForm", "&TmkVar, &form", "Puts the language's captions on a form."),
    operation<&C::GetText>(2, "GetText", "number, &TmkVar", "Text of a number in the session's language."),
    operation<&C::GetText2>(3, "GetText2", "number, &TmkVar", "The same look-up, for texts in computed columns."),
    operation<&C::RunProcedure>(4, "RunProcedure", "&TmkVar, name, &command", "Runs a stored procedure with the command's parameters."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo locService{"LocService", "Language texts and stored procedures of the sibling library.",
                                     operations, makeLocService};

} // namespace tamarok::component
