#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

// What vouchers of cost accounting are about.
namespace tamarok::database {

/// What a position is about. Codes are those of the key tables; an empty one refers to no row.
struct VoucherWork {
    std::string_view text;
    std::string_view costType, revenueType; ///< KOSTENART.NUMBER; one of them is empty
    std::string_view service, method, product, object, article, unit;
    std::int32_t decimals;            ///< of the quantity
    double low, high;                 ///< quantity
    std::int32_t priceLow, priceHigh; ///< cents per unit
    double hoursPerUnit;              ///< 0 for goods
    double unitsPerHectare;           ///< of the nature record
    std::string_view mark, measure, assortment, species, use, subAccount, taxMark, taxKey;
    double taxRate; ///< percent
};

// clang-format off
inline constexpr std::array harvestWorks{
    VoucherWork{"Holzernte mit Vollernter", "5000", "", "1110", "HV", "101", "", "", "fm", 2, 40, 320, 1900, 2700, 0.08, 55, "HE", "DF", "BL", "FI", "", "HO", "L20", "N20", 20},
    VoucherWork{"Holzernte motormanuell", "5000", "", "1120", "MS", "101", "", "", "fm", 2, 15, 160, 2600, 3600, 0.55, 90, "HE", "EN", "BL", "BU", "", "HO", "L20", "N20", 20},
    VoucherWork{"Seilbringung", "5000", "", "1120", "SK", "101", "", "", "fm", 2, 30, 220, 2800, 4200, 0.25, 120, "RU", "EN", "LA", "FI", "", "HO", "L20", "N20", 20},
    VoucherWork{"Vorliefern mit Pferd", "5000", "", "1120", "PF", "101", "", "", "fm", 2, 5, 45, 1800, 2600, 0.4, 40, "RU", "DF", "AB", "KI", "", "HO", "L20", "N20", 20},
};
inline constexpr std::array cultureWorks{
    VoucherWork{"Forstpflanzen Fichte", "5100", "", "1210", "HA", "102", "", "1001", "Stk", 0, 400, 6000, 80, 95, 0, 2500, "KU", "AF", "", "FI", "", "SO", "V13", "P13", 13},
    VoucherWork{"Forstpflanzen Buche", "5100", "", "1210", "HA", "102", "", "1002", "Stk", 0, 400, 5000, 90, 110, 0, 4000, "KU", "AF", "", "BU", "", "SO", "V13", "P13", 13},
    VoucherWork{"Pflanzarbeiten", "5000", "", "1210", "HA", "102", "", "", "Std", 1, 8, 120, 2600, 3600, 1, 45, "KU", "AF", "", "LA", "", "SO", "L20", "N20", 20},
    VoucherWork{"Zaunpfosten für Wildschutzzaun", "5200", "", "1210", "HA", "102", "", "2001", "Stk", 0, 40, 400, 620, 680, 0, 130, "KU", "WS", "", "", "", "SO", "L20", "N20", 20},
    VoucherWork{"Läuterung und Jungwuchspflege", "5000", "", "1210", "HA", "102", "", "", "ha", 2, 0.4, 4.5, 48000, 82000, 18, 1, "KU", "LP", "", "FI", "", "SO", "L20", "N20", 20},
};
inline constexpr std::array protectionWorks{
    VoucherWork{"Bekämpfung des Borkenkäfers", "5000", "", "1310", "MS", "103", "", "", "Std", 1, 6, 80, 2800, 3900, 1, 14, "HE", "KA", "BL", "FI", "", "SO", "L20", "N20", 20},
    VoucherWork{"Aufarbeitung von Käferholz", "5000", "", "1310", "HV", "103", "", "", "fm", 2, 20, 260, 2200, 3100, 0.1, 70, "HE", "KA", "IF", "FI", "", "HO", "L20", "N20", 20},
};
inline constexpr std::array roadWorks{
    VoucherWork{"Instandhaltung der Forststraße Grünau", "5000", "", "", "", "106", "1001", "", "Std", 1, 4, 60, 6500, 9500, 1, 0, "WB", "", "", "", "", "SO", "L20", "N20", 20},
    VoucherWork{"Räumung des Rückewegs Lindwald", "5000", "", "", "", "106", "1002", "", "Std", 1, 2, 24, 6000, 8800, 1, 0, "WB", "", "", "", "", "SO", "L20", "N20", 20},
    VoucherWork{"Dachreparatur Forsthaus Moosbach", "5000", "", "", "HA", "104", "2001", "", "Std", 1, 6, 40, 5200, 7400, 1, 0, "WB", "", "", "", "", "GR", "L20", "N20", 20},
};
inline constexpr std::array firewoodWorks{
    VoucherWork{"Brennholz hart ab Waldstraße", "", "4000", "", "", "101", "", "3001", "rm", 2, 3, 28, 8800, 9600, 0, 0, "", "", "BR", "BU", "BH", "HO", "V13", "P13", 13},
    VoucherWork{"Brennholz weich ab Waldstraße", "", "4000", "", "", "101", "", "3002", "rm", 2, 3, 24, 6400, 7000, 0, 0, "", "", "BR", "FI", "BH", "HO", "V13", "P13", 13},
};
inline constexpr std::array huntingWorks{
    VoucherWork{"Jagdpachtzins", "", "4100", "", "", "105", "", "", "ha", 2, 120, 420, 750, 1450, 0, 0, "", "", "", "", "", "JA", "V20", "N20", 20},
    VoucherWork{"Abschussgebühr", "", "4100", "", "", "105", "", "", "Stk", 0, 1, 4, 12000, 65000, 0, 0, "", "", "", "", "", "JA", "V20", "N20", 20},
};
// clang-format on

/// What a voucher is about.
struct VoucherSubject {
    std::string_view text;
    std::span<const VoucherWork> works;
    std::string_view supplierGroup; ///< PERSONAL.GRUPPE of who sends the invoice; empty where the enterprise receives
    std::string_view account, budget;
    std::uint32_t weight;
};

inline constexpr std::array voucherSubjects{
    VoucherSubject{"Holzernte", harvestWorks, "Unternehmer", "5720", "1001/521", 36},
    VoucherSubject{"Walderneuerung", cultureWorks, "Handel", "5790", "1001/521", 27},
    VoucherSubject{"Forstschutz", protectionWorks, "Unternehmer", "5720", "1001/521", 12},
    VoucherSubject{"Wegebau und Gebäude", roadWorks, "Unternehmer", "5790", "1001/521", 10},
    VoucherSubject{"Brennholzverkauf", firewoodWorks, "", "4030", "1001/111", 9},
    VoucherSubject{"Jagderlöse", huntingWorks, "", "", "1001/111", 6},
};

} // namespace tamarok::database
