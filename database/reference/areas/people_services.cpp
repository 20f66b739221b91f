#include "areas/people_services.h"

#include <algorithm>
#include <array>
#include <string>

#include "areas/people_writers.h"

namespace tamarok::database::people {
namespace {

using ado::DataType;

constexpr std::array headColumns{
    BulkInsert::Column{"ID_PERSONAL", DataType::Integer},
    BulkInsert::Column{"MONAT", DataType::Integer},
    BulkInsert::Column{"JAHR", DataType::Integer},
    BulkInsert::Column{"ID_ACCESS_LEVELS", DataType::Integer},
    BulkInsert::Column{"ID_ACCESS_LEVELS_ERSTELLER", DataType::Integer},
    BulkInsert::Column{"NUMMER"},
    BulkInsert::Column{"ERSTELLUNGSDATUM", DataType::Date},
    BulkInsert::Column{"ABGESCHLOSSEN", DataType::Boolean},
    BulkInsert::Column{"ABSCHLUSSDATUM", DataType::Date},
    BulkInsert::Column{"STORNODATUM", DataType::Date},
    BulkInsert::Column{"SUMME_STUNDEN", DataType::Double},
    BulkInsert::Column{"SUMME_BETRAG", DataType::Double},
    BulkInsert::Column{"SUMME_SONST", DataType::Double},
    BulkInsert::Column{"SUMME_GESAMT", DataType::Double},
    BulkInsert::Column{"BEMERKUNG"},
};

constexpr std::array serviceColumns{
    BulkInsert::Column{"ID_BB_LEISTUNGS_KOPF", DataType::Integer},
    BulkInsert::Column{"POSITION", DataType::Integer},
    BulkInsert::Column{"ID_WALDBESITZER", DataType::Integer},
    BulkInsert::Column{"ID_KOSTENSTELLE", DataType::Integer},
    BulkInsert::Column{"ID_BB_T_AUFTRAGS_PLANUNG", DataType::Integer},
    BulkInsert::Column{"ID_BB_T_PROJEKT_PLANUNG", DataType::Integer},
    BulkInsert::Column{"ID_BB_T_OBJEKTE", DataType::Integer},
    BulkInsert::Column{"ID_WALDORT", DataType::Integer},
    BulkInsert::Column{"ID_LEISTUNGSART", DataType::Integer},
    BulkInsert::Column{"ID_BB_T_LEI_ARBEITSVERFAHEREN", DataType::Integer},
    BulkInsert::Column{"ID_PRODUKT", DataType::Integer},
    BulkInsert::Column{"ID_BB_AUFTRAG", DataType::Integer},
    BulkInsert::Column{"ID_BB_T_KZ_LEISTUNG", DataType::Integer},
    BulkInsert::Column{"ID_WARENEINHEIT", DataType::Integer},
    BulkInsert::Column{"MENGE", DataType::Double},
    BulkInsert::Column{"STUNDEN", DataType::Double},
    BulkInsert::Column{"SATZ", DataType::Double},
    BulkInsert::Column{"BETRAG", DataType::Double},
    BulkInsert::Column{"BEMERKUNG"},
};

constexpr std::array resultColumns{BulkInsert::Column{"ID_BB_LEISTUNGS", DataType::Integer},
                                   BulkInsert::Column{"ID_LOHNARTEN", DataType::Integer},
                                   BulkInsert::Column{"ID_WARENEINHEIT", DataType::Integer},
                                   BulkInsert::Column{"MENGE", DataType::Double},
                                   BulkInsert::Column{"SATZ", DataType::Double},
                                   BulkInsert::Column{"BETRAG", DataType::Double}};

constexpr std::array otherColumns{BulkInsert::Column{"ID_BB_LEISTUNGS_KOPF", DataType::Integer},
                                  BulkInsert::Column{"POSITION", DataType::Integer},
                                  BulkInsert::Column{"ID_LOHNARTEN", DataType::Integer},
                                  BulkInsert::Column{"STUNDEN", DataType::Double},
                                  BulkInsert::Column{"SATZ", DataType::Double},
                                  BulkInsert::Column{"BETRAG", DataType::Double},
                                  BulkInsert::Column{"BEMERKUNG"}};

/// A row of BB_LEISTUNGS_STD or BB_LEISTUNGS_SONST_STD, without the name of its head.
constexpr std::array serviceDayColumns{BulkInsert::Column{"ID_BB_LEISTUNGS", DataType::Integer},
                                       BulkInsert::Column{"DATUM", DataType::Date},
                                       BulkInsert::Column{"STUNDEN", DataType::Double}};
constexpr std::array otherDayColumns{BulkInsert::Column{"ID_BB_LEISTUNGS_SONST", DataType::Integer},
                                     BulkInsert::Column{"DATUM", DataType::Date},
                                     BulkInsert::Column{"STUNDEN", DataType::Double}};

/// A kind of other wage. A rate of 0 is that of the worker.
struct OtherWage {
    std::int32_t wageType;
    double rate;
    const char* remark;
    std::uint32_t weight;
};
constexpr std::array otherWages{OtherWage{6, 0, "Erholungsurlaub", 40},
                                OtherWage{7, 0, "ärztliche Bestätigung liegt vor", 20},
                                OtherWage{8, 0, "gesetzlicher Feiertag", 15}, OtherWage{9, 4.6, "eigene Motorsäge", 25},
                                OtherWage{10, 1.85, "Steillage über 50 %", 20}};

constexpr std::array remarks{"Käferholz", "Schneebruch aufgearbeitet", "Durchforstung nach Auszeige",
                             "Schlagabraum entfernt", "Verbissschutz gestrichen"};

/// The result that is paid besides the hours: kind of wage and rate of a cubic metre or a plant.
constexpr std::int32_t cubicMetreWage = 4;
constexpr std::int32_t plantWage = 5;
constexpr double cubicMetreRate = 1.65;
constexpr double plantRate = 0.06;

/// Writes one record after the other: its services and other wages first, then the head with their sums.
class ServiceWriter {
public:
    ServiceWriter(ado::Connection& connection, const ReferenceOptions& options, const WorkKeys& keys) :
        options_{options}, keys_{keys}, random_{randomOf(options, Stream::services)},
        heads_{connection, "BB_LEISTUNGS_KOPF", headColumns}, services_{connection, "BB_LEISTUNGS", serviceColumns},
        serviceDays_{connection, "BB_LEISTUNGS_STD", serviceDayColumns}, results_{connection, "BB_LEISTUNGS_WERT",
                                                                                  resultColumns},
        others_{connection, "BB_LEISTUNGS_SONST", otherColumns}, otherDays_{connection, "BB_LEISTUNGS_SONST_STD",
                                                                            otherDayColumns}
    {}

