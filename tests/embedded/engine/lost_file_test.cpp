#include <functional>

#include "test_database.h"

// SQLite goes on with a file that nobody finds any more; a change there would be lost without a word. Windows itself
// refuses to remove, move or replace an open file.

namespace tamarok::embedded::test {
namespace {

void remove(const std::filesystem::path& file)
{
    std::filesystem::remove(file);
}
void move(const std::filesystem::path& file)
{
    std::filesystem::rename(file, file.parent_path() / "elsewhere.db");
}
void replace(const std::filesystem::path& file)
{
    std::filesystem::copy_file(file, file.parent_path() / "other.db");
    std::filesystem::rename(file.parent_path() / "other.db", file);
}

using Loss = void (*)(const std::filesystem::path&);
class LostFile : public testing::TestWithParam<Loss> {
protected:
    LostFile()
    {
        run(connection, "CREATE TABLE P (ID INT PRIMARY KEY, A INT NOT NULL) INSERT INTO P (ID,A) VALUES (1,2)");
    }
    void expectRefused(const std::function<void()>& change)
    {
        const Error error = failureOf(change);
        EXPECT_EQ(error.nativeError, 3906) << error.description;
        EXPECT_NE(error.description.find("it has been moved, removed or replaced"), std::string::npos)
            << error.description;
        EXPECT_NE(error.description.find("p.db"), std::string::npos) << error.description;
    }

    Folder folder;
    std::filesystem::path file = folder / "p.db";
    ado::ConnectionRef connection = create(file);
};

TEST_P(LostFile, takesNoChange)
{
    GetParam()(file);
    expectRefused([this] { run(connection, "UPDATE P SET A = 3"); });
    EXPECT_EQ(valueOf(connection, "SELECT A FROM P"), Variant{2}) << "rolled back";
}

TEST_P(LostFile, takesNoTransaction)
{
    run(connection, "BEGIN TRANSACTION");
    run(connection, "UPDATE P SET A = 3");
    GetParam()(file);
    expectRefused([this] { run(connection, "COMMIT TRANSACTION"); });
    run(connection, "ROLLBACK TRANSACTION");
    EXPECT_EQ(valueOf(connection, "SELECT A FROM P"), Variant{2});
}

TEST_P(LostFile, takesNoRowOfACursor)
{
    const auto cursor = openEditable(connection, "SELECT A FROM P");
    ASSERT_TRUE(cursor->next());
    GetParam()(file);
    const std::vector changes{ado::Assignment{0, Variant{3}}};
    expectRefused([&] { cursor->updateRow(cursor->rowKey(), changes); });
}

INSTANTIATE_TEST_SUITE_P(Ways, LostFile, testing::Values(&remove, &move, &replace));

} // namespace
} // namespace tamarok::embedded::test
