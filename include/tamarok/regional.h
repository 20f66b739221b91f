#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tamarok {

/// The regional settings that govern every conversion between text and values. Plain data: a
/// caller may change any field, and tests do.
struct Regional {
    std::string name = "en-US";              ///< language-country
    std::string decimal = ".";               ///< decimal separator, one character
    std::string thousands = ",";             ///< digit grouping mark, one character (may be a no-break space)
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

    /// The built-in settings of a locale, name compared without regard to case ("de-AT"); nothing
    /// for a name that is not built in.
    static std::optional<Regional> find(std::string_view name);

    /// The same; Error 5 that lists the known names where there is none.
    static Regional named(std::string_view name);

    /// Names of the built-in locales, sorted.
    static std::vector<std::string_view> builtInNames();

    /// The machine's own settings, read from LC_ALL, LC_NUMERIC, LC_TIME and LANG without changing
    /// any process-wide state. A locale that is not built in takes the nearest built-in one of the
    /// same language; an unknown language, "C" and "POSIX" give en-US.
    static Regional ofMachine();
};

} // namespace tamarok
