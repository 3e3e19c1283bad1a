#pragma once

#include <QScrollBar>

namespace mirrolet::platform::swiftui {

/// A slim vertical scroll bar. Only the part that the user drags is drawn.
class ScrollBarWidget : public QScrollBar {
  public:
    ScrollBarWidget();

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace mirrolet::platform::swiftui
