#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/convert.h"

/// What tests of drawn business records share.
namespace tamarok::database::test {

/// Returns a database in memory without timber lists.
inline ado::ConnectionRef databaseOf(std::int32_t records, std::uint64_t seed = 1)
{
    ReferenceOptions options;
    options.logs = 0;
    options.records = records;
    options.seed = seed;
    ado::ConnectionRef connection = embedded::connectInMemory();
    createReferenceDatabase(*connection, options);
    return connection;
}

inline std::int64_t countOf(const ado::ConnectionRef& connection, const std::string& statement)
{
    ado::Recordset rows;
    rows.Open(statement, connection);
    return convert::toLongLong(rows.Fields().Item(0).Value());
}

/// What must not occur: FROM and WHERE of a count that is 0.
struct Fault {
    std::string_view name;
    std::string_view rows;
};

inline void expectNone(const ado::ConnectionRef& connection, const Fault& fault)
{
    EXPECT_EQ(countOf(connection, "SELECT COUNT(*) FROM " + std::string{fault.rows}), 0) << fault.name;
}

/// A key column and the table and column in which each of its values is found.
struct Reference {
    std::string_view table, column, toTable, toColumn;
};

inline void expectFound(const ado::ConnectionRef& connection, const Reference& reference)
{
    const std::string column{reference.column};
    EXPECT_EQ(countOf(connection, "SELECT COUNT(*) FROM " + std::string{reference.table} + " WHERE " + column +
                                      " IS NOT NULL AND " + column + " NOT IN (SELECT " +
                                      std::string{reference.toColumn} + " FROM " + std::string{reference.toTable} +
                                      ")"),
              0)
        << reference.table << "." << column;
}

/// Databases by their number of records, each made once.
class DatabasesByRecords {
public:
    ado::ConnectionRef of(std::int32_t records)
    {
        ado::ConnectionRef& connection = databases_[records];
        if (!connection) connection = databaseOf(records);
        return connection;
    }
    void clear() { databases_.clear(); }

private:
    std::map<std::int32_t, ado::ConnectionRef> databases_;
};

} // namespace tamarok::database::test
