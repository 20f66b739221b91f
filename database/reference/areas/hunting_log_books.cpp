#include <algorithm>
#include <array>
#include <vector>

#include "areas/hunting.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t logBookStream = 5'000'000'000'007;
constexpr std::int32_t monthsOfData = 36;

constexpr std::array headColumns{
    wholeColumn("ID_ACCESS_LEVELS"),
    textColumn("NUMMER"),
    wholeColumn("JAHR"),
    wholeColumn("MONAT"),
    wholeColumn("ID_BB_T_OBJEKTE"),
    dayColumn("DATUM_VON"),
    dayColumn("DATUM_BIS"),
    textColumn("HALTER"),
    wholeColumn("KM_BEGINN"),
    wholeColumn("KM_ENDE"),
    wholeColumn("KM_GESAMT"),
    wholeColumn("KM_PRIVAT"),
    numberColumn("BETRIEBSSTUNDEN"),
    numberColumn("KRAFTSTOFF"),
    numberColumn("KRAFTSTOFFKOSTEN"),
    numberColumn("REPARATURKOSTEN"),
    numberColumn("SONSTIGE_KOSTEN"),
    numberColumn("GESAMTKOSTEN"),
    flagColumn("ABGESCHLOSSEN"),
    dayColumn("ABSCHLUSSDATUM"),
    textColumn("BEMERKUNG"),
    dayColumn("ERSTELLUNGSDATUM"),
    dayColumn("STORNODATUM"),
};
constexpr std::array entryColumns{
    wholeColumn("ID_BB_FAHRTENBUCH_KOPF"),
    wholeColumn("ZEILE"),
    dayColumn("DATUM"),
    textColumn("FAHRER"),
    textColumn("FAHRTZWECK"),
    textColumn("STARTORT"),
    textColumn("ZIELORT"),
    wholeColumn("KM_VON"),
    wholeColumn("KM_BIS"),
    wholeColumn("KM"),
    flagColumn("PRIVAT"),
    numberColumn("BETRIEBSSTUNDEN"),
    numberColumn("KRAFTSTOFF"),
    numberColumn("KRAFTSTOFFKOSTEN"),
    textColumn("BEMERKUNG"),
};

consteval std::size_t head(std::string_view name)
{
    return placeOf(headColumns, name);
}
consteval std::size_t entry(std::string_view name)
{
    return placeOf(entryColumns, name);
}

constexpr std::array<std::string_view, 8> drivers{"Josef Bauer",   "Eva Wagner",   "Karl Moser",  "Thomas Eder",
                                                  "Georg Leitner", "Rosa Winkler", "Anna Gruber", "Franz Steiner"};
constexpr std::array<std::string_view, 7> purposes{"Holzabmaß",    "Begehung",    "Materialtransport",
                                                   "Jagdaufsicht", "Forstschutz", "Besprechung Forstamt",
                                                   "Wegekontrolle"};
constexpr std::array<std::string_view, 8> places{"Grünau",   "Hochstein", "Moosbach",   "Lindwald",
                                                 "Birkfeld", "Kaltental", "Sonnleiten", "Auwald"};
constexpr std::array<std::string_view, 4> repairs{"Reifenwechsel", "Service laut Plan", "Bremsen erneuert",
                                                  "Windschutzscheibe getauscht"};

/// A vehicle or machine that keeps a log book.
struct Keeper {
    std::int32_t id;
    Variant level;
    bool isMachine;
};

/// One entry: a trip or a day's work, with what was refuelled on it.
struct Trip {
    Date day;
    std::int32_t from, kilometres;
    bool isPrivate;
    double hours, litres, fuelCosts;
};

struct Month {
    std::int32_t year, month;
    Date first, last;
};

/// @param back  how many months before that of the last day of the data
Month monthBefore(const ReferenceOptions& options, std::int32_t back)
{
    constexpr std::int32_t monthsOfYear = 12;
    const CivilTime end = toCivil(options.baseDate);
    const std::int32_t months = end.year * monthsOfYear + end.month - 1 - back;
    const std::int32_t year = months / monthsOfYear;
    const std::int32_t month = months % monthsOfYear + 1;
    const Date next = month == monthsOfYear ? makeDate(year + 1, 1, 1) : makeDate(year, month + 1, 1);
    return {year, month, makeDate(year, month, 1), Date{next.days - 1.0}};
}

