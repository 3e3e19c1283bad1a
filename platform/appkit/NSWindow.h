#pragma once

#include "platform/appkit/HostedWindow.h"
#include "platform/appkit/NSColor.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSResponder.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/NSViewController.h"
#include "platform/appkit/NSWindowLevel.h"
#include "platform/appkit/NSWindowStyleMask.h"
#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <string>

namespace mirrolet::platform {

class WindowHost;

namespace NSWindowCollectionBehavior {
inline constexpr unsigned canJoinAllSpaces = 1;
inline constexpr unsigned stationary = 16;
inline constexpr unsigned fullScreenAuxiliary = 256;
} // namespace NSWindowCollectionBehavior

/// A window of this program. A window's frame is its rectangle without the title bar, in points, in screen
/// coordinates (y upwards from the main screen's bottom-left corner). Main thread only. Always owned by a
/// std::shared_ptr. A new window is hidden, and its native window is made when it is first shown.
class NSWindow : public NSResponder, private HostedWindow, public std::enable_shared_from_this<NSWindow> {
  public:
    NSWindow(NSRect contentRect, unsigned styleMask);
    ~NSWindow() override;
    /// Makes a window with a title bar. The window has the size that the controller's view asks for.
    static std::shared_ptr<NSWindow> withContentViewController(const NSViewController& controller);
    NSWindow(const NSWindow&) = delete;
    NSWindow& operator=(const NSWindow&) = delete;

    [[nodiscard]] NSRect frame() const final { return frameRect; }
    virtual void setFrame(NSRect frame, bool display);
    void setFrameOrigin(NSPoint origin);
    /// Moves the window to the middle of the main screen's visible part.
    void center();

    void setContentView(const std::shared_ptr<NSView>& view);
    [[nodiscard]] const std::shared_ptr<NSView>& contentView() const final { return content; }

    [[nodiscard]] bool isVisible() const;
    /// Shows the window in front of the other windows of its level. Does not give the window the focus, and
    /// does not bring the program's other windows to the front.
    void orderFrontRegardless();
    void orderOut();
    void close();
    /// Gives the window the focus, if canBecomeKeyWindow() returns true.
    void makeKey() final;
    void makeKeyAndOrderFront();

    [[nodiscard]] int level() const final { return windowLevel; }
    void setLevel(int level);
    void setTitle(const std::string& title);
    [[nodiscard]] const std::string& title() const final { return windowTitle; }
    [[nodiscard]] unsigned styleMask() const { return style; }
    /// Sets the style mask. Call this before the window is first shown.
    void setStyleMask(unsigned mask) { style = mask; }

    [[nodiscard]] virtual bool canBecomeKeyWindow() const { return style & NSWindowStyleMask::titled; }

    bool hasShadow = true;
    bool isOpaque = true;
    NSColor backgroundColor = NSColor::white();

    // The members from here to `isReleasedWhenClosed` have no effect on this desktop. They exist for callers
    // that use them.
    [[nodiscard]] virtual bool canBecomeMainWindow() const { return style & NSWindowStyleMask::titled; }
    unsigned collectionBehavior = 0;
    bool isMovableByWindowBackground = false;
    bool isReleasedWhenClosed = true;

  private:
    [[nodiscard]] Look look() const override { return {style, hasShadow, isOpaque, backgroundColor}; }
    /// Called when the native window has moved. Passes the new frame to setFrame(), which then does not move
    /// the native window again.
    void hostMoved(NSRect frame) override;
    void ensureHost();

    NSRect frameRect;
    unsigned style;
    int windowLevel = NSWindowLevel::normal;
    std::string windowTitle;
    std::shared_ptr<NSView> content;
    std::unique_ptr<WindowHost> host;
    bool followsHost = false; ///< True while hostMoved() calls setFrame().
};

} // namespace mirrolet::platform
