#pragma once

#include <string>

#include "tamarok/variant.h"

namespace tamarok::com {

/// Returns a value as a literal of an SQL statement: NULL, a number with a point, a text or date between quotes. Error
/// 13 for an object or an array.
std::string sqlLiteral(const Variant& value);

} // namespace tamarok::com
