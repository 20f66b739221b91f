#include "day/steps.h"

#include <array>

namespace tamarok::cli::day {

std::span<const Step> steps() noexcept
{
    static constexpr std::array all{
        Step{"Login, and what the navigation shows", showLogIn},
        Step{"A record that another workstation has open", showOpenRecord},
        Step{"The list of logs in detail", showDetailList},
        Step{"The same logs by tree species and strength class", showAggregatedList},
        Step{"A measured line typed key by key, saved and read back", typeALine},
    };
    return all;
}

} // namespace tamarok::cli::day
