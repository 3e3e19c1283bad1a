#pragma once

class QColor;

namespace mirrolet::platform {

/// A colour with components from 0 to 1, not premultiplied. The functions that end in "Color" return colours
/// of the desktop's palette. Call them each time that you draw, because the palette may change.
struct NSColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    static NSColor white() { return {1, 1, 1, 1}; }
    static NSColor black() { return {0, 0, 0, 1}; }
    static NSColor clear() { return {0, 0, 0, 0}; }
    static NSColor systemRed() { return {1.0, 59.0 / 255, 48.0 / 255, 1}; }
    static NSColor controlAccentColor();
    static NSColor controlBackgroundColor();
    static NSColor separatorColor();
    static NSColor labelColor();
    static NSColor secondaryLabelColor();

    [[nodiscard]] NSColor withAlphaComponent(double value) const { return {red, green, blue, value}; }

    /// Sets the colour for the fills or strokes that follow in the current drawing.
    void setFill() const;
    void setStroke() const;

    friend bool operator==(const NSColor&, const NSColor&) = default;
};

QColor toQColor(const NSColor& colour);

} // namespace mirrolet::platform
