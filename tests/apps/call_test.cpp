#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "apps/program.h"

namespace tamarok::test {
namespace {

struct Exchange {
    std::size_t line = 0;
    std::string request;
    std::string answer;
    bool prefix = false; ///< only the beginning is compared: the rest is the library's own wording
};

/// Reads a file of lines "> request" and "< answer", or "<~ beginning of the answer"; "#" begins a comment.
std::vector<Exchange> readConversation(const std::string& name)
{
    std::ifstream file{std::string{TAMAROK_CONVERSATIONS} + "/" + name};
    std::vector<Exchange> exchanges;
    std::size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.starts_with("> ")) exchanges.push_back({number, line.substr(2), {}, false});
        if (line.starts_with("< ")) exchanges.back().answer = line.substr(2);
        if (line.starts_with("<~ ")) {
            exchanges.back().answer = line.substr(3);
            exchanges.back().prefix = true;
        }
    }
    return exchanges;
}

/// Sends the requests of a file and compares the answers.
/// @param count  number of requests in the file, so that none is passed over
void hold(Program& host, const std::string& name, std::size_t count)
{
    const auto exchanges = readConversation(name);
    ASSERT_EQ(exchanges.size(), count);
    for (const Exchange& exchange : exchanges) {
        std::string answer = host.ask(exchange.request);
        if (exchange.prefix) answer.resize(std::min(answer.size(), exchange.answer.size()));
        EXPECT_EQ(answer, exchange.answer) << name << ":" << exchange.line;
    }
    const Outcome end = host.finish();
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.errors, "");
}

TEST(Call, ConversationWithoutDatabase)
{
    Program host{{"call", "--locale", "de-AT"}};
    hold(host, "values_and_objects.txt", 154);
}

TEST(Call, ConversationAboutControls)
{
    Program host{{"call", "--locale", "de-AT"}};
    hold(host, "controls.txt", 124);
}

TEST(Call, ConversationWithDatabase)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 20);
    Program host{{"call", "--db", file, "--locale", "de-AT"}};
    hold(host, "database.txt", 65);
}

TEST(Call, ConversationAboutLists)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 20);
    Program host{{"call", "--db", file, "--locale", "de-AT"}};
    hold(host, "lists.txt", 47);
}

TEST(Call, ConversationAboutDialogs)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 20);
    Program host{{"call", "--db", file, "--locale", "de-AT"}};
    hold(host, "dialogs.txt", 46);
}

TEST(Call, AQueryReturnsAtMost100000RowsUnlessItSaysOtherwise)
{
    const ScratchFolder folder;
    Program host{{"call", "--db", makeDatabase(folder, 20)}};
    const std::string query = R"("query":"SELECT 7 AS N FROM LOGS A, LOGS B, LOGS C, LOGS D WHERE A.ID_LOG <= 13")";
    const std::string few = host.ask("{" + query + "}");  // of 104,000
    EXPECT_EQ(std::ranges::count(few, '7'), 100'000 + 1); // one stands in the statement
    EXPECT_NE(few.find(R"(,"truncated":true})"), std::string::npos);
    const std::string all = host.ask("{" + query + R"(,"limit":104000})");
    EXPECT_EQ(std::ranges::count(all, '7'), 104'000 + 1);
    EXPECT_EQ(all.find("truncated"), std::string::npos);
}

TEST(Call, FurtherConnectionsAreReachedByName)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 5);
    Program host{{"call"}};
    EXPECT_EQ(host.ask(R"({"connect":"db2","db":")" + file + R"("})"),
              R"({"result":{"$ref":"db2"},"args":[],"messages":[],"sql":[]})");
    EXPECT_EQ(host.ask(R"({"query":"SELECT COUNT(*) AS N FROM LOGS","on":"db2"})"),
              R"({"result":{"columns":["N"],"rows":[[5]]},"args":[],"messages":[],)"
              R"("sql":["SELECT COUNT(*) AS N FROM LOGS"]})");
    const std::string missing = host.ask(R"({"connect":"db3","db":"/nonexistent/x.db"})");
    EXPECT_NE(missing.find("/nonexistent/x.db"), std::string::npos) << missing;
    EXPECT_NE(missing.find("\"error\""), std::string::npos) << missing;
}

TEST(Call, ConversationAboutLookups)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 20);
    Program host{{"call", "--db", file, "--locale", "de-AT"}};
    hold(host, "lookup.txt", 17);
}

