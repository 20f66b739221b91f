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

/// A town of the partners' addresses: latitude and longitude in degrees.
struct Town {
    std::string_view name;
    double latitude;
    double longitude;
};

constexpr std::array towns{
    Town{"Zwettl", 48.603, 15.168},        Town{"Salzburg", 47.803, 13.045},  Town{"Waidhofen", 47.960, 14.774},
    Town{"Kufstein", 47.583, 12.166},      Town{"Linz", 48.306, 14.286},      Town{"Bruck", 47.411, 15.267},
    Town{"Klagenfurt", 46.624, 14.308},    Town{"Kempten", 47.727, 10.314},   Town{"Judenburg", 47.171, 14.660},
    Town{"Rosenheim", 47.856, 12.122},     Town{"Passau", 48.574, 13.461},    Town{"Dresden", 51.051, 13.738},
    Town{"Chur", 46.850, 9.532},           Town{"Bozen", 46.498, 11.354},     Town{"České Budějovice", 48.974, 14.474},
    Town{"Český Krumlov", 48.811, 14.315}, Town{"St. Gallen", 47.424, 9.377}, Town{"Maribor", 46.557, 15.646},
    Town{"Strasbourg", 48.573, 7.752},     Town{"Colmar", 48.079, 7.358},     Town{"Allentsteig", 48.697, 15.327},
    Town{"Groß Gerungs", 48.574, 14.958},  Town{"Ardagger", 48.177, 14.832},  Town{"Ebensee", 47.807, 13.779},
    Town{"Gosau", 47.586, 13.534},         Town{"Aflenz", 47.541, 15.237},    Town{"Ellmau", 47.513, 12.299},
};

constexpr std::array columns{
    BulkInsert::Column{"FAX"},
    BulkInsert::Column{"MOBIL"},
    BulkInsert::Column{"INTERNET"},
    BulkInsert::Column{"UID_NUMMER"},
    BulkInsert::Column{"STEUERNUMMER"},
    BulkInsert::Column{"BETRIEBSNUMMER"},
    BulkInsert::Column{"BANK"},
    BulkInsert::Column{"IBAN"},
    BulkInsert::Column{"BIC"},
    BulkInsert::Column{"ZAHLUNGSZIEL", DataType::Integer},
    BulkInsert::Column{"SKONTO", DataType::Double},
    BulkInsert::Column{"SKONTOTAGE", DataType::Integer},
    BulkInsert::Column{"KREDITLIMIT", DataType::Double},
    BulkInsert::Column{"BURGSCHAFT", DataType::Double},
    BulkInsert::Column{"BURGSCHAFT_BIS", DataType::Date},
    BulkInsert::Column{"ANLAGEDATUM", DataType::Date},
    BulkInsert::Column{"ERINNERUNGDATUM", DataType::Date},
    BulkInsert::Column{"ERINNERUNGTEXT"},
    BulkInsert::Column{"WALDFLAECHE", DataType::Double},
    BulkInsert::Column{"KOORDINATE_BREITE", DataType::Double},
    BulkInsert::Column{"KOORDINATE_LAENGE", DataType::Double},
    BulkInsert::Column{"ANTEILSFAKTOR", DataType::Double},
    BulkInsert::Column{"BEITRAGSFAKTOR", DataType::Double},
    BulkInsert::Column{"ID_BB_T_JAGERSTATUS", DataType::Integer},
    BulkInsert::Column{"JAGDKARTE"},
    BulkInsert::Column{"JAGDKARTE_BIS", DataType::Date},
    BulkInsert::Column{"ID_USERS", DataType::Integer},
    BulkInsert::Column{"ID_T_BUNDESLAND", DataType::Integer},
    BulkInsert::Column{"ID_T_BEZIRK", DataType::Integer},
    BulkInsert::Column{"ID_T_GEMEINDE", DataType::Integer},
    BulkInsert::Column{"ID_T_ARBEITSGEMEINSCHAFTEN", DataType::Integer},
    BulkInsert::Column{"ID_T_ABBUCHUNGSAUFTRAG", DataType::Integer},
};

/// What the further columns of a partner depend on.
struct Partner {
    std::int32_t id;
    std::string town;
    std::string nation;
    std::string phone;
    bool isCompany;
    bool isOwner;
    bool isCustomer;
    bool isReminded;
    double hectares;
};

/// The keys that partners refer to. A region is municipality, district, province and the municipality's name.
struct PartnerKeys {
    std::vector<std::vector<Variant>> regions;
    std::vector<std::int32_t> hunterStates;
    std::vector<std::int32_t> users;
    std::vector<std::int32_t> communities;
    std::vector<std::int32_t> debits;
    double hectares = 0; ///< of all forest owners
};

