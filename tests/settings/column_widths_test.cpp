#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_models.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::Surroundings;

/// A control that knows its columns and its form, and refuses every other member.
class Grid final : public Object {
public:
    struct Column final : Object {
        std::string_view typeName() const override { return "Column"; }
        Variant get(std::string_view name, std::span<const Variant> args) const override
        {
            if (name == "Width") return width;
            if (name == "Visible" && visible) return *visible;
            return Object::get(name, args);
        }
        void put(std::string_view name, const Variant& value) override
        {
            if (name != "Width") return Object::put(name, value);
            width = convert::toDouble(value);
        }
        Variant width;
        std::optional<bool> visible; ///< nothing where columns cannot be hidden
    };
    struct Collection final : Object {
        std::string_view typeName() const override { return "Collection"; }
        Variant get(std::string_view name, std::span<const Variant> args) const override
        {
            return name == "Count" ? Variant{count} : Object::get(name, args);
        }
        std::int32_t count = 0;
    };
    struct Form final : Object {
        std::string_view typeName() const override { return "Form"; }
        Variant get(std::string_view name, std::span<const Variant>) const override
        {
            return members.at(std::string{name});
        }
        void put(std::string_view name, const Variant& value) override { members.at(std::string{name}) = value; }
        std::map<std::string, Variant> members;
    };

    /// @param widths  a negative one stands for a hidden column of that width
    Grid(std::string type, const std::vector<double>& widths) : type_{std::move(type)}
    {
        for (const double width : widths) {
            columns.push_back(std::make_shared<Column>());
            columns.back()->width = std::abs(width);
            if (type_ == "DataGrid" || type_ == "TDBGrid") columns.back()->visible = width >= 0;
        }
    }
    void standsOn(const std::string& form, double width = 0, double height = 0)
    {
        parent = std::make_shared<Form>();
        parent->members = {{"Name", form}, {"Width", width}, {"Height", height}};
    }

    std::string_view typeName() const override { return type_; }
    Variant get(std::string_view name, std::span<const Variant> args) const override
    {
        if (name == "Parent" && parent) return Variant{parent};
        if (type_ == "MSFlexGrid") {
            if (name == "Cols") return static_cast<std::int32_t>(columns.size());
            if (name == "ColWidth" && args.size() == 1) return columns.at(index(args))->width;
            return Object::get(name, args);
        }
        if (name != (type_ == "ListView" ? "ColumnHeaders" : "Columns")) return Object::get(name, args);
        if (!args.empty()) return Variant{columns.at(index(args))};
        const auto all = std::make_shared<Collection>();
        all->count = static_cast<std::int32_t>(columns.size());
        return Variant{all};
    }
    void putIndexed(std::string_view name, std::span<const Variant> args, const Variant& value) override
    {
        if (type_ != "MSFlexGrid" || name != "ColWidth") return Object::putIndexed(name, args, value);
        columns.at(index(args))->width = convert::toDouble(value);
    }

    std::vector<double> widths() const
    {
        std::vector<double> all;
        for (const auto& column : columns)
            all.push_back(convert::toDouble(column->width));
        return all;
    }

    std::vector<std::shared_ptr<Column>> columns;
    std::shared_ptr<Form> parent;

private:
    std::size_t index(std::span<const Variant> args) const
    {
        return static_cast<std::size_t>(convert::toLong(args[0]) - (type_ == "ListView" ? 1 : 0));
    }
    std::string type_;
};

/// Saves the widths of a control, and returns the text that was given to the procedure.
std::string saved(Grid& grid, const Surroundings& with)
{
    Comm_Models{}.ColWidth_Set(with.session, "BBF", grid);
    EXPECT_EQ(with.loc.procedures.size(), 1U);
    return convert::toText(with.loc.procedures.at(0).parameters.at(2).value);
}
std::string saved(Grid grid)
{
    const Surroundings with;
    return saved(grid, with);
}

