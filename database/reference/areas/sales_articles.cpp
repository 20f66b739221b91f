#include <array>
#include <vector>

#include "areas/sales_parts.h"
#include "timber_profile.h"

#include "tamarok/convert.h"

namespace tamarok::database::sales {
namespace {

constexpr std::uint64_t invoiceStream = 1'000'000'000'030;

/// HEADERRECH.
constexpr std::array headColumns{textColumn("R_NAME"),     textColumn("VER_TYPE"),
                                 dayColumn("INVDATE"),     dayColumn("ZAHLDATUM"),
                                 dayColumn("DATE1"),       dayColumn("DATE2"),
                                 textColumn("KOPF1"),      textColumn("KOPF2"),
                                 textColumn("KOPF6"),      numberColumn("NUMM1"),
                                 numberColumn("NUMM2"),    numberColumn("NUMM3"),
                                 numberColumn("NUMM4"),    textColumn("VERTRAG"),
                                 textColumn("HULNR"),      wholeColumn("RART_ID"),
                                 wholeColumn("BUCHNR_ID"), wholeColumn("KAPITEL_ID"),
                                 wholeColumn("TITEL_ID"),  wholeColumn("MANDANTEN_ID"),
                                 wholeColumn("KUNDEN_ID"), wholeColumn("ID_ANLASSART"),
                                 flagColumn("GESPERRT"),   flagColumn("STORNO"),
                                 wholeColumn("ID_USER"),   wholeColumn("ID_ACCESS_LEVELS")};

/// NN_POSITIONEN. The columns of the free lists stand last.
constexpr std::array positionColumns{textColumn("NN_NAME"),
                                     textColumn("VER_TYPE"),
                                     textColumn("NUMMER"),
                                     textColumn("BEZEICHNUNG"),
                                     numberColumn("MENGE"),
                                     numberColumn("EINHPREIS"),
                                     numberColumn("RABATT"),
                                     numberColumn("MWST"),
                                     textColumn("WILDURS"),
                                     wholeColumn("ID_WARENEINHEIT"),
                                     wholeColumn("ID_PERSONAL"),
                                     wholeColumn("ID_WALDORT"),
                                     dayColumn("DATUM"),
                                     numberColumn("MENGE_VE"),
                                     wholeColumn("ID_WARENEINHEIT_VE"),
                                     wholeColumn("ID_WARENKATALOG"),
                                     wholeColumn("ARBEITSAUFTRAG_KOPF_ID"),
                                     wholeColumn("PLAN_ID"),
                                     wholeColumn("ID_BB_T_AUFTRAGS_PLANUNG"),
                                     wholeColumn("ID_LEISTUNGSART"),
                                     wholeColumn("ID_VERFAHREN"),
                                     wholeColumn("ID_OBJEKT"),
                                     wholeColumn("ID_T_ERLEGER"),
                                     wholeColumn("ID_T_JAGDBEZIRK"),
                                     wholeColumn("ID_T_JAGDBEZIRKE"),
                                     textColumn("BEMERKUNG"),
                                     wholeColumn("RELTABLE1"),
                                     wholeColumn("RELTABLE2"),
                                     wholeColumn("RELTABLE3"),
                                     wholeColumn("RELTABLE4"),
                                     wholeColumn("RELTABLE5"),
                                     wholeColumn("RELTABLE6"),
                                     wholeColumn("RELTABLE7"),
                                     wholeColumn("RELTABLE8"),
                                     wholeColumn("RELTABLE9"),
                                     wholeColumn("RELTABLE10")};
constexpr std::size_t firstFreeListColumn = 26;

// Keys of RECHNUNGSART.
constexpr std::int32_t invoiceKind = 1;
constexpr std::int32_t creditKind = 2;
constexpr std::int32_t partialKind = 3;
constexpr std::int32_t finalKind = 4;
constexpr std::int32_t cancelledKind = 6;

// Keys of WARENGRUPPE and WARENEINHEIT.
constexpr std::int32_t plantsGroup = 1;
constexpr std::int32_t firewoodGroup = 3;
constexpr std::int32_t gameGroup = 5;
constexpr std::int32_t servicesGroup = 7;
constexpr std::int32_t hundredPieces = 4;
constexpr std::int32_t looseCubicMetre = 7;
constexpr double loosePerStacked = 1.6;

/// One invoice in so many is partial, and the one after it is the final invoice that settles it.
constexpr std::int32_t partialEvery = 12;

constexpr std::array<double, 5> discounts{0.0, 0.0, 0.0, 12.5, 25.0};
constexpr std::array<std::string_view, 4> subjects{"Verkauf ab Hof", "Lieferung frei Haus", "Sammelbestellung",
                                                   "Leistung laut Auftrag"};
constexpr std::array<std::string_view, 4> remarks{"Selbstabholung", "Mengenrabatt", "Lieferung in zwei Teilen",
                                                  "Reklamation vorbehalten"};

/// Timber lists name their documents by version and year, so that no log has such a name.
std::string invoiceName(std::int32_t invoice)
{
    return "N-" + paddedNumber(invoice, 6);
}

/// HEADERRECH.VER_TYPE, RART_ID, KUNDEN_ID, INVDATE and STORNO of an invoice.
struct Invoice {
    std::int32_t number = 0;
    std::string_view version = "R";
    std::int32_t kind = invoiceKind;
    std::int32_t partner = 0;
    Date day;
    bool isCancelled = false;
};

/// Prices in quarters of a euro, quantities in halves and discounts in eighths have exact net values in binary
/// arithmetic. A condition on the value that a list shows then finds its row.
struct Position {
    const Article* article = nullptr;
    double price = 0.0, quantity = 0.0, discount = 0.0;

