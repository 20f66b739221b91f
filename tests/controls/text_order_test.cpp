#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/support.h"
#include "text_order.h"

namespace tamarok::controls::text_order {
namespace {

using namespace std::string_view_literals;

TEST(TextOrder, KeysPlaceTextsByLettersThenByAccents)
{
    // Each text stands before the next one.
    const std::vector<std::string_view> ascending{"",  "\0"sv, "\0\0"sv, " ",       " 9",      "-1",    "10",  "9",
                                                  "a", "AE",   "Aeb",    "ahorn",   "B",       "lom",   "LÖM", "łom",
                                                  "s", "SS",   "Straße", "strassf", "strasze", "z\0"sv, "zz",  "ж"};
    for (std::size_t index = 1; index < ascending.size(); ++index)
        EXPECT_LT(keyOf(ascending[index - 1]), keyOf(ascending[index])) << ascending[index];
    for (const auto& [a, b] :
         {std::pair{"Ärmel", "äRMEL"}, std::pair{"ß", "ß"}, std::pair{"Æon", "æON"}, std::pair{"x", "X"}})
        EXPECT_EQ(keyOf(a), keyOf(b));
    EXPECT_LT(keyOf("Oe"), keyOf("Œ"));
    EXPECT_LT(keyOf("Œ"), keyOf("Of"));
}

TEST(TextOrder, IsThatOfAStableSortOfKeys)
{
    // Texts of every length around that of the head, with many equal beginnings, from a few characters.
    const std::vector<std::string_view> letters{"a", "A", "b", "ä", "ß", "\0"sv, " ", "ж"};
    std::uint32_t state = 1;
    for (std::size_t longest = 0; longest <= 12; ++longest) {
        // All texts of every other round begin alike.
        std::vector<std::string> texts(500, longest % 2 == 0 ? "" : "Rechnung ä ");
        for (std::string& text : texts) {
            state = state * 1664525U + 1013904223U;
            for (std::size_t length = (state >> 16U) % (longest + 1); length > 0; --length) {
                state = state * 1664525U + 1013904223U;
                text += letters[(state >> 16U) % (length > 2 ? 2 : letters.size())];
            }
        }
        Keys keys;
        for (const std::string& text : texts)
            keys.add(text);
        for (const bool descending : {false, true}) {
            std::vector<std::uint32_t> expected(texts.size());
            std::iota(expected.begin(), expected.end(), 0U);
            std::stable_sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
                return descending ? keyOf(texts[b]) < keyOf(texts[a]) : keyOf(texts[a]) < keyOf(texts[b]);
            });
            EXPECT_EQ(keys.stableOrder(descending), expected) << longest << ' ' << descending;
        }
    }
    EXPECT_TRUE(Keys{}.stableOrder(false).empty());
}

} // namespace
} // namespace tamarok::controls::text_order
