#include <array>
#include <memory>
#include <vector>

#include "areas/sales_parts.h"

#include "tamarok/convert.h"

namespace tamarok::database::sales {
namespace {

constexpr std::uint64_t contractStream = 1'000'000'000'001;
constexpr std::uint64_t termsStream = 1'000'000'000'002;

constexpr std::array contractColumns{
    whole("ID_VERTRAG"), text("VERTRAG_NAME"),  day("INVDATE"),       whole("ID_PERSONAL"), whole("ID_FAKTART"),
    whole("ID_USER"),    flag("ABGESCHLOSSEN"), text("ZUSATZTEXT_1"), text("ZUSATZTEXT_2"), text("KOPF1"),
    text("KOPF2"),       text("KOPF10"),        day("LIEFERVON"),     day("LIEFERBIS"),     whole("ID_ACCESS_LEVELS")};

constexpr std::array quantityColumns{whole("ID"), whole("ID_VERTRAG"), text("HA"),
                                     text("HS"),  number("MENGE"),     number("PREIS")};

constexpr std::array termsColumns{whole("ID_VERTRAG"), text("ORIGINAL"),     flag("ANGEMELDETEMENGE"),
                                  day("ANGEMELDETE"),  day("MENGENMELDUNG"), day("BEREITSELLUNGS")};

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

void insertContract(BulkInsert& contracts, Random& random, const Keys& keys, std::int32_t id, Date baseDate)
{
    const Date signedOn = drawDay(random, baseDate);
    const Date begin{signedOn.days + 14.0};
    const bool isLong = random.chance(500);
    insertRow(contracts, {id, numbered("V" + std::to_string(toCivil(signedOn).year) + "-", id, 4), signedOn,
                          pickOrNull(random, keys.customers, 0), random.between(0, 5), pickOrNull(random, keys.users),
                          begin.days + 365.0 < baseDate.days, isLong ? Variant{"Jahresvertrag"} : Variant{Null{}},
                          orNull(random, 250, random.pick(tradeTerms)), "Zone " + std::to_string(random.between(1, 4)),
                          isLong ? Variant{"Preise vierteljährlich"} : Variant{"Fixpreis"},
                          orNull(random, 400, "Lager " + std::to_string(random.between(1, 3))), begin,
                          Date{begin.days + (isLong ? 364.0 : 182.0)}, pickOrNull(random, keys.districts)});
}

struct Contract {
    std::int32_t id = 0;
    Date signedOn;
};

/// The first `limit` contracts by their IDs.
std::vector<Contract> readContracts(ado::Connection& connection, std::int32_t limit)
{
    std::vector<Contract> contracts;
    ado::Recordset rows;
    rows.Open("SELECT TOP " + std::to_string(limit) + " ID_VERTRAG, INVDATE FROM VERTRAEGE ORDER BY ID_VERTRAG",
              // A reference without ownership: the caller owns the connection.
              ado::ConnectionRef{std::shared_ptr<void>{}, &connection});
    for (; !rows.AtEOF(); rows.MoveNext())
        contracts.push_back(
            {convert::toLong(rows.Fields().Item(0).Value()), convert::toDate(rows.Fields().Item(1).Value())});
    rows.Close();
    return contracts;
}

/// Quantities are announced after the contract is signed and reported before provision begins.
void writeTerms(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, termsStream};
    BulkInsert terms{connection, "WVO_VERTRAG", termsColumns};
    for (const Contract& contract : readContracts(connection, options.records)) {
        const Date announced = notAfter(contract.signedOn, random.between(3, 40), options.baseDate);
        const Date reported = notAfter(announced, random.between(5, 30), options.baseDate);
        insertRow(terms, {contract.id, orNull(random, 50, numbered("WV-", contract.id * 7 + 1000, 6)),
                          random.chance(700), orNull(random, 30, announced), orNull(random, 100, reported),
                          orNull(random, 150, notAfter(reported, random.between(7, 60), options.baseDate))});
    }
}

} // namespace

void writeContracts(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    Random random{options.seed, contractStream};
    const std::int32_t existing = readNumber(connection, "SELECT COUNT(*) FROM VERTRAEGE");
    std::int32_t lastContract = readNumber(connection, "SELECT ISNULL(MAX(ID_VERTRAG),0) FROM VERTRAEGE");
    std::int32_t lastQuantity = readNumber(connection, "SELECT ISNULL(MAX(ID),0) FROM VERTRAG_MENGEN");
    BulkInsert contracts{connection, "VERTRAEGE", contractColumns};
    BulkInsert quantities{connection, "VERTRAG_MENGEN", quantityColumns};
    for (std::int32_t row = existing; row < options.records; ++row) {
        insertContract(contracts, random, keys, ++lastContract, options.baseDate);
        insertQuantities(quantities, random, lastContract, lastQuantity);
    }
    writeTerms(connection, options);
}

} // namespace tamarok::database::sales
