#include <sqlite3.h>
#include <string>
#include <string_view>

#include "test_database.h"

#include "tamarok/convert.h"

namespace tamarok::embedded::test {
namespace {

/// The order of an earlier layout, in which an expansion is a letter of its own behind all others.
int compareBytes(void*, int sizeA, const void* a, int sizeB, const void* b)
{
    const std::string_view left{static_cast<const char*>(a), static_cast<std::size_t>(sizeA)};
    const std::string_view right{static_cast<const char*>(b), static_cast<std::size_t>(sizeB)};
    return left.compare(right);
}

/// The first column of a query, joined by "|".
std::string rows(const ado::ConnectionRef& connection, std::string_view query)
{
    std::string joined;
    for (const Variant& value : columnOf(connection, query)) {
        joined += joined.empty() ? "" : "|";
        joined += convert::toText(value);
    }
    return joined;
}

class LayoutUpdate : public testing::Test {
protected:
    /// A file of layout 1 with a unique index over the names.
    std::filesystem::path earlierFile(const std::string& names)
    {
        const std::filesystem::path file = folder_ / "earlier.db";
        sqlite3* handle = nullptr;
        sqlite3_open(file.string().c_str(), &handle);
        sqlite3_create_collation(handle, "TAMAROK", SQLITE_UTF8, nullptr, &compareBytes);
        const std::string text =
            "CREATE TABLE STREET (ID INTEGER PRIMARY KEY, NAME NVARCHAR(20) COLLATE TAMAROK UNIQUE);"
            "INSERT INTO STREET (NAME) VALUES " +
            names + ";PRAGMA application_id=" + std::to_string(applicationId) + ";PRAGMA user_version=1";
        EXPECT_EQ(sqlite3_exec(handle, text.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
        return file;
    }

    Folder folder_;
};

TEST_F(LayoutUpdate, SortsTheIndexesAnew)
{
    const auto file = earlierFile("('Gaße'),('Gassen'),('Gast'),('Gas')");
    const auto connection = connect(file);
    EXPECT_EQ(rows(connection, "SELECT NAME FROM STREET ORDER BY NAME"), "Gas|Gaße|Gassen|Gast");
    EXPECT_EQ(rows(connection, "SELECT ID FROM STREET WHERE NAME = 'GASSE'"), "1");
    EXPECT_EQ(failureOf([&] { connection->Execute("INSERT INTO STREET (NAME) VALUES ('Gasse')"); }).nativeError, 2627);
    connection->Close();
    EXPECT_EQ(rows(connect(file), "SELECT ID FROM STREET WHERE NAME = 'GASSE'"), "1");
}

TEST_F(LayoutUpdate, KeysThatBecomeEqualAreToldAndNothingIsChanged)
{
    const auto file = earlierFile("('Gaße'),('Gasse')");
    const Error error = failureOf([&] { connect(file); });
    EXPECT_EQ(error.nativeError, 2627);
    EXPECT_NE(error.description.find("STREET"), std::string::npos) << error.description;
    sqlite3* handle = nullptr;
    sqlite3_open(file.string().c_str(), &handle);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(handle, "PRAGMA user_version", -1, &statement, nullptr);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(statement, 0), 1);
    sqlite3_finalize(statement);
    sqlite3_close(handle);
}

TEST_F(LayoutUpdate, ReadingOnlyIsRefusedAndChangesNothing)
{
    const auto file = earlierFile("('Gaße')");
    OpenOptions reading;
    reading.mode = OpenMode::ReadOnly;
    const Error error = failureOf([&] { connect(file, reading); });
    EXPECT_EQ(error.nativeError, 5120);
    EXPECT_NE(error.description.find("open it once for writing"), std::string::npos) << error.description;
    EXPECT_EQ(folder_.contents().at("earlier.db").substr(60, 4), std::string("\0\0\0\1", 4));
}

} // namespace
} // namespace tamarok::embedded::test
