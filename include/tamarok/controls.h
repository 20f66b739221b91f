#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/members.h"
#include "tamarok/object.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

/// Headless controls. They behave as real controls do, as far as the library needs it, without a window. Their
/// members are also reached by name, compared without regard to case. Sizes and positions are single-precision numbers
/// in twips; by name they are Doubles.
namespace tamarok::controls {

/// The members of every control: Name, Tag, Enabled, Visible, Parent, Left, Top, Width, Height, SetFocus, Refresh.
class Control : public WithMembers<Control>, public std::enable_shared_from_this<Control> {
public:
    static std::span<const Member<Control>> members() noexcept;

    /// Returns the form of the control, or an empty reference. A control does not keep its form alive.
    ObjectRef Parent() const noexcept { return parent_.lock(); }
    /// Puts the control on a form, an empty reference takes it off. A controls::Form lists the control in its
    /// `Controls`, and keeps it alive, if a shared pointer owns the control. Error 438 for a form, which has no parent.
    virtual void Parent(const ObjectRef& parent);

    /// Gives the control the focus: it becomes the ActiveControl of its form. Error 5 if the control or its form is
    /// hidden or disabled; 438 for a control that cannot have the focus, such as a label.
    virtual void SetFocus();

    std::string Name;
    std::string Tag; ///< the number of the text of a translated control
    bool Enabled = true;
    bool Visible = true;
    float Left = 0;
    float Top = 0;
    float Width = 0;  ///< not negative; by name Error 380 otherwise
    float Height = 0; ///< likewise

private:
    std::weak_ptr<Object> parent_;
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

/// A text with a selection. Positions are in characters, from 0. The default value is the text.
class TextEntry : public WithMembers<TextEntry, Control> {
public:
    static std::span<const Member<TextEntry>> members() noexcept;
    Variant defaultValue() const override { return text_; }
    bool hasDefaultValue() const noexcept override { return true; }

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

class TextBox final : public WithMembers<TextBox, TextEntry> {
public:
    static std::span<const Member<TextBox>> members() noexcept;
    std::string_view typeName() const override { return "TextBox"; }

    std::int32_t MaxLength = 0; ///< number of characters that the user can enter, 0 for no limit
    std::shared_ptr<controls::DataFormat> DataFormat = std::make_shared<controls::DataFormat>();
};

/// The entries of a list or combo box, each with a text and a number, and which of them is selected. Indices begin at
/// 0. Inserting or removing an entry keeps the selected entry selected.
class EntryList {
public:
    void clear() noexcept;
    /// See ComboBox::AddItem. @param sorted  whether the order decides the index
    void add(std::string_view item, std::int32_t index, bool sorted);
    void remove(std::int32_t index);
    void select(std::int32_t index);

    std::int32_t count() const noexcept { return static_cast<std::int32_t>(entries_.size()); }
    std::int32_t newIndex() const noexcept { return newIndex_; }
    std::int32_t selected() const noexcept { return selected_; }
    const std::string& text(std::int32_t index) const { return entries_[checked(index)].text; }
    void text(std::int32_t index, std::string value) { entries_[checked(index)].text = std::move(value); }
    std::int32_t data(std::int32_t index) const { return entries_[checked(index)].data; }
    void data(std::int32_t index, std::int32_t value) { entries_[checked(index)].data = value; }
    /// Returns the text of the selected entry, "" if none is.
    std::string selectedText() const;

private:
    struct Entry {
        std::string text;
        std::int32_t data = 0;
    };
    /// Error 381 for an index outside the list.
    std::size_t checked(std::int32_t index) const;
    std::vector<Entry> entries_;
    std::int32_t newIndex_ = -1;
    std::int32_t selected_ = -1;
};

/// What a list and a combo box have in common. `Base` is Control or TextEntry.
template <class Base>
class EntryControl : public WithMembers<EntryControl<Base>, Base> {
public:
    static std::span<const Member<EntryControl>> members() noexcept;

    /// Removes all entries and, from a combo box, the text.
    void Clear();
    /// Inserts an entry at `index`, at the end for -1; a sorted box chooses the index itself. Error 5 for an
    /// index outside the list.
    void AddItem(std::string_view item, std::int32_t index = -1);
    /// Removes an entry. Error 381 for an index outside the list.
    void RemoveItem(std::int32_t index);
    std::int32_t ListCount() const noexcept { return entries_.count(); }
    /// Returns the index of the entry added last, -1 if there is none or an entry was removed since.
    std::int32_t NewIndex() const noexcept { return entries_.newIndex(); }
    /// Returns the index of the selected entry, -1 for none.
    std::int32_t ListIndex() const noexcept { return entries_.selected(); }
    /// Selects an entry, -1 selects none; a combo box puts its text into the field. Error 380 outside the list.
    void ListIndex(std::int32_t index);
    /// Returns or sets the text of an entry. Error 381 outside the list.
    const std::string& List(std::int32_t index) const { return entries_.text(index); }
    void List(std::int32_t index, std::string text) { entries_.text(index, std::move(text)); }
    /// Returns or sets the number of an entry. Error 381 outside the list.
    std::int32_t ItemData(std::int32_t index) const { return entries_.data(index); }
    void ItemData(std::int32_t index, std::int32_t value) { entries_.data(index, value); }

    bool Sorted = false; ///< inserts new entries in alphabetical order, ignoring case

protected:
    /// Called after Clear and after each selection.
    /// @param text  the text of the selected entry, "" if none is
    virtual void showSelected(std::string text) = 0;
    const EntryList& entries() const noexcept { return entries_; }

private:
    EntryList entries_;
};

extern template class EntryControl<Control>;
extern template class EntryControl<TextEntry>;

/// A list of entries and a text field.
class ComboBox final : public EntryControl<TextEntry> {
public:
    std::string_view typeName() const override { return "ComboBox"; }

protected:
    void showSelected(std::string text) override { this->text(std::move(text)); }
};

/// A list of entries. Its Text, the default value, is that of the selected entry.
class ListBox final : public WithMembers<ListBox, EntryControl<Control>> {
public:
    static std::span<const Member<ListBox>> members() noexcept;
    std::string_view typeName() const override { return "ListBox"; }
    Variant defaultValue() const override { return text(); }
    bool hasDefaultValue() const noexcept override { return true; }

    /// Returns the text of the selected entry, "" if none is.
    std::string text() const { return entries().selectedText(); }
    /// Selects the first entry of that text, ignoring case; none if there is no such entry.
    void text(std::string_view wanted);

protected:
    void showSelected(std::string) override {}
};

class CheckBox final : public WithMembers<CheckBox, Control> {
public:
    static std::span<const Member<CheckBox>> members() noexcept;
    std::string_view typeName() const override { return "CheckBox"; }
    Variant defaultValue() const override { return Value; }
    bool hasDefaultValue() const noexcept override { return true; }

    std::int16_t Value = 0; ///< 0 unchecked, 1 checked, 2 greyed; Error 380 for anything else
    std::string Caption;
};

/// A text that the user cannot change. Its Caption, the default value, is also reached as Text, the property by which
/// field checks write to their labels. It cannot have the focus.
class Label final : public WithMembers<Label, Control> {
public:
    static std::span<const Member<Label>> members() noexcept;
    std::string_view typeName() const override { return "Label"; }
    Variant defaultValue() const override { return Caption; }
    bool hasDefaultValue() const noexcept override { return true; }
    void SetFocus() override;
    std::vector<std::string_view> memberNames() const override;

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

#pragma GCC visibility pop
