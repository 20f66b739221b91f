#include "call/json_array.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "call/json_value.h"
#include "call/request_fields.h"

namespace tamarok::cli {

namespace {

using Bounds = VariantArray::Bounds;

// ---- reading -----------------------------------------------------------------------------------

/// Number of elements of each dimension, as the first elements of the nested arrays show it.
std::vector<std::size_t> extentsOf(const Json& content)
{
    std::vector<std::size_t> extents;
    for (const Json* level = &content; level->is_array(); level = &level->front()) {
        extents.push_back(level->size());
        if (level->empty()) break;
    }
    return extents;
}

/// Number of elements that stand `depth` levels of arrays below `level`.
std::size_t countElements(const Json& level, std::size_t depth)
{
    if (depth == 0) return 1;
    if (!level.is_array()) return 0;
    std::size_t count = 0;
    for (const Json& item : level)
        count += countElements(item, depth - 1);
    return count;
}

/// Whether `count` is the product of the extents.
bool fills(std::size_t count, const std::vector<std::size_t>& extents)
{
    if (std::ranges::find(extents, 0U) != extents.end()) return count == 0;
    std::size_t product = 1;
    for (const std::size_t extent : extents) {
        product *= extent;
        if (product > count) return false; // before it can overflow
    }
    return product == count;
}

/// Puts the elements of one nested array in their places, the first index running fastest.
/// @param offset  place of the array's first element
/// @param stride  distance of its elements
void fill(const Json& level, std::span<const std::size_t> extents, std::size_t offset, std::size_t stride,
          std::vector<Variant>& elements, const ObjectNames& names)
{
    if (extents.empty()) {
        if (level.is_array()) refuse("the arrays in $array are nested to different depths");
        elements[offset] = toVariant(level, names);
        return;
    }
    if (!level.is_array() || level.size() != extents.front()) refuse("the arrays in $array differ in length");
    for (std::size_t index = 0; index < level.size(); ++index) {
        fill(level[index], extents.subspan(1), offset + index * stride, stride * extents.front(), elements, names);
    }
}

std::int32_t boundFrom(const Json& json, std::string_view what)
{
    if (!json.is_number_integer()) refuse("\"" + std::string{what} + "\" holds whole numbers, not " + json.dump());
    const auto value = json.get<std::int64_t>();
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        refuse("\"" + std::string{what} + "\" leaves the range of 32 bits: " + json.dump());
    }
    return static_cast<std::int32_t>(value);
}

/// The lower or upper bounds of the dimensions. One number stands for all of them.
std::vector<std::int32_t> boundsFrom(const Json& json, std::string_view what, std::size_t dimensions)
{
    if (!json.is_array()) return std::vector<std::int32_t>(dimensions, boundFrom(json, what));
    if (json.size() != dimensions) refuse("\"" + std::string{what} + "\" needs one bound for each dimension");
    std::vector<std::int32_t> bounds;
    for (const Json& bound : json)
        bounds.push_back(boundFrom(bound, what));
    return bounds;
}

Bounds boundsFor(std::int32_t lower, std::size_t extent)
{
    const std::int64_t upper = std::int64_t{lower} + static_cast<std::int64_t>(extent) - 1;
    if (upper > std::numeric_limits<std::int32_t>::max() || upper < std::numeric_limits<std::int32_t>::min()) {
        refuse("the upper bound of an array leaves the range of 32 bits");
    }
    return {lower, static_cast<std::int32_t>(upper)};
}

/// An array without elements whose bounds are given one by one.
VariantArray emptyArray(const Json& content, const Json* base, const Json& upper)
{
    if (!content.empty()) refuse("\"upper\" belongs to an array without elements");
    if (!upper.is_array() || upper.empty()) refuse("\"upper\" is a list with one bound for each dimension");
    const auto highest = boundsFrom(upper, "upper", upper.size());
    const auto lowest =
        base != nullptr ? boundsFrom(*base, "base", upper.size()) : std::vector<std::int32_t>(upper.size(), 0);
    std::vector<Bounds> bounds;
    for (std::size_t index = 0; index < highest.size(); ++index)
        bounds.push_back({lowest[index], highest[index]});
    return VariantArray{std::move(bounds), {}};
}

// ---- writing -----------------------------------------------------------------------------------

Json elementToJson(const Variant& element, ObjectNames& names);

Json marked(const VariantArray& array, ObjectNames& names);

/// The nested arrays from dimension `dimension` on; the counterpart of `fill`.
Json nested(const VariantArray& array, std::int32_t dimension, std::size_t offset, std::size_t stride,
            ObjectNames& names)
{
    if (dimension > array.dimensions()) return elementToJson(array.elements()[offset], names);
    const Bounds bounds = array.bounds(dimension);
    const auto extent = static_cast<std::size_t>(std::int64_t{bounds.upper} - bounds.lower + 1);
    Json level = Json::array();
    for (std::size_t index = 0; index < extent; ++index)
        level.push_back(nested(array, dimension + 1, offset + index * stride, stride * extent, names));
    return level;
}

/// An element of a marked array, in which a plain JSON array would be read as a further dimension.
Json elementToJson(const Variant& element, ObjectNames& names)
{
    return element.isArray() ? marked(element.asArray(), names) : fromVariant(element, names);
}

Json marked(const VariantArray& array, ObjectNames& names)
{
    std::vector<std::int32_t> lower;
    std::vector<std::int32_t> upper;
    for (std::int32_t dimension = 1; dimension <= array.dimensions(); ++dimension) {
        lower.push_back(array.bounds(dimension).lower);
        upper.push_back(array.bounds(dimension).upper);
    }
    const bool isEmpty = array.elements().empty();
    const bool sameBase = std::ranges::all_of(lower, [&](std::int32_t bound) { return bound == lower.front(); });
    Json result{{"$array", isEmpty ? Json::array() : nested(array, 1, 0, 1, names)}};
    if (!sameBase)
        result["base"] = lower;
    else if (lower.front() != 0)
        result["base"] = lower.front();
    if (isEmpty && array.dimensions() > 1) result["upper"] = upper;
    return result;
}

} // namespace

