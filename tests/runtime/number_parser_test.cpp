#include <charconv>
#include <random>

#include "runtime/support.h"

#include "tamarok/convert.h"

namespace tamarok::convert {
namespace {

using namespace std::string_view_literals;

struct Case {
    const char* locale;
    std::string_view text;
    std::optional<double> number;
};

TEST(NumberParser, WhatAPersonTypes)
{
    const Case table[] = {
        // plain numbers and decimals
        {"de-AT", "0", 0.0},
        {"de-AT", "12", 12.0},
        {"de-AT", "1,5", 1.5},
        {"de-AT", ",5", 0.5},
        {"de-AT", "5,", 5.0},
        {"de-AT", "007,50", 7.5},
        {"en-US", "1.5", 1.5},
        {"en-US", ".5", 0.5},
        // signs and blanks
        {"de-AT", "-1,5", -1.5},
        {"de-AT", "+1,5", 1.5},
        {"de-AT", "1,5-", -1.5},
        {"de-AT", "1,5 -", -1.5},
        {"de-AT", "- 3", -3.0},
        {"de-AT", "  12  ", 12.0},
        {"de-AT", "\t12\u00A0", 12.0},
        {"de-AT", "-1-", std::nullopt},
        {"de-AT", "--1", std::nullopt},
        {"de-AT", "1+-", std::nullopt},
        // thousands marks
        {"de-AT", "1.234,50", 1234.5},
        {"de-AT", "1.234.567", 1234567.0},
        {"de-AT", "12.5", 125.0},
        {"en-US", "1,234.50", 1234.5},
        {"en-GB", "1,234,567.25", 1234567.25},
        {"de-CH", "1\u2019234.5", 1234.5},
        {"de-CH", "1'234.5", 1234.5},
        {"fr-FR", "1\u202F234,5", 1234.5},
        {"fr-FR", "1 234,5", 1234.5},
        {"fr-FR", "1\u00A0234,5", 1234.5},
        {"sv-SE", "1 234 567", 1234567.0},
        {"cs-CZ", "1\u00A0234,5", 1234.5},
        {"en-US", "1,,2", std::nullopt},
        {"en-US", ",1", std::nullopt},
        {"en-US", "1,", std::nullopt},
        {"en-US", "1.5,5", std::nullopt},
        {"de-AT", "1,5,5", std::nullopt},
        {"de-AT", "1 234", std::nullopt},
        {"de-AT", "1'234", std::nullopt},
        // exponents
        {"de-AT", "1,5E3", 1500.0},
        {"de-AT", "1,5e+3", 1500.0},
        {"de-AT", "15D-1", 1.5},
        {"de-AT", "15d1", 150.0},
        {"de-AT", "1E", std::nullopt},
        {"de-AT", "1E+", std::nullopt},
        {"de-AT", "E5", std::nullopt},
        {"de-AT", "1E308", 1e308},
        {"de-AT", "1E309", std::nullopt},
        {"de-AT", "-1E400", std::nullopt},
        {"de-AT", "1E-400", 0.0},
        {"de-AT", "1E99999999999", std::nullopt},
        {"de-AT", "0E99999999999", 0.0},
        {"de-AT", "1E-99999999999", 0.0},
        // no numbers
        {"de-AT", "", std::nullopt},
        {"de-AT", " ", std::nullopt},
        {"de-AT", "abc", std::nullopt},
        {"de-AT", "-", std::nullopt},
        {"de-AT", ",", std::nullopt},
        {"de-AT", ".", std::nullopt},
        {"de-AT", "12a", std::nullopt},
        {"de-AT", "1 2", std::nullopt},
        {"en-US", "(5)", std::nullopt},
        {"en-US", "$5", std::nullopt},
        {"en-US", "5%", std::nullopt},
        {"en-US", "0x10", std::nullopt},
        {"en-US", "&H10", std::nullopt},
        {"en-US", "nan", std::nullopt},
        {"en-US", "inf", std::nullopt},
        {"en-US", "1\0002"sv, std::nullopt},
        {"en-US", "5\0"sv, std::nullopt},
        {"en-US", "🌲", std::nullopt},
        {"en-US", "1🌲", std::nullopt},
        {"en-US", "\xFF", std::nullopt},
        {"en-US", "１２", std::nullopt},
    };
    for (const Case& row : table)
        EXPECT_EQ(parseNumber(row.text, Regional::named(row.locale)), row.number)
            << row.locale << " [" << row.text << "]";
}

TEST(NumberParser, PlainNumbersTakeNoLocaleBlanksOrMarks)
{
    const std::pair<std::string_view, std::optional<double>> table[] = {
        {"1.5", 1.5},
        {"-1.5", -1.5},
        {"+2", 2.0},
        {"1e3", 1000.0},
        {".5", 0.5},
        {"5.", 5.0},
        {"1,5", std::nullopt},
        {" 1", std::nullopt},
        {"1 ", std::nullopt},
        {"1-", std::nullopt},
        {"", std::nullopt},
        {"1,234", std::nullopt},
        {"1.2.3", std::nullopt},
        {"- 1", std::nullopt},
    };
    for (const auto& [text, number] : table)
        EXPECT_EQ(parsePlainNumber(text), number) << text;
}

TEST(NumberParser, EveryDigitCountsInTheRounding)
{
    // 2^53 + 1 lies exactly between two doubles; one more digit far behind decides.
    const Regional regional;
    EXPECT_EQ(parseNumber("9007199254740993", regional), 9007199254740992.0);
    EXPECT_EQ(parseNumber(test::joined({"9007199254740993.", std::string(900, '0'), "1"}), regional),
              9007199254740994.0);
    EXPECT_EQ(parseNumber(test::joined({"9007199254740993.", std::string(900, '0')}), regional), 9007199254740992.0);
}

TEST(NumberParser, TakesTenThousandDigits)
{
    const Regional regional;
    EXPECT_EQ(parseNumber(test::joined({std::string(10'000, '9')}), regional), std::nullopt);
    EXPECT_EQ(parseNumber(test::joined({std::string(10'000, '0'), "7"}), regional), 7.0);
    EXPECT_EQ(parseNumber(test::joined({"0.", std::string(10'000, '3')}), regional), 1.0 / 3.0);
    EXPECT_EQ(parseNumber(test::joined({"0.", std::string(10'000, '0'), "1"}), regional), 0.0);
    EXPECT_EQ(parseNumber(test::joined({"0.", std::string(10'000, '0'), "1E10001"}), regional), 1.0);
    EXPECT_EQ(parseNumber(test::joined({"1", std::string(10'000, '0'), "E-10000"}), regional), 1.0);
    EXPECT_EQ(parseNumber(test::joined({std::string(10'000, ' '), "7"}), regional), 7.0);
    EXPECT_EQ(parseNumber(test::joined({std::string(10'000, 'x')}), regional), std::nullopt);
}

TEST(NumberParser, AgreesWithTheStandardReaderBitForBit)
{
    std::mt19937_64 engine{7};
    for (int i = 0; i < 100'000; ++i) {
        std::string text;
        const int digits = std::uniform_int_distribution{1, 40}(engine);
        const int point = std::uniform_int_distribution{0, digits}(engine);
        for (int d = 0; d < digits; ++d) {
            if (d == point) text += '.';
            text += static_cast<char>('0' + std::uniform_int_distribution{0, 9}(engine));
        }
        if (i % 3 == 0) text += 'e' + std::to_string(std::uniform_int_distribution{-290, 250}(engine));
        double expected = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), expected);
        ASSERT_EQ(parsePlainNumber(text), expected) << text;
    }
}

} // namespace
} // namespace tamarok::convert
