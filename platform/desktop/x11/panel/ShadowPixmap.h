#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/RenderResources.h"

namespace mirrolet::platform::desktop::x11 {

inline constexpr std::uint8_t argbDepth = 32;

/// Makes the image of a panel's shadow on the server. The blur is computed once, for the smallest panel that
/// has all four corners; for larger panels the server repeats the middle of that image. To be used by one
/// thread at a time.
class ShadowPixmap {
  public:
    explicit ShadowPixmap(X11Connection& connection) : connection(connection) {}

    /// Returns a pixmap of the depth argbDepth that holds the shadow. On each side the pixmap is larger than
    /// the panel, by the number of pixels that reachOf() returns. Lengths are in pixels.
    ServerPixmap make(PixelSize panel, double cornerRadius, const PanelShadow& shadow);

  private:
    /// The values from which `core` was computed.
    struct Key {
        PixelSize panel;
        double cornerRadius = 0;
        PanelShadow shadow;
        friend bool operator==(const Key&, const Key&) = default;
    };

    void computeCore(const Key& key);

    X11Connection& connection;
    ServerPixmap core; ///< The shadow of the smallest panel.
    Key coreKey;
    ServerContext context;
};

} // namespace mirrolet::platform::desktop::x11
