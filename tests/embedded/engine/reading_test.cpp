#include <fcntl.h>
#include <fstream>
#include <sqlite3.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "child.h"
#include "support/other_account.h"
#include "tamarok_embedded/new_database.h"
#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

namespace fs = std::filesystem;
using tamarok::test::asOtherAccount;
using tamarok::test::canChangeAccount;

ado::ConnectionRef reading(const fs::path& file)
{
    OpenOptions options;
    options.mode = OpenMode::ReadOnly;
    return connect(file, options);
}

/// The number of rows of T, or the error of reading them.
std::string countOf(const fs::path& file)
{
    try {
        return std::to_string(valueOf(reading(file), "SELECT COUNT(*) FROM T").asLong());
    } catch (const Error& error) {
        return error.description;
    }
}

class Reading : public testing::Test {
protected:
    Reading()
    {
        fs::permissions(folder_.path(), fs::perms{0755});
        run(create(file()), "CREATE TABLE T (A INT) INSERT INTO T (A) VALUES (1)");
    }
    ~Reading() override { fs::permissions(folder_.path(), fs::perms{0755}); }

    fs::path file() const { return folder_ / "a.db"; }

    /// Adds 200 rows that lie in the log of a killed session.
    void addKilledSession() const
    {
        Child child{{"write", file(), "INSERT INTO T (A) VALUES (1)"}};
        ASSERT_EQ(child.line(), "written");
        child.kill();
        ASSERT_GT(fs::file_size(folder_ / "a.db-wal"), 0U);
    }

    /// What an account without rights counts in a folder that it cannot write, and that the folder stays as it was.
    void expectForOtherAccount(const std::string& expected)
    {
        const auto before = folder_.contents();
        EXPECT_EQ(asOtherAccount([&] { return countOf(file()); }), expected);
        EXPECT_EQ(folder_.contents(), before);
    }

    Folder folder_;
};

TEST_F(Reading, createsNothing)
{
    const auto before = folder_.contents();
    EXPECT_EQ(countOf(file()), "1");
    EXPECT_EQ(folder_.contents(), before);
}

TEST_F(Reading, refusesEveryChange)
{
    const auto before = folder_.contents();
    const auto connection = reading(file());
    for (const char* const text : {"DELETE FROM T", "UPDATE T SET A = 2", "INSERT INTO T (A) VALUES (2)",
                                   "CREATE TABLE N (A INT)", "DROP TABLE T", "TRUNCATE TABLE T",
                                   "SELECT A FROM T WHERE 1=0; DELETE FROM T", "EXEC tmk_OPTIONEN_INS 'X', 1, 'y'"}) {
        const Error error = failureOf([&] { open(connection, text); });
        EXPECT_NE(error.number, 0) << text;
    }
    EXPECT_EQ(valueOf(connection, "SELECT COUNT(*) FROM T"), Variant{1});
    EXPECT_EQ(folder_.contents(), before);
}

TEST_F(Reading, worksOnAReadOnlyFileInAReadOnlyFolder)
{
    if (!canChangeAccount()) {
        GTEST_SKIP() << "root may read everything; another account cannot be taken";
    }
    fs::permissions(file(), fs::perms{0444});
    fs::permissions(folder_.path(), fs::perms{0555});
    expectForOtherAccount("1");
}

/// With the log and its index beside the file, SQLite reads them; without the index, the engine reads a private copy.
TEST_F(Reading, overlooksNothingInALogInAReadOnlyFolder)
{
    if (!canChangeAccount()) {
        GTEST_SKIP() << "root may write every folder; another account cannot be taken";
    }
    addKilledSession();
    expectForOtherAccount("201");
    fs::remove(folder_ / "a.db-shm");
    expectForOtherAccount("201");
    write(folder_ / "a.db-shm", "");
    fs::permissions(folder_ / "a.db-shm", fs::perms{0});
    EXPECT_EQ(asOtherAccount([&] { return countOf(file()); }), "201");
}

