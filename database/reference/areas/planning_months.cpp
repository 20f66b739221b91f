#include <algorithm>

#include "areas/planning.h"

#include "tamarok/convert.h"

// Monthly work plans of the edition BB (list type BBMAP): which gang works on which single measure of an order, and
// the hours that were settled.
namespace tamarok::database::planning {
namespace {

constexpr std::array headColumns{
    textColumn("MAP_NUMMER"),
    wholeColumn("ID_ACCESS_LEVELS"),
    dayColumn("DATUM"),
    wholeColumn("MONAT"),
    wholeColumn("JAHR"),
    wholeColumn("ARBEITSTAGE"),
    dayColumn("FREIGABEDATUM"),
    dayColumn("STORNODATUM"),
    textColumn("BEMERKUNG"),
    numberColumn("SUMME_STUNDEN"),
    wholeColumn("ID_BB_T_ARBEITSGRUPPE"),
    wholeColumn("ID_BB_T_MAP_STATUS"),
};

constexpr std::array lineColumns{
    wholeColumn("ID_BB_MAP_KOPF"),
    wholeColumn("ID_BB_AUFTRAG"),
    wholeColumn("ZEILE_NR"),
    dayColumn("BEGINN"),
    dayColumn("ENDE"),
    wholeColumn("TAGE"),
    wholeColumn("ARBEITER"),
    numberColumn("STUNDEN_PLAN"),
    numberColumn("MENGE_PLAN"),
    textColumn("BEMERKUNG"),
};

constexpr std::array settlementColumns{
    wholeColumn("ID_BB_MAP"),    wholeColumn("ID_BB_AUFTRAG"), dayColumn("DATUM"),    numberColumn("STUNDEN"),
    numberColumn("STUNDENSATZ"), numberColumn("BETRAG"),       numberColumn("MENGE"),
};

/// A single measure of an order that months plan.
struct Measure {
    std::int32_t id = 0;
    double hours = 0.0, rate = 0.0, quantity = 0.0;
};

/// Single measures by the month of their start, counted from the year 0.
using MeasuresByMonth = std::map<std::int32_t, std::vector<Measure>>;

MeasuresByMonth readMeasures(ado::Connection& connection)
{
    MeasuresByMonth months;
    for (const auto& row : rowsOf(connection, "SELECT ID, BEGINN, STUNDEN_PLAN, STUNDENSATZ, MENGE FROM BB_AUFTRAG "
                                              "WHERE BEGINN IS NOT NULL AND STORNODATUM IS NULL ORDER BY ID")) {
        const CivilTime start = toCivil(convert::toDate(row.at(1)));
        months[start.year * 12 + start.month - 1].push_back({convert::toLong(row.at(0)), convert::toDouble(row.at(2)),
                                                             convert::toDouble(row.at(3)),
                                                             convert::toDouble(row.at(4))});
    }
    return months;
}

/// A month of the data.
struct Month {
    std::int32_t year = 0, month = 0;

    Date first() const { return makeDate(year, month, 1); }
    Date last() const { return makeDate(year, month, daysInMonth(year, month)); }
    std::int32_t count() const { return year * 12 + month - 1; }
};

/// The months of three years up to the base date, in the order of the records.
Month monthOf(const ReferenceOptions& options, std::int32_t record)
{
    constexpr std::int64_t months = 36;
    const CivilTime base = toCivil(options.baseDate);
    const std::int32_t index = static_cast<std::int32_t>((record - 1) * months / options.records);
    const std::int32_t count = base.year * 12 + base.month - 1 - static_cast<std::int32_t>(months) + 1 + index;
    return {count / 12, count % 12 + 1};
}

/// Monday to Friday.
std::int32_t workingDays(const Month& month)
{
    std::int32_t days = 0;
    for (Date day = month.first(); day <= month.last(); day.days += 1.0) {
        const std::int32_t weekday = weekdayOf(day);
        if (weekday != 1 && weekday != 7) ++days;
    }
    return days;
}

/// A line of a plan.
struct Line {
    const Measure* measure = nullptr;
    Date from, to;
    std::int32_t days = 0, workers = 0;
    double hours = 0.0, quantity = 0.0;
};

class MonthWriter {
public:
    MonthWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        heads_{connection, "BB_MAP_KOPF"}, lines_{connection, "BB_MAP"},
        settlements_{connection, "BB_AUFTRAG_ABRECHNUNG"}, measures_{readMeasures(connection)},
        gangs_{idsOf(connection, "SELECT ID FROM BB_T_ARBEITSGRUPPE WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID")},
        levels_{idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE NAME LIKE 'REV %' OR NAME LIKE 'OBF %' ORDER "
                                  "BY ID")},
        options_{options}, keys_{keys}
    {}

