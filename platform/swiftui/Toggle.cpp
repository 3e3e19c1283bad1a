#include "platform/swiftui/Toggle.h"

#include "platform/swiftui/Follow.h"
#include "platform/swiftui/FormRow.h"
#include "platform/swiftui/SwitchWidget.h"

namespace mirrolet::platform::swiftui {

View Toggle::body() const {
    return View([toggle = *this](const BuildContext&) {
        auto* control = new SwitchWidget;
        follow(*control, toggle.value.changes(),
               [control, value = toggle.value] { control->setChecked(value.get()); });
        // The signal toggled() is used and not clicked(), because assistive software toggles the control
        // without a click.
        QObject::connect(control, &QCheckBox::toggled, control, [value = toggle.value](bool isOn) {
            if (value.get() != isOn)
                value.set(isOn);
        });
        return labelledRow(toggle.title, control);
    });
}

} // namespace mirrolet::platform::swiftui
