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
/// Made and held on any thread, drawn on the main thread. Symbols and icons are looked up only when they are
/// drawn.
class NSImage {
  public:
    /// The source of the picture. Exactly one of the three members is set.
    struct Content {
        std::shared_ptr<const desktop::WindowImage> window;
        std::string symbol;
        std::string icon; ///< As a desktop entry has it: a name in the icon theme, or an absolute path.
    };

    /// Returns one of Mirrolet's own symbols by name, or nullptr if no symbol has that name.
    static std::shared_ptr<NSImage> systemSymbol(std::string_view name,
                                                 std::string accessibilityDescription = {});
    /// Returns an application's icon, 32 by 32 points. An icon that is missing or cannot be read is drawn as
    /// the icon of a plain application.
    static std::shared_ptr<NSImage> icon(std::string nameOrPath);

    /// Makes an image of a window's picture, shown at `size` points.
    NSImage(std::shared_ptr<const desktop::WindowImage> window, NSSize size);

    [[nodiscard]] NSSize size() const { return points; }
    [[nodiscard]] const std::string& accessibilityDescription() const { return description; }
    /// Returns the window's picture, or nullptr for a symbol or an icon.
    [[nodiscard]] const std::shared_ptr<const desktop::WindowImage>& windowImage() const {
        return content.window;
    }
    /// Returns whether the picture is a shape that takes the colour of the text around it.
    [[nodiscard]] bool isTemplate() const;
    [[nodiscard]] const Content& drawnContent() const { return content; }

  private:
    NSImage(Content content, NSSize size, std::string description);

    Content content;
    NSSize points;
    std::string description;
};

} // namespace mirrolet::platform
