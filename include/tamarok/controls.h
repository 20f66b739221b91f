#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/object.h"
#include "tamarok/variant.h"

/// Headless controls: they behave as the real ones do in what the library's logic needs, without
/// any window. Members are reached by name, as by late binding; names compare without regard to case.
namespace tamarok::controls {

/// What every control has: Name, Tag, Enabled, Visible.
class Control : public Object {
public:
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;

    std::string Name;
    std::string Tag; ///< of a translated control, the number of its text
    bool Enabled = true;
    bool Visible = true;
};

/// The data format of a bound control.
class DataFormat final : public Object {
public:
    std::string_view typeName() const override { return "StdDataFormat"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;

    std::string Format; ///< number or date pattern, "" for none
};

/// A text with a selection. Positions count characters from 0.
class TextEntry : public Control {
public:
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;

    const std::string& text() const noexcept { return text_; }
    /// Sets the text; the cursor goes to the front and nothing is selected.
    void text(std::string value);

    std::int32_t SelStart() const noexcept { return selectionStart_; }
    /// Moves the cursor and ends the selection; beyond the end is the end. Error 380 below 0.
    void SelStart(std::int32_t position);

    std::int32_t SelLength() const noexcept { return selectionLength_; }
    /// Selects from the cursor on, at most to the end. Error 380 below 0.
    void SelLength(std::int32_t length);

    std::string SelText() const;
    /// Puts a text in place of the selection; the cursor stands behind it and nothing is selected.
    void SelText(std::string_view replacement);

    bool Locked = false; ///< a person may not change the text; the program may

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

    std::int32_t MaxLength = 0; ///< characters that a person may type, 0 for no limit
    std::shared_ptr<controls::DataFormat> DataFormat = std::make_shared<controls::DataFormat>();
};

/// A list of entries, each with a text and a number, and an entry field.
class ComboBox final : public TextEntry {
public:
    std::string_view typeName() const override { return "ComboBox"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;

    void Clear();
    /// Adds an entry at `index`, at the end without one; in a sorted box always at its place.
    void AddItem(std::string_view item, std::int32_t index = -1);
    void RemoveItem(std::int32_t index);
    std::int32_t ListCount() const noexcept { return static_cast<std::int32_t>(entries_.size()); }
    std::int32_t NewIndex() const noexcept { return newIndex_; } ///< of the entry added last, -1 for none
    std::int32_t ListIndex() const noexcept { return listIndex_; }
    /// Chooses an entry, whose text goes into the field; -1 chooses none. Error 380 out of range.
    void ListIndex(std::int32_t index);
    /// Text and number of an entry; Error 381 out of range.
    const std::string& List(std::int32_t index) const;
    std::int32_t ItemData(std::int32_t index) const;
    void ItemData(std::int32_t index, std::int32_t value);

    bool Sorted = false;

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

    std::int16_t Value = 0; ///< 0 unchecked, 1 checked, 2 greyed; Error 380 for anything else
    std::string Caption;
};

/// A control of that type, or Error 429 that names the known ones.
std::shared_ptr<Control> make(std::string_view typeName);

/// Names of the types that `make` knows.
std::vector<std::string_view> knownTypes();

/// The filter of a form: may change the key or set it to 0, which refuses it.
using KeyFilter = std::function<void(std::int16_t& key)>;

/// Types one key into a box as a form does: the filter first, then the box takes what is left of the
/// key. 8 deletes the selection or the character before the cursor; 13 does not change the text; a
/// locked or full box takes nothing.
void typeKey(TextEntry& box, char32_t key, const KeyFilter& filter = {});

/// Types a text key by key.
void typeText(TextEntry& box, std::string_view text, const KeyFilter& filter = {});

} // namespace tamarok::controls
