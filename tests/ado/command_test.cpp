#include "ado_fixture.h"

#include "tamarok/date.h"

namespace tamarok::ado {

class CommandTest : public AdoTest {
protected:
    CommandTest()
    {
        command.ActiveConnection = connection;
        command.CommandText = "tmk_OPTIONEN_INS";
        command.CommandType = CommandType::StoredProcedure;
        connection->listen([this](std::string_view statement) { told.emplace_back(statement); });
    }

    void append(DataType type, Variant value, std::int32_t size = 0)
    {
        command.Parameters().push_back(command.CreateParameter("", type, ParameterDirection::Input, size, value));
    }

    Command command;
    Log told;
};

TEST_F(CommandTest, RunsAProcedureWithItsParametersInOrder)
{
    database->affectedRows = 1;
    append(DataType::VarChar, "NATWAHRUNG", 30);
    append(DataType::BigInt, std::int64_t{2});
    EXPECT_EQ(command.Execute(), 1);
    EXPECT_EQ(database->log, Log{"execute procedure tmk_OPTIONEN_INS"});
    ASSERT_EQ(database->parameters.size(), 2U);
    EXPECT_EQ(database->parameters[0].value, Variant{"NATWAHRUNG"});
    EXPECT_EQ(database->parameters[1].value, Variant{std::int64_t{2}});
    EXPECT_EQ(told, Log{"EXEC tmk_OPTIONEN_INS 'NATWAHRUNG', 2"});
}

TEST_F(CommandTest, RunsATextAsItStands)
{
    command.CommandType = CommandType::Text;
    command.CommandText = "UPDATE SPECIES SET PRICE = ? WHERE ID = ?";
    append(DataType::Double, 1.5);
    append(DataType::Integer, 2);
    connection->CommandTimeout(7);
    command.Execute();
    EXPECT_EQ(database->log, Log{"execute " + command.CommandText});
    EXPECT_EQ(told, Log{command.CommandText});
    EXPECT_EQ(database->timeoutSeconds, 7);
}

TEST_F(CommandTest, NeedsAnOpenConnection)
{
    command.ActiveConnection = nullptr;
    EXPECT_EQ(errorNumber([&] { command.Execute(); }), errors::connectionClosed);
    command.ActiveConnection = connection;
    connection->Close();
    EXPECT_EQ(errorNumber([&] { command.Execute(); }), errors::connectionClosed);
}

TEST_F(CommandTest, CutsTextsToTheirSizeInCharacters)
{
    append(DataType::VarChar, "äöüß€😀x", 6);
    append(DataType::VarChar, "äöüß€😀", 6);
    append(DataType::VarChar, "no limit", 0);
    append(DataType::LongVarWChar, "abc", 2);
    command.Execute();
    EXPECT_EQ(told, Log{"EXEC tmk_OPTIONEN_INS 'äöüß€😀', 'äöüß€😀', 'no limit', 'ab'"});
    EXPECT_EQ(database->parameters[0].value, Variant{"äöüß€😀"});
    EXPECT_EQ(command.Parameters()[0].value, Variant{"äöüß€😀x"}) << "the command's own value stays";
}

TEST_F(CommandTest, ConvertsValuesToTheirParametersType)
{
    append(DataType::BigInt, 2);
    append(DataType::BigInt, 2.5);
    append(DataType::SmallInt, 7.0);
    append(DataType::Integer, std::int64_t{9});
    append(DataType::VarChar, 15, 1);
    append(DataType::VarChar, Variant{});
    append(DataType::Double, true);
    append(DataType::Boolean, 5);
    append(DataType::Variant, 5);
    command.Execute();
    const std::vector<Variant> wanted{std::int64_t{2}, std::int64_t{2}, std::int16_t{7}, 9, "1", Null{}, -1.0, true, 5};
    ASSERT_EQ(database->parameters.size(), wanted.size());
    for (std::size_t index = 0; index < wanted.size(); ++index)
        EXPECT_EQ(database->parameters[index].value, wanted[index]) << "parameter " << index;
}

TEST_F(CommandTest, ValueThatDoesNotFitIsRefusedBeforeAnythingIsSent)
{
    append(DataType::BigInt, 1);
    append(DataType::BigInt, "two");
    const Error failure = failureOf([&] { command.Execute(); });
    EXPECT_EQ(failure.number, errors::typeMismatch);
    EXPECT_NE(failure.description.find("Parameter 2"), std::string::npos) << failure.description;
    command.Parameters()[1].value = 1e10;
    command.Parameters()[1].type = DataType::Integer;
    EXPECT_EQ(errorNumber([&] { command.Execute(); }), errors::overflow);
    EXPECT_TRUE(database->log.empty());
    EXPECT_TRUE(told.empty());
}

TEST_F(CommandTest, OnlyInputParametersAreSupported)
{
    for (const auto direction :
         {ParameterDirection::Output, ParameterDirection::InputOutput, ParameterDirection::ReturnValue}) {
        command.Parameters() = {command.CreateParameter("RESULT", DataType::Integer, direction)};
        const Error failure = failureOf([&] { command.Execute(); });
        EXPECT_EQ(failure.number, errors::readOnlyRecordset);
        EXPECT_NE(failure.description.find("RESULT"), std::string::npos);
    }
    EXPECT_TRUE(database->log.empty());
}

TEST_F(CommandTest, ProviderErrorCarriesTheCall)
{
    database->fail("execute procedure " + command.CommandText, Error{errors::statementRefused, "No such procedure."});
    append(DataType::Integer, 5);
    const Error failure = failureOf([&] { command.Execute(); });
    EXPECT_EQ(failure.statement, "EXEC tmk_OPTIONEN_INS 5");
    EXPECT_EQ(failure.source, "recording database");
}

struct Literal {
    const char* text;
    Variant value;
};

TEST_F(CommandTest, TellsValuesAsLiterals)
{
    const Literal literals[]{
        {"'text'", "text"},
        {"''", ""},
        {"'O''Neill''s'", "O'Neill's"},
        {"'Lärche, ''x'''", "Lärche, 'x'"},
        {"NULL", Null{}},
        {"2", 2},
        {"-2", std::int16_t{-2}},
        {"9007199254740993", std::int64_t{9007199254740993}},
        {"1.5", 1.5},
        {"-0.25", -0.25},
        {"3", 3.0},
        {"1234567.12345679", 1234567.12345679},
        {"1", true},
        {"0", false},
        {"'2024-03-05 00:00:00'", makeDate(2024, 3, 5)},
        {"'0123-01-02 00:00:00'", makeDate(123, 1, 2)},
        {"'2024-03-05 10:15:09'", fromCivil({2024, 3, 5, 10, 15, 9, 0})},
    };
    for (const Literal& literal : literals) {
        command.Parameters().clear();
        append(DataType::Variant, literal.value);
        command.Execute();
        EXPECT_EQ(told.back(), std::string{"EXEC tmk_OPTIONEN_INS "} + literal.text);
    }
    command.Parameters().clear();
    command.Execute();
    EXPECT_EQ(told.back(), "EXEC tmk_OPTIONEN_INS");
}

TEST_F(CommandTest, ObjectsAndArraysAreNoParameterValues)
{
    append(DataType::Variant, VariantArray{});
    EXPECT_EQ(errorNumber([&] { command.Execute(); }), errors::typeMismatch);
    EXPECT_TRUE(database->log.empty());
}

} // namespace tamarok::ado
