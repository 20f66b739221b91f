#include <array>
#include <vector>

#include "areas/sales_parts.h"

#include "tamarok/convert.h"

namespace tamarok::database::sales {
namespace {

constexpr std::uint64_t transportStream = 1'000'000'000'010;

constexpr std::array headColumns{text("TRANSPORTNUMMER"),
                                 day("AUFTRAGSDATUM"),
                                 day("ABFUHR_VON"),
                                 day("ABFUHR_BIS"),
                                 number("MENGE_GEPLANT"),
                                 number("MENGE"),
                                 number("GEWICHT"),
                                 number("FRACHT"),
                                 flag("ABGESCHLOSSEN"),
                                 text("BEMERKUNG"),
                                 whole("ID_PERSONAL"),
                                 whole("ID_WALDORT"),
                                 whole("ID_OBJEKT"),
                                 whole("ID_BB_T_PROJEKT_PLANUNG"),
                                 whole("ID_BB_T_AUFTRAGS_PLANUNG"),
                                 whole("ID_ACCESS_LEVELS"),
                                 whole("RELTABLE1"),
                                 whole("RELTABLE2"),
                                 whole("RELTABLE3"),
                                 whole("RELTABLE4"),
                                 whole("RELTABLE5"),
                                 whole("RELTABLE6"),
                                 whole("RELTABLE7"),
                                 whole("RELTABLE8"),
                                 whole("RELTABLE9"),
                                 whole("RELTABLE10"),
                                 whole("R_KUNDE"),
                                 whole("A1_KUNDE"),
                                 whole("A2_KUNDE"),
                                 whole("A3_KUNDE"),
                                 whole("A4_KUNDE"),
                                 whole("A5_KUNDE"),
                                 whole("A6_KUNDE"),
                                 whole("A7_KUNDE"),
                                 whole("A8_KUNDE"),
                                 text("R_VERTRAG"),
                                 text("A1_VERTRAG"),
                                 text("A2_VERTRAG"),
                                 text("A3_VERTRAG"),
                                 text("A4_VERTRAG"),
                                 text("A5_VERTRAG"),
                                 text("A6_VERTRAG"),
                                 text("A7_VERTRAG"),
                                 text("A8_VERTRAG")};
constexpr std::size_t firstFreeListColumn = 16;
constexpr std::size_t firstPartnerColumn = 26;
constexpr std::size_t firstContractColumn = 35;

constexpr std::array tripColumns{whole("ID"),
                                 whole("ID_TRANSPORTLOGISTIK_KOPF"),
                                 whole("ID_TRANSPORTLOGISTIK_WAGGON"),
                                 day("EINGANGS_DATUM"),
                                 text("Z_TEXT_1"),
                                 text("Z_TEXT_2"),
                                 day("Z_DATUM_1"),
                                 whole("PID"),
                                 text("POLTER"),
                                 text("LKW_NR"),
                                 text("BAHNHOF"),
                                 text("LIEFERSCHEIN_NR"),
                                 whole("STUCK"),
                                 number("MENGE"),
                                 number("GEWICHT_BRUTTO"),
                                 number("GEWICHT_TARA"),
                                 number("GEWICHT_NETTO"),
                                 whole("KILOMETER"),
                                 number("FRACHTSATZ"),
                                 number("FRACHT")};

/// How many of 1000 transports have a partner of the version: the invoice R, then the settlements A1 to A8.
constexpr std::array<std::uint32_t, 9> partnerPerMille{980, 900, 500, 250, 200, 300, 100, 80, 60};
constexpr std::uint32_t contractPerMille = 400;

constexpr std::array<std::string_view, 6> lorryDistricts{"BM", "LB", "MU", "WZ", "GU", "VO"};
constexpr std::array<std::string_view, 6> stations{"Grünau Gbf", "Hochstein", "Moosbach",
                                                   "Lindwald",   "Tannried",  "Birkfeld"};
constexpr std::array<std::string_view, 5> remarks{"Zufahrt nur bei Frost", "Schranke: Schlüssel beim Revierleiter",
                                                  "Avis einen Tag vorher", "Rundholz geschält", "nur Solofahrzeug"};

/// One trip of a transport; the tons of a cubic metre of fresh softwood lie around 0.85.
struct Trip {
    Date day;
    std::int32_t pieces = 0, kilometres = 0;
    double volume = 0.0, grossWeight = 0.0, tareWeight = 0.0, netWeight = 0.0, rate = 0.0, freight = 0.0;
    bool isByRail = false;
};

Trip drawTrip(Random& random, Date first, Date baseDate)
{
    Trip trip;
    trip.day = notAfter(first, random.between(0, 21), baseDate);
    trip.pieces = random.between(18, 140);
    trip.kilometres = random.between(12, 180);
    trip.volume = convert::roundHalfEven(random.between(14.0, 32.0), 3);
    trip.netWeight = cents(trip.volume * random.between(0.78, 0.94));
    trip.tareWeight = cents(random.between(13.5, 17.5));
    trip.grossWeight = cents(trip.netWeight + trip.tareWeight);
    trip.rate = cents(6.0 + 0.06 * trip.kilometres + random.between(0.0, 1.5));
    trip.freight = cents(trip.rate * trip.volume);
    trip.isByRail = random.chance(180);
    return trip;
}

class TransportWriter {
public:
    TransportWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        random_{options.seed, transportStream}, keys_{keys}, baseDate_{options.baseDate},
        heads_{connection, "TRANSPORTLOGISTIK_KOPF", headColumns}, trips_{connection, "TRANSPORTLOGISTIK", tripColumns},
        contracts_{readTexts(connection, "SELECT VERTRAG_NAME FROM VERTRAEGE ORDER BY ID_VERTRAG")},
        wagons_{readIds(connection, "SELECT ID FROM TRANSPORTLOGISTIK_WAGGON ORDER BY ID")},
        lastTrip_{readNumber(connection, "SELECT ISNULL(MAX(ID),0) FROM TRANSPORTLOGISTIK")}
    {}

