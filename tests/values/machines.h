#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "runtime/support.h"

#include "tamarok/platform.h"

/// The machines that readers, writers, conversions and filters are proven on: each of the four orders
/// of a date, a spelled month, both decimal separators, and the usual thousands marks.
namespace tamarok::test {

struct Machine {
    std::string_view name;
    std::string_view locale;
    std::string_view shortDate;    ///< "" for that of the locale
    std::string_view fifthOfMarch; ///< 5 March 2024 as this machine prints it
    std::string_view number;       ///< 1234.5 as this machine prints it
    std::string_view grouped;      ///< 1234.5 as a person types it with a thousands mark

    Regional regional() const
    {
        Regional result = Regional::named(locale);
        if (!shortDate.empty()) result.shortDate = shortDate;
        return result;
    }
    bool hasComma() const { return number.find(',') != std::string_view::npos; }
};

inline constexpr std::array machines{
    Machine{"de-AT", "de-AT", "", "05.03.2024", "1234,5", "1.234,5"},
    Machine{"en-US", "en-US", "", "3/5/2024", "1234.5", "1,234.5"},
    Machine{"en-GB", "en-GB", "", "05/03/2024", "1234.5", "1,234.5"},
    Machine{"fr-FR", "fr-FR", "", "05/03/2024", "1234,5", "1 234,5"},
    Machine{"sv-SE", "sv-SE", "", "2024-03-05", "1234,5", "1\u00A0234,5"},
    Machine{"spelled month", "en-GB", "dd-MMM-yy", "05-Mar-24", "1234.5", "1,234.5"},
    Machine{"spelled month, German", "de-DE", "d-MMM-yyyy", "5-Mrz-2024", "1234,5", "1.234,5"},
    Machine{"spelled month, blanks", "en-US", "dd MMM yyyy", "05 Mar 2024", "1234.5", "1,234.5"},
    Machine{"year, day, month", "sv-SE", "yyyy-dd-MM", "2024-05-03", "1234,5", "1 234,5"},
    Machine{"year, day, month, two digits", "en-GB", "yy/dd/MM", "24/05/03", "1234.5", "1,234.5"},
};

/// The calling thread on one of the machines, on 15 June 2024, 10:30.
class OnMachine {
public:
    explicit OnMachine(const Machine& machine) : scope_{platform(machine)} {}

private:
    static Platform platform(const Machine& machine)
    {
        Platform result = platformFor(machine.locale);
        result.regional = machine.regional();
        return result;
    }
    PlatformScope scope_;
};

/// Runs `check(machine)` on each machine.
template <class Check>
void onEachMachine(Check check)
{
    for (const Machine& machine : machines) {
        SCOPED_TRACE(machine.name);
        const OnMachine on{machine};
        check(machine);
    }
}

} // namespace tamarok::test
