#include "platform/swiftui/FormRow.h"

#include "platform/swiftui/TextWidget.h"

#include <QHBoxLayout>

namespace mirrolet::platform::swiftui {

QWidget* labelledRow(const std::string& label, QWidget* control) {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    auto* text =
        new TextWidget({{label, false}}, Font::body, ForegroundStyle::primary, TextAlignment::leading);
    text->setBuddy(control);
    layout->addWidget(text, 1, Qt::AlignVCenter);
    layout->addWidget(control, 0, Qt::AlignVCenter);
    control->setAccessibleName(QString::fromStdString(label));
    return row;
}

} // namespace mirrolet::platform::swiftui
