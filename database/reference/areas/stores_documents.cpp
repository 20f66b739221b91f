#include <array>
#include <vector>

#include "areas/stores.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t documentStream = 5'000'000'000'101;

constexpr std::array headColumns{
    textColumn("BELEGNUMMER"),     wholeColumn("ID_ACCESS_LEVELS"),
    textColumn("BELEGART"),        flagColumn("EINNAHME"),
    dayColumn("BELEGDATUM"),       dayColumn("BUCHUNGSDATUM"),
    dayColumn("FALLIG_AM"),        dayColumn("BEZAHLT_AM"),
    wholeColumn("ID_PERSONAL"),    wholeColumn("ID_BB_T_ZAHLART"),
    wholeColumn("ID_USERS"),       textColumn("KONTO"),
    textColumn("GEGENKONTO"),      textColumn("KOSTENSTELLE"),
    textColumn("BUCHUNGSTEXT"),    textColumn("EXTERNE_NUMMER"),
    numberColumn("MWST"),          numberColumn("NETTOBETRAG"),
    numberColumn("MWST_BETRAG"),   numberColumn("BRUTTOBETRAG"),
    numberColumn("SKONTO"),        textColumn("BEMERKUNG"),
    dayColumn("ERSTELLUNGSDATUM"), dayColumn("STORNODATUM"),
};
constexpr std::array lineColumns{
    wholeColumn("ID"),
    wholeColumn("ID_SCH_BELEGE_KOPF"),
    wholeColumn("ZEILE"),
    wholeColumn("ID_OBJEKT"),
    wholeColumn("ID_AUFTRAGSNUMMER"),
    textColumn("BEZEICHNUNG"),
    numberColumn("MENGE"),
    numberColumn("EINZELPREIS"),
    numberColumn("BETRAG"),
    numberColumn("KOSTEN"),
    numberColumn("ERLOSE"),
    wholeColumn("ID_NN_POSITIONEN"),
    textColumn("BEMERKUNG"),
};

consteval std::size_t head(std::string_view name)
{
    return placeOf(headColumns, name);
}
consteval std::size_t line(std::string_view name)
{
    return placeOf(lineColumns, name);
}

/// What a voucher is about: its account, its lines' text and the range of their unit prices in euro.
struct Matter {
    bool isReceipt;
    std::string_view kind;    ///< BELEGART
    std::string_view account; ///< of costs or proceeds
    std::string_view text;
    double lowest, highest;
    double taxRate; ///< in percent
};
constexpr std::array<Matter, 14> matters{{
    {false, "Eingangsrechnung", "5000", "Unternehmerleistung Rückung", 38.0, 95.0, 20.0},
    {false, "Eingangsrechnung", "5100", "Forstpflanzen", 0.6, 2.4, 13.0},
    {false, "Eingangsrechnung", "5200", "Zaunmaterial", 3.5, 14.0, 20.0},
    {false, "Eingangsrechnung", "5300", "Reparatur Maschinen", 45.0, 160.0, 20.0},
    {false, "Kassenbeleg", "5310", "Treibstoff", 1.35, 1.85, 20.0},
    {false, "Kassenbeleg", "5320", "Kettenöl und Schmierstoffe", 2.8, 9.5, 20.0},
    {false, "Bankbeleg", "5400", "Wegeerhaltung Schotter", 12.0, 26.0, 20.0},
    {false, "Bankbeleg", "5500", "Versicherungsprämie", 80.0, 900.0, 0.0},
    {true, "Ausgangsrechnung", "4000", "Holzverkauf ab Waldstraße", 48.0, 112.0, 13.0},
    {true, "Ausgangsrechnung", "4050", "Brennholz", 55.0, 95.0, 13.0},
    {true, "Ausgangsrechnung", "4100", "Wildbret", 3.6, 7.2, 10.0},
    {true, "Ausgangsrechnung", "4110", "Jagdpacht", 6.0, 22.0, 20.0},
    {true, "Kassenbeleg", "4200", "Schmuckreisig", 4.0, 18.0, 10.0},
    {true, "Bankbeleg", "4300", "Maschineneinsatz für Dritte", 60.0, 180.0, 20.0},
}};

constexpr std::string_view cashVoucher = "Kassenbeleg";

constexpr std::array<std::string_view, 4> bankAccounts{"2700", "2800", "2810", "3300"};
constexpr std::array<std::string_view, 5> remarks{"Teilzahlung vereinbart", "Beleg nachgereicht", "Skonto abgezogen",
                                                  "Mit Gutschrift verrechnet", "Freigabe durch Betriebsleitung"};

struct Line {
    double quantity, price, amount;
};

