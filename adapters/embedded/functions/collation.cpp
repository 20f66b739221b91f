#include "functions/collation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "tamarok/text.h"

namespace tamarok::embedded::functions {

namespace {

/// A letter with an accent, or an expansion (as the German sharp s), with the base letters under which it sorts. The
/// table is sorted by letter.
struct LetterRow {
    char16_t letter;
    char16_t base;
    char16_t second; ///< of an expansion, which equals its two letters; 0 for others
    std::uint16_t accent;
};

constexpr auto letterRows = std::to_array<LetterRow>({
#include "functions/collation_letters.inc"
});
static_assert(std::ranges::is_sorted(letterRows, {}, &LetterRow::letter));
static_assert(std::ranges::all_of(letterRows, [](const LetterRow& row) { return row.second == 0 || row.accent == 0; }));

/// Control characters, blank, punctuation and symbols. Digits and letters sort after them.
constexpr std::string_view punctuationOrder = " -'!\"#$%&()*,./:;?@[\\]^_`{|}~+<=>";

// Ranks of the classes of characters; inside each the code point decides.
constexpr std::uint32_t rankOfPunctuation = 0x100;
constexpr std::uint32_t rankOfSymbols = 0x1000; ///< of other blocks
constexpr std::uint32_t rankOfDigits = 0x8000;
constexpr std::uint32_t rankOfLatin = 0x9000;
constexpr std::uint32_t rankOfOthers = 0x10000;

/// The sort rank of each ASCII character. A letter has the rank of its small form, so that case does not count.
constexpr std::array<std::uint16_t, 128> makeAsciiRanks()
{
    std::array<std::uint16_t, 128> ranks{};
    for (std::size_t code = 0; code < ranks.size(); ++code) {
        const auto character = static_cast<char>(code);
        const std::size_t place = punctuationOrder.find(character);
        std::size_t rank = code + 1; // control characters
        if (place != std::string_view::npos) rank = rankOfPunctuation + place;
        if (character >= '0' && character <= '9') rank = rankOfDigits + code;
        if (character >= 'a' && character <= 'z') rank = rankOfLatin + code;
        if (character >= 'A' && character <= 'Z') rank = rankOfLatin + code + 32;
        ranks[code] = static_cast<std::uint16_t>(rank);
    }
    return ranks;
}

constexpr auto asciiRanks = makeAsciiRanks();

constexpr bool isAscii(char character) noexcept
{
    return static_cast<unsigned char>(character) < 0x80;
}

std::uint32_t asciiRank(char character) noexcept
{
    return asciiRanks[static_cast<unsigned char>(character)];
}

/// Latin-1 signs, multiplication and division sign, general punctuation to arrows and drawing characters, CJK
/// punctuation.
bool isSymbol(char32_t character) noexcept
{
    return character < 0xC0 || character == 0xD7 || character == 0xF7 || (character >= 0x2000 && character < 0x2C00) ||
           (character >= 0x3000 && character < 0x3040);
}

bool isCombining(char32_t character) noexcept
{
    return (character >= 0x300 && character < 0x370) || (character >= 0x1DC0 && character < 0x1E00) ||
           (character >= 0x20D0 && character < 0x2100);
}

/// Rank of a folded character without a row in the table.
std::uint32_t plainRank(char32_t character) noexcept
{
    if (character < 0x80) return asciiRanks[character];
    if (isCombining(character)) return 0;
    if (isSymbol(character)) return rankOfSymbols + character;
    return rankOfOthers + character;
}

const LetterRow* rowOf(char32_t character) noexcept
{
    if (character < 0x80 || character > 0xFFFF) return nullptr;
    const auto found = std::ranges::lower_bound(letterRows, static_cast<char16_t>(character), {}, &LetterRow::letter);
    return found != letterRows.end() && found->letter == character ? &*found : nullptr;
}

struct Element {
    std::uint32_t rank = 0; ///< 0 for a mark without a base letter of its own
    std::uint32_t accent = 0;
    char32_t letter = 0; ///< folded; of an expansion each of its letters
};

/// The sort elements of a text, one after the other.
class Elements {
public:
    explicit Elements(std::string_view text) noexcept : text_{text} {}

    bool next(Element& element) noexcept
    {
        if (pending_ != 0) {
            element = {plainRank(pending_), 0, pending_};
            pending_ = 0;
            return true;
        }
        if (at_ >= text_.size()) return false;
        const char32_t character = decodeFolded(text_, at_);
        if (const LetterRow* row = rowOf(character)) {
            element = {plainRank(row->base), row->accent, row->second != 0 ? row->base : character};
            pending_ = row->second;
        } else {
            element = {plainRank(character), isCombining(character) ? 0x8000U + character : 0U, character};
        }
        return true;
    }

