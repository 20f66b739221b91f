#include <array>
#include <vector>

#include "areas/areas.h"
#include "areas/sales_parts.h"

namespace tamarok::database::sales {
namespace {

constexpr std::uint64_t billingStream = 1'000'000'000'040;

/// BB_FAKTURA_KOPF.
constexpr std::array headColumns{textColumn("FA_NUMMER"),
                                 wholeColumn("ID_ACCESS_LEVELS"),
                                 wholeColumn("ID_LIEFERANT"),
                                 wholeColumn("ID_BB_T_RECHNUNGSTYP"),
                                 wholeColumn("ID_BB_T_ANGEBOTSTYP"),
                                 dayColumn("FA_DATUM"),
                                 dayColumn("STORNODATUM"),
                                 wholeColumn("ID_PERSONAL"),
                                 wholeColumn("ID_ANGEBOT"),
                                 textColumn("BETREFF"),
                                 textColumn("BEMERKUNG"),
                                 textColumn("KASSENZEICHEN"),
                                 dayColumn("GULTIG_BIS"),
                                 dayColumn("LEISTUNG_VON"),
                                 dayColumn("LEISTUNG_BIS"),
                                 dayColumn("FALLIG_AM"),
                                 dayColumn("BEZAHLT_AM"),
                                 numberColumn("SKONTO"),
                                 numberColumn("NETTO"),
                                 numberColumn("MWST"),
                                 numberColumn("BRUTTO"),
                                 flagColumn("FREIGABE"),
                                 wholeColumn("ID_BB_HAUSHALT"),
                                 wholeColumn("ID_HH_KAPITEL"),
                                 wholeColumn("ID_HH_TITEL"),
                                 wholeColumn("ID_BB_T_UNTERKONTO"),
                                 wholeColumn("ID_BUCHNR"),
                                 wholeColumn("ID_BB_T_KASSE"),
                                 wholeColumn("ID_BB_T_FSC"),
                                 wholeColumn("ID_BB_HAB_RECHNUNG"),
                                 wholeColumn("ID_BB_HAB_ANGEBOT")};

/// BB_FAKTURA_ARTIKEL.
constexpr std::array positionColumns{wholeColumn("ID_BB_FAKTURA_KOPF"),
                                     wholeColumn("POSITIONSNUMMER"),
                                     textColumn("BEZEICHNUNG"),
                                     dayColumn("LEISTUNGSDATUM"),
                                     numberColumn("MENGE"),
                                     numberColumn("EINZELPREIS"),
                                     numberColumn("RABATT"),
                                     numberColumn("NETTO"),
                                     numberColumn("MWST_SATZ"),
                                     numberColumn("MWST"),
                                     numberColumn("BRUTTO"),
                                     numberColumn("STUNDEN"),
                                     wholeColumn("ID_WARENKATALOG"),
                                     wholeColumn("ID_WARENEINHEIT"),
                                     wholeColumn("ID_KOSTENSTELLE"),
                                     wholeColumn("ID_KOSTENART"),
                                     wholeColumn("ID_LEISTUNGSART"),
                                     wholeColumn("ID_PRODUKT"),
                                     wholeColumn("ID_BB_AUFTRAG_KOPF"),
                                     wholeColumn("ID_BB_T_PROJEKT_PLANUNG"),
                                     wholeColumn("ID_BB_T_OBJEKTE"),
                                     wholeColumn("ID_BB_T_LEI_ARBEITSVERFAHEREN"),
                                     wholeColumn("ID_WALDORT"),
                                     wholeColumn("ID_HOLZART"),
                                     wholeColumn("ID_BB_HAB"),
                                     wholeColumn("ID_BB_JAGDBEZIRKE"),
                                     wholeColumn("ID_BB_WILDURSPRUNGS"),
                                     wholeColumn("ID_BB_T_WILDART"),
                                     wholeColumn("ID_BB_T_ABGABEART_VERWENDUNG"),
                                     wholeColumn("ID_BB_T_TARIFSTELLE"),
                                     wholeColumn("ID_BB_T_ENTGELTART"),
                                     wholeColumn("ID_MWST"),
                                     wholeColumn("ID_BB_T_MEHRWERTSTEUER_HERLEITUNG"),
                                     wholeColumn("ID_BB_T_KZ_MEHRWERTSTEUER"),
                                     wholeColumn("ID_BB_T_MEHRWERTSTEUER"),
                                     wholeColumn("ID_BB_TSP_MWSCHL"),
                                     wholeColumn("ID_ACCESS_LEVELS")};

/// BB_FAKTURA_ZARP.
constexpr std::array receiptColumns{
    wholeColumn("ID_BB_FAKTURA_KOPF"), wholeColumn("NUMMER"),   wholeColumn("ID_BB_T_ZU_U_ABSCHLAGE_Z_ROH"),
    textColumn("BEZEICHNUNG"),         numberColumn("PROZENT"), numberColumn("NETTO"),
    numberColumn("MWST_SATZ"),         numberColumn("MWST"),    numberColumn("BRUTTO")};

// Keys of WARENGRUPPE.
constexpr std::int32_t firewoodGroup = 3;
constexpr std::int32_t gameGroup = 5;
constexpr std::int32_t servicesGroup = 7;

/// A rate of turnover tax with its keys in MWST, BB_T_MEHRWERTSTEUER, BB_T_KZ_MEHRWERTSTEUER and BB_TSP_MWSCHL.
struct TaxRate {
    double percent;
    std::int32_t rate, key, mark, assignment;
};
constexpr std::array<TaxRate, 4> taxRates{
    {{20.0, 1, 1, 1, 1}, {13.0, 2, 2, 2, 2}, {10.0, 3, 3, 1, 3}, {0.0, 4, 4, 4, 6}}};
constexpr const TaxRate& standardRate = taxRates.front();
constexpr const TaxRate& noTax = taxRates.back();

constexpr std::array<double, 6> discounts{0.0, 0.0, 0.0, 3.0, 5.0, 10.0};
constexpr std::array<double, 3> cashDiscounts{0.0, 2.0, 3.0};

/// What a record is about, by the group of goods of its first position.
struct Subject {
    std::int32_t group; ///< WARENGRUPPE.GRUPPE_ID
    std::string_view text;
};
constexpr std::array<Subject, 7> subjects{{{1, "Forstpflanzen und Kulturen"},
                                           {2, "Zaunmaterial"},
                                           {3, "Brennholzverkauf"},
                                           {5, "Wildbretverkauf"},
                                           {6, "Christbäume und Reisig"},
                                           {7, "Forstliche Dienstleistungen"},
                                           {8, "Betriebsmittel"}}};
constexpr std::array<std::string_view, 4> remarks{"Abholung nach Terminabsprache", "Zahlung vor Abfuhr",
                                                  "Preise frei Waldstraße", "Mengen laut Werksmaß"};

/// Surcharges and deductions in percent of the positions.
constexpr std::array<double, 4> surchargePercents{1.5, 2.5, -4.0, -2.0};

/// An amount with its tax; the total of records and the value of their parts.
struct Amount {
    double net = 0.0, tax = 0.0;

