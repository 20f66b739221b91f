#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "json_rows.h"
#include "literals.h"
#include "support/errors.h"

#include "tamarok/date.h"

namespace tamarok::database {
namespace {

using ado::DataType;

std::string literalOf(const Variant& value, DataType type)
{
    std::string text;
    appendLiteral(text, value, type);
    return text;
}

std::string longText()
{
    std::string text;
    for (int i = 0; i < 4001; ++i)
        text += 'x';
    return text;
}

struct Case {
    const char* name;
    Variant value;
    DataType type;
    const char* literal;
};

TEST(Literals, AreIndependentOfTheSession)
{
    const Case cases[]{
        {"Null", Null{}, DataType::VarWChar, "NULL"},
        {"EmptyText", "", DataType::VarWChar, "N''"},
        {"Quotes", "it's", DataType::VarWChar, "N'it''s'"},
        {"TrailingBlanks", "ä  ", DataType::VarWChar, "N'ä  '"},
        {"LineEnd", "a\nb", DataType::VarWChar, "N'a\nb'"},
        {"BackslashBeforeLineEnd", "a\\\nb", DataType::VarWChar, "CAST(N'' AS NVARCHAR(MAX)) + N'a\\' + N'\nb'"},
        {"Zero", std::string{"a\0b", 3}, DataType::VarWChar, "CAST(N'' AS NVARCHAR(MAX)) + N'a' + NCHAR(0) + N'b'"},
        {"VariableOfTheClient", "$(x)", DataType::VarWChar, "CAST(N'' AS NVARCHAR(MAX)) + N'$' + N'(x)'"},
        {"True", true, DataType::Boolean, "1"},
        {"False", false, DataType::Boolean, "0"},
        {"Small", std::int16_t{-5}, DataType::SmallInt, "-5"},
        {"Big", std::numeric_limits<std::int64_t>::min(), DataType::BigInt, "-9223372036854775808"},
        {"Double", 0.1, DataType::Double, "1e-01"},
        {"Smallest", 5e-324, DataType::Double, "5e-324"},
        {"AllDigits", 1.0 / 3.0, DataType::Double, "3.333333333333333e-01"},
        {"Decimal", 12.5, DataType::Numeric, "'12.5'"},
        {"Money", -922337203685.4775, DataType::Currency, "'-922337203685.4775'"},
        {"Day", makeDate(2024, 3, 5), DataType::DBTimeStamp, "'20240305'"},
        {"DayAndTime", Date{makeDate(2024, 3, 5).days + 0.5}, DataType::DBTimeStamp, "'20240305 12:00:00'"},
        {"Milliseconds", Date{makeDate(2024, 3, 5).days + 0.5 + 0.123 / 86400}, DataType::DBTimeStamp,
         "'20240305 12:00:00.123'"},
        {"Before1900", Date{-1.25}, DataType::DBTimeStamp, "'18991229 06:00:00'"},
        {"Time", Date{0.25}, DataType::DBTime, "'06:00:00'"},
        {"Binary", "0x00FF", DataType::VarBinary, "0x00FF"},
    };
    for (const Case& row : cases)
        EXPECT_EQ(literalOf(row.value, row.type), row.literal) << row.name;
}

TEST(Literals, ThereIsNoneOfAnArray)
{
    test::expectError(13, "Array", [] { literalOf(VariantArray{}, DataType::VarWChar); });
}

TEST(JsonRows, AreOneTextOfAllRows)
{
    const std::vector<RowColumn> columns{
        {"A", DataType::VarWChar}, {"B", DataType::Double}, {"C", DataType::DBTimeStamp}};
    const std::vector<std::vector<Variant>> rows{
        {"it's", 0.5, Null{}}, {Null{}, Null{}, makeDate(2024, 3, 5)}, {"ä ", 1.0, Null{}}};
    const std::vector<std::size_t> used{0, 1, 2};
    EXPECT_EQ(jsonStatementOf("[T]", rows, columns, used),
              "INSERT INTO [T] ([A], [B], [C]) SELECT V0, V1, V2 FROM OPENJSON(N'[[\"it''s\",5e-01,null],"
              "[null,null,\"20240305\"],[\"ä \",1e+00,null]]') WITH (V0 NVARCHAR(MAX) '$[0]', V1 NVARCHAR(MAX) "
              "'$[1]', V2 NVARCHAR(MAX) '$[2]')");
    EXPECT_TRUE(jsonHolds(rows, columns));
}

TEST(JsonRows, HoldPlainTextsAlone)
{
    const auto holds = [](const Variant& value, DataType type) {
        const std::vector<std::vector<Variant>> rows{{value}};
        return jsonHolds(rows, {{"A", type}});
    };
    for (const char* plain : {"", "ä 🌲 ", "it's / {x} [y]"})
        EXPECT_TRUE(holds(plain, DataType::VarWChar)) << plain;
    for (const std::string& other :
         {std::string{"a\"b"}, std::string{"a\\b"}, std::string{"a\nb"}, std::string{"a\0", 2}, longText()})
        EXPECT_FALSE(holds(other, DataType::VarWChar)) << other.substr(0, 10);
    EXPECT_FALSE(holds("0x00", DataType::VarBinary));
    EXPECT_TRUE(holds(1.5, DataType::Double));
}

} // namespace
} // namespace tamarok::database
