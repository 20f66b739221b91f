#include <array>
#include <vector>

#include "areas/sales_parts.h"

#include "tamarok/convert.h"

namespace tamarok::database::sales {
namespace {

constexpr std::uint64_t transportStream = 1'000'000'000'010;

/// TRANSPORTLOGISTIK_KOPF. The columns of the free lists, partners and contracts stand last, each group in its order.
constexpr std::array headColumns{textColumn("TRANSPORTNUMMER"),
                                 dayColumn("AUFTRAGSDATUM"),
                                 dayColumn("ABFUHR_VON"),
                                 dayColumn("ABFUHR_BIS"),
                                 numberColumn("MENGE_GEPLANT"),
                                 numberColumn("MENGE"),
                                 numberColumn("GEWICHT"),
                                 numberColumn("FRACHT"),
                                 flagColumn("ABGESCHLOSSEN"),
                                 textColumn("BEMERKUNG"),
                                 wholeColumn("ID_PERSONAL"),
                                 wholeColumn("ID_WALDORT"),
                                 wholeColumn("ID_OBJEKT"),
                                 wholeColumn("ID_BB_T_PROJEKT_PLANUNG"),
                                 wholeColumn("ID_BB_T_AUFTRAGS_PLANUNG"),
                                 wholeColumn("ID_ACCESS_LEVELS"),
                                 wholeColumn("RELTABLE1"),
                                 wholeColumn("RELTABLE2"),
                                 wholeColumn("RELTABLE3"),
                                 wholeColumn("RELTABLE4"),
                                 wholeColumn("RELTABLE5"),
                                 wholeColumn("RELTABLE6"),
                                 wholeColumn("RELTABLE7"),
                                 wholeColumn("RELTABLE8"),
                                 wholeColumn("RELTABLE9"),
                                 wholeColumn("RELTABLE10"),
                                 wholeColumn("R_KUNDE"),
                                 wholeColumn("A1_KUNDE"),
                                 wholeColumn("A2_KUNDE"),
                                 wholeColumn("A3_KUNDE"),
                                 wholeColumn("A4_KUNDE"),
                                 wholeColumn("A5_KUNDE"),
                                 wholeColumn("A6_KUNDE"),
                                 wholeColumn("A7_KUNDE"),
                                 wholeColumn("A8_KUNDE"),
                                 textColumn("R_VERTRAG"),
                                 textColumn("A1_VERTRAG"),
                                 textColumn("A2_VERTRAG"),
                                 textColumn("A3_VERTRAG"),
                                 textColumn("A4_VERTRAG"),
                                 textColumn("A5_VERTRAG"),
                                 textColumn("A6_VERTRAG"),
                                 textColumn("A7_VERTRAG"),
                                 textColumn("A8_VERTRAG")};
constexpr std::size_t firstFreeListColumn = 16;
constexpr std::size_t firstPartnerColumn = 26;
constexpr std::size_t firstContractColumn = 35;

/// TRANSPORTLOGISTIK.
constexpr std::array tripColumns{wholeColumn("ID"),
                                 wholeColumn("ID_TRANSPORTLOGISTIK_KOPF"),
                                 wholeColumn("ID_TRANSPORTLOGISTIK_WAGGON"),
                                 dayColumn("EINGANGS_DATUM"),
                                 textColumn("Z_TEXT_1"),
                                 textColumn("Z_TEXT_2"),
                                 dayColumn("Z_DATUM_1"),
                                 wholeColumn("PID"),
                                 textColumn("POLTER"),
                                 textColumn("LKW_NR"),
                                 textColumn("BAHNHOF"),
                                 textColumn("LIEFERSCHEIN_NR"),
                                 wholeColumn("STUCK"),
                                 numberColumn("MENGE"),
                                 numberColumn("GEWICHT_BRUTTO"),
                                 numberColumn("GEWICHT_TARA"),
                                 numberColumn("GEWICHT_NETTO"),
                                 wholeColumn("KILOMETER"),
                                 numberColumn("FRACHTSATZ"),
                                 numberColumn("FRACHT")};

/// How many of 1000 transports have a partner of the version: the invoice R, then the settlements A1 to A8.
constexpr std::array<std::uint32_t, 9> partnerPerMille{980, 900, 500, 250, 200, 300, 100, 80, 60};
/// How many of 1000 partners deliver under a contract.
constexpr std::uint32_t contractPerMille = 400;

/// Districts of the lorries' number plates.
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

Trip drawTrip(Random& random, Date first, const ReferenceOptions& options)
{
    Trip trip;
    trip.day = laterDay(first, random.between(0, 21), options);
    trip.pieces = random.between(18, 140);
    trip.kilometres = random.between(12, 180);
    trip.volume = convert::roundHalfEven(random.between(14.0, 32.0), 3);
    trip.netWeight = cents(trip.volume * random.between(0.78, 0.94));
    trip.tareWeight = cents(random.between(13.5, 17.5));
    trip.grossWeight = cents(trip.netWeight + trip.tareWeight);
    // A base rate and a part for the distance, in euro per cubic metre.
    trip.rate = cents(6.0 + 0.06 * trip.kilometres + random.between(0.0, 1.5));
    trip.freight = cents(trip.rate * trip.volume);
    trip.isByRail = random.chance(180);
    return trip;
}

class TransportWriter {
public:
    TransportWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        random_{options.seed, transportStream}, keys_{keys}, options_{options},
        heads_{connection, "TRANSPORTLOGISTIK_KOPF", headColumns}, trips_{connection, "TRANSPORTLOGISTIK", tripColumns},
        contracts_{contractNames(connection)}, wagons_{idsOf(connection,
                                                             "SELECT ID FROM TRANSPORTLOGISTIK_WAGGON ORDER BY ID")},
        lastTrip_{lastId(connection, "TRANSPORTLOGISTIK")}
    {}

