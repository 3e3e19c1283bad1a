#pragma once

#include "platform/appkit/WindowHost.h"

#include <memory>

namespace mirrolet::platform {

/// Shows a hosting view's Qt widget in a native window. A window with a title bar is managed by the window
/// manager. A window without a title bar is a floating panel.
class WidgetWindowHost final : public WindowHost {
  public:
    explicit WidgetWindowHost(HostedWindow& window);
    ~WidgetWindowHost() override;

    void setGeometry(const QRect& geometry) override;
    void setTitle(const std::string& title) override;
    void setLevel(int level) override;
    void show() override;
    void hide() override;
    void takeFocus() override;
    [[nodiscard]] bool isVisible() const override;
    [[nodiscard]] QRect geometry() const override;

  private:
    class Container;

    [[nodiscard]] bool isTitled() const;
    [[nodiscard]] double scale() const override;
    void makePanel();

    std::unique_ptr<Container> container;
};

} // namespace mirrolet::platform
