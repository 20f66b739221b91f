#include <gtest/gtest.h>

#include "connection_text.h"
#include "support/errors.h"

namespace tamarok::odbc {

using test::failureOf;

namespace {

std::string driverText(std::string_view text)
{
    return composeDriverText(parseConnectionText(text).properties);
}

struct TextCase {
    const char* given;
    const char* driver;
    const char* shown;
};

constexpr TextCase textCases[]{
    // ODBC style: braces enclose, quotes are part of the value.
    {"DRIVER={FreeTDS};SERVER=host;PORT=1433;UID=u;PWD=p;DATABASE=d",
     "DRIVER=FreeTDS;SERVER=host;PORT=1433;UID=u;PWD=p;DATABASE=d;",
     "DRIVER=FreeTDS;SERVER=host;PORT=1433;UID=u;DATABASE=d;"},
    {"DSN=timber;PWD={a;b}}c\"'d}", "DSN=timber;PWD={a;b}}c\"'d};", "DSN=timber;"},
    {"DSN=timber;PWD='quoted'", "DSN=timber;PWD={'quoted'};", "DSN=timber;"},
    {" Driver = {PostgreSQL Unicode} ; Server = h ;; ", "DRIVER=PostgreSQL Unicode;SERVER=h;",
     "Driver=PostgreSQL Unicode;Server=h;"},
    // ADO style: quotes enclose, names are translated.
    {"Provider=MSOLEDBSQL;Data Source=host;Initial Catalog=d;User ID=u;Password=\"a;b\"\"c\"",
     "SERVER=host;DATABASE=d;UID=u;PWD={a;b\"c};", "Provider=MSOLEDBSQL;Data Source=host;Initial Catalog=d;User ID=u;"},
    {"provider=sqloledb;data source=host,1434;integrated security=SSPI;Persist Security Info=True",
     "SERVER=host;Trusted_Connection=Yes;PORT=1434;",
     "provider=sqloledb;data source={host,1434};integrated security=SSPI;Persist Security Info=True;"},
    {"Provider=MSDASQL;Data Source=timber;User ID=u", "DSN=timber;UID=u;",
     "Provider=MSDASQL;Data Source=timber;User ID=u;"},
    // The vendor's drivers take the port behind a comma.
    {"Driver={ODBC Driver 18 for SQL Server};Server=host,1434",
     "DRIVER=ODBC Driver 18 for SQL Server;SERVER={host,1434};",
     "Driver=ODBC Driver 18 for SQL Server;Server={host,1434};"},
};

} // namespace

TEST(OdbcConnectionText, IsReadInBothStyles)
{
    for (const TextCase& row : textCases) {
        EXPECT_EQ(driverText(row.given), row.driver) << row.given;
        EXPECT_EQ(parseConnectionText(row.given).shownText, row.shown) << row.given;
    }
}

TEST(OdbcConnectionText, BracedValuesSurviveTheRoundTrip)
{
    for (const char* const password : {"a;b", "{", "}", "}}", "{x}", "a=b", "'", "\"", " blank ", "ä€"}) {
        const std::string text = composeDriverText({{"PWD", password}});
        EXPECT_EQ(parseConnectionText(text).password, password);
    }
}

TEST(OdbcConnectionText, FreeTdsKnowsNoDoubledBraces)
{
    EXPECT_EQ(driverText("DRIVER={FreeTDS};PWD={a;b}}c}"), "DRIVER=FreeTDS;PWD={a;b}c};");
    EXPECT_EQ(failureOf([] { driverText("DRIVER={FreeTDS};PWD={a}};c}"); }).number, errors::invalidArgument);
}

TEST(OdbcConnectionText, DateOrder)
{
    EXPECT_EQ(parseConnectionText("DSN=x").dateOrder, DateOrder::Dmy);
    EXPECT_EQ(parseConnectionText("DSN=x;Date Order=mdy").dateOrder, DateOrder::Mdy);
    EXPECT_EQ(driverText("DSN=x;Date Order=mdy"), "DSN=x;");
    EXPECT_EQ(failureOf([] { parseConnectionText("DSN=x;Date Order=secret"); }).number, errors::invalidArgument);
}

TEST(OdbcConnectionText, MistakesAreNamedByTheirPlaceAlone)
{
    for (const char* const text : {"DSN=x;PWD=one;secret", "DSN=x;PWD={secret", "DSN=x;PWD={secret}x",
                                   "Provider=SQLOLEDB;Password='secret", "Provider=SQLOLEDB;Password='secret'x"}) {
        const Error failure = failureOf([text] { parseConnectionText(text); });
        EXPECT_EQ(failure.number, errors::invalidArgument) << text;
        EXPECT_EQ(failure.description.find("secret"), std::string::npos) << failure.description;
        EXPECT_NE(failure.description.find("part "), std::string::npos) << failure.description;
    }
}

} // namespace tamarok::odbc
