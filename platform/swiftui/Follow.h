#pragma once

#include "platform/swiftui/Binding.h"

#include <QPointer>
#include <QWidget>

#include <memory>

namespace mirrolet::platform::swiftui {

/// Runs `action` after each change, until the widget is destroyed.
inline void whenChanged(QWidget& widget, const Observation& changes, const std::function<void()>& action) {
    auto subscription =
        std::make_shared<AnyCancellable>(changes([guard = QPointer<QWidget>(&widget), action] {
            if (guard)
                action();
        }));
    // The subscription is cancelled when the widget is destroyed.
    QObject::connect(&widget, &QObject::destroyed, [subscription] { subscription->cancel(); });
}

/// Runs `update` now and after each change, until the widget is destroyed.
inline void follow(QWidget& widget, const Observation& changes, const std::function<void()>& update) {
    update();
    whenChanged(widget, changes, update);
}

} // namespace mirrolet::platform::swiftui
