#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "list_views.h"
#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/error.h"

// A list view is filled: statements of single types to the letter, texts, keys, tags, the mouse pointer.

namespace tamarok {
namespace {

using Texts = std::vector<std::string>;

/// Answers every statement with prepared rows, whatever it is.
class FillListview : public ::testing::Test {
protected:
    FillListview()
    {
        with.session.strEmptyText = "(leer)";
        with.session.strDateFormat = "DD.MM.YYYY";
    }

    void fill(test::ListOnForm& list, std::string_view type, std::string_view selection, std::string_view version = "R")
    {
        Comm_CSel{}.FillListview(with.session, version, type, *list.view, selection);
    }
    /// The last statement that was opened.
    std::string statement() const { return with.database.opened.back().text; }

    test::Surroundings with{"de-AT", test::Unanswered::HasNoRows};
};

TEST_F(FillListview, ListWithoutColumnsIsOnlyCleared)
{
    test::ListOnForm list;
    list.view->headers()->Add();
    list.add({"old"});
    list.view->headers()->Clear();
    list.form->MousePointer = 7;
    fill(list, "BBVS", "FROM BB_VERTEILSCHLUSSEL_KOPF");
    EXPECT_EQ(list.view->items()->Count(), 0);
    EXPECT_EQ(list.form->MousePointer, 7);
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(FillListview, SelectionWithoutRowsLeavesAnEmptyListAndTheArrow)
{
    test::ListOnForm list{{1, 2}};
    list.add({"old", "old"});
    list.form->MousePointer = 7;
    fill(list, "BBHUNDE", "FROM BB_JAGDHUNDE WHERE BB_JAGDHUNDE.ID > 5");
    EXPECT_EQ(list.view->items()->Count(), 0);
    EXPECT_EQ(list.form->MousePointer, 0);
    EXPECT_EQ(statement(),
              "SELECT BB_JAGDHUNDE.NUMMER, BB_JAGDHUNDE.GEBURTSNAME, BB_JAGDHUNDE.NUMMER+CHAR(13)+"
              "BB_JAGDHUNDE.GEBURTSNAME, BB_JAGDHUNDE.ID FROM BB_JAGDHUNDE WHERE BB_JAGDHUNDE.ID > 5 GROUP BY "
              "BB_JAGDHUNDE.NUMMER,BB_JAGDHUNDE.GEBURTSNAME,BB_JAGDHUNDE.ID ORDER BY "
              "BB_JAGDHUNDE.NUMMER,BB_JAGDHUNDE.GEBURTSNAME");
}

TEST_F(FillListview, EmptySelectionIsOpenedWithTheBaseOfTheType)
{
    test::ListOnForm list{{1}};
    fill(list, "BBHUNDE", "");
    EXPECT_NE(statement().find(" FROM BB_JAGDHUNDE GROUP BY "), std::string::npos) << statement();
}

TEST_F(FillListview, FailuresLeaveTheHourglass)
{
    test::Surroundings refusing;
    test::ListOnForm list{{1}};
    EXPECT_EQ(test::errorNumber(
                  [&] { Comm_CSel{}.FillListview(refusing.session, "R", "BBHUNDE", *list.view, "FROM BB_JAGDHUNDE"); }),
              errors::statementRefused);
    EXPECT_EQ(list.form->MousePointer, 11);
}

TEST_F(FillListview, HeaderWithoutAnIdIsATypeMismatch)
{
    for (const char* key : {"COL_", "COL_x", "", "a"}) {
        test::ListOnForm list;
        list.view->headers()->Add({}, key, "Column");
        EXPECT_EQ(test::errorNumber([&] { fill(list, "BBHUNDE", ""); }), errors::typeMismatch) << key;
    }
    test::ListOnForm beyond;
    beyond.view->headers()->Add({}, "COL_40000", "Column");
    EXPECT_EQ(test::errorNumber([&] { fill(beyond, "BBHUNDE", ""); }), errors::overflow);
}

/// The rows that a database gives for the statement of a list.
class FilledList : public FillListview {
protected:
    /// Fills the list once to learn its statement, and again with rows.
    void answer(test::ListOnForm& list, std::string_view type, std::vector<test::Row> rows)
    {
        fill(list, type, "");
        std::vector<std::string> columns;
        for (std::size_t column = 0; column < rows.front().size(); ++column)
            columns.push_back(std::string{"F"}.append(std::to_string(column)));
        with.database.addAnswer(statement(), columns, std::move(rows));
        fill(list, type, "");
    }
};

TEST_F(FilledList, KeysAreNumberedAndTagsKept)
{
    test::ListOnForm list{{1, 2}};
    answer(list, "BBHUNDE", {{"12", "Arko", "12\rArko", 7}, {"12", "Arko", "12\rArko", 7}, {"13", "Bella", Null{}, 9}});
    EXPECT_EQ(list.keys(), (Texts{"1R7", "2R7", "3R9"}));
    EXPECT_EQ(Comm_Get{}.Get_Key(list.keys()[0]), "7");
    EXPECT_EQ(Comm_Get{}.Get_Key(list.keys()[1]), "7");
    EXPECT_EQ(list.column(0), (Texts{"12", "12", "13"}));
    EXPECT_EQ(list.column(1), (Texts{"Arko", "Arko", "Bella"}));
    EXPECT_EQ(list.view->items()->all()[0]->Tag(), Variant{"12\rArko"});
    EXPECT_TRUE(list.view->items()->all()[2]->Tag().isNull());
    EXPECT_EQ(list.form->MousePointer, 0);
}

TEST_F(FilledList, NullShowsTheWordsForNothingOrABlank)
{
    test::ListOnForm list{{1, 2}};
    answer(list, "BBHUNDE", {{Null{}, Null{}, "", 7}, {"", "", "", Null{}}});
    EXPECT_EQ(list.column(0), (Texts{"(leer)", ""}));
    EXPECT_EQ(list.column(1), (Texts{" ", " "}));
    EXPECT_EQ(list.keys(), (Texts{"1R7", "2R"}));
}

/// Columns 6 and 13 are dates, 10 is a number, 1 a text.
TEST_F(FilledList, FormattedColumnsAreAlignedRightButTheFirst)
{
    test::ListOnForm list{{6, 1, 13, 10}};
    list.view->headers()->all()[1]->Alignment = controls::ColumnAlignment::Center;
    answer(list, "BBHUNDE", {{makeDate(2024, 3, 5), "12", Null{}, 55.4, "tag", 7}});
    std::vector<controls::ColumnAlignment> alignments;
    for (const controls::ColumnHeaderRef& header : list.view->headers()->all())
        alignments.push_back(header->Alignment);
    using enum controls::ColumnAlignment;
    EXPECT_EQ(alignments, (std::vector{Left, Left, Right, Right}));
    EXPECT_EQ(list.column(0), (Texts{"05.03.2024"}));
    EXPECT_EQ(list.column(2), (Texts{" "}));
    EXPECT_EQ(list.column(3), (Texts{"55"}));
}

TEST_F(FilledList, GoodsHaveTheirOwnKeys)
{
    test::ListOnForm list{{1}};
    answer(list, "WAREN", {{"A", 5}, {"B", 6}});
    EXPECT_EQ(list.keys(), (Texts{"1W5", "2W6"}));
}

TEST_F(FilledList, SecondRowOfAContractFails)
{
    test::ListOnForm list{{1}};
    answer(list, "VERTRAG", {{"A", 5}, {"B", 6}});
    EXPECT_EQ(list.keys(), (Texts{"P5", "P6"}));
    test::ListOnForm repeated{{2}};
    EXPECT_EQ(test::errorNumber([&] { answer(repeated, "VERTRAG", {{"A", 5}, {"B", 5}}); }), errors::keyNotUnique);
    EXPECT_EQ(repeated.form->MousePointer, 11);
    EXPECT_EQ(repeated.view->items()->Count(), 1);
}

/// The last column names the record and is not shown.
TEST_F(FilledList, TypeWithoutFieldsOfItsOwn)
{
    test::ListOnForm list{{1, 2}};
    answer(list, "PERSONAL", {{"20007", "Lang"}, {"20014", "Ortner"}});
    EXPECT_EQ(list.column(0), (Texts{"20007", "20014"}));
    EXPECT_EQ(list.column(1), (Texts{"", ""})) << "not shown";
    EXPECT_EQ(list.keys(), (Texts{"1RLang", "2ROrtner"}));
    test::ListOnForm single{{1}};
    answer(single, "PERSONAL", {{"20007"}});
    EXPECT_EQ(single.view->items()->Count(), 0) << "the only column names the record";
}

/// The tables of fields are looked up exactly, the columns are not.
TEST_F(FillListview, TypeInLowerCaseHasColumnsButNoFieldsOfItsOwn)
{
    test::ListOnForm list{{1}};
    fill(list, "bbhunde", "");
    EXPECT_EQ(statement(), "SELECT BB_JAGDHUNDE.NUMMER FROM BB_JAGDHUNDE GROUP BY BB_JAGDHUNDE.NUMMER ORDER BY "
                           "BB_JAGDHUNDE.NUMMER");
}

TEST_F(FillListview, TagOfTimberHarvestIsJoinedInTheDialect)
{
    test::ListOnForm list{{1}};
    fill(list, "BBHAB", "");
    EXPECT_NE(
        statement().find("BB_HAB_KOPF.HAB_NUMMER + CHAR(13) + RIGHT(ACCESS_LEVELS.ACCESS_LEVELS,6), BB_HAB_KOPF.ID"
                         " FROM "),
        std::string::npos)
        << statement();
    with.session.bolOracle = true;
    fill(list, "BBHAB", "");
    EXPECT_NE(statement().find("BB_HAB_KOPF.HAB_NUMMER || CHR(13) || RIGHT(ACCESS_LEVELS.ACCESS_LEVELS,6)"),
              std::string::npos)
        << statement();
}

class ArticleList : public FillListview {
protected:
    ArticleList() { setDirections("x10"); }

    void setDirections(const std::string& option)
    {
        with.database.answer("SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'ORDERBY'", option, "TEXT_VALUE");
    }
    std::string order() const { return statement().substr(statement().find(" ORDER BY ")); }

    test::ListOnForm list{{156, 767}};
};

TEST_F(ArticleList, HasConditionsOfItsOwn)
{
    fill(list, "ARTIKEL", "FROM NN_POSITIONEN WHERE A = 1", "a2");
    EXPECT_NE(
        statement().find("NN_POSITIONEN.VER_TYPE = 'A2' AND HEADERRECH.R_NAME NOT IN (SELECT LOGS_RECH.A2_NAME FROM "
                         "LOGS_RECH WHERE LOGS_RECH.A2_NAME = HEADERRECH.R_NAME)"),
        std::string::npos)
        << statement();
    EXPECT_EQ(statement().find("STORNO,0) = 0"), std::string::npos) << statement();
}

TEST_F(ArticleList, CancelledInvoicesStayOutForOneEdition)
{
    with.session.strCustomer = "MA49";
    fill(list, "ARTIKEL", "");
    EXPECT_NE(statement().find(" ISNULL(HEADERRECH.STORNO,0) = 0 AND  NN_POSITIONEN.VER_TYPE = 'R' AND "),
              std::string::npos)
        << statement();
    with.session.strCustomer = "ma49";
    fill(list, "ARTIKEL", "");
    EXPECT_EQ(statement().find("STORNO,0) = 0"), std::string::npos) << statement();
}

TEST_F(ArticleList, OptionSetsTheDirectionByVersion)
{
    fill(list, "ARTIKEL", "", "R");
    const std::string descending = order();
    EXPECT_TRUE(descending.ends_with(" DESC")) << descending;
    fill(list, "ARTIKEL", "", "A1");
    EXPECT_EQ(order().find("DESC"), std::string::npos) << order();
}

class GoodsList : public FillListview {
protected:
    std::string orderBy(std::int32_t column, std::int32_t direction)
    {
        list.view->Sorted(true);
        list.view->SortKey(column);
        list.view->SortOrder(direction);
        fill(list, "WAREN", "");
        return statement().substr(statement().find(" ORDER BY "));
    }

    /// A text and a number.
    test::ListOnForm list{{textColumn(), numberColumn()}};

private:
    static std::int16_t columnWith(bool number)
    {
        const TmkVar session;
        for (std::int16_t id = 0; id < 100; ++id) {
            const Comm_CSel csel;
            if (csel.GetColumnTyp("WAREN", id, true, false, session).empty()) continue;
            const std::string format = csel.GetFormat("WAREN", id, session);
            if (format.ends_with('0') == number) return id;
        }
        return -1;
    }
    static std::int16_t textColumn() { return columnWith(false); }
    static std::int16_t numberColumn() { return columnWith(true); }
};

TEST_F(GoodsList, FollowsTheSortingOfTheView)
{
    EXPECT_EQ(orderBy(0, 0), " ORDER BY 1");
    EXPECT_EQ(orderBy(0, 1), " ORDER BY 1 DESC");
    const std::string byNumber = orderBy(1, 1);
    EXPECT_TRUE(byNumber.starts_with(" ORDER BY (CASE WHEN ISNUMERIC(")) << byNumber;
    EXPECT_TRUE(byNumber.ends_with(" AS FLOAT) ELSE NULL END) DESC")) << byNumber;
    EXPECT_FALSE(orderBy(1, 0).ends_with("DESC"));
    list.view->Sorted(false);
    fill(list, "WAREN", "");
    EXPECT_EQ(statement().find(" ORDER BY 1"), std::string::npos);
}

/// No other type looks at it.
TEST_F(GoodsList, OtherListsDoNotFollowTheView)
{
    test::ListOnForm dogs{{1, 2}};
    dogs.view->Sorted(true);
    dogs.view->SortKey(1);
    dogs.view->SortOrder(1);
    fill(dogs, "BBHUNDE", "");
    EXPECT_TRUE(statement().ends_with(" ORDER BY BB_JAGDHUNDE.NUMMER,BB_JAGDHUNDE.GEBURTSNAME")) << statement();
}

} // namespace
} // namespace tamarok
