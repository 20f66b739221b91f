#include <array>
#include <string>

#include "row_fields.h"

namespace tamarok::database {
namespace {

using ado::DataType;
using Source = const RowSource&;

/// Sum over all logs of the delivery, in the document's currency.
double documentTotal(Source s)
{
    double total = 0.0;
    const std::size_t version = s.document->version;
    for (const TimberList& list : s.delivery.lists)
        for (const LogLine& line : list.lines)
            total += line.price[version] * line.settledQuantity[version];
    return total;
}

/// Place up to which the price includes the transport.
Variant deliveryTerms(Source s)
{
    if (s.delivery.goesByRail) return "frei Waggon";
    return s.delivery.goesByLorry ? "frei Werk" : "frei Waldstraße";
}

/// Returns RECHNUNGSART.RART_ID: 1 invoice, 2 credit note for the forest owner, 5 invoice of the enterprise's own.
Variant invoiceKind(Source s)
{
    if (s.document->version == profile::invoiceVersion) return 1;
    return s.document->version == profile::ownerVersion ? 2 : 5;
}

/// Returns ANLASSART.ID: 4 framework contract, 1 private sale, 5 sale after a calamity.
Variant occasion(Source s)
{
    if (!s.document->contract.empty()) return 4;
    return s.delivery.lists.front().calamity.empty() ? 1 : 5;
}

/// One delivery in ten has an accompanying document, HEADERRECH.HULNR.
Variant accompanyingNumberOrNull(Source s)
{
    if (s.delivery.number % 10 != 0) return Null{};
    return "H-" + std::to_string(s.delivery.number / 10);
}

/// HEADERRECH: one row per invoice or settlement.
constexpr std::array documents{
    RowField{"R_NAME", DataType::VarWChar, [](Source s) { return Variant{s.document->name}; }},
    RowField{"VER_TYPE", DataType::VarWChar, [](Source s) { return Variant{profile::versions[s.document->version]}; }},
    RowField{"INVDATE", DataType::Date, [](Source s) { return Variant{s.document->date}; }},
    RowField{"ZAHLDATUM", DataType::Date, [](Source s) { return orNull(s.document->paid); }},
    RowField{"DATE1", DataType::Date, [](Source s) { return Variant{Date{s.document->date.days + 30.0}}; }},
    RowField{"DATE2", DataType::Date, [](Source s) { return Variant{s.delivery.lists.back().date}; }},
    RowField{"KOPF1", DataType::VarWChar,
             [](Source s) { return Variant{"Lieferung " + s.delivery.lists.front().name}; }},
    RowField{"KOPF2", DataType::VarWChar,
             [](Source s) { return textOrNull(s.document->contract.empty() ? "" : "laut Vertrag"); }},
    RowField{"KOPF6", DataType::VarWChar, deliveryTerms},
    RowField{"NUMM1", DataType::Double, [](Source s) { return Variant{documentTotal(s)}; }},
    RowField{"NUMM2", DataType::Double, [](Source s) { return Variant{static_cast<double>(s.delivery.lists.size())}; }},
    RowField{"VERTRAG", DataType::VarWChar, [](Source s) { return textOrNull(s.document->contract); }},
    RowField{"HULNR", DataType::VarWChar, accompanyingNumberOrNull},
    RowField{"RART_ID", DataType::Integer, invoiceKind},
    RowField{"BUCHNR_ID", DataType::Integer, [](Source s) { return Variant{s.document->bookingNumber}; }},
    RowField{"KAPITEL_ID", DataType::Integer, [](Source s) { return Variant{s.document->chapter}; }},
    RowField{"TITEL_ID", DataType::Integer, [](Source s) { return Variant{s.document->title}; }},
    RowField{"MANDANTEN_ID", DataType::Integer, [](Source s) { return Variant{s.delivery.lists.front().owner}; }},
    RowField{"KUNDEN_ID", DataType::Integer, [](Source s) { return Variant{s.document->partner}; }},
    RowField{"ID_ANLASSART", DataType::Integer, occasion},
    RowField{"GESPERRT", DataType::Boolean, [](Source s) { return Variant{s.document->isClosed}; }},
    RowField{"ID_USER", DataType::Integer, [](Source s) { return Variant{s.delivery.lists.front().user}; }},
    RowField{"ID_ACCESS_LEVELS", DataType::Integer, [](Source s) { return Variant{s.delivery.lists.front().level}; }},
};

/// NN_POSITIONEN: articles of an invoice.
constexpr std::array articles{
    RowField{"NN_NAME", DataType::VarWChar, [](Source s) { return Variant{s.document->name}; }},
    RowField{"VER_TYPE", DataType::VarWChar, [](Source s) { return Variant{profile::versions[s.document->version]}; }},
    RowField{"NUMMER", DataType::VarWChar, [](Source s) { return Variant{s.article->number}; }},
    RowField{"BEZEICHNUNG", DataType::VarWChar, [](Source s) { return Variant{s.article->text}; }},
    RowField{"MENGE", DataType::Double, [](Source s) { return Variant{s.article->quantity}; }},
    RowField{"EINHPREIS", DataType::Double, [](Source s) { return Variant{s.article->price}; }},
    RowField{"RABATT", DataType::Double, [](Source s) { return Variant{s.article->discount}; }},
    RowField{"MWST", DataType::Double, [](Source s) { return Variant{s.article->tax}; }},
    RowField{"WILDURS", DataType::VarWChar, [](Source s) { return textOrNull(s.article->origin); }},
    RowField{"ID_PERSONAL", DataType::Integer, [](Source s) { return Variant{s.document->partner}; }},
    RowField{"DATUM", DataType::Date, [](Source s) { return Variant{s.document->date}; }},
};

} // namespace

std::span<const RowField> documentFields() noexcept
{
    return documents;
}

std::span<const RowField> articleFields() noexcept
{
    return articles;
}

} // namespace tamarok::database
