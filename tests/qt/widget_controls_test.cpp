#include "qt/support/sample.h"
#include "tamarok_qt/entry_controls.h"
#include "tamarok_qt/form.h"
#include "tamarok_qt/grids.h"
#include "tamarok_qt/list_view.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_models.h"
#include "tamarok/comm_set.h"
#include "tamarok/error.h"

// What only the controls over widgets can do: the widget and the control follow each other.

namespace tamarok::qt {
namespace {

using acting::Sample;

/// Lets the views look for changes.
void settle()
{
    QCoreApplication::processEvents();
    QTest::qWait(1);
}

class WidgetControls : public ::testing::Test {
protected:
    static Variant read(const ObjectRef& object, std::string_view name, std::vector<Variant> index = {})
    {
        return object->get(name, index);
    }

    QWidget window;
    std::shared_ptr<Form> form = std::make_shared<Form>(window);
};

TEST_F(WidgetControls, AWidgetThatHasGoneIsAnErrorAndNoCrash)
{
    auto edit = std::make_unique<QLineEdit>();
    auto combo = std::make_unique<QComboBox>();
    auto tree = std::make_unique<QTreeView>();
    auto table = std::make_unique<QTableView>();
    auto cells = std::make_unique<QTableView>();
    auto words = std::make_unique<QLabel>();
    const std::vector<ObjectRef> controls{form->add<TextBox>(*edit),   form->add<ComboBox>(*combo),
                                          form->add<ListView>(*tree),  form->add<FlexGrid>(*table),
                                          form->add<DataGrid>(*cells), form->add<Label>(*words)};
    edit.reset();
    combo.reset();
    tree.reset();
    table.reset();
    cells.reset();
    words.reset();
    settle();
    for (const ObjectRef& control : controls) {
        for (const char* name : {"Text", "Enabled", "Tag", "ListItems", "Columns", "Parent", "Nothing"}) {
            try {
                control->get(name, {});
                ADD_FAILURE() << control->typeName() << "." << name;
            } catch (const Error& error) {
                EXPECT_EQ(error.number, errors::objectNotSet) << control->typeName() << "." << name;
            }
        }
        EXPECT_THROW(control->put("Tag", "x"), Error);
        EXPECT_THROW(control->call("SetFocus", {}), Error);
    }
}

TEST_F(WidgetControls, TheFormMayGoFirst)
{
    auto shown = std::make_unique<QWidget>();
    const auto owner = std::make_shared<Form>(*shown);
    shown.reset();
    for (const char* name : {"Caption", "MousePointer", "Width", "ActiveControl"}) {
        try {
            owner->get(name, {});
            ADD_FAILURE() << name;
        } catch (const Error& error) {
            EXPECT_EQ(error.number, errors::objectNotSet) << name;
        }
    }
}

TEST_F(WidgetControls, TheProgramsOwnChangesAreSeen)
{
    QLineEdit edit{&window};
    const auto box = form->add<TextBox>(edit);
    edit.setText("direkt");
    edit.setSelection(1, 3);
    EXPECT_EQ(read(box, "SelText"), Variant{"ire"});
    edit.setMaxLength(7);
    EXPECT_EQ(read(box, "MaxLength"), Variant{7});
    edit.setReadOnly(true);
    EXPECT_EQ(read(box, "Locked"), Variant{true});
    edit.hide();
    EXPECT_EQ(read(box, "Visible"), Variant{false});

    QComboBox combo{&window};
    const auto entries = form->add<ComboBox>(combo);
    combo.addItem("Fichte", 3);
    combo.addItem("Tanne", 5);
    EXPECT_EQ(read(entries, "ListCount"), Variant{2});
    EXPECT_EQ(read(entries, "ItemData", {1}), Variant{5});
    combo.setCurrentIndex(1);
    EXPECT_EQ(read(entries, "Text"), Variant{"Tanne"});
    combo.setItemText(1, "Weißtanne");
    EXPECT_EQ(read(entries, "List", {1}), Variant{"Weißtanne"});
    EXPECT_EQ(read(entries, "ListIndex"), Variant{1});
}

TEST_F(WidgetControls, AComboBoxThatIsNotEditable)
{
    QComboBox combo{&window};
    const auto box = form->add<ComboBox>(combo);
    std::vector<Variant> arguments{"Fichte"};
    box->call("AddItem", arguments);
    EXPECT_EQ(combo.currentIndex(), -1) << "Qt would select the first entry";
    EXPECT_EQ(read(box, "ListIndex"), Variant{-1});
    box->put("ListIndex", 0);
    EXPECT_EQ(combo.currentText(), "Fichte");
    box->put("Text", "anything");
    EXPECT_EQ(read(box, "Text"), Variant{"anything"});
    EXPECT_EQ(combo.currentText(), "Fichte");
    arguments = {"Tanne"};
    box->call("AddItem", arguments);
    combo.setCurrentIndex(1); // by the user
    EXPECT_EQ(read(box, "Text"), Variant{"Tanne"});
}

TEST_F(WidgetControls, TheUserIsBoundByMaxLengthAndTheFilter)
{
    QLineEdit edit{&window};
    const auto box = form->add<TextBox>(edit);
    Platform platform;
    platform.regional = Regional::named("de-AT");
    const PlatformScope scope{platform};
    filterKeys(edit, [&](std::int16_t& key) { Comm_Get{}.OnlyNumbersKeyPress(key, *box, "##0.00"); });
    box->put("MaxLength", 4);
    QTest::keyClicks(&edit, "a1b2.c5678");
    EXPECT_EQ(edit.text(), "12,5") << "letters are refused, the point becomes the separator, and four are enough";
    QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(edit.text(), "12,");
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(edit.selectedText(), "12,") << "commands pass";
}

TEST_F(WidgetControls, AFailureOfTheFilterIsAMessageAndRefusesTheKey)
{
    Sample sample;
    QLineEdit edit{&window};
    filterKeys(edit, [](std::int16_t&) { throw Error{errors::overflow, "Too much."}; });
    QTest::keyClicks(&edit, "1");
    EXPECT_EQ(edit.text(), "");
    EXPECT_THAT(sample.messages->shown, ::testing::ElementsAre("Too much."));
}

TEST_F(WidgetControls, AListViewShowsWhatChangesAndKeepsWhatTheUserDoes)
{
    QTreeView view{&window};
    const auto list = form->add<ListView>(view);
    list->headers()->Add({}, "", "Nummer");
    list->headers()->Add({}, "", "Menge")->Alignment = controls::ColumnAlignment::Right;
    for (const char* text : {"eins", "zwei", "drei"})
        list->items()->Add({}, "", text)->SubItems(1, "1,5");
    window.resize(400, 300);
    view.resize(400, 300);
    window.show();
    settle();
    QAbstractItemModel& model = *view.model();
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.index(1, 0).data().toString(), "zwei");
    EXPECT_EQ(model.index(1, 1).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight, Qt::AlignRight);
    EXPECT_EQ(view.currentIndex().row(), 0) << "the first item is the selected one";
    EXPECT_EQ(view.columnWidth(0), 96);

