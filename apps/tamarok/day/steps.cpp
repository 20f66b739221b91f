#include "day/steps.h"

#include <array>

namespace tamarok::cli::day {

std::span<const Step> steps() noexcept
{
    static constexpr std::array all{
        Step{"Login, and what the navigation shows", showLogIn},
        Step{"A record that another workstation has open", showOpenRecord},
        Step{"The log list in detail: the lines of greatest volume", showDetailList},
        Step{"The same logs by tree species", showAggregatedList},
        Step{"Code fields: what they offer, and which typed codes they accept", showCodeField},
        Step{"A measured line typed key by key, saved and read back", typeALine},
        Step{"Ten logs measured line by line, classed and archived", measureLogs},
        Step{"Another list type: the game of the hunting districts by species", showGameList},
        Step{"Another list type: harvest records, the lines of greatest volume", showHarvestList},
        Step{"Lists on the screen: filled, sorted by clicks, with the widths of their columns", showScreenLists},
        Step{"Leaving a code field: the check of what was typed", showFieldChecks},
        Step{"Numbers of documents, a parameter file, the action protocol", showPaperWork},
        Step{"Lookups: a species, a new row of a free list, a budget title", showLookUps},
    };
    return all;
}

} // namespace tamarok::cli::day
