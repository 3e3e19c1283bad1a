#pragma once

#include "platform/appkit/WindowHost.h"

#include <memory>

namespace mirrolet::platform {

/// A window host that shows a hosting view's Qt widget in a native window. A titled window is an ordinary
/// window, a panel floats.
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
