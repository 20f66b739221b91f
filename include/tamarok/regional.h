#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

namespace tamarok {

/// The regional settings of all conversions between text and values. Plain data: a caller may change any
/// field.
struct Regional {
    std::string name = "en-US";              ///< language-country
    std::string decimal = ".";               ///< decimal separator, one character
    std::string thousands = ",";             ///< thousands separator, one character (may be a no-break space)
    std::string shortDate = "M/d/yyyy";      ///< d, dd, M, MM, MMM, MMMM, yy, yyyy and literal separators
    std::string time = "h:mm:ss tt";         ///< h, hh, H, HH, mm, ss, tt and literal separators
    std::string am = "AM";                   ///< text for tt before noon, may be empty
    std::string pm = "PM";                   ///< text for tt from noon on, may be empty
    std::array<std::string, 12> months;      ///< January first
    std::array<std::string, 12> shortMonths; ///< as printed by MMM
    std::array<std::string, 7> days;         ///< Sunday first
    std::array<std::string, 7> shortDays;    ///< as printed by ddd
    std::string trueText = "True";           ///< text form of the Boolean true
    std::string falseText = "False";         ///< text form of the Boolean false

    /// Returns the built-in settings of a locale, or nothing if there are none.
    /// @param name  language and country as in "de-AT", in any case
    static std::optional<Regional> find(std::string_view name);

    /// Returns the built-in settings of a locale. Error 5, which lists the known names, for any other name.
    static Regional named(std::string_view name);

    /// Returns the names of the built-in locales in alphabetical order.
    static std::vector<std::string_view> builtInNames();

    /// Returns the settings of the machine by the environment variables LC_ALL, LC_NUMERIC, LC_TIME and LANG.
    /// A locale that is not built in is replaced by a built-in one of the same language; an unknown
    /// language, "C" and "POSIX" give en-US.
    static Regional ofMachine();
};

} // namespace tamarok

#pragma GCC visibility pop
