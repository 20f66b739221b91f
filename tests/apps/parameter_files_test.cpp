#include <fstream>
#include <iterator>

#include "apps/program.h"
#include "support/other_account.h"

// Parameter files and the action protocol as a script reaches them.
namespace tamarok::test {
namespace {

namespace fs = std::filesystem;

class ParameterFileCalls : public testing::Test {
protected:
    std::string path(const std::string& name = "params.ini") const { return folder / name; }
    void make(std::string_view bytes) const { std::ofstream{folder / "params.ini", std::ios::binary} << bytes; }
    std::string content(const std::string& name = "params.ini") const { return folder.contents().at(name); }

    static std::string request(const std::string& operation, const std::string& arguments)
    {
        return R"({"class":"Comm_Act","op":")" + operation + R"(","args":[)" + arguments + "]}";
    }
    static std::string quoted(const std::string& text) { return '"' + text + '"'; }

    static std::string answer(const std::string& result, const std::string& arguments)
    {
        return R"({"result":)" + result + R"(,"args":[)" + arguments + R"(],"messages":[],"sql":[]})";
    }

    ScratchFolder folder;
};

TEST_F(ParameterFileCalls, AScriptReadsAndWritesParameters)
{
    Program host{{"call", "--locale", "de-AT"}};
    const std::string file = quoted(path());
    EXPECT_EQ(host.ask(request("GetParam", R"("A"," d ",)" + file)), answer(R"("d")", R"("A"," d ",)" + file));
    EXPECT_EQ(host.ask(request("SaveParam", R"("A",12,)" + file)), answer("null", R"("A",12,)" + file));
    EXPECT_EQ(content(), "A = 12\r\n\r\n");
    EXPECT_EQ(host.ask(request("SaveParam", R"("a","ä€",)" + file)), answer("null", R"("a","ä€",)" + file));
    EXPECT_EQ(host.ask(request("getparam", R"("A","",)" + file)), answer(R"("ä€")", R"("A","",)" + file));
}

TEST_F(ParameterFileCalls, ArraysComeBackWithTheirOwnLowerBound)
{
    Program host{{"call"}};
    const std::string file = quoted(path());
    make("DATABASENAME = one\nDATABASENAME = two\nPHOTOESFORMAT = png\nA = 1\n");
    EXPECT_EQ(host.ask(request("GetExistingParam", R"("DATABASENAME",)" + file + ",[]")),
              answer(R"("")", R"("DATABASENAME",)" + file + R"(,["one","two"])"));
    EXPECT_EQ(host.ask(request("GetExistingParam", R"("A",)" + file + R"(,{"$array":["x","y"],"base":1})")),
              answer(R"("1")", R"("A",)" + file + R"(,["1"])"));
    const std::string rest = ',' + quoted(folder.path().string()) + R"(,"params.ini")";
    EXPECT_EQ(host.ask(request("GetPhotoesFormats", "[]" + rest)),
              answer("null", R"({"$array":["jpg","gif","bmp","png"],"base":1})" + rest));
    const std::string none = host.ask(request("GetExistingParam", R"("B",)" + file + R"(,["x"])"));
    EXPECT_NE(none.find(R"("number":-2147220989,"source":"Comm_Act.GetExistingParam","description":"Key B not found)"),
              std::string::npos)
        << none;
    EXPECT_NE(none.find(R"(,[""]])"), std::string::npos) << none;
    const std::string scalar = host.ask(request("GetExistingParam", R"("B",)" + file + R"(,"x")"));
    EXPECT_NE(scalar.find(R"("number":13)"), std::string::npos) << scalar;
}

TEST_F(ParameterFileCalls, ASyntaxErrorLeavesTheHostsNumberOpen)
{
    Program host{{"call"}};
    make("A = 1\njunk\n");
    const std::string get = request("GetParam", R"("A","d",)" + quoted(path()));
    const std::string first = host.ask(get);
    EXPECT_NE(first.find(R"("number":-2147220991,"source":"Comm_Act.GetParam","description":"Syntax error in file )" +
                         path() + R"( at line 2")"),
              std::string::npos)
        << first;
    EXPECT_NE(host.ask(get).find(R"("number":55)"), std::string::npos);
    EXPECT_NE(host.ask(get).find(R"("number":55)"), std::string::npos);
    // Another process has its own numbers.
    EXPECT_NE(run({"call"}, get + "\n").output.find("-2147220991"), std::string::npos);
}

TEST_F(ParameterFileCalls, TheProtocolFollowsLocaleAndClockOfTheHost)
{
    Program host{{"call", "--locale", "de-AT"}};
    const std::string arguments = R"("M","N","Ä","U",)" + quoted(path("protocol.txt"));
    host.ask(R"({"now":"2024-03-05T10:15:00"})");
    EXPECT_EQ(host.ask(request("WriteReport", arguments)), answer("null", arguments));
    EXPECT_EQ(content("protocol.txt"), "M; N; Ä; 05.03.2024; 10:15:00; U  \r\n");
    const std::string missing = R"("M","N","A","U",)" + quoted(path("no/protocol.txt"));
    EXPECT_EQ(host.ask(request("WriteReport", missing)),
              R"({"result":null,"args":[)" + missing + R"(],"messages":[{"text":"Path not found: ')" +
                  path("no/protocol.txt") +
                  R"(': No such file or directory","flags":16,"title":"Tamarok"}],"sql":[]})");
}

TEST_F(ParameterFileCalls, ALimitOfTheFileSizeDoesNotEndTheHost)
{
    make("A = 1\n% " + std::string(5000, 'x') + "\n");
    const std::string save = request("SaveParam", R"("A","2",)" + quoted(path()));
    const std::string get = request("GetParam", R"("A","",)" + quoted(path()));
    const Outcome outcome =
        runProgram("/bin/bash", {"-c", "ulimit -f 4; exec " TAMAROK_PROGRAM " call"}, save + "\n" + get + "\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.output.find(R"("number":61)"), std::string::npos) << outcome.output;
    EXPECT_NE(outcome.output.find(R"("result":"1")"), std::string::npos) << outcome.output;
}

TEST_F(ParameterFileCalls, AnotherAccountReadsWhatItMayNotWrite)
{
    if (!canChangeAccount()) GTEST_SKIP() << "root may write every file";
    fs::permissions(folder.path(), fs::perms{0755});
    make("A = 1\n");
    fs::permissions(path(), fs::perms{0644});
    const std::string input = request("GetParam", R"("A","",)" + quoted(path())) + "\n" +
                              request("SaveParam", R"("A","2",)" + quoted(path())) + "\n";
    const std::string output = asOtherAccount([&] { return run({"call"}, input).output; });
    EXPECT_NE(output.find(R"("result":"1")"), std::string::npos) << output;
    EXPECT_NE(output.find(R"("number":70,"source":"Comm_Act.SaveParam")"), std::string::npos) << output;
    EXPECT_EQ(content(), "A = 1\n");
}

} // namespace
} // namespace tamarok::test
