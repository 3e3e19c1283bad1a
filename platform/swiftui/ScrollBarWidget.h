#pragma once

#include <QScrollBar>

namespace mirrolet::platform::swiftui {

/// A slim vertical scroll bar: only its thumb is drawn.
class ScrollBarWidget : public QScrollBar {
  public:
    ScrollBarWidget();

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace mirrolet::platform::swiftui
