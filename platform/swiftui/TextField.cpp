#include "platform/swiftui/TextField.h"

#include "platform/swiftui/Follow.h"
#include "platform/swiftui/TextFieldWidget.h"

namespace mirrolet::platform::swiftui {

View TextField::body() const {
    return View([field = *this](const BuildContext&) {
        auto* widget = new TextFieldWidget;
        widget->setPlaceholderText(QString::fromStdString(field.prompt));
        widget->setAccessibleName(widget->placeholderText());
        follow(*widget, field.value.changes(), [widget, value = field.value] {
            const QString text = QString::fromStdString(value.get());
            if (widget->text() != text)
                widget->setText(text);
        });
        QObject::connect(widget, &QLineEdit::textChanged, widget, [value = field.value](const QString& text) {
            if (const std::string typed = text.toStdString(); value.get() != typed)
                value.set(typed);
        });
        return widget;
    });
}

} // namespace mirrolet::platform::swiftui
