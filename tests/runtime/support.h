#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "support/errors.h"

#include "tamarok/error.h"
#include "tamarok/object.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"
#include "tamarok/variant.h"

namespace tamarok::test {

/// A platform under a built-in locale on 15 June 2024, 10:30.
inline Platform platformFor(std::string_view locale)
{
    Platform platform;
    platform.regional = Regional::named(locale);
    platform.clock =
        std::make_shared<FixedClock>(fromCivil({.year = 2024, .month = 6, .day = 15, .hour = 10, .minute = 30}));
    return platform;
}

/// The settings of `locale` with another short date pattern.
inline Regional withShortDate(std::string_view locale, std::string_view pattern)
{
    Regional regional = Regional::named(locale);
    regional.shortDate = pattern;
    return regional;
}

/// Settings with another decimal separator.
inline Regional withDecimal(std::string_view mark)
{
    Regional regional = Regional::named("en-US");
    regional.decimal.assign(mark);
    return regional;
}

/// The parts one behind the other.
inline std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (const std::string_view part : parts)
        text.append(part);
    return text;
}

/// An object with a property Value, which is its default value if the type is "Field".
class ValueHolder final : public Object {
public:
    ValueHolder(std::string typeName, Variant value) : typeName_{std::move(typeName)}, value_{std::move(value)} {}
    std::string_view typeName() const override { return typeName_; }
    Variant get(std::string_view name, std::span<const Variant>) const override
    {
        if (text::equalsNoCase(name, "Value")) return value_;
        noSuchMember(name);
    }
    Variant defaultValue() const override { return hasDefaultValue() ? value_ : Object::defaultValue(); }
    bool hasDefaultValue() const noexcept override { return typeName_ == "Field"; }

private:
    std::string typeName_;
    Variant value_;
};

inline Variant field(Variant value)
{
    return std::make_shared<ValueHolder>("Field", std::move(value));
}

} // namespace tamarok::test
