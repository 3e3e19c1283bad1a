#pragma once

#include <QFocusEvent>
#include <QWidget>

namespace mirrolet::platform::swiftui {

/// Whether a focused control shows its ring: only when the keyboard brought the focus, as a click says where
/// it went.
class FocusVisibility {
  public:
    void focusIn(const QFocusEvent& event) {
        const auto reason = event.reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            byKeyboard = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                         reason == Qt::ShortcutFocusReason || reason == Qt::OtherFocusReason;
    }
    [[nodiscard]] bool shows(const QWidget& widget) const { return byKeyboard && widget.hasFocus(); }

  private:
    bool byKeyboard = false;
};

} // namespace mirrolet::platform::swiftui
