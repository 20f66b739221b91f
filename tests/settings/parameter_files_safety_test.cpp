#include <array>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "settings/parameter_folder.h"
#include "support/child_process.h"
#include "support/killed_at_change.h"
#include "support/mounted_disk.h"
#include "support/other_account.h"

#include "tamarok/error.h"

// What happens to parameter files when disks are full, processes are killed, rights are missing, and something else
// than a file has their name.
namespace tamarok {
namespace {

namespace fs = std::filesystem;
using test::errorNumber;
using test::expectError;
using test::failureOf;

constexpr unsigned otherAccount = 65534;

class ParameterFilesSafety : public test::ParameterFolder {
protected:
    struct stat statusOf(const std::string& name = "params.ini") const
    {
        struct stat status {};
        EXPECT_EQ(::lstat(path(name).c_str(), &status), 0) << name;
        return status;
    }

    /// Saving fails with that number; files and their contents stay.
    void refuses(std::int32_t number, std::string_view named, const std::string& name = "params.ini")
    {
        const auto before = folder.contents();
        expectError(number, named, [&] { act.SaveParam("A", "2", path(name)); });
        EXPECT_EQ(folder.contents(), before);
        EXPECT_FALSE(Platform::current().fileNumbers.isOpen(1));
        EXPECT_FALSE(Platform::current().fileNumbers.isOpen(2));
    }

    /// What saving by an account without rights of its own fails with; "saved" if it does not fail.
    std::string savedByAnother(std::string_view key = "A") const
    {
        return test::asOtherAccount([&] {
            act.SaveParam(key, "2", path());
            return std::string{"saved"};
        });
    }

    void openFolder() const { fs::permissions(folder.path(), fs::perms{0777}); }
};

// Names

TEST_F(ParameterFilesSafety, WhatIsNoFileNameIsAnError)
{
    using namespace std::string_view_literals;
    for (const auto name : {""sv, "a\0b.ini"sv}) {
        EXPECT_EQ(errorNumber([&] { act.GetParam("A", "d", name); }), errors::pathAccess);
        EXPECT_EQ(errorNumber([&] { act.SaveParam("A", "1", name); }), errors::pathAccess);
    }
    expectError(errors::pathAccess, "NUL", [&] { act.SaveParam("A", "1", path("a") + std::string{"\0b", 2}); });
    EXPECT_EQ(folder.fileCount(), 0U);
    EXPECT_EQ(errorNumber([&] { act.GetParam("A", "d", path(std::string(300, 'x'))); }), errors::pathAccess);
}

TEST_F(ParameterFilesSafety, AFolderIsNoFile)
{
    fs::create_directory(folder / "sub");
    expectError(errors::pathAccess, "is a folder", [&] { act.GetParam("A", "d", path("sub")); });
    refuses(errors::pathAccess, "is a folder", "sub");
    expectError(errors::pathNotFound, "nowhere", [&] { act.SaveParam("A", "1", path("nowhere/a.ini")); });
}

TEST_F(ParameterFilesSafety, APipeOrDeviceIsRefusedWithoutWaiting)
{
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0666), 0);
    expectError(errors::pathAccess, "not a regular file", [&] { act.GetParam("A", "d", path("pipe")); });
    refuses(errors::pathAccess, "not a regular file", "pipe");
    act.WriteReport("a", "b", "c", "d", path("pipe"));
    EXPECT_EQ(with.messages->shown.size(), 1U);
    expectError(errors::pathAccess, "/dev/zero", [&] { act.GetParam("A", "d", "/dev/zero"); });
    expectError(errors::pathAccess, "/dev/full", [&] { act.SaveParam("A", "d", "/dev/full"); });
}

TEST_F(ParameterFilesSafety, ALinkThatLeadsNowhereIsNotFollowed)
{
    fs::create_symlink(path("target"), path());
    EXPECT_EQ(act.GetParam("A", "d", path()), "d");
    refuses(errors::pathAccess, "symbolic link");
}

// What the file keeps

TEST_F(ParameterFilesSafety, ARewrittenFileKeepsItsMode)
{
    make("A = 1\n");
    fs::permissions(path(), fs::perms{0640});
    act.SaveParam("A", "2", path());
    EXPECT_EQ(statusOf().st_mode & 07777U, 0640U);
    EXPECT_EQ(statusOf("params.ini~").st_mode & 07777U, 0640U);
    EXPECT_EQ(folder.fileCount(), 2U);
}

