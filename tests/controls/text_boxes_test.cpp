#include "runtime/support.h"

#include "tamarok/controls.h"

namespace tamarok::controls {
namespace {

using test::errorNumber;

Variant number(std::int32_t value)
{
    return value;
}

/// Every test runs on a text box and on the field of a combo box.
class TextEntries : public ::testing::TestWithParam<const char*> {
protected:
    std::shared_ptr<Control> control = make(GetParam());
    TextEntry& entry = dynamic_cast<TextEntry&>(*control);
};

INSTANTIATE_TEST_SUITE_P(Both, TextEntries, ::testing::Values("TextBox", "ComboBox"),
                         [](const auto& entryType) { return std::string{entryType.param}; });

TEST_P(TextEntries, SettingTheTextMovesTheCursorToTheFront)
{
    entry.text("12345");
    entry.SelStart(3);
    entry.SelLength(2);
    entry.text("678");
    EXPECT_EQ(entry.SelStart(), 0);
    EXPECT_EQ(entry.SelLength(), 0);
    EXPECT_EQ(entry.SelText(), "");
}

TEST_P(TextEntries, SelectionStaysWithinTheText)
{
    entry.text("äö🌲ü");
    entry.SelStart(2);
    entry.SelLength(1);
    EXPECT_EQ(entry.SelText(), "🌲") << "positions count characters";
    entry.SelLength(100);
    EXPECT_EQ(entry.SelLength(), 2);
    EXPECT_EQ(entry.SelText(), "🌲ü");
    entry.SelStart(1);
    EXPECT_EQ(entry.SelLength(), 0) << "moving the cursor ends the selection";
    entry.SelStart(100);
    EXPECT_EQ(entry.SelStart(), 4);
    EXPECT_EQ(errorNumber([&] { entry.SelStart(-1); }), errors::invalidPropertyValue);
    EXPECT_EQ(errorNumber([&] { entry.SelLength(-1); }), errors::invalidPropertyValue);
    EXPECT_EQ(entry.SelStart(), 4);
}

TEST_P(TextEntries, SelTextEditsTheText)
{
    struct Row {
        std::int32_t start;
        std::int32_t length;
        const char* replacement;
        const char* text;
        std::int32_t cursor;
    };
    const Row rows[] = {
        {0, 0, "x", "xab🌲d", 1}, {4, 0, "x", "ab🌲dx", 5}, {2, 1, "", "abd", 2},  {0, 4, "", "", 0},
        {1, 2, "öü", "aöüd", 3}, {2, 1, "1", "ab1d", 3},  {1, 0, "", "ab🌲d", 1},
    };
    for (const Row& row : rows) {
        entry.text("ab🌲d");
        entry.SelStart(row.start);
        entry.SelLength(row.length);
        entry.SelText(row.replacement);
        EXPECT_EQ(entry.text(), row.text);
        EXPECT_EQ(entry.SelStart(), row.cursor);
        EXPECT_EQ(entry.SelLength(), 0);
    }
}

TEST_P(TextEntries, ByNameWithoutRegardToCase)
{
    control->put("TEXT", "12,5");
    control->put("selstart", number(1));
    control->put("SelLength", std::int16_t{2});
    EXPECT_EQ(control->get("SelText", {}), Variant{"2,"});
    control->put("SelText", "x");
    EXPECT_EQ(control->get("Text", {}), Variant{"1x5"});
    EXPECT_EQ(control->get("SelStart", {}), number(2));
    control->put("Text", 12.5);
    control->put("Locked", true);
    EXPECT_EQ(control->get("locked", {}), Variant{true});
    control->put("Tag", std::int16_t{4711});
    EXPECT_EQ(control->get("Tag", {}), Variant{"4711"});
    EXPECT_EQ(errorNumber([&] { control->get("Caption", {}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { control->put("Caption", "x"); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { control->put("Text", Null{}); }), errors::invalidUseOfNull);
    EXPECT_EQ(errorNumber([&] { control->put("SelStart", "abc"); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { control->put("SelStart", 3e10); }), errors::overflow);
}

TEST_P(TextEntries, TypingWithoutAFilter)
{
    typeText(entry, "Lärche 🌲\b!\r");
    EXPECT_EQ(entry.text(), "Lärche !");
    EXPECT_EQ(entry.SelStart(), 8);
    entry.SelStart(0);
    typeKey(entry, 8);
    EXPECT_EQ(entry.text(), "Lärche !") << "nothing before the cursor";
    entry.SelStart(2);
    typeKey(entry, 8);
    EXPECT_EQ(entry.text(), "Lrche !");
    EXPECT_EQ(entry.SelStart(), 1);
    entry.SelLength(4);
    typeKey(entry, U'ö');
    EXPECT_EQ(entry.text(), "Lö !");
    entry.SelStart(0);
    entry.SelLength(4);
    typeKey(entry, 8);
    EXPECT_EQ(entry.text(), "");
}

TEST_P(TextEntries, FilterSeesEachKeyFirst)
{
    std::vector<std::int16_t> seen;
    typeText(entry, "a1b,2ä🌲", [&](std::int16_t& key) {
        seen.push_back(key);
        if (key == 'b') key = 0;
        if (key == ',') key = '.';
    });
    EXPECT_EQ(seen, (std::vector<std::int16_t>{'a', '1', 'b', ',', '2', 228, INT16_MAX}));
    EXPECT_EQ(entry.text(), "a1.2ä🌲") << "a key that passes keeps its character";
    const std::int32_t before = entry.SelStart();
    typeKey(entry, U'🌲', [](std::int16_t& key) { key = 0; });
    EXPECT_EQ(entry.SelStart(), before);
    typeKey(entry, U'x', [](std::int16_t& key) { key = 8; });
    EXPECT_EQ(entry.text(), "a1.2ä") << "a filter may make another key of it";
}

TEST_P(TextEntries, LockedTakesNoKeyButTheProgramMayWrite)
{
    entry.text("12");
    entry.Locked = true;
    bool asked = false;
    typeKey(entry, U'3', [&](std::int16_t&) { asked = true; });
    EXPECT_TRUE(asked);
    entry.SelStart(2);
    typeKey(entry, 8);
    EXPECT_EQ(entry.text(), "12");
    entry.SelText("!");
    EXPECT_EQ(entry.text(), "12!");
}

TEST(TextBoxes, MaximumLengthStopsKeysAlone)
{
    TextBox box;
    box.put("MaxLength", number(3));
    typeText(box, "äöüß");
    EXPECT_EQ(box.text(), "äöü");
    box.SelStart(1);
    box.SelLength(1);
    typeKey(box, U'x');
    EXPECT_EQ(box.text(), "äxü") << "a selection makes room";
    box.text("12345");
    EXPECT_EQ(box.text(), "12345");
    EXPECT_EQ(errorNumber([&] { box.put("MaxLength", number(-1)); }), errors::invalidPropertyValue);
    EXPECT_EQ(box.get("MaxLength", {}), number(3));
}

TEST(TextBoxes, DataFormatIsAnObjectOfItsOwn)
{
    TextBox box;
    const Variant format = box.get("DataFormat", {});
    EXPECT_EQ(format.asObject()->typeName(), "StdDataFormat");
    format.asObject()->put("format", "0.00");
    EXPECT_EQ(box.DataFormat->Format, "0.00");
    EXPECT_EQ(box.get("DataFormat", {}).asObject()->get("Format", {}), Variant{"0.00"});
    EXPECT_EQ(errorNumber([&] { format.asObject()->get("Type", {}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { format.asObject()->put("Type", "x"); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([] { ComboBox{}.get("DataFormat", {}); }), errors::noSuchMember);
}

TEST(TextBoxes, TenThousandCharacters)
{
    TextBox box;
    box.text(std::string(10'000, 'x'));
    box.SelStart(10'000);
    typeKey(box, U'ä');
    EXPECT_EQ(box.SelStart(), 10'001);
    EXPECT_EQ(box.text().size(), 10'002U);
    box.text(std::string("a\0b", 3));
    box.SelStart(1);
    box.SelLength(1);
    EXPECT_EQ(box.SelText(), std::string(1, '\0')) << "a zero character is one like any other";
}

} // namespace
} // namespace tamarok::controls
