#include "ado_fixture.h"

#include "tamarok/date.h"

namespace tamarok::ado {

class FindTest : public AdoTest {
protected:
    FindTest()
    {
        species->columns.push_back({"FELLED ON", "", "", DataType::Date, 8});
        for (auto& [key, row] : species->rows)
            row.push_back(makeDate(2024, 3, static_cast<std::int32_t>(key)));
    }

    /// ID of the row that a search from the first row finds; Null at the end.
    Variant find(std::string_view criterion)
    {
        const auto rows = open(CursorType::OpenStatic);
        rows->Find(criterion);
        return rows->AtEOF() ? Variant{Null{}} : id(*rows);
    }
};

struct FindCase {
    const char* criterion;
    int id; ///< 0: none
};

class FindTable : public FindTest, public ::testing::WithParamInterface<FindCase> {};

TEST_P(FindTable, Finds)
{
    const Variant wanted = GetParam().id == 0 ? Variant{Null{}} : Variant{GetParam().id};
    EXPECT_EQ(find(GetParam().criterion), wanted) << GetParam().criterion;
}

INSTANTIATE_TEST_SUITE_P(
    Criteria, FindTable,
    ::testing::Values(FindCase{"NAME = 'Tanne'", 2}, FindCase{"name='tanne'", 2}, FindCase{"  NAME  =  'LÄRCHE'  ", 3},
                      FindCase{"[NAME] = 'Tanne'", 2}, FindCase{"[FELLED ON] = #2024-03-02#", 2},
                      FindCase{"[FELLED ON] > #2024-03-02 00:00:00#", 3}, FindCase{"[FELLED ON] >= '2024-03-03'", 3},
                      FindCase{"NAME <> 'Fichte'", 2}, FindCase{"NAME > 'Fichte'", 2}, FindCase{"NAME < 'Fichte'", 0},
                      FindCase{"NAME >= 'M'", 2}, FindCase{"ID = 3", 3}, FindCase{"ID = '3'", 3},
                      FindCase{"ID >= 2.5", 3}, FindCase{"ID < 1", 0}, FindCase{"ID <= 1", 1}, FindCase{"ID > -1", 1},
                      FindCase{"PRICE > 100", 3}, FindCase{"PRICE <> 80.5", 3}, FindCase{"NAME LIKE 'T*'", 2},
                      FindCase{"NAME like '*CHE'", 3}, FindCase{"NAME LIKE '*nn*'", 2},
                      FindCase{"NAME LIKE 'tanne'", 2}, FindCase{"NAME LIKE 'x*'", 0}, FindCase{"NAME LIKE '*'", 1},
                      FindCase{"ID LIKE '3*'", 3}, FindCase{"NAME = 'O''Neill'", 0}, FindCase{"NAME = ''", 0}));

TEST_F(FindTest, QuotesWithinTheTextAreDoubled)
{
    species->rows.at(2)[1] = "O'Neill";
    EXPECT_EQ(find("NAME = 'O''Neill'"), Variant{2});
}

class FindRefusal : public FindTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FindRefusal, NamesTheCriterion)
{
    const auto rows = open(CursorType::OpenStatic);
    const Error failure = failureOf([&] { rows->Find(GetParam()); });
    EXPECT_EQ(failure.number, errors::invalidArgument);
    EXPECT_NE(failure.description.find(GetParam()), std::string::npos) << failure.description;
    EXPECT_EQ(id(*rows), Variant{1});
}

INSTANTIATE_TEST_SUITE_P(Criteria, FindRefusal,
                         ::testing::Values("", "NAME", "NAME 'x'", "= 'x'", "NAME =", "NAME = x", "NAME = 'x",
                                           "NAME = 'x' AND ID = 1", "NAME LIKE 'a*b'", "NAME LIKE 5", "[NAME = 'x'",
                                           "NAME = #x#", "NAME = '", "NAME IN ('x')", "ID = 1,5"));

TEST_F(FindTest, UnknownColumnAndUnlikeTypes)
{
    const auto rows = open(CursorType::OpenStatic);
    EXPECT_EQ(errorNumber([&] { rows->Find("NOTHING = 1"); }), errors::itemNotFound);
    EXPECT_EQ(errorNumber([&] { rows->Find("NAME = 1"); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { rows->Find("ID = 'one'"); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { rows->Find("ID = 1", -1); }), errors::invalidArgument);
}

TEST_F(FindTest, StartsAtTheCurrentRowAndSkips)
{
    const auto rows = open(CursorType::OpenStatic);
    rows->Find("ID > 0");
    EXPECT_EQ(id(*rows), Variant{1});
    rows->Find("ID > 0", 1);
    EXPECT_EQ(id(*rows), Variant{2});
    rows->Find("ID > 0", 5);
    EXPECT_TRUE(rows->AtEOF());
    EXPECT_EQ(errorNumber([&] { rows->Find("ID > 0"); }), errors::noCurrentRecord);
}

TEST_F(FindTest, SearchesBackward)
{
    const auto rows = open(CursorType::OpenStatic);
    rows->MoveLast();
    rows->Find("NAME LIKE 'F*'", 0, SearchDirection::Backward);
    EXPECT_EQ(id(*rows), Variant{1});
    rows->MoveLast();
    rows->Find("ID > 0", 1, SearchDirection::Backward);
    EXPECT_EQ(id(*rows), Variant{2});
    rows->Find("ID > 2", 0, SearchDirection::Backward);
    EXPECT_TRUE(rows->AtBOF());
}

TEST_F(FindTest, StreamSearchesForwardOnly)
{
    const auto rows = open();
    rows->Find("NAME = 'Tanne'");
    EXPECT_EQ(id(*rows), Variant{2});
    EXPECT_EQ(errorNumber([&] { rows->Find("ID = 1", 0, SearchDirection::Backward); }), errors::badCursorOperation);
    EXPECT_EQ(id(*rows), Variant{2});
}

} // namespace tamarok::ado
