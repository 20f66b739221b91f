#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <windows.h>

#include "file_locks.h"
#include "path_text.h"
#include "private_copy.h"
#include "row_file.h"
#include "support/errors.h"
#include "support/scratch_folder.h"
#include "system_files.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_windows/wide_text.h"

// What the database adapters ask of Windows: exclusive files, locks that die with their holder, access lists, temporary
// files, and paths with umlauts and blanks. Started with the arguments "hold FILE" the program locks byte 5 of a file,
// says so and waits to be ended.

namespace tamarok::embedded {

namespace {

namespace fs = std::filesystem;
using tamarok::test::failureOf;
using tamarok::test::ScratchFolder;

constexpr ByteRange fifth{5, 5};

void write(const fs::path& file, const std::string& bytes)
{
    std::ofstream{file, std::ios::binary} << bytes;
}

std::size_t fileCount(const fs::path& folder)
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator{folder}, fs::directory_iterator{}));
}

struct CloseNative {
    void operator()(void* handle) const noexcept { CloseHandle(handle); }
};
using NativeHandle = std::unique_ptr<void, CloseNative>;

void makeTable(const fs::path& file)
{
    NewDatabase made{file};
    made.connection()->Execute("CREATE TABLE T (ID INT) INSERT INTO T VALUES (1)");
    made.complete();
}

/// Protects a file against writing until its end.
class WriteProtection {
public:
    explicit WriteProtection(fs::path file) : file_{std::move(file)}
    {
        SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
    }
    ~WriteProtection() { SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL); }
    WriteProtection(const WriteProtection&) = delete;
    WriteProtection& operator=(const WriteProtection&) = delete;

    /// Whether the system itself refuses to open the file for writing.
    bool holds() const { return !std::ofstream{file_, std::ios::app}.is_open(); }

private:
    fs::path file_;
};

/// Another process of this program that holds a lock until it is killed.
class Holder {
public:
    explicit Holder(const fs::path& file)
    {
        std::array<wchar_t, MAX_PATH> program{};
        GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
        const fs::path ready = file.parent_path() / L"ready";
        std::wstring command = L"\"" + std::wstring{program.data()} + L"\" hold \"" + file.native() + L"\"";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION made{};
        EXPECT_NE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &made),
                  0);
        process_.reset(made.hProcess);
        const NativeHandle thread{made.hThread};
        constexpr int attempts = 1000;
        for (int attempt = 0; attempt < attempts && !fs::exists(ready); ++attempt)
            Sleep(10);
        EXPECT_TRUE(fs::exists(ready));
    }
    ~Holder() { kill(); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    void kill()
    {
        if (!process_) return;
        TerminateProcess(process_.get(), 1);
        WaitForSingleObject(process_.get(), INFINITE);
        process_.reset();
    }

private:
    NativeHandle process_;
};

class DataFilesTest : public testing::Test {
protected:
    DataFilesTest() { fs::create_directory(folder_); }
    std::string path(const wchar_t* name) const { return textOf(folder_ / name); }

    ScratchFolder scratch_;
    fs::path folder_ = scratch_.path() / L"Wald und B\u00E4ume \u0416";
};

TEST_F(DataFilesTest, makesAFileOnlyOnce)
{
    std::error_code failed;
    const FileHandle file = createFile(path(L"\u00F6.db"), failed);
    EXPECT_TRUE(file.isOpen());
    EXPECT_FALSE(createFile(path(L"\u00F6.db"), failed).isOpen());
    EXPECT_EQ(failed, std::errc::file_exists);
    EXPECT_FALSE(failed.message().empty());
    EXPECT_TRUE(fs::exists(folder_ / L"\u00F6.db"));
}

TEST_F(DataFilesTest, tellsWhatAPathLeadsTo)
{
    std::error_code failed;
    EXPECT_FALSE(statusOf(path(L"missing"), failed));
    EXPECT_EQ(failed, std::errc::no_such_file_or_directory);
    EXPECT_FALSE(statusOf(path(L"no\\folder"), failed));
    EXPECT_EQ(failed, std::errc::no_such_file_or_directory);
    EXPECT_FALSE(entryOf(path(L"missing")));
    EXPECT_EQ(statusOf(textOf(folder_), failed)->kind, FileKind::Directory);

    write(folder_ / L"a", "12345");
    const auto status = statusOf(path(L"a"), failed);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->kind, FileKind::Regular);
    EXPECT_EQ(status->size, 5);
    EXPECT_EQ(status->names, 1U);
    write(folder_ / L"b", "1");
    EXPECT_NE(status->identity, entryOf(path(L"b"))->identity);
    fs::create_hard_link(folder_ / L"a", folder_ / L"c");
    EXPECT_EQ(statusOf(path(L"c"), failed)->names, 2U);
    EXPECT_EQ(statusOf(path(L"c"), failed)->identity, status->identity);
}