    /// Skips combining marks, which have no rank of their own.
    bool nextRank(std::uint32_t& rank) noexcept
    {
        Element element;
        while (next(element)) {
            if (element.rank == 0) continue;
            rank = element.rank;
            return true;
        }
        return false;
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
    char32_t pending_ = 0;
};

template <typename Number>
int order(Number a, Number b) noexcept
{
    return a < b ? -1 : a > b ? 1 : 0;
}

/// Compares two sequences element by element; a sequence sorts before its continuations.
template <typename Value, typename NextA, typename NextB>
int compareSequences(NextA&& nextA, NextB&& nextB) noexcept
{
    for (;;) {
        Value a{};
        Value b{};
        const bool moreA = nextA(a);
        const bool moreB = nextB(b);
        if (!moreA || !moreB) return order(moreA ? 1 : 0, moreB ? 1 : 0);
        if (a != b) return order(a, b);
    }
}

/// Compares in three passes, each deciding only if the one before finds no difference: base letters, then accents, then
/// code points of the folded letters.
int compareAnyText(std::string_view a, std::string_view b) noexcept
{
    Elements ranksA{a};
    Elements ranksB{b};
    const int byRank = compareSequences<std::uint32_t>([&](auto& rank) { return ranksA.nextRank(rank); },
                                                       [&](auto& rank) { return ranksB.nextRank(rank); });
    if (byRank != 0) return byRank;
    const auto next = [](Elements& elements, auto Element::*member, auto& value) {
        Element element;
        if (!elements.next(element)) return false;
        value = element.*member;
        return true;
    };
    Elements accentsA{a};
    Elements accentsB{b};
    const int byAccent =
        compareSequences<std::uint32_t>([&](auto& accent) { return next(accentsA, &Element::accent, accent); },
                                        [&](auto& accent) { return next(accentsB, &Element::accent, accent); });
    if (byAccent != 0) return byAccent;
    Elements lettersA{a};
    Elements lettersB{b};
    return compareSequences<char32_t>([&](auto& letter) { return next(lettersA, &Element::letter, letter); },
                                      [&](auto& letter) { return next(lettersB, &Element::letter, letter); });
}

/// Both texts are the same up to the byte `index`, which may be inside a character.
int compareBehind(std::size_t index, std::string_view a, std::string_view b) noexcept
{
    const auto insideCharacter = [](std::string_view text, std::size_t at) {
        return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
    };
    // Moves back to the first byte of the character.
    if (insideCharacter(a, index) || insideCharacter(b, index)) {
        while (index > 0 && insideCharacter(a, --index)) {}
    }
    return compareAnyText(a.substr(index), b.substr(index));
}

std::string_view withoutTrailingBlanks(std::string_view text) noexcept
{
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

} // namespace

char32_t foldCase(char32_t character) noexcept
{
    constexpr char32_t dottedCapitalI = 0x130; // its small form would be the plain i, which has a capital of its own
    if (character < 0x80) return character >= 'A' && character <= 'Z' ? character + 32 : character;
    return character == dottedCapitalI ? character : text::toLower(character);
}

char32_t decodeFolded(std::string_view text, std::size_t& offset) noexcept
{
    const char byte = text[offset];
    if (isAscii(byte)) {
        ++offset;
        return foldCase(static_cast<unsigned char>(byte));
    }
    return foldCase(text::decode(text, offset));
}

Letters lettersOf(char32_t folded) noexcept
{
    const LetterRow* row = rowOf(folded);
    return row != nullptr && row->second != 0 ? Letters{row->base, row->second} : Letters{folded, 0};
}

char32_t LetterReader::next() noexcept
{
    if (pending_ != 0) return std::exchange(pending_, 0);
    const Letters letters = lettersOf(decodeFolded(text_, at_));
    pending_ = letters.second;
    return letters.first;
}

/// Trailing blanks never count, as on the server. ASCII texts are compared byte by byte through the table of ranks; the
/// first difference in a byte beyond ASCII hands the rest to compareAnyText.
int compareTexts(std::string_view a, std::string_view b) noexcept
{
    a = withoutTrailingBlanks(a);
    b = withoutTrailingBlanks(b);
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t index = 0; index < common; ++index) {
        const char left = a[index];
        const char right = b[index];
        if (left == right) continue;
        if (!isAscii(left) || !isAscii(right)) return compareBehind(index, a, b);
        const std::uint32_t rankOfA = asciiRank(left);
        const std::uint32_t rankOfB = asciiRank(right);
        if (rankOfA != rankOfB) return order(rankOfA, rankOfB);
    }
    if (a.size() == b.size()) return 0;
    // One text is the beginning of the other. If it goes on with a combining mark, the two may still be equal in rank.
    const std::string_view longer = a.size() > b.size() ? a : b;
    if (!isAscii(longer[common])) return compareBehind(common, a, b);
    return a.size() > b.size() ? 1 : -1;
}

int compareCharacters(char32_t a, char32_t b) noexcept
{
    const auto elementOf = [](char32_t character) {
        const LetterRow* row = rowOf(character);
        return row != nullptr ? Element{plainRank(row->base), row->accent, character}
                              : Element{plainRank(character), 0, character};
    };
    const Element left = elementOf(a);
    const Element right = elementOf(b);
    if (left.rank != right.rank) return order(left.rank, right.rank);
    if (left.accent != right.accent) return order(left.accent, right.accent);
    return order(a, b);
}

} // namespace tamarok::embedded::functions
