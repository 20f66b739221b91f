#include <cmath>

#include "runtime/support.h"

namespace tamarok {
namespace {

using test::errorNumber;

struct Known {
    double days;
    CivilTime parts;
};

TEST(Date, KnownDayNumbers)
{
    const Known table[] = {
        {0.0, {1899, 12, 30, 0, 0, 0, 0}},     {1.0, {1899, 12, 31, 0, 0, 0, 0}},
        {2.0, {1900, 1, 1, 0, 0, 0, 0}},       {61.0, {1900, 3, 1, 0, 0, 0, 0}},
        {40271.0, {2010, 4, 3, 0, 0, 0, 0}},   {45356.0, {2024, 3, 5, 0, 0, 0, 0}},
        {36526.5, {2000, 1, 1, 12, 0, 0, 0}},  {0.25, {1899, 12, 30, 6, 0, 0, 0}},
        {-1.0, {1899, 12, 29, 0, 0, 0, 0}},    {-1.25, {1899, 12, 29, 6, 0, 0, 0}},
        {-1.75, {1899, 12, 29, 18, 0, 0, 0}},  {-657434.0, {100, 1, 1, 0, 0, 0, 0}},
        {-657434.5, {100, 1, 1, 12, 0, 0, 0}}, {2958465.0, {9999, 12, 31, 0, 0, 0, 0}},
    };
    for (const Known& row : table) {
        EXPECT_EQ(toCivil({row.days}), row.parts) << row.days;
        EXPECT_DOUBLE_EQ(fromCivil(row.parts).days, row.days);
    }
}

TEST(Date, OnDayZeroTheSignOfTheFractionDoesNotCount)
{
    EXPECT_EQ(toCivil({-0.25}), toCivil({0.25}));
}

TEST(Date, EveryWeekOfTenThousandYearsThereAndBack)
{
    std::int32_t weekday = weekdayOf({firstDateDays});
    for (double day = firstDateDays; day < lastDateDays; day += 7.0) {
        const CivilTime parts = toCivil({day});
        ASSERT_EQ(makeDate(parts.year, parts.month, parts.day).days, day);
        ASSERT_EQ(weekdayOf({day}), weekday);
    }
}

TEST(Date, EveryMonthBoundaryFollowsTheCalendar)
{
    double day = firstDateDays;
    for (std::int32_t year = 100; year <= 9999; ++year) {
        for (std::int32_t month = 1; month <= 12; ++month) {
            const std::int32_t length = daysInMonth(year, month);
            ASSERT_EQ(makeDate(year, month, 1).days, day) << year << '-' << month;
            ASSERT_EQ(makeDate(year, month, length).days, day + length - 1);
            ASSERT_EQ(toCivil({day + length - 1}).day, length);
            day += length;
        }
    }
    EXPECT_EQ(day, lastDateDays);
}

TEST(Date, EveryMinuteAndManyMillisecondsThereAndBack)
{
    for (const double day : {-657434.0, -1.0, 0.0, 45356.0, 2958465.0}) {
        const CivilTime date = toCivil({day});
        for (std::int32_t minute = 0; minute < 1440; ++minute) {
            CivilTime parts = date;
            parts.hour = minute / 60;
            parts.minute = minute % 60;
            parts.second = minute % 59;
            parts.millisecond = minute * 7 % 1000;
            ASSERT_EQ(toCivil(fromCivil(parts)), parts) << day << ' ' << minute;
        }
    }
}

TEST(Date, TheLastFractionOfADayRoundsIntoTheNext)
{
    EXPECT_EQ(toCivil({45356.9999999999}), (CivilTime{2024, 3, 6, 0, 0, 0, 0}));
    EXPECT_EQ(toCivil({-1.9999999999}), (CivilTime{1899, 12, 30, 0, 0, 0, 0}));
    EXPECT_EQ(toCivil({2958465.9999999995}).hour, 23) << "the last day has no next one";
}

TEST(Date, OutsideTheRangeIsAnOverflow)
{
    for (const double days : {-657435.0, 2958466.0, 1e300, -1e300, std::nan(""), HUGE_VAL})
        EXPECT_EQ(errorNumber([&] { toCivil({days}); }), errors::overflow) << days;
    EXPECT_EQ(errorNumber([] { weekdayOf({1e9}); }), errors::overflow);
    EXPECT_TRUE(isInRange({-657434.9}));
    EXPECT_FALSE(isInRange({-657435.0}));
}

TEST(Date, PartsThatNameNoDayAreRefused)
{
    const CivilTime wrong[] = {{2023, 2, 29, 0, 0, 0, 0}, {1900, 2, 29, 0, 0, 0, 0}, {2024, 4, 31, 0, 0, 0, 0},
                               {2024, 0, 1, 0, 0, 0, 0},  {2024, 13, 1, 0, 0, 0, 0}, {2024, 1, 0, 0, 0, 0, 0},
                               {99, 1, 1, 0, 0, 0, 0},    {10000, 1, 1, 0, 0, 0, 0}, {2024, 1, 1, 24, 0, 0, 0},
                               {2024, 1, 1, 0, 60, 0, 0}, {2024, 1, 1, 0, 0, 60, 0}, {2024, 1, 1, 0, 0, 0, 1000},
                               {2024, 1, 1, -1, 0, 0, 0}};
    for (const CivilTime& parts : wrong)
        EXPECT_EQ(errorNumber([&] { fromCivil(parts); }), errors::invalidArgument)
            << parts.year << '-' << parts.month << '-' << parts.day << ' ' << parts.hour;
    EXPECT_EQ(makeDate(2000, 2, 29), Date{36585.0});
}

TEST(Date, DayOfDropsTheTime)
{
    EXPECT_EQ(dayOf({45356.75}), Date{45356.0});
    EXPECT_EQ(dayOf({-1.25}), Date{-1.0});
    EXPECT_FALSE(std::signbit(dayOf({-0.5}).days));
}

TEST(Date, WeekdayCountsFromSunday)
{
    EXPECT_EQ(weekdayOf(makeDate(2010, 4, 3)), 7); // Saturday
    EXPECT_EQ(weekdayOf(makeDate(2024, 3, 3)), 1); // Sunday
    EXPECT_EQ(weekdayOf({0.0}), 7);
    EXPECT_EQ(weekdayOf({-1.5}), 6);
}

} // namespace
} // namespace tamarok
