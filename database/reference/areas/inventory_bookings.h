#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "areas/inventory.h"

/// What the enterprise books in its cost accounting, for the transferred records and for the key figures.
namespace tamarok::database::bookings {

enum class Subject : std::uint8_t { work, timber, goods, object };

/// Where records come from, with the prefix of their vouchers' numbers.
enum class Origin : std::uint8_t { wages, sales, stock, machines, vouchers };
struct Source {
    std::string_view name, prefix;
};
inline constexpr std::array<Source, 5> sources{{{"Lohnabrechnung", "LO"},
                                                {"Holzverkauf", "HV"},
                                                {"Lagerbuchung", "LA"},
                                                {"Maschinenbuch", "MA"},
                                                {"Belegerfassung", "BE"}}};

constexpr const Source& sourceOf(Origin origin) noexcept
{
    return sources[static_cast<std::size_t>(origin)];
}

/// A kind of booking. Empty codes stand for keys that it does not have.
struct Kind {
    Origin origin;
    std::string_view text;
    std::string_view service;     ///< LEISTUNGSART.NUMBER
    std::string_view account;     ///< KOSTENART.NUMBER
    std::string_view product;     ///< PRODUKT.NUMBER
    std::string_view unit;        ///< WARENEINHEIT.EINHEIT
    std::string_view measure;     ///< BB_T_VOLLZUGSMASSNAHME.SHORT
    std::string_view mark;        ///< BB_T_KZ_LEISTUNG.SHORT
    std::string_view subAccount;  ///< BB_T_UNTERKONTO.SHORT
    std::string_view assortment;  ///< HOLZSORTE.HS
    std::string_view objectGroup; ///< BB_T_OBJEKTGRUPPE.SHORT
    std::string_view objectKind;  ///< OBJEKT.OBJEKT
    double leastQuantity, mostQuantity;
    double leastPrice, mostPrice; ///< euro per unit
    Subject subject;
    bool isRevenue;
    std::uint32_t weight; ///< in a draw
};

inline constexpr std::array<Kind, 14> kinds{{
    {Origin::vouchers, "Holzernte Harvester", "1110", "5000", "101", "fm", "DF", "HE", "HO", "AB", "", "", 30, 450, 24,
     36, Subject::timber, false, 14},
    {Origin::vouchers, "Rückung Seilkran", "1120", "5000", "101", "fm", "EN", "RU", "HO", "LA", "", "", 40, 320, 28, 42,
     Subject::timber, false, 8},
    {Origin::vouchers, "Unternehmer Zaunbau", "1210", "5000", "102", "Stk", "WS", "KU", "SO", "", "", "", 20, 300, 9,
     14, Subject::work, false, 4},
    {Origin::wages, "Holzernte motormanuell", "1120", "5000", "101", "fm", "EN", "HE", "HO", "BL", "", "", 15, 180, 32,
     48, Subject::timber, false, 14},
    {Origin::wages, "Käferbekämpfung", "1310", "5000", "103", "Std", "KA", "HE", "HO", "", "", "", 4, 60, 38, 52,
     Subject::work, false, 10},
    {Origin::wages, "Kulturpflege", "1210", "5000", "102", "Std", "LP", "KU", "SO", "", "", "", 4, 50, 32, 42,
     Subject::work, false, 8},
    {Origin::stock, "Aufforstung", "1210", "5100", "102", "Stk", "AF", "KU", "SO", "", "", "", 200, 4000, 0.8, 2.1,
     Subject::goods, false, 12},
    {Origin::stock, "Zaunmaterial", "1210", "5200", "102", "Stk", "WS", "KU", "SO", "", "", "", 20, 300, 5, 8,
     Subject::goods, false, 6},
    {Origin::machines, "Wegeinstandsetzung", "", "5000", "106", "Std", "", "WB", "SO", "", "WE", "WEG", 6, 80, 58, 92,
     Subject::object, false, 10},
    {Origin::machines, "Gebäudeinstandhaltung", "", "5000", "104", "Std", "", "", "SO", "", "GE", "GEBAEUDE", 3, 40, 36,
     48, Subject::object, false, 4},
    {Origin::sales, "Holzverkauf Säge", "1110", "4000", "101", "fm", "EN", "", "HO", "BL", "", "", 25, 500, 72, 118,
     Subject::timber, true, 16},
    {Origin::sales, "Industrieholzverkauf", "1110", "4000", "101", "fm", "DF", "", "HO", "IF", "", "", 20, 250, 28, 46,
     Subject::timber, true, 8},
    {Origin::sales, "Brennholzverkauf", "1120", "4000", "101", "rm", "DF", "", "HO", "BR", "", "", 5, 60, 48, 92,
     Subject::timber, true, 6},
    {Origin::vouchers, "Jagdpacht", "", "4100", "105", "", "", "", "JA", "", "", "", 1, 1, 800, 6000, Subject::work,
     true, 3},
}};

/// A booking with its amounts.
struct Booking {
    const Kind* kind = nullptr;
    double quantity = 0.0;
    double hours = 0.0; ///< of own work or of the machine, 0 for none
    double price = 0.0; ///< euro per unit
    double costs = 0.0;
    double revenue = 0.0;
};

/// Returns one of the kinds of booking, as likely as its weight.
const Kind& drawKind(Random& random);

/// Returns one of the kinds of booking that come from one source.
const Kind& drawKind(Random& random, Origin origin);

/// Returns a booking whose costs or revenue are quantity times price, in whole cents.
Booking drawBooking(Random& random, const Kind& kind);

} // namespace tamarok::database::bookings
