#include <string>
#include <vector>

#include "support/errors.h"

#include "tamarok/backend_registry.h"
#include "tamarok/connection_text.h"
#include "tamarok/error.h"

namespace tamarok::ado {
namespace {

/// A back end that records the text it is given and opens nothing.
BackendRegistry::Opener recorder(std::vector<std::string>& texts)
{
    return [&texts](std::string_view text) {
        texts.emplace_back(text);
        return ConnectionRef{};
    };
}

TEST(BackendRegistry, OpensWithTheProviderOfTheText)
{
    std::vector<std::string> first;
    std::vector<std::string> second;
    BackendRegistry registry;
    registry.add("Test.First", recorder(first));
    registry.add("Test.Second", recorder(second));
    registry.open("provider = 'test.second' ;Data Source=x");
    EXPECT_TRUE(first.empty());
    EXPECT_EQ(second, std::vector<std::string>{"provider = 'test.second' ;Data Source=x"});
    registry.open("TEST.FIRST", "DSN=x;PWD={a;b}");
    EXPECT_EQ(first, std::vector<std::string>{"DSN=x;PWD={a;b}"}) << "a text for a given back end is not read";
    EXPECT_EQ(registry.providers(), (std::vector<std::string_view>{"Test.First", "Test.Second"}));
}

/// Number and description of the error that opening `text` fails with.
std::string openFailure(const BackendRegistry& registry, std::string_view text)
{
    const Error error = test::failureOf([&] { registry.open(text); });
    return std::to_string(error.number) + " " + error.description;
}

TEST(BackendRegistry, AnUnknownProviderIsAnErrorThatNamesTheKnownOnes)
{
    std::vector<std::string> texts;
    BackendRegistry registry;
    EXPECT_EQ(openFailure(registry, "Provider=A"), "3706 There is no provider 'A'; known are: none.");
    registry.add("Test.First", recorder(texts));
    registry.add("Test.Second", recorder(texts));
    EXPECT_EQ(openFailure(registry, "Provider=Test;Password=secret"),
              "3706 There is no provider 'Test'; known are: Test.First, Test.Second.");
    EXPECT_EQ(openFailure(registry, "Data Source=x"),
              "3706 The connection text names no provider; known are: Test.First, Test.Second.");
    EXPECT_EQ(openFailure(registry, "Provider"), "5 Connection text: part 1 is not of the form name=value.");
    EXPECT_TRUE(texts.empty());
}

TEST(BackendRegistry, RefusesATakenNameAndAnEmptyEntry)
{
    std::vector<std::string> texts;
    BackendRegistry registry;
    registry.add("Test", recorder(texts));
    EXPECT_THROW(registry.add("TEST", recorder(texts)), Error);
    EXPECT_THROW(registry.add("", recorder(texts)), Error);
    EXPECT_THROW(registry.add("Other", {}), Error);
    EXPECT_EQ(registry.providers().size(), 1U);
}

struct TextCase {
    const char* text;
    std::vector<std::string> expected; ///< name, value, name, value
};

TEST(ConnectionText, IsSplitIntoNamesAndValues)
{
    const std::vector<TextCase> cases{
        {"", {}},
        {" \t\r\n", {}},
        {"A=1", {"A", "1"}},
        {" A = 1 ; B b = two words ; ", {"A", "1", "B b", "two words"}},
        {"A=;B=2", {"A", "", "B", "2"}},
        {"A=\"x;y\";B='it''s'", {"A", "x;y", "B", "it's"}},
        {"A=\"say \"\"yes\"\"\" ", {"A", "say \"yes\""}},
        {"A=' 1 '", {"A", " 1 "}},
        {"A=b=c", {"A", "b=c"}},
    };
    for (const TextCase& row : cases) {
        std::vector<std::string> found;
        for (const ConnectionProperty& property : splitConnectionText(row.text)) {
            found.push_back(property.name);
            found.push_back(property.value);
        }
        EXPECT_EQ(found, row.expected) << row.text;
    }
}

TEST(ConnectionText, RefusesOtherForms)
{
    for (const char* text : {"A", "A=1;B", "A=\"1", "A='1''", "A=\"1\"2"})
        EXPECT_THROW(splitConnectionText(text), Error) << text;
}

TEST(ConnectionText, FindsAPropertyByNameWithoutCase)
{
    EXPECT_EQ(connectionProperty("Data Source=a.db;data source=b.db", "DATA SOURCE"), "b.db");
    EXPECT_EQ(connectionProperty("Data Source=a.db", "Mode"), std::nullopt);
}

TEST(ConnectionText, AValueThatIsQuotedIsReadBackUnchanged)
{
    for (const char* value : {"a.db", "my file.db", " a ", "a;b", "it's", "\"q\"", "=x", ""})
        EXPECT_EQ(connectionProperty("A=1;F=" + connectionValue(value) + ";B=2", "F"), value);
    EXPECT_EQ(connectionValue("my file.db"), "my file.db");
    EXPECT_EQ(connectionValue("a;\"b\""), "\"a;\"\"b\"\"\"");
}

} // namespace
} // namespace tamarok::ado
