#pragma once

#include "database/delivery.h"
#include "database/master_keys.h"
#include "database/random.h"
#include "tamarok_database/reference_options.h"

namespace tamarok::database {

/// Draws the documents of a delivery and prices its lines.
class SettlementGenerator {
public:
    SettlementGenerator(const MasterKeys& keys, const ReferenceOptions& options) : keys_{keys}, options_{options} {}

    /// Adds invoice and settlements, articles and prices, or nothing while the delivery is too young.
    void settle(Delivery& delivery, Random& random) const;

private:
    Document invoice(const Delivery& delivery, Random& random) const;
    Document settlement(const Delivery& delivery, std::size_t version, Random& random) const;
    void date(Document& document, Date delivered, Random& random) const;
    void price(Delivery& delivery, const Document& document, double level) const;

    const MasterKeys& keys_;
    const ReferenceOptions& options_;
};

} // namespace tamarok::database
