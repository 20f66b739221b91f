#include <algorithm>

#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/members.h"
#include "tamarok/text.h"

// Text fields and the typing of keys. All positions are in characters.

namespace tamarok::controls {
namespace {

constexpr char32_t backspace = 8;
constexpr char32_t enter = 13;

using Index = std::span<const Variant>;

constexpr Member<TextEntry> entryMembers[]{
    {.name = "Text",
     .get = [](const TextEntry& box, Index) -> Variant { return box.text(); },
     .put = [](TextEntry& box, const Variant& value) { box.text(convert::toText(value)); }},
    {.name = "SelStart",
     .get = [](const TextEntry& box, Index) -> Variant { return box.SelStart(); },
     .put = [](TextEntry& box, const Variant& value) { box.SelStart(convert::toLong(value)); }},
    {.name = "SelLength",
     .get = [](const TextEntry& box, Index) -> Variant { return box.SelLength(); },
     .put = [](TextEntry& box, const Variant& value) { box.SelLength(convert::toLong(value)); }},
    {.name = "SelText",
     .get = [](const TextEntry& box, Index) -> Variant { return box.SelText(); },
     .put = [](TextEntry& box, const Variant& value) { box.SelText(convert::toText(value)); }},
    {.name = "Locked",
     .get = [](const TextEntry& box, Index) -> Variant { return box.Locked; },
     .put = [](TextEntry& box, const Variant& value) { box.Locked = convert::toBoolean(value); }},
};

std::int32_t characters(std::string_view text)
{
    return static_cast<std::int32_t>(text::length(text));
}

/// Error 380 for a value below 0.
void requireNotNegative(std::int32_t value, std::string_view property)
{
    if (value < 0)
        throw Error{errors::invalidPropertyValue,
                    "Invalid property value: " + std::string{property} + " cannot be " + std::to_string(value) + ".",
                    std::string{property}};
}

void putMaxLength(TextBox& box, const Variant& value)
{
    const std::int32_t length = convert::toLong(value);
    requireNotNegative(length, "MaxLength");
    box.MaxLength = length;
}

constexpr Member<TextBox> boxMembers[]{
    {.name = "DataFormat", .get = [](const TextBox& box, Index) -> Variant { return ObjectRef{box.DataFormat}; }},
    {.name = "MaxLength",
     .get = [](const TextBox& box, Index) -> Variant { return box.MaxLength; },
     .put = putMaxLength},
};

/// Returns whether the user cannot enter another character: a selection makes room for its length.
bool isFull(const TextEntry& box)
{
    // Only a text box has a limit; MaxLength 0 means none. Assignments by the program are not limited.
    const auto* textBox = dynamic_cast<const TextBox*>(&box);
    return textBox != nullptr && textBox->MaxLength > 0 &&
           characters(box.text()) - box.SelLength() >= textBox->MaxLength;
}

} // namespace

std::span<const Member<TextEntry>> TextEntry::members() noexcept
{
    return entryMembers;
}

void TextEntry::text(std::string value)
{
    // A new text loses the selection, and the cursor goes to its start.
    text_ = std::move(value);
    selectionStart_ = 0;
    selectionLength_ = 0;
}

void TextEntry::SelStart(std::int32_t position)
{
    requireNotNegative(position, "SelStart");
    // A position beyond the text means its end.
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
    // Puts the replacement between the texts before and behind the selection; the cursor ends behind it.
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

std::span<const Member<TextBox>> TextBox::members() noexcept
{
    return boxMembers;
}

// The filter may change or refuse (0) the key. What is left of it acts as the platform does: Enter types nothing,
// Backspace deletes the selection or the character before the cursor, any other key replaces the selection.
void typeKey(TextEntry& box, char32_t key, const KeyFilter& filter)
{
    if (filter) {
        // The filter takes keys as 16-bit numbers. A character above that range is passed as the greatest one.
        const auto offered = static_cast<std::int16_t>(key <= INT16_MAX ? static_cast<std::int32_t>(key) : INT16_MAX);
        std::int16_t left = offered;
        filter(left);
        // A key that the filter did not change keeps its character.
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
