#pragma once

#include <string>
#include <string_view>

#include "functions/calendar.h"

/// Oracle's masks of TO_CHAR and TO_DATE. Errors carry Oracle's numbers without sign.
namespace tamarok::embedded::functions {

/// YYYY RRRR YY RR MM MON MONTH DD DDD D DY DAY HH24 HH12 HH MI SS FF FF3 AM PM Q WW IW FM, quoted text and
/// punctuation. Error 1821 for anything else.
std::string oracleDateText(Instant instant, std::string_view mask);

/// The date that `text` denotes under the mask. Errors 1821 (mask), 1861 (text does not fit it), 1843 (no such day).
Instant oracleDate(std::string_view text, std::string_view mask);

/// 9 0 . D , G S MI FM; "#" throughout where the number does not fit. Error 1481 for another mask.
std::string oracleNumberText(double number, std::string_view mask);

/// A number in its shortest form with at most 15 digits, without a 0 before the point.
std::string oracleNumberText(double number);

} // namespace tamarok::embedded::functions
