#include <memory>
#include <sqlite3.h>

#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

class EditableRows : public testing::Test {
protected:
    EditableRows()
    {
        run(connection_, "CREATE TABLE T (ID INT IDENTITY(1,1) PRIMARY KEY, N INT, S NVARCHAR(5), D DATETIME, B BIT)");
        run(connection_, "INSERT INTO T (N,S) VALUES (10,'one') INSERT INTO T (N,S) VALUES (20,'two')");
    }

    Folder folder_;
    ado::ConnectionRef connection_ = create(folder_ / "a.db");
};

constexpr std::int32_t rowDeletedNumber = static_cast<std::int32_t>(0x80040E23U);

TEST_F(EditableRows, keyIsNoColumn)
{
    const auto cursor = openEditable(connection_, "SELECT * FROM T ORDER BY ID DESC");
    EXPECT_TRUE(cursor->updatable());
    ASSERT_EQ(cursor->columns().size(), 5U);
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->value(0), Variant{2});
    EXPECT_EQ(cursor->rowKey(), 2);
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->rowKey(), 1);
    EXPECT_FALSE(cursor->next());
    EXPECT_EQ(failureOf([&] { cursor->rowKey(); }).number, errors::noCurrentRecord);
}

TEST_F(EditableRows, updateConvertsAsTheServerDoes)
{
    const auto cursor = openEditable(connection_, "SELECT N, S, D, B FROM T WHERE ID = 1");
    ASSERT_TRUE(cursor->next());
    const std::vector<ado::Assignment> values{
        {0, Variant{"42"}}, {1, Variant{7}}, {2, Variant{makeDate(2024, 5, 6)}}, {3, Variant{true}}};
    cursor->updateRow(cursor->rowKey(), values);
    std::vector<Variant> row;
    ASSERT_TRUE(cursor->readRow(1, row));
    EXPECT_EQ(row, (std::vector<Variant>{42, "7", makeDate(2024, 5, 6), true}));

    const Error error = failureOf([&] {
        cursor->updateRow(1, std::vector<ado::Assignment>{{1, Variant{"too long"}}});
    });
    EXPECT_EQ(error.sqlState, "22001") << error.description;
    EXPECT_EQ(error.statement, "SELECT N, S, D, B FROM T WHERE ID = 1");
    EXPECT_EQ(failureOf([&] {
                  cursor->updateRow(1, std::vector<ado::Assignment>{{0, Variant{"x"}}});
              }).nativeError,
              245);
    ASSERT_TRUE(cursor->readRow(1, row));
    EXPECT_EQ(row[1], Variant{"7"});
}

TEST_F(EditableRows, insertAndDelete)
{
    const auto cursor = openEditable(connection_, "SELECT ID, S FROM T");
    const std::int64_t key = cursor->insertRow(std::vector<ado::Assignment>{{1, Variant{"new"}}});
    EXPECT_EQ(key, 3);
    std::vector<Variant> row;
    ASSERT_TRUE(cursor->readRow(key, row));
    EXPECT_EQ(row, (std::vector<Variant>{3, "new"}));
    cursor->insertRow({});
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM T"), Variant{4});
    cursor->deleteRow(key);
    EXPECT_FALSE(cursor->readRow(key, row));
    EXPECT_EQ(failureOf([&] { cursor->deleteRow(key); }).number, rowDeletedNumber);
    EXPECT_EQ(failureOf([&] {
                  cursor->updateRow(key, std::vector<ado::Assignment>{{1, Variant{"x"}}});
              }).number,
              rowDeletedNumber);
}

TEST_F(EditableRows, expressionsAreReadAgainButNotChanged)
{
    const auto cursor = openEditable(connection_, "SELECT ID, N * 2 AS TWICE FROM T");
    ASSERT_TRUE(cursor->updatable());
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(failureOf([&] {
                  cursor->updateRow(1, std::vector<ado::Assignment>{{1, Variant{1}}});
              }).number,
              errors::readOnlyRecordset);
    run(connection_, "UPDATE T SET N = 21 WHERE ID = 1");
    std::vector<Variant> row;
    ASSERT_TRUE(cursor->readRow(1, row));
    EXPECT_EQ(row, (std::vector<Variant>{1, 42}));
}

TEST_F(EditableRows, severalTablesAreReadOnly)
{
    const auto cursor = openEditable(connection_, "SELECT A.ID FROM T A INNER JOIN T B ON A.ID = B.ID");
    EXPECT_FALSE(cursor->updatable());
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(failureOf([&] { cursor->rowKey(); }).number, errors::readOnlyRecordset);
    EXPECT_EQ(failureOf([&] { cursor->lockRow(1); }).number, errors::readOnlyRecordset);
}

TEST_F(EditableRows, restartSeesNewRows)
{
    const auto cursor = openEditable(connection_, "SELECT ID FROM T WHERE N = 77");
    EXPECT_FALSE(cursor->next());
    run(connection_, "INSERT INTO T (N) VALUES (77)");
    cursor->restart();
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->value(0), Variant{3});
}

TEST_F(EditableRows, aStandingCursorKeepsNoSnapshotOpen)
{
    const auto cursor = openEditable(connection_, "SELECT ID FROM T");
    ASSERT_TRUE(cursor->next());
    cursor->lockRow(cursor->rowKey());
    // An old snapshot in use would keep SQLite from truncating its log.
    const auto other = connect(folder_ / "a.db");
    run(other, "INSERT INTO T (S) VALUES ('abcde')");
    EXPECT_GT(std::filesystem::file_size(folder_ / "a.db-wal"), 0U);
    sqlite3* opened = nullptr;
    ASSERT_EQ(sqlite3_open((folder_ / "a.db").string().c_str(), &opened), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> bare{opened, &sqlite3_close};
    // SQLite opens the log with the first read; a checkpoint before it does nothing.
    ASSERT_EQ(sqlite3_exec(bare.get(), "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(sqlite3_wal_checkpoint_v2(bare.get(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(std::filesystem::file_size(folder_ / "a.db-wal"), 0U);
}

} // namespace
} // namespace tamarok::embedded::test
