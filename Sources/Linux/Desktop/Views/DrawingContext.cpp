#include "Linux/Desktop/Views/DrawingContext.h"

#include "Linux/Desktop/Views/Colours.h"

#include <utility>

namespace tessary {

namespace {

DrawingContext* innermost = nullptr;

} // namespace

DrawingContext::DrawingContext(QPainter& painter, const QWidget& widget)
    : painter_(painter), widget_(widget), outer_(std::exchange(innermost, this)) {}

DrawingContext::~DrawingContext() {
    innermost = outer_;
}

DrawingContext* DrawingContext::current() {
    return innermost;
}

QColor DrawingContext::colour(const NSColor& color) const {
    return colourOf(color, widget_.palette());
}

QPointF DrawingContext::position(const CGPoint& point) const {
    return {point.x, widget_.height() - point.y};
}

QRectF DrawingContext::rectangle(const CGRect& rect) const {
    const auto& [origin, size] = rect;
    const QPointF topLeft = position({origin.x, origin.y + size.height});
    return {topLeft, QSizeF(size.width, size.height)};
}

void DrawingContext::noteText(const QString& text) {
    if (!texts_.isEmpty())
        texts_ += u' ';
    texts_ += text;
}

} // namespace tessary
