#include "values/machines.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/component.h"
#include "tamarok/controls.h"

namespace tamarok {
namespace {

using controls::TextBox;
using test::errorNumber;
using test::Machine;
using test::onEachMachine;

const Comm_Get get;
constexpr std::int16_t backspace = 8;
constexpr std::int16_t enter = 13;

/// A box as a test sets it up: the cursor is a "|" in the text, or a selection stands between two.
std::shared_ptr<TextBox> box(std::string_view content)
{
    auto result = std::make_shared<TextBox>();
    std::string text{content};
    const std::size_t first = text.find('|');
    const std::size_t second = first == std::string::npos ? first : text.find('|', first + 1);
    if (second != std::string::npos) text.erase(second, 1);
    if (first != std::string::npos) text.erase(first, 1);
    result->text(text);
    result->SelStart(static_cast<std::int32_t>(first == std::string::npos ? text.size() : first));
    if (second != std::string::npos) result->SelLength(static_cast<std::int32_t>(second - first - 1));
    return result;
}

/// The box's content with its cursor, as `box` takes it.
std::string shown(const TextBox& control)
{
    std::string text = control.text();
    const auto start = static_cast<std::size_t>(control.SelStart());
    if (control.SelLength() > 0) text.insert(start + static_cast<std::size_t>(control.SelLength()), "|");
    return text.insert(start, "|");
}

class German : public ::testing::Test {
    PlatformScope scope_{test::platformFor("de-AT")};
};
using OnlyNumbers = German;
using KeyPress = German;
using LostFocus = German;
using OnlyDate = German;
using SelectText = German;

std::int16_t onlyNumbers(std::int16_t key, std::string_view content, bool decimals, bool negative)
{
    const auto control = box(content);
    std::int16_t changed = key;
    const std::int16_t result = get.OnlyNumbers(changed, decimals, *control, negative);
    EXPECT_EQ(result, changed) << "the key is written back";
    EXPECT_EQ(shown(*control), shown(*box(content))) << "the box itself is left alone";
    return result;
}

TEST_F(OnlyNumbers, WhatPasses)
{
    struct Row {
        int key;
        const char* content;
        bool decimals;
        bool negative;
        bool passes;
    };
    const Row rows[] = {
        {'5', "12", false, false, true},        {'0', "", false, false, true},
        {'9', "-1", false, false, true},        {'a', "12", false, false, false},
        {'/', "", true, true, false},           {':', "", true, true, false},
        {' ', "12", true, true, false},         {'-', "12", false, false, false},
        {'-', "|12", true, false, false},       {',', "12", false, false, false},
        {',', "12", true, false, true},         {',', "", true, false, true},
        {',', "1,2", true, false, false},       {'.', "12", true, false, false},
        {backspace, "12", false, false, true},  {enter, "12", false, false, true},
        {'-', "|12", false, true, true},        {'-', "|", false, true, true},
        {'-', "12|", false, true, false},       {'-', "|-12", false, true, false},
        {'5', "|-12", false, true, false},      {',', "|-12", true, true, false},
        {'5', "-|12", false, true, true},       {'5', "|-12", false, false, true},
        {backspace, "|-12", false, true, true}, {enter, "|-12", false, true, true},
        {'a', "12", false, true, false},        {',', "-12", true, true, true},
        {228, "12", true, true, false},         {0, "12", true, true, false},
        {-1, "12", true, true, false},          {27, "12", true, true, false},
    };
    for (const Row& row : rows) {
        const auto key = static_cast<std::int16_t>(row.key);
        EXPECT_EQ(onlyNumbers(key, row.content, row.decimals, row.negative), row.passes ? key : 0)
            << row.key << " in " << row.content;
    }
}

TEST(OnlyNumbersOnMachines, SeparatorIsTheMachines)
{
    onEachMachine([](const Machine& machine) {
        const char own = machine.hasComma() ? ',' : '.';
        const char other = machine.hasComma() ? '.' : ',';
        EXPECT_EQ(onlyNumbers(own, "12", true, false), own);
        EXPECT_EQ(onlyNumbers(other, "12", true, false), 0);
        EXPECT_EQ(onlyNumbers(own, std::string{"1"} + own + "2", true, false), 0);
        EXPECT_EQ(onlyNumbers(own, std::string{"1"} + other + "2", true, false), own);
    });
}

struct Press {
    const char* format;
    const char* before; ///< with the cursor or selection
    int key;
    int left; ///< of the key
    const char* after;
};

void expectPress(const Press& row)
{
    const auto control = box(row.before);
    auto key = static_cast<std::int16_t>(row.key);
    get.OnlyNumbersKeyPress(key, *control, row.format);
    EXPECT_EQ(key, row.left) << row.format << " [" << row.before << "] key " << row.key;
    EXPECT_EQ(shown(*control), row.after) << row.format << " [" << row.before << "] key " << row.key;
    EXPECT_EQ(control->DataFormat->Format, row.format);
}

TEST_F(KeyPress, Digits)
{
    const Press rows[] = {
        {"00.0", "12|", '3', 0, "12|"},
        {"00.0", "1|", '3', '3', "1|"},
        {"00.0", "|12", '3', 0, "|12"},
        {"00.0", "12,|", '3', '3', "12,|"},
        {"00.0", "12,3|", '4', 0, "12,3|"},
        {"00.0", "1|,3", '4', '4', "1|,3"},
        {"00.0", "12|,3", '4', 0, "12|,3"},
        {"00.0", "1,|3", '4', 0, "1,|3"},
        {"-00.0", "-12|", '3', 0, "-12|"},
        {"-00.0", "-1|", '3', '3', "-1|"},
        {"-00.0", "-1|,", '3', '3', "-1|,"},
        {"-00.0", "-12|,", '3', 0, "-12|,"},
        {"000", "12|", '3', '3', "12|"},
        {"000", "123|", '4', 0, "123|"},
        {"-000", "-12|", '3', '3', "-12|"},
        {"-000", "-123|", '4', 0, "-123|"},
        {"", "|", '1', 0, "|"},
        {".00", "|", '1', 0, "|"},
        {"0.00", "0,|", '1', '1', "0,|"},
        {"0.00", "0,12|", '3', 0, "0,12|"},
        {"00.", "12|", '3', '3', "12|"},
        {"00.", "123|", '4', 0, "123|"},
        {"##0.00", "12|", '3', '3', "12|"},
        {"00.0", "12|", 'a', 0, "12|"},
        {"00.0", "12|", 0, 0, "12|"},
        {"00.0", "12|", 228, 0, "12|"},
        {"00.0", "12|", ' ', 0, "12|"},
    };
    for (const Press& row : rows)
        expectPress(row);
}

TEST_F(KeyPress, Selection)
{
    const Press rows[] = {
        {"00.0", "|12|", '3', '3', "|"},
        {"00.0", "1|2|", '3', '3', "1|"},
        {"00.0", "|12,3|", '4', '4', "|"},
        {"00.0", "12,|3|", '4', '4', "12,|"},
        {"00.0", "1|2,3|", ',', ',', "1|"},
        {"00.0", "|1|2", 'a', 0, "|1|2"},         // refused before the deletion
        {"00", "1|2|", ',', 0, "1|"},             // refused after it
        {"000.00", "123|,|45", '6', 0, "123|45"}, // the selection goes first; then there is no room
        {"-00.0", "|12|", '-', '-', "|"},
        {"-00.0", "|-12|", '-', 0, "|-12|"},
        {"-00.0", "|12|,5", '-', '-', "|,5"},
    };
    for (const Press& row : rows)
        expectPress(row);
}

TEST_F(KeyPress, Separator)
{
    const Press rows[] = {
        {"00.0", "12|", ',', ',', "12|"},   {"00.0", "12|", '.', ',', "12|"},
        {"00.0", "1|2", ',', ',', "1|2"},   {"00.0", "|12", ',', 0, "|12"},
        {"00.0", "1,|", ',', 0, "1,|"},     {"00.0", "1|,2", ',', 0, "1|,2"},
        {"00.00", "|12", ',', ',', "0|12"}, {"00.0", "|", ',', ',', "0|"},
        {"-00.0", "-|", ',', ',', "-0|"},   {"-00.00", "-|12", '.', ',', "-0|12"},
        {"-00.0", "-|12", ',', 0, "-|12"},  {"00", "12|", ',', 0, "12|"},
        {"00", "|", ',', 0, "|"},           {"00.", "1|", ',', 0, "1|"},
    };
    for (const Press& row : rows)
        expectPress(row);
}

TEST_F(KeyPress, Sign)
{
    const Press rows[] = {
        {"-00.0", "|", '-', '-', "|"},   {"-00.0", "|12", '-', '-', "|12"}, {"-00.0", "1|2", '-', 0, "1|2"},
        {"-00.0", "|-1", '-', 0, "|-1"}, {"00.0", "|", '-', 0, "|"},        {"-00", "|", '-', '-', "|"},
        {"-00", "|12", '-', '-', "|12"}, {"00", "|", '-', 0, "|"},          {"-00.0", "|1,2", '-', '-', "|1,2"},
        {"0-0.0", "|", '-', 0, "|"},
    };
    for (const Press& row : rows)
        expectPress(row);
}

TEST_F(KeyPress, BackspaceAndEnter)
{
    const Press rows[] = {
        {"00.0", "12|", 8, 8, "12|"},     {"00.0", "|12", 8, 8, "|12"},     {"00.0", "1,|2", 8, 0, "1,|2"},
        {"00.0", "1,|", 8, 8, "1,|"},     {"00.0", "1,2|", 8, 8, "1,2|"},   {"00.0", "1|,2", 8, 8, "1|,2"},
        {"00.0", "|1,2|", 8, 8, "|1,2|"}, {"00.0", "1|,|2", 8, 0, "1|,|2"}, {"00.0", "|1,|2", 8, 0, "|1,|2"},
        {"00.0", "1,|2|", 8, 8, "1,|2|"}, {"00.0", "|1|,2", 8, 8, "|1|,2"}, {"00.0", "1|,|", 8, 0, "1|,|"},
        {"00.0", "|", 8, 8, "|"},         {"00.0", "1,2|", 13, 13, "1,2|"}, {"00", "|12|", 13, 13, "|12|"},
    };
    for (const Press& row : rows)
        expectPress(row);
}

TEST(KeyPressOnMachines, EitherSeparatorMayBePressed)
{
    onEachMachine([](const Machine& machine) {
        const char own = machine.hasComma() ? ',' : '.';
        for (const char pressed : {',', '.'}) {
            TextBox control;
            controls::typeText(control, std::string{"12"} + pressed + "5",
                               [&](std::int16_t& key) { get.OnlyNumbersKeyPress(key, control, "0000.00"); });
            EXPECT_EQ(control.text(), std::string{"12"} + own + "5");
        }
    });
}

TEST_F(KeyPress, TypedKeyByKey)
{
    struct Row {
        const char* format;
        const char* typed;
        const char* content;
    };
    const Row rows[] = {
        {"0000.00", "12,5", "12,5"},
        {"0000.00", ",5", "0,5"},
        {"0000.00", ".5", "0,5"},
        {"-000.0", "-,5", "-0,5"},
        {"-000.0", "-12.34", "-12,3"},
        {"0000.00", "-12", "12"},
        {"0000.00", "123456,789", "1234,78"},
        {"00", "1,2,3", "12"},
        {"-0000", "--5-4", "-54"},
        {"0000.00", "1a2b,ä🌲3", "12,3"},
        {"0000.00", "1,,2", "1,2"},
        {"0000.00", "12,5\b\b\b", "1"},
        {"0000.00", "1\r2", "12"},
        {"0000.00", "1.234,5", "1,23"},
        {"0.0", "\b\b5", "5"},
    };
    for (const Row& row : rows) {
        TextBox control;
        controls::typeText(control, row.typed,
                           [&](std::int16_t& key) { get.OnlyNumbersKeyPress(key, control, row.format); });
        EXPECT_EQ(control.text(), row.content) << row.format << " [" << row.typed << "]";
    }
}

TEST_F(KeyPress, LockedBoxTakesEnterAlone)
{
    for (const int key : std::initializer_list<int>{'5', ',', '.', '-', 8, 'a', 0}) {
        const auto control = box("1|2|");
        control->Locked = true;
        auto left = static_cast<std::int16_t>(key);
        get.OnlyNumbersKeyPress(left, *control, "-000.0");
        EXPECT_EQ(left, 0);
        EXPECT_EQ(shown(*control), "1|2|");
        EXPECT_EQ(control->DataFormat->Format, "");
    }
    const auto control = box("12");
    control->Locked = true;
    std::int16_t key = enter;
    get.OnlyNumbersKeyPress(key, *control, "-000.0");
    EXPECT_EQ(key, enter);
}

TEST_F(KeyPress, OtherControlsAreLeftAlone)
{
    for (const char* type : {"ComboBox", "CheckBox"}) {
        const auto control = controls::make(type);
        for (const int key : std::initializer_list<int>{'a', '5', '-', 8, 13}) {
            auto left = static_cast<std::int16_t>(key);
            get.OnlyNumbersKeyPress(left, *control, "00.0");
            EXPECT_EQ(left, key) << type;
        }
    }
}

TEST_F(LostFocus, TidiesTheBox)
{
    struct Row {
        const char* format;
        std::string before;
        const char* after;
    };
    const Row rows[] = {
        {"000", "1234", ""},
        {"000", "abc", ""},
        {"000", "12", "012"},
        {"000", "", ""},
        {"000", "123", "123"},
        {"000", "-12", "012"},
        {"000", "12-", "012"},
        {"000", "+12", "012"},
        {"000", "1.2", "001"},
        {"000", "1.234", "001"},
        {"000", ".5", ""}, // no number where "." groups digits
        {"000", "1,2", "001"},
        {"000", "1,5", "002"},
        {"000", "12,34", ""},
        {"000", " 12", "012"},
        {"000", " 123", ""},
        {"000", "1E2", "100"},
        {"000", "--1", ""},
        {"-000", "-12", "-012"},
        {"-000", "-123", "-123"},
        {"-000", "-1234", ""},
        {"-000", "123", "123"},
        {"-000", "0012", "012"},
        {"-000", "-1.5", "-001"},
        {"-000", "1,5", "002"},
        {"-000", "-12,5", ""},
        {"-000", "-", ""},
        {"-000", "-0", "000"},
        {"0000.00", "12,5", "0012,50"},
        {"0000.00", "12", "0012,00"},
        {"0000.00", "12345", ""},
        {"0000.00", "1234,567", "1234,57"},
        {"0000.00", "1.234,5", "1234,50"},
        {"0000.00", "12.345,6", ""},
        {"0000.00", "-12,5", "0012,50"},
        {"-0000.00", "-12,5", "-0012,50"},
        {"-0000.00", "-12345", ""},
        {"-0000.00", "12345", ""},
        {"0000.00", ",5", "0000,50"},
        {"0.00", "9,999", "10,00"},
        {".00", "0,5", ""},
        {"#,##0.00", "1234,5", "1.234,50"},
        {"0000.00", "12,5,5", ""},
        {"0000.00", "12 €", ""},
        {"0000.00", "(12)", ""},
        {"0000.00", "1e400", ""},
        {"0000.00", "1E14", ""},
        {"0000.00", "1E15", ""}, // "1E+15" has five characters
        {"00000.00", "1E15", "1000000000000000,00"},
        {"-00000", "1E15", "1000000000000000"},
        {"-0000", "1E15", ""},
        {"00000", "1E15", "1000000000000000"},
        {"-00000", "0,00001", "00000"}, // "1E-05"
        {"0000.00", "1E3", "1000,00"},
        {"0000.00", "1E-2", "0100,00"}, // every sign goes, that of the exponent too
        {"-0000.00", "1E-2", "0000,01"},
        {"0000.00", "12,5x", ""},
        {"0000.00", "5.3.2024", ""},
        {"-", "5", ""},
        {"0000.00", std::string(10'000, '1'), ""},
        {"000", std::string(10'000, ' ') + "5", ""},
        {"000", std::string("1\0", 2), ""},
        {"000", "🌲", ""},
    };
    for (const Row& row : rows) {
        TextBox control;
        control.text(row.before);
        std::string format = row.format;
        get.OnlyNumbersLostFocus(control, format);
        EXPECT_EQ(format, row.format);
        EXPECT_EQ(control.text(), row.after) << row.format << " [" << row.before << "]";
    }
}

TEST(LostFocusOnMachines, FailsWhereRemovingOrCuttingLeavesNoNumber)
{
    struct Row {
        const char* locale;
        const char* format;
        const char* text;
    };
    const Row rows[] = {
        {"en-US", "000", ".5"},      {"en-US", "000", "-.5"},         {"en-US", "-000", ".5"},
        {"en-US", "-000", "-.5"},    {"en-US", "-000", ".0"},         {"de-AT", "000", "1E-400"},
        {"de-AT", "0.00", "1E-400"}, {"de-AT", "0000000", "1E-3000"}, {"en-US", "0000000", "-1E-400"},
    };
    for (const Row& row : rows) {
        const PlatformScope scope{test::platformFor(row.locale)};
        TextBox control;
        control.text(row.text);
        std::string format = row.format;
        EXPECT_EQ(errorNumber([&] { get.OnlyNumbersLostFocus(control, format); }), errors::typeMismatch)
            << row.format << " [" << row.text << "]";
        EXPECT_EQ(control.text(), row.text) << "nothing is written";
    }
}

TEST(LostFocusOnMachines, TextIsCutAtThePointWhereThatIsTheSeparator)
{
    const PlatformScope scope{test::platformFor("en-US")};
    struct Row {
        const char* format;
        const char* before;
        const char* after;
    };
    const Row rows[] = {
        {"000", "5.", "005"},       {"000", "1.99", "001"}, {"000", "1234.5", ""}, {"-000", "-1.99", "-001"},
        {"-000", "-1234.5", ""},    {"0.0", "1.99", "2.0"}, {"000", "1,234", ""},  {"00000", "1,234", "01234"},
        {"-0000", "1,234", "1234"}, {"000", "0", "000"},
    };
    for (const Row& row : rows) {
        TextBox control;
        control.text(row.before);
        std::string format = row.format;
        get.OnlyNumbersLostFocus(control, format);
        EXPECT_EQ(control.text(), row.after) << row.format << " [" << row.before << "]";
    }
}

TEST_F(LostFocus, WithoutAFormatTheBoxsOwnCountsAndComesBack)
{
    TextBox control;
    control.text("abc");
    std::string format;
    get.OnlyNumbersLostFocus(control, format);
    EXPECT_EQ(control.text(), "abc") << "no format, nothing is done";
    EXPECT_EQ(format, "");
    control.DataFormat->Format = "000";
    control.text("7");
    get.OnlyNumbersLostFocus(control, format);
    EXPECT_EQ(control.text(), "007");
    EXPECT_EQ(format, "000");
    format = "00.0";
    get.OnlyNumbersLostFocus(control, format);
    EXPECT_EQ(control.text(), "07,0") << "a given format goes before";
    EXPECT_EQ(format, "00.0");
    format.clear();
    control.text("abc");
    get.OnlyNumbersLostFocus(control, format);
    EXPECT_EQ(control.text(), "");
    EXPECT_EQ(format, "000") << "also where the text is no number";
}

TEST(LostFocusOnMachines, NumbersAsAPersonTypesThemThere)
{
    onEachMachine([](const Machine& machine) {
        const std::string expected = machine.hasComma() ? "01234,50" : "01234.50";
        const std::string number{machine.number};
        const std::string exponent = machine.hasComma() ? "12,345E2" : "12.345E2";
        for (const std::string& typed :
             {number, std::string{machine.grouped}, " " + number + " ", "+" + number, exponent}) {
            TextBox control;
            control.text(typed);
            std::string format = "00000.00";
            get.OnlyNumbersLostFocus(control, format);
            EXPECT_EQ(control.text(), expected) << typed;
        }
        for (const std::string& typed :
             {number + "x", number + " 5.5", "$" + number, "(" + number + ")", std::string{"E5"},
              std::string{"5-Mar-24"}, std::string{"&H10"}, std::string{"1/2"}}) {
            TextBox control;
            control.text(typed);
            std::string format = "0000000000.00";
            get.OnlyNumbersLostFocus(control, format);
            EXPECT_EQ(control.text(), "") << typed;
        }
    });
}

TEST_F(OnlyDate, WhatPasses)
{
    struct Row {
        const char* content;
        int key;
        bool passes;
    };
    const Row rows[] = {
        {"|", '1', true},
        {"1|", '2', true},
        {"12|", '3', false},
        {"|12", '3', false},
        {"|12|", '3', true},
        {"1|2|", '3', true},
        {"|", '.', false},
        {"1|", '.', true},
        {"12|", '.', true},
        {"|12", '.', false},
        {"12.|", '.', false},
        {"12|.", '.', false},
        {"12.1|", '.', true},
        {"12.11|", '.', true},
        {"1|2.11", '.', true},
        {"12.112|", '.', false},
        {"12.11.|", '.', false},
        {"1|2.11.", '.', false},
        {"12.|", '1', true},
        {"12.11|", '1', false},
        {"12.1|1|", '2', true},
        {"12|.11", '3', true},
        {"1|2.11", '3', true},
        {"12.|11", '3', false},
        {"12.11.|", '2', true},
        {"12.11.202|", '4', true},
        {"12.11.2024|", '5', false},
        {"12.11|.2024", '5', true},
        {"12.11.|2024", '5', false},
        {"12.11.2024|", '.', false},
        {"12.11.202|4|", '5', true},
        {"|12.11.2024|", '5', true},
        {"12.11.2024|", 8, true},
        {"12.11.2024|", 13, true},
        {"12|", 'a', false},
        {"12|", ',', false},
        {"12|", '/', false},
        {"12|", '-', false},
        {"12|", ' ', false},
        {"12|", 0, false},
        {"12|", 228, false},
        {"99.99.999|", '9', true},
        // Parts that are too long already are limited no further.
        {"123|", '4', true},
        {"12.345|", '6', true},
        {"12.11.20245|", '6', true},
        {"123.4|", '5', true},
        {"123.45|", '6', false},
        {"123|.45", '6', true},
    };
    for (const Row& row : rows) {
        const auto control = box(row.content);
        const auto key = static_cast<std::int16_t>(row.key);
        EXPECT_EQ(get.OnlyDate(key, *control), row.passes ? key : 0) << row.content << " key " << row.key;
        EXPECT_EQ(shown(*control), shown(*box(row.content)));
    }
}

TEST(OnlyDateOnMachines, TheSeparatorIsAlwaysThePoint)
{
    onEachMachine([](const Machine&) {
        TextBox control;
        controls::typeText(control, "99.99.99999", [&](std::int16_t& key) { key = get.OnlyDate(key, control); });
        EXPECT_EQ(control.text(), "99.99.9999") << "the shape alone is looked at";
        TextBox other;
        controls::typeText(other, "123/4-5,3.4.2024", [&](std::int16_t& key) { key = get.OnlyDate(key, other); });
        EXPECT_EQ(other.text(), "12.4.2024");
    });
}

/// What a program put into a box may be anything; positions count characters.
TEST_F(German, FiltersOnAnyContent)
{
    const std::string many(10'000, '1');
    const std::string zeros("1\0002,\0005", 6);
    struct Row {
        std::string content;
        std::int32_t cursor;
        int key;
        bool simple;  ///< OnlyNumbers lets it pass
        bool pattern; ///< OnlyNumbersKeyPress under "00.00" does, a "." as ","
        bool date;    ///< OnlyDate does
    };
    const Row rows[] = {
        {many, 10'000, '1', true, false, true}, {many, 3, '.', false, false, true},
        {many, 10'000, ',', true, true, false}, {zeros, 0, '5', true, false, true},
        {zeros, 6, '5', true, false, true},     {"🌲", 1, '5', true, true, true},
        {"🌲", 1, ',', true, true, false},       {"🌲ä", 2, '5', true, false, false},
        {"🌲ä,ü", 4, '5', true, true, true},     {"🌲ä,🌲ü", 5, '5', true, false, true},
        {"🌲.", 1, '.', false, true, false},     {"🌲ä.", 1, '.', false, true, true},
        {"🌲.ä", 3, '5', true, false, true},     {"🌲.äü", 2, '5', true, false, false},
    };
    for (const Row& row : rows) {
        const auto key = static_cast<std::int16_t>(row.key);
        const auto control = std::make_shared<TextBox>();
        const auto reset = [&] {
            control->text(row.content);
            control->SelStart(row.cursor);
            return key;
        };
        std::int16_t left = reset();
        EXPECT_EQ(get.OnlyNumbers(left, true, *control, true), row.simple ? key : 0) << row.content.substr(0, 20);
        EXPECT_EQ(get.OnlyDate(reset(), *control), row.date ? key : 0) << row.content.substr(0, 20);
        left = reset();
        get.OnlyNumbersKeyPress(left, *control, "00.00");
        EXPECT_EQ(left != 0, row.pattern) << row.content.substr(0, 20) << " key " << row.key;
        EXPECT_EQ(control->text(), row.content);
    }
}

TEST_F(SelectText, WholeContentOfTextAndComboBoxes)
{
    const Comm_Set set;
    for (const char* type : {"TextBox", "ComboBox"}) {
        for (const std::string& content : {std::string{}, std::string{"12,5"}, std::string{"Lärche 🌲"}}) {
            const auto control = controls::make(type);
            control->put("text", content);
            control->put("SelStart", std::int32_t{2});
            set.Select_Text(control);
            EXPECT_EQ(control->get("SelStart", {}), Variant{std::int32_t{0}});
            EXPECT_EQ(control->get("SelText", {}), Variant{content});
        }
    }
    EXPECT_EQ(errorNumber([&] { set.Select_Text(std::make_shared<test::ValueHolder>("TextBox", Variant{"x"})); }),
              errors::noSuchMember);
}

/// A control that could be selected but is of another type.
class MaskedBox final : public controls::TextEntry {
public:
    std::string_view typeName() const override { return "MaskedBox"; }
};

TEST_F(SelectText, LeavesOtherControlsAlone)
{
    const Comm_Set set;
    const auto masked = std::make_shared<MaskedBox>();
    masked->text("12,5");
    masked->SelStart(2);
    masked->SelLength(1);
    set.Select_Text(masked);
    EXPECT_EQ(masked->SelStart(), 2);
    EXPECT_EQ(masked->SelText(), ",");
    // These have no selection: an attempt to set one would be Error 438.
    set.Select_Text(controls::make("CheckBox"));
    set.Select_Text(std::make_shared<test::ValueHolder>("Label", Variant{"x"}));
    set.Select_Text();
}

TEST_F(German, ControlsWithoutTheProperty)
{
    controls::CheckBox check;
    test::ValueHolder poorBox{"TextBox", Variant{"12"}};
    std::int16_t key = ',';
    EXPECT_EQ(errorNumber([&] { get.OnlyNumbers(key, true, check, false); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { get.OnlyNumbers(key, true, check, true); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { get.OnlyNumbersKeyPress(key, poorBox, "00"); }), errors::noSuchMember);
    std::string format = "00";
    EXPECT_EQ(errorNumber([&] { get.OnlyNumbersLostFocus(check, format); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { get.OnlyDate('1', check); }), errors::noSuchMember);
    controls::ComboBox combo;
    combo.text("7");
    std::string none;
    EXPECT_EQ(errorNumber([&] { get.OnlyNumbersLostFocus(combo, none); }), errors::noSuchMember) << "no DataFormat";
    get.OnlyNumbersLostFocus(combo, format);
    EXPECT_EQ(combo.text(), "07") << "a format that is given needs none";
}

TEST_F(German, ByNameTheChangedKeyComesBackAndNothingFails)
{
    const auto control = box("12");
    std::vector<Variant> arguments{std::int16_t{'.'}, Variant{control}, "00.0"};
    component::invoke("Comm_Get", "OnlyNumbersKeyPress", arguments);
    EXPECT_EQ(arguments[0], Variant{std::int16_t{','}});
    arguments = {std::int16_t{'x'}, true, Variant{control}, false};
    EXPECT_EQ(component::invoke("Comm_Get", "OnlyNumbers", arguments), Variant{std::int16_t{0}});
    EXPECT_EQ(arguments[0], Variant{std::int16_t{0}});
    arguments = {std::int16_t{'5'}, Variant{ObjectRef{}}};
    EXPECT_EQ(errorNumber([&] { component::invoke("Comm_Get", "OnlyDate", arguments); }), errors::objectNotSet);
    arguments = {Variant{control}};
    component::invoke("Comm_Get", "OnlyNumbersLostFocus", arguments);
    EXPECT_EQ(control->text(), "12,0") << "the format of the last key press";
    arguments = {Variant{control}, ""};
    component::invoke("Comm_Get", "OnlyNumbersLostFocus", arguments);
    EXPECT_EQ(arguments[1], Variant{"00.0"}) << "which comes back";
    arguments = {Variant{control}};
    EXPECT_TRUE(component::invoke("Comm_Set", "Select_Text", arguments).isEmpty());
    EXPECT_EQ(control->SelText(), "12,0");
    arguments = {};
    EXPECT_TRUE(component::invoke("Comm_Set", "Select_Text", arguments).isEmpty());
    EXPECT_EQ(control->SelText(), "12,0") << "without a control nothing happens";
}

} // namespace
} // namespace tamarok
