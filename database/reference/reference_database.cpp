#include "tamarok_database/reference_database.h"

#include <memory>
#include <string>

#include "areas/areas.h"
#include "delivery_generator.h"
#include "delivery_writer.h"
#include "master_keys.h"
#include "reporter.h"
#include "table_loader.h"
#include "tamarok_database/schema.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/transaction.h"

namespace tamarok::database {
namespace {

/// Fails if a row of LOGS_RECH has no log: DeliveryWriter counts the logs from 1 and expects the database to
/// give them the same numbers.
void checkLogNumbers(ado::Connection& connection, std::int64_t logs)
{
    ado::Recordset rows;
    const ado::ConnectionRef reference{std::shared_ptr<void>{}, &connection};
    rows.Open("SELECT COUNT(*) AS MISSING FROM LOGS_RECH WHERE ID_LOG NOT IN (SELECT ID_LOG FROM LOGS)", reference);
    const Variant missing = rows.Fields().Item(0).Value();
    rows.Close();
    if (convert::toLongLong(missing) != 0)
        throw Error{errors::providerFailure,
                    "The database did not number the " + std::to_string(logs) + " rows of LOGS from 1.",
                    "createReferenceDatabase"};
}

void createLogs(ado::Connection& connection, const ReferenceOptions& options, Reporter& reporter)
{
    constexpr std::string_view name = "Timber lists";
    const MasterKeys keys;
    DeliveryGenerator generator{keys, options};
    DeliveryWriter writer{connection, keys};
    reporter.report({name, 0, options.logs});
    Delivery delivery;
    while (generator.next(delivery)) {
        writer.write(delivery);
        reporter.reportThrottled({name, writer.logs(), options.logs});
    }
    checkLogNumbers(connection, writer.logs());
    reporter.report({name, writer.logs(), options.logs});
}

constexpr std::int32_t maximumRecords = 100000;

/// An area of business records.
struct Area {
    std::string_view name;
    void (*write)(ado::Connection&, const ReferenceOptions&);
};

constexpr Area areas[]{
    {"People", &writePeople},   {"Planning", &writePlanning},   {"Receipts", &writeReceipts}, {"Sales", &writeSales},
    {"Hunting", &writeHunting}, {"Inventory", &writeInventory}, {"Stores", &writeStores},     {"Levels", &writeLevels},
};

void writeRecords(ado::Connection& connection, const ReferenceOptions& options, Reporter& reporter)
{
    constexpr std::string_view name = "Business records";
    std::int64_t done = 0;
    for (const Area& area : areas) {
        reporter.report({name, done++, std::size(areas)});
        try {
            area.write(connection, options);
        } catch (Error& error) {
            throw error.addContext(area.name);
        }
    }
    reporter.report({name, done, std::size(areas)});
}

void writeMasterTables(ado::Connection& connection, Reporter& reporter)
{
    runPhase(reporter, "Tables", [&] { createTables(connection); });
    runPhase(reporter, "Texts", [&] { loadTexts(connection); });
    runPhase(reporter, "Master data", [&] {
        loadMasterData(connection);
        loadSelectionKeys(connection);
    });
}

} // namespace

void createMasterDatabase(ado::Connection& connection, const ProgressListener& progress)
{
    Reporter reporter{progress};
    ado::Transaction transaction{connection};
    writeMasterTables(connection, reporter);
    runPhase(reporter, "Indexes", [&] { createIndexes(connection); });
    transaction.commit();
}

void createReferenceDatabase(ado::Connection& connection, const ReferenceOptions& options,
                             const ProgressListener& progress)
{
    if (options.records < 0 || options.records > maximumRecords)
        throw Error{errors::invalidArgument,
                    "The number of business records must lie between 0 and 100,000; it is " +
                        std::to_string(options.records) + ".",
                    "createReferenceDatabase"};
    Reporter reporter{progress};
    ado::Transaction transaction{connection};
    writeMasterTables(connection, reporter);
    createLogs(connection, options, reporter);
    writeRecords(connection, options, reporter);
    runPhase(reporter, "Indexes", [&] { createIndexes(connection); });
    transaction.commit();
}

} // namespace tamarok::database
