#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace tamarok::cli {

/// Members keep the order in which they were written.
using Json = nlohmann::ordered_json;

/// Reads one JSON text. Error 5 with the byte position for anything that is not well-formed UTF-8
/// JSON, for a number that no Double or 64-bit whole number holds, and for nesting deeper than 256.
Json parseJson(std::string_view text);

/// One line; a byte that is no UTF-8 is replaced by U+FFFD.
std::string toLine(const Json& json);

/// The kind of a value for messages ("a text", "an array").
std::string_view kindOf(const Json& json);

} // namespace tamarok::cli
