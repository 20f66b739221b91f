#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "support/errors.h"
#include "support/scratch_folder.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::expectError;
using test::failureOf;

class FilesOfTheMachine : public ::testing::Test {
protected:
    std::string path(const std::string& name) const { return folder / name; }
    std::string content(const std::string& name) const { return folder.contents().at(name); }
    std::string make(std::string_view bytes, const std::string& name) const
    {
        std::ofstream{folder / name, std::ios::binary} << bytes;
        return path(name);
    }

    test::ScratchFolder folder;
    FileSystem& files = Platform::fileSystem();
};

TEST_F(FilesOfTheMachine, CreatingLeavesAnExistingFileAlone)
{
    files.create(path("a"));
    EXPECT_EQ(content("a"), "");
    make("text", "a");
    files.create(path("a"));
    EXPECT_EQ(content("a"), "text");
}

TEST_F(FilesOfTheMachine, AFolderIsNoFile)
{
    EXPECT_FALSE(files.exists(folder.path().string()));
    EXPECT_FALSE(files.exists(path("a")));
    make("", "a");
    EXPECT_TRUE(files.exists(path("a")));
    EXPECT_TRUE(files.exists(folder.path().string() + "\\a"));
    expectError(errors::pathAccess, "is a folder", [&] { files.openInput(folder.path().string()); });
    expectError(errors::pathAccess, "is a folder", [&] { files.create(folder.path().string()); });
}

TEST_F(FilesOfTheMachine, ReadsAtAnyPositionAndWritesAtTheEnd)
{
    const auto file = files.openAppend(make("0123", "a"));
    file->write("45");
    file->write("6");
    EXPECT_EQ(file->size(), 7U);
    std::array<char, 4> buffer{};
    EXPECT_EQ(file->readAt(4, buffer), 3U);
    EXPECT_EQ(std::string(buffer.data(), 3), "456");
    EXPECT_EQ(file->readAt(7, buffer), 0U);
    EXPECT_EQ(content("a"), "0123456");
}

TEST_F(FilesOfTheMachine, WritersKnowOfEachOther)
{
    const auto first = files.openAppend(make("", "a"));
    EXPECT_TRUE(first->isOnlyWriter());
    {
        const auto second = files.openAppend(path("a"));
        EXPECT_FALSE(second->isOnlyWriter());
    }
    EXPECT_TRUE(first->isOnlyWriter());
    const auto other = files.openAppend(make("", "b"));
    const auto another = files.openAppend(path("b"));
    EXPECT_FALSE(other->isOnlyWriter());
    EXPECT_FALSE(another->isOnlyWriter());
    const auto reader = files.openInput(path("a"));
    EXPECT_TRUE(first->isOnlyWriter());
}

TEST_F(FilesOfTheMachine, WhatWasOpenedForReadingCannotBeWritten)
{
    const auto file = files.openInput(make("0123", "a"));
    expectError(errors::deviceError, "a", [&] { file->write("4"); });
    EXPECT_EQ(content("a"), "0123");
}

TEST_F(FilesOfTheMachine, FailuresHaveThePlatformsNumbersAndNameThePath)
{
    const Error missing = failureOf([&] { files.openInput(path("a")); });
    EXPECT_EQ(missing.number, errors::fileNotFound);
    EXPECT_EQ(missing.description, "File not found: '" + path("a") + "': No such file or directory");
    expectError(errors::pathNotFound, "no/a", [&] { files.openInput(path("no/a")); });
    expectError(errors::pathNotFound, "no/a", [&] { files.openAppend(path("no/a")); });
    expectError(errors::pathNotFound, "no/a", [&] { files.create(path("no/a")); });
    expectError(errors::fileNotFound, "b", [&] { files.createBeside(path("b~"), path("b")); });
    expectError(errors::fileNotFound, "b~", [&] { files.copyOver(path("b~"), make("", "b")); });
    std::filesystem::create_symlink("loop", path("loop"));
    expectError(errors::pathAccess, "loop", [&] { files.openInput(path("loop")); });
    files.remove(path("never there"));
    files.remove("");
}

TEST_F(FilesOfTheMachine, CopiesOverLongerAndShorterFiles)
{
    for (const std::string& text : {std::string(200'000, 'x'), std::string{"short"}, std::string{}}) {
        make("before", "a");
        make(text, "a~");
        files.copyOver(path("a~"), path("a"));
        EXPECT_EQ(content("a"), text);
        EXPECT_EQ(content("a~"), text);
        EXPECT_EQ(folder.fileCount(), 2U);
    }
}

TEST(FileNumbers, ANumberInUseIsNotOpenedAgain)
{
    FileNumbers numbers;
    int opened = 0;
    const auto open = [&]() -> std::shared_ptr<File> {
        ++opened;
        return nullptr;
    };
    numbers.open(1, "first.ini", open);
    expectError(errors::fileAlreadyOpen, "first.ini", [&] { numbers.open(1, "second.ini", open); });
    EXPECT_EQ(opened, 1);
    numbers.open(2, "second.ini", open);
    numbers.close(1);
    numbers.close(1);
    EXPECT_FALSE(numbers.isOpen(1));
    EXPECT_TRUE(numbers.isOpen(2));
    numbers.closeAll();
    EXPECT_FALSE(numbers.isOpen(2));
}

TEST(FileNumbers, AFailedOpeningLeavesTheNumberFree)
{
    FileNumbers numbers;
    EXPECT_EQ(errorNumber([&] { numbers.open(1, "a", [&] { return Platform::fileSystem().openInput(""); }); }),
              errors::pathAccess);
    EXPECT_FALSE(numbers.isOpen(1));
}

TEST(FileNumbers, EachThreadHasItsOwn)
{
    Platform::current().fileNumbers.open(1, "a", [] { return std::shared_ptr<File>{}; });
    std::thread{[] { EXPECT_FALSE(Platform::current().fileNumbers.isOpen(1)); }}.join();
    Platform::current().fileNumbers.closeAll();
}

TEST(PlatformFiles, AreAnErrorWhereNoneAreSet)
{
    const PlatformScope scope{Platform{}};
    Platform::current().files = nullptr;
    EXPECT_EQ(errorNumber([] { Platform::fileSystem(); }), errors::objectNotSet);
}

} // namespace
} // namespace tamarok
