#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "areas/people_rows.h"
#include "areas/people_writers.h"

#include "tamarok/convert.h"

namespace tamarok::database::people {
namespace {

using ado::DataType;

/// A kind of machine with what one of its machines costs and does. Hours and litres per hour hold for a year of work.
struct MachineKind {
    const char* name;
    const char* group; ///< BBF_GRUPPE.NUMBER of the group MASCHINE
    std::array<const char*, 3> makes;
    const char* type;
    double price; ///< in thousands
    std::int32_t power;
    double weight;
    double rate;
    double hours;
    double litres;
};

constexpr std::array kinds{
    MachineKind{"Harvester", "1", {"Waldmeister", "Nordtech", "Almag"}, "H", 410, 185, 21.5, 118, 1650, 15.5},
    MachineKind{"Forwarder", "2", {"Waldmeister", "Nordtech", "Almag"}, "F", 295, 150, 17.2, 92, 1580, 12},
    MachineKind{"Seilkran", "2", {"Bergseil", "Alpinkran", "Gratwerk"}, "K", 360, 210, 26.4, 135, 1240, 14},
    MachineKind{"Schlepper", "2", {"Talhof", "Sonnwerk", "Bergmann"}, "S", 128, 88, 6.8, 58, 1120, 9.5},
    MachineKind{"Bagger", "3", {"Erdbau", "Grabwerk", "Steinmann"}, "B", 175, 120, 22.8, 84, 1310, 13},
    MachineKind{"Grader", "3", {"Erdbau", "Grabwerk", "Steinmann"}, "G", 220, 140, 15.9, 96, 760, 14.5},
    MachineKind{"Lastkraftwagen", "4", {"Fernfahr", "Holzlaster", "Ennswerk"}, "L", 155, 340, 14.2, 74, 1480, 24},
    MachineKind{"Geländewagen", "4", {"Pfadfinder", "Ennswerk", "Gamsbock"}, "W", 38, 110, 2.1, 22, 880, 4.5},
};

constexpr std::array machineColumns{
    BulkInsert::Column{"ID_USERS", DataType::Integer},
    BulkInsert::Column{"ID_BBF_GRUPPE", DataType::Integer},
    BulkInsert::Column{"HERSTELLER"},
    BulkInsert::Column{"TYP"},
    BulkInsert::Column{"KENNZEICHEN"},
    BulkInsert::Column{"FAHRGESTELLNUMMER"},
    BulkInsert::Column{"BAUJAHR", DataType::Integer},
    BulkInsert::Column{"LEISTUNG_KW", DataType::Integer},
    BulkInsert::Column{"GEWICHT", DataType::Double},
    BulkInsert::Column{"ANSCHAFFUNGSDATUM", DataType::Date},
    BulkInsert::Column{"ANSCHAFFUNGSWERT", DataType::Double},
    BulkInsert::Column{"NUTZUNGSDAUER", DataType::Integer},
    BulkInsert::Column{"ABSCHREIBUNG", DataType::Double},
    BulkInsert::Column{"RESTWERT", DataType::Double},
    BulkInsert::Column{"SATZ", DataType::Double},
    BulkInsert::Column{"BETRIEBSSTUNDEN", DataType::Double},
    BulkInsert::Column{"TREIBSTOFF", DataType::Double},
    BulkInsert::Column{"TREIBSTOFFKOSTEN", DataType::Double},
    BulkInsert::Column{"REPARATURKOSTEN", DataType::Double},
    BulkInsert::Column{"PRUEFDATUM", DataType::Date},
    BulkInsert::Column{"AUSSCHEIDUNGSDATUM", DataType::Date},
};

/// The keys that machines refer to.
struct MachineKeys {
    std::vector<std::vector<Variant>> groups; ///< NUMBER, ID
    std::vector<std::int32_t> users;
    std::vector<std::int32_t> levels;
};

/// A machine belongs to a senior office and is in the charge of a user who signs in.
MachineKeys readMachineKeys(ado::Connection& connection)
{
    return {rowsOf(connection, "SELECT [NUMBER], ID FROM BBF_GRUPPE WHERE LABEL_GROUP = 'MASCHINE'"),
            idsOf(connection, "SELECT ID FROM USERS WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID"),
            idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE RIGHT(ACCESS_LEVELS,2) = '00' AND "
                              "RIGHT(ACCESS_LEVELS,4) <> '0000' ORDER BY ID")};
}

Variant groupOf(const MachineKeys& keys, std::string_view number)
{
    for (const std::vector<Variant>& group : keys.groups)
        if (group.at(0).asString() == number) return group.at(1);
    return Null{};
}

/// A plate such as FW 482 KR. One draw a statement, since operands have no fixed order of evaluation.
std::string numberPlate(Random& random)
{
    std::string plate = "FW " + std::to_string(random.between(100, 999)) + " ";
    for (int letter = 0; letter < 2; ++letter)
        plate += static_cast<char>('A' + random.below(26));
    return plate;
}

/// The values of `machineColumns` for a machine of that kind.
std::vector<Variant> machineValues(const ReferenceOptions& options, const MachineKeys& keys, const MachineKind& kind,
                                   bool isSold, Random& random)
{
    // Hours, fuel and repairs grow with the years since the purchase; the value is written off in equal parts.
    constexpr double daysPerYear = 365.25;
    constexpr double fuelPrice = 1.42;
    constexpr std::int32_t life = 9;
    const Date bought = dayBefore(options, random, 3 * 365);
    const double years = (options.baseDate.days - bought.days) / daysPerYear;
    const double price = rounded(kind.price * random.between(880.0, 1140.0), 0);
    const double writeOff = rounded(price / life);
    const double hours = rounded(kind.hours * years * random.between(0.8, 1.1), 1);
    const double fuel = rounded(hours * kind.litres * random.between(0.9, 1.1), 1);
    const double repairs = rounded(price * 0.035 * years * random.between(0.4, 1.8));
    const Date sold{std::max(bought.days, options.baseDate.days - random.between(5, 60))};
    const Date inspected{bought.days + daysPerYear * static_cast<int>(years)};
    return {pickId(random, keys.users, nullsPerMille),
            groupOf(keys, kind.group),
            random.pick(kind.makes),
            kind.type + std::to_string(random.between(8, 39) * 25),
            sometimes(random, 850, numberPlate(random)),
            "TW9" + paddedNumber(random.between(1, 999'999'999), 10),
            toCivil(bought).year - random.between(0, 2),
            kind.power + random.between(-8, 12),
            rounded(kind.weight * random.between(0.95, 1.06), 3),
            bought,
            price,
            life,
            writeOff,
            rounded(std::max(0.0, price - writeOff * static_cast<int>(years))),
            rounded(kind.rate * random.between(0.92, 1.1)),
            hours,
            fuel,
            rounded(fuel * fuelPrice),
            repairs,
            dayOf(inspected),
            isSold ? Variant{dayOf(sold)} : Variant{Null{}}};
}

/// The kind of a machine by the first letters of its designation; the last kind otherwise.
const MachineKind& kindNamed(std::string_view designation)
{
    const auto found =
        std::ranges::find_if(kinds, [&](const MachineKind& kind) { return designation.starts_with(kind.name); });
    return found == kinds.end() ? kinds.back() : *found;
}

constexpr std::array groupColumns{
    BulkInsert::Column{"LANGBEZEICHNUNG"},
    BulkInsert::Column{"ANLAGEDATUM", DataType::Date},
    BulkInsert::Column{"GUELTIG_VON", DataType::Date},
    BulkInsert::Column{"GUELTIG_BIS", DataType::Date},
    BulkInsert::Column{"RABATT", DataType::Double},
    BulkInsert::Column{"MITGLIEDER", DataType::Integer},
    BulkInsert::Column{"JAHRESMENGE", DataType::Double},
    BulkInsert::Column{"JAHRESUMSATZ", DataType::Double},
    BulkInsert::Column{"BEMERKUNG"},
    BulkInsert::Column{"DISABLE", DataType::Boolean},
};

/// Gives every group members, a quantity and a turnover of the last year. A group that has ended is disabled.
void completePartnerGroups(ado::Connection& connection, const ReferenceOptions& options, Random& random)
{
    constexpr std::array discounts{0.0, 1.5, 2.0, 2.5, 3.0, 5.0};
    constexpr std::array remarks{"Preisliste gilt ab Forststraße", "Abnahme nur im Winterhalbjahr",
                                 "Sammelabrechnung je Quartal"};
    RowUpdate update{connection, "PA_GRUPPE", groupColumns, "ID"};
    for (const std::vector<Variant>& row : rowsOf(connection, "SELECT ID, BEZEICHNUNG FROM PA_GRUPPE ORDER BY ID")) {
        const Date made = dayBefore(options, random, 3 * 365);
        const bool hasEnded = random.chance(80);
        const std::int32_t members = random.between(2, 34);
        const double quantity = rounded(members * random.between(18.0, 240.0), 3);
        update.run({row.at(1).asString() + " mit vereinbarten Preisen", made,
                    Date{std::min(made.days + random.between(0, 45), dayOf(options.baseDate).days)},
                    hasEnded ? Variant{dayOf(options.baseDate)} : Variant{Null{}}, random.pick(discounts), members,
                    quantity, rounded(quantity * random.between(42.0, 96.0)),
                    sometimes(random, 300, random.pick(remarks)), hasEnded},
                   convert::toLong(row.at(0)));
    }
}

} // namespace

