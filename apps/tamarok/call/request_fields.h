#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "call/json.h"

#include "tamarok/variant.h"

/// Reading the members of a request. A member of another kind than expected is Error 5 that names it.
namespace tamarok::cli {

class ObjectNames;

/// Throws Error 5 with that reason.
[[noreturn]] void refuse(const std::string& reason);

/// The member of that name, or nullptr.
const Json* findMember(const Json& object, std::string_view name);

/// The member of that name; Error 5 where there is none.
const Json& requireMember(const Json& request, std::string_view name);

/// A value that must be a text. @param what  the member's name, for the message
const std::string& requireText(const Json& value, std::string_view what);

/// The member of that name, which must be a text.
const std::string& textMember(const Json& request, std::string_view name);

/// A value that must be an object.
void requireObject(const Json& value, std::string_view what);

/// A value that must be a whole number from 0 to `most`. @param what  what it is, for the message
std::int64_t requireCount(const Json& value, std::int64_t most, std::string_view what);

/// The values of the member "args", or none where it is left out.
std::vector<Variant> readArguments(const Json& request, const ObjectNames& names);

} // namespace tamarok::cli
