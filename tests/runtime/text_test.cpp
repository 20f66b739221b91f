#include "runtime/support.h"

#include "tamarok/text.h"

namespace tamarok::text {
namespace {

constexpr std::string_view umlauts = "Fähre 🌲 Öl";

TEST(Text, LengthCountsCharacters)
{
    EXPECT_EQ(length(""), 0U);
    EXPECT_EQ(length("abc"), 3U);
    EXPECT_EQ(length(umlauts), 10U);
    EXPECT_EQ(length("a\xFF-"), 3U);
    EXPECT_EQ(length(std::string_view{"a\0b", 3}), 3U);
}

TEST(Text, LeftRightAndMidCutCharacters)
{
    EXPECT_EQ(left(umlauts, 2), "Fä");
    EXPECT_EQ(left(umlauts, 7), "Fähre 🌲");
    EXPECT_EQ(left("abc", 0), "");
    EXPECT_EQ(left("äöü", 5), "äöü");
    EXPECT_EQ(right(umlauts, 2), "Öl");
    EXPECT_EQ(right(umlauts, 4), "🌲 Öl");
    EXPECT_EQ(right("äöü", 3), "äöü");
    EXPECT_EQ(right("abc", 0), "");
    EXPECT_EQ(mid(umlauts, 7, 1), "🌲");
    EXPECT_EQ(mid(umlauts, 9), "Öl");
    EXPECT_EQ(mid("abc", 4), "");
    EXPECT_EQ(mid("abc", 99, 2), "");
    EXPECT_EQ(mid("abc", 2, 0), "");
}

TEST(Text, FindCountsFromOne)
{
    EXPECT_EQ(find("abcabc", "c"), 3U);
    EXPECT_EQ(find("abcabc", "c", 4), 6U);
    EXPECT_EQ(find("abc", "x"), 0U);
    EXPECT_EQ(find(umlauts, "Öl"), 9U);
    EXPECT_EQ(find(umlauts, "🌲", 7), 7U);
    EXPECT_EQ(find(umlauts, "🌲", 8), 0U);
    EXPECT_EQ(find("abc", "a", 4), 0U);
    EXPECT_EQ(find("", "a"), 0U);
}

TEST(Text, FindOfNothingIsTheStartOfANonEmptyText)
{
    EXPECT_EQ(find("abc", ""), 1U);
    EXPECT_EQ(find("abc", "", 3), 3U);
    EXPECT_EQ(find("abc", "", 4), 0U);
    EXPECT_EQ(find("", ""), 0U);
}

TEST(Text, FindDoesNotMatchInsideACharacter)
{
    EXPECT_EQ(find("ä", "\xA4"), 0U);
    EXPECT_EQ(find("ä\xA4", "\xA4"), 2U);
}

TEST(Text, FindNoCase)
{
    EXPECT_EQ(findNoCase("where ÖL = 1", "öl"), 7U);
    EXPECT_EQ(findNoCase("WHERE", "where"), 1U);
    EXPECT_EQ(findNoCase("abc", "D"), 0U);
}

TEST(Text, TrimTakesBlanksOnly)
{
    EXPECT_EQ(trim("  a b  "), "a b");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trim("\ta\t"), "\ta\t");
    EXPECT_EQ(trim("\u00A0a"), "\u00A0a");
    EXPECT_EQ(trimLeft("  a "), "a ");
    EXPECT_EQ(trimRight(" a  "), " a");
}

TEST(Text, ReplaceAllGoesFromLeftToRightWithoutOverlap)
{
    EXPECT_EQ(replaceAll("1,234,5", ",", "."), "1.234.5");
    EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("", "a", "x"), "");
    EXPECT_EQ(replaceAll("a'b", "'", "''"), "a''b");
}

TEST(Text, ComparisonWithoutRegardToCase)
{
    EXPECT_TRUE(equalsNoCase("Jänner", "JÄNNER"));
    EXPECT_FALSE(equalsNoCase("Jänner", "Janner"));
    EXPECT_FALSE(equalsNoCase("ab", "abc"));
    EXPECT_FALSE(equalsNoCase("abc", "ab"));
    EXPECT_TRUE(equalsNoCase("", ""));
    EXPECT_TRUE(startsWithNoCase("TFIELD12", "tfield"));
    EXPECT_FALSE(startsWithNoCase("TF", "TFIELD"));
    EXPECT_TRUE(startsWithNoCase("abc", ""));
}

TEST(Text, DecodeAndAppendKeepEveryByteOfAnyText)
{
    const std::string_view samples[] = {
        "plain",    "äß€🌲",         "\x80",          "\xC3",
        "\xC3(",    "\xE2\x82",     "\xED\xA0\x80",  "\xF4\x90\x80\x80",
        "\xC0\xAF", "\xF0\x9F\x8C", "\xE0\x80\x80z", "a\xFF\xFE",
    };
    for (const std::string_view sample : samples) {
        std::string again;
        for (std::size_t offset = 0; offset < sample.size();)
            append(again, decode(sample, offset));
        EXPECT_EQ(again, sample);
    }
}

TEST(Text, BrokenBytesNeverEqualARealCharacter)
{
    std::size_t offset = 0;
    EXPECT_EQ(decode("\xC0\xAF", offset), char32_t{0xDCC0}); // an overlong "/"
    EXPECT_EQ(offset, 1U);
    EXPECT_EQ(decode("\xC0\xAF", offset), char32_t{0xDCAF});
}

TEST(Text, AppendReplacesWhatIsNoCharacter)
{
    std::string text;
    append(text, char32_t{0xD800});
    append(text, char32_t{0x110000});
    EXPECT_EQ(text, "\uFFFD\uFFFD");
}

} // namespace
} // namespace tamarok::text
