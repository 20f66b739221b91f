#pragma once

#include <string>
#include <string_view>

namespace tamarok {

struct TmkVar;

namespace rights {

/// Returns the message that refuses the lock of an object in the session's language; "" for an unknown kind of
/// object or an unknown document type, for which no message is shown.
/// @param column  kind of object, a column of table LOCK
/// @param key     the object's key as SQL text  @param holder  name of the user who has the lock
/// Errors: 3021 if the object's head record is missing, failures of the database.
std::string lockRefusal(const TmkVar& tmkVar, std::string_view column, std::string_view key, std::string_view holder);

} // namespace rights
} // namespace tamarok
