#pragma once

class QColor;

namespace mirrolet::platform {

/// A colour, not premultiplied, each part from 0 to 1. The semantic colours are those of the desktop's
/// palette at the moment of the call, so ask for them while drawing.
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

    /// The colour of the fills or strokes that follow in the present drawing.
    void setFill() const;
    void setStroke() const;

    friend bool operator==(const NSColor&, const NSColor&) = default;
};

QColor toQColor(const NSColor& colour);

} // namespace mirrolet::platform
