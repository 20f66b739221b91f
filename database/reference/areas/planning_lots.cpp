#include <algorithm>

#include "areas/planning.h"

#include "tamarok/convert.h"

// Provision of timber (list type BERM). The timber lists bring some lots of their own; further ones are made here of
// logs that no lot holds, a few of one timber list each, spread evenly over all logs. A lot that finds no logs is one
// that is still prepared.
namespace tamarok::database::planning {
namespace {

constexpr std::array lotColumns{
    wholeColumn("ID"),          textColumn("BEREITSTELLUNGSNAME"), dayColumn("ERSTELLUNGSDATUM"),
    wholeColumn("ID_PERSONAL"), wholeColumn("ID_ACCESS_LEVELS"),   wholeColumn("ID_PERSONAL_LIEFERADRESSE"),
    dayColumn("FREIGABEDATUM"), dayColumn("ABFUHR_BIS"),           textColumn("LAGERORT"),
    textColumn("BEMERKUNG"),    flagColumn("ABGESCHLOSSEN"),
};
constexpr std::array logColumns{wholeColumn("ID_LOGS"), wholeColumn("ID_BEREITSTELLUNG_KOPF")};
constexpr std::array portalColumns{
    wholeColumn("ID_BEREITSTELLUNG_KOPF"), textColumn("AUFTRAGSNUMMER"), textColumn("STATUS"),
    dayColumn("UEBERGABEDATUM"),           dayColumn("RUECKMELDUNG"),
};
constexpr std::array journeyColumns{textColumn("NUMMER"), dayColumn("DATUM"), textColumn("KENNZEICHEN"),
                                    wholeColumn("ID_PERSONAL")};
constexpr std::array loadColumns{
    wholeColumn("ID_POLTER_TRANSPORT_KOPF"), wholeColumn("ID_LOGS"), textColumn("POLTER"),
    textColumn("LIEFERSCHEIN_NR"),           numberColumn("MENGE"),
};

/// A log that no lot holds.
struct Log {
    std::int32_t id = 0;
    std::int32_t part = 0; ///< the part of all logs from which a lot takes its own
    std::string list;
    Date day;
    std::string pile;
    double volume = 0.0;
    std::int32_t level = 0;
};

constexpr std::int32_t mostLogsOfLot = 6;

/// Divides all logs into a part for each lot and reads the free ones of the first logs of each part, in the order of
/// their numbers.
std::vector<Log> readFreeLogs(ado::Connection& connection, std::int32_t lots)
{
    const std::int32_t last = idsOf(connection, "SELECT ISNULL(MAX(ID_LOG),0) AS LAST FROM LOGS").at(0);
    const std::int32_t size = std::max(last / lots, mostLogsOfLot);
    std::vector<Log> logs;
    for (const auto& row :
         rowsOf(connection, "SELECT LOGS.ID_LOG, LOGS.LISTE, LOGS.LISTDATUM, LOGS.POLTNR, LOGS.KUBATUR, "
                            "LISTENKOPF.ID_ACCESS_LEVELS FROM LOGS INNER JOIN LISTENKOPF ON LISTENKOPF.LISTE = "
                            "LOGS.LISTE LEFT JOIN BEREITSTELLUNG_LOGS ON BEREITSTELLUNG_LOGS.ID_LOGS = LOGS.ID_LOG "
                            "WHERE LOGS.ID_LOG % " +
                                std::to_string(size) + " < " + std::to_string(mostLogsOfLot) +
                                " AND BEREITSTELLUNG_LOGS.ID_LOGS IS NULL ORDER BY LOGS.ID_LOG")) {
        const std::int32_t id = convert::toLong(row.at(0));
        logs.push_back({id, id / size, convert::toText(row.at(1)), convert::toDate(row.at(2)),
                        row.at(3).isNull() ? std::string{} : convert::toText(row.at(3)),
                        row.at(4).isNull() ? 0.0 : convert::toDouble(row.at(4)), convert::toLong(row.at(5))});
    }
    return logs;
}

constexpr std::array<std::string_view, 4> storages{"Forststraße", "Rückeweg", "Holzlagerplatz", "Nasslager"};

class LotWriter {
public:
    LotWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        options_{options}, keys_{keys}, lot_{lastId(connection, "BEREITSTELLUNG_KOPF")},
        free_{readFreeLogs(connection, options.records - lot_)}, lots_{connection, "BEREITSTELLUNG_KOPF"},
        logs_{connection, "BEREITSTELLUNG_LOGS"}, portal_{connection, "NETLOGISTIK_TRANSPORT"},
        journeys_{connection, "POLTER_TRANSPORT_KOPF"}, loads_{connection, "POLTER_TRANSPORT"}
    {}

    bool isDone() const { return lot_ >= options_.records; }

