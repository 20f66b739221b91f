#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <utility>

#include "tamarok_qt/control.h"

#include "tamarok/form.h"

namespace tamarok::qt {

/// A window or a part of one as a form: the Parent of its controls. It does not own the widget; when that has gone,
/// every member raises Error 91.
class Form final : public WithMembers<Form, controls::Form> {
public:
    explicit Form(QWidget& widget);
    static std::span<const Member<Form>> members() noexcept;

    /// Makes a control over a widget and puts it on the form, which keeps it alive. @tparam Control  such as TextBox
    template <class Control, class Widget>
    std::shared_ptr<Control> add(Widget& widget)
    {
        auto control = std::make_shared<Control>(widget);
        control->Parent(shared_from_this());
        return control;
    }

    /// Returns the widget. Error 91 if it has gone.
    QWidget& widget() const;
    /// Brings the typed properties up to date; by name they are so at any time.
    void refresh();

private:
    QPointer<QWidget> widget_;
};

} // namespace tamarok::qt
