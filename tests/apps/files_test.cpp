#include <csignal>
#include <fstream>
#include <sys/mount.h>
#include <unistd.h>

#include "apps/program.h"
#include "support/other_account.h"

namespace tamarok::test {
namespace {

namespace fs = std::filesystem;

std::string query(const std::string& file, const std::string& text)
{
    return run({"call", "--db", file}, R"({"query":")" + text + "\"}\n").output;
}

/// Runs the program where no file may grow beyond a number of kilobytes.
Outcome runLimited(int kilobytes, const std::string& words)
{
    return runProgram("/bin/bash",
                      {"-c", "ulimit -f " + std::to_string(kilobytes) + "; exec " TAMAROK_PROGRAM " " + words});
}

/// Each command that only reads, on one database.
std::vector<std::vector<std::string>> readingCommands(const std::string& file)
{
    return {{"list", "LOG", "1", "36", "280", "--limit", "3", "--db", file},
            {"sql", "LOG", "1", "36", "280", "--db", file},
            {"columns", "LOG", "--db", file},
            {"select", "HOLZART_GRID", "--run", "--db", file}};
}

class Files : public testing::Test {
protected:
    Files() { fs::permissions(folder_.path(), fs::perms{0755}); }
    ScratchFolder folder_;
    std::string file_ = makeDatabase(folder_, 20);
};

TEST_F(Files, ACommandThatReadsChangesNothing)
{
    query(file_, "SELECT 1"); // leaves the file as a session does
    const auto before = folder_.contents();
    for (const auto& words : readingCommands(file_)) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 0) << words.front() << outcome.errors;
    }
    EXPECT_EQ(folder_.contents(), before);
}

TEST_F(Files, AConditionCannotChangeTheDatabase)
{
    query(file_, "SELECT 1");
    const auto before = folder_.contents();
    for (const char* const condition :
         {"1=0; DELETE FROM LOGS", "1=0 DELETE FROM LOGS", "1=0; DROP TABLE LOGS", "1=0; UPDATE LOGS SET HA = 'X'",
          "1=0; EXEC tmk_OPTIONEN_INS 'X', 1, 'y'", "1=0; SELECT * INTO N FROM LOGS"}) {
        const Outcome outcome = run({"list", "LOG", "1", "--where", condition, "--db", file_});
        EXPECT_EQ(outcome.status, 1) << condition;
        EXPECT_NE(outcome.errors, "") << condition;
    }
    EXPECT_EQ(folder_.contents(), before);
}

TEST_F(Files, AMissingOptionIsTakenAtItsDefault)
{
    const std::string removed = run({"call", "--db", file_}, "{\"exec\":\"DELETE FROM OPTIONEN\"}\n").output;
    ASSERT_EQ(removed.find("error"), std::string::npos) << removed;
    const auto before = folder_.contents();
    for (const auto& words : readingCommands(file_)) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 0) << words.front() << outcome.errors;
    }
    EXPECT_EQ(folder_.contents(), before);
}

TEST_F(Files, CommandsThatReadNeedNoRightToWrite)
{
    if (!canChangeAccount()) GTEST_SKIP() << "root may write everything; another account cannot be taken";
    if (asOtherAccount([] { return std::to_string(::access(TAMAROK_PROGRAM, X_OK)); }) != "0")
        GTEST_SKIP() << "another account cannot reach the program";
    query(file_, "SELECT 1");
    fs::permissions(file_, fs::perms{0444});
    fs::permissions(folder_.path(), fs::perms{0555});
    const auto before = folder_.contents();
    for (const auto& words : readingCommands(file_)) {
        EXPECT_EQ(asOtherAccount([&] { return run(words).errors; }), "") << words.front();
    }
    EXPECT_EQ(folder_.contents(), before);
}

