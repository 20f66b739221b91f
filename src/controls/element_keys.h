#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tamarok/variant.h"

/// The rules that the collections of controls share: keys, positions, property values.
namespace tamarok::controls {

/// Error 35603 for a key that reads as a number.
void checkKey(std::string_view key, std::string_view collection);
[[noreturn]] void throwKeyNotUnique(std::string_view key, std::string_view collection);
[[noreturn]] void throwElementNotFound(std::string_view key, std::string_view collection);

/// Returns the position from 0 of `index`, which counts from `first`. Error 35600 unless it is one of `count`.
std::size_t checkedPosition(std::int32_t index, std::size_t count, std::string_view collection, std::int32_t first = 1);

/// Error 380, which names the property and the value that it refuses.
[[noreturn]] void throwInvalidValue(std::string_view property, const std::string& value);

/// Returns the value as single-precision number. Errors: 6 beyond its range, 380 for a negative one, 13.
float toSize(const Variant& value, std::string_view property);
/// The same for a number that may be negative.
float toSingle(const Variant& value, std::string_view property);

/// Returns an argument that may be left out: nothing if it is, or Empty.
std::optional<std::int32_t> optionalLong(std::span<const Variant> arguments, std::size_t index);
std::string optionalText(std::span<const Variant> arguments, std::size_t index);

/// Returns the one index of an indexed property. Error 450 without exactly one.
const Variant& onlyIndex(std::span<const Variant> index, std::string_view property, std::string_view source);

} // namespace tamarok::controls
