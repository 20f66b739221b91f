#pragma once

#include <QAbstractEventDispatcher>
#include <QObject>
#include <functional>
#include <utility>

namespace tamarok::qt {

/// Calls a function each time the program is about to wait for events, or handles those that wait. The objects of the
/// library tell nobody about changes, so that views look then whether there are any.
class IdleSync final : public QObject {
public:
    IdleSync(std::function<void()> look, QObject* parent) : QObject{parent}, look_{std::move(look)}
    {
        auto* const events = QAbstractEventDispatcher::instance();
        connect(events, &QAbstractEventDispatcher::aboutToBlock, this, [this] { look_(); });
        connect(events, &QAbstractEventDispatcher::awake, this, [this] { look_(); });
    }

private:
    std::function<void()> look_;
};

} // namespace tamarok::qt
