#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "functions/collation.h"
#include "functions/like.h"
#include "functions/text_search.h"

#include "tamarok/text.h"

/// The searches that take linear time, against plain ones that try every place.
namespace tamarok::embedded::functions {
namespace {

std::string randomText(std::mt19937& random, const std::vector<std::string_view>& parts, std::size_t most)
{
    std::string text;
    for (std::size_t left = random() % (most + 1); left > 0; --left)
        text += parts[random() % parts.size()];
    return text;
}

/// Tries the part at every character.
std::optional<Found> plainFind(std::string_view text, std::string_view part)
{
    if (part.empty()) return std::nullopt;
    std::size_t position = 0;
    for (std::size_t at = 0; at < text.size(); ++position) {
        LetterReader in{text, at};
        LetterReader wanted{part, 0};
        bool same = true;
        while (same && !wanted.isAtEnd())
            same = !in.isAtEnd() && in.next() == wanted.next();
        if (same && !in.isInsideCharacter()) return Found{at, in.offset(), position};
        text::decode(text, at);
    }
    return std::nullopt;
}

TEST(TextSearch, FindsWhatAPlainSearchFinds)
{
    std::mt19937 random{20240517};
    int found = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = randomText(random, {"a", "A", "b", "s", "S", "ß", "ä", "€"}, 24);
        const std::string part = randomText(random, {"a", "b", "s", "ß", "Ä", "€"}, 4);
        const auto expected = plainFind(text, part);
        const auto given = FoldedSearch{part}.find(text, 0);
        ASSERT_EQ(given.has_value(), expected.has_value()) << part << " in " << text;
        if (!expected) continue;
        ++found;
        ASSERT_EQ(given->begin, expected->begin) << part << " in " << text;
        ASSERT_EQ(given->end, expected->end) << part << " in " << text;
        ASSERT_EQ(given->position, expected->position) << part << " in " << text;
    }
    EXPECT_GT(found, 3000);
}

TEST(TextSearch, BeginsWhereItIsTold)
{
    const FoldedSearch search{"ab"};
    EXPECT_EQ(search.find("abab", 1)->begin, 2U);
    EXPECT_EQ(search.find("abab", 1)->position, 1U);
    EXPECT_FALSE(search.find("abab", 3));
    EXPECT_FALSE(search.find("", 0));
    EXPECT_FALSE(FoldedSearch{""}.find("abab", 0));
}

/// The first place at which the pattern behind its % matches the rest of the text.
std::int64_t plainPosition(std::string_view text, const std::string& pattern)
{
    const bool anywhere = pattern.starts_with('%');
    const LikePattern rest{std::string_view{pattern}.substr(anywhere ? 1 : 0), 0};
    std::int64_t position = 1;
    for (std::size_t at = 0;; ++position) {
        if (rest.matches(text.substr(at), false)) return position;
        if (!anywhere || at == text.size()) return 0;
        text::decode(text, at);
    }
}

TEST(TextSearch, PatternsAreFoundWhereAPlainSearchFindsThem)
{
    std::mt19937 random{7};
    int found = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = randomText(random, {"a", "b", "c", "ß", "s"}, 12);
        const std::string inner = randomText(random, {"a", "b", "_", "%", "[ab]", "[^a]", "s", "ß"}, 5);
        for (const std::string& pattern : {"%" + inner, "%" + inner + "%"}) {
            // A pattern of % alone matches the empty end, which is not the place that is asked for.
            if (pattern.find_first_not_of('%') == std::string::npos || pattern.starts_with("%%")) continue;
            const std::int64_t expected = plainPosition(text, pattern);
            found += expected > 0 ? 1 : 0;
            ASSERT_EQ((LikePattern{pattern, 0}.find(text)), expected) << pattern << " in " << text;
        }
    }
    EXPECT_GT(found, 5000);
}

} // namespace
} // namespace tamarok::embedded::functions
