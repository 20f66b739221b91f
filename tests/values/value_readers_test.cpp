#include "values/machines.h"

#include "tamarok/comm_get.h"
#include "tamarok/component.h"
#include "tamarok/controls.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::field;
using test::onEachMachine;

const Comm_Get get;
const Date fifthOfMarch = makeDate(2024, 3, 5);

/// What each reader gives for a value.
struct Row {
    const char* name;
    Variant value;
    std::string string;   ///< Get_String
    std::string noSpaces; ///< Get_String with NoSpaces
    std::string noTrim;   ///< Get_String with NoTrim
    std::string val;      ///< Get_Val
    std::string number;   ///< Get_Number, "error 13" for a failure
    std::string numberN;  ///< Get_Number_N, as plain text
};

std::string numberOf(const Variant& value)
{
    std::string text;
    const auto error = errorNumber([&] { text = get.Get_Number(value); });
    return error == 0 ? text : "error " + std::to_string(error);
}

std::string doubleOf(const Variant& value)
{
    double number = 0.0;
    const auto error = errorNumber([&] { number = get.Get_Number_N(value); });
    return error == 0 ? convert::toPlainText(number) : "error " + std::to_string(error);
}

void expectRow(const Row& row, const Variant& value)
{
    EXPECT_EQ(get.Get_String(value), row.string) << row.name;
    EXPECT_EQ(get.Get_String(value, false, false), row.string) << row.name;
    EXPECT_EQ(get.Get_String(value, true), row.noSpaces) << row.name;
    EXPECT_EQ(get.Get_String(value, false, true), row.noTrim) << row.name;
    EXPECT_EQ(get.Get_Val(value), row.val) << row.name;
    EXPECT_EQ(numberOf(value), row.number) << row.name;
    EXPECT_EQ(doubleOf(value), row.numberN) << row.name;
}

TEST(ValueReaders, EveryKindOfValueAndTheSameInAField)
{
    const PlatformScope german{test::platformFor("de-AT")};
    const Row rows[] = {
        {"Null", Null{}, " ", "", " ", "", " ", "0"},
        {"Empty", Empty{}, "", "", "", "", "0", "0"},
        {"empty text", "", "", "", "", "", "error 13", "error 13"},
        {"blank", " ", "", "", " ", " ", "error 13", "error 13"},
        {"text with blanks", "  a  ", "a", "a", "  a  ", "  a  ", "error 13", "error 13"},
        {"other white space stays", "\t a\u00A0", "\t a\u00A0", "\t a\u00A0", "\t a\u00A0", "\t a\u00A0", "error 13",
         "error 13"},
        {"text of a whole number", " 12 ", "12", "12", " 12 ", " 12 ", "12", "12"},
        {"text with a point", "1.5", "1.5", "1.5", "1.5", "1.5", "1.5", "15"},
        {"text with a comma", "1,5", "1,5", "1,5", "1,5", "1,5", "error 13", "1.5"},
        {"Boolean", true, "Wahr", "Wahr", "Wahr", "Wahr", "-1", "-1"},
        {"Integer", std::int16_t{-7}, "-7", "-7", "-7", "-7", "-7", "-7"},
        {"Long", std::int32_t{1234567}, "1234567", "1234567", "1234567", "1234567", "1234567", "1234567"},
        {"LongLong", std::int64_t{9007199254740993}, "9007199254740993", "9007199254740993", "9007199254740993",
         "9007199254740993", "9007199254740993", "9.00719925474099E+15"},
        {"Double", 1234.5, "1234,5", "1234,5", "1234,5", "1234,5", "1234.5", "1234.5"},
        {"Double below 1", -0.25, "-0,25", "-0,25", "-0,25", "-0,25", "-0.25", "-0.25"},
        {"Double of 15 digits", 0.1 + 0.2, "0,3", "0,3", "0,3", "0,3", "0.3", "0.3"},
        {"Date", fifthOfMarch, "05.03.2024", "05.03.2024", "05.03.2024", "05.03.2024", "45356", "45356"},
        {"umlauts", " Lärche ", "Lärche", "Lärche", " Lärche ", " Lärche ", "error 13", "error 13"},
        {"beyond 16 bits", " 🌲 ", "🌲", "🌲", " 🌲 ", " 🌲 ", "error 13", "error 13"},
        {"zero characters", std::string(" a\0b ", 5), std::string("a\0b", 3), std::string("a\0b", 3),
         std::string(" a\0b ", 5), std::string(" a\0b ", 5), "error 13", "error 13"},
    };
    for (const Row& row : rows) {
        expectRow(row, row.value);
        expectRow(row, field(row.value));
    }
}

