#include "list_types.h"

#include <algorithm>
#include <array>
#include <string>

#include "list_type_checks.h"
#include "list_type_index.h"

#include "tamarok/list_catalogue.h"
#include "tamarok/text.h"

namespace tamarok::catalogue {

namespace {

using enum Aggregate;
using enum Applies;

// One line for each list type, by name.
// A new list type needs a file in types/ and its line here; the assertions below check its rows.
constexpr ListDescription descriptions[] = {
#include "types/acl.inc"
#include "types/akat.inc"
#include "types/artikel.inc"
#include "types/bbf.inc"
#include "types/bbf_plann.inc"
#include "types/bbfahr.inc"
#include "types/bbfak.inc"
#include "types/bbfb.inc"
#include "types/bbfs.inc"
#include "types/bbhab.inc"
#include "types/bbhunde.inc"
#include "types/bbjagd.inc"
#include "types/bbjb.inc"
#include "types/bbklr.inc"
#include "types/bblag.inc"
#include "types/bbltn.inc"
#include "types/bbmap.inc"
#include "types/bbobj.inc"
#include "types/bbplan.inc"
#include "types/bbstrk.inc"
#include "types/bbtalk.inc"
#include "types/bbun.inc"
#include "types/bbvs.inc"
#include "types/bbwal.inc"
#include "types/bbwild.inc"
#include "types/bbzv.inc"
#include "types/berm.inc"
#include "types/fhpexp.inc"
#include "types/kiz.inc"
#include "types/log.inc"
#include "types/msch.inc"
#include "types/mvlose.inc"
#include "types/personal.inc"
#include "types/plan.inc"
#include "types/rj.inc"
#include "types/sapagruppe.inc"
#include "types/steh.inc"
#include "types/transport.inc"
#include "types/users.inc"
#include "types/vertrag.inc"
#include "types/waren.inc"
};

// The columns of deductions form a list of their own that no key names.
constexpr ListDescription deductions[] = {
#include "types/deductions.inc"
};

// The index from column id to row is made at compile time: slots first, then the types that point into them.
constexpr auto slotsOfTypes = makeSlots<slotCount(descriptions)>(descriptions);
constexpr auto types = makeListTypes(descriptions, slotsOfTypes);

constexpr auto slotsOfDeductions = makeSlots<slotCount(deductions)>(deductions);
constexpr auto deductionTypes = makeListTypes(deductions, slotsOfDeductions);

/// Look-ups convert the wanted key to upper case and take the first type that has it.
constexpr bool keysAreUnique()
{
    return std::ranges::all_of(types, [](const ListType& type) {
        const std::string_view key = type.description().key;
        return isUpperCase(key) &&
               std::ranges::count_if(types, [&](const ListType& other) { return other.description().key == key; }) == 1;
    });
}

static_assert(keysAreUnique(), "the key of each list type must be in upper case and unique");

/// The rules of one list type. The compiler's message names the broken rule and the position of the type in `table`,
/// counted from 0 in the order of the includes above. One evaluation for each rule and type, since compilers limit the
/// steps of an evaluation.
template <const auto& table, std::size_t position>
struct CheckedType {
    static_assert(idsRise(table[position].description()), "the ids of columns and of select expressions must rise");
    static_assert(joinsFitColumns(table[position]),
                  "a join names the id of a column or of another join that is not there");
    static_assert(expressionsFitColumns(table[position]), "an expression for grouped lists needs a column with a sum");
    static_assert(templatesNameValues(table[position].description()), "a template names an unknown value in braces");
    static constexpr bool passed = true;
};

static_assert(CheckedType<deductionTypes, 0>::passed);
static_assert([]<std::size_t... position>(std::index_sequence<position...>) {
    return (CheckedType<types, position>::passed && ...);
}(std::make_index_sequence<types.size()>{}));

/// For keys that are known to be in the table; evaluated at compile time, an unknown key does not compile.
constexpr const ListType& typeOf(std::string_view key)
{
    return *std::ranges::find_if(types, [&](const ListType& type) { return type.description().key == key; });
}

} // namespace

std::span<const ListType> listTypes() noexcept
{
    return types;
}

std::vector<std::string_view> listTypeKeys()
{
    std::vector<std::string_view> keys;
    keys.reserve(types.size());
    for (const ListType& type : types)
        keys.push_back(type.description().key);
    return keys;
}

const ListType* findListType(std::string_view key)
{
    const std::string upperKey = text::toUpper(key);
    const auto found =
        std::ranges::find_if(types, [&](const ListType& type) { return upperKey == type.description().key; });
    return found == types.end() ? nullptr : found;
}

const ListType& logList() noexcept
{
    // The list of most operations; its place in the table is found at compile time.
    static constexpr const ListType& log = typeOf("LOG");
    return log;
}

const ListType& deductionList() noexcept
{
    return deductionTypes.front();
}

} // namespace tamarok::catalogue