TEST(ColumnWidths, AreGivenToTheProcedureWithItsSevenParameters)
{
    const Surroundings with;
    Grid grid{"ListView", {1440, 980.4}};
    EXPECT_EQ(saved(grid, with), "1440,980");
    const auto& call = with.loc.procedures.at(0);
    EXPECT_EQ(call.name, "tmk_MODELS_INS");
    struct Expected {
        ado::DataType type;
        std::int32_t size;
        Variant value;
    };
    using enum ado::DataType;
    const std::vector<Expected> expected{{VarChar, 60, "BBF"},
                                         {VarChar, 80, "STANDARD"},
                                         {VarChar, 1000, "1440,980"},
                                         {BigInt, 0, 1},
                                         {BigInt, 0, 0},
                                         {BigInt, 0, 0},
                                         {BigInt, 0, 0}};
    ASSERT_EQ(call.parameters.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(call.parameters[i].name, "");
        EXPECT_EQ(call.parameters[i].direction, ado::ParameterDirection::Input);
        EXPECT_EQ(call.parameters[i].type, expected[i].type) << i;
        EXPECT_EQ(call.parameters[i].size, expected[i].size) << i;
        EXPECT_EQ(call.parameters[i].value, expected[i].value) << i;
    }
    EXPECT_TRUE(with.database.opened.empty());
}

TEST(ColumnWidths, AnEmptyRelationSavesNothing)
{
    const Surroundings with;
    Grid grid{"ListView", {1}};
    Comm_Models{}.ColWidth_Set(with.session, "", grid);
    EXPECT_EQ(with.loc.services, 0);
}

TEST(ColumnWidths, RoundToTheEvenNumber)
{
    EXPECT_EQ(saved({"ListView", {0.5, 1.5, 2.5, 2.51, 32767.4}}), "0,2,2,3,32767");
}

TEST(ColumnWidths, BeyondSixteenBitsAreAnOverflowAndNothingIsSaved)
{
    for (const char* type : {"ListView", "MSFlexGrid", "DataGrid"}) {
        const Surroundings with;
        Grid grid{type, {100, 32768}};
        grid.standsOn("F_LIST");
        EXPECT_EQ(errorNumber([&] { Comm_Models{}.ColWidth_Set(with.session, "BBF", grid); }), errors::overflow);
        EXPECT_TRUE(with.loc.procedures.empty());
    }
}

TEST(ColumnWidths, OfEachKindOfControl)
{
    EXPECT_EQ(saved({"ListView", {}}), "");
    EXPECT_EQ(saved({"MSFlexGrid", {10, 20, 30}}), "10,20,30");
    for (const char* type : {"DataGrid", "TDBGrid"}) {
        Grid grid{type, {10, -20, 30}};
        grid.standsOn("F_LIST", 8000, 6000);
        EXPECT_EQ(saved(grid), "10,30") << "hidden columns are left out, and the size of another form";
        grid.standsOn("frmViewGrid", 8000.5, 6001.5);
        EXPECT_EQ(saved(grid), grid.typeName() == "DataGrid" ? "10,30,8000,6002" : "10,30");
    }
}

TEST(ColumnWidths, AGridNeedsAParentWithAName)
{
    EXPECT_EQ(saved({"ListView", {1}}), "1") << "a list view needs none";
    const Surroundings with;
    for (const char* type : {"DataGrid", "TDBGrid"}) {
        Grid grid{type, {1}};
        EXPECT_EQ(errorNumber([&] { Comm_Models{}.ColWidth_Set(with.session, "BBF", grid); }), errors::noSuchMember);
    }
}

constexpr const char* statement = "SELECT MODEL FROM MODELS WHERE NAME = 'STANDARD' AND RELATION = 'BBF'";

void restore(Grid& grid, Variant model)
{
    Surroundings with;
    with.database.answer(statement, std::move(model), "MODEL");
    Comm_Models{}.ColWidth_Get(with.session, "BBF", grid);
    EXPECT_EQ(with.database.openCursors, 0);
}

struct RestoreCase {
    const char* type;
    std::vector<double> before;
    Variant model;
    std::vector<double> after;
};

