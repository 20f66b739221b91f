#include "functions/like.h"

#include <algorithm>
#include <memory>
#include <string>

#include "functions/catalog.h"
#include "functions/collation.h"

#include "tamarok/text.h"

namespace tamarok::embedded::functions {

/// Compiles the pattern character by character, with letters folded. Several % in a row are one.
LikePattern::LikePattern(std::string_view pattern, char32_t escape) : escape_{escape}
{
    for (std::size_t at = 0; at < pattern.size() && !broken_;) {
        std::size_t behind = at;
        const char32_t character = text::decode(pattern, behind);
        if (escape != 0 && character == escape) {
            if (behind == pattern.size()) {
                broken_ = true;
                return;
            }
            addLetters(decodeFolded(pattern, behind));
        } else if (character == U'%') {
            const bool repeated = !items_.empty() && items_.back().kind == Item::Kind::AnyMany;
            if (!repeated) items_.push_back({Item::Kind::AnyMany, false, 0, 0, 0});
        } else if (character == U'_') {
            items_.push_back({Item::Kind::AnyOne, false, 0, 0, 0});
        } else if (character == U'[') {
            compileClass(pattern, behind);
        } else {
            addLetters(foldCase(character));
        }
        at = behind;
    }
}

/// An expansion becomes its two letters.
void LikePattern::addLetters(char32_t folded)
{
    const Letters letters = lettersOf(folded);
    items_.push_back({Item::Kind::Character, false, letters.first, 0, 0});
    if (letters.second != 0) items_.push_back({Item::Kind::Character, false, letters.second, 0, 0});
}

/// `at` is the position after the "[". A "]" always closes, so that "[]" accepts nothing; a "-" at either
/// end is itself.
void LikePattern::compileClass(std::string_view pattern, std::size_t& at)
{
    Item item{Item::Kind::Class, false, 0, static_cast<std::uint32_t>(ranges_.size()), 0};
    if (at < pattern.size() && pattern[at] == '^') {
        item.negated = true;
        ++at;
    }
    const auto readMember = [&]() -> char32_t {
        const char32_t character = text::decode(pattern, at);
        if (escape_ != 0 && character == escape_ && at < pattern.size()) return decodeFolded(pattern, at);
        return foldCase(character);
    };
    while (at < pattern.size() && pattern[at] != ']') {
        Range range{readMember(), 0};
        range.last = range.first;
        if (at + 1 < pattern.size() && pattern[at] == '-' && pattern[at + 1] != ']') {
            ++at;
            range.last = readMember();
        }
        ranges_.push_back(range);
    }
    if (at >= pattern.size()) {
        broken_ = true;
        return;
    }
    ++at;
    item.ranges = static_cast<std::uint32_t>(ranges_.size()) - item.firstRange;
    items_.push_back(item);
}

/// A range such as [a-f] contains what sorts between its ends, accented letters included, as on the server.
bool LikePattern::accepts(const Item& item, char32_t character) const noexcept
{
    switch (item.kind) {
    case Item::Kind::Character: return item.character == character;
    case Item::Kind::AnyOne: return true;
    case Item::Kind::AnyMany: return false;
    case Item::Kind::Class: break;
    }
    for (std::uint32_t index = item.firstRange; index < item.firstRange + item.ranges; ++index) {
        const Range& range = ranges_[index];
        const bool inside = range.first == range.last ? range.first == character
                                                      : compareCharacters(range.first, character) <= 0 &&
                                                            compareCharacters(character, range.last) <= 0;
        if (inside) return !item.negated;
    }
    return item.negated;
}

/// Matches one item at `place` and moves it on. The letters of an expansion match one by one; "_" and a class take the
/// whole character.
bool LikePattern::take(const Item& item, std::string_view text, Place& place) const noexcept
{
    if (place.pending != 0) {
        const bool same = item.kind == Item::Kind::Character && item.character == place.pending;
        place.pending = 0;
        return same;
    }
    if (place.at >= text.size()) return false;
    const char32_t character = decodeFolded(text, place.at);
    if (item.kind != Item::Kind::Character) return accepts(item, character);
    const Letters letters = lettersOf(character);
    place.pending = letters.second;
    return letters.first == item.character;
}

/// Greedy with one point of return, the last "%": an earlier one never needs another try, since
/// whatever the later one can reach it reaches from the first fit.
bool LikePattern::matchesFrom(std::size_t item, std::string_view text, bool ignoreBlanks) const noexcept
{
    constexpr auto none = static_cast<std::size_t>(-1);
    Place place;
    std::size_t returnItem = none;
    std::size_t returnAt = 0;
    for (;;) {
        const bool whole = place.pending == 0;
        if (whole && item < items_.size() && items_[item].kind == Item::Kind::AnyMany) {
            if (++item == items_.size()) return true;
            returnItem = item;
            returnAt = place.at;
            continue;
        }
        if (item == items_.size()) {
            if (whole && place.at == text.size()) return true;
            if (whole && ignoreBlanks && text.find_first_not_of(' ', place.at) == std::string_view::npos) return true;
        } else {
            if (whole && place.at == text.size()) return false;
            Place behind = place;
            if (take(items_[item], text, behind)) {
                place = behind;
                ++item;
                continue;
            }
        }
        if (returnItem == none || returnAt >= text.size()) return false;
        text::decode(text, returnAt);
        item = returnItem;
        place = {returnAt, 0};
    }
}

bool LikePattern::matches(std::string_view text, bool ignoreBlanks) const noexcept
{
    return !broken_ && matchesFrom(0, text, ignoreBlanks);
}

/// The byte behind the characters from `at` on that the items up to the next % accept; nothing where they do not.
std::optional<std::size_t> LikePattern::partEnd(std::size_t item, std::string_view text, std::size_t at) const noexcept
{
    Place place{at, 0};
    for (; item < items_.size() && items_[item].kind != Item::Kind::AnyMany; ++item) {
        if (!take(items_[item], text, place)) return std::nullopt;
    }
    return place.pending == 0 ? std::optional{place.at} : std::nullopt;
}

/// Position of the part behind the only %, which reaches to the end of the text. It has a character for each of its
/// items, or fewer where expansions match two of them.
std::int64_t LikePattern::lastPartAt(std::string_view text) const noexcept
{
    const std::size_t items = items_.size() - 1;
    const std::size_t length = text::length(text);
    std::size_t before = length > items ? length - items : 0;
    for (std::size_t at = text::left(text, before).size(); at < text.size(); ++before) {
        if (partEnd(1, text, at) == text.size()) break;
        text::decode(text, at);
    }
    return static_cast<std::int64_t>(before) + 1;
}

/// PATINDEX. Without a leading % the pattern must begin at position 1. With one, a first match of the whole shows that
/// there is one. Where another % follows, the first place that the part between both accepts is the place: behind it
/// stands all that a later place would leave for the rest.
std::int64_t LikePattern::find(std::string_view text) const noexcept
{
    if (broken_ || items_.empty()) return 0;
    const bool anywhere = items_.front().kind == Item::Kind::AnyMany;
    if (!matchesFrom(0, text, false)) return 0;
    if (!anywhere) return 1;
    const auto another = std::find_if(items_.begin() + 1, items_.end(),
                                      [](const Item& item) { return item.kind == Item::Kind::AnyMany; });
    if (another == items_.end()) return lastPartAt(text);
    std::int64_t position = 1;
    for (std::size_t at = 0; !partEnd(1, text, at); ++position)
        text::decode(text, at);
    return position;
}

namespace {

/// The compiled pattern of argument `index`, kept by SQLite for the statement where it is a constant.
class PatternOfCall {
public:
    PatternOfCall(Call& call, int index, char32_t escape)
    {
        kept_ = static_cast<const LikePattern*>(sqlite3_get_auxdata(call.context(), index));
        if (kept_ != nullptr && kept_->escape() == escape) return;
        const TextArgument pattern = call.text(static_cast<std::size_t>(index));
        auto compiled = std::make_unique<LikePattern>(pattern, escape);
        const auto drop = [](void* kept) { std::unique_ptr<LikePattern>{static_cast<LikePattern*>(kept)}.reset(); };
        // Where SQLite does not want to keep it, it drops it at once: ask again before use.
        sqlite3_set_auxdata(call.context(), index, compiled.release(), drop);
        kept_ = static_cast<const LikePattern*>(sqlite3_get_auxdata(call.context(), index));
        if (kept_ != nullptr) return;
        unshared_ = std::make_unique<LikePattern>(pattern, escape);
        kept_ = unshared_.get();
    }
    const LikePattern* operator->() const noexcept { return kept_; }

private:
    const LikePattern* kept_ = nullptr;
    std::unique_ptr<LikePattern> unshared_;
};

/// The escape character of ESCAPE, 0 for none. Error 506 for more than one character.
char32_t escapeOf(Call& call, std::size_t index)
{
    const TextArgument text = call.text(index);
    if (text.view().empty()) return 0;
    std::size_t at = 0;
    const char32_t escape = text::decode(text, at);
    if (at == text.view().size()) return escape;
    std::string message = "The invalid escape character \"";
    message += text.view();
    fail(506, message + "\" was specified in a LIKE predicate.");
}

/// tm_like(text, pattern, escape): 1 or 0, Null if one of them is Null.
void resultLike(Call& call, bool ignoreBlanks)
{
    if (call.anyNull()) return call.resultNull();
    const PatternOfCall pattern{call, 1, escapeOf(call, 2)};
    const TextArgument text = call.text(0);
    call.result(std::int64_t{pattern->matches(text, ignoreBlanks)});
}

} // namespace

void tmLike(Call& call)
{
    resultLike(call, true);
}

void tmNLike(Call& call)
{
    resultLike(call, false);
}

void patIndex(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const PatternOfCall pattern{call, 0, 0};
    const TextArgument text = call.text(1);
    call.result(pattern->find(text));
}

} // namespace tamarok::embedded::functions
