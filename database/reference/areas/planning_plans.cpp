#include "areas/planning.h"

// Plans of quantity, hours, cost and revenue (list type PLAN).
namespace tamarok::database::planning {
namespace {

constexpr std::array columns{
    textColumn("PLANNUMMER"),
    textColumn("BEZEICHNUNG"),
    textColumn("BESCHREIBUNG"),
    wholeColumn("JAHR"),
    dayColumn("DATUM"),
    dayColumn("DATUM_VON"),
    dayColumn("DATUM_BIS"),
    numberColumn("MENGE"),
    numberColumn("STUNDEN"),
    numberColumn("KOSTEN"),
    numberColumn("ERLOESE"),
    numberColumn("DECKUNGSBEITRAG"),
    flagColumn("GENEHMIGT"),
    flagColumn("ABGESCHLOSSEN"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_USER"),
    wholeColumn("ID_PRODUKT"),
    wholeColumn("ID_OBJEKT"),
    wholeColumn("ID_VERFAHREN"),
    wholeColumn("ID_BB_T_PROJEKT_PLANUNG"),
    wholeColumn("ID_BB_T_AUFTRAGS_PLANUNG"),
};
using PlanRows = Rows<columns>;

void setNames(PlanRows& rows, Random& random, const ReferenceOptions& options, const Work& work,
              const Location& location, std::int32_t number)
{
    const Date day = drawDay(random, options);
    const std::int32_t year = yearOf(day) + (toCivil(day).month > 9 ? 1 : 0);
    rows[at<columns>("PLANNUMMER")] = "P" + std::to_string(year) + "-" + paddedNumber(number, 4);
    rows[at<columns>("BEZEICHNUNG")] = std::string{work.name} + " " + location.districtName;
    rows[at<columns>("BESCHREIBUNG")] =
        std::string{work.name} + " in " + location.name + ", Planung " + std::to_string(year);
    rows[at<columns>("JAHR")] = year;
    rows[at<columns>("DATUM")] = day;
    const Date begin{day.days + random.between(20, 90)};
    rows[at<columns>("DATUM_VON")] = begin;
    rows[at<columns>("DATUM_BIS")] = Date{begin.days + random.between(20, 120)};
    const bool isApproved = random.chance(800);
    rows[at<columns>("GENEHMIGT")] = isApproved;
    rows[at<columns>("ABGESCHLOSSEN")] = isApproved && day.days < options.baseDate.days - 300.0;
}

/// The contribution margin is the revenue less the cost.
void setAmounts(PlanRows& rows, Random& random, const Work& work)
{
    const Amount amount = drawAmount(random, work);
    const double revenue = cents(amount.quantity * work.revenue * random.between(0.9, 1.1));
    rows[at<columns>("MENGE")] = amount.quantity;
    rows[at<columns>("STUNDEN")] = amount.hours;
    rows[at<columns>("KOSTEN")] = amount.cost;
    rows[at<columns>("ERLOESE")] = revenue;
    rows[at<columns>("DECKUNGSBEITRAG")] = cents(revenue - amount.cost);
}

} // namespace

void writePlans(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    Random random = randomOf(options, Stream::plans);
    const Ids orders = idsOf(connection, "SELECT ID FROM BB_T_AUFTRAGS_PLANUNG ORDER BY ID");
    PlanRows rows{connection, "PLAN_KOPF"};
    for (std::int32_t number = 1; number <= options.records; ++number) {
        const Work& work = random.pick(works);
        const Location& location = random.pick(keys.locations);
        setNames(rows, random, options, work, location, number);
        setAmounts(rows, random, work);
        rows[at<columns>("ID_ACCESS_LEVELS")] = location.level;
        rows[at<columns>("ID_USER")] = pickId(random, keys.users);
        rows[at<columns>("ID_PRODUKT")] = keyOf(keys.products, work.product);
        rows[at<columns>("ID_OBJEKT")] = pickId(random, keys.objects, 50);
        rows[at<columns>("ID_VERFAHREN")] = keyOf(keys.methods, work.method);
        rows[at<columns>("ID_BB_T_PROJEKT_PLANUNG")] = pickId(random, keys.projects, 50);
        rows[at<columns>("ID_BB_T_AUFTRAGS_PLANUNG")] = pickId(random, orders, 50);
        rows.insert();
    }
}

} // namespace tamarok::database::planning
