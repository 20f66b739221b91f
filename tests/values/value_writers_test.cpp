#include <array>
#include <functional>

#include "runtime/support.h"
#include "values/sample_database.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/component.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::field;
using Statements = std::vector<std::string>;

const Comm_Set set;

TEST(Fragments, NoneDoublesAQuote)
{
    struct Row {
        std::string value;
        const char* text;
        const char* number;
        const char* condition;
        const char* named;
    };
    const Row rows[] = {
        {"", "NULL", "NULL", " IS NULL", "WALD IS NULL"},
        {"abc", "'abc'", "abc", " = 'abc'", "WALD = 'abc'"},
        {" ", "' '", " ", " = ' '", "WALD = ' '"},
        {"a'b", "'a'b'", "a'b", " = 'a'b'", "WALD = 'a'b'"},
        {"1,5", "'1,5'", "1,5", " = '1,5'", "WALD = '1,5'"},
        {"0", "'0'", "0", " = '0'", "WALD = '0'"},
        {"NULL", "'NULL'", "NULL", " = 'NULL'", "WALD = 'NULL'"},
        {"Lärche 🌲", "'Lärche 🌲'", "Lärche 🌲", " = 'Lärche 🌲'", "WALD = 'Lärche 🌲'"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(set.Set_StrVal(row.value), row.text);
        EXPECT_EQ(set.Set_NumVal(row.value), row.number);
        EXPECT_EQ(set.Set_StrVal2(row.value), row.condition);
        EXPECT_EQ(set.Set_StrVal2(row.value, "WALD"), row.named);
    }
    EXPECT_EQ(set.Set_StrVal(std::string(10'000, 'x')).size(), 10'002U);
    const std::string zero("a\0b", 3);
    EXPECT_EQ(set.Set_StrVal(zero), "'" + zero + "'") << "a zero character ends no text";
    EXPECT_EQ(set.Set_NumVal(zero), zero);
    EXPECT_EQ(set.Set_StrVal2(zero, "WALD"), "WALD = '" + zero + "'");
    EXPECT_EQ(set.Set_StrVal(std::string(1, '\0')), "'" + std::string(1, '\0') + "'") << "nor is it nothing";
}

TEST(Separator, FollowsTheNationalOne)
{
    struct Row {
        const char* value;
        const char* separator;
        const char* result;
    };
    const Row rows[] = {
        {"1.5", ",", "1,5"},   {"1,5", ".", "1.5"}, {"1.234.5", ",", "1,234.5"}, {"1,234,5", ".", "1.234,5"},
        {"1,5", ",", "1,5"},   {"1.5", ".", "1.5"}, {"15", ",", "15"},           {"", ",", ""},
        {".", ",", ","},       {"1.5", ";", ";.5"}, {"1.5", "", ".5"},           {"", ";", ""},
        {"1.5", ",,", ",,.5"}, {"äb", ";", ";b"},   {"🌲.5", ",", "🌲,5"},         {"🌲5", "x", "x5"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(set.Set_Separator(row.value, row.separator), row.result) << row.value << " / " << row.separator;
    const std::string digits(10'000, '7');
    EXPECT_EQ(set.Set_Separator(digits + "," + digits, "."), digits + "." + digits);
    EXPECT_EQ(set.Set_Separator(std::string("1\0.5", 4), ","), std::string("1\0,5", 4));
}

class Writers : public ::testing::Test {
protected:
    using Write = std::function<void(std::string_view column, std::string_view where)>;

    /// Checks the one statement that a writer sends, and what stands in the row afterwards, or that the
    /// server refuses it and nothing changes.
    void expectWritten(const Write& write, const std::string& column, const std::string& assignment,
                       const Variant& stands)
    {
        write(column, "ID = 1");
        EXPECT_EQ(database.statements(), Statements{"UPDATE SAMPLE SET " + column + assignment + " WHERE ID = 1"});
        EXPECT_EQ(database.stands("SELECT " + column + " FROM SAMPLE WHERE ID = 1"), stands) << assignment;
    }
    void expectRefused(const Write& write, const std::string& column, const std::string& assignment)
    {
        const std::string row = "SELECT " + column + " FROM SAMPLE WHERE ID = 1";
        const Variant before = database.stands(row);
        EXPECT_EQ(errorNumber([&] { write(column, "ID = 1"); }), errors::statementRefused) << assignment;
        EXPECT_EQ(database.statements(), Statements{"UPDATE SAMPLE SET " + column + assignment + " WHERE ID = 1"});
        EXPECT_EQ(database.stands(row), before);
    }

    Write number(std::string value, std::string mark = ".")
    {
        return [this, value, mark](std::string_view column, std::string_view where) {
            set.Set_Number(column, value, "SAMPLE", where, database.connection, mark);
        };
    }
    Write number2(Variant value, std::string mark = ".")
    {
        return [this, value, mark](std::string_view column, std::string_view where) {
            set.Set_Number2(std::string{column}, value, "SAMPLE", where, database.connection, mark);
        };
    }
    Write text(std::string value)
    {
        return [this, value](std::string_view column, std::string_view where) {
            set.Set_Text(column, value, "SAMPLE", where, database.connection);
        };
    }
    Write text2(Variant value, std::string mark = ".")
    {
        return [this, value, mark](std::string_view column, std::string_view where) {
            set.Set_Text2(column, value, "SAMPLE", where, database.connection, mark);
        };
    }
    Write text3(Variant value, std::string mark = ".")
    {
        return [this, value, mark](std::string_view column, std::string_view where) {
            set.Set_Text3(column, value, "SAMPLE", where, database.connection, mark);
        };
    }
    Write boolean(bool value)
    {
        return [this, value](std::string_view column, std::string_view where) {
            set.Set_Boolean(column, value, "SAMPLE", where, database.connection);
        };
    }

    test::SampleDatabase database;

private:
    PlatformScope scope_{test::platformFor("de-AT")};
};

TEST_F(Writers, Number)
{
    expectWritten(number("12,5"), "MASS", " = 12.5", 12.5);
    expectWritten(number(""), "MASS", " = NULL", Null{});
    expectWritten(number("12"), "MASS", " = 12", 12.0);
    expectWritten(number(" "), "MASS", " = NULL", Null{});
    expectWritten(number("1.234,5"), "MASS", " = 1234.5", 1234.5);
    expectWritten(number("0"), "MASS", " = NULL", Null{});
    expectWritten(number("0.0", ""), "MASS", " = 0.0", 0.0);
    expectWritten(number("0,00"), "MASS", " = 0.00", 0.0);
    expectWritten(number(" 0"), "MASS", " =  0", 0.0);
    expectWritten(number("-0"), "MASS", " = -0", 0.0);
    expectWritten(number("1 234,5", " "), "MASS", " = 1234.5", 1234.5);
    expectWritten(number("1E3"), "MASS", " = 1E3", 1000.0);
    expectWritten(number("7"), "PIECES", " = 7", std::int32_t{7});
    expectWritten(number("0.0"), "PIECES", " = 00", std::int32_t{0}); // the mark takes the point out
    expectRefused(number("12x"), "MASS", " = 12x");
    expectRefused(number("1,234,5"), "MASS", " = 1.234.5");
    expectRefused(number("O'Neil"), "MASS", " = O'Neil");
    expectRefused(number(std::string(10'000, '(')), "MASS", " = " + std::string(10'000, '('));
}

TEST_F(Writers, Number2)
{
    expectWritten(number2(0.0), "MASS", " = 0", 0.0);
    expectWritten(number2(Null{}), "MASS", " = NULL", Null{});
    expectWritten(number2(1234.5), "MASS", " = 1234.5", 1234.5); // by way of the text "1234,5"
    expectWritten(number2(-0.25), "MASS", " = -0.25", -0.25);
    expectWritten(number2(field(Null{})), "MASS", " = NULL", Null{});
    expectWritten(number2(field(2.5)), "MASS", " = 2.5", 2.5);
    expectWritten(number2("1.234,5"), "MASS", " = 1234.5", 1234.5);
    expectWritten(number2("0"), "MASS", " = 0", 0.0);
    expectWritten(number2(std::int16_t{-7}), "PIECES", " = -7", std::int32_t{-7});
    expectWritten(number2(std::int32_t{7}), "PIECES", " = 7", std::int32_t{7});
    expectRefused(number2(Empty{}), "MASS", " = ");
    expectRefused(number2(""), "MASS", " = ");
    expectRefused(number2(true), "MASS", " = Wahr");
    expectRefused(number2("abc"), "MASS", " = abc");
}

TEST_F(Writers, NumbersArePlainUnderAnyDecimalSeparator)
{
    for (const char* locale : {"de-AT", "en-US", "en-GB", "fr-FR", "sv-SE", "cs-CZ", "de-CH"}) {
        const PlatformScope scope{test::platformFor(locale)};
        const std::string mark = Platform::current().regional.decimal == "," ? "." : "";
        const std::string regional = convert::toText(Variant{1234.5});
        expectWritten(number2(1234.5, mark), "MASS", " = 1234.5", 1234.5);
        expectWritten(text2(1234.5, mark), "NAME", " = '1234.5'", "1234.5");
        expectWritten(text3(1234.5, mark), "NAME", " = '" + regional + "'", regional);
    }
}

TEST_F(Writers, Text)
{
    expectWritten(text("O'Neil"), "NAME", " = 'O''Neil'", "O'Neil");
    expectWritten(text(""), "NAME", " = NULL", Null{});
    expectWritten(text(" "), "NAME", " = ' '", " ");
    expectWritten(text("'"), "NAME", " = ''''", "'");
    expectWritten(text("''; DROP TABLE SAMPLE --"), "NAME", " = '''''; DROP TABLE SAMPLE --'",
                  "''; DROP TABLE SAMPLE --");
    expectWritten(text("1.234,5"), "NAME", " = '1.234,5'", "1.234,5");
    expectWritten(text("Lärche 🌲"), "NAME", " = 'Lärche 🌲'", "Lärche 🌲");
    expectWritten(text("a\nb"), "NAME", " = 'a\nb'", "a\nb");
}

TEST_F(Writers, ZeroCharacterInAStatementIsTheServersRefusal)
{
    const std::string zero("a\0b", 3);
    expectRefused(text(zero), "NAME", " = '" + zero + "'");
    expectRefused(text2(zero), "NAME", " = '" + zero + "'");
    expectRefused(text3(zero), "NAME", " = '" + zero + "'");
    expectRefused(number(std::string("1\0", 2)), "MASS", std::string(" = 1\0", 5));

    ado::Command command;
    command.ActiveConnection = database.connection;
    command.CommandText = "UPDATE SAMPLE SET NAME = ? WHERE ID = 1";
    command.Parameters().push_back(
        command.CreateParameter("name", ado::DataType::VarWChar, ado::ParameterDirection::Input, 40, zero));
    command.Execute();
    EXPECT_EQ(Comm_Get{}.Get_FieldValue(database.session, "NAME", "SAMPLE", "ID = 1"), zero)
        << "one that stands in the table is read whole";
}

TEST_F(Writers, Text2TreatsItsValueAsANumber)
{
    expectWritten(text2("1.234,5"), "NAME", " = '1234.5'", "1234.5");
    expectWritten(text2(Null{}), "NAME", " = NULL", Null{});
    expectWritten(text2(1234.5), "NAME", " = '1234.5'", "1234.5");
    expectWritten(text2(Empty{}), "NAME", " = ''", "");
    expectWritten(text2(field(Null{})), "NAME", " = NULL", Null{});
    expectWritten(text2(""), "NAME", " = ''", "");
    expectWritten(text2("a,b.c"), "NAME", " = 'a.bc'", "a.bc");
    expectWritten(text2("a,b.c", ""), "NAME", " = 'a.b.c'", "a.b.c");
    expectWritten(text2("O''Neil"), "NAME", " = 'O''Neil'", "O'Neil");
    expectRefused(text2("O'Neil"), "NAME", " = 'O'Neil'");
}

TEST_F(Writers, Text3LeavesTheMarkAlone)
{
    expectWritten(text3("1.234,5"), "NAME", " = '1.234,5'", "1.234,5");
    expectWritten(text3(Null{}), "NAME", " = NULL", Null{});
    expectWritten(text3(1234.5), "NAME", " = '1234,5'", "1234,5");
    expectWritten(text3(Empty{}), "NAME", " = ''", "");
    expectWritten(text3(true), "NAME", " = 'Wahr'", "Wahr");
    expectWritten(text3(makeDate(2024, 3, 5)), "NAME", " = '05.03.2024'", "05.03.2024");
    expectWritten(text3(makeDate(2024, 3, 5)), "MEASURED", " = '05.03.2024'", makeDate(2024, 3, 5));
    expectWritten(text3(field(Null{})), "NAME", " = NULL", Null{});
    expectWritten(text3(field("x")), "NAME", " = 'x'", "x");
    expectRefused(text3("O'Neil"), "NAME", " = 'O'Neil'");
}

TEST_F(Writers, BooleanHasTwoBlanksForTrue)
{
    expectWritten(boolean(true), "ACTIVE", " =  1", true);
    expectWritten(boolean(false), "ACTIVE", " = 0", false);
    expectWritten(boolean(true), "PIECES", " =  1", std::int32_t{1});
}

TEST_F(Writers, ConditionIsTakenAsItStands)
{
    const Write writers[] = {number("5"), number2(5.0), text("5"), text2("5"), text3("5"), boolean(true)};
    for (const Write& write : writers) {
        for (const std::string nothing : {"", " "}) {
            EXPECT_EQ(errorNumber([&] { write("PARTNER", nothing); }), errors::statementRefused);
            const Statements sent = database.statements();
            ASSERT_EQ(sent.size(), 1U);
            EXPECT_TRUE(sent[0].ends_with(" WHERE " + nothing)) << sent[0];
        }
        EXPECT_NO_THROW(write("PARTNER", "ID = 99")) << "no row touched is a success";
        EXPECT_NO_THROW(write("PARTNER", "1 = 1"));
        EXPECT_EQ(database.stands("SELECT COUNT(*) FROM SAMPLE WHERE PARTNER IN (1, 5)"), Variant{std::int32_t{2}});
        database.statements();
    }
}

TEST_F(Writers, LongTexts)
{
    std::string longText;
    for (int i = 0; i < 10'000; ++i)
        longText += i % 3 == 0 ? "ä" : i % 3 == 1 ? "🌲" : "'";
    set.Set_Text("NOTE", longText, "SAMPLE", "ID = 1", database.connection);
    EXPECT_EQ(database.stands("SELECT NOTE FROM SAMPLE WHERE ID = 1"), Variant{longText});
    set.Set_Text3("BROAD", std::string(10'000, 'x'), "SAMPLE", "ID = 1", database.connection, "");
    EXPECT_EQ(database.stands("SELECT BROAD FROM SAMPLE WHERE ID = 1"), Variant{std::string(10'000, 'x')});
    database.statements();
    const std::string forty = "0123456789012345678901234567890123456ä🌲x";
    expectWritten(text(forty), "NAME", " = '" + forty + "'", forty);
    EXPECT_EQ(errorNumber([&] { set.Set_Text("NAME", forty + "y", "SAMPLE", "ID = 1", database.connection); }),
              errors::statementRefused)
        << "a text beyond the column's width is the server's failure";
    EXPECT_EQ(database.stands("SELECT NAME FROM SAMPLE WHERE ID = 1"), Variant{forty});
}

TEST_F(Writers, WithoutAConnectionAndOnAClosedOne)
{
    const auto writers = {
        +[](const ado::ConnectionRef& db) { set.Set_Number("MASS", "5", "SAMPLE", "ID = 1", db, "."); },
        +[](const ado::ConnectionRef& db) { set.Set_Number2("MASS", 5.0, "SAMPLE", "ID = 1", db, "."); },
        +[](const ado::ConnectionRef& db) { set.Set_Text("NAME", "5", "SAMPLE", "ID = 1", db); },
        +[](const ado::ConnectionRef& db) { set.Set_Text2("NAME", "5", "SAMPLE", "ID = 1", db, "."); },
        +[](const ado::ConnectionRef& db) { set.Set_Text3("NAME", "5", "SAMPLE", "ID = 1", db, "."); },
        +[](const ado::ConnectionRef& db) { set.Set_Boolean("ACTIVE", true, "SAMPLE", "ID = 1", db); },
    };
    const ado::ConnectionRef closed = embedded::connectInMemory();
    closed->Close();
    for (const auto write : writers) {
        EXPECT_EQ(errorNumber([&] { write(nullptr); }), errors::objectNotSet);
        EXPECT_EQ(errorNumber([&] { write(closed); }), errors::connectionClosed);
        EXPECT_EQ(errorNumber([&] { write(embedded::connectInMemory()); }), errors::statementRefused) << "no table";
    }
}

TEST_F(Writers, ValuesWithoutATextForm)
{
    const Variant array{VariantArray{}};
    const Variant empty{ObjectRef{}};
    const Variant field = test::field(array);
    const Variant control{std::make_shared<test::ValueHolder>("Label", "x")};
    const auto writersOf = [this](const Variant& value) {
        return std::array{number2(value), text2(value), text3(value)};
    };
    const std::pair<Variant, std::int32_t> rows[] = {
        {array, errors::typeMismatch},   {field, errors::typeMismatch},
        {control, errors::noSuchMember}, {empty, errors::objectNotSet},
        {Date{3e6}, errors::overflow},   {Date{-658000.0}, errors::overflow}, // a day of the year 0098
    };
    for (const auto& [value, failure] : rows)
        for (const Write& write : writersOf(value))
            EXPECT_EQ(errorNumber([&, w = write] { w("NAME", "ID = 1"); }), failure);
    EXPECT_TRUE(database.statements().empty());
}

TEST_F(Writers, ByName)
{
    const auto call = [&](const char* operation, std::vector<Variant> arguments) {
        return errorNumber([&] { component::invoke("Comm_Set", operation, arguments); });
    };
    const Variant connection{database.connection};
    EXPECT_EQ(call("Set_Number2", {"MASS", Null{}, "SAMPLE", "ID = 1", connection, "."}), 0);
    EXPECT_EQ(database.stands("SELECT MASS FROM SAMPLE WHERE ID = 1"), Variant{Null{}});
    EXPECT_EQ(call("Set_Number", {"MASS", "2,5", "SAMPLE", "ID = 1", connection, "."}), 0);
    EXPECT_EQ(database.stands("SELECT MASS FROM SAMPLE WHERE ID = 1"), Variant{2.5});
    EXPECT_EQ(call("Set_Number", {"MASS", Null{}, "SAMPLE", "ID = 1", connection, "."}), errors::invalidUseOfNull);
    EXPECT_EQ(call("Set_Text", {"NAME", Empty{}, "SAMPLE", "ID = 1", connection}), 0) << "Empty is no text: NULL";
    EXPECT_EQ(database.stands("SELECT NAME FROM SAMPLE WHERE ID = 1"), Variant{Null{}});
    EXPECT_EQ(call("Set_Boolean", {"ACTIVE", std::int16_t{-1}, "SAMPLE", "ID = 1", connection}), 0);
    EXPECT_EQ(database.stands("SELECT ACTIVE FROM SAMPLE WHERE ID = 1"), Variant{true});
    EXPECT_EQ(call("Set_Text", {"NAME", "x", "SAMPLE", "ID = 1", ObjectRef{}}), errors::objectNotSet);
    std::vector<Variant> value{"a'b"};
    EXPECT_EQ(component::invoke("Comm_Set", "Set_StrVal2", value), Variant{" = 'a'b'"}) << "wald left out";
}

/// What a person typed is written with the writers and comes back with the readers.
TEST_F(Writers, RoundTripOfALine)
{
    const Comm_Get get;
    set.Set_Number("MASS", "1.234,5", "SAMPLE", "ID = 1", database.connection, ".");
    set.Set_Text("NAME", "Tanne d'or", "SAMPLE", "ID = 1", database.connection);
    set.Set_Boolean("ACTIVE", false, "SAMPLE", "ID = 1", database.connection);
    EXPECT_EQ(get.Get_FieldValue(database.session, "MASS", "SAMPLE", "ID = 1"), "1234,5");
    EXPECT_EQ(get.Get_FieldValueN(database.session, "MASS", "SAMPLE", "ID = 1"), 1234.5);
    EXPECT_EQ(get.Get_FieldValue(database.session, "NAME", "SAMPLE", "ID = 1"), "Tanne d'or");
    EXPECT_EQ(get.Get_FieldValue(database.session, "ACTIVE", "SAMPLE", "ID = 1"), "Falsch");
}

} // namespace
} // namespace tamarok
