#include <limits>

#include "runtime/support.h"

#include "tamarok/convert.h"

namespace tamarok::convert {
namespace {

using test::errorNumber;
using test::errorText;
using test::field;

class Convert : public testing::Test {
protected:
    PlatformScope scope_{test::platformFor("de-AT")};
};

const Variant nothing{ObjectRef{}};
const Variant array{VariantArray{}};
const Variant null{Null{}};

TEST_F(Convert, ValuesToText)
{
    const std::pair<Variant, const char*> table[] = {
        {Variant{}, ""},
        {true, "Wahr"},
        {false, "Falsch"},
        {std::int16_t{-5}, "-5"},
        {std::int32_t{2147483647}, "2147483647"},
        {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
        {1234.5, "1234,5"},
        {Date{40271.0}, "03.04.2010"},
        {" a ", " a "},
        {field("x"), "x"},
        {field(1.5), "1,5"},
    };
    for (const auto& [value, text] : table)
        EXPECT_EQ(toText(value), text);
    EXPECT_EQ(toText(Variant{true}, Regional::named("fr-FR")), "Vrai");
    EXPECT_EQ(toText(Variant{1234.5}, Regional::named("en-US")), "1234.5");
}

TEST_F(Convert, ValuesWithoutATextFail)
{
    EXPECT_EQ(errorNumber([] { toText(null); }), errors::invalidUseOfNull);
    EXPECT_EQ(errorNumber([] { toText(field(Null{})); }), errors::invalidUseOfNull);
    EXPECT_EQ(errorNumber([] { toText(array); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([] { toText(nothing); }), errors::objectNotSet);
    EXPECT_EQ(errorNumber([] { toText(Variant{std::make_shared<test::ValueHolder>("TextBox", 1.0)}); }),
              errors::typeMismatch);
    EXPECT_EQ(errorNumber([] { toText(field(field(1.0))); }), errors::typeMismatch);
}

TEST_F(Convert, IsNumeric)
{
    const std::pair<Variant, bool> table[] = {
        {Variant{}, true},       {true, true},   {std::int16_t{1}, true}, {std::int32_t{1}, true},
        {std::int64_t{1}, true}, {1.5, true},    {Date{1.0}, false},      {null, false},
        {"1,5", true},           {"", false},    {"abc", false},          {field("1,5"), true},
        {field(Null{}), false},  {array, false}, {nothing, false},        {" 12 ", true},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(isNumeric(value), expected) << name(value.kind());
}

TEST_F(Convert, IsDate)
{
    const std::pair<Variant, bool> table[] = {
        {Date{1.0}, true}, {Date{1e9}, false}, {"3.4.2010", true}, {"abc", false}, {"", false},
        {5.0, false},      {Variant{}, false}, {null, false},      {array, false}, {field(Date{1.0}), true},
        {nothing, false},  {true, false},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(isDate(value), expected) << name(value.kind());
}

TEST_F(Convert, WholeNumbersRoundHalvesToEven)
{
    const std::pair<Variant, std::int32_t> table[] = {
        {0.5, 0},       {1.5, 2},        {2.5, 2},
        {-0.5, 0},      {-1.5, -2},      {"2,5", 2},
        {"3,5", 4},     {" 12 ", 12},    {"1.000", 1000},
        {true, -1},     {false, 0},      {Date{40271.4}, 40271},
        {Variant{}, 0}, {field(7.0), 7}, {std::int64_t{42}, 42},
    };
    for (const auto& [value, expected] : table) {
        EXPECT_EQ(toLong(value), expected);
        if (expected <= INT16_MAX) {
            EXPECT_EQ(toInteger(value), expected);
        }
        EXPECT_EQ(toLongLong(value), expected);
    }
}

TEST_F(Convert, WholeNumbersOverflowAtTheirBounds)
{
    EXPECT_EQ(toInteger(Variant{32767.49}), 32767);
    EXPECT_EQ(toInteger(Variant{-32768.5}), -32768);
    EXPECT_EQ(errorNumber([] { toInteger(32767.5); }), errors::overflow);
    EXPECT_EQ(errorNumber([] { toInteger(-32769.0); }), errors::overflow);
    EXPECT_EQ(errorNumber([] { toInteger(std::int32_t{32768}); }), errors::overflow);
    EXPECT_EQ(errorNumber([] { toInteger("40000"); }), errors::overflow);
    EXPECT_EQ(toLong(Variant{2147483647.0}), 2147483647);
    EXPECT_EQ(errorNumber([] { toLong(2147483648.0); }), errors::overflow);
    EXPECT_EQ(errorNumber([] { toLong(std::int64_t{-2147483649}); }), errors::overflow);
    EXPECT_EQ(toLongLong(Variant{"9223372036854775807"}), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(errorNumber([] { toLongLong(9223372036854775808.0); }), errors::overflow);
    EXPECT_EQ(toLongLong(Variant{-9223372036854775808.0}), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(errorNumber([] { toLong(std::numeric_limits<double>::quiet_NaN()); }), errors::overflow);
    EXPECT_EQ(errorNumber([] { toLong(std::numeric_limits<double>::infinity()); }), errors::overflow);
    EXPECT_EQ(errorText([] { toInteger(std::int32_t{40000}); }), "Overflow: 40000 leaves the range of Integer.");
}

TEST_F(Convert, TextsThatAreNoNumbersNameThemselves)
{
    EXPECT_EQ(errorNumber([] { toDouble("abc"); }), errors::typeMismatch);
    EXPECT_EQ(errorText([] { toDouble("abc"); }), "Type mismatch: \"abc\" is no number.");
    EXPECT_EQ(errorNumber([] { toLong(""); }), errors::typeMismatch);
    EXPECT_EQ(errorText([] { toDouble(Variant{std::string(10'000, 'x')}); }),
              test::joined({"Type mismatch: \"", std::string(40, 'x'), "...\" is no number."}));
    EXPECT_EQ(errorNumber([] { toDouble(null); }), errors::invalidUseOfNull);
    EXPECT_EQ(errorNumber([] { toLong(null); }), errors::invalidUseOfNull);
    EXPECT_EQ(errorNumber([] { toDouble(array); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([] { toLong(array); }), errors::typeMismatch);
}

TEST_F(Convert, ToDouble)
{
    const std::pair<Variant, double> table[] = {
        {Variant{}, 0.0}, {true, -1.0},       {std::int16_t{5}, 5.0}, {std::int32_t{-7}, -7.0}, {std::int64_t{9}, 9.0},
        {2.5, 2.5},       {Date{1.25}, 1.25}, {"1.234,5", 1234.5},    {field("2,5"), 2.5},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(toDouble(value), expected);
}

TEST_F(Convert, ToDate)
{
    EXPECT_EQ(toDate(Date{5.0}), Date{5.0});
    EXPECT_EQ(toDate(Variant{}), Date{0.0});
    EXPECT_EQ(toDate(40271.5), Date{40271.5});
    EXPECT_EQ(toDate(std::int32_t{40271}), Date{40271.0});
    EXPECT_EQ(toDate("3.4.2010"), Date{40271.0});
    EXPECT_EQ(toDate(field(Date{7.0})), Date{7.0});
    EXPECT_EQ(errorNumber([] { toDate("abc"); }), errors::typeMismatch);
    EXPECT_EQ(errorText([] { toDate("31.02.2024"); }), "Type mismatch: \"31.02.2024\" is no date.");
    EXPECT_EQ(errorNumber([] { toDate(null); }), errors::invalidUseOfNull);
    EXPECT_EQ(errorNumber([] { toDate(array); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([] { toDate(1e9); }), errors::overflow);
    EXPECT_EQ(errorNumber([] { toDate(Date{-700000.0}); }), errors::overflow);
}

TEST_F(Convert, ToBoolean)
{
    const std::pair<Variant, bool> table[] = {
        {true, true},
        {false, false},
        {Variant{}, false},
        {std::int16_t{-1}, true},
        {0.0, false},
        {0.1, true},
        {"Wahr", true},
        {"falsch", false},
        {"TRUE", true},
        {"False", false},
        {"0", false},
        {"-1", true},
        {"0,0", false},
        {Date{0.0}, false},
        {Date{1.0}, true},
        {field(true), true},
        {std::int64_t{2}, true},
        {" wahr ", true},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(toBoolean(value), expected);
    EXPECT_EQ(errorNumber([] { toBoolean("Vrai"); }), errors::typeMismatch);
    EXPECT_EQ(errorText([] { toBoolean("x"); }), "Type mismatch: \"x\" is no truth value.");
    EXPECT_EQ(errorNumber([] { toBoolean(null); }), errors::invalidUseOfNull);
    EXPECT_EQ(errorNumber([] { toBoolean(array); }), errors::typeMismatch);
}

TEST_F(Convert, CheckedNarrowing)
{
    EXPECT_EQ(checkedInteger(-32768, "row"), -32768);
    EXPECT_EQ(errorNumber([] { checkedInteger(32768, "row"); }), errors::overflow);
    EXPECT_EQ(errorText([] { checkedInteger(32768, "the row"); }),
              "Overflow: the row (32768) leaves the range of Integer.");
    EXPECT_EQ(checkedLong(2147483647, "row"), 2147483647);
    EXPECT_EQ(errorNumber([] { checkedLong(2147483648, "row"); }), errors::overflow);
}

TEST(ConvertToSql, CommaBecomesPointAndTheThousandsSeparatorGoes)
{
    struct Row {
        const char* text;
        const char* thousands;
        const char* result;
    };
    const Row rows[] = {
        {"1.234,50", ".", "1234.50"},
        {"1,234.50", ",", "1.234.50"},
        {"1,5", "", "1.5"},
        {"1'234,5", "'", "1234.5"},
        {"1\u00A0234,5", "\u00A0", "1234.5"},
        {"1..2", "..", "1..2"},
        {"", ".", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(toSqlNumber(row.text, row.thousands), row.result) << row.text;
    EXPECT_EQ(toSqlNumber(-1234.5, Regional::named("de-DE")), "-1234.5");
    EXPECT_EQ(toSqlNumber(0.25, Regional::named("en-US")), "0.25");
}

} // namespace
} // namespace tamarok::convert
