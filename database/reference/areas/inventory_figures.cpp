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

using Rows = std::vector<std::vector<Variant>>;

/// Number and name of a key.
struct NamedKeys {
    explicit NamedKeys(Rows read) : rows{std::move(read)} {}

    /// The row of a number, or nullptr.
    const std::vector<Variant>* find(std::string_view number) const
    {
        for (const std::vector<Variant>& row : rows)
            if (row.at(0).asString() == number) return &row;
        return nullptr;
    }

    Rows rows;
};

/// The keys whose numbers and names the records hold. A place has its district, inspectorate and office.
struct Keys {
    explicit Keys(ado::Connection& connection);

    NamedKeys costCentres, accounts, services, products, objects, methods, projects;
    Rows places, species, assortments, partners;
};

Keys::Keys(ado::Connection& connection) :
    costCentres{rowsOf(connection, "SELECT NUMBER, NAME FROM KOSTENSTELLE WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    accounts{rowsOf(connection, "SELECT NUMBER, NAME FROM KOSTENART WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    services{rowsOf(connection, "SELECT NUMBER, NAME FROM LEISTUNGSART WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    products{rowsOf(connection, "SELECT NUMBER, NAME FROM PRODUKT WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    objects{rowsOf(connection, "SELECT NUMBER, NAME FROM OBJEKT WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    methods{rowsOf(connection, "SELECT NUMBER, NAME FROM VERFAHREN WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    projects{rowsOf(connection, "SELECT NUMMER, LONG FROM BB_T_PROJEKT_PLANUNG ORDER BY ID")},
    places{rowsOf(connection, "SELECT WALDORT.LANGNAME, REVIER.ACCESS_LEVELS, REVIER.NAME_LANG, OBF.NAME_LANG AS OBF, "
                              "AFF.NAME_LANG AS AFF FROM WALDORT "
                              "INNER JOIN ACCESS_LEVELS REVIER ON REVIER.ID = WALDORT.ID_ACCESS_LEVELS "
                              "INNER JOIN ACCESS_LEVELS OBF ON OBF.ACCESS_LEVELS = LEFT(REVIER.ACCESS_LEVELS,6)+'00' "
                              "INNER JOIN ACCESS_LEVELS AFF ON AFF.ACCESS_LEVELS = LEFT(REVIER.ACCESS_LEVELS,4)+'0000' "
                              "ORDER BY WALDORT.ID_WALDORT")},
    species{rowsOf(connection, "SELECT HA_LANG FROM HOLZART WHERE HA IN ('FI','TA','KI','LA','BU','EI') ORDER BY ID")},
    assortments{rowsOf(connection, "SELECT HS_LANG FROM HOLZSORTE WHERE HS IN ('BL','LA','AB','IF','BR') ORDER BY ID")},
    partners{rowsOf(connection, "SELECT KURZBEZEICHNUNG FROM PERSONAL WHERE GRUPPE IN ('Säge','Unternehmer') ORDER BY "
                                "ID_PERSONAL")}
{}

/// Sets number and name, which stand side by side; Null for no key.
void setKey(BulkInsert& row, std::size_t number, const std::vector<Variant>* key)
{
    if (key == nullptr) return;
    row[number] = key->at(0);
    row[number + 1] = key->at(1);
}

void setPlace(BulkInsert& row, const std::vector<Variant>& place)
{
    row[at("WALDORT_NAME")] = place.at(0);
    row[at("ACCESSLEVEL")] = place.at(1);
    row[at("REVIER_NAME")] = place.at(2);
    row[at("OBF_NAME")] = place.at(3);
    row[at("AFF_NAME")] = place.at(4);
}

void setKeys(BulkInsert& row, Random& random, const Keys& keys, const bookings::Kind& kind)
{
    setKey(row, at("KOSTENSTELLE_NUMMER"), &random.pick(keys.costCentres.rows));
    setKey(row, at("KOSTENART_NUMMER"), keys.accounts.find(kind.account));
    setKey(row, at("LEISTUNGSART_NUMMER"), keys.services.find(kind.service));
    setKey(row, at("PRODUKT_NUMMER"), keys.products.find(kind.product));
    if (!random.chance(100)) setKey(row, at("PROJEKT_NUMMER"), &random.pick(keys.projects.rows));
    if (!kind.isRevenue) setKey(row, at("VERFAHREN_NUMMER"), &random.pick(keys.methods.rows));
    if (kind.subject == Subject::object) setKey(row, at("OBJEKT_NUMMER"), &random.pick(keys.objects.rows));
    if (!random.chance(100)) row[at("PARTNER_NAME")] = random.pick(keys.partners).at(0);
    if (kind.subject != Subject::timber) return;
    row[at("HOLZART_NAME")] = random.pick(keys.species).at(0);
    row[at("HOLZSORTE_NAME")] = random.pick(keys.assortments).at(0);
}

void setBooking(BulkInsert& row, const Booking& booking)
{
    row[at("BUCHUNG_TEXT")] = booking.kind->text;
    if (!booking.kind->unit.empty()) row[at("EINHEIT_NAME")] = booking.kind->unit;
    row[at("MENGE")] = booking.quantity;
    row[at("STUNDEN")] = booking.hours;
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
        const Booking booking = bookings::drawBooking(random);
        const bookings::Source& source = random.pick(bookings::sources);
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
        setPlace(row, random.pick(keys.places));
        setKeys(row, random, keys, *booking.kind);
        setBooking(row, booking);
        row.insert();
    }
}

} // namespace tamarok::database
