#include "runtime/support.h"

#include "tamarok/controls.h"

namespace tamarok::controls {
namespace {

using test::errorNumber;

TEST(Controls, AreMadeByTypeName)
{
    for (const std::string_view type : knownTypes()) {
        const auto control = make(type);
        EXPECT_EQ(control->typeName(), type);
        EXPECT_EQ(make(type)->get("Enabled", {}), Variant{true});
        control->put("Visible", false);
        EXPECT_FALSE(control->Visible);
        control->Name = "txtLength";
        EXPECT_EQ(control->get("name", {}), Variant{"txtLength"});
    }
    EXPECT_EQ(make("textbox")->typeName(), "TextBox");
    EXPECT_EQ(errorNumber([] { make("Gauge"); }), errors::cannotCreateObject);
    EXPECT_EQ(test::errorText([] { make("Gauge"); }),
              "There is no control of type \"Gauge\"; known are CheckBox, ComboBox, DataGrid, F_UFakt, Form, "
              "Label, ListBox, ListView, MSFlexGrid, TextBox.");
}

TEST(Controls, MisspeltMembersAreNamedWithTheNearestOne)
{
    struct Case {
        const char* type;
        const char* word;
        const char* nearest; ///< nullptr where none is near
    };
    const Case table[] = {
        {"TextBox", "Txt", "Text"},
        {"TextBox", "MaxLenght", "MaxLength"},
        {"TextBox", "DataFromat", "DataFormat"},
        {"TextBox", "Enabeld", "Enabled"},
        {"TextBox", "Caption", nullptr},
        {"CheckBox", "Captoin", "Caption"},
        {"CheckBox", "Vlaue", "Value"},
        {"CheckBox", "Visable", "Visible"},
        {"ComboBox", "ListConut", "ListCount"},
        {"ComboBox", "AddItm", "AddItem"},
        {"ComboBox", "SelStrat", "SelStart"},
        {"ComboBox", "Tga", "Tag"},
        {"ComboBox", "DataFromat", nullptr},
    };
    for (const Case& row : table) {
        // Names of their own: a binding cannot be captured.
        const char* const type = row.type;
        const char* const word = row.word;
        const char* const nearest = row.nearest;
        const std::shared_ptr<Control> control = make(type);
        const std::string help = nearest ? test::joined({"; did you mean '", nearest, "'?"}) : ".";
        const std::string message =
            test::joined({"An object of the type ", type, " has no property or method \"", word, "\"", help});
        EXPECT_EQ(test::errorText([&] { control->get(word, {}); }), message);
        EXPECT_EQ(test::errorText([&] { control->put(word, true); }), message);
        EXPECT_EQ(test::errorText([&] { control->call(word, {}); }), message);
    }
    EXPECT_EQ(test::errorText([] { TextBox{}.DataFormat->get("Formatt", {}); }),
              "An object of the type StdDataFormat has no property or method \"Formatt\"; did you mean 'Format'?");
}

TEST(Controls, TheNamesOfTheirMembersAreThoseThatCanBeUsed)
{
    for (const std::string_view type : knownTypes()) {
        const std::shared_ptr<Control> control = make(type);
        for (const std::string_view name : control->memberNames()) {
            const bool readable = errorNumber([&] { control->get(name, {}); }) != errors::noSuchMember;
            const bool callable = errorNumber([&] { control->call(name, {}); }) != errors::noSuchMember;
            EXPECT_TRUE(readable || callable) << type << "." << name;
        }
    }
}

TEST(CheckBoxes, StandForTheirState)
{
    CheckBox box;
    box.Value = 2;
    EXPECT_TRUE(box.hasDefaultValue());
    EXPECT_EQ(box.defaultValue(), Variant{std::int16_t{2}});
}

TEST(CheckBoxes, HaveThreeStates)
{
    CheckBox box;
    EXPECT_EQ(box.get("Value", {}), Variant{std::int16_t{0}});
    for (const std::int16_t state : {std::int16_t{1}, std::int16_t{2}, std::int16_t{0}}) {
        box.put("value", state);
        EXPECT_EQ(box.Value, state);
    }
    for (const Variant& wrong : {Variant{std::int16_t{3}}, Variant{true}, Variant{std::int32_t{-1}}})
        EXPECT_EQ(errorNumber([&] { box.put("Value", wrong); }), errors::invalidPropertyValue);
    box.put("Caption", "Aktiv");
    EXPECT_EQ(box.get("Caption", {}), Variant{"Aktiv"});
    EXPECT_EQ(errorNumber([&] { box.get("text", {}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { box.put("SelStart", std::int32_t{0}); }), errors::noSuchMember);
}

TEST(ComboBoxes, EntriesAndTheirNumbers)
{
    ComboBox box;
    EXPECT_EQ(box.NewIndex(), -1);
    EXPECT_EQ(box.ListIndex(), -1);
    box.AddItem("Fichte");
    box.ItemData(box.NewIndex(), 11);
    box.AddItem("Tanne");
    box.ItemData(box.NewIndex(), 12);
    box.AddItem("Lärche", 0);
    box.ItemData(box.NewIndex(), 13);
    EXPECT_EQ(box.ListCount(), 3);
    EXPECT_EQ(box.NewIndex(), 0);
    EXPECT_EQ(box.List(0), "Lärche");
    EXPECT_EQ(box.ItemData(0), 13);
    EXPECT_EQ(box.ItemData(1), 11) << "a number moves with its entry";
    box.ListIndex(1);
    EXPECT_EQ(box.text(), "Fichte");
    box.AddItem("Eiche", 0);
    EXPECT_EQ(box.ListIndex(), 2) << "the choice stays with its entry";
    box.RemoveItem(0);
    EXPECT_EQ(box.ListIndex(), 1);
    box.RemoveItem(1);
    EXPECT_EQ(box.ListIndex(), -1);
    box.ListIndex(-1);
    EXPECT_EQ(box.text(), "");
    box.Clear();
    EXPECT_EQ(box.ListCount(), 0);
    EXPECT_EQ(box.NewIndex(), -1);
}

TEST(ComboBoxes, SortedOnesKeepTheirOrder)
{
    ComboBox box;
    box.Sorted = true;
    for (const char* item : {"tanne", "Fichte", "Lärche", "eiche"})
        box.AddItem(item, 0);
    std::vector<std::string> items;
    for (std::int32_t index = 0; index < box.ListCount(); ++index)
        items.push_back(box.List(index));
    EXPECT_EQ(items, (std::vector<std::string>{"eiche", "Fichte", "Lärche", "tanne"}));
    EXPECT_EQ(box.NewIndex(), 0);
}

TEST(ComboBoxes, IndicesOutOfRange)
{
    ComboBox box;
    box.AddItem("a");
    for (const std::int32_t index : {-1, 1, 32767}) {
        EXPECT_EQ(errorNumber([&] { box.List(index); }), errors::invalidPropertyArrayIndex);
        EXPECT_EQ(errorNumber([&] { box.ItemData(index); }), errors::invalidPropertyArrayIndex);
        EXPECT_EQ(errorNumber([&] { box.ItemData(index, 1); }), errors::invalidPropertyArrayIndex);
    }
    for (const std::int32_t index : {-2, 1})
        EXPECT_EQ(errorNumber([&] { box.ListIndex(index); }), errors::invalidPropertyValue);
    for (const std::int32_t index : {-2, 2})
        EXPECT_EQ(errorNumber([&] { box.AddItem("b", index); }), errors::invalidArgument);
}

TEST(ComboBoxes, ByName)
{
    ComboBox box;
    std::vector<Variant> item{"Fichte"};
    box.call("additem", item);
    const std::vector<Variant> first{std::int32_t{0}};
    box.putIndexed("ItemData", first, std::int32_t{42});
    EXPECT_EQ(box.get("ItemData", first), Variant{std::int32_t{42}});
    EXPECT_EQ(box.get("List", first), Variant{"Fichte"});
    EXPECT_EQ(box.get("ListCount", {}), Variant{std::int32_t{1}});
    EXPECT_EQ(box.get("NewIndex", {}), Variant{std::int32_t{0}});
    box.put("ListIndex", std::int16_t{0});
    EXPECT_EQ(box.get("text", {}), Variant{"Fichte"});
    EXPECT_EQ(errorNumber([&] { box.put("ListCount", std::int32_t{3}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { box.get("List", {}); }), errors::wrongArgumentCount);
    box.call("Clear", {});
    EXPECT_EQ(box.ListCount(), 0);
    std::vector<Variant> none;
    EXPECT_EQ(errorNumber([&] { box.call("Explode", none); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { box.putIndexed("ItemData", {}, std::int32_t{1}); }), errors::wrongArgumentCount);
    EXPECT_EQ(errorNumber([&] { box.putIndexed("ListCount", first, std::int32_t{1}); }), errors::invalidArgument);
    for (const char* method : {"AddItem", "RemoveItem"})
        EXPECT_EQ(errorNumber([&] { box.call(method, none); }), errors::wrongArgumentCount) << method;
    EXPECT_EQ(test::errorText([&] { box.call("Clear", item); }), "Clear takes 0 arguments, not 1.");
}

} // namespace
} // namespace tamarok::controls
