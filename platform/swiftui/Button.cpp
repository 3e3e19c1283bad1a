#include "platform/swiftui/Button.h"

#include "platform/swiftui/ButtonWidget.h"

#include <QKeySequence>
#include <QShortcut>

namespace mirrolet::platform::swiftui {
namespace {

void bindKey(QPushButton& button, Qt::Key key) {
    auto* shortcut =
        new QShortcut(QKeySequence(key), &button); // Owned by the button. Works in the whole window.
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, &QShortcut::activated, &button, [&button] { button.click(); });
}

} // namespace

Button Button::buttonStyle(ButtonStyle value) const {
    Button result = *this;
    result.style = value;
    return result;
}

Button Button::keyboardShortcut(KeyboardShortcut value) const {
    Button result = *this;
    result.shortcut = value;
    return result;
}

View Button::body() const {
    return View([button = *this](const BuildContext&) -> QWidget* {
        auto* widget = new ButtonWidget(QString::fromStdString(button.title), button.style);
        QObject::connect(widget, &QPushButton::clicked, widget, [action = button.pressed] { action(); });
        if (button.shortcut == KeyboardShortcut::cancelAction)
            bindKey(*widget, Qt::Key_Escape);
        if (button.shortcut == KeyboardShortcut::defaultAction) {
            bindKey(*widget, Qt::Key_Return);
            bindKey(*widget, Qt::Key_Enter);
        }
        return widget;
    });
}

} // namespace mirrolet::platform::swiftui
