#include <algorithm>

#include "apps/program.h"

namespace tamarok::test {
namespace {

std::size_t lines(const std::string& text)
{
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

TEST(CommandLine, HelpIsThereForTheProgramAndEachCommand)
{
    for (const std::vector<std::string>& words : {std::vector<std::string>{"--help"},
                                                  {"init", "--help"},
                                                  {"day", "--help"},
                                                  {"list", "--help"},
                                                  {"sql", "--help"},
                                                  {"columns", "--help"},
                                                  {"select", "--help"},
                                                  {"volume", "--help"},
                                                  {"call", "--help"}}) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 0) << words.front();
        EXPECT_NE(outcome.output.find("Example"), std::string::npos) << words.front();
        EXPECT_EQ(outcome.errors, "") << words.front();
    }
}

TEST(CommandLine, TellsItsVersion)
{
    const Outcome outcome = run({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "tamarok 2.0\n");
}

TEST(CommandLine, WrongUsageIsStatus2AndOneLine)
{
    for (const std::vector<std::string>& words : {std::vector<std::string>{},
                                                  {"nothing"},
                                                  {"init"},
                                                  {"list"},
                                                  {"list", "LOG"},
                                                  {"list", "LOG", "one"},
                                                  {"list", "LOG", "40000"},
                                                  {"list", "LOG", "1", "--ver", "Z"},
                                                  {"list", "LOG", "1", "--format", "xml"},
                                                  {"list", "LOG", "1", "--limit", "-1"},
                                                  {"init", "x.db", "--logs", "many"},
                                                  {"init", "x.db", "--logs", "-1"},
                                                  {"init", "x.db", "--logs", "100000001"},
                                                  {"init", "x.db", "--seed", "-1"},
                                                  {"init", "x.db", "--seed", "18446744073709551616"},
                                                  {"init", "x.db", "--seed", ""},
                                                  {"columns"},
                                                  {"call", "--db", "a", "--odbc", "b"},
                                                  {"day", "--nothing"}}) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 2) << (words.empty() ? "" : words.back());
        EXPECT_EQ(outcome.output, "");
        EXPECT_TRUE(outcome.errors.starts_with("tamarok: ")) << outcome.errors;
        EXPECT_EQ(lines(outcome.errors), 1U) << outcome.errors;
    }
}

TEST(CommandLine, AFailureIsStatus1AndOneLine)
{
    for (const std::vector<std::string>& words : {std::vector<std::string>{"day", "--db", "/nonexistent/x.db"},
                                                  {"list", "LOG", "1", "--db", "/nonexistent/x.db"},
                                                  {"call", "--db", "/nonexistent/x.db"},
                                                  {"call", "--odbc", "DSN=x"},
                                                  {"call", "--locale", "xx-YY"},
                                                  {"init", "/nonexistent/x.db", "--logs", "1"}}) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 1) << words.front();
        EXPECT_TRUE(outcome.errors.starts_with("tamarok: ")) << outcome.errors;
        EXPECT_EQ(lines(outcome.errors), 1U) << outcome.errors;
    }
}

} // namespace
} // namespace tamarok::test
