#include "areas/areas.h"
#include "areas/sales_parts.h"

namespace tamarok::database {

void writeSales(ado::Connection& connection, const ReferenceOptions& options)
{
    if (options.records == 0) return;
    // Transports and invoices refer to contracts and articles, so those come first.
    const sales::Keys keys{connection};
    sales::writeContracts(connection, options, keys);
    sales::writeGoods(connection, options, keys);
    sales::writeTransports(connection, options, keys);
    sales::writeArticleInvoices(connection, options, keys);
    sales::writeInvoiceJournal(connection);
    sales::writeBilling(connection, options, keys);
}

} // namespace tamarok::database
