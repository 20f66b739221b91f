#include "functions/text_search.h"

namespace tamarok::embedded::functions {

FoldedSearch::FoldedSearch(std::string_view needle)
{
    for (LetterReader letters{needle, 0}; !letters.isAtEnd();)
        needle_.push_back(letters.next());
    fallback_.assign(needle_.size() + 1, 0);
    for (std::size_t i = 1, matched = 0; i < needle_.size(); ++i) {
        while (matched > 0 && needle_[i] != needle_[matched])
            matched = fallback_[matched];
        if (needle_[i] == needle_[matched]) ++matched;
        fallback_[i + 1] = matched;
    }
}

/// `begin` follows `end` at a distance of the matched letters, so that a match knows where it began.
std::optional<Found> FoldedSearch::find(std::string_view text, std::size_t from) const
{
    if (needle_.empty()) return std::nullopt;
    LetterReader begin{text, from};
    LetterReader end{text, from};
    std::size_t position = 0;
    std::size_t matched = 0;
    const auto keepMatched = [&](std::size_t letters) {
        for (; matched > letters; --matched) {
            static_cast<void>(begin.next());
            if (!begin.isBetweenLetters()) ++position;
        }
    };
    while (!end.isAtEnd()) {
        const char32_t letter = end.next();
        while (matched > 0 && letter != needle_[matched])
            keepMatched(fallback_[matched]);
        ++matched;
        if (letter != needle_[matched - 1]) {
            keepMatched(0);
        } else if (matched == needle_.size()) {
            if (!begin.isBetweenLetters() && !end.isBetweenLetters()) {
                return Found{begin.offset(), end.offset(), position};
            }
            keepMatched(fallback_[matched]);
        }
    }
    return std::nullopt;
}

} // namespace tamarok::embedded::functions
