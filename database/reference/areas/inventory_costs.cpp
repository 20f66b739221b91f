#include <algorithm>
#include <array>

#include "areas/inventory_bookings.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

using bookings::Booking;
using bookings::Subject;

constexpr std::uint64_t transferStream = 6'000'000'000'006;

constexpr std::array transferColumns{
    textColumn("NUMMER"),
    textColumn("BEZEICHNUNG"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_ACCESS_LEVELS_ERSTELLER"),
    wholeColumn("JAHR"),
    wholeColumn("MONAT"),
    dayColumn("UBERNAHMEDATUM"),
    dayColumn("UHRZEIT"),
    textColumn("DATEINAME"),
    textColumn("QUELLE"),
    wholeColumn("ANZAHL_SATZE"),
    wholeColumn("ANZAHL_FEHLER"),
    numberColumn("KOSTEN"),
    numberColumn("ERLOSE"),
    flagColumn("ABGESCHLOSSEN"),
    dayColumn("FREIGABEDATUM"),
    dayColumn("STORNODATUM"),
    textColumn("BEMERKUNG"),
};
constexpr std::array recordColumns{
    wholeColumn("ID_BB_TAKL01_KLR"),
    wholeColumn("SATZNUMMER"),
    textColumn("BELEGNUMMER"),
    dayColumn("BELEGDATUM"),
    textColumn("BUCHUNGSTEXT"),
    wholeColumn("ID_KOSTENSTELLE"),
    wholeColumn("ID_WALDORT"),
    wholeColumn("ID_PERSONAL_WALDBESITZER"),
    wholeColumn("ID_BB_AUFTRAG_KOPF"),
    wholeColumn("ID_BB_T_PROJEKT_PLANUNG"),
    wholeColumn("ID_BB_T_OBJEKTE"),
    wholeColumn("ID_LEISTUNGSART"),
    wholeColumn("ID_BB_T_LEI_ARBEITSVERFAHEREN"),
    wholeColumn("ID_PRODUKT"),
    wholeColumn("ID_BB_T_KZ_LEISTUNG"),
    wholeColumn("ID_HOLZART"),
    wholeColumn("ID_HOLZSORTE"),
    wholeColumn("ID_WARENKATALOG"),
    wholeColumn("ID_WARENEINHEIT"),
    wholeColumn("ID_KOSTENART"),
    wholeColumn("ID_ERLOSART"),
    wholeColumn("ID_BB_T_VOLLZUGSMASSNAHME"),
    wholeColumn("ID_BB_T_UNTERKONTO"),
    numberColumn("STUNDEN"),
    numberColumn("MENGE"),
    numberColumn("PREIS"),
    numberColumn("KOSTEN"),
    numberColumn("ERLOSE"),
};
constexpr std::array failureColumns{
    wholeColumn("ID_BB_TAKL02_KLR_BETRIEB"),
    wholeColumn("FEHLERNUMMER"),
    textColumn("FEHLERTEXT"),
    textColumn("FELDNAME"),
    textColumn("FELDWERT"),
    flagColumn("ERLEDIGT"),
    dayColumn("ERLEDIGT_DATUM"),
};

consteval std::size_t transfer(std::string_view name)
{
    return placeOf(transferColumns, name);
}
consteval std::size_t record(std::string_view name)
{
    return placeOf(recordColumns, name);
}
consteval std::size_t failure(std::string_view name)
{
    return placeOf(failureColumns, name);
}

/// What a check of records refuses.
struct Check {
    std::int32_t number;
    std::string_view text, field, value;
};
constexpr std::array<Check, 6> checks{{
    {101, "Kostenstelle nicht vorhanden", "KOSTENSTELLE", "1999"},
    {102, "Kostenart für Leistungsart nicht zulässig", "KOSTENART", "5900"},
    {103, "Leistungsart aufgelassen", "LEISTUNGSART", "1999"},
    {110, "Waldort gehört nicht zum Revier", "WALDORT", "01 01 03 999"},
    {120, "Belegdatum außerhalb des Abrechnungsmonats", "BELEGDATUM", "31.12.1999"},
    {130, "Menge fehlt", "MENGE", "0"},
}};
constexpr std::array<std::string_view, 3> remarks{"Nachlieferung", "ersetzt fehlerhafte Datei", "Monatsabschluss"};

/// IDs by the ID of what they belong to.
using IdsByOwner = std::map<std::int32_t, std::vector<std::int32_t>>;

/// Returns the IDs of a query that selects the ID of an owner and an ID. Errors: provider failures.
IdsByOwner idsByOwner(ado::Connection& connection, std::string_view query)
{
    IdsByOwner ids;
    for (const std::vector<Variant>& row : rowsOf(connection, query))
        ids[convert::toLong(row.at(0))].push_back(convert::toLong(row.at(1)));
    return ids;
}

/// One of the IDs of an owner; Null for one without any.
Variant pickOf(Random& random, const IdsByOwner& ids, std::int32_t owner)
{
    const auto found = ids.find(owner);
    return found == ids.end() ? Variant{Null{}} : pickId(random, found->second);
}

/// The keys to which records refer.
struct Keys {
    explicit Keys(ado::Connection& connection);

    Codes services, accounts, products, units, assortments, measures, marks, subAccounts, objectGroups;
    IdsByOwner costCentres, places; ///< by the forest district
    IdsByOwner objects;             ///< by their group
    std::vector<std::int32_t> offices, districts, owners, projects, timberMethods, otherMethods, species, goods;
};

Keys::Keys(ado::Connection& connection) :
    services{codesOf(connection, "SELECT NUMBER, ID FROM LEISTUNGSART WHERE TABLE_NAME = 'FORST'")},
    accounts{codesOf(connection, "SELECT NUMBER, ID FROM KOSTENART WHERE TABLE_NAME = 'FORST'")},
    products{codesOf(connection, "SELECT NUMBER, ID FROM PRODUKT WHERE TABLE_NAME = 'FORST'")},
    units{codesOf(connection, "SELECT EINHEIT, EINHEIT_ID FROM WARENEINHEIT")},
    assortments{codesOf(connection, "SELECT HS, ID FROM HOLZSORTE")},
    measures{codesOf(connection, "SELECT SHORT, ID FROM BB_T_VOLLZUGSMASSNAHME")},
    marks{codesOf(connection, "SELECT SHORT, ID FROM BB_T_KZ_LEISTUNG")},
    subAccounts{codesOf(connection, "SELECT SHORT, ID FROM BB_T_UNTERKONTO")},
    objectGroups{codesOf(connection, "SELECT SHORT, ID FROM BB_T_OBJEKTGRUPPE")},
    costCentres{idsByOwner(connection, "SELECT ID_ACCESS_LEVELS, ID FROM KOSTENSTELLE WHERE ID_ACCESS_LEVELS IS NOT "
                                       "NULL AND ISNULL(DISABLE,0) = 0 ORDER BY ID")},
    places{idsByOwner(connection, "SELECT ID_ACCESS_LEVELS, ID_WALDORT FROM WALDORT WHERE ID_ACCESS_LEVELS IS NOT NULL "
                                  "ORDER BY ID_WALDORT")},
    objects{idsByOwner(connection,
                       "SELECT ID_BB_T_OBJEKTGRUPPE, ID FROM BB_T_OBJEKTE WHERE ID_BB_T_OBJEKTGRUPPE IS NOT "
                       "NULL ORDER BY ID")},
    offices{idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE FUNKTIONSBEREICH = 'Forstamt' ORDER BY ID")},
    districts{idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE FUNKTIONSBEREICH = 'Revier' ORDER BY ID")},
    owners{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE WALDBESITZER = 1 AND ID_BB_T_EIGENTUMSART IS NOT "
                             "NULL ORDER BY ID_PERSONAL")},
    projects{idsOf(connection, "SELECT ID FROM BB_T_PROJEKT_PLANUNG ORDER BY ID")},
    timberMethods{idsOf(connection, "SELECT ID FROM BB_T_LEI_ARBEITSVERFAHEREN WHERE HOLZ = 1 ORDER BY ID")},
    otherMethods{idsOf(connection, "SELECT ID FROM BB_T_LEI_ARBEITSVERFAHEREN WHERE HOLZ = 0 ORDER BY ID")},
    species{idsOf(connection, "SELECT ID FROM HOLZART WHERE HA IN ('FI','TA','KI','LA','BU','EI','ES') ORDER BY ID")},
    goods{idsOf(connection, "SELECT ART_ID FROM WARENKATALOG WHERE MATERIALART = 1 ORDER BY ART_ID")}
{}

/// A record to be written; the check that refused it, if any.
struct Record {
    Booking booking;
    const Check* refusedBy = nullptr;
};

/// Records of one source; a few of them are refused.
std::vector<Record> drawRecords(Random& random, bookings::Origin origin)
{
    constexpr std::int32_t mostRecords = 6;
    std::vector<Record> records;
    for (std::int32_t count = random.between(1, mostRecords); count > 0; --count)
        records.push_back({bookings::drawBooking(random, bookings::drawKind(random, origin)),
                           random.chance(80) ? &random.pick(checks) : nullptr});
    return records;
}

void setSums(BulkInsert& row, const std::vector<Record>& records)
{
    std::int32_t refused = 0;
    double costs = 0.0;
    double revenue = 0.0;
    for (const Record& one : records) {
        refused += one.refusedBy == nullptr ? 0 : 1;
        costs += one.booking.costs;
        revenue += one.booking.revenue;
    }
    row[transfer("ANZAHL_SATZE")] = static_cast<std::int32_t>(records.size());
    row[transfer("ANZAHL_FEHLER")] = refused;
    row[transfer("KOSTEN")] = cents(costs);
    row[transfer("ERLOSE")] = cents(revenue);
}

/// What the records of a transfer share. The records of a month arrive in the first days of the next one.
struct Transfer {
    std::int32_t id = 0;
    bookings::Origin origin{};
    std::int32_t district = 0; ///< that sent the records
    Date booked, received;
};

Transfer drawTransfer(Random& random, const ReferenceOptions& options, const Keys& keys, std::int32_t id)
{
    constexpr double longestWay = 40.0; ///< days from a booking to its receipt, so that it is received before the end
    Transfer drawn;
    drawn.id = id;
    drawn.origin = static_cast<bookings::Origin>(random.below(bookings::sources.size()));
    drawn.district = random.pick(keys.districts);
    drawn.booked = Date{std::min(drawDay(random, options).days, dayOf(options.baseDate).days - longestWay)};
    drawn.received = laterDay(drawn.booked, random.between(5, 35), options);
    return drawn;
}

void setTransfer(BulkInsert& row, Random& random, const ReferenceOptions& options, const Keys& keys,
                 const Transfer& drawn)
{
    const CivilTime civil = toCivil(drawn.booked);
    const bookings::Source& source = bookings::sourceOf(drawn.origin);
    const std::string period = paddedNumber(civil.month, 2) + "/" + std::to_string(civil.year);
    row[transfer("NUMMER")] = documentNumber("KU", drawn.received, drawn.id);
    row[transfer("BEZEICHNUNG")] = std::string{source.name} + " " + period;
    row[transfer("ID_ACCESS_LEVELS")] = pickId(random, keys.offices);
    row[transfer("ID_ACCESS_LEVELS_ERSTELLER")] = drawn.district;
    row[transfer("JAHR")] = civil.year;
    row[transfer("MONAT")] = civil.month;
    row[transfer("UBERNAHMEDATUM")] = drawn.received;
    row[transfer("UHRZEIT")] = drawTime(random, 6, 20, true);
    row[transfer("DATEINAME")] =
        "klr_" + std::to_string(civil.year) + paddedNumber(civil.month, 2) + "_" + paddedNumber(drawn.id, 5) + ".txt";
    row[transfer("QUELLE")] = source.name;
    const bool closed = random.chance(800);
    row[transfer("ABGESCHLOSSEN")] = closed;
    if (closed) row[transfer("FREIGABEDATUM")] = laterDay(drawn.received, random.between(0, 14), options);
    row[transfer("STORNODATUM")] = drawCancelDay(random, drawn.received, options);
    if (random.chance(200)) row[transfer("BEMERKUNG")] = random.pick(remarks);
}

/// Cost centre and place are those of the sender; the other keys follow from the kind of booking.
void setKeys(BulkInsert& row, Random& random, const Keys& keys, const bookings::Kind& kind, const Transfer& drawn,
             std::int32_t orders)
{
    row[record("ID_KOSTENSTELLE")] = pickOf(random, keys.costCentres, drawn.district);
    row[record("ID_WALDORT")] = pickOf(random, keys.places, drawn.district);
    row[record("ID_PERSONAL_WALDBESITZER")] = pickId(random, keys.owners, 50);
    row[record("ID_BB_AUFTRAG_KOPF")] = random.between(1, orders);
    row[record("ID_BB_T_PROJEKT_PLANUNG")] = pickId(random, keys.projects, 100);
    row[record("ID_LEISTUNGSART")] = idOf(keys.services, kind.service);
    row[record("ID_PRODUKT")] = idOf(keys.products, kind.product);
    row[record("ID_BB_T_KZ_LEISTUNG")] = idOf(keys.marks, kind.mark);
    row[record("ID_BB_T_VOLLZUGSMASSNAHME")] = idOf(keys.measures, kind.measure);
    row[record("ID_BB_T_UNTERKONTO")] = idOf(keys.subAccounts, kind.subAccount);
    row[record("ID_WARENEINHEIT")] = idOf(keys.units, kind.unit);
    row[record("ID_HOLZSORTE")] = idOf(keys.assortments, kind.assortment);
    row[kind.isRevenue ? record("ID_ERLOSART") : record("ID_KOSTENART")] = idOf(keys.accounts, kind.account);
    const bool isTimber = kind.subject == Subject::timber;
    if (!kind.isRevenue)
        row[record("ID_BB_T_LEI_ARBEITSVERFAHEREN")] =
            pickId(random, isTimber ? keys.timberMethods : keys.otherMethods, 50);
    if (isTimber) row[record("ID_HOLZART")] = pickId(random, keys.species);
    if (kind.subject == Subject::goods) row[record("ID_WARENKATALOG")] = pickId(random, keys.goods);
    if (const auto group = keys.objectGroups.find(kind.objectGroup); group != keys.objectGroups.end())
        row[record("ID_BB_T_OBJEKTE")] = pickOf(random, keys.objects, group->second);
}

void setBooking(BulkInsert& row, const Booking& booking)
{
    row[record("BUCHUNGSTEXT")] = booking.kind->text;
    row[record("MENGE")] = booking.quantity;
    row[record("PREIS")] = booking.price;
    row[record("KOSTEN")] = booking.costs;
    row[record("ERLOSE")] = booking.revenue;
    if (booking.hours > 0.0) row[record("STUNDEN")] = booking.hours;
}

void insertFailure(BulkInsert& row, Random& random, const ReferenceOptions& options, std::int32_t recordId,
                   const Check& check, Date day)
{
    const bool settled = random.chance(700);
    row[failure("ID_BB_TAKL02_KLR_BETRIEB")] = recordId;
    row[failure("FEHLERNUMMER")] = check.number;
    row[failure("FEHLERTEXT")] = check.text;
    row[failure("FELDNAME")] = check.field;
    row[failure("FELDWERT")] = check.value;
    row[failure("ERLEDIGT")] = settled;
    row[failure("ERLEDIGT_DATUM")] = settled ? Variant{laterDay(day, random.between(0, 20), options)} : Variant{Null{}};
    row.insert();
}

} // namespace

void writeCostTransfers(ado::Connection& connection, const ReferenceOptions& options)
{
    const Keys keys{connection};
    Random random{options.seed, transferStream};
    BulkInsert head{connection, "BB_TAKL01_KLR", transferColumns};
    BulkInsert position{connection, "BB_TAKL02_KLR_BETRIEB", recordColumns};
    BulkInsert refused{connection, "BB_TAKL22_KLR_FEHLER", failureColumns};
    std::int32_t recordId = 0;
    for (std::int32_t id = 1; id <= options.records; ++id) {
        const Transfer drawn = drawTransfer(random, options, keys, id);
        const std::vector<Record> records = drawRecords(random, drawn.origin);
        head.clear();
        setTransfer(head, random, options, keys, drawn);
        setSums(head, records);
        head.insert();
        for (std::size_t i = 0; i < records.size(); ++i) {
            position.clear();
            position[record("ID_BB_TAKL01_KLR")] = id;
            position[record("SATZNUMMER")] = static_cast<std::int32_t>(i + 1);
            position[record("BELEGNUMMER")] =
                documentNumber(bookings::sourceOf(drawn.origin).prefix, drawn.booked, recordId + 1);
            position[record("BELEGDATUM")] = drawn.booked;
            setKeys(position, random, keys, *records[i].booking.kind, drawn, options.records);
            setBooking(position, records[i].booking);
            position.insert();
            ++recordId;
            if (records[i].refusedBy != nullptr)
                insertFailure(refused, random, options, recordId, *records[i].refusedBy, drawn.received);
        }
    }
}

} // namespace tamarok::database
