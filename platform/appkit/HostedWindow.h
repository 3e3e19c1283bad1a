#pragma once

#include "platform/appkit/NSColor.h"
#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <string>

namespace mirrolet::platform {

class NSView;

/// The functions of NSWindow that a WindowHost calls. The WindowHost shows the NSWindow in a native window.
/// Main thread.
class HostedWindow {
  public:
    struct Look {
        unsigned styleMask; ///< A sum of values of NSWindowStyleMask.
        bool hasShadow;
        bool isOpaque;
        NSColor backgroundColor;
    };

    virtual ~HostedWindow() = default;
    /// Returns the frame in screen coordinates, without the title bar.
    [[nodiscard]] virtual NSRect frame() const = 0;
    [[nodiscard]] virtual int level() const = 0;
    [[nodiscard]] virtual const std::string& title() const = 0;
    [[nodiscard]] virtual const std::shared_ptr<NSView>& contentView() const = 0;
    [[nodiscard]] virtual Look look() const = 0;
    /// Called when the user or the desktop has moved the native window, with the window's new frame.
    virtual void hostMoved(NSRect frame) = 0;
    /// Gives the window the focus, if the window accepts the focus.
    virtual void makeKey() = 0;
};

} // namespace mirrolet::platform
