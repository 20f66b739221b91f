#include <gtest/gtest.h>

#include "wide_text.h"

namespace tamarok::odbc {

TEST(OdbcWideText, KeepsEveryCharacter)
{
    for (const char* const text : {"", "plain", "äöüÄÖÜß", "Žluťoučký", "🌲 fir 🌳", "\xEF\xBF\xBD"})
        EXPECT_EQ(toUtf8(toWide(text)), text);
    EXPECT_EQ(toWide("🌲"), (std::vector<SQLWCHAR>{0xD83C, 0xDF32}));
}

TEST(OdbcWideText, ReplacesSurrogatesWithoutPartner)
{
    EXPECT_EQ(toUtf8(std::vector<SQLWCHAR>{'a', 0xD83C}), "a\xEF\xBF\xBD");
    EXPECT_EQ(toUtf8(std::vector<SQLWCHAR>{0xDF32, 'b'}), "\xEF\xBF\xBD"
                                                          "b");
    EXPECT_EQ(toUtf8(std::vector<SQLWCHAR>{0xD83C, 0xD83C, 0xDF32}), "\xEF\xBF\xBD"
                                                                     "🌲");
}

TEST(OdbcWideText, ReplacesInvalidBytes)
{
    EXPECT_EQ(toUtf8(toWide("a\xFF"
                            "b")),
              "a\xEF\xBF\xBD"
              "b");
}

} // namespace tamarok::odbc
