#pragma once

#include <cstddef>

#include "delivery.h"
#include "master_keys.h"
#include "random.h"
#include "tamarok_database/reference_options.h"

namespace tamarok::database {

/// Draws the invoice and the settlements of a delivery and prices its lines.
class SettlementGenerator {
public:
    /// @param keys, options  must outlive the object
    SettlementGenerator(const MasterKeys& keys, const ReferenceOptions& options) : keys_{keys}, options_{options} {}

    /// Adds documents, prices, transport and articles to the delivery. A delivery of the last 40 days before
    /// the base date and 3 % of the others are not invoiced yet and stay as they are.
    void addDocuments(Delivery& delivery, Random& random) const;

private:
    Document drawInvoice(const Delivery& delivery, Random& random) const;
    Document drawSettlement(const Delivery& delivery, std::size_t version, Random& random) const;
    void drawContract(Document& document, Random& random) const;
    void drawDates(Document& document, Date delivered, Random& random) const;

    const MasterKeys& keys_;
    const ReferenceOptions& options_;
};

} // namespace tamarok::database
