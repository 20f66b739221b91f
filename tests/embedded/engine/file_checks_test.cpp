#include <fcntl.h>
#include <sqlite3.h>

#include "support/mounted_disk.h"
#include "support/other_account.h"
#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

using testing::Test;

class FileChecks : public Test {
protected:
    /// Opening fails for that reason, names the file, and leaves the folder as it was.
    void refuses(const std::filesystem::path& file, const std::string& reason, OpenMode mode = OpenMode::OpenExisting)
    {
        const auto before = folder_.contents();
        OpenOptions options;
        options.mode = mode;
        const Error error = failureOf([&] { connect(file, options); });
        EXPECT_EQ(error.number, errors::providerFailure);
        EXPECT_EQ(error.source, "Tamarok embedded database");
        EXPECT_NE(error.description.find(file.string()), std::string::npos) << error.description;
        EXPECT_NE(error.description.find(reason), std::string::npos) << error.description;
        EXPECT_EQ(folder_.contents(), before);
    }

    /// A file that SQLite made, with the pragmas given.
    std::filesystem::path plainDatabase(const std::string& pragmas)
    {
        const std::filesystem::path file = folder_ / "plain.db";
        sqlite3* handle = nullptr;
        sqlite3_open(file.c_str(), &handle);
        EXPECT_EQ(sqlite3_exec(handle, ("CREATE TABLE T(A);" + pragmas).c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
        return file;
    }

    Folder folder_;
};

TEST_F(FileChecks, missingFile)
{
    refuses(folder_ / "none.db", "does not exist");
    refuses(folder_ / "none.db", "does not exist", OpenMode::ReadOnly);
}

TEST_F(FileChecks, missingFolder)
{
    refuses(folder_ / "no/such.db", "does not exist");
    refuses(folder_ / "no/such.db", "folder", OpenMode::Create);
}

TEST_F(FileChecks, directory)
{
    refuses(folder_.path(), "it is a directory");
    refuses(folder_.path(), "it is a directory", OpenMode::Create);
}

TEST_F(FileChecks, emptyFile)
{
    write(folder_ / "empty.db", "");
    refuses(folder_ / "empty.db", "the file is empty");
}

TEST_F(FileChecks, randomBytes)
{
    std::string bytes;
    std::uint32_t state = 1;
    for (int i = 0; i < 10000; ++i) {
        state = state * 1664525U + 1013904223U;
        bytes.push_back(static_cast<char>(state >> 24U));
    }
    write(folder_ / "random.db", bytes);
    refuses(folder_ / "random.db", "not a database");
    write(folder_ / "short.db", "SQLite");
    refuses(folder_ / "short.db", "not a database");
}

TEST_F(FileChecks, databaseOfAnotherProgram)
{
    refuses(plainDatabase(""), "another program");
}

TEST_F(FileChecks, newerLayout)
{
    std::string pragmas = "PRAGMA application_id=";
    pragmas.append(std::to_string(applicationId));
    pragmas.append(";PRAGMA user_version=");
    pragmas.append(std::to_string(layoutVersion + 1));
    refuses(plainDatabase(pragmas), "newer layout 3");
}

TEST_F(FileChecks, createNeverReplaces)
{
    create(folder_ / "a.db")->Close();
    refuses(folder_ / "a.db", "exists already", OpenMode::Create);
    write(folder_ / "text.txt", "hello");
    refuses(folder_ / "text.txt", "exists already", OpenMode::Create);
}

TEST_F(FileChecks, createdFileCarriesMarkAndLayoutAndNothingElseIsLeft)
{
    create(folder_ / "a.db")->Close();
    const auto files = folder_.contents();
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files.begin()->second.substr(68, 4), "TMK1");
    EXPECT_EQ(files.begin()->second.substr(60, 4), std::string("\0\0\0\2", 4));
}

TEST_F(FileChecks, damagedSchema)
{
    {
        const auto connection = create(folder_ / "a.db");
        run(connection, "CREATE TABLE T (A INT)");
    }
    std::string bytes = folder_.contents().at("a.db");
    const std::size_t text = bytes.find("CREATE TABLE");
    ASSERT_NE(text, std::string::npos);
    bytes.replace(text, 6, "XXXXXX");
    write(folder_ / "a.db", bytes);
    const Error error = failureOf([&] { connect(folder_ / "a.db"); });
    EXPECT_EQ(error.number, errors::providerFailure);
    EXPECT_EQ(error.nativeError, 824);
    EXPECT_NE(error.description.find("damaged"), std::string::npos) << error.description;
    EXPECT_NE(error.description.find("a.db"), std::string::npos) << error.description;
}

TEST_F(FileChecks, damagedPages)
{
    {
        const auto connection = create(folder_ / "a.db");
        run(connection, "CREATE TABLE T (A NVARCHAR(4000))");
        for (int i = 0; i < 50; ++i) {
            run(connection, "INSERT INTO T (A) VALUES (REPLICATE('x',3000))");
        }
    }
    std::string bytes = folder_.contents().at("a.db");
    std::fill(bytes.begin() + 4096, bytes.end(), '\x5A');
    write(folder_ / "a.db", bytes);
    const auto connection = connect(folder_ / "a.db");
    const Error error = failureOf([&] { columnOf(connection, "SELECT A FROM T"); });
    EXPECT_EQ(error.nativeError, 824);
    EXPECT_NE(error.description.find("a.db"), std::string::npos) << error.description;
    EXPECT_EQ(error.statement, "SELECT A FROM T");
}

TEST_F(FileChecks, namesWithSpecialCharacters)
{
    for (const char* const name : {"file:a?mode=memory.db", "ä b;c'd\"e.db", "100%#.db"}) {
        create(folder_ / name)->Close();
        EXPECT_TRUE(std::filesystem::exists(folder_ / name)) << name;
        const auto again = connect(folder_ / name);
        EXPECT_EQ(connectText(again->ConnectionString())->ConnectionString(), again->ConnectionString());
        OpenOptions options;
        options.mode = OpenMode::ReadOnly;
        EXPECT_EQ(valueOf(connect(folder_ / name, options), "SELECT 1"), Variant{1});
    }
}

TEST_F(FileChecks, readOnlyModeReadsAndRefusesToWrite)
{
    run(create(folder_ / "a.db"), "CREATE TABLE T (A INT); INSERT INTO T (A) VALUES (7)");
    OpenOptions options;
    options.mode = OpenMode::ReadOnly;
    const auto connection = connect(folder_ / "a.db", options);
    EXPECT_EQ(valueOf(connection, "SELECT A FROM T"), Variant{7});
    const Error error = failureOf([&] { run(connection, "UPDATE T SET A = 8"); });
    EXPECT_EQ(error.nativeError, 3906);
    EXPECT_NE(error.description.find("read-only"), std::string::npos);
    EXPECT_FALSE(openEditable(connection, "SELECT A FROM T")->updatable());
}

TEST_F(FileChecks, readOnlyDisk)
{
    const tamarok::test::MountedDisk disk{folder_ / "disk"};
    if (!disk.done()) {
        GTEST_SKIP() << "mounting a file system is not permitted here";
    }
    run(create(folder_ / "disk/a.db"), "CREATE TABLE T (A INT); INSERT INTO T (A) VALUES (7)");
    ASSERT_TRUE(disk.makeReadOnly());
    refuses(folder_ / "disk/a.db", "Read-only file system");
    refuses(folder_ / "disk/b.db", "Read-only file system", OpenMode::Create);
    OpenOptions options;
    options.mode = OpenMode::ReadOnly;
    EXPECT_EQ(valueOf(connect(folder_ / "disk/a.db", options), "SELECT A FROM T"), Variant{7});
}

TEST_F(FileChecks, fullDisk)
{
    const tamarok::test::MountedDisk disk{folder_ / "disk"};
    if (!disk.done()) {
        GTEST_SKIP() << "mounting a file system is not permitted here";
    }
    const auto connection = create(folder_ / "disk/a.db");
    run(connection, "CREATE TABLE T (A INT, B NVARCHAR(4000))");
    int written = 0;
    Error error{0, "none"};
    while (error.number == 0 && written < 1000) {
        try {
            run(connection, "INSERT INTO T (A,B) VALUES (1,REPLICATE('x',4000))");
            ++written;
        } catch (const Error& thrown) {
            error = thrown;
        }
    }
    EXPECT_EQ(error.nativeError, 1105) << error.description;
    EXPECT_NE(error.description.find("a.db"), std::string::npos) << error.description;
    EXPECT_EQ(valueOf(connection, "SELECT COUNT(*) FROM T"), Variant{written});
}

/// Root may write everywhere, so that it takes another account.
TEST_F(FileChecks, folderAndFileWithoutPermission)
{
    using std::filesystem::perms;
    const std::filesystem::path file = folder_ / "closed/a.db";
    const auto opening = [&] { return failureOf([&] { connect(file); }).description; };
    const auto asUser = [&] {
        return tamarok::test::canChangeAccount() ? tamarok::test::asOtherAccount(opening) : opening();
    };
    std::filesystem::permissions(folder_.path(), perms{0755});
    std::filesystem::create_directory(folder_ / "closed");
    run(create(file), "CREATE TABLE T (A INT)");
    std::filesystem::permissions(file, perms{0666});
    std::filesystem::permissions(folder_ / "closed", perms{0555});
    EXPECT_EQ(asUser(),
              "Cannot open the database '" + file.string() + "': its folder cannot be written: Permission denied.");
    std::filesystem::permissions(folder_ / "closed", perms{0777});
    std::filesystem::permissions(file, perms{0444});
    EXPECT_EQ(asUser(), "Cannot open the database '" + file.string() + "': Permission denied.");
}

struct BadText {
    const char* name;
    const char* text;
    const char* reason;
};

class BadConnectionText : public testing::TestWithParam<BadText> {};

TEST_P(BadConnectionText, isRefused)
{
    const Error error = failureOf([] { connectText(GetParam().text); });
    EXPECT_EQ(error.number, errors::invalidArgument);
    EXPECT_NE(error.description.find(GetParam().reason), std::string::npos) << error.description;
}

INSTANTIATE_TEST_SUITE_P(Table, BadConnectionText,
                         testing::Values(BadText{"noSource", "Provider=Tamarok.Embedded", "no Data Source"},
                                         BadText{"empty", "", "no Data Source"},
                                         BadText{"noForm", "Provider=Tamarok.Embedded;Data Source", "not of the form"},
                                         BadText{"otherProvider", "Provider=Elsewhere;Data Source=a.db", "'Elsewhere'"},
                                         BadText{"unknownProperty", "Data Source=a.db;Colour=red", "'Colour'"},
                                         BadText{"badOrder", "Data Source=a.db;Date Order=DDD", "'DDD'"},
                                         BadText{"badMode", "Data Source=a.db;Mode=Append", "'Append'"},
                                         BadText{"openQuote", "Data Source=\"a.db", "does not end"},
                                         BadText{"behindQuote", "Data Source=\"a.db\"x", "behind"}),
                         [](const auto& row) { return std::string{row.param.name}; });

TEST_F(FileChecks, connectionTextOpens)
{
    const std::string file = (folder_ / "a.db").string();
    connectText("Provider=Tamarok.Embedded;Data Source=" + file + ";Mode=Create")->Close();
    const auto connection = connectText("data source = '" + file + "' ; DATE ORDER=mdy;");
    EXPECT_EQ(connection->ConnectionString(), "Provider=Tamarok.Embedded;Data Source=" + file + ";Date Order=MDY");
    EXPECT_EQ(valueOf(connection, "SELECT MONTH('02/03/2020')"), Variant{2});
    EXPECT_EQ(valueOf(connect(file), "SELECT MONTH('02/03/2020')"), Variant{3});
}

} // namespace
} // namespace tamarok::embedded::test