TEST_F(DataFilesTest, followsNoLink)
{
    write(folder_ / L"a", "1");
    std::error_code failed;
    fs::create_symlink(folder_ / L"a", folder_ / L"link", failed);
    const auto entry = entryOf(path(L"link"));
    if (failed || !entry || entry->kind != FileKind::Link) GTEST_SKIP() << "this system makes no symbolic links";
    EXPECT_FALSE(openFile(path(L"link"), failed).isOpen());
    EXPECT_EQ(failed, std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(statusOf(path(L"link"), failed)->kind, FileKind::Regular);
}

TEST_F(DataFilesTest, namesTheRealPath)
{
    write(folder_ / L"a", "1");
    std::error_code failed;
    const std::string real = realPath(textOf(folder_ / L".." / folder_.filename() / L"a"), failed);
    EXPECT_FALSE(failed) << failed.message();
    EXPECT_EQ(real.find(".."), std::string::npos);
    EXPECT_TRUE(fs::equivalent(pathOf(real), folder_ / L"a"));
    EXPECT_NE(real.find("B\u00E4ume"), std::string::npos) << real;
    realPath(path(L"missing"), failed);
    EXPECT_EQ(failed, std::errc::no_such_file_or_directory);
}

TEST_F(DataFilesTest, tellsWhatTheAccountMayNotWrite)
{
    write(folder_ / L"a", "1");
    EXPECT_FALSE(checkAccess(path(L"a"), true));
    EXPECT_FALSE(checkFolderAccess(textOf(folder_)));
    EXPECT_EQ(checkFolderAccess(path(L"missing")), std::errc::no_such_file_or_directory);
    const WriteProtection protection{folder_ / L"a"};
    EXPECT_FALSE(checkAccess(path(L"a"), false));
    if (!protection.holds()) GTEST_SKIP() << "Wine's root may write every file";
    EXPECT_EQ(checkAccess(path(L"a"), true), std::errc::permission_denied);
}

TEST_F(DataFilesTest, aWriteProtectedDatabaseCanBeRead)
{
    makeTable(folder_ / L"a.db");
    const WriteProtection protection{folder_ / L"a.db"};
    OpenOptions reading;
    reading.mode = OpenMode::ReadOnly;
    EXPECT_EQ(connect(folder_ / L"a.db", reading)->State(), ado::ObjectState::Open);
    EXPECT_EQ(fileCount(folder_), 1U);
    if (!protection.holds()) GTEST_SKIP() << "Wine's root may write every file";
    EXPECT_THROW(connect(folder_ / L"a.db"), Error);
}

TEST_F(DataFilesTest, locksExcludeTheHandlesOfOneProcess)
{
    std::error_code failed;
    const FileHandle first = createFile(path(L"locks"), failed);
    FileHandle second = openFile(path(L"locks"), failed);
    ASSERT_TRUE(first.isOpen() && second.isOpen());
    const HeldPositions none;
    const HeldPositions held{{5, 1}};
    EXPECT_TRUE(tryLockRange(first, fifth));
    EXPECT_FALSE(tryLockRange(second, fifth));
    EXPECT_TRUE(tryLockRange(second, {6, 6}));
    EXPECT_FALSE(lockedByOthers(first, {0, 5}, held)) << "its own lock";
    const auto found = lockedByOthers(second, {0, 5}, {{6, 1}});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->first, 5);
    EXPECT_EQ(found->last, 5);
    EXPECT_EQ(lockedByOthers(first, {0, 100}, held)->first, 6) << "behind its own lock";
    unlockRange(first, fifth);
    EXPECT_FALSE(lockedByOthers(second, {0, 5}, {{6, 1}}));
    second.close();
    EXPECT_FALSE(lockedByOthers(first, everyByte, none)) << "the end of a handle ends its locks";
}

TEST_F(DataFilesTest, locksLieAnywhereInSixtyThreeBits)
{
    std::error_code failed;
    const FileHandle first = createFile(path(L"locks"), failed);
    const FileHandle second = openFile(path(L"locks"), failed);
    const std::int64_t place = (std::int64_t{0x7ABCDE} << 39) + 123456789;
    EXPECT_TRUE(tryLockRange(first, {place, place}));
    EXPECT_FALSE(tryLockRange(second, {place, place}));
    EXPECT_TRUE(tryLockRange(second, {place + 1, place + 1}));
    const auto found =
        lockedByOthers(second, {std::int64_t{0x7ABCDE} << 39, (std::int64_t{0x7ABCDF} << 39) - 1}, {{place + 1, 1}});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->first, place);
    EXPECT_FALSE(tryLockRange(second, everyByte));
}

