#pragma once

#include "platform/swiftui/Button.h"
#include "platform/swiftui/FocusVisibility.h"

#include <QPushButton>

namespace mirrolet::platform::swiftui {

/// A push button that paints itself in the colours of Theme.
class ButtonWidget : public QPushButton {
  public:
    ButtonWidget(const QString& label, ButtonStyle style);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    ButtonStyle look;
    FocusVisibility focusVisibility;
};

} // namespace mirrolet::platform::swiftui
