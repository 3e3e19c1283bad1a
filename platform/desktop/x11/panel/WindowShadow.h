#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/server/RenderResources.h"
#include "platform/desktop/x11/server/X11Connection.h"

#include <mutex>

namespace mirrolet::platform::desktop::x11 {

class CompositingManager;
class PanelStack;

/// The shadow of one floating panel: a translucent window of its own right below it, there as long as the
/// panel is mapped and a compositing manager runs. It follows what the server says of the panel, and is
/// painted only when the size changes: the server keeps the picture as the window's background.
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

    void panelMapped();
    void panelUnmapped();
    void panelConfigured(const PixelRect& newRect);
    void update();
    [[nodiscard]] bool wanted() const;
    [[nodiscard]] PixelRect place() const;
    void make();
    void remove();
    void writeProperties() const;
    void paint();
    void cutOut() const;
    void renewCore();

    X11Connection& connection;
    CompositingManager& compositingManager;
    PanelStack& stack;
    xcb_window_t panel;

    std::mutex lock; ///< Guards what follows; the connection's thread and the main thread both come here.
    PanelShadow shadow;
    double radius = 0;
    bool mapped = false;
    PixelRect panelRect;
    ServerWindow window;
    ServerColourMap colours;
    ServerContext context;
    PixelSize paintedFor; ///< The panel's size.
    double paintedRadius = 0;
    /// The shadow of a panel that is just as large as its four corners need; lengthened for larger ones.
    ServerPixmap core;
    PixelSize coreFor;
    double coreRadius = 0;

    X11Connection::Subscription subscriptions[4];
};

} // namespace mirrolet::platform::desktop::x11
