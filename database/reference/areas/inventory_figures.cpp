#include <algorithm>
#include <array>

#include "areas/inventory_bookings.h"

namespace tamarok::database {
namespace {

using bookings::Booking;
using bookings::Subject;

constexpr std::uint64_t figureStream = 6'000'000'000'007;

constexpr std::array columns{
    textColumn("QUELLE_NAME"),
    textColumn("QUELLE_NUMMER"),
    textColumn("BELEG_NUMMER"),
    dayColumn("BELEG_DATUM"),
    dayColumn("BUCHUNG_DATUM"),
    wholeColumn("JAHR"),
    wholeColumn("MONAT"),
    textColumn("ACCESSLEVEL"),
    textColumn("AFF_NAME"),
    textColumn("OBF_NAME"),
    textColumn("REVIER_NAME"),
    textColumn("KOSTENSTELLE_NUMMER"),
    textColumn("KOSTENSTELLE_NAME"),
    textColumn("KOSTENART_NUMMER"),
    textColumn("KOSTENART_NAME"),
    textColumn("LEISTUNGSART_NUMMER"),
    textColumn("LEISTUNGSART_NAME"),
    textColumn("PRODUKT_NUMMER"),
    textColumn("PRODUKT_NAME"),
    textColumn("OBJEKT_NUMMER"),
    textColumn("OBJEKT_NAME"),
    textColumn("VERFAHREN_NUMMER"),
    textColumn("VERFAHREN_NAME"),
    textColumn("PROJEKT_NUMMER"),
    textColumn("PROJEKT_NAME"),
    textColumn("WALDORT_NAME"),
    textColumn("HOLZART_NAME"),
    textColumn("HOLZSORTE_NAME"),
    textColumn("PARTNER_NAME"),
    textColumn("BUCHUNG_TEXT"),
    textColumn("EINHEIT_NAME"),
    numberColumn("MENGE"),
    numberColumn("STUNDEN"),
    numberColumn("PREIS"),
    numberColumn("KOSTEN"),
    numberColumn("ERLOSE"),
    numberColumn("DECKUNGSBEITRAG"),
};

consteval std::size_t at(std::string_view name)
{
    return placeOf(columns, name);
}

using Row = std::vector<Variant>;
using Rows = std::vector<Row>;

/// The keys whose numbers and names the records hold.
struct Keys {
    explicit Keys(ado::Connection& connection);

