#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "areas/people_rows.h"
#include "areas/people_work.h"
#include "areas/people_writers.h"

namespace tamarok::database::people {
namespace {

using ado::DataType;

constexpr std::array headColumns{
    BulkInsert::Column{"BUCHUNGS_YEAR", DataType::Integer},
    BulkInsert::Column{"BUCHUNGS_MONTH", DataType::Integer},
    BulkInsert::Column{"ID_ACCESS_LEVELS", DataType::Integer},
    BulkInsert::Column{"NUMMER"},
    BulkInsert::Column{"DATUM", DataType::Date},
    BulkInsert::Column{"ID_USERS", DataType::Integer},
    BulkInsert::Column{"ABGESCHLOSSEN", DataType::Boolean},
    BulkInsert::Column{"ABSCHLUSSDATUM", DataType::Date},
    BulkInsert::Column{"SUMME_STUNDEN", DataType::Double},
    BulkInsert::Column{"SUMME_BETRAG", DataType::Double},
    BulkInsert::Column{"BEMERKUNG"},
};

constexpr std::array entryColumns{
    BulkInsert::Column{"ID", DataType::Integer},
    BulkInsert::Column{"ID_LOHNERFASSUNG_KOPF", DataType::Integer},
    BulkInsert::Column{"ID_ARBEITER", DataType::Integer},
    BulkInsert::Column{"ID_AUFTRAG", DataType::Integer},
    BulkInsert::Column{"ID_NN_POSITIONEN", DataType::Integer},
    BulkInsert::Column{"DATUM", DataType::Date},
    BulkInsert::Column{"ID_LOHNARTEN", DataType::Integer},
    BulkInsert::Column{"ID_SCH_MASCHINENBUCH", DataType::Integer},
    BulkInsert::Column{"ID_SCH_MASCHINENBUCH_BEZOGEN", DataType::Integer},
    BulkInsert::Column{"ID_PRODUKT", DataType::Integer},
    BulkInsert::Column{"ID_LEISTUNGSART", DataType::Integer},
    BulkInsert::Column{"ID_KOSTENART", DataType::Integer},
    BulkInsert::Column{"ID_BB_T_PROJEKT_PLANUNG", DataType::Integer},
    BulkInsert::Column{"ID_BB_T_LEI_ARBEITSVERFAHEREN", DataType::Integer},
    BulkInsert::Column{"ID_OBJEKT", DataType::Integer},
    BulkInsert::Column{"ID_VERFAHREN", DataType::Integer},
    BulkInsert::Column{"ID_WALDORT", DataType::Integer},
    BulkInsert::Column{"ID_WARENEINHEIT", DataType::Integer},
    BulkInsert::Column{"LEISTUNGSMENGE", DataType::Double},
    BulkInsert::Column{"ID_T_STUNDENFAKTOR", DataType::Integer},
    BulkInsert::Column{"ID_T_KOSTENFAKTOR", DataType::Integer},
    BulkInsert::Column{"MENGE", DataType::Double},
    BulkInsert::Column{"SATZ", DataType::Double},
    BulkInsert::Column{"BETRAG", DataType::Double},
    BulkInsert::Column{"KOSTEN", DataType::Double},
    BulkInsert::Column{"BEMERKUNG"},
};

/// A key of T_STUNDENFAKTOR or T_KOSTENFAKTOR with the factor that its number gives in percent.
struct Factor {
    std::int32_t id;
    double value;
    std::uint32_t weight;
};
constexpr std::array hourFactors{Factor{1, 1.0, 88}, Factor{2, 1.5, 9}, Factor{3, 2.0, 3}};
constexpr std::array costFactors{Factor{1, 1.0, 80}, Factor{2, 0.75, 12}, Factor{3, 0.5, 8}};

/// Kinds of wage by the hour: harvest, tending and driving a machine.
constexpr std::int32_t harvestWage = 1;
constexpr std::int32_t tendingWage = 2;
constexpr std::int32_t machineWage = 3;

constexpr std::array remarks{"Windwurf aufgearbeitet", "Rückegasse freigeschnitten", "Pflanzung nachgebessert",
                             "Maschine umgestellt",    "Wegsperre aufgestellt",      "Fangbäume gelegt"};

/// Sums of a month for its head.
struct Totals {
    double hours = 0;
    double amount = 0;
};

class WageEntryWriter {
public:
    WageEntryWriter(ado::Connection& connection, const ReferenceOptions& options) :
        options_{options}, random_{randomOf(options, Stream::wageEntry)}, keys_{readWorkKeys(connection)},
        entryId_{idsOf(connection, "SELECT MAX(ID) FROM LOHNERFASSUNG_ZEIT_SONST").front()},
        heads_{connection, "LOHNERFASSUNG_KOPF", headColumns}, entries_{connection, "LOHNERFASSUNG_ZEIT_SONST",
                                                                        entryColumns}
    {}

