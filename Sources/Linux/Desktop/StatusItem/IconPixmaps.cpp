#include "Linux/Desktop/StatusItem/IconPixmaps.h"

#include "Linux/Desktop/Symbols/Symbols.h"

#include <QDBusMetaType>
#include <QImage>
#include <QtEndian>

namespace tessary {

namespace {

IconPixmap pixmapOf(const QByteArray& png) {
    const QImage image = QImage::fromData(png).convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{image.width(), image.height(), QByteArray(image.sizeInBytes(), '\0')};
    qToBigEndian<quint32>(image.constBits(), qsizetype{image.width()} * image.height(),
                          pixmap.pixels.data());
    return pixmap;
}

} // namespace

IconPixmaps iconPixmaps(std::string_view symbol) {
    IconPixmaps pixmaps;
    for (const QByteArray& png : symbolPixmaps(symbol))
        pixmaps.append(pixmapOf(png));
    return pixmaps;
}

void registerIconTypes() {
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<IconPixmaps>();
    qDBusRegisterMetaType<ToolTip>();
}

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

} // namespace tessary