    void writeNext(Random& random)
    {
        ++lot_;
        const std::vector<const Log*> logs = takeLogs(random);
        const Location& location = random.pick(keys_.locations);
        // A lot is made out after its logs were measured.
        const Date day = logs.empty() ? drawDay(random, options_) : Date{logs.front()->day.days + 1.0};
        const std::int32_t level = logs.empty() ? location.level : logs.front()->level;
        writeLot(random, day, level, location);
        for (const Log* log : logs) {
            logs_[at<logColumns>("ID_LOGS")] = log->id;
            logs_[at<logColumns>("ID_BEREITSTELLUNG_KOPF")] = lot_;
            logs_.insert();
        }
        const Date handover = laterDay(day, random.between(1, 10), options_);
        if (random.chance(800)) writePortalOrder(random, handover);
        if (!logs.empty() && random.chance(800)) writeJourney(random, handover, logs);
    }

private:
    /// One to six logs of one timber list, from the next part that has free logs.
    std::vector<const Log*> takeLogs(Random& random)
    {
        std::vector<const Log*> taken;
        const auto wanted = static_cast<std::size_t>(random.between(1, mostLogsOfLot));
        for (const std::size_t first = next_; next_ < free_.size() && free_[next_].part == free_[first].part; ++next_)
            if (taken.size() < wanted && free_[next_].list == free_[first].list) taken.push_back(&free_[next_]);
        return taken;
    }

    void writeLot(Random& random, Date day, std::int32_t level, const Location& location)
    {
        constexpr double nineInTheMorning = 0.375;
        const bool isReleased = random.chance(850);
        const std::int32_t releaseAfter = random.between(1, 7);
        lots_[at<lotColumns>("ID")] = lot_;
        lots_[at<lotColumns>("BEREITSTELLUNGSNAME")] = "B-" + std::to_string(lot_);
        lots_[at<lotColumns>("ERSTELLUNGSDATUM")] = Date{day.days + nineInTheMorning};
        lots_[at<lotColumns>("ID_PERSONAL")] = pickId(random, keys_.owners);
        lots_[at<lotColumns>("ID_ACCESS_LEVELS")] = level;
        lots_[at<lotColumns>("ID_PERSONAL_LIEFERADRESSE")] = pickId(random, keys_.customers, 50);
        lots_[at<lotColumns>("FREIGABEDATUM")] =
            isReleased ? Variant{laterDay(day, releaseAfter, options_)} : Variant{Null{}};
        lots_[at<lotColumns>("ABFUHR_BIS")] = Date{day.days + random.between(20, 60)};
        lots_[at<lotColumns>("LAGERORT")] = std::string{random.pick(storages)} + " " + location.districtName;
        lots_[at<lotColumns>("BEMERKUNG")] =
            random.chance(200) ? Variant{"Zufahrt mit Anhänger möglich"} : Variant{Null{}};
        lots_[at<lotColumns>("ABGESCHLOSSEN")] = isReleased && day.days < options_.baseDate.days - 120.0;
        lots_.insert();
    }

    void writePortalOrder(Random& random, Date handover)
    {
        const bool isConfirmed = random.chance(750);
        const std::int32_t confirmedAfter = random.between(1, 5);
        portal_[at<portalColumns>("ID_BEREITSTELLUNG_KOPF")] = lot_;
        portal_[at<portalColumns>("AUFTRAGSNUMMER")] = "T" + shortYear(handover) + "-" + paddedNumber(lot_, 6);
        portal_[at<portalColumns>("STATUS")] = isConfirmed ? "bestätigt" : "übergeben";
        portal_[at<portalColumns>("UEBERGABEDATUM")] = handover;
        portal_[at<portalColumns>("RUECKMELDUNG")] =
            isConfirmed ? Variant{laterDay(handover, confirmedAfter, options_)} : Variant{Null{}};
        portal_.insert();
    }

    /// One journey takes all logs of a lot.
    void writeJourney(Random& random, Date handover, const std::vector<const Log*>& logs)
    {
        const Date day = laterDay(handover, random.between(2, 20), options_);
        ++journey_;
        journeys_[at<journeyColumns>("NUMMER")] = "F" + shortYear(day) + "-" + paddedNumber(journey_, 5);
        journeys_[at<journeyColumns>("DATUM")] = day;
        journeys_[at<journeyColumns>("KENNZEICHEN")] = "GU-" + paddedNumber(random.between(100, 999), 3) + " HT";
        journeys_[at<journeyColumns>("ID_PERSONAL")] = pickId(random, keys_.carriers);
        journeys_.insert();
        for (const Log* log : logs) {
            loads_[at<loadColumns>("ID_POLTER_TRANSPORT_KOPF")] = journey_;
            loads_[at<loadColumns>("ID_LOGS")] = log->id;
            loads_[at<loadColumns>("POLTER")] = log->pile.empty() ? Variant{Null{}} : Variant{"P" + log->pile};
            loads_[at<loadColumns>("LIEFERSCHEIN_NR")] = "LS" + shortYear(day) + "-" + paddedNumber(journey_, 5);
            loads_[at<loadColumns>("MENGE")] = log->volume;
            loads_.insert();
        }
    }

    const ReferenceOptions& options_;
    const Keys& keys_;
    std::int32_t lot_;
    std::vector<Log> free_;
    std::size_t next_ = 0;
    std::int32_t journey_ = 0; ///< a new database numbers the rows of POLTER_TRANSPORT_KOPF from 1
    Rows<lotColumns> lots_;
    Rows<logColumns> logs_;
    Rows<portalColumns> portal_;
    Rows<journeyColumns> journeys_;
    Rows<loadColumns> loads_;
};

} // namespace

void writeLots(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    if (lastId(connection, "BEREITSTELLUNG_KOPF") >= options.records) return;
    Random random = randomOf(options, Stream::lots);
    LotWriter writer{connection, options, keys};
    while (!writer.isDone())
        writer.writeNext(random);
}

} // namespace tamarok::database::planning
