#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <string>
#include <string_view>

namespace mirrolet::platform {

namespace desktop {
class WindowImage;
}

/// A picture that views and controls show: a window's picture, a symbol, or an application's icon. Immutable,
/// made and held on any thread; drawn on the main thread, and only then are symbols and icons looked up.
class NSImage {
  public:
    /// The source of the picture; exactly one of the three is set.
    struct Content {
        std::shared_ptr<const desktop::WindowImage> window;
        std::string symbol;
        std::string icon; ///< As a desktop entry has it: a name in the icon theme, or an absolute path.
    };

    /// One of Mirrolet's own symbols by name; nullptr if there is none of that name.
    static std::shared_ptr<NSImage> systemSymbol(std::string_view name,
                                                 std::string accessibilityDescription = {});
    /// An application's icon, 32 by 32 points. An icon that is missing or cannot be read is drawn as that of
    /// a plain application.
    static std::shared_ptr<NSImage> icon(std::string nameOrPath);

    /// A window's picture, shown at `size` points.
    NSImage(std::shared_ptr<const desktop::WindowImage> window, NSSize size);

    [[nodiscard]] NSSize size() const { return points; }
    [[nodiscard]] const std::string& accessibilityDescription() const { return description; }
    /// nullptr for a symbol or an icon.
    [[nodiscard]] const std::shared_ptr<const desktop::WindowImage>& windowImage() const {
        return content.window;
    }
    /// Whether the picture is a shape that takes the colour of the text around it.
    [[nodiscard]] bool isTemplate() const;
    [[nodiscard]] const Content& drawnContent() const { return content; }

  private:
    NSImage(Content content, NSSize size, std::string description);

    Content content;
    NSSize points;
    std::string description;
};

} // namespace mirrolet::platform