TEST_F(Reading, refusesADatabaseWhoseLogCannotBeRead)
{
    if (!canChangeAccount()) {
        GTEST_SKIP() << "root may read everything; another account cannot be taken";
    }
    addKilledSession();
    fs::remove(folder_ / "a.db-shm");
    fs::permissions(folder_ / "a.db-wal", fs::perms{0600});
    const std::string failure = asOtherAccount([&] { return countOf(file()); });
    EXPECT_NE(failure.find("a.db-wal"), std::string::npos) << failure;
    EXPECT_NE(failure.find("Permission denied"), std::string::npos) << failure;
}

TEST_F(Reading, copiesLeaveNothingInTheTemporaryFolder)
{
    if (!canChangeAccount()) {
        GTEST_SKIP() << "root may write every folder; another account cannot be taken";
    }
    addKilledSession();
    fs::remove(folder_ / "a.db-shm");
    const Folder temporary;
    fs::permissions(temporary.path(), fs::perms{0777});
    EXPECT_EQ(asOtherAccount([&] {
                  ::setenv("TMPDIR", temporary.path().c_str(), 1);
                  const auto connection = reading(file());
                  const bool empty = temporary.fileCount() == 0;
                  return std::to_string(valueOf(connection, "SELECT COUNT(*) FROM T").asLong()) +
                         (empty ? "" : " left");
              }),
              "201");
    EXPECT_EQ(temporary.fileCount(), 0U);
}

TEST_F(Reading, worksOnAFullDisk)
{
    const fs::path disk = folder_ / "disk";
    fs::create_directory(disk);
    if (::mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=1m") != 0) {
        GTEST_SKIP() << "mounting a file system is not permitted here";
    }
    fs::copy_file(file(), disk / "a.db");
    addKilledSession();
    fs::copy_file(file(), disk / "killed.db");
    fs::copy_file(folder_ / "a.db-wal", disk / "killed.db-wal");
    std::ofstream{disk / "filler"} << std::string(2U << 20U, 'x');
    ASSERT_EQ(fs::space(disk).available, 0U);
    EXPECT_EQ(countOf(disk / "a.db"), "1");
    EXPECT_EQ(countOf(disk / "killed.db"), "201");
    ::umount2(disk.c_str(), MNT_DETACH);
}

TEST_F(Reading, seesWhatALiveSessionCommits)
{
    const auto reader = reading(file());
    EXPECT_EQ(valueOf(reader, "SELECT COUNT(*) FROM T"), Variant{1});
    Child writer{{"write", file(), "INSERT INTO T (A) VALUES (1)"}};
    ASSERT_EQ(writer.line(), "written");
    EXPECT_EQ(valueOf(reader, "SELECT COUNT(*) FROM T"), Variant{201});
    EXPECT_EQ(countOf(file()), "201");
    writer.tell("end");
    EXPECT_EQ(writer.wait(), 0);
    EXPECT_EQ(valueOf(reader, "SELECT COUNT(*) FROM T"), Variant{201});
}

TEST_F(Reading, keepsTheFileFromBeingReplaced)
{
    const auto reader = reading(file());
    const Error error = failureOf([&] { NewDatabase{file(), NewDatabase::Existing::Replace}; });
    EXPECT_NE(error.description.find("another session"), std::string::npos) << error.description;
    reader->Close();
    NewDatabase{file(), NewDatabase::Existing::Replace}.complete();
}

/// A database without log is not locked between statements, so that a session may turn the log on.
TEST_F(Reading, followsAReplacedFileThatHadNoLog)
{
    const auto make = [&](const char* text) {
        NewDatabase database{file(), NewDatabase::Existing::Replace};
        run(database.connection(), text);
        database.complete();
    };
    make("CREATE TABLE T (A INT) INSERT INTO T (A) VALUES (1)");
    const auto reader = reading(file());
    EXPECT_EQ(valueOf(reader, "SELECT COUNT(*) FROM T"), Variant{1});
    make("CREATE TABLE T (A INT)");
    EXPECT_EQ(valueOf(reader, "SELECT COUNT(*) FROM T"), Variant{0});
}

