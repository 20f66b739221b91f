#include <cmath>
#include <limits>
#include <random>

#include "runtime/support.h"

#include "tamarok/convert.h"
#include "tamarok/format.h"

namespace tamarok::format {
namespace {

struct Case {
    double number;
    const char* pattern;
    const char* german;
};

void expectGerman(std::span<const Case> table)
{
    const Regional german = Regional::named("de-DE");
    for (const Case& row : table)
        EXPECT_EQ(number(row.number, row.pattern, german), row.german) << row.number << " under " << row.pattern;
}

TEST(NumberFormat, VocabularyOfTheColumns)
{
    const Case table[] = {
        {12.345, "0", "12"},
        {7.0, "00", "07"},
        {7.0, "000", "007"},
        {7.0, "0000", "0007"},
        {12345.0, "0000", "12345"},
        {12.345, "0.0", "12,3"},
        {12.345, "0.00", "12,35"},
        {12.345, "0.000", "12,345"},
        {12.345, "0.0000", "12,3450"},
        {12.345, "0.00000", "12,34500"},
        {12.345, "0.000000000", "12,345000000"},
        {1234567.891, "###,###,##0.00", "1.234.567,89"},
        {0.0, "###,###,##0.00", "0,00"},
        {999.0, "###,###,##0.00", "999,00"},
        {1000.0, "###,###,##0.00", "1.000,00"},
        {1234567890123.0, "###,###,##0.00", "1.234.567.890.123,00"},
        {-1234.5, "###,###,##0.00", "-1.234,50"},
        {0.0, "#", ""},
        {5.0, "#", "5"},
        {0.0, "0.##", "0,"},
        {0.5, "0.##", "0,5"},
        {0.25, "#.##", ",25"},
        {12.0, "0.0#", "12,0"},
        {5.0, "-000.0", "-005,0"},
        {5.0, "000.0", "005,0"},
        {0.35343, "0.000", "0,353"},
    };
    expectGerman(table);
}

TEST(NumberFormat, HalvesGoAwayFromZeroOnTheDecimalForm)
{
    const Case table[] = {
        {0.125, "0.00", "0,13"},
        {1.005, "0.00", "1,01"},
        {2.675, "0.00", "2,68"},
        {0.285, "0.00", "0,29"},
        {24.995, "0.00", "25,00"},
        {-1.005, "0.00", "-1,01"},
        {0.5, "0", "1"},
        {1.5, "0", "2"},
        {2.5, "0", "3"},
        {-2.5, "0", "-3"},
        {12345678901234.5, "0", "12345678901235"},
        {0.1 + 0.2, "0.0000000000000000000", "0,3000000000000000000"},
        {9.995, "0.00", "10,00"},
        {99.99, "0.0", "100,0"},
        {0.05, "0.0", "0,1"},
        {0.04999, "0.0", "0,0"},
        {0.006, "0.0", "0,0"},
        {0.95, "#", "1"},
    };
    expectGerman(table);
}

TEST(NumberFormat, WhatRoundsToZeroHasNoSign)
{
    const Case table[] = {
        {1e-5, "0.00", "0,00"}, {-1e-5, "0.00", "0,00"}, {-0.004, "0.00", "0,00"},  {-0.0, "0.0", "0,0"},
        {-0.4, "0", "0"},       {-0.4, "#", ""},         {-0.005, "0.00", "-0,01"},
    };
    expectGerman(table);
}

TEST(NumberFormat, LargeAndSmallNumbersKeepTheirPlaces)
{
    const Case table[] = {
        {1e15, "0", "1000000000000000"},
        {1.5e20, "0.0", "150000000000000000000,0"},
        {1.23456789012345678e18, "#,##0", "1.234.567.890.123.460.000"},
        {1e-300, "0.00", "0,00"},
        {123456789012345678.0, "0", "123456789012346000"},
    };
    expectGerman(table);
    EXPECT_EQ(number(1e308, "0", Regional{}), test::joined({"1", std::string(308, '0')}));
}

TEST(NumberFormat, SectionsForPositiveNegativeAndZero)
{
    const Case table[] = {
        {5.0, "0.0;(0.0)", "5,0"},         {-5.0, "0.0;(0.0)", "(5,0)"},      {0.0, "0.0;(0.0)", "0,0"},
        {0.0, "0.0;(0.0);\"nil\"", "nil"}, {0.04, "0.0;-0.0;\"nil\"", "nil"}, {-0.04, "0.0;-0.0;\"nil\"", "nil"},
        {-5.0, "0.0;;\"nil\"", "-5,0"},    {5.0, "\"a;b\"0;\"c\"", "a;b5"},   {-5.0, "\"a;b\"0;\"c\"", "c"},
        {5.0, "0\\;0;x", "0;5"},
    };
    expectGerman(table);
}

TEST(NumberFormat, LiteralsPercentExponentAndScaling)
{
    const Case table[] = {
        {5.0, "0\" fm\"", "5 fm"},
        {5.0, "0\\%", "5%"},
        {0.125, "0.0%", "12,5%"},
        {-5.0, "$0", "-$5"},
        {1234.0, "00-00", "12-34"},
        {12345.0, "0\"m\"", "12345m"},
        {12345.0, "0.00E+00", "1,23E+04"},
        {0.00012345, "0.00E+00", "1,23E-04"},
        {12345.0, "00.0E-0", "12,3E3"},
        {9.999, "0.00E+00", "1,00E+01"},
        {0.0, "0.00E+00", "0,00E+00"},
        {1234567.0, "0,", "1235"},
        {1234567.0, "#,##0,", "1.235"},
        {5.0, "Größe 0", "Größe 5"},
        {5.0, "0 \"open", "5 open"},
        {5.0, "0\\", "5"},
        {5.0, "€", "€"},
    };
    expectGerman(table);
}

TEST(NumberFormat, SeparatorsAreTheRegionalOnes)
{
    const std::pair<const char*, const char*> table[] = {
        {"de-AT", "-1.234.567,50"},           {"de-CH", "-1\u2019234\u2019567.50"},
        {"en-US", "-1,234,567.50"},           {"en-GB", "-1,234,567.50"},
        {"fr-FR", "-1\u202F234\u202F567,50"}, {"cs-CZ", "-1\u00A0234\u00A0567,50"},
        {"sv-SE", "-1\u00A0234\u00A0567,50"},
    };
    for (const auto& [locale, text] : table)
        EXPECT_EQ(number(-1234567.5, "###,###,##0.00", Regional::named(locale)), text) << locale;
}

TEST(NumberFormat, EmptyPatternGivesThePlainText)
{
    EXPECT_EQ(number(1234.5, "", Regional::named("de-DE")), "1234,5");
}

TEST(NumberFormat, WhatIsNotFiniteIsAnOverflow)
{
    EXPECT_EQ(test::errorNumber([] { number(std::numeric_limits<double>::infinity(), "0.0", Regional{}); }),
              errors::overflow);
}

TEST(NumberFormat, DecimalSeparatorAsTheFiltersFindIt)
{
    EXPECT_EQ(decimalSeparator(Regional::named("de-AT")), ",");
    EXPECT_EQ(decimalSeparator(Regional::named("en-US")), ".");
    const Regional arabic = test::withDecimal("\u066B");
    EXPECT_EQ(decimalSeparator(arabic), "\u066B");
}

TEST(NumberFormat, PlainPatternsAgreeWithTheirSpelledOutForm)
{
    // A literal behind the places takes the general way through the pattern; the plain one has a way of its own.
    std::mt19937_64 engine{7};
    const Regional german = Regional::named("de-DE");
    const std::string_view patterns[] = {"0", "0.0", "0.00", "0.000", "0.0000", "0.00000"};
    for (int i = 0; i < 20'000; ++i) {
        const auto scaled = std::uniform_int_distribution<std::int64_t>{-9'999'999, 9'999'999}(engine);
        const auto factor = std::uniform_int_distribution<int>{1, 40}(engine);
        const double value = static_cast<double>(scaled) / 1e4 * factor * (i % 3 == 0 ? 1e-3 : 1.0);
        for (const std::string_view pattern : patterns)
            ASSERT_EQ(number(value, pattern, german) + "x", number(value, std::string{pattern} + "\\x", german));
    }
}

TEST(NumberFormat, FormattingWhatWasReadBackChangesNothing)
{
    std::mt19937_64 engine{11};
    const std::string_view patterns[] = {"0", "0.0", "0.00", "0.000", "0.000000000", "###,###,##0.00", "000.0", "0.##"};
    for (const std::string_view locale : Regional::builtInNames()) {
        const Regional regional = Regional::named(locale);
        for (int i = 0; i < 2000; ++i) {
            const double value =
                std::uniform_real_distribution{-1e6, 1e6}(engine) / std::uniform_int_distribution{1, 9999}(engine);
            for (const std::string_view pattern : patterns) {
                const std::string text = number(value, pattern, regional);
                const auto again = convert::parseNumber(text, regional);
                ASSERT_TRUE(again.has_value()) << locale << ' ' << text;
                ASSERT_EQ(number(*again, pattern, regional), text) << locale << ' ' << pattern;
                ASSERT_NEAR(*again, value, pattern == "0" ? 0.5001 : 0.0501) << text;
            }
        }
    }
}

/// "0.00" is written by whole-number arithmetic, the same section followed by ";" by the digits of the number.
TEST(NumberFormat, FixedPatternsAreWrittenLikeAllOthers)
{
    const Regional german = Regional::named("de-DE");
    std::mt19937_64 engine{7};
    std::uniform_real_distribution<double> any{0.0, 1.0};
    std::vector<double> numbers{0.5,  0.005, 0.125, 2.675, 0.285, 1.005, 999.995, 0.0449999999999999,
                                1e-9, 1e12,  1e13,  1e22};
    for (std::int32_t i = 0; i < 20'000; ++i) {
        const double magnitude = std::pow(10.0, static_cast<double>(i % 16) - 3.0);
        const double number = any(engine) * magnitude;
        numbers.push_back(number);
        numbers.push_back((std::floor(number) + 0.5) / 1000.0); // a half at the third decimal
        numbers.push_back(std::nextafter(numbers.back(), 0.0));
        numbers.push_back(std::nextafter(numbers[numbers.size() - 2], 1e30));
    }
    for (const std::string pattern : {"0", "0.0", "0.00", "0.000", "0.0000000000"})
        for (const double number : numbers)
            for (const double value : {number, -number})
                ASSERT_EQ(format::number(value, pattern, german), format::number(value, pattern + ";", german))
                    << std::hexfloat << value << " under " << pattern;
}

} // namespace
} // namespace tamarok::format
