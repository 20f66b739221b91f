#include "tamarok_database/reference_database.h"

#include <chrono>
#include <memory>
#include <string>

#include "database/delivery_generator.h"
#include "database/delivery_writer.h"
#include "database/master_keys.h"
#include "database/schema.h"
#include "database/table_groups.h"
#include "database/table_loader.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

/// Takes back what was not committed.
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
            // The failure that led here is on its way to the caller; the session's end takes back the rest.
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

/// Passes progress on, at most ten times a second.
class Reporter {
public:
    explicit Reporter(const ProgressListener& listener) : listener_{listener} {}

    void now(const Progress& progress)
    {
        last_ = Clock::now();
        if (listener_) listener_(progress);
    }

    void sometimes(const Progress& progress)
    {
        if (listener_ && Clock::now() - last_ >= std::chrono::milliseconds{100}) now(progress);
    }

private:
    using Clock = std::chrono::steady_clock;
    const ProgressListener& listener_;
    Clock::time_point last_ = Clock::now();
};

template <class Work>
void phase(Reporter& reporter, std::string_view name, Work work)
{
    reporter.now({name, 0, 1});
    work();
    reporter.now({name, 1, 1});
}

/// LOGS_RECH refers to the numbers that the database gave to LOGS, counted from 1 on the way.
void checkNumbers(ado::Connection& connection, std::int64_t logs)
{
    ado::Recordset numbers;
    const ado::ConnectionRef borrowed{std::shared_ptr<void>{}, &connection};
    numbers.Open("SELECT COUNT(*) AS MISSING FROM LOGS_RECH WHERE ID_LOG NOT IN (SELECT ID_LOG FROM LOGS)", borrowed);
    const Variant missing = numbers.Fields().Item(0).Value();
    numbers.Close();
    const bool complete = missing == Variant{std::int32_t{0}} || missing == Variant{std::int64_t{0}};
    if (!complete)
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
    reporter.now({name, 0, options.logs});
    Delivery delivery;
    while (generator.next(delivery)) {
        writer.write(delivery);
        reporter.sometimes({name, writer.logs(), options.logs});
    }
    checkNumbers(connection, writer.logs());
    reporter.now({name, writer.logs(), options.logs});
}

} // namespace

void createReferenceDatabase(ado::Connection& connection, const ReferenceOptions& options,
                             const ProgressListener& progress)
{
    Reporter reporter{progress};
    Transaction transaction{connection};
    phase(reporter, "Tables", [&] { createTables(connection); });
    phase(reporter, "Texts", [&] { loadTexts(connection); });
    phase(reporter, "Master data", [&] {
        loadMasterData(connection);
        loadSelectionKeys(connection);
    });
    createLogs(connection, options, reporter);
    phase(reporter, "Indexes", [&] { createIndexes(connection); });
    transaction.commit();
}

} // namespace tamarok::database
