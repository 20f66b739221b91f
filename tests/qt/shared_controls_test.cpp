#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "tamarok_qt/entry_controls.h"
#include "tamarok_qt/form.h"
#include "tamarok_qt/grids.h"
#include "tamarok_qt/list_view.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/error.h"
#include "tamarok/form.h"
#include "tamarok/grids.h"
#include "tamarok/list_view.h"
#include "tamarok/platform.h"

// Both kinds of controls pass the same cases: those without windows, and those over the widgets of a Qt form. They are
// reached by names alone, as the library's operations do.

namespace tamarok::qt {
namespace {

/// Makes the controls of one kind.
class Maker {
public:
    virtual ~Maker() = default;
    virtual ObjectRef form() = 0;
    virtual ObjectRef textBox() = 0;
    virtual ObjectRef comboBox() = 0;
    virtual ObjectRef label() = 0;
    virtual ObjectRef listView() = 0;
    virtual ObjectRef flexGrid() = 0;
    /// @return a grid with three columns
    virtual ObjectRef dataGrid() = 0;
};

class HeadlessMaker final : public Maker {
public:
    ObjectRef form() override { return form_; }
    ObjectRef textBox() override { return made<controls::TextBox>(); }
    ObjectRef comboBox() override { return made<controls::ComboBox>(); }
    ObjectRef label() override { return made<controls::Label>(); }
    ObjectRef listView() override { return made<controls::ListView>(); }
    ObjectRef flexGrid() override { return made<controls::FlexGrid>(); }
    ObjectRef dataGrid() override
    {
        const auto grid = std::make_shared<controls::DataGrid>();
        grid->Parent(form_);
        for (std::int32_t column = 0; column < 3; ++column)
            grid->columns()->Add(column)->Caption = "Spalte " + std::to_string(column);
        return grid;
    }

private:
    template <class Control>
    ObjectRef made()
    {
        auto control = std::make_shared<Control>();
        control->Parent(form_);
        return control;
    }
    std::shared_ptr<controls::Form> form_ = std::make_shared<controls::Form>();
};

class QtMaker final : public Maker {
public:
    ObjectRef form() override { return form_; }
    ObjectRef textBox() override { return form_->add<TextBox>(edit_); }
    ObjectRef comboBox() override
    {
        combo_.setEditable(true);
        return form_->add<ComboBox>(combo_);
    }
    ObjectRef label() override { return form_->add<Label>(label_); }
    ObjectRef listView() override { return form_->add<ListView>(tree_); }
    ObjectRef flexGrid() override { return form_->add<FlexGrid>(flex_); }
    ObjectRef dataGrid() override
    {
        model_.setHorizontalHeaderLabels({"Spalte 0", "Spalte 1", "Spalte 2"});
        data_.setModel(&model_);
        return form_->add<DataGrid>(data_);
    }

private:
    QWidget window_;
    QLineEdit edit_{&window_};
    QComboBox combo_{&window_};
    QLabel label_{&window_};
    QTreeView tree_{&window_};
    QTableView flex_{&window_};
    QTableView data_{&window_};
    QStandardItemModel model_{0, 3};
    std::shared_ptr<Form> form_ = std::make_shared<Form>(window_);
};

using Factory = std::unique_ptr<Maker> (*)();

class SharedControls : public ::testing::TestWithParam<Factory> {
protected:
    ~SharedControls() override { QCoreApplication::processEvents(); }

    static Variant read(const ObjectRef& object, std::string_view name, std::vector<Variant> index = {})
    {
        return object->get(name, index);
    }
    static void write(const ObjectRef& object, std::string_view name, std::vector<Variant> index, const Variant& value)
    {
        object->putIndexed(name, index, value);
    }
    static Variant call(const ObjectRef& object, std::string_view name, std::vector<Variant> arguments = {})
    {
        return object->call(name, arguments);
    }
    template <class Act>
    static std::int32_t numberOf(Act act)
    {
        try {
            act();
        } catch (const Error& error) {
            return error.number;
        }
        return 0;
    }

