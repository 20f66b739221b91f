#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <string_view>

#include "support/errors.h"
#include "support/platforms.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/ado.h"
#include "tamarok/tmkvar.h"

namespace tamarok::test {

/// An empty database in memory with a session on it, under decimal commas.
class SmallDatabase : public ::testing::Test {
protected:
    SmallDatabase() { session.db_ADO = connection; }

    void run(std::string_view statement) { connection->Execute(statement); }

    /// A table whose columns all take Null.
    void table(const std::string& name, const std::string& columns)
    {
        run("CREATE TABLE " + name + " (" + columns + ")");
    }

    void insert(const std::string& target, std::initializer_list<std::string_view> rows)
    {
        for (const std::string_view row : rows)
            run(("INSERT INTO " + target + " VALUES (").append(row).append(")"));
    }

    /// The first value of a query's first row.
    Variant ask(std::string_view query) const
    {
        ado::Recordset rows;
        rows.Open(query, connection);
        return rows.AtEOF() ? Variant{"no row"} : rows.Fields().Item(0).Value();
    }

    PlatformScope scope{platformOf("de-AT")};
    ado::ConnectionRef connection = embedded::connectInMemory();
    TmkVar session;
};

} // namespace tamarok::test
