#include <limits>

#include "backend_fixture.h"

#include "tamarok/date.h"

namespace tamarok::ado::backend {

class BackendValues : public BackendTest {
protected:
    /// The type of a column as this server tells it.
    OtherType expected(const auto& standard) const
    {
        for (const OtherType& other : context->otherTypes())
            if (other.column == standard.column) return other;
        return {standard.column, standard.type, standard.size};
    }

    /// Writes a literal into a column and reads it back.
    Variant roundTrip(std::string_view column, std::string_view literal)
    {
        connection->Execute("DELETE FROM " + table);
        connection->Execute(insert(column, literal));
        return scalar(select(column));
    }
};

struct ColumnCase {
    const char* column;
    DataType type;
    std::int32_t size;
};

constexpr ColumnCase standardColumns[]{
    {"ID", DataType::Integer, 4},
    {"SHORT_TEXT", DataType::VarWChar, 40},
    {"PLAIN_TEXT", DataType::VarChar, 20},
    {"FIXED_TEXT", DataType::WChar, 5},
    {"LONG_TEXT", DataType::LongVarWChar, 1073741823},
    {"AMOUNT", DataType::Double, 8},
    {"WHOLE", DataType::Integer, 4},
    {"SMALL", DataType::SmallInt, 2},
    {"TINY", DataType::UnsignedTinyInt, 1},
    {"BIG", DataType::BigInt, 8},
    {"FELLED", DataType::DBTimeStamp, 16},
    {"ACTIVE", DataType::Boolean, 2},
};

TEST_F(BackendValues, TypesAndDefinedSizes)
{
    for (const char* rest : {"", "WHERE 1 = 0"}) {
        for (const ColumnCase& standard : standardColumns) {
            const OtherType wanted = expected(standard);
            const auto rows = open(select(wanted.column, rest));
            const Field& field = rows->Fields().Item(0);
            expectName(field.Name(), wanted.column);
            EXPECT_EQ(field.Type(), wanted.type) << wanted.column;
            EXPECT_EQ(field.DefinedSize(), wanted.size) << wanted.column;
        }
    }
}

TEST_F(BackendValues, TypesOfTheFirstNoRows)
{
    fill(1);
    const auto rows = open("SELECT " + words.topNone + "SHORT_TEXT FROM " + table + words.limitNone);
    EXPECT_TRUE(rows->AtEOF());
    EXPECT_EQ(rows->Fields().Item("SHORT_TEXT").Type(), DataType::VarWChar);
    EXPECT_EQ(rows->Fields().Item("SHORT_TEXT").DefinedSize(), 40);
}

TEST_F(BackendValues, BaseNamesOfColumnsAndExpressions)
{
    const auto rows = open(select("SHORT_TEXT AS LABEL, WHOLE + 1 AS NEXT_WHOLE, T.AMOUNT", "AS T"));
    const FieldCollection& fields = rows->Fields();
    expectName(fields.Item(0).Name(), "LABEL");
    expectName(fields.Item(0).BASECOLUMNNAME(), "SHORT_TEXT");
    expectName(fields.Item(0).BASETABLENAME(), table);
    expectName(fields.Item(1).Name(), "NEXT_WHOLE");
    EXPECT_EQ(fields.Item(1).BASECOLUMNNAME(), "");
    EXPECT_EQ(fields.Item(1).BASETABLENAME(), "");
    expectName(fields.Item(2).BASECOLUMNNAME(), "AMOUNT");
}

TEST_F(BackendValues, NullInEveryColumn)
{
    connection->Execute(insert("WHOLE", "1"));
    for (const ColumnCase& column : standardColumns) {
        const std::string_view name{column.column};
        if (name == "ID" || name == "WHOLE") continue;
        EXPECT_EQ(scalar(select(name)), Variant{Null{}}) << name;
    }
}

TEST_F(BackendValues, NumbersKeepTypeAndValue)
{
    EXPECT_EQ(roundTrip("WHOLE", "-2147483648"), Variant{std::numeric_limits<std::int32_t>::min()});
    EXPECT_EQ(roundTrip("WHOLE", "2147483647"), Variant{std::numeric_limits<std::int32_t>::max()});
    EXPECT_EQ(roundTrip("SMALL", "-32768"), Variant{std::numeric_limits<std::int16_t>::min()});
    EXPECT_EQ(roundTrip("TINY", "255"), Variant{std::int16_t{255}});
    EXPECT_EQ(roundTrip("BIG", "9223372036854775807"), Variant{std::numeric_limits<std::int64_t>::max()});
    if (!quirk("inexact_doubles")) {
        EXPECT_EQ(roundTrip("AMOUNT", "1234567.123456789"), Variant{1234567.123456789});
    }
    EXPECT_EQ(roundTrip("AMOUNT", "-0.1"), Variant{-0.1});
    EXPECT_EQ(roundTrip("AMOUNT", "3"), Variant{3.0});
}

TEST_F(BackendValues, Booleans)
{
    EXPECT_EQ(roundTrip("ACTIVE", words.yes), Variant{true});
    EXPECT_EQ(roundTrip("ACTIVE", words.no), Variant{false});
    if (!quirk("strict_booleans")) {
        EXPECT_EQ(roundTrip("ACTIVE", "5"), Variant{true});
    }
}

TEST_F(BackendValues, Dates)
{
    EXPECT_EQ(roundTrip("FELLED", context->dateLiteral("2024-03-05 00:00:00")), Variant{makeDate(2024, 3, 5)});
    EXPECT_EQ(roundTrip("FELLED", context->dateLiteral("2024-02-29 23:59:58")),
              Variant{fromCivil({2024, 2, 29, 23, 59, 58, 0})});
    EXPECT_EQ(roundTrip("FELLED", context->dateLiteral("1899-12-30 00:00:00")), Variant{Date{0.0}});
    EXPECT_EQ(roundTrip("FELLED", context->dateLiteral("1753-01-01 00:00:00")), Variant{makeDate(1753, 1, 1)});
}

TEST_F(BackendValues, Texts)
{
    const auto text = [this](const std::string& literal) {
        return roundTrip("SHORT_TEXT", words.national + "'" + literal + "'");
    };
    EXPECT_EQ(text(""), Variant{""});
    EXPECT_EQ(text("äöüÄÖÜß Žluťoučký"), Variant{"äöüÄÖÜß Žluťoučký"});
    if (!quirk("no_wide_planes")) {
        EXPECT_EQ(text("🌲 fir 🌳"), Variant{"🌲 fir 🌳"});
    }
    EXPECT_EQ(text("O''Neill \"x\" [y]"), Variant{"O'Neill \"x\" [y]"});
    EXPECT_EQ(text("two\r\nlines"), Variant{"two\r\nlines"});
    EXPECT_EQ(text(" blanks  "), Variant{" blanks  "});
    if (!quirk("no_padding")) {
        EXPECT_EQ(roundTrip("FIXED_TEXT", words.national + "'ab'"), Variant{"ab   "});
    }
}

TEST_F(BackendValues, TextOfTenThousandCharacters)
{
    std::string text;
    while (text.size() < 20000)
        text += "ä";
    EXPECT_EQ(roundTrip("LONG_TEXT", words.national + "'" + text + "'"), Variant{text});
}

TEST_F(BackendValues, TextOfExactlyTheColumnsWidth)
{
    std::string text;
    for (int character = 0; character < 40; ++character)
        text += "ü";
    EXPECT_EQ(roundTrip("SHORT_TEXT", words.national + "'" + text + "'"), Variant{text});
}

TEST_F(BackendValues, TextWiderThanTheColumnIsRefused)
{
    if (const auto reason = quirk("lenient_values")) GTEST_SKIP() << *reason;
    EXPECT_EQ(errorNumber([&] { connection->Execute(insert("SHORT_TEXT", "'" + std::string(41, 'x') + "'")); }),
              errors::statementRefused);
    EXPECT_EQ(count(), 0);
}

TEST_F(BackendValues, ParametersOfAText)
{
    Command command;
    command.ActiveConnection = connection;
    command.CommandText = insert("SHORT_TEXT, WHOLE, AMOUNT, FELLED, ACTIVE, BIG, LONG_TEXT", "?, ?, ?, ?, ?, ?, ?");
    const auto append = [&](DataType type, Variant value, std::int32_t size = 0) {
        command.Parameters().push_back(
            command.CreateParameter("", type, ParameterDirection::Input, size, std::move(value)));
    };
    append(DataType::VarWChar, tree(), 40);
    append(DataType::Integer, 7);
    append(DataType::Double, 1.25);
    append(DataType::DBTimeStamp, makeDate(2024, 3, 5));
    append(DataType::Boolean, true);
    append(DataType::BigInt, std::int64_t{5000000000});
    append(DataType::LongVarWChar, Null{});
    EXPECT_EQ(command.Execute(), 1);
    const auto rows = open(select("SHORT_TEXT, WHOLE, AMOUNT, FELLED, ACTIVE, BIG, LONG_TEXT"));
    EXPECT_EQ(rows->GetRows().elements(),
              (std::vector<Variant>{tree(), 7, 1.25, makeDate(2024, 3, 5), true, std::int64_t{5000000000}, Null{}}));
}

TEST_F(BackendValues, TextWithAZeroCharacter)
{
    using namespace std::string_literals;
    if (const auto reason = quirk("no_zero_character")) GTEST_SKIP() << *reason;
    Command command;
    command.ActiveConnection = connection;
    command.CommandText = insert("SHORT_TEXT", "?");
    command.Parameters() = {
        command.CreateParameter("", DataType::VarWChar, ParameterDirection::Input, 40, "before\0behind"s)};
    command.Execute();
    EXPECT_EQ(scalar(select("SHORT_TEXT")), Variant{"before\0behind"s});
}

TEST_F(BackendValues, RepeatedCommandTakesItsNewValues)
{
    Command command;
    command.ActiveConnection = connection;
    command.CommandText = insert("WHOLE", "?");
    command.Parameters().push_back(command.CreateParameter("", DataType::Integer));
    for (int row = 1; row <= 100; ++row) {
        command.Parameters()[0].value = row;
        command.Execute();
    }
    expectCount(scalar(select("SUM(WHOLE)")), 5050);
}

} // namespace tamarok::ado::backend
