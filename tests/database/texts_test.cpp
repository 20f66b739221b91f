#include <array>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "resources.h"
#include "tamarok_database/labels.h"
#include "tsv_table.h"

namespace tamarok::database {
namespace {

TsvTable strings()
{
    return TsvTable{"strings.tsv", resource("texts", "strings.tsv").text};
}

TEST(Texts, EveryNumberHasAllThreeLanguagesAndStandsOnce)
{
    const TsvTable table = strings();
    std::set<std::int32_t> ids;
    for (std::size_t row = 0; row < table.rows(); ++row) {
        const std::int32_t id = table.whole(row, 0);
        EXPECT_TRUE(ids.insert(id).second) << id;
        EXPECT_LT(id, firstColumnLabel);
        for (const std::string_view language : {"GERMAN", "ENGLISH", "FRENCH"}) {
            const std::string_view text = table.cell(row, table.column(language));
            EXPECT_FALSE(text.empty()) << id << ' ' << language;
            EXPECT_EQ(text.find_first_of("\r\n"), std::string_view::npos) << id;
        }
    }
}

TEST(Texts, NumbersThatTheLibraryNamesAreThere)
{
    constexpr std::array numbers{5,    6,    19,   21,   22,   23,   24,   25,   26,   27,   28,   91,   94,
                                 126,  133,  223,  268,  610,  625,  629,  632,  638,  642,  646,  649,  652,
                                 655,  859,  1127, 1176, 1177, 1328, 3045, 3442, 4301, 4315, 4351, 4365, 4454,
                                 4738, 4745, 4754, 4887, 4888, 4889, 4890, 4891, 4892, 4893, 5243, 5244, 5245,
                                 5462, 5075, 5142, 5455, 5781, 5833, 5999, 6000, 6014, 6160, 6251, 6296};
    const TsvTable table = strings();
    std::set<std::int32_t> ids;
    for (std::size_t row = 0; row < table.rows(); ++row)
        ids.insert(table.whole(row, 0));
    for (const int number : numbers)
        EXPECT_TRUE(ids.contains(number)) << number;
}

TEST(Texts, YesAndNo)
{
    const TsvTable table = strings();
    std::string found;
    for (std::size_t row = 0; row < table.rows(); ++row) {
        if (table.whole(row, 0) != 5 && table.whole(row, 0) != 6) continue;
        for (std::size_t language = 1; language <= 3; ++language)
            found += std::string{table.cell(row, language)} + " ";
    }
    EXPECT_EQ(found, "Nein No Non Ja Yes Oui ");
}

} // namespace
} // namespace tamarok::database
