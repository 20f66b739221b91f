#include "dialogs/dialog_shell.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "owned.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::qt {

namespace {

/// What the borders and the title add to the size of a window, in twips. The presenters lay their controls out for
/// these borders; those of the screen differ from one system to the next, and are not known before a window is shown.
constexpr dialogs::Size borders{110, 350};

/// Room around the controls, in pixels.
constexpr int margin = 8;

/// A control as an operation reaches it by name: its caption and its tag.
class ShellControl final : public controls::Control {
public:
    ShellControl(DialogShell& shell, std::string_view name) : shell_{shell} { Name = name; }
    std::string_view typeName() const override { return "Control"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override
    {
        return isText(name) ? Variant{shell_.controlText(Name)} : Control::get(name, args);
    }
    void put(std::string_view name, const Variant& value) override
    {
        if (isText(name)) return shell_.controlText(Name, convert::toText(value));
        Control::put(name, value);
    }

private:
    static bool isText(std::string_view name)
    {
        return text::equalsNoCase(name, "Caption") || text::equalsNoCase(name, "Text");
    }

    DialogShell& shell_;
};

} // namespace

Variant ShellForm::get(std::string_view name, std::span<const Variant> args) const
{
    if (text::equalsNoCase(name, "Width")) return double{shell_.outerSize().width};
    if (text::equalsNoCase(name, "Height")) return double{shell_.outerSize().height};
    if (text::equalsNoCase(name, "Caption")) return fromQt(shell_.windowTitle());
    return Form::get(name, args);
}

void ShellForm::put(std::string_view name, const Variant& value)
{
    const dialogs::Size size = shell_.outerSize();
    Form::put(name, value); // refuses what is no size
    if (text::equalsNoCase(name, "Width")) shell_.outerSize({Width, size.height});
    if (text::equalsNoCase(name, "Height")) shell_.outerSize({size.width, Height});
    if (text::equalsNoCase(name, "Caption")) shell_.setWindowTitle(toQt(Caption));
}

DialogShell::DialogShell(std::string_view formName, std::shared_ptr<Desk> desk) :
    desk_{std::move(desk)}, form_{std::make_shared<ShellForm>(*this)}, content_{&makeOwned<QWidget>(this)}
{
    form_->Name = formName;
    setObjectName(toQt(formName));
    setWindowModality(Qt::ApplicationModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    content_->move(margin, margin);
    // A window whose screen goes away stays in reach.
    connect(qApp, &QGuiApplication::screenRemoved, this,
            [this] { QTimer::singleShot(0, this, [this] { fitToScreen(); }); });
}

DialogShell::~DialogShell() = default;

void DialogShell::addControl(std::string_view name, QWidget& widget)
{
    widget.setObjectName(toQt(name));
    controls_.emplace(name, &widget);
    std::make_shared<ShellControl>(*this, name)->Parent(form_);
}

void DialogShell::addButton(std::string_view name, const QString& text)
{
    auto& button = makeOwned<QPushButton>(text, content_);
    addControl(name, button);
    connect(&button, &QPushButton::clicked, this, [this, held = std::string{name}] { clicked(held); });
}

QWidget& DialogShell::control(std::string_view name) const
{
    const auto found = controls_.find(name);
    if (found == controls_.end())
        throw Error{errors::invalidArgument, "The dialog has no control \"" + std::string{name} + "\".", form_->Name};
    return *found->second;
}

// ---- sizes, places and texts ---------------------------------------------------------------------------------------

QSize DialogShell::clientSize(const dialogs::Size& outer) const
{
    return {std::max(pixels(outer.width - borders.width), 0) + 2 * margin,
            std::max(pixels(outer.height - borders.height), 0) + 2 * margin};
}

dialogs::Size DialogShell::innerSize() const
{
    return {twips(std::max(width() - 2 * margin, 0)), twips(std::max(height() - 2 * margin, 0))};
}

dialogs::Size DialogShell::outerSize() const
{
    if (size_ && clientSize(*size_) == size()) return *size_;
    const dialogs::Size inner = innerSize();
    return {inner.width + borders.width, inner.height + borders.height};
}

void DialogShell::outerSize(const dialogs::Size& size)
{
    const bool former = std::exchange(resizing_, true);
    size_ = size;
    QWidget::resize(clientSize(size));
    resizing_ = former;
}

std::string DialogShell::controlText(std::string_view name) const
{
    const QWidget& widget = control(name);
    if (const auto* box = qobject_cast<const QLineEdit*>(&widget)) return fromQt(box->text());
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return fromQt(button->text());
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return fromQt(label->text());
    if (const auto* frame = qobject_cast<const QGroupBox*>(&widget)) return fromQt(frame->title());
    return {};
}

void DialogShell::controlText(std::string_view name, std::string_view text)
{
    QWidget& widget = control(name);
    if (auto* box = qobject_cast<QLineEdit*>(&widget)) {
        box->setText(toQt(text));
        box->setCursorPosition(0);
    } else if (auto* button = qobject_cast<QAbstractButton*>(&widget)) {
        button->setText(toQt(text));
    } else if (auto* label = qobject_cast<QLabel*>(&widget)) {
        label->setText(toQt(text));
    } else if (auto* frame = qobject_cast<QGroupBox*>(&widget)) {
        frame->setTitle(toQt(text));
    }
}

dialogs::Box DialogShell::place(std::string_view name) const
{
    const QWidget& widget = control(name);
    const QRect shown = widget.geometry().adjusted(0, 0, gapOf(widget), 0);
    const auto given = places_.find(&widget);
    if (given != places_.end()) {
        const dialogs::Box& box = given->second;
        if (shown == QRect{pixels(box.left), pixels(box.top), pixels(box.width), pixels(box.height)}) return box;
    }
    return {twips(shown.left()), twips(shown.top()), twips(shown.width()), twips(shown.height())};
}

void DialogShell::place(std::string_view name, const dialogs::Box& box)
{
    QWidget& widget = control(name);
    places_[&widget] = box;
    widget.setGeometry(pixels(box.left), pixels(box.top), pixels(box.width) - gapOf(widget), pixels(box.height));
}

/// Returns the part of a control's width that stays free.
int DialogShell::gapOf(const QWidget& widget) const
{
    return qobject_cast<const QPushButton*>(&widget) != nullptr ? buttonGap_ : 0;
}

void DialogShell::focusControl(std::string_view name)
{
    QWidget& widget = control(name);
    const bool isHidden = widget.testAttribute(Qt::WA_WState_ExplicitShowHide) && widget.isHidden();
    if (isHidden || !widget.isEnabledTo(this))
        throw Error{errors::invalidArgument,
                    "Invalid procedure call: the control " + std::string{name} +
                        " is hidden or disabled and cannot have the focus.",
                    form_->Name};
    widget.setFocus();
}

// ---- the life of the window ----------------------------------------------------------------------------------------

void DialogShell::runModal(dialogs::DialogEvents& events)
{
    events_ = &events;
    deliver([&] { events.resized(); });
    if (!closing_) {
        const Desk::Opened opened{desk_};
        QEventLoop loop;
        loop_ = &loop;
        appear();
        loop.exec(QEventLoop::DialogExec);
        loop_ = nullptr;
        hide();
    }
    events_ = nullptr;
    closing_ = true;
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void DialogShell::appear()
{
    putAboveActiveWindow(*this);
    fitToScreen();
    show();
    activateWindow();
    QTimer::singleShot(0, this, [this] { becomeActive(); });
}

void DialogShell::showBeside()
{
    setWindowModality(Qt::NonModal);
    setAttribute(Qt::WA_ShowWithoutActivating);
    putAboveActiveWindow(*this);
    show();
}

/// Moves and cuts the window so that it lies on its screen.
void DialogShell::fitToScreen()
{
    const QScreen* const on = screen() != nullptr ? screen() : QGuiApplication::primaryScreen();
    if (on == nullptr) return;
    const QRect room = on->availableGeometry();
    const QSize frame = frameGeometry().size() - size(); // of the system, known once the window was shown
    const QSize fitting = size().boundedTo(room.size() - frame);
    if (fitting != size()) QWidget::resize(fitting);
    const QPoint last = room.bottomRight() - QPoint{fitting.width() + frame.width(), fitting.height() + frame.height()};
    const QPoint corner{std::clamp(x(), room.left(), std::max(room.left(), last.x())),
                        std::clamp(y(), room.top(), std::max(room.top(), last.y()))};
    if (corner != pos()) move(corner);
}

void DialogShell::finish()
{
    closing_ = true;
    if (loop_ == nullptr) return hide();
    if (depth_ == 0) loop_->quit();
}

/// The window is not hidden before the outermost event has ended: an event may show further dialogs, and closes its
/// window in the middle of its work.
void DialogShell::deliver(const std::function<void()>& event)
{
    if (events_ == nullptr || closing_) return;
    ++depth_;
    try {
        event();
        if (afterEvent) afterEvent();
    } catch (...) {
        failure_ = std::current_exception();
        closing_ = true;
    }
    --depth_;
    if (depth_ == 0 && closing_ && loop_ != nullptr) loop_->quit();
}

// ---- what the user does --------------------------------------------------------------------------------------------

void DialogShell::clicked(std::string_view name)
{
    deliver([&] { events_->clicked(name); });
}

void DialogShell::reject()
{
    const auto found = controls_.find(escapeButton_);
    if (found == controls_.end() || found->second->isHidden()) return deliver([&] { events_->closeAsked(); });
    if (found->second->isEnabled()) clicked(found->first);
}

void DialogShell::closeEvent(QCloseEvent* event)
{
    // A modal window is hidden by `runModal`, which the presenter's answer ends; the progress window at once.
    event->setAccepted(loop_ == nullptr);
    deliver([&] { events_->closeAsked(); });
}

void DialogShell::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    content_->resize(std::max(width() - 2 * margin, 0), std::max(height() - 2 * margin, 0));
    if (!resizing_ && loop_ != nullptr) deliver([&] { events_->resized(); });
}

bool DialogShell::event(QEvent* event)
{
    // A window that comes back from a message of its own is told nothing: the presenter knows.
    if (event->type() == QEvent::WindowActivate && wasActive_ && depth_ == 0)
        QTimer::singleShot(0, this, [this] { becomeActive(); });
    return QDialog::event(event);
}

void DialogShell::becomeActive()
{
    if (depth_ > 0 || loop_ == nullptr) return;
    wasActive_ = true;
    if (activated) activated();
}

} // namespace tamarok::qt