/// The keys to which documents refer.
struct Keys {
    explicit Keys(ado::Connection& connection) :
        customers{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE KUNDE = 1 ORDER BY ID_PERSONAL")},
        suppliers{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE GRUPPE IN ('Unternehmer','Handel') "
                                    "ORDER BY ID_PERSONAL")},
        cash{idsOf(connection, "SELECT ID FROM BB_T_ZAHLART WHERE SHORT = 'BZ'")},
        transfers{idsOf(connection, "SELECT ID FROM BB_T_ZAHLART WHERE SHORT IN ('UE','BA') ORDER BY ID")},
        users{idsOf(connection, "SELECT ID FROM USERS ORDER BY ID")},
        levels{idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE RIGHT(ACCESS_LEVELS,4) <> '0000' ORDER BY ID")},
        objects{idsOf(connection, "SELECT ID FROM OBJEKT ORDER BY ID")},
        orders{idsOf(connection, "SELECT ID FROM BB_T_AUFTRAGS_PLANUNG ORDER BY ID")},
        articles{idsOf(connection, "SELECT TOP 1000 NN_ID FROM NN_POSITIONEN ORDER BY NN_ID")}
    {
        for (const auto& row : rowsOf(connection, "SELECT NUMBER FROM KOSTENSTELLE WHERE TABLE_NAME = 'FORST' "
                                                  "ORDER BY ID"))
            costCentres.push_back(convert::toText(row[0]));
    }

    std::vector<std::int32_t> customers, suppliers, cash, transfers, users, levels, objects, orders;
    std::vector<std::int32_t> articles; ///< NN_POSITIONEN.NN_ID of article positions, by which lines are billed
    std::vector<std::string> costCentres;
};

std::vector<Line> drawLines(Random& random, const Matter& matter)
{
    constexpr std::int32_t mostLines = 6;
    std::vector<Line> lines;
    const std::int32_t count = random.between(1, mostLines);
    for (std::int32_t i = 0; i < count; ++i) {
        const double quantity = random.chance(500) ? random.between(1, 40) : random.tenths(5, 400);
        const double price = cents(random.between(matter.lowest, matter.highest));
        lines.push_back({quantity, price, cents(quantity * price)});
    }
    return lines;
}

/// The net amount is the sum of the lines; discount is part of the gross amount.
void setAmounts(BulkInsert& row, Random& random, const Matter& matter, const std::vector<Line>& lines)
{
    constexpr double discountRate = 0.02;
    double net = 0.0;
    for (const Line& one : lines)
        net += one.amount;
    net = cents(net);
    const double tax = cents(net * matter.taxRate / 100.0);
    row[head("MWST")] = matter.taxRate;
    row[head("NETTOBETRAG")] = net;
    row[head("MWST_BETRAG")] = tax;
    row[head("BRUTTOBETRAG")] = cents(net + tax);
    row[head("SKONTO")] = random.chance(250) ? cents((net + tax) * discountRate) : 0.0;
}

void setDays(BulkInsert& row, Random& random, const ReferenceOptions& options, std::int32_t number)
{
    constexpr std::int32_t termOfPayment = 30;
    const Date day = drawDay(random, options);
    const Date booked = laterDay(day, random.between(0, 12), options);
    const Date due{day.days + termOfPayment};
    row[head("BELEGNUMMER")] = "BB" + shortYear(day) + "-" + paddedNumber(number, 5);
    row[head("BELEGDATUM")] = day;
    row[head("BUCHUNGSDATUM")] = booked;
    row[head("FALLIG_AM")] = due;
    if (due < options.baseDate && random.chance(900))
        row[head("BEZAHLT_AM")] = laterDay(day, random.between(5, 45), options);
    row[head("ERSTELLUNGSDATUM")] = booked;
    row[head("STORNODATUM")] = drawCancelDay(random, booked, options);
}

void setHead(BulkInsert& row, Random& random, const Matter& matter, const Keys& keys)
{
    row[head("ID_ACCESS_LEVELS")] = random.pick(keys.levels);
    row[head("BELEGART")] = matter.kind;
    row[head("EINNAHME")] = matter.isReceipt;
    row[head("ID_PERSONAL")] = pickId(random, matter.isReceipt ? keys.customers : keys.suppliers, 10);
    row[head("ID_BB_T_ZAHLART")] = pickId(random, matter.kind == cashVoucher ? keys.cash : keys.transfers, 10);
    row[head("ID_USERS")] = random.pick(keys.users);
    row[head("KONTO")] = matter.account;
    row[head("GEGENKONTO")] = random.pick(bankAccounts);
    row[head("KOSTENSTELLE")] = random.pick(keys.costCentres);
    row[head("BUCHUNGSTEXT")] = matter.text;
    if (!matter.isReceipt) row[head("EXTERNE_NUMMER")] = "RE" + std::to_string(random.between(10000, 999999));
    if (random.chance(150)) row[head("BEMERKUNG")] = random.pick(remarks);
}

void setLine(BulkInsert& row, Random& random, const Matter& matter, const Line& one, const Keys& keys)
{
    row[line("ID_OBJEKT")] = pickId(random, keys.objects, 30);
    row[line("ID_AUFTRAGSNUMMER")] = pickId(random, keys.orders, 30);
    row[line("BEZEICHNUNG")] = matter.text;
    row[line("MENGE")] = one.quantity;
    row[line("EINZELPREIS")] = one.price;
    row[line("BETRAG")] = one.amount;
    row[matter.isReceipt ? line("ERLOSE") : line("KOSTEN")] = one.amount;
    row[line("ID_NN_POSITIONEN")] = pickId(random, keys.articles, 600);
    if (random.chance(80)) row[line("BEMERKUNG")] = "laut Lieferschein";
}

} // namespace

void writeDocumentBook(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, documentStream};
    const Keys keys{connection};
    BulkInsert document{connection, "SCH_BELEGE_KOPF", headColumns};
    BulkInsert position{connection, "SCH_BELEGE", lineColumns};
    std::int32_t lineId = lastId(connection, "SCH_BELEGE");
    for (std::int32_t id = 1; id <= options.records; ++id) {
        const Matter& matter = random.pick(matters);
        const std::vector<Line> lines = drawLines(random, matter);
        document.clear();
        setDays(document, random, options, id);
        setHead(document, random, matter, keys);
        setAmounts(document, random, matter, lines);
        document.insert();
        std::int32_t number = 0;
        for (const Line& one : lines) {
            position.clear();
            position[line("ID")] = ++lineId;
            position[line("ID_SCH_BELEGE_KOPF")] = id;
            position[line("ZEILE")] = ++number;
            setLine(position, random, matter, one, keys);
            position.insert();
        }
    }
}

} // namespace tamarok::database
