#include "log_catalogue.h"

#include <array>

namespace tamarok::catalogue {

namespace {

constexpr Column columnRows[] = {
#include "data/log_columns.inc"
};
static_assert(std::size(columnRows) == 580);
static_assert(isSortedAndUnique(columnRows));
static_assert(columnRows[std::size(columnRows) - 1].id == lastLogId);
constexpr auto columnIndex = makeColumnIndex<lastLogId>(columnRows);

constexpr Join joinRows[] = {
#include "data/log_joins.inc"
};
constexpr auto joinIndex = makeJoinIndex<lastLogId>(joinRows);

/// A join without a column would never be used, and a prerequisite without a join would add nothing.
constexpr bool joinsFitColumns()
{
    for (std::size_t id = 0; id <= lastLogId; ++id) {
        if (joinIndex[id] != 0 && columnIndex[id] == 0) {
            return false;
        }
    }
    return std::ranges::all_of(joinRows, [](const Join& join) {
        return std::ranges::all_of(join.prerequisites, [](std::int16_t id) {
            return id == 0 || joinIndex[static_cast<std::size_t>(id)] != 0;
        });
    });
}
static_assert(joinsFitColumns());

constexpr Column weightedRows[] = {
#include "data/log_weighted.inc"
};
static_assert(isSortedAndUnique(weightedRows));
constexpr auto weightedIndex = makeColumnIndex<lastLogId>(weightedRows);

constexpr std::string_view measureIds =
#include "data/log_measures.inc"
    ;

constexpr std::array<bool, lastLogId + 1> measures = [] {
    std::array<bool, lastLogId + 1> result{};
    forEachId(measureIds, [&](std::int16_t id) { result.at(static_cast<std::size_t>(id)) = true; });
    return result;
}();

/// A measure must have a row, and a weighted row must be a measure.
constexpr bool measuresFitColumns()
{
    for (std::size_t id = 0; id <= lastLogId; ++id) {
        if ((measures[id] && columnIndex[id] == 0) || (weightedIndex[id] != 0 && !measures[id])) {
            return false;
        }
    }
    return true;
}
static_assert(measuresFitColumns());

} // namespace

constinit const ColumnTable logColumns{columnRows, columnIndex};
constinit const JoinTable logJoins{joinRows, joinIndex};
constinit const ColumnTable logWeightedColumns{weightedRows, weightedIndex};

bool isLogMeasure(std::int16_t id) noexcept
{
    return id >= 0 && id <= lastLogId && measures[static_cast<std::size_t>(id)];
}

} // namespace tamarok::catalogue
