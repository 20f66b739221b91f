#include "tamarok/spelling.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "tamarok/text.h"

namespace tamarok::spelling {
namespace {

/// Longer words are compared with nothing: no name is that long, and the time grows with the square of the length.
constexpr std::size_t longestWord = 100;

/// Counts the edits between two words (optimal string alignment), row by row: row i holds the edits from the first i
/// bytes of `a` to each beginning of `b`. A swap looks two rows back.
std::size_t edits(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t change = last[j - 1] + (a[i - 1] == b[j - 1] ? 0U : 1U);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, change});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
    }
    return row[b.size()];
}

} // namespace

std::string_view nearest(std::string_view word, std::span<const std::string_view> known)
{
    if (word.empty() || word.size() > longestWord) return {};
    const std::string wanted = text::toUpper(word);
    std::string_view best;
    std::size_t fewest = std::max<std::size_t>(1, wanted.size() / 3) + 1;
    for (const std::string_view candidate : known) {
        if (candidate.size() > longestWord) continue;
        const std::size_t count = edits(wanted, text::toUpper(candidate));
        if (count >= fewest) continue;
        fewest = count;
        best = candidate;
    }
    return best;
}

std::string suggestion(std::string_view word, std::span<const std::string_view> known)
{
    const std::string_view found = nearest(word, known);
    return found.empty() ? std::string{} : "; did you mean '" + std::string{found} + "'?";
}

std::string suggestionOrPoint(std::string_view word, std::span<const std::string_view> known)
{
    std::string help = suggestion(word, known);
    return help.empty() ? "." : help;
}

} // namespace tamarok::spelling
