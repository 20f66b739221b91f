#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/object.h"
#include "tamarok/variant.h"

/// Headless controls. They behave as real controls do, as far as the library needs it, without a window. Their
/// members are also reached by name, compared without regard to case.
namespace tamarok::controls {

/// The properties of every control: Name (read-only by name), Tag, Enabled, Visible.
class Control : public Object {
public:
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    std::vector<std::string_view> memberNames() const override;

    std::string Name;
    std::string Tag; ///< the number of the text of a translated control
    bool Enabled = true;
    bool Visible = true;
};

/// The data format of a bound control.
class DataFormat final : public Object {
public:
    std::string_view typeName() const override { return "StdDataFormat"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    std::vector<std::string_view> memberNames() const override;

    std::string Format; ///< number or date pattern, "" for none
};

/// A text with a selection. Positions are in characters, from 0.
class TextEntry : public Control {
public:
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    std::vector<std::string_view> memberNames() const override;

    const std::string& text() const noexcept { return text_; }
    /// Sets the text, moves the cursor before it and ends the selection.
    void text(std::string value);

    std::int32_t SelStart() const noexcept { return selectionStart_; }
    /// Moves the cursor, at most to the end, and ends the selection. Error 380 below 0.
    void SelStart(std::int32_t position);

    std::int32_t SelLength() const noexcept { return selectionLength_; }
    /// Selects `length` characters from the cursor on, at most to the end. Error 380 below 0.
    void SelLength(std::int32_t length);

    std::string SelText() const;
    /// Replaces the selection, moves the cursor after the new text and ends the selection.
    void SelText(std::string_view replacement);

    bool Locked = false; ///< the user cannot change the text; the program can

private:
    std::string text_;
    std::int32_t selectionStart_ = 0;
    std::int32_t selectionLength_ = 0;
};

class TextBox final : public TextEntry {
public:
    std::string_view typeName() const override { return "TextBox"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    std::vector<std::string_view> memberNames() const override;

    std::int32_t MaxLength = 0; ///< number of characters that the user can enter, 0 for no limit
    std::shared_ptr<controls::DataFormat> DataFormat = std::make_shared<controls::DataFormat>();
};

/// A list of entries, each with a text and a number, and a text field. Indices begin at 0.
class ComboBox final : public TextEntry {
public:
    std::string_view typeName() const override { return "ComboBox"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    std::vector<std::string_view> memberNames() const override;

    /// Removes all entries and the text.
    void Clear();
    /// Inserts an entry at `index`, at the end for -1; a sorted box chooses the index itself. Error 5 for an
    /// index outside the list.
    void AddItem(std::string_view item, std::int32_t index = -1);
    /// Removes an entry. Error 381 for an index outside the list.
    void RemoveItem(std::int32_t index);
    std::int32_t ListCount() const noexcept { return static_cast<std::int32_t>(entries_.size()); }
    /// Returns the index of the entry added last, -1 if there is none or an entry was removed since.
    std::int32_t NewIndex() const noexcept { return newIndex_; }
    /// Returns the index of the selected entry, -1 for none.
    std::int32_t ListIndex() const noexcept { return listIndex_; }
    /// Selects an entry and puts its text into the field; -1 selects none. Error 380 outside the list.
    void ListIndex(std::int32_t index);
    /// Returns the text of an entry. Error 381 outside the list.
    const std::string& List(std::int32_t index) const;
    /// Returns or sets the number of an entry. Error 381 outside the list.
    std::int32_t ItemData(std::int32_t index) const;
    void ItemData(std::int32_t index, std::int32_t value);

    bool Sorted = false; ///< inserts new entries in alphabetical order, ignoring case

private:
    struct Entry {
        std::string text;
        std::int32_t data = 0;
    };
    std::size_t checked(std::int32_t index) const;
    std::vector<Entry> entries_;
    std::int32_t newIndex_ = -1;
    std::int32_t listIndex_ = -1;
};

class CheckBox final : public Control {
public:
    std::string_view typeName() const override { return "CheckBox"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    std::vector<std::string_view> memberNames() const override;
    Variant defaultValue() const override; ///< Value
    bool hasDefaultValue() const noexcept override { return true; }

    std::int16_t Value = 0; ///< 0 unchecked, 1 checked, 2 greyed; Error 380 for anything else
    std::string Caption;
};

/// Makes a control of that type. Error 429, which lists the known types, for any other name.
std::shared_ptr<Control> make(std::string_view typeName);

/// Returns the names of the types that `make` knows, in alphabetical order.
std::vector<std::string_view> knownTypes();

/// The key filter of a form. It may change the key; 0 refuses it.
using KeyFilter = std::function<void(std::int16_t& key)>;

/// Types one key into a box: runs the filter, then enters the key that the filter returned. Key 8 deletes the
/// selection or the character before the cursor; key 13 does not change the text. A locked or full box
/// does not change.
void typeKey(TextEntry& box, char32_t key, const KeyFilter& filter = {});

/// Types a text character by character.
void typeText(TextEntry& box, std::string_view text, const KeyFilter& filter = {});

} // namespace tamarok::controls