TEST_F(ParameterFilesSafety, ARewrittenFileKeepsItsOwner)
{
    if (!test::canChangeAccount()) GTEST_SKIP() << "files cannot be given to another account here";
    make("A = 1\n");
    ASSERT_EQ(::chown(path().c_str(), otherAccount, otherAccount), 0);
    act.SaveParam("A", "2", path());
    act.SaveParam("A", "3", path()); // over the temporary file that the owner of the file has by now
    EXPECT_EQ(statusOf().st_uid, otherAccount);
    EXPECT_EQ(statusOf("params.ini~").st_uid, otherAccount);
    EXPECT_EQ(content(), "A = 3\n");
}

TEST_F(ParameterFilesSafety, ASymbolicLinkStaysAndItsTargetIsWritten)
{
    fs::create_directory(folder / "sub");
    make("A = 1\n", "sub/real.ini");
    fs::create_symlink("sub/real.ini", path());
    act.SaveParam("A", "2", path());
    EXPECT_TRUE(fs::is_symlink(path()));
    EXPECT_EQ(content("sub/real.ini"), "A = 2\n");
    EXPECT_EQ(content("params.ini~"), "A = 2\n");
    EXPECT_FALSE(fs::exists(path("sub/real.ini~")));
}

TEST_F(ParameterFilesSafety, FurtherHardLinksStay)
{
    make("% a long comment\nA = 1\n");
    fs::create_hard_link(path(), path("second.ini"));
    for (const std::string value : {"longer than the value before, much longer than it", "x"}) {
        act.SaveParam("A", value, path());
        EXPECT_EQ(content("second.ini"), "% a long comment\nA = " + value + "\n");
        EXPECT_EQ(content("params.ini~"), content("second.ini"));
    }
    EXPECT_EQ(statusOf().st_nlink, 2U);
}

/// An access list as Linux keeps it: it lets user 1234 write the file.
std::string accessList()
{
    struct Entry {
        std::uint16_t tag;
        std::uint16_t rights;
        std::uint32_t user;
    };
    constexpr std::uint32_t nobody = 0xFFFFFFFFU;
    constexpr std::array<Entry, 5> entries{
        {{0x01, 6, nobody}, {0x02, 6, 1234}, {0x04, 4, nobody}, {0x10, 6, nobody}, {0x20, 4, nobody}}};
    constexpr std::uint32_t version = 2;
    std::string bytes(sizeof version + sizeof entries, '\0');
    std::memcpy(bytes.data(), &version, sizeof version);
    std::memcpy(bytes.data() + sizeof version, entries.data(), sizeof entries);
    return bytes;
}

