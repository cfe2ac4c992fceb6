// Between the session's screen, whose y grows downwards from the top, and the contract's global
// coordinates, whose y grows upwards from the bottom left corner of the main display.
#pragma once

#include "Linux/Displays/Geometry.h"
#include "Platform/CoreGraphics.h"

namespace tessary {

inline CGRect globalFrame(const PixelRect& frame, const PixelRect& main) {
    return {{static_cast<double>(frame.x - main.x),
             static_cast<double>(main.bottom() - frame.bottom())},
            {static_cast<double>(frame.width), static_cast<double>(frame.height)}};
}

/// A pixel is addressed by its lower left corner, so that it lies in exactly its own display's
/// frame.
inline CGPoint globalPoint(PixelPoint pixel, const PixelRect& main) {
    return {static_cast<double>(pixel.x - main.x),
            static_cast<double>(main.bottom() - 1 - pixel.y)};
}

} // namespace tessary
