#pragma once

#include <cstdint>
#include <optional>

#include "tamarok_tsql/date_value.h"

/// Calendar arithmetic beyond tamarok_tsql/date_value.h (months, ISO weeks), and the clock.
namespace tamarok::embedded::functions {

using tsql::dayOf;
using tsql::firstDate;
using tsql::firstDateTime;
using tsql::fromParts;
using tsql::Instant;
using tsql::isValid;
using tsql::lastDate;
using tsql::oneDay;
using tsql::oneHour;
using tsql::oneMinute;
using tsql::oneSecond;
using tsql::readStored;
using tsql::roundToDateTime;
using tsql::serverDay;
using tsql::storedLength;
using tsql::timeOf;
using tsql::toParts;
using tsql::TypeKind;
using tsql::weekdayOfServerDay;
using tsql::writeStored;

/// The instant `months` later, on the last day of the month if the day does not exist there. Returns nothing
/// outside the years 1 to 9999.
std::optional<Instant> addMonths(Instant instant, std::int64_t months) noexcept;

/// The Thursday of the ISO 8601 week of a day: its year is the year that the week belongs to.
std::int64_t isoThursday(std::int64_t serverDay) noexcept;

/// The ISO 8601 week of a day: weeks begin on Monday, and week 1 has the year's first Thursday.
std::int64_t isoWeek(std::int64_t serverDay) noexcept;

/// The local time by the thread's clock, rounded as a datetime is.
Instant now();

/// The same in universal time.
Instant nowUtc();

} // namespace tamarok::embedded::functions
