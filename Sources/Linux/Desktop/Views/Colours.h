// Colours as the desktop's palette has them, or as much nearer to that of its texts as they must be
// to be seen: its own are often meant for other backgrounds. All are those of the palette's current
// group.
#pragma once

#include "Platform/AppKit/NSDrawing.h"

#include <QColor>
#include <QPalette>
#include <QWidget>

namespace tessary {

/// What the colour is on a desktop with this palette.
QColor colourOf(const NSColor& color, const QPalette& palette);

/// That of texts at this strength, 0 to 1, or at the least one above it at which they can be read
/// in windows, on panels and in fields.
QColor textColour(const QPalette& palette, float strength);

/// The panels that stand out from the window.
QColor panelColour(const QPalette& palette);

/// Lines that only divide, which nobody has to see.
QColor dividerColour(const QPalette& palette);

/// Has the style draw the outlines of a control so that they are seen on a panel.
void makeOutlinesVisible(QWidget& control);

} // namespace tessary