    double gross() const { return cents(net + tax); }
    void add(const Amount& other)
    {
        net = cents(net + other.net);
        tax = cents(tax + other.tax);
    }
};

std::string_view subjectOf(std::int32_t group)
{
    for (const Subject& subject : subjects)
        if (subject.group == group) return subject.text;
    return "Sonstige Erlöse";
}

/// The tax is computed from the rounded net amount, as invoices show it.
Amount taxed(double net, const TaxRate& rate)
{
    return {cents(net), cents(cents(net) * rate.percent / 100.0)};
}

struct Record {
    std::int32_t number = 0; ///< BB_FAKTURA_KOPF.ID
    bool isOffer = false;
    std::int32_t offer = 0; ///< number of the offer that an invoice rests on, 0 for none
    std::int32_t customer = 0, supplier = 0;
    Date day;
};

struct Position {
    const Article* article = nullptr;
    const TaxRate* rate = nullptr;
    double price = 0.0, quantity = 0.0, discount = 0.0;
    Amount amount;
};

struct Receipt {
    std::int32_t kind = 0; ///< BB_FAKTURA_ZARP.NUMMER
    std::string_view text;
    double percent = 0.0;
    Amount amount;
};

class BillingWriter {
public:
    BillingWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        random_{options.seed, billingStream}, keys_{keys}, options_{options}, articles_{readArticles(connection)},
        budgets_{idsOf(connection, "SELECT ID FROM BB_HAUSHALT ORDER BY ID")},
        chapters_{idsOf(connection, "SELECT ID_HH_KAPITEL FROM BB_HAUSHALT ORDER BY ID")},
        titles_{idsOf(connection, "SELECT ID_HH_TITEL FROM BB_HAUSHALT ORDER BY ID")},
        surchargeKeys_{idsOf(connection, "SELECT ID FROM BB_T_ZU_U_ABSCHLAGE_Z_ROH WHERE ISNULL(ABSCHLAG,0) = 0")},
        deductionKeys_{idsOf(connection, "SELECT ID FROM BB_T_ZU_U_ABSCHLAGE_Z_ROH WHERE ABSCHLAG = 1")},
        costCentres_{idsOf(connection, "SELECT ID FROM KOSTENSTELLE ORDER BY ID")},
        costTypes_{idsOf(connection, "SELECT ID FROM KOSTENART WHERE ERLOSE = 1 ORDER BY ID")},
        services_{idsOf(connection, "SELECT ID FROM LEISTUNGSART ORDER BY ID")},
        products_{idsOf(connection, "SELECT ID FROM PRODUKT ORDER BY ID")},
        assets_{idsOf(connection, "SELECT ID FROM BB_T_OBJEKTE ORDER BY ID")},
        methods_{idsOf(connection, "SELECT ID FROM BB_T_LEI_ARBEITSVERFAHEREN ORDER BY ID")},
        species_{idsOf(connection, "SELECT ID FROM HOLZART ORDER BY ID")},
        harvestLines_{
            idsOf(connection, "SELECT TOP " + std::to_string(options.records) + " ID FROM BB_HAB ORDER BY ID")},
        game_{idsOf(connection, "SELECT ID FROM BB_T_WILDART ORDER BY ID")},
        uses_{idsOf(connection, "SELECT ID FROM BB_T_ABGABEART_VERWENDUNG ORDER BY ID")}, heads_{connection,
                                                                                                 "BB_FAKTURA_KOPF",
                                                                                                 headColumns},
        rows_{connection, "BB_FAKTURA_ARTIKEL", positionColumns}, receipts_{connection, "BB_FAKTURA_ZARP",
                                                                            receiptColumns}
    {}

