#pragma once

#include "Platform/CoreGraphics.h"

struct NSEvent {
    /// The pointer's position in the coordinates of `NSScreen`. While a hot key is handled, the
    /// position at its press. Outside every screen when the window system does not answer.
    static CGPoint mouseLocation();
};
