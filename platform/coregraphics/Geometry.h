#pragma once

namespace mirrolet::platform {

using CGFloat = double;

/// A position, measured in points (device-independent pixels). The caller chooses the coordinate space.
/// AppKit's screen and view coordinates grow upwards from the bottom-left corner. Window-list coordinates
/// grow downwards from the top-left corner.
struct CGPoint {
    CGFloat x = 0;
    CGFloat y = 0;

    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    CGFloat width = 0;
    CGFloat height = 0;

    friend bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;

    [[nodiscard]] CGFloat minX() const { return origin.x; }
    [[nodiscard]] CGFloat minY() const { return origin.y; }
    [[nodiscard]] CGFloat midX() const { return origin.x + size.width / 2; }
    [[nodiscard]] CGFloat midY() const { return origin.y + size.height / 2; }
    [[nodiscard]] CGFloat maxX() const { return origin.x + size.width; }
    [[nodiscard]] CGFloat maxY() const { return origin.y + size.height; }
    [[nodiscard]] CGFloat width() const { return size.width; }
    [[nodiscard]] CGFloat height() const { return size.height; }

    [[nodiscard]] bool contains(CGPoint point) const {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    friend bool operator==(const CGRect&, const CGRect&) = default;
};

using NSPoint = CGPoint;
using NSSize = CGSize;
using NSRect = CGRect;

} // namespace mirrolet::platform
