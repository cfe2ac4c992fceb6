// The colours of the desktop's palette, in its current group. Many desktops choose them for other
// backgrounds than a form has, so where the contrast is too low they are mixed with the colour of
// texts.
#pragma once

#include "Platform/AppKit/NSDrawing.h"

#include <QColor>
#include <QPalette>
#include <QWidget>

#include <array>

namespace tessary {

/// What the colour is on a desktop with this palette.
QColor colourOf(const NSColor& color, const QPalette& palette);

/// Of primary, secondary and tertiary texts.
inline constexpr std::array textStrengths{1.0F, 0.7F, 0.5F};

/// The colour of texts at this strength, 0 to 1, or at the lowest higher one at which they can be
/// read in windows, on panels and in fields.
QColor textColour(const QPalette& palette, float strength);

/// The background of the panels that rows stand on.
QColor panelColour(const QPalette& palette);

/// Lines that only divide rows, so their contrast may be low.
QColor dividerColour(const QPalette& palette);

/// Makes the style draw the outlines of a control with enough contrast to a panel.
void makeOutlinesVisible(QWidget& control);

} // namespace tessary
