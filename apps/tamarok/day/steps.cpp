#include "day/steps.h"

#include <array>

namespace tamarok::cli::day {

std::span<const Step> steps() noexcept
{
    static constexpr std::array all{
        Step{"The list of logs in detail", showDetailList},
        Step{"The same logs by tree species and strength class", showAggregatedList},
    };
    return all;
}

} // namespace tamarok::cli::day
