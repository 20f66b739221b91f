#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tamarok::database {

/// A product of harvesting: how it is measured, sold and priced. Codes are those of the key tables.
struct TimberProduct {
    std::string_view species, assortment, unit;
    std::int32_t decimals;                      ///< of the quantity
    double volumePerUnit;                       ///< solid cubic metres
    double low, high;                           ///< quantity of a line; of logs, the mid-diameter in centimetres
    double length;                              ///< metres, 0 for what is not measured by log
    std::int32_t priceLow, priceHigh;           ///< cents per unit
    std::string_view buyers;                    ///< PERSONAL.GRUPPE
    std::string_view bidSpecies, bidAssortment; ///< groups in sales by bid
    std::string_view use, destination, priceGroup;
    std::uint32_t weight;

    constexpr bool isLog() const noexcept { return length > 0.0; }
};

// clang-format off
inline constexpr std::array timberProducts{
    TimberProduct{"FI", "BL", "fm", 3, 1.0, 18, 46, 4.1, 8600, 10400, "Säge", "FI", "ST", "SB", "SI", "FI", 30},
    TimberProduct{"FI", "LA", "fm", 3, 1.0, 20, 44, 12.2, 8200, 9600, "Säge", "FI", "ST", "SB", "SI", "FI", 10},
    TimberProduct{"FI", "AB", "fm", 3, 1.0, 14, 32, 5.1, 7800, 9100, "Säge", "FI", "ST", "SB", "SI", "FK", 10},
    TimberProduct{"FI", "IS", "rm", 2, 0.70, 12, 90, 0.0, 2800, 3600, "Industrie", "FI", "IN", "SF", "PI", "FI", 9},
    TimberProduct{"FI", "MA", "fm", 3, 1.0, 20, 34, 11.0, 10800, 12900, "Handel", "FI", "SO", "SB", "SI", "FI", 2},
    TimberProduct{"LA", "BL", "fm", 3, 1.0, 22, 50, 4.1, 9800, 12600, "Säge", "KI", "ST", "SB", "SI", "KL", 5},
    TimberProduct{"KI", "BL", "fm", 3, 1.0, 20, 42, 4.1, 6400, 7800, "Säge", "KI", "ST", "SB", "SI", "KL", 7},
    TimberProduct{"KI", "IP", "rm", 2, 0.65, 10, 70, 0.0, 2400, 3000, "Industrie", "KI", "IN", "SF", "PL", "KL", 4},
    TimberProduct{"BU", "BL", "fm", 3, 1.0, 28, 62, 4.0, 6800, 9400, "Handel", "BU", "ST", "SB", "SI", "LB", 8},
    TimberProduct{"BU", "IF", "rm", 2, 0.67, 10, 80, 0.0, 4200, 5200, "Industrie", "BU", "IN", "SF", "PI", "LB", 5},
    TimberProduct{"BU", "BR", "rm", 2, 0.65, 4, 30, 0.0, 5400, 7200, "Brennholz", "BU", "EN", "BH", "HB", "LB", 8},
    TimberProduct{"EI", "FU", "fm", 3, 1.0, 46, 78, 3.5, 38000, 92000, "Handel", "EI", "WH", "SB", "SI", "LB", 3},
    TimberProduct{"EI", "BL", "fm", 3, 1.0, 30, 60, 4.0, 16000, 31000, "Handel", "EI", "ST", "SB", "SI", "LB", 3},
    TimberProduct{"BI", "HG", "srm", 1, 0.40, 30, 180, 0.0, 1200, 1900, "Brennholz", "WL", "EN", "BH", "BW", "LB", 4},
    TimberProduct{"FI", "ST", "Stk", 0, 0.045, 60, 600, 0.0, 220, 380, "Handel", "FI", "SO", "SB", "SI", "FI", 2},
};
// clang-format on

} // namespace tamarok::database
