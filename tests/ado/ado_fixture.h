#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "support/errors.h"
#include "support/recording_database.h"

namespace tamarok::ado {

using test::errorNumber;
using test::failureOf;
using test::Row;
using test::Table;

/// A connection to a recording database with the table of species that most tests read.
class AdoTest : public ::testing::Test {
protected:
    static constexpr const char* query = "SELECT ID, NAME, PRICE FROM SPECIES";

    AdoTest()
    {
        species->columns = {{"ID", "SPECIES", "ID", DataType::Integer, 4},
                            {"Name", "SPECIES", "NAME", DataType::VarWChar, 40},
                            {"PRICE", "", "", DataType::Double, 8}};
        species->rows = {{1, {1, "Fichte", 80.5}}, {2, {2, "Tanne", Null{}}}, {3, {3, "Lärche", 110.25}}};
        database->answerTable(query, species);
    }

    std::shared_ptr<Recordset> open(CursorType cursor = CursorType::OpenForwardOnly, LockType lock = LockType::ReadOnly)
    {
        auto recordset = std::make_shared<Recordset>();
        recordset->Open(query, connection, cursor, lock);
        return recordset;
    }

    /// First column of the current row.
    static Variant id(const Recordset& recordset) { return recordset.Fields().Item(0).Value(); }

    std::shared_ptr<test::RecordingDatabase> database =
        std::make_shared<test::RecordingDatabase>(test::Unanswered::HasNoResult);
    std::shared_ptr<Table> species = std::make_shared<Table>();
    ConnectionRef connection = database->connect();
};

using Log = std::vector<std::string>;

} // namespace tamarok::ado