/// Vehicles burn 7 to 11 litres in 100 kilometres and are refuelled on the last trip; machines burn 9 to 14 litres in
/// an hour and are refuelled each day.
void refuel(std::vector<Trip>& trips, Random& random, bool isMachine)
{
    const double price = cents(random.between(1.38, 1.79));
    double unpaid = 0.0;
    for (Trip& trip : trips) {
        unpaid += isMachine ? trip.hours * random.between(9.0, 14.0) : trip.kilometres * random.between(0.07, 0.11);
        if (!isMachine && &trip != &trips.back()) continue;
        trip.litres = std::max(0.1, tenth(unpaid));
        trip.fuelCosts = cents(trip.litres * price);
        unpaid = 0.0;
    }
}

/// The odometer at the beginning of a month, so that the months of a log book follow each other: more is added for each
/// month than its trips make together.
std::int32_t odometerAt(const Keeper& keeper, std::int32_t place, std::int32_t monthsBack)
{
    const std::int32_t month = keeper.isMachine ? 55 : 850;
    const std::int32_t first = month * (5 + place % 50);
    return first + month * (monthsOfData - monthsBack);
}

/// The trips of a month in the order of their days; each begins at the odometer's number at which the one before ended.
std::vector<Trip> drawTrips(Random& random, Date first, std::int32_t odometer, bool isMachine)
{
    constexpr std::int32_t mostTrips = 6;
    constexpr std::int32_t daysBetween = 4;
    std::vector<Trip> trips;
    const std::int32_t count = random.between(1, mostTrips);
    for (std::int32_t i = 0; i < count; ++i) {
        Trip trip{};
        trip.day = Date{first.days + daysBetween * i + random.between(0, daysBetween - 1)};
        trip.from = odometer;
        trip.kilometres = isMachine ? random.between(1, 9) : random.between(12, 140);
        trip.isPrivate = !isMachine && random.chance(60);
        trip.hours = isMachine ? random.tenths(30, 90) : random.tenths(5, 45);
        odometer += trip.kilometres;
        trips.push_back(trip);
    }
    refuel(trips, random, isMachine);
    return trips;
}

void setSums(BulkInsert& row, Random& random, const std::vector<Trip>& trips)
{
    std::int32_t kilometres = 0;
    std::int32_t privately = 0;
    double hours = 0.0;
    double litres = 0.0;
    double fuel = 0.0;
    for (const Trip& trip : trips) {
        kilometres += trip.kilometres;
        privately += trip.isPrivate ? trip.kilometres : 0;
        hours += trip.hours;
        litres += trip.litres;
        fuel += trip.fuelCosts;
    }
    const double repair = random.chance(200) ? cents(random.between(60.0, 900.0)) : 0.0;
    const double other = random.chance(300) ? cents(random.between(8.0, 120.0)) : 0.0;
    row[head("KM_BEGINN")] = trips.front().from;
    row[head("KM_ENDE")] = trips.front().from + kilometres;
    row[head("KM_GESAMT")] = kilometres;
    row[head("KM_PRIVAT")] = privately;
    row[head("BETRIEBSSTUNDEN")] = tenth(hours);
    row[head("KRAFTSTOFF")] = tenth(litres);
    row[head("KRAFTSTOFFKOSTEN")] = cents(fuel);
    row[head("REPARATURKOSTEN")] = repair;
    row[head("SONSTIGE_KOSTEN")] = other;
    row[head("GESAMTKOSTEN")] = cents(fuel + repair + other);
    if (repair > 0.0) row[head("BEMERKUNG")] = random.pick(repairs);
}

