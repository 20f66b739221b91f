#include <algorithm>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include "child.h"
#include "support/killed_at_change.h"
#include "tamarok_embedded/new_database.h"
#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

namespace fs = std::filesystem;
using Existing = NewDatabase::Existing;

class NewDatabaseTest : public testing::Test {
protected:
    fs::path file() const { return folder_ / "a.db"; }

    /// A database whose last session was killed: its table T has 200 rows, which lie in the log.
    void makeKilled() const
    {
        run(create(file()), "CREATE TABLE T (A INT)");
        Child child{{"write", file(), "INSERT INTO T (A) VALUES (1)"}};
        ASSERT_EQ(child.line(), "written");
        child.kill();
        ASSERT_GT(fs::file_size(folder_ / "a.db-wal"), 0U);
    }

    static Variant rows(const fs::path& file) { return valueOf(connect(file), "SELECT COUNT(*) FROM T"); }

    /// Replacing fails for that reason; the names in the folder and the rows stay.
    void refuses(const std::string& reason)
    {
        const Error error = failureOf([&] { NewDatabase{file(), Existing::Replace}; });
        EXPECT_EQ(error.number, errors::providerFailure);
        EXPECT_NE(error.description.find(reason), std::string::npos) << error.description;
        EXPECT_NE(error.description.find(file().string()), std::string::npos) << error.description;
        EXPECT_EQ(error.description.find("draft"), std::string::npos) << error.description;
    }

    void replace() const
    {
        NewDatabase database{file(), Existing::Replace};
        run(database.connection(), "CREATE TABLE N (A INT)");
        database.complete();
    }

    Folder folder_;
};

TEST_F(NewDatabaseTest, isThereWhenItIsCompleteAndNotBefore)
{
    {
        NewDatabase database{file()};
        run(database.connection(), "CREATE TABLE N (A INT) INSERT INTO N (A) VALUES (7)");
        EXPECT_FALSE(fs::exists(file()));
        database.complete();
    }
    EXPECT_EQ(folder_.fileCount(), 1U);
    EXPECT_EQ(valueOf(connect(file()), "SELECT A FROM N"), Variant{7});
}

TEST_F(NewDatabaseTest, thatIsNotCompletedLeavesNothing)
{
    {
        const NewDatabase database{file()};
        run(database.connection(), "CREATE TABLE N (A INT)");
    }
    EXPECT_EQ(folder_.fileCount(), 0U);
}

TEST_F(NewDatabaseTest, refusesAnExistingFileUnlessToldToReplaceIt)
{
    write(file(), "precious");
    EXPECT_EQ(failureOf([&] { NewDatabase{file()}; }).number, errors::fileExists);
    EXPECT_EQ(folder_.contents().at("a.db"), "precious");
    replace();
    EXPECT_EQ(columnOf(connect(file()), "SELECT A FROM N").size(), 0U);
}

TEST_F(NewDatabaseTest, doesNotReplaceAFileThatAppearedMeanwhile)
{
    NewDatabase database{file()};
    write(file(), "precious");
    EXPECT_EQ(failureOf([&] { database.complete(); }).number, errors::fileExists);
    EXPECT_EQ(folder_.contents().at("a.db"), "precious");
}

TEST_F(NewDatabaseTest, isRefusedWhileAnotherProcessHasTheOldOneOpen)
{
    run(create(file()), "CREATE TABLE T (A INT)");
    Child session{{"write", file(), "INSERT INTO T (A) VALUES (1)"}};
    ASSERT_EQ(session.line(), "written");
    refuses("another session");
    session.kill();
    EXPECT_EQ(rows(file()), Variant{200});
    replace();
}

TEST_F(NewDatabaseTest, isRefusedWhileThisProcessHasTheOldOneOpen)
{
    const auto session = create(file());
    run(session, "CREATE TABLE T (A INT)");
    refuses("another session");
    run(session, "INSERT INTO T (A) VALUES (1)");
    session->Close();
    EXPECT_EQ(rows(file()), Variant{1});
}

