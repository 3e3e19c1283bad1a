#pragma once

#include <string>

class QWidget;

namespace mirrolet::platform::swiftui {

/// A row of a form: the label at the left, the control at the right. The label names the control for
/// assistive software too.
QWidget* labelledRow(const std::string& label, QWidget* control);

} // namespace mirrolet::platform::swiftui
