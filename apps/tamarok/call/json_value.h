#pragma once

#include <string>
#include <string_view>

#include "call/json.h"

#include "tamarok/date.h"
#include "tamarok/variant.h"

namespace tamarok::cli {

class ObjectNames;

/// The value that a request's JSON stands for; docs/call-host.md lists the forms. Errors: 5 for an unknown
/// form, 6 for a whole number beyond 64 bits. @param names  the objects that {"$ref":"name"} can name
Variant toVariant(const Json& json, const ObjectNames& names);

/// A value as an answer writes it; an object without name gets one. Error 6 for a number that JSON
/// cannot write (not a number, infinite).
Json fromVariant(const Variant& value, ObjectNames& names);

/// Reads "2024-03-05", "2024-03-05T10:15", "2024-03-05T10:15:00" or the last with a fraction of the second,
/// rounded down to milliseconds. Error 5 for anything else. The years 0000 to 0099 give days before the
/// range of dates.
Date parseIsoDate(std::string_view text);

/// Writes a date in that form: without time at midnight, without fraction at a whole second. Error 6
/// beyond the years 0 to 9999.
std::string isoDate(Date date);

} // namespace tamarok::cli
