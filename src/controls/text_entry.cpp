#include <algorithm>
#include <array>

#include "property_table.h"

#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::controls {
namespace {

constexpr std::int32_t invalidPropertyValue = 380;
constexpr char32_t backspace = 8;
constexpr char32_t enter = 13;

constexpr std::array<Property<TextEntry>, 5> textProperties = {{
    {"Text", [](const TextEntry& box, std::span<const Variant>) { return Variant{box.text()}; },
     [](TextEntry& box, const Variant& value) { box.text(convert::toText(value)); }},
    {"SelStart", [](const TextEntry& box, std::span<const Variant>) { return Variant{box.SelStart()}; },
     [](TextEntry& box, const Variant& value) { box.SelStart(convert::toLong(value)); }},
    {"SelLength", [](const TextEntry& box, std::span<const Variant>) { return Variant{box.SelLength()}; },
     [](TextEntry& box, const Variant& value) { box.SelLength(convert::toLong(value)); }},
    {"SelText", [](const TextEntry& box, std::span<const Variant>) { return Variant{box.SelText()}; },
     [](TextEntry& box, const Variant& value) { box.SelText(convert::toText(value)); }},
    {"Locked", [](const TextEntry& box, std::span<const Variant>) { return Variant{box.Locked}; },
     [](TextEntry& box, const Variant& value) { box.Locked = convert::toBoolean(value); }},
}};

std::int32_t characters(std::string_view text)
{
    return static_cast<std::int32_t>(text::length(text));
}

void requireNotNegative(std::int32_t value, std::string_view property)
{
    if (value < 0)
        throw Error{invalidPropertyValue,
                    "Invalid property value: " + std::string{property} + " cannot be " + std::to_string(value) + ".",
                    std::string{property}};
}

bool isFull(const TextEntry& box)
{
    const auto* textBox = dynamic_cast<const TextBox*>(&box);
    return textBox != nullptr && textBox->MaxLength > 0 &&
           characters(box.text()) - box.SelLength() >= textBox->MaxLength;
}

} // namespace

Variant TextEntry::get(std::string_view name, std::span<const Variant> args) const
{
    if (const auto* property = findProperty(std::span<const Property<TextEntry>>{textProperties}, name))
        return property->read(*this, args);
    return Control::get(name, args);
}

void TextEntry::put(std::string_view name, const Variant& value)
{
    if (const auto* property = findProperty(std::span<const Property<TextEntry>>{textProperties}, name))
        property->write(*this, value);
    else
        Control::put(name, value);
}

void TextEntry::text(std::string value)
{
    text_ = std::move(value);
    selectionStart_ = 0;
    selectionLength_ = 0;
}

void TextEntry::SelStart(std::int32_t position)
{
    requireNotNegative(position, "SelStart");
    selectionStart_ = std::min(position, characters(text_));
    selectionLength_ = 0;
}

void TextEntry::SelLength(std::int32_t length)
{
    requireNotNegative(length, "SelLength");
    selectionLength_ = std::min(length, characters(text_) - selectionStart_);
}

std::string TextEntry::SelText() const
{
    return std::string{
        text::mid(text_, static_cast<std::size_t>(selectionStart_) + 1, static_cast<std::size_t>(selectionLength_))};
}

void TextEntry::SelText(std::string_view replacement)
{
    const auto start = static_cast<std::size_t>(selectionStart_);
    const std::string_view before = text::left(text_, start);
    const std::string_view behind = text::mid(text_, start + static_cast<std::size_t>(selectionLength_) + 1);
    std::string edited;
    edited.reserve(before.size() + replacement.size() + behind.size());
    edited.append(before).append(replacement).append(behind);
    text_ = std::move(edited);
    selectionStart_ += characters(replacement);
    selectionLength_ = 0;
}

Variant TextBox::get(std::string_view name, std::span<const Variant> args) const
{
    if (text::equalsNoCase(name, "DataFormat")) return ObjectRef{DataFormat};
    if (text::equalsNoCase(name, "MaxLength")) return MaxLength;
    return TextEntry::get(name, args);
}

void TextBox::put(std::string_view name, const Variant& value)
{
    if (text::equalsNoCase(name, "MaxLength")) {
        const std::int32_t length = convert::toLong(value);
        requireNotNegative(length, "MaxLength");
        MaxLength = length;
    } else {
        TextEntry::put(name, value);
    }
}

void typeKey(TextEntry& box, char32_t key, const KeyFilter& filter)
{
    if (filter) {
        // The filter knows keys as 16-bit numbers; no key beyond that range belongs to a number or a date.
        const auto offered = static_cast<std::int16_t>(key <= INT16_MAX ? static_cast<std::int32_t>(key) : INT16_MAX);
        std::int16_t left = offered;
        filter(left);
        // A key that was let pass as it is keeps its character, beyond that range too.
        if (left != offered) key = static_cast<std::uint16_t>(left);
    }
    if (key == 0 || key == enter || box.Locked) return;
    if (key == backspace) {
        if (box.SelLength() == 0) {
            if (box.SelStart() == 0) return;
            box.SelStart(box.SelStart() - 1);
            box.SelLength(1);
        }
        box.SelText("");
        return;
    }
    if (isFull(box)) return;
    std::string character;
    text::append(character, key);
    box.SelText(character);
}

void typeText(TextEntry& box, std::string_view text, const KeyFilter& filter)
{
    for (std::size_t offset = 0; offset < text.size();)
        typeKey(box, text::decode(text, offset), filter);
}

} // namespace tamarok::controls
