#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::test {

/// The reference database in memory, made once for all cases, and a session on it.
class SelectionDatabase : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (connection()) return;
        connection() = embedded::connectInMemory();
        database::ReferenceOptions small;
        small.logs = 1000; // enough for lists that are not yet invoiced
        small.records = 0; // the cases name the rows of the key tables, to which business records add
        database::createReferenceDatabase(*connection(), small);
    }

    SelectionDatabase() : scope_{makePlatform()} { session.db_ADO = connection(); }

    /// The statement of a key; fields are divided by "|" here.
    std::string statement(const std::string& key, std::string fields = {}) const
    {
        std::ranges::replace(fields, '|', '\t');
        return Comm_Set{}.CreateSQL(session, key, fields);
    }

    /// The first column of every row, Null as "NULL".
    std::vector<std::string> codes(const std::string& key, const std::string& fields = {},
                                   std::int32_t column = 0) const
    {
        return firstColumn(statement(key, fields), column);
    }

    std::vector<std::string> firstColumn(const std::string& text, std::int32_t column = 0) const
    {
        ado::Recordset rows;
        rows.Open(text, session.db_ADO);
        std::vector<std::string> values;
        for (; !rows.AtEOF(); rows.MoveNext()) {
            const Variant value = rows.Fields().Item(column).Value();
            values.push_back(value.isNull() ? "NULL" : convert::toText(value));
        }
        rows.Close();
        return values;
    }

    TmkVar session;

private:
    static Platform makePlatform()
    {
        Platform platform;
        platform.regional = Regional::named("de-AT");
        return platform;
    }
    static ado::ConnectionRef& connection()
    {
        static ado::ConnectionRef shared;
        return shared;
    }

    PlatformScope scope_;
};

} // namespace tamarok::test
