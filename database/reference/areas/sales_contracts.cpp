#include <array>
#include <vector>

#include "areas/sales_parts.h"

#include "tamarok/convert.h"

namespace tamarok::database::sales {
namespace {

constexpr std::uint64_t contractStream = 1'000'000'000'001;
constexpr std::uint64_t termsStream = 1'000'000'000'002;

/// VERTRAEGE.
constexpr std::array contractColumns{
    wholeColumn("ID_VERTRAG"),   textColumn("VERTRAG_NAME"), dayColumn("INVDATE"),
    wholeColumn("ID_PERSONAL"),  wholeColumn("ID_FAKTART"),  wholeColumn("ID_USER"),
    flagColumn("ABGESCHLOSSEN"), textColumn("ZUSATZTEXT_1"), textColumn("ZUSATZTEXT_2"),
    textColumn("KOPF1"),         textColumn("KOPF2"),        textColumn("KOPF10"),
    dayColumn("LIEFERVON"),      dayColumn("LIEFERBIS"),     wholeColumn("ID_ACCESS_LEVELS")};

/// VERTRAG_MENGEN.
constexpr std::array quantityColumns{wholeColumn("ID"), wholeColumn("ID_VERTRAG"), textColumn("HA"),
                                     textColumn("HS"),  numberColumn("MENGE"),     numberColumn("PREIS")};

/// WVO_VERTRAG.
constexpr std::array termsColumns{wholeColumn("ID_VERTRAG"), textColumn("ORIGINAL"),     flagColumn("ANGEMELDETEMENGE"),
                                  dayColumn("ANGEMELDETE"),  dayColumn("MENGENMELDUNG"), dayColumn("BEREITSELLUNGS")};

/// Species and assortment with the usual price of contracts in euro per cubic metre.
struct Timber {
    std::string_view species, assortment;
    double price;
};
constexpr std::array<Timber, 8> timbers{{{"FI", "BL", 96.0},
                                         {"FI", "AB", 92.0},
                                         {"FI", "IF", 36.0},
                                         {"KI", "BL", 76.0},
                                         {"LA", "BL", 121.0},
                                         {"BU", "AB", 83.0},
                                         {"BU", "IF", 47.0},
                                         {"EI", "AB", 215.0}}};

constexpr std::array<std::string_view, 4> tradeTerms{
    "Lieferung laut Handelsusancen, Zahlungsziel 21 Tage", "Übernahme frei Waldstraße, Zahlung binnen 30 Tagen",
    "Werksvermessung, Abrechnung monatlich", "Abfuhr durch den Käufer, Anzahlung 30 %"};

/// Inserts one to three quantities of a contract. @param lastId  VERTRAG_MENGEN.ID of the last row
void insertQuantities(BulkInsert& quantities, Random& random, std::int32_t contract, std::int32_t& lastId)
{
    for (std::int32_t i = random.between(1, 3); i > 0; --i) {
        const Timber& timber = random.pick(timbers);
        insertRow(quantities,
                  {++lastId, contract, timber.species, timber.assortment,
                   static_cast<double>(random.between(2, 60)) * 50.0, cents(timber.price * random.between(0.9, 1.1))});
    }
}

/// Inserts a contract for half a year or a year, which counts as closed a year after its begin.
void insertContract(BulkInsert& contracts, Random& random, const Keys& keys, std::int32_t id,
                    const ReferenceOptions& options)
{
    const Date signedOn = drawDay(random, options);
    const Date begin{signedOn.days + 14.0};
    const bool isLong = random.chance(500);
    insertRow(contracts,
              {id, "V" + std::to_string(toCivil(signedOn).year) + "-" + paddedNumber(id, 4), signedOn,
               pickId(random, keys.customers), random.between(0, 5), pickId(random, keys.users, fewNulls),
               begin.days + 365.0 < options.baseDate.days, isLong ? Variant{"Jahresvertrag"} : Variant{Null{}},
               orNull(random, 250, random.pick(tradeTerms)), "Zone " + std::to_string(random.between(1, 4)),
               isLong ? Variant{"Preise vierteljährlich"} : Variant{"Fixpreis"},
               orNull(random, 400, "Lager " + std::to_string(random.between(1, 3))), begin,
               Date{begin.days + (isLong ? 364.0 : 182.0)}, pickId(random, keys.districts, fewNulls)});
}

struct Contract {
    std::int32_t id = 0;
    Date signedOn;
};

/// The first `limit` contracts by their IDs.
std::vector<Contract> readContracts(ado::Connection& connection, std::int32_t limit)
{
    std::vector<Contract> contracts;
    for (const std::vector<Variant>& row :
         rowsOf(connection,
                "SELECT TOP " + std::to_string(limit) + " ID_VERTRAG, INVDATE FROM VERTRAEGE ORDER BY ID_VERTRAG"))
        contracts.push_back({convert::toLong(row.at(0)), convert::toDate(row.at(1))});
    return contracts;
}

/// Quantities are announced after the contract is signed and reported before provision begins.
void writeTerms(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, termsStream};
    BulkInsert terms{connection, "WVO_VERTRAG", termsColumns};
    for (const Contract& contract : readContracts(connection, options.records)) {
        const Date announced = laterDay(contract.signedOn, random.between(3, 40), options);
        const Date reported = laterDay(announced, random.between(5, 30), options);
        insertRow(terms, {contract.id, orNull(random, 50, "WV-" + paddedNumber(contract.id * 7 + 1000, 6)),
                          random.chance(700), orNull(random, 30, announced), orNull(random, 100, reported),
                          orNull(random, 150, laterDay(reported, random.between(7, 60), options))});
    }
}

} // namespace

void writeContracts(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    Random random{options.seed, contractStream};
    const std::int32_t existing = idsOf(connection, "SELECT COUNT(*) FROM VERTRAEGE").at(0);
    std::int32_t lastContract = idsOf(connection, "SELECT ISNULL(MAX(ID_VERTRAG),0) FROM VERTRAEGE").at(0);
    std::int32_t lastQuantity = lastId(connection, "VERTRAG_MENGEN");
    BulkInsert contracts{connection, "VERTRAEGE", contractColumns};
    BulkInsert quantities{connection, "VERTRAG_MENGEN", quantityColumns};
    for (std::int32_t row = existing; row < options.records; ++row) {
        insertContract(contracts, random, keys, ++lastContract, options);
        insertQuantities(quantities, random, lastContract, lastQuantity);
    }
    writeTerms(connection, options);
}

} // namespace tamarok::database::sales