void writeMachines(ado::Connection& connection, const ReferenceOptions& options)
{
    constexpr std::array columns{BulkInsert::Column{"NUMMER"}, BulkInsert::Column{"BEZEICHNUNG"},
                                 BulkInsert::Column{"ID_ACCESS_LEVELS", DataType::Integer},
                                 BulkInsert::Column{"DISABLE", DataType::Boolean}};
    constexpr std::string_view all = "SELECT ID, BEZEICHNUNG, DISABLE FROM SCH_MASCHINENBUCH ORDER BY ID";
    Random random = randomOf(options, Stream::machines);
    const MachineKeys keys = readMachineKeys(connection);
    BulkInsert machines{connection, "SCH_MASCHINENBUCH", columns};
    for (auto number = static_cast<std::int32_t>(rowsOf(connection, all).size()) + 1; number <= options.records;
         ++number) {
        const std::string name = std::string{random.pick(kinds).name} + " " + std::to_string(number);
        insertRow(machines, {"M-" + paddedNumber(number, 4), name, random.pick(keys.levels), random.chance(50)});
    }
    // The given machines and the added ones get the further columns in the same way.
    RowUpdate update{connection, "SCH_MASCHINENBUCH", machineColumns, "ID"};
    for (const std::vector<Variant>& row : rowsOf(connection, all)) {
        const bool isSold = !row.at(2).isNull() && convert::toLong(row.at(2)) != 0;
        update.run(machineValues(options, keys, kindNamed(row.at(1).asString()), isSold, random),
                   convert::toLong(row.at(0)));
    }
}