std::vector<Partner> readPartners(ado::Connection& connection)
{
    std::vector<Partner> partners;
    for (const std::vector<Variant>& row :
         rowsOf(connection, "SELECT ID_PERSONAL, ORT, NATION, TELEFON, CASE WHEN VORNAME IS NULL THEN 1 ELSE 0 END,"
                            " ISNULL(WALDBESITZER,0), ISNULL(KUNDE,0), ISNULL(ERINNERUNGAKTIV,0), ISNULL(HEKTAR,0)"
                            " FROM PERSONAL ORDER BY ID_PERSONAL"))
        partners.push_back({convert::toLong(row.at(0)), row.at(1).asString(), row.at(2).asString(),
                            row.at(3).asString(), convert::toLong(row.at(4)) != 0, convert::toLong(row.at(5)) != 0,
                            convert::toLong(row.at(6)) != 0, convert::toLong(row.at(7)) != 0,
                            convert::toDouble(row.at(8))});
    return partners;
}

PartnerKeys readPartnerKeys(ado::Connection& connection)
{
    PartnerKeys keys;
    keys.regions = rowsOf(connection, "SELECT T_GEMEINDE.ID, T_BEZIRK.ID, T_BUNDESLAND.ID, T_GEMEINDE.[LONG] FROM "
                                      "T_GEMEINDE INNER JOIN T_BEZIRK ON T_BEZIRK.NUMMER = LEFT(T_GEMEINDE.NUMMER,3) "
                                      "INNER JOIN T_BUNDESLAND ON T_BUNDESLAND.NUMMER = LEFT(T_GEMEINDE.NUMMER,1) "
                                      "ORDER BY T_GEMEINDE.ID");
    keys.hunterStates = idsOf(connection, "SELECT ID FROM BB_T_JAGERSTATUS ORDER BY ID");
    keys.users = idsOf(connection, "SELECT ID FROM USERS WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID");
    keys.communities = idsOf(connection, "SELECT ID FROM T_ARBEITSGEMEINSCHAFTEN ORDER BY ID");
    keys.debits = idsOf(connection, "SELECT ID FROM T_ABBUCHUNGSAUFTRAG ORDER BY ID");
    keys.hectares = convert::toDouble(rowsOf(connection, "SELECT SUM(HEKTAR) FROM PERSONAL").at(0).at(0));
    return keys;
}

/// The remainder of a long decimal number divided by 97.
std::int32_t remainderBy97(std::string_view digits)
{
    std::int32_t remainder = 0;
    for (const char digit : digits)
        remainder = (remainder * 10 + (digit - '0')) % 97;
    return remainder;
}

/// An account number with valid check digits.
/// @param country  AT or DE
std::string accountNumber(Random& random, std::string_view country)
{
    const bool isAustria = country == "AT";
    std::string account =
        isAustria ? "20" + paddedNumber(random.between(100, 999), 3) : "7" + paddedNumber(random.between(1, 99), 7);
    account += paddedNumber(random.between(10'000'000, 99'999'999), isAustria ? 11 : 10);
    // The letters count as numbers, A as 10, behind the account and before two zeros for the check digits.
    const std::int32_t check = 98 - remainderBy97(account + (isAustria ? "102900" : "131400"));
    return std::string{country} + paddedNumber(check, 2) + account;
}

/// BANK, IBAN and BIC. Only Austrian and German accounts are known.
void appendBank(std::vector<Variant>& values, const Partner& partner, Random& random)
{
    constexpr std::array<std::array<const char*, 2>, 4> banks{{{"Sparkasse Hochstein", "SPHO"},
                                                               {"Volksbank Moosbach", "VBMO"},
                                                               {"Landesbank Birkfeld", "LBBI"},
                                                               {"Bauernbank Sonnleiten", "BASO"}}};
    if (partner.nation != "AT" && partner.nation != "DE") {
        values.insert(values.end(), 3, Variant{Null{}});
        return;
    }
    const auto& bank = random.pick(banks);
    values.emplace_back(bank[0]);
    values.emplace_back(accountNumber(random, partner.nation));
    values.emplace_back(std::string{bank[1]} + partner.nation + "2LXXX");
}

/// FAX to BETRIEBSNUMMER.
void appendContact(std::vector<Variant>& values, const Partner& partner, Random& random)
{
    values.push_back(sometimes(random, 400, partner.phone + "-" + std::to_string(random.between(10, 99))));
    values.push_back(sometimes(random, 700,
                               "+43 66" + std::to_string(random.between(4, 9)) + " " +
                                   paddedNumber(partner.id * 7919LL % 10'000'000, 7)));
    values.push_back(partner.isCompany
                         ? sometimes(random, 600, "www.partner" + paddedNumber(partner.id, 4) + ".example")
                         : Variant{Null{}});
    const std::string vat = partner.nation == "AT" ? "ATU" : partner.nation;
    values.push_back(partner.isCompany ? Variant{vat + paddedNumber(random.between(10'000'000, 79'999'999), 8)}
                                       : Variant{Null{}});
    const std::int32_t tax = random.between(1000, 9999);
    values.emplace_back(paddedNumber(partner.id % 90 + 9, 2) + "-" + paddedNumber(partner.id * 37 % 1000, 3) + "/" +
                        std::to_string(tax));
    values.push_back(partner.isOwner ? Variant{paddedNumber(random.between(1'000'000, 3'999'999), 7)}
                                     : Variant{Null{}});
}

