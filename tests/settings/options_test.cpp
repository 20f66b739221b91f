#include <gtest/gtest.h>

#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_sql.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::Surroundings;

class Options : public ::testing::Test {
protected:
    /// Checks that one procedure call wrote an option without reading anything back.
    void expectWritten(std::string_view property, std::int32_t kind, std::string_view value)
    {
        ASSERT_EQ(with.loc.procedures.size(), 1U);
        EXPECT_EQ(with.loc.procedures[0].name, "tmk_OPTIONEN_INS");
        const auto& parameters = with.loc.procedures[0].parameters;
        ASSERT_EQ(parameters.size(), 3U);
        EXPECT_EQ(parameters[0].value, Variant{property});
        EXPECT_EQ(parameters[1].value, Variant{kind});
        EXPECT_EQ(parameters[2].value, Variant{value});
        EXPECT_TRUE(with.database.executed.empty());
    }

    Surroundings with;
    Comm_Get get;
};

constexpr const char* numberOfAbc = "SELECT NUMBER_VALUE FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'ABC'";
constexpr const char* doubleOfAbc = "SELECT ISNULL(DOUBLE_VALUE,0) FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'ABC'";

TEST_F(Options, NumberIsFoundWithoutRegardToCase)
{
    with.database.answer(numberOfAbc, std::int32_t{100000});
    EXPECT_EQ(get.GetOptionenNumber(with.session, "ABC"), 100000);
    EXPECT_EQ(get.GetOptionenNumber(with.session, "abc"), 100000);
    EXPECT_EQ(with.database.openedTexts(), (std::vector<std::string>{numberOfAbc, numberOfAbc}));
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly);
    EXPECT_EQ(with.database.openCursors, 0);
    EXPECT_TRUE(with.loc.procedures.empty());
}

TEST_F(Options, NumberIsRoundedHalfEvenAndBoundTo32Bits)
{
    with.database.answer(numberOfAbc, 2.5);
    EXPECT_EQ(get.GetOptionenNumber(with.session, "ABC"), 2);
    with.database.answer(numberOfAbc, 3e9);
    EXPECT_EQ(errorNumber([&] { get.GetOptionenNumber(with.session, "ABC"); }), errors::overflow);
    with.database.answer(numberOfAbc, Null{});
    EXPECT_EQ(get.GetOptionenNumber(with.session, "ABC"), 0);
    EXPECT_TRUE(with.loc.procedures.empty());
}

TEST_F(Options, MissingNumberWritesARowUnderTheUpperCaseName)
{
    with.database.answerNoRow(numberOfAbc);
    EXPECT_EQ(get.GetOptionenNumber(with.session, "abc"), 0);
    expectWritten("ABC", 2, "0");
}

TEST_F(Options, CursorLocationIsExemptAsGivenExactly)
{
    with.database.answerNoRow("SELECT NUMBER_VALUE FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'DBCURSORLOCATION'");
    EXPECT_EQ(get.GetOptionenNumber(with.session, "DBCURSORLOCATION"), 0);
    EXPECT_TRUE(with.loc.procedures.empty());
    EXPECT_EQ(get.GetOptionenNumber(with.session, "dbcursorlocation"), 0);
    expectWritten("DBCURSORLOCATION", 2, "0");
}

TEST_F(Options, DoubleInBothDialects)
{
    with.database.answer(doubleOfAbc, 13.7603);
    EXPECT_EQ(get.GetOptionenDouble(with.session, "abc"), 13.7603);
    with.session.bolOracle = true;
    with.database.answer("SELECT NVL(DOUBLE_VALUE,0) FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'ABC'", 2.0);
    EXPECT_EQ(get.GetOptionenDouble(with.session, "abc"), 2.0);
    EXPECT_TRUE(with.loc.procedures.empty());
}

TEST_F(Options, MissingDoubleWritesARowUnderTheUpperCaseName)
{
    with.database.answerNoRow(doubleOfAbc);
    EXPECT_EQ(get.GetOptionenDouble(with.session, "abc"), 0.0);
    expectWritten("ABC", 3, "0");
}

TEST_F(Options, TextIsFoundUnderTheExactName)
{
    with.database.answer("SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'ABC'", "Höhe");
    EXPECT_EQ(get.GetOptionenText(with.session, "ABC"), "Höhe");
    with.database.answer("SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'ABC'", Null{});
    EXPECT_EQ(get.GetOptionenText(with.session, "ABC"), "");
    EXPECT_TRUE(with.loc.procedures.empty());
    with.database.answerNoRow("SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'abc'");
    EXPECT_EQ(get.GetOptionenText(with.session, "abc"), "");
    expectWritten("ABC", 1, "");
}

class OptionDates : public Options {
protected:
    OptionDates() { with.session.DateFromDefault = makeDate(1990, 1, 1); }