    /// Inserts a record with its positions and further receipts, which are drawn first: the record holds their totals.
    void write(std::int32_t number)
    {
        const Record record = drawRecord(number);
        std::vector<Position> positions;
        Amount total;
        for (std::int32_t i = random_.between(1, 6); i > 0; --i) {
            positions.push_back(drawPosition());
            total.add(positions.back().amount);
        }
        const std::vector<Receipt> receipts = drawReceipts(total.net);
        for (const Receipt& receipt : receipts)
            total.add(receipt.amount);
        insertHead(record, subjectOf(positions.front().article->group), total);
        for (std::size_t i = 0; i < positions.size(); ++i)
            insertPosition(record, positions[i], static_cast<std::int32_t>(i + 1) * 10);
        for (const Receipt& receipt : receipts)
            insertReceipt(record, receipt);
        previous_ = record;
    }

private:
    /// The invoice after an offer may rest on it. An invoice that rests on an offer goes to the same customer, after
    /// it.
    Record drawRecord(std::int32_t number)
    {
        Record record;
        record.number = number;
        record.isOffer = isOfferRecord(number);
        record.customer = random_.pick(random_.chance(800) ? keys_.customers : keys_.owners);
        record.supplier = random_.pick(keys_.owners);
        record.day = dayOfBillingRecord(number, options_);
        if (previous_.isOffer && random_.chance(700)) {
            record.offer = previous_.number;
            record.customer = previous_.customer;
            record.supplier = previous_.supplier;
            record.day = laterDay(previous_.day, random_.between(7, 45), options_);
        }
        return record;
    }