TEST(Call, DescribeListsClassesWithSlotsAndParameters)
{
    const Outcome outcome = run({"call"}, "{\"describe\":true}\n");
    EXPECT_NE(outcome.output.find(R"({"slot":24,"name":"CorrectStrSelect","kind":"method","parameters":)"
                                  R"([{"name":"Typ","type":"String","byref":false,"optional":false})"),
              std::string::npos);
    for (const std::string_view name :
         {"C_Version", "Comm_CSel", "Comm_Get", "Comm_Set", "Comm_SQL", "LocService", "mComm"}) {
        EXPECT_NE(outcome.output.find("{\"name\":\"" + std::string{name} + "\""), std::string::npos) << name;
    }
}

std::string repeated(std::string_view before, char character, std::size_t count)
{
    std::string text{before};
    text.append(count, character);
    return text;
}

std::vector<std::string> longLines()
{
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '\n') everyByte += static_cast<char>(byte);
    }
    std::vector<std::string> lines{everyByte};
    lines.push_back(repeated("", 'x', 1'000'000));
    lines.push_back(repeated("{\"exec\":\"", '(', 1'000'000));
    lines.push_back(repeated("", '[', 100'000));
    lines.push_back(repeated(repeated("{\"id\":", '[', 100'000), ']', 100'000) + "}");
    return lines;
}

/// Lines that are no request.
std::vector<std::string> brokenLines()
{
    const std::string call = R"({"class":"Comm_CSel","op":"InsertToStr","args":[)";
    std::vector<std::string> lines = longLines();
    for (const char* line : {
             "",
             "   ",
             "{",
             R"({"class":"C_Version","op":)",
             R"({"class":"C_Version","op":"DLL_Version")",
             "[]",
             R"([{"describe":true}])",
             "12",
             "\"text\"",
             "null",
             "{}{}",
             "{} trailing",
             "{'class':'C_Version'}",
             "{\"id\":\"\xff\xfe\",\"describe\":true}",
             "{\"id\":\"\xc3\",\"describe\":true}",
             R"({"id":"\ud800","describe":true})",
         }) {
        lines.emplace_back(line);
    }
    for (const char* number : {"1e400", "123456789012345678901234567890", "18446744073709551615", "NaN", "01", "+1"}) {
        lines.push_back(call + number + ",1]}");
    }
    return lines;
}

TEST(Call, BrokenLinesAreAnsweredWithAnErrorAndTheHostGoesOn)
{
    Program host{{"call"}};
    std::string input;
    for (const std::string& line : brokenLines())
        input += line + "\n{\"id\":\"alive\",\"class\":\"C_Version\",\"op\":\"DLL_Version\"}\n";
    const Outcome outcome = host.finish(input);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    std::vector<std::string> answers;
    for (std::size_t at = 0; at < outcome.output.size();) {
        const std::size_t end = outcome.output.find('\n', at);
        ASSERT_NE(end, std::string::npos);
        answers.push_back(outcome.output.substr(at, end - at));
        at = end + 1;
    }
    ASSERT_EQ(answers.size(), 2 * brokenLines().size());
    for (std::size_t index = 0; index < answers.size(); index += 2) {
        EXPECT_TRUE(answers[index].starts_with("{\"error\":{\"number\":")) << answers[index].substr(0, 200);
        EXPECT_LT(answers[index].size(), 2000U);
        EXPECT_EQ(answers[index + 1], R"({"id":"alive","result":"2.0","args":[],"messages":[],"sql":[]})");
    }
}

TEST(Call, ALineAboveTheLimitIsRefusedAndTheNextOneIsServed)
{
    constexpr std::size_t limit = 64 * 1024 * 1024;
    const std::string request = R"({"class":"C_Version","op":"DLL_Version"})";
    // Blanks after a request belong to its line. A line of exactly the limit is served.
    const std::string input = repeated(request, ' ', limit - request.size()) + '\n' +
                              repeated(request, ' ', limit - request.size() + 1) + '\n' + request + '\n' +
                              repeated("", 'x', limit + 1);
    const Outcome outcome = run({"call"}, input);
    const std::string served = R"({"result":"2.0","args":[],"messages":[],"sql":[]})"
                               "\n";
    const std::string refused = R"({"error":{"number":5,"source":"tamarok call",)"
                                R"("description":"the line has more than 67108864 bytes"},)"
                                R"("args":[],"messages":[],"sql":[]})"
                                "\n";
    EXPECT_EQ(outcome.output, served + refused + served + refused);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
}

TEST(Call, AHalfLineAtTheEndIsAnsweredToo)
{
    const Outcome outcome = run({"call"}, "{\"class\":\"C_Version\",\"op\":\"DLL_Version\"}");
    EXPECT_EQ(outcome.output, "{\"result\":\"2.0\",\"args\":[],\"messages\":[],\"sql\":[]}\n");
    EXPECT_EQ(run({"call"}, "{\"cla").status, 0);
}

TEST(Call, AnEmptyInputEndsWithStatus0)
{
    const Outcome outcome = run({"call"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
}

TEST(Call, AnInputThatEndsInsideATransactionIsStatus1AndRolledBack)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 5);
    const std::string change = R"({"invoke":"db","name":"BeginTrans"})"
                               "\n"
                               R"({"exec":"DELETE FROM LOGS_RECH"})"
                               "\n";
    const Outcome open = run({"call", "--db", file}, change);
    EXPECT_EQ(open.status, 1);
    EXPECT_EQ(open.errors, "tamarok: the input ended inside an open transaction, which was rolled back\n");
    const Outcome closed = run({"call", "--db", file}, change + R"({"invoke":"db","name":"RollbackTrans"})");
    EXPECT_EQ(closed.status, 0) << closed.errors;
    const Outcome count = run({"call", "--db", file}, R"({"query":"SELECT COUNT(*) AS N FROM LOGS_RECH"})");
    EXPECT_NE(count.output.find("[[5]]"), std::string::npos) << count.output;
}

TEST(Call, ATransactionOfTheTextCountsAndOneThatAnErrorRolledBackDoesNot)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 5);
    const std::string begin = R"({"exec":"BEGIN TRANSACTION DELETE FROM LOGS_RECH"})"
                              "\n";
    const Outcome open = run({"call", "--db", file}, begin);
    EXPECT_EQ(open.status, 1);
    EXPECT_EQ(open.errors, "tamarok: the input ended inside an open transaction, which was rolled back\n");
    const Outcome duplicate = run({"call", "--db", file}, begin + R"-({"exec":"INSERT INTO USERS (ID) VALUES (1) "})-");
    EXPECT_EQ(duplicate.status, 1) << duplicate.output;
    const std::string fail = R"-({"query":"SELECT CAST('x' AS int)"})-"
                             "\n";
    const Outcome doomed = run({"call", "--db", file}, begin + fail + R"({"exec":"COMMIT"})");
    EXPECT_EQ(doomed.status, 0) << doomed.errors;
    EXPECT_NE(doomed.output.find("The transaction was rolled back: "), std::string::npos) << doomed.output;
    EXPECT_NE(doomed.output.find("COMMIT TRANSACTION without a transaction"), std::string::npos) << doomed.output;
    const Outcome count = run({"call", "--db", file}, R"({"query":"SELECT COUNT(*) AS N FROM LOGS_RECH"})");
    EXPECT_NE(count.output.find("[[5]]"), std::string::npos) << count.output;
}