TEST(ColumnWidths, AreRestoredInOrder)
{
    const std::vector<RestoreCase> cases{
        {"ListView", {1, 2, 3}, "100,x,300", {100, 2, 300}},
        {"ListView", {1, 2, 3}, "100,200", {100, 200, 3}},
        {"ListView", {1, 2}, "100,200,300,400", {100, 200}},
        {"ListView", {1, 2}, "", {1, 2}},
        {"ListView", {1, 2}, Null{}, {1, 2}},
        {"ListView", {1, 2}, ",200", {1, 200}},
        {"ListView", {}, "100", {}},
        {"MSFlexGrid", {1, 2, 3}, "100,x,300", {100, 2, 300}},
        {"MSFlexGrid", {1, 2, 3}, "100", {100, 2, 3}},
        {"DataGrid", {1, -2, 3}, "100,300", {100, 2, 300}},
        {"DataGrid", {1, -2, 3, 4}, "100,x,400", {100, 2, 3, 400}},
        {"TDBGrid", {-1, 2, 3}, "100,200,300,400", {1, 100, 200}},
    };
    for (const RestoreCase& c : cases) {
        Grid grid{c.type, c.before};
        grid.standsOn("F_LIST", 8000, 6000);
        restore(grid, c.model);
        EXPECT_EQ(grid.widths(), c.after) << c.type;
        EXPECT_EQ(grid.parent->members.at("Width"), Variant{8000.0});
    }
}

TEST(ColumnWidths, WithoutASavedRowTheControlIsNotTouched)
{
    Surroundings with;
    with.database.answerNoRow(statement);
    Grid unreadable{"DataGrid", {1}};
    unreadable.columns.clear();
    Comm_Models{}.ColWidth_Get(with.session, "BBF", unreadable);
    EXPECT_EQ(with.database.openCursors, 0);
    EXPECT_EQ(with.database.openedTexts(), std::vector<std::string>{statement});
}

struct FormCase {
    const char* what;
    std::vector<double> columns;
    const char* model;
    std::vector<double> after;
    Variant width;
    Variant height;
};

TEST(ColumnWidths, AGridOfTheLookupGetsTheSizeOfItsForm)
{
    for (const FormCase& c : {
             FormCase{"two numbers more than columns", {1, 2}, "10,20,8000,6000", {10, 20}, "8000", "6000"},
             FormCase{"hidden columns use up no number", {-1, 2}, "20,8000,6000", {1, 20}, "8000", "6000"},
             FormCase{"a column has gone: its number becomes the width", {1}, "10,20,8000,6000", {10}, "20", "8000"},
             FormCase{"a column has come: one number too few", {1, 2, 3}, "10,20,8000,6000", {10, 20, 8000}, 1.0, 2.0},
             FormCase{"as many numbers as columns", {1, 2}, "10,20", {10, 20}, 1.0, 2.0},
             FormCase{"one number more", {1, 2}, "10,20,30", {10, 20}, 1.0, 2.0},
             FormCase{"the size is no number", {1}, "10,wide,high", {10}, "wide", "high"},
             FormCase{"nothing is saved", {1}, "", {1}, 1.0, 2.0},
         }) {
        Grid grid{"DataGrid", c.columns};
        grid.standsOn("frmViewGrid", 1, 2);
        restore(grid, c.model);
        EXPECT_EQ(grid.widths(), c.after) << c.what;
        EXPECT_EQ(grid.parent->members.at("Width"), c.width) << c.what;
        EXPECT_EQ(grid.parent->members.at("Height"), c.height) << c.what;
    }
}

TEST(ColumnWidths, ANumberInTheFormOfTheUserIsAWidth)
{
    Grid grid{"ListView", {1, 2}};
    restore(grid, " 1.200 ,980");
    EXPECT_EQ(grid.widths(), (std::vector<double>{1200, 980})) << "de-AT separates thousands by points";
}

TEST(ColumnWidths, AFailureOfTheControlReachesTheCallerAndTheDatabaseIsFree)
{
    Surroundings with;
    with.database.answer(statement, "100", "MODEL");
    Grid grid{"DataGrid", {1}};
    EXPECT_EQ(errorNumber([&] { Comm_Models{}.ColWidth_Get(with.session, "BBF", grid); }), errors::noSuchMember);
    EXPECT_EQ(grid.widths(), std::vector<double>{100}) << "the form is read after the columns";
    EXPECT_EQ(with.database.openCursors, 0);
}

} // namespace
} // namespace tamarok
