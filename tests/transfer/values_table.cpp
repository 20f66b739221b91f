#include "transfer/values_table.h"

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "bulk_insert.h"

#include "tamarok/date.h"

namespace tamarok::test {

namespace {

using ado::DataType;
using database::BulkInsert;

const std::vector<BulkInsert::Column>& columns()
{
    static const std::vector<BulkInsert::Column> all{{"ID", DataType::Integer},
                                                     {"[a b]", DataType::VarWChar},
                                                     {"LONGTEXT", DataType::LongVarWChar},
                                                     {"F", DataType::Double},
                                                     {"R", DataType::Single},
                                                     {"M", DataType::Currency},
                                                     {"D", DataType::Numeric},
                                                     {"T1", DataType::UnsignedTinyInt},
                                                     {"S", DataType::SmallInt},
                                                     {"B", DataType::BigInt},
                                                     {"X", DataType::Boolean},
                                                     {"DT", DataType::DBTimeStamp},
                                                     {"SD", DataType::DBTimeStamp},
                                                     {"DD", DataType::DBDate},
                                                     {"TT", DataType::DBTime},
                                                     {"BIN", DataType::LongVarBinary},
                                                     {"G", DataType::GUID},
                                                     {"FIX", DataType::WChar}};
    return all;
}

Date at(std::int32_t year, std::int32_t month, std::int32_t day, double dayPart)
{
    const Date date = makeDate(year, month, day);
    // Before 1900 the time counts away from the day.
    return Date{date.days < 0 ? date.days - dayPart : date.days + dayPart};
}

std::string longText()
{
    std::string text;
    for (int i = 0; i < 100'000; ++i)
        text += "neun und ü";
    return text;
}

std::string longBinary()
{
    std::string text = "0x";
    for (int i = 0; i < 10'000; ++i)
        text += "A5";
    return text;
}

using Row = std::vector<Variant>;

Row rowOfNulls(std::int32_t id)
{
    Row row(columns().size(), Null{});
    row.front() = id;
    return row;
}

std::vector<Row> rows()
{
    constexpr double quarter = 0.25;
    using Double = std::numeric_limits<double>;
    return {
        {1, "", "", 0.1, 1.5, -99999999999.9999, 123456789.125, std::int16_t{255}, std::int16_t{-32768},
         std::numeric_limits<std::int64_t>::min(), true, at(1753, 1, 1, 0.0), at(1900, 1, 1, 0.0),
         at(1582, 10, 15, 0.0), Date{quarter}, "0x", "6F9619FF-8B86-D011-B42D-00C04FC964FF", "ab"},
        {2, "Lärche ß  ", "Ende mit Blanks   ", 5e-324, 1.100000023841858, 0.0001, -0.001, std::int16_t{0},
         std::int16_t{32767}, std::numeric_limits<std::int64_t>::max(), false, at(1899, 12, 29, quarter),
         at(2079, 6, 6, 0.5), at(9999, 12, 31, 0.0), Date{0.999988425925926}, "0x00FF10AB", Null{}, " x"},
        {3, "'; DROP TABLE x --", "a\\\nb\\\r\nc $(x) ? {d} 🌲\t'", -Double::max(), 0.0, 1.0, 0.0, Null{}, Null{},
         std::int64_t{0}, Null{}, at(9999, 12, 31, 0.5), at(2024, 3, 5, quarter), at(100, 1, 1, 0.0), Null{}, Null{},
         Null{}, Null{}},
        {4, "🌲🌲", longText(), 1.0 / 3.0, Null{}, Null{}, Null{}, std::int16_t{7}, std::int16_t{1}, std::int64_t{-1},
         true, Null{}, Null{}, Null{}, Null{}, longBinary(), Null{}, Null{}},
        rowOfNulls(9),
    };
}

} // namespace

void makeValueTables(ado::Connection& connection)
{
    connection.Execute("CREATE TABLE USER_TABLE (ID INT IDENTITY(1,1) NOT NULL, [a b] NVARCHAR(40), LONGTEXT "
                       "NVARCHAR(MAX), F FLOAT, R REAL, M MONEY, D DECIMAL(15,3), T1 TINYINT, S SMALLINT, B BIGINT, X "
                       "BIT, DT DATETIME, SD SMALLDATETIME, DD DATE, TT TIME(3), BIN VARBINARY(MAX), G "
                       "UNIQUEIDENTIFIER, FIX NCHAR(4), PRIMARY KEY (ID))");
    connection.Execute("CREATE INDEX [IX user] ON USER_TABLE ([a b] DESC, F)");
    connection.Execute("SET IDENTITY_INSERT USER_TABLE ON");
    BulkInsert insert{connection, "USER_TABLE", columns()};
    for (const Row& row : rows()) {
        for (std::size_t i = 0; i < row.size(); ++i)
            insert[i] = row[i];
        insert.insert();
    }
    connection.Execute("SET IDENTITY_INSERT USER_TABLE OFF");
    // The same without binary values, which take another way to a server.
    connection.Execute(
        "CREATE TABLE USER_SHORT (ID INT NOT NULL PRIMARY KEY, [a b] NVARCHAR(40), LONGTEXT NVARCHAR(MAX), "
        "F FLOAT, R REAL, M MONEY, D DECIMAL(15,3), T1 TINYINT, S SMALLINT, B BIGINT, X BIT, DT DATETIME, "
        "SD SMALLDATETIME, DD DATE, TT TIME(3), G UNIQUEIDENTIFIER, FIX NCHAR(4))");
    connection.Execute(
        "INSERT INTO USER_SHORT SELECT ID, [a b], LONGTEXT, F, R, M, D, T1, S, B, X, DT, SD, DD, TT, G, FIX "
        "FROM USER_TABLE");
    connection.Execute(
        "CREATE TABLE NUMBERED (N INT IDENTITY(1,1) NOT NULL PRIMARY KEY, V NVARCHAR(5) NOT NULL DEFAULT "
        "'x', W INT DEFAULT 3, Z NVARCHAR(9) COLLATE Latin1_General_BIN2, UNIQUE (V, W))");
    connection.Execute("INSERT INTO NUMBERED (V) VALUES ('a')");
    connection.Execute("INSERT INTO NUMBERED (V) VALUES ('b')");
    connection.Execute("INSERT INTO NUMBERED (V) VALUES ('c')");
    connection.Execute("DELETE FROM NUMBERED WHERE V = 'c'"); // 3 has been given out
    connection.Execute("CREATE TABLE EMPTIED (N INT IDENTITY(1,1) NOT NULL PRIMARY KEY, V INT)");
    connection.Execute("INSERT INTO EMPTIED (V) VALUES (1)");
    connection.Execute("INSERT INTO EMPTIED (V) VALUES (2)");
    connection.Execute("DELETE FROM EMPTIED");
    connection.Execute("CREATE TABLE UNUSED (N INT IDENTITY(1,1) NOT NULL PRIMARY KEY, V INT)");
    connection.Execute("CREATE TABLE PAIRS (A NVARCHAR(10) NOT NULL, B INT NOT NULL, PRIMARY KEY (B, A))");
    connection.Execute("INSERT INTO PAIRS (A, B) VALUES ('q', 1)");
}

} // namespace tamarok::test
