#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "runtime/support.h"

#include "tamarok/convert.h"

namespace tamarok::convert {
namespace {

std::string written(double number)
{
    std::array<char, maxNumberText> buffer;
    return {buffer.data(), writeNumber(number, buffer)};
}

struct Case {
    double number;
    const char* text;
};

TEST(NumberText, ShortestFormOfAtMostFifteenDigits)
{
    const Case table[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {1.0, "1"},
        {-1.0, "-1"},
        {1.5, "1.5"},
        {-0.5, "-0.5"},
        {0.1, "0.1"},
        {0.1 + 0.2, "0.3"},
        {1.005, "1.005"},
        {100.0, "100"},
        {1234567.123456789, "1234567.12345679"},
        {1.0 / 3.0, "0.333333333333333"},
        {2.0 / 3.0, "0.666666666666667"},
        {0.35343, "0.35343"},
        {123456789012345.0, "123456789012345"},
        {999999999999999.0, "999999999999999"},
        {12345678901234.5, "12345678901234.5"},
        {0.9999999999999999, "1"},
        {999999999999999.9, "1E+15"},
        {99999999999999.99, "100000000000000"},
    };
    for (const Case& row : table)
        EXPECT_EQ(written(row.number), row.text);
}

TEST(NumberText, ExponentFormOutsideThePlainRange)
{
    const Case table[] = {
        {1e15, "1E+15"},
        {1.5e20, "1.5E+20"},
        {1234567890123456789.0, "1.23456789012346E+18"},
        {1e100, "1E+100"},
        {1.7976931348623157e308, "1.79769313486232E+308"},
        {0.0001, "0.0001"},
        {0.00012345, "0.00012345"},
        {0.00001, "1E-05"},
        {0.0000125, "1.25E-05"},
        {-1.5e-7, "-1.5E-07"},
        {1e-300, "1E-300"},
        {5e-324, "5E-324"},
        {0.00009999999999999999, "0.0001"},
    };
    for (const Case& row : table)
        EXPECT_EQ(written(row.number), row.text);
}

TEST(NumberText, DecimalSeparatorIsTheRegionalOne)
{
    EXPECT_EQ(toText(1234.5, Regional::named("de-AT")), "1234,5");
    EXPECT_EQ(toText(1234.5, Regional::named("en-US")), "1234.5");
    EXPECT_EQ(toText(1234.5, Regional::named("de-CH")), "1234.5");
    EXPECT_EQ(toText(1.5e20, Regional::named("sv-SE")), "1,5E+20");
    EXPECT_EQ(toText(5.0, Regional::named("fr-FR")), "5");
    const Regional arabic = test::withDecimal("\u066B");
    EXPECT_EQ(toText(-2.25, arabic), "-2\u066B25");
    EXPECT_EQ(toPlainText(-2.25), "-2.25");
}

TEST(NumberText, WhatIsNotFiniteIsAnOverflow)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(written(infinity), "");
    EXPECT_EQ(test::errorNumber([&] { toText(infinity, Regional{}); }), errors::overflow);
    EXPECT_EQ(test::errorNumber([] { toPlainText(std::nan("")); }), errors::overflow);
}

constexpr double lastRoundedDown = 1.797693134862315e308; ///< this double lies just below the tie of the 15th digit

TEST(NumberText, TheLargestNumbersRoundUpBeyondTheRange)
{
    // Their 15 digits make a decimal above the largest double, 1.7976931348623157E+308.
    const PlatformScope scope{test::platformFor("en-US")};
    for (const double number : {std::numeric_limits<double>::max(), std::nextafter(lastRoundedDown, HUGE_VAL)}) {
        EXPECT_EQ(toPlainText(number), "1.79769313486232E+308");
        EXPECT_EQ(toPlainText(-number), "-1.79769313486232E+308");
    }
    for (const char* text : {"1.79769313486232E+308", "-1.79769313486232E+308"}) {
        EXPECT_EQ(parsePlainNumber(text), std::nullopt);
        EXPECT_FALSE(isNumeric(text));
        EXPECT_EQ(test::errorText([&] { toDouble(text); }),
                  test::joined({"Type mismatch: \"", text, "\" is no number."}));
    }
}

TEST(NumberText, TheLargestNumberThatReadsBackIsOfFifteenDigits)
{
    const PlatformScope scope{test::platformFor("en-US")};
    const double readBack = 1.79769313486231e308;
    for (const double number : {lastRoundedDown, readBack}) {
        EXPECT_EQ(toPlainText(number), "1.79769313486231E+308");
        EXPECT_EQ(toPlainText(-number), "-1.79769313486231E+308");
    }
    EXPECT_EQ(parsePlainNumber("1.79769313486231E+308"), readBack);
    EXPECT_EQ(parsePlainNumber("-1.79769313486231E+308"), -readBack);
    EXPECT_EQ(toDouble("1.79769313486231E+308"), readBack);
    EXPECT_EQ(toDouble("-1.79769313486231E+308"), -readBack);
    // All its digits are read where they are given.
    EXPECT_EQ(parsePlainNumber("1.7976931348623157E+308"), std::numeric_limits<double>::max());
    EXPECT_EQ(parsePlainNumber("-1.7976931348623157E+308"), std::numeric_limits<double>::lowest());
}

/// Doubles of every magnitude: random mantissas under random powers of ten.
class Numbers {
public:
    double next()
    {
        const double mantissa = std::uniform_real_distribution{-10.0, 10.0}(engine_);
        return mantissa * std::pow(10.0, std::uniform_int_distribution{-300, 300}(engine_));
    }
    double nextMeasure()
    {
        const auto scaled = std::uniform_int_distribution<std::int64_t>{-99'999'999'999, 99'999'999'999}(engine_);
        return static_cast<double>(scaled) / std::pow(10.0, std::uniform_int_distribution{0, 6}(engine_));
    }

private:
    std::mt19937_64 engine_{20240615};
};

TEST(NumberText, DigitsAgreeWithTheExactFormOfFifteenPlaces)
{
    Numbers numbers;
    for (int i = 0; i < 100'000; ++i) {
        const double number = numbers.next();
        std::array<char, 64> exact;
        std::snprintf(exact.data(), exact.size(), "%.14e", number);
        // Both texts name the same decimal number.
        ASSERT_EQ(*parsePlainNumber(written(number)), *parsePlainNumber(exact.data())) << exact.data();
    }
}

TEST(NumberText, NeighboursOfMeasuresAgreeWithTheExactFormToo)
{
    // Doubles beside those of short decimals, as multiplying measures leaves them: some have the decimal's
    // own fifteen digits, some do not.
    Numbers numbers;
    for (int i = 0; i < 20'000; ++i) {
        double number = std::abs(numbers.nextMeasure());
        for (int step = -4; step <= 4; ++step) {
            double neighbour = number;
            for (int ulp = 0; ulp < std::abs(step); ++ulp)
                neighbour = std::nextafter(neighbour, step < 0 ? 0.0 : HUGE_VAL);
            std::array<char, 64> exact;
            std::snprintf(exact.data(), exact.size(), "%.14e", neighbour);
            ASSERT_EQ(*parsePlainNumber(written(neighbour)), *parsePlainNumber(exact.data())) << exact.data();
        }
    }
}

TEST(NumberText, FifteenDigitsReadBackAsTheSameNumber)
{
    Numbers numbers;
    const Regional german = Regional::named("de-DE");
    for (int i = 0; i < 100'000; ++i) {
        const double number = i % 2 == 0 ? numbers.next() : numbers.nextMeasure();
        const std::string text = toText(number, german);
        const auto again = parseNumber(text, german);
        ASSERT_TRUE(again.has_value()) << text;
        ASSERT_EQ(toText(*again, german), text);
        if (i % 2 == 0) continue; // only measures have no more than 15 digits to begin with
        ASSERT_EQ(*again, number) << text;
    }
}

TEST(NumberText, NeverLongerThanItsBuffer)
{
    Numbers numbers;
    for (int i = 0; i < 10'000; ++i)
        ASSERT_LE(written(numbers.next()).size(), maxNumberText);
    EXPECT_LE(written(-1.23456789012345e-300).size(), maxNumberText);
    EXPECT_LE(written(-0.000123456789012345).size(), maxNumberText);
}

} // namespace
} // namespace tamarok::convert