TEST_F(NewDatabaseTest, isRefusedAtItsEndToo)
{
    run(create(file()), "CREATE TABLE T (A INT)");
    NewDatabase database{file(), Existing::Replace};
    Child session{{"write", file(), "INSERT INTO T (A) VALUES (1)"}};
    ASSERT_EQ(session.line(), "written");
    EXPECT_NE(failureOf([&] { database.complete(); }).description.find("another session"), std::string::npos);
    session.kill();
    EXPECT_EQ(rows(file()), Variant{200});
}

TEST_F(NewDatabaseTest, thatIsGivenUpKeepsWhatAKilledSessionCommitted)
{
    makeKilled();
    {
        const NewDatabase database{file(), Existing::Replace};
    }
    EXPECT_EQ(rows(file()), Variant{200});
}

/// A file that is a mount point can be opened, but not replaced.
TEST_F(NewDatabaseTest, whoseRenamingFailsKeepsWhatAKilledSessionCommitted)
{
    makeKilled();
    if (::mount(file().c_str(), file().c_str(), nullptr, MS_BIND, nullptr) != 0) {
        GTEST_SKIP() << "mounting a file is not permitted here";
    }
    {
        NewDatabase database{file(), Existing::Replace};
        EXPECT_NE(failureOf([&] { database.complete(); }).description.find("busy"), std::string::npos);
    }
    ::umount2(file().c_str(), MNT_DETACH);
    EXPECT_EQ(rows(file()), Variant{200});
    EXPECT_EQ(folder_.fileCount(), 1U);
}

/// The old database with its 200 rows, or the new one: nothing else may be there, wherever the process is killed.
TEST_F(NewDatabaseTest, killedAtEveryStepLosesNothing)
{
    if (!tamarok::test::canTrace()) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    makeKilled();
    int olds = 0;
    int news = 0;
    for (int n = 1;; ++n) {
        const Folder place;
        for (const auto& entry : fs::directory_iterator{folder_.path()}) {
            fs::copy_file(entry.path(), place / entry.path().filename().string());
        }
        const bool killed = tamarok::test::killAtChange(
            LOCK_CHILD, {"replace", (place / "a.db").string(), "CREATE TABLE N (A INT)"}, n);
        const auto after = connect(place / "a.db");
        if (tamarok::test::errorNumber([&] { columnOf(after, "SELECT A FROM N"); }) != 0) {
            EXPECT_EQ(valueOf(after, "SELECT COUNT(*) FROM T"), Variant{200}) << n;
            ++olds;
        } else {
            ++news;
        }
        if (!killed) {
            break;
        }
    }
    EXPECT_GT(olds, 10);
    EXPECT_GT(news, 1);
}

