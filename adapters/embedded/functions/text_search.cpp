#include "functions/text_search.h"

#include "functions/collation.h"

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

/// `begin` follows `end` at a distance of the matched letters, so that a match knows where it began. A match must begin
/// and end with whole characters: "s" is no part of "ß".
std::optional<Found> FoldedSearch::find(std::string_view text, std::size_t from) const
{
    if (needle_.empty()) return std::nullopt;
    LetterReader begin{text, from};
    LetterReader end{text, from};
    std::size_t position = 0;
    std::size_t matched = 0;
    const auto fallBack = [&](std::size_t kept) {
        for (; matched > kept; --matched) {
            begin.next();
            if (!begin.isInsideCharacter()) ++position;
        }
    };
    while (!end.isAtEnd()) {
        const char32_t letter = end.next();
        while (matched > 0 && letter != needle_[matched])
            fallBack(fallback_[matched]);
        const bool same = letter == needle_[matched];
        ++matched;
        if (!same) {
            fallBack(0);
        } else if (matched == needle_.size()) {
            if (!begin.isInsideCharacter() && !end.isInsideCharacter())
                return Found{begin.offset(), end.offset(), position};
            fallBack(fallback_[matched]);
        }
    }
    return std::nullopt;
}

} // namespace tamarok::embedded::functions
