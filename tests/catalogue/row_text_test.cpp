#include <gtest/gtest.h>

#include "support/surroundings.h"
#include "log_catalogue.h"
#include "row_text.h"

namespace tamarok {
namespace {

using catalogue::RowText;
using test::Surroundings;

std::string fill(const Surroundings& with, std::string_view pattern, std::string_view version = "A2")
{
    return RowText{with.session, version, catalogue::logColumns}.fill(pattern);
}

TEST(RowText, DialectWords)
{
    Surroundings with;
    EXPECT_EQ(fill(with, "{ISNULL}(A,''){+}B"), "ISNULL(A,'') + B");
    with.session.bolOracle = true;
    EXPECT_EQ(fill(with, "{ISNULL}(A,''){+}B"), "NVL(A,'') || B");
}

TEST(RowText, RowsVersionsAndSettlements)
{
    const Surroundings with;
    EXPECT_EQ(fill(with, "<{ROW 1}|{ROW 960}|{VER}|{DIGIT}|{SETTLEMENT}>", "a2"), "<LOGS.LISTE||A2|2|A2>");
    EXPECT_EQ(fill(with, "<{DIGIT}|{SETTLEMENT}>", "R"), "<0|R>");
    EXPECT_EQ(fill(with, "<{VER}>{DIGIT}", "B9"), "");
}

TEST(RowText, AppendsBehindWhatIsThere)
{
    const Surroundings with;
    std::string text = "A";
    RowText rows{with.session, "x", catalogue::logColumns};
    rows.append(text, "{DIGIT}");
    EXPECT_EQ(text, "A");
    rows.append(text, "B{VER}");
    EXPECT_EQ(text, "ABX");
}

TEST(RowText, MalformedPlaceholdersAreErrors)
{
    const Surroundings with;
    for (const char* pattern : {"{NONE}", "{", "A{ROW 1", "{ROW}", "{ROW x}", "{ROW 99999}", "{}"}) {
        EXPECT_THROW(fill(with, pattern), Error) << pattern;
    }
}

} // namespace
} // namespace tamarok
