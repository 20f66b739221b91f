#pragma once

#include "list_type.h"
#include "list_type_checks.h"
#include "list_type_index.h"
#include "types/all_types.h"

namespace tamarok::catalogue::types {

/// The slots of a description; one array for each.
template <const ListDescription& description>
inline constexpr auto slotsOf = makeSlots<slotCount(description)>(description);

/// Returns the list type of a description, after its rules have been checked. The compiler's message names the broken
/// rule. One evaluation for each rule, since compilers limit the steps of an evaluation.
template <const ListDescription& description>
consteval ListType defineType()
{
    constexpr ListType type{description, slotsOf<description>};
    static_assert(isUpperCase(description.key), "the key of a list type must be in upper case");
    static_assert(idsRise(description), "the ids of columns and of select expressions must rise");
    static_assert(joinsFitColumns(type), "a join names the id of a column or of another join that is not there");
    static_assert(expressionsFitColumns(type), "an expression for grouped lists needs a column with a sum");
    static_assert(templatesNameValues(description), "a template names an unknown value in braces");
    static_assert(choicesNameColumns(type), "a choice list names the id of a column that is not there");
    return type;
}

} // namespace tamarok::catalogue::types
