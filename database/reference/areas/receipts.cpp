#include <array>

#include "areas/area_keys.h"
#include "areas/areas.h"
#include "areas/receipts_writers.h"

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

} // namespace

InventoryReports::InventoryReports(ado::Connection& connection) :
    insert_{connection, "BB_NATURALVOLLZUG_DSW", inventoryFields}, last_{lastId(connection, "BB_NATURALVOLLZUG_DSW")}
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
