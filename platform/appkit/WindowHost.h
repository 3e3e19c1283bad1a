#pragma once

#include "platform/appkit/HostPanel.h"
#include "platform/appkit/HostedWindow.h"
#include "platform/appkit/ScreenWatch.h"
#include "platform/coregraphics/Geometry.h"

#include <QRect>

#include <string>

namespace mirrolet::platform {

/// The native window behind one NSWindow. This base class has what ViewWindowHost and WidgetWindowHost share.
/// Rectangles are in Qt's screen coordinates. Main thread.
class WindowHost {
  public:
    explicit WindowHost(HostedWindow& window);
    virtual ~WindowHost() = default;
    WindowHost(const WindowHost&) = delete;
    WindowHost& operator=(const WindowHost&) = delete;

    virtual void setGeometry(const QRect& geometry) = 0;
    virtual void setTitle(const std::string& title) = 0;
    virtual void setLevel(int level) = 0;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void takeFocus() = 0;
    [[nodiscard]] virtual bool isVisible() const = 0;
    [[nodiscard]] virtual QRect geometry() const = 0;

  protected:
    /// Tells the NSWindow that the user or the desktop has moved the native window to this geometry.
    void moved(const QRect& geometry);
    /// Returns the number of device pixels per point.
    [[nodiscard]] virtual double scale() const = 0;
    /// Makes the desktop::PanelWindow of the native window, which must exist already.
    void openPanel(desktop::WindowNumber number, desktop::PanelStacking stacking);
    /// Cuts the window's corners at the radius that the content view asks for.
    void cutCorners();
    /// Waits until the server has processed every request that Qt has sent. The backend's requests use
    /// another connection and could otherwise overtake Qt's.
    static void awaitQt();

    HostedWindow& owner;
    HostPanel panel; ///< Subclasses close the panel before they destroy the native window.

  private:
    void screensChanged();

    ScreenWatch screens;
};

} // namespace mirrolet::platform
