#pragma once

#include "platform/swiftui/FocusVisibility.h"

#include <QRadioButton>

namespace mirrolet::platform::swiftui {

/// A radio button that paints itself in the colours of Theme.
class RadioWidget : public QRadioButton {
  public:
    explicit RadioWidget(const QString& label);
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
