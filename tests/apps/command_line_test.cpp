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
                                                  {"copy", "--help"},
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
                                                  {"list", "LOG", "0"},
                                                  {"list", "LOG", "40000"},
                                                  {"list", "LOG", "1", "--lang", "DANISH"},
                                                  {"list", "LOG", "1", "--ver", "Z"},
                                                  {"list", "LOG", "1", "--format", "xml"},
                                                  {"list", "LOG", "1", "--limit", "-1"},
                                                  {"init", "x.db", "--logs", "many"},
                                                  {"init", "x.db", "--logs", "-1"},
                                                  {"init", "x.db", "--logs", "100000001"},
                                                  {"init", "x.db", "--seed", "-1"},
                                                  {"init", "x.db", "--seed", "18446744073709551616"},
                                                  {"init", "x.db", "--seed", ""},
                                                  {"init", "x.db", "--odbc", "DSN=x"},
                                                  {"init", "--odbc", "DSN=x", "--force"},
                                                  {"copy"},
                                                  {"copy", "--db", "x.db"},
                                                  {"copy", "--odbc", "DSN=x"},
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

struct Misspelt {
    std::vector<std::string> words;
    std::string message; ///< after "tamarok: "
};

TEST(CommandLine, AnUnknownWordIsNamedWithTheNearestKnownOne)
{
    const std::vector<Misspelt> cases{
        {{"lst", "LOG"}, "unknown command 'lst'; did you mean 'list'?"},
        {{"frobnicate"}, "unknown command 'frobnicate'"},
        {{"--vershon"}, "unknown option '--vershon'; did you mean '--version'?"},
        {{"list", "LOG", "1", "--limt", "3"}, "unknown option '--limt'; did you mean '--limit'?"},
        {{"list", "LOG", "1", "--frobnicate"}, "unknown option '--frobnicate'"},
        {{"call", "extra"}, "unexpected 'extra'"},
        {{"list", "LOG", "1", "--format", "jsn"}, "--format: 'jsn' is none of table, csv, json; did you mean 'json'?"},
        {{"list", "LOG", "1", "--format", "xml"}, "--format: 'xml' is none of table, csv, json"},
    };
    for (const Misspelt& each : cases) {
        const Outcome outcome = run(each.words);
        EXPECT_EQ(outcome.status, 2) << each.message;
        EXPECT_EQ(outcome.errors, "tamarok: " + each.message + " (see tamarok --help)\n");
    }
    EXPECT_EQ(run({"select", "HOLZART_GRIT"}).errors,
              "tamarok: No base selection has the key 'HOLZART_GRIT'; did you mean 'HOLZART_GRID'?\n");
    EXPECT_EQ(run({"select", "holzart_grid"}).errors,
              "tamarok: No base selection has the key 'holzart_grid'; did you mean 'HOLZART_GRID'?\n");
}

TEST(CommandLine, AnUnknownListTypeIsNamedWithTheNearestKnownOne)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 5);
    for (const std::string command : {"list", "sql"}) {
        const Outcome outcome = run({command, "LOGG", "1", "--db", file});
        EXPECT_EQ(outcome.status, 2) << command;
        EXPECT_EQ(outcome.errors, "tamarok: there is no list type 'LOGG'; did you mean 'LOG'?\n") << command;
    }
    EXPECT_EQ(run({"columns", "vertag", "--db", file}).errors,
              "tamarok: there is no list type 'vertag'; did you mean 'VERTRAG'?\n");
    EXPECT_EQ(run({"columns", "nothing", "--db", file}).errors, "tamarok: there is no list type 'nothing'\n");
}

TEST(CommandLine, FormatsHaveNoCase)
{
    const Outcome lower = run({"list", "LOG", "1", "--format", "CSV", "--db", "/nonexistent/x.db"});
    EXPECT_EQ(lower.status, 1) << lower.errors; // the option is read, the database is not there
}

TEST(CommandLine, ControlCharactersOfAPathAreShownEscaped)
{
    const Outcome outcome = run({"list", "LOG", "1", "--db", "/nonexistent/\x1b[31mred\x7f"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors.find('\x1b'), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("\\x1B[31mred\\x7F"), std::string::npos) << outcome.errors;
}

TEST(CommandLine, TheHelpOffersNothingThatAlwaysFails)
{
    const bool offered = run({"call", "--help"}).output.find("--odbc") != std::string::npos;
    const Outcome outcome = run({"call", "--odbc", "DSN=x"});
    const bool missing = outcome.errors.find("There is no provider") != std::string::npos;
    EXPECT_NE(offered, missing) << outcome.errors;
}

TEST(CommandLine, PasswordsOfConnectionTextsAreNotShown)
{
    for (const char* const text : {"DSN=no_such_source;UID=u;PWD=hidden-word", "DSN=x;PWD=hidden-word;hidden-word"}) {
        const Outcome call = run({"call"}, R"({"connect":"db2","odbc":")" + std::string{text} + "\"}");
        EXPECT_NE(call.output.find("\"error\""), std::string::npos) << call.output;
        EXPECT_EQ(call.output.find("hidden-word"), std::string::npos) << call.output;
        const Outcome list = run({"list", "LOG", "1", "--odbc", text});
        EXPECT_EQ(list.status, 1);
        EXPECT_EQ(list.errors.find("hidden-word"), std::string::npos) << list.errors;
    }
}

} // namespace
} // namespace tamarok::test
