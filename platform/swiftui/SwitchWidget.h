#pragma once

#include "platform/swiftui/FocusVisibility.h"

#include <QCheckBox>

namespace mirrolet::platform::swiftui {

/// A check box that paints itself as a switch.
class SwitchWidget : public QCheckBox {
  public:
    SwitchWidget();
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    FocusVisibility focusVisibility;
};

} // namespace mirrolet::platform::swiftui
