#include "runtime/support.h"

#include "tamarok/format.h"

namespace tamarok::format {
namespace {

struct Case {
    const char* locale;
    const char* pattern;
    const char* text;
};

TEST(DateFormat, PatternsByLocale)
{
    const Date moment = fromCivil({.year = 2024, .month = 3, .day = 5, .hour = 14, .minute = 7, .second = 9});
    const Case table[] = {
        {"de-AT", "dd.mm.yyyy", "05.03.2024"},
        {"de-AT", "DD.MM.YYYY", "05.03.2024"},
        {"de-AT", "d/m/yyyy", "5.3.2024"},
        {"en-US", "d/m/yyyy", "5/3/2024"},
        {"sv-SE", "d/m/yyyy", "5-3-2024"},
        {"de-AT", "d\\/m\\/yyyy", "5/3/2024"},
        {"de-AT", "dddd", "Dienstag"},
        {"de-AT", "ddd", "Di"},
        {"en-US", "dddd", "Tuesday"},
        {"fr-FR", "dddd", "mardi"},
        {"de-AT", "mmmm", "März"},
        {"de-AT", "MMMM", "März"},
        {"de-AT", "mmm", "Mär"},
        {"fr-FR", "MMMM", "mars"},
        {"cs-CZ", "mmmm", "březen"},
        {"de-AT", "hh:nn", "14:07"},
        {"de-AT", "hh:nn:ss", "14:07:09"},
        {"de-AT", "h:n:s", "14:7:9"},
        {"de-AT", "hh:mm", "14:07"},
        {"de-AT", "hh:mm:ss", "14:07:09"},
        {"de-AT", "mm:ss", "07:09"},
        {"de-AT", "dd.mm.yy hh:mm", "05.03.24 14:07"},
        {"de-AT", "h:nn AM/PM", "2:07 PM"},
        {"de-AT", "hh:nn am/pm", "02:07 pm"},
        {"de-AT", "h a/p", "2 p"},
        {"en-US", "h AMPM", "2 PM"},
        {"de-AT", "yyyymmdd", "20240305"},
        {"de-AT", "yy", "24"},
        {"de-AT", "\"day\" d", "day 5"},
        {"de-AT", "d \"of\" mmmm", "5 of März"},
        {"de-AT", "", ""},
    };
    for (const Case& row : table)
        EXPECT_EQ(date(moment, row.pattern, Regional::named(row.locale)), row.text) << row.locale << ' ' << row.pattern;
}

TEST(DateFormat, TwelveHourClock)
{
    const Regional english = Regional::named("en-US");
    const std::pair<std::int32_t, const char*> table[] = {{0, "12 AM"},  {1, "1 AM"},  {11, "11 AM"},
                                                          {12, "12 PM"}, {13, "1 PM"}, {23, "11 PM"}};
    for (const auto& [hour, text] : table)
        EXPECT_EQ(date(fromCivil({.year = 2024, .month = 1, .day = 1, .hour = hour}), "h AM/PM", english), text);
}

TEST(DateFormat, TimeMarkIsTheRegionalOne)
{
    Regional regional = Regional::named("de-DE");
    regional.time = "HH.mm.ss";
    EXPECT_EQ(date({0.5}, "hh:nn:ss", regional), "12.00.00");
}

TEST(DateFormat, AllMonthsAndDaysOfALocale)
{
    const Regional austrian = Regional::named("de-AT");
    for (std::int32_t month = 1; month <= 12; ++month)
        EXPECT_EQ(date(makeDate(2024, month, 1), "mmmm", austrian),
                  austrian.months[static_cast<std::size_t>(month - 1)]);
    EXPECT_EQ(date(makeDate(2024, 1, 1), "mmmm", austrian), "Jänner");
    for (std::int32_t day = 3; day <= 9; ++day) // 3 March 2024 is a Sunday
        EXPECT_EQ(date(makeDate(2024, 3, day), "dddd", austrian), austrian.days[static_cast<std::size_t>(day - 3)]);
}

TEST(DateFormat, OutsideTheRangeIsAnOverflow)
{
    EXPECT_EQ(test::errorNumber([] { date({1e9}, "dd.mm.yyyy", Regional::named("de-AT")); }), errors::overflow);
}

} // namespace
} // namespace tamarok::format
