#include "functions/text_search.h"

#include "functions/collation.h"

#include "tamarok/text.h"

namespace tamarok::embedded::functions {

FoldedSearch::FoldedSearch(std::string_view needle)
{
    for (std::size_t at = 0; at < needle.size();)
        needle_.push_back(decodeFolded(needle, at));
    fallback_.assign(needle_.size() + 1, 0);
    for (std::size_t i = 1, matched = 0; i < needle_.size(); ++i) {
        while (matched > 0 && needle_[i] != needle_[matched])
            matched = fallback_[matched];
        if (needle_[i] == needle_[matched]) ++matched;
        fallback_[i + 1] = matched;
    }
}

/// `begin` follows the text at a distance of the matched characters, so that a match knows where it began.
std::optional<Found> FoldedSearch::find(std::string_view text, std::size_t from) const
{
    if (needle_.empty()) return std::nullopt;
    Found found{from, from, 0};
    std::size_t matched = 0;
    const auto drop = [&](std::size_t characters) {
        for (; characters > 0; --characters, ++found.position)
            text::decode(text, found.begin);
    };
    while (found.end < text.size()) {
        const char32_t character = decodeFolded(text, found.end);
        while (matched > 0 && character != needle_[matched]) {
            drop(matched - fallback_[matched]);
            matched = fallback_[matched];
        }
        if (character != needle_[matched]) {
            drop(1);
        } else if (++matched == needle_.size()) {
            return found;
        }
    }
    return std::nullopt;
}

} // namespace tamarok::embedded::functions