    Rows costCentres; ///< number, name, digits of the district
    Rows accounts, services, products, methods, projects;
    Rows objects;     ///< number, name, kind
    Rows places;      ///< name, digits of the district, names of district, inspectorate and office
    Rows assortments; ///< code, name
    Rows species, buyers, contractors;
};

Keys::Keys(ado::Connection& connection) :
    costCentres{rowsOf(connection, "SELECT KOSTENSTELLE.NUMBER, KOSTENSTELLE.NAME, ACCESS_LEVELS.ACCESS_LEVELS FROM "
                                   "KOSTENSTELLE INNER JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = "
                                   "KOSTENSTELLE.ID_ACCESS_LEVELS WHERE KOSTENSTELLE.TABLE_NAME = 'FORST' "
                                   "ORDER BY KOSTENSTELLE.ID")},
    accounts{rowsOf(connection, "SELECT NUMBER, NAME FROM KOSTENART WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    services{rowsOf(connection, "SELECT NUMBER, NAME FROM LEISTUNGSART WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    products{rowsOf(connection, "SELECT NUMBER, NAME FROM PRODUKT WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    methods{rowsOf(connection, "SELECT NUMBER, NAME FROM VERFAHREN WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    projects{rowsOf(connection, "SELECT NUMMER, LONG FROM BB_T_PROJEKT_PLANUNG ORDER BY ID")},
    objects{rowsOf(connection, "SELECT NUMBER, NAME, OBJEKT FROM OBJEKT WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    places{rowsOf(connection, "SELECT WALDORT.LANGNAME, REVIER.ACCESS_LEVELS, REVIER.NAME_LANG, OBF.NAME_LANG AS OBF, "
                              "AFF.NAME_LANG AS AFF FROM WALDORT "
                              "INNER JOIN ACCESS_LEVELS REVIER ON REVIER.ID = WALDORT.ID_ACCESS_LEVELS "
                              "INNER JOIN ACCESS_LEVELS OBF ON OBF.ACCESS_LEVELS = LEFT(REVIER.ACCESS_LEVELS,6)+'00' "
                              "INNER JOIN ACCESS_LEVELS AFF ON AFF.ACCESS_LEVELS = LEFT(REVIER.ACCESS_LEVELS,4)+'0000' "
                              "ORDER BY WALDORT.ID_WALDORT")},
    assortments{rowsOf(connection, "SELECT HS, HS_LANG FROM HOLZSORTE ORDER BY ID")},
    species{rowsOf(connection, "SELECT HA_LANG FROM HOLZART WHERE HA IN ('FI','TA','KI','LA','BU','EI') ORDER BY ID")},
    buyers{rowsOf(connection, "SELECT KURZBEZEICHNUNG FROM PERSONAL WHERE GRUPPE = 'Säge' ORDER BY ID_PERSONAL")},
    contractors{
        rowsOf(connection, "SELECT KURZBEZEICHNUNG FROM PERSONAL WHERE GRUPPE = 'Unternehmer' ORDER BY ID_PERSONAL")}
{}

/// Returns the first row whose field at `place` is `value`, or nullptr.
const Row* find(const Rows& rows, std::size_t place, std::string_view value)
{
    const auto found = std::ranges::find_if(
        rows, [&](const Row& row) { return row.at(place).isString() && row.at(place).asString() == value; });
    return found == rows.end() ? nullptr : &*found;
}

/// Sets number and name, which stand side by side; leaves them Null for no key.
void setKey(BulkInsert& row, std::size_t number, const Row* key)
{
    if (key == nullptr) return;
    row[number] = key->at(0);
    row[number + 1] = key->at(1);
}

/// The levels and the cost centre follow from the place.
void setPlace(BulkInsert& row, const Keys& keys, const Row& place)
{
    row[at("WALDORT_NAME")] = place.at(0);
    row[at("ACCESSLEVEL")] = place.at(1);
    row[at("REVIER_NAME")] = place.at(2);
    row[at("OBF_NAME")] = place.at(3);
    row[at("AFF_NAME")] = place.at(4);
    setKey(row, at("KOSTENSTELLE_NUMMER"), find(keys.costCentres, 2, place.at(1).asString()));
}

/// Partners are buyers of timber and contractors; own work has none.
void setKeys(BulkInsert& row, Random& random, const Keys& keys, const bookings::Kind& kind)
{
    const bool isTimber = kind.subject == Subject::timber;
    setKey(row, at("KOSTENART_NUMMER"), find(keys.accounts, 0, kind.account));
    setKey(row, at("LEISTUNGSART_NUMMER"), find(keys.services, 0, kind.service));
    setKey(row, at("PRODUKT_NUMMER"), find(keys.products, 0, kind.product));
    setKey(row, at("OBJEKT_NUMMER"), find(keys.objects, 2, kind.objectKind));
    if (!random.chance(100)) setKey(row, at("PROJEKT_NUMMER"), &random.pick(keys.projects));
    if (isTimber && !kind.isRevenue) setKey(row, at("VERFAHREN_NUMMER"), &random.pick(keys.methods));
    if (kind.origin == bookings::Origin::sales) row[at("PARTNER_NAME")] = random.pick(keys.buyers).at(0);
    if (kind.origin == bookings::Origin::vouchers) row[at("PARTNER_NAME")] = random.pick(keys.contractors).at(0);
    if (!isTimber) return;
    row[at("HOLZART_NAME")] = random.pick(keys.species).at(0);
    if (const Row* assortment = find(keys.assortments, 0, kind.assortment); assortment != nullptr)
        row[at("HOLZSORTE_NAME")] = assortment->at(1);
}

void setBooking(BulkInsert& row, const Booking& booking)
{
    row[at("BUCHUNG_TEXT")] = booking.kind->text;
    if (!booking.kind->unit.empty()) row[at("EINHEIT_NAME")] = booking.kind->unit;
    row[at("MENGE")] = booking.quantity;
    if (booking.hours > 0.0) row[at("STUNDEN")] = booking.hours;
    row[at("PREIS")] = booking.price;
    row[at("KOSTEN")] = booking.costs;
    row[at("ERLOSE")] = booking.revenue;
    row[at("DECKUNGSBEITRAG")] = cents(booking.revenue - booking.costs);
}

} // namespace

void writeKeyFigures(ado::Connection& connection, const ReferenceOptions& options)
{
    const Keys keys{connection};
    Random random{options.seed, figureStream};
    BulkInsert row{connection, "KLR", columns};
    for (std::int32_t id = 1; id <= options.records; ++id) {
        const bookings::Kind& kind = bookings::drawKind(random);
        const bookings::Source& source = bookings::sourceOf(kind.origin);
        const Date day = drawDay(random, options);
        const Date posted = laterDay(day, random.between(0, 30), options);
        row.clear();
        row[at("QUELLE_NAME")] = source.name;
        row[at("QUELLE_NUMMER")] = documentNumber(source.prefix, day, id);
        row[at("BELEG_NUMMER")] = documentNumber("BE", day, random.between(1, 99999));
        row[at("BELEG_DATUM")] = day;
        row[at("BUCHUNG_DATUM")] = posted;
        row[at("JAHR")] = toCivil(posted).year;
        row[at("MONAT")] = toCivil(posted).month;
        setPlace(row, keys, random.pick(keys.places));
        setKeys(row, random, keys, kind);
        setBooking(row, bookings::drawBooking(random, kind));
        row.insert();
    }
}

} // namespace tamarok::database
