// The painter of the contract's drawing functions while a view's `draw` runs.
#pragma once

#include "Platform/AppKit/NSDrawing.h"

#include <QColor>
#include <QPainter>
#include <QString>
#include <QWidget>

namespace tessary {

/// Makes a widget's painter the current one as long as it lives.
class DrawingContext {
public:
    /// Neither is owned.
    DrawingContext(QPainter& painter, const QWidget& widget);
    ~DrawingContext();

    /// The one that was made last; null while no view draws.
    static DrawingContext* current();

    QPainter& painter() { return painter_; }

    QColor colour(const NSColor& color) const;

    /// From the view's coordinates, which grow upwards, to the widget's.
    QPointF position(const CGPoint& point) const;
    QRectF rectangle(const CGRect& rect) const;

    /// The texts that were drawn so far, for screen readers.
    const QString& texts() const { return texts_; }
    void noteText(const QString& text);

    DrawingContext(const DrawingContext&) = delete;
    DrawingContext& operator=(const DrawingContext&) = delete;

private:
    QPainter& painter_;
    const QWidget& widget_;
    QString texts_;
    DrawingContext* outer_;
};

} // namespace tessary