    /// Inserts an order and its trips. The trips are drawn first, since the order holds their totals.
    void write(std::int32_t head)
    {
        const Date ordered = drawDay(random_, options_);
        const Date begin = laterDay(ordered, random_.between(2, 20), options_);
        std::vector<Trip> trips;
        for (std::int32_t i = random_.between(1, 6); i > 0; --i)
            trips.push_back(drawTrip(random_, begin, options_));
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
            heads_[firstFreeListColumn + list] = pickId(random_, keys_.freeLists[list], 300);
        for (std::size_t version = 0; version < partnerPerMille.size(); ++version)
            setPartner(version);
        insertRow(heads_,
                  {numberOfYear("T", ordered, head), ordered, begin, laterDay(begin, 28, options_),
                   static_cast<double>(random_.between(1, 8)) * 25.0, convert::roundHalfEven(volume, 3), cents(weight),
                   cents(freight), random_.chance(800), orNull(random_, 500, random_.pick(remarks)),
                   pickId(random_, keys_.carriers), pickId(random_, keys_.locations, fewNulls),
                   pickId(random_, keys_.objects, 300), pickId(random_, keys_.projects, 200),
                   pickId(random_, keys_.orders, 100), pickId(random_, keys_.districts, fewNulls)});
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
        heads_[firstPartnerColumn + version] = isSet ? pickId(random_, *partners) : Variant{Null{}};
        heads_[firstContractColumn + version] =
            isSet && random_.chance(contractPerMille) ? Variant{random_.pick(contracts_)} : Variant{Null{}};
    }

    /// Only trips by rail have a wagon and a station.
    void insertTrip(std::int32_t head, const Trip& trip)
    {
        const std::int32_t pile = random_.between(1, 900);
        const std::string lorry =
            std::string{random_.pick(lorryDistricts)} + "-" + std::to_string(random_.between(100, 999)) + " HT";
        const Variant wagon = trip.isByRail ? pickId(random_, wagons_) : Variant{Null{}};
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
                           "LS-" + paddedNumber(lastTrip_, 6),
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
    const ReferenceOptions& options_;
    BulkInsert heads_, trips_;
    std::vector<std::string> contracts_;
    Ids wagons_;
    std::int32_t lastTrip_; ///< TRANSPORTLOGISTIK.ID of the last row; timber lists have written the first ones
};

} // namespace

void writeTransports(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    TransportWriter writer{connection, options, keys};
    for (std::int32_t head = 1; head <= options.records; ++head)
        writer.write(head);
}

} // namespace tamarok::database::sales
