#pragma once

#include <string>

class QWidget;

namespace mirrolet::platform::swiftui {

/// Makes a row of a form, with the label at the left and the control at the right. Assistive software reads
/// the label as the name of the control.
QWidget* labelledRow(const std::string& label, QWidget* control);

} // namespace mirrolet::platform::swiftui
