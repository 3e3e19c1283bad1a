#pragma once

#include "platform/appkit/ViewNativeWindow.h"
#include "platform/appkit/ViewSurface.h"
#include "platform/appkit/ViewTree.h"
#include "platform/appkit/WindowHost.h"
#include "platform/desktop/PanelWindow.h"

#include <QRect>

namespace mirrolet::platform {

/// Shows a tree of views in a native window that has no title bar and no border.
class ViewWindowHost final : public WindowHost, private ViewTree::Host, private ViewNativeWindow::Owner {
  public:
    explicit ViewWindowHost(HostedWindow& window);
    ~ViewWindowHost() override;

    void setGeometry(const QRect& geometry) override;
    void setTitle(const std::string& title) override;
    void setLevel(int level) override;
    void show() override;
    void hide() override;
    void takeFocus() override;
    [[nodiscard]] bool isVisible() const override;
    [[nodiscard]] QRect geometry() const override;

  private:
    [[nodiscard]] double scale() const override;

    void contentChanged() override;
    void pictureChanged() override;
    void setCursor(NSCursor cursor) override;
    // Does nothing, because only the NSWindow asks for the focus.
    void firstResponderChanged(bool /*exists*/) override {}

    void exposed() override;
    void resized() override;
    void relocated() override;
    void pressed() override;

    void settle();
    void createNative();
    void destroyNative();

    ViewTree tree;
    ViewNativeWindow window;
    ViewSurface surface;
    desktop::PanelStacking stacking;
    QRect shownAt; ///< The geometry that was requested at the last showing.
    /// Tells whether the window is where it belongs. A window manager may move a window while it shows it.
    enum class Placement {
        requested, ///< The window is being shown, and every move is the window manager's.
        restored,  ///< The window was moved back to `shownAt`, and has not arrived there.
        settled,   ///< If the window moves now, the user wants it at the new place.
    } placement = Placement::settled;
};

} // namespace mirrolet::platform
