#include <random>

#include "runtime/support.h"

#include "tamarok/comm_find.h"
#include "tamarok/text.h"

namespace tamarok {
namespace {

using test::errorNumber;

const Comm_find scan;

TEST(FindNumOfChar, CountsWithoutRegardToCaseAndWithOverlaps)
{
    struct Row {
        std::string text;
        std::string wanted;
        int count;
    };
    const Row rows[] = {
        {"aXbxc", "x", 2},
        {"aaa", "aa", 2},
        {"aaaa", "aa", 3},
        {"", "x", 0},
        {"abc", "x", 0},
        {"x", "x", 1},
        {"xx", "X", 2},
        {"a;b;c", ";", 2},
        {"abcabc", "BC", 2},
        {"ab", "abc", 0},
        {"aaa", "", 3},
        {"", "", 0},
        {"ÄäÄ", "ä", 3},
        {"🌲a🌲", "🌲", 2},
        {"aBaBa", "ABA", 2},
        {"abababab", "ababab", 2},
        {"aabaaabaaac", "AABAAA", 2},
        {"aabaabaaab", "aabaa", 2},
        {"\xC3\xA4", "\xC3", 0}, // a byte that is part of a character is no character
        {"a\xC3\xC3", "\xC3", 2},
        {"Straße", "ss", 0},
        {std::string("a\0a\0", 4), std::string(1, '\0'), 2},
    };
    for (const Row& row : rows)
        EXPECT_EQ(scan.FindNumOfChar(row.text, row.wanted), row.count) << row.text << " / " << row.wanted;
}

TEST(FindNumOfChar, CountsAsALookAtEveryPlaceDoes)
{
    std::mt19937 random{1};
    const auto word = [&](std::size_t longest) {
        std::string letters(1 + random() % longest, 'a');
        for (char& letter : letters)
            letter = "abB"[random() % 3];
        return letters;
    };
    for (int round = 0; round < 2'000; ++round) {
        const std::string text = word(40);
        const std::string wanted = word(6);
        int count = 0;
        for (std::size_t place = 0; place + wanted.size() <= text.size(); ++place)
            count += text::equalsNoCase(std::string_view{text}.substr(place, wanted.size()), wanted) ? 1 : 0;
        EXPECT_EQ(scan.FindNumOfChar(text, wanted), count) << text << " / " << wanted;
    }
}

TEST(FindNumOfChar, TheCountHas16Bits)
{
    EXPECT_EQ(scan.FindNumOfChar(std::string(32'767, 'x'), "x"), 32'767);
    EXPECT_EQ(errorNumber([] { scan.FindNumOfChar(std::string(32'768, 'x'), "x"); }), errors::overflow);
    EXPECT_EQ(scan.FindNumOfChar(std::string(100'000, 'x') + "y", "y"), 1);
}

TEST(FindSubstring, FieldsOfASeparatedText)
{
    struct Row {
        std::string text;
        std::string separator;
        int number;
        std::string field;
    };
    const Row rows[] = {
        {"a;b;c", ";", 0, "a"},
        {"a;b;c", ";", 1, "b"},
        {"a;b;c", ";", 2, "c"},
        {"a;b;c", ";", 5, "c"},
        {"a;b;c", ";", -1, "a"},
        {"a;b;c", ";", -32768, "a"},
        {"abc", ";", 0, "abc"},
        {"abc", ";", 7, "abc"},
        {"", ";", 0, ""},
        {";", ";", 0, ""},
        {";", ";", 1, ""},
        {";b", ";", 1, "b"},
        {"a;", ";", 1, ""},
        {"a;;c", ";", 1, ""},
        {"a;;c", ";", 2, "c"},
        {"a;b", ";;", 1, "a;b"},
        {"a;;b", ";;", 1, "a;;b"},
        {"a;b", "", 0, "a;b"},
        {"aXbxc", "x", 1, "c"},
        {"aXbxc", "X", 1, "bxc"},
        {"ä🌲b🌲ü", "🌲", 2, "ü"},
        {"äöü", "ö", 0, "ä"},
        {std::string("a\0b", 3), std::string(1, '\0'), 1, "b"},
        {std::string(10'000, 'a') + ";b", ";", 1, "b"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(scan.FindSubstring(row.text, row.separator, static_cast<std::int16_t>(row.number)), row.field)
            << row.text << " / " << row.separator << " / " << row.number;
}

TEST(FindSubstring, TheCountHas16Bits)
{
    EXPECT_EQ(scan.FindSubstring(std::string(32'767, ';') + "end", ";", 32'767), "end");
    EXPECT_EQ(errorNumber([] { scan.FindSubstring(std::string(32'768, ';'), ";", 32'767); }), errors::overflow);
    EXPECT_EQ(scan.FindSubstring(std::string(40'000, ';'), ";", 3), "");
}

} // namespace
} // namespace tamarok