TEST(Call, AnInputThatCannotBeReadIsStatus1)
{
    const ScratchFolder folder;
    SpawnActions actions;
    actions.open(folder.path().string(), O_RDONLY, STDIN_FILENO); // a folder opens, but does not read
    actions.open("/dev/null", O_WRONLY, STDERR_FILENO);
    pid_t child = -1;
    ASSERT_EQ(actions.spawn(child, TAMAROK_PROGRAM, {"call"}), 0);
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
}

TEST(Call, AnObjectInAnAnswerKeepsItsNameUntilItIsDropped)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 5);
    Program host{{"call", "--db", file}};
    host.ask(R"({"new":"ADODB.Recordset","as":"rs"})");
    host.ask(R"({"invoke":"rs","name":"Open","args":["SELECT ID_LOG FROM LOGS",{"$ref":"db"}]})");
    const std::string firstField = R"json({"get":"rs","name":"Fields(0)"})json";
    const std::string named = R"({"result":{"$ref":"Field1"},"args":[],"messages":[],"sql":[]})";
    EXPECT_EQ(host.ask(firstField), named);
    EXPECT_EQ(host.ask(firstField), named);
    host.ask(R"({"drop":"Field1"})");
    const std::string gone = host.ask(R"({"get":"Field1","name":"Value"})");
    EXPECT_NE(gone.find("there is no object named 'Field1'"), std::string::npos) << gone;
}

TEST(Call, AReaderThatGoesAwayEndsTheHostQuietly)
{
    Program host{{"call"}};
    host.closeOutput();
    const Outcome outcome = host.finish("{\"describe\":true}\n{\"describe\":true}\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
}

} // namespace
} // namespace tamarok::test
