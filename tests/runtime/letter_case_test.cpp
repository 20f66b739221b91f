#include "runtime/support.h"

#include "tamarok/text.h"

namespace tamarok::text {
namespace {

struct Pair {
    char32_t lower;
    char32_t upper;
};

TEST(LetterCase, PairsMapBothWays)
{
    const Pair pairs[] = {
        {U'a', U'A'},     {U'z', U'Z'},     {U'ä', U'Ä'},     {U'é', U'É'},     {U'þ', U'Þ'},     {U'ÿ', U'Ÿ'},
        {U'č', U'Č'},     {U'ř', U'Ř'},     {U'ž', U'Ž'},     {U'ő', U'Ő'},     {U'ł', U'Ł'},     {U'ĳ', U'Ĳ'},
        {0x01C6, 0x01C4}, {0x0180, 0x0243}, {0x01DD, 0x018E}, {0x021B, 0x021A}, {U'α', U'Α'},     {U'σ', U'Σ'},
        {U'ά', U'Ά'},     {U'ώ', U'Ώ'},     {U'ϊ', U'Ϊ'},     {U'я', U'Я'},     {U'ё', U'Ё'},     {U'ђ', U'Ђ'},
        {0x04CF, 0x04C0}, {U'ա', U'Ա'},     {U'ֆ', U'Ֆ'},     {0x10D0, 0x1C90}, {0x2D00, 0x10A0}, {0x1E01, 0x1E00},
        {0x1EF9, 0x1EF8}, {0x1F00, 0x1F08}, {0xFF41, 0xFF21}, {0xFF5A, 0xFF3A},
    };
    for (const Pair& pair : pairs) {
        EXPECT_EQ(toUpper(pair.lower), pair.upper) << std::hex << static_cast<std::uint32_t>(pair.lower);
        EXPECT_EQ(toLower(pair.upper), pair.lower) << std::hex << static_cast<std::uint32_t>(pair.upper);
        EXPECT_EQ(toUpper(pair.upper), pair.upper);
        EXPECT_EQ(toLower(pair.lower), pair.lower);
    }
}

TEST(LetterCase, OneWayMappings)
{
    EXPECT_EQ(toUpper(U'ß'), U'ß');
    EXPECT_EQ(toLower(char32_t{0x1E9E}), U'ß');
    EXPECT_EQ(toUpper(U'ı'), U'I');
    EXPECT_EQ(toLower(U'İ'), U'i');
    EXPECT_EQ(toUpper(U'ſ'), U'S');
    EXPECT_EQ(toUpper(U'µ'), char32_t{0x039C});
    EXPECT_EQ(toUpper(U'ς'), U'Σ');
    EXPECT_EQ(toLower(char32_t{0x212A}), U'k');
}

TEST(LetterCase, WhatHasNoCaseStays)
{
    for (const char32_t character : {U'0', U' ', U'×', U'÷', U'€', U'🌲', U'ª', U'ŉ', U'中', char32_t{0xDCFF}}) {
        EXPECT_EQ(toUpper(character), character);
        EXPECT_EQ(toLower(character), character);
    }
}

TEST(LetterCase, MappingTwiceChangesNothingMore)
{
    for (char32_t character = 0; character < 0x11000; ++character) {
        ASSERT_EQ(toUpper(toUpper(character)), toUpper(character)) << static_cast<std::uint32_t>(character);
        ASSERT_EQ(toLower(toLower(character)), toLower(character)) << static_cast<std::uint32_t>(character);
    }
}

TEST(LetterCase, UpperAndLowerPartnersFindEachOther)
{
    for (char32_t character = 0; character < 0x11000; ++character) {
        const char32_t lower = toLower(character);
        const bool oneWay = character == 0x130 || character == 0x1E9E || character == 0x3F4 || character == 0x2126 ||
                            character == 0x212A || character == 0x212B;
        if (lower == character || oneWay) continue;
        // The title-case digraphs lie between their two partners.
        const bool titleCase = character == 0x1C5 || character == 0x1C8 || character == 0x1CB || character == 0x1F2;
        ASSERT_EQ(toUpper(lower), titleCase ? character - 1 : character) << static_cast<std::uint32_t>(character);
    }
}

TEST(LetterCase, TextsKeepTheirLengthInCharacters)
{
    EXPECT_EQ(toUpper("Straße über Föhre"), "STRAßE ÜBER FÖHRE");
    EXPECT_EQ(toLower("ÄÖÜ ŘÍJEN Ж"), "äöü říjen ж");
    EXPECT_EQ(toUpper("a\xFF\0b"), "A\xFF");
    EXPECT_EQ(toUpper(std::string_view{"a\0b", 3}), std::string_view("A\0B", 3));
    EXPECT_EQ(length(toUpper("ÿıſ")), 3U);
}

} // namespace
} // namespace tamarok::text
