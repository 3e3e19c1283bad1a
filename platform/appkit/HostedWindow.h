#pragma once

#include "platform/appkit/NSColor.h"
#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <string>

namespace mirrolet::platform {

class NSView;

/// A window as the native window behind it sees the window. Main thread.
class HostedWindow {
  public:
    struct Look {
        unsigned styleMask; ///< Of NSWindowStyleMask.
        bool hasShadow;
        bool isOpaque;
        NSColor backgroundColor;
    };

    virtual ~HostedWindow() = default;
    /// In screen coordinates, without the title bar.
    [[nodiscard]] virtual NSRect frame() const = 0;
    [[nodiscard]] virtual int level() const = 0;
    [[nodiscard]] virtual const std::string& title() const = 0;
    [[nodiscard]] virtual const std::shared_ptr<NSView>& contentView() const = 0;
    [[nodiscard]] virtual Look look() const = 0;
    /// The user or the desktop has moved the native window here.
    virtual void hostMoved(NSRect frame) = 0;
    /// Gives the window the focus, if the window can become key.
    virtual void makeKey() = 0;
};

} // namespace mirrolet::platform