    double net() const noexcept { return price * quantity * (1.0 - discount / 100.0); }
    double tax() const noexcept { return net() * article->tax / 100.0; }
};

/// The quantity in the unit of sale: plants by the hundred, firewood in loose cubic metres.
double salesQuantity(const Position& position)
{
    if (position.article->group == plantsGroup) return position.quantity / 100.0;
    if (position.article->group == firewoodGroup) return convert::roundHalfEven(position.quantity * loosePerStacked, 3);
    return position.quantity;
}

std::int32_t salesUnit(const Article& article)
{
    if (article.group == plantsGroup) return hundredPieces;
    return article.group == firewoodGroup ? looseCubicMetre : article.unit;
}

class InvoiceWriter {
public:
    InvoiceWriter(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys) :
        random_{options.seed, invoiceStream}, keys_{keys}, options_{options}, articles_{readArticles(connection)},
        contracts_{contractNames(connection)}, workOrders_{idsOf(connection,
                                                                 "SELECT ID FROM ARBEITSAUFTRAG_KOPF ORDER BY ID")},
        plannedOrders_{idsOf(connection, "SELECT ID FROM ARBEITSAUFTRAG_KOPF_PLANN ORDER BY ID")},
        services_{idsOf(connection, "SELECT ID FROM LEISTUNGSART ORDER BY ID")},
        methods_{idsOf(connection, "SELECT ID FROM VERFAHREN ORDER BY ID")},
        hunters_{idsOf(connection, "SELECT ID FROM T_ERLEGER ORDER BY ID")},
        grounds_{idsOf(connection, "SELECT ID FROM T_JAGDBEZIRK ORDER BY ID")},
        surveyed_{idsOf(connection, "SELECT ID FROM T_JAGDBEZIRKE ORDER BY ID")},
        heads_{connection, "HEADERRECH", headColumns}, rows_{connection, "NN_POSITIONEN", positionColumns}
    {}

    /// Inserts an invoice and its positions, which are drawn first, since the invoice holds their totals.
    void write(std::int32_t number)
    {
        const Invoice invoice = drawInvoice(number);
        std::vector<Position> positions;
        for (std::int32_t i = random_.between(1, 6); i > 0; --i) {
            const Article& article = random_.pick(articles_);
            positions.push_back(
                {&article, quarters(article.price), drawQuantity(random_, article), random_.pick(discounts)});
        }
        insertHead(invoice, positions);
        for (const Position& position : positions)
            insertPosition(invoice, position);
        previous_ = invoice;
    }

private:
    /// A final invoice goes to the partner of the partial one before it.
    Invoice drawInvoice(std::int32_t number)
    {
        Invoice invoice;
        invoice.number = number;
        invoice.day = drawDay(random_, options_);
        if (random_.chance(350)) invoice.version = random_.pick(profile::versions);
        if (invoice.version != "R" && random_.chance(300)) invoice.kind = creditKind;
        invoice.partner = random_.pick(invoice.version == "R" ? keys_.customers : keys_.partners);
        invoice.isCancelled = random_.chance(30);
        if (invoice.isCancelled) invoice.kind = cancelledKind;
        const bool isFinal = number > 1 && isPartial(number - 1);
        if (isPartial(number) || isFinal) invoice.isCancelled = false;
        if (isPartial(number)) invoice.kind = partialKind;
        if (isFinal) {
            invoice.version = previous_.version;
            invoice.partner = previous_.partner;
            invoice.day = laterDay(previous_.day, random_.between(10, 60), options_);
            invoice.kind = finalKind;
        }
        return invoice;
    }

