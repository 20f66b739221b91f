#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "list_views.h"
#include "sortable_cells.h"
#include "support/by_name.h"
#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_set.h"
#include "tamarok/error.h"

// A click on the header of a list.

namespace tamarok {
namespace {

using Texts = std::vector<std::string>;

/// The view is the library's own, or one that is reached by name alone.
enum class Reached { Directly, ByName };

class OrderColumnListview : public ::testing::TestWithParam<Reached> {
protected:
    OrderColumnListview() { with.session.strEmptyText = "(leer)"; }

    /// @param cells  of column 2, except where the list has one column
    void fill(const Texts& cells)
    {
        for (std::size_t row = 0; row < cells.size(); ++row)
            list.add({"item " + std::to_string(row), cells[row]});
    }
    void fillFirst(const Texts& cells)
    {
        for (const std::string& cell : cells)
            list.add({cell, "x"});
    }

    void click(std::int32_t column, bool onlyActualize = false)
    {
        order(list.view->headers()->Item(Variant{column}), onlyActualize);
    }
    void order(const controls::ColumnHeaderRef& header, bool onlyActualize)
    {
        if (GetParam() == Reached::Directly) {
            Comm_Set{}.OrderColumnListview(with.session, *header, *list.view, onlyActualize);
        } else {
            test::ByName headerByName{header};
            test::ByName viewByName{list.view};
            Comm_Set{}.OrderColumnListview(with.session, headerByName, viewByName, onlyActualize);
        }
    }
    const std::string& header(std::int32_t column) const { return list.view->headers()->Item(Variant{column})->text; }

