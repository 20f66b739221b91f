#include <gtest/gtest.h>

#include "column_values.h"
#include "list_types.h"
#include "support/errors.h"
#include "support/surroundings.h"

namespace tamarok {
namespace {

using test::Surroundings;

std::string fill(const Surroundings& with, std::string_view pattern, std::string_view version = "A2")
{
    return catalogue::ColumnValues{with.session, version, catalogue::logList()}.fill(pattern);
}

TEST(ColumnValues, DialectWords)
{
    Surroundings with;
    EXPECT_EQ(fill(with, "{ISNULL}(A,''){+}B"), "ISNULL(A,'') + B");
    with.session.bolOracle = true;
    EXPECT_EQ(fill(with, "{ISNULL}(A,''){+}B"), "NVL(A,'') || B");
}

TEST(ColumnValues, RowsVersionsAndSettlements)
{
    const Surroundings with;
    EXPECT_EQ(fill(with, "<{ROW 1}|{ROW 960}|{VER}|{DIGIT}|{SETTLEMENT}>", "a2"), "<LOGS.LISTE||A2|2|A2>");
    EXPECT_EQ(fill(with, "<{DIGIT}|{SETTLEMENT}>", "R"), "<0|R>");
    for (const char* version : {"B9", "A0", "r", "", "ä", "R "}) {
        EXPECT_EQ(fill(with, "<{DIGIT}|{SETTLEMENT}>", version), "<|>") << version;
        EXPECT_EQ(fill(with, "{SETTLEMENT?<{VER}>:none}", version), "none") << version;
    }
}

TEST(ColumnValues, MalformedPlaceholdersAreErrors)
{
    const Surroundings with;
    for (const char* pattern : {"{NONE}", "{", "A{ROW 1", "{ROW}", "{ROW x}", "{ROW 99999}", "{}"}) {
        EXPECT_EQ(test::errorNumber([&] { fill(with, pattern); }), errors::invalidArgument) << pattern;
    }
}

} // namespace
} // namespace tamarok
