#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// Assortments, prices and shares of a Central European forest enterprise, from which the generator draws
/// its timber lists. The codes are keys of the master data.
namespace tamarok::database::profile {

enum class WoodGroup : std::uint8_t { Softwood, Hardwood };

/// A tree species with its share of the harvest and its trade data.
struct Species {
    std::string_view code;      ///< HOLZART.HA
    std::uint32_t weight;       ///< share of all stands, relative
    double price;               ///< euro per cubic metre of sawlogs of quality B, strength class 3a
    double diameter;            ///< mean mid-diameter of sawlogs in cm
    double spread;              ///< standard deviation of the diameter in cm
    double barkBase, barkSlope; ///< bark deduction in cm: base + slope * diameter
    double dryWeight;           ///< cubic metres per ton, absolutely dry
    double airDryWeight;        ///< cubic metres per ton, air-dry
    WoodGroup group;

    constexpr bool isSoftwood() const noexcept { return group == WoodGroup::Softwood; }
};

inline constexpr std::array<Species, 14> species{{
    {"FI", 560, 96.0, 29.0, 7.5, 0.8, 0.022, 2.33, 1.61, WoodGroup::Softwood},
    {"TA", 60, 84.0, 32.0, 8.5, 1.0, 0.030, 2.38, 1.63, WoodGroup::Softwood},
    {"KI", 110, 76.0, 27.0, 6.5, 0.9, 0.048, 2.05, 1.50, WoodGroup::Softwood},
    {"LA", 80, 121.0, 30.0, 7.0, 1.3, 0.075, 1.85, 1.40, WoodGroup::Softwood},
    {"DG", 15, 91.0, 34.0, 8.0, 1.1, 0.055, 2.10, 1.52, WoodGroup::Softwood},
    {"BU", 80, 83.0, 36.0, 8.5, 0.4, 0.014, 1.52, 1.18, WoodGroup::Hardwood},
    {"EI", 30, 215.0, 38.0, 9.5, 1.2, 0.050, 1.56, 1.20, WoodGroup::Hardwood},
    {"TE", 8, 208.0, 36.0, 9.0, 1.2, 0.048, 1.56, 1.20, WoodGroup::Hardwood},
    {"ES", 15, 112.0, 33.0, 7.5, 0.9, 0.045, 1.60, 1.22, WoodGroup::Hardwood},
    {"AH", 15, 128.0, 34.0, 8.0, 0.6, 0.020, 1.72, 1.30, WoodGroup::Hardwood},
    {"BI", 10, 58.0, 26.0, 5.0, 0.7, 0.025, 1.75, 1.33, WoodGroup::Hardwood},
    {"ER", 10, 62.0, 28.0, 5.5, 0.7, 0.025, 2.00, 1.45, WoodGroup::Hardwood},
    {"KB", 4, 190.0, 32.0, 7.0, 0.5, 0.018, 1.80, 1.35, WoodGroup::Hardwood},
    {"PA", 3, 48.0, 35.0, 8.0, 0.8, 0.030, 2.30, 1.60, WoodGroup::Hardwood},
}};

/// How a delivery is measured and sold.
enum class Measure : std::uint8_t {
    Logs,     ///< each log by diameter and length in the forest
    Mill,     ///< each log measured electronically at the mill
    Lots,     ///< several logs of one strength class in one line
    Tariff,   ///< each log by diameter alone, without a length
    Stacked,  ///< stacked wood in stacked cubic metres
    Firewood, ///< stacked firewood
    Weight,   ///< pulpwood by weight
    Chips,    ///< wood chips by loose volume
    Poles     ///< poles by the piece
};

/// A kind of delivery: how it is measured, who buys it and in which unit.
struct Kind {
    Measure measure;
    std::uint32_t weight;       ///< share of all deliveries, relative
    std::int16_t dsart;         ///< DSART.ID
    std::int16_t klst;          ///< KLST.ID
    std::int32_t unit;          ///< WARENEINHEIT.EINHEIT_ID of the measured quantity
    std::string_view customers; ///< PERSONAL.GRUPPE of the buyers
    std::int32_t bookingNumber; ///< BUCHNR.BUCHNR_ID of the revenue
    std::string_view method;    ///< LOGS.MEFVERF
};

inline constexpr std::array<Kind, 9> kinds{{
    {Measure::Logs, 600, 1, 1, 1, "Säge", 1, "Kluppe"},
    {Measure::Mill, 140, 5, 1, 1, "Säge", 1, "Elektronisch"},
    {Measure::Lots, 60, 1, 2, 1, "Handel", 1, "Kluppe"},
    {Measure::Tariff, 12, 1, 1, 1, "Handel", 1, "Tarif"},
    {Measure::Stacked, 90, 2, 3, 2, "Industrie", 2, "Raummaß"},
    {Measure::Firewood, 30, 2, 3, 2, "Brennholz", 3, "Raummaß"},
    {Measure::Weight, 30, 6, 3, 6, "Industrie", 2, "Waage"},
    {Measure::Chips, 25, 4, 3, 7, "Industrie", 3, "Schüttmaß"},
    {Measure::Poles, 13, 3, 3, 3, "Handel", 1, "Zählung"},
}};

/// A quality class with its share of sawlogs and its price against class B.
struct Quality {
    std::string_view code; ///< GUETEKLASSE.GKL
    std::uint32_t weight;
    double factor;
};

inline constexpr std::array<Quality, 6> qualities{{
    {"A", 45, 1.32},
    {"B", 560, 1.0},
    {"BC", 90, 0.93},
    {"C", 210, 0.79},
    {"CX", 60, 0.61},
    {"D", 35, 0.52},
}};

/// Price against class 3a by strength class in the order of the master data (0, 1a, 1b ... 6).
inline constexpr std::array<double, 10> softwoodByStrength{0.45, 0.58, 0.74, 0.90, 0.98, 1.0, 1.01, 0.99, 0.94, 0.86};
inline constexpr std::array<double, 10> hardwoodByStrength{0.40, 0.46, 0.52, 0.60, 0.78, 1.0, 1.14, 1.32, 1.55, 1.70};

/// Price level by quarter, the last one ending at the base date.
inline constexpr std::array<double, 12> priceByQuarter{1.06, 1.18, 1.24, 1.12, 1.02, 0.97,
                                                       0.93, 0.91, 0.95, 0.99, 1.01, 1.0};

/// Lengths of sawlogs in metres, as the mills order them.
inline constexpr std::array<double, 8> sawlogLengths{4.0, 4.0, 4.0, 5.0, 5.0, 3.0, 4.5, 6.0};

/// A service that the enterprise pays for a delivery: one row per version A1 to A8.
struct Service {
    std::string_view partners; ///< PERSONAL.GRUPPE
    std::uint32_t perMille;    ///< of all deliveries
    double low, high;          ///< euro per cubic metre; for ownerVersion the share of the timber price
    std::int32_t bookingNumber;
    std::int32_t chapter, title; ///< HH_KAPITEL.ID and HH_TITEL.ID
};

inline constexpr std::array<Service, 8> services{{
    {"Frächter", 600, 8.5, 18.0, 4, 2, 4},
    {"Unternehmer", 450, 18.0, 36.0, 5, 1, 2},
    {"Handel", 120, 0.5, 2.5, 6, 3, 5},
    {"Vermessung", 80, 0.8, 1.6, 7, 3, 6},
    {"Waldbesitzer", 50, 0.60, 0.85, 8, 1, 2},
    {"Unternehmer", 20, 1.5, 6.0, 8, 1, 2},
    {"Unternehmer", 12, 1.0, 4.0, 8, 1, 2},
    {"Unternehmer", 8, 0.5, 3.0, 8, 3, 5},
}};

/// The version keys in the order of the columns of LOGS_RECH: the invoice R, then the settlements.
inline constexpr std::array<std::string_view, 9> versions{"R", "A1", "A2", "A3", "A4", "A5", "A6", "A7", "A8"};
inline constexpr std::size_t invoiceVersion = 0;
inline constexpr std::size_t carrierVersion = 1; ///< A1, paid to the carrier
inline constexpr std::size_t ownerVersion = 5;   ///< A5, the forest owner's share of the timber price

/// National currency units per euro, as in the options of the master data.
inline constexpr double nationalPerEuro = 13.7603;

} // namespace tamarok::database::profile
