#pragma once

#include "Platform/AppKit/NSEvent.h"

#include <QPointF>
#include <QWidget>

namespace tessary {

/// A mouse button at `position` of the top-level widget `window`, from its top left corner.
NSEvent mouseEvent(NSEventType type, const QWidget& window, const QPointF& position,
                   Qt::KeyboardModifiers modifiers);

/// A left click into the middle of `widget`.
NSEvent clickInto(const QWidget& widget);

/// To be called when a standard control acts. Where a key or an assistive technology was the cause
/// and not the mouse, the program's monitors see a click into the control. They cannot stop it.
void showActivation(const QWidget& control);

} // namespace tessary