TEST_F(DataFilesTest, locksDieWithTheirHolder)
{
    const fs::path name = folder_ / L"locks";
    std::error_code failed;
    const FileHandle file = createFile(textOf(name), failed);
    Holder holder{name};
    EXPECT_FALSE(tryLockRange(file, fifth));
    EXPECT_EQ(lockedByOthers(file, everyByte, {})->first, 5);
    holder.kill();
    EXPECT_FALSE(lockedByOthers(file, everyByte, {}));
    EXPECT_TRUE(tryLockRange(file, fifth));
}

TEST_F(DataFilesTest, servesWithThePermissionsOfTheModel)
{
    write(folder_ / L"model", "1");
    const std::string model = path(L"model");
    std::error_code failed;
    const FileHandle like = createFileLike(path(L"like"), model, failed);
    EXPECT_TRUE(like.isOpen()) << failed.message();
    const FileHandle plain = createFile(path(L"plain"), failed);
    EXPECT_FALSE(giveOwner(plain, model));
    const std::error_code given = givePermissions(plain, model);
    EXPECT_FALSE(given) << given.message();
    followPermissions(like, model);
    EXPECT_FALSE(checkAccess(path(L"like"), true));
    EXPECT_FALSE(createFileLike(path(L"other"), path(L"missing"), failed).isOpen());
    EXPECT_FALSE(fs::exists(folder_ / L"other"));
    EXPECT_FALSE(createFileLike(path(L"like"), model, failed).isOpen());
    EXPECT_EQ(failed, std::errc::file_exists);
}

TEST_F(DataFilesTest, renamesOverAFileOnlyWhenItMay)
{
    write(folder_ / L"new", "new");
    write(folder_ / L"old", "old");
    EXPECT_EQ(renameToNew(path(L"new"), path(L"old")), std::errc::file_exists);
    {
        std::error_code failed;
        const FileHandle open = openFile(path(L"old"), failed);
        EXPECT_TRUE(renameOver(path(L"new"), path(L"old"))) << "an open file keeps its name";
    }
    EXPECT_FALSE(renameOver(path(L"new"), path(L"old")));
    EXPECT_EQ(fs::file_size(folder_ / L"old"), 3U);
    EXPECT_FALSE(fs::exists(folder_ / L"new"));
    EXPECT_FALSE(renameToNew(path(L"old"), path(L"free")));
    EXPECT_TRUE(fs::exists(folder_ / L"free"));
}

TEST_F(DataFilesTest, temporaryRowsAreNobodyElses)
{
    odbc::RowFile file;
    file.open();
    const std::string text = "0123456789";
    file.writeAt(0, text);
    file.writeAt(5, std::string_view{"abc"});
    std::array<char, 10> bytes{};
    EXPECT_EQ(file.readAt(0, bytes), 10U);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "01234abc89");
    std::size_t found = 0;
    for (const auto& entry : fs::directory_iterator{fs::temp_directory_path()})
        if (entry.path().filename().wstring().starts_with(L"tamarok-rows-")) {
            ++found;
            std::error_code failed;
            EXPECT_FALSE(openForReading(textOf(entry.path()), failed).isOpen());
        }
    EXPECT_EQ(found, 1U);
    file.close();
    for (const auto& entry : fs::directory_iterator{fs::temp_directory_path()})
        EXPECT_FALSE(entry.path().filename().wstring().starts_with(L"tamarok-rows-")) << entry.path();
}

// The files of a database.

std::int64_t countOf(const ado::ConnectionRef& connection)
{
    return connection->Execute("UPDATE T SET ID = ID");
}

TEST_F(DataFilesTest, makesADatabaseAsAWhole)
{
    const fs::path file = folder_ / L"L\u00E4rche.db";
    {
        NewDatabase given{file};
        given.connection()->Execute("CREATE TABLE T (ID INT)");
        EXPECT_FALSE(fs::exists(file));
    }
    EXPECT_EQ(fileCount(folder_), 0U) << "what is not complete goes";
    makeTable(file);
    EXPECT_EQ(fileCount(folder_), 1U);
    EXPECT_EQ(failureOf([&] { makeTable(file); }).number, errors::fileExists);
    EXPECT_EQ(countOf(connect(file)), 1);
}

