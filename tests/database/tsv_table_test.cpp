#include <gtest/gtest.h>

#include "tsv_table.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

constexpr std::string_view sample = "ID:i\tNAME:t\tVALUE:f\tDAY:d\tON:b\n"
                                    "1\tTanne\t1.25\t2024-02-29\t1\n"
                                    "-7\t\t\t\t\n";

std::int32_t failureOf(std::string_view text)
{
    try {
        const TsvTable table{"sample", text};
        for (std::size_t row = 0; row < table.rows(); ++row)
            for (std::size_t column = 0; column < table.columns().size(); ++column)
                table.value(row, column);
    } catch (const Error& error) {
        EXPECT_NE(error.description.find("sample"), std::string::npos) << error.description;
        return error.number;
    }
    return 0;
}

TEST(TsvTable, CellsHaveTheTypesOfTheirHeads)
{
    const TsvTable table{"sample", sample};
    ASSERT_EQ(table.rows(), 2U);
    EXPECT_EQ(table.value(0, 0), Variant{std::int32_t{1}});
    EXPECT_EQ(table.value(0, 1), Variant{"Tanne"});
    EXPECT_EQ(table.value(0, 2), Variant{1.25});
    EXPECT_EQ(table.value(0, 3), Variant{makeDate(2024, 2, 29)});
    EXPECT_EQ(table.value(0, 4), Variant{true});
    EXPECT_EQ(table.value(1, 0), Variant{std::int32_t{-7}});
}

TEST(TsvTable, EmptyCellsAreNullAndCountAsZero)
{
    const TsvTable table{"sample", sample};
    for (std::size_t column = 1; column < 5; ++column)
        EXPECT_TRUE(table.value(1, column).isNull()) << column;
    EXPECT_EQ(table.number(1, 2), 0.0);
    EXPECT_EQ(table.whole(1, 4), 0);
}

TEST(TsvTable, TextWithoutRowsIsATableWithoutRows)
{
    EXPECT_EQ((TsvTable{"sample", "ID:i\n"}.rows()), 0U);
    EXPECT_EQ((TsvTable{"sample", "ID:i"}.rows()), 0U);
}

TEST(TsvTable, MalformedTextIsRefused)
{
    EXPECT_EQ(failureOf("ID\n"), errors::invalidArgument) << "head without type";
    EXPECT_EQ(failureOf("ID:x\n"), errors::invalidArgument) << "unknown type";
    EXPECT_EQ(failureOf("ID:i\tNAME:t\n1\n"), errors::invalidArgument) << "a cell too few";
    EXPECT_EQ(failureOf("ID:i\n1\t2\n"), errors::invalidArgument) << "a cell too many";
    EXPECT_EQ(failureOf("ID:i\n1.5\n"), errors::invalidArgument) << "no whole number";
    EXPECT_EQ(failureOf("V:f\n1,5\n"), errors::invalidArgument) << "no number";
    EXPECT_EQ(failureOf("D:d\n31.01.2024\n"), errors::invalidArgument) << "no date";
    EXPECT_EQ(failureOf("D:d\n2024-02-30\n"), errors::invalidArgument) << "no day of the calendar";
}

TEST(TsvTable, UnknownColumnAndCellAreErrors)
{
    const TsvTable table{"sample", sample};
    EXPECT_THROW(table.column("NONE"), Error);
    EXPECT_THROW(table.cell(2, 0), Error);
    EXPECT_THROW(table.cell(0, 5), Error);
}

} // namespace
} // namespace tamarok::database
