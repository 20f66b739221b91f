#include "runtime/support.h"

#include "tamarok/convert.h"

namespace tamarok::convert {
namespace {

using namespace std::string_view_literals;

struct Case {
    const char* locale;
    std::string_view text;
    std::optional<CivilTime> parts;
};

CivilTime day(std::int32_t year, std::int32_t month, std::int32_t dayOfMonth)
{
    return {year, month, dayOfMonth, 0, 0, 0, 0};
}

CivilTime at(CivilTime date, std::int32_t hour, std::int32_t minute, std::int32_t second = 0,
             std::int32_t millisecond = 0)
{
    return {date.year, date.month, date.day, hour, minute, second, millisecond};
}

class DateParser : public testing::Test {
protected:
    static void expect(std::span<const Case> table)
    {
        for (const Case& row : table)
            expectOne(row.text, Regional::named(row.locale), row.parts);
    }

    static void expectOne(std::string_view text, const Regional& regional, const std::optional<CivilTime>& parts)
    {
        PlatformScope scope{test::platformFor("de-AT")};
        const auto date = parseDate(text, regional);
        ASSERT_EQ(date.has_value(), parts.has_value()) << regional.name << " [" << text << "]";
        if (!date) return;
        const CivilTime found = toCivil(*date);
        EXPECT_TRUE(found == *parts) << regional.name << " [" << text << "] gave " << found.year << '-' << found.month
                                     << '-' << found.day << ' ' << found.hour << ':' << found.minute << ':'
                                     << found.second << '.' << found.millisecond;
    }
};

TEST_F(DateParser, RegionalOrderDecides)
{
    const CivilTime april = day(2010, 4, 3);
    const Case table[] = {
        {"de-AT", "03.04.2010", april}, {"de-AT", "3.4.2010", april},   {"de-AT", "3.4.10", april},
        {"de-AT", "3/4/2010", april},   {"de-AT", "3-4-2010", april},   {"de-AT", "3 4 2010", april},
        {"de-AT", " 3.4.2010 ", april}, {"de-AT", "3. 4. 2010", april}, {"en-US", "4/3/2010", april},
        {"en-US", "04/03/10", april},   {"en-US", "4.3.2010", april},   {"en-US", "4-3-2010", april},
        {"en-GB", "3/4/2010", april},   {"en-GB", "03/04/10", april},   {"fr-FR", "03/04/2010", april},
        {"cs-CZ", "3. 4. 2010", april}, {"de-CH", "3.4.2010", april},   {"sv-SE", "2010-04-03", april},
        {"sv-SE", "10-04-03", april},   {"sv-SE", "2010/4/3", april},   {"sv-SE", "2010.4.3", april},
        {"sv-SE", "3/4/2010", april},   {"de-AT", "2010/4/3", april},   {"en-US", "2010.4.3", april},
    };
    expect(table);
}

TEST_F(DateParser, YearDayMonthAndSpelledMonthMachines)
{
    const CivilTime april = day(2010, 4, 3);
    expectOne("2010-03-04", test::withShortDate("en-GB", "yyyy-dd-MM"), april);
    expectOne("2010-03-04T10:00", test::withShortDate("en-GB", "yyyy-dd-MM"), at(day(2010, 3, 4), 10, 0));
    expectOne("2010/3/4", test::withShortDate("en-GB", "yyyy/dd/MM"), april);
    expectOne("2010-04-03", test::withShortDate("en-GB", "yyyy/dd/MM"), april);
    expectOne("10/3/4", test::withShortDate("en-GB", "yyyy/dd/MM"), april);
    expectOne("2010/3/Apr", test::withShortDate("en-GB", "yyyy/dd/MMM"), april);
    expectOne("03-Apr-10", test::withShortDate("en-GB", "dd-MMM-yy"), april);
    expectOne("3/4/2010", test::withShortDate("en-GB", "dd-MMM-yy"), april);
    expectOne("03-avr.-10", test::withShortDate("fr-FR", "dd-MMM-yy"), april);
    expectOne("10-Apr-03", test::withShortDate("en-GB", "yy-MMM-dd"), april);
}

TEST_F(DateParser, TwoDigitYearsTurnAtThirty)
{
    const Case table[] = {
        {"de-AT", "1.1.00", day(2000, 1, 1)}, {"de-AT", "1.1.29", day(2029, 1, 1)},
        {"de-AT", "1.1.30", day(1930, 1, 1)}, {"de-AT", "1.1.99", day(1999, 1, 1)},
        {"de-AT", "1.1.5", day(2005, 1, 1)},  {"de-AT", "1.1.0098", day(1998, 1, 1)},
        {"de-AT", "1.1.100", day(100, 1, 1)}, {"de-AT", "1.1.9999", day(9999, 1, 1)},
        {"de-AT", "1.1.10000", std::nullopt},
    };
    expect(table);
}

TEST_F(DateParser, DayAndMonthChangePlacesWhereOnlyThatFits)
{
    const Case table[] = {
        {"en-US", "13/02/2024", day(2024, 2, 13)},  {"de-AT", "02.13.2024", day(2024, 2, 13)},
        {"en-US", "12/11/2024", day(2024, 12, 11)}, {"en-US", "13/13/2024", std::nullopt},
        {"de-AT", "2024-13-02", std::nullopt},      {"de-AT", "2024/13/02", std::nullopt},
    };
    expect(table);
}

TEST_F(DateParser, DaysThatDoNotExistAreNoDates)
{
    const Case table[] = {
        {"de-AT", "31.02.2024", std::nullopt},     {"de-AT", "31.02.", std::nullopt},
        {"de-AT", "31.04.2024", std::nullopt},     {"de-AT", "29.02.2023", std::nullopt},
        {"de-AT", "29.02.2024", day(2024, 2, 29)}, {"de-AT", "29.02.2000", day(2000, 2, 29)},
        {"de-AT", "29.02.1900", std::nullopt},     {"de-AT", "00.01.2024", std::nullopt},
        {"de-AT", "99.99.9999", std::nullopt},     {"en-US", "2/30/2024", std::nullopt},
        {"sv-SE", "2024-02-30", std::nullopt},     {"de-AT", "30. Februar 2024", std::nullopt},
    };
    expect(table);
}

TEST_F(DateParser, MonthNamesOfTheMachineAndEnglish)
{
    const CivilTime april = day(2010, 4, 3);
    const Case table[] = {
        {"de-AT", "3. April 2010", april},
        {"de-AT", "3. Apr. 2010", april},
        {"de-AT", "3-Apr-10", april},
        {"de-AT", "3 APRIL 2010", april},
        {"de-AT", "1. Jänner 2024", day(2024, 1, 1)},
        {"de-AT", "1 JÄN 2024", day(2024, 1, 1)},
        {"de-AT", "1. January 2024", day(2024, 1, 1)},
        {"de-DE", "1. Jänner 2024", std::nullopt},
        {"de-DE", "5. März 2024", day(2024, 3, 5)},
        {"de-DE", "5-Mar-2024", day(2024, 3, 5)},
        {"en-US", "April 3, 2010", april},
        {"en-US", "Apr 3 2010", april},
        {"en-US", "3 April 2010", april},
        {"en-US", "Saturday, April 3, 2010", april},
        {"fr-FR", "3 avril 2010", april},
        {"fr-FR", "3 avr. 2010", april},
        {"fr-FR", "15 août 2024", day(2024, 8, 15)},
        {"fr-FR", "sam. 3 avr. 2010", april},
        {"cs-CZ", "3. duben 2010", april},
        {"sv-SE", "3 april 2010", april},
        {"sv-SE", "2010 april 3", april},
        {"en-US", "April 2010", day(2010, 4, 1)},
        {"en-US", "April 3", day(2024, 4, 3)},
        {"en-US", "3 Apr", day(2024, 4, 3)},
        {"en-US", "April", std::nullopt},
        {"en-US", "Aprilis 3 2010", std::nullopt},
        {"en-US", "Apr May 3", std::nullopt},
        {"en-US", "Apr 3 4 2010", std::nullopt},
        {"fr-FR", "mar. 6 avr. 2010", day(2010, 4, 6)},
        {"fr-FR", "5 mar 2024", day(2024, 3, 5)},
        {"fr-FR", "mar 5 2024", std::nullopt},
        {"en-US", "Monday 5", std::nullopt},
        {"en-US", "Saturday 4/3/2010", april},
    };
    expect(table);
}

TEST_F(DateParser, AMissingYearIsTheCurrentOne)
{
    const Case table[] = {
        {"de-AT", "3.4.", day(2024, 4, 3)},    {"de-AT", "3.4", day(2024, 4, 3)},
        {"en-US", "4/3", day(2024, 4, 3)},     {"sv-SE", "04-03", day(2024, 4, 3)},
        {"de-AT", "29.2.", day(2024, 2, 29)},  {"en-GB", "3/4", day(2024, 4, 3)},
        {"de-AT", "4/2010", day(2010, 4, 1)},  {"de-AT", "2010/4", day(2010, 4, 1)},
        {"en-US", "25/12", day(2024, 12, 25)},
    };
    expect(table);
}

TEST_F(DateParser, TimesAloneAndBehindTheDate)
{
    const CivilTime zero = day(1899, 12, 30);
    const CivilTime april = day(2010, 4, 3);
    const Case table[] = {
        {"de-AT", "12:30", at(zero, 12, 30)},
        {"de-AT", "12:30:15", at(zero, 12, 30, 15)},
        {"de-AT", "0:00", at(zero, 0, 0)},
        {"de-AT", "23:59:59", at(zero, 23, 59, 59)},
        {"en-US", "1:30 PM", at(zero, 13, 30)},
        {"en-US", "12:30 am", at(zero, 0, 30)},
        {"en-US", "12:30pm", at(zero, 12, 30)},
        {"en-US", "1 PM", at(zero, 13, 0)},
        {"de-AT", "1:30 PM", at(zero, 13, 30)},
        {"cs-CZ", "1:30 odp.", at(zero, 13, 30)},
        {"de-AT", "12:30:15.250", at(zero, 12, 30, 15, 250)},
        {"de-AT", "3.4.2010 12:30", at(april, 12, 30)},
        {"de-AT", "3.4.2010  12:30:15", at(april, 12, 30, 15)},
        {"de-AT", "12:30 3.4.2010", at(april, 12, 30)},
        {"de-AT", "3.4. 12:30", at(day(2024, 4, 3), 12, 30)},
        {"en-US", "4/3/2010 6:00:00 PM", at(april, 18, 0)},
        {"en-US", "4/3/2010 6 PM", at(april, 18, 0)},
        {"de-AT", "3. April 2010 12:30", at(april, 12, 30)},
        {"de-AT", "24:00", std::nullopt},
        {"de-AT", "12:60", std::nullopt},
        {"de-AT", "12:30:60", std::nullopt},
        {"de-AT", "12:", std::nullopt},
        {"de-AT", ":30", std::nullopt},
        {"de-AT", "12:30:", std::nullopt},
        {"en-US", "13:30 PM", std::nullopt},
        {"en-US", "0:30 AM", std::nullopt},
        {"de-AT", "12:30 13:30", std::nullopt},
        {"de-AT", "3.4.2010 25:00", std::nullopt},
    };
    expect(table);
}

TEST_F(DateParser, IsoDatesAlways)
{
    for (const std::string_view locale : Regional::builtInNames()) {
        const Regional regional = Regional::named(locale);
        expectOne("2024-03-05", regional, day(2024, 3, 5));
        expectOne("2024-3-5", regional, day(2024, 3, 5));
        expectOne("2024-03-05 12:30", regional, at(day(2024, 3, 5), 12, 30));
        expectOne("2024-03-05 12:30:15", regional, at(day(2024, 3, 5), 12, 30, 15));
        expectOne("2024-03-05 12:30:15.123", regional, at(day(2024, 3, 5), 12, 30, 15, 123));
        expectOne("2024-03-05T12:30:15", regional, at(day(2024, 3, 5), 12, 30, 15));
        expectOne("2024-03-05T", regional, std::nullopt);
        expectOne("2024-03-05X12:30", regional, std::nullopt);
    }
}

TEST_F(DateParser, EverythingElseIsNoDate)
{
    const std::string_view texts[] = {
        "",
        " ",
        "abc",
        "5",
        "12345",
        "-5",
        "1.2.3.4",
        "1..2.2024",
        "1//2/2024",
        ".1.2.2024",
        "1.2.2024-",
        "1.2.2024/",
        "1,2,2024",
        "x1.2.2024",
        "1.2.2024x",
        "1.2.2024 x",
        "1.2.2024\0"sv,
        "\0001.2.2024"sv,
        "🌲",
        "1.2.🌲",
        "\xFF",
        "T",
        "12345678901234567890",
        "1-2-",
        "heute",
        "1.2.2024 3.4.2024",
        "Montag",
    };
    for (const std::string_view text : texts)
        expectOne(text, Regional::named("de-AT"), std::nullopt);
    expectOne(std::string(10'000, '1'), Regional::named("de-AT"), std::nullopt);
    expectOne(std::string(10'000, 'a'), Regional::named("de-AT"), std::nullopt);
    expectOne(test::joined({"1.2.", std::string(10'000, ' '), "2024"}), Regional::named("de-AT"), day(2024, 2, 1));
}

TEST_F(DateParser, EveryRegionalTextReadsBack)
{
    std::vector<Regional> machines;
    for (const std::string_view locale : Regional::builtInNames())
        for (const std::string_view pattern :
             {"", "dd-MMM-yyyy", "yyyy-dd-MM", "yyyy/dd/MM", "d. MMMM yyyy", "ddd, d MMM yyyy"}) {
            Regional machine = Regional::named(locale);
            if (!pattern.empty()) machine.shortDate = pattern;
            machines.push_back(machine);
        }
    for (const Regional& machine : machines)
        for (double days = firstDateDays; days < lastDateDays; days += 997.0) {
            const Date date{days < 0.0 ? days - 0.75 : days + 0.75};
            const auto again = parseDate(toText(date, machine), machine);
            ASSERT_TRUE(again.has_value()) << machine.name << ' ' << toText(date, machine);
            ASSERT_EQ(*again, date) << machine.name << ' ' << toText(date, machine);
        }
}

} // namespace
} // namespace tamarok::convert
