#pragma once

#include "areas/sales_rows.h"
#include "tamarok_database/reference_options.h"

// The parts of the sales area, in the order in which they run: later ones refer to rows of earlier ones. Errors of
// all of them: provider failures.
namespace tamarok::database::sales {

/// Fills VERTRAEGE up to `options.records` rows, with their quantities, and adds the terms of associations.
void writeContracts(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);

/// An article of the catalogue, as positions of invoices take it over.
struct Article {
    std::int32_t id = 0;      ///< WARENKATALOG.ART_ID
    std::string number, text; ///< NUMMER; both descriptions
    double price = 0.0;       ///< euro per unit
    std::int32_t group = 0;   ///< WARENGRUPPE.GRUPPE_ID
    std::int32_t unit = 0;    ///< WARENEINHEIT.EINHEIT_ID
    double tax = 0.0;         ///< percent
};

/// Returns the articles that may be billed, by their IDs. Errors: provider failures.
std::vector<Article> readArticles(ado::Connection& connection);

/// A quantity as customers order it: plants by the fifty, firewood by the half stacked cubic metre.
double drawQuantity(Random& random, const Article& article);

/// Fills WARENKATALOG up to `options.records` articles and gives every article its stock.
void writeGoods(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);

/// Writes transport orders with their trips.
void writeTransports(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);

/// Writes invoices of articles, which no log names, with their positions.
void writeArticleInvoices(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);

/// Writes the journal of the documents that are there, in the order of their dates.
void writeInvoiceJournal(ado::Connection& connection);

/// Writes billing records with their positions and further receipts.
void writeBilling(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);

} // namespace tamarok::database::sales
