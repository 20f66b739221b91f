#include "regional_order.h"
#include "support/surroundings.h"
#include "values/machines.h"

#include "tamarok/comm_conv.h"
#include "tamarok/convert.h"
#include "tamarok/pivot_years.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::field;
using test::Machine;
using test::onEachMachine;

const Comm_Conv conv;
const Date fifthOfMarch = makeDate(2024, 3, 5);
const test::ShownMessage criticalError{
    "Critical Error IN transDate Function. Oracle problem!!! Please call to Brenntal G.m.b.H", 64, "Critical Error"};

/// A day of any year from 0 on, by the calendar that repeats itself after 400 years.
Date dayOfYear(std::int32_t year, std::int32_t month, std::int32_t day)
{
    return Date{makeDate(year + 400, month, day).days - 146097.0};
}

TEST(TransDate, EveryFormat)
{
    struct Row {
        const char* format;
        Variant result;
        std::size_t messages;
    };
    const Row rows[] = {
        {"DMY", "5/3/2024", 0},
        {"MDY", "3/5/2024", 0},
        {"YMD", "2024/3/5", 0},
        {"YDM", "2024/5/3", 0},
        {"dmy", "5/3/2024", 0},
        {"yDm", "2024/5/3", 0},
        {"XYZ", fifthOfMarch, 0},
        {"", fifthOfMarch, 0},
        {"DMYY", fifthOfMarch, 0},
        {" DMY", fifthOfMarch, 0},
        {"DD", fifthOfMarch, 0},
        {"DD.MM.YYYY", "5.3.2024", 0},
        {"YYYY-MM-DD", "2024-3-5", 0},
        {"YY.MM.DD", "24.3.5", 0},
        {"MM-DD-YY", "3-5-24", 0},
        {"DD.MM", "5.3", 0},
        {"DD-MON-YYYY", "5-2024", 0},
        {"MONTH.DD", "5", 0},
        {"MON-MONTH", "", 0},
        {"DD.DD", "5.5", 0},
        {"YY/MM/DD", "", 1},
        {"DD/MM/YYYY", "", 1},
        {"DD/MM.YYYY", "2024", 1},
        {"DD.MM-YYYY", "5", 1},
        {"DD.QQ.YYYY", "5.2024", 1},
        {"dd.mm.yyyy", "", 3},
        {"Dd-MM-YYYY", "3-2024", 1},
        {"DD. MM.YYYY", "5.2024", 1},
        {"DD..YYYY", "5.2024", 1},
        {".", "", 2},
        {"-", "", 2},
        {"DD-", "5", 1},
    };
    for (const Row& row : rows) {
        const test::Surroundings with;
        EXPECT_EQ(conv.TransDate(fifthOfMarch, row.format), row.result) << row.format;
        EXPECT_EQ(with.messages->shown, std::vector<test::ShownMessage>(row.messages, criticalError)) << row.format;
    }
}

TEST(TransDate, ReadsWhatAPersonTypesOnEachMachine)
{
    onEachMachine([](const Machine& machine) {
        EXPECT_EQ(conv.TransDate(machine.fifthOfMarch, "DD.MM.YYYY"), Variant{"5.3.2024"});
        EXPECT_EQ(conv.TransDate(std::string{machine.fifthOfMarch} + " 10:30", "YYYY-MM-DD"), Variant{"2024-3-5"});
        EXPECT_EQ(conv.TransDate(" " + std::string{machine.fifthOfMarch} + " ", "MDY"), Variant{"3/5/2024"});
        EXPECT_EQ(conv.TransDate(fifthOfMarch, "DMY"), Variant{"5/3/2024"});
        EXPECT_EQ(conv.TransDate("5 March 2024", "DMY"), Variant{"5/3/2024"});
        const bool yearFirst = machine.regional().shortDate.starts_with('y');
        EXPECT_EQ(conv.TransDate("5-Mar-24", "DMY"), Variant{yearFirst ? "24/3/2005" : "5/3/2024"});
    });
}

