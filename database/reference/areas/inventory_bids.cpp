#include "areas/inventory_bids.h"

#include <array>

namespace tamarok::database {
namespace {

using bids::Bid;
using bids::Line;
using bids::Lot;

constexpr std::uint64_t saleStream = 6'000'000'000'002;
constexpr std::uint64_t rowStream = 6'000'000'000'004;

constexpr std::array saleColumns{
    textColumn("NUMMER"),
    textColumn("BEZEICHNUNG"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_BB_T_VERKAUFSZIEL"),
    wholeColumn("ID_BB_T_VERKAUFSVERFAHREN"),
    dayColumn("ABGABESCHLUSS"),
    dayColumn("VERKAUFSDATUM"),
    dayColumn("UHRZEIT"),
    textColumn("VERKAUFSORT"),
    wholeColumn("FWJ"),
    wholeColumn("ANZAHL_LOSE"),
    numberColumn("MENGE"),
    numberColumn("ANSCHLAG"),
    numberColumn("ERLOS"),
    wholeColumn("ZAHLUNGSZIEL"),
    dayColumn("ABFUHRFRIST"),
    flagColumn("ABGESCHLOSSEN"),
    dayColumn("STORNODATUM"),
    textColumn("BEMERKUNG"),
};
constexpr std::array lotColumns{
    wholeColumn("ID_BB_MV_VERKAUFSZIEL"),
    textColumn("LOS_NUMMER"),
    textColumn("BEZEICHNUNG"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_HOLZPLATZ"),
    textColumn("LAGERORT"),
    wholeColumn("ID_BB_T_EIGENTUMSART"),
    wholeColumn("ID_BB_TSM_EAGMV1"),
    wholeColumn("ID_BB_T_DATENBANK"),
    wholeColumn("ID_T_BUNDESLAND"),
    dayColumn("LOSDATUM"),
    wholeColumn("STUCK"),
    numberColumn("MENGE"),
    numberColumn("ANSCHLAG"),
    wholeColumn("ID_BB_MV_BIETER"),
    numberColumn("ZUSCHLAGSPREIS"),
    dayColumn("ZUSCHLAGSDATUM"),
    textColumn("BEMERKUNG"),
};
constexpr std::array lineColumns{
    wholeColumn("ID_BB_MV_LOSE"),
    textColumn("STAMMNUMMER"),
    wholeColumn("ID_HOLZART"),
    wholeColumn("ID_BB_TSM_BAGMV1"),
    wholeColumn("ID_HOLZSORTE"),
    wholeColumn("ID_BB_TSM_SOGMV"),
    wholeColumn("ID_GUETEKLASSE"),
    wholeColumn("ID_BB_TSM_GUGMV1"),
    wholeColumn("ID_STKL"),
    wholeColumn("ID_BB_T_MESSVERFAHREN"),
    wholeColumn("ID_BB_T_HOLZSCHADEN"),
    numberColumn("LANGE"),
    wholeColumn("DURCHMESSER"),
    wholeColumn("STUCK"),
    numberColumn("MENGE"),
    numberColumn("ANSCHLAGSPREIS"),
    numberColumn("ANSCHLAG"),
    textColumn("BEMERKUNG"),
};
constexpr std::array bidColumns{
    wholeColumn("ID_BB_MV_LOSE"),
    wholeColumn("ID_BB_MV_BIETER"),
    wholeColumn("ID_BB_T_KZ_ZUSCHLAG"),
    dayColumn("EINGANGSDATUM"),
    dayColumn("UHRZEIT"),
    numberColumn("GEBOT"),
    numberColumn("BETRAG"),
    wholeColumn("RANG"),
    textColumn("BEMERKUNG"),
};
consteval std::size_t sale(std::string_view name)
{
    return placeOf(saleColumns, name);
}
consteval std::size_t lot(std::string_view name)
{
    return placeOf(lotColumns, name);
}
consteval std::size_t line(std::string_view name)
{
    return placeOf(lineColumns, name);
}
consteval std::size_t bid(std::string_view name)
{
    return placeOf(bidColumns, name);
}

constexpr std::array<std::string_view, 4> saleNames{"Meistgebotsverkauf Wertholz", "Meistgebotsverkauf Stammholz",
                                                    "Submission Starkholz", "Holzmarkt"};
constexpr std::array<std::string_view, 5> salePlaces{
    "Gasthof Post, Grünau", "Forstamt Weißensee", "Wertholzplatz Hochstein", "Gemeindesaal Auwald", "Forstamt Ahornau"};
constexpr std::array<std::string_view, 6> storagePlaces{"Wertholzplatz Hochstein", "Forststraße Grünau, km 2,4",
                                                        "Lagerplatz Moosbach",     "Wendeplatz Kaltental",
                                                        "Forststraße Lindwald",    "Holzhof Tannried"};
constexpr std::array<std::string_view, 3> saleRemarks{"Besichtigung nach Anmeldung", "Zufahrt mit Sattelzug möglich",
                                                      "Gebote nur schriftlich"};
constexpr std::array<std::string_view, 3> lotRemarks{"einzeln bebietbar", "Abfuhr über Nachbargrund",
                                                     "Metallsuche erfolgt"};
constexpr std::array<std::string_view, 4> lineRemarks{"Drehwuchs", "astrein bis 5 m", "leichte Krümmung", "Blitzriss"};
constexpr std::array<std::string_view, 3> bidRemarks{"per Fax", "Nachgebot", "gilt für alle Stämme"};

/// The group of species in sales by bid (BB_TSM_BAGMV1.SHORT) of a species.
constexpr std::array<std::pair<std::string_view, std::string_view>, 14> speciesGroups{{
    {"FI", "FI"},
    {"TA", "FI"},
    {"DG", "FI"},
    {"KI", "KI"},
    {"LA", "KI"},
    {"BU", "BU"},
    {"ES", "BU"},
    {"AH", "BU"},
    {"KB", "BU"},
    {"EI", "EI"},
    {"TE", "EI"},
    {"BI", "WL"},
    {"ER", "WL"},
    {"PA", "WL"},
}};
/// The group of ownership (BB_TSM_EAGMV1.SHORT) of a kind of ownership (BB_T_EIGENTUMSART.SHORT).
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> ownershipGroups{
    {{"Land", "SW"}, {"Körper", "KW"}, {"Privat", "PW"}, {"Kirche", "KW"}, {"Gem.", "KW"}}};

/// The keys to which sales refer.
struct Keys {
    explicit Keys(ado::Connection& connection);

    Codes species, speciesGroups, assortments, assortmentGroups, qualities, qualityGroups, strengths;
    Codes ownerships, ownershipGroups;
    std::vector<std::int32_t> destinations, procedures, offices, districts, yards, databases, provinces, methods,
        damages;
};

Keys::Keys(ado::Connection& connection) :
    species{codesOf(connection, "SELECT HA, ID FROM HOLZART")}, speciesGroups{codesOf(
                                                                    connection, "SELECT SHORT, ID FROM BB_TSM_BAGMV1")},
    assortments{codesOf(connection, "SELECT HS, ID FROM HOLZSORTE")},
    assortmentGroups{codesOf(connection, "SELECT SHORT, ID FROM BB_TSM_SOGMV")},
    qualities{codesOf(connection, "SELECT GKL, ID FROM GUETEKLASSE")},
    qualityGroups{codesOf(connection, "SELECT SHORT, ID FROM BB_TSM_GUGMV1")}, strengths{codesOf(
                                                                                   connection,
                                                                                   "SELECT STKL, ID FROM STKL")},
    ownerships{codesOf(connection, "SELECT SHORT, ID FROM BB_T_EIGENTUMSART")},
    ownershipGroups{codesOf(connection, "SELECT SHORT, ID FROM BB_TSM_EAGMV1")},
    destinations{idsOf(connection, "SELECT ID FROM BB_T_VERKAUFSZIEL ORDER BY ID")},
    procedures{idsOf(connection, "SELECT ID FROM BB_T_VERKAUFSVERFAHREN WHERE SHORT IN ('ME','VE') ORDER BY ID")},
    offices{idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE FUNKTIONSBEREICH = 'Forstamt' ORDER BY ID")},
    districts{idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE FUNKTIONSBEREICH = 'Revier' ORDER BY ID")},
    yards{idsOf(connection, "SELECT ID FROM HOLZPLATZ ORDER BY ID")}, databases{idsOf(
                                                                          connection,
                                                                          "SELECT ID FROM BB_T_DATENBANK ORDER BY ID")},
    provinces{idsOf(connection, "SELECT ID FROM T_BUNDESLAND ORDER BY ID")},
    methods{idsOf(connection, "SELECT ID FROM BB_T_MESSVERFAHREN WHERE SHORT IN ('KL','WV') ORDER BY ID")},
    damages{idsOf(connection, "SELECT ID FROM BB_T_HOLZSCHADEN ORDER BY ID")}
{}

/// The undivided timber counts in volume and reserve price, but is no lot.
void setSums(BulkInsert& row, const std::vector<Lot>& lots)
{
    std::int32_t count = 0;
    double volume = 0.0;
    double reserve = 0.0;
    double revenue = 0.0;
    for (const Lot& one : lots) {
        count += one.number == 0 ? 0 : 1;
        volume += one.volume;
        reserve += one.reserve;
        if (one.isSold) revenue += one.bids.front().amount;
    }
    row[sale("ANZAHL_LOSE")] = count;
    row[sale("MENGE")] = thousandth(volume);
    row[sale("ANSCHLAG")] = cents(reserve);
    row[sale("ERLOS")] = cents(revenue);
}

/// The days of a sale: the last one for bids and that of their opening.
struct Days {
    Date deadline, sale;
};

void setSale(BulkInsert& row, Random& random, const Keys& keys, const Days& days, std::int32_t id)
{
    constexpr double removalDays = 90.0;
    row[sale("NUMMER")] = documentNumber("MV", days.sale, id);
    row[sale("BEZEICHNUNG")] = std::string{random.pick(saleNames)} + " " + std::to_string(toCivil(days.sale).year);
    row[sale("ID_ACCESS_LEVELS")] = pickId(random, keys.offices);
    row[sale("ID_BB_T_VERKAUFSZIEL")] = pickId(random, keys.destinations, 20);
    row[sale("ID_BB_T_VERKAUFSVERFAHREN")] = pickId(random, keys.procedures);
    row[sale("ABGABESCHLUSS")] = days.deadline;
    row[sale("VERKAUFSDATUM")] = days.sale;
    row[sale("UHRZEIT")] = drawTime(random, 9, 15);
    row[sale("VERKAUFSORT")] = random.pick(salePlaces);
    row[sale("FWJ")] = toCivil(days.sale).year;
    row[sale("ZAHLUNGSZIEL")] = random.chance(700) ? 14 : 30;
    row[sale("ABFUHRFRIST")] = Date{days.sale.days + removalDays};
    if (random.chance(250)) row[sale("BEMERKUNG")] = random.pick(saleRemarks);
}

/// Each district lies in one province.
void setLot(BulkInsert& row, Random& random, const Keys& keys, Date day, const Lot& one)
{
    row[lot("LOS_NUMMER")] = std::to_string(one.number);
    row[lot("BEZEICHNUNG")] = one.number == 0 ? std::string{"nicht eingeteilt"} : "Los " + std::to_string(one.number);
    const std::int32_t level = random.pick(keys.districts);
    row[lot("ID_ACCESS_LEVELS")] = level;
    row[lot("ID_T_BUNDESLAND")] = idInTurn(keys.provinces, level);
    row[lot("ID_HOLZPLATZ")] = pickId(random, keys.yards, 100);
    row[lot("LAGERORT")] = random.pick(storagePlaces);
    const auto& [ownership, group] = random.pick(ownershipGroups);
    row[lot("ID_BB_T_EIGENTUMSART")] = idOf(keys.ownerships, ownership);
    row[lot("ID_BB_TSM_EAGMV1")] = idOf(keys.ownershipGroups, group);
    row[lot("ID_BB_T_DATENBANK")] = pickId(random, keys.databases, 20);
    row[lot("LOSDATUM")] = Date{day.days - random.between(20, 60)};
    row[lot("STUCK")] = one.pieces;
    row[lot("MENGE")] = one.volume;
    row[lot("ANSCHLAG")] = one.reserve;
    if (random.chance(150)) row[lot("BEMERKUNG")] = random.pick(lotRemarks);
    if (!one.isSold) return;
    row[lot("ID_BB_MV_BIETER")] = one.bids.front().bidder;
    row[lot("ZUSCHLAGSPREIS")] = one.bids.front().amount;
    row[lot("ZUSCHLAGSDATUM")] = day;
}

/// Only timber of the quality for rotten logs has a damage.
void insertLine(BulkInsert& row, Random& random, const Keys& keys, const Line& one)
{
    row[line("STAMMNUMMER")] = paddedNumber(random.between(1, 99999), 5);
    row[line("ID_HOLZART")] = idOf(keys.species, one.species->code);
    row[line("ID_BB_TSM_BAGMV1")] = idOf(keys.speciesGroups, bids::valueOf(speciesGroups, one.species->code));
    row[line("ID_HOLZSORTE")] = idOf(keys.assortments, one.assortment);
    row[line("ID_BB_TSM_SOGMV")] = idOf(keys.assortmentGroups, one.assortmentGroup);
    row[line("ID_GUETEKLASSE")] = idOf(keys.qualities, one.quality);
    row[line("ID_BB_TSM_GUGMV1")] = idOf(keys.qualityGroups, one.qualityGroup);
    row[line("ID_STKL")] = idOf(keys.strengths, strengthClassOf(one.diameter));
    row[line("ID_BB_T_MESSVERFAHREN")] = pickId(random, keys.methods);
    row[line("ID_BB_T_HOLZSCHADEN")] = one.quality == "CX" ? pickId(random, keys.damages) : Variant{Null{}};
    row[line("LANGE")] = one.length;
    row[line("DURCHMESSER")] = one.diameter;
    row[line("STUCK")] = one.pieces;
    row[line("MENGE")] = one.volume;
    row[line("ANSCHLAGSPREIS")] = one.reserve;
    row[line("ANSCHLAG")] = one.amount;
    row[line("BEMERKUNG")] = random.chance(100) ? Variant{random.pick(lineRemarks)} : Variant{Null{}};
    row.insert();
}

void insertBid(BulkInsert& row, Random& random, Date deadline, std::size_t rank, const Bid& one)
{
    row[bid("ID_BB_MV_BIETER")] = one.bidder;
    row[bid("ID_BB_T_KZ_ZUSCHLAG")] =
        one.award == bids::Award::open ? Variant{Null{}} : Variant{static_cast<std::int32_t>(one.award)};
    row[bid("EINGANGSDATUM")] = Date{deadline.days - random.between(0, 12)};
    row[bid("UHRZEIT")] = drawTime(random, 7, 18);
    row[bid("GEBOT")] = one.price;
    row[bid("BETRAG")] = one.amount;
    row[bid("RANG")] = static_cast<std::int32_t>(rank);
    row[bid("BEMERKUNG")] = random.chance(80) ? Variant{random.pick(bidRemarks)} : Variant{Null{}};
    row.insert();
}

/// The statements of lots, and the ID that the next lot gets.
class LotWriter {
public:
    LotWriter(ado::Connection& connection, const Keys& keys, Random& random) :
        keys_{keys}, random_{random}, lots_{connection, "BB_MV_LOSE", lotColumns},
        lines_{connection, "BB_MV_HOLZDATEN", lineColumns}, bids_{connection, "BB_MV_GEBOTE", bidColumns}
    {}

    void write(std::int32_t sale, const Days& days, const Lot& one)
    {
        lots_.clear();
        lots_[lot("ID_BB_MV_VERKAUFSZIEL")] = sale;
        setLot(lots_, random_, keys_, days.sale, one);
        lots_.insert();
        ++id_;
        lines_[line("ID_BB_MV_LOSE")] = id_;
        for (const Line& part : one.lines)
            insertLine(lines_, random_, keys_, part);
        bids_[bid("ID_BB_MV_LOSE")] = id_;
        for (std::size_t i = 0; i < one.bids.size(); ++i)
            insertBid(bids_, random_, days.deadline, i + 1, one.bids[i]);
    }

private:
    const Keys& keys_;
    Random& random_;
    BulkInsert lots_;
    BulkInsert lines_;
    BulkInsert bids_;
    std::int32_t id_ = 0;
};

} // namespace

void writeSalesByBid(ado::Connection& connection, const ReferenceOptions& options)
{
    constexpr double daysToAward = 21.0;
    if (options.records == 0) return;
    const std::int32_t bidders = bids::writeBidders(connection, options);
    const Keys keys{connection};
    Random random{options.seed, saleStream};
    Random ofRows{options.seed, rowStream};
    BulkInsert head{connection, "BB_MV_VERKAUFSZIEL", saleColumns};
    LotWriter lots{connection, keys, ofRows};
    for (std::int32_t id = 1; id <= options.records; ++id) {
        const Date day = drawDay(random, options);
        const Days days{Date{day.days - random.between(1, 5)}, day};
        const Variant cancelled = drawCancelDay(random, day, options);
        // A sale is decided some weeks after the opening of its bids, unless it was cancelled.
        const bool decided = cancelled.isNull() && day.days + daysToAward < dayOf(options.baseDate).days;
        const std::vector<Lot> drawn = bids::drawLots(random, bidders, decided);
        head.clear();
        setSale(head, random, keys, days, id);
        setSums(head, drawn);
        head[sale("ABGESCHLOSSEN")] = decided;
        head[sale("STORNODATUM")] = cancelled;
        head.insert();
        for (const Lot& one : drawn)
            lots.write(id, days, one);
    }
}

} // namespace tamarok::database
