#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database.h"

/// The numbers that identity columns have given out. The server never gives out a number again, even if the row that
/// had it was rolled back; SQLite rolls its counters back with the rows.
namespace tamarok::embedded {

/// The last number of each table with an identity column.
class IdentityNumbers {
public:
    explicit IdentityNumbers(const Database& database);

    /// Whether a counter of the database is behind the number noted here. A table that has gone does not count.
    bool isAheadOf(const Database& database) const;
    /// Raises the counters that are behind. Needs a write transaction. @@IDENTITY stays.
    void restore(const Database& database) const;

private:
    struct Entry {
        std::string table;
        std::int64_t last;
    };
    std::vector<Entry> entries_;
};

/// The last number of one table, 0 if it has given out none.
std::int64_t lastIdentity(const Database& database, std::string_view table);

/// Raises the counter of one table to `number`. Needs a write transaction. @@IDENTITY stays.
void raiseIdentity(const Database& database, std::string_view table, std::int64_t number);

} // namespace tamarok::embedded
