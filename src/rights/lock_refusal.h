#pragma once

#include <string>
#include <string_view>

namespace tamarok {

struct TmkVar;

namespace rights {

/// The message that refuses the lock of an object, "" for a kind that has none.
/// @param column  kind of object  @param key  its key as it goes into SQL  @param holder  user's name
/// Errors: 3021 where the object's head record has gone, provider failures.
std::string lockRefusal(const TmkVar& tmkVar, std::string_view column, std::string_view key, std::string_view holder);

} // namespace rights
} // namespace tamarok
