#pragma once

#include "platform/coregraphics/Geometry.h"
#include "platform/desktop/PanelWindow.h"

#include <QObject>
#include <QRect>
#include <Qt>

#include <memory>
#include <string>

namespace mirrolet::platform {

class NSWindow;

/// The native window behind one NSWindow. Rectangles are the toolkit's: device-independent pixels, y
/// downwards.
class WindowHost {
  public:
    explicit WindowHost(NSWindow& window);
    virtual ~WindowHost() = default;
    WindowHost(const WindowHost&) = delete;
    WindowHost& operator=(const WindowHost&) = delete;

    /// The right kind of host for what the window shows: views that are painted here, or a widget of the
    /// toolkit.
    static std::unique_ptr<WindowHost> make(NSWindow& window);

    virtual void setGeometry(const QRect& geometry) = 0;
    virtual void setTitle(const std::string& title) = 0;
    virtual void setLevel(int level) = 0;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void takeFocus() = 0;
    [[nodiscard]] virtual bool isVisible() const = 0;
    [[nodiscard]] virtual QRect geometry() const = 0;

  protected:
    /// Tells the NSWindow where the user or the desktop has put it.
    void moved(const QRect& geometry);
    [[nodiscard]] desktop::PanelShadow shadow(double scale) const;
    /// The desktop speaks to the server on a connection of its own: this makes sure that the server has seen
    /// what the toolkit has sent on its.
    static void awaitToolkit();

    NSWindow& owner;

  private:
    void watchScreens();
    void screensChanged();

    QObject screenWatch; ///< What the connections to screens hang on.
    bool screensDirty = false;
};

/// Rectangles of the screen, y turned over.
QRect toQtScreenRect(const NSRect& rect);
NSRect fromQtScreenRect(const QRect& rect);

} // namespace mirrolet::platform
