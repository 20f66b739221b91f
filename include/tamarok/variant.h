#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "tamarok/date.h"
#include "tamarok/object.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// The Boolean of the component interface: 16 bits, true is -1 and false is 0.
class Boolean {
public:
    constexpr Boolean() noexcept = default;
    constexpr Boolean(bool value) noexcept : value_{value ? trueValue : falseValue} {}

    constexpr explicit operator bool() const noexcept { return value_ != falseValue; }
    constexpr std::int16_t number() const noexcept { return value_; }

    friend constexpr bool operator==(Boolean, Boolean) = default;

private:
    static constexpr std::int16_t trueValue = -1;
    static constexpr std::int16_t falseValue = 0;
    std::int16_t value_ = falseValue;
};
static_assert(sizeof(Boolean) == 2);

struct Empty { ///< a value that was never set
    friend constexpr bool operator==(Empty, Empty) = default;
};
struct Null { ///< the database's NULL
    friend constexpr bool operator==(Null, Null) = default;
};

class VariantArray;

/// A value of any type as it crosses the component interface. Conversions between types are in convert.h.
class Variant {
public:
    /// The kinds, in the order of the alternatives of the storage.
    enum class Kind : std::uint8_t {
        Empty,
        Null,
        Boolean,
        Integer,
        Long,
        LongLong,
        Double,
        Date,
        String,
        Object,
        Array
    };

    Variant() noexcept = default; ///< Empty
    Variant(Empty) noexcept {}
    Variant(Null) noexcept : value_{Null{}} {}
    Variant(bool value) noexcept : value_{Boolean{value}} {}
    Variant(Boolean value) noexcept : value_{value} {}
    Variant(std::int16_t value) noexcept : value_{value} {}
    Variant(std::int32_t value) noexcept : value_{value} {}
    Variant(std::int64_t value) noexcept : value_{value} {}
    Variant(double value) noexcept : value_{value} {}
    Variant(Date value) noexcept : value_{value} {}
    Variant(std::string value) noexcept : value_{std::move(value)} {}
    Variant(std::string_view value) : value_{std::in_place_type<std::string>, value} {}
    Variant(const char* value) : value_{std::in_place_type<std::string>, value} {}
    Variant(ObjectRef value) noexcept : value_{std::move(value)} {}
    Variant(VariantArray value);
    template <class Derived, class = std::enable_if_t<std::is_base_of_v<Object, Derived>>>
    Variant(std::shared_ptr<Derived> value) noexcept : value_{std::in_place_type<ObjectRef>, std::move(value)}
    {}

    Kind kind() const noexcept { return static_cast<Kind>(value_.index()); }
    bool isEmpty() const noexcept { return kind() == Kind::Empty; }
    bool isNull() const noexcept { return kind() == Kind::Null; }
    bool isString() const noexcept { return kind() == Kind::String; }
    bool isObject() const noexcept { return kind() == Kind::Object; }
    bool isArray() const noexcept { return kind() == Kind::Array; }

    /// Returns the value without conversion. Error 13 if it is of another kind.
    Boolean asBoolean() const { return held<Boolean>(Kind::Boolean); }
    std::int16_t asInteger() const { return held<std::int16_t>(Kind::Integer); }
    std::int32_t asLong() const { return held<std::int32_t>(Kind::Long); }
    std::int64_t asLongLong() const { return held<std::int64_t>(Kind::LongLong); }
    double asDouble() const { return held<double>(Kind::Double); }
    Date asDate() const { return held<Date>(Kind::Date); }
    const std::string& asString() const& { return held<std::string>(Kind::String); }
    /// Moves the text out of a value that is no longer needed.
    std::string asString() && { return std::move(held<std::string>(Kind::String)); }
    const ObjectRef& asObject() const { return held<ObjectRef>(Kind::Object); }
    const VariantArray& asArray() const { return *held<std::shared_ptr<VariantArray>>(Kind::Array); }
    VariantArray& asArray();

    /// Compares kind and value; objects by identity, arrays by content.
    friend bool operator==(const Variant&, const Variant&);

private:
    template <class Value>
    const Value& held(Kind wanted) const
    {
        if (const auto* value = std::get_if<Value>(&value_)) [[likely]]
            return *value;
        refuse(wanted);
    }
    template <class Value>
    Value& held(Kind wanted)
    {
        if (auto* value = std::get_if<Value>(&value_)) [[likely]]
            return *value;
        refuse(wanted);
    }
    [[noreturn]] void refuse(Kind wanted) const;

    std::variant<Empty, Null, Boolean, std::int16_t, std::int32_t, std::int64_t, double, Date, std::string, ObjectRef,
                 std::shared_ptr<VariantArray>>
        value_;
};

/// Returns the name of the kind for messages: "Null", "String".
std::string_view name(Variant::Kind kind) noexcept;

/// An array of Variants of one or more dimensions with any bounds. The first index runs fastest: the result of
/// `GetRows` is stored row by row.
class VariantArray {
public:
    struct Bounds {
        std::int32_t lower = 0;
        std::int32_t upper = -1; ///< lower - 1 in an empty array
        friend constexpr bool operator==(Bounds, Bounds) = default;
    };

    VariantArray() = default; ///< one dimension from 0, empty
    /// One dimension from index `lower` on. Error 5 if the upper bound exceeds 32 bits.
    explicit VariantArray(std::vector<Variant> elements, std::int32_t lower = 0);
    /// Two dimensions. Error 5 unless `elements.size()` is the product of the two extents.
    VariantArray(Bounds first, Bounds second, std::vector<Variant> elements);
    /// Any number of dimensions, at least one. Error 5 where the elements do not fill the bounds.
    VariantArray(std::vector<Bounds> bounds, std::vector<Variant> elements);

    std::int32_t dimensions() const noexcept { return static_cast<std::int32_t>(bounds_.size()); }
    /// Returns the bounds of a dimension, counted from 1. Error 9 for a dimension that the array lacks.
    Bounds bounds(std::int32_t dimension = 1) const;

    /// Returns an element. Error 9 outside the bounds and for a wrong number of indices.
    const Variant& at(std::int32_t index) const;
    Variant& at(std::int32_t index);
    const Variant& at(std::int32_t first, std::int32_t second) const;

    const std::vector<Variant>& elements() const noexcept { return elements_; }
    std::vector<Variant>& elements() noexcept { return elements_; }

    friend bool operator==(const VariantArray&, const VariantArray&);

private:
    std::size_t offset(std::int32_t index) const;
    std::vector<Bounds> bounds_{Bounds{}};
    std::vector<Variant> elements_;
};

// A friend declaration within a class alone leaves them hidden in a shared library.
bool operator==(const Variant& a, const Variant& b);
bool operator==(const VariantArray& a, const VariantArray& b);

} // namespace tamarok

#pragma GCC visibility pop
