#include <algorithm>
#include <array>
#include <set>
#include <string>

#include "areas/people_services.h"

namespace tamarok::database::people {
namespace {

using ado::DataType;

constexpr std::array headColumns{BulkInsert::Column{"ABRECHNUNGSMONAT", DataType::Integer},
                                 BulkInsert::Column{"JAHR", DataType::Integer},
                                 BulkInsert::Column{"ID_ACCESS_LEVELS", DataType::Integer},
                                 BulkInsert::Column{"NUMMER"},
                                 BulkInsert::Column{"DATUM", DataType::Date},
                                 BulkInsert::Column{"ID_BB_SCHNITTSTELLE_KOPF", DataType::Integer},
                                 BulkInsert::Column{"ABGERECHNET", DataType::Boolean},
                                 BulkInsert::Column{"AUSZAHLUNGSDATUM", DataType::Date},
                                 BulkInsert::Column{"ARBEITER", DataType::Integer},
                                 BulkInsert::Column{"SUMME_STUNDEN", DataType::Double},
                                 BulkInsert::Column{"SUMME_LOHN", DataType::Double},
                                 BulkInsert::Column{"SUMME_AUFSCHLAG", DataType::Double},
                                 BulkInsert::Column{"SUMME_GESAMT", DataType::Double},
                                 BulkInsert::Column{"BEMERKUNG"}};

constexpr std::array bookingColumns{BulkInsert::Column{"ID_BB_WALDARBEITERLOHN_KOPF", DataType::Integer},
                                    BulkInsert::Column{"POSITION", DataType::Integer},
                                    BulkInsert::Column{"ID_BB_LEISTUNGS_KOPF", DataType::Integer},
                                    BulkInsert::Column{"ID_BB_BELEGE_KOPF", DataType::Integer},
                                    BulkInsert::Column{"ID_KOSTENSTELLE", DataType::Integer},
                                    BulkInsert::Column{"BUCHUNGSDATUM", DataType::Date},
                                    BulkInsert::Column{"STUNDEN", DataType::Double},
                                    BulkInsert::Column{"BETRAG", DataType::Double},
                                    BulkInsert::Column{"AUFSCHLAG", DataType::Double},
                                    BulkInsert::Column{"GESAMT", DataType::Double},
                                    BulkInsert::Column{"BUCHUNGSTEXT"}};

constexpr std::array surchargeColumns{
    BulkInsert::Column{"JAHR", DataType::Integer},    BulkInsert::Column{"MONAT", DataType::Integer},
    BulkInsert::Column{"URLAUB", DataType::Double},   BulkInsert::Column{"KRANK", DataType::Double},
    BulkInsert::Column{"FEIERTAG", DataType::Double}, BulkInsert::Column{"SOZIAL", DataType::Double},
    BulkInsert::Column{"GESAMT", DataType::Double}};

constexpr std::array transferColumns{BulkInsert::Column{"NUMMER"}, BulkInsert::Column{"DATUM", DataType::Date},
                                     BulkInsert::Column{"DATEINAME"}, BulkInsert::Column{"SAETZE", DataType::Integer},
                                     BulkInsert::Column{"BETRAG", DataType::Double}};

/// A share of a record of services, charged in a month of wages.
struct Booking {
    std::int32_t record;
    std::int32_t worker;
    std::int32_t costCentre;
    double hours;
    double amount;
};

/// What one file hands to the payroll.
struct Transfer {
    std::int32_t bookings = 0;
    double amount = 0;
};

/// Divides the records of services among the months of wages, books the shares and sums them up.
class ForestWageWriter {
public:
    ForestWageWriter(ado::Connection& connection, const ReferenceOptions& options, const WorkKeys& keys) :
        options_{options}, keys_{keys}, random_{randomOf(options, Stream::forestWages)},
        heads_{connection, "BB_WALDARBEITERLOHN_KOPF", headColumns}, bookings_{connection,
                                                                               "BB_WALDARBEITERLOHN_BUCHUNG",
                                                                               bookingColumns},
        surcharges_{connection, "BB_LEISTUNGS_AUFSCHLAG", surchargeColumns}, transfers_{connection,
                                                                                        "BB_SCHNITTSTELLE_KOPF",
                                                                                        transferColumns}
    {}

    void write(const std::vector<ServiceRecord>& records)
    {
        writeSurcharges();
        divide(records);
        std::array<Transfer, monthCount> transfers{};
        for (const ServiceRecord& record : records)
            writeMonth(record, transfers.at(static_cast<std::size_t>(record.month)));
        for (std::int32_t month = 0; month < monthCount; ++month)
            writeTransfer(month, transfers.at(static_cast<std::size_t>(month)));
    }

private:
    /// One row a month; winter months have more sickness, May and December more holidays.
    void writeSurcharges()
    {
        for (std::int32_t index = 0; index < monthCount; ++index) {
            const Month month = monthAt(options_, index);
            const bool isWinter = month.month <= 3 || month.month >= 11;
            const bool hasHolidays = month.month == 5 || month.month == 12 || month.month == 1;
            const double leave = 11.5;
            const double sickness = rounded(random_.between(2.8, 3.9) + (isWinter ? 1.4 : 0.0));
            const double holidays = hasHolidays ? 6.2 : 3.6;
            const double social = 21.38;
            const double total = rounded(leave + sickness + holidays + social);
            percent_.at(static_cast<std::size_t>(index)) = total;
            insertRow(surcharges_, {month.year, month.month, leave, sickness, holidays, social, total});
        }
    }