TEST(ValueReaders, TenThousandCharacters)
{
    const std::string content(10'000, 'x');
    EXPECT_EQ(get.Get_String("  " + content + " "), content);
    EXPECT_EQ(get.Get_Val(content + " "), content + " ");
    EXPECT_EQ(numberOf(content), "error 13");
    EXPECT_EQ(get.Get_Key("R" + content), content);
}

TEST(ValueReaders, BothOptionsTogether)
{
    EXPECT_EQ(get.Get_String(Null{}, true, true), "");
    EXPECT_EQ(get.Get_String(field(Null{}), true, true), "");
    EXPECT_EQ(get.Get_String("  a  ", true, true), "  a  ");
    EXPECT_EQ(get.Get_String(" ", true, true), " ") << "only Null becomes nothing";
}

TEST(ValueReaders, TextsFollowTheMachineAndPlainNumbersDoNot)
{
    onEachMachine([](const test::Machine& machine) {
        EXPECT_EQ(get.Get_String(1234.5), machine.number);
        EXPECT_EQ(get.Get_Val(1234.5), machine.number);
        EXPECT_EQ(get.Get_Number(1234.5), "1234.5");
        EXPECT_EQ(get.Get_Number(-1234567.25), "-1234567.25");
        EXPECT_EQ(get.Get_Number(Null{}), " ");
        EXPECT_EQ(get.Get_Number_N(machine.number), 1234.5);
        EXPECT_EQ(get.Get_Number_N(machine.grouped), 1234.5);
        EXPECT_EQ(get.Get_String(fifthOfMarch), machine.fifthOfMarch);
        EXPECT_EQ(get.Get_Date_N(machine.fifthOfMarch), fifthOfMarch);
        EXPECT_EQ(get.Get_Datum(machine.fifthOfMarch), fifthOfMarch);
    });
}

TEST(ValueReaders, Dates)
{
    const PlatformScope scope{test::platformFor("de-AT")};
    EXPECT_EQ(get.Get_Datum(Null{}), makeDate(2024, 6, 15)) << "without time";
    EXPECT_EQ(get.Get_Datum(field(Null{})), makeDate(2024, 6, 15));
    EXPECT_EQ(errorNumber([] { get.Get_Date_N(Null{}); }), errors::invalidUseOfNull);
    EXPECT_EQ(errorNumber([] { get.Get_Date_N(field(Null{})); }), errors::invalidUseOfNull);
    const Date afternoon{fifthOfMarch.days + 0.75};
    for (const auto read : {&Comm_Get::Get_Date_N, &Comm_Get::Get_Datum}) {
        EXPECT_EQ((get.*read)(Empty{}), Date{0.0});
        EXPECT_EQ((get.*read)(45356.75), afternoon);
        EXPECT_EQ((get.*read)(afternoon), afternoon);
        EXPECT_EQ((get.*read)(field(afternoon)), afternoon);
        EXPECT_EQ((get.*read)("5.3.2024 18:00"), afternoon);
        EXPECT_EQ((get.*read)("5. März 24"), fifthOfMarch);
        for (const char* text : {"", "abc", "31.02.2024", "99.99.9999", "12,5"})
            EXPECT_EQ(errorNumber([&] { (get.*read)(text); }), errors::typeMismatch) << text;
        for (const double days : {-657435.0, 2958466.0, 1e9})
            EXPECT_EQ(errorNumber([&] { (get.*read)(days); }), errors::overflow) << days;
    }
}

TEST(ValueReaders, DaysBeyondTheRangeOfDates)
{
    const PlatformScope scope{test::platformFor("de-AT")};
    for (const double days : {-658000.0 /* in the year 0098 */, -1e6, 3e6}) {
        for (const Variant& day : {Variant{Date{days}}, field(Date{days})}) {
            for (const auto read : {&Comm_Get::Get_Date_N, &Comm_Get::Get_Datum})
                EXPECT_EQ(errorNumber([&] { (get.*read)(day); }), errors::overflow) << days;
            EXPECT_EQ(errorNumber([&] { get.Get_String(day); }), errors::overflow) << days;
            EXPECT_EQ(errorNumber([&] { get.Get_Val(day); }), errors::overflow) << days;
            EXPECT_EQ(get.Get_Number_N(day), days) << "a number needs no calendar";
        }
    }
    EXPECT_EQ(get.Get_Number(Date{-658000.0}), "-658000");
}

TEST(ValueReaders, ControlsStandForTheirText)
{
    const auto box = controls::make("TextBox");
    box->put("Text", "12,5");
    EXPECT_EQ(get.Get_String(Variant{box}), "12,5");
    EXPECT_EQ(get.Get_Val(Variant{box}), "12,5");
}

TEST(ValueReaders, ObjectsThatAreNoField)
{
    const auto grid = Variant{controls::make("DataGrid")};
    const Variant nothing{ObjectRef{}};
    const Variant array{VariantArray{}};
    const auto readers = {
        +[](const Variant& value) { get.Get_String(value); },   +[](const Variant& value) { get.Get_Number(value); },
        +[](const Variant& value) { get.Get_Number_N(value); }, +[](const Variant& value) { get.Get_Date_N(value); },
        +[](const Variant& value) { get.Get_Datum(value); },    +[](const Variant& value) { get.Get_Val(value); },
    };
    for (const auto read : readers) {
        EXPECT_EQ(errorNumber([&] { read(grid); }), errors::noSuchMember);
        EXPECT_EQ(errorNumber([&] { read(nothing); }), errors::objectNotSet);
        EXPECT_EQ(errorNumber([&] { read(array); }), errors::typeMismatch);
    }
}

TEST(ValueReaders, KeyOfAListOrTree)
{
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},     {"R", ""},      {"5", ""},     {"R5", "5"},    {"55", "55"}, {"R123", "123"},
        {"AR7", "7"}, {"123", "123"}, {"RR1", "R1"}, {"r12", "r12"}, {"äR7", "7"}, {"🌲", ""},
        {"🌲R", ""},   {"ABCR", ""},   {"R 1", " 1"}, {"AB", "AB"},   {" R", ""},   {"🌲🌲", "🌲🌲"},
    };
    for (const auto& [key, result] : rows)
        EXPECT_EQ(get.Get_Key(key), result) << key;
}

TEST(ValueReaders, ByNameNullFailsWhereATextIsMeant)
{
    std::vector<Variant> key{Null{}};
    EXPECT_EQ(errorNumber([&] { component::invoke("Comm_Get", "Get_Key", key); }), errors::invalidUseOfNull);
    key = {Empty{}};
    EXPECT_EQ(component::invoke("Comm_Get", "Get_Key", key), Variant{""});
    std::vector<Variant> value{Null{}};
    EXPECT_EQ(component::invoke("Comm_Get", "Get_String", value), Variant{" "}) << "both options left out";
    value = {Null{}, true};
    EXPECT_EQ(component::invoke("Comm_Get", "Get_String", value), Variant{""});
    value = {"  a  ", false, true};
    EXPECT_EQ(component::invoke("Comm_Get", "Get_String", value), Variant{"  a  "});
}

} // namespace
} // namespace tamarok
