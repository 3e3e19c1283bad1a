#include "platform/swiftui/Picker.h"

#include "platform/swiftui/Follow.h"
#include "platform/swiftui/FormRow.h"
#include "platform/swiftui/MenuWidget.h"
#include "platform/swiftui/RadioWidget.h"

#include <QButtonGroup>
#include <QVBoxLayout>

namespace mirrolet::platform::swiftui {
namespace {

QWidget* menuPicker(const PickerContent& content) {
    auto* menu = new MenuWidget;
    for (const std::string& choice : content.choices)
        menu->addItem(QString::fromStdString(choice));
    follow(*menu, content.changes, [menu, selected = content.selected] {
        const auto index = selected();
        menu->setCurrentIndex(index ? static_cast<int>(*index) : -1);
    });
    QObject::connect(menu, &QComboBox::activated, menu,
                     [select = content.select](int index) { select(static_cast<std::size_t>(index)); });
    return menu;
}

/// Selects the button with this index. Tab reaches only the selected button, and the arrow keys move on from
/// there.
void choose(const QButtonGroup& buttons, int id) {
    buttons.button(id)->setChecked(true);
    for (auto* button : buttons.buttons())
        button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
}

QWidget* radioPicker(const PickerContent& content) {
    auto* group = new QWidget;
    auto* layout = new QVBoxLayout(group);
    layout->setContentsMargins(0, 3, 0, 3);
    layout->setSpacing(4);
    auto* buttons = new QButtonGroup(group);
    for (const std::string& choice : content.choices) {
        auto* radio = new RadioWidget(QString::fromStdString(choice));
        buttons->addButton(radio, layout->count());
        layout->addWidget(radio);
    }
    follow(*group, content.changes, [buttons, selected = content.selected] {
        if (const auto index = selected())
            choose(*buttons, static_cast<int>(*index));
    });
    QObject::connect(buttons, &QButtonGroup::idToggled, group,
                     [select = content.select, selected = content.selected](int id, bool on) {
                         const auto index = static_cast<std::size_t>(id);
                         if (on && selected() != index)
                             select(index);
                     });
    return group;
}

} // namespace

View pickerView(PickerContent content) {
    return View([content = std::move(content)](const BuildContext&) {
        const bool radios = content.style == PickerStyle::radioGroup;
        return labelledRow(content.label, radios ? radioPicker(content) : menuPicker(content));
    });
}

} // namespace mirrolet::platform::swiftui
