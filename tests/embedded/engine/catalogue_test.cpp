#include "tamarok_embedded/catalogue.h"
#include "tamarok_tsql/types.h"
#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

/// A table in words: its name, and each column with its type and what else is declared.
std::string described(const tsql::Table& table)
{
    std::string text = table.name + ":";
    for (const tsql::TableColumn& column : table.columns) {
        text += " " + column.name + " " + tsql::declaredText(column.type);
        if (column.identity) text += " identity";
        if (!column.nullable) text += " not null";
        if (column.binary && column.type.kind == tsql::TypeKind::NVarChar) text += " exact";
    }
    return text;
}

TEST(Catalogue, ListsTablesAndViewsWithoutTemporaryOnes)
{
    const auto connection = connectInMemory();
    run(connection,
        "CREATE TABLE Z (ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY, A NVARCHAR(40), B DECIMAL(10,2) NOT NULL)");
    run(connection, "CREATE TABLE A (NAME NVARCHAR(30) COLLATE Latin1_General_BIN NOT NULL, M NVARCHAR(MAX))");
    run(connection, "CREATE TABLE #T (ID INT)");
    run(connection, "CREATE VIEW V AS SELECT A FROM Z");
    const auto all = tables(*connection);
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(described(all[0]), "A: NAME NVARCHAR(30) not null exact M NVARCHAR(MAX)");
    EXPECT_EQ(all[1].name, "V");
    EXPECT_EQ(described(all[2]), "Z: ID INT identity not null A NVARCHAR(40) B DECIMAL(10,2) not null");
}

TEST(Catalogue, SeesWhatAnotherSessionHasChanged)
{
    const Folder folder;
    const auto connection = create(folder / "a.db");
    EXPECT_TRUE(tables(*connection).empty());
    run(connect(folder / "a.db"), "CREATE TABLE A (ID INT)");
    EXPECT_EQ(tables(*connection).size(), 1U);
}

TEST(Catalogue, OfAClosedConnectionIsAnError)
{
    const auto connection = connectInMemory();
    connection->Close();
    EXPECT_EQ(failureOf([&] { tables(*connection); }).number, errors::connectionClosed);
}

} // namespace
} // namespace tamarok::embedded::test