    ServiceRecord write(std::int32_t record)
    {
        const Worker& worker = random_.pick(keys_.workers);
        month_ = monthAt(options_, monthIndexOf(options_, record));
        // One worker in seven helps out in a district that is not his own.
        level_ = random_.chance(140) ? random_.pick(keys_.districts) : worker.level;
        hours_ = amount_ = resultSum_ = other_ = 0;
        const std::int32_t services = random_.between(1, 4);
        for (std::int32_t position = 1; position <= services; ++position)
            writeService(record, position, worker);
        const std::int32_t others = random_.between(0, 2);
        for (std::int32_t position = 1; position <= others; ++position)
            writeOther(record, position, worker);
        writeHead(record, worker);
        return {record, monthIndexOf(options_, record), worker.id, level_, rounded(hours_), total()};
    }

private:
    double total() const { return rounded(amount_ + resultSum_ + other_); }

    /// Divides the hours among one to three days and writes them.
    void writeDays(BulkInsert& days, std::int32_t head, double hours)
    {
        const std::int32_t count = hours > 8.0 ? random_.between(2, 3) : 1;
        const double each = rounded(hours / count);
        for (std::int32_t day = 1; day <= count; ++day)
            insertRow(days, {head, workingDay(options_, month_, random_),
                             day == count ? rounded(hours - each * (count - 1)) : each});
    }

