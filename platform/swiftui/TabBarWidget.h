#pragma once

#include "platform/swiftui/FocusVisibility.h"

#include <QTabBar>

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::platform {
class NSImage;
}

namespace mirrolet::platform::swiftui {

/// A bar of tabs, each with a symbol over a label, in the middle of the window's upper edge.
class TabBarWidget : public QTabBar {
  public:
    TabBarWidget();

    void addSymbolTab(const std::string& label, const std::string& systemImage);

  protected:
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    [[nodiscard]] QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    void paintTab(QPainter& painter, int index);
    void setHovered(int index);

    std::vector<std::shared_ptr<NSImage>> symbols;
    FocusVisibility focusVisibility;
    int hovered = -1;
};

} // namespace mirrolet::platform::swiftui
