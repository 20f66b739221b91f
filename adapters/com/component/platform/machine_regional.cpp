#include "machine_regional.h"

#include <array>
#include <string>

#include "wide_text.h"
#include "windows_headers.h"

#include "tamarok/text.h"

namespace tamarok::com {

namespace {

std::string setting(LCTYPE type)
{
    std::array<wchar_t, 128> buffer{};
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer.data(), static_cast<int>(buffer.size()));
    return toUtf8(std::wstring_view{buffer.data(), static_cast<std::size_t>(length > 0 ? length - 1 : 0)});
}

/// Takes a setting over if the system has one.
void take(std::string& target, LCTYPE type)
{
    if (std::string value = setting(type); !value.empty()) target = std::move(value);
}

/// The library's separators are single characters.
void takeCharacter(std::string& target, LCTYPE type)
{
    const std::string value = setting(type);
    if (!value.empty()) target = text::left(value, 1);
}

/// The names of months and days; the system counts days from Monday.
void takeNames(Regional& regional)
{
    for (std::size_t month = 0; month < regional.months.size(); ++month) {
        take(regional.months[month], LOCALE_SMONTHNAME1 + static_cast<LCTYPE>(month));
        take(regional.shortMonths[month], LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month));
    }
    for (std::size_t day = 0; day < regional.days.size(); ++day) {
        const auto place = static_cast<LCTYPE>((day + 6) % 7);
        take(regional.days[day], LOCALE_SDAYNAME1 + place);
        take(regional.shortDays[day], LOCALE_SABBREVDAYNAME1 + place);
    }
}

} // namespace

Regional machineRegional()
{
    const std::string name = setting(LOCALE_SNAME);
    Regional regional = Regional::find(name).value_or(Regional::named("en-US"));
    take(regional.name, LOCALE_SNAME);
    takeCharacter(regional.decimal, LOCALE_SDECIMAL);
    takeCharacter(regional.thousands, LOCALE_STHOUSAND);
    take(regional.shortDate, LOCALE_SSHORTDATE);
    take(regional.time, LOCALE_STIMEFORMAT);
    // Both may be empty: many countries have no words for the halves of the day.
    regional.am = setting(LOCALE_S1159);
    regional.pm = setting(LOCALE_S2359);
    takeNames(regional);
    return regional;
}

} // namespace tamarok::com