    void writeService(std::int32_t record, std::int32_t position, const Worker& worker)
    {
        const KeyPair service = random_.pick(keys_.services);
        const KeyPair order = random_.pick(keys_.orders);
        const bool harvest = isHarvest(service.other);
        const double hours = random_.between(8, 56) * 0.5;
        const double quantity =
            harvest ? rounded(hours * random_.between(1.2, 3.4)) : rounded(hours * random_.between(25.0, 60.0), 0);
        const double amount = rounded(hours * worker.rate);
        insertRow(services_,
                  {record, position, pickId(random_, keys_.owners, 500), pickOf(random_, keys_.costCentres, level_).id,
                   order.id, keyOf(order.other), pickId(random_, keys_.facilities, 300),
                   pickOf(random_, keys_.places, level_).id, service.id, pickId(random_, keys_.methods, nullsPerMille),
                   keyOf(service.other), random_.between(1, options_.records),
                   pickId(random_, keys_.marks, nullsPerMille), harvest ? cubicMetres : pieces, quantity, hours,
                   worker.rate, amount, sometimes(random_, 250, random_.pick(remarks))});
        // The day rows and results refer to the service by its number.
        ++serviceId_; // a new database numbers the rows from 1
        writeDays(serviceDays_, serviceId_, hours);
        hours_ += hours;
        amount_ += amount;
        if (random_.chance(400)) writeResult(harvest, quantity);
    }

    void writeResult(bool harvest, double quantity)
    {
        const double rate = harvest ? cubicMetreRate : plantRate;
        const double amount = rounded(quantity * rate);
        insertRow(results_, {serviceId_, harvest ? cubicMetreWage : plantWage, harvest ? cubicMetres : pieces, quantity,
                             rate, amount});
        resultSum_ += amount;
    }

    void writeOther(std::int32_t record, std::int32_t position, const Worker& worker)
    {
        const OtherWage& wage = random_.pickWeighted(otherWages);
        const double hours = random_.between(1, 3) * 8.0;
        const double rate = wage.rate == 0 ? worker.rate : wage.rate;
        const double amount = rounded(hours * rate);
        insertRow(others_,
                  {record, position, wage.wageType, hours, rate, amount, sometimes(random_, 500, wage.remark)});
        ++otherId_;
        writeDays(otherDays_, otherId_, hours);
        other_ += amount;
    }

    /// Three records of a hundred are cancelled after they were made.
    void writeHead(std::int32_t record, const Worker& worker)
    {
        const Date last = lastDayOf(options_, month_);
        const double base = dayOf(options_.baseDate).days;
        const Date made{std::min(last.days + random_.between(0, 4), base)};
        const Date closed{std::min(made.days + random_.between(1, 9), base)};
        const Date cancelled{std::min(closed.days + random_.between(3, 40), base)};
        const bool isClosed = last.days + 20 < base;
        const bool isCancelled = isClosed && random_.chance(30);
        const Variant none{Null{}};
        insertRow(heads_,
                  {worker.id, month_.month, month_.year, level_, worker.level,
                   "LN-" + std::to_string(month_.year) + paddedNumber(month_.month, 2) + "-" + paddedNumber(record, 5),
                   made, isClosed, isClosed ? Variant{closed} : none, isCancelled ? Variant{cancelled} : none,
                   rounded(hours_), rounded(amount_), rounded(other_), total(),
                   sometimes(random_, 120, "Stunden mit Revierleiter abgestimmt")});
    }

    const ReferenceOptions& options_;
    const WorkKeys& keys_;
    Random random_;
    BulkInsert heads_;
    BulkInsert services_;
    BulkInsert serviceDays_;
    BulkInsert results_;
    BulkInsert others_;
    BulkInsert otherDays_;
    std::int32_t serviceId_ = 0;
    std::int32_t otherId_ = 0;
    // The record that is being written.
    Month month_{};
    std::int32_t level_ = 0;
    double hours_ = 0;
    double amount_ = 0;
    double resultSum_ = 0;
    double other_ = 0;
};

} // namespace

std::vector<ServiceRecord> writeServices(ado::Connection& connection, const ReferenceOptions& options,
                                         const WorkKeys& keys)
{
    ServiceWriter writer{connection, options, keys};
    std::vector<ServiceRecord> records;
    records.reserve(static_cast<std::size_t>(options.records));
    for (std::int32_t record = 1; record <= options.records; ++record)
        records.push_back(writer.write(record));
    return records;
}

void writeServicesAndWages(ado::Connection& connection, const ReferenceOptions& options)
{
    const WorkKeys keys = readWorkKeys(connection);
    const std::vector<ServiceRecord> records = writeServices(connection, options, keys);
    writeForestWages(connection, options, keys, records);
}

} // namespace tamarok::database::people
