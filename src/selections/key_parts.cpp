#include "key_parts.h"

#include <cstddef>

namespace tamarok::selections {
namespace {

struct Suffix {
    std::string_view text;
    std::size_t cut; ///< number of characters to cut off the key
};

/// The first suffix that fits counts, hence the longest one first.
/// Required by the contract: `_VALID` is cut one character short, so that its underscore stays. Do not correct.
constexpr Suffix suffixes[] = {
    {"_HS_LOGS_VALID", 14}, {"_ID_LOGS_VALID", 14}, {"_HS_LOGS_GRID", 13}, {"_LOGS_VALID", 11},
    {"_ID_VALID", 9},       {"_VALID", 5},          {"_GRID", 5},
};

constexpr std::string_view digits = "0123456789";
constexpr std::string_view relationList = "RELTABLE";
constexpr std::string_view partner = "PERSONAL_";
constexpr std::string_view partnerForms[] = {"GRID_", "BESTEUERUNGSART_VALID_", "VALID_"};

} // namespace

std::string_view groupOf(std::string_view key) noexcept
{
    for (const Suffix& suffix : suffixes)
        if (key.ends_with(suffix.text)) return key.substr(0, key.size() - suffix.cut);
    return key;
}

std::string_view partOf(std::string_view key) noexcept
{
    if (key.starts_with(relationList)) {
        key.remove_prefix(relationList.size());
        return key.substr(0, key.find_first_not_of(digits));
    }
    if (key.starts_with(partner)) {
        key.remove_prefix(partner.size());
        for (const std::string_view form : partnerForms)
            if (key.starts_with(form)) return key.substr(form.size());
        return {};
    }
    const std::size_t last = key.find_last_not_of(digits);
    return key.substr(last == std::string_view::npos ? 0 : last + 1);
}

} // namespace tamarok::selections