class ReadingRows : public Reading {
protected:
    ReadingRows()
    {
        const auto connection = connect(file());
        for (int i = 0; i < 12; ++i) {
            run(connection, "INSERT INTO T (A) SELECT A FROM T");
        }
    }
};

TEST_F(ReadingRows, isNotDisturbedByShortSessions)
{
    const auto reader = reading(file());
    const auto cursor = open(reader, "SELECT A FROM T");
    ASSERT_TRUE(cursor->next());
    run(connect(file()), "DELETE FROM T");
    int rows = 1;
    while (cursor->next()) {
        ++rows;
    }
    EXPECT_EQ(rows, 4096);
    EXPECT_EQ(valueOf(reader, "SELECT COUNT(*) FROM T"), Variant{0});
    EXPECT_EQ(countOf(file()), "0");
}

/// Rows of the file before the change and after it never make one answer.
TEST_F(ReadingRows, failsWhereTheFileChangesDuringAStatement)
{
    const auto reader = reading(file());
    const auto cursor = open(reader, "SELECT A FROM T");
    ASSERT_TRUE(cursor->next());
    const auto writer = connect(file());
    run(writer, "CREATE TABLE N (S NVARCHAR(4000))");
    for (int i = 0; i < 2000; ++i) {
        run(writer, "INSERT INTO N (S) VALUES (REPLICATE('x',4000))");
    }
    const Error error = failureOf([&] {
        while (cursor->next()) {}
    });
    EXPECT_NE(error.description.find("changed by another session while it was read"), std::string::npos);
    EXPECT_EQ(valueOf(reader, "SELECT COUNT(*) FROM N"), Variant{2000});
}

TEST_F(Reading, andWritingRefuseAFileWithTwoNames)
{
    fs::create_hard_link(file(), folder_ / "b.db");
    EXPECT_NE(countOf(folder_ / "b.db").find("hard links"), std::string::npos);
    EXPECT_NE(failureOf([&] { connect(folder_ / "a.db"); }).description.find("hard links"), std::string::npos);
    fs::remove(folder_ / "b.db");
    EXPECT_EQ(countOf(file()), "1");
}

/// Only a session that may write can undo what a killed process has left half done in a file without a log.
TEST_F(Reading, refusesAnInterruptedChangeUntilItIsUndone)
{
    const pid_t child = ::fork();
    if (child == 0) {
        sqlite3* handle = nullptr;
        sqlite3_open(file().c_str(), &handle);
        sqlite3_exec(
            handle,
            "PRAGMA journal_mode=DELETE; PRAGMA cache_size=2; BEGIN; INSERT INTO T(A) SELECT randomblob(100000);"
            "INSERT INTO T(A) SELECT randomblob(100000)",
            nullptr, nullptr, nullptr);
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    ASSERT_TRUE(fs::exists(folder_ / "a.db-journal"));
    EXPECT_NE(countOf(file()).find("an interrupted change must be undone first"), std::string::npos) << countOf(file());
    EXPECT_EQ(valueOf(connect(file()), "SELECT COUNT(*) FROM T"), Variant{1});
    EXPECT_EQ(countOf(file()), "1");
}

TEST_F(Reading, escapesControlCharactersOfPaths)
{
    EXPECT_NE(countOf(folder_ / "a\x1b[31m\n.db").find(R"(/a\x1B[31m\x0A.db)"), std::string::npos);
    EXPECT_NE(countOf(folder_ / "a\xc2\x9b.db").find(R"(/a\xC2\x9B.db)"), std::string::npos);
    EXPECT_NE(countOf(folder_ / std::string{"a\0.db", 5}).find("NUL character"), std::string::npos);
}

} // namespace
} // namespace tamarok::embedded::test