    void write(Random& random, std::int32_t number)
    {
        const Month month = monthOf(options_, number);
        const std::vector<Line> lines = drawLines(random, month);
        writeHead(random, month, number, lines);
        const bool isSettled = month.last().days < options_.baseDate.days;
        std::int32_t lineNumber = 0;
        for (const Line& line : lines) {
            writeLine(random, line, number, ++lineNumber);
            if (isSettled && random.chance(870)) writeSettlement(random, line, month);
        }
    }

private:
    /// Neighbouring measures of the month, so that none occurs twice in one plan.
    std::vector<Line> drawLines(Random& random, const Month& month)
    {
        std::vector<Line> lines;
        const auto found = measures_.find(month.count());
        if (found == measures_.end()) return lines;
        const std::vector<Measure>& measures = found->second;
        const auto wanted = static_cast<std::size_t>(random.between(1, 6));
        std::size_t place = random.below(static_cast<std::uint32_t>(measures.size()));
        for (std::size_t count = std::min(wanted, measures.size()); count > 0; --count) {
            lines.push_back(drawLine(random, month, measures[place]));
            place = (place + 1) % measures.size();
        }
        return lines;
    }

    static Line drawLine(Random& random, const Month& month, const Measure& measure)
    {
        const double share = random.between(0.3, 1.0);
        Line line;
        line.measure = &measure;
        line.days = random.between(1, 10);
        line.workers = random.between(1, 4);
        line.from = Date{month.first().days + random.between(0, 15)};
        line.to = std::min(Date{line.from.days + line.days + 3}, month.last());
        line.hours = tenth(measure.hours * share);
        line.quantity = cents(measure.quantity * share);
        return line;
    }

    void writeHead(Random& random, const Month& month, std::int32_t number, const std::vector<Line>& lines)
    {
        double hours = 0.0;
        for (const Line& line : lines)
            hours += line.hours;
        const Date day{month.first().days - 5.0};
        const bool isOver = month.last().days < options_.baseDate.days;
        heads_[at<headColumns>("MAP_NUMMER")] =
            "M-" + std::to_string(month.year) + "-" + paddedNumber(month.month, 2) + "-" + paddedNumber(number, 4);
        heads_[at<headColumns>("ID_ACCESS_LEVELS")] = pickId(random, levels_);
        heads_[at<headColumns>("DATUM")] = day;
        heads_[at<headColumns>("MONAT")] = month.month;
        heads_[at<headColumns>("JAHR")] = month.year;
        heads_[at<headColumns>("ARBEITSTAGE")] = workingDays(month);
        heads_[at<headColumns>("FREIGABEDATUM")] = random.chance(850) ? Variant{Date{day.days + 3.0}} : Variant{Null{}};
        heads_[at<headColumns>("STORNODATUM")] = drawCancelDay(random, day, options_);
        heads_[at<headColumns>("BEMERKUNG")] = random.chance(200) ? Variant{"Urlaubssperre beachten"} : Variant{Null{}};
        heads_[at<headColumns>("SUMME_STUNDEN")] = tenth(hours);
        heads_[at<headColumns>("ID_BB_T_ARBEITSGRUPPE")] = pickId(random, gangs_, 20);
        heads_[at<headColumns>("ID_BB_T_MAP_STATUS")] =
            keyOf(keys_.monthStates, isOver ? std::string_view{"4"} : random.pick(std::array{"1", "2", "3"}));
        heads_.insert();
    }

    void writeLine(Random& random, const Line& line, std::int32_t head, std::int32_t number)
    {
        ++line_;
        lines_[at<lineColumns>("ID_BB_MAP_KOPF")] = head;
        lines_[at<lineColumns>("ID_BB_AUFTRAG")] = line.measure->id;
        lines_[at<lineColumns>("ZEILE_NR")] = number;
        lines_[at<lineColumns>("BEGINN")] = line.from;
        lines_[at<lineColumns>("ENDE")] = line.to;
        lines_[at<lineColumns>("TAGE")] = line.days;
        lines_[at<lineColumns>("ARBEITER")] = line.workers;
        lines_[at<lineColumns>("STUNDEN_PLAN")] = line.hours;
        lines_[at<lineColumns>("MENGE_PLAN")] = line.quantity;
        lines_[at<lineColumns>("BEMERKUNG")] =
            random.chance(150) ? Variant{"Nur bei trockenem Boden"} : Variant{Null{}};
        lines_.insert();
    }

    /// The amount is hours times rate.
    void writeSettlement(Random& random, const Line& line, const Month& month)
    {
        const double hours = tenth(line.hours * random.between(0.85, 1.15));
        settlements_[at<settlementColumns>("ID_BB_MAP")] = line_;
        settlements_[at<settlementColumns>("ID_BB_AUFTRAG")] = line.measure->id;
        settlements_[at<settlementColumns>("DATUM")] = month.last();
        settlements_[at<settlementColumns>("STUNDEN")] = hours;
        settlements_[at<settlementColumns>("STUNDENSATZ")] = line.measure->rate;
        settlements_[at<settlementColumns>("BETRAG")] = cents(hours * line.measure->rate);
        settlements_[at<settlementColumns>("MENGE")] = cents(line.quantity * random.between(0.9, 1.1));
        settlements_.insert();
    }

    Rows<headColumns> heads_;
    Rows<lineColumns> lines_;
    Rows<settlementColumns> settlements_;
    MeasuresByMonth measures_;
    Ids gangs_, levels_;
    const ReferenceOptions& options_;
    const Keys& keys_;
    std::int32_t line_ = 0; ///< a new database numbers the rows of BB_MAP from 1
};

} // namespace

void writeMonths(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    Random random = randomOf(options, Stream::months);
    MonthWriter writer{connection, options, keys};
    for (std::int32_t number = 1; number <= options.records; ++number)
        writer.write(random, number);
}

} // namespace tamarok::database::planning
