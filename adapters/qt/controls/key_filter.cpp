#include <QKeyEvent>
#include <utility>

#include "owned.h"
#include "tamarok_qt/entry_controls.h"
#include "tamarok_qt/texts.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::qt {

namespace {

constexpr std::int32_t stopIcon = 16;

/// Offers the keys of a box to a filter. The box owns it.
class FilterOfKeys final : public QObject {
public:
    FilterOfKeys(controls::KeyFilter filter, QLineEdit* edit) : QObject{edit}, edit_{edit}, filter_{std::move(filter)}
    {
        edit_->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
        const auto* const key = static_cast<QKeyEvent*>(event);
        const Qt::KeyboardModifiers modifiers = key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
        // AltGr, by which some keyboards write a character, comes as Ctrl and Alt together.
        const bool writes = modifiers == Qt::NoModifier || modifiers == Qt::GroupSwitchModifier ||
                            modifiers == (Qt::ControlModifier | Qt::AltModifier);
        const QList<uint> characters = key->text().toUcs4();
        if (!writes || characters.size() != 1 || key->key() == Qt::Key_Delete || key->key() == Qt::Key_Escape ||
            key->key() == Qt::Key_Tab)
            return false;
        return isTaken(characters.front());
    }

private:
    /// Returns whether the key is used up: refused, or entered as another one.
    bool isTaken(uint character)
    {
        const auto offered = static_cast<std::int16_t>(character <= INT16_MAX ? character : INT16_MAX);
        std::int16_t left = offered;
        if (!guarded([&] { filter_(left); })) return true;
        if (left == offered) return false;
        if (left != 0 && !edit_->isReadOnly()) edit_->insert(QChar{static_cast<char16_t>(left)});
        return true;
    }

    QLineEdit* edit_;
    controls::KeyFilter filter_;
};

} // namespace

void filterKeys(QLineEdit& edit, controls::KeyFilter filter)
{
    makeOwned<FilterOfKeys>(std::move(filter), &edit);
}

bool guarded(const std::function<void()>& work)
{
    std::string message;
    try {
        work();
        return true;
    } catch (const std::exception& error) {
        message = error.what();
    }
    if (const auto& box = Platform::current().messageBox)
        box->show(message, stopIcon, "");
    else
        qCritical("%s", message.c_str());
    return false;
}

} // namespace tamarok::qt
