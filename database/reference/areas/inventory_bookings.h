#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "areas/inventory.h"

/// What the enterprise books in its cost accounting, for the transferred records and for the key figures.
namespace tamarok::database::bookings {

enum class Subject : std::uint8_t { work, timber, goods, object };

/// A kind of booking. Empty numbers stand for keys that it does not have.
struct Kind {
    std::string_view text;
    std::string_view service; ///< LEISTUNGSART.NUMBER
    std::string_view account; ///< KOSTENART.NUMBER
    std::string_view product; ///< PRODUKT.NUMBER
    std::string_view unit;    ///< WARENEINHEIT.EINHEIT
    double leastQuantity, mostQuantity;
    double leastPrice, mostPrice; ///< euro per unit
    Subject subject;
    bool isRevenue;
    std::uint32_t weight; ///< in a draw
};

inline constexpr std::array<Kind, 11> kinds{{
    {"Holzernte Harvester", "1110", "5000", "101", "fm", 30, 450, 24, 36, Subject::timber, false, 14},
    {"Holzernte motormanuell", "1120", "5000", "101", "fm", 15, 180, 32, 48, Subject::timber, false, 14},
    {"Rückung Seilkran", "1120", "5000", "101", "fm", 40, 320, 28, 42, Subject::timber, false, 8},
    {"Aufforstung", "1210", "5100", "102", "Stk", 200, 4000, 0.8, 2.1, Subject::goods, false, 12},
    {"Zaunbau", "1210", "5200", "102", "Stk", 20, 300, 5, 8, Subject::goods, false, 6},
    {"Käferbekämpfung", "1310", "5000", "103", "Std", 4, 60, 38, 52, Subject::work, false, 10},
    {"Wegeinstandsetzung", "", "5000", "106", "Std", 6, 80, 58, 92, Subject::object, false, 10},
    {"Pflege von Erholungseinrichtungen", "", "5000", "104", "Std", 3, 40, 36, 48, Subject::object, false, 4},
    {"Holzverkauf Säge", "1110", "4000", "101", "fm", 25, 500, 72, 118, Subject::timber, true, 16},
    {"Brennholzverkauf", "1120", "4000", "101", "rm", 5, 60, 48, 92, Subject::timber, true, 6},
    {"Jagdpacht", "", "4100", "105", "", 1, 1, 800, 6000, Subject::work, true, 3},
}};

/// A booking with its amounts.
struct Booking {
    const Kind* kind = nullptr;
    double quantity = 0.0;
    double hours = 0.0; ///< of own work or of the machine
    double price = 0.0; ///< euro per unit
    double costs = 0.0;
    double revenue = 0.0;
};

/// Returns a booking whose costs or revenue are quantity times price, in whole cents.
Booking drawBooking(Random& random);

/// Where records come from, with the prefix of their vouchers' numbers.
struct Source {
    std::string_view name, prefix;
};
inline constexpr std::array<Source, 5> sources{{{"Lohnabrechnung", "LO"},
                                                {"Holzverkauf", "HV"},
                                                {"Lagerbuchung", "LA"},
                                                {"Maschinenbuch", "MA"},
                                                {"Belegerfassung", "BE"}}};

} // namespace tamarok::database::bookings