    test::Surroundings with;
    test::ListOnForm list{{1, 2}};
};

TEST_P(OrderColumnListview, EmptyListIsLeftAlone)
{
    click(1);
    EXPECT_FALSE(list.view->Sorted());
    EXPECT_EQ(header(1), "Column 1");
}

TEST_P(OrderColumnListview, DatesSortByTimeAndStayShownAsDates)
{
    fill({"01.02.2024", "31.01.2023", "15.12.2023"});
    click(2);
    EXPECT_EQ(list.column(1), (Texts{"31.01.2023", "15.12.2023", "01.02.2024"}));
    EXPECT_EQ(header(2), "<<Column 2");
    click(2);
    EXPECT_EQ(list.column(1), (Texts{"01.02.2024", "15.12.2023", "31.01.2023"}));
    EXPECT_EQ(header(2), ">>Column 2");
}

TEST_P(OrderColumnListview, DatesOfTheFirstColumn)
{
    fillFirst({"01.02.2024", "(leer)", "31.01.2023", ""});
    click(1);
    EXPECT_EQ(list.column(0), (Texts{"(leer)", "(leer)", "31.01.2023", "01.02.2024"}));
}

/// Only a text of the first column takes the words for an empty one.
TEST_P(OrderColumnListview, CellsWithoutADateAreBlankInTheOtherColumns)
{
    fill({"01.02.2024", " ", "31.01.2023", "(leer)"});
    click(2);
    EXPECT_EQ(list.column(1), (Texts{" ", " ", "31.01.2023", "01.02.2024"}));
}

/// What follows a date of ten characters makes its year no number.
TEST_P(OrderColumnListview, DatesWithATimeLoseTheirText)
{
    fill({"01.02.2024 10:15", "31.01.2023"});
    click(2);
    EXPECT_EQ(list.column(1), (Texts{" ", "31.01.2023"}));
}

TEST_P(OrderColumnListview, WordsForAnEmptyCellOfEightCharactersAreNoDate)
{
    with.session.strEmptyText = "(nichts)";
    fillFirst({"01.02.2024", "(nichts)"});
    click(1);
    EXPECT_EQ(list.column(0), (Texts{"(nichts)", "01.02.2024"}));
}

TEST_P(OrderColumnListview, NumbersSortByValueAndStayPadded)
{
    fill({"100,5", "9", " 20 ", "-3"});
    click(2);
    EXPECT_EQ(list.column(1), (Texts{"    9", "   -3", "   20", "100,5"}));
}

/// Required by the contract: the cells are padded to one length and compared as text, so that the order is that of the
/// values where all have the same number of decimals and the same signs.
TEST_P(OrderColumnListview, NumbersWithDifferentDecimalsFollowTheirTexts)
{
    fill({"1,25", "10", "1.000"});
    click(2);
    EXPECT_EQ(list.column(1), (Texts{"   10", " 1,25", "1.000"}));
}

TEST_P(OrderColumnListview, NumberCellsWithoutAValueArePaddedToo)
{
    fill({"12", "(leer)", " "});
    click(2);
    EXPECT_EQ(list.column(1), (Texts{"      ", "    12", "(leer)"}));
}

TEST_P(OrderColumnListview, MixedColumnStaysAsItIs)
{
    fill({"31.01.2023", "12", "01.02.2024"});
    click(2);
    EXPECT_EQ(list.column(1), (Texts{"01.02.2024", "12", "31.01.2023"}));
}

TEST_P(OrderColumnListview, TextsSortAsText)
{
    fill({"b", "a", "10", "9"});
    click(2);
    EXPECT_EQ(list.column(1), (Texts{"10", "9", "a", "b"}));
}

/// A column of empty cells is a date column and a number column.
TEST_P(OrderColumnListview, EmptyColumn)
{
    fill({"", " ", "  "});
    click(2);
    EXPECT_EQ(list.column(1), (Texts{"", "", ""}));
    EXPECT_EQ(header(2), "<<Column 2");
}

TEST_P(OrderColumnListview, TheDirectionFlipsWithEachClickWhateverTheColumn)
{
    fill({"a", "b"});
    click(1);
    EXPECT_EQ(list.view->SortOrder(), 0);
    click(2);
    EXPECT_EQ(list.view->SortOrder(), 1);
    EXPECT_EQ(list.view->SortKey(), 1);
    EXPECT_EQ(header(1), "Column 1") << "the old mark is gone";
    EXPECT_EQ(header(2), ">>Column 2");
    click(2);
    EXPECT_EQ(list.view->SortOrder(), 0);
    EXPECT_EQ(header(2), "<<Column 2") << "one mark, not two";
}

TEST_P(OrderColumnListview, FirstClickIsAscendingWhateverTheViewHeld)
{
    fill({"a", "b"});
    list.view->SortOrder(1);
    click(2);
    EXPECT_EQ(list.view->SortOrder(), 0);
}

TEST_P(OrderColumnListview, OnlyActualizeKeepsTheDirection)
{
    fill({"a", "c"});
    click(2);
    click(2);
    list.add({"item", "b"});
    click(2, true);
    EXPECT_EQ(list.column(1), (Texts{"c", "b", "a"}));
    click(2, true);
    EXPECT_EQ(list.view->SortOrder(), 1);
    EXPECT_EQ(header(2), ">>Column 2");
}

TEST_P(OrderColumnListview, HeaderOfAnotherViewFailsWithTheViewsError)
{
    fill({"a"});
    test::ListOnForm other{{1, 2, 3, 4, 5}};
    EXPECT_EQ(test::errorNumber([&] { order(other.view->headers()->Item(Variant{5}), false); }),
              errors::invalidPropertyValue);
}

INSTANTIATE_TEST_SUITE_P(Views, OrderColumnListview, ::testing::Values(Reached::Directly, Reached::ByName),
                         [](const auto& each) { return each.param == Reached::Directly ? "Direct" : "ByName"; });

struct ShapeCase {
    const char* name;
    Texts cells;
    bool isDate;
    bool isNumber;
    std::size_t width;
};

class ColumnShapes : public ::testing::TestWithParam<ShapeCase> {};

TEST_P(ColumnShapes, AreRead)
{
    const test::Surroundings with;
    lists::ColumnShape shape{"-"};
    for (const std::string& cell : GetParam().cells) {
        const bool goesOn = shape.add(cell);
        EXPECT_TRUE(goesOn == (shape.isDate() || shape.isNumber()));
    }
    EXPECT_EQ(shape.isDate(), GetParam().isDate);
    EXPECT_EQ(shape.isNumber(), GetParam().isNumber);
    if (shape.isDate() || shape.isNumber()) {
        EXPECT_EQ(shape.width(), GetParam().width);
    }
}

INSTANTIATE_TEST_SUITE_P(Columns, ColumnShapes,
                         ::testing::Values(ShapeCase{"empty", {"", " ", "-"}, true, true, 1},
                                           ShapeCase{"dates", {"31.12.2024", "-"}, true, false, 10},
                                           ShapeCase{"dayTooHigh", {"32.12.2024"}, false, true, 10},
                                           ShapeCase{"monthTooHigh", {"31.13.2024"}, false, true, 10},
                                           ShapeCase{"oneDigitDay", {"1.12.2024"}, false, true, 9},
                                           ShapeCase{"slashes", {"31/12/2024"}, false, false, 0},
                                           ShapeCase{"numbers", {"1", "1.234,5", "-7"}, false, true, 7},
                                           ShapeCase{"umlautWidth", {"\xC3\xA4\xC3\xA4", "1"}, false, false, 0},
                                           ShapeCase{"longer", {"31.12.2024 x"}, true, false, 12},
                                           ShapeCase{"dateAndNumber", {"31.12.2024", "5"}, false, false, 0}),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(SortableDates, AreYearMonthDay)
{
    const test::Surroundings with;
    EXPECT_EQ(lists::sortableDate("31.12.2024", "?"), "20241231");
    EXPECT_EQ(lists::sortableDate("1.2.24", "?"), "00240201");
    EXPECT_EQ(lists::sortableDate("1.2.20245", "?"), "02450201");
    EXPECT_EQ(lists::sortableDate("1.2", "?"), "?");
    EXPECT_EQ(lists::sortableDate("", "?"), "?");
    EXPECT_EQ(lists::sortableDate("a.2.2024", "?"), "?");
    EXPECT_EQ(lists::sortableDate("1..2024", "?"), "?");
    EXPECT_EQ(lists::shownDate("20241231"), "31.12.2024");
}

TEST(PaddedNumbers, CountCharacters)
{
    EXPECT_EQ(lists::paddedNumber(" 7 ", 3), "  7");
    EXPECT_EQ(lists::paddedNumber("1234", 3), "1234");
    EXPECT_EQ(lists::paddedNumber("\xE2\x82\xAC", 2), " \xE2\x82\xAC");
}

} // namespace
} // namespace tamarok
