#include "Platform/AppKit/NSDrawing.h"

#include "Linux/Desktop/Views/DrawingContext.h"
#include "Linux/Desktop/Views/Scaling.h"

#include <QApplication>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace {

using tessary::DrawingContext;

/// The desktop's font, larger or smaller by as much as the program wants another size than usual.
QFont fontOf(const NSFont& font) {
    const double factor = font.size > 0 ? font.size / tessary::usualFontSize : 1;
    QFont result = tessary::scaledFont(QApplication::font(), factor);
    if (font.weight == NSFontWeight::medium)
        result.setWeight(QFont::Medium);
    return result;
}

QString stringOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The pen and the rectangle that it follows, so that the line covers whole pixels of the device at
/// any scale. Parts between two pixels move inwards, since nothing is drawn outside the view.
struct CrispLine {
    CrispLine(const QTransform& toDevice, const QRectF& rect, double lineWidth) {
        constexpr double rounding = 1e-6;
        const double scale = toDevice.m11();
        const double half = lineWidth / 2;
        const QRectF outer = toDevice.mapRect(rect.adjusted(-half, -half, half, half));
        const QPointF topLeft(std::ceil(outer.left() - rounding),
                              std::ceil(outer.top() - rounding));
        const QPointF bottomRight(std::floor(outer.right() + rounding),
                                  std::floor(outer.bottom() + rounding));
        const double pixels = std::max(1.0, std::floor(lineWidth * scale));
        const double inset = pixels / 2;
        outline = toDevice.inverted().mapRect(
            QRectF(topLeft, bottomRight).adjusted(inset, inset, -inset, -inset));
        width = pixels / scale;
    }

    QRectF outline;
    double width;
};

} // namespace

CGSize NSStringSizeWithAttributes(std::string_view text, const NSTextAttributes& attributes) {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return {}; // fonts come with the windows
    const QFontMetricsF metrics(fontOf(attributes.font));
    return {metrics.horizontalAdvance(stringOf(text)), metrics.height()};
}

void NSStringDrawAtPoint(std::string_view text, CGPoint point, const NSTextAttributes& attributes) {
    auto* context = DrawingContext::current();
    if (context == nullptr)
        return;
    const QFont font = fontOf(attributes.font);
    const QString string = stringOf(text);
    const QPointF baseline = context->position(point) - QPointF(0, QFontMetricsF(font).descent());
    context->painter().setFont(font);
    context->painter().setPen(context->colour(attributes.foregroundColor));
    context->painter().drawText(baseline, string);
    context->noteText(string);
}

void NSBezierPath::fill(const NSColor& color) const {
    auto* context = DrawingContext::current();
    if (context == nullptr)
        return;
    context->painter().setPen(Qt::NoPen);
    context->painter().setBrush(context->colour(color));
    context->painter().drawRoundedRect(context->rectangle(rect_), xRadius_, yRadius_);
}

void NSBezierPath::stroke(const NSColor& color) const {
    auto* context = DrawingContext::current();
    if (context == nullptr)
        return;
    QPainter& painter = context->painter();
    const CrispLine line(painter.deviceTransform(), context->rectangle(rect_), lineWidth_);
    painter.setPen(QPen(context->colour(color), line.width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(line.outline, xRadius_, yRadius_);
}
