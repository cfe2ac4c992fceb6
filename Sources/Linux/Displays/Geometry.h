// Geometry of the session's screen, in pixels or in the compositor's points: the origin is the top
// left corner and y grows downwards.
#pragma once

#include <algorithm>

namespace tessary {

struct PixelPoint {
    int x = 0;
    int y = 0;

    friend bool operator==(const PixelPoint&, const PixelPoint&) = default;
};

struct PixelSize {
    int width = 0;
    int height = 0;

    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }

    bool contains(PixelPoint point) const {
        return point.x >= x && point.x < right() && point.y >= y && point.y < bottom();
    }

    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// Length of the stretch that [a, a + aLength) and [b, b + bLength) share; 0 or less when none.
constexpr int sharedLength(int a, int aLength, int b, int bLength) {
    return std::min(a + aLength, b + bLength) - std::max(a, b);
}

constexpr int sharedWidth(const PixelRect& a, const PixelRect& b) {
    return sharedLength(a.x, a.width, b.x, b.width);
}

constexpr int sharedHeight(const PixelRect& a, const PixelRect& b) {
    return sharedLength(a.y, a.height, b.y, b.height);
}

constexpr bool overlap(const PixelRect& a, const PixelRect& b) {
    return sharedWidth(a, b) > 0 && sharedHeight(a, b) > 0;
}

/// Whether the two share a stretch of an edge. A common corner is not enough: the pointer cannot
/// cross it.
constexpr bool touch(const PixelRect& a, const PixelRect& b) {
    return (sharedWidth(a, b) == 0 && sharedHeight(a, b) > 0) ||
           (sharedHeight(a, b) == 0 && sharedWidth(a, b) > 0);
}

} // namespace tessary
