#pragma once

#include <string_view>

#include "functions/calendar.h"
#include "functions/call.h"
#include "tamarok_tsql/date_text.h"

/// Values of SQLite converted to the server's types of dates. Texts go through tamarok_tsql/date_text.h, which the
/// translation uses for literals too. Failures are the server's errors.
namespace tamarok::embedded::functions {

/// How the connection of a call reads date texts.
tsql::DateReading readingOf(const Call& call) noexcept;

/// How CONVERT with that style reads them. Error 281 for a style that the server does not have.
tsql::DateReading readingOfStyle(const Call& call, std::int64_t style);

/// A text, or a number of days since 1 January 1900, as an instant of the type. Errors 241, 242 and 295 for a
/// text, 8115 for a number.
Instant toDate(sqlite3_value* value, TypeKind type, const tsql::DateReading& reading);

/// Rounds a computed instant to the type. Error 8115 outside its range; the message names `source`.
Instant fitDate(Instant instant, TypeKind type, std::string_view source);

/// Makes the stored text of an instant the result of a call.
void resultInstant(Call& call, Instant instant);

} // namespace tamarok::embedded::functions
