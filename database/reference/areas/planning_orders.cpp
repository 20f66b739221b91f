#include <algorithm>

#include "areas/planning.h"

// Orders of the edition BB with their single measures (list type BBZV).
namespace tamarok::database::planning {
namespace {

constexpr std::array headColumns{
    textColumn("AUFTRAG_NUMMER"),
    textColumn("BEZEICHNUNG"),
    dayColumn("DATUM"),
    wholeColumn("JAHR"),
    dayColumn("BEGINN"),
    dayColumn("ENDE"),
    dayColumn("FREIGABEDATUM"),
    dayColumn("STORNODATUM"),
    textColumn("BEMERKUNG"),
    numberColumn("SUMME_STUNDEN"),
    numberColumn("SUMME_KOSTEN"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_BB_T_AUFTRAGSTYP"),
    wholeColumn("ID_BB_T_AUFTRAGSSTATUS"),
    wholeColumn("ID_PERSONAL"),
    wholeColumn("ID_BB_PLAN_KOPF"),
};

constexpr std::array measureColumns{
    wholeColumn("ID"),
    wholeColumn("ID_BB_AUFTRAG_KOPF"),
    wholeColumn("EINZELMASSNAHME_NR"),
    textColumn("BEZEICHNUNG"),
    dayColumn("STORNODATUM"),
    dayColumn("BEGINN"),
    dayColumn("ENDE"),
    numberColumn("MENGE"),
    numberColumn("FLACHE"),
    numberColumn("STUNDEN_PLAN"),
    numberColumn("STUNDENSATZ"),
    numberColumn("KOSTEN_PLAN"),
    wholeColumn("ID_LEISTUNGSART"),
    wholeColumn("ID_PRODUKT"),
    wholeColumn("ID_KOSTENSTELLE"),
    wholeColumn("ID_WALDORT"),
    wholeColumn("ID_HOLZART"),
    wholeColumn("ID_BB_T_PRIORITAT"),
    wholeColumn("ID_BB_T_PROJEKT_PLANUNG"),
    wholeColumn("ID_BB_T_LEI_ARBEITSVERFAHEREN"),
    wholeColumn("ID_BB_T_OBJEKTE"),
    wholeColumn("ID_BB_T_VOLLZUGSMASSNAHME"),
    wholeColumn("ID_BB_T_KZ_LEISTUNG"),
    wholeColumn("ID_BB_NATURALVOLLZUG_DSW"),
};

/// A single measure; its cost is hours times rate.
struct Measure {
    const Work* work = nullptr;
    Date from, to;
    double quantity = 0.0, hours = 0.0, rate = 0.0, cost = 0.0;
};

struct Order {
    std::int32_t number = 0;
    const Location* location = nullptr;
    const Work* work = nullptr;
    Date day;
    std::vector<Measure> measures;
};

Measure drawMeasure(Random& random, const ReferenceOptions& options, const Work& work, Date day)
{
    const Amount amount = drawAmount(random, work);
    Measure measure;
    measure.work = &work;
    measure.from = laterDay(day, random.between(3, 40), options);
    measure.to = laterDay(measure.from, random.between(3, 30), options);
    measure.quantity = amount.quantity;
    measure.hours = amount.hours;
    measure.rate = random.pick(std::array{28.5, 31.0, 33.4, 36.8, 72.0});
    measure.cost = cents(measure.hours * measure.rate);
    return measure;
}

Order drawOrder(Random& random, const ReferenceOptions& options, const Keys& keys, std::int32_t number)
{
    Order order;
    order.number = number;
    order.location = &random.pick(keys.locations);
    order.work = &random.pick(works);
    order.day = drawDay(random, options);
    const Work* work = order.work;
    for (std::int32_t measures = random.between(1, 6); measures > 0; --measures) {
        order.measures.push_back(drawMeasure(random, options, *work, order.day));
        work = &drawRelated(random, *order.work);
    }
    return order;
}

/// The number of an order's type, by its work: harvest, road building, else cultivation.
std::string_view typeOf(const Work& work)
{
    if (work.unit == "fm") return "1";
    return work.product == "106" ? "3" : "2";
}

/// The number of an order's state: closed, released, made out.
std::string_view stateOf(bool isReleased, bool isClosed)
{
    if (isClosed) return "3";
    return isReleased ? "2" : "1";
}

class OrderWriter {
public:
    OrderWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        heads_{connection, "BB_AUFTRAG_KOPF"}, measures_{connection, "BB_AUFTRAG"}, options_{options}, keys_{keys},
        measure_{lastId(connection, "BB_AUFTRAG")}
    {}

    void write(Random& random, const Order& order)
    {
        setHead(order);
        setHeadState(random, order);
        heads_.insert();
        std::int32_t number = 0;
        for (const Measure& measure : order.measures) {
            setMeasure(random, order, measure, ++number);
            setMeasureKeys(random, order, *measure.work);
            measures_.insert();
        }
    }

private:
    void setHead(const Order& order)
    {
        double hours = 0.0;
        double cost = 0.0;
        Date first = order.measures.front().from;
        Date last = order.day;
        for (const Measure& measure : order.measures) {
            hours += measure.hours;
            cost += measure.cost;
            first = std::min(first, measure.from);
            last = std::max(last, measure.to);
        }
        heads_[at<headColumns>("AUFTRAG_NUMMER")] =
            "A-" + std::to_string(yearOf(order.day)) + "-" + paddedNumber(order.number, 3);
        heads_[at<headColumns>("BEZEICHNUNG")] = std::string{order.work->name} + " " + order.location->districtName;
        heads_[at<headColumns>("DATUM")] = order.day;
        heads_[at<headColumns>("JAHR")] = yearOf(order.day);
        heads_[at<headColumns>("BEGINN")] = first;
        heads_[at<headColumns>("ENDE")] = last;
        heads_[at<headColumns>("SUMME_STUNDEN")] = tenth(hours);
        heads_[at<headColumns>("SUMME_KOSTEN")] = cents(cost);
        heads_[at<headColumns>("ID_ACCESS_LEVELS")] = order.location->level;
        heads_[at<headColumns>("ID_BB_T_AUFTRAGSTYP")] = keyOf(keys_.orderTypes, typeOf(*order.work));
    }

    void setHeadState(Random& random, const Order& order)
    {
        const bool isReleased = random.chance(850);
        const bool isClosed = isReleased && order.day.days < options_.baseDate.days - 180.0;
        const std::int32_t releaseAfter = random.between(1, 10);
        heads_[at<headColumns>("FREIGABEDATUM")] =
            isReleased ? Variant{laterDay(order.day, releaseAfter, options_)} : Variant{Null{}};
        heads_[at<headColumns>("ID_BB_T_AUFTRAGSSTATUS")] = keyOf(keys_.orderStates, stateOf(isReleased, isClosed));
        heads_[at<headColumns>("STORNODATUM")] = drawCancelDay(random, order.day, options_);
        heads_[at<headColumns>("BEMERKUNG")] =
            random.chance(200) ? Variant{"Beginn mit dem Revierleiter abstimmen"} : Variant{Null{}};
        heads_[at<headColumns>("ID_PERSONAL")] = pickId(random, keys_.owners, 30);
        heads_[at<headColumns>("ID_BB_PLAN_KOPF")] =
            random.chance(900) ? Variant{random.between(1, options_.records)} : Variant{Null{}};
    }

    void setMeasure(Random& random, const Order& order, const Measure& measure, std::int32_t number)
    {
        measures_[at<measureColumns>("ID")] = ++measure_;
        measures_[at<measureColumns>("ID_BB_AUFTRAG_KOPF")] = order.number;
        measures_[at<measureColumns>("EINZELMASSNAHME_NR")] = number;
        measures_[at<measureColumns>("BEZEICHNUNG")] = std::string{measure.work->name} + " " + std::to_string(number);
        measures_[at<measureColumns>("STORNODATUM")] = drawCancelDay(random, measure.from, options_);
        measures_[at<measureColumns>("BEGINN")] = measure.from;
        measures_[at<measureColumns>("ENDE")] = measure.to;
        measures_[at<measureColumns>("MENGE")] = measure.quantity;
        measures_[at<measureColumns>("FLACHE")] = cents(random.between(0.2, 8.0));
        measures_[at<measureColumns>("STUNDEN_PLAN")] = measure.hours;
        measures_[at<measureColumns>("STUNDENSATZ")] = measure.rate;
        measures_[at<measureColumns>("KOSTEN_PLAN")] = measure.cost;
    }

    void setMeasureKeys(Random& random, const Order& order, const Work& work)
    {
        const Location& location = *order.location;
        measures_[at<measureColumns>("ID_LEISTUNGSART")] = keyOf(keys_.services, work.service);
        measures_[at<measureColumns>("ID_PRODUKT")] = keyOf(keys_.products, work.product);
        measures_[at<measureColumns>("ID_KOSTENSTELLE")] = location.costCentre;
        measures_[at<measureColumns>("ID_WALDORT")] = location.id;
        measures_[at<measureColumns>("ID_HOLZART")] = pickId(random, keys_.species, 30);
        measures_[at<measureColumns>("ID_BB_T_PRIORITAT")] = pickId(random, keys_.priorities, 30);
        measures_[at<measureColumns>("ID_BB_T_PROJEKT_PLANUNG")] = pickId(random, keys_.projects, 50);
        measures_[at<measureColumns>("ID_BB_T_LEI_ARBEITSVERFAHEREN")] = keyOf(keys_.techniques, work.technique);
        measures_[at<measureColumns>("ID_BB_T_OBJEKTE")] = pickId(random, keys_.facilities, 200);
        measures_[at<measureColumns>("ID_BB_T_VOLLZUGSMASSNAHME")] = keyOf(keys_.measures, work.measure);
        measures_[at<measureColumns>("ID_BB_T_KZ_LEISTUNG")] = keyOf(keys_.marks, work.mark);
        // Records of execution are written by the vouchers of cost accounting, one at least for each of their heads.
        measures_[at<measureColumns>("ID_BB_NATURALVOLLZUG_DSW")] =
            random.chance(800) ? Variant{random.between(1, options_.records)} : Variant{Null{}};
    }

    Rows<headColumns> heads_;
    Rows<measureColumns> measures_;
    const ReferenceOptions& options_;
    const Keys& keys_;
    std::int32_t measure_;
};

} // namespace

void writeOrders(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    Random random = randomOf(options, Stream::orders);
    OrderWriter writer{connection, options, keys};
    for (std::int32_t number = lastId(connection, "BB_AUFTRAG_KOPF") + 1; number <= options.records; ++number)
        writer.write(random, drawOrder(random, options, keys, number));
}

} // namespace tamarok::database::planning