    Date read(std::string_view property, Variant value)
    {
        with.database.answer(statement(property), std::move(value));
        return get.GetOptionenDate(with.session, property);
    }
    Date miss(std::string_view property)
    {
        with.database.answerNoRow(statement(property));
        return get.GetOptionenDate(with.session, property);
    }
    static std::string statement(std::string_view property)
    {
        return "SELECT DATE_VALUE FROM OPTIONEN WHERE PROPERTY_ID = '" + std::string{property} + "'";
    }
};

TEST_F(OptionDates, RowBeatsTheDefault)
{
    EXPECT_EQ(read("DATE_FROM", makeDate(2020, 2, 29)), makeDate(2020, 2, 29));
    EXPECT_EQ(read("DATE_FROM", Null{}), makeDate(1990, 1, 1));
    EXPECT_EQ(read("DATE_TO", Null{}), makeDate(2024, 5, 17));
    EXPECT_TRUE(with.loc.procedures.empty());
}

TEST_F(OptionDates, MissingEndIsTodayAndWritesTheNameAsGiven)
{
    EXPECT_EQ(miss("DATE_TO"), makeDate(2024, 5, 17));
    expectWritten("DATE_TO", 4, "");
}

TEST_F(OptionDates, NameIsTrimmedForTheDefaultOnly)
{
    EXPECT_EQ(miss(" date_to "), makeDate(2024, 5, 17));
    expectWritten(" date_to ", 4, "");
}

TEST_F(OptionDates, AnyOtherNameHasTheLowerDefault)
{
    EXPECT_EQ(miss("OTHER"), makeDate(1990, 1, 1));
    expectWritten("OTHER", 4, "");
}

TEST_F(Options, FormSettingIsReadAsText)
{
    constexpr const char* statement =
        "SELECT NUMBER_VALUE FROM FORMS_CONFIG WHERE FORM_ID = 'F_STAMMEINKONF' AND PROPERTY_ID = 'ABC'";
    with.database.answer(statement, std::int32_t{7});
    EXPECT_EQ(get.GetKonfNumber(with.session.db_ADO, "abc", 5), "7");
    EXPECT_TRUE(with.database.executed.empty());
    ASSERT_EQ(with.database.opened.size(), 1U);
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly); // what an unspecified lock means

    with.database.answer(statement, Null{});
    EXPECT_EQ(errorNumber([&] { get.GetKonfNumber(with.session.db_ADO, "abc", 5); }), errors::invalidUseOfNull);
}

TEST_F(Options, MissingFormSettingIsInsertedWithTheDefault)
{
    with.database.answerNoRow(
        "SELECT NUMBER_VALUE FROM FORMS_CONFIG WHERE FORM_ID = 'F_STAMMEINKONF' AND PROPERTY_ID = 'ABC'");
    EXPECT_EQ(get.GetKonfNumber(with.session.db_ADO, "abc", -5), "-5");
    EXPECT_EQ(with.database.executed,
              std::vector<std::string>{"INSERT INTO FORMS_CONFIG (FORM_ID, PROPERTY_ID, NUMBER_VALUE) VALUES "
                                       "('F_STAMMEINKONF', 'ABC',-5)"});
    EXPECT_TRUE(with.loc.procedures.empty());
    EXPECT_EQ(with.database.openCursors, 0);
}

TEST_F(Options, GlobalModelInBothDialects)
{
    with.database.answer("SELECT * FROM (SELECT ISNULL((SELECT TOP 1 NUMBER_VALUE FROM OPTIONEN WHERE PROPERTY_ID = "
                         "'CHANGE_MODELS'),1) AS NUM_VALUE) A",
                         std::int32_t{1}, "NUM_VALUE");
    EXPECT_EQ(Comm_SQL{}.OPTIONEN_glbModel(with.session), 1);
    with.session.bolOracle = true;
    with.database.answer("SELECT * FROM (SELECT NVL((SELECT NUMBER_VALUE FROM OPTIONEN WHERE PROPERTY_ID = "
                         "'CHANGE_MODELS'  AND rownum=1),1) AS NUM_VALUE FROM DUAL) A",
                         std::int32_t{40000}, "NUM_VALUE");
    EXPECT_EQ(errorNumber([&] { Comm_SQL{}.OPTIONEN_glbModel(with.session); }), errors::overflow);
    EXPECT_TRUE(with.loc.procedures.empty());
    EXPECT_EQ(with.database.openCursors, 0);
}

TEST_F(Options, WithoutConnectionOrServiceTheCallFails)
{
    TmkVar unconnected;
    EXPECT_EQ(errorNumber([&] { get.GetOptionenNumber(unconnected, "ABC"); }), errors::objectNotSet);
    EXPECT_EQ(errorNumber([&] { get.GetKonfNumber(nullptr, "ABC", 1); }), errors::objectNotSet);
    EXPECT_EQ(errorNumber([&] { Comm_SQL{}.OPTIONEN_glbModel(unconnected); }), errors::objectNotSet);
    with.database.answerNoRow(numberOfAbc);
    Platform::current().makeLocService = nullptr;
    EXPECT_EQ(errorNumber([&] { get.GetOptionenNumber(with.session, "ABC"); }), errors::objectNotSet);
}

} // namespace
} // namespace tamarok
