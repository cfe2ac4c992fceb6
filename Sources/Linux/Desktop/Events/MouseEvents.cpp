#include "Linux/Desktop/Events/MouseEvents.h"

#include "Linux/Desktop/Events/KeyEvents.h"
#include "Linux/Desktop/Events/ProgramWindow.h"

#include <QGuiApplication>

namespace tessary {

// In the middle of a pixel, so that a click into the top row of a view is inside of it, and one
// below its last row is not.
NSEvent mouseEvent(NSEventType type, const QWidget& window, const QPointF& position,
                   Qt::KeyboardModifiers modifiers) {
    const double halfPixel = 0.5 / window.devicePixelRatioF();
    NSEvent event;
    event.type = type;
    event.modifierFlags = modifierFlags(modifiers);
    event.window = windowOf(window);
    event.locationInWindow = {position.x(), window.height() - position.y() - halfPixel};
    return event;
}

NSEvent clickInto(const QWidget& widget) {
    const QWidget& window = *widget.window();
    const QPointF middle = widget.mapTo(&window, QRectF(widget.rect()).center());
    return mouseEvent(NSEventType::leftMouseDown, window, middle, {});
}

void showActivation(const QWidget& control) {
    if (QGuiApplication::mouseButtons() == Qt::NoButton)
        NSEventSendToMonitors(clickInto(control));
}

} // namespace tessary