void writePartnerGroups(ado::Connection& connection, const ReferenceOptions& options)
{
    constexpr std::array columns{BulkInsert::Column{"ID", DataType::Integer},
                                 BulkInsert::Column{"BEZEICHNUNG"},
                                 BulkInsert::Column{"PA_NUMMER"},
                                 BulkInsert::Column{"ID_PERSONAL", DataType::Integer},
                                 BulkInsert::Column{"ID_T_PA_KATEGORIE", DataType::Integer},
                                 BulkInsert::Column{"ID_PRODUKT", DataType::Integer}};
    constexpr std::array names{"Stammkunden Sägeholz", "Brennholzkunden", "Jagdpächter",        "Industrieholzabnehmer",
                               "Papierholzabnehmer",   "Hackgutwerke",    "Wertholzbieter",     "Zaunholzkunden",
                               "Christbaumkunden",     "Wegerhalter",     "Schmuckreisigkunden"};
    Random random = randomOf(options, Stream::groups);
    // The groups of the client enterprises are given and stay as they are.
    const std::vector<std::int32_t> owners = idsOf(
        connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE WALDBESITZER = 1 AND MANDANTEN = 0 ORDER BY ID_PERSONAL");
    const std::vector<std::int32_t> products = idsOf(connection, "SELECT ID FROM PRODUKT ORDER BY ID");
    const std::vector<std::int32_t> categories = idsOf(connection, "SELECT ID FROM T_PA_KATEGORIE ORDER BY ID");
    BulkInsert groups{connection, "PA_GRUPPE", columns};
    for (std::int32_t id = idsOf(connection, "SELECT MAX(ID) FROM PA_GRUPPE").front() + 1; id <= options.records; ++id)
        insertRow(groups, {id, random.pick(names), "G-" + paddedNumber(id, 2), random.pick(owners),
                           pickId(random, categories, nullsPerMille), pickId(random, products, nullsPerMille)});
    completePartnerGroups(connection, options, random);
}

} // namespace tamarok::database::people
