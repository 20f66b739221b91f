#include <gtest/gtest.h>
#include <string_view>
#include <vector>

#include "sql_batches.h"

namespace tamarok::database {
namespace {

using Batches = std::vector<std::string_view>;

TEST(SplitBatches, LinesWithGoAloneEndABatch)
{
    EXPECT_EQ(splitBatches("A\nGO\nB\r\nGO\r\nC"), (Batches{"A\n", "B\r\n", "C"}));
    EXPECT_EQ(splitBatches("A\nGO  \nB\nGO"), (Batches{"A\n", "B\n"}));
}

TEST(SplitBatches, GoWithinALineDoesNot)
{
    EXPECT_EQ(splitBatches("CATEGORY GO\nAGO\n GO\nGO 2\n"), (Batches{"CATEGORY GO\nAGO\n GO\nGO 2\n"}));
}

TEST(SplitBatches, EmptyBatchesAreDropped)
{
    EXPECT_EQ(splitBatches("GO\n\n \t\nGO\n"), Batches{});
    EXPECT_EQ(splitBatches(""), Batches{});
}

} // namespace
} // namespace tamarok::database
