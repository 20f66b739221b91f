#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>

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

} // namespace
} // namespace tamarok::database
