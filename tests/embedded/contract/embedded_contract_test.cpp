#include <gtest/gtest.h>
#include <utility>

#include "embedded/contract/contract.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/ado.h"
#include "tamarok/date.h"
#include "tamarok/error.h"

/// answers.txt, run on the embedded database.
namespace tamarok::embedded::contract {
namespace {

std::string spelled(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Null: return "NULL";
    case Variant::Kind::Boolean: return value.asBoolean() ? "true" : "false";
    case Variant::Kind::Integer: return std::to_string(value.asInteger());
    case Variant::Kind::Long: return std::to_string(value.asLong());
    case Variant::Kind::LongLong: return std::to_string(value.asLongLong());
    case Variant::Kind::Double: return contract::spelled(value.asDouble());
    case Variant::Kind::Date: return contract::spelled(toCivil(value.asDate()));
    case Variant::Kind::String: return contract::spelled(std::string_view{value.asString()});
    default: return "a value of an unexpected kind";
    }
}

/// All rows of a statement, or the number of its failure. No message may name what only the engine knows.
std::string answer(const ado::ConnectionRef& connection, std::string_view statement)
{
    AnswerText rows;
    try {
        ado::Recordset recordset;
        recordset.Open(statement, connection);
        if (recordset.State() == ado::ObjectState::Closed) return rows.text();
        for (; !recordset.AtEOF(); recordset.MoveNext()) {
            rows.beginRow();
            for (std::int32_t column = 0; column < recordset.Fields().Count(); ++column)
                rows.add(spelled(recordset.Fields().Item(column).Value()));
        }
        return rows.text();
    } catch (const Error& error) {
        if (error.nativeError == 0) return std::string{"error without number: "} + error.what();
        EXPECT_EQ(error.description.find("tm_"), std::string::npos) << error.description;
        return "error " + std::to_string(error.nativeError);
    }
}

class Contract : public testing::TestWithParam<Block> {};

TEST_P(Contract, HasTheDocumentedAnswers)
{
    const auto connection = connectInMemory();
    for (const std::string& statement : woodStatements())
        connection->Execute(statement);
    ASSERT_FALSE(GetParam().cases.empty());
    for (const Case& row : GetParam().cases) {
        EXPECT_EQ(answer(connection, row.statement), row.answer) << "answers.txt:" << row.line << "\n" << row.statement;
    }
}

/// The name of a block without what a test name must not have.
std::string testName(const testing::TestParamInfo<Block>& info)
{
    std::string name;
    for (const char c : info.param.name) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) name += c;
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Block, Contract, testing::ValuesIn(readBlocks("answers.txt")), testName);

} // namespace
} // namespace tamarok::embedded::contract