void setHead(BulkInsert& row, Random& random, const Month& month, std::int32_t id, const ReferenceOptions& options)
{
    row[head("NUMMER")] = "FB-" + paddedNumber(id, 5);
    row[head("JAHR")] = month.year;
    row[head("MONAT")] = month.month;
    row[head("DATUM_VON")] = month.first;
    row[head("DATUM_BIS")] = month.last;
    row[head("HALTER")] = random.pick(drivers);
    const Date closed = laterDay(month.last, random.between(1, 14), options);
    const bool isClosed = closed > month.last;
    row[head("ABGESCHLOSSEN")] = isClosed;
    if (isClosed) row[head("ABSCHLUSSDATUM")] = closed;
    row[head("ERSTELLUNGSDATUM")] = month.first;
    row[head("STORNODATUM")] = drawCancelDay(random, month.last, options);
}

void insertTrip(BulkInsert& row, Random& random, std::int32_t book, std::int32_t number, const Trip& trip)
{
    row.clear();
    row[entry("ID_BB_FAHRTENBUCH_KOPF")] = book;
    row[entry("ZEILE")] = number;
    row[entry("DATUM")] = trip.day;
    row[entry("FAHRER")] = random.pick(drivers);
    row[entry("FAHRTZWECK")] = trip.isPrivate ? std::string_view{"Privatfahrt"} : random.pick(purposes);
    row[entry("STARTORT")] = random.pick(places);
    row[entry("ZIELORT")] = random.pick(places);
    row[entry("KM_VON")] = trip.from;
    row[entry("KM_BIS")] = trip.from + trip.kilometres;
    row[entry("KM")] = trip.kilometres;
    row[entry("PRIVAT")] = trip.isPrivate;
    row[entry("BETRIEBSSTUNDEN")] = trip.hours;
    if (trip.litres > 0.0) {
        row[entry("KRAFTSTOFF")] = trip.litres;
        row[entry("KRAFTSTOFFKOSTEN")] = trip.fuelCosts;
        row[entry("BEMERKUNG")] = "getankt";
    }
    row.insert();
}

/// Vehicles and machines; where a small database has none, all objects.
std::vector<Keeper> keepers(ado::Connection& connection)
{
    constexpr std::int32_t machines = 5;
    constexpr std::string_view query = "SELECT ID, ID_ACCESS_LEVELS, ID_BB_T_OBJEKTGRUPPE FROM BB_T_OBJEKTE";
    auto rows = rowsOf(connection, std::string{query} + " WHERE ID_BB_T_OBJEKTGRUPPE IN (4,5) ORDER BY ID");
    if (rows.empty()) rows = rowsOf(connection, std::string{query} + " ORDER BY ID");
    std::vector<Keeper> all;
    all.reserve(rows.size());
    for (const auto& row : rows)
        all.push_back({convert::toLong(row[0]), row[1], convert::toLong(row[2]) == machines});
    return all;
}

} // namespace

void writeLogBooks(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, logBookStream};
    const std::vector<Keeper> all = keepers(connection);
    const auto count = static_cast<std::int32_t>(all.size());
    BulkInsert book{connection, "BB_FAHRTENBUCH_KOPF", headColumns};
    BulkInsert trip{connection, "BB_FAHRTENBUCH", entryColumns};
    for (std::int32_t id = 1; id <= options.records; ++id) {
        const std::int32_t place = (id - 1) % count;
        const Keeper& keeper = all[static_cast<std::size_t>(place)];
        const std::int32_t back = (id - 1) / count % monthsOfData;
        const Month month = monthBefore(options, back);
        const std::vector<Trip> trips =
            drawTrips(random, month.first, odometerAt(keeper, place, back), keeper.isMachine);
        book.clear();
        book[head("ID_ACCESS_LEVELS")] = keeper.level;
        book[head("ID_BB_T_OBJEKTE")] = keeper.id;
        setHead(book, random, month, id, options);
        setSums(book, random, trips);
        book.insert();
        for (std::size_t i = 0; i < trips.size(); ++i)
            insertTrip(trip, random, id, static_cast<std::int32_t>(i + 1), trips[i]);
    }
}

} // namespace tamarok::database
