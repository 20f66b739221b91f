#include <gtest/gtest.h>

#include "cell_text.h"
#include "support/errors.h"
#include "support/platforms.h"

#include "tamarok/error.h"

namespace tamarok {
namespace {

class CellText : public ::testing::Test {
protected:
    static std::string shown(Variant value, std::string_view format, std::string_view nullText = "")
    {
        return lists::cellText(std::move(value), nullText, format, "(leer)");
    }

    PlatformScope scope{test::platformOf("de-AT")};
};

TEST_F(CellText, NullShowsItsText)
{
    EXPECT_EQ(shown(Null{}, "", "(leer)"), "(leer)");
    EXPECT_EQ(shown(Null{}, "0.00", "(leer)"), "(leer)");
    EXPECT_EQ(shown(Null{}, "0.00"), "");
    EXPECT_EQ(shown(Null{}, "MMMM"), "");
}

TEST_F(CellText, ValuesWithoutFormatAreRegionalTexts)
{
    EXPECT_EQ(shown("Fichte ", ""), "Fichte ");
    EXPECT_EQ(shown(1234.5, ""), "1234,5");
    EXPECT_EQ(shown(std::int64_t{5'000'000'000}, ""), "5000000000");
    EXPECT_EQ(shown(true, ""), "Wahr");
    EXPECT_EQ(shown(makeDate(2024, 3, 5), ""), "05.03.2024");
}

TEST_F(CellText, FormatsPrintNumbersAndDates)
{
    EXPECT_EQ(shown(1234.5, "0.00"), "1234,50");
    EXPECT_EQ(shown(1234.5, "###,###,##0.00"), "1.234,50");
    EXPECT_EQ(shown(makeDate(2024, 3, 5), "dd.mm.yyyy"), "05.03.2024");
    EXPECT_EQ(shown("no number", "0.00"), "no number");
    EXPECT_EQ(shown("(leer)", "0.00"), "(leer)");
}

TEST_F(CellText, MonthsHaveTheirNames)
{
    EXPECT_EQ(shown(std::int32_t{3}, "MMMM"), "M\xC3\xA4rz");
    EXPECT_EQ(shown("12", "MMMM"), "Dezember");
    EXPECT_EQ(test::errorNumber([] { shown("x", "MMMM"); }), errors::typeMismatch);
    EXPECT_EQ(test::errorNumber([] { shown("13", "MMMM"); }), errors::invalidArgument);
}

} // namespace
} // namespace tamarok