    /// Writes a month with one to three workers and their entries. The head comes last, since it holds their sums.
    void write(std::int32_t record)
    {
        const std::int32_t index = monthIndexOf(options_, record);
        const Month month = monthAt(options_, index);
        const std::int32_t level = keys_.districts[static_cast<std::size_t>(record) * 7U % keys_.districts.size()];
        Totals totals;
        const std::size_t first = random_.below(static_cast<std::uint32_t>(keys_.workers.size()));
        const std::int32_t count = random_.between(1, 3);
        for (std::int32_t i = 0; i < count; ++i)
            writeWorker(record, month, level,
                        keys_.workers[(first + static_cast<std::size_t>(i)) % keys_.workers.size()], totals);
        // The last two months are still open.
        const bool isClosed = index < monthCount - 2;
        const Date last = lastDayOf(options_, month);
        const Date closed{std::min(last.days + random_.between(2, 12), dayOf(options_.baseDate).days)};
        insertRow(heads_,
                  {month.year, month.month, level, "LE-" + std::to_string(month.year) + "-" + paddedNumber(record, 4),
                   last, pickId(random_, keys_.users, nullsPerMille), isClosed,
                   isClosed ? Variant{closed} : Variant{Null{}}, rounded(totals.hours), rounded(totals.amount),
                   sometimes(random_, 150, "mit Sonderzahlungen abgestimmt")});
    }

private:
    void writeWorker(std::int32_t record, Month month, std::int32_t level, const Worker& worker, Totals& totals)
    {
        const std::int32_t count = random_.between(1, 2);
        for (std::int32_t i = 0; i < count; ++i)
            writeEntry(record, month, level, worker, totals);
    }

    /// The wage type follows from the service and the machine, the amount from hours, rate and factor.
    void writeEntry(std::int32_t record, Month month, std::int32_t level, const Worker& worker, Totals& totals)
    {
        const KeyPair service = random_.pick(keys_.services);
        const KeyPair order = random_.pick(keys_.orders);
        const bool harvest = isHarvest(service.other);
        const bool drives = random_.chance(350);
        const Factor hourFactor = random_.pickWeighted(hourFactors);
        const Factor costFactor = random_.pickWeighted(costFactors);
        const double hours = random_.between(8, 20) * 0.5;
        const double rate = rounded(worker.rate * hourFactor.value);
        const double amount = rounded(hours * rate);
        const Variant none{Null{}};
        // Every entry is billed, so that the lists of unbilled time stay as the given rows make them.
        const std::int32_t wage = drives ? machineWage : harvest ? harvestWage : tendingWage;
        insertRow(entries_, {++entryId_,
                             record,
                             worker.id,
                             order.id,
                             random_.between(1, options_.records),
                             workingDay(options_, month, random_),
                             wage,
                             drives ? Variant{random_.between(1, options_.records)} : none,
                             sometimes(random_, 120, random_.between(1, options_.records)),
                             keyOf(service.other),
                             service.id,
                             pickId(random_, keys_.costTypes, nullsPerMille),
                             keyOf(order.other),
                             pickId(random_, keys_.methods, nullsPerMille),
                             pickId(random_, keys_.objects, nullsPerMille),
                             pickId(random_, keys_.procedures, nullsPerMille),
                             pickOf(random_, keys_.places, level).id,
                             harvest ? cubicMetres : pieces,
                             rounded(hours * (harvest ? random_.between(1.2, 3.4) : random_.between(25.0, 60.0)),
                                     harvest ? 2 : 0),
                             hourFactor.id,
                             costFactor.id,
                             hours,
                             rate,
                             amount,
                             rounded(amount * costFactor.value),
                             sometimes(random_, 200, random_.pick(remarks))});
        totals.hours += hours;
        totals.amount += amount;
    }

    const ReferenceOptions& options_;
    Random random_;
    WorkKeys keys_;
    std::int32_t entryId_;
    BulkInsert heads_;
    BulkInsert entries_;
};

} // namespace

void writeWageEntry(ado::Connection& connection, const ReferenceOptions& options)
{
    WageEntryWriter writer{connection, options};
    for (std::int32_t record = 1; record <= options.records; ++record)
        writer.write(record);
}

} // namespace tamarok::database::people
