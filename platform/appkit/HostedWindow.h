#pragma once

#include "platform/appkit/NSColor.h"
#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <string>

namespace mirrolet::platform {

class NSView;

/// The interface through which a native window uses the NSWindow in front of it. Main thread.
class HostedWindow {
  public:
    struct Look {
        unsigned styleMask; ///< Of NSWindowStyleMask.
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
    /// Takes over the frame to which the user or the desktop has moved the native window.
    virtual void hostMoved(NSRect frame) = 0;
    /// Gives the window the focus, if the window can become key.
    virtual void makeKey() = 0;
};

} // namespace mirrolet::platform