/// ZAHLUNGSZIEL to ERINNERUNGTEXT.
void appendTerms(std::vector<Variant>& values, const Partner& partner, const ReferenceOptions& options, Random& random)
{
    constexpr std::array terms{14, 21, 30, 45, 60};
    constexpr std::array discounts{2.0, 2.5, 3.0};
    constexpr std::array reminders{"Liefervertrag erneuern", "Bankbürgschaft nachfordern", "Zertifikat anfordern",
                                   "Anrufen wegen Holzabfuhr", "Jahresgespräch vereinbaren"};
    const Variant none{Null{}};
    const bool hasDiscount = partner.isCustomer && random.chance(600);
    const bool hasGuarantee = partner.isCustomer && random.chance(350);
    const double limit = random.between(4, 160) * 2500.0;
    values.emplace_back(random.pick(terms));
    values.push_back(hasDiscount ? Variant{random.pick(discounts)} : none);
    values.push_back(hasDiscount ? Variant{random.between(1, 2) * 7} : none);
    values.push_back(partner.isCustomer ? Variant{limit} : none);
    values.push_back(hasGuarantee ? Variant{rounded(limit * 0.4)} : none);
    values.push_back(hasGuarantee ? Variant{dayBefore(options, random, 400)} : none);
    values.emplace_back(dayBefore(options, random, 3 * 365));
    values.push_back(partner.isReminded ? Variant{dayBefore(options, random, 120)} : none);
    values.push_back(partner.isReminded ? Variant{random.pick(reminders)} : none);
}

/// WALDFLAECHE to BEITRAGSFAKTOR: the partner lies within some kilometres of the town.
void appendForest(std::vector<Variant>& values, const Partner& partner, const PartnerKeys& keys, Random& random)
{
    const auto* const town = std::ranges::find(towns, partner.town, &Town::name);
    const Variant none{Null{}};
    values.push_back(partner.isOwner ? Variant{rounded(partner.hectares * random.between(0.7, 1.0), 4)} : none);
    if (town == towns.end()) {
        values.insert(values.end(), 2, none);
    } else {
        values.emplace_back(rounded(town->latitude + random.between(-0.06, 0.06), 5));
        values.emplace_back(rounded(town->longitude + random.between(-0.09, 0.09), 5));
    }
    const bool hasShare = partner.isOwner && keys.hectares > 0;
    values.push_back(hasShare ? Variant{rounded(partner.hectares / keys.hectares, 9)} : none);
    values.push_back(hasShare ? Variant{rounded(random.between(0.5, 1.5) * partner.hectares / keys.hectares, 9)}
                              : none);
}

/// ID_BB_T_JAGERSTATUS to ID_T_ABBUCHUNGSAUFTRAG. A partner of a known municipality belongs to its region; other
/// Austrian partners have their forest or their work in some region.
void appendKeys(std::vector<Variant>& values, const Partner& partner, const PartnerKeys& keys,
                const ReferenceOptions& options, Random& random)
{
    const Variant none{Null{}};
    const bool isHunter = !partner.isCompany && random.chance(300);
    values.push_back(isHunter ? pickId(random, keys.hunterStates, 0) : none);
    values.push_back(isHunter ? Variant{"JK-" + paddedNumber(random.between(1, 99'999), 5)} : none);
    values.push_back(isHunter ? Variant{dayBefore(options, random, 300)} : none);
    values.push_back(pickId(random, keys.users, nullsPerMille));
    auto region =
        std::ranges::find_if(keys.regions, [&](const auto& row) { return row.at(3).asString() == partner.town; });
    if (region == keys.regions.end() && partner.nation == "AT")
        region = keys.regions.begin() +
                 static_cast<std::ptrdiff_t>(random.below(static_cast<std::uint32_t>(keys.regions.size())));
    for (const std::size_t part : {2U, 1U, 0U})
        values.push_back(region == keys.regions.end() ? none : region->at(part));
    values.push_back(partner.isOwner ? pickId(random, keys.communities, nullsPerMille) : none);
    values.push_back(pickId(random, keys.debits, nullsPerMille));
}

} // namespace

void writePartners(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random = randomOf(options, Stream::partners);
    const PartnerKeys keys = readPartnerKeys(connection);
    RowUpdate update{connection, "PERSONAL", columns, "ID_PERSONAL"};
    for (const Partner& partner : readPartners(connection)) {
        std::vector<Variant> values;
        appendContact(values, partner, random);
        appendBank(values, partner, random);
        appendTerms(values, partner, options, random);
        appendForest(values, partner, keys, random);
        appendKeys(values, partner, keys, options, random);
        update.run(values, partner.id);
    }
}

} // namespace tamarok::database::people
