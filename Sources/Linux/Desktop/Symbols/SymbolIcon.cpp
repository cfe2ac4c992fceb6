#include "Linux/Desktop/Symbols/SymbolIcon.h"

#include "Linux/Desktop/Symbols/Symbols.h"

#include <QImage>
#include <QPixmap>

namespace tessary {

namespace {

/// The pixmap is white with a black contour: what is left of it on black is the shape.
QImage shapeOf(const QImage& pixmap, const QColor& colour) {
    QImage shape = pixmap.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < shape.height(); ++y)
        for (int x = 0; x < shape.width(); ++x) {
            QColor dot = colour;
            dot.setAlpha(qRed(reinterpret_cast<const QRgb*>(shape.constScanLine(y))[x]));
            shape.setPixelColor(x, y, dot);
        }
    return shape;
}

template <typename Treatment>
QIcon iconOf(std::string_view symbol, Treatment treated) {
    QIcon icon;
    for (const QByteArray& png : symbolPixmaps(symbol))
        icon.addPixmap(QPixmap::fromImage(treated(QImage::fromData(png))));
    return icon;
}

} // namespace

QIcon symbolIcon(std::string_view symbol) {
    return iconOf(symbol, [](const QImage& image) { return image; });
}

QIcon symbolIcon(std::string_view symbol, const QColor& colour) {
    return iconOf(symbol, [&colour](const QImage& image) { return shapeOf(image, colour); });
}

} // namespace tessary
