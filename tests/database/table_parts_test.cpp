#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "resources.h"
#include "table_parts.h"
#include "tsv_table.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

TEST(TableParts, BeginWithTheNameOfTheirTable)
{
    const std::vector<TablePart> parts = tableParts("keys", "# F1\nID:i\n1\n2\n\n# F2\r\nID:i\n7\n");
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].table, "F1");
    EXPECT_EQ(parts[0].text, "ID:i\n1\n2");
    EXPECT_EQ(parts[1].table, "F2");
    EXPECT_EQ(parts[1].text, "ID:i\n7");
}

TEST(TableParts, MayHaveNoRows)
{
    const std::vector<TablePart> parts = tableParts("keys", "# F1\n# F2\nID:i");
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].text, "");
    EXPECT_EQ(parts[1].text, "ID:i");
}

TEST(TableParts, TextBeforeTheFirstTableIsAnErrorThatNamesTheFile)
{
    for (const std::string_view text : {"", "ID:i\n1", "#F1\nID:i"}) {
        try {
            tableParts("keys.tsv", text);
            ADD_FAILURE() << text;
        } catch (const Error& error) {
            EXPECT_EQ(error.number, errors::invalidArgument);
            EXPECT_NE(error.description.find("keys.tsv"), std::string::npos);
        }
    }
}

TEST(SelectionKeys, EachTableStandsOnceInAFileAndHasRows)
{
    std::set<std::string_view> tables;
    for (const Resource& file : resources("selections")) {
        std::set<std::string_view> ofFile;
        for (const TablePart& part : tableParts(file.name, file.text)) {
            EXPECT_TRUE(ofFile.insert(part.table).second) << file.name << ": " << part.table;
            tables.insert(part.table);
            EXPECT_GT((TsvTable{part.table, part.text}.rows()), 0U) << part.table;
        }
    }
    EXPECT_EQ(tables.size(), 203U);
}

} // namespace
} // namespace tamarok::database
