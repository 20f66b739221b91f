#include <array>
#include <memory>

#include "areas/areas.h"
#include "areas/receipts_writers.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

constexpr std::array inventoryFields{
    RecordField<InventoryReport>{"ID_BB_BELEGE", &InventoryReport::position},
    RecordField<InventoryReport>{"MENGE", &InventoryReport::quantity},
    RecordField<InventoryReport>{"FLACHE", &InventoryReport::area},
    RecordField<InventoryReport>{"DATUM", &InventoryReport::date},
    RecordField<InventoryReport>{"BESTAND", &InventoryReport::stand},
    RecordField<InventoryReport>{"UBERNAHMEDATUM", &InventoryReport::transferred},
};

/// The greatest ID in use: another area may have written reports too.
std::int32_t lastReport(ado::Connection& connection)
{
    ado::Recordset rows;
    rows.Open("SELECT ISNULL(MAX(ID),0) FROM BB_NATURALVOLLZUG_DSW",
              ado::ConnectionRef{std::shared_ptr<void>{}, &connection});
    return convert::toLong(rows.Fields().Item(0).Value());
}

} // namespace

InventoryReports::InventoryReports(ado::Connection& connection) :
    insert_{connection, "BB_NATURALVOLLZUG_DSW", inventoryFields}, last_{lastReport(connection)}
{}

std::int32_t InventoryReports::write(const InventoryReport& report)
{
    insert_.insert(report);
    return ++last_;
}

void writeReceipts(ado::Connection& connection, const ReferenceOptions& options)
{
    if (options.records == 0) return;
    const ReceiptKeys keys{connection};
    writeVouchers(connection, keys, options);
    writeHarvestRecords(connection, keys, options);
}

} // namespace tamarok::database
