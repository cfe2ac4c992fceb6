#include "Linux/Desktop/Views/Scaling.h"

#include <QFontInfo>

#include <algorithm>

namespace tessary {

int scaled(double points, const QWidget& widget) {
    const double unitsPerPoint = std::max(1.0, widget.fontInfo().pixelSize() / usualFontSize);
    return qRound(points * unitsPerPoint);
}

QFont scaledFont(QFont font, double factor) {
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else // a desktop may give its font's size in pixels
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * factor)));
    return font;
}

} // namespace tessary
