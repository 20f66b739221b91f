#include "embedded/contract/contract.h"

#include <array>
#include <charconv>
#include <gtest/gtest.h>

#include "tamarok_embedded/connect.h"

#include "tamarok/date.h"
#include "tamarok/error.h"

namespace tamarok::embedded::contract {

namespace {

constexpr std::string_view woodTable =
    "CREATE TABLE WOOD (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(20), CODE VARCHAR(10), LENGTH_M DECIMAL(10,2), "
    "PIECES INT, FELLED SMALLDATETIME, CHECKED BIT, VOLUME FLOAT)";

constexpr std::string_view woodRows[] = {
    "INSERT INTO WOOD VALUES (1,'Fichte','FI',4.50,10,'2024-03-05 10:15',1,1.25)",
    "INSERT INTO WOOD VALUES (2,'fichte ','fi',5.00,7,'2024-03-06',0,2.5)",
    "INSERT INTO WOOD VALUES (3,'Ärle','AE',NULL,NULL,NULL,1,0.5)",
    "INSERT INTO WOOD VALUES (4,'Arle','AR',3.10,3,'2023-12-31',NULL,NULL)",
    "INSERT INTO WOOD VALUES (5,NULL,'NN',2.00,0,'2024-01-01',0,3.75)",
};

std::string padded(std::int32_t number, std::size_t digits)
{
    std::string text = std::to_string(number);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

std::string spelled(Date date)
{
    const CivilTime parts = toCivil(date);
    std::string text = padded(parts.year, 4) + '-' + padded(parts.month, 2) + '-' + padded(parts.day, 2);
    if (parts.hour + parts.minute + parts.second + parts.millisecond == 0) return text;
    text += ' ' + padded(parts.hour, 2) + ':' + padded(parts.minute, 2) + ':' + padded(parts.second, 2);
    return parts.millisecond == 0 ? text : text + '.' + padded(parts.millisecond, 3);
}

std::string spelled(double number)
{
    std::array<char, 40> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string text{buffer.data(), written.ptr};
    return text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
}

std::string spelled(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Null: return "NULL";
    case Variant::Kind::Boolean: return value.asBoolean() ? "true" : "false";
    case Variant::Kind::Integer: return std::to_string(value.asInteger());
    case Variant::Kind::Long: return std::to_string(value.asLong());
    case Variant::Kind::LongLong: return std::to_string(value.asLongLong());
    case Variant::Kind::Double: return spelled(value.asDouble());
    case Variant::Kind::Date: return spelled(value.asDate());
    case Variant::Kind::String: return "'" + value.asString() + "'";
    default: return "a value of an unexpected kind";
    }
}

void check(std::span<const Row> rows, std::string_view prefix)
{
    ASSERT_FALSE(rows.empty());
    const auto connection = woodDatabase();
    for (const Row& row : rows) {
        const std::string statement = std::string{prefix} + std::string{row.statement};
        EXPECT_EQ(answer(connection, statement), row.answer) << statement;
    }
}

} // namespace

ado::ConnectionRef woodDatabase()
{
    auto connection = connectInMemory();
    connection->Execute(woodTable);
    for (const std::string_view row : woodRows)
        connection->Execute(row);
    return connection;
}

std::string answer(const ado::ConnectionRef& connection, std::string_view statement)
{
    try {
        ado::Recordset recordset;
        recordset.Open(statement, connection);
        if (recordset.State() == ado::ObjectState::Closed || recordset.AtEOF()) return "none";
        std::string rows;
        for (bool first = true; !recordset.AtEOF(); recordset.MoveNext(), first = false) {
            if (!first) rows += " | ";
            for (std::int32_t column = 0; column < recordset.Fields().Count(); ++column) {
                if (column > 0) rows += ", ";
                rows += spelled(recordset.Fields().Item(column).Value());
            }
        }
        return rows;
    } catch (const Error& error) {
        if (error.nativeError == 0) return std::string{"error without number: "} + error.what();
        return "error " + std::to_string(error.nativeError);
    }
}

void checkExpressions(std::span<const Row> rows)
{
    check(rows, "SELECT ");
}

void checkStatements(std::span<const Row> rows)
{
    check(rows, "");
}

} // namespace tamarok::embedded::contract
