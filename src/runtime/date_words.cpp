#include "date_words.h"

#include "tamarok/english_dates.h"
#include "tamarok/text.h"

// Regional words precede English ones: a word can mean different things in two languages.

namespace tamarok {

namespace {

/// Compares a name with a word, which has no abbreviation point, ignoring case.
bool matches(std::string_view name, std::string_view word) noexcept
{
    if (name.ends_with('.')) name.remove_suffix(1);
    return !word.empty() && text::equalsNoCase(name, word);
}

template <class Names>
std::size_t indexOf(const Names& names, std::string_view word) noexcept
{
    for (std::size_t i = 0; i < names.size(); ++i)
        if (matches(names[i], word)) return i + 1;
    return 0;
}

} // namespace

std::int32_t DateWords::month(std::string_view word) const
{
    std::size_t index = indexOf(regional_.months, word);
    if (index == 0) index = indexOf(regional_.shortMonths, word);
    return index != 0 ? static_cast<std::int32_t>(index) : english::monthOf(word);
}

bool DateWords::isWeekday(std::string_view word) const
{
    return isRegionalWeekday(word) || english::indexOf(english::days, word) != 0;
}

bool DateWords::isRegionalWeekday(std::string_view word) const
{
    return indexOf(regional_.days, word) != 0 || indexOf(regional_.shortDays, word) != 0;
}

std::optional<bool> DateWords::halfDay(std::string_view word) const
{
    if (matches(regional_.pm, word) || matches("PM", word) || matches("P", word)) return true;
    if (matches(regional_.am, word) || matches("AM", word) || matches("A", word)) return false;
    return std::nullopt;
}

} // namespace tamarok