TEST_F(ParameterFilesSafety, AnAccessListStays)
{
    const char* const attribute = "system.posix_acl_access";
    const std::string list = accessList();
    make("A = 1\n");
    if (::setxattr(path().c_str(), attribute, list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "the file system of the temporary folder has no access lists";
    act.SaveParam("A", "2", path());
    EXPECT_EQ(content(), "A = 2\n");
    EXPECT_GT(::getxattr(path().c_str(), attribute, nullptr, 0), 0);
}

TEST_F(ParameterFilesSafety, WhereNoDraftCanBeMadeTheFileIsOverwrittenInPlace)
{
    make("A = 1\n");
    fs::create_directory(path("params.ini~new")); // the name of the draft
    const auto inode = statusOf().st_ino;
    act.SaveParam("A", "2", path());
    EXPECT_EQ(content(), "A = 2\n");
    EXPECT_EQ(statusOf().st_ino, inode);
    EXPECT_TRUE(fs::is_directory(path("params.ini~new")));
}

// What stands in the way of the temporary file

TEST_F(ParameterFilesSafety, AnythingButAFileInPlaceOfTheTemporaryFileIsRefused)
{
    make("A = 1\n");
    make("precious", "target");
    const auto tryWith = [&](const char* what, const auto& put) {
        put();
        refuses(errors::pathAccess, "params.ini~': is in the way");
        EXPECT_EQ(content("target"), "precious") << what;
        EXPECT_TRUE(fs::exists(fs::symlink_status(path("params.ini~")))) << what;
        fs::remove(path("params.ini~"));
    };
    tryWith("link", [&] { fs::create_symlink(path("target"), path("params.ini~")); });
    tryWith("link to nothing", [&] { fs::create_symlink(path("nothing"), path("params.ini~")); });
    tryWith("folder", [&] { fs::create_directory(path("params.ini~")); });
    tryWith("pipe", [&] { ASSERT_EQ(::mkfifo(path("params.ini~").c_str(), 0666), 0); });
    act.SaveParam("B", "1", path()); // an append needs no temporary file
    act.SaveParam("A", "2", path());
    EXPECT_EQ(content(), "A = 2\nB = 1\n\n");
}

TEST_F(ParameterFilesSafety, AHardLinkInPlaceOfTheTemporaryFileLosesItsNameOnly)
{
    make("A = 1\n");
    make("precious", "target");
    fs::create_hard_link(path("target"), path("params.ini~"));
    act.SaveParam("A", "2", path());
    EXPECT_EQ(content("target"), "precious");
    EXPECT_EQ(content("params.ini~"), "A = 2\n");
}

TEST_F(ParameterFilesSafety, AFileOfAnotherUserInPlaceOfTheTemporaryFileIsRefused)
{
    if (!test::canChangeAccount()) GTEST_SKIP() << "files cannot be given to another account here";
    make("A = 1\n");
    make("theirs", "params.ini~");
    ASSERT_EQ(::chown(path("params.ini~").c_str(), otherAccount, otherAccount), 0);
    refuses(errors::permissionDenied, "belongs to another user");
    // The other way round: root's file, where the other account may write file and folder.
    ASSERT_EQ(::chown(path("params.ini~").c_str(), 0, 0), 0);
    fs::permissions(path(), fs::perms{0666});
    ASSERT_EQ(::chown(path().c_str(), otherAccount, otherAccount), 0);
    openFolder();
    EXPECT_NE(savedByAnother().find("belongs to another user"), std::string::npos);
    EXPECT_EQ(content("params.ini~"), "theirs");
    EXPECT_EQ(content(), "A = 1\n");
}

TEST_F(ParameterFilesSafety, AccountsThatShareAFileTakeTurns)
{
    if (!test::canChangeAccount()) GTEST_SKIP() << "the account cannot be changed here";
    openFolder();
    make("A = 1\n");
    fs::permissions(path(), fs::perms{0666});
    const auto inode = statusOf().st_ino;
    // The other account cannot give a file to root, so that the file is overwritten in place and stays root's.
    EXPECT_EQ(savedByAnother(), "saved");
    EXPECT_EQ(content(), "A = 2\n");
    EXPECT_EQ(statusOf().st_uid, 0U);
    EXPECT_EQ(statusOf().st_ino, inode);
    EXPECT_EQ(statusOf("params.ini~").st_uid, otherAccount);
    act.SaveParam("A", "3", path());
    EXPECT_EQ(content(), "A = 3\n");
    EXPECT_EQ(savedByAnother(), "saved");
    EXPECT_EQ(content(), "A = 2\n");
    EXPECT_EQ(folder.fileCount(), 2U);
}

// Rights

TEST_F(ParameterFilesSafety, AReadOnlyFileIsReadAndNotWritten)
{
    if (!test::canChangeAccount()) GTEST_SKIP() << "root may write every file";
    openFolder();
    make("A = 1\n");
    fs::permissions(path(), fs::perms{0444});
    EXPECT_EQ(test::asOtherAccount([&] { return act.GetParam("A", "", path()); }), "1");
    const std::string denied = "Permission denied: '" + path() + "': Permission denied";
    EXPECT_EQ(savedByAnother(), denied);
    EXPECT_EQ(savedByAnother("New"), denied);
    EXPECT_EQ(content(), "A = 1\n");
    EXPECT_EQ(folder.fileCount(), 1U);
    fs::permissions(path(), fs::perms{0200});
    EXPECT_NE(test::asOtherAccount([&] { return act.GetParam("A", "d", path()); }), "d");
}

TEST_F(ParameterFilesSafety, AFolderThatCannotBeWrittenHindersARewriteOnly)
{
    if (!test::canChangeAccount()) GTEST_SKIP() << "root may write every folder";
    fs::permissions(folder.path(), fs::perms{0755});
    make("A = 1\n");
    fs::permissions(path(), fs::perms{0666});
    EXPECT_NE(savedByAnother().find("Permission denied: '" + path("params.ini~")), std::string::npos);
    EXPECT_EQ(content(), "A = 1\n");
    EXPECT_EQ(savedByAnother("New"), "saved");
    EXPECT_EQ(content(), "A = 1\nNew = 2\n\n");
    EXPECT_EQ(folder.fileCount(), 1U);
}

TEST_F(ParameterFilesSafety, AReadOnlyFileSystemIsAnError)
{
    const test::MountedDisk disk{folder / "disk"};
    if (!disk.done()) GTEST_SKIP() << "mounting a file system is not permitted here";
    make("A = 1\n", "disk/a.ini");
    ASSERT_TRUE(disk.makeReadOnly());
    EXPECT_EQ(act.GetParam("A", "", path("disk/a.ini")), "1");
    refuses(errors::permissionDenied, "Read-only file system", "disk/a.ini");
    EXPECT_EQ(errorNumber([&] { act.SaveParam("A", "1", path("disk/b.ini")); }), errors::permissionDenied);
}

// No room

class FullDisk : public ParameterFilesSafety {
protected:
    /// Fills the disk until that many bytes are left.
    void fill(std::size_t left) const
    {
        struct statvfs room {};
        ASSERT_EQ(::statvfs(path("disk").c_str(), &room), 0);
        const std::size_t free = room.f_bavail * room.f_frsize;
        ASSERT_GT(free, left);
        make(std::string(free - left, 'x'), "disk/filler");
    }
    std::string longFile() const { return "A = 1\n% " + std::string(200'000, 'x') + "\n"; }

    test::MountedDisk disk{folder / "disk"};
};

TEST_F(FullDisk, ARewriteLeavesTheFileAsItWas)
{
    if (!disk.done()) GTEST_SKIP() << "mounting a file system is not permitted here";
    make(longFile(), "disk/a.ini");
    fill(100'000); // not enough for the temporary file
    refuses(errors::diskFull, "a.ini~", "disk/a.ini");
    fs::remove(path("disk/filler"));
    fill(300'000); // enough for it, and not for the draft of the new file
    expectError(errors::diskFull, "a.ini", [&] { act.SaveParam("A", "2", path("disk/a.ini")); });
    EXPECT_EQ(content("disk/a.ini"), longFile());
    EXPECT_FALSE(fs::exists(path("disk/a.ini~new")));
    fs::remove(path("disk/filler"));
    act.SaveParam("A", "2", path("disk/a.ini"));
    EXPECT_EQ(act.GetParam("A", "", path("disk/a.ini")), "2");
}

TEST_F(FullDisk, ARewriteInPlaceLeavesTheFileAsItWas)
{
    if (!disk.done()) GTEST_SKIP() << "mounting a file system is not permitted here";
    make(longFile(), "disk/a.ini");
    fs::create_hard_link(path("disk/a.ini"), path("disk/second.ini"));
    fill(350'000);
    // The temporary file has room; the file cannot grow by as much.
    const std::string value(120'000, 'y');
    expectError(errors::diskFull, "a.ini", [&] { act.SaveParam("A", value, path("disk/a.ini")); });
    EXPECT_EQ(content("disk/a.ini"), longFile());
    // One that does not grow needs no room.
    act.SaveParam("A", "2", path("disk/a.ini"));
    EXPECT_EQ(act.GetParam("A", "", path("disk/second.ini")), "2");
}

TEST_F(FullDisk, AnAppendLeavesTheFileAsItWas)
{
    if (!disk.done()) GTEST_SKIP() << "mounting a file system is not permitted here";
    make("A = 1\n", "disk/a.ini");
    fill(0);
    // The first bytes still have room in the last block of the file.
    expectError(errors::diskFull, "a.ini", [&] { act.SaveParam("B", std::string(10'000, 'x'), path("disk/a.ini")); });
    EXPECT_EQ(content("disk/a.ini"), "A = 1\n");
    act.WriteReport("a", "b", std::string(10'000, 'x'), "d", path("disk/a.ini"));
    EXPECT_EQ(with.messages->shown.size(), 1U);
    EXPECT_EQ(content("disk/a.ini"), "A = 1\n");
}

TEST_F(ParameterFilesSafety, ALimitOfTheFileSizeLeavesTheFileAsItWas)
{
    const std::string file = make("A = 1\n% " + std::string(5000, 'x') + "\n");
    for (const std::string key : {"A", "New"}) {
        const auto before = folder.contents();
        const test::Outcome saved =
            test::runProgram(PARAMETER_CHILD, {"limited", "5050", file, key, std::string(100, 'y')});
        EXPECT_EQ(saved.status, 1);
        EXPECT_EQ(saved.output.substr(0, 13), "61 Disk full:") << saved.output;
        EXPECT_EQ(folder.contents(), before);
    }
}

// Killed processes

class Kills : public ParameterFilesSafety {
protected:
    /// Kills a process that saves before each of its changes to files, and calls `check` after each kill.
    template <class Check>
    int killEverywhere(const std::string& before, const Check& check)
    {
        int kills = 0;
        for (;; ++kills) {
            prepare(before);
            if (!test::killAtChange(PARAMETER_CHILD, {"save", path(), "A", "new"}, kills + 1)) return kills;
            check();
            if (::testing::Test::HasFailure()) return kills;
            // The next one finds nothing in its way.
            act.SaveParam("A", "newest", path());
            EXPECT_EQ(act.GetParam("A", "", path()), "newest");
        }
    }

    void prepare(const std::string& before)
    {
        for (const auto& entry : fs::directory_iterator{folder.path()})
            fs::remove(entry);
        make(before);
        if (hasSecondLink) fs::create_hard_link(path(), path("second.ini"));
    }

    std::string comment = "% " + std::string(300'000, 'x') + "\n";
    bool hasSecondLink = false;
};

TEST_F(Kills, LeaveTheOldFileOrTheNewOne)
{
    if (!test::canTrace()) GTEST_SKIP() << "processes cannot be traced here";
    const std::string old = "A = old\n" + comment;
    const int kills = killEverywhere(old, [&] {
        const std::string found = content();
        EXPECT_TRUE(found == old || found == "A = new\n" + comment) << found.substr(0, 20);
    });
    EXPECT_GT(kills, 10);
    EXPECT_EQ(content(), "A = new\n" + comment);
}

TEST_F(Kills, InTheMiddleOfOverwritingLeaveTheTemporaryFileWhole)
{
    if (!test::canTrace()) GTEST_SKIP() << "processes cannot be traced here";
    hasSecondLink = true;
    const std::string old = "A = older\n" + comment;
    int torn = 0;
    const int kills = killEverywhere(old, [&] {
        const std::string found = content();
        if (found == old || found == "A = new\n" + comment) return;
        ++torn;
        EXPECT_EQ(content("params.ini~"), "A = new\n" + comment);
        make(old); // the one that is saved next needs a whole file
    });
    EXPECT_GT(torn, 0);
    EXPECT_GT(kills, 10);
    EXPECT_EQ(content("second.ini"), "A = new\n" + comment);
}

// Size and other processes

TEST_F(ParameterFilesSafety, ALargeFileTakesBoundedMemory)
{
    std::string block;
    while (block.size() < 1'000'000)
        block += "key" + std::to_string(block.size()) + " = some value of it\n";
    {
        std::ofstream file{path(), std::ios::binary};
        for (int count = 0; count < 40; ++count)
            file << "% " << count << '\n' << block;
        file << "Last = ü\n";
    }
    const test::Outcome read = test::runProgram(PARAMETER_CHILD, {"read", path(), "last"});
    ASSERT_EQ(read.status, 0) << read.output;
    ASSERT_TRUE(read.output.starts_with("ü ")) << read.output;
#ifndef __SANITIZE_ADDRESS__ // the sanitizer keeps what was given back
    EXPECT_LT(std::stol(read.output.substr(3)), 8000) << "KiB for a file of 40 MB";
#endif
}

TEST_F(ParameterFilesSafety, LinesOfAMegabyte)
{
    const std::string value(3'000'000, 'v');
    act.SaveParam("A", value, path());
    act.SaveParam("B", "1", path());
    act.SaveParam("a", value + "w", path());
    EXPECT_EQ(act.GetParam("A", "", path()), value + "w");
    EXPECT_EQ(act.GetParam("B", "", path()), "1");
}

TEST_F(ParameterFilesSafety, LinesOfProcessesThatWriteAtOnceStayWhole)
{
    const std::string count = "200";
    std::vector<std::unique_ptr<test::ChildProcess>> writers;
    std::vector<std::string> texts;
    for (const char letter : {'a', 'b', 'c'}) {
        texts.emplace_back(5000, letter);
        writers.push_back(std::make_unique<test::ChildProcess>(
            PARAMETER_CHILD, std::vector<std::string>{"report", path("protocol.txt"), texts.back(), count}));
    }
    for (const auto& writer : writers)
        EXPECT_EQ(writer->finish().status, 0);
    std::ifstream file{path("protocol.txt")};
    std::map<std::string, int> lines;
    for (std::string line; std::getline(file, line);) {
        ASSERT_TRUE(line.starts_with("M; N; ") && line.ends_with("; U  \r")) << line.substr(0, 20);
        const std::string text = line.substr(6, 5000);
        ++lines[text];
    }
    ASSERT_EQ(lines.size(), texts.size());
    for (const std::string& text : texts)
        EXPECT_EQ(lines[text], 200);
}

} // namespace
} // namespace tamarok
