#include "tamarok_embedded/connect.h"
#include "values/machines.h"

#include "tamarok/comm_conv.h"

namespace tamarok {
namespace {

using test::errorNumber;

class USDate : public ::testing::Test {
protected:
    USDate() : connection{embedded::connectInMemory()}
    {
        connection->Execute("CREATE TABLE OPTIONEN (PROPERTY_ID NVARCHAR(30), NUMBER_VALUE INT)");
    }
    void option(const char* value)
    {
        connection->Execute("DELETE FROM OPTIONEN");
        connection->Execute(std::string{"INSERT INTO OPTIONEN VALUES ('USDATE', "} + value + ")");
    }

    ado::ConnectionRef connection;
    Comm_Conv conv;
};

TEST_F(USDate, TheOptionDecidesOnEachMachine)
{
    test::onEachMachine([&](const test::Machine& machine) {
        connection->Execute("DELETE FROM OPTIONEN");
        EXPECT_EQ(conv.USDate(machine.fifthOfMarch, connection), "5/3/2024") << "no row: the day first";
        const std::pair<const char*, const char*> rows[] = {
            {"0", "5/3/2024"}, {"NULL", "5/3/2024"}, {"1", "3/5/2024"}, {"2", ""}, {"-1", ""}};
        for (const auto& [value, result] : rows) {
            option(value);
            EXPECT_EQ(conv.USDate(machine.fifthOfMarch, connection), result) << value;
            EXPECT_EQ(conv.USDate(std::string{machine.fifthOfMarch} + " 10:30", connection), result) << value;
            EXPECT_EQ(errorNumber([&] { conv.USDate("abc", connection); }), errors::typeMismatch) << value;
            EXPECT_EQ(errorNumber([&] { conv.USDate("", connection); }), errors::typeMismatch) << value;
        }
    });
}

TEST_F(USDate, OneStatementAndThenTheText)
{
    const PlatformScope scope{test::platformFor("de-AT")};
    std::vector<std::string> sent;
    connection->listen([&](std::string_view statement) { sent.emplace_back(statement); });
    conv.USDate("5. März 2024", connection);
    EXPECT_EQ(sent, std::vector<std::string>{"SELECT NUMBER_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'USDATE'"});
    EXPECT_EQ(errorNumber([&] { conv.USDate("5.3.2024", nullptr); }), errors::objectNotSet);
    connection->Execute("DROP TABLE OPTIONEN");
    EXPECT_EQ(errorNumber([&] { conv.USDate("5.3.2024", connection); }), errors::statementRefused);
    connection->listen({});
    connection->Close();
    EXPECT_EQ(errorNumber([&] { conv.USDate("5.3.2024", connection); }), errors::connectionClosed);
}

} // namespace
} // namespace tamarok
