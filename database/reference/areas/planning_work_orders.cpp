#include <algorithm>
#include <cmath>

#include "areas/planning.h"

// Work orders and their planned form. The planned order and the work order of one number describe the same work, so
// that a position can be compared with its counterpart; a position that was not carried out has none.
namespace tamarok::database::planning {
namespace {

/// The columns that both heads have. An order is closed by ABGENSCHLOSEN.
constexpr std::array headColumns{
    wholeColumn("ID"),
    textColumn("NAME"),
    textColumn("PLANUNG_LANG"),
    textColumn("BESCHREIBUNG"),
    textColumn("NAME_FWJ"),
    textColumn("NAME_REVIER"),
    wholeColumn("NAME_NUMMER"),
    flagColumn("ABGENSCHLOSEN"),
    dayColumn("DATUM_VON"),
    dayColumn("DATUM_BIS"),
    dayColumn("ERSTELLDATUM"),
    wholeColumn("JAHR"),
    wholeColumn("PRIORITAET"),
    numberColumn("SOLL_STUNDEN"),
    numberColumn("SOLL_KOSTEN"),
    wholeColumn("ID_WALDORT"),
    wholeColumn("ID_PRODUKT"),
    wholeColumn("ID_OBJEKT"),
    wholeColumn("ID_VERFAHREN"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("PERSONAL_ID"),
    wholeColumn("ID_UNTERNEHMER"),
    wholeColumn("ID_KOSTENSTELLE"),
    wholeColumn("ID_HH_KAPITEL"),
    wholeColumn("ID_HH_TITEL"),
    wholeColumn("ID_PA_GRUPPE"),
    wholeColumn("RELTABLE1"),
    wholeColumn("RELTABLE2"),
};
constexpr auto orderColumns = [] {
    std::array<BulkInsert::Column, headColumns.size() + 1> all{};
    std::ranges::copy(headColumns, all.begin());
    all.back() = wholeColumn("PRODUKT_ID");
    return all;
}();

/// The columns of a position; the last two name its head and its counterpart.
constexpr std::array positionColumns{
    wholeColumn("ID"),
    wholeColumn("ORDERS"),
    textColumn("DATUM_NR"),
    dayColumn("DATUM"),
    numberColumn("STUNDEN"),
    numberColumn("MENGE"),
    numberColumn("PREIS"),
    numberColumn("KOSTEN"),
    numberColumn("FESTMETER"),
    wholeColumn("ARBEITER"),
    wholeColumn("LEISTUNGSART_ID"),
    wholeColumn("ID_WARENEINHEIT"),
    wholeColumn("ID_KOSTENART"),
    wholeColumn("ARBEITSAUFTRAG_KOPF_ID"),
    wholeColumn("ID_ARBEITSAUFTRAG_PLANN"),
};
constexpr auto plannedPositionColumns = [] {
    auto all = positionColumns;
    all[all.size() - 2] = wholeColumn("ARBEITSAUFTRAG_KOPF_PLANN_ID");
    all[all.size() - 1] = wholeColumn("ID_ARBEITSAUFTRAG");
    return all;
}();
constexpr std::size_t headOfPosition = positionColumns.size() - 2;
constexpr std::size_t counterpart = positionColumns.size() - 1;

constexpr std::array voucherColumns{
    wholeColumn("ARBEITSAUFTRAG_ID"),
    textColumn("BELEGNUMMER"),
    wholeColumn("ZEILE"),
    dayColumn("DATUM"),
    dayColumn("BUCHUNGSDATUM"),
    wholeColumn("JAHR"),
    numberColumn("STUNDEN"),
    numberColumn("MENGE"),
    wholeColumn("ID_WARENEINHEIT"),
    numberColumn("PREIS"),
    numberColumn("BETRAG"),
    numberColumn("MWST"),
    numberColumn("MWST_BETRAG"),
    numberColumn("BRUTTO"),
    wholeColumn("ID_ZUHLUNGSART"),
    wholeColumn("ID_ZUHLUNGSGRUND"),
};

constexpr std::array executionColumns{
    wholeColumn("ID_BELEGE"),      numberColumn("FLAECHE"),         numberColumn("MENGE"),
    wholeColumn("STUECK"),         wholeColumn("BESTANDESALTER"),   wholeColumn("ID_HOLZART"),
    wholeColumn("ID_NUTZUNGSART"), wholeColumn("ID_SONDERMERKMAL"),
};

/// A planned position and what was carried out of it.
struct Position {
    const Work* work = nullptr;
    Amount planned, done;
    Date day;
    std::int32_t workers = 1;
    bool isDone = false;
};

/// What both forms of an order share.
struct Order {
    std::int32_t number = 0;
    const Location* location = nullptr;
    const Work* work = nullptr;
    Date from, to;
    std::vector<Position> positions;
};

constexpr std::array<std::string_view, 6> remarks{
    "Einschlag im Winter",     "Rückung mit Seilkran",    "Forstschutz beachten",
    "Befahrung nur bei Frost", "Holz an die Forststraße", "Naturverjüngung schonen",
};

/// An execution differs by up to 15 % from its plan.
Amount deviate(Random& random, const Amount& planned, const Work& work)
{
    Amount done = planned;
    done.quantity = std::max(1.0, std::round(planned.quantity * random.between(0.85, 1.15)));
    done.hours = tenth(done.quantity * work.hours * random.between(0.85, 1.25));
    done.cost = cents(done.quantity * done.price);
    return done;
}

Order drawOrder(Random& random, const ReferenceOptions& options, const Keys& keys, std::int32_t number)
{
    Order order;
    order.number = number;
    order.location = &random.pick(keys.locations);
    order.work = &random.pick(works);
    order.from = drawDay(random, options);
    order.to = laterDay(order.from, random.between(10, 60), options);
    order.positions.resize(static_cast<std::size_t>(random.between(1, 6)));
    const Work* work = order.work;
    for (Position& position : order.positions) {
        position.work = work;
        position.planned = drawAmount(random, *work);
        position.done = deviate(random, position.planned, *work);
        position.isDone = random.chance(920);
        position.day = laterDay(order.from,
                                random.between(0, static_cast<std::int32_t>(order.to.days - order.from.days)), options);
        position.workers = random.between(1, 4);
        work = &drawRelated(random, *order.work);
    }
    return order;
}

/// Fills the columns that both heads have.
template <const auto& columns>
void setHead(Rows<columns>& rows, const Order& order, Random& random, const Keys& keys, const ReferenceOptions& options)
{
    double hours = 0.0;
    double cost = 0.0;
    for (const Position& position : order.positions) {
        hours += position.planned.hours;
        cost += position.planned.cost;
    }
    const Location& location = *order.location;
    rows[at<columns>("ID")] = order.number;
    rows[at<columns>("PLANUNG_LANG")] = std::string{order.work->name} + " " + location.name;
    rows[at<columns>("BESCHREIBUNG")] =
        std::string{order.work->name} + " " + location.districtName + ", " + std::string{random.pick(remarks)};
    rows[at<columns>("NAME_FWJ")] = std::to_string(yearOf(order.from));
    rows[at<columns>("NAME_REVIER")] = location.district;
    rows[at<columns>("NAME_NUMMER")] = order.number;
    rows[at<columns>("DATUM_VON")] = order.from;
    rows[at<columns>("DATUM_BIS")] = order.to;
    rows[at<columns>("ERSTELLDATUM")] = Date{order.from.days - random.between(5, 40)};
    rows[at<columns>("JAHR")] = yearOf(order.from);
    rows[at<columns>("PRIORITAET")] = random.between(1, 3);
    rows[at<columns>("SOLL_STUNDEN")] = tenth(hours);
    rows[at<columns>("SOLL_KOSTEN")] = cents(cost);
    rows[at<columns>("ID_WALDORT")] = location.id;
    rows[at<columns>("ID_PRODUKT")] = keyOf(keys.products, order.work->product);
    rows[at<columns>("ID_OBJEKT")] = pickId(random, keys.objects, 50);
    rows[at<columns>("ID_VERFAHREN")] = keyOf(keys.methods, order.work->method);
    rows[at<columns>("ID_ACCESS_LEVELS")] = location.level;
    rows[at<columns>("PERSONAL_ID")] = pickId(random, keys.clients);
    rows[at<columns>("ID_UNTERNEHMER")] = pickId(random, keys.contractors, 100);
    rows[at<columns>("ID_KOSTENSTELLE")] = location.costCentre;
    rows[at<columns>("ID_HH_KAPITEL")] = pickId(random, keys.chapters, 50);
    rows[at<columns>("ID_HH_TITEL")] = pickId(random, keys.titles, 50);
    rows[at<columns>("ID_PA_GRUPPE")] = pickId(random, keys.partnerGroups, 100);
    rows[at<columns>("RELTABLE1")] = pickId(random, keys.regions, 50);
    rows[at<columns>("RELTABLE2")] = pickId(random, keys.seasons, 50);
    // Work that ended a quarter of a year ago is closed, mostly.
    rows[at<columns>("ABGENSCHLOSEN")] = order.to.days < options.baseDate.days - 90.0 && random.chance(850);
}

/// Fills the columns of a position besides its keys.
template <const auto& columns>
void setPosition(Rows<columns>& rows, const Position& position, const Amount& amount, std::int32_t number,
                 const Keys& keys)
{
    const Work& work = *position.work;
    const CivilTime day = toCivil(position.day);
    rows[at<columns>("ORDERS")] = number * 10;
    rows[at<columns>("DATUM_NR")] = paddedNumber(day.day, 2) + "." + paddedNumber(day.month, 2) + "." +
                                    std::to_string(day.year) + "-" + paddedNumber(number, 3);
    rows[at<columns>("DATUM")] = position.day;
    rows[at<columns>("STUNDEN")] = amount.hours;
    rows[at<columns>("MENGE")] = amount.quantity;
    rows[at<columns>("PREIS")] = amount.price;
    rows[at<columns>("KOSTEN")] = amount.cost;
    rows[at<columns>("FESTMETER")] = work.yieldsTimber ? Variant{amount.quantity} : Variant{Null{}};
    rows[at<columns>("ARBEITER")] = position.workers;
    rows[at<columns>("LEISTUNGSART_ID")] = keyOf(keys.services, work.service);
    rows[at<columns>("ID_WARENEINHEIT")] = keyOf(keys.units, work.unit);
    rows[at<columns>("ID_KOSTENART")] = keyOf(keys.costTypes, work.costType);
}

/// Writes the vouchers of executed positions and what they report from the forest.
class VoucherWriter {
public:
    VoucherWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        vouchers_{connection, "BELEGE"}, executions_{connection, "NATURALVOLLZUG_KLR"},
        kinds_{idsOf(connection, "SELECT ID FROM ZUHLUNGSART ORDER BY ID")},
        reasons_{idsOf(connection, "SELECT ID FROM ZUHLUNGSGRUND ORDER BY ID")},
        fellings_{idsOf(connection, "SELECT ID FROM NUTZUNGSART ORDER BY ID")}, options_{options}, keys_{keys}
    {}

    /// Bills a position by one voucher, or by two that add up to it; some positions are not billed yet.
    void write(Random& random, const Position& position, std::int32_t id)
    {
        if (random.chance(100)) return;
        Amount rest = position.done;
        if (random.chance(200) && rest.quantity >= 2.0) {
            Amount part = rest;
            part.quantity = std::floor(rest.quantity * 0.6);
            part.hours = tenth(rest.hours * 0.6);
            part.cost = cents(part.quantity * part.price);
            writeVoucher(random, position, part, id, 1);
            rest.quantity -= part.quantity;
            rest.hours = tenth(rest.hours - part.hours);
            rest.cost = cents(rest.cost - part.cost);
            writeVoucher(random, position, rest, id, 2);
        } else {
            writeVoucher(random, position, rest, id, 1);
        }
    }

private:
    void writeVoucher(Random& random, const Position& position, const Amount& amount, std::int32_t id,
                      std::int32_t line)
    {
        const Date day = laterDay(position.day, random.between(1, 20), options_);
        const Date booked = laterDay(day, random.between(1, 14), options_);
        const double rate = random.chance(800) ? 20.0 : 0.0;
        const double tax = cents(amount.cost * rate / 100.0);
        ++count_;
        vouchers_[at<voucherColumns>("ARBEITSAUFTRAG_ID")] = id;
        vouchers_[at<voucherColumns>("BELEGNUMMER")] = "B" + shortYear(day) + "-" + paddedNumber(count_, 6);
        vouchers_[at<voucherColumns>("ZEILE")] = line;
        vouchers_[at<voucherColumns>("DATUM")] = day;
        vouchers_[at<voucherColumns>("BUCHUNGSDATUM")] = booked;
        vouchers_[at<voucherColumns>("JAHR")] = yearOf(booked);
        vouchers_[at<voucherColumns>("STUNDEN")] = amount.hours;
        vouchers_[at<voucherColumns>("MENGE")] = amount.quantity;
        vouchers_[at<voucherColumns>("ID_WARENEINHEIT")] = keyOf(keys_.units, position.work->unit);
        vouchers_[at<voucherColumns>("PREIS")] = amount.price;
        vouchers_[at<voucherColumns>("BETRAG")] = amount.cost;
        vouchers_[at<voucherColumns>("MWST")] = rate;
        vouchers_[at<voucherColumns>("MWST_BETRAG")] = tax;
        vouchers_[at<voucherColumns>("BRUTTO")] = cents(amount.cost + tax);
        vouchers_[at<voucherColumns>("ID_ZUHLUNGSART")] = pickId(random, kinds_, 20);
        vouchers_[at<voucherColumns>("ID_ZUHLUNGSGRUND")] = pickId(random, reasons_, 20);
        vouchers_.insert();
        if (random.chance(750)) writeExecution(random, *position.work, amount);
    }

    void writeExecution(Random& random, const Work& work, const Amount& amount)
    {
        const bool byPiece = work.unit == "Stk";
        executions_[at<executionColumns>("ID_BELEGE")] = count_;
        executions_[at<executionColumns>("FLAECHE")] = cents(random.between(0.3, 6.0));
        executions_[at<executionColumns>("MENGE")] = amount.quantity;
        executions_[at<executionColumns>("STUECK")] =
            static_cast<std::int32_t>(amount.quantity * (byPiece ? 1.0 : random.between(1.5, 3.5)));
        executions_[at<executionColumns>("BESTANDESALTER")] = random.between(byPiece ? 1 : 15, byPiece ? 5 : 140);
        executions_[at<executionColumns>("ID_HOLZART")] = pickId(random, keys_.species);
        executions_[at<executionColumns>("ID_NUTZUNGSART")] = pickId(random, fellings_, 50);
        executions_[at<executionColumns>("ID_SONDERMERKMAL")] = pickId(random, keys_.specialMarks, 700);
        executions_.insert();
    }

    Rows<voucherColumns> vouchers_;
    Rows<executionColumns> executions_;
    Ids kinds_, reasons_, fellings_;
    const ReferenceOptions& options_;
    const Keys& keys_;
    std::int32_t count_ = 0; ///< a new database numbers the rows of BELEGE from 1
};

/// Writes the heads and positions of one number. Numbers up to `lastPlanned` and `lastOrder` are there already.
class OrderWriter {
public:
    OrderWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        orders_{connection, "ARBEITSAUFTRAG_KOPF"}, planned_{connection, "ARBEITSAUFTRAG_KOPF_PLANN"},
        positions_{connection, "ARBEITSAUFTRAG"}, plannedPositions_{connection, "ARBEITSAUFTRAG_PLANN"},
        vouchers_{connection, options, keys}, options_{options}, keys_{keys}, lastOrder_{lastId(connection,
                                                                                                "ARBEITSAUFTRAG_KOPF")},
        lastPlanned_{lastId(connection, "ARBEITSAUFTRAG_KOPF_PLANN")}, position_{lastId(connection, "ARBEITSAUFTRAG")}
    {}

    /// The first number that is not there yet.
    std::int32_t first() const { return std::min(lastOrder_, lastPlanned_) + 1; }

    void write(Random& random, const Order& order)
    {
        const bool isPlanned = order.number > lastPlanned_;
        const bool isOrdered = order.number > lastOrder_;
        if (isPlanned) {
            setHead(planned_, order, random, keys_, options_);
            planned_[at<headColumns>("NAME")] = "PL-" + paddedNumber(order.number, 4);
            planned_.insert();
        }
        if (isOrdered) {
            setHead(orders_, order, random, keys_, options_);
            orders_[at<orderColumns>("NAME")] = "AA-" + paddedNumber(order.number, 4);
            orders_[at<orderColumns>("PRODUKT_ID")] = keyOf(keys_.products, order.work->product);
            orders_.insert();
        }
        std::int32_t number = 0;
        for (const Position& position : order.positions)
            writePosition(random, order, position, ++number, isPlanned, isOrdered);
    }

private:
    void writePosition(Random& random, const Order& order, const Position& position, std::int32_t number,
                       bool isPlanned, bool isOrdered)
    {
        const bool isDone = isOrdered && (position.isDone || number == 1);
        if (isPlanned) ++plannedPosition_;
        if (isDone) ++position_;
        if (isPlanned) {
            setPosition(plannedPositions_, position, position.planned, number, keys_);
            plannedPositions_[at<plannedPositionColumns>("ID")] = plannedPosition_;
            plannedPositions_[headOfPosition] = order.number;
            plannedPositions_[counterpart] = isDone ? Variant{position_} : Variant{Null{}};
            plannedPositions_.insert();
        }
        if (isDone) {
            setPosition(positions_, position, position.done, number, keys_);
            positions_[at<positionColumns>("ID")] = position_;
            positions_[headOfPosition] = order.number;
            positions_[counterpart] = isPlanned ? Variant{plannedPosition_} : Variant{Null{}};
            positions_.insert();
            vouchers_.write(random, position, position_);
        }
    }

    Rows<orderColumns> orders_;
    Rows<headColumns> planned_;
    Rows<positionColumns> positions_;
    Rows<plannedPositionColumns> plannedPositions_;
    VoucherWriter vouchers_;
    const ReferenceOptions& options_;
    const Keys& keys_;
    std::int32_t lastOrder_, lastPlanned_;
    std::int32_t position_, plannedPosition_ = 0;
};

} // namespace

void writeWorkOrders(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    Random random = randomOf(options, Stream::workOrders);
    OrderWriter writer{connection, options, keys};
    for (std::int32_t number = writer.first(); number <= options.records; ++number)
        writer.write(random, drawOrder(random, options, keys, number));
}

} // namespace tamarok::database::planning
