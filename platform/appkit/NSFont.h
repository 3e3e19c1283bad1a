#pragma once

#include "platform/appkit/NSColor.h"
#include "platform/coregraphics/Geometry.h"

#include <string>

namespace mirrolet::platform {

/// A font of the desktop's user interface. The size is in points.
struct NSFont {
    double size = 0;

    static double systemFontSize();
    static NSFont systemFont(double ofSize) { return {ofSize}; }
};

/// The font and the colour of a piece of text.
struct NSTextAttributes {
    NSFont font;
    NSColor foregroundColor;
};

/// Returns the size of one line of UTF-8 text.
NSSize sizeOfText(const std::string& text, const NSTextAttributes& attributes);
/// Draws one line of text. `origin` is the bottom-left corner of the line's box, in the coordinates of the
/// view being drawn.
void drawText(const std::string& text, NSPoint origin, const NSTextAttributes& attributes);

} // namespace mirrolet::platform
