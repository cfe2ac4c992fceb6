#pragma once

#include "Platform/AppKit/NSDrawing.h"

#include <QColor>
#include <QPalette>

namespace tessary {

/// What the colour is on a desktop with this palette, in the palette's current group.
QColor colourOf(const NSColor& color, const QPalette& palette);

} // namespace tessary
