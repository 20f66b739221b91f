#include "functions/date_conversion.h"

#include <cmath>
#include <string>

#include "functions/number_text.h"

namespace tamarok::embedded::functions {

namespace {

/// Numbers far outside the calendar would overflow an Instant. They are all mapped to an instant beyond the last day,
/// which `fitDate` refuses.
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

/// A number counts as days from 1900-01-01, as on the server; any other value is read as a text, the stored form
/// included. Null must have been excluded before.
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

/// Rounds to the type. Error 8115, with the value before the conversion, beyond the type's range.
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
