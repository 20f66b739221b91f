#include <gtest/gtest.h>

#include "tamarok_tsql/date_text.h"
#include "tamarok_tsql/literals.h"

namespace tamarok::tsql {
namespace {

struct DateRow {
    const char* text;
    DateOrder order;
    TypeKind kind;
    const char* answer; ///< the stored text, or "error N"
};

std::string answerOf(const DateRow& row)
{
    const auto conversion = convertDateText(row.text, row.kind, readingOf(row.order));
    if (conversion.error != 0) return "error " + std::to_string(conversion.error);
    return storedText(conversion.instant);
}

TEST(DateTexts, FollowSeparatorAndOrder)
{
    const auto mdy = DateOrder::Mdy;
    const auto dmy = DateOrder::Dmy;
    const auto full = TypeKind::DateTime;
    const DateRow rows[] = {
        {"31.01.2020", dmy, full, "2020-01-31 00:00:00.000"},
        {"31.1.20", dmy, full, "2020-01-31 00:00:00.000"},
        {"1.2.1950", dmy, full, "1950-02-01 00:00:00.000"},
        {"1.2.50", dmy, full, "1950-02-01 00:00:00.000"},
        {"1.2.49", dmy, full, "2049-02-01 00:00:00.000"},
        {"2020-01-31", dmy, full, "2020-01-31 00:00:00.000"},
        {"2020-1-5", mdy, full, "2020-01-05 00:00:00.000"},
        {"01/31/2020", mdy, full, "2020-01-31 00:00:00.000"},
        {"31/01/2020", dmy, full, "2020-01-31 00:00:00.000"},
        {"31/01/2020", mdy, full, "error 242"},
        {"2020/01/31", mdy, full, "2020-01-31 00:00:00.000"},
        {"20/31/01", DateOrder::Ydm, full, "2020-01-31 00:00:00.000"},
        {"20200131", mdy, full, "2020-01-31 00:00:00.000"},
        {"200131", dmy, full, "2020-01-31 00:00:00.000"},
        {"2020", mdy, full, "2020-01-01 00:00:00.000"},
        {"", mdy, full, "1900-01-01 00:00:00.000"},
        {" 31.01.2020 ", dmy, full, "2020-01-31 00:00:00.000"},
        {"31.01.2020 14:05", dmy, full, "2020-01-31 14:05:00.000"},
        {"2020-01-31T14:05:06", mdy, full, "2020-01-31 14:05:06.000"},
        {"2020-01-31 14:05:06.123", mdy, full, "2020-01-31 14:05:06.123"},
        {"2020-01-31 14:05:06.124", mdy, full, "2020-01-31 14:05:06.123"},
        {"2020-01-31 14:05:06.125", mdy, full, "2020-01-31 14:05:06.127"},
        {"20200131 2:05 PM", mdy, full, "2020-01-31 14:05:00.000"},
        {"20200131 12AM", mdy, full, "2020-01-31 00:00:00.000"},
        {"2020-01-31 14:05:29.9", mdy, TypeKind::SmallDateTime, "2020-01-31 14:05:00.000"},
        {"2020-01-31 14:05:29.998", mdy, TypeKind::SmallDateTime, "2020-01-31 14:05:00.000"},
        {"2020-01-31 14:05:29.999", mdy, TypeKind::SmallDateTime, "2020-01-31 14:06:00.000"},
        {"2020-01-31 14:05:30", mdy, TypeKind::SmallDateTime, "2020-01-31 14:06:00.000"},
        {"2019-12-31 23:59:45", mdy, TypeKind::SmallDateTime, "2020-01-01 00:00:00.000"},
        {"2020-01-31 14:05", mdy, TypeKind::Date, "2020-01-31 00:00:00.000"},
        {"14:05:06", mdy, TypeKind::Time, "1900-01-01 14:05:06.000"},
        {"29.02.2020", dmy, full, "2020-02-29 00:00:00.000"},
        {"29.02.2019", dmy, full, "error 242"},
        {"29.02.1900", dmy, full, "error 242"},
        {"31.04.2020", dmy, full, "error 242"},
        {"0.1.2020", dmy, full, "error 242"},
        {"1.13.2020", dmy, full, "error 242"},
        {"1752-12-31", mdy, full, "error 242"},
        {"1752-12-31", mdy, TypeKind::Date, "1752-12-31 00:00:00.000"},
        {"2079-06-07", mdy, TypeKind::SmallDateTime, "error 242"},
        {"1899-12-31", mdy, TypeKind::SmallDateTime, "error 242"},
        {"2020-01-31 24:00", mdy, full, "error 242"},
        {"2020-01-31 12:60", mdy, full, "error 242"},
        {"31.01.2020", mdy, full, "error 242"},
        {"01.31.2020", mdy, full, "2020-01-31 00:00:00.000"},
        {"01-31-2020", mdy, full, "2020-01-31 00:00:00.000"},
        {"31-01-2020", dmy, full, "2020-01-31 00:00:00.000"},
        {"2020/31/01", dmy, full, "2020-01-31 00:00:00.000"},
        {"2020.31.01", dmy, full, "2020-01-31 00:00:00.000"},
        {"1.2", mdy, full, "error 241"},
        {"1.2.2020.3", mdy, full, "error 241"},
        {"1.2-2020", mdy, full, "error 241"},
        {"abc", mdy, full, "error 241"},
        {"abc", mdy, TypeKind::SmallDateTime, "error 295"},
        {"31/01/2020", mdy, TypeKind::Date, "error 241"},
        {"31.01.2020 x", mdy, full, "error 241"},
    };
    for (const DateRow& row : rows) {
        EXPECT_EQ(answerOf(row), row.answer) << "'" << row.text << "'";
    }
}

TEST(NumberLiterals, WholeNumbersStandAlone)
{
    EXPECT_EQ(wholeOf(" 12 "), 12);
    EXPECT_EQ(wholeOf("-3"), -3);
    EXPECT_EQ(wholeOf("+4"), 4);
    EXPECT_EQ(wholeOf(""), 0);
    EXPECT_EQ(wholeOf("1.5"), std::nullopt);
    EXPECT_EQ(wholeOf("1x"), std::nullopt);
    EXPECT_EQ(wholeOf("99999999999999999999"), std::nullopt);
}

TEST(NumberLiterals, DecimalsHaveNoExponent)
{
    EXPECT_TRUE(isNumberText(" 1.5 ", false));
    EXPECT_TRUE(isNumberText("-.5", false));
    EXPECT_TRUE(isNumberText("1e3", true));
    EXPECT_TRUE(isNumberText("", true));
    EXPECT_FALSE(isNumberText("", false));
    EXPECT_FALSE(isNumberText("1e3", false));
    EXPECT_FALSE(isNumberText("inf", true));
    EXPECT_FALSE(isNumberText("nan", true));
    EXPECT_FALSE(isNumberText("1,5", true));
    EXPECT_FALSE(isNumberText("--1", true));
}

TEST(TextLiterals, QuotesAndCharactersAreCountedOnce)
{
    EXPECT_EQ(textLength("''"), 0);
    EXPECT_EQ(textLength("'a''b'"), 3);
    EXPECT_EQ(textLength("'Bäume'"), 5);
    EXPECT_EQ(textValue("'a''b'"), "a'b");
    EXPECT_EQ(textValue("''''"), "'");
}

} // namespace
} // namespace tamarok::tsql
