#pragma once

#include "Platform/AppKit/NSEvent.h"

#include <QPointF>
#include <QWidget>

namespace tessary {

/// A mouse button at `position` of the top-level widget `window`, from its top left corner.
NSEvent mouseEvent(NSEventType type, const QWidget& window, const QPointF& position,
                   Qt::KeyboardModifiers modifiers);

} // namespace tessary
