#include <gtest/gtest.h>
#include <limits>

#include "row_spool.h"

#include "tamarok/date.h"

namespace tamarok::odbc {

namespace {

std::vector<Variant> rowOf(std::int32_t number)
{
    return {number,
            Null{},
            true,
            std::int16_t{-7},
            std::numeric_limits<std::int64_t>::min(),
            0.1 * number,
            makeDate(2024, 3, 5),
            "Lärche 🌲 " + std::to_string(number) + std::string(200, 'x')};
}

} // namespace

TEST(OdbcRowSpool, GivesRowsBackInTheirOrder)
{
    RowSpool spool;
    std::vector<Variant> row;
    EXPECT_FALSE(spool.take(row));
    for (std::int32_t number = 0; number < 100; ++number)
        spool.append(rowOf(number));
    EXPECT_FALSE(spool.usesFile());
    for (std::int32_t number = 0; number < 100; ++number) {
        ASSERT_TRUE(spool.take(row));
        EXPECT_EQ(row, rowOf(number));
    }
    EXPECT_FALSE(spool.take(row));
    EXPECT_TRUE(spool.empty());
}

TEST(OdbcRowSpool, KeepsMoreThanTheMemoryInAFile)
{
    constexpr std::int32_t rows = 100'000;
    RowSpool spool;
    for (std::int32_t number = 0; number < rows; ++number)
        spool.append(rowOf(number));
    EXPECT_TRUE(spool.usesFile());
    std::vector<Variant> row;
    for (std::int32_t number = 0; number < rows; ++number) {
        ASSERT_TRUE(spool.take(row));
        ASSERT_EQ(row, rowOf(number));
    }
    EXPECT_FALSE(spool.take(row));
}

TEST(OdbcRowSpool, TakesTextsWithEveryByte)
{
    std::string text(70'000, '\0');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char>(i);
    RowSpool spool;
    spool.append(std::vector<Variant>{text, ""});
    std::vector<Variant> row;
    ASSERT_TRUE(spool.take(row));
    EXPECT_EQ(row, (std::vector<Variant>{text, ""}));
}

} // namespace tamarok::odbc
