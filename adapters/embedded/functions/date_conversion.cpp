#include "functions/date_conversion.h"

#include <cmath>
#include <string>

#include "functions/number_text.h"

namespace tamarok::embedded::functions {

namespace {

/// Numbers far outside the calendar would overflow an Instant. One beyond the last day stands for all of them.
Instant instantOf(double days) noexcept
{
    constexpr double furthest = 4e6;
    if (!(std::fabs(days) < furthest)) return lastDate + 1;
    const double whole = std::floor(days);
    return static_cast<Instant>(whole) * oneDay + std::llround((days - whole) * static_cast<double>(oneDay));
}

} // namespace

tsql::DateReading readingOf(const Call& call) noexcept
{
    return tsql::readingOf(call.settings().dateOrder);
}

tsql::DateReading readingOfStyle(const Call& call, std::int64_t style)
{
    if (const auto reading = tsql::readingOfStyle(style, call.settings().dateOrder)) return *reading;
    fail(281, std::to_string(style) + " is not a valid style number when converting from nvarchar to datetime.");
}

Instant toDate(sqlite3_value* value, TypeKind type, const tsql::DateReading& reading)
{
    const Storage storage = storageOf(value);
    if (storage == Storage::Whole || storage == Storage::Real) {
        const double days = sqlite3_value_double(value);
        char buffer[40];
        return fitDate(instantOf(days), type, writeFloat(days, 0, buffer));
    }
    const TextArgument text{value};
    const tsql::DateConversion conversion = tsql::convertDateText(text, type, reading);
    if (conversion.error == 0) return conversion.instant;
    failWith(conversion.error, tsql::dateErrorMessage(conversion.error, type), text);
}

Instant fitDate(Instant instant, TypeKind type, std::string_view source)
{
    if (const auto rounded = tsql::roundToType(instant, type)) return *rounded;
    failWith(8115,
             "Arithmetic overflow error converting expression to data type " + std::string{tsql::dateTypeName(type)} +
                 '.',
             source);
}

void resultInstant(Call& call, Instant instant)
{
    char buffer[storedLength];
    call.result(writeStored(instant, buffer));
}

} // namespace tamarok::embedded::functions
