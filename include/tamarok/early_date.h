#pragma once

#include <cstdint>

#include "tamarok/date.h"

/// Days of the years 0 to 99, before the range of dates: a form or a script may hold a year of two digits that
/// was taken by its word.
namespace tamarok {

namespace early {

/// The calendar repeats itself after 400 years, by which such days are reached.
inline constexpr std::int32_t yearsPerCycle = 400;
inline constexpr double daysPerCycle = 146097.0;
inline constexpr double daysBefore100 = 36525.0; ///< of the years 0 to 99; 0, 4, ..., 96 are leap years
inline constexpr std::int32_t endYear = 100;

} // namespace early

/// Whether a date lies in the years 0 to 99.
inline bool isEarly(Date date) noexcept
{
    const double day = dayOf(date).days;
    return day < firstDateDays && day >= firstDateDays - early::daysBefore100;
}

/// toCivil for those years too.
inline CivilTime toCivilOrEarly(Date date)
{
    if (!isEarly(date)) return toCivil(date);
    CivilTime civil = toCivil({date.days + early::daysPerCycle});
    civil.year -= early::yearsPerCycle;
    return civil;
}

/// fromCivil for those years too.
inline Date fromCivilOrEarly(CivilTime civil)
{
    if (civil.year < 0 || civil.year >= early::endYear) return fromCivil(civil);
    civil.year += early::yearsPerCycle;
    return {fromCivil(civil).days - early::daysPerCycle};
}

} // namespace tamarok
