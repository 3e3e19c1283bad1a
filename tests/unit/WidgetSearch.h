#pragma once

#include <QApplication>
#include <QWidget>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace mirrolet {

/// Returns the only widget of this type that has this accessible name. Throws, and so fails the test, if
/// there is no such widget or more than one.
template <class Widget> Widget& named(QWidget& root, const std::string& name) {
    Widget* result = nullptr;
    int found = 0;
    for (auto* widget : root.findChildren<Widget*>()) {
        const QString own = widget->accessibleName();
        const QString known = own.isEmpty() ? widget->property("text").toString() : own;
        if (known.toStdString() != name)
            continue;
        result = widget;
        ++found;
    }
    if (found != 1)
        throw std::runtime_error(std::to_string(found) + " widgets are named " + name);
    return *result;
}

/// Shows a widget as the active window, so that the widget receives keys.
inline void showActive(QWidget& widget) {
    widget.show();
    widget.activateWindow();
    QApplication::processEvents();
}

} // namespace mirrolet