TEST_F(NewDatabaseTest, takesModeAndOwnerOfTheOldOne)
{
    run(create(file()), "CREATE TABLE T (A INT)");
    const bool isRoot = ::geteuid() == 0;
    ASSERT_EQ(::chown(file().c_str(), isRoot ? 65534 : ::geteuid(), isRoot ? 65534 : ::getegid()), 0);
    ASSERT_EQ(::chmod(file().c_str(), 0660), 0);
    replace();
    struct stat status {};
    ASSERT_EQ(::stat(file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0660U);
    EXPECT_EQ(status.st_uid, isRoot ? 65534U : ::geteuid());
    EXPECT_EQ(status.st_gid, isRoot ? 65534U : ::getegid());
}

TEST_F(NewDatabaseTest, replacesTheFileThatALinkLeadsTo)
{
    fs::create_directory(folder_ / "real");
    run(create(folder_ / "real/b.db"), "CREATE TABLE T (A INT)");
    fs::create_symlink("real/b.db", file());
    replace();
    EXPECT_TRUE(fs::is_symlink(file()));
    EXPECT_EQ(columnOf(connect(folder_ / "real/b.db"), "SELECT A FROM N").size(), 0U);
    EXPECT_EQ(folder_.fileCount(), 2U);
}

TEST_F(NewDatabaseTest, refusesWhatIsNoFileOfOneName)
{
    fs::create_symlink(folder_ / "nowhere.db", file());
    const Error dangling = failureOf([&] { NewDatabase{file(), Existing::Replace}; });
    EXPECT_NE(dangling.description.find("symbolic link leads to no file"), std::string::npos) << dangling.description;
    EXPECT_TRUE(fs::is_symlink(file()));
    fs::remove(file());

    ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
    refuses("not a regular file");
    fs::remove(file());

    fs::create_directory(file());
    refuses("it is a directory");
    fs::remove(file());

    create(file())->Close();
    fs::create_hard_link(file(), folder_ / "second.db");
    refuses("hard links");
}

TEST_F(NewDatabaseTest, doesNotReplaceADatabaseWhoseLogItCannotRead)
{
    write(file(), "no database");
    write(folder_ / "a.db-wal", "what may this be");
    refuses("move it away");
    EXPECT_EQ(folder_.contents().at("a.db-wal"), "what may this be");
    fs::remove(file());
    refuses("move it away");
    write(file(), "");
    refuses("move it away");
    EXPECT_EQ(folder_.contents().at("a.db-wal"), "what may this be");
}

TEST_F(NewDatabaseTest, removesAbandonedDraftsAndNothingElse)
{
    const std::vector<std::string> foreign{"a.db.tmp-1",
                                           "a.db.tmp-99999-wal",
                                           "a.db.new-5",
                                           "a.db.draft-1",
                                           "a.db.draft-0123456789abcdeg",
                                           "a.db.draft-0123456789abcdef.txt",
                                           "xa.db.draft-0123456789abcdef",
                                           "a.db-locks"};
    for (const std::string& name : foreign) {
        write(folder_ / name, "foreign");
    }
    write(folder_ / "target.txt", "behind the link");
    fs::create_symlink("target.txt", folder_ / "a.db.draft-1111111111111111");
    write(folder_ / "a.db.draft-0123456789abcdef", "abandoned");
    {
        NewDatabase other{file()}; // in work
        NewDatabase database{file()};
        database.complete();
        EXPECT_EQ(failureOf([&] { other.complete(); }).number, errors::fileExists) << "its draft was still there";
    }
    const auto left = folder_.contents();
    for (const std::string& name : foreign) {
        EXPECT_TRUE(left.contains(name)) << name;
    }
    EXPECT_EQ(left.at("target.txt"), "behind the link");
    EXPECT_TRUE(fs::is_symlink(folder_ / "a.db.draft-1111111111111111"));
    EXPECT_FALSE(left.contains("a.db.draft-0123456789abcdef"));
    EXPECT_EQ(folder_.fileCount(), foreign.size() + 3);
}

TEST_F(NewDatabaseTest, aKilledOneIsRemovedByTheNext)
{
    if (!tamarok::test::canTrace()) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    int drafts = 0;
    for (int n = 1; tamarok::test::killAtChange(LOCK_CHILD, {"replace", file(), "CREATE TABLE N (A INT)"}, n); ++n) {
        drafts += folder_.fileCount() > (fs::exists(file()) ? 1U : 0U) ? 1 : 0;
    }
    EXPECT_GT(drafts, 3);
    replace();
    EXPECT_EQ(folder_.fileCount(), 1U);
}

TEST_F(NewDatabaseTest, namesTheWantedFileInErrorsOfItsConnection)
{
    const NewDatabase database{file()};
    const Error error = failureOf([&] { connect(file()); });
    EXPECT_NE(error.description.find("does not exist"), std::string::npos);
    EXPECT_EQ(database.connection()->ConnectionString(), "Provider=Tamarok.Embedded;Data Source=" + file().string());
}

} // namespace
} // namespace tamarok::embedded::test
