#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "fake_backend.h"

namespace tamarok::ado::fake {

/// The Error that `action` ends in; a test failure and number 0 where there is none.
inline Error failureOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "no error was raised";
    return Error{0, ""};
}

inline std::int32_t numberOf(const std::function<void()>& action)
{
    return failureOf(action).number;
}

/// A connection to a fake database with the table of species that most tests read.
class AdoTest : public ::testing::Test {
protected:
    static constexpr const char* query = "SELECT ID, NAME, PRICE FROM SPECIES";

    AdoTest()
    {
        species->columns = {{"ID", "SPECIES", "ID", DataType::Integer, 4},
                            {"Name", "SPECIES", "NAME", DataType::VarWChar, 40},
                            {"PRICE", "", "", DataType::Double, 8}};
        species->rows = {{1, {1, "Fichte", 80.5}}, {2, {2, "Tanne", Null{}}}, {3, {3, "Lärche", 110.25}}};
        database->tables[query] = species;
    }

    std::shared_ptr<Recordset> open(CursorType cursor = CursorType::OpenForwardOnly, LockType lock = LockType::ReadOnly)
    {
        auto recordset = std::make_shared<Recordset>();
        recordset->Open(query, connection, cursor, lock);
        return recordset;
    }

    /// First column of the current row.
    static Variant id(const Recordset& recordset) { return recordset.Fields().Item(0).Value(); }

    std::shared_ptr<Database> database = std::make_shared<Database>();
    std::shared_ptr<Table> species = std::make_shared<Table>();
    ConnectionRef connection = std::make_shared<Connection>(std::make_unique<FakeSession>(database), "Fake");
};

using Log = std::vector<std::string>;

} // namespace tamarok::ado::fake
