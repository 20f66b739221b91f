#include <algorithm>
#include <csignal>
#include <fstream>
#include <poll.h>

#include "apps/program.h"

namespace tamarok::test {
namespace {

TEST(Init, MakesOneFileAndTellsRowsAndRate)
{
    const ScratchFolder folder;
    const Outcome outcome = run({"init", folder / "a.db", "--logs", "100", "--seed", "3"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_NE(outcome.output.find("100 logs in "), std::string::npos) << outcome.output;
    EXPECT_NE(outcome.output.find("logs/s"), std::string::npos) << outcome.output;
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(folder.fileCount(), 1U);
}

TEST(Init, EmptyHasTextsAndMasterDataAlone)
{
    const ScratchFolder folder;
    const std::string file = folder / "a.db";
    ASSERT_EQ(run({"init", file, "--empty"}).status, 0);
    const std::string query =
        "SELECT (SELECT COUNT(*) FROM LOGS) AS A, (SELECT COUNT(*) FROM HOLZART WHERE HA = 'FI') AS B";
    const Outcome count = run({"call", "--db", file}, "{\"query\":\"" + query + "\"}\n");
    EXPECT_NE(count.output.find("[[0,1]]"), std::string::npos) << count.output;
}

/// Without a server there is no more to say than what is missing, and that no file is made.
TEST(Copy, AMissingFileOrServerIsOneLine)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 5);
    const std::string fresh = folder / "new.db";
    const std::string odbc = "DRIVER=/no/driver.so;SERVER=x;UID=u;PWD=secret";
    for (const std::vector<std::string>& words : {std::vector<std::string>{"copy", "--db", fresh, "--odbc", odbc},
                                                  {"copy", "--db", file, "--odbc", odbc},
                                                  {"copy", "--db", fresh, "--odbc", odbc, "--from-odbc"}}) {
        const Outcome refused = run(words);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(std::ranges::count(refused.errors, '\n'), 1) << refused.errors;
        EXPECT_EQ(refused.errors.find("secret"), std::string::npos) << refused.errors;
        EXPECT_EQ(refused.output, "");
    }
    EXPECT_EQ(folder.fileCount(), 1U);
}

TEST(Init, KeepsAnExistingFileUnlessForced)
{
    const ScratchFolder folder;
    const std::string file = folder / "a.db";
    std::ofstream{file} << "precious";
    const Outcome refused = run({"init", file, "--logs", "10"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.errors.find("--force"), std::string::npos);
    std::string content;
    std::ifstream{file} >> content;
    EXPECT_EQ(content, "precious");
    EXPECT_EQ(run({"init", file, "--logs", "10", "--force"}).status, 0);
    const Outcome count = run({"call", "--db", file}, R"({"query":"SELECT COUNT(*) AS N FROM LOGS"})"
                                                      "\n");
    EXPECT_NE(count.output.find("[[10]]"), std::string::npos) << count.output;
    EXPECT_EQ(folder.fileCount(), 1U);
}

/// Starts an init too long to end by itself and waits until its growing file is there.
bool waitUntilGrowing(const ScratchFolder& folder)
{
    constexpr int attempts = 3000;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (folder.fileCount() > 0) return true;
        ::poll(nullptr, 0, 10);
    }
    return false;
}

TEST(Init, AnInterruptLeavesNothing)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        const ScratchFolder folder;
        Program child{{"init", folder / "a.db", "--logs", "50000000"}};
        ASSERT_TRUE(waitUntilGrowing(folder));
        child.send(signal);
        const Outcome outcome = child.finish();
        EXPECT_EQ(outcome.status, 128 + signal);
        EXPECT_EQ(outcome.errors, "tamarok: interrupted\n");
        EXPECT_EQ(folder.fileCount(), 0U);
    }
}

TEST(Init, AKilledRunLeavesNoHalfFileAndTheNextOneClearsUp)
{
    const ScratchFolder folder;
    Program child{{"init", folder / "a.db", "--logs", "50000000"}};
    ASSERT_TRUE(waitUntilGrowing(folder));
    child.send(SIGKILL);
    EXPECT_EQ(child.finish().status, 128 + SIGKILL);
    EXPECT_FALSE(std::filesystem::exists(folder / "a.db"));
    EXPECT_EQ(run({"init", folder / "a.db", "--logs", "10"}).status, 0);
    EXPECT_EQ(folder.fileCount(), 1U);
}

/// A process of another namespace has ids of its own there; the ids of this one mean nothing to it.
TEST(Init, LeavesTheDraftOfARunInAnotherProcessNamespace)
{
    const ScratchFolder folder;
    const std::string file = folder / "a.db";
    Program running{{"init", file, "--logs", "50000000"}};
    ASSERT_TRUE(waitUntilGrowing(folder));
    const Outcome other =
        runProgram("/usr/bin/env", {"unshare", "--pid", "--fork", TAMAROK_PROGRAM, "init", file, "--logs", "1"});
    if (other.errors.find("unshare") != std::string::npos || other.status == 127)
        GTEST_SKIP() << "process namespaces are not permitted here";
    EXPECT_EQ(other.status, 0) << other.errors;
    EXPECT_EQ(folder.fileCount(), 2U) << "the new file and the draft of the other run";
    running.send(SIGTERM);
    EXPECT_EQ(running.finish().status, 128 + SIGTERM);
    EXPECT_EQ(folder.fileCount(), 1U);
}

} // namespace
} // namespace tamarok::test
