#include "areas/planning.h"

// The order catalogue (list type AKAT): planned orders, and for each of them the values that a new timber list head, a
// new measured line and its settlements take from it.
namespace tamarok::database::planning {
namespace {

constexpr std::array orderColumns{
    textColumn("NUMMER"),
    textColumn("[SHORT]"),
    textColumn("[LONG]"),
    flagColumn("ABGESCHLOSSEN"),
    numberColumn("IST_STUNDEN_ZV"),
    dayColumn("ERSTELLERDATUM"),
    dayColumn("GUELTIG_VON"),
    dayColumn("GUELTIG_BIS"),
    numberColumn("PLAN_STUNDEN"),
    numberColumn("PLAN_MENGE"),
    numberColumn("PLAN_KOSTEN"),
    textColumn("BEMERKUNG"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_USER"),
    wholeColumn("ID_BB_T_PROJEKT_PLANUNG"),
    flagColumn("DISABLE"),
};

constexpr std::array listColumns{
    wholeColumn("ID_BB_T_AUFTRAGS_PLANUNG"),
    wholeColumn("FWJ"),
    textColumn("TEXT1"),
    textColumn("TEXT2"),
    textColumn("TEXT3"),
    textColumn("TEXT4"),
    textColumn("TEXT5"),
    numberColumn("NUMBER1"),
    numberColumn("NUMBER2"),
    dayColumn("DATE1"),
    dayColumn("DATE2"),
};

constexpr std::size_t freeLists = 10;
constexpr std::array logColumns{
    wholeColumn("ID_BB_T_AUFTRAGS_PLANUNG"),
    textColumn("HA"),
    textColumn("HS"),
    textColumn("GKL"),
    numberColumn("LAENGE"),
    textColumn("NA"),
    wholeColumn("ID_EST"),
    wholeColumn("RELTABLE1"),
    wholeColumn("RELTABLE2"),
    wholeColumn("RELTABLE3"),
    wholeColumn("RELTABLE4"),
    wholeColumn("RELTABLE5"),
    wholeColumn("RELTABLE6"),
    wholeColumn("RELTABLE7"),
    wholeColumn("RELTABLE8"),
    wholeColumn("RELTABLE9"),
    wholeColumn("RELTABLE10"),
    wholeColumn("ID_PRODUKT_KLR"),
    wholeColumn("ID_OBJEKT_KLR"),
    wholeColumn("ID_VERFAHREN_KLR"),
};

/// Partner, contract and price of the invoice R and of the settlements A1 to A8, after the order.
constexpr std::size_t versions = 9;
constexpr std::array settlementColumns{
    wholeColumn("ID_BB_T_AUFTRAGS_PLANUNG"),
    wholeColumn("R_KUNDE"),
    wholeColumn("R_ID_VERTRAG"),
    numberColumn("R_PREIS"),
    wholeColumn("A1_KUNDE"),
    wholeColumn("A1_ID_VERTRAG"),
    numberColumn("A1_PREIS"),
    wholeColumn("A2_KUNDE"),
    wholeColumn("A2_ID_VERTRAG"),
    numberColumn("A2_PREIS"),
    wholeColumn("A3_KUNDE"),
    wholeColumn("A3_ID_VERTRAG"),
    numberColumn("A3_PREIS"),
    wholeColumn("A4_KUNDE"),
    wholeColumn("A4_ID_VERTRAG"),
    numberColumn("A4_PREIS"),
    wholeColumn("A5_KUNDE"),
    wholeColumn("A5_ID_VERTRAG"),
    numberColumn("A5_PREIS"),
    wholeColumn("A6_KUNDE"),
    wholeColumn("A6_ID_VERTRAG"),
    numberColumn("A6_PREIS"),
    wholeColumn("A7_KUNDE"),
    wholeColumn("A7_ID_VERTRAG"),
    numberColumn("A7_PREIS"),
    wholeColumn("A8_KUNDE"),
    wholeColumn("A8_ID_VERTRAG"),
    numberColumn("A8_PREIS"),
};
static_assert(settlementColumns.size() == 1 + versions * 3);

/// A timber order as a new measured line begins: assortments with the lengths in which they are cut.
struct Assortment {
    std::string_view code;
    double length;
    double price; ///< euro per cubic metre
};
constexpr std::array<Assortment, 6> assortments{{
    {"BL", 4.1, 96.0},
    {"LA", 12.0, 88.0},
    {"AB", 4.0, 92.0},
    {"IF", 2.0, 38.0},
    {"SH", 2.0, 41.0},
    {"BR", 1.0, 62.0},
}};
constexpr std::array<std::string_view, 6> species{"FI", "TA", "KI", "LA", "BU", "EI"};
constexpr std::array<std::string_view, 3> qualities{"A", "B", "C"};
constexpr std::array<std::string_view, 4> fellings{"VD", "EK", "EF", "ZN"};
constexpr std::array<std::string_view, 4> removals{"Abfuhr ganzjährig", "Abfuhr nur bei Frost", "Abfuhr ab Mai",
                                                   "Abfuhr vor der Brutzeit"};

class CatalogueWriter {
public:
    CatalogueWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        orders_{connection, "BB_T_AUFTRAGS_PLANUNG"}, lists_{connection, "BB_T_AUFTRAGS_LISTENKOPF"},
        logs_{connection, "BB_T_AUFTRAGS_LOGS"}, settlements_{connection, "BB_T_AUFTRAGS_LOGS_RECH"},
        stages_{idsOf(connection, "SELECT ID_STRING FROM STAMM_TABELLEN WHERE LABEL_GROUP = 'EST' ORDER BY "
                                  "ID_STRING")},
        options_{options}, keys_{keys}, last_{lastId(connection, "BB_T_AUFTRAGS_PLANUNG")}
    {
        for (std::size_t list = 0; list < freeLists; ++list)
            freeLists_.at(list) =
                idsOf(connection,
                      "SELECT ID FROM RELTABLE WHERE RELTABLE_ID = " + std::to_string(11 + list) + " ORDER BY ID");
    }

    void write(Random& random, std::int32_t number)
    {
        const Work& work = random.pick(works);
        const Date day = drawDay(random, options_);
        if (number > last_) writeOrder(random, work, day, number);
        writeListHead(random, day, number);
        const Assortment& assortment = random.pick(assortments);
        writeLog(random, work, assortment, number);
        writeSettlement(random, assortment, number);
    }

private:
    void writeOrder(Random& random, const Work& work, Date day, std::int32_t number)
    {
        const Location& location = random.pick(keys_.locations);
        const Amount amount = drawAmount(random, work);
        const bool isClosed = day.days < options_.baseDate.days - 365.0;
        orders_[at<orderColumns>("NUMMER")] = std::to_string(240000 + number);
        orders_[at<orderColumns>("[SHORT]")] = "Auftrag " + std::to_string(number);
        orders_[at<orderColumns>("[LONG]")] = std::string{work.name} + " " + location.districtName;
        orders_[at<orderColumns>("ABGESCHLOSSEN")] = isClosed;
        orders_[at<orderColumns>("IST_STUNDEN_ZV")] = tenth(amount.hours * random.between(0.2, 1.2));
        orders_[at<orderColumns>("ERSTELLERDATUM")] = day;
        orders_[at<orderColumns>("GUELTIG_VON")] = Date{day.days + 7.0};
        orders_[at<orderColumns>("GUELTIG_BIS")] = Date{day.days + random.between(90, 365)};
        orders_[at<orderColumns>("PLAN_STUNDEN")] = amount.hours;
        orders_[at<orderColumns>("PLAN_MENGE")] = amount.quantity;
        orders_[at<orderColumns>("PLAN_KOSTEN")] = amount.cost;
        orders_[at<orderColumns>("BEMERKUNG")] =
            random.chance(250) ? Variant{"Anweisung des Forstamts beachten"} : Variant{Null{}};
        orders_[at<orderColumns>("ID_ACCESS_LEVELS")] = location.level;
        orders_[at<orderColumns>("ID_USER")] = pickId(random, keys_.users);
        orders_[at<orderColumns>("ID_BB_T_PROJEKT_PLANUNG")] = pickId(random, keys_.projects, 30);
        orders_[at<orderColumns>("DISABLE")] = random.chance(30);
        orders_.insert();
    }

    void writeListHead(Random& random, Date day, std::int32_t number)
    {
        lists_[at<listColumns>("ID_BB_T_AUFTRAGS_PLANUNG")] = number;
        lists_[at<listColumns>("FWJ")] = yearOf(day);
        lists_[at<listColumns>("TEXT1")] = "Auftrag " + std::to_string(240000 + number);
        lists_[at<listColumns>("TEXT2")] = random.pick(keys_.locations).districtName;
        lists_[at<listColumns>("TEXT3")] = random.pick(removals);
        lists_[at<listColumns>("TEXT4")] = random.chance(600) ? Variant{"Vermessung am Werk"} : Variant{Null{}};
        lists_[at<listColumns>("TEXT5")] = random.chance(300) ? Variant{"PEFC-zertifiziert"} : Variant{Null{}};
        lists_[at<listColumns>("NUMBER1")] = random.between(20, 400);
        lists_[at<listColumns>("NUMBER2")] = tenth(random.between(0.5, 12.0));
        lists_[at<listColumns>("DATE1")] = day;
        lists_[at<listColumns>("DATE2")] = Date{day.days + random.between(30, 180)};
        lists_.insert();
    }

    void writeLog(Random& random, const Work& work, const Assortment& assortment, std::int32_t number)
    {
        logs_[at<logColumns>("ID_BB_T_AUFTRAGS_PLANUNG")] = number;
        logs_[at<logColumns>("HA")] = random.pick(species);
        logs_[at<logColumns>("HS")] = assortment.code;
        logs_[at<logColumns>("GKL")] = random.pick(qualities);
        logs_[at<logColumns>("LAENGE")] = assortment.length;
        logs_[at<logColumns>("NA")] = random.pick(fellings);
        logs_[at<logColumns>("ID_EST")] = pickId(random, stages_, 100);
        for (std::size_t list = 0; list < freeLists; ++list)
            logs_[at<logColumns>("RELTABLE1") + list] = pickId(random, freeLists_.at(list), 200);
        logs_[at<logColumns>("ID_PRODUKT_KLR")] = keyOf(keys_.products, work.product);
        logs_[at<logColumns>("ID_OBJEKT_KLR")] = pickId(random, keys_.objects, 50);
        logs_[at<logColumns>("ID_VERFAHREN_KLR")] = keyOf(keys_.methods, work.method);
        logs_.insert();
    }

    /// The buyer pays the invoice; settlements with contractors, carriers and owners are fractions of its price.
    void writeSettlement(Random& random, const Assortment& assortment, std::int32_t number)
    {
        settlements_.clear();
        settlements_[at<settlementColumns>("ID_BB_T_AUFTRAGS_PLANUNG")] = number;
        for (std::size_t version = 0; version < versions; ++version) {
            if (version > 2 && !random.chance(500)) continue;
            const std::size_t place = 1 + version * 3;
            const double share = version == 0 ? 1.0 : random.between(0.05, 0.3);
            settlements_[place] = pickId(random, partnersOf(version));
            settlements_[place + 1] = pickId(random, keys_.contracts, 300);
            settlements_[place + 2] = cents(assortment.price * share * random.between(0.95, 1.05));
        }
        settlements_.insert();
    }

    /// Who settles a version: the buyer, the carrier, contractors, and the owner at last.
    const Ids& partnersOf(std::size_t version) const
    {
        if (version == 0) return keys_.customers;
        if (version == 1) return keys_.carriers;
        return version + 1 == versions ? keys_.owners : keys_.contractors;
    }

    Rows<orderColumns> orders_;
    Rows<listColumns> lists_;
    Rows<logColumns> logs_;
    Rows<settlementColumns> settlements_;
    std::array<Ids, freeLists> freeLists_;
    Ids stages_;
    const ReferenceOptions& options_;
    const Keys& keys_;
    std::int32_t last_;
};

} // namespace

void writeCatalogue(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    Random random = randomOf(options, Stream::catalogue);
    CatalogueWriter writer{connection, options, keys};
    for (std::int32_t number = 1; number <= options.records; ++number)
        writer.write(random, number);
}

} // namespace tamarok::database::planning
