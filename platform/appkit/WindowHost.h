#pragma once

#include "platform/appkit/HostPanel.h"
#include "platform/appkit/HostedWindow.h"
#include "platform/appkit/ScreenWatch.h"
#include "platform/coregraphics/Geometry.h"

#include <QRect>

#include <string>

namespace mirrolet::platform {

/// The native window behind one NSWindow. This base class has what both kinds of native windows share.
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
    /// Tells the NSWindow where the user or the desktop has put the native window.
    void moved(const QRect& geometry);
    /// Returns the number of device pixels for a point.
    [[nodiscard]] virtual double scale() const = 0;
    /// Opens the panel for a native window that exists.
    void openPanel(desktop::WindowNumber number, desktop::PanelStacking stacking);
    /// Cuts the window's corners at the radius that the content view asks for.
    void cutCorners();
    /// Waits until the server has processed every request that Qt has sent. Qt and the platform's backend
    /// have separate connections to the server.
    static void awaitQt();

    HostedWindow& owner;
    HostPanel panel; ///< Refers to the native window, so subclasses close the panel first.

  private:
    void screensChanged();

    ScreenWatch screens;
};

} // namespace mirrolet::platform
