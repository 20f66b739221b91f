#include "tamarok_database/reference_database.h"

#include <chrono>
#include <memory>
#include <string>

#include "areas/areas.h"
#include "delivery_generator.h"
#include "delivery_writer.h"
#include "master_keys.h"
#include "table_loader.h"
#include "tamarok_database/schema.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::database {
namespace {

/// Rolls back at its end unless it was committed.
class Transaction {
public:
    explicit Transaction(ado::Connection& connection) : connection_{connection} { connection_.BeginTrans(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    ~Transaction()
    {
        if (committed_) return;
        try {
            connection_.RollbackTrans();
        } catch (const std::exception&) {
            // The exception that led here is the caller's to see; the database rolls back when the session ends.
        }
    }

    void commit()
    {
        connection_.CommitTrans();
        committed_ = true;
    }

private:
    ado::Connection& connection_;
    bool committed_ = false;
};

/// Calls the listener, and drops reports that follow the last one within a tenth of a second.
class Reporter {
public:
    explicit Reporter(const ProgressListener& listener) : listener_{listener} {}

    void report(const Progress& progress)
    {
        last_ = Clock::now();
        if (listener_) listener_(progress);
    }

    void reportThrottled(const Progress& progress)
    {
        if (listener_ && Clock::now() - last_ >= std::chrono::milliseconds{100}) report(progress);
    }

private:
    using Clock = std::chrono::steady_clock;
    const ProgressListener& listener_;
    Clock::time_point last_ = Clock::now();
};

/// Runs a phase whose work is not counted.
template <class Work>
void runPhase(Reporter& reporter, std::string_view name, Work work)
{
    reporter.report({name, 0, 1});
    work();
    reporter.report({name, 1, 1});
}

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

} // namespace

void createReferenceDatabase(ado::Connection& connection, const ReferenceOptions& options,
                             const ProgressListener& progress)
{
    if (options.records < 0 || options.records > maximumRecords)
        throw Error{errors::invalidArgument,
                    "The number of business records must lie between 0 and 100,000; it is " +
                        std::to_string(options.records) + ".",
                    "createReferenceDatabase"};
    Reporter reporter{progress};
    Transaction transaction{connection};
    runPhase(reporter, "Tables", [&] { createTables(connection); });
    runPhase(reporter, "Texts", [&] { loadTexts(connection); });
    runPhase(reporter, "Master data", [&] {
        loadMasterData(connection);
        loadSelectionKeys(connection);
    });
    createLogs(connection, options, reporter);
    writeRecords(connection, options, reporter);
    runPhase(reporter, "Indexes", [&] { createIndexes(connection); });
    transaction.commit();
}

} // namespace tamarok::database
