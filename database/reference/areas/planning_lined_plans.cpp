#include <algorithm>
#include <cmath>

#include "areas/planning.h"

#include "tamarok/convert.h"

// Yearly plans of the edition BB with their lines and the material of a line (list type BBPLAN).
namespace tamarok::database::planning {
namespace {

constexpr std::array headColumns{
    textColumn("PLAN_NUMMER"),
    textColumn("BEZEICHNUNG"),
    dayColumn("DATUM"),
    wholeColumn("JAHR"),
    dayColumn("GENEHMIGUNGSDATUM"),
    dayColumn("STORNODATUM"),
    textColumn("BEMERKUNG"),
    numberColumn("SUMME_STUNDEN"),
    numberColumn("SUMME_KOSTEN"),
    numberColumn("SUMME_ERLOESE"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_KOSTENSTELLE"),
    wholeColumn("ID_PERSONAL"),
    wholeColumn("ID_BB_T_PROJEKT_PLANUNG"),
    wholeColumn("ID_WALDORT"),
    wholeColumn("ID_BB_T_MASSNAHMETYP"),
    wholeColumn("ID_BB_T_PLANSTATUS"),
    wholeColumn("ID_BB_T_PRIORITAT"),
    wholeColumn("ID_BB_T_ZEITRAUM"),
};

constexpr std::array lineColumns{
    wholeColumn("ID_BB_PLAN_KOPF"),
    wholeColumn("ZEILE_NR"),
    numberColumn("MENGE"),
    numberColumn("FLACHE"),
    wholeColumn("STUECK"),
    numberColumn("STUNDEN"),
    numberColumn("STUNDENSATZ"),
    numberColumn("LOHNKOSTEN"),
    numberColumn("FREMDKOSTEN"),
    numberColumn("KOSTEN"),
    numberColumn("PREIS"),
    numberColumn("ERLOES"),
    wholeColumn("ID_LEISTUNGSART"),
    wholeColumn("ID_PRODUKT"),
    wholeColumn("ID_BB_T_LEI_ARBEITSVERFAHEREN"),
    wholeColumn("ID_BB_T_KZ_LEISTUNG"),
    wholeColumn("ID_BB_T_OBJEKTE"),
    wholeColumn("ID_BB_T_VOLLZUGSMASSNAHME"),
    wholeColumn("ID_BB_T_PLANMERKMAL"),
    wholeColumn("ID_WARENEINHEIT_MENGE"),
    wholeColumn("ID_WARENEINHEIT_FLACHE"),
    wholeColumn("ID_HOLZART"),
    wholeColumn("ID_HOLZSORTE"),
    wholeColumn("ID_BB_T_WILDART"),
    wholeColumn("ID_BB_T_GUGJP"),
    wholeColumn("ID_BB_T_STKLGJP"),
    wholeColumn("ID_BB_T_STUCK_VOL_BAUM"),
    wholeColumn("ID_BB_T_RUCKE_ENTFERN"),
};

constexpr std::array materialColumns{
    wholeColumn("ID_BB_PLAN"), numberColumn("MENGE"),          numberColumn("PREIS"),
    numberColumn("BETRAG"),    wholeColumn("ID_WARENKATALOG"), wholeColumn("ID_KOSTENART"),
    wholeColumn("ID_HOLZART"), wholeColumn("ID_BB_T_MONAT"),   wholeColumn("ID_WARENEINHEIT"),
};

/// A material with its share in the cost of a line.
struct Material {
    Variant article, unit;
    double quantity = 0.0, price = 0.0, amount = 0.0;
};

/// A line of a plan: its cost is own labour, hours times rate, plus the contractor and the material.
struct Line {
    const Work* work = nullptr;
    std::vector<Material> materials;
    double quantity = 0.0, hours = 0.0, rate = 0.0, labour = 0.0, contractor = 0.0, cost = 0.0, price = 0.0,
           revenue = 0.0;
};

struct Plan {
    std::int32_t number = 0;
    const Location* location = nullptr;
    const Work* work = nullptr;
    Date day;
    std::vector<Line> lines;
};

Line drawLine(Random& random, const Work& work)
{
    const Amount amount = drawAmount(random, work);
    Line line;
    line.work = &work;
    line.quantity = amount.quantity;
    line.rate = random.pick(std::array{28.5, 31.0, 33.4, 36.8});
    // Own workers do the small jobs, contractors the large ones.
    const bool isOwnWork = amount.hours < 60.0;
    line.hours = isOwnWork ? amount.hours : tenth(amount.hours * 0.1);
    line.labour = cents(line.hours * line.rate);
    line.contractor = isOwnWork ? 0.0 : amount.cost;
    line.cost = cents(line.labour + line.contractor);
    line.price = cents(work.revenue * random.between(0.9, 1.1));
    line.revenue = cents(line.quantity * line.price);
    return line;
}

class PlanWriter {
public:
    PlanWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        heads_{connection, "BB_PLAN_KOPF"}, lines_{connection, "BB_PLAN"}, materials_{connection, "BB_PLAN_MATERIAL"},
        options_{options}, keys_{keys}, states_{all(connection, "BB_T_PLANSTATUS")},
        periods_{all(connection, "BB_T_ZEITRAUM")}, lineMarks_{all(connection, "BB_T_PLANMERKMAL")},
        assortments_{all(connection, "HOLZSORTE")}, game_{idsOf(connection, "SELECT ID FROM BB_T_WILDART WHERE "
                                                                            "SCHALENWILD = 1 ORDER BY ID")},
        qualities_{all(connection, "BB_T_GUGJP")}, strengths_{all(connection, "BB_T_STKLGJP")},
        treeVolumes_{all(connection, "BB_T_STUCK_VOL_BAUM")},
        distances_{all(connection, "BB_T_RUCKE_ENTFERN")}, months_{all(connection, "BB_T_MONAT")},
        goods_{rowsOf(connection, "SELECT WARENKATALOG.ART_ID, WARENKATALOG.EINHPREIS, WARENGRUPPE.EINHEIT_ID FROM "
                                  "WARENKATALOG INNER JOIN WARENGRUPPE ON WARENGRUPPE.GRUPPE_ID = "
                                  "WARENKATALOG.GRUPPE_ID WHERE WARENKATALOG.MATERIALART = 1 AND "
                                  "ISNULL(WARENKATALOG.DISABLE,0) = 0 ORDER BY WARENKATALOG.ART_ID")},
        materialTypes_{idsOf(connection, "SELECT ID FROM KOSTENART WHERE TABLE_NAME = 'FORST' AND LAGERBUCHUNG = 1 "
                                         "ORDER BY ID")}
    {}

    void write(Random& random, std::int32_t planNumber)
    {
        const Plan plan = drawPlan(random, planNumber);
        writeHead(random, plan);
        std::int32_t number = 0;
        for (const Line& line : plan.lines) {
            ++line_;
            setLine(line, plan, ++number);
            setLineKeys(random, *line.work);
            lines_.insert();
            for (const Material& material : line.materials)
                writeMaterial(random, material);
        }
    }

private:
    static Ids all(ado::Connection& connection, std::string_view table)
    {
        return idsOf(connection, "SELECT ID FROM " + std::string{table} + " WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID");
    }

    Plan drawPlan(Random& random, std::int32_t number)
    {
        Plan plan;
        plan.number = number;
        plan.location = &random.pick(keys_.locations);
        plan.work = &random.pick(works);
        plan.day = drawDay(random, options_);
        const Work* work = plan.work;
        for (std::int32_t lines = random.between(1, 6); lines > 0; --lines) {
            plan.lines.push_back(drawLine(random, *work));
            if (isYoungStand(*work)) addMaterials(random, plan.lines.back());
            work = &drawRelated(random, *plan.work);
        }
        return plan;
    }

    static bool isYoungStand(const Work& work) { return work.mark == "30"; }

    /// Planting and tending need plants, posts and fences, for up to 1,500 euro each.
    void addMaterials(Random& random, Line& line)
    {
        for (std::int32_t count = goods_.empty() ? 0 : random.between(0, 3); count > 0; --count) {
            const std::vector<Variant>& article = random.pick(goods_);
            Material material;
            material.article = article.at(0);
            material.unit = article.at(2);
            material.price = article.at(1).isNull() ? 1.0 : cents(convert::toDouble(article.at(1)));
            const double most = 1500.0 / std::max(material.price, 0.1);
            material.quantity = std::max(1.0, std::round(most * random.between(0.1, 1.0)));
            material.amount = cents(material.quantity * material.price);
            line.cost = cents(line.cost + material.amount);
            line.materials.push_back(material);
        }
    }

    void writeHead(Random& random, const Plan& plan)
    {
        double hours = 0.0;
        double cost = 0.0;
        double revenue = 0.0;
        for (const Line& line : plan.lines) {
            hours += line.hours;
            cost += line.cost;
            revenue += line.revenue;
        }
        const Location& location = *plan.location;
        const std::int32_t year = yearOf(plan.day);
        heads_[at<headColumns>("PLAN_NUMMER")] = std::to_string(year) + "-" + paddedNumber(plan.number, 4);
        heads_[at<headColumns>("BEZEICHNUNG")] = std::string{plan.work->name} + " " + location.districtName;
        heads_[at<headColumns>("DATUM")] = plan.day;
        heads_[at<headColumns>("JAHR")] = year;
        heads_[at<headColumns>("GENEHMIGUNGSDATUM")] =
            random.chance(700) ? Variant{laterDay(plan.day, random.between(5, 45), options_)} : Variant{Null{}};
        heads_[at<headColumns>("STORNODATUM")] = drawCancelDay(random, plan.day, options_);
        heads_[at<headColumns>("BEMERKUNG")] =
            random.chance(250) ? Variant{"Abstimmung mit dem Waldbesitzer erforderlich"} : Variant{Null{}};
        heads_[at<headColumns>("SUMME_STUNDEN")] = tenth(hours);
        heads_[at<headColumns>("SUMME_KOSTEN")] = cents(cost);
        heads_[at<headColumns>("SUMME_ERLOESE")] = cents(revenue);
        heads_[at<headColumns>("ID_ACCESS_LEVELS")] = location.level;
        heads_[at<headColumns>("ID_KOSTENSTELLE")] = location.costCentre;
        heads_[at<headColumns>("ID_PERSONAL")] = pickId(random, keys_.owners);
        heads_[at<headColumns>("ID_BB_T_PROJEKT_PLANUNG")] = pickId(random, keys_.projects, 50);
        heads_[at<headColumns>("ID_WALDORT")] = location.id;
        heads_[at<headColumns>("ID_BB_T_MASSNAHMETYP")] = keyOf(keys_.measureTypes, plan.work->measureType);
        heads_[at<headColumns>("ID_BB_T_PLANSTATUS")] = pickId(random, states_);
        heads_[at<headColumns>("ID_BB_T_PRIORITAT")] = pickId(random, keys_.priorities, 30);
        heads_[at<headColumns>("ID_BB_T_ZEITRAUM")] = pickId(random, periods_, 30);
        heads_.insert();
    }

    void setLine(const Line& line, const Plan& plan, std::int32_t number)
    {
        const Work& work = *line.work;
        const bool byPiece = work.unit == "Stk";
        lines_[at<lineColumns>("ID_BB_PLAN_KOPF")] = plan.number;
        lines_[at<lineColumns>("ZEILE_NR")] = number;
        lines_[at<lineColumns>("MENGE")] = line.quantity;
        lines_[at<lineColumns>("STUECK")] =
            byPiece ? Variant{static_cast<std::int32_t>(line.quantity)} : Variant{Null{}};
        lines_[at<lineColumns>("STUNDEN")] = line.hours;
        lines_[at<lineColumns>("STUNDENSATZ")] = line.rate;
        lines_[at<lineColumns>("LOHNKOSTEN")] = line.labour;
        lines_[at<lineColumns>("FREMDKOSTEN")] = line.contractor;
        lines_[at<lineColumns>("KOSTEN")] = line.cost;
        lines_[at<lineColumns>("PREIS")] = line.price;
        lines_[at<lineColumns>("ERLOES")] = line.revenue;
        lines_[at<lineColumns>("ID_LEISTUNGSART")] = keyOf(keys_.services, work.service);
        lines_[at<lineColumns>("ID_PRODUKT")] = keyOf(keys_.products, work.product);
        lines_[at<lineColumns>("ID_BB_T_LEI_ARBEITSVERFAHEREN")] = keyOf(keys_.techniques, work.technique);
        lines_[at<lineColumns>("ID_BB_T_KZ_LEISTUNG")] = keyOf(keys_.marks, work.mark);
        lines_[at<lineColumns>("ID_BB_T_VOLLZUGSMASSNAHME")] = keyOf(keys_.measures, work.measure);
        lines_[at<lineColumns>("ID_WARENEINHEIT_MENGE")] = keyOf(keys_.units, work.unit);
        lines_[at<lineColumns>("ID_WARENEINHEIT_FLACHE")] = keyOf(keys_.units, "ha");
    }

    /// The keys of timber belong to lines that yield timber, the game that damages a stand to those of young stands.
    void setLineKeys(Random& random, const Work& work)
    {
        const bool isTimber = work.yieldsTimber;
        const auto whenTimber = [&](const Ids& ids) { return isTimber ? pickId(random, ids, 50) : Variant{Null{}}; };
        lines_[at<lineColumns>("FLACHE")] = cents(random.between(0.2, 9.0));
        lines_[at<lineColumns>("ID_BB_T_OBJEKTE")] = pickId(random, keys_.facilities, 200);
        lines_[at<lineColumns>("ID_BB_T_PLANMERKMAL")] = pickId(random, lineMarks_, 300);
        lines_[at<lineColumns>("ID_HOLZART")] = pickId(random, keys_.species, 50);
        lines_[at<lineColumns>("ID_HOLZSORTE")] = whenTimber(assortments_);
        lines_[at<lineColumns>("ID_BB_T_WILDART")] = isYoungStand(work) ? pickId(random, game_, 400) : Variant{Null{}};
        lines_[at<lineColumns>("ID_BB_T_GUGJP")] = whenTimber(qualities_);
        lines_[at<lineColumns>("ID_BB_T_STKLGJP")] = whenTimber(strengths_);
        lines_[at<lineColumns>("ID_BB_T_STUCK_VOL_BAUM")] = whenTimber(treeVolumes_);
        lines_[at<lineColumns>("ID_BB_T_RUCKE_ENTFERN")] = whenTimber(distances_);
    }

    void writeMaterial(Random& random, const Material& material)
    {
        materials_[at<materialColumns>("ID_BB_PLAN")] = line_;
        materials_[at<materialColumns>("MENGE")] = material.quantity;
        materials_[at<materialColumns>("PREIS")] = material.price;
        materials_[at<materialColumns>("BETRAG")] = material.amount;
        materials_[at<materialColumns>("ID_WARENKATALOG")] = material.article;
        materials_[at<materialColumns>("ID_KOSTENART")] = pickId(random, materialTypes_);
        materials_[at<materialColumns>("ID_HOLZART")] = pickId(random, keys_.species, 300);
        materials_[at<materialColumns>("ID_BB_T_MONAT")] = pickId(random, months_);
        materials_[at<materialColumns>("ID_WARENEINHEIT")] = material.unit;
        materials_.insert();
    }

    Rows<headColumns> heads_;
    Rows<lineColumns> lines_;
    Rows<materialColumns> materials_;
    const ReferenceOptions& options_;
    const Keys& keys_;
    Ids states_, periods_, lineMarks_, assortments_, game_, qualities_, strengths_, treeVolumes_, distances_, months_;
    std::vector<std::vector<Variant>> goods_; ///< article, price and unit of the materials
    Ids materialTypes_;
    std::int32_t line_ = 0; ///< a new database numbers the rows of BB_PLAN from 1
};

} // namespace

void writeLinedPlans(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    Random random = randomOf(options, Stream::linedPlans);
    PlanWriter writer{connection, options, keys};
    for (std::int32_t number = 1; number <= options.records; ++number)
        writer.write(random, number);
}

} // namespace tamarok::database::planning
