#include "tamarok/variant.h"

#include <algorithm>
#include <array>

#include "tamarok/error.h"

// Arrays and comparison of variants; access to single values is inline in the header.

namespace tamarok {

namespace {

/// Returns the number of indices, 0 or less for an empty dimension.
std::int64_t extent(VariantArray::Bounds bounds) noexcept
{
    return static_cast<std::int64_t>(bounds.upper) - bounds.lower + 1;
}

[[noreturn]] void throwOutOfBounds(std::int32_t index, VariantArray::Bounds bounds)
{
    throw Error{errors::subscriptOutOfRange, "Subscript out of range: index " + std::to_string(index) +
                                                 " is not within " + std::to_string(bounds.lower) + " to " +
                                                 std::to_string(bounds.upper) + "."};
}

/// Returns the offset of an index within its dimension.
std::size_t position(std::int32_t index, VariantArray::Bounds bounds)
{
    if (index < bounds.lower || index > bounds.upper) throwOutOfBounds(index, bounds);
    return static_cast<std::size_t>(static_cast<std::int64_t>(index) - bounds.lower);
}

VariantArray::Bounds boundsOf(std::size_t count, std::int32_t lower)
{
    // 64 bits, since the sum may leave the range of an index.
    const std::int64_t upper = static_cast<std::int64_t>(lower) + static_cast<std::int64_t>(count) - 1;
    if (upper > INT32_MAX || upper < INT32_MIN)
        throw Error{errors::invalidArgument, "Invalid argument: the upper bound of an array leaves its 32-bit range."};
    return {lower, static_cast<std::int32_t>(upper)};
}

/// Whether `count` is the product of the extents; false where an extent is negative.
bool fills(std::size_t count, const std::vector<VariantArray::Bounds>& bounds)
{
    if (std::ranges::any_of(bounds, [](VariantArray::Bounds b) { return extent(b) < 0; })) return false;
    if (std::ranges::any_of(bounds, [](VariantArray::Bounds b) { return extent(b) == 0; })) return count == 0;
    std::uint64_t product = 1;
    for (const VariantArray::Bounds& dimension : bounds) {
        product *= static_cast<std::uint64_t>(extent(dimension));
        if (product > count) return false; // before it can overflow
    }
    return product == count;
}

} // namespace

Variant::Variant(VariantArray value) : value_{std::make_shared<VariantArray>(std::move(value))} {}

VariantArray& Variant::asArray()
{
    auto& array = held<std::shared_ptr<VariantArray>>(Kind::Array);
    // Copies of an array value share it; the first change of one makes a copy.
    if (array.use_count() > 1) array = std::make_shared<VariantArray>(*array);
    return *array;
}

void Variant::refuse(Kind wanted) const
{
    throw Error{errors::typeMismatch, "Type mismatch: a value of kind " + std::string{name(kind())} + " stands where " +
                                          std::string{name(wanted)} + " is needed."};
}

bool operator==(const Variant& a, const Variant& b)
{
    // Arrays are compared by content, since copies may or may not share it; objects by identity.
    if (a.isArray() && b.isArray()) return a.asArray() == b.asArray();
    return a.value_ == b.value_;
}

std::string_view name(Variant::Kind kind) noexcept
{
    static constexpr std::array<std::string_view, 11> names{"Empty",  "Null", "Boolean", "Integer", "Long", "LongLong",
                                                            "Double", "Date", "String",  "Object",  "Array"};
    const auto index = static_cast<std::size_t>(kind);
    return index < names.size() ? names[index] : std::string_view{"unknown"};
}

VariantArray::VariantArray(std::vector<Variant> elements, std::int32_t lower) :
    bounds_{boundsOf(elements.size(), lower)}, elements_{std::move(elements)}
{}

VariantArray::VariantArray(Bounds first, Bounds second, std::vector<Variant> elements) :
    VariantArray{std::vector{first, second}, std::move(elements)}
{}

VariantArray::VariantArray(std::vector<Bounds> bounds, std::vector<Variant> elements) :
    bounds_{std::move(bounds)}, elements_{std::move(elements)}
{
    if (bounds_.empty()) throw Error{errors::invalidArgument, "Invalid argument: an array has at least one dimension."};
    if (!fills(elements_.size(), bounds_)) {
        std::string extents;
        for (const Bounds& dimension : bounds_)
            extents += (extents.empty() ? "" : " by ") + std::to_string(extent(dimension));
        throw Error{errors::invalidArgument, "Invalid argument: " + std::to_string(elements_.size()) +
                                                 " elements do not fill an array of " + extents + "."};
    }
}

VariantArray::Bounds VariantArray::bounds(std::int32_t dimension) const
{
    if (dimension < 1 || dimension > dimensions())
        throw Error{errors::subscriptOutOfRange,
                    "Subscript out of range: the array has no dimension " + std::to_string(dimension) + "."};
    // The number of elements of a one-dimensional array may have changed since.
    if (dimensions() == 1) return boundsOf(elements_.size(), bounds_.front().lower);
    return bounds_[static_cast<std::size_t>(dimension) - 1];
}

const Variant& VariantArray::at(std::int32_t index) const
{
    return elements_[offset(index)];
}

Variant& VariantArray::at(std::int32_t index)
{
    return elements_[offset(index)];
}

const Variant& VariantArray::at(std::int32_t first, std::int32_t second) const
{
    if (dimensions() != 2)
        throw Error{errors::subscriptOutOfRange, "Subscript out of range: two indices for an array of " +
                                                     std::to_string(dimensions()) + " dimension(s)."};
    // The first dimension varies fastest.
    const auto fields = static_cast<std::size_t>(extent(bounds_[0]));
    const std::size_t place = position(first, bounds_[0]) + fields * position(second, bounds_[1]);
    if (place >= elements_.size()) throwOutOfBounds(second, bounds_[1]);
    return elements_[place];
}

bool operator==(const VariantArray& a, const VariantArray& b)
{
    if (a.dimensions() != b.dimensions()) return false;
    for (std::int32_t dimension = 1; dimension <= a.dimensions(); ++dimension)
        if (a.bounds(dimension) != b.bounds(dimension)) return false;
    return a.elements_ == b.elements_;
}

std::size_t VariantArray::offset(std::int32_t index) const
{
    if (dimensions() != 1)
        throw Error{errors::subscriptOutOfRange, "Subscript out of range: one index for an array of " +
                                                     std::to_string(dimensions()) + " dimensions."};
    return position(index, bounds(1));
}

} // namespace tamarok
