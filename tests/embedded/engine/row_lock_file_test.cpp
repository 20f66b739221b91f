#include <sys/stat.h>
#include <unistd.h>

#include "child.h"
#include "support/other_account.h"
#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

namespace fs = std::filesystem;
using tamarok::test::asOtherAccount;
using tamarok::test::canChangeAccount;

/// Locks the first row of LOCK through a pessimistic recordset. @return "held", "timeout" or the error
std::string tryToHold(const fs::path& file)
{
    try {
        const auto connection = connect(file);
        const auto cursor = openEditable(connection, "SELECT * FROM LOCK", 1);
        if (!cursor->next()) {
            return "no row";
        }
        cursor->lockRow(cursor->rowKey());
        return "held";
    } catch (const Error& error) {
        return error.number == errors::timeout ? "timeout" : error.description;
    }
}

class RowLockFile : public testing::Test {
protected:
    RowLockFile()
    {
        fs::permissions(folder_.path(), fs::perms{0777});
        run(create(file()), "CREATE TABLE LOCK (ID INT PRIMARY KEY) INSERT INTO LOCK (ID) VALUES (1)");
        fs::permissions(file(), fs::perms{0666});
    }

    fs::path file() const { return folder_ / "a.db"; }
    fs::path locks() const { return folder_ / "a.db-locks"; }

    Folder folder_;
};

TEST_F(RowLockFile, isThatOfTheRealFileWhateverLinkLeadsToIt)
{
    fs::create_directory(folder_ / "other");
    fs::create_symlink(file(), folder_ / "other/link.db");
    fs::create_symlink(folder_ / "other", folder_ / "folder");
    Child holder{{"hold", file(), "SELECT * FROM LOCK"}};
    ASSERT_EQ(holder.line(), "held");
    EXPECT_EQ(tryToHold(folder_ / "other/link.db"), "timeout");
    EXPECT_EQ(tryToHold(folder_ / "folder/link.db"), "timeout");
    EXPECT_EQ(tryToHold(folder_ / "other/../a.db"), "timeout");
    EXPECT_FALSE(fs::exists(folder_ / "other/link.db-locks"));
    holder.kill();
    EXPECT_EQ(tryToHold(folder_ / "other/link.db"), "held");
}

TEST_F(RowLockFile, doesNotExistForASecondNameOfTheFile)
{
    Child holder{{"hold", file(), "SELECT * FROM LOCK"}};
    ASSERT_EQ(holder.line(), "held");
    fs::create_hard_link(file(), folder_ / "hard.db");
    EXPECT_NE(tryToHold(folder_ / "hard.db").find("hard links"), std::string::npos);
    EXPECT_FALSE(fs::exists(folder_ / "hard.db-locks"));
}

TEST_F(RowLockFile, opensWithThePessimisticRecordset)
{
    const auto connection = connect(file());
    EXPECT_FALSE(fs::exists(locks()));
    open(connection, "SELECT * FROM LOCK");
    EXPECT_FALSE(fs::exists(locks()));
    openEditable(connection, "SELECT * FROM LOCK WHERE ID = 99");
    EXPECT_TRUE(fs::exists(locks()));
}

TEST_F(RowLockFile, hasTheModeAndTheOwnerOfTheDatabase)
{
    const bool isRoot = canChangeAccount();
    ASSERT_EQ(::chown(file().c_str(), isRoot ? 65534 : ::geteuid(), isRoot ? 65534 : ::getegid()), 0);
    fs::permissions(file(), fs::perms{0664});
    ASSERT_EQ(tryToHold(file()), "held");
    struct stat database {};
    struct stat status {};
    ASSERT_EQ(::stat(file().c_str(), &database), 0);
    ASSERT_EQ(::stat(locks().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0664U);
    EXPECT_EQ(status.st_uid, database.st_uid);
    EXPECT_EQ(status.st_gid, database.st_gid);
    EXPECT_EQ(status.st_size, 0);
}

TEST_F(RowLockFile, excludesAnotherAccount)
{
    if (!canChangeAccount()) {
        GTEST_SKIP() << "another account cannot be taken";
    }
    {
        Child holder{{"hold", file(), "SELECT * FROM LOCK"}};
        ASSERT_EQ(holder.line(), "held");
        EXPECT_EQ(asOtherAccount([&] { return tryToHold(file()); }), "timeout");
        EXPECT_EQ(asOtherAccount([&] { return tryToHold(file()); }), "timeout") << "the second try as well";
        EXPECT_EQ(asOtherAccount([&] {
                      return std::to_string(failureOf([&] { run(connect(file()), "DELETE FROM LOCK", 1); }).number);
                  }),
                  std::to_string(errors::timeout));
    }
    EXPECT_EQ(asOtherAccount([&] { return tryToHold(file()); }), "held");
}

TEST_F(RowLockFile, thatTheOtherAccountMadeServesThisOne)
{
    if (!canChangeAccount()) {
        GTEST_SKIP() << "another account cannot be taken";
    }
    EXPECT_EQ(asOtherAccount([&] { return tryToHold(file()); }), "held");
    EXPECT_EQ(tryToHold(file()), "held");
}

TEST_F(RowLockFile, followsALaterChangeOfTheDatabasesMode)
{
    if (!canChangeAccount()) {
        GTEST_SKIP() << "another account cannot be taken";
    }
    fs::permissions(file(), fs::perms{0600});
    EXPECT_EQ(tryToHold(file()), "held");
    fs::permissions(file(), fs::perms{0666});
    EXPECT_NE(asOtherAccount([&] { return tryToHold(file()); }).find("Permission denied"), std::string::npos);
    Child holder{{"hold", file(), "SELECT * FROM LOCK"}};
    ASSERT_EQ(holder.line(), "held");
    EXPECT_EQ(asOtherAccount([&] { return tryToHold(file()); }), "timeout");
}

/// Nothing that needs a lock goes on without it.
TEST_F(RowLockFile, thatCannotBeOpenedFailsTheRecordsetAndEveryChange)
{
    if (!canChangeAccount()) {
        GTEST_SKIP() << "root may open every file; another account cannot be taken";
    }
    write(locks(), "");
    fs::permissions(locks(), fs::perms{0600});
    const std::string failure = asOtherAccount([&] {
        const auto connection = connect(file());
        return failureOf([&] { openEditable(connection, "SELECT * FROM LOCK"); }).description + "|" +
               failureOf([&] { run(connection, "DELETE FROM LOCK"); }).description;
    });
    EXPECT_EQ(failure, "Cannot use the lock file '" + locks().string() +
                           "': Permission denied.|Cannot use the lock file '" + locks().string() +
                           "': Permission denied.");
    EXPECT_EQ(valueOf(connect(file()), "SELECT COUNT(*) FROM LOCK"), Variant{1});
}

TEST_F(RowLockFile, isNeverReachedThroughALink)
{
    write(folder_ / "victim", "");
    fs::create_symlink("victim", locks());
    EXPECT_NE(tryToHold(file()).find("it is a symbolic link"), std::string::npos);
    fs::remove(locks());
    fs::create_symlink("nowhere", locks());
    EXPECT_NE(tryToHold(file()).find("it is a symbolic link"), std::string::npos);
    EXPECT_FALSE(fs::exists(folder_ / "nowhere"));
    fs::remove(locks());
    ASSERT_EQ(::mkfifo(locks().c_str(), 0666), 0);
    EXPECT_NE(tryToHold(file()).find("not a regular file"), std::string::npos);
}

} // namespace
} // namespace tamarok::embedded::test
