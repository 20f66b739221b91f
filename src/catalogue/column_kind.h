#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "list_type.h"

namespace tamarok::catalogue {

/// How a value is compared with a column.
enum class Comparison : std::uint8_t { asText, asDate, asNumber, asRoundedNumber };

/// The number or date pattern by which a column is shown, "" for a text, and the form of a comparison with it.
struct KindRule {
    Kind kind;
    std::string_view format;
    Comparison comparison;
};

inline constexpr std::string_view dayFormat = "dd.mm.yyyy";

// The format of a quantity is read from an option; it stands here as it is by default.
inline constexpr KindRule kindRules[]{
    {Kind::text, "", Comparison::asText},
    {Kind::date, dayFormat, Comparison::asDate},
    {Kind::weekday, "dddd", Comparison::asDate},
    {Kind::time, "hh:nn", Comparison::asNumber},
    {Kind::timeWithSeconds, "hh:nn:ss", Comparison::asNumber},
    {Kind::whole, "0", Comparison::asNumber},
    {Kind::twoDigits, "00", Comparison::asNumber},
    {Kind::fourDigits, "0000", Comparison::asNumber},
    {Kind::oneDecimal, "0.0", Comparison::asNumber},
    {Kind::twoDecimals, "0.00", Comparison::asNumber},
    {Kind::threeDecimals, "0.000", Comparison::asNumber},
    {Kind::fourDecimals, "0.0000", Comparison::asNumber},
    {Kind::fiveDecimals, "0.00000", Comparison::asNumber},
    {Kind::nineDecimals, "0.000000000", Comparison::asNumber},
    {Kind::amount, "###,###,##0.00", Comparison::asNumber},
    {Kind::quantity, "0.00", Comparison::asNumber},
    {Kind::roundedPrice, "0.00", Comparison::asRoundedNumber},
    {Kind::textShownAsNumber, "0", Comparison::asText},
    {Kind::numberShownAsText, "", Comparison::asNumber},
};

/// The rule of a kind stands at the place of its value.
constexpr bool rulesFollowKinds()
{
    std::uint8_t place = 0;
    return std::ranges::all_of(kindRules,
                               [&](const KindRule& rule) { return static_cast<std::uint8_t>(rule.kind) == place++; });
}
static_assert(rulesFollowKinds());
static_assert(std::size(kindRules) == static_cast<std::size_t>(Kind::numberShownAsText) + 1);

constexpr const KindRule& ruleOf(Kind kind) noexcept
{
    return kindRules[static_cast<std::size_t>(kind)];
}

} // namespace tamarok::catalogue