    /// A position has its article's rate of tax, but a few are exempt.
    Position drawPosition()
    {
        Position position;
        position.article = &random_.pick(articles_);
        position.price = cents(position.article->price * random_.between(0.95, 1.05));
        position.quantity = drawQuantity(random_, *position.article);
        position.discount = random_.pick(discounts);
        position.rate = &noTax;
        for (const TaxRate& rate : taxRates)
            if (rate.percent == position.article->tax && !random_.chance(40)) position.rate = &rate;
        position.amount = taxed(position.price * position.quantity * (1.0 - position.discount / 100.0), *position.rate);
        return position;
    }

    /// @param net  of the positions; the first receipt is a part of it
    std::vector<Receipt> drawReceipts(double net)
    {
        std::vector<Receipt> receipts;
        if (random_.chance(400)) {
            const double percent = random_.pick(surchargePercents);
            receipts.push_back({1, percent < 0.0 ? "Abschlag auf den Holzpreis" : "Zuschlag auf den Holzpreis", percent,
                                taxed(net * percent / 100.0, standardRate)});
        }
        if (random_.chance(250))
            receipts.push_back(
                {2, "Bearbeitungsgebühr", 0.0, taxed(static_cast<double>(random_.between(3, 9)) * 5.0, standardRate)});
        return receipts;
    }

    /// Only invoices fall due, are paid and have a cash reference; only offers expire.
    void insertHead(const Record& record, std::string_view subject, const Amount& total)
    {
        const Date due{record.day.days + 30.0};
        const bool isCancelled = random_.chance(30) && record.day < dayOf(options_.baseDate);
        const bool isPaid = !record.isOffer && !isCancelled && due.days + 20.0 < options_.baseDate.days;
        const Date begin{record.day.days - static_cast<double>(random_.between(10, 40))};
        const std::size_t budget = random_.below(static_cast<std::uint32_t>(budgets_.size()));
        const auto inDays = [&](std::int32_t low, std::int32_t high) {
            return Variant{laterDay(record.day, random_.between(low, high), options_)};
        };
        const auto ifOffer = [&](Variant value) { return record.isOffer ? std::move(value) : Variant{Null{}}; };
        const auto ifInvoice = [&](Variant value) { return record.isOffer ? Variant{Null{}} : std::move(value); };
        insertRow(heads_,
                  {numberOfYear(record.isOffer ? "AG" : "FA", record.day, record.number),
                   pickId(random_, keys_.districts, fewNulls),
                   record.supplier,
                   ifInvoice(random_.between(1, 4)),
                   ifOffer(random_.between(1, 4)),
                   record.day,
                   isCancelled ? inDays(1, 30) : Variant{Null{}},
                   record.customer,
                   record.offer == 0 ? Variant{Null{}} : Variant{record.offer},
                   subject,
                   orNull(random_, 500, random_.pick(remarks)),
                   ifInvoice("KZ" + paddedNumber(record.number * 13 + 4711, 8)),
                   ifOffer(Date{record.day.days + 42.0}),
                   begin,
                   Date{begin.days + 7.0},
                   ifInvoice(due),
                   isPaid ? inDays(5, 50) : Variant{Null{}},
                   random_.pick(cashDiscounts),
                   total.net,
                   total.tax,
                   total.gross(),
                   isPaid || random_.chance(600),
                   budgets_.at(budget),
                   chapters_.at(budget),
                   titles_.at(budget),
                   random_.between(1, 4),
                   random_.between(1, 8),
                   random_.between(1, 3),
                   orNull(random_, 100, random_.between(1, 3)),
                   ifInvoice(pickId(random_, harvestLines_, 300)),
                   record.isOffer || record.offer != 0 ? pickId(random_, harvestLines_, 300) : Variant{Null{}}});
    }

