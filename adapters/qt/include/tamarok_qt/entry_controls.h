#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <functional>
#include <memory>

#include "tamarok_qt/control.h"

namespace tamarok::qt {

/// The text box over a QLineEdit. A text that the program sets may be longer than MaxLength; the user cannot add to it.
class TextBox final : public WidgetControl {
public:
    explicit TextBox(QLineEdit& edit);

private:
    TextBox(QLineEdit& edit, std::shared_ptr<controls::TextBox> state);
    void pull() const override;
    void push() override;
    QLineEdit& edit() const;

    std::shared_ptr<controls::TextBox> state_;
    int shownLength_; ///< maxLength as the control has set it
};

/// The combo box over a QComboBox. One that is not editable takes a Text that it does not show, as the headless one
/// does, without changing the entry that it shows. ItemData is the entry's Qt::UserRole.
class ComboBox final : public WidgetControl {
public:
    explicit ComboBox(QComboBox& box);
    ~ComboBox() override;

    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;

private:
    class Watch;
    ComboBox(QComboBox& box, std::shared_ptr<controls::ComboBox> state);
    void pull() const override;
    void push() override;
    QComboBox& box() const;

    std::shared_ptr<controls::ComboBox> state_;
    std::unique_ptr<Watch> watch_;
};

/// The label over a QLabel. It cannot have the focus.
class Label final : public WidgetControl {
public:
    explicit Label(QLabel& label);
    void SetFocus() override { state_->SetFocus(); }

private:
    Label(QLabel& label, std::shared_ptr<controls::Label> state);
    void pull() const override;
    void push() override;
    QLabel& label() const;

    std::shared_ptr<controls::Label> state_;
};

/// Runs a filter, such as Comm_Get::OnlyNumbersKeyPress, on each key that is typed into a box: the filter may change
/// the key, 0 refuses it. Keys with Ctrl or Alt, and pasted texts, do not pass it. A failure of the filter is shown as
/// a message, and the key is refused.
void filterKeys(QLineEdit& edit, controls::KeyFilter filter);

/// Runs a function for an event of Qt, through which exceptions must not pass: a failure is shown as a message of the
/// thread's platform. Returns whether the function ended without one.
bool guarded(const std::function<void()>& work);

} // namespace tamarok::qt