TEST(TransDate, OrderOfTheMachineDecidesBetweenDayAndMonth)
{
    onEachMachine([](const Machine& machine) {
        const bool monthFirst = machine.locale == "en-US" && machine.shortDate.empty();
        EXPECT_EQ(conv.TransDate("4/3/2024", "DMY"), Variant{monthFirst ? "3/4/2024" : "4/3/2024"});
    });
    const test::OnMachine yearDayMonth{test::machines[8]};
    EXPECT_EQ(conv.TransDate("2024/4/3", "DMY"), Variant{"4/3/2024"});
}

TEST(TransDate, WhatIsNoDateComesBackUnchanged)
{
    const auto box = Variant{std::make_shared<test::ValueHolder>("TextBox", Variant{"5.3.2024"})};
    onEachMachine([&](const Machine&) {
        for (const Variant& value : std::initializer_list<Variant>{"abc",
                                                                   "",
                                                                   " ",
                                                                   "31.02.2024",
                                                                   "99.99.9999",
                                                                   "5.3.2024x",
                                                                   "12",
                                                                   "1234,5",
                                                                   Null{},
                                                                   Empty{},
                                                                   true,
                                                                   std::int32_t{45356},
                                                                   45356.0,
                                                                   std::int16_t{1},
                                                                   std::int64_t{1},
                                                                   Date{3e6},
                                                                   Date{-1e6},
                                                                   box,
                                                                   std::string(10'000, '5'),
                                                                   std::string("5.3.2024\0", 9),
                                                                   "🌲",
                                                                   ObjectRef{}}) {
            EXPECT_EQ(conv.TransDate(value, "DD.MM.YYYY"), value);
            EXPECT_EQ(conv.TransDate(value, "DD/MM/YYYY"), value) << "no message either";
        }
    });
}

TEST(TransDate, YearsBelow1900TakeTheirLastTwoDigits)
{
    struct Row {
        Date date;
        const char* result;
    };
    const Row rows[] = {
        {dayOfYear(98, 3, 5), "5.3.1998"},      {dayOfYear(0, 1, 1), "1.1.1900"},
        {dayOfYear(99, 12, 31), "31.12.1999"},  {dayOfYear(4, 2, 29), "29.2.1904"},
        {dayOfYear(0, 2, 29), "1.3.1900"},      {makeDate(100, 1, 1), "1.1.1900"},
        {makeDate(198, 3, 5), "5.3.1998"},      {makeDate(1600, 2, 29), "1.3.1900"},
        {makeDate(1804, 2, 29), "29.2.1904"},   {makeDate(1899, 12, 30), "30.12.1999"},
        {makeDate(1899, 12, 31), "31.12.1999"}, {makeDate(1900, 1, 1), "1.1.1900"},
        {makeDate(9999, 12, 31), "31.12.9999"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(conv.TransDate(row.date, "DD.MM.YYYY"), Variant{row.result});
        EXPECT_EQ(conv.TransDate(field(row.date), "DD.MM.YYYY"), Variant{row.result});
    }
    EXPECT_EQ(conv.TransDate(dayOfYear(98, 3, 5), "YY-MM"), Variant{"98-3"});
    EXPECT_EQ(conv.TransDate(Date{dayOfYear(98, 3, 5).days - 0.75}, "DMY"), Variant{"5/3/1998"}) << "with a time";
    EXPECT_EQ(conv.TransDate(dayOfYear(98, 3, 5), "XYZ"), Variant{dayOfYear(98, 3, 5)}) << "not repaired";
    EXPECT_EQ(conv.TransDate(Date{dayOfYear(0, 1, 1).days - 1.0}, "DMY"), Variant{Date{dayOfYear(0, 1, 1).days - 1.0}});
    const PlatformScope german{test::platformFor("de-AT")};
    EXPECT_EQ(conv.TransDate("05.03.0098", "DMY"), Variant{"5/3/1998"});
    EXPECT_EQ(conv.TransDate("05.03.1850", "DMY"), Variant{"5/3/1950"});
}

TEST(TransDate, ReadsAFieldAndDropsTheTime)
{
    EXPECT_EQ(conv.TransDate(field(Date{fifthOfMarch.days + 0.99}), "DD.MM.YYYY"), Variant{"5.3.2024"});
    EXPECT_EQ(conv.TransDate(makeDate(2005, 11, 30), "YY.MM.DD"), Variant{"05.11.30"});
}

TEST(NationalDate, EachMachineReadsAndPrintsItsOwnForm)
{
    onEachMachine([](const Machine& machine) {
        EXPECT_EQ(conv.NationalDate("3/5/2024"), machine.fifthOfMarch);
        EXPECT_EQ(conv.NationalDate("03/05/2024"), machine.fifthOfMarch);
        EXPECT_EQ(conv.NationalDate("3/5/24"), machine.fifthOfMarch);
    });
}

TEST(NationalDate, TheShortFormHasNoTimeAndEveryDayHasOne)
{
    const PlatformScope german{test::platformFor("de-AT")};
    EXPECT_EQ(conv.NationalDate("3/5/2024 10:30"), "05.03.2024");
    EXPECT_EQ(conv.NationalDate("12/30/1899"), "30.12.1899") << "day number 0 as well";
    EXPECT_EQ(conv.NationalDate("12/29/1899 06:00"), "29.12.1899");
    EXPECT_EQ(conv.NationalDate("1/1/100"), "01.01.0100");
    EXPECT_EQ(conv.NationalDate("12/31/9999"), "31.12.9999");
    EXPECT_EQ(conv.NationalDate("3/5/98"), "05.03.1998");
}

TEST(NationalDate, TextsThatFail)
{
    onEachMachine([](const Machine&) {
        for (const char* text : {"", "3", "3/5", "5.3.2024", "2024-03-05"})
            EXPECT_EQ(errorNumber([&] { conv.NationalDate(text); }), errors::invalidArgument) << text;
        for (const char* text : {"//", "a/b/c", "2/30/2024", "3/5/2024/1", "99/99/9999"})
            EXPECT_EQ(errorNumber([&] { conv.NationalDate(text); }), errors::typeMismatch) << text;
    });
}

TEST(USDateA, EachMachineReadsItsOwnForm)
{
    onEachMachine([](const Machine& machine) {
        if (machine.locale == "de-DE") return; // "Mrz" is none of the twelve names
        const std::string text{machine.fifthOfMarch};
        EXPECT_EQ(conv.USDateA(text), "3/5/2024");
        EXPECT_EQ(conv.USDateA(text + " 10:30:00"), "3/5/2024");
    });
}

TEST(USDateA, PartsAreTrimmedAndYearsCompleted)
{
    struct Row {
        std::size_t machine;
        const char* text;
        const char* result;
    };
    const Row rows[] = {
        {0, "5.3.50", "3/5/2050"},
        {0, "5.3.51", "3/5/1951"},
        {0, "5.3.0", "3/5/2000"},
        {0, "5.3.99", "3/5/1999"},
        {0, "5.3.100", "3/5/100"},
        {0, " 5.3.2024", "error 5"},
        {0, "5. 3 . 2024 ", "3/5/2024"},
        {0, "5-3-2024", "3/5/2024"},
        {0, "5/3/2024 7:00", "3/5/2024"},
        {0, "99.99.9999", "99/99/9999"},
        {0, "5.3.2024.7", "3/5/20247"}, // a point is the thousands mark here

        {0, "5.Mar.2024", "error 13"},
        {0, "5.3", "error 5"},
        {0, "532024", "error 5"},
        {0, "", "error 5"},
        {0, "5:3:2024", "error 5"},
        {0, "5.3.", "error 13"},
        {0, "40000.3.2024", "error 6"},
        {1, "3/5/24", "3/5/2024"},
        {1, "3/5/2024 10:30 PM", "3/5/2024"},
        {4, "2024-03-05", "3/5/2024"},
        {4, "24-3-5 10:30", "3/5/2024"},
        {8, "2024-05-03", "3/5/2024"},
        {5, "05-Mar-24", "3/5/2024"},
        {5, "5 - mar - 24", "error 13"},
        {5, "05-MAR-24 10:30", "3/5/2024"},
        {5, "05-March-24", "0/5/2024"},
        {5, "05-3-24", "0/5/2024"},
        {6, "5-Mrz-2024", "0/5/2024"},
        {7, "05 Mar 2024", "3/5/2024"},
        {7, "05 Dec 51 10:30", "12/5/1951"},
    };
    for (const Row& row : rows) {
        const test::OnMachine on{test::machines[row.machine]};
        std::string result;
        const auto error = errorNumber([&] { result = conv.USDateA(row.text); });
        EXPECT_EQ(error == 0 ? result : "error " + std::to_string(error), row.result)
            << test::machines[row.machine].name << " [" << row.text << "]";
    }
}

TEST(USDateA, TextsOfAnyKind)
{
    const test::OnMachine german{test::machines[0]};
    const std::string many(10'000, '5');
    EXPECT_EQ(conv.USDateA("5🌲3🌲2024 ä"), "3/5/2024") << "any character parts";
    EXPECT_EQ(conv.USDateA(std::string("5\0003\0002024", 8)), "3/5/2024");
    EXPECT_EQ(conv.USDateA("5.3.2024" + std::string(10'000, ' ')), "3/5/2024");
    EXPECT_EQ(conv.USDateA("5.3.2024 " + many), "3/5/2024");
    EXPECT_EQ(errorNumber([&] { conv.USDateA(many); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([&] { conv.USDateA("5.3." + std::string(300, '9')); }), errors::overflow);
    EXPECT_EQ(errorNumber([&] { conv.USDateA("5.ä.2024"); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { conv.NationalDate("3/5/" + many); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { conv.NationalDate(many); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([&] { conv.NationalDate("3/5/🌲"); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { conv.NationalDate(std::string("3/5/2024\0", 9)); }), errors::typeMismatch);
}

TEST(RegionalOrder, IsFoundByThePrintedProbe)
{
    struct Row {
        const char* locale;
        const char* pattern;
        std::optional<DateOrder> order;
        bool spelled;
    };
    const Row rows[] = {
        {"de-AT", "dd.MM.yyyy", DateOrder::Dmy, false},
        {"de-AT", "d.M.yy", DateOrder::Dmy, false},
        {"en-US", "M/d/yyyy", DateOrder::Mdy, false},
        {"en-US", "MM/dd/yy", DateOrder::Mdy, false},
        {"sv-SE", "yyyy-MM-dd", DateOrder::Ymd, false},
        {"sv-SE", "yy-MM-dd", DateOrder::Ymd, false},
        {"sv-SE", "yyyy-dd-MM", DateOrder::Ydm, false},
        {"sv-SE", "yy/d/M", DateOrder::Ydm, false},
        {"en-GB", "dd-MMM-yy", DateOrder::Dmy, true},
        {"en-US", "MMM d, yyyy", DateOrder::Mdy, true},
        {"en-GB", "yyyy MMMM dd", DateOrder::Ymd, true},
        {"en-GB", "yyyy-dd-MMM", DateOrder::Ydm, true},
        {"de-DE", "d. MMMM yyyy", DateOrder::Dmy, true},
        {"fr-FR", "dd-MMM-yy", DateOrder::Mdy, true}, // "avr." is not found, which counts as first
        {"en-GB", "dd.yyyy.MM", std::nullopt, false},
        {"en-GB", "MM.yyyy.dd", std::nullopt, false},
    };
    for (const Row& row : rows) {
        const RegionalOrder found = regionalOrder(test::withShortDate(row.locale, row.pattern));
        EXPECT_EQ(found.order, row.order) << row.locale << ' ' << row.pattern;
        EXPECT_EQ(found.spelledMonth, row.spelled) << row.locale << ' ' << row.pattern;
    }
}

/// What a person types on each machine is a number or a date there, and the rest is none.
TEST(TypedTexts, NumbersOfEachMachine)
{
    onEachMachine([](const Machine& machine) {
        const std::string number{machine.number};
        const std::string own = machine.hasComma() ? "," : ".";
        const std::string grouped{machine.grouped};
        for (const std::string& typed : {number, "-" + number, "+" + number, number + "-", "- " + number, grouped,
                                         "-" + grouped, "  " + number + " ", "1" + own + "5E3", "1" + own + "5e-3",
                                         own + "5", "5" + own, std::string{"0"}, std::string{"007"}})
            EXPECT_TRUE(convert::isNumeric(Variant{typed})) << typed;
        for (const std::string& typed :
             {std::string{}, std::string{" "}, std::string{"-"}, own, std::string{"abc"}, number + "x", "--" + number,
              number + own + "5", "1" + own + "5E", std::string{"E5"}, "(" + number + ")", number + " m", number + "%",
              number + std::string(1, '\0'), std::string{"🌲"}, std::string{"5 März"}, std::string(10'000, '9')})
            EXPECT_FALSE(convert::isNumeric(Variant{typed})) << typed.substr(0, 20);
    });
}

TEST(TypedTexts, DatesOfEachMachine)
{
    onEachMachine([](const Machine& machine) {
        const std::string day{machine.fifthOfMarch};
        const std::string iso = machine.regional().shortDate == "yyyy-dd-MM" ? "2024-05-03" : "2024-03-05";
        for (const std::string& typed : {day, " " + day + " ", day + " 10:30", day + " 10:30:15", "10:30 " + day, iso,
                                         std::string{"5 March 2024"}, std::string{"10:30"}}) {
            EXPECT_TRUE(convert::isDate(Variant{typed})) << typed;
            EXPECT_EQ(dayOf(convert::toDate(Variant{typed})), typed == "10:30" ? Date{} : makeDate(2024, 3, 5))
                << typed;
        }
        for (const std::string& typed :
             {std::string{}, std::string{" "}, std::string{"abc"}, std::string{"5"}, std::string{"40271"}, day + "x",
              day + " 25:00", std::string{"30 February 2024"}, std::string{"2024-13-32"}, std::string{"99.99.9999"},
              day + std::string(1, '\0'), std::string{"🌲"}, std::string(10'000, '1')}) {
            EXPECT_FALSE(convert::isDate(Variant{typed})) << typed.substr(0, 20);
            EXPECT_EQ(errorNumber([&] { convert::toDate(Variant{typed}); }), errors::typeMismatch)
                << typed.substr(0, 20);
        }
    });
}

TEST(RegionalOrder, NoneOfTheFourCases)
{
    Platform platform = test::platformFor("en-GB");
    platform.regional.shortDate = "dd.yyyy.MM";
    const PlatformScope scope{std::move(platform)};
    EXPECT_EQ(conv.USDateA("5.2024.3 10:30"), "2024.3 10:30") << "what stands behind the first separator";
    EXPECT_EQ(errorNumber([] { conv.USDateA("5.2024"); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([] { conv.NationalDate("3/5/2024"); }), errors::typeMismatch);
}

TEST(RegionalOrder, MonthNames)
{
    const std::pair<const char*, int> rows[] = {{"Jan", 1},  {"Feb", 2},  {"Mar", 3},   {"Apr", 4}, {"May", 5},
                                                {"Jun", 6},  {"Jul", 7},  {"Aug", 8},   {"Sep", 9}, {"Oct", 10},
                                                {"Nov", 11}, {"Dec", 12}, {" apr ", 4}, {"APR", 4}, {"April", 0},
                                                {"", 0},     {"Mrz", 0},  {"4", 0}};
    for (const auto& [name, number] : rows)
        EXPECT_EQ(monthNumber(name), number) << name;
}

TEST(RegionalOrder, FullYears)
{
    const std::pair<int, int> rows[] = {{0, 2000},  {1, 2001},    {50, 2050}, {51, 1951},     {99, 1999},
                                        {100, 100}, {1850, 1850}, {-1, -1},   {32767, 32767}, {-32768, -32768}};
    for (const auto& [year, full] : rows)
        EXPECT_EQ(pivot::fullYearOperation.fullYear(year), full) << year;
}

TEST(NumberText, NoComma)
{
    struct Row {
        std::string text;
        std::string mark;
        std::string result;
    };
    const Row rows[] = {
        {"1.234,50", ".", "1234.50"},
        {"1,234.50", ",", "1.234.50"},
        {"1.234,5", "", "1.234.5"},
        {"1 234,5", " ", "1234.5"},
        {"1\u00A0234,5", "\u00A0", "1234.5"},
        {"1\u202F234,5", "\u202F", "1234.5"},
        {"1\u2019234.5", "\u2019", "1234.5"},
        {"1.234,5", "..", "1.234.5"},
        {"ab", "ab", "ab"},
        {"", ".", ""},
        {"...", ".", ""},
        {",,", ".", ".."},
        {"abc", "b", "ac"},
        {"ABC", "b", "ABC"},
        {"Lärche", "ä", "Lrche"},
        {"🌲,🌲", "🌲", "."},
        {std::string("1\0,2", 4), ".", std::string("1\0.2", 4)},
        {std::string("1\0002", 3), std::string(1, '\0'), "12"},
        {std::string(10'000, ','), ".", std::string(10'000, '.')},
    };
    for (const Row& row : rows)
        EXPECT_EQ(conv.NoComma(row.text, row.mark), row.result) << row.text << " with " << row.mark;
}

TEST(NumberText, NoComma3AndNoSpaceAndAddBrackets)
{
    EXPECT_EQ(conv.NoComma3("1.234,5,6"), "1.234.5.6");
    EXPECT_EQ(conv.NoComma3(""), "");
    EXPECT_EQ(conv.NoSpace(" a b  c "), "abc");
    EXPECT_EQ(conv.NoSpace("\ta\u00A0b"), "\ta\u00A0b") << "only the blank itself";
    EXPECT_EQ(conv.NoSpace(""), "");
    EXPECT_EQ(conv.AddBrackets("my column"), "my column");
    EXPECT_EQ(conv.AddBrackets(""), "");
}

TEST(NumberText, AddSpacesCountsCharacters)
{
    EXPECT_EQ(conv.AddSpaces("ab", 3), "  ab");
    EXPECT_EQ(conv.AddSpaces("abc", 3), "abc");
    EXPECT_EQ(conv.AddSpaces("", 2), "    ");
    EXPECT_EQ(conv.AddSpaces("", 0), "");
    EXPECT_EQ(conv.AddSpaces("äöü", 4), "  äöü");
    EXPECT_EQ(conv.AddSpaces("🌲", 2), "  🌲");
    EXPECT_EQ(conv.AddSpaces("", 32767).size(), 65534U);
    EXPECT_EQ(errorNumber([] { conv.AddSpaces("abcd", 3); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([] { conv.AddSpaces("", -1); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([] { conv.AddSpaces(std::string(10'000, 'a'), 9'999); }), errors::invalidArgument);
}

TEST(BooleanColumn, WordsAreFetchedOncePerInstance)
{
    test::Surroundings with;
    with.loc.texts = {{5, "Nein"}, {6, "Ja"}};
    Comm_Conv words;
    EXPECT_EQ(words.ConvBoolSQLColumnToStr(with.session, "LOCKED", "GERMAN"),
              "(CASE LOCKED WHEN 1 THEN 'Ja' ELSE 'Nein' END) AS LOCKED");
    EXPECT_EQ(with.loc.asked, (std::vector<int>{5, 6}));
    with.loc.texts = {{5, "No"}, {6, "Yes, 'tis"}};
    TmkVar other = with.session;
    other.strLanguage = "ENGLISH";
    EXPECT_EQ(words.ConvBoolSQLColumnToStr(other, "A B", "ENGLISH"),
              "(CASE A B WHEN 1 THEN 'Ja' ELSE 'Nein' END) AS A B");
    EXPECT_EQ(with.loc.asked.size(), 2U);
    EXPECT_EQ(Comm_Conv{}.ConvBoolSQLColumnToStr(other, "X", ""),
              "(CASE X WHEN 1 THEN 'Yes, 'tis' ELSE 'No' END) AS X");
}

TEST(BooleanColumn, WithoutALanguageServiceTheCallFails)
{
    const TmkVar session;
    const PlatformScope scope{test::platformFor("de-AT")};
    EXPECT_EQ(errorNumber([&] { Comm_Conv{}.ConvBoolSQLColumnToStr(session, "X", ""); }), errors::objectNotSet);
}

} // namespace
} // namespace tamarok
