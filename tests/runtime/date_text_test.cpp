#include "runtime/date_pattern.h"
#include "runtime/support.h"

#include "tamarok/convert.h"

namespace tamarok::convert {
namespace {

constexpr Date probe{40271.0}; // 3 April 2010

TEST(DateText, ProbeDateInEveryShortForm)
{
    const std::pair<const char*, const char*> table[] = {
        {"cs-CZ", "03.04.2010"}, {"de-AT", "03.04.2010"}, {"de-CH", "03.04.2010"}, {"de-DE", "03.04.2010"},
        {"en-GB", "03/04/2010"}, {"en-US", "4/3/2010"},   {"fr-FR", "03/04/2010"}, {"sv-SE", "2010-04-03"},
    };
    for (const auto& [locale, text] : table)
        EXPECT_EQ(toText(probe, Regional::named(locale)), text) << locale;
}

TEST(DateText, OtherShortPatterns)
{
    const std::pair<const char*, const char*> table[] = {
        {"dd-MMM-yy", "03-Apr-10"},    {"yyyy-dd-MM", "2010-03-04"},
        {"yyyy/dd/MM", "2010/03/04"},  {"d. MMMM yyyy", "3. April 2010"},
        {"d.M.yy", "3.4.10"},          {"ddd dd.MM.yyyy", "Sat 03.04.2010"},
        {"d 'of' MMMM", "3 of April"}, {"dddd, d MMMM yyyy", "Saturday, 3 April 2010"},
    };
    for (const auto& [pattern, text] : table)
        EXPECT_EQ(toText(probe, test::withShortDate("en-GB", pattern)), text) << pattern;
}

TEST(DateText, TimeStandsBehindTheDateAndAloneOnDayZero)
{
    const Regional german = Regional::named("de-DE");
    const Regional american = Regional::named("en-US");
    EXPECT_EQ(toText(Date{40271.75}, german), "03.04.2010 18:00:00");
    EXPECT_EQ(toText(Date{40271.75}, american), "4/3/2010 6:00:00 PM");
    EXPECT_EQ(toText(Date{0.5}, german), "12:00:00");
    EXPECT_EQ(toText(Date{0.0}, german), "00:00:00");
    EXPECT_EQ(toText(Date{0.0}, american), "12:00:00 AM");
    EXPECT_EQ(toText(Date{0.5}, american), "12:00:00 PM");
    EXPECT_EQ(toText(Date{0.25}, Regional::named("cs-CZ")), "6:00:00");
    EXPECT_EQ(toText(Date{-1.25}, german), "29.12.1899 06:00:00");
}

TEST(DateText, RoundsToWholeSeconds)
{
    const Regional german = Regional::named("de-DE");
    const double second = 1.0 / 86400.0;
    EXPECT_EQ(toText(Date{40271.0 + 0.4 * second}, german), "03.04.2010");
    EXPECT_EQ(toText(Date{40271.0 + 0.6 * second}, german), "03.04.2010 00:00:01");
    EXPECT_EQ(toText(Date{40272.0 - 0.3 * second}, german), "04.04.2010");
    EXPECT_EQ(toText(Date{-2.0 - 0.6 * second}, german), "28.12.1899 00:00:01");
    EXPECT_EQ(toText(Date{-2.0 - (1.0 - 0.3 * second)}, german), "29.12.1899");
    EXPECT_EQ(toText(Date{2958466.0 - 0.3 * second}, german), "31.12.9999 23:59:59");
}

TEST(DateText, OutsideTheRangeIsAnOverflow)
{
    EXPECT_EQ(test::errorNumber([] { toText(Date{1e9}, Regional::named("de-DE")); }), errors::overflow);
}

TEST(DateText, OrderAndSeparatorOfAPattern)
{
    EXPECT_EQ(dateOrder("dd.MM.yyyy"), DateOrder::Dmy);
    EXPECT_EQ(dateOrder("M/d/yyyy"), DateOrder::Mdy);
    EXPECT_EQ(dateOrder("yyyy-MM-dd"), DateOrder::Ymd);
    EXPECT_EQ(dateOrder("yyyy-dd-MM"), DateOrder::Ydm);
    EXPECT_EQ(dateSeparator("dd.MM.yyyy"), ".");
    EXPECT_EQ(dateSeparator("d. M. yyyy"), ". ");
    EXPECT_EQ(dateSeparator("yyyy"), "");
    EXPECT_EQ(timeSeparator("H:mm:ss"), ":");
}

} // namespace
} // namespace tamarok::convert