    /// A head of another area; all of them have the IDs 1 to `records`.
    Variant otherHead() { return random_.between(1, options_.records); }

    /// A key and a value that only positions of one group of goods have.
    Variant keyOf(bool isOfGroup, const Ids& ids) { return isOfGroup ? pickId(random_, ids, 100) : Variant{Null{}}; }
    static Variant valueOf(bool isOfGroup, Variant value) { return isOfGroup ? std::move(value) : Variant{Null{}}; }

    /// Timber, game and services have keys of their own; accounts, place and tax stand on every position.
    void insertPosition(const Record& record, const Position& position, std::int32_t place)
    {
        const Article& article = *position.article;
        const TaxRate& rate = *position.rate;
        const bool isTimber = article.group == firewoodGroup;
        const bool isGame = article.group == gameGroup;
        const bool isService = article.group == servicesGroup;
        insertRow(rows_, {record.number,
                          place,
                          article.text,
                          Date{record.day.days - static_cast<double>(random_.between(1, 20))},
                          position.quantity,
                          position.price,
                          position.discount,
                          position.amount.net,
                          rate.percent,
                          position.amount.tax,
                          position.amount.gross(),
                          valueOf(isService, static_cast<double>(random_.between(8, 160)) / 2.0),
                          article.id,
                          article.unit,
                          pickId(random_, costCentres_, fewNulls),
                          pickId(random_, costTypes_, fewNulls),
                          pickId(random_, services_, fewNulls),
                          pickId(random_, products_, fewNulls),
                          orNull(random_, 200, otherHead()),
                          pickId(random_, keys_.projects, 300),
                          pickId(random_, assets_, 500),
                          keyOf(isService, methods_),
                          pickId(random_, keys_.locations, 200),
                          keyOf(isTimber, species_),
                          keyOf(isTimber, harvestLines_),
                          valueOf(isGame, otherHead()),
                          valueOf(isGame, otherHead()),
                          keyOf(isGame, game_),
                          keyOf(isTimber, uses_),
                          valueOf(isService, random_.between(1, 4)),
                          valueOf(isService, random_.between(1, 4)),
                          rate.rate,
                          random_.between(1, 3),
                          rate.mark,
                          rate.key,
                          rate.assignment,
                          pickId(random_, keys_.districts, fewNulls)});
    }

    /// Only surcharges and deductions have a key and a percentage.
    void insertReceipt(const Record& record, const Receipt& receipt)
    {
        const bool isPriced = receipt.kind == 1;
        insertRow(receipts_, {record.number, receipt.kind,
                              keyOf(isPriced, receipt.percent < 0.0 ? deductionKeys_ : surchargeKeys_), receipt.text,
                              valueOf(isPriced, receipt.percent), receipt.amount.net, standardRate.percent,
                              receipt.amount.tax, receipt.amount.gross()});
    }

    Random random_;
    const Keys& keys_;
    const ReferenceOptions& options_;
    std::vector<Article> articles_;
    Ids budgets_, chapters_, titles_; ///< of the items of the budget
    Ids surchargeKeys_, deductionKeys_, costCentres_, costTypes_, services_, products_, assets_, methods_, species_;
    Ids harvestLines_, game_, uses_;
    BulkInsert heads_, rows_, receipts_;
    Record previous_;
};

} // namespace

void writeBilling(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    BillingWriter writer{connection, options, keys};
    // The numbers are those that the database gives the rows.
    const std::int32_t existing = lastId(connection, "BB_FAKTURA_KOPF");
    for (std::int32_t number = existing + 1; number <= options.records; ++number)
        writer.write(number);
}

} // namespace tamarok::database::sales