TEST_F(Files, InitIsRefusedWhileASessionIsOpen)
{
    Program session{{"call", "--db", file_}};
    session.ask(R"({"exec":"DELETE FROM LOCK"})");
    const Outcome refused = run({"init", file_, "--logs", "1", "--force"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.errors.find("another session has it open"), std::string::npos) << refused.errors;
    EXPECT_NE(session.ask(R"({"query":"SELECT COUNT(*) AS N FROM LOGS"})").find("[[20]]"), std::string::npos);
    session.finish();
    EXPECT_EQ(run({"init", file_, "--logs", "1", "--force"}).status, 0);
    EXPECT_EQ(folder_.fileCount(), 1U);
}

TEST_F(Files, InitKeepsForeignFiles)
{
    for (const char* const name : {"demo.db.tmp-1", "demo.db.tmp-99999-wal", "demo.db.draft-notes"})
        std::ofstream{folder_ / name} << "foreign";
    EXPECT_EQ(run({"init", file_, "--logs", "1", "--force"}).status, 0);
    EXPECT_EQ(folder_.fileCount(), 4U);
}

TEST_F(Files, AFileSizeLimitIsAnErrorThatNamesTheFile)
{
    const std::string small = folder_ / "small.db";
    const Outcome made = runLimited(64, "init '" + small + "' --logs 100");
    EXPECT_EQ(made.status, 1);
    EXPECT_EQ(made.errors, "tamarok: Cannot write to the database '" + small + "': File too large.\n");
    EXPECT_EQ(folder_.fileCount(), 1U) << "nothing is left";
    const Outcome listed = runLimited(1, "columns LOG --db '" + file_ + "' > '" + (folder_ / "out.txt").string() + "'");
    EXPECT_EQ(listed.status, 1);
    EXPECT_NE(listed.errors.find("File too large"), std::string::npos) << listed.errors;
}

TEST_F(Files, AFullDiskIsAnErrorThatNamesTheFile)
{
    const fs::path disk = folder_ / "disk";
    fs::create_directory(disk);
    if (::mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=256k") != 0) GTEST_SKIP() << "mounting is not permitted here";
    const Outcome outcome = run({"init", disk / "a.db", "--logs", "100"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "tamarok: Cannot write to the database '" + (disk / "a.db").string() + "': the disk is full.\n");
    EXPECT_TRUE(fs::is_empty(disk));
    ::umount2(disk.c_str(), MNT_DETACH);
}

TEST_F(Files, ControlCharactersOfPathsAreShownAsTheirCodes)
{
    const Outcome missing = run({"list", "LOG", "1", "--db", folder_ / "\x1b]0;x\x07.db"});
    EXPECT_NE(missing.errors.find(R"(\x1B]0;x\x07.db)"), std::string::npos) << missing.errors;
    const Outcome made = run({"init", folder_ / "a\x1b[1m.db", "--logs", "1"});
    EXPECT_EQ(made.output.find('\x1b'), std::string::npos);
    EXPECT_NE(made.output.find(R"(a\x1B[1m.db)"), std::string::npos);
}

TEST_F(Files, AMissingCurrentFolderIsAnErrorInWords)
{
    const std::string gone = folder_ / "gone";
    const Outcome outcome = runProgram("/bin/bash", {"-c", "mkdir '" + gone + "' && cd '" + gone + "' && rmdir '" +
                                                               gone + "' && exec " TAMAROK_PROGRAM " init a.db"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors.find("filesystem error"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("current folder"), std::string::npos) << outcome.errors;
}

TEST_F(Files, NamesThatNoFileCanHaveAreErrorsInWords)
{
    for (const std::string& name :
         {std::string(300, 'x'), std::string{"demo.db/inside.db"}, std::string{"no/such/x.db"}}) {
        for (const char* const force : {"--force", "--logs=1"}) {
            const Outcome outcome = run({"init", folder_ / name, force});
            EXPECT_EQ(outcome.status, 1);
            EXPECT_TRUE(outcome.errors.starts_with("tamarok: Cannot create the database '")) << outcome.errors;
            EXPECT_EQ(outcome.errors.find("filesystem error"), std::string::npos) << outcome.errors;
        }
    }
    for (const std::string& name : {std::string{}, std::string{"/"}, std::string{"."}, folder_.path().string() + "/"}) {
        const Outcome outcome = run({"init", name, "--force"});
        EXPECT_NE(outcome.status, 0) << name;
        EXPECT_EQ(outcome.errors.find("filesystem error"), std::string::npos) << outcome.errors;
    }
}

} // namespace
} // namespace tamarok::test
