#pragma once

#include "platform/swiftui/FocusVisibility.h"

#include <QComboBox>

namespace mirrolet::platform::swiftui {

/// A pop-up menu of choices that paints itself in the colours of Theme.
class MenuWidget : public QComboBox {
  public:
    MenuWidget();
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    FocusVisibility focusVisibility;
};

} // namespace mirrolet::platform::swiftui