    /// The record with number n opens the month of wages with number n, which books all or most of it. The rest is
    /// charged in the next month of wages of the same calendar month, since the worker has helped out there.
    void divide(const std::vector<ServiceRecord>& records)
    {
        shares_.resize(records.size());
        // The records are in the order of their months; [first, end) are those of one month.
        for (std::size_t first = 0; first < records.size();) {
            std::size_t end = first;
            while (end < records.size() && records[end].month == records[first].month)
                ++end;
            for (std::size_t i = first; i < end; ++i) {
                const ServiceRecord& record = records[i];
                const std::size_t next = i + 1 < end ? i + 1 : first;
                const bool isDivided = next != i && random_.chance(600);
                const double share = isDivided ? random_.between(6, 9) / 10.0 : 1.0;
                const Booking main{record.id, record.worker, pickOf(random_, keys_.costCentres, record.level).id,
                                   rounded(record.hours * share), rounded(record.amount * share)};
                shares_[i].push_back(main);
                if (isDivided)
                    // The rest, not a rounded share, so that the bookings sum up to the record.
                    shares_[next].push_back({record.id, record.worker,
                                             pickOf(random_, keys_.costCentres, records[next].level).id,
                                             rounded(record.hours - main.hours), rounded(record.amount - main.amount)});
            }
            first = end;
        }
    }

    void writeMonth(const ServiceRecord& record, Transfer& transfer)
    {
        const Month month = monthAt(options_, record.month);
        const Date last = lastDayOf(options_, month);
        const double percent = percent_.at(static_cast<std::size_t>(record.month));
        std::set<std::int32_t> workers;
        double hours = 0;
        double amount = 0;
        double surcharge = 0;
        std::int32_t position = 0;
        for (const Booking& booking : shares_[static_cast<std::size_t>(record.id - 1)]) {
            const double added = rounded(booking.amount * percent / 100.0);
            const Date booked{std::min(last.days + random_.between(1, 6), dayOf(options_.baseDate).days)};
            insertRow(bookings_,
                      {record.id, ++position, booking.record, random_.between(1, options_.records), booking.costCentre,
                       booked, booking.hours, booking.amount, added, rounded(booking.amount + added),
                       "Löhne " + paddedNumber(month.month, 2) + "/" + std::to_string(month.year)});
            workers.insert(booking.worker);
            hours += booking.hours;
            amount += booking.amount;
            surcharge += added;
        }
        transfer.bookings += position;
        transfer.amount += amount;
        writeHead(record, static_cast<std::int32_t>(workers.size()), hours, amount, surcharge);
    }

    void writeHead(const ServiceRecord& record, std::int32_t workers, double hours, double amount, double surcharge)
    {
        const Month month = monthAt(options_, record.month);
        const Date last = lastDayOf(options_, month);
        const double base = dayOf(options_.baseDate).days;
        const bool isSettled = last.days + 20 < base;
        const Date paid{std::min(last.days + random_.between(8, 15), base)};
        insertRow(heads_,
                  {month.month, month.year, record.level,
                   "WL-" + std::to_string(month.year) + paddedNumber(month.month, 2) + "-" + paddedNumber(record.id, 5),
                   last, record.month + 1, isSettled, isSettled ? Variant{paid} : Variant{Null{}}, workers,
                   rounded(hours), rounded(amount), rounded(surcharge), rounded(amount + surcharge),
                   sometimes(random_, 150, "Nachverrechnung im Folgemonat möglich")});
    }

    /// Every month has a file, so that its id is the index of the month and 1.
    void writeTransfer(std::int32_t index, const Transfer& transfer)
    {
        const Month month = monthAt(options_, index);
        const std::string name = std::to_string(month.year) + "-" + paddedNumber(month.month, 2);
        const Date day{std::min(lastDayOf(options_, month).days + 7, dayOf(options_.baseDate).days)};
        insertRow(transfers_,
                  {"DT-" + name, day, "lohn_" + name + ".dta", transfer.bookings, rounded(transfer.amount)});
    }

    const ReferenceOptions& options_;
    const WorkKeys& keys_;
    Random random_;
    BulkInsert heads_;
    BulkInsert bookings_;
    BulkInsert surcharges_;
    BulkInsert transfers_;
    std::array<double, monthCount> percent_{};
    std::vector<std::vector<Booking>> shares_; ///< by month of wages
};

} // namespace

void writeForestWages(ado::Connection& connection, const ReferenceOptions& options, const WorkKeys& keys,
                      const std::vector<ServiceRecord>& records)
{
    ForestWageWriter{connection, options, keys}.write(records);
}

} // namespace tamarok::database::people
