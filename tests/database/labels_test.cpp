#include <array>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

#include "tamarok_database/labels.h"
#include "test_data.h"

namespace tamarok {
namespace {

constexpr std::array<std::string_view, 3> languages{"GERMAN", "ENGLISH", "FRENCH"};

TEST(ColumnLabel, EveryColumnOfTheLogListHasALabelInEveryLanguageAndNoOtherIdHas)
{
    const auto references = database::logColumnReferences();
    ASSERT_EQ(references.size(), 580U);
    for (std::int16_t id = 0; id <= 1050; ++id)
        for (const std::string_view language : languages)
            EXPECT_EQ(columnLabel(id, language).empty(), !references.contains(id)) << id << ' ' << language;
}

TEST(ColumnLabel, LabelsOfALanguageAreDistinct)
{
    for (const std::string_view language : languages) {
        std::map<std::string_view, std::int16_t> seen;
        for (std::int16_t id = 1; id <= 1041; ++id) {
            const std::string_view label = columnLabel(id, language);
            if (label.empty()) continue;
            const auto [other, added] = seen.emplace(label, id);
            EXPECT_TRUE(added) << label << " heads " << other->second << " and " << id;
        }
    }
}

TEST(ColumnLabel, TellsTheMeaningOfTheColumn)
{
    EXPECT_EQ(columnLabel(36, "GERMAN"), "Volumen fm");
    EXPECT_EQ(columnLabel(203, "GERMAN"), "Anteil %");
    EXPECT_EQ(columnLabel(280, "GERMAN"), "Preis/fm");
    EXPECT_EQ(columnLabel(319, "ENGLISH"), "Mean diam. cm");
    EXPECT_EQ(columnLabel(320, "FRENCH"), "Long. moyenne m");
    EXPECT_EQ(columnLabel(441, "ENGLISH"), "Name A7");
}

TEST(ColumnLabel, UnknownLanguageGivesGermanAndUnknownIdNothing)
{
    EXPECT_EQ(columnLabel(2, "DANISH"), "Listendatum");
    EXPECT_EQ(columnLabel(2, ""), "Listendatum");
    EXPECT_EQ(columnLabel(-1, "GERMAN"), "");
    EXPECT_EQ(columnLabel(485, "GERMAN"), "");
    EXPECT_EQ(columnLabel(32767, "GERMAN"), "");
}

} // namespace
} // namespace tamarok
