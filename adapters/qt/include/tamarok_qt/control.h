#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "tamarok/controls.h"

/// Controls over the widgets of a Qt form, so that the library's operations reach them by names. They behave as the
/// headless controls of the same type name do. A control does not own its widget: when the widget has gone, every
/// member raises Error 91.
namespace tamarok::qt {

/// What the controls have in common: a headless control, the state, which is brought up to date before it is read and
/// shown after it was changed. Name is the widget's objectName, Tag its dynamic property "tag".
class WidgetControl : public controls::Control {
public:
    std::string_view typeName() const override { return state_->typeName(); }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    Variant defaultValue() const override;
    bool hasDefaultValue() const noexcept override { return state_->hasDefaultValue(); }
    std::vector<std::string_view> memberNames() const override { return state_->memberNames(); }

    /// Gives the widget the focus. Error 5 if it or its form is hidden or disabled.
    void SetFocus() override;

    /// Returns the widget. Error 91 if it has gone.
    QWidget& widget() const;
    bool isAlive() const noexcept { return !widget_.isNull(); }

protected:
    WidgetControl(QWidget& widget, std::shared_ptr<controls::Control> state);

    /// Reads what the user or the program has done to the widget into the state.
    virtual void pull() const;
    /// Shows what an operation has done to the state.
    virtual void push();

private:
    QPointer<QWidget> widget_;
    std::shared_ptr<controls::Control> state_;
};

} // namespace tamarok::qt
