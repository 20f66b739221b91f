#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "runtime/support.h"

#include "tamarok/grids.h"

namespace tamarok::controls {
namespace {

using test::errorNumber;

Variant number(std::int32_t value)
{
    return value;
}

Variant getAt(const ObjectRef& object, std::string_view name, const std::vector<Variant>& index)
{
    return object->get(name, index);
}

void putAt(const ObjectRef& object, std::string_view name, const std::vector<Variant>& index, const Variant& value)
{
    object->putIndexed(name, index, value);
}

Variant call(const ObjectRef& object, std::string_view method, std::vector<Variant> arguments)
{
    return object->call(method, arguments);
}

// ---- the flex grid -----------------------------------------------------------------------------

TEST(FlexGrids, BeginWithTwoRowsAndColumnsOneOfThemFixed)
{
    const ObjectRef grid = make("MSFlexGrid");
    for (const char* name : {"Rows", "Cols"})
        EXPECT_EQ(grid->get(name, {}), number(2)) << name;
    for (const char* name : {"FixedRows", "FixedCols", "Row", "Col"})
        EXPECT_EQ(grid->get(name, {}), number(1)) << name;
    EXPECT_EQ(grid->get("Text", {}), Variant{""});
    EXPECT_EQ(getAt(grid, "ColWidth", {number(1)}), number(960));
    EXPECT_EQ(getAt(grid, "RowHeight", {number(0)}), number(240));
}

TEST(FlexGrids, TextsOfCells)
{
    const ObjectRef grid = make("MSFlexGrid");
    grid->put("Rows", number(1'000'000'000));
    grid->put("Cols", number(3));
    putAt(grid, "TextMatrix", {number(2), number(1)}, 12.5);
    EXPECT_EQ(getAt(grid, "TextMatrix", {number(2), number(1)}), Variant{"12.5"});
    EXPECT_EQ(getAt(grid, "TextMatrix", {number(999'999'999), number(2)}), Variant{""});
    putAt(grid, "TextMatrix", {number(999'999'999), number(2)}, "end");
    EXPECT_EQ(getAt(grid, "TextMatrix", {number(999'999'999), number(2)}), Variant{"end"});
    grid->put("Row", number(2));
    EXPECT_EQ(grid->get("Text", {}), Variant{"12.5"});
    EXPECT_EQ(grid->defaultValue(), Variant{"12.5"});
    grid->put("text", "x");
    EXPECT_EQ(getAt(grid, "TextMatrix", {number(2), number(1)}), Variant{"x"});
    putAt(grid, "TextMatrix", {number(1), number(2)}, "last");
    grid->put("Cols", number(2));
    grid->put("Cols", number(3));
    EXPECT_EQ(getAt(grid, "TextMatrix", {number(1), number(2)}), Variant{""}) << "lost with its column";
    grid->put("Rows", number(2));
    EXPECT_EQ(grid->get("Row", {}), number(1)) << "the current cell stays inside";
    grid->put("Rows", number(3));
    EXPECT_EQ(getAt(grid, "TextMatrix", {number(2), number(1)}), Variant{""}) << "lost with its row";
}

TEST(FlexGrids, SizesOfLines)
{
    const ObjectRef grid = make("MSFlexGrid");
    putAt(grid, "ColWidth", {number(0)}, "1200");
    putAt(grid, "ColWidth", {number(1)}, 99.5);
    putAt(grid, "RowHeight", {number(1)}, number(0));
    EXPECT_EQ(getAt(grid, "ColWidth", {number(0)}), number(1200));
    EXPECT_EQ(getAt(grid, "ColWidth", {number(1)}), number(100)) << "whole twips";
    EXPECT_EQ(getAt(grid, "RowHeight", {number(1)}), number(0));
    putAt(grid, "ColWidth", {number(0)}, number(-1));
    EXPECT_EQ(getAt(grid, "ColWidth", {number(0)}), number(960));
    EXPECT_EQ(errorNumber([&] { putAt(grid, "ColWidth", {number(0)}, number(-2)); }), errors::invalidPropertyValue);
    EXPECT_EQ(errorNumber([&] { getAt(grid, "ColWidth", {}); }), errors::wrongArgumentCount);
    grid->put("Cols", number(1));
    grid->put("Cols", number(2));
    EXPECT_EQ(getAt(grid, "ColWidth", {number(1)}), number(960));
}

TEST(FlexGrids, RefuseWhatLiesOutside)
{
    const ObjectRef grid = make("MSFlexGrid");
    for (const std::int32_t wrong : {-1, 2}) {
        EXPECT_EQ(errorNumber([&] { getAt(grid, "ColWidth", {wrong}); }), errors::invalidPropertyArrayIndex);
        EXPECT_EQ(errorNumber([&] { putAt(grid, "ColWidth", {wrong}, 1.0); }), errors::invalidPropertyArrayIndex);
        EXPECT_EQ(errorNumber([&] { putAt(grid, "RowHeight", {wrong}, 1.0); }), errors::invalidPropertyArrayIndex);
        EXPECT_EQ(errorNumber([&] { getAt(grid, "RowHeight", {wrong}); }), errors::invalidPropertyArrayIndex);
        EXPECT_EQ(errorNumber([&] {
                      getAt(grid, "TextMatrix", {wrong, number(0)});
                  }),
                  errors::invalidPropertyArrayIndex);
        EXPECT_EQ(errorNumber([&] {
                      putAt(grid, "TextMatrix", {number(0), wrong}, "x");
                  }),
                  errors::invalidPropertyArrayIndex);
        EXPECT_EQ(errorNumber([&] { grid->put("Row", wrong); }), errors::invalidRow);
        EXPECT_EQ(errorNumber([&] { grid->put("Col", wrong); }), errors::invalidColumn);
    }
    for (const char* name : {"Rows", "Cols"})
        EXPECT_EQ(errorNumber([&] { grid->put(name, number(0)); }), errors::invalidPropertyValue) << name;
    for (const char* name : {"FixedRows", "FixedCols"})
        for (const std::int32_t wrong : {-1, 3})
            EXPECT_EQ(errorNumber([&] { grid->put(name, wrong); }), errors::invalidPropertyValue) << name;
    grid->put("FixedRows", number(0));
    grid->put("Rows", number(0));
    EXPECT_EQ(errorNumber([&] { grid->get("Text", {}); }), errors::invalidPropertyArrayIndex);
    EXPECT_EQ(errorNumber([&] { getAt(grid, "TextMatrix", {number(0)}); }), errors::wrongArgumentCount);
}

// ---- the data grid -----------------------------------------------------------------------------

TEST(DataGrids, ColumnsCountFromZero)
{
    const ObjectRef grid = make("DataGrid");
    const ObjectRef columns = grid->get("Columns", {}).asObject();
    EXPECT_EQ(columns->get("Count", {}), number(0));
    const ObjectRef last = call(columns, "Add", {number(0)}).asObject();
    const ObjectRef first = call(columns, "Add", {number(0)}).asObject();
    EXPECT_EQ(first->typeName(), "Column");
    EXPECT_EQ(first->get("ColIndex", {}), number(0));
    EXPECT_EQ(last->get("ColIndex", {}), number(1));
    last->put("DataField", "HA");
    last->put("Caption", "Holzart");
    EXPECT_EQ(getAt(grid, "Columns", {number(1)}), Variant{last});
    EXPECT_EQ(getAt(grid, "Columns", {Variant{"ha"}}), Variant{last});
    EXPECT_EQ(getAt(columns, "Item", {Variant{"HOLZART"}}), Variant{last});
    call(columns, "Remove", {number(0)});
    EXPECT_EQ(last->get("ColIndex", {}), number(0));
    EXPECT_EQ(errorNumber([&] { first->get("ColIndex", {}); }), errors::objectNotSet);
    for (const Variant& wrong : {number(-1), number(1), Variant{"xx"}}) {
        EXPECT_EQ(errorNumber([&] { getAt(grid, "Columns", {wrong}); }), errors::subscriptOutOfRange);
        EXPECT_EQ(errorNumber([&] { call(columns, "Remove", {wrong}); }), errors::subscriptOutOfRange);
    }
    for (const std::int32_t wrong : {-1, 2})
        EXPECT_EQ(errorNumber([&] { call(columns, "Add", {wrong}); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { call(columns, "Add", {}); }), errors::wrongArgumentCount);
}

TEST(DataGrids, PropertiesOfColumns)
{
    DataGrid grid;
    const ObjectRef column = grid.columns()->Add(0);
    EXPECT_EQ(column->get("Visible", {}), Variant{true});
    EXPECT_EQ(column->get("Alignment", {}), number(3));
    EXPECT_EQ(column->get("Width", {}), Variant{1440.0});
    column->put("Width", 964.5);
    column->put("Visible", false);
    column->put("NumberFormat", "0.00");
    column->put("Alignment", number(1));
    EXPECT_EQ(grid.columns()->Item(number(0))->Width, 964.5F);
    EXPECT_EQ(column->get("Visible", {}), Variant{false});
    EXPECT_EQ(column->get("NumberFormat", {}), Variant{"0.00"});
    EXPECT_EQ(column->get("Alignment", {}), number(1));
    EXPECT_EQ(errorNumber([&] { column->put("Width", -1.0); }), errors::invalidPropertyValue);
    EXPECT_EQ(errorNumber([&] { column->put("Alignment", number(4)); }), errors::invalidPropertyValue);
    grid.put("Caption", "Holzarten");
    EXPECT_EQ(grid.get("Caption", {}), Variant{"Holzarten"});
}

} // namespace
} // namespace tamarok::controls
