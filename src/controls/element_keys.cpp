#include "element_keys.h"

#include <cmath>
#include <limits>

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/list_view.h"
#include "tamarok/members.h"

// Each message names the value that was refused and, of a position, the range.

namespace tamarok::controls {

// Collections take positions and keys at the same place: a key that reads as a number would be mistaken for a position.
void checkKey(std::string_view key, std::string_view collection)
{
    if (convert::isNumeric(Variant{key}))
        throw Error{errors::invalidKey, "Invalid key: \"" + std::string{key} + "\" is a number.",
                    std::string{collection}};
}

void throwKeyNotUnique(std::string_view key, std::string_view collection)
{
    throw Error{errors::keyNotUnique, "The key is not unique: an element has the key \"" + std::string{key} + "\".",
                std::string{collection}};
}

void throwElementNotFound(std::string_view key, std::string_view collection)
{
    throw Error{errors::elementNotFound, "There is no element with the key \"" + std::string{key} + "\".",
                std::string{collection}};
}

std::size_t checkedPosition(std::int32_t index, std::size_t count, std::string_view collection, std::int32_t first)
{
    // 64 bits, since the difference may leave the range of an index.
    const std::int64_t position = std::int64_t{index} - first;
    if (position >= 0 && position < static_cast<std::int64_t>(count)) return static_cast<std::size_t>(position);
    throw Error{errors::elementIndexOutOfBounds,
                "Index out of bounds: " + std::to_string(index) + " is not within " + std::to_string(first) + " to " +
                    std::to_string(static_cast<std::int64_t>(count) + first - 1) + ".",
                std::string{collection}};
}

void throwInvalidValue(std::string_view property, const std::string& value)
{
    throw Error{errors::invalidPropertyValue,
                "Invalid property value: " + std::string{property} + " cannot be " + value + ".",
                std::string{property}};
}

float toSingle(const Variant& value, std::string_view property)
{
    const double number = convert::toDouble(value);
    // A cast of a number beyond the range of float is undefined.
    if (std::abs(number) > std::numeric_limits<float>::max())
        throw Error{errors::overflow, "Overflow: the number is too large for " + std::string{property} + ".",
                    std::string{property}};
    return static_cast<float>(number);
}

float toSize(const Variant& value, std::string_view property)
{
    const float size = toSingle(value, property);
    if (size < 0) throwInvalidValue(property, convert::toText(value));
    return size;
}

std::optional<std::int32_t> optionalLong(std::span<const Variant> arguments, std::size_t index)
{
    const Variant* given = optionalArgument(arguments, index);
    return given == nullptr ? std::nullopt : std::optional{convert::toLong(*given)};
}

std::string optionalText(std::span<const Variant> arguments, std::size_t index)
{
    const Variant* given = optionalArgument(arguments, index);
    return given == nullptr ? std::string{} : convert::toText(*given);
}

const Variant& onlyIndex(std::span<const Variant> index, std::string_view property, std::string_view source)
{
    if (index.size() != 1)
        throw Error{errors::wrongArgumentCount, std::string{property} + " needs one index.", std::string{source}};
    return index[0];
}

} // namespace tamarok::controls
