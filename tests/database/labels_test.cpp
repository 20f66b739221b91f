#include <array>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "resources.h"
#include "tamarok_database/labels.h"
#include "test_data.h"
#include "tsv_table.h"

namespace tamarok::database {
namespace {

constexpr std::array<std::string_view, 3> languages{"GERMAN", "ENGLISH", "FRENCH"};

TsvTable logLabels()
{
    return TsvTable{"log_columns.tsv", resource("texts", "log_columns.tsv").text};
}

TEST(LogColumnLabels, EveryColumnHasALabelInEveryLanguageAndNoOtherIdHas)
{
    const auto references = logColumnReferences();
    ASSERT_EQ(references.size(), 580U);
    const TsvTable table = logLabels();
    EXPECT_EQ(table.rows(), references.size());
    for (std::size_t row = 0; row < table.rows(); ++row) {
        EXPECT_TRUE(references.contains(static_cast<std::int16_t>(table.whole(row, 0)))) << table.whole(row, 0);
        for (const std::string_view language : languages)
            EXPECT_FALSE(table.cell(row, table.column(language)).empty()) << table.whole(row, 0) << ' ' << language;
    }
}

TEST(LogColumnLabels, OfOneLanguageAreDistinct)
{
    const TsvTable table = logLabels();
    for (const std::string_view language : languages) {
        std::map<std::string_view, std::int32_t> seen;
        for (std::size_t row = 0; row < table.rows(); ++row) {
            const auto [other, added] = seen.emplace(table.cell(row, table.column(language)), table.whole(row, 0));
            EXPECT_TRUE(added) << other->first << " heads " << other->second << " and " << table.whole(row, 0);
        }
    }
}

/// A number of table STRINGS stands in one file.
TEST(Labels, NumbersAreUniqueOverAllFilesAndFitSixteenBits)
{
    std::map<std::int32_t, std::string_view> files;
    const auto add = [&](std::int32_t number, std::string_view file) {
        const auto [other, added] = files.emplace(number, file);
        EXPECT_TRUE(added) << number << " stands in " << other->second << " and " << file;
        EXPECT_TRUE(number > 0 && number <= INT16_MAX) << number << " in " << file;
    };
    const TsvTable strings{"strings.tsv", resource("texts", "strings.tsv").text};
    for (std::size_t row = 0; row < strings.rows(); ++row)
        add(strings.whole(row, 0), "strings.tsv");
    const TsvTable log = logLabels();
    for (std::size_t row = 0; row < log.rows(); ++row)
        add(firstColumnLabel + log.whole(row, 0), "log_columns.tsv");
    for (const Resource& file : resources("columns")) {
        const TsvTable table{file.name, file.text};
        for (std::size_t row = 0; row < table.rows(); ++row)
            add(table.whole(row, 0), file.name);
    }
}

} // namespace
} // namespace tamarok::database