    std::unique_ptr<Maker> make = GetParam()();
};

std::unique_ptr<Maker> headless()
{
    return std::make_unique<HeadlessMaker>();
}
std::unique_ptr<Maker> overWidgets()
{
    return std::make_unique<QtMaker>();
}

INSTANTIATE_TEST_SUITE_P(Both, SharedControls, ::testing::Values(&headless, &overWidgets),
                         [](const auto& kind) { return kind.index == 0 ? "Headless" : "Qt"; });

TEST_P(SharedControls, HaveTheSameNames)
{
    EXPECT_EQ(make->textBox()->typeName(), "TextBox");
    EXPECT_EQ(make->comboBox()->typeName(), "ComboBox");
    EXPECT_EQ(make->listView()->typeName(), "ListView");
    EXPECT_EQ(make->flexGrid()->typeName(), "MSFlexGrid");
    EXPECT_EQ(make->dataGrid()->typeName(), "DataGrid");
    EXPECT_EQ(make->label()->typeName(), "Label");
    EXPECT_EQ(make->form()->typeName(), "Form");
}

TEST_P(SharedControls, CommonMembers)
{
    for (const ObjectRef& control :
         {make->textBox(), make->comboBox(), make->label(), make->listView(), make->flexGrid(), make->dataGrid()}) {
        EXPECT_EQ(read(control, "Enabled"), Variant{true});
        EXPECT_EQ(read(control, "Visible"), Variant{true});
        control->put("Enabled", false);
        control->put("Visible", false);
        control->put("Tag", "4711");
        control->put("Name", "txtTest");
        control->put("Left", 1234.5);
        control->put("Width", 3000);
        EXPECT_EQ(read(control, "Enabled"), Variant{false});
        EXPECT_EQ(read(control, "Visible"), Variant{false});
        EXPECT_EQ(read(control, "Tag"), Variant{"4711"});
        EXPECT_EQ(read(control, "name"), Variant{"txtTest"});
        EXPECT_EQ(read(control, "Left"), Variant{1234.5}) << "finer than a pixel";
        EXPECT_EQ(read(control, "Width"), Variant{3000.0});
        EXPECT_EQ(read(control, "Parent").asObject(), make->form());
        EXPECT_EQ(numberOf([&] { control->put("Width", -1); }), errors::invalidPropertyValue);
        EXPECT_EQ(numberOf([&] { control->put("Widht", 1); }), errors::noSuchMember);
        EXPECT_EQ(numberOf([&] { read(control, "Nothing"); }), errors::noSuchMember);
        EXPECT_EQ(numberOf([&] { control->put("Enabled", "perhaps"); }), errors::typeMismatch);
    }
}

TEST_P(SharedControls, FocusNeedsAVisibleControl)
{
    const ObjectRef box = make->textBox();
    call(box, "SetFocus");
    EXPECT_EQ(read(make->form(), "ActiveControl").asObject(), box);
    box->put("Enabled", false);
    EXPECT_EQ(numberOf([&] { call(box, "SetFocus"); }), errors::invalidArgument);
    box->put("Enabled", true);
    make->form()->put("Visible", false);
    EXPECT_EQ(numberOf([&] { call(box, "SetFocus"); }), errors::invalidArgument);
    EXPECT_EQ(numberOf([&] { call(make->label(), "SetFocus"); }), errors::noSuchMember);
    EXPECT_EQ(numberOf([&] { call(box, "SetFocus", {1}); }), errors::wrongArgumentCount);
}

TEST_P(SharedControls, TextAndSelection)
{
    for (const ObjectRef& box : {make->textBox(), make->comboBox()}) {
        box->put("Text", "äö🌲ü");
        EXPECT_EQ(box->defaultValue(), Variant{"äö🌲ü"});
        EXPECT_EQ(read(box, "SelStart"), Variant{0});
        box->put("SelStart", 2);
        box->put("SelLength", 1);
        EXPECT_EQ(read(box, "SelText"), Variant{"🌲"}) << "positions count characters";
        box->put("SelLength", 100);
        EXPECT_EQ(read(box, "SelLength"), Variant{2});
        box->put("SelText", "xyz");
        EXPECT_EQ(read(box, "Text"), Variant{"äöxyz"});
        EXPECT_EQ(read(box, "SelStart"), Variant{5});
        EXPECT_EQ(read(box, "SelLength"), Variant{0});
        EXPECT_EQ(numberOf([&] { box->put("SelStart", -1); }), errors::invalidPropertyValue);
        box->put("Locked", true);
        EXPECT_EQ(read(box, "Locked"), Variant{true});
    }
}

TEST_P(SharedControls, TheProgramIsNotBoundByMaxLength)
{
    const ObjectRef box = make->textBox();
    EXPECT_EQ(read(box, "MaxLength"), Variant{0});
    box->put("Text", "123456");
    box->put("MaxLength", 3);
    EXPECT_EQ(read(box, "Text"), Variant{"123456"});
    box->put("Text", "abcdef");
    EXPECT_EQ(read(box, "Text"), Variant{"abcdef"});
    EXPECT_EQ(read(box, "MaxLength"), Variant{3});
    EXPECT_EQ(numberOf([&] { box->put("MaxLength", -1); }), errors::invalidPropertyValue);
    box->put("Text", std::string(50'000, 'x'));
    EXPECT_EQ(read(box, "Text").asString().size(), 50'000U);
}

TEST_P(SharedControls, NumbersAreFiltered)
{
    const ObjectRef box = make->textBox();
    const auto press = [&](char key) {
        auto code = static_cast<std::int16_t>(key);
        Comm_Get{}.OnlyNumbersKeyPress(code, *box, "##0.00");
        return code;
    };
    EXPECT_EQ(press('x'), 0);
    EXPECT_EQ(press('7'), '7');
    box->put("Text", "");
    EXPECT_NE(press('.'), 0);
    EXPECT_EQ(read(box, "Text"), Variant{"0"}) << "a separator without digit";
    EXPECT_EQ(read(read(box, "DataFormat").asObject(), "Format"), Variant{"##0.00"});
}

TEST_P(SharedControls, Entries)
{
    const ObjectRef box = make->comboBox();
    for (const char* text : {"Fichte", "Tanne", "Buche"})
        call(box, "AddItem", {text});
    EXPECT_EQ(read(box, "ListCount"), Variant{3});
    EXPECT_EQ(read(box, "NewIndex"), Variant{2});
    EXPECT_EQ(read(box, "ListIndex"), Variant{-1});
    EXPECT_EQ(read(box, "Text"), Variant{""}) << "an added entry is not selected";
    write(box, "ItemData", {2}, 42);
    box->put("ListIndex", 2);
    EXPECT_EQ(read(box, "Text"), Variant{"Buche"});
    call(box, "AddItem", {"Ahorn", 0});
    EXPECT_EQ(read(box, "ListIndex"), Variant{3}) << "the selected entry stays selected";
    EXPECT_EQ(read(box, "ItemData", {3}), Variant{42});
    write(box, "List", {0}, "Bergahorn");
    EXPECT_EQ(read(box, "List", {0}), Variant{"Bergahorn"});
    box->put("Text", "anything");
    EXPECT_EQ(read(box, "ListIndex"), Variant{3});
    call(box, "RemoveItem", {3});
    EXPECT_EQ(read(box, "ListIndex"), Variant{-1});
    EXPECT_EQ(read(box, "NewIndex"), Variant{-1});
    EXPECT_EQ(read(box, "Text"), Variant{"anything"});
    EXPECT_EQ(numberOf([&] { box->put("ListIndex", 3); }), errors::invalidPropertyValue);
    EXPECT_EQ(numberOf([&] { read(box, "ItemData", {3}); }), errors::invalidPropertyArrayIndex);
    EXPECT_EQ(numberOf([&] { call(box, "RemoveItem", {9}); }), errors::invalidPropertyArrayIndex);
    EXPECT_EQ(numberOf([&] { call(box, "AddItem", {"x", 9}); }), errors::invalidArgument);
    EXPECT_EQ(numberOf([&] { call(box, "AddItem"); }), errors::wrongArgumentCount);
    call(box, "Clear");
    EXPECT_EQ(read(box, "ListCount"), Variant{0});
    EXPECT_EQ(read(box, "Text"), Variant{""});
    box->put("Sorted", true);
    for (const char* text : {"b", "C", "a"})
        call(box, "AddItem", {text});
    EXPECT_EQ(read(box, "List", {2}), Variant{"C"});
    EXPECT_EQ(read(box, "NewIndex"), Variant{0});
}

TEST_P(SharedControls, ListItemsAndKeys)
{
    const ObjectRef list = make->listView();
    const ObjectRef headers = read(list, "ColumnHeaders").asObject();
    for (const char* text : {"Nummer", "Holzart", "Menge"})
        call(headers, "Add", {Variant{}, Variant{}, text});
    const ObjectRef items = read(list, "ListItems").asObject();
    for (const char* key : {"1R7", "2R8", "3R9"})
        write(call(items, "Add", {Variant{}, key, key}).asObject(), "SubItems", {1}, std::string{"Holz "} + key);
    EXPECT_EQ(read(items, "Count"), Variant{3});
    EXPECT_EQ(read(read(items, "Item", {"2R8"}).asObject(), "SubItems", {1}), Variant{"Holz 2R8"});
    EXPECT_EQ(read(read(list, "SelectedItem").asObject(), "Key"), Variant{"1R7"});
    EXPECT_EQ(numberOf([&] { call(items, "Add", {Variant{}, "1R7", "x"}); }), errors::keyNotUnique);
    EXPECT_EQ(numberOf([&] { call(items, "Add", {Variant{}, "12", "x"}); }), errors::invalidKey);
    EXPECT_EQ(numberOf([&] { read(items, "Item", {"9R9"}); }), errors::elementNotFound);
    EXPECT_EQ(numberOf([&] { read(items, "Item", {4}); }), errors::elementIndexOutOfBounds);
    EXPECT_EQ(numberOf([&] { list->put("SortKey", 3); }), errors::invalidPropertyValue);
    call(items, "Remove", {"1R7"});
    EXPECT_FALSE(read(list, "SelectedItem").asObject());
}

TEST_P(SharedControls, AListSortsByAClickOnAHead)
{
    const ObjectRef list = make->listView();
    const ObjectRef headers = read(list, "ColumnHeaders").asObject();
    for (const char* text : {"Datum", "Menge"})
        call(headers, "Add", {Variant{}, Variant{}, text});
    const ObjectRef items = read(list, "ListItems").asObject();
    struct Row {
        const char* date;
        const char* amount;
    };
    for (const Row& row : {Row{"17.05.2024", "9"}, Row{"01.06.2023", "10"}, Row{"30.12.2024", "3"}})
        write(call(items, "Add", {Variant{}, "", row.date}).asObject(), "SubItems", {1}, row.amount);
    Platform platform;
    platform.regional = Regional::named("de-AT");
    const PlatformScope scope{platform};
    const auto order = [&](std::int32_t column) {
        Comm_Set{}.OrderColumnListview({}, *read(headers, "Item", {column}).asObject(), *list, false);
        std::vector<std::string> texts;
        for (std::int32_t row = 1; row <= 3; ++row)
            texts.push_back(read(read(items, "Item", {row}).asObject(), "Text").asString());
        return texts;
    };
    using ::testing::ElementsAre;
    EXPECT_THAT(order(1), ElementsAre("01.06.2023", "17.05.2024", "30.12.2024"));
    EXPECT_THAT(order(1), ElementsAre("30.12.2024", "17.05.2024", "01.06.2023"));
    EXPECT_EQ(read(read(headers, "Item", {1}).asObject(), "Text"), Variant{">>Datum"});
    EXPECT_THAT(order(2), ElementsAre("30.12.2024", "17.05.2024", "01.06.2023"));
}

TEST_P(SharedControls, FlexGridCells)
{
    const ObjectRef grid = make->flexGrid();
    grid->put("Rows", 4);
    grid->put("Cols", 3);
    write(grid, "TextMatrix", {2, 1}, "Fichte");
    EXPECT_EQ(read(grid, "TextMatrix", {2, 1}), Variant{"Fichte"});
    grid->put("Row", 2);
    grid->put("Col", 1);
    EXPECT_EQ(read(grid, "Text"), Variant{"Fichte"});
    write(grid, "ColWidth", {1}, 2222);
    EXPECT_EQ(read(grid, "ColWidth", {1}), Variant{2222});
    write(grid, "ColWidth", {1}, -1);
    EXPECT_EQ(read(grid, "ColWidth", {1}), Variant{controls::FlexGrid::defaultColWidth});
    EXPECT_EQ(numberOf([&] { read(grid, "TextMatrix", {9, 1}); }), errors::invalidPropertyArrayIndex);
    EXPECT_EQ(numberOf([&] { grid->put("Row", 9); }), errors::invalidRow);
    EXPECT_EQ(numberOf([&] { grid->put("Col", 9); }), errors::invalidColumn);
    EXPECT_EQ(numberOf([&] { grid->put("Rows", 0); }), errors::invalidPropertyValue);
    grid->put("Rows", 2);
    EXPECT_EQ(read(grid, "Row"), Variant{1});
}

TEST_P(SharedControls, DataGridColumns)
{
    const ObjectRef grid = make->dataGrid();
    const ObjectRef columns = read(grid, "Columns").asObject();
    EXPECT_EQ(read(columns, "Count"), Variant{3});
    const ObjectRef column = read(grid, "Columns", {1}).asObject();
    column->put("Width", 1234.5);
    EXPECT_EQ(read(read(grid, "Columns", {1}).asObject(), "Width"), Variant{1234.5});
    column->put("Visible", false);
    EXPECT_EQ(read(read(grid, "Columns", {"Spalte 1"}).asObject(), "Visible"), Variant{false});
    EXPECT_EQ(read(grid, "Row"), Variant{-1});
    EXPECT_EQ(read(grid, "ApproxCount"), Variant{0});
    EXPECT_EQ(numberOf([&] { read(grid, "Columns", {7}); }), errors::subscriptOutOfRange);
    EXPECT_EQ(numberOf([&] { column->put("Width", -5); }), errors::invalidPropertyValue);
    EXPECT_EQ(numberOf([&] { column->put("Alignment", 4); }), errors::invalidPropertyValue);
}

TEST_P(SharedControls, FormMembers)
{
    const ObjectRef form = make->form();
    form->put("MousePointer", 11);
    EXPECT_EQ(read(form, "MousePointer"), Variant{std::int16_t{11}});
    EXPECT_EQ(numberOf([&] { form->put("MousePointer", 16); }), errors::invalidPropertyValue);
    form->put("MousePointer", 0);
    form->put("Caption", "Lose");
    EXPECT_EQ(read(form, "Caption"), Variant{"Lose"});
    const ObjectRef box = make->textBox();
    EXPECT_EQ(read(read(form, "Controls").asObject(), "Count"), Variant{1});
    EXPECT_EQ(read(form, "Controls", {1}).asObject(), box);
    EXPECT_EQ(numberOf([&] { read(form, "Controls", {"nothing"}); }), errors::controlNotFound);
}

} // namespace
} // namespace tamarok::qt