    void write(std::int32_t head)
    {
        const Date ordered = drawDay(random_, baseDate_);
        const Date begin = notAfter(ordered, random_.between(2, 20), baseDate_);
        std::vector<Trip> trips;
        for (std::int32_t i = random_.between(1, 6); i > 0; --i)
            trips.push_back(drawTrip(random_, begin, baseDate_));
        insertHead(head, ordered, begin, trips);
        for (const Trip& trip : trips)
            insertTrip(head, trip);
    }

private:
    /// The columns from the free lists on are set one by one, the ones before them as a row.
    void insertHead(std::int32_t head, Date ordered, Date begin, const std::vector<Trip>& trips)
    {
        double volume = 0.0;
        double weight = 0.0;
        double freight = 0.0;
        for (const Trip& trip : trips) {
            volume += trip.volume;
            weight += trip.netWeight;
            freight += trip.freight;
        }
        for (std::size_t list = 0; list < keys_.freeLists.size(); ++list)
            heads_[firstFreeListColumn + list] = pickOrNull(random_, keys_.freeLists[list], 300);
        for (std::size_t version = 0; version < partnerPerMille.size(); ++version)
            setPartner(version);
        insertRow(heads_,
                  {numberOfYear("T", ordered, head), ordered, begin, notAfter(begin, 28, baseDate_),
                   static_cast<double>(random_.between(1, 8)) * 25.0, convert::roundHalfEven(volume, 3), cents(weight),
                   cents(freight), random_.chance(800), orNull(random_, 500, random_.pick(remarks)),
                   pickOrNull(random_, keys_.carriers, 0), pickOrNull(random_, keys_.locations),
                   pickOrNull(random_, keys_.objects, 300), pickOrNull(random_, keys_.projects, 200),
                   pickOrNull(random_, keys_.orders, 100), pickOrNull(random_, keys_.districts)});
    }

    /// The buyer, the carrier, the contractor and the forest owner have their groups, the others may be anyone.
    void setPartner(std::size_t version)
    {
        const bool isSet = random_.chance(partnerPerMille.at(version));
        const Ids* partners = &keys_.partners;
        if (version == 0) partners = &keys_.customers;
        if (version == 1) partners = &keys_.carriers;
        if (version == 2) partners = &keys_.contractors;
        if (version == 5) partners = &keys_.owners;
        heads_[firstPartnerColumn + version] = isSet ? pickOrNull(random_, *partners, 0) : Variant{Null{}};
        heads_[firstContractColumn + version] =
            isSet && random_.chance(contractPerMille) ? Variant{random_.pick(contracts_)} : Variant{Null{}};
    }

    void insertTrip(std::int32_t head, const Trip& trip)
    {
        const std::int32_t pile = random_.between(1, 900);
        const std::string lorry =
            std::string{random_.pick(lorryDistricts)} + "-" + std::to_string(random_.between(100, 999)) + " HT";
        const Variant wagon = trip.isByRail ? pickOrNull(random_, wagons_, 0) : Variant{Null{}};
        const Variant station = trip.isByRail ? Variant{random_.pick(stations)} : Variant{Null{}};
        insertRow(trips_, {++lastTrip_,
                           head,
                           wagon,
                           trip.day,
                           orNull(random_, 600, "Fuhre laut Avis"),
                           orNull(random_, 800, "Ladung gesichert"),
                           orNull(random_, 100, trip.day),
                           pile,
                           "P" + std::to_string(pile),
                           lorry,
                           station,
                           numbered("LS-", lastTrip_, 6),
                           trip.pieces,
                           trip.volume,
                           trip.grossWeight,
                           trip.tareWeight,
                           trip.netWeight,
                           trip.kilometres,
                           trip.rate,
                           trip.freight});
    }

    Random random_;
    const Keys& keys_;
    Date baseDate_;
    BulkInsert heads_, trips_;
    std::vector<std::string> contracts_;
    Ids wagons_;
    std::int32_t lastTrip_;
};

} // namespace

void writeTransports(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    TransportWriter writer{connection, options, keys};
    for (std::int32_t head = 1; head <= options.records; ++head)
        writer.write(head);
}

} // namespace tamarok::database::sales
