#pragma once

#include "platform/appkit/WindowHost.h"
#include "platform/desktop/PanelWindow.h"

#include <memory>

class QWidget;

namespace mirrolet::platform {

/// Shows a widget of the toolkit (a hosting view's) in a native window: titled ones are ordinary windows,
/// panels float.
class WidgetWindowHost final : public WindowHost {
  public:
    explicit WidgetWindowHost(NSWindow& window);
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

    void createPanel();
    void mapped();
    void setCorners();

    std::unique_ptr<Container> container;
    std::unique_ptr<desktop::PanelWindow>
        panel; ///< Of panels only; points at the native window and goes before it.
    bool announceShown = false;
    bool focusWanted = false;
};

} // namespace mirrolet::platform