    /// The last invoice has none after it that could settle it.
    bool isPartial(std::int32_t number) const { return number % partialEvery == 1 && number < options_.records; }

    /// NUMM1 to NUMM4 are net value, number of positions, tax and gross value.
    void insertHead(const Invoice& invoice, const std::vector<Position>& positions)
    {
        double net = 0.0;
        double tax = 0.0;
        for (const Position& position : positions) {
            net += position.net();
            tax += position.tax();
        }
        const Date due{invoice.day.days + 30.0};
        const bool isPaid = due.days + 20.0 < options_.baseDate.days;
        const std::int32_t title = random_.between(1, 6);
        insertRow(heads_, {invoiceName(invoice.number),
                           invoice.version,
                           invoice.day,
                           isPaid ? Variant{laterDay(invoice.day, random_.between(5, 50), options_)} : Variant{Null{}},
                           due,
                           Date{invoice.day.days - static_cast<double>(random_.between(1, 14))},
                           random_.pick(subjects),
                           orNull(random_, 300, "Auftrag " + std::to_string(random_.between(1000, 9999))),
                           orNull(random_, 100, random_.chance(500) ? "frei Haus" : "ab Hof"),
                           cents(net),
                           static_cast<double>(positions.size()),
                           cents(tax),
                           cents(net + tax),
                           orNull(random_, 800, random_.pick(contracts_)),
                           orNull(random_, 850, "H-" + std::to_string(invoice.number)),
                           invoice.kind,
                           random_.between(1, 8),
                           (title + 1) / 2,
                           title,
                           pickId(random_, keys_.owners, 50),
                           invoice.partner,
                           random_.between(1, 5),
                           isPaid,
                           invoice.isCancelled,
                           pickId(random_, keys_.users, fewNulls),
                           pickId(random_, keys_.districts, fewNulls)});
    }

    /// The mark of origin of game, or the final invoice that settles a position of a partial one.
    Variant originOrNull(const Invoice& invoice, const Article& article)
    {
        if (invoice.kind == partialKind) return invoiceName(invoice.number + 1);
        if (article.group != gameGroup) return Null{};
        return "W" + std::to_string(random_.between(10000, 99999));
    }

    /// A key that only positions of one group of goods have.
    Variant keyOf(bool isOfGroup, const Ids& ids) { return isOfGroup ? pickId(random_, ids, 100) : Variant{Null{}}; }

    /// The columns of the free lists are set one by one, the ones before them as a row.
    void insertPosition(const Invoice& invoice, const Position& position)
    {
        const Article& article = *position.article;
        const bool isGame = article.group == gameGroup;
        const bool isService = article.group == servicesGroup;
        for (std::size_t list = 0; list < keys_.freeLists.size(); ++list)
            rows_[firstFreeListColumn + list] = pickId(random_, keys_.freeLists[list], 500);
        insertRow(rows_, {invoiceName(invoice.number),
                          invoice.version,
                          article.number,
                          article.text,
                          position.quantity,
                          position.price,
                          position.discount,
                          article.tax,
                          originOrNull(invoice, article),
                          article.unit,
                          invoice.partner,
                          pickId(random_, keys_.locations, 200),
                          invoice.day,
                          salesQuantity(position),
                          salesUnit(article),
                          article.id,
                          keyOf(isService, workOrders_),
                          keyOf(isService, plannedOrders_),
                          pickId(random_, keys_.orders, 400),
                          pickId(random_, services_, 300),
                          keyOf(isService, methods_),
                          pickId(random_, keys_.objects, 500),
                          keyOf(isGame, hunters_),
                          keyOf(isGame, grounds_),
                          keyOf(isGame, surveyed_),
                          orNull(random_, 800, random_.pick(remarks))});
    }

    Random random_;
    const Keys& keys_;
    const ReferenceOptions& options_;
    std::vector<Article> articles_;
    std::vector<std::string> contracts_;
    Ids workOrders_, plannedOrders_, services_, methods_, hunters_, grounds_, surveyed_;
    BulkInsert heads_, rows_;
    Invoice previous_;
};

} // namespace

void writeArticleInvoices(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    InvoiceWriter writer{connection, options, keys};
    for (std::int32_t number = 1; number <= options.records; ++number)
        writer.write(number);
}

} // namespace tamarok::database::sales
