#include <memory>
#include <string>
#include <vector>

#include "runtime/support.h"

#include "tamarok/form.h"
#include "tamarok/list_view.h"

namespace tamarok::controls {
namespace {

using test::errorNumber;

Variant number(std::int32_t value)
{
    return value;
}

Variant getAt(const ObjectRef& object, std::string_view name, const Variant& index)
{
    const Variant indices[]{index};
    return object->get(name, indices);
}

std::vector<std::string_view> typesOnForms()
{
    std::vector<std::string_view> types;
    for (const std::string_view type : knownTypes())
        if (type != "Form" && type != "F_UFakt") types.push_back(type);
    return types;
}

TEST(Controls, SizesAreSinglePrecisionNumbers)
{
    for (const std::string_view type : knownTypes()) {
        const ObjectRef control = make(type);
        for (const char* name : {"Width", "Height", "Left", "Top"}) {
            EXPECT_EQ(control->get(name, {}), Variant{0.0}) << type;
            control->put(name, 1200.5);
            EXPECT_EQ(control->get(name, {}), Variant{1200.5}) << type;
            control->put(name, 0.1);
            EXPECT_EQ(control->get(name, {}), Variant{double{0.1F}}) << type;
            EXPECT_EQ(errorNumber([&] { control->put(name, 1e39); }), errors::overflow) << type;
        }
        for (const char* name : {"Width", "Height"})
            EXPECT_EQ(errorNumber([&] { control->put(name, -1.0); }), errors::invalidPropertyValue) << type;
        control->put("Left", -15.0);
        EXPECT_EQ(control->get("Left", {}), Variant{-15.0});
        control->put("Name", "ctl");
        EXPECT_EQ(control->get("Name", {}), Variant{"ctl"});
        EXPECT_EQ(control->call("Refresh", {}), Variant{});
    }
}

TEST(Controls, SetFocusNeedsAShownAndEnabledControl)
{
    for (const std::string_view type : typesOnForms()) {
        if (type == "Label") continue;
        const ObjectRef form = make("Form");
        const ObjectRef control = make(type);
        const auto focusError = [&] { return errorNumber([&] { control->call("SetFocus", {}); }); };
        EXPECT_EQ(control->call("SetFocus", {}), Variant{}) << type;
        control->put("Parent", Variant{form});
        EXPECT_EQ(form->get("ActiveControl", {}), Variant{ObjectRef{}});
        for (const ObjectRef& blocked : {control, form}) {
            for (const char* property : {"Visible", "Enabled"}) {
                blocked->put(property, false);
                EXPECT_EQ(focusError(), errors::invalidArgument) << type << ' ' << property;
                blocked->put(property, true);
            }
        }
        EXPECT_EQ(form->get("ActiveControl", {}), Variant{ObjectRef{}});
        control->call("SetFocus", {});
        EXPECT_EQ(form->get("ActiveControl", {}), Variant{control}) << type;
        control->put("Parent", Variant{ObjectRef{}});
        EXPECT_EQ(form->get("ActiveControl", {}), Variant{ObjectRef{}});
    }
    EXPECT_EQ(errorNumber([] { make("Label")->call("SetFocus", {}); }), errors::noSuchMember);
}

TEST(Forms, OwnTheirControls)
{
    const ObjectRef form = make("Form");
    std::weak_ptr<Object> text;
    {
        const ObjectRef box = make("TextBox");
        text = box;
        box->put("Name", "txtCode");
        box->put("Parent", Variant{form});
        box->put("Parent", Variant{form});
        EXPECT_EQ(box->get("Parent", {}), Variant{form});
    }
    ASSERT_FALSE(text.expired());
    const ObjectRef controls = form->get("Controls", {}).asObject();
    EXPECT_EQ(controls->get("Count", {}), number(1)) << "once, however often it is put there";
    EXPECT_EQ(getAt(controls, "Item", number(1)).asObject(), text.lock());
    EXPECT_EQ(getAt(form, "Controls", Variant{"TXTCODE"}).asObject(), text.lock());
    EXPECT_EQ(errorNumber([&] { getAt(form, "Controls", number(2)); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { getAt(form, "Controls", number(0)); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { getAt(form, "Controls", Variant{"txt"}); }), errors::controlNotFound);
    const ObjectRef other = make("Form");
    text.lock()->put("Parent", Variant{other});
    EXPECT_EQ(controls->get("Count", {}), number(0));
    text.lock()->put("Parent", Variant{ObjectRef{}});
    EXPECT_TRUE(text.expired());
}

TEST(Forms, AreNotKeptByTheirControls)
{
    const ObjectRef box = make("TextBox");
    {
        const ObjectRef form = make("Form");
        box->put("Parent", Variant{form});
    }
    EXPECT_EQ(box->get("Parent", {}), Variant{ObjectRef{}});
    TextBox onTheStack;
    const auto form = std::make_shared<Form>();
    onTheStack.Parent(form);
    EXPECT_EQ(onTheStack.Parent(), form);
    EXPECT_EQ(form->controls()->Count(), 0) << "nothing could keep it alive";
    const ObjectRef foreign = std::make_shared<DataFormat>();
    box->put("Parent", Variant{foreign});
    EXPECT_EQ(box->get("Parent", {}), Variant{foreign}) << "a form may be of any class";
    EXPECT_EQ(errorNumber([&] { box->put("Parent", "Form1"); }), errors::typeMismatch);
}

TEST(Forms, HaveNoParent)
{
    const ObjectRef form = make("Form");
    EXPECT_EQ(errorNumber([&] { form->put("Parent", Variant{form}); }), errors::noSuchMember);
    EXPECT_EQ(form->get("Parent", {}), Variant{ObjectRef{}});
}

TEST(Forms, PointerAndCaption)
{
    const ObjectRef form = make("Form");
    EXPECT_EQ(form->get("MousePointer", {}), Variant{std::int16_t{0}});
    for (const std::int16_t shape : {std::int16_t{11}, std::int16_t{15}, std::int16_t{99}, std::int16_t{0}}) {
        form->put("MousePointer", shape);
        EXPECT_EQ(form->get("MousePointer", {}), Variant{shape});
    }
    for (const std::int32_t wrong : {-1, 16, 98})
        EXPECT_EQ(errorNumber([&] { form->put("MousePointer", wrong); }), errors::invalidPropertyValue);
    form->put("Caption", "Rechnung");
    EXPECT_EQ(form->get("Caption", {}), Variant{"Rechnung"});
}

TEST(Forms, ConversionFactorsKeepWhatWasWritten)
{
    const ObjectRef form = make("F_UFakt");
    EXPECT_EQ(form->typeName(), "F_UFakt");
    for (const char* name : {"txtUFakt_Ato", "txtUFakt_Lut", "txtUFakt_Rm", "txtUFakt_Stk100"}) {
        EXPECT_EQ(form->get(name, {}), Variant{""}) << name;
        form->put(name, 0.68);
        EXPECT_EQ(form->get(name, {}), Variant{0.68}) << name;
    }
    form->put("MousePointer", std::int16_t{11});
}

TEST(DefaultValues, OfControls)
{
    struct Case {
        const char* type;
        const char* property; ///< nullptr for a control without default value
    };
    const Case table[] = {{"TextBox", "Text"},   {"ComboBox", "Text"}, {"Label", "Caption"},
                          {"CheckBox", "Value"}, {"ListBox", nullptr}, {"MSFlexGrid", "Text"}};
    for (const Case& row : table) {
        const ObjectRef control = make(row.type);
        EXPECT_TRUE(control->hasDefaultValue()) << row.type;
        if (row.property == nullptr) continue;
        control->put(row.property, std::int16_t{1});
        EXPECT_EQ(control->defaultValue(), control->get(row.property, {})) << row.type;
    }
    for (const char* type : {"ListView", "DataGrid", "Form", "F_UFakt"})
        EXPECT_FALSE(make(type)->hasDefaultValue()) << type;
}

TEST(Labels, AnswerTheirCaptionAsText)
{
    const ObjectRef label = make("Label");
    label->put("text", "Fichte");
    EXPECT_EQ(label->get("Caption", {}), Variant{"Fichte"});
    label->put("Caption", "Tanne");
    EXPECT_EQ(label->get("Text", {}), Variant{"Tanne"});
}

TEST(ListBoxes, HaveEntriesAndNoTextField)
{
    const auto list = std::make_shared<ListBox>();
    const ObjectRef object = list;
    std::vector<Variant> item{"Fichte"};
    object->call("AddItem", item);
    std::vector<Variant> first{"Tanne", number(0)};
    object->call("AddItem", first);
    std::vector<Variant> appended{"Eiche", Empty{}};
    object->call("AddItem", appended);
    EXPECT_EQ(list->NewIndex(), 2);
    const Variant index[]{number(0)};
    object->putIndexed("ItemData", index, number(42));
    EXPECT_EQ(object->get("ItemData", index), number(42));
    object->putIndexed("List", index, "Weißtanne");
    EXPECT_EQ(getAt(object, "List", number(0)), Variant{"Weißtanne"});
    EXPECT_EQ(object->get("Text", {}), Variant{""});
    object->put("ListIndex", number(1));
    EXPECT_EQ(object->get("Text", {}), Variant{"Fichte"});
    EXPECT_EQ(object->defaultValue(), Variant{"Fichte"});
    object->put("Text", "EICHE");
    EXPECT_EQ(list->ListIndex(), 2);
    object->put("Text", "Buche");
    EXPECT_EQ(list->ListIndex(), -1);
    EXPECT_EQ(errorNumber([&] { object->get("SelStart", {}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { list->RemoveItem(3); }), errors::invalidPropertyArrayIndex);
    list->Sorted = true;
    list->AddItem("Änderung");
    EXPECT_EQ(list->List(list->NewIndex()), "Änderung");
    object->call("Clear", {});
    EXPECT_EQ(object->get("ListCount", {}), number(0));
}

} // namespace
} // namespace tamarok::controls
