#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <string_view>

#include "tamarok_qt/texts.h"

namespace tamarok::qt::acting {

/// A user, whose steps are carried out one after the other when the program waits for events. A dialog that is left
/// open behind the last step is closed, and the test fails.
class User {
public:
    using Step = std::function<void(QDialog& dialog)>;

    explicit User(std::initializer_list<Step> steps) : steps_{steps} { next(); }
    ~User() { EXPECT_TRUE(steps_.empty()) << steps_.size() << " steps were not carried out"; }
    User(const User&) = delete;
    User& operator=(const User&) = delete;

private:
    void next()
    {
        QTimer::singleShot(delay, &context_, [this] { act(); });
    }
    void act()
    {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            if (!steps_.empty() && ++waited_ < patience) next();
            return;
        }
        if (acting_ && acted_ == dialog) return next(); // the step at hand waits
        if (steps_.empty()) {
            if (acted_ != dialog) return; // the dialog of the last step has gone
            ADD_FAILURE() << "the dialog stays open";
            return QCoreApplication::exit(1); // ends the loops of all dialogs
        }
        // A dialog that has just appeared handles its first events before the user acts.
        if (std::exchange(seen_, QPointer<QDialog>{dialog}) != dialog) return next();
        acted_ = dialog;
        const Step step = std::move(steps_.front());
        steps_.pop_front();
        next(); // first: the step may open a further dialog
        const bool former = std::exchange(acting_, true);
        step(*dialog);
        acting_ = former;
    }

    static constexpr int delay = 5;
    static constexpr int patience = 6000;
    std::deque<Step> steps_;
    QObject context_;
    QPointer<QDialog> seen_;
    QPointer<QDialog> acted_;
    int waited_ = 0;
    bool acting_ = false;
};

template <class Widget>
Widget& find(QDialog& dialog, std::string_view name)
{
    auto* const found = dialog.findChild<Widget*>(toQt(name));
    if (found == nullptr) throw std::runtime_error{"no control " + std::string{name}};
    return *found;
}

inline User::Step click(std::string name)
{
    return [name](QDialog& dialog) { QTest::mouseClick(&find<QPushButton>(dialog, name), Qt::LeftButton); };
}
inline User::Step closeWindow()
{
    return [](QDialog& dialog) { dialog.close(); };
}
inline User::Step pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [=](QDialog& dialog) {
        QTest::keyClick(dialog.focusWidget() != nullptr ? dialog.focusWidget() : &dialog, key, modifiers);
    };
}
inline User::Step typeKeys(QString keys)
{
    return [keys](QDialog& dialog) {
        QTest::keyClicks(dialog.focusWidget() != nullptr ? dialog.focusWidget() : &dialog, keys);
    };
}

} // namespace tamarok::qt::acting
