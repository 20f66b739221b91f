#include "navigation_keys.h"

#include <algorithm>
#include <array>

namespace tamarok::rights {
namespace {

struct KeyPair {
    std::string_view treeKey;
    std::string_view rightKey;
};

/// Keys that map exactly, sorted by tree key; many map to themselves.
constexpr std::array<KeyPair, 92> keys = {{
#include "data/node_keys.inc"
}};
static_assert(std::ranges::is_sorted(keys, std::ranges::less_equal{}, &KeyPair::treeKey) &&
                  std::ranges::adjacent_find(keys, {}, &KeyPair::treeKey) == keys.end(),
              "keys are sorted and unique");

/// Prefixes of tree keys that end in a node number, in the order in which they are tried.
constexpr std::array<KeyPair, 6> families = {{
#include "data/node_key_families.inc"
}};

constexpr std::array<std::string_view, 16> actionKeys = {
    "AG_EINWEISUNG", "AG_ZURUCKNEHMEN", "HV_FREIGABE",        "HV_STORNO",   "HV_BEZAHLT",  "FA_FREIGABE",
    "FA_STORNO",     "FA_BEZAHLT",      "BB_FREIGABE",        "BB_STORNO",   "BB_RECHNUNG", "BB_BEENDET",
    "BB_SPERREN",    "KW_FREIGABE",     "KW_MONATSABSCHLUSS", "OBJEKTE_FIX",
};

} // namespace

std::string_view rightKey(std::string_view treeKey) noexcept
{
    const auto* const exact = std::ranges::lower_bound(keys, treeKey, {}, &KeyPair::treeKey);
    if (exact != keys.end() && exact->treeKey == treeKey) return exact->rightKey;
    for (const KeyPair& family : families)
        if (treeKey.starts_with(family.treeKey)) return family.rightKey;
    return {};
}

bool isActionKey(std::string_view treeKey) noexcept
{
    return std::ranges::find(actionKeys, treeKey) != actionKeys.end();
}

} // namespace tamarok::rights
