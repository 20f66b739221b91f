#pragma once

#include <string>
#include <string_view>

#include "call/json.h"

#include "tamarok/date.h"
#include "tamarok/variant.h"

namespace tamarok::cli {

class ObjectNames;

/// A value as it stands in a request. Error 5 for a form that is none; 6 for a whole number beyond
/// 64 bits. @param names  where {"$ref":"name"} looks
Variant toVariant(const Json& json, const ObjectNames& names);

/// A value as it stands in an answer; an object gets a name where it has none. Error 6 for a
/// number that JSON cannot write (not a number, infinite).
Json fromVariant(const Variant& value, ObjectNames& names);

/// "2024-03-05", "2024-03-05T10:15", "2024-03-05T10:15:00" or with a fraction of the second; Error 5
/// for anything else. The years 0000 to 0099 give days before the range of dates.
Date parseIsoDate(std::string_view text);

/// The same form: without time at midnight, without fraction at a whole second. Error 6 beyond the years
/// 0 to 9999.
std::string isoDate(Date date);

} // namespace tamarok::cli
