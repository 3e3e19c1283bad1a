#pragma once

#include "platform/appkit/NSColor.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <string>

namespace mirrolet::platform {

class WindowHost;

namespace NSWindowStyleMask {
inline constexpr unsigned borderless = 0;
inline constexpr unsigned titled = 1;
inline constexpr unsigned closable = 2;
inline constexpr unsigned miniaturizable = 4;
inline constexpr unsigned nonactivatingPanel = 128;
} // namespace NSWindowStyleMask

namespace NSWindowCollectionBehavior {
inline constexpr unsigned canJoinAllSpaces = 1;
inline constexpr unsigned stationary = 16;
inline constexpr unsigned fullScreenAuxiliary = 256;
} // namespace NSWindowCollectionBehavior

/// Window levels: a window stays in front of every window of a lower level.
namespace NSWindowLevel {
inline constexpr int normal = 0;
inline constexpr int floating = 3;
inline constexpr int modalPanel = 8;
} // namespace NSWindowLevel

/// Whoever brings a window's content.
class NSViewController {
  public:
    virtual ~NSViewController() = default;
    [[nodiscard]] virtual std::shared_ptr<NSView> view() const = 0;
};

/// A window of this program. Frames are in screen coordinates (y upwards from the main screen's bottom-left
/// corner), in points, without the title bar. Main thread only; always owned by a std::shared_ptr. Created
/// hidden; its native window exists from the first showing on.
class NSWindow : public std::enable_shared_from_this<NSWindow> {
  public:
    NSWindow(NSRect contentRect, unsigned styleMask);
    virtual ~NSWindow();
    /// A titled window as large as the controller's view asks for.
    static std::shared_ptr<NSWindow> withContentViewController(const NSViewController& controller);
    NSWindow(const NSWindow&) = delete;
    NSWindow& operator=(const NSWindow&) = delete;

    [[nodiscard]] NSRect frame() const { return frameRect; }
    virtual void setFrame(NSRect frame, bool display);
    void setFrameOrigin(NSPoint origin);
    /// In the middle of the main screen's visible part.
    void center();

    void setContentView(const std::shared_ptr<NSView>& view);
    [[nodiscard]] const std::shared_ptr<NSView>& contentView() const { return content; }

    [[nodiscard]] bool isVisible() const;
    /// Shows it in front of its level, without giving it the keyboard or activating the program.
    void orderFrontRegardless();
    void orderOut();
    void close();
    /// Gives it the keyboard, if it can become key.
    void makeKey();
    void makeKeyAndOrderFront();

    [[nodiscard]] int level() const { return windowLevel; }
    void setLevel(int level);
    void setTitle(const std::string& title);
    [[nodiscard]] const std::string& title() const { return windowTitle; }
    [[nodiscard]] unsigned styleMask() const { return style; }
    /// Before the first showing.
    void setStyleMask(unsigned mask) { style = mask; }

    [[nodiscard]] virtual bool canBecomeKeyWindow() const { return style & NSWindowStyleMask::titled; }
    [[nodiscard]] virtual bool canBecomeMainWindow() const { return style & NSWindowStyleMask::titled; }

    /// The pointer came to or left a tracking area that this window owns.
    virtual void mouseEntered(const NSEvent& event);
    virtual void mouseExited(const NSEvent& event);

    unsigned collectionBehavior = 0;
    bool isMovableByWindowBackground = false;
    bool hasShadow = true;
    bool isOpaque = true;
    bool isReleasedWhenClosed = true;
    NSColor backgroundColor = NSColor::white();

  protected:
    /// The user or the desktop has changed the frame: passes it on to setFrame(), which leaves the native
    /// window alone then.
    friend class WindowHost;
    void hostMoved(NSRect frame);

  private:
    void ensureHost();

    NSRect frameRect;
    unsigned style;
    int windowLevel = NSWindowLevel::normal;
    std::string windowTitle;
    std::shared_ptr<NSView> content;
    std::unique_ptr<WindowHost> host;
    bool followsHost = false; ///< While the native window's frame is taken over.
};

} // namespace mirrolet::platform
