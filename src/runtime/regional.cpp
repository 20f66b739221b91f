#include "tamarok/regional.h"

#include <algorithm>
#include <cstdlib>

#include "tamarok/error.h"
#include "tamarok/text.h"

// The built-in regional settings, one row a locale in data/regional.inc, and the choice of one by the environment.

namespace tamarok {

namespace {

struct Row {
    std::string_view name;
    std::string_view decimal;
    std::string_view thousands;
    std::string_view shortDate;
    std::string_view time;
    std::string_view am;
    std::string_view pm;
    std::string_view trueText;
    std::string_view falseText;
    std::array<std::string_view, 12> months;
    std::array<std::string_view, 12> shortMonths;
    std::array<std::string_view, 7> days;
    std::array<std::string_view, 7> shortDays;
};

constexpr std::array rows = std::to_array<Row>({
#include "data/regional.inc"
});

static_assert(std::is_sorted(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.name < b.name; }));

/// The country that is used for a language with several built-in countries.
struct Representative {
    std::string_view language;
    std::string_view locale;
};
constexpr std::array representatives{Representative{"de", "de-DE"}, Representative{"en", "en-US"}};

template <std::size_t Count>
void copy(const std::array<std::string_view, Count>& from, std::array<std::string, Count>& to)
{
    std::copy(from.begin(), from.end(), to.begin());
}

Regional toRegional(const Row& row)
{
    Regional regional;
    regional.name = row.name;
    regional.decimal = row.decimal;
    regional.thousands = row.thousands;
    regional.shortDate = row.shortDate;
    regional.time = row.time;
    regional.am = row.am;
    regional.pm = row.pm;
    regional.trueText = row.trueText;
    regional.falseText = row.falseText;
    copy(row.months, regional.months);
    copy(row.shortMonths, regional.shortMonths);
    copy(row.days, regional.days);
    copy(row.shortDays, regional.shortDays);
    return regional;
}

/// Converts the name in an environment variable: "de_AT.UTF-8@euro" becomes "de-AT".
std::string localeName(std::string_view variable)
{
    std::string name{variable.substr(0, variable.find_first_of(".@"))};
    std::replace(name.begin(), name.end(), '_', '-');
    return name;
}

Regional nearest(std::string_view variable)
{
    const std::string name = localeName(variable);
    // The exact locale, else the representative of the language, else any country of it, else en-US.
    if (auto exact = Regional::find(name)) return *std::move(exact);
    const std::string_view language = std::string_view{name}.substr(0, name.find('-'));
    for (const Representative& representative : representatives)
        if (text::equalsNoCase(representative.language, language)) return Regional::named(representative.locale);
    for (const Row& row : rows)
        if (text::equalsNoCase(row.name.substr(0, row.name.find('-')), language)) return toRegional(row);
    return Regional::named("en-US");
}

std::string_view environment(const char* variable)
{
    const char* value = std::getenv(variable);
    return value != nullptr ? std::string_view{value} : std::string_view{};
}

/// Returns the locale of a category: the first that is set of LC_ALL, the variable of the category, LANG.
std::string_view setting(const char* category)
{
    for (const char* variable : {"LC_ALL", category, "LANG"})
        if (const std::string_view value = environment(variable); !value.empty()) return value;
    return "C";
}

} // namespace

std::optional<Regional> Regional::find(std::string_view name)
{
    for (const Row& row : rows)
        if (text::equalsNoCase(row.name, name)) return toRegional(row);
    return std::nullopt;
}

Regional Regional::named(std::string_view name)
{
    if (auto found = find(name)) return *std::move(found);
    std::string message = "Invalid argument: no regional settings \"" + std::string{name} + "\"; known are";
    for (const Row& row : rows)
        message.append(row.name == rows.front().name ? " " : ", ").append(row.name);
    throw Error{errors::invalidArgument, message + "."};
}

std::vector<std::string_view> Regional::builtInNames()
{
    std::vector<std::string_view> names;
    names.reserve(rows.size());
    for (const Row& row : rows)
        names.push_back(row.name);
    return names;
}

Regional Regional::ofMachine()
{
    // Dates and words follow LC_TIME, the separators of numbers LC_NUMERIC.
    Regional regional = nearest(setting("LC_TIME"));
    const Regional numbers = nearest(setting("LC_NUMERIC"));
    regional.decimal = numbers.decimal;
    regional.thousands = numbers.thousands;
    return regional;
}

} // namespace tamarok
