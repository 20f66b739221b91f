#include "layout_update.h"

#include <string>

#include "database.h"
#include "failures.h"
#include "tamarok_embedded/connect.h"

namespace tamarok::embedded {

namespace {

bool isOutdated(const Database& database)
{
    return database.number("PRAGMA user_version") < layoutVersion;
}

} // namespace

/// The version is looked at again under the write lock, since another process may have updated the file meanwhile.
void updateLayout(Database& database)
{
    if (!isOutdated(database)) {
        return;
    }
    if (database.readOnly()) {
        throw failure(native::cannotOpen,
                      "Its indexes have the order of an earlier version; open it once for writing.");
    }
    database.run("BEGIN IMMEDIATE");
    database.deadline().arm(0); // a large file takes longer than an opening may wait for a lock
    try {
        if (isOutdated(database)) {
            database.run("REINDEX TAMAROK; PRAGMA user_version=" + std::to_string(layoutVersion));
        }
        database.run("COMMIT");
    } catch (...) {
        sqlite3_exec(database.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

} // namespace tamarok::embedded
