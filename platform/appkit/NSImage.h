#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <string>
#include <string_view>

namespace mirrolet::platform {

namespace desktop {
class WindowImage;
}

/// A picture that views and controls show: a window's picture, a symbol, or an application's icon. Immutable.
/// Any thread may make and hold a picture, but only the main thread draws. Symbols and icons are looked up
/// only when they are drawn.
class NSImage {
  public:
    /// The source of the picture. Exactly one of the three members is set.
    struct Content {
        std::shared_ptr<const desktop::WindowImage> window;
        std::string symbol;
        std::string icon; ///< A name in the icon theme or an absolute path, as in a desktop entry.
    };

    /// Returns one of Mirrolet's own symbols by name, or nullptr if no symbol has that name.
    static std::shared_ptr<NSImage> systemSymbol(std::string_view name,
                                                 std::string accessibilityDescription = {});
    /// Returns an application's icon, 32 by 32 points. If the icon is missing or cannot be read, the icon of
    /// a plain application is drawn.
    static std::shared_ptr<NSImage> icon(std::string nameOrPath);

    /// Makes an image of a window's picture, shown at `size` points.
    NSImage(std::shared_ptr<const desktop::WindowImage> window, NSSize size);

    [[nodiscard]] NSSize size() const { return points; }
    [[nodiscard]] const std::string& accessibilityDescription() const { return description; }
    /// Returns the window's picture, or nullptr for a symbol or an icon.
    [[nodiscard]] const std::shared_ptr<const desktop::WindowImage>& windowImage() const {
        return content.window;
    }
    /// Returns true if the picture is a shape that is drawn in the colour of the text around it.
    [[nodiscard]] bool isTemplate() const;
    [[nodiscard]] const Content& drawnContent() const { return content; }

  private:
    NSImage(Content content, NSSize size, std::string description);

    Content content;
    NSSize points;
    std::string description;
};

} // namespace mirrolet::platform
