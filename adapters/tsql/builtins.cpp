#include "tamarok_tsql/builtins.h"

#include <array>

namespace tamarok::embedded::sql {
namespace {

constexpr std::array rows{
#define BUILTIN(name, sqlite, arguments, result, bound)                                                                \
    Builtin{name, sqlite, arguments, ResultRule::result, bound, false, false},
#define AGGREGATE(name, sqlite, arguments, result)                                                                     \
    Builtin{name, sqlite, arguments, ResultRule::result, -1, true, false},
#define WINDOW(name, sqlite, arguments, result) Builtin{name, sqlite, arguments, ResultRule::result, -1, false, true},
#include "builtins.inc"
#undef BUILTIN
#undef AGGREGATE
#undef WINDOW
};

constexpr std::size_t slotCount = 512;
static_assert(rows.size() < slotCount / 2);

consteval std::array<std::uint8_t, slotCount> placeRows()
{
    std::array<std::uint8_t, slotCount> slots{};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::size_t slot = nameHash(rows[i].name) % slotCount;
        while (slots[slot] != 0)
            slot = (slot + 1) % slotCount;
        slots[slot] = static_cast<std::uint8_t>(i + 1);
    }
    return slots;
}
constexpr auto slots = placeRows();

struct DatePart {
    std::string_view written;
    std::string_view name;
};

constexpr std::array dateParts{
    DatePart{"year", "year"},
    DatePart{"yyyy", "year"},
    DatePart{"yy", "year"},
    DatePart{"quarter", "quarter"},
    DatePart{"qq", "quarter"},
    DatePart{"q", "quarter"},
    DatePart{"month", "month"},
    DatePart{"mm", "month"},
    DatePart{"m", "month"},
    DatePart{"dayofyear", "dayofyear"},
    DatePart{"dy", "dayofyear"},
    DatePart{"y", "dayofyear"},
    DatePart{"day", "day"},
    DatePart{"dd", "day"},
    DatePart{"d", "day"},
    DatePart{"week", "week"},
    DatePart{"wk", "week"},
    DatePart{"ww", "week"},
    DatePart{"iso_week", "iso_week"},
    DatePart{"isowk", "iso_week"},
    DatePart{"isoww", "iso_week"},
    DatePart{"weekday", "weekday"},
    DatePart{"dw", "weekday"},
    DatePart{"w", "weekday"},
    DatePart{"hour", "hour"},
    DatePart{"hh", "hour"},
    DatePart{"minute", "minute"},
    DatePart{"mi", "minute"},
    DatePart{"n", "minute"},
    DatePart{"second", "second"},
    DatePart{"ss", "second"},
    DatePart{"s", "second"},
    DatePart{"millisecond", "millisecond"},
    DatePart{"ms", "millisecond"},
};

} // namespace

const Builtin* findBuiltin(const Name& name)
{
    for (std::size_t slot = name.hash % slotCount; slots[slot] != 0; slot = (slot + 1) % slotCount) {
        const Builtin& row = rows[slots[slot] - 1U];
        if (sameName(row.name, name.text)) return &row;
    }
    return nullptr;
}

std::string_view findDatePart(std::string_view written)
{
    for (const DatePart& part : dateParts) {
        if (sameName(part.written, written)) return part.name;
    }
    return {};
}

} // namespace tamarok::embedded::sql
