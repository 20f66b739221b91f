#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "resources.h"
#include "sql_batches.h"
#include "tamarok_database/schema.h"
#include "tamarok_embedded/connect.h"
#include "test_data.h"

#include "tamarok/ado.h"
#include "tamarok/error.h"

namespace tamarok::database {
namespace {

/// The reference schema in memory, made once for the cases that only look at it.
class ReferenceSchema : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        connection_ = embedded::connectInMemory();
        createTables(*connection_);
        createIndexes(*connection_);
    }
    static void TearDownTestSuite() { connection_.reset(); }

    static std::vector<std::string> columnsOf(const std::string& table)
    {
        ado::Recordset rows;
        rows.Open("SELECT * FROM " + table + " WHERE 1=0", connection_);
        std::vector<std::string> names;
        for (std::int32_t i = 0; i < rows.Fields().Count(); ++i)
            names.push_back(rows.Fields().Item(i).Name());
        return names;
    }

    static ado::ConnectionRef connection_;
};
ado::ConnectionRef ReferenceSchema::connection_;

TEST(Schema, EveryBatchRunsOnItsOwnInOrder)
{
    const ado::ConnectionRef connection = embedded::connectInMemory();
    std::size_t count = 0;
    for (const Resource& file : resources("schema")) {
        for (const std::string_view batch : splitBatches(file.text)) {
            EXPECT_NO_THROW(connection->Execute(batch)) << file.name << ": " << batch;
            ++count;
        }
    }
    EXPECT_EQ(count, 456U) << "326 tables and 130 indexes";
}

TEST(Schema, SecondRunIsRefusedWithTheScriptsName)
{
    const ado::ConnectionRef connection = embedded::connectInMemory();
    createTables(*connection);
    try {
        createTables(*connection);
        FAIL() << "the tables exist already";
    } catch (const Error& error) {
        EXPECT_NE(error.description.find("01_texts_and_settings.sql"), std::string::npos) << error.description;
    }
}

TEST_F(ReferenceSchema, EveryColumnOfTheLogListFindsItsTableAndColumn)
{
    std::map<std::string, std::set<std::string>> tables;
    std::size_t checked = 0;
    for (const auto& [id, references] : logColumnReferences()) {
        for (const ColumnReference& reference : references) {
            auto& columns = tables[reference.table];
            if (columns.empty())
                for (const std::string& name : columnsOf(reference.table))
                    columns.insert(name);
            EXPECT_TRUE(columns.contains(reference.column)) << id << ": " << reference.table << '.' << reference.column;
            ++checked;
        }
    }
    EXPECT_EQ(checked, 775U);
}

TEST_F(ReferenceSchema, ArchiveOfLogsHasTheSameColumnsInTheSameOrder)
{
    EXPECT_EQ(columnsOf("LOGS_HISTORY"), columnsOf("LOGS"));
}

TEST_F(ReferenceSchema, ReservedWordsServeAsBareColumnNames)
{
    for (const std::string_view statement :
         {"SELECT BB_T_PROJEKT_PLANUNG.LONG, BB_T_AUFTRAGS_PLANUNG.SHORT FROM BB_T_PROJEKT_PLANUNG, "
          "BB_T_AUFTRAGS_PLANUNG",
          "SELECT VERKAUFSART.LONG, LISTENART.TEXT, KLST.SHORT, KUBATURKLASSE.TEXT FROM VERKAUFSART, LISTENART, KLST, "
          "KUBATURKLASSE",
          "SELECT HH_KAPITEL.NUMBER, PRODUKT.NUMBER FROM HH_KAPITEL, PRODUKT",
          "SELECT ID FROM LOCK WHERE LOGIN IS NULL", "SELECT PASSWORD FROM USERS"}) {
        ado::Recordset rows;
        EXPECT_NO_THROW(rows.Open(statement, connection_)) << statement;
    }
}

TEST_F(ReferenceSchema, NamesOfOptionsCompareExactly)
{
    connection_->Execute("INSERT INTO OPTIONEN (PROPERTY_ID,TEXT_VALUE) VALUES ('EXACT','x')");
    ado::Recordset rows;
    rows.Open("SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'exact'", connection_);
    EXPECT_TRUE(rows.AtEOF());
    rows.Close();
    rows.Open("SELECT TEXT_VALUE FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'EXACT'", connection_);
    EXPECT_FALSE(rows.AtEOF());
}

TEST_F(ReferenceSchema, LockNumbersItsRows)
{
    connection_->Execute("INSERT INTO LOCK (ID_USERS,LISTE) VALUES (7,'L24-000001')");
    connection_->Execute("INSERT INTO LOCK (ID_USERS,RECHNUNG) VALUES (7,'R R-24-000001')");
    ado::Recordset rows;
    rows.Open("SELECT ID FROM LOCK ORDER BY ID", connection_);
    EXPECT_EQ(rows.Fields().Item(0).Value(), Variant{std::int32_t{1}});
    rows.MoveNext();
    EXPECT_EQ(rows.Fields().Item(0).Value(), Variant{std::int32_t{2}});
}

} // namespace
} // namespace tamarok::database
