#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/panel/ShadowPixmap.h"
#include "platform/desktop/x11/server/RenderResources.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/foundation/Mutex.h"

namespace mirrolet::platform::desktop::x11 {

class CompositingManager;
class PanelStack;

/// Shows the shadow of one floating panel. The shadow is a translucent window right below the panel. That
/// window exists while the panel is mapped and a compositing manager runs. It follows the panel when the
/// server reports a move. The shadow is painted only when the panel's size changes, because the server keeps
/// the image as the window's background.
class WindowShadow {
  public:
    WindowShadow(X11Connection& connection, const PanelEvents& events, CompositingManager& compositingManager,
                 PanelStack& stack, xcb_window_t panel);
    ~WindowShadow();
    WindowShadow(const WindowShadow&) = delete;
    WindowShadow& operator=(const WindowShadow&) = delete;

    void set(const PanelShadow& newShadow);
    void setRadius(double newRadius);

  private:
    using ServerWindow = ServerResource<&xcb_destroy_window>;
    using ServerColourMap = ServerResource<&xcb_free_colormap>;

    /// The values for which the shadow window's background was last made.
    struct Painted {
        PixelSize panel;
        double radius = 0;
        friend bool operator==(const Painted&, const Painted&) = default;
    };

    void panelMapped();
    void panelUnmapped();
    void panelConfigured(const PixelRect& newRect);
    void update() MIRROLET_REQUIRES(shadowMutex);
    [[nodiscard]] bool wanted() const MIRROLET_REQUIRES(shadowMutex);
    [[nodiscard]] PixelRect place() const MIRROLET_REQUIRES(shadowMutex);
    void make() MIRROLET_REQUIRES(shadowMutex);
    void remove() MIRROLET_REQUIRES(shadowMutex);
    void writeProperties() const MIRROLET_REQUIRES(shadowMutex);
    void paint() MIRROLET_REQUIRES(shadowMutex);
    void cutOut() const MIRROLET_REQUIRES(shadowMutex);

    X11Connection& connection;
    CompositingManager& compositingManager;
    PanelStack& stack;
    xcb_window_t panel;

    Mutex shadowMutex; ///< Must be locked before PanelStack's mutex.
    PanelShadow shadow MIRROLET_GUARDED_BY(shadowMutex);
    double radius MIRROLET_GUARDED_BY(shadowMutex) = 0;
    bool mapped MIRROLET_GUARDED_BY(shadowMutex) = false;
    PixelRect panelRect MIRROLET_GUARDED_BY(shadowMutex);
    ServerWindow window MIRROLET_GUARDED_BY(shadowMutex);
    ServerColourMap colours MIRROLET_GUARDED_BY(shadowMutex);
    ShadowPixmap pixmap MIRROLET_GUARDED_BY(shadowMutex);
    Painted painted MIRROLET_GUARDED_BY(shadowMutex);

    X11Connection::Subscription subscriptions[4];
};

} // namespace mirrolet::platform::desktop::x11