bool isMarkedArray(const Json& json)
{
    return json.is_object() && json.contains("$array");
}

Variant arrayFromMarked(const Json& json, const ObjectNames& names)
{
    const Json& content = requireMember(json, "$array");
    const Json* base = findMember(json, "base");
    const Json* upper = findMember(json, "upper");
    const std::size_t known = 1U + (base != nullptr ? 1U : 0U) + (upper != nullptr ? 1U : 0U);
    if (json.size() != known) refuse("$array goes with \"base\" and \"upper\" alone");
    if (!content.is_array()) refuse("$array needs an array, not " + std::string{kindOf(content)});
    if (upper != nullptr) return emptyArray(content, base, *upper);

    const std::vector<std::size_t> extents = extentsOf(content);
    const auto lower =
        base != nullptr ? boundsFrom(*base, "base", extents.size()) : std::vector<std::int32_t>(extents.size(), 0);
    // Arrays of different lengths are refused before room is made for the product of the lengths, which
    // may exceed the elements by far.
    const std::size_t count = countElements(content, extents.size());
    if (!fills(count, extents)) refuse("the arrays in $array differ in length");
    std::vector<Bounds> bounds;
    for (std::size_t index = 0; index < extents.size(); ++index)
        bounds.push_back(boundsFor(lower[index], extents[index]));
    std::vector<Variant> elements(count);
    if (count > 0) fill(content, extents, 0, 1, elements, names);
    return VariantArray{std::move(bounds), std::move(elements)};
}

Json arrayToJson(const VariantArray& array, ObjectNames& names)
{
    if (array.dimensions() != 1 || array.bounds().lower != 0) return marked(array, names);
    Json result = Json::array();
    for (const Variant& element : array.elements())
        result.push_back(fromVariant(element, names));
    return result;
}

} // namespace tamarok::cli
