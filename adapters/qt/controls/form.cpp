#include "tamarok_qt/form.h"

#include <algorithm>

#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::qt {

namespace {

using Index = std::span<const Variant>;
using HeadlessForm = controls::Form;

/// The shapes that Qt has, by the numbers of MousePointer.
Qt::CursorShape shapeOf(std::int16_t pointer)
{
    switch (pointer) {
    case 2: return Qt::CrossCursor;
    case 3: return Qt::IBeamCursor;
    case 5: return Qt::SizeAllCursor;
    case 6: return Qt::SizeBDiagCursor;
    case 7: return Qt::SizeVerCursor;
    case 8: return Qt::SizeFDiagCursor;
    case 9: return Qt::SizeHorCursor;
    case 10: return Qt::UpArrowCursor;
    case 11: return Qt::WaitCursor;
    case 12: return Qt::ForbiddenCursor;
    case 13: return Qt::BusyCursor;
    case 14: return Qt::WhatsThisCursor;
    default: return Qt::ArrowCursor;
    }
}

bool isShown(const QWidget& widget)
{
    return !(widget.testAttribute(Qt::WA_WState_ExplicitShowHide) && widget.testAttribute(Qt::WA_WState_Hidden));
}

/// Checks and keeps a value as the headless form does, then shows it.
template <class Show>
void putChecked(Form& form, std::string_view name, const Variant& value, Show show)
{
    QWidget& widget = form.widget();
    form.refresh();
    form.HeadlessForm::put(name, value);
    show(widget);
}

/// The row of a size or position: what is read is that of the widget.
template <int (QWidget::*read)() const>
constexpr Member<Form> twipsMember(std::string_view name, void (*write)(Form&, const Variant&))
{
    return {.name = name,
            .get = [](const Form& form, Index) -> Variant { return double{twips((form.widget().*read)())}; },
            .put = write};
}

/// Returns the control whose widget has the focus.
ObjectRef activeControl(const Form& form)
{
    const QWidget* const focused = form.widget().focusWidget();
    for (const auto& control : form.controls()->all()) {
        const auto own = std::dynamic_pointer_cast<WidgetControl>(control);
        if (own && own->isAlive() && &own->widget() == focused) return own;
    }
    return nullptr;
}

constexpr Member<Form> formMembers[]{
    {.name = "MousePointer",
     .get = [](const Form& form, Index) -> Variant {
         form.widget();
         return form.MousePointer;
     },
     .put =
         [](Form& form, const Variant& value) {
             putChecked(form, "MousePointer", value, [&form](QWidget& widget) {
                 if (form.MousePointer == 0)
                     widget.unsetCursor();
                 else
                     widget.setCursor(shapeOf(form.MousePointer));
             });
         }},
    {.name = "Caption",
     .get = [](const Form& form, Index) -> Variant { return fromQt(form.widget().windowTitle()); },
     .put =
         [](Form& form, const Variant& value) {
             putChecked(form, "Caption", value,
                        [&form](QWidget& widget) { widget.setWindowTitle(toQt(form.Caption)); });
         }},
    {.name = "Name",
     .get = [](const Form& form, Index) -> Variant { return fromQt(form.widget().objectName()); },
     .put =
         [](Form& form, const Variant& value) {
             putChecked(form, "Name", value, [&form](QWidget& widget) { widget.setObjectName(toQt(form.Name)); });
         }},
    {.name = "Enabled",
     .get = [](const Form& form, Index) -> Variant { return form.widget().isEnabled(); },
     .put =
         [](Form& form, const Variant& value) {
             putChecked(form, "Enabled", value, [&form](QWidget& widget) { widget.setEnabled(form.Enabled); });
         }},
    {.name = "Visible",
     .get = [](const Form& form, Index) -> Variant { return isShown(form.widget()); },
     .put =
         [](Form& form, const Variant& value) {
             putChecked(form, "Visible", value, [&form](QWidget& widget) { widget.setVisible(form.Visible); });
         }},
    {.name = "ActiveControl", .get = [](const Form& form, Index) -> Variant { return activeControl(form); }},
    twipsMember<&QWidget::x>("Left",
                             [](Form& form, const Variant& value) {
                                 putChecked(form, "Left", value,
                                            [&form](QWidget& widget) { widget.move(pixels(form.Left), widget.y()); });
                             }),
    twipsMember<&QWidget::y>("Top",
                             [](Form& form, const Variant& value) {
                                 putChecked(form, "Top", value,
                                            [&form](QWidget& widget) { widget.move(widget.x(), pixels(form.Top)); });
                             }),
    twipsMember<&QWidget::width>("Width",
                                 [](Form& form, const Variant& value) {
                                     putChecked(form, "Width", value, [&form](QWidget& widget) {
                                         widget.resize(pixels(form.Width), widget.height());
                                     });
                                 }),
    twipsMember<&QWidget::height>("Height",
                                  [](Form& form, const Variant& value) {
                                      putChecked(form, "Height", value, [&form](QWidget& widget) {
                                          widget.resize(widget.width(), pixels(form.Height));
                                      });
                                  }),
};

} // namespace

Form::Form(QWidget& widget) : widget_{&widget}
{
    refresh();
}

std::span<const Member<Form>> Form::members() noexcept
{
    return formMembers;
}

QWidget& Form::widget() const
{
    if (!widget_)
        throw Error{errors::objectNotSet,
                    "Object not set: the window of the form" + (Name.empty() ? "" : " " + Name) + " has gone.", "Form"};
    return *widget_;
}

void Form::refresh()
{
    const QWidget& shown = widget();
    Name = fromQt(shown.objectName());
    Caption = fromQt(shown.windowTitle());
    Enabled = shown.isEnabled();
    Visible = isShown(shown);
    Left = twips(shown.x());
    Top = twips(shown.y());
    Width = twips(shown.width());
    Height = twips(shown.height());
}

} // namespace tamarok::qt