TEST_F(DataFilesTest, replacesADatabaseThatNobodyHasOpen)
{
    const fs::path file = folder_ / L"a.db";
    makeTable(file);
    const auto replace = [&] {
        NewDatabase made{file, NewDatabase::Existing::Replace};
        made.connection()->Execute("CREATE TABLE T (ID INT) INSERT INTO T VALUES (1) INSERT INTO T VALUES (2)");
        made.complete();
    };
    {
        const ado::ConnectionRef reader = connect(file);
        EXPECT_NE(failureOf(replace).description.find("another session has it open"), std::string::npos);
        EXPECT_EQ(countOf(reader), 1);
    }
    replace();
    EXPECT_EQ(countOf(connect(file)), 2);
    {
        NewDatabase made{file, NewDatabase::Existing::Replace};
        const ado::ConnectionRef late = connect(file);
        EXPECT_THROW(made.complete(), Error) << "opened while the new one was made";
        EXPECT_EQ(countOf(late), 2);
    }
    EXPECT_EQ(countOf(connect(file)), 2);
}

TEST_F(DataFilesTest, removesTheDraftOfAKilledProcess)
{
    const fs::path file = folder_ / L"a.db";
    write(folder_ / L"a.db.draft-0123456789abcdef", "left behind");
    write(folder_ / L"a.db.draft-0123456789abcdeX", "another file");
    makeTable(file);
    EXPECT_FALSE(fs::exists(folder_ / L"a.db.draft-0123456789abcdef"));
    EXPECT_TRUE(fs::exists(folder_ / L"a.db.draft-0123456789abcdeX"));
}

TEST_F(DataFilesTest, refusesASecondName)
{
    makeTable(folder_ / L"a.db");
    fs::create_hard_link(folder_ / L"a.db", folder_ / L"b.db");
    EXPECT_NE(failureOf([&] { connect(folder_ / L"a.db"); }).description.find("hard links"), std::string::npos);
}

TEST_F(DataFilesTest, readingLeavesNothingBehind)
{
    const fs::path file = folder_ / L"a.db";
    makeTable(file);
    OpenOptions reading;
    reading.mode = OpenMode::ReadOnly;
    ado::Recordset rows;
    const ado::ConnectionRef reader = connect(file, reading);
    rows.Open("SELECT ID FROM T", reader);
    EXPECT_EQ(rows.Fields().Item("ID").Value(), Variant{std::int32_t{1}});
    rows.Close();
    EXPECT_EQ(fileCount(folder_), 1U);
    const ado::ConnectionRef writer = connect(file);
    writer->Execute("INSERT INTO T VALUES (2)");
    rows.Open("SELECT COUNT(*) FROM T", reader);
    EXPECT_EQ(rows.Fields().Item(0).Value(), Variant{std::int32_t{2}}) << "beside a session that writes";
    rows.Close();
    writer->Close();
    reader->Close();
}

TEST_F(DataFilesTest, aPrivateCopyHoldsTheLogAndGoes)
{
    const fs::path file = folder_ / L"a.db";
    makeTable(file);
    const ado::ConnectionRef writer = connect(file);
    writer->Execute("INSERT INTO T VALUES (2)");
    fs::path copied;
    {
        const PrivateCopy copy{{textOf(file), textOf(file)}};
        copied = pathOf(copy.file());
        EXPECT_EQ(countOf(connect(copied)), 2);
    }
    EXPECT_FALSE(fs::exists(copied.parent_path()));
}

TEST_F(DataFilesTest, rowLocksHoldBetweenSessions)
{
    const fs::path file = folder_ / L"a.db";
    makeTable(file);
    const ado::ConnectionRef holder = connect(file);
    const ado::ConnectionRef other = connect(file);
    other->CommandTimeout(1);
    ado::Recordset rows;
    rows.Open("SELECT ID FROM T", holder, ado::CursorType::OpenDynamic, ado::LockType::Pessimistic);
    rows.MoveFirst();
    EXPECT_EQ(failureOf([&] { other->Execute("UPDATE T SET ID = 9"); }).number, errors::timeout);
    EXPECT_EQ(countOf(holder), 1) << "the holder itself may change its row";
    rows.Close();
    EXPECT_EQ(other->Execute("UPDATE T SET ID = 9"), 1);
}

/// The other process of `Holder`.
int hold(const fs::path& name)
{
    std::error_code failed;
    const FileHandle file = openFile(textOf(name), failed);
    if (!file.isOpen() || !tryLockRange(file, fifth)) return 1;
    write(name.parent_path() / L"ready", "");
    Sleep(INFINITE);
    return 0;
}

} // namespace

} // namespace tamarok::embedded

int main(int count, char** words)
{
    if (count == 3 && std::string_view{words[1]} == "hold") {
        int wideCount = 0;
        const std::unique_ptr<LPWSTR, decltype(&LocalFree)> wide{CommandLineToArgvW(GetCommandLineW(), &wideCount),
                                                                 &LocalFree};
        return tamarok::embedded::hold(wide.get()[2]);
    }
    testing::InitGoogleTest(&count, words);
    return RUN_ALL_TESTS();
}
