#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

#include "table_hash.h"

namespace tamarok::database {
namespace {

using Row = std::vector<Variant>;

TEST(TableHash, ChangedRowsHaveOtherHashes)
{
    const std::vector<Row> rows{{Null{}},    {""},         {" "},        {0},    {false},    {0.0},
                                {Date{0.0}}, {"0"},        {1},          {true}, {"a", "b"}, {"ab", ""},
                                {"b", "a"},  {Null{}, ""}, {"", Null{}}, {0.1}};
    for (std::size_t a = 0; a < rows.size(); ++a)
        for (std::size_t b = a + 1; b < rows.size(); ++b)
            EXPECT_NE(hashOf(rows[a]), hashOf(rows[b])) << a << " and " << b;
}

TEST(TableHash, TheWidthOfANumberAndTheSignOfAZeroDoNotCount)
{
    EXPECT_EQ(hashOf(Row{std::int16_t{7}}), hashOf(Row{7}));
    EXPECT_EQ(hashOf(Row{7}), hashOf(Row{std::int64_t{7}}));
    EXPECT_EQ(hashOf(Row{-0.0}), hashOf(Row{0.0}));
}

TEST(TableHash, TheOrderOfTheRowsDoesNotCountTheirNumberDoes)
{
    TableSum forth;
    TableSum back;
    add(forth, Row{1});
    add(forth, Row{2});
    add(back, Row{2});
    add(back, Row{1});
    EXPECT_EQ(forth, back);
    add(back, Row{2});
    EXPECT_NE(forth, back);
}

} // namespace
} // namespace tamarok::database