    list->items()->Item(Variant{2})->text("dos");
    list->headers()->Item(Variant{1})->Width = 1500;
    list->headers()->Item(Variant{1})->text = ">>Nummer";
    settle();
    EXPECT_EQ(model.index(1, 0).data().toString(), "dos");
    EXPECT_EQ(view.columnWidth(0), 100);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), ">>Nummer");

    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(list->items()->Item(Variant{2})->Selected(), true);
    view.header()->resizeSection(1, 50);
    EXPECT_EQ(list->headers()->Item(Variant{2})->Width, 750.0F);

    list->put("Sorted", true);
    settle();
    EXPECT_EQ(model.index(0, 0).data().toString(), "dos");
    EXPECT_EQ(view.currentIndex().row(), 0) << "the selected item stays selected";
    list->items()->Clear();
    settle();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(view.currentIndex().isValid());
}

TEST_F(WidgetControls, AListOf100000RowsIsShown)
{
    QTreeView view{&window};
    const auto list = form->add<ListView>(view);
    for (int column = 0; column < 5; ++column)
        list->headers()->Add({}, "", "Spalte");
    for (int row = 0; row < 100'000; ++row)
        list->items()->Add({}, std::to_string(row) + "R", std::to_string(row));
    window.resize(600, 400);
    view.resize(600, 400);
    window.show();
    settle();
    QTest::keyClick(&view, Qt::Key_End);
    EXPECT_EQ(read(list, "SelectedItem").asObject()->defaultValue(), Variant{"99999"});
}

TEST_F(WidgetControls, AFlexGridHasItsFixedPartAsHeads)
{
    QTableView view{&window};
    const auto grid = form->add<FlexGrid>(view);
    grid->put("Rows", 5);
    grid->put("Cols", 4);
    const std::vector<Variant> head{0, 2};
    const std::vector<Variant> cell{3, 2};
    const std::vector<Variant> column{2};
    grid->putIndexed("TextMatrix", head, "Holzart");
    grid->putIndexed("TextMatrix", cell, "Fichte");
    grid->putIndexed("ColWidth", column, 1500);
    settle();
    EXPECT_EQ(view.model()->rowCount(), 4);
    EXPECT_EQ(view.model()->headerData(1, Qt::Horizontal).toString(), "Holzart");
    EXPECT_EQ(view.model()->index(2, 1).data().toString(), "Fichte");
    EXPECT_EQ(view.columnWidth(1), 100);
    view.setCurrentIndex(view.model()->index(2, 1));
    EXPECT_EQ(grid->defaultValue(), Variant{"Fichte"});
    view.horizontalHeader()->resizeSection(1, 77);
    EXPECT_EQ(grid->get("ColWidth", column), Variant{1155});
}

TEST_F(WidgetControls, WidthsOfADataGridArePersisted)
{
    Sample sample;
    QStandardItemModel model{4, 3};
    QTableView view{&window};
    view.setModel(&model);
    const auto grid = form->add<DataGrid>(view);
    view.setColumnWidth(0, 111);
    view.setColumnHidden(1, true);
    view.setCurrentIndex(model.index(2, 0));
    EXPECT_EQ(read(grid, "Row"), Variant{2});
    EXPECT_EQ(read(grid, "ApproxCount"), Variant{4});
    Comm_Models{}.ColWidth_Set(sample.session, "QT_TEST", *grid);
    view.setColumnWidth(0, 50);
    Comm_Models{}.ColWidth_Get(sample.session, "QT_TEST", *grid);
    settle();
    EXPECT_EQ(view.columnWidth(0), 111);
    EXPECT_TRUE(view.isColumnHidden(1));
}

TEST_F(WidgetControls, OperationsTakeTheWidgetsOfAForm)
{
    Sample sample;
    QLineEdit code{&window};
    QLabel name{&window};
    QComboBox kinds{&window};
    const auto field = form->add<TextBox>(code);
    const auto label = form->add<Label>(name);
    const auto box = form->add<ComboBox>(kinds);
    const std::string statement = "SELECT NUMMER, LONG FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER = '";
    code.setText("1002");
    EXPECT_TRUE(Comm_CSel{}.Valid(sample.session, true, statement + "1002'", field, label, "LONG", {}, ""));
    EXPECT_EQ(name.text(), "Borkenkäferaufarbeitung");
    EXPECT_EQ(read(field, "Tag"), Variant{"1002"});
    code.setText("9");
    EXPECT_FALSE(Comm_CSel{}.Valid(sample.session, true, statement + "9'", field, label, "LONG", {}, ""));
    EXPECT_EQ(sample.messages->shown.size(), 1U);

    Comm_Set{}.FillObject(
        sample.session.db_ADO, *box,
        "SELECT CONVERT(INT, NUMMER), LONG FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER < '2' ORDER BY NUMMER");
    EXPECT_EQ(kinds.count(), 6);
    EXPECT_EQ(kinds.itemText(1), "Borkenkäferaufarbeitung");
    EXPECT_EQ(kinds.itemData(1).toInt(), 1002);
}

TEST_F(WidgetControls, AListIsFilledByItsColumns)
{
    Sample sample;
    QTreeView view{&window};
    const auto list = form->add<ListView>(view);
    for (const char* column : {"COL_1", "COL_2"})
        list->headers()->Add({}, column, column);
    Comm_CSel{}.FillListview(sample.session, "R", "BBHUNDE", *list, "FROM BB_JAGDHUNDE");
    settle();
    EXPECT_GT(view.model()->rowCount(), 0);
    EXPECT_EQ(view.model()->rowCount(), list->items()->Count());
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor) << "the hourglass has gone";
    Comm_Set{}.OrderColumnListview(sample.session, *list->headers()->Item(Variant{1}), *list, false);
    settle();
    EXPECT_EQ(view.model()->headerData(0, Qt::Horizontal).toString(), "<<COL_1");
    EXPECT_EQ(toQt(list->items()->Item(Variant{1})->text()), view.model()->index(0, 0).data().toString());
}

} // namespace
} // namespace tamarok::qt
