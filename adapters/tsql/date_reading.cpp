#include <algorithm>
#include <array>

#include "tamarok_tsql/date_text.h"

namespace tamarok::tsql {

namespace {

/// A style of CONVERT and the order of day, month and year in its texts; nothing for the connection's order.
struct StyleRow {
    std::int16_t style;
    std::optional<DateOrder> order;
};

constexpr auto connection = std::nullopt;
constexpr auto mdy = DateOrder::Mdy;
constexpr auto dmy = DateOrder::Dmy;
constexpr auto ymd = DateOrder::Ymd;

/// A style and the one 100 above it read texts alike; they differ in how they write the year.
constexpr std::array styleRows = {
    StyleRow{0, connection}, StyleRow{1, mdy},          StyleRow{2, ymd},          StyleRow{3, dmy},
    StyleRow{4, dmy},        StyleRow{5, dmy},          StyleRow{6, dmy},          StyleRow{7, mdy},
    StyleRow{8, connection}, StyleRow{9, connection},   StyleRow{10, mdy},         StyleRow{11, ymd},
    StyleRow{12, ymd},       StyleRow{13, dmy},         StyleRow{14, connection},  StyleRow{20, ymd},
    StyleRow{21, ymd},       StyleRow{22, mdy},         StyleRow{23, ymd},         StyleRow{24, connection},
    StyleRow{25, ymd},       StyleRow{100, connection}, StyleRow{101, mdy},        StyleRow{102, ymd},
    StyleRow{103, dmy},      StyleRow{104, dmy},        StyleRow{105, dmy},        StyleRow{106, dmy},
    StyleRow{107, mdy},      StyleRow{108, connection}, StyleRow{109, connection}, StyleRow{110, mdy},
    StyleRow{111, ymd},      StyleRow{112, ymd},        StyleRow{113, dmy},        StyleRow{114, connection},
    StyleRow{120, ymd},      StyleRow{121, ymd},        StyleRow{126, ymd},        StyleRow{127, ymd}};

} // namespace

/// Deliberate difference: the server reads 2024-03-05 as a datetime under dmy as year, day, month, and as a date as
/// year, month, day. Here it is 5 March for every type.
DateReading readingOf(DateOrder order) noexcept
{
    return {.order = order, .hyphensAreIso = true};
}

std::optional<DateReading> readingOfStyle(std::int64_t style, DateOrder order) noexcept
{
    const auto* const row = std::find_if(styleRows.begin(), styleRows.end(),
                                         [style](const StyleRow& candidate) { return candidate.style == style; });
    if (row == styleRows.end()) return std::nullopt;
    if (!row->order) return readingOf(order);
    return DateReading{.order = *row->order, .hyphensAreIso = false};
}

} // namespace tamarok::tsql
