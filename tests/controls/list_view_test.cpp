#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "runtime/support.h"

#include "tamarok/list_view.h"

namespace tamarok::controls {
namespace {

using test::errorNumber;

Variant number(std::int32_t value)
{
    return value;
}

/// Calls a method by name with these arguments.
Variant call(const ObjectRef& object, std::string_view method, std::vector<Variant> arguments = {})
{
    return object->call(method, arguments);
}

Variant getIndexed(const ObjectRef& object, std::string_view name, const Variant& index)
{
    const Variant indices[]{index};
    return object->get(name, indices);
}

void putIndexed(const ObjectRef& object, std::string_view name, std::int32_t index, const Variant& value)
{
    const Variant indices[]{index};
    object->putIndexed(name, indices, value);
}

using Texts = std::vector<std::string>;

/// The texts of a column in the order of the rows.
Texts column(const ListView& list, std::int32_t column)
{
    Texts texts;
    for (std::int32_t row = 1; row <= list.items()->Count(); ++row)
        texts.push_back(list.text(row, column));
    return texts;
}

std::shared_ptr<ListView> listWith(std::int32_t columns)
{
    auto list = std::make_shared<ListView>();
    for (std::int32_t index = 1; index <= columns; ++index)
        list->headers()->Add({}, "COL_" + std::to_string(index), "Column " + std::to_string(index));
    return list;
}

/// A list with a row for each text, whose second column holds its number.
std::shared_ptr<ListView> listOf(const Texts& texts)
{
    auto list = listWith(2);
    std::int32_t row = 0;
    for (const std::string& text : texts)
        list->items()->Add({}, {}, text)->SubItems(1, std::to_string(++row));
    return list;
}

// ---- rows --------------------------------------------------------------------------------------

TEST(ListViews, RowsAreAddedAndReadByName)
{
    const ObjectRef list = listWith(3);
    const ObjectRef items = list->get("ListItems", {}).asObject();
    EXPECT_EQ(items->get("Count", {}), number(0));
    const Variant added = call(items, "Add", {Empty{}, "1R7", "Fichte"});
    const ObjectRef item = added.asObject();
    EXPECT_EQ(item->typeName(), "ListItem");
    putIndexed(item, "SubItems", 2, 12.5);
    item->put("Tag", std::int16_t{7});
    EXPECT_EQ(item->get("text", {}), Variant{"Fichte"});
    EXPECT_EQ(item->defaultValue(), Variant{"Fichte"});
    EXPECT_EQ(getIndexed(item, "SubItems", number(1)), Variant{""});
    EXPECT_EQ(getIndexed(item, "SubItems", number(2)), Variant{"12.5"});
    EXPECT_EQ(item->get("Tag", {}), Variant{std::int16_t{7}});
    EXPECT_EQ(item->get("Key", {}), Variant{"1R7"});
    EXPECT_EQ(item->get("Index", {}), number(1));
    EXPECT_EQ(getIndexed(list, "ListItems", number(1)), added);
    EXPECT_EQ(getIndexed(list, "ListItems", Variant{"1R7"}), added);
    EXPECT_EQ(getIndexed(items, "Item", number(1)), added);
    EXPECT_EQ(call(items, "Item", {number(1)}), added) << "a call reads a property";
    item->put("Text", "Tanne");
    EXPECT_EQ(item->get("Text", {}), Variant{"Tanne"});
    call(items, "Clear");
    EXPECT_EQ(items->get("Count", {}), number(0));
}

TEST(ListViews, AnIndexPlacesTheRow)
{
    const auto list = listWith(1);
    list->items()->Add({}, {}, "b");
    list->items()->Add(1, {}, "a");
    list->items()->Add(3, {}, "d");
    const ListItemRef c = list->items()->Add(3, {}, "c");
    EXPECT_EQ(column(*list, 0), (Texts{"a", "b", "c", "d"}));
    EXPECT_EQ(c->Index(), 3);
    EXPECT_EQ(list->items()->Item(number(4))->Index(), 4);
    for (const std::int32_t index : {0, -1, 6})
        EXPECT_EQ(errorNumber([&] { list->items()->Add(index, {}, "x"); }), errors::elementIndexOutOfBounds);
    for (const std::int32_t index : {0, 5})
        EXPECT_EQ(errorNumber([&] { list->items()->Item(number(index)); }), errors::elementIndexOutOfBounds);
    list->items()->Remove(number(2));
    EXPECT_EQ(c->Index(), 2);
    EXPECT_EQ(column(*list, 0), (Texts{"a", "c", "d"}));
    EXPECT_EQ(errorNumber([&] { list->items()->Remove(number(4)); }), errors::elementIndexOutOfBounds);
}

TEST(ListViews, KeysOfRows)
{
    const auto list = listWith(1);
    ListItems& items = *list->items();
    const ListItemRef first = items.Add({}, "1R7", "a");
    items.Add({}, "1r7", "b"); // keys are compared with regard to case
    items.Add({}, "", "c");
    const ListItemRef last = items.Add({}, "", "d");
    EXPECT_EQ(items.Item("1r7")->text(), "b");
    EXPECT_EQ(errorNumber([&] { items.Add({}, "1R7", "x"); }), errors::keyNotUnique);
    for (const char* key : {"7", "-1", "1.5", " 12 ", "1E5", "0"})
        EXPECT_EQ(errorNumber([&] { items.Add({}, key, "x"); }), errors::invalidKey) << key;
    EXPECT_EQ(items.Count(), 4) << "a refused row leaves nothing";
    for (const char* key : {"2R7", "", "1 R7"})
        EXPECT_EQ(errorNumber([&] { items.Item(key); }), errors::elementNotFound) << key;
    last->Key("P12");
    EXPECT_EQ(items.Item("P12"), last);
    EXPECT_EQ(errorNumber([&] { last->Key("1R7"); }), errors::keyNotUnique);
    EXPECT_EQ(errorNumber([&] { last->Key("12"); }), errors::invalidKey);
    last->Key("P12");
    last->Key("P13");
    EXPECT_EQ(errorNumber([&] { items.Item("P12"); }), errors::elementNotFound);
    first->Key("");
    items.Add({}, "1R7", "e");
    items.Remove("P13");
    items.Add({}, "P13", "f");
    EXPECT_EQ(items.Item("P13")->Index(), 5);
    items.Clear();
    items.Add({}, "P13", "g");
}

TEST(ListViews, CellsNeedAColumn)
{
    const auto list = listWith(2);
    const ListItemRef item = list->items()->Add({}, {}, "a");
    EXPECT_EQ(item->SubItems(1), "");
    for (const std::int32_t index : {0, -1, 2}) {
        EXPECT_EQ(errorNumber([&] { item->SubItems(index); }), errors::invalidPropertyValue);
        EXPECT_EQ(errorNumber([&] { item->SubItems(index, "x"); }), errors::invalidPropertyValue);
    }
    const ObjectRef object = item;
    EXPECT_EQ(errorNumber([&] { object->get("SubItems", {}); }), errors::wrongArgumentCount);
    EXPECT_EQ(errorNumber([&] { object->put("SubItems", "x"); }), errors::noSuchMember);
    const auto bare = std::make_shared<ListView>();
    const ListItemRef lone = bare->items()->Add({}, {}, "a");
    EXPECT_EQ(errorNumber([&] { lone->SubItems(1); }), errors::invalidPropertyValue);
}

TEST(ListViews, ARemovedRowRaisesError91)
{
    ObjectRef item;
    ObjectRef other;
    {
        const auto list = listOf({"a", "b", "c"});
        item = list->items()->Item(number(1));
        other = list->items()->Item(number(3));
        list->items()->Remove(number(1));
        EXPECT_EQ(other->get("Index", {}), number(2));
    }
    for (const ObjectRef& gone : {item, other}) {
        for (const char* name : {"Text", "Key", "Tag", "Index", "Selected"})
            EXPECT_EQ(errorNumber([&] { gone->get(name, {}); }), errors::objectNotSet) << name;
        for (const char* name : {"Text", "Key", "Tag", "Selected"})
            EXPECT_EQ(errorNumber([&] { gone->put(name, "1"); }), errors::objectNotSet) << name;
        EXPECT_EQ(errorNumber([&] { getIndexed(gone, "SubItems", number(1)); }), errors::objectNotSet);
        EXPECT_EQ(errorNumber([&] { putIndexed(gone, "SubItems", 1, "x"); }), errors::objectNotSet);
        EXPECT_EQ(errorNumber([&] { call(gone, "EnsureVisible"); }), errors::objectNotSet);
    }
}

TEST(ListViews, OneRowIsSelected)
{
    const auto list = std::make_shared<ListView>();
    const ObjectRef object = list;
    EXPECT_EQ(object->get("SelectedItem", {}), Variant{ObjectRef{}});
    const ListItemRef first = list->items()->Add({}, {}, "b");
    const ListItemRef second = list->items()->Add(1, {}, "a");
    EXPECT_EQ(list->SelectedItem(), first) << "the first row of an empty list";
    object->put("SelectedItem", Variant{second});
    EXPECT_FALSE(first->Selected());
    EXPECT_TRUE(second->Selected());
    list->Sorted(true);
    EXPECT_EQ(list->SelectedItem(), second);
    first->Selected(true);
    second->Selected(false);
    EXPECT_EQ(list->SelectedItem(), first);
    first->Selected(false);
    EXPECT_EQ(list->SelectedItem(), nullptr);
    object->put("SelectedItem", Variant{second});
    list->items()->Remove(number(1));
    EXPECT_EQ(list->SelectedItem(), nullptr);
    object->put("SelectedItem", Variant{ObjectRef{}});
    EXPECT_EQ(call(first, "EnsureVisible"), Variant{false});
    const ListItemRef foreign = listOf({"x"})->items()->Item(number(1));
    const auto otherList = listOf({"x"});
    EXPECT_EQ(errorNumber([&] { list->SelectedItem(otherList->items()->Item(number(1))); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([&] { object->put("SelectedItem", Variant{object}); }), errors::typeMismatch);
}

TEST(ListViews, MisspeltMembersAreNamedWithTheNearestOne)
{
    const auto list = listOf({"a"});
    struct Case {
        ObjectRef object;
        const char* word;
        const char* nearest;
    };
    const Case table[] = {
        {list, "ListItem", "ListItems"},
        {list, "SortKeys", "SortKey"},
        {list, "Parrent", "Parent"},
        {list->items(), "Clera", "Clear"},
        {list->items()->Item(number(1)), "SubItmes", "SubItems"},
        {list->items()->Item(number(1)), "Selcted", "Selected"},
        {list->headers(), "Cuont", "Count"},
        {list->headers()->Item(number(1)), "Algnment", "Alignment"},
    };
    for (const Case& row : table) {
        const std::string wanted = test::joined({"did you mean '", row.nearest, "'?"});
        EXPECT_TRUE(test::errorText([&] { row.object->get(row.word, {}); }).ends_with(wanted)) << row.word;
        EXPECT_TRUE(test::errorText([&] { row.object->put(row.word, "x"); }).ends_with(wanted)) << row.word;
        EXPECT_TRUE(test::errorText([&] { call(row.object, row.word); }).ends_with(wanted)) << row.word;
    }
    for (const char* readOnly : {"Index", "EnsureVisible"})
        EXPECT_EQ(errorNumber([&] { list->items()->Item(number(1))->put(readOnly, number(2)); }), errors::noSuchMember);
}

// ---- columns -----------------------------------------------------------------------------------

TEST(ListViews, HeadersByName)
{
    const ObjectRef list = std::make_shared<ListView>();
    const ObjectRef headers = list->get("ColumnHeaders", {}).asObject();
    const ObjectRef plain = call(headers, "Add").asObject();
    EXPECT_EQ(plain->get("Width", {}), Variant{1440.0});
    EXPECT_EQ(plain->get("Alignment", {}), number(0));
    const ObjectRef full = call(headers, "Add", {number(1), "COL_36", "Volume", 850.25, number(1)}).asObject();
    EXPECT_EQ(full->typeName(), "ColumnHeader");
    EXPECT_EQ(full->get("Key", {}), Variant{"COL_36"});
    EXPECT_EQ(full->get("text", {}), Variant{"Volume"});
    EXPECT_EQ(full->defaultValue(), Variant{"Volume"});
    EXPECT_EQ(full->get("Width", {}), Variant{850.25});
    EXPECT_EQ(full->get("Alignment", {}), number(1));
    EXPECT_EQ(full->get("Index", {}), number(1));
    EXPECT_EQ(full->get("SubItemIndex", {}), number(0));
    EXPECT_EQ(plain->get("Index", {}), number(2));
    full->put("Tag", "t");
    EXPECT_EQ(full->get("Tag", {}), Variant{"t"});
    full->put("Width", "900");
    EXPECT_EQ(getIndexed(list, "ColumnHeaders", Variant{"COL_36"}).asObject()->get("Width", {}), Variant{900.0});
    full->put("Text", "<<Volume");
    EXPECT_EQ(getIndexed(headers, "Item", number(1)).asObject()->get("Text", {}), Variant{"<<Volume"});
    EXPECT_EQ(headers->get("Count", {}), number(2));
    call(headers, "Remove", {"COL_36"});
    EXPECT_EQ(plain->get("Index", {}), number(1));
    EXPECT_EQ(errorNumber([&] { full->get("Index", {}); }), errors::objectNotSet);
    call(headers, "Clear");
    EXPECT_EQ(headers->get("Count", {}), number(0));
}

TEST(ListViews, HeadersRefuseWrongValues)
{
    const auto list = listWith(2);
    const ObjectRef headers = list->headers();
    const ObjectRef first = getIndexed(headers, "Item", number(1)).asObject();
    EXPECT_EQ(errorNumber([&] { first->put("Width", -1.0); }), errors::invalidPropertyValue);
    EXPECT_EQ(errorNumber([&] { first->put("Width", "wide"); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { first->put("Width", 1e300); }), errors::overflow);
    for (const std::int32_t wrong : {-1, 3})
        EXPECT_EQ(errorNumber([&] { first->put("Alignment", wrong); }), errors::invalidPropertyValue);
    const std::vector<std::pair<std::vector<Variant>, std::int32_t>> refused{
        {{number(0)}, errors::elementIndexOutOfBounds},
        {{number(4)}, errors::elementIndexOutOfBounds},
        {{Empty{}, "COL_1"}, errors::keyNotUnique},
        {{Empty{}, "36"}, errors::invalidKey},
        {{Empty{}, "K", "text", -5.0}, errors::invalidPropertyValue},
        {{Empty{}, "K", "text", 5.0, number(3)}, errors::invalidPropertyValue},
        {{Empty{}, "K", "text", 5.0, number(0), number(0)}, errors::wrongArgumentCount},
    };
    for (const auto& [arguments, error] : refused) {
        const std::vector<Variant>& given = arguments;
        EXPECT_EQ(errorNumber([&] { call(headers, "Add", given); }), error);
    }
    EXPECT_EQ(list->headers()->Count(), 2);
    EXPECT_EQ(errorNumber([&] { getIndexed(headers, "Item", "COL_9"); }), errors::elementNotFound);
    EXPECT_EQ(errorNumber([&] { getIndexed(headers, "Item", number(3)); }), errors::elementIndexOutOfBounds);
    EXPECT_EQ(errorNumber([&] { first->put("Key", "COL_2"); }), errors::keyNotUnique);
    first->put("Key", "COL_1");
    EXPECT_EQ(errorNumber([&] { first->put("Index", number(2)); }), errors::noSuchMember);
}

TEST(ListViews, RowsFollowTheirColumns)
{
    const auto list = listWith(3);
    const ListItemRef full = list->items()->Add({}, {}, "a");
    full->SubItems(1, "b");
    full->SubItems(2, "c");
    const ListItemRef bare = list->items()->Add({}, {}, "x");
    list->headers()->Add(2);
    EXPECT_EQ(full->SubItems(1), "");
    EXPECT_EQ(full->SubItems(2), "b");
    EXPECT_EQ(full->SubItems(3), "c");
    EXPECT_EQ(bare->SubItems(3), "");
    list->headers()->Remove("COL_2");
    EXPECT_EQ(full->SubItems(2), "c");
    list->headers()->Remove(number(1));
    EXPECT_EQ(full->text(), "");
    EXPECT_EQ(full->SubItems(1), "c");
    EXPECT_EQ(bare->text(), "") << "a row without such a cell";
    full->text("d");
    list->SortKey(1);
    list->headers()->Clear();
    EXPECT_EQ(full->text(), "d") << "the text of the first column stays";
    EXPECT_EQ(list->SortKey(), 0);
    list->headers()->Add();
    EXPECT_EQ(full->text(), "d");
}

// ---- order -------------------------------------------------------------------------------------

TEST(ListViews, SortAsTextWithoutRegardToCase)
{
    struct Case {
        Texts given;
        Texts ascending;
    };
    const Case table[] = {
        {{"b", "A", "c", "B", "a"}, {"A", "a", "b", "B", "c"}},
        {{"10", "9", "1", "", " 9", "100"}, {"", " 9", "1", "10", "100", "9"}},
        {{"Zeder", "Äsche", "Esche", "Ahorn", "ähre", "Ahre", "Azalee"},
         {"Ahorn", "Ahre", "ähre", "Äsche", "Azalee", "Esche", "Zeder"}},
        {{"Strasze", "Straße", "Strasse", "Strassf"}, {"Strasse", "Straße", "Strassf", "Strasze"}},
        {{"Łódź", "lom", "Čáslav", "Cheb", "œuvre", "of", "ŷ", "Ÿ"},
         {"Čáslav", "Cheb", "Łódź", "lom", "œuvre", "of", "ŷ", "Ÿ"}},
        {{"🌲", "ж", "z", "Ж"}, {"z", "ж", "Ж", "🌲"}},
        {{}, {}},
    };
    for (const Case& row : table) {
        const auto list = listOf(row.given);
        list->Sorted(true);
        EXPECT_EQ(column(*list, 0), row.ascending);
        list->Sorted(false);
        list->SortOrder(1);
        EXPECT_EQ(column(*list, 0), row.ascending) << "not while Sorted is false";
    }
}

TEST(ListViews, EqualTextsKeepTheirOrderInBothDirections)
{
    const auto list = listOf({"b", "a", "B", "A", "b"});
    list->Sorted(true);
    EXPECT_EQ(column(*list, 1), (Texts{"2", "4", "1", "3", "5"}));
    list->SortOrder(1);
    EXPECT_EQ(column(*list, 1), (Texts{"1", "3", "5", "2", "4"}));
    list->SortOrder(0);
    EXPECT_EQ(column(*list, 1), (Texts{"2", "4", "1", "3", "5"}));
    const auto unseen = listOf({"b", "a", "B", "A", "b"});
    unseen->Sorted(true);
    unseen->SortOrder(1);
    unseen->Sorted(true);
    EXPECT_EQ(column(*unseen, 1), (Texts{"1", "3", "5", "2", "4"})) << "nobody looked at the order in between";
}

TEST(ListViews, TheSortKeyChoosesTheColumn)
{
    const auto list = listOf({"b", "a", "c"});
    list->SortKey(1);
    list->Sorted(true);
    EXPECT_EQ(column(*list, 0), (Texts{"b", "a", "c"}));
    list->SortKey(0);
    EXPECT_EQ(column(*list, 0), (Texts{"a", "b", "c"}));
    for (std::int32_t row = 1; row <= 3; ++row)
        list->items()->Item(number(row))->SubItems(1, row == 2 ? "1" : "2");
    list->SortOrder(1);
    list->SortKey(1);
    EXPECT_EQ(column(*list, 0), (Texts{"c", "a", "b"})) << "equal in the new column: in the order of the last one";
    for (const std::int32_t wrong : {-1, 2})
        EXPECT_EQ(errorNumber([&] { list->SortKey(wrong); }), errors::invalidPropertyValue);
    for (const std::int32_t wrong : {-1, 2})
        EXPECT_EQ(errorNumber([&] { list->SortOrder(wrong); }), errors::invalidPropertyValue);
    const ObjectRef object = list;
    EXPECT_EQ(object->get("SortKey", {}), number(1));
    EXPECT_EQ(object->get("SortOrder", {}), number(1));
    EXPECT_EQ(object->get("Sorted", {}), Variant{true});
    std::make_shared<ListView>()->SortKey(0);
}

TEST(ListViews, AChangedTextMovesNothingUntilTheListIsSortedAgain)
{
    const auto list = listOf({"a", "b", "c"});
    const ListItemRef first = list->items()->Item(number(1));
    list->Sorted(true);
    first->text("z");
    EXPECT_EQ(column(*list, 0), (Texts{"z", "b", "c"}));
    list->Sorted(true);
    EXPECT_EQ(column(*list, 0), (Texts{"b", "c", "z"}));
    EXPECT_EQ(first->Index(), 3);
    list->SortKey(1);
    first->SubItems(1, "9");
    EXPECT_EQ(column(*list, 1), (Texts{"9", "2", "3"})) << "sorted by the texts before the change";
    list->SortOrder(1);
    EXPECT_EQ(column(*list, 1), (Texts{"9", "3", "2"}));
}

TEST(ListViews, ARowAddedToASortedListGoesToItsPlace)
{
    const auto list = listOf({"d", "b"});
    list->Sorted(true);
    EXPECT_EQ(list->items()->Add(1, {}, "c")->Index(), 2) << "the given index does not count";
    EXPECT_EQ(list->items()->Add({}, {}, "C")->Index(), 3) << "behind its equals";
    EXPECT_EQ(list->items()->Add({}, {}, "a")->Index(), 1);
    EXPECT_EQ(list->items()->Add({}, {}, "e")->Index(), 6);
    EXPECT_EQ(column(*list, 0), (Texts{"a", "b", "c", "C", "d", "e"}));
    list->SortOrder(1);
    EXPECT_EQ(list->items()->Add({}, {}, "c")->Index(), 5);
    EXPECT_EQ(column(*list, 0), (Texts{"e", "d", "c", "C", "c", "b", "a"}));
    EXPECT_EQ(errorNumber([&] { list->items()->Add(9, {}, "x"); }), errors::elementIndexOutOfBounds);
}

TEST(ListViews, SortedByALaterColumnNewRowsAreEmptyThere)
{
    for (const std::int32_t order : {0, 1}) {
        const auto list = listOf({"x", "y"});
        list->items()->Item(number(1))->SubItems(1, "");
        list->SortKey(1);
        list->SortOrder(order);
        list->Sorted(true);
        for (const char* text : {"n1", "n2", "n3"})
            list->items()->Add({}, {}, text)->SubItems(1, "9");
        EXPECT_EQ(column(*list, 0),
                  order == 0 ? (Texts{"x", "n1", "n2", "n3", "y"}) : (Texts{"y", "x", "n1", "n2", "n3"}));
        list->items()->Remove(number(1));
        list->items()->Add({}, {}, "n4");
        EXPECT_EQ(column(*list, 0),
                  order == 0 ? (Texts{"n1", "n2", "n3", "n4", "y"}) : (Texts{"x", "n1", "n2", "n3", "n4"}));
        list->items()->Clear();
        for (const char* text : {"b", "a"})
            list->items()->Add({}, {}, text)->SubItems(1, text);
        EXPECT_EQ(column(*list, 0), (Texts{"b", "a"})) << "a list that is filled keeps the order of the filling";
    }
}

TEST(ListViews, ManyRowsInAnyOrderAreSortedLikeAStableSort)
{
    const auto list = listWith(2);
    std::vector<std::pair<std::string, std::string>> expected;
    std::uint32_t state = 7;
    for (int row = 0; row < 3000; ++row) {
        state = state * 1664525U + 1013904223U;
        expected.emplace_back(std::to_string((state >> 16U) % 500), std::to_string(row));
        list->items()
            ->Add({}, test::joined({"K", std::to_string(row)}), expected.back().first)
            ->SubItems(1, expected.back().second);
    }
    std::ranges::stable_sort(expected, {}, &std::pair<std::string, std::string>::first);
    list->Sorted(true);
    for (std::int32_t row = 1; row <= list->items()->Count(); ++row) {
        const auto& [text, origin] = expected[static_cast<std::size_t>(row) - 1];
        ASSERT_EQ(list->text(row, 0), text);
        ASSERT_EQ(list->text(row, 1), origin);
        ASSERT_EQ(list->items()->Item(test::joined({"K", origin}))->Index(), row);
    }
}

TEST(ListItemsRevision, GrowsWithEachChange)
{
    const auto list = listOf({"b", "a"});
    struct Row {
        const char* what;
        std::function<void()> change;
    };
    const Row rows[]{
        {"Add", [&] { list->items()->Add({}, "", "c"); }},
        {"Text", [&] { list->items()->Item(number(1))->text("x"); }},
        {"SubItems", [&] { list->items()->Item(number(1))->SubItems(1, "y"); }},
        {"Sorted", [&] { list->put("Sorted", true); }},
        {"SortOrder", [&] { list->put("SortOrder", 1); }},
        {"SortKey", [&] { list->put("SortKey", 1); }},
        {"textsOf", [&] { list->items()->textsOf(0); }},
        {"finishSort", [&] { list->items()->finishSort(); }},
        {"new column", [&] { list->headers()->Add({}, "", "New"); }},
        {"removed column", [&] { list->headers()->Remove(number(3)); }},
        {"Remove", [&] { list->items()->Remove(number(1)); }},
        {"Clear", [&] { list->items()->Clear(); }},
    };
    for (const Row& row : rows) {
        const std::uint64_t before = list->items()->revision();
        row.change();
        EXPECT_GT(list->items()->revision(), before) << row.what;
    }
    const std::uint64_t before = list->items()->revision();
    list->items()->Count();
    EXPECT_EQ(list->items()->revision(), before) << "reading changes nothing";
}

} // namespace
} // namespace tamarok::controls
