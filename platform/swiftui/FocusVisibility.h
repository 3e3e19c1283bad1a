#pragma once

#include <QFocusEvent>
#include <QWidget>

namespace mirrolet::platform::swiftui {

/// Decides whether a focused control shows a focus ring. The ring is shown only if a key brought the focus
/// there, because after a click the user knows where the focus is.
class FocusVisibility {
  public:
    void focusIn(const QFocusEvent& event) {
        const auto reason = event.reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            byKey = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                    reason == Qt::ShortcutFocusReason || reason == Qt::OtherFocusReason;
    }
    [[nodiscard]] bool shows(const QWidget& widget) const { return byKey && widget.hasFocus(); }

  private:
    bool byKey = false;
};

} // namespace mirrolet::platform::swiftui
